/** \file
 * ZTkDb for hosts in any language: a small, stable C interface to every
 * public class. Objects are created by class name, reached by member name
 * (without regard to case, as a dispatch interface is) and released by
 * their handle. Values travel in one tagged type.
 *
 * Every function returns a status: 0 for success, otherwise the error's
 * number (the same numbers the C++ classes raise), whose number, source and
 * description ztk_last_error gives on the calling thread until its next
 * failing call.
 *
 * Members keep their C++ names, but for the cursor members, which answer to
 * "BOF" and "EOF". A string array argument (stSoIdListe) travels as one
 * string of comma-separated elements; RsClone hands out a Recordset object
 * and Ws a Workspace object. */
#ifndef ZTKDB_ZTKDB_H
#define ZTKDB_ZTKDB_H

#include <stdint.h>

#include "ztkdb/Export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** An object of the library: a record, a list, a CTkDb, a Recordset or a
 * Workspace. A null handle is "Nothing". */
typedef struct ztk_object* ztk_handle;

/** Every number a status (and a box) may carry; the same as
 * ZTkDb::ErrorNumbers in C++ and ztkdb.Error.number in Python. */
enum {
  ZTK_ERR_INVALID_CALL = 5,         /**< invalid procedure call or argument */
  ZTK_ERR_OVERFLOW = 6,             /**< a value past its type's range, refused before sending */
  ZTK_ERR_OUT_OF_MEMORY = 7,        /**< also a statement text past 16 MB */
  ZTK_ERR_SUBSCRIPT = 9,            /**< an index past a collection's end */
  ZTK_ERR_TYPE_MISMATCH = 13,       /**< a value that does not convert to the member's type */
  ZTK_ERR_INTERNAL = 51,            /**< a fault of the library: please report it */
  ZTK_ERR_OBJECT_NOT_SET = 91,      /**< not connected, closed, or a null handle */
  ZTK_ERR_INVALID_USE_OF_NULL = 94, /**< Null where the member takes none (dates) */
  ZTK_ERR_NO_SUCH_CLASS = 429,      /**< ztk_create: no class of that name */
  ZTK_ERR_NO_SUCH_MEMBER = 438,     /**< no member of that name */
  ZTK_ERR_ARGUMENT_MISSING = 449,   /**< a required argument left out (passed as ZTK_EMPTY) */
  ZTK_ERR_ARGUMENT_COUNT = 450,     /**< too many arguments (or fewer than required) */
  ZTK_ERR_DUPLICATE_NAME = 457,     /**< a workspace or client name already in use */
  ZTK_ERR_ENGINE = 3000,            /**< an engine failure no other number names */
  ZTK_ERR_INVALID_ARGUMENT = 3001,  /**< an argument the engine refuses */
  ZTK_ERR_NO_CURRENT_RECORD = 3021, /**< a cursor before its first or after its last row */
  ZTK_ERR_DUPLICATE_VALUE = 3022,   /**< a unique key already holds the value */
  ZTK_ERR_FILE_NOT_FOUND = 3024,    /**< the database file does not exist */
  ZTK_ERR_READ_ONLY = 3027,         /**< a write on a read-only open */
  ZTK_ERR_CANNOT_OPEN = 3051,       /**< locked, not a database, or an Access file */
  ZTK_ERR_UNKNOWN_COLUMN = 3061,    /**< too few parameters: a column the table lacks */
  ZTK_ERR_EXECUTE_SELECT = 3065,    /**< Execute given a statement that returns rows */
  ZTK_ERR_SYNTAX = 3075,            /**< the server could not read the statement */
  ZTK_ERR_TABLE_NOT_FOUND = 3078,   /**< the statement names a table that does not exist */
  ZTK_ERR_INVALID_STATEMENT = 3129, /**< empty, or a second statement in one call */
  ZTK_ERR_ODBC_CALL_FAILED = 3146,  /**< the data source or its driver failed */
  ZTK_ERR_INSERT_FAILED = 3155,     /**< box only: a create that wrote no row */
  ZTK_ERR_FIELD_TOO_SMALL = 3163,   /**< a text longer than its column holds */
  ZTK_ERR_WRITE_CONFLICT = 3197,    /**< box only: the row changed or went since it was read */
  ZTK_ERR_ALREADY_EXISTS = 3204,    /**< the database or the module's tables exist */
  ZTK_ERR_LOCKED = 3260,            /**< locked by another writer for longer than the wait */
  ZTK_ERR_ITEM_NOT_FOUND = 3265,    /**< no field of that name */
  ZTK_ERR_FIELD_NULL = 3314,        /**< a required column left Null */
  ZTK_ERR_DATABASE_CLOSED = 3420    /**< the database is closed */
};

