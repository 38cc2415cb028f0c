/* ZTkDb for hosts in any language: a small, stable C interface to every
 * public class. Objects are created by class name, reached by member name
 * (without regard to case, as a dispatch interface is) and released by
 * their handle. Values travel in one tagged type.
 *
 * Every function returns a status: 0 for success, otherwise the error's
 * number (the same numbers the C++ classes raise), whose number, source and
 * description ztk_last_error gives on the calling thread until its next
 * failing call. */
#ifndef ZTKDB_ZTKDB_H
#define ZTKDB_ZTKDB_H

#include <stdint.h>

#include "ztkdb/Export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ztk_object* ztk_handle;

typedef enum ztk_type {
  ZTK_EMPTY = 0,   /* no value; as an argument: the optional argument is omitted */
  ZTK_NULL = 1,
  ZTK_INT16 = 2,
  ZTK_INT32 = 3,
  ZTK_DOUBLE = 5,
  ZTK_CURRENCY = 6, /* 64-bit integer scaled by 10,000 */
  ZTK_DATE = 7,     /* OLE date: days since 30.12.1899, the fraction the time */
  ZTK_STRING = 8,   /* UTF-8, NUL-terminated */
  ZTK_OBJECT = 9,   /* a handle; a null handle is "Nothing" */
  ZTK_BOOL = 11,
  ZTK_BYTE = 17
} ztk_type;

typedef struct ztk_value {
  ztk_type type;
  union {
    int16_t i16;
    int32_t i32;
    double d;
    int64_t cy;
    double date;
    const char* s;
    ztk_handle obj;
    int32_t b; /* 0 false, otherwise true */
    uint8_t by;
  } v;
} ztk_value;

/* Member kinds of the type information. */
enum { ZTK_PROPERTY_GET = 1, ZTK_PROPERTY_PUT = 2, ZTK_METHOD = 3 };

/* A new object of "ZTkDb." + class name, e.g. "ZTkDb.CAuftrag". */
ZTKDB_API int32_t ztk_create(const char* class_name, ztk_handle* out);
/* Ends the host's use of an object; a null handle is ignored. Objects are
 * independent: release them in any order. */
ZTKDB_API int32_t ztk_release(ztk_handle object);

/* Property get without arguments. The result owns its string or handle:
 * give it to ztk_value_clear. */
ZTKDB_API int32_t ztk_get(ztk_handle object, const char* member, ztk_value* result);
/* Property put. */
ZTKDB_API int32_t ztk_put(ztk_handle object, const char* member, const ztk_value* value);
/* A method, or a property get with arguments (ItemByRecId, Fields), with
 * positional arguments; trailing optional ones may be left out or passed
 * as ZTK_EMPTY. A string array argument travels as one string of
 * comma-separated elements. `result` may be null when it is not wanted. */
ZTKDB_API int32_t ztk_call(ztk_handle object, const char* member, int32_t argc,
                           const ztk_value* argv, ztk_value* result);
/* Frees a result's string or releases its handle; leaves ZTK_EMPTY. */
ZTKDB_API void ztk_value_clear(ztk_value* value);

/* The last error of this thread (pointers valid until its next call). */
ZTKDB_API int32_t ztk_last_error(int32_t* number, const char** source, const char** description);

/* Message boxes of the library go to `sink` (title may be empty: the
 * component's default title); a null sink restores the default (stderr). */
typedef void (*ztk_message_sink)(const char* text, const char* title, int32_t critical,
                                 void* user_data);
ZTKDB_API int32_t ztk_set_message_sink(ztk_message_sink sink, void* user_data);

/* Every statement the library runs goes to `sink` once it ended: its text
 * as the server reads it, the engine, whether its values were bound (1)
 * or the text sent (0), its duration and its row count (-1: it failed).
 * Called in the thread that ran it; a null sink ends the trace. A statement
 * ending in another thread meanwhile may still reach the old sink, so keep
 * it and its user_data valid while other threads run statements. */
typedef void (*ztk_trace_sink)(const char* text, const char* engine, int32_t bound,
                               double milliseconds, int64_t rows, void* user_data);
ZTKDB_API int32_t ztk_set_trace(ztk_trace_sink sink, void* user_data);

/* True (1) when no object is alive. */
ZTKDB_API int32_t ztk_can_unload(void);

/* Type information: the creatable classes, and the members of any class
 * (creatable or handed out: Recordset, Workspace). */
ZTKDB_API int32_t ztk_class_count(void);
ZTKDB_API const char* ztk_class_name(int32_t index);
ZTKDB_API int32_t ztk_member_count(const char* class_name);
ZTKDB_API int32_t ztk_member_info(const char* class_name, int32_t index, const char** name,
                                  int32_t* kind, int32_t* min_args, int32_t* max_args);
/* The class name of an object ("CAuftrag"). */
ZTKDB_API const char* ztk_class_of(ztk_handle object);

#ifdef __cplusplus
}
#endif

#endif /* ZTKDB_ZTKDB_H */
