/** \file
 * The mark of the shared library's exported symbols. C comments only: the
 * C interface includes this header, also from C89 hosts. */
#pragma once

/* Symbols of the shared library are hidden unless marked; the public
 * classes and free functions carry this mark. */
#if defined(ZTKDB_BUILDING)
#define ZTKDB_API __attribute__((visibility("default")))
#else
#define ZTKDB_API
#endif
