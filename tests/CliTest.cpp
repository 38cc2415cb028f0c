// The ztk tool, driven as a user drives it: the built binary, its exit
// status, what it prints, and its JSON parsed back.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "Engines.h"
#include "TestSupport.h"
#include "ZtkRun.h"

using ztktest::Arg;
using ztktest::Outcome;
using ztktest::Ztk;

namespace {

using Cli = ztktest::ZtkDatabase;

}  // namespace

TEST_F(Cli, InitRefusesAnExistingFileAndUsageErrorsExitTwo) {
  const Outcome again = Ztk({"init", path});
  EXPECT_EQ(again.code, 1);
  EXPECT_NE(again.err.find("already exists"), std::string::npos) << again.err;
  EXPECT_EQ(Ztk({}).code, 2);
  EXPECT_EQ(Ztk({"init"}).code, 2);
  EXPECT_EQ(Ztk({"auftrag", "list"}).code, 2);  // no database given
  EXPECT_EQ(On({"auftrag", "list", "--open", "--done"}).code, 2);
  const Outcome sort = On({"auftrag", "list", "--sort", "irgendwie"});
  EXPECT_EQ(sort.code, 2);
  EXPECT_NE(sort.err.find("--sort"), std::string::npos);
  EXPECT_EQ(On({"meldung", "list", "--obj", "5"}).code, 2);
  EXPECT_EQ(On({"auftrag", "show", "sieben"}).code, 2);
  EXPECT_EQ(On({"auftrag", "list", "--help"}).code, 0);

  // Tables another program made, named as it liked, are counted too.
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
  EXPECT_EQ(
      sqlite3_exec(file, "CREATE TABLE SqliteImport (n); CREATE TABLE \"Alt; DROP TABLE x\" (n)",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(file);
  const auto tables = On({"--json", "tables"}).Json();
  EXPECT_EQ(tables.size(), 8u) << tables.dump();
  EXPECT_EQ(tables["T_Auftrag"], 0);
  EXPECT_EQ(tables["SqliteImport"], 0);
  EXPECT_EQ(tables["Alt; DROP TABLE x"], 0);
}

TEST_F(Cli, RecordLifeCycleWithNumbersPerPrefixAndLinks) {
  const auto m1 =
      On({"--json", "meldung", "add", "Meldung=Licht defekt", "Melder=Frau O'Hara"}).Json();
  const auto m2 = On({"--json", "meldung", "add", "NrVorsatz=S", "Meldung=Tür"}).Json();
  const auto m3 = On({"--json", "meldung", "add", "Meldung=Heizung"}).Json();
  EXPECT_EQ(m1["Nr"], 1);
  EXPECT_EQ(m2["Nr"], 1);  // numbers count per prefix
  EXPECT_EQ(m3["Nr"], 2);
  EXPECT_EQ(m1["Melder"], "Frau O'Hara");
  EXPECT_EQ(m1["ErledigtDatum"], nullptr);

  const auto order = On({"--json", "auftrag", "add", "Auftrag=Leuchte tauschen",
                         "AuftragsDatum=15.11.2026", "Kosten=12,5", "MeldungId=" + Arg(m1["Id"])})
                         .Json();
  const std::string id = Arg(order["Id"]);
  EXPECT_EQ(order["AuftragsDatum"], "2026-11-15");
  EXPECT_EQ(order["Kosten"], "12.5");  // exact decimal text
  EXPECT_EQ(order["MeldungId"], m1["Id"]);
  EXPECT_EQ(On({"--json", "auftrag", "add", "Auftrag=zweiter"}).Json()["Nr"], 2);

  const Outcome set = On({"auftrag", "set", id, "Ort=Köln", "Erledigt=ja"});
  EXPECT_EQ(set.code, 0) << set.err;
  EXPECT_NE(set.out.find("Köln"), std::string::npos);
  const auto shown = On({"--json", "auftrag", "show", id}).Json();
  EXPECT_EQ(shown["Ort"], "Köln");
  EXPECT_EQ(shown["Erledigt"], true);

  // A dispatcher writes only over what was shown: a token another change
  // replaced is a conflict (exit 3) and writes nothing.
  const std::string token = shown["UId"];
  const Outcome guarded = On({"auftrag", "set", id, "Ort=Ulm", "--if-unchanged", token});
  EXPECT_EQ(guarded.code, 0) << guarded.err;
  const Outcome stale = On({"auftrag", "set", id, "Ort=Bonn", "--if-unchanged", token});
  EXPECT_EQ(stale.code, 3);
  EXPECT_NE(stale.err.find("changed by someone else since it was shown"), std::string::npos)
      << stale.err;
  EXPECT_EQ(On({"auftrag", "reopen", id, "--if-unchanged", token}).code, 3);
  const auto after = On({"--json", "auftrag", "show", id}).Json();
  EXPECT_EQ(after["Ort"], "Ulm");
  EXPECT_EQ(after["Erledigt"], true);
  EXPECT_EQ(On({"auftrag", "set", id, "Ort=Köln", "--if-unchanged", after["UId"]}).code, 0);

  EXPECT_EQ(On({"auftrag", "unlink", id, "--meldung", Arg(m1["Id"])}).code, 0);
  EXPECT_EQ(On({"--json", "auftrag", "show", id}).Json()["MeldungId"], 0);
  EXPECT_EQ(On({"auftrag", "link", id, "--meldung", Arg(m2["Id"])}).code, 0);
  const auto linked = On({"--json", "auftrag", "list", "--meldung", Arg(m2["Id"])}).Json();
  ASSERT_EQ(linked.size(), 1u);
  EXPECT_EQ(linked[0]["Auftrag"], "Leuchte tauschen");

  const auto done = On({"--json", "meldung", "done", Arg(m3["Id"])}).Json();
  EXPECT_EQ(done["Erledigt"], true);
  EXPECT_NE(done["ErledigtDatum"], nullptr);

  const Outcome bad = On({"auftrag", "set", id, "Kosten=1,23456"});
  EXPECT_EQ(bad.code, 2);
  EXPECT_NE(bad.err.find("Kosten"), std::string::npos);
  EXPECT_EQ(On({"--json", "auftrag", "show", id}).Json()["Kosten"], "12.5");  // untouched

  // Linked to a report: the delete names the link, --cascade takes it along.
  const Outcome refused = On({"auftrag", "delete", id});
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.err.find("the link to report " + m2["NrVorsatz"].get<std::string>() +
                             Arg(m2["Nr"]) + " (id " + Arg(m2["Id"]) + ")"),
            std::string::npos)
      << refused.err;
  EXPECT_EQ(On({"auftrag", "delete", id, "--cascade"}).code, 0);
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_AuftragMeldung"], 0);
  const Outcome gone = On({"auftrag", "show", id});
  EXPECT_EQ(gone.code, 1);
  EXPECT_NE(gone.err.find("there is no order with id " + id), std::string::npos) << gone.err;
  EXPECT_EQ(On({"auftrag", "delete", id}).code, 1);
}

TEST_F(Cli, BookingsAndDocumentsOfAnOrder) {
  const std::string order = On({"--json", "auftrag", "add", "Auftrag=Heizung"}).Id();
  ASSERT_EQ(On({"leistung", "add", "AuftragId=" + order, "Stunden=1,5", "PreisProStd=68.50"}).code,
            0);
  ASSERT_EQ(On({"material", "add", "AuftragId=" + order, "Bezeichnung=Ventil", "Einheit=Stk",
                "Menge=2", "Fremdleistung=nein"})
                .code,
            0);
  ASSERT_EQ(On({"material", "add", "AuftragId=" + order, "Bezeichnung=Pumpe", "Einheit=Stk",
                "Fremdleistung=ja"})
                .code,
            0);
  ASSERT_EQ(On({"dokument", "add", "OrderId=" + order, "Pfad=/srv/docs", "Datei=angebot.pdf"}).code,
            0);

  const auto labour = On({"--json", "leistung", "list", "--auftrag", order}).Json();
  ASSERT_EQ(labour.size(), 1u);
  EXPECT_EQ(labour[0]["Stunden"], 1.5);
  EXPECT_EQ(labour[0]["PreisProStd"], "68.5");
  const auto own = On({"--json", "material", "list", "--auftrag", order, "--own"}).Json();
  ASSERT_EQ(own.size(), 1u);
  EXPECT_EQ(own[0]["Bezeichnung"], "Ventil");
  EXPECT_EQ(own[0]["Einheit"], "Stk");
  EXPECT_EQ(On({"--json", "material", "list", "--auftrag", order, "--fremd"}).Json().size(), 1u);
  EXPECT_EQ(On({"--json", "material", "list", "--auftrag", order}).Json().size(), 2u);
  EXPECT_EQ(On({"material", "set", Arg(own[0]["Id"]), "Einheit=kg"}).code, 2);
  EXPECT_EQ(On({"--json", "dokument", "list", "--auftrag", order}).Json()[0]["Datei"],
            "angebot.pdf");
  EXPECT_EQ(On({"dokument", "list"}).code, 2);
  EXPECT_EQ(On({"leistung", "add", "Stunden=1"}).code, 2);  // no order
}

TEST_F(Cli, OrdersAndReportsAreNamedByTheirNumbersToo) {
  const auto first = On({"--json", "auftrag", "add", "Auftrag=Licht", "NrVorsatz=HT"}).Json();
  const std::string ref = "HT" + Arg(first["Nr"]);
  const int id = first["Id"].get<int>();
  EXPECT_EQ(On({"--json", "auftrag", "show", ref}).Json()["Id"], id);
  std::string lower = ref;
  lower[0] = 'h';
  EXPECT_EQ(On({"--json", "auftrag", "show", lower}).Json()["Id"], id);  // any case
  ASSERT_EQ(On({"leistung", "add", "AuftragId=" + std::to_string(id), "Stunden=2"}).code, 0);
  EXPECT_EQ(On({"--json", "leistung", "list", "--auftrag", ref}).Json().size(), 1u);
  const auto report = On({"--json", "meldung", "add", "Meldung=Tür", "NrVorsatz=M"}).Json();
  const std::string reportRef = "M" + Arg(report["Nr"]);
  EXPECT_EQ(On({"auftrag", "link", ref, "--meldung", reportRef}).code, 0);
  EXPECT_EQ(On({"--json", "auftrag", "list", "--meldung", reportRef}).Json().size(), 1u);

  // A number two rows share names neither: both ids are given instead.
  const auto twin = On({"--json", "auftrag", "add", "Auftrag=Zwilling", "NrVorsatz=HT",
                        "Nr=" + Arg(first["Nr"]), "--force"})
                        .Json();
  const Outcome ambiguous = On({"auftrag", "show", ref});
  EXPECT_EQ(ambiguous.code, 1);
  EXPECT_NE(ambiguous.err.find(std::to_string(id) + ", " + Arg(twin["Id"])), std::string::npos)
      << ambiguous.err;
  EXPECT_EQ(On({"auftrag", "show", "ZZ999"}).code, 1);
  EXPECT_EQ(On({"auftrag", "show", "HT"}).code, 2);
  EXPECT_EQ(On({"auftrag", "show", "1; DROP TABLE T_Auftrag"}).code, 2);
  EXPECT_EQ(On({"leistung", "show", "HT1"}).code, 2);  // bookings have ids only
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_Auftrag"], 2);
}

TEST_F(Cli, TheDispatchersQuestions) {
  const std::string report = On({"--json", "meldung", "add", "Meldung=Wasser im Keller"}).Id();
  const std::string late = On({"--json", "auftrag", "add", "Auftrag=Pumpe prüfen",
                               "ErledBisDatum=01.01.2020", "MeldungId=" + report})
                               .Id();
  On({"auftrag", "add", "Auftrag=Fenster", "ErledBisDatum=31.12.2098", "Ort=ÄUSSERES Lager"});
  const std::string doneLate =
      On({"--json", "auftrag", "add", "Auftrag=Tür", "ErledBisDatum=01.01.2020"}).Id();
  ASSERT_EQ(On({"auftrag", "done", doneLate}).code, 0);

  const auto overdue = On({"--json", "auftrag", "list", "--overdue"}).Json();
  ASSERT_EQ(overdue.size(), 1u);
  EXPECT_EQ(Arg(overdue[0]["Id"]), late);
  EXPECT_EQ(overdue[0]["ErledBisDatum"], "2020-01-01");  // the due date is a list column
  EXPECT_EQ(On({"auftrag", "list", "--overdue", "--done"}).code, 2);

  // Any case, umlauts too; an order is found by its report's text.
  EXPECT_EQ(On({"--json", "auftrag", "list", "--search", "äusseres"}).Json().size(), 1u);
  const auto byReport = On({"--json", "auftrag", "list", "--search", "KELLER"}).Json();
  ASSERT_EQ(byReport.size(), 1u);
  EXPECT_EQ(Arg(byReport[0]["Id"]), late);
  EXPECT_EQ(On({"--json", "meldung", "list", "--search", "wasser"}).Json().size(), 1u);

  // What is booked on an order, with the order.
  ASSERT_EQ(On({"leistung", "add", "AuftragId=" + late, "Stunden=1,5", "PreisProStd=60"}).code, 0);
  ASSERT_EQ(On({"material", "add", "AuftragId=" + late, "Bezeichnung=Dichtung", "Einheit=Stk",
                "Menge=4", "PreisProEinheit=2,25"})
                .code,
            0);
  const auto shown = On({"--json", "auftrag", "show", late}).Json();
  EXPECT_EQ(shown["StundenGebucht"], 1.5);
  EXPECT_EQ(shown["KostenLeistung"], "90");
  EXPECT_EQ(shown["KostenMaterial"], "9");
}

TEST_F(Cli, SummaryPerSiteForAPeriod) {
  const std::string a = On({"--json", "auftrag", "add", "Auftrag=eins", "SoId=3",
                            "AuftragsDatum=heute", "ErledBisDatum=01.01.2020"})
                            .Id();
  const std::string b =
      On({"--json", "auftrag", "add", "Auftrag=zwei", "SoId=3", "AuftragsDatum=heute"}).Id();
  ASSERT_EQ(On({"auftrag", "done", b}).code, 0);
  ASSERT_EQ(On({"auftrag", "add", "Auftrag=alt", "SoId=7", "AuftragsDatum=15.01.2020"}).code, 0);
  ASSERT_EQ(
      On({"leistung", "add", "AuftragId=" + a, "Stunden=2", "PreisProStd=50", "AusfDatum=heute"})
          .code,
      0);
  ASSERT_EQ(On({"material", "add", "AuftragId=" + a, "Bezeichnung=Filter", "Einheit=Stk", "Menge=3",
                "PreisProEinheit=4"})
                .code,
            0);

  const auto now = On({"--json", "summary"}).Json();
  ASSERT_EQ(now.size(), 2u) << now.dump();  // site 3 and the total: site 7 is quiet
  EXPECT_EQ(now[0]["Standort"], "3");
  EXPECT_EQ(now[0]["Eroeffnet"], 2);
  EXPECT_EQ(now[0]["Erledigt"], 1);
  EXPECT_EQ(now[0]["Ueberfaellig"], 1);
  EXPECT_EQ(now[0]["Stunden"], 2.0);
  EXPECT_EQ(now[0]["KostenLeistung"], "100");
  EXPECT_EQ(now[0]["KostenMaterial"], "12");
  EXPECT_EQ(now[1]["Standort"], "gesamt");
  EXPECT_EQ(now[1]["Eroeffnet"], 2);

  const auto then = On({"--json", "summary", "--from", "01.01.2020", "--to", "31.01.2020"}).Json();
  ASSERT_EQ(then.size(), 3u) << then.dump();
  EXPECT_EQ(then[0]["Eroeffnet"], 0);
  EXPECT_EQ(then[0]["Ueberfaellig"], 1);  // overdue is as of today
  EXPECT_EQ(then[1]["Standort"], "7");
  EXPECT_EQ(then[1]["Eroeffnet"], 1);
  EXPECT_EQ(On({"summary", "--from", "02.01.2020", "--to", "01.01.2020"}).code, 2);
}

TEST_F(Cli, RefusedWritesExitOneAndLeaveNothingBehind) {
  const std::string id = On({"--json", "auftrag", "add", "Auftrag=alt"}).Id();
  {
    // Another writer's change in between: the update matches no row. And a
    // link the database refuses.
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(
        sqlite3_exec(db,
                     "CREATE TRIGGER t_skip BEFORE UPDATE ON T_Auftrag BEGIN SELECT "
                     "RAISE(IGNORE); END; CREATE TRIGGER t_refuse BEFORE INSERT ON "
                     "T_AuftragMeldung BEGIN SELECT RAISE(ABORT, 'Verknüpfung abgelehnt'); END;",
                     nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(db);
  }
  const Outcome conflict = On({"auftrag", "set", id, "Auftrag=neu"});
  EXPECT_EQ(conflict.code, 3);
  EXPECT_NE(conflict.err.find("someone else changed or deleted this row"), std::string::npos)
      << conflict.err;
  EXPECT_EQ(conflict.err.find("fehlgeschlagen"), std::string::npos) << conflict.err;
  EXPECT_EQ(On({"--json", "auftrag", "show", id}).Json()["Auftrag"], "alt");

  // The order and its link are one write: a refused link leaves no order.
  const std::string report = On({"--json", "meldung", "add", "Meldung=Licht"}).Id();
  const Outcome half = On({"auftrag", "add", "Auftrag=mit Link", "MeldungId=" + report});
  EXPECT_EQ(half.code, 1);
  EXPECT_NE(half.err.find("Verknüpfung abgelehnt"), std::string::npos) << half.err;
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_Auftrag"], 1);
}

TEST(CliDemo, ACtrlCLeavesNoHalfMadeFileAndARerunWorks) {
  ztktest::TempDb dir(false);
  const std::string path = dir.Dir() + "/demo.db";
  const Outcome stopped = Ztk({"demo", path, "--reports", "100000"}, {}, path);
  EXPECT_EQ(stopped.code, 130) << stopped.err;
  EXPECT_NE(stopped.err.find("interrupted (Ctrl-C): nothing was kept"), std::string::npos)
      << stopped.err;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    EXPECT_FALSE(std::filesystem::exists(path + suffix)) << suffix;
  }
  EXPECT_EQ(Ztk({"demo", path, "--reports", "10"}).code, 0);
}

TEST(CliDemo, BuildsTheDataSetAndShowsTheOpenOrders) {
  ztktest::TempDb dir(false);
  const std::string path = dir.Dir() + "/demo.db";
  const Outcome demo = Ztk({"demo", path});
  ASSERT_EQ(demo.code, 0) << demo.err;
  EXPECT_NE(demo.out.find("open orders"), std::string::npos);
  EXPECT_EQ(Ztk({"demo", path}).code, 1);  // never over an existing file

  const auto counts = Ztk({"--db", path, "--json", "tables"}).Json();
  EXPECT_GE(counts["T_Meldung"], 60);
  EXPECT_GT(counts["T_Auftrag"], counts["T_Meldung"]);
  EXPECT_GT(counts["T_Leistung"], 0);
  EXPECT_GT(counts["T_AMaterial"], 0);
  EXPECT_GT(counts["T_MsgOrderDokument"], 0);
  EXPECT_GT(counts["T_AuftragMeldung"], 0);

  const auto open =
      Ztk({"--db", path, "--json", "auftrag", "list", "--open", "--sort", "datum"}).Json();
  ASSERT_GT(open.size(), 5u);
  std::string last;
  for (const auto& o : open) {
    EXPECT_EQ(o["Erledigt"], false);
    EXPECT_GE(o["AuftragsDatum"].get<std::string>(), last);
    last = o["AuftragsDatum"].get<std::string>();
  }
  EXPECT_NE(demo.out.find(std::to_string(open.size()) + " open orders"), std::string::npos);
  const auto done =
      Ztk({"--db", path, "--json", "meldung", "list", "--done", "--days", "90"}).Json();
  EXPECT_GT(done.size(), 0u);
  const auto site =
      Ztk({"--db", path, "--json", "auftrag", "list", "--sites", "1,2", "--done"}).Json();
  for (const auto& o : site) EXPECT_TRUE(o["SoId"] == 1 || o["SoId"] == 2 || o["SoId"] == 0);
}

TEST(CliOdbc, InitAndWorkOnAnOdbcSource) {
  ztktest::TempDb file(false);
  const std::string connect = "Driver=SQLite3;Database=" + file.Path() + ";";
  const Outcome init = Ztk({"init", "--odbc", connect});
  if (init.code != 0 && !ztktest::EnginesRequired()) GTEST_SKIP() << init.err;
  ASSERT_EQ(init.code, 0) << init.err;
  EXPECT_EQ(Ztk({"init", "--odbc", connect}).code, 1);
  ASSERT_EQ(Ztk({"--odbc", connect, "meldung", "add", "Meldung=über ODBC"}).code, 0);
  const auto reports = Ztk({"--odbc", connect, "--json", "meldung", "list", "--open"}).Json();
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(reports[0]["Meldung"], "über ODBC");

  const Outcome broken = Ztk({"--odbc", "Driver={Kein Treiber};", "auftrag", "list"});
  EXPECT_EQ(broken.code, 1);
  EXPECT_NE(broken.err.find("CTkDb.OpenOdbcDb"), std::string::npos) << broken.err;
}

// On both servers: the tables of this database only, and a prefix that
// would hide a second statement from a reading that is not the server's.
TEST(CliOdbc, TablesAndHostileFieldsOnEveryServer) {
  for (auto engine : {ztktest::Engine::kPostgres, ztktest::Engine::kMariaDb}) {
    ztktest::EngineDb db(engine);
    {
      // A table another program named as it liked is counted, not run.
      ZTkDb::CTkDb tkdb;
      ZTKTEST_OPEN_ENGINE(db, tkdb, "cli");
      const char q = engine == ztktest::Engine::kMariaDb ? '`' : '"';
      ztktest::Exec("cli", std::string("CREATE TABLE ") + q + "Alt; DROP TABLE T_Auftrag" + q +
                               " (n INTEGER)");
    }
    const std::string connect = db.ConnectString();
    const Outcome tables = Ztk({"--odbc", connect, "tables"});
    ASSERT_EQ(tables.code, 0) << tables.err;
    EXPECT_EQ(std::count(tables.out.begin(), tables.out.end(), '\n'), 7 + 2) << tables.out;
    EXPECT_NE(tables.out.find("Alt; DROP TABLE T_Auftrag"), std::string::npos) << tables.out;
    ASSERT_EQ(Ztk({"--odbc", connect, "auftrag", "add", "Auftrag=bleibt"}).code, 0);
    for (const char* prefix : {"NrVorsatz=' || E'\\'' ; DELETE FROM T_Auftrag; --",
                               "NrVorsatz=x' # '\n; DELETE FROM T_Auftrag; -- "}) {
      Ztk({"--odbc", connect, "meldung", "add", prefix});
      Ztk({"--odbc", connect, "meldung", "list", "--prefix", std::string(prefix).substr(10)});
    }
    const auto orders = Ztk({"--odbc", connect, "--json", "auftrag", "list"}).Json();
    EXPECT_EQ(orders.size(), 1u);
  }
}

// What the tool keeps a help-desk engineer from doing by a slip: a second
// link, a blank or dangling record, a number twice, a time or an enum out
// of range, a done state without its date, a delete that orphans rows.
TEST_F(Cli, GuardsKeepTheDataConsistent) {
  const std::string m1 = On({"--json", "meldung", "add", "Meldung=eins"}).Id();
  const std::string m2 = On({"--json", "meldung", "add", "Meldung=zwei"}).Id();
  const std::string a = On({"--json", "auftrag", "add", "Auftrag=Tür", "MeldungId=" + m1}).Id();

  EXPECT_EQ(On({"auftrag", "link", a, "--meldung", m1}).code, 1);  // the pair exists
  const Outcome second = On({"auftrag", "link", a, "--meldung", m2});
  EXPECT_EQ(second.code, 1);
  EXPECT_NE(second.err.find("one report"), std::string::npos) << second.err;
  EXPECT_EQ(On({"auftrag", "unlink", a, "--meldung", m2}).code, 1);  // no such link
  EXPECT_EQ(On({"--json", "auftrag", "list"}).Json().size(), 1u);    // lists still work
  EXPECT_EQ(On({"auftrag", "set", a, "MeldungId=" + m2}).code, 2);

  EXPECT_EQ(On({"auftrag", "add"}).code, 2);                                   // blank
  EXPECT_EQ(On({"leistung", "add", "AuftragId=99999", "Stunden=1"}).code, 1);  // no order
  EXPECT_EQ(On({"material", "add", "AuftragId=" + a}).code, 2);                // no Bezeichnung
  EXPECT_EQ(On({"auftrag", "add", "Auftrag=x", "MeldungId=99999"}).code, 1);
  EXPECT_EQ(On({"dokument", "add", "OrderId=99999", "Datei=a.pdf"}).code, 1);
  const Outcome twice = On({"meldung", "add", "Meldung=doppelt", "Nr=1"});
  EXPECT_EQ(twice.code, 1);
  EXPECT_NE(twice.err.find("--force"), std::string::npos) << twice.err;
  EXPECT_EQ(On({"meldung", "add", "Meldung=doppelt", "Nr=1", "--force"}).code, 0);
  for (const char* bad : {"AuftragsZeit=25:99", "AuftragsZeit=abc", "ObjTyp=12"}) {
    EXPECT_EQ(On({"auftrag", "set", a, bad}).code, 2) << bad;
  }
  EXPECT_EQ(On({"--json", "tables"}).Json()["T_Auftrag"], 1);

  // A desk's slips on set as on add; amounts in every way a desk writes them.
  for (const char* slip : {"Auftrag=   ", "Kosten=-5", "Kosten=1000000,01", "Kosten=1.2.3",
                           "Kosten=99999999999999999999", "ErledigtDatum=01.01.2999"}) {
    EXPECT_EQ(On({"auftrag", "set", a, slip}).code, 2) << slip;
  }
  EXPECT_NE(On({"auftrag", "set", a, "Kosten=99999999999999999999"}).err.find("too large"),
            std::string::npos);
  EXPECT_EQ(On({"auftrag", "done", a, "--date", "01.01.2999"}).code, 2);
  for (const auto& [given, stored] :
       std::vector<std::pair<std::string, std::string>>{{"1.234,56", "1234.56"},
                                                        {"1,234.56", "1234.56"},
                                                        {"12,50", "12.5"},
                                                        {"12.50", "12.5"},
                                                        {"1.234.567", "1234567"}}) {
    const Outcome written = On({"--json", "auftrag", "set", a, "Kosten=" + given, "--force"});
    ASSERT_EQ(written.code, 0) << given << written.err;
    EXPECT_EQ(written.Json()["Kosten"], stored) << given;
  }
  EXPECT_EQ(On({"--json", "auftrag", "set", a, "Kosten=1500000", "--force"}).code, 0);
  // A number another order holds is refused on set too; hours past a day
  // need --force, negative ones are refused.
  const auto other = On({"--json", "auftrag", "add", "Auftrag=anderer"}).Json();
  const std::string otherId = Arg(other["Id"]);
  const Outcome taken = On({"auftrag", "set", a, "Nr=" + Arg(other["Nr"])});
  EXPECT_EQ(taken.code, 1);
  EXPECT_NE(taken.err.find("exists already"), std::string::npos) << taken.err;
  EXPECT_EQ(On({"leistung", "add", "AuftragId=" + otherId, "Stunden=30"}).code, 2);
  EXPECT_EQ(On({"leistung", "add", "AuftragId=" + otherId, "Stunden=-1"}).code, 2);
  EXPECT_EQ(On({"leistung", "add", "AuftragId=" + otherId, "Stunden=30", "--force"}).code, 0);
  EXPECT_EQ(On({"auftrag", "delete", otherId, "--cascade"}).code, 0);

  // Done and open again, with the date following the flag; never done
  // before it was opened, and a done or open one is left as it is.
  ASSERT_EQ(On({"auftrag", "set", a, "AuftragsDatum=01.11.2026"}).code, 0);
  EXPECT_EQ(On({"auftrag", "done", a, "--date", "31.10.2026"}).code, 2);
  auto order = On({"--json", "auftrag", "done", a, "--date", "03.11.2026"}).Json();
  const std::string token = order["UId"];
  EXPECT_EQ(order["ErledigtDatum"], "2026-11-03");
  order = On({"--json", "auftrag", "done", a}).Json();  // done already: keeps its date
  EXPECT_EQ(order["ErledigtDatum"], "2026-11-03");
  EXPECT_EQ(order["UId"], token);  // and nothing was written
  EXPECT_EQ(On({"auftrag", "done", a, "--if-unchanged", ""}).code, 2);
  // A done date alone marks it done, an empty one opens it; both at odds
  // with the flag are refused.
  EXPECT_EQ(On({"auftrag", "set", a, "Erledigt=nein", "ErledigtDatum=02.11.2026"}).code, 2);
  order = On({"--json", "auftrag", "set", a, "ErledigtDatum="}).Json();
  EXPECT_EQ(order["Erledigt"], false);
  order = On({"--json", "auftrag", "set", a, "ErledigtDatum=04.11.2026"}).Json();
  EXPECT_EQ(order["Erledigt"], true);
  // Amounts a desk could mean two ways are refused, not guessed.
  for (const char* twoWays : {"Kosten=1.234", "Kosten=1,234", "Kosten=-12.500"}) {
    EXPECT_EQ(On({"auftrag", "set", a, twoWays}).code, 2) << twoWays;
  }
  order = On({"--json", "auftrag", "set", a, "Erledigt=nein"}).Json();
  EXPECT_EQ(order["Erledigt"], false);
  EXPECT_EQ(order["ErledigtDatum"], nullptr);
  EXPECT_EQ(On({"--json", "auftrag", "list", "--open"}).Json().size(), 1u);
  order = On({"--json", "auftrag", "set", a, "Erledigt=ja"}).Json();
  EXPECT_NE(order["ErledigtDatum"], nullptr);
  order = On({"--json", "auftrag", "reopen", a}).Json();
  EXPECT_EQ(order["Erledigt"], false);
  EXPECT_EQ(order["ErledigtDatum"], nullptr);

  // What is printed is what is stored: the link row, a placeholder filled.
  order = On({"--json", "auftrag", "set", a, "Bemerkung=Auftrag #lId#"}).Json();
  EXPECT_EQ(order["Bemerkung"], "Auftrag " + a);
  EXPECT_EQ(order["MeldungId"], std::stoi(m1));

  // A delete that would orphan rows lists them; --cascade takes them along.
  ASSERT_EQ(On({"leistung", "add", "AuftragId=" + a, "Stunden=1"}).code, 0);
  ASSERT_EQ(On({"dokument", "add", "OrderId=" + a, "Datei=foto.jpg"}).code, 0);
  const Outcome orphans = On({"auftrag", "delete", a});
  EXPECT_EQ(orphans.code, 1);
  EXPECT_NE(orphans.err.find("labour booking"), std::string::npos) << orphans.err;
  EXPECT_NE(orphans.err.find("document link"), std::string::npos) << orphans.err;
  EXPECT_EQ(On({"meldung", "delete", m1}).code, 1);  // linked to the order
  EXPECT_EQ(On({"auftrag", "delete", a, "--cascade"}).code, 0);
  const auto left = On({"--json", "tables"}).Json();
  EXPECT_EQ(left["T_Leistung"], 0);
  EXPECT_EQ(left["T_MsgOrderDokument"], 0);
  EXPECT_EQ(left["T_AuftragMeldung"], 0);
  EXPECT_EQ(On({"meldung", "delete", m1}).code, 0);
}
