#include "Demo.h"

#include <array>
#include <random>

#include "Columns.h"
#include "Output.h"
#include "Text.h"

namespace ztk {
namespace {

using ZTkDb::Currency;
using ZTkDb::Date;

struct Site {
  int32_t id;
  const char* ort;
  const char* objekt;
};
constexpr std::array<Site, 4> kSites = {{
    {1, "Stuttgart-Mitte", "Verwaltung Königstraße"},
    {2, "Esslingen", "Werk Nord, Halle 3"},
    {3, "Ludwigsburg", "Schulzentrum Ost"},
    {4, "Böblingen", "Kreisklinik, Bau C"},
}};

struct Fault {
  const char* text;
  const char* leistungsart;
  const char* auftragnehmer;
  const char* material;
  const char* einheit;
  int64_t preis;  // scaled by 10,000
};
constexpr std::array<Fault, 12> kFaults = {{
    {"Heizkörper im Raum {r} bleibt kalt", "Heizung", "Haustechnik Wagner", "Thermostatkopf", "Stk",
     289000},
    {"Wasserhahn in der Teeküche tropft", "Sanitär", "Sanitär Huber", "Kartusche 35 mm", "Stk",
     184500},
    {"Deckenleuchte im Flur {r} flackert", "Elektro", "Elektro Maier GmbH", "LED-Röhre 150 cm",
     "Stk", 129900},
    {"Aufzug bleibt zwischen 2. und 3. OG stehen", "Aufzug", "Aufzugsservice Neckar", "Türkontakt",
     "Stk", 870000},
    {"Tür zum Besprechungsraum {r} klemmt", "Schreiner", "Schreinerei Braun", "Türband", "Stk",
     215000},
    {"Klimagerät im Serverraum meldet Störung", "Klima", "Kältetechnik Roth", "Kältemittel R32",
     "kg", 645000},
    {"Fenster im Büro {r} schließt nicht", "Schreiner", "Schreinerei Braun", "Fenstergriff", "Stk",
     98000},
    {"Rauchmelder im Raum {r} piept", "Elektro", "Elektro Maier GmbH", "Lithiumbatterie 9 V", "Stk",
     79500},
    {"WC-Spülung im 1. OG läuft nach", "Sanitär", "Sanitär Huber", "Füllventil", "Stk", 232000},
    {"Steckdose im Raum {r} ohne Funktion", "Elektro", "Elektro Maier GmbH", "Steckdoseneinsatz",
     "Stk", 112000},
    {"Jalousie im Raum {r} lässt sich nicht bedienen", "Sonnenschutz", "Haustechnik Wagner",
     "Gurtwickler", "Stk", 356000},
    {"Boden im Eingangsbereich beschädigt", "Bodenbelag", "Schreinerei Braun", "Vinylbelag", "m²",
     425000},
}};
constexpr std::array<const char*, 6> kMelder = {"Frau Krause", "Herr Yilmaz", "Frau Schneider",
                                                "Herr Weber",  "Frau Nowak",  "Herr Becker"};
constexpr std::array<const char*, 3> kBearbeiter = {"Meier", "Schulz", "Öztürk"};

std::string WithRoom(const char* text, int room) {
  std::string s = text;
  const size_t at = s.find("{r}");
  if (at != std::string::npos) {
    char number[16];
    std::snprintf(number, sizeof number, "%d.%02d", room / 100, room % 100);
    s.replace(at, 3, number);
  }
  return s;
}

std::string Time(int minutes) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d:%02d", minutes / 60 % 24, minutes % 60);
  return buf;
}

// The same draws every run: the data set is the same for the same day.
class Dice {
 public:
  int operator()(int n) { return static_cast<int>(rng_() % static_cast<unsigned>(n)); }

