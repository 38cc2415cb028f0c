// Records with hostile values, bound and as text: the same bookings are
// created and updated on two copies of the module's database, one whose
// statements are bound (the statement cache) and one whose statements all
// go as text. Both must fail alike or give back the same row, and a list
// must find the same rows: a bound value has its literal's exact effect,
// and no text in any slot runs a second statement.
#include <fuzzer/FuzzedDataProvider.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iterator>
#include <string>

#include "connection/ModuleSchema.h"
#include "ztkdb/CLeistung.h"
#include "ztkdb/CLeistungListe.h"
#include "ztkdb/CMeldung.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Error.h"
#include "ztkdb/MessageBox.h"

using namespace ZTkDb;

namespace {

const char* const kPieces[] = {"'",
                               "''",
                               "\\",
                               "#",
                               "#stKST#",
                               "#lId#",
                               "#1.1.2000#",
                               "?",
                               ":a",
                               "$1",
                               "$$",
                               "--",
                               "/*",
                               ";",
                               "; DELETE FROM T_Leistung; --",
                               "24.11.2026",
                               "2026-11-24 10:00:00",
                               "1.5",
                               "-",
                               "ä",
                               "😀",
                               "\xff",
                               "\t",
                               "\r\n",
                               " ",
                               "x",
                               "0",
                               "%",
                               "_",
                               "{fn now()}"};

struct Databases {
  CTkDb bound, text;
  Databases() {
    SetMessageSink([](const MessageBoxCall&) {});
    const std::string dir = "/tmp/fuzz_records." + std::to_string(getpid());
    mkdir(dir.c_str(), 0700);
    for (const char* name : {"/bound.db", "/text.db"}) {
      unlink((dir + name).c_str());
      detail::CreateModuleDatabase(dir + name);
    }
    bound.OpenJetDb("fb", dir + "/bound.db", false, false);
    // The engine takes the setting when it opens.
    setenv("ZTKDB_STATEMENT_CACHE", "0", 1);
    text.OpenJetDb("ft", dir + "/text.db", false, false);
    unsetenv("ZTKDB_STATEMENT_CACHE");
  }
};

std::string Text(FuzzedDataProvider& in) {
  std::string out;
  for (int n = in.ConsumeIntegralInRange(0, 4); n > 0; --n) {
    if (in.ConsumeBool())
      out += kPieces[in.ConsumeIntegralInRange<size_t>(0, std::size(kPieces) - 1)];
    else
      out += in.ConsumeBytesAsString(in.ConsumeIntegralInRange(0, 6));
  }
  return out;
}

Date AnyDate(FuzzedDataProvider& in) {
  switch (in.ConsumeIntegralInRange(0, 3)) {
    case 0: return Date(in.ConsumeFloatingPointInRange(-700000.0, 3000000.0));
    case 1: return Date(static_cast<double>(in.ConsumeIntegralInRange(-657434, 2958465)));
    case 2: return NoDate;
    default: return Date(in.ConsumeFloatingPoint<double>());
  }
}

Currency AnyAmount(FuzzedDataProvider& in) {
  if (in.ConsumeBool()) return Currency::FromScaled(in.ConsumeIntegral<int64_t>());
  return Currency::FromScaled(in.ConsumeIntegralInRange<int64_t>(-100000000, 100000000));
}

double AnyNumber(FuzzedDataProvider& in) {
  if (in.ConsumeBool()) return in.ConsumeFloatingPoint<double>();
  return in.ConsumeIntegralInRange(-40000, 40000) / 8.0;
}

// One booking's values, set the same way on each side.
struct Values {
  int32_t auftrag, ansprech;
  Date datum;
  std::string zeit, bemerkung, kst, leistart;
  double stunden, weg;
  Currency preis;
  bool fremd;
  explicit Values(FuzzedDataProvider& in)
      : auftrag(in.ConsumeIntegral<int32_t>()),
        ansprech(in.ConsumeIntegral<int32_t>()),
        datum(AnyDate(in)),
        zeit(Text(in)),
        bemerkung(Text(in)),
        kst(Text(in)),
        leistart(Text(in)),
        stunden(AnyNumber(in)),
        weg(AnyNumber(in)),
        preis(AnyAmount(in)),
        fremd(in.ConsumeBool()) {}
  void Create(CLeistung& l) const {
    l.CreateNew1(auftrag, 17, datum, zeit, 3, stunden, preis, 1.0, weg, Currency::FromScaled(4500),
                 bemerkung, 9, "Lohn", ansprech, kst, "A", "B", leistart, "R", fremd);
  }
  void Set(CLeistung& l) const {
    l.AuftragId(auftrag);
    l.AnsprechId(ansprech);
    l.AusfDatum(datum);
    l.AusfZeit(zeit);
    l.Bemerkung(bemerkung);
    l.Kostenstelle(kst);
    l.Leistart(leistart);
    l.Stunden(stunden);
    l.Weg(weg);
    l.PreisProStd(preis);
    l.Fremdleistung(fremd);
  }
};

long Outcome(const std::function<void()>& f) {
  try {
    f();
    return 0;
  } catch (const Error& e) {
    return e.Number();
  }
}

bool Same(const CLeistung& a, const CLeistung& b) {
  return a.Id() == b.Id() && a.AuftragId() == b.AuftragId() && a.AnsprechId() == b.AnsprechId() &&
         a.AusfDatum() == b.AusfDatum() && a.AusfZeit() == b.AusfZeit() &&
         a.Bemerkung() == b.Bemerkung() && a.Kostenstelle() == b.Kostenstelle() &&
         a.Leistart() == b.Leistart() && a.Stunden() == b.Stunden() && a.Weg() == b.Weg() &&
         a.PreisProStd() == b.PreisProStd() && a.Fremdleistung() == b.Fremdleistung();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Databases dbs;
  FuzzedDataProvider in(data, size);
  CLeistung b, t;
  b.ConnectStorage("fb");
  t.ConnectStorage("ft");
  const Values created(in);
  const long eb = Outcome([&] { created.Create(b); });
  const long et = Outcome([&] { created.Create(t); });
  if (eb != et) __builtin_trap();
  if (eb == 0) {
    if (!Same(b, t)) __builtin_trap();
    const Values changed(in);
    changed.Set(b);
    changed.Set(t);
    if (Outcome([&] { b.Update(); }) != Outcome([&] { t.Update(); })) __builtin_trap();
    b.ReadById(b.Id());
    t.ReadById(t.Id());
    if (!Same(b, t)) __builtin_trap();
  }
  // A list and a read whose prefix goes in unescaped.
  const int32_t order = in.ConsumeIntegral<int32_t>();
  CLeistungListe lb, lt;
  lb.ConnectStorage("fb");
  lt.ConnectStorage("ft");
  if (Outcome([&] { lb.ReadByOrderId(order); }) != Outcome([&] { lt.ReadByOrderId(order); }) ||
      lb.Count() != lt.Count()) {
    __builtin_trap();
  }
  // Each run leaves the tables as it found them: lists stay short, and a
  // long run's memory stays flat.
  if (b.Id() != 0) b.Delete();
  if (t.Id() != 0) t.Delete();
  const std::string prefix = Text(in);
  CMeldung mb, mt;
  mb.ConnectStorage("fb");
  mt.ConnectStorage("ft");
  if (Outcome([&] { mb.ReadByNr(1, prefix); }) != Outcome([&] { mt.ReadByNr(1, prefix); })) {
    __builtin_trap();
  }
  return 0;
}
