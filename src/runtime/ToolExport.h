#pragma once

// The few internals the ztk tool links against: it uses the installed
// shared library instead of carrying a copy of it. They are exported like
// the public classes but declared only in headers that are not installed,
// so they promise hosts nothing (tests/exports.sh lists them).
#if defined(ZTKDB_BUILDING)
#define ZTKDB_TOOL __attribute__((visibility("default")))
#else
#define ZTKDB_TOOL
#endif
