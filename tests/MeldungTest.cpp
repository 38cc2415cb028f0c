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

class Meldungen : public ::testing::TestWithParam<ztktest::Engine> {
 protected:
  void SetUp() override { ZTKTEST_OPEN_ENGINE(db, tkdb, "mel"); }

  std::unique_ptr<CMeldung> Connected() {
    auto report = std::make_unique<CMeldung>();
    report->ConnectStorage("mel");
    return report;
  }
  int64_t Count(const std::string& where = "1=1") {
    return ztktest::Scalar("mel", "SELECT count(*) FROM T_Meldung WHERE " + where).ToLong();
  }

  ztktest::EngineDb db{GetParam()};
  CTkDb tkdb;
  ztktest::CapturedBoxes boxes;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Meldungen, ztktest::AllEngines(), ztktest::EngineName);

TEST(MeldungRecord, NewObjectHoldsTheDefaultsAndDoneFlagAndDateAreIndependent) {
  CMeldung report;
  EXPECT_EQ(report.Id(), 0);
  EXPECT_EQ(report.UId(), "");
  EXPECT_EQ(report.MeldeDatum(), NoDate);
  EXPECT_EQ(report.ErledigtDatum(), NoDate);
  EXPECT_FALSE(report.Erledigt());
  EXPECT_EQ(msbymsgdate, 2);
  report.ErledigtDatum(Date::FromYmd(2026, 5, 1));
  EXPECT_FALSE(report.Erledigt());
  report.Erledigt(true);
  EXPECT_EQ(report.ErledigtDatum(), Date::FromYmd(2026, 5, 1));
  EXPECT_EQ(ErrorNumberOf([&] { report.GetLastNrVorsatz("M"); }), 91);
}

TEST_P(Meldungen, CreateNew4StoresEveryFieldAndReadsItBack) {
  auto report = Connected();
  report->CreateNew4(12, "O'Hara", 3, "07'11", Date::FromYmd(2026, 11, 3, 8, 5, 0), "08'05", 44,
                     sotFloor, "Licht 'flackert'\nim Flur", Date::FromYmd(2026, 11, 10), "12'00",
                     Date::FromYmd(2026, 11, 12), "13'00", true, Date::FromYmd(2026, 11, 4), "9'15",
                     4, 5, 6, hetGebaeude, "M'", "B'earb", "T'el", "O'rt", "Ob'jekt", "Be'merkung",
                     "o'hara@example.org", "L'A", "V'A");
  ASSERT_GT(report->Id(), 0);
  EXPECT_TRUE(boxes.boxes.empty());

  auto again = Connected();
  again->ReadById(report->Id());
  EXPECT_EQ(again->UId(), report->UId());
  EXPECT_EQ(again->Nr(), 12);
  EXPECT_EQ(again->Melder(), "O'Hara");
  EXPECT_EQ(again->MelderFaId(), 3);
  EXPECT_EQ(again->MelderTel(), "07'11");
  EXPECT_EQ(again->MeldeDatum(), Date::FromYmd(2026, 11, 3, 8, 5, 0));
  EXPECT_EQ(again->MeldeZeit(), "08'05");
  EXPECT_EQ(again->ObjId(), 44);
  EXPECT_EQ(again->ObjTyp(), sotFloor);
  EXPECT_EQ(again->Meldung(), "Licht 'flackert'\nim Flur");
  EXPECT_EQ(again->ErledBisDatum(), Date::FromYmd(2026, 11, 10));
  EXPECT_EQ(again->ErledBisZeit(), "12'00");
  EXPECT_EQ(again->WiederDatum(), Date::FromYmd(2026, 11, 12));
  EXPECT_EQ(again->WiederZeit(), "13'00");
  EXPECT_TRUE(again->Erledigt());
  EXPECT_EQ(again->ErledigtDatum(), Date::FromYmd(2026, 11, 4));
  EXPECT_EQ(again->ErledigtZeit(), "9'15");
  EXPECT_EQ(again->GebTyp(), 4);
  EXPECT_EQ(again->GebId(), 5);
  EXPECT_EQ(again->SoId(), 6);
  EXPECT_EQ(again->Herkunft(), hetGebaeude);
  EXPECT_EQ(again->NrVorsatz(), "M'");
  EXPECT_EQ(again->Bearbeiter(), "B'earb");
  EXPECT_EQ(again->TelBearbeiter(), "T'el");
  EXPECT_EQ(again->Ort(), "O'rt");
  EXPECT_EQ(again->Objekt(), "Ob'jekt");
  EXPECT_EQ(again->Bemerkung(), "Be'merkung");
  EXPECT_EQ(again->Email(), "o'hara@example.org");
  EXPECT_EQ(again->Leistungsart(), "L'A");
  EXPECT_EQ(again->Verantwortlicher(), "V'A");
  EXPECT_EQ(Count("bErledigt = " + std::string(db.TrueText()) +
                  " AND MeldeDatum = '2026-11-03 08:05:00'"),
            1);

  // The same prefix goes into ReadByNr as it is, so its quote ends the
  // literal early and the engine refuses the statement.
  EXPECT_EQ(ErrorNumberOf([&] { again->ReadByNr(12, "M'"); }), 3075);
  again->ReadByNr(12, "M''");
  EXPECT_EQ(again->Id(), report->Id());
}

