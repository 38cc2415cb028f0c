#include "BenchData.h"

#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>

#include "connection/ModuleSchema.h"
#include "engine/odbc/OdbcDatabase.h"
#include "ztkdb/Error.h"

namespace bench {
namespace {

// The few expressions the two servers write differently.
struct Dialect {
  std::string series;                              // a row source of i = 1..n
  std::string (*days_back)(const std::string& n);  // today minus n days
  std::string no_date;
  std::string text_of;  // how an integer becomes text: prefix, suffix
  std::string text_end;
  std::string done_flag;
};

std::string SqliteDaysBack(const std::string& n) {
  return "datetime('now','start of day','-' || (" + n + ") || ' days')";
}
std::string PgDaysBack(const std::string& n) {
  return "(current_date - ((" + n + ")::int))::timestamp";
}

const Dialect kSqlite{
    "WITH RECURSIVE s(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM s WHERE i < @N) ",
    SqliteDaysBack,
    "'9999-12-31 00:00:00'",
    "CAST(",
    " AS TEXT)",
    "-1"};
const Dialect kPostgres{"",      PgDaysBack,  "'9999-12-31 00:00:00'::timestamp",
                        "CAST(", " AS TEXT)", "1"};

std::string Replace(std::string text, const std::string& what, const std::string& with) {
  for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

std::vector<std::string> Statements(const Dialect& d, int32_t orders) {
  const std::string n = std::to_string(orders);
  const std::string reports = std::to_string(std::max(1, orders / 2));
  auto text = [&](const std::string& prefix, const std::string& expr) {
    return "'" + prefix + "' || " + d.text_of + expr + d.text_end;
  };
  const bool pg = &d == &kPostgres;
  auto from = [&](const std::string& count) {
    return pg ? " FROM generate_series(1, " + count + ") AS s(i)" : " FROM s";
  };
  auto with = [&](const std::string& count) {
    return pg ? std::string() : Replace(d.series, "@N", count);
  };
  const std::string open = "i % 10 < 3";
  std::vector<std::string> out;
  out.push_back(
      "INSERT INTO T_Auftrag (stUId, lNr, lAnsprechId, byGebTyp, lGebId, lAuftragNehmerId, "
      "AuftragsDatum, stAuftragsZeit, lObjId, byObjTyp, stAuftrag, ErledBisDatum, stErledBisZeit, "
      "WiederDatum, stWiederZeit, bErledigt, ErledigtDatum, stErledigtZeit, byAuftragstyp, "
      "lTechObjTerminId, lTageFrist, byHerkunft, stNrVorsatz, stBearbeiter, stTelBearbeiter, "
      "stAuftragGeber, lAufGebFaId, stAufGebKst, stOrt, stObjekt, stKostenstelle, stRechnEmpf, "
      "bGesperrt, stBemerkung, stAuftragstyp, cuKosten, lSoId, stLeistungsart, "
      "stVerantwortlicher) " +
      with(n) + "SELECT " + text("A-", "i") + ", i, 31, 2, i % 50, 7 + i % 5, " +
      d.days_back("i % 365") + ", '08:15', 1000 + i % 700, 4, " +
      text("Heizung im Raum ", "i % 300") + " || ' bleibt kalt', " + d.days_back("i % 360") +
      ", '16:00', " + d.no_date + ", '', CASE WHEN " + open + " THEN 0 ELSE " + d.done_flag +
      " END, CASE WHEN " + open + " THEN " + d.no_date + " ELSE " + d.days_back("i % 120") +
      " END, '', 0, 0, 0, 1, 'A', 'Meier', '0711 4711', 'Facility Management', 5, 'FM-100', "
      "'Stuttgart', 'Verwaltung Königstraße', 'KST-401', 'Zentrale', 0, '', 'Reparatur', " +
      "125.5, 1 + i % 4, 'Heizung', 'Herr Brandt'" + from(n));
  out.push_back(
      "INSERT INTO T_Meldung (stUId, lNr, stMelder, lMelderFaId, stMelderTel, MeldeDatum, "
      "stMeldeZeit, lObjId, byObjTyp, stMeldung, ErledBisDatum, stErledBisZeit, WiederDatum, "
      "stWiederZeit, bErledigt, ErledigtDatum, stErledigtZeit, byGebTyp, lGebId, lSoId, "
      "byHerkunft, stNrVorsatz, stBearbeiter, stTelBearbeiter, stOrt, stObjekt, stBemerkung, "
      "stEmail, stLeistungsart, stVerantwortlicher) " +
      with(reports) + "SELECT " + text("M-", "i") + ", i, 'Frau Krause', 3, '0711 100', " +
      d.days_back("i % 365") + ", '09:30', 1000 + i % 700, 4, 'Fenster schließt nicht', " +
      d.no_date + ", '', " + d.no_date + ", '', 0, " + d.no_date +
      ", '', 1, 12, 1 + i % 4, 1, 'M', 'Meier', '0711 4711', 'Stuttgart', 'Raum 2.14', '', "
      "'krause@example.org', 'Reparatur', 'Schulz'" +
      from(reports));
  out.push_back(
      "INSERT INTO T_AuftragMeldung (lAuftragId, lMeldungId) SELECT lId, 1 + (lId - 1) / 2 "
      "FROM T_Auftrag WHERE lId % 5 <> 0");
  out.push_back(
      "INSERT INTO T_Leistung (stUId, lAuftragId, lAuftragNehmerId, AusfDatum, stAusfZeit, "
      "lLeistArtId, dStunden, cuPreisProStd, dFaktor, dWeg, cuPreisProKm, stBemerkung, "
      "lRechnEmpfId, stKostenart, stKostenstelle, stAuftragnehmer, stAnsprech, stLeistArt, "
      "stRechnEmpf, lAnsprechId, bFremdleistung) SELECT " +
      text("L-", "lId") +
      ", lId, 7, AuftragsDatum, '10:00', 1, 1.5, 68.5, 1, 12, 0.45, '', 9, "
      "'Lohn', 'KST-401', 'Elektro Maier', 'Frau Krause', 'Elektro', 'Zentrale', 31, 0 FROM "
      "T_Auftrag");
  out.push_back(
      "INSERT INTO T_AMaterial (stUId, lAuftragId, stMatKlasse, stBezeichnung, dMenge, "
      "cuPreisProEinheit, dFaktor, lRechnEmpfId, stKostenart, stKostenstelle, stRechnEmpf, "
      "stEinheit, bFremdleistung) SELECT " +
      text("T-", "lId") +
      ", lId, 'Elektro', 'LED-Röhre', 2, 12.99, 1, 9, 'Material', 'KST-401', "
      "'Zentrale', 'Stk', 0 FROM T_Auftrag WHERE lId % 2 = 0");
  // Settled statistics and visibility before anything is measured.
  out.push_back(pg ? "VACUUM ANALYZE" : "ANALYZE");
  return out;
}

void Exec(sqlite3* db, const std::string& sql) {
  char* error = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error) != SQLITE_OK) {
    std::string message = error ? error : "?";
    sqlite3_free(error);
    throw std::runtime_error("bench data: " + message + "\n" + sql);
  }
}

}  // namespace