 private:
  std::mt19937 rng_{20261122};
};

// The records the data set is written through.
struct DemoRecords {
  ZTkDb::CMeldung& meldung;
  ZTkDb::CAuftrag& auftrag;
  ZTkDb::CLeistung& leistung;
  ZTkDb::CMaterial& material;
  ZTkDb::CMsgOrderDokument& dokument;
};

// What the orders raised from a report take from it.
struct Report {
  const Site& site;
  const Fault& fault;
  int room;
  int minute;
  Date reported;
  bool done;
  Date done_on;
  std::string text;
};

// Report `i` of `reports`, spread over the last 75 days.
Report AddReport(const DemoRecords& records, Dice& pick, const Date& today, int i, int reports) {
  const Site& site = kSites[static_cast<size_t>(pick(4))];
  const Fault& fault = kFaults[static_cast<size_t>(pick(12))];
  const int room = 100 * (1 + pick(4)) + 1 + pick(30);
  const Date reported = today.AddDays(-(reports - 1 - i) * 75 / reports);
  const int minute = 7 * 60 + pick(10 * 60);
  // Older reports are mostly done, recent ones mostly open.
  const bool done = reported < today.AddDays(-10) ? pick(10) < 7 : pick(10) < 2;
  const Date doneOn = done ? std::min(today, reported.AddDays(1 + pick(6))) : ZTkDb::NoDate;
  const std::string text = WithRoom(fault.text, room);
  const int32_t nr = records.meldung.GetLastNrVorsatz("M") + 1;
  records.meldung.CreateNew4(
      nr, kMelder[static_cast<size_t>(pick(6))], 0, "0711 " + std::to_string(2000 + pick(8000)),
      reported, Time(minute), 1000 + room, ZTkDb::sotRoom, text, reported.AddDays(3), "16:00",
      ZTkDb::NoDate, "", done, doneOn, done ? Time(minute + 120) : "", 2, site.id * 10, site.id,
      ZTkDb::hetTikora, "M", kBearbeiter[static_cast<size_t>(pick(3))], "0711 100-0", site.ort,
      site.objekt, "", "", fault.leistungsart, "Facility Management");
  if (pick(10) < 3) {
    records.dokument.CreateNew(records.meldung.Id(), 0,
                               "/srv/helpdesk/fotos/" + std::to_string(reported.Year()),
                               "meldung-" + std::to_string(nr) + ".jpg");
  }
  return {site, fault, room, minute, reported, done, doneOn, text};
}

// An order raised from the report just written, with its bookings.
void AddOrder(const DemoRecords& records, Dice& pick, const Date& today, const Report& report,
              int32_t& nextOrder) {
  const Site& site = report.site;
  const Fault& fault = report.fault;
  const Date raised = std::min(today, report.reported.AddDays(pick(2)));
  const bool orderDone = report.done || pick(10) < 2;
  const Date orderDoneOn =
      orderDone ? (report.done ? report.done_on : std::min(today, raised.AddDays(1 + pick(5))))
                : ZTkDb::NoDate;
  records.auftrag.CreateNew7(
      nextOrder++, 7 + pick(5), raised, Time(report.minute + 30), 1000 + report.room,
      ZTkDb::sotRoom, report.text, raised.AddDays(5), "", ZTkDb::NoDate, "", orderDone, orderDoneOn,
      orderDone ? Time(report.minute + 180) : "", 0, 0, 0, 31, 2, site.id * 10, site.id,
      ZTkDb::hetTikora, "A", kBearbeiter[static_cast<size_t>(pick(3))], "0711 100-0",
      "Facility Management", 0, "FM-100", site.ort, site.objekt,
      "KST-" + std::to_string(400 + site.id), fault.auftragnehmer, false, "", fault.leistungsart,
      Currency::FromScaled(fault.preis * (1 + pick(3))), fault.leistungsart, "Herr Brandt");
  records.auftrag.Connect2Msg(records.meldung.Id());
  for (int b = pick(3); b > 0; --b) {
    records.leistung.CreateNew1(
        records.auftrag.Id(), 7, raised.AddDays(pick(3)), Time(8 * 60 + pick(480)), 1,
        0.5 * (1 + pick(8)), Currency::FromScaled(685000), 1.0, 4.0 * pick(10),
        Currency::FromScaled(4500), "", 9, "Lohn", 31, "KST-" + std::to_string(400 + site.id),
        fault.auftragnehmer, kMelder[static_cast<size_t>(pick(6))], fault.leistungsart,
        "Facility Management", pick(4) == 0);
  }
  if (pick(10) < 6) {
    records.material.CreateNew3(records.auftrag.Id(), fault.leistungsart, fault.material,
                                1 + pick(4), Currency::FromScaled(fault.preis / 4), 1.0, 9,
                                "Material", "KST-" + std::to_string(400 + site.id), fault.einheit,
                                "Facility Management", pick(3) == 0);
  }
  if (pick(10) < 2) {
    records.dokument.CreateNew(0, records.auftrag.Id(), "/srv/helpdesk/angebote",
                               "angebot-A" + std::to_string(records.auftrag.Nr()) + ".pdf");
  }
}

// Planned maintenance raised by the technical-equipment module, no report.
void AddMaintenance(ZTkDb::CAuftrag& auftrag, Dice& pick, const Date& today, int reports,
                    int32_t& nextOrder) {
  for (int m = 0; m < reports / 10; ++m) {
    const Site& site = kSites[static_cast<size_t>(pick(4))];
    const Date raised = today.AddDays(-pick(40));
    auftrag.CreateNew7(nextOrder++, 11, raised, "07:00", 5000 + m, ZTkDb::sotTechObj,
                       "Wartung Lüftungsanlage nach Plan", raised.AddDays(14), "", ZTkDb::NoDate,
                       "", false, ZTkDb::NoDate, "", 300 + m, 0, 1, 31, 2, site.id * 10, site.id,
                       ZTkDb::hetTechnik, "A", "Schulz", "0711 100-0", "Technik", 0, "FM-200",
                       site.ort, site.objekt, "KST-" + std::to_string(400 + site.id),
                       "Kältetechnik Roth", false, "", "Wartung", Currency::FromScaled(1500000),
                       "Wartung", "Herr Brandt");
  }
}

}  // namespace

