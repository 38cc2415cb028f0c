#include <gtest/gtest.h>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CMeldung.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::CreateReport;
using ztktest::ErrorNumberOf;

namespace {

class Meldungen : public ztktest::EngineTest {
 protected:
  Meldungen() : EngineTest("mel") {}
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Meldungen, ztktest::AllEngines(), ztktest::EngineName);

// The done flag and its date are set each on its own.
TEST(MeldungRecord, DoneFlagAndDateAreIndependent) {
  CMeldung report;
  report.ErledigtDatum(Date::FromYmd(2026, 5, 1));
  EXPECT_FALSE(report.Erledigt());
  report.Erledigt(true);
  EXPECT_EQ(report.ErledigtDatum(), Date::FromYmd(2026, 5, 1));
}

// What other programs read: the flag and the date in the engine's own forms.
// The prefix goes into ReadByNr as it is, so its quote ends the literal
// early and the engine refuses the statement.
TEST_P(Meldungen, StoredFormsAndAQuotedPrefix) {
  auto again = CreateReport(
      "mel",
      {.nr = 12, .vorsatz = "M'", .datum = Date::FromYmd(2026, 11, 3, 8, 5, 0), .erledigt = true});
  EXPECT_EQ(Rows("T_Meldung", "bErledigt = " + std::string(db.TrueText()) +
                                  " AND MeldeDatum = '2026-11-03 08:05:00'"),
            1);
  const int32_t id = again->Id();
  EXPECT_EQ(ErrorNumberOf([&] { again->ReadByNr(12, "M'"); }), 3075);
  again->ReadByNr(12, "M''");
  EXPECT_EQ(again->Id(), id);
}

TEST_P(Meldungen, LastNumbersPerPrefix) {
  auto report = Connected<CMeldung>();
  EXPECT_EQ(report->GetLastNr(), 0);
  EXPECT_EQ(report->GetLastNrVorsatz("M"), 0);
  CreateReport("mel", {.nr = 4, .vorsatz = "M"});
  CreateReport("mel", {.nr = 9, .vorsatz = "S"});
  CreateReport("mel", {.nr = 6, .vorsatz = "M"});
  EXPECT_EQ(report->GetLastNr(), 9);
  EXPECT_EQ(report->GetLastNrVorsatz("M"), 6);
  EXPECT_EQ(report->GetLastNrVorsatz("X"), 0);
  // Prefixes compare exactly, trailing blanks and case included, on every
  // engine.
  CreateReport("mel", {.nr = 12, .vorsatz = "M "});
  CreateReport("mel", {.nr = 13, .vorsatz = "m"});
  EXPECT_EQ(report->GetLastNrVorsatz("M"), 6);
  EXPECT_EQ(report->GetLastNrVorsatz("M "), 12);
}
