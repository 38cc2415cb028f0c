#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Session.h"

namespace ztk {

// The id of a row named on the command line: its id ("42"), or for an
// order or a report its prefix and number as the lists print them ("A12",
// "m7"; the prefix without regard to case). A number several rows share is
// refused with their ids. `word` is the tool's name of the kind ("auftrag").
int32_t ResolveRef(Session& session, const std::string& word, const std::string& ref);

// FIELD=VALUE pairs with the links to an order (AuftragId, OrderId) or a
// report (MeldungId, MsgId) given as numbers ("AuftragId=A12") turned into
// their ids.
std::vector<std::string> WithIds(Session& session, const std::vector<std::string>& assignments);

}  // namespace ztk
