// A program built against the installed tree only.
#include <ztkdb/ZTkDb.h>
#include <ztkdb/ztkdb.h>

#include <cstdio>

int main() {
  ZTkDb::CAuftrag order;
  ztk_handle handle = nullptr;
  if (ztk_create("ZTkDb.CAuftragListe", &handle) != 0) return 1;
  ztk_release(handle);
  std::printf("consumer: order %d, %d classes\n", order.Id(), ztk_class_count());
  return ztk_class_count() == 12 && ztk_can_unload() ? 0 : 1;
}
