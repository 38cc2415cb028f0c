#include <gtest/gtest.h>

#include <cstdio>

#include "RecordingDatabase.h"
#include "TestSupport.h"
#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"

using namespace ZTkDb;

namespace {

std::string Replaced(std::string text, const std::string& marker, const std::string& value) {
  text.replace(text.find(marker), marker.size(), value);
  return text;
}

}  // namespace

TEST(AuftragStatements, InsertOnJetAndUpdateOnOdbc) {
  {
    ztktest::RecordingClient client("recA1", 1);
    CAuftrag order;
    order.ConnectStorage("recA1");
    order.CreateNew7(4711, 17, Date::FromYmd(2026, 11, 15, 14, 30, 0), "14:30", 88, sotTechObj,
                     "Tür 'klemmt'", Date::FromYmd(2026, 11, 20), "", NoDate, "", true,
                     Date::FromYmd(2026, 11, 16), "", 11, 22, 3, 31, 2, 12, 5, hetTechnik, "W",
                     "O'Neil", "0711", "Amt", 9, "K1", "Köln", "Halle", "KST", "RE", false, "",
                     "Typ", Currency::FromScaled(125000), "LA", "VA");
    ASSERT_EQ(client.db->statements.size(), 2u);
    const std::string& insert = client.db->statements[0];
    const std::string uid = insert.substr(insert.find("VALUES ('") + 9, 31);
    EXPECT_EQ(
        insert,
        Replaced(
            "INSERT INTO T_Auftrag (stUId, lNr, lAuftragNehmerId, AuftragsDatum, stAuftragsZeit, "
            "lObjId, byObjTyp, stAuftrag, ErledBisDatum, stErledBisZeit, WiederDatum, "
            "stWiederZeit, bErledigt, bGesperrt, ErledigtDatum, stErledigtZeit, lTechObjTerminId, "
            "lTageFrist,byAuftragstyp,lAnsprechId, byGebTyp,lGebId,lSoId, byHerkunft, "
            "stNrVorsatz, stBearbeiter, stTelBearbeiter, stAuftragGeber, lAufGebFaId, "
            "stAufGebKst, stOrt, stLeistungsart, stVerantwortlicher, stObjekt,stKostenstelle, "
            "stRechnEmpf, stBemerkung, stAuftragstyp, cuKosten) VALUES ('@UID@', 4711, 17, "
            "'15.11.2026 14:30:00', '14:30', 88, 6, 'Tür ''klemmt''', '20.11.2026', '', "
            "'31.12.9999', '', -1, 0, '16.11.2026', '', 11, 22, 3, 31, 2, 12, 5, "
            "3,'W','O''Neil','0711', 'Amt', 9, 'K1','Köln','LA','VA','Halle','KST','RE','', "
            "'Typ',  12.5)",
            "@UID@", uid));
    EXPECT_EQ(client.db->statements[1],
              "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN "
              "T_AuftragMeldung ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE "
              "T_Auftrag.stUId = '" +
                  uid + "'");
  }
  ztktest::RecordingClient client("recA2", 2);
  CAuftrag order;
  order.ConnectStorage("recA2");
  order.Nr(8);
  order.Erledigt(true);
  order.Auftrag("it's");
  order.Kosten(Currency::FromScaled(-30000));
  order.ObjAufgabeId(5);
  order.Update();
  EXPECT_EQ(
      client.db->statements.back(),
      Replaced(
          "UPDATE T_Auftrag SET T_Auftrag.stUId = '@NEWUID@', T_Auftrag.lNr = 8, "
          "T_Auftrag.lAuftragNehmerId = 0, T_Auftrag.AuftragsDatum = '31.12.9999', "
          "T_Auftrag.stAuftragsZeit = '', T_Auftrag.lObjId = 0, T_Auftrag.byObjTyp = 0, "
          "T_Auftrag.stAuftrag = 'it''s', T_Auftrag.ErledBisDatum = '31.12.9999', "
          "T_Auftrag.stErledBisZeit = '', T_Auftrag.WiederDatum = '31.12.9999', "
          "T_Auftrag.stWiederZeit = '', T_Auftrag.bErledigt = 1, T_Auftrag.bGesperrt = 0, "
          "T_Auftrag.ErledigtDatum = '31.12.9999',T_Auftrag.stErledigtZeit = '', "
          "T_Auftrag.lTechObjTerminId = 5, T_Auftrag.lTageFrist = 0, T_Auftrag.byAuftragstyp=0, "
          "T_Auftrag.lAnsprechId = 0, T_Auftrag.byGebTyp=0, T_Auftrag.lGebId = "
          "0,T_Auftrag.lSoId = 0,T_Auftrag.byHerkunft=0, T_Auftrag.stNrVorsatz='', "
          "T_Auftrag.stBearbeiter='', T_Auftrag.stTelBearbeiter='', T_Auftrag.stAuftragGeber='', "
          "T_Auftrag.lAufGebFaId=0, T_Auftrag.stAufGebKst='', T_Auftrag.stOrt='', "
          "T_Auftrag.stObjekt='', T_Auftrag.stKostenstelle='', T_Auftrag.stRechnEmpf='', "
          "T_Auftrag.stBemerkung='', T_Auftrag.stLeistungsart='', "
          "T_Auftrag.stVerantwortlicher='', T_Auftrag.stAuftragstyp='', T_Auftrag.cuKosten = -3 "
          "WHERE ((T_Auftrag.lId=0) AND (T_Auftrag.stUId=''))",
          "@NEWUID@", order.UId()));
}

