// A host that keeps its objects in globals and function-local statics, as
// many desktop programs do: at exit they are destroyed after (or before)
// the library's own process-wide services, in whatever order the runtime
// picks. It must end cleanly, and what it wrote to a buffered stdout must
// arrive. Run by ctest (under AddressSanitizer in the sanitized build).
#include <cstdio>
#include <string>

#include "ztkdb/ZTkDb.h"

ZTkDb::CTkDb g_tkdb;
ZTkDb::CAuftrag g_order;
ZTkDb::CAuftragListe g_orders;

ZTkDb::CTkDb& LocalDb() {
  static ZTkDb::CTkDb tkdb;
  return tkdb;
}

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const std::string path = argv[1];
  try {
    g_tkdb.OpenJetDb("global", path, false, false);
    LocalDb().OpenJetDb("lokal", path, false, false);
    g_order.ConnectStorage("global");
    g_orders.ConnectStorage("lokal");
    static ZTkDb::CMeldungListe reports;
    reports.ConnectStorage("lokal");
    reports.ReadByDone(false);
    g_orders.ReadByDone(false);
    g_order.ReadById(1);
  } catch (const ZTkDb::Error& e) {
    std::fprintf(stderr, "%ld %s\n", e.Number(), e.Description().c_str());
    return 1;
  }
  std::printf("fertig: %d Auftraege\n", g_orders.Count());
  return 0;  // stdout is flushed by exit, after the statics above are gone
}
