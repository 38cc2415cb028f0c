#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

#include "Records.h"
#include "Session.h"

namespace ztk {

// No --site given (site 0 is a site: the rows of no particular one).
constexpr int32_t kNoSite = INT32_MIN;

// The filters of `auftrag list` and `meldung list`.
struct ListFilter {
  bool open = false;
  bool done = false;
  int days = 30;
  std::string sort;
  int32_t site = kNoSite;
  std::string sites;
  std::string prefix;
  int32_t obj = 0;
  int typ = -1;
  std::string from;
  std::string to;
  int32_t meldung = 0;
  bool overdue = false;  // open, and due (ErledBisDatum) before today
  std::string search;    // in the texts and places, without regard to case
};

void AddFilterOptions(CLI::App* list, ListFilter& f, bool orders);
// A date given to an option; a usage error naming the option otherwise.
ZTkDb::Date ParseDateOption(const std::string& name, const std::string& text);
void ListOrders(Session& session, const ListFilter& f, const OutputOptions& out);
void ListReports(Session& session, const ListFilter& f, const OutputOptions& out);

}  // namespace ztk