TEST(AuftragStatements, LinksDeletesAndNumbers) {
  ztktest::RecordingClient client("recA3", 2);
  CAuftrag order;
  order.ConnectStorage("recA3");
  order.Connect2Msg(7);
  order.DisConnectFromMsg();
  order.Delete();
  order.GetLastNr();
  order.ReadByObjHist(55, 22);
  order.ReadByNr(3, "x'y");
  const std::vector<std::string> expected = {
      "INSERT INTO T_AuftragMeldung (lAuftragId, lMeldungId) VALUES (0, 7)",
      // The Jet form on every kind.
      "DELETE T_AuftragMeldung.* FROM T_AuftragMeldung WHERE ((T_AuftragMeldung.lMeldungId = 7) "
      "AND (T_AuftragMeldung.lAuftragId = 0))",
      "DELETE T_Auftrag WHERE T_Auftrag.lId = 0",
      "SELECT Max(T_Auftrag.lNr) As LastNr FROM T_Auftrag",
      "SELECT T_Auftrag.* From T_Auftrag WHERE T_Auftrag.lObjId=55  AND T_Auftrag.byObjTyp=6 AND "
      "T_Auftrag.bErledigt=0 AND T_Auftrag.byHerkunft=3 AND T_Auftrag.lTageFrist= 22",
      "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN T_AuftragMeldung "
      "ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE T_Auftrag.lNr = 3 AND "
      "T_Auftrag.stNrVorsatz = 'x'y'"};
  EXPECT_EQ(client.db->statements, expected);
}

TEST(AuftragListeStatements, PeriodsWithoutReportInBothDialects) {
  const Date von = Date::FromYmd(2026, 11, 1);
  const Date bis = Date::FromYmd(2026, 11, 15);
  ztktest::RecordingClient jet("recL1", 1);
  ztktest::RecordingClient odbc("recL2", 2);
  CAuftragListe onJet;
  onJet.ConnectStorage("recL1");
  onJet.ReadAllInZeitNoMsg(von, bis);
  EXPECT_EQ(jet.db->statements.back(),
            "SELECT T_Auftrag.* FROM T_Auftrag LEFT JOIN  T_AuftragMeldung ON T_Auftrag.lId = "
            "T_AuftragMeldung.lAuftragId  Where (((T_Auftrag.AuftragsDatum) <= #2026-11-15 "
            "00:00:00#) And  ((T_Auftrag.ErledigtDatum) >= #2026-11-01 00:00:00#) And "
            "((T_AuftragMeldung.lAuftragId) Is Null)) ORDER BY T_Auftrag.AuftragsDatum, "
            "T_Auftrag.lNr");
  CAuftragListe onOdbc;
  onOdbc.ConnectStorage("recL2");
  onOdbc.ReadAllInZeitNoMsg(von, bis);
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_Auftrag.* FROM T_Auftrag LEFT JOIN T_AuftragMeldung ON T_Auftrag.lId = "
            "T_AuftragMeldung.lAuftragId WHERE ((T_AuftragMeldung.lAuftragId Is Null) AND "
            "(T_Auftrag.AuftragsDatum >= '01.11.2026' And T_Auftrag.AuftragsDatum <= "
            "'15.11.2026')) OR ((T_AuftragMeldung.lAuftragId Is Null) AND (T_Auftrag.bErledigt=0) "
            "AND (T_Auftrag.Auftragsdatum <'01.11.2026')) ORDER BY "
            "T_Auftrag.AuftragsDatum,T_Auftrag.lNr");
}

// The done family's texts are checked in full elsewhere; here the one
// read whose flag picks its WHERE.
TEST(AuftragListeStatements, ReportConnection) {
  ztktest::RecordingClient jet("recL3", 1);
  CAuftragListe onJet;
  onJet.ConnectStorage("recL3");
  onJet.ReadWithMsgConn(false, osByOrderReturnOnDate);
  EXPECT_EQ(jet.db->statements.back(),
            "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN "
            "T_AuftragMeldung ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE Not "
            "T_AuftragMeldung.lMeldungId Is Null ORDER BY T_Auftrag.WiederDatum");
  onJet.ReadWithMsgConn(false);
  EXPECT_EQ(jet.db->statements.back(),
            "SELECT T_Auftrag.*, T_AuftragMeldung.lMeldungId FROM T_Auftrag LEFT JOIN "
            "T_AuftragMeldung ON T_Auftrag.lId = T_AuftragMeldung.lAuftragId WHERE "
            "T_AuftragMeldung.lMeldungId Is Null");
}

// The order of filling: values first, the joined table's name last, so a
// value naming #DetailTabelle# gets it and one naming #Tabelle# does not.
TEST(AuftragStatements, TheJoinedTableIsFilledAfterTheValues) {
  ztktest::RecordingClient client("recA3", 2);
  CAuftrag order;
  order.ConnectStorage("recA3");
  order.ReadByNr(5, "#DetailTabelle#/#Tabelle#");
  ASSERT_EQ(client.db->statements.size(), 1u);
  EXPECT_NE(client.db->statements[0].find("stNrVorsatz = 'T_AuftragMeldung/#Tabelle#'"),
            std::string::npos)
      << client.db->statements[0];
}

// A 16-bit count of days is checked, not wrapped (36500 would be -29036).
TEST(AuftragStatements, DaysBeyondSixteenBitsRaiseOverflow) {
  ztktest::RecordingClient client("recA4", 2);
  CAuftragListe orders;
  orders.ConnectStorage("recA4");
  for (int32_t days : {36500, -32769}) {
    try {
      orders.ReadByDone(true, osByOrderDate, days);
      ADD_FAILURE() << days;
    } catch (const Error& e) {
      EXPECT_EQ(e.Number(), 6);
    }
  }
  EXPECT_TRUE(client.db->statements.empty());
  orders.ReadByDone(true, osByOrderDate, 32767);
  EXPECT_EQ(client.db->statements.size(), 1u);
}
