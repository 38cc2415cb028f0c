#include "ztkdb/Error.h"

#include <new>

#include "runtime/Guard.h"
#include "runtime/Raise.h"

namespace ZTkDb {

Error::Error(long number, std::string source, std::string description)
    : std::runtime_error(description),
      number_(number),
      source_(std::move(source)),
      description_(std::move(description)) {}

namespace detail {

std::string StandardDescription(long number) {
  switch (number) {
    case errOverflow: return "Overflow";
    case errSubscriptOutOfRange: return "Subscript out of range";
    case errTypeMismatch: return "Type mismatch";
    case errObjectNotSet: return "Object variable or With block variable not set";
    case errInvalidUseOfNull: return "Invalid use of Null";
    case errDuplicateKeyInCollection:
      return "This key is already associated with an element of this collection";
    case errInvalidArgument: return "Invalid argument.";
    case errNoCurrentRecord: return "No current record.";
    case errInvalidStatement:
      return "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
             "'UPDATE'.";
    case errItemNotFound: return "Item not found in this collection.";
    default: return "Application-defined or object-defined error";
  }
}

void Raise(long number, std::string source, std::string description) {
  throw Error(number, std::move(source), std::move(description));
}

void RaiseStandard(long number, std::string source) {
  throw Error(number, std::move(source), StandardDescription(number));
}

void RaiseForeign(const std::exception& e, std::string source) {
  if (dynamic_cast<const std::bad_alloc*>(&e)) Raise(7, std::move(source), "Out of memory");
  Raise(51, std::move(source), std::string("Internal error: ") + e.what());
}

}  // namespace detail
}  // namespace ZTkDb
