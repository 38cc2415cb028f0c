/* A host written in C: creates orders, reads them, updates with a
 * conflict, walks a list, and checks that mistakes come back as clear
 * errors. Usage: capi_test ZTK_BINARY SCRATCH_DIR */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "ztkdb/ztkdb.h"

static int failures = 0;
static int boxes = 0;
static char last_box[512];

#define CHECK(cond)                                                            \
  do {                                                                         \
    if (!(cond)) {                                                             \
      fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond); \
      ++failures;                                                              \
    }                                                                          \
  } while (0)

static void sink(const char* text, const char* title, int32_t critical, void* user) {
  (void)title;
  (void)critical;
  ++*(int*)user;
  snprintf(last_box, sizeof last_box, "%s", text);
}

struct box_seen {
  int count, number, critical;
  char member[64];
};

static void box_sink(const ztk_message_box* box, void* user) {
  struct box_seen* seen = (struct box_seen*)user;
  ++seen->count;
  seen->number = box->number;
  seen->critical = box->critical;
  snprintf(seen->member, sizeof seen->member, "%s", box->member);
}

struct traced {
  int count, bound;
  long long rows;
  char text[256];
};

static void trace(const char* text, const char* engine, int32_t bound, double ms, int64_t rows,
                  void* user) {
  struct traced* t = (struct traced*)user;
  (void)ms;
  if (strcmp(engine, "SQLite") != 0) return;
  ++t->count;
  t->bound += bound;
  t->rows = rows;
  snprintf(t->text, sizeof t->text, "%s", text);
}

static ztk_value str(const char* s) { return (ztk_value){.type = ZTK_STRING, .v.s = s}; }
static ztk_value i32(int32_t x) { return (ztk_value){.type = ZTK_INT32, .v.i32 = x}; }
static ztk_value flag(int b) { return (ztk_value){.type = ZTK_BOOL, .v.b = b}; }
static ztk_value date(double d) { return (ztk_value){.type = ZTK_DATE, .v.date = d}; }
static ztk_value money(int64_t scaled) { return (ztk_value){.type = ZTK_CURRENCY, .v.cy = scaled}; }

static int32_t get_i32(ztk_handle h, const char* member) {
  ztk_value v;
  CHECK(ztk_get(h, member, &v) == 0);
  int32_t x = v.type == ZTK_INT32 ? v.v.i32 : -999;
  ztk_value_clear(&v);
  return x;
}