TEST_P(Meldungen, RetiredCreateMethodsShowTheirBoxAndWriteNothing) {
  auto report = Connected();
  const Date d = Date::Today();
  report->CreateNew(1, "", 0, "", d, "", 0, sotRoom, "", d, "", d, "", false, d, "", 0, 0, 0, "",
                    "", "", "", "");
  report->CreateNew1(1, "", 0, "", d, "", 0, sotRoom, "", d, "", d, "", false, d, "", 0, 0, 0, "",
                     "", "", "", "", "");
  report->CreateNew2(1, "", 0, "", d, "", 0, sotRoom, "", d, "", d, "", false, d, "", 0, 0, 0, "",
                     "", "", "", "", "", "");
  report->CreateNew3(1, "", 0, "", d, "", 0, sotRoom, "", d, "", d, "", false, d, "", 0, 0, 0, 0,
                     "", "", "", "", "", "", "");
  const std::vector<std::string> expected = {"CreateNew1 benutzen!", "CreateNew2 benutzen!",
                                             "CreateNew3 benutzen!", "CreateNew4 benutzen!"};
  ASSERT_EQ(boxes.boxes.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(boxes.boxes[i].text, expected[i]);
    EXPECT_EQ(boxes.boxes[i].title, "ZTkDb");
    EXPECT_FALSE(boxes.boxes[i].critical);
  }
  EXPECT_EQ(Count(), 0);
  EXPECT_EQ(report->Id(), 0);
}

TEST_P(Meldungen, SecondWriterGetsTheUpdateBoxAndDeleteClearsEvenWhenTheRowIsGone) {
  const int32_t id = CreateReport("mel", {})->Id();
  auto first = Connected();
  auto second = Connected();
  first->ReadById(id);
  second->ReadById(id);
  first->Meldung("erster");
  first->Update();
  second->Meldung("zweiter");
  second->Update();
  ASSERT_EQ(boxes.boxes.size(), 1u);
  EXPECT_EQ(boxes.boxes[0].text, "CMeldung.Update fehlgeschlagen. Bitte an TORQ melden!");
  EXPECT_EQ(boxes.boxes[0].title, "Zanto");
  EXPECT_TRUE(boxes.boxes[0].critical);
  EXPECT_EQ(Count("stMeldung = 'erster'"), 1);

  first->Delete();
  EXPECT_EQ(Count(), 0);
  second->Delete();
  EXPECT_EQ(second->Id(), 0);
  EXPECT_EQ(second->Meldung(), "");
}

TEST_P(Meldungen, LastNumbersPerPrefix) {
  auto report = Connected();
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
  // The prefix goes in as given; a second statement never runs.
  EXPECT_EQ(ErrorNumberOf([&] { report->GetLastNrVorsatz("x'; DELETE FROM T_Meldung; --"); }),
            3129);
  EXPECT_EQ(ErrorNumberOf([&] { report->ReadByNr(4, "x'; DELETE FROM T_Meldung; --"); }), 3129);
  EXPECT_EQ(Count(), 5);
}

TEST_P(Meldungen, NullRulesOfTheLoadingTable) {
  const int32_t id = CreateReport("mel", {.text = "alter Text"})->Id();
  const std::string where = " WHERE lId = " + std::to_string(id);
  auto report = Connected();

  ztktest::Exec("mel",
                "UPDATE T_Meldung SET stMelder = NULL, stMeldeZeit = NULL, lGebId = NULL, "
                "lSoId = NULL, byGebTyp = NULL, byHerkunft = NULL, stOrt = NULL" +
                    where);
  report->ReadById(id);
  EXPECT_EQ(report->Melder(), "");
  EXPECT_EQ(report->MeldeZeit(), "");
  EXPECT_EQ(report->GebId(), 0);
  EXPECT_EQ(report->SoId(), 0);
  EXPECT_EQ(report->GebTyp(), 0);
  EXPECT_EQ(report->Herkunft(), 0);
  EXPECT_EQ(report->Ort(), "");

  // A Null report text keeps the text the object held.
  ztktest::Exec("mel", "UPDATE T_Meldung SET stMeldung = NULL" + where);
  report->ReadById(id);
  EXPECT_EQ(report->Meldung(), "alter Text");

  // A Null report date fails after the first six fields are filled.
  ztktest::Exec("mel",
                "UPDATE T_Meldung SET lNr = 31, stMelder = 'Neu', lMelderFaId = 8, "
                "stMelderTel = '0800', MeldeDatum = NULL, lObjId = 999" +
                    where);
  report->ObjId(1);
  EXPECT_EQ(ErrorNumberOf([&] { report->ReadById(id); }), 94);
  EXPECT_EQ(report->Nr(), 31);
  EXPECT_EQ(report->Melder(), "Neu");
  EXPECT_EQ(report->MelderFaId(), 8);
  EXPECT_EQ(report->MelderTel(), "0800");
  EXPECT_EQ(report->ObjId(), 1);
}
