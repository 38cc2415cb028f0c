#pragma once

#include <string>
#include <vector>

#include "Fields.h"
#include "Session.h"

namespace ztk {

// What the tool refuses although the library would take it: the data must
// stay consistent for every host reading it afterwards.

// Times HH:MM (or empty) and enumerations within their values, in any
// record; a usage error naming the field.
template <typename R>
void CheckValues(const std::vector<Field<R>>& fields, const R& record);

// The values given on the command line, as a desk's slip would get them
// wrong: no negative hours, quantities or amounts; hours past 24, quantities
// past 100,000 and amounts past 1.000.000,00 only with `force` (real values
// may exceed them); no done date in the future; no blank text for a field
// a record cannot do without.
template <typename R>
void CheckGiven(const std::vector<std::pair<const Field<R>*, FieldValue>>& values, bool force);

// A record renumbered by `set` (Nr or NrVorsatz given): no other record
// under that number and prefix, unless `force`.
void CheckRenumbered(Session& session, const ZTkDb::CAuftrag& record, bool force);
void CheckRenumbered(Session& session, const ZTkDb::CMeldung& record, bool force);
template <typename R>
void CheckRenumbered(Session&, const R&, bool) {}

// A new record: the fields it cannot do without, the orders and reports it
// refers to, and (unless `force`) no second record under the same number
// and prefix. A missing field is a UsageError (exit 2), anything else a
// Failure (exit 1), saying why.
void CheckNew(Session& session, const ZTkDb::CAuftrag& draft, bool numbered, bool force);
void CheckNew(Session& session, const ZTkDb::CMeldung& draft, bool numbered, bool force);
void CheckNew(Session& session, const ZTkDb::CLeistung& draft, bool numbered, bool force);
void CheckNew(Session& session, const ZTkDb::CMaterial& draft, bool numbered, bool force);
void CheckNew(Session& session, const ZTkDb::CMsgOrderDokument& draft, bool numbered, bool force);

bool OrderExists(Session& session, int32_t id);
bool ReportExists(Session& session, int32_t id);

// The rows that refer to an order or a report, one line each ("leistung 12",
// "meldung 4 (link)"); `cascade` deletes them instead, in the caller's
// transaction.
std::vector<std::string> Dependents(Session& session, const ZTkDb::CAuftrag& order, bool cascade);
std::vector<std::string> Dependents(Session& session, const ZTkDb::CMeldung& report, bool cascade);
template <typename R>
std::vector<std::string> Dependents(Session&, const R&, bool) {
  return {};
}

}  // namespace ztk
