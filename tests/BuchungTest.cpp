#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

#include "Engines.h"
#include "RecordingDatabase.h"
#include "TestSupport.h"
#include "connection/WorkspaceNames.h"
#include "ztkdb/CLeistung.h"
#include "ztkdb/CLeistungListe.h"
#include "ztkdb/CMaterial.h"
#include "ztkdb/CMaterialListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"

using namespace ZTkDb;

namespace {

class Buchungen : public ztktest::EngineTest {
 protected:
  Buchungen() : EngineTest("buc") {}

  std::unique_ptr<CLeistung> Leistung(int32_t auftrag, double stunden, Currency preis,
                                      const std::string& rechnEmpf = "Hausverwaltung",
                                      const std::string& bemerkung = "") {
    auto l = std::make_unique<CLeistung>();
    l->ConnectStorage("buc");
    l->CreateNew1(auftrag, 17, Date::FromYmd(2026, 11, 20), "08:00", 3, stunden, preis, 1.0, 12.5,
                  Currency::FromScaled(4500), bemerkung, 9, "Lohn", 31, "KST-7", "Elektro Maier",
                  "Frau Krause", "Elektroarbeiten", rechnEmpf, false);
    return l;
  }
  std::unique_ptr<CMaterial> Material(int32_t auftrag, double menge, Currency preis, bool fremd,
                                      const std::string& einheit = "Stk") {
    auto m = std::make_unique<CMaterial>();
    m->ConnectStorage("buc");
    m->CreateNew3(auftrag, "Elektro", "Leuchtmittel E27", menge, preis, 1.0, 9, "Material", "KST-7",
                  einheit, "Hausverwaltung", fremd);
    return m;
  }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Buchungen, ztktest::AllEngines(), ztktest::EngineName);

// The unit is kept as loaded: its setter changes nothing, here or in the row.
TEST_P(Buchungen, MaterialKeepsItsLoadedUnitThroughUpdate) {
  auto m = Material(5, 2.5, Currency::FromScaled(39900), true, "m²");
  m->Einheit("kg");
  EXPECT_EQ(m->Einheit(), "m²");
  m->Update();
  EXPECT_EQ(Rows("T_AMaterial", "stEinheit = 'm²'"), 1);
}

// Doubles travel as their shortest round-trip text and come back bit for
// bit. Currency is exact on PostgreSQL (numeric); on the embedded engine it
// is REAL, read back rounded to four decimals: exact while a double resolves
// 0.0001, i.e. below 2^39 (about 5.5e11). The SQLite ODBC driver hands
// numbers over as 15-digit text: doubles keep 15 significant digits, and
// currency is exact below 10^11.
TEST_P(Buchungen, DoublesRoundTripExactlyAndCurrencyToFourDecimals) {
  const bool fifteenDigits = db.Which() == ztktest::Engine::kSqliteOdbc;
  const int64_t limit = fifteenDigits ? 999999999999999 : 5497558138879999;
  const double doubles[] = {0.1, 1.5, -2.25, 1.0 / 3, 123456.789, 1e-7, -9.87654321e12, 0.0};
  const int64_t amounts[] = {1000, 15000, -22500, 1234567891234, 5, -5, 9999, limit, -limit};
  auto l = Connected<CLeistung>();
  for (double d : doubles) {
    SCOPED_TRACE(d);
    l->CreateNew1(1, 1, Date::Today(), "", 1, d, Currency::FromScaled(amounts[0]), d, d, Currency(),
                  "", 0, "", 0, "", "", "", "", "", false);
    auto back = ztktest::ReadBack<CLeistung>("buc", l->Id());
    if (fifteenDigits) {
      EXPECT_LE(std::abs(back->Stunden() - d), 1e-15 * std::abs(d));
    } else {
      EXPECT_EQ(back->Stunden(), d);
      EXPECT_EQ(back->Faktor(), d);
    }
  }
  std::mt19937_64 rng(42);
  std::uniform_int_distribution<int64_t> below(-limit, limit);
  std::vector<int64_t> all(std::begin(amounts), std::end(amounts));
  for (int i = 0; i < 200; ++i) all.push_back(below(rng));
  for (int64_t scaled : all) {
    SCOPED_TRACE(scaled);
    auto m = Material(1, 1, Currency::FromScaled(scaled), false);
    auto back = ztktest::ReadBack<CMaterial>("buc", m->Id());
    EXPECT_EQ(back->PreisProEinheit().Scaled(), scaled);
  }
}

TEST_P(Buchungen, ListsByOrderAndRecipient) {
  Leistung(7, 1, Currency(), "Hausverwaltung");
  Leistung(8, 2, Currency(), "");
  const int32_t nullRecipient = Leistung(7, 3, Currency(), "x")->Id();
  ztktest::Exec("buc", "UPDATE T_Leistung SET stRechnEmpf = NULL WHERE lId = " +
                           std::to_string(nullRecipient));
  Leistung(7, 4, Currency(), "Mieter");

  auto leistungen = Connected<CLeistungListe>();
  leistungen->ReadByOrderId(7);
  std::vector<double> hours;
  int32_t lastId = 0;
  for (auto item = leistungen->MoveFirst(); item; item = leistungen->MoveNext()) {
    EXPECT_GT(item->Id(), lastId);
    lastId = item->Id();
    hours.push_back(item->Stunden());
  }
  EXPECT_EQ(hours, (std::vector<double>{1, 3, 4}));

  leistungen->ReadAllRechEmpfNotEmpty();  // '' and Null both left out
  EXPECT_EQ(leistungen->Count(), 2);
  detail::ProcessFlags::oracle = true;
  leistungen->ReadAllRechEmpfNotEmpty();  // only Null left out
  detail::ProcessFlags::oracle = false;
  EXPECT_EQ(leistungen->Count(), 3);
  leistungen->ReadAll();
  EXPECT_EQ(leistungen->Count(), 4);

  Material(7, 1, Currency(), false);
  Material(7, 2, Currency(), true);
  Material(7, 3, Currency(), false);
  Material(8, 4, Currency(), true);
  auto material = Connected<CMaterialListe>();
  auto Mengen = [&] {
    std::set<double> out;
    for (auto item = material->MoveFirst(); item; item = material->MoveNext()) {
      out.insert(item->Menge());
    }
    return out;
  };
  material->ReadByOrderId(7);
  EXPECT_EQ(Mengen(), (std::set<double>{1, 2, 3}));
  material->ReadMaterialByOrderId(7);
  EXPECT_EQ(Mengen(), (std::set<double>{1, 3}));
  material->ReadFremdByOrderId(7);
  EXPECT_EQ(Mengen(), (std::set<double>{2}));
  material->ReadFremdByOrderId(9);
  EXPECT_EQ(material->Count(), 0);
  EXPECT_FALSE(material->ItemByRecId(1));
}

TEST(BuchungStatements, LiteralFormsPerKind) {
  ztktest::RecordingClient jet("recB1", 1);
  ztktest::RecordingClient odbc("recB2", 2);
  CLeistung l;
  l.ConnectStorage("recB1");
  l.CreateNew1(4, 17, Date::FromYmd(2026, 11, 20), "08:00", 3, 1.5, Currency::FromScaled(655000),
               -2.25, 0, Currency(), "O'K", 9, "Lohn", 31, "KST", "AN", "AP", "LA", "RE", true);
  const std::string& insert = jet.db->statements.front();
  const std::string uid = insert.substr(insert.find("VALUES ('") + 9, 31);
  EXPECT_EQ(insert,
            "INSERT INTO T_Leistung (stUId, lAuftragId, lAuftragNehmerId, AusfDatum, stAusfZeit, "
            "lLeistArtId, dStunden, cuPreisProStd, dFaktor, dWeg, cuPreisProKm, stBemerkung, "
            "lRechnEmpfId, stKostenart, lAnsprechId, stKostenstelle, stAuftragnehmer, stAnsprech, "
            "stLeistArt, stRechnEmpf,bFremdleistung) VALUES ('" +
                uid +
                "', 4, 17, '20.11.2026', '08:00', 3,  1.5,  65.5, -2.25,  0,  0, 'O''K', 9, "
                "'Lohn', 31, 'KST', 'AN', 'AP', 'LA', 'RE', -1 )");

  CMaterial m;
  m.ConnectStorage("recB2");
  m.MatKlasse("K");
  m.Fremdleistung(true);
  m.Update();
  EXPECT_EQ(odbc.db->statements.back(),
            "UPDATE T_AMaterial SET T_AMaterial.stUId = '" + m.UId() +
                "', T_AMaterial.lAuftragId = 0, T_AMaterial.stMatKlasse = 'K', "
                "T_AMaterial.stBezeichnung = '', T_AMaterial.dMenge =  0, "
                "T_AMaterial.cuPreisProEinheit =  0, T_AMaterial.dFaktor =  0, "
                "T_AMaterial.lRechnEmpfId = 0, T_AMaterial.stKostenart = '', "
                "T_AMaterial.stKostenstelle = '', T_AMaterial.stRechnEmpf = "
                "'',T_AMaterial.bFremdleistung = 1, T_AMaterial.stEinheit = '' WHERE "
                "((T_AMaterial.lId=0) AND (T_AMaterial.stUId=''))");
  m.Delete();
  EXPECT_EQ(odbc.db->statements.back(), "DELETE T_AMaterial WHERE T_AMaterial.lId = 0");

  CMaterialListe onJet;
  onJet.ConnectStorage("recB1");
  onJet.ReadFremdByOrderId(3);
  EXPECT_EQ(jet.db->statements.back(),
            "SELECT T_AMaterial.* FROM T_AMaterial WHERE T_AMaterial.lAuftragId = 3 AND "
            "T_AMaterial.bFremdleistung = -1");
  CMaterialListe onOdbc;
  onOdbc.ConnectStorage("recB2");
  onOdbc.ReadFremdByOrderId(3);
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_AMaterial.* FROM T_AMaterial WHERE T_AMaterial.lAuftragId = 3 AND "
            "T_AMaterial.bFremdleistung = 1");
  onOdbc.ReadMaterialByOrderId(3);
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_AMaterial.* FROM T_AMaterial WHERE T_AMaterial.lAuftragId = 3 AND "
            "T_AMaterial.bFremdleistung = 0");
  CLeistungListe leistungen;
  leistungen.ConnectStorage("recB2");
  leistungen.ReadByOrderId(4);
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_Leistung.* FROM T_Leistung WHERE T_Leistung.lAuftragId = 4 ORDER BY "
            "T_Leistung.lId");
  detail::ProcessFlags::oracle = true;
  leistungen.ReadAllRechEmpfNotEmpty();
  detail::ProcessFlags::oracle = false;
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_Leistung.* FROM T_Leistung WHERE NOT T_Leistung.stRechnEmpf IS NULL");
  leistungen.ReadAllRechEmpfNotEmpty();
  EXPECT_EQ(odbc.db->statements.back(),
            "SELECT T_Leistung.* FROM T_Leistung WHERE T_Leistung.stRechnEmpf <>''");
}
