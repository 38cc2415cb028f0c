/* The C interface, found through pkg-config. */
#include <stdio.h>
#include <ztkdb/ztkdb.h>

int main(void) {
  ztk_handle h = NULL;
  if (ztk_create("ZTkDb.CMeldung", &h) != 0) return 1;
  ztk_release(h);
  printf("c consumer: %s\n", ztk_class_name(0));
  return 0;
}
