#pragma once

#include <memory>
#include <string>

#include "ztkdb/CAuftrag.h"
#include "ztkdb/CMeldung.h"

namespace ztktest {

// The columns a test cares about; CreateNew7 gets realistic values for the
// rest.
struct OrderSpec {
  int32_t nr = 1;
  std::string vorsatz = "A";
  ZTkDb::Date datum = ZTkDb::Date::Today();
  bool erledigt = false;
  ZTkDb::Date erledigt_datum = ZTkDb::NoDate;
  int32_t so_id = 0;
  int32_t obj_id = 100;
  ZTkDb::TkObjTypes obj_typ = ZTkDb::sotRoom;
  uint8_t herkunft = ZTkDb::hetTikora;
  std::string typ_text = "Reparatur";
  int32_t aufgabe = 0;
  int32_t historie = 0;
  std::string text = "Heizung im Raum 2.14 defekt";
  ZTkDb::Date erled_bis = ZTkDb::NoDate;
  ZTkDb::Date wieder = ZTkDb::NoDate;
};

inline std::unique_ptr<ZTkDb::CAuftrag> CreateOrder(const std::string& client, const OrderSpec& s) {
  auto order = std::make_unique<ZTkDb::CAuftrag>();
  order->ConnectStorage(client);
  order->CreateNew7(s.nr, 17, s.datum, "08:15", s.obj_id, s.obj_typ, s.text, s.erled_bis, "",
                    s.wieder, "", s.erledigt, s.erledigt_datum, "", s.aufgabe, s.historie, 2, 31, 1,
                    12, s.so_id, s.herkunft, s.vorsatz, "Meier", "0711 4711", "Hausverwaltung", 5,
                    "K100", "Stuttgart", "Bürogebäude Nord", "KST-7", "Zentrale", false, "",
                    s.typ_text, ZTkDb::Currency::FromScaled(1250000), "Wartung", "Schulz");
  return order;
}

// The same for reports.
struct ReportSpec {
  int32_t nr = 1;
  std::string vorsatz = "M";
  ZTkDb::Date datum = ZTkDb::Date::Today();
  std::string zeit = "09:30";
  bool erledigt = false;
  ZTkDb::Date erledigt_datum = ZTkDb::NoDate;
  int32_t so_id = 0;
  int32_t obj_id = 200;
  ZTkDb::TkObjTypes obj_typ = ZTkDb::sotRoom;
  std::string text = "Fenster schließt nicht";
};

inline std::unique_ptr<ZTkDb::CMeldung> CreateReport(const std::string& client,
                                                     const ReportSpec& s) {
  auto report = std::make_unique<ZTkDb::CMeldung>();
  report->ConnectStorage(client);
  report->CreateNew4(s.nr, "Frau Krause", 3, "0711 100", s.datum, s.zeit, s.obj_id, s.obj_typ,
                     s.text, ZTkDb::NoDate, "", ZTkDb::NoDate, "", s.erledigt, s.erledigt_datum, "",
                     1, 12, s.so_id, ZTkDb::hetTikora, s.vorsatz, "Meier", "0711 4711", "Stuttgart",
                     "Raum 2.14", "", "krause@example.org", "Reparatur", "Schulz");
  return report;
}

}  // namespace ztktest
