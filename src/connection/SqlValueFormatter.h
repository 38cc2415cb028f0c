#pragma once

#include <string>
#include <string_view>

#include "ztkdb/Date.h"

namespace ZTkDb::detail {

// Process-wide, stateless; created on first use.
class SqlValueFormatter {
 public:
  static SqlValueFormatter& Instance();

  // A complete Jet date literal, "#yyyy-mm-dd hh:nn:ss#", the same under
  // every locale.
  std::string DateLiteral(const Date& date) const;
  // The text made safe between single quotes: each quote doubled.
  std::string TextLiteral(const std::string& text) const;
  // The same appended to `out`.
  void AppendTextLiteral(std::string& out, std::string_view text) const;
};

}  // namespace ZTkDb::detail
