// Hostile and awkward input on every engine: texts of any kind, the limits
// of dates and money, statements smuggled into the slots that go in
// unescaped, and files that are no database.
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <fstream>

#include "Engines.h"
#include "TestData.h"
#include "TestSupport.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CMeldung.h"
#include "ztkdb/CMeldungListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;
using ztktest::ErrorNumberOf;

namespace {

class BadInput : public ztktest::EngineTest {
 protected:
  BadInput() : EngineTest("bad") {}

  std::unique_ptr<CMeldung> Report(const std::string& text, const std::string& remark,
                                   Date when = Date::FromYmd(2026, 11, 20)) {
    auto r = std::make_unique<CMeldung>();
    r->ConnectStorage("bad");
    r->CreateNew4(1, text, 0, text, when, text, 0, sotRoom, text, NoDate, text, NoDate, text, false,
                  NoDate, text, 0, 0, 0, 0, "M", text, text, text, text, remark, text, text, text);
    return r;
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, BadInput, ztktest::AllEngines(), ztktest::EngineName);

TEST_P(BadInput, AnyUtf8TextRoundTripsInEveryTextParameter) {
  const std::string text =
      "O'Neil \\\\ \"x\" # #stKST# ; -- /* */ \n\t\r Grüße 😀 ' ; DELETE FROM T_Meldung; --";
  std::string remark;
  while (remark.size() < 10000) remark += "Bemerkung mit 'Quote' und # und ; und 😀. ";
  auto r = Report(text, remark);
  ASSERT_GT(r->Id(), 0);
  auto back = ztktest::ReadBack<CMeldung>("bad", r->Id());
  for (const std::string* t :
       {&back->Melder(), &back->MelderTel(), &back->MeldeZeit(), &back->Meldung(),
        &back->ErledBisZeit(), &back->WiederZeit(), &back->ErledigtZeit(), &back->Bearbeiter(),
        &back->TelBearbeiter(), &back->Ort(), &back->Objekt(), &back->Email(),
        &back->Leistungsart(), &back->Verantwortlicher()}) {
    EXPECT_EQ(*t, text);
  }
  EXPECT_EQ(back->Bemerkung(), remark);
  // The one kind of text that does not come back: one naming a placeholder
  // the template fills after it. Hosts have always seen it replaced.
  back->Meldung("#stOrt# und #lId# bleiben nicht");
  back->Update();
  back->ReadById(r->Id());
  EXPECT_EQ(back->Meldung(), text + " und " + std::to_string(r->Id()) + " bleiben nicht");
  EXPECT_EQ(Rows("T_Meldung"), 1);
  EXPECT_TRUE(boxes.boxes.empty());
}

// A NUL never reaches an engine: the statement is refused with a clear
// error. Bytes that are not well-formed UTF-8 are stored as they are where
// the engine takes bytes (SQLite, either way) and refused with their place
// by a server, before anything is sent: a lenient decoder would read an
// overlong quote (C0 A7) as a real one behind the lexer's back, and store a
// surrogate, an overlong letter or a value past U+10FFFF as another text.
TEST_P(BadInput, NulIsRefusedAndInvalidUtf8IsStoredOrRefusedClearly) {
  try {
    Report(std::string("vor\0nach", 8), "");
    ADD_FAILURE() << "a NUL went through";
  } catch (const Error& e) {
    EXPECT_EQ(e.Number(), 3075);
    EXPECT_NE(e.Description().find("NUL"), std::string::npos) << e.Description();
  }
  EXPECT_EQ(Rows("T_Meldung"), 0);

  auto kept = Report("bleibt", "");
  const std::string smuggle = "; UPDATE T_Meldung SET stMeldung = 'weg'; -- ";
  for (const std::string& bad :
       {std::string("Gr\xFC\xDF"
                    "e"),
        "x\xC0\xA7" + smuggle, "x\xE0\x80\xA7" + smuggle, "x\xF0\x80\x80\xA7" + smuggle,
        std::string("a\xC0\x80z"), std::string("\xC1\x81"),
        std::string("\xED\xA0\x80"
                    "b"),
        std::string("\xED\xA0\xBD\xED\xB8\x80"), std::string("\xF4\x90\x80\x80"),
        std::string("\xF8\x88\x80\x80\x80"), std::string("kurz\xE2\x82")}) {
    SCOPED_TRACE(testing::PrintToString(bad));
    auto r = ztktest::ReadBack<CMeldung>("bad", kept->Id());
    r->Meldung(bad);
    if (db.IsServer()) {
      try {
        r->Update();
        ADD_FAILURE() << "invalid UTF-8 accepted";
      } catch (const Error& e) {
        EXPECT_NE(e.Description().find("[22021]"), std::string::npos) << e.Description();
        EXPECT_NE(e.Description().find("(byte "), std::string::npos) << e.Description();
      }
      EXPECT_EQ(ErrorNumberOf([&] { Report(bad, ""); }), 3146);
    } else {
      r->Update();
      auto back = ztktest::ReadBack<CMeldung>("bad", kept->Id());
      EXPECT_EQ(back->Meldung(), bad);
    }
    EXPECT_EQ(
        ztktest::Scalar("bad", "SELECT count(*) FROM T_Meldung WHERE stMeldung = 'weg'").ToLong(),
        0);
  }
  EXPECT_EQ(Rows("T_Meldung"), 1);
}

TEST_P(BadInput, DatesAtTheirLimitsAndMoneyBeyondTheStoredRange) {
  auto early = Report("früh", "", Date::FromYmd(100, 1, 1));
  auto late = Report("spät", "", Date::FromYmd(9999, 12, 31, 23, 59, 59));
  auto back = ztktest::ReadBack<CMeldung>("bad", early->Id());
  EXPECT_EQ(back->MeldeDatum(), Date::FromYmd(100, 1, 1));
  // The first day's last second: before 1899 the OLE value's fraction runs
  // away from zero (-657434.99999), and it is still the first day.
  back->ReadById(Report("früh abends", "", Date::FromYmd(100, 1, 1, 23, 59, 59))->Id());
  EXPECT_EQ(back->MeldeDatum(), Date::FromYmd(100, 1, 1, 23, 59, 59));
  back->ReadById(late->Id());
  EXPECT_EQ(back->MeldeDatum(), Date::FromYmd(9999, 12, 31, 23, 59, 59));

  // The largest amount the type holds: DECIMAL(19,4) keeps it exactly; the
  // embedded engine stores it as REAL, and SQLite's driver reads REAL
  // through 15 digits of text: both refuse it before the insert (6) rather
  // than give a different amount back. An amount of 16 digits is kept by
  // the embedded engine and refused by the driver; 15 digits by all.
  auto order = Connected<CAuftrag>();
  const auto create = [&](int64_t scaled) {
    return ErrorNumberOf([&] {
      order->CreateNew7(1, 0, Date::Today(), "", 0, sotRoom, "", NoDate, "", NoDate, "", false,
                        NoDate, "", 0, 0, 0, 0, 0, 0, 0, 0, "A", "", "", "", 0, "", "", "", "", "",
                        false, "", "", Currency::FromScaled(scaled), "", "");
    });
  };
  const bool driver = db.Which() == ztktest::Engine::kSqliteOdbc;
  EXPECT_EQ(create(INT64_MAX), db.IsServer() ? 0 : 6);
  if (db.IsServer()) {
    EXPECT_EQ(order->Kosten().Scaled(), INT64_MAX);
  }
  // The most negative amount has no positive twin: a server keeps it too.
  EXPECT_EQ(create(INT64_MIN), db.IsServer() ? 0 : 6);
  if (db.IsServer()) {
    EXPECT_EQ(order->Kosten().Scaled(), INT64_MIN);
  }
  EXPECT_EQ(Rows("T_Auftrag"), db.IsServer() ? 2 : 0);
  EXPECT_EQ(create(-1234567890123456), driver ? 6 : 0);
  if (!driver) {
    EXPECT_EQ(order->Kosten().Scaled(), -1234567890123456);
  }
  EXPECT_EQ(create(999999999999999), 0);
  EXPECT_EQ(order->Kosten().Scaled(), 999999999999999);
  order->Kosten(Currency::FromScaled(1000000000000000));
  EXPECT_EQ(ErrorNumberOf([&] { order->Update(); }), driver ? 6 : 0);
  auto stored = ztktest::ReadBack<CAuftrag>("bad", order->Id());
  EXPECT_EQ(stored->Kosten().Scaled(), driver ? 999999999999999 : 1000000000000000);
}

// The slots that take their text as it stands: a second statement in any
// of them is refused before the engine sees it, and nothing is deleted.
TEST_P(BadInput, StackedStatementsInTheUnescapedSlotsRunNothing) {
  ztktest::CreateOrder("bad", {.nr = 1});
  Report("eins", "");
  const std::string payload = "x'; DELETE FROM T_Auftrag; DELETE FROM T_Meldung; --";
  auto order = Connected<CAuftrag>();
  auto report = Connected<CMeldung>();
  auto orders = Connected<CAuftragListe>();
  auto reports = Connected<CMeldungListe>();
  const Date day = Date::FromYmd(2026, 11, 20);
  EXPECT_EQ(ErrorNumberOf([&] { order->ReadByNr(1, payload); }), 3129);
  EXPECT_EQ(ErrorNumberOf([&] { report->ReadByNr(1, payload); }), 3129);
  EXPECT_EQ(ErrorNumberOf([&] { report->GetLastNrVorsatz(payload); }), 3129);
  EXPECT_EQ(ErrorNumberOf([&] {
              orders->ReadByDoneAndSoListe({"1) OR 1=1; DELETE FROM T_Auftrag; --"}, false);
            }),
            3129);
  EXPECT_EQ(ErrorNumberOf([&] {
              reports->ReadByDoneAndSoListe({"1", "2); DELETE FROM T_Meldung"}, false);
            }),
            3129);
  // The times stand bare in the embedded engine's text and quoted in the
  // ODBC one: a payload there is refused as a second statement, fails as
  // malformed, or is compared as a mere text; it never runs.
  for (const std::string& times : {payload, std::string("08:00; DELETE FROM T_Meldung")}) {
    const long number =
        ErrorNumberOf([&] { reports->ReadAllInZeitraumDatumZeit(day, times, "12:00"); });
    EXPECT_TRUE(number == 0 || number == 3129 || number == 3075) << number;
  }
  if (db.Jet()) {
    EXPECT_EQ(ErrorNumberOf([&] {
                reports->ReadAllInZeitraumDatumZeit(day, "08:00; DELETE FROM T_Meldung", "09:00");
              }),
              3129);
  }
  EXPECT_EQ(Rows("T_Auftrag"), 1);
  EXPECT_EQ(Rows("T_Meldung"), 1);
}

// A host's parameter syntax in a slot filled unescaped stays the text's own:
// SQLite reads '?' or ':a' there as a parameter never bound (Null), a server
// reads it as the text gives it or refuses it; it never takes the place of a
// value the engine binds, nor keeps one from an earlier run. An id past 32
// bits there is compared as the wider number its literal is.
TEST_P(BadInput, ParameterSyntaxInAnUnescapedSlotTakesNoValuesPlace) {
  ztktest::CreateOrder("bad", {.nr = 1, .so_id = 7});
  ztktest::CreateOrder("bad", {.nr = 2, .so_id = 8});
  auto orders = Connected<CAuftragListe>();
  const auto count = [&](const std::vector<std::string>& sites) {
    const long number = ErrorNumberOf([&] { orders->ReadByDoneAndSoListe(sites, false); });
    if (db.Jet()) {
      EXPECT_EQ(number, 0);
    }
    return number == 0 ? orders->Count() : -number;
  };
  for (const std::string marker : {"?", "?1", "?9", ":a", "@a", "$1", "$a", "#a"}) {
    SCOPED_TRACE(marker);
    EXPECT_EQ(count({"7"}), 1);
    for (const auto& sites : {std::vector<std::string>{"7", marker}, {marker, "8"}, {marker}}) {
      const int32_t n = count(sites);
      if (n < 0) continue;  // refused by the server, as the text is
      EXPECT_EQ(n, sites.size() == 1 ? 0 : 1);
      orders->Requery();
      EXPECT_EQ(orders->Count(), n);
      EXPECT_EQ(count({"8"}), 1);
    }
  }
  EXPECT_EQ(count({"2147483648", "7"}), 1);
  orders->Requery();
  EXPECT_EQ(orders->Count(), 1);
  EXPECT_EQ(count({"7", "-2147483649"}), 1);
}

TEST(BadFiles, WhatIsNoDatabaseIsRefusedAndLeftUntouched) {
  ztktest::TempDb dir(false);
  ztktest::TempDb good;
  const std::string text = dir.Dir() + "/notes.db";
  std::ofstream(text) << "Dies ist keine Datenbank.\n";
  const std::string full = ztktest::FileBytes(good.Path());
  const std::string truncated = dir.Dir() + "/truncated.db";
  std::ofstream(truncated, std::ios::binary) << full.substr(0, 1000);
  const std::string header = dir.Dir() + "/header.db";
  std::string broken = full;
  broken.replace(0, 16, "Kein SQLite! :-)");
  std::ofstream(header, std::ios::binary) << broken;
  const std::string empty = dir.Dir() + "/leer.db";
  std::ofstream{empty};

  for (const std::string& path : {text, truncated, header, empty}) {
    SCOPED_TRACE(path);
    const std::string before = ztktest::FileBytes(path);
    CTkDb tkdb;
    try {
      tkdb.OpenJetDb("kaputt", path, false, false);
      ztktest::Scalar("kaputt", "SELECT count(*) FROM T_Auftrag");
      ADD_FAILURE() << "opened and read";
    } catch (const Error& e) {
      EXPECT_TRUE(e.Number() == 3051 || e.Number() == 3078 || e.Number() == 3000) << e.Number();
      EXPECT_FALSE(e.Description().empty());
      // An empty file is said to be one, not taken for a new database.
      if (path == empty) {
        EXPECT_EQ(e.Number(), 3051);
        EXPECT_NE(e.Description().find("empty"), std::string::npos) << e.Description();
      }
    }
    EXPECT_EQ(ztktest::FileBytes(path), before);
    EXPECT_FALSE(std::filesystem::exists(path + "-wal") &&
                 std::filesystem::file_size(path + "-wal") > 0);
  }
}

// A list is read in blocks of rows where the driver allows it: texts too
// long for the block's arrays, in any row of any block, come back whole.
TEST_P(BadInput, LongTextsComeBackWholeFromAnyRowOfALongList) {
  std::string remark;
  while (remark.size() < 3000) remark += "Grüße 😀 'lang' ";
  for (int i = 0; i < 300; ++i)
    Report("M" + std::to_string(i), i % 97 == 5 ? remark + std::to_string(i) : "kurz");
  auto list = Connected<CMeldungListe>();
  list->ReadAll();
  ASSERT_EQ(list->Count(), 300);
  int whole = 0;
  for (auto r = list->MoveFirst(); r; r = list->MoveNext()) {
    const int i = std::stoi(r->Melder().substr(1));
    EXPECT_EQ(r->Bemerkung(), i % 97 == 5 ? remark + std::to_string(i) : "kurz") << i;
    whole += r->Bemerkung().size() > 3000;
  }
  EXPECT_EQ(whole, 4);
}
