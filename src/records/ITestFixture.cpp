#include "ztkdb/ITestFixture.h"

namespace ZTkDb {

ITestFixture::ITestFixture() = default;
ITestFixture::~ITestFixture() = default;

}  // namespace ZTkDb
