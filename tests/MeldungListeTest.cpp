#include <gtest/gtest.h>

#include <set>

#include "Engines.h"
#include "RecordingDatabase.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CMeldungListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::CreateReport;
using ztktest::ErrorNumberOf;

namespace {

// Reports around today:
//   1 open, 60 days ago, site 4, prefix M
//   2 done 5 days ago, reported 8 days ago, site 0, M
//   3 done 45 days ago, reported 50 days ago, site 4, S
//   4 open, 2 days ago at 14:10, site 6, S, object 77 (floor)
//   5 open, today, site 0, M
class MeldungListen : public ::testing::TestWithParam<ztktest::Engine> {
 protected:
  void SetUp() override {
    ZTKTEST_OPEN_ENGINE(db, tkdb, "mll");
    const Date t = Date::Today();
    CreateReport("mll", {.nr = 1, .datum = t.AddDays(-60), .so_id = 4});
    CreateReport(
        "mll",
        {.nr = 2, .datum = t.AddDays(-8), .erledigt = true, .erledigt_datum = t.AddDays(-5)});
    CreateReport("mll", {.nr = 3,
                         .vorsatz = "S",
                         .datum = t.AddDays(-50),
                         .erledigt = true,
                         .erledigt_datum = t.AddDays(-45),
                         .so_id = 4});
    CreateReport("mll", {.nr = 4,
                         .vorsatz = "S",
                         .datum = t.AddDays(-2),
                         .zeit = "14:10",
                         .so_id = 6,
                         .obj_id = 77,
                         .obj_typ = sotFloor});
    CreateReport("mll", {.nr = 5, .datum = t});
    list.ConnectStorage("mll");
  }

  std::vector<int32_t> Walk() { return ztktest::WalkNumbers(list); }
  std::set<int32_t> WalkSet() { return ztktest::NumberSet(list); }

