#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>

#include "RecordingDatabase.h"
#include "TestSupport.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CMeldungListe.h"

using namespace ZTkDb;

// Every done-family text of both lists, per kind, sorted (by number) and
// unsorted, as the engine receives it: done, prefix "P", site 5, sites 3
// and 7, 30 days back.
namespace {

// What every text of a list begins with; the table holds the rest.
const std::string kOrderHead =
    "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN T_AuftragMeldung "
    "ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE ";
const std::string kReportHead = "SELECT T_Meldung.* FROM T_Meldung WHERE ";

struct DoneText {
  const char* list;  // "A" orders, "M" reports
  const char* method;
  int16_t kind;
  bool sorted;
  const char* tail;  // after the list's head
};

const DoneText kTexts[] = {
    {"A", "ReadByDone", 1, true,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDone", 2, true,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDone", 1, false,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY "
     "T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDone", 2, false,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY "
     "T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndVorsatz", 1, true,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndVorsatz", 2, true,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND "
     "T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndVorsatz", 1, false,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndVorsatz", 2, false,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND "
     "T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndSo", 1, true,
     "T_Auftrag.bErledigt = -1 AND (T_Auftrag.lSoId = 5 OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSo", 2, true,
     "T_Auftrag.bErledigt = 1 AND (T_Auftrag.lSoId = 5 OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSo", 1, false,
     "T_Auftrag.bErledigt = -1 AND (T_Auftrag.lSoId = 5 OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndSo", 2, false,
     "T_Auftrag.bErledigt = 1 AND (T_Auftrag.lSoId = 5 OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>='@BACK@'"},
    {"A", "ReadByDoneAndSoAndVorsatz", 1, true,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId = 5 OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoAndVorsatz", 2, true,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND  (T_Auftrag.lSoId = 5 OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoAndVorsatz", 1, false,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND  (T_Auftrag.lSoId = 5 OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY "
     "T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndSoAndVorsatz", 2, false,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId = 5 OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>='@BACK@'"},
    {"A", "ReadByDoneAndSoListe", 1, true,
     "T_Auftrag.bErledigt = -1 AND (T_Auftrag.lSoId IN(3,7) OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoListe", 2, true,
     "T_Auftrag.bErledigt = 1 AND (T_Auftrag.lSoId IN(3,7) OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoListe", 1, false,
     "T_Auftrag.bErledigt = -1 AND (T_Auftrag.lSoId IN(3,7) OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndSoListe", 2, false,
     "T_Auftrag.bErledigt = 1 AND (T_Auftrag.lSoId IN(3,7) OR T_Auftrag.lSoId =0) AND "
     "T_Auftrag.ErledigtDatum>='@BACK@'"},
    {"A", "ReadByDoneAndSoListeAndVorsatz", 1, true,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId IN(3,7) "
     "OR T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoListeAndVorsatz", 2, true,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId IN(3,7) OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>='@BACK@' ORDER BY T_Auftrag.lNr"},
    {"A", "ReadByDoneAndSoListeAndVorsatz", 1, false,
     "T_Auftrag.bErledigt = -1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId IN(3,7) "
     "OR T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>=@BACK@ ORDER BY "
     "T_AuftragMeldung.lMeldungId"},
    {"A", "ReadByDoneAndSoListeAndVorsatz", 2, false,
     "T_Auftrag.bErledigt = 1 AND T_Auftrag.stNrVorsatz = 'P' AND (T_Auftrag.lSoId IN(3,7) OR "
     "T_Auftrag.lSoId =0) AND T_Auftrag.ErledigtDatum>='@BACK@'"},
    {"M", "ReadByDone", 1, false, "T_Meldung.bErledigt = -1 AND T_Meldung.ErledigtDatum >= @BACK@"},
    {"M", "ReadByDone", 2, false,
     "T_Meldung.bErledigt = 1 AND T_Meldung.ErledigtDatum >= '@BACK@'"},
    {"M", "ReadByDone", 1, true,
     "T_Meldung.bErledigt = -1 AND T_Meldung.ErledigtDatum >= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDone", 2, true,
     "T_Meldung.bErledigt = 1 AND T_Meldung.ErledigtDatum >= '@BACK@' ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndVorsatz", 1, false,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND T_Meldung.ErledigtDatum >= "
     "@BACK@"},
    {"M", "ReadByDoneAndVorsatz", 2, false,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND T_Meldung.ErledigtDatum >= "
     "'@BACK@'"},
    {"M", "ReadByDoneAndVorsatz", 1, true,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND  T_Meldung.ErledigtDatum "
     ">= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndVorsatz", 2, true,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND T_Meldung.ErledigtDatum >= "
     "'@BACK@' ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSo", 1, false,
     "T_Meldung.bErledigt = -1 AND (T_Meldung.lSoId = 5 OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= @BACK@"},
    {"M", "ReadByDoneAndSo", 2, false,
     "T_Meldung.bErledigt = 1 AND (T_Meldung.lSoId = 5 OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= '@BACK@'"},
    {"M", "ReadByDoneAndSo", 1, true,
     "T_Meldung.bErledigt = -1 AND (T_Meldung.lSoId = 5 OR T_Meldung.lSoId = 0) AND "
     "T_Meldung.ErledigtDatum >= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSo", 2, true,
     "T_Meldung.bErledigt = 1 AND (T_Meldung.lSoId = 5 OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= '@BACK@' ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoAndVorsatz", 1, false,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId = 5 OR "
     "T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= @BACK@"},
    {"M", "ReadByDoneAndSoAndVorsatz", 2, false,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId = 5 OR "
     "T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= '@BACK@'"},
    {"M", "ReadByDoneAndSoAndVorsatz", 1, true,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId = 5 OR "
     "T_Meldung.lSoId = 0) AND T_Meldung.ErledigtDatum >= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoAndVorsatz", 2, true,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId = 5 OR "
     "T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= '@BACK@' ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoListe", 1, false,
     "T_Meldung.bErledigt = -1 AND (T_Meldung.lSoId IN(3,7) OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= @BACK@"},
    {"M", "ReadByDoneAndSoListe", 2, false,
     "T_Meldung.bErledigt = 1 AND (T_Meldung.lSoId IN(3,7) OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= '@BACK@'"},
    {"M", "ReadByDoneAndSoListe", 1, true,
     "T_Meldung.bErledigt = -1 AND (T_Meldung.lSoId IN(3,7) OR T_Meldung.lSoId = 0) AND "
     "T_Meldung.ErledigtDatum >= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoListe", 2, true,
     "T_Meldung.bErledigt = 1 AND (T_Meldung.lSoId IN(3,7) OR T_Meldung.lSoId =0) AND "
     "T_Meldung.ErledigtDatum >= '@BACK@' ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoListeAndVorsatz", 1, false,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId IN(3,7) "
     "OR T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= @BACK@"},
    {"M", "ReadByDoneAndSoListeAndVorsatz", 2, false,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId IN(3,7) OR "
     "T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= '@BACK@'"},
    {"M", "ReadByDoneAndSoListeAndVorsatz", 1, true,
     "T_Meldung.bErledigt = -1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId IN(3,7) "
     "OR T_Meldung.lSoId = 0) AND T_Meldung.ErledigtDatum >= @BACK@ ORDER BY T_Meldung.lNr"},
    {"M", "ReadByDoneAndSoListeAndVorsatz", 2, true,
     "T_Meldung.bErledigt = 1 AND T_Meldung.stNrVorsatz = 'P' AND (T_Meldung.lSoId IN(3,7) OR "
     "T_Meldung.lSoId =0) AND T_Meldung.ErledigtDatum >= '@BACK@' ORDER BY T_Meldung.lNr"},
};

const std::vector<std::string> kSites = {"3", "7"};

template <typename List, typename Sort>
void Call(List& list, const std::string& method, Sort sort) {
  const std::map<std::string, std::function<void()>> calls = {
      {"ReadByDone", [&] { list.ReadByDone(true, sort); }},
      {"ReadByDoneAndVorsatz", [&] { list.ReadByDoneAndVorsatz(true, "P", sort); }},
      {"ReadByDoneAndSo", [&] { list.ReadByDoneAndSo(5, true, sort); }},
      {"ReadByDoneAndSoAndVorsatz", [&] { list.ReadByDoneAndSoAndVorsatz(5, true, "P", sort); }},
      {"ReadByDoneAndSoListe", [&] { list.ReadByDoneAndSoListe(kSites, true, sort); }},
      {"ReadByDoneAndSoListeAndVorsatz",
       [&] { list.ReadByDoneAndSoListeAndVorsatz(kSites, true, "P", sort); }},
  };
  calls.at(method)();
}

std::string BackDate(int16_t kind) {
  const Date back = Date::Today().AddDays(-30);
  if (kind == 1) return "#" + back.IsoText() + "#";
  return ztktest::GermanDate(back);
}

}  // namespace

TEST(DoneFamilyTexts, EveryVariantOfBothLists) {
  ztktest::RecordingClient jet("recD1", 1);
  ztktest::RecordingClient odbc("recD2", 2);
  for (const DoneText& t : kTexts) {
    SCOPED_TRACE(std::string(t.list) + "." + t.method + " kind " + std::to_string(t.kind) +
                 (t.sorted ? " sorted" : " unsorted"));
    const std::string client = t.kind == 1 ? "recD1" : "recD2";
    auto& db = t.kind == 1 ? *jet.db : *odbc.db;
    if (std::string(t.list) == "A") {
      CAuftragListe list;
      list.ConnectStorage(client);
      Call(list, t.method, t.sorted ? osByOrderNumber : osUnsorted);
    } else {
      CMeldungListe list;
      list.ConnectStorage(client);
      Call(list, t.method, t.sorted ? msByMsgNumber : msUnsorted);
    }
    std::string expected = (std::string(t.list) == "A" ? kOrderHead : kReportHead) + t.tail;
    expected.replace(expected.find("@BACK@"), 6, BackDate(t.kind));
    EXPECT_EQ(db.statements.back(), expected);
  }
}
