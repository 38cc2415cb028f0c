#pragma once

#include <strings.h>

#include <string>
#include <vector>

#include "server/Dispatch.h"

namespace ZTkDb::server {

// The classes hosts create by name, in the order the type information
// lists them.
const std::vector<const ClassInfo*>& CreatableClasses();
// A class by name (creatable or handed out), without regard to case; null
// when there is none.
const ClassInfo* FindClass(const std::string& name);

}  // namespace ZTkDb::server