  ztktest::EngineDb db{GetParam()};
  CTkDb tkdb;
  CMeldungListe list;
};

using Nrs = std::vector<int32_t>;
using NrSet = std::set<int32_t>;

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, MeldungListen, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(MeldungListen, DoneFamilyWithSitesAndPrefixes) {
  list.ReadByDone(false);
  EXPECT_EQ(WalkSet(), (NrSet{1, 4, 5}));
  list.ReadByDone(true);
  EXPECT_EQ(WalkSet(), (NrSet{2}));
  list.ReadByDone(true, msByMsgDoneOnDate, 50);
  EXPECT_EQ(Walk(), (Nrs{3, 2}));
  list.ReadByDone(false, msbymsgdate);
  EXPECT_EQ(Walk(), (Nrs{1, 4, 5}));
  EXPECT_EQ(list.SortOrder(), msUnsorted);  // never recorded

  list.ReadByDoneAndSo(4, false);
  EXPECT_EQ(WalkSet(), (NrSet{1, 5}));
  list.ReadByDoneAndSo(4, true, msByMsgNumber, 60);
  EXPECT_EQ(Walk(), (Nrs{2, 3}));
  list.ReadByDoneAndSoListe({"6", "4"}, false, msByMsgNumber);
  EXPECT_EQ(Walk(), (Nrs{1, 4, 5}));
  list.ReadByDoneAndVorsatz(false, "S");
  EXPECT_EQ(WalkSet(), (NrSet{4}));
  list.ReadByDoneAndSoAndVorsatz(6, false, "M", msByMsgReturnOnDate);
  EXPECT_EQ(WalkSet(), (NrSet{5}));
  list.ReadByDoneAndSoListeAndVorsatz({"4"}, true, "S", msUnsorted, 60);
  EXPECT_EQ(WalkSet(), (NrSet{3}));

  // Exactly the site, without site 0.
  list.ReadAllBySo(4);
  EXPECT_EQ(WalkSet(), (NrSet{1, 3}));
  EXPECT_EQ(ErrorNumberOf([&] { list.ReadByDoneAndSoListe({}, false); }), 3075);
  EXPECT_EQ(ErrorNumberOf([&] { list.ReadByDone(false, static_cast<MsgSortOrderConstants>(6)); }),
            3129);
  EXPECT_EQ(list.Count(), 0);
}

TEST_P(MeldungListen, EverySortOrderRuns) {
  for (int sort = 0; sort <= 5; ++sort) {
    SCOPED_TRACE(sort);
    list.ReadAll(static_cast<MsgSortOrderConstants>(sort));
    EXPECT_EQ(list.Count(), 5);
    list.ReadByDoneAndSoListeAndVorsatz({"4", "6"}, false, "S",
                                        static_cast<MsgSortOrderConstants>(sort));
    EXPECT_EQ(WalkSet(), (NrSet{4}));
  }
  list.ReadAll(msbymsgdate);
  EXPECT_EQ(Walk(), (Nrs{1, 3, 2, 4, 5}));
}

TEST_P(MeldungListen, PeriodsObjectsAndOpenReports) {
  const Date t = Date::Today();
  list.ReadAllInZeitraum(t.AddDays(-50), t.AddDays(-2));
  EXPECT_EQ(Walk(), (Nrs{2, 3, 4}));
  // Reported up to datBis and not done before datVon: 3 was done before.
  list.ReadAllInZeitAndOpen(t.AddDays(-30), t);
  EXPECT_EQ(Walk(), (Nrs{1, 2, 4, 5}));
  list.ReadAllInZeitAndOpen(t.AddDays(-3), t.AddDays(-10));
  EXPECT_EQ(Walk(), (Nrs{1}));

  list.ReadByObj(77, sotFloor);
  EXPECT_EQ(Walk(), (Nrs{4}));
  list.ReadByObj(77, sotRoom);
  EXPECT_EQ(list.Count(), 0);

  // The embedded engine refuses its variant as it has always been sent.
  if (db.Jet()) {
    EXPECT_EQ(
        ErrorNumberOf([&] { list.ReadAllInZeitraumDatumZeit(t.AddDays(-2), "14:00", "15:00"); }),
        3075);
  } else {
    list.ReadAllInZeitraumDatumZeit(t.AddDays(-2), "14:00", "15:00");
    EXPECT_EQ(Walk(), (Nrs{4}));
  }
}

TEST(MeldungListeStatements, DatumZeitOnBothKindsAndAnEmptyStatementForAnUnknownSort) {
  ztktest::RecordingClient jet("recM1", 1);
  ztktest::RecordingClient odbc("recM2", 2);
  CMeldungListe onJet;
  onJet.ConnectStorage("recM1");
  CMeldungListe onOdbc;
  onOdbc.ConnectStorage("recM2");

  onJet.ReadAllInZeitraumDatumZeit(Date::FromYmd(2026, 11, 15), "08:00", "12:00");
  EXPECT_EQ(
      jet.db->statements.back(),
      "SELECT T_Meldung.* FROM T_Meldung WHERE T_Meldung.MeldeDatum = #2026-11-15 00:00:00#   "
      "ANDT_Meldung.stMeldeZeit >= 08:00 AND T_Meldung.stMeldeZeit <= 12:00 ORDER BY "
      "T_Meldung.lNr");
  onOdbc.ReadAllInZeitraumDatumZeit(Date::FromYmd(2026, 11, 15), "08:00", "12:00");
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_Meldung.* FROM T_Meldung WHERE T_Meldung.MeldeDatum = '15.11.2026'  AND "
            "T_Meldung.stMeldeZeit >= '08:00' AND T_Meldung.stMeldeZeit <= '12:00' ORDER BY "
            "T_Meldung.lNr");

  onOdbc.ReadAll(static_cast<MsgSortOrderConstants>(7));
  EXPECT_EQ(odbc.db->statements.back(), "");
}
