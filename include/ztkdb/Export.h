#pragma once

// Symbols of the shared library are hidden unless marked; the public classes
// and free functions carry this mark.
#if defined(ZTKDB_BUILDING)
#define ZTKDB_API __attribute__((visibility("default")))
#else
#define ZTKDB_API
#endif