/** The kind of value a ztk_value holds (numbered as automation variants). */
typedef enum ztk_type {
  ZTK_EMPTY = 0,    /**< no value; as an argument: the optional argument is omitted */
  ZTK_NULL = 1,     /**< the database's Null */
  ZTK_INT16 = 2,    /**< v.i16 */
  ZTK_INT32 = 3,    /**< v.i32 */
  ZTK_DOUBLE = 5,   /**< v.d */
  ZTK_CURRENCY = 6, /**< 64-bit integer scaled by 10,000 */
  ZTK_DATE = 7,     /**< OLE date: days since 30.12.1899, the fraction the time */
  ZTK_STRING = 8,   /**< UTF-8, NUL-terminated */
  ZTK_OBJECT = 9,   /**< a handle; a null handle is "Nothing" */
  ZTK_BOOL = 11,    /**< v.b */
  ZTK_BYTE = 17     /**< v.by */
} ztk_type;

/** One value: an argument, a property's new value or a result. */
typedef struct ztk_value {
  ztk_type type; /**< which member of v holds the value */
  /** The value itself, in the member `type` names. */
  union {
    int16_t i16;    /**< ZTK_INT16 */
    int32_t i32;    /**< ZTK_INT32 */
    double d;       /**< ZTK_DOUBLE */
    int64_t cy;     /**< ZTK_CURRENCY: the amount times 10,000 */
    double date;    /**< ZTK_DATE: the OLE value */
    const char* s;  /**< ZTK_STRING */
    ztk_handle obj; /**< ZTK_OBJECT */
    int32_t b;      /**< 0 false, otherwise true */
    uint8_t by;     /**< ZTK_BYTE */
  } v;
} ztk_value;

/** Member kinds of the type information. */
enum {
  ZTK_PROPERTY_GET = 1, /**< a property get: ztk_get, or ztk_call when it takes arguments */
  ZTK_PROPERTY_PUT = 2, /**< a property put: ztk_put */
  ZTK_METHOD = 3        /**< a method: ztk_call */
};

/** A new object of "ZTkDb." + class name, e.g. "ZTkDb.CAuftrag".
 * \param class_name "ZTkDb." and one of the names ztk_class_name lists, without regard
 *   to case.
 * \param out Receives the new object's handle (null on failure).
 * \return 0, or 429 for a name that is no creatable class, 5 when out is null. */
ZTKDB_API int32_t ztk_create(const char* class_name, ztk_handle* out);
/** Ends the host's use of an object; a null handle is ignored. Objects are
 * independent: release them in any order.
 * \param object The handle, which is invalid afterwards.
 * \return 0. */
ZTKDB_API int32_t ztk_release(ztk_handle object);

/** Property get without arguments. The result owns its string or handle:
 * give it to ztk_value_clear.
 * \param object The object.
 * \param member The property's name, without regard to case.
 * \param result Receives the value (ZTK_EMPTY on failure); may be null.
 * \return 0, or 91 for a null handle, 438 for no such property, 450 for a property that
 *   needs arguments (use ztk_call), or the error the property raised. */
ZTKDB_API int32_t ztk_get(ztk_handle object, const char* member, ztk_value* result);
/** Property put.
 * \param object The object.
 * \param member The property's name, without regard to case.
 * \param value The new value, converted to the property's type.
 * \return 0, or 91 for a null handle, 438 for no such property, 5 when value is null,
 *   13 for a value that does not convert, 94 for Null given to a property that takes
 *   none, 6 for a value past the property's range. */
ZTKDB_API int32_t ztk_put(ztk_handle object, const char* member, const ztk_value* value);
/** A method, or a property get with arguments (ItemByRecId, Fields), with
 * positional arguments; trailing optional ones may be left out or passed
 * as ZTK_EMPTY. A string array argument travels as one string of
 * comma-separated elements. `result` may be null when it is not wanted.
 * \param object The object.
 * \param member The member's name, without regard to case.
 * \param argc The number of arguments in argv.
 * \param argv The arguments, in the member's order.
 * \param result Receives the result (ZTK_EMPTY for none, and on failure); owned as
 *   ztk_get's.
 * \return 0, or 91 for a null handle, 438 for no such member, 450 for more arguments
 *   than the member takes or fewer than it requires, 449 for a required argument passed
 *   as ZTK_EMPTY, 13 for an argument that does not convert, or the error the member
 *   raised (the same number the C++ member raises). A message box is no error: the
 *   member returns 0. */
ZTKDB_API int32_t ztk_call(ztk_handle object, const char* member, int32_t argc,
                           const ztk_value* argv, ztk_value* result);
/** Frees a result's string or releases its handle; leaves ZTK_EMPTY.
 * \param value The value to clear; null is ignored. */
ZTKDB_API void ztk_value_clear(ztk_value* value);

/** The last error of this thread (pointers valid until its next call).
 * \param number Receives the number; may be null.
 * \param source Receives where it was raised; may be null.
 * \param description Receives the message; may be null.
 * \return The number; 0 when this thread has had no error. */