static ztk_handle create_order(const char* client, int32_t nr, const char* text) {
  ztk_handle order = NULL;
  CHECK(ztk_create("ZTkDb.CAuftrag", &order) == 0);
  ztk_value c = str(client);
  CHECK(ztk_call(order, "ConnectStorage", 1, &c, NULL) == 0);
  const double today = 46346.0; /* 20.11.2026 */
  const double none = 2958465.0;
  ztk_value a[] = {i32(nr),       i32(17),   date(today), str("08:15"),     i32(100),
                   i32(4),        str(text), date(today), str(""),          date(none),
                   str(""),       flag(0),   date(none),  str(""),          i32(0),
                   i32(0),        i32(2),    i32(31),     i32(1),           i32(12),
                   i32(1),        i32(1),    str("A"),    str("Meier"),     str("0711"),
                   str("HV"),     i32(5),    str("K1"),   str("Stuttgart"), str("Objekt"),
                   str("KST"),    str("RE"), flag(0),     str(""),          str("Typ"),
                   money(125000), str("LA"), str("VA")};
  const int n = sizeof a / sizeof a[0];
  CHECK(n == 38);
  CHECK(ztk_call(order, "CreateNew7", n, a, NULL) == 0);
  return order;
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  char db[1024], command[2200];
  snprintf(db, sizeof db, "%s/capi.db", argv[2]);
  remove(db); /* a run before left its database */
  for (const char* suffix = "-wal"; suffix; suffix = suffix[1] == 'w' ? "-shm" : NULL) {
    char side[1100];
    snprintf(side, sizeof side, "%s%s", db, suffix);
    remove(side);
  }
  snprintf(command, sizeof command, "'%s' init '%s' >/dev/null", argv[1], db);
  if (system(command) != 0) return 2;
  CHECK(ztk_set_message_sink(sink, &boxes) == 0);

  ztk_handle tkdb = NULL;
  CHECK(ztk_create("ztkdb.ctkdb", &tkdb) == 0); /* names without regard to case */
  ztk_value open[4] = {str("capi"), str(db), flag(0), flag(0)};
  CHECK(ztk_call(tkdb, "OpenJetDb", 4, open, NULL) == 0);

  struct traced traced = {0, 0, 0, ""};
  CHECK(ztk_set_trace(trace, &traced) == 0);
  ztk_handle first = create_order("capi", 1, "Heizung");
  CHECK(ztk_set_trace(NULL, NULL) == 0);
  /* The create: an insert and its read back by UId, both bound. */
  CHECK(traced.count == 2);
  {
    const char* cache = getenv("ZTKDB_STATEMENT_CACHE");
    CHECK(traced.bound == (cache && strcmp(cache, "0") == 0 ? 0 : 2));
  }
  CHECK(traced.rows == 1);
  CHECK(strncmp(traced.text, "SELECT T_Auftrag.*", 18) == 0);
  ztk_handle second = create_order("capi", 2, "Tür");
  CHECK(traced.count == 2);
  const int32_t id = get_i32(first, "Id");
  CHECK(id > 0);

  /* Two readers of one row; the second writer gets the update-failed box. */
  ztk_handle copy = NULL;
  CHECK(ztk_create("ZTkDb.CAuftrag", &copy) == 0);
  ztk_value c = str("capi"), key = i32(id);
  CHECK(ztk_call(copy, "ConnectStorage", 1, &c, NULL) == 0);
  CHECK(ztk_call(copy, "ReadById", 1, &key, NULL) == 0);
  ztk_value text = str("neu");
  CHECK(ztk_put(first, "Auftrag", &text) == 0);
  CHECK(ztk_call(first, "Update", 0, NULL, NULL) == 0);
  CHECK(boxes == 0);
  CHECK(ztk_call(copy, "Update", 0, NULL, NULL) == 0);
  CHECK(boxes == 1 && strstr(last_box, "CAuftrag.Update fehlgeschlagen") != NULL);
  /* A program tells the conflict by its number, not by the box's text. */
  struct box_seen seen = {0, 0, 0, ""};
  CHECK(ztk_set_box_sink(box_sink, &seen) == 0);
  CHECK(ztk_call(copy, "Update", 0, NULL, NULL) == 0);
  CHECK(seen.count == 1 && seen.number == ZTK_ERR_WRITE_CONFLICT && seen.critical == 1);
  CHECK(strcmp(seen.member, "CAuftrag.Update") == 0);
  CHECK(ztk_set_message_sink(sink, &boxes) == 0);
  CHECK(boxes == 1);

  /* The list, walked; Nothing at the end; optional arguments omitted. */
  ztk_handle list = NULL;
  CHECK(ztk_create("ZTkDb.CAuftragListe", &list) == 0);
  CHECK(ztk_call(list, "ConnectStorage", 1, &c, NULL) == 0);
  ztk_value open_only = flag(0);
  CHECK(ztk_call(list, "ReadByDone", 1, &open_only, NULL) == 0);
  CHECK(get_i32(list, "Count") == 2);
  int rows = 0;
  ztk_value item;
  CHECK(ztk_call(list, "MoveFirst", 0, NULL, &item) == 0);
  while (item.type == ZTK_OBJECT && item.v.obj) {
    ++rows;
    ztk_value nr;
    CHECK(ztk_get(item.v.obj, "Nr", &nr) == 0 && nr.type == ZTK_INT32);
    ztk_value_clear(&item);
    CHECK(ztk_call(list, "MoveNext", 0, NULL, &item) == 0);
  }
  CHECK(rows == 2 && item.type == ZTK_OBJECT && item.v.obj == NULL);
  ztk_value eof;
  CHECK(ztk_get(list, "EOF", &eof) == 0 && eof.type == ZTK_BOOL && eof.v.b);
  ztk_value found;
  CHECK(ztk_call(list, "ItemByRecId", 1, &key, &found) == 0 && found.v.obj != NULL);
  ztk_value gone = i32(99999);
  ztk_value nothing;
  CHECK(ztk_call(list, "ItemByRecId", 1, &gone, &nothing) == 0 && nothing.v.obj == NULL);

  /* Mistakes are errors with a number and a description, not crashes. */
  int32_t number = 0;
  const char* source = NULL;
  const char* description = NULL;
  ztk_handle bad = NULL;
  CHECK(ztk_create("ZTkDb.CNichtDa", &bad) == 429 && bad == NULL);
  CHECK(ztk_get(first, "Gibtsnicht", &item) == 438);
  ztk_last_error(&number, &source, &description);
  CHECK(number == 438 && strstr(description, "Gibtsnicht") != NULL);
  CHECK(ztk_call(first, "ReadById", 0, NULL, NULL) == 450);
  ztk_value wrong = str("sieben");
  CHECK(ztk_call(first, "ReadById", 1, &wrong, NULL) == 13);
  CHECK(ztk_call(NULL, "ReadById", 1, &key, NULL) == 91);
  CHECK(ztk_put(first, "Id", &key) == 438); /* read-only */
  CHECK(ztk_call(first, "GetLastNr", 0, NULL, &item) == 0 && item.v.i32 == 2);

  /* Released in an odd order: lists before the items they handed out,
   * the connection manager before the records. */
  CHECK(ztk_can_unload() == 0);
  ztk_release(list);
  ztk_release(tkdb);
  ztk_value_clear(&found);
  ztk_release(second);
  ztk_release(copy);
  ztk_release(first);
  CHECK(ztk_can_unload() == 1);
  CHECK(ztk_set_message_sink(NULL, NULL) == 0);

  if (failures)
    fprintf(stderr, "%d checks failed\n", failures);
  else
    printf("capi: all checks passed\n");
  return failures ? 1 : 0;
}