std::string SqliteDataSet(const std::string& dir, int32_t orders) {
  std::filesystem::create_directories(dir);
  const std::string path = dir + "/orders-" + std::to_string(orders) + ".db";
  if (std::filesystem::exists(path)) return path;
  const std::string building = path + ".building";
  std::filesystem::remove(building);
  ZTkDb::detail::CreateModuleDatabase(building);
  sqlite3* db = nullptr;
  sqlite3_open(building.c_str(), &db);
  Exec(db, "BEGIN");
  for (const auto& s : Statements(kSqlite, orders)) Exec(db, s);
  Exec(db, "COMMIT");
  Exec(db, "PRAGMA wal_checkpoint(TRUNCATE)");
  sqlite3_close(db);
  std::filesystem::rename(building, path);
  return path;
}

std::string WritableCopy(const std::string& source, const std::string& name) {
  const std::string target = std::filesystem::path(source).parent_path() / name;
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(target + suffix);
  std::filesystem::copy_file(source, target);
  return target;
}

std::string PostgresDataSet(const std::string& adminConnect, const std::string& name,
                            int32_t orders) {
  try {
    auto admin = ZTkDb::detail::OdbcDatabase::Open(adminConnect + "Database=postgres;", false);
    admin->ExecuteRaw("DROP DATABASE IF EXISTS " + name + " WITH (FORCE)");
    admin->ExecuteRaw("CREATE DATABASE " + name);
    // As a site sets it for clients behind a pooler (docs/engines.md).
    admin->ExecuteRaw("ALTER DATABASE " + name + " SET lock_timeout = '5s'");
    const std::string connect = adminConnect + "Database=" + name + ";";
    ZTkDb::detail::CreateModuleSchemaOdbc(connect);
    auto db = ZTkDb::detail::OdbcDatabase::Open(connect, false);
    for (const auto& s : Statements(kPostgres, orders)) db->ExecuteRaw(s);
    return connect;
  } catch (const ZTkDb::Error&) {
    return {};
  }
}

}  // namespace bench