ZTKDB_API int32_t ztk_last_error(int32_t* number, const char** source, const char** description);

/** Receives a message box: its text, its title, whether it is critical (1) and the
 * user_data given to ztk_set_message_sink. */
typedef void (*ztk_message_sink)(const char* text, const char* title, int32_t critical,
                                 void* user_data);
/** Message boxes of the library go to `sink` (title may be empty: the
 * component's default title); a null sink restores the default (stderr).
 * \param sink Called once per box, in the thread that showed it; null for the default.
 * \param user_data Passed to every call of sink.
 * \return 0. */
ZTKDB_API int32_t ztk_set_message_sink(ztk_message_sink sink, void* user_data);

/** A message box with what a program needs to tell it from others: the
 * member that showed it ("CAuftrag.Update") and its number: ZTK_ERR_WRITE_CONFLICT
 * (3197) when the row was changed or deleted by another writer since it was
 * read and nothing was written, ZTK_ERR_INSERT_FAILED (3155) when a create
 * wrote no row, a failed ODBC open's error number, 0 for a box that only
 * informs. The member that showed a box still returns 0: a box is no error.
 * Strings are valid during the call. */
typedef struct ztk_message_box {
  const char* text;   /**< the box's text, exactly as the component shows it */
  const char* title;  /**< the title; "ZTkDb" when the member gives none */
  int32_t critical;   /**< 1 with the critical-stop icon, 0 without */
  const char* member; /**< the member that showed it, e.g. "CAuftrag.Update" */
  int32_t number;     /**< 3197, 3155, a failed open's error number, or 0 */
} ztk_message_box;
/** Receives a message box and the user_data given to ztk_set_box_sink. */
typedef void (*ztk_box_sink)(const ztk_message_box* box, void* user_data);
/** Replaces the sink ztk_set_message_sink set (and the other way round).
 * \param sink Called once per box, in the thread that showed it; null for the default.
 * \param user_data Passed to every call of sink.
 * \return 0. */
ZTKDB_API int32_t ztk_set_box_sink(ztk_box_sink sink, void* user_data);

/** Receives a statement once it ended: its text as the server reads it, the engine,
 * whether its values were bound (1) or the text sent (0), its duration in milliseconds,
 * its row count (-1: it failed), and the user_data given to ztk_set_trace. */
typedef void (*ztk_trace_sink)(const char* text, const char* engine, int32_t bound,
                               double milliseconds, int64_t rows, void* user_data);
/** Every statement the library runs goes to `sink` once it ended: its text
 * as the server reads it, the engine, whether its values were bound (1)
 * or the text sent (0), its duration and its row count (-1: it failed).
 * Called in the thread that ran it; a null sink ends the trace. A statement
 * ending in another thread meanwhile may still reach the old sink, so keep
 * it and its user_data valid while other threads run statements.
 * \param sink Called once per statement; null to end the trace.
 * \param user_data Passed to every call of sink.
 * \return 0. */
ZTKDB_API int32_t ztk_set_trace(ztk_trace_sink sink, void* user_data);

/** True (1) when no object is alive.
 * \return 1 when every object has been released, otherwise 0. */
ZTKDB_API int32_t ztk_can_unload(void);

/** Type information: the creatable classes, and the members of any class
 * (creatable or handed out: Recordset, Workspace).
 * \return The number of creatable classes. */
ZTKDB_API int32_t ztk_class_count(void);
/** The name of a creatable class.
 * \param index From 0 to ztk_class_count() - 1.
 * \return The name ("CAuftrag"), or null for an index outside. */
ZTKDB_API const char* ztk_class_name(int32_t index);
/** The number of members of a class.
 * \param class_name The class name without "ZTkDb." ("CAuftrag", "Recordset").
 * \return The number of members, or -1 for no such class. */
ZTKDB_API int32_t ztk_member_count(const char* class_name);
/** One member of a class.
 * \param class_name The class name without "ZTkDb.".
 * \param index From 0 to ztk_member_count() - 1.
 * \param name Receives the member's name; may be null.
 * \param kind Receives ZTK_PROPERTY_GET, ZTK_PROPERTY_PUT or ZTK_METHOD; may be null.
 * \param min_args Receives the number of required arguments; may be null.
 * \param max_args Receives the number of arguments with the optional ones; may be null.
 * \return 0, or 429 for no such class, 9 for an index outside. */
ZTKDB_API int32_t ztk_member_info(const char* class_name, int32_t index, const char** name,
                                  int32_t* kind, int32_t* min_args, int32_t* max_args);
/** The class name of an object ("CAuftrag").
 * \param object The object.
 * \return Its class name, or null for a null handle. */
ZTKDB_API const char* ztk_class_of(ztk_handle object);

#ifdef __cplusplus
}
#endif

#endif /* ZTKDB_ZTKDB_H */
