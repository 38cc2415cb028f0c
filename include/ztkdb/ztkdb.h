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

/* Every number a status (and a box) may carry; the same as
 * ZTkDb::ErrorNumbers in C++ and ztkdb.Error.number in Python. */
enum {
  ZTK_ERR_INVALID_CALL = 5,         /* invalid procedure call or argument */
  ZTK_ERR_OVERFLOW = 6,             /* a value past its type's range, refused before sending */
  ZTK_ERR_OUT_OF_MEMORY = 7,        /* also a statement text past 16 MB */
  ZTK_ERR_SUBSCRIPT = 9,            /* an index past a collection's end */
  ZTK_ERR_TYPE_MISMATCH = 13,       /* a value that does not convert to the member's type */
  ZTK_ERR_INTERNAL = 51,            /* a fault of the library: please report it */
  ZTK_ERR_OBJECT_NOT_SET = 91,      /* not connected, closed, or a null handle */
  ZTK_ERR_INVALID_USE_OF_NULL = 94, /* Null where the member takes none (dates) */
  ZTK_ERR_NO_SUCH_CLASS = 429,      /* ztk_create: no class of that name */
  ZTK_ERR_NO_SUCH_MEMBER = 438,     /* no member of that name */
  ZTK_ERR_ARGUMENT_MISSING = 449,   /* a required argument left out */
  ZTK_ERR_ARGUMENT_COUNT = 450,     /* too many arguments */
  ZTK_ERR_DUPLICATE_NAME = 457,     /* a workspace or client name already in use */
  ZTK_ERR_ENGINE = 3000,            /* an engine failure no other number names */
  ZTK_ERR_INVALID_ARGUMENT = 3001,  /* an argument the engine refuses */
  ZTK_ERR_NO_CURRENT_RECORD = 3021, /* a cursor before its first or after its last row */
  ZTK_ERR_DUPLICATE_VALUE = 3022,   /* a unique key already holds the value */
  ZTK_ERR_FILE_NOT_FOUND = 3024,
  ZTK_ERR_READ_ONLY = 3027,      /* a write on a read-only open */
  ZTK_ERR_CANNOT_OPEN = 3051,    /* locked, not a database, or an Access file */
  ZTK_ERR_UNKNOWN_COLUMN = 3061, /* too few parameters: a column the table lacks */
  ZTK_ERR_EXECUTE_SELECT = 3065, /* Execute given a statement that returns rows */
  ZTK_ERR_SYNTAX = 3075,
  ZTK_ERR_TABLE_NOT_FOUND = 3078,
  ZTK_ERR_INVALID_STATEMENT = 3129, /* empty, or a second statement in one call */
  ZTK_ERR_ODBC_CALL_FAILED = 3146,  /* the data source or its driver failed */
  ZTK_ERR_INSERT_FAILED = 3155,     /* box only: a create that wrote no row */
  ZTK_ERR_FIELD_TOO_SMALL = 3163,   /* a text longer than its column holds */
  ZTK_ERR_WRITE_CONFLICT = 3197,    /* box only: the row changed or went since it was read */
  ZTK_ERR_ALREADY_EXISTS = 3204,    /* the database or the module's tables exist */
  ZTK_ERR_LOCKED = 3260,
  ZTK_ERR_ITEM_NOT_FOUND = 3265, /* no field of that name */
  ZTK_ERR_FIELD_NULL = 3314,     /* a required column left Null */
  ZTK_ERR_DATABASE_CLOSED = 3420
};

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

/* A message box with what a program needs to tell it from others: the
 * member that showed it ("CAuftrag.Update") and its number: ZTK_ERR_WRITE_CONFLICT
 * (3197) when the row was changed or deleted by another writer since it was
 * read and nothing was written, ZTK_ERR_INSERT_FAILED (3155) when a create
 * wrote no row, a failed ODBC open's error number, 0 for a box that only
 * informs. The member that showed a box still returns 0: a box is no error.
 * Strings are valid during the call. */
typedef struct ztk_message_box {
  const char* text;
  const char* title;
  int32_t critical;
  const char* member;
  int32_t number;
} ztk_message_box;
typedef void (*ztk_box_sink)(const ztk_message_box* box, void* user_data);
/* Replaces the sink ztk_set_message_sink set (and the other way round). */
ZTKDB_API int32_t ztk_set_box_sink(ztk_box_sink sink, void* user_data);

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
