/// \file
/// The library's one exception, ZTkDb::Error, and its numbers.
#pragma once

#include <stdexcept>
#include <string>

#include "ztkdb/Export.h"

namespace ZTkDb {

/// The one exception type every public member lets escape. Number, source and
/// description are passed on unchanged by every member that did not raise it,
/// so a host sees the engine's or the conversion's error as it was raised.
/// Anything else that fails inside a member (out of memory, a fault of the
/// library) arrives as an Error too, numbered 7 or 51.
class ZTKDB_API Error : public std::runtime_error {
 public:
  /// An error as the library raises it; what() gives the description.
  /// \param number One of ErrorNumbers.
  /// \param source Where it was raised: the engine, a conversion, or a member such as
  ///   "CAuftrag.ReadById".
  /// \param description The message, with the engine's own text (and SQLSTATE for ODBC).
  Error(long number, std::string source, std::string description);

  /// The error's number.
  /// \return One of ErrorNumbers (DAO and VB numbering).
  long Number() const noexcept { return number_; }
  /// Where the error was raised.
  /// \return The engine, a conversion ("ZTkDb.Variant", "ZTkDb.Currency", …) or a
  ///   member ("CAuftrag.ReadById").
  const std::string& Source() const noexcept { return source_; }
  /// What went wrong, for people and logs.
  /// \return The description, carrying the engine's message (and SQLSTATE for ODBC).
  const std::string& Description() const noexcept { return description_; }

 private:
  long number_;
  std::string source_;
  std::string description_;
};

/// Every error number the library raises (`Error::Number()`, the C
/// interface's status, `ztkdb.Error.number`), and the numbers message boxes
/// carry (`MessageBoxCall::number`). They follow the DAO and VB conventions.
enum ErrorNumbers : long {
  errInvalidCall = 5,  ///< invalid procedure call or argument (a text with NUL, a bad option)
  errOverflow = 6,     ///< a value past its type's range, refused before anything is sent
  errOutOfMemory = 7,  ///< out of memory; also a statement text past 16 MB
  errSubscriptOutOfRange = 9,    ///< an index past a collection's end
  errTypeMismatch = 13,          ///< a value that does not convert to the property's type
  errInternal = 51,              ///< an internal error (a fault of the library: please report it)
  errObjectNotSet = 91,          ///< a record or list not connected to a storage, a closed object
  errInvalidUseOfNull = 94,      ///< Null where the property takes none (every date property)
  errCannotCreateObject = 429,   ///< C interface: no class of that name
  errNoSuchMember = 438,         ///< C interface: the object has no member of that name
  errArgumentNotOptional = 449,  ///< C interface: a required argument is missing (passed empty)
  errWrongArgumentCount = 450,   ///< C interface: too many arguments, or fewer than required
  errDuplicateKeyInCollection = 457,  ///< a workspace or client name already in use
  errEngine = 3000,                   ///< the engine failed in a way no other number names
  errInvalidArgument = 3001,          ///< an argument the engine refuses
  errNoCurrentRecord = 3021,          ///< a cursor before its first or after its last row
  errDuplicateValue = 3022,           ///< a unique key already holds the value
  errFileNotFound = 3024,             ///< the database file does not exist
  errReadOnly = 3027,                 ///< a write on a database opened read-only
  errCannotOpenFile = 3051,           ///< locked, not a database, or an Access file
  errTooFewParameters = 3061,         ///< a statement names a column the table does not have
  errCannotExecuteSelect = 3065,      ///< Execute given a statement that returns rows
  errSyntax = 3075,                   ///< the server could not read the statement
  errTableNotFound = 3078,            ///< the statement names a table that does not exist
  errInvalidStatement = 3129,         ///< an empty statement, or a second one in one call
  errOdbcCallFailed = 3146,           ///< the data source or its driver failed
  errInsertFailed = 3155,             ///< box only: a create whose insert wrote no row
  errFieldTooSmall = 3163,            ///< a text longer than its column holds
  errWriteConflict = 3197,      ///< box only: the row was changed or deleted since it was read
  errAlreadyExists = 3204,      ///< the database or the module's tables already exist
  errLocked = 3260,             ///< the row or table stayed locked by another writer
  errItemNotFound = 3265,       ///< no field of that name
  errFieldCannotBeNull = 3314,  ///< a required column left Null
  errDatabaseClosed = 3420,     ///< a database used after it was closed
};

}  // namespace ZTkDb