void BuildDemoData(Session& session, int reports) {
  const std::string& client = session.Client();
  Dice pick;
  const Date today = Date::Today();
  Progress progress(_("Demo data"), static_cast<size_t>(reports));

  session.Write([&] {
    ZTkDb::CMeldung meldung;
    meldung.ConnectStorage(client);
    ZTkDb::CAuftrag auftrag;
    auftrag.ConnectStorage(client);
    ZTkDb::CLeistung leistung;
    leistung.ConnectStorage(client);
    ZTkDb::CMaterial material;
    material.ConnectStorage(client);
    ZTkDb::CMsgOrderDokument dokument;
    dokument.ConnectStorage(client);
    const DemoRecords records{meldung, auftrag, leistung, material, dokument};
    int32_t nextOrder = auftrag.GetLastNr() + 1;

    for (int i = 0; i < reports; ++i) {
      const Report report = AddReport(records, pick, today, i, reports);
      // Most reports raise one order, some two, a few none.
      const int orders = pick(10) < 1 ? 0 : (pick(10) < 2 ? 2 : 1);
      for (int o = 0; o < orders; ++o) AddOrder(records, pick, today, report, nextOrder);
      progress.Step(static_cast<size_t>(i) + 1);
    }
    AddMaintenance(auftrag, pick, today, reports, nextOrder);
  });
}

void PrintTypicalRequest(Session& session, const OutputOptions& out) {
  ZTkDb::CAuftragListe orders;
  orders.ConnectStorage(session.Client());
  orders.ReadByDone(false, ZTkDb::osByOrderDate, 30);
  ZTkDb::CMeldung report;
  report.ConnectStorage(session.Client());
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  // CSV is read by programs: its header stays as it always was.
  Table table(out.csv
                  ? Table(std::vector<std::string>{"Auftrag", "Datum", "Ort", "Auftragstext",
                                                   "Meldung", "Melder"})
                  : Table({Column{_("No."), 1, true}, Column{_("Ordered"), 2, true},
                           Column{_("Place"), 3, false, 8}, Column{_("Order"), 1, false, 20},
                           Column{_("Report"), 3, true}, Column{_("Reported by"), 3, false, 8}}));
  for (auto o = orders.MoveFirst(); o; o = orders.MoveNext()) {
    const bool linked = o->MeldungId() != 0;
    if (linked) report.ReadById(o->MeldungId());
    const std::string orderNr = o->NrVorsatz() + std::to_string(o->Nr());
    const std::string reportNr =
        linked && report.Id() ? report.NrVorsatz() + std::to_string(report.Nr()) : "";
    if (out.json) {
      nlohmann::ordered_json row = RecordJson(AuftragFields(), *o);
      row["Meldung"] = linked && report.Id() ? RecordJson(MeldungFields(), report) : nullptr;
      rows.push_back(std::move(row));
    } else {
      const FieldValue ordered = o->AuftragsDatum();
      table.Add({orderNr, out.csv && !out.local ? MachineText(ordered) : DeskText(ordered),
                 o->Ort(), o->Auftrag(), reportNr, linked && report.Id() ? report.Melder() : ""});
    }
  }
  if (out.json) return PrintJson(rows);
  // TRANSLATORS: {1} is the library call that reads the list, as a host
  // programmer writes it.
  if (!out.csv) {
    std::printf("%s\n\n", Say(_("Open orders by order date ({1}, 30 days):"),
                              "ReadByDone False, osByOrderDate")
                              .c_str());
  }
  table.Print(stdout, out);
  if (!out.csv) {
    std::printf("%s\n", SayCount("{1} open order", "{1} open orders", table.Rows()).c_str());
  }
}

}  // namespace ztk
