#include "runtime/Storable.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "runtime/Numbers.h"
#include "runtime/Raise.h"

namespace ZTkDb::detail {

void CheckStorableDate(const Date& value) {
  const double v = value.Value();
  if (!(std::isfinite(v) && IsStorableDateValue(v))) {
    Raise(errOverflow, "ZTkDb.Date",
          "Overflow: a date must lie between 01.01.0100 and 31.12.9999 (OLE value " +
              (std::isfinite(v) ? InvariantNumberText(v) : std::string("not a number")) + ").");
  }
}

namespace {

// Whether `scaled` lies beyond ±`largest`; a largest of INT64_MAX (a
// server's DECIMAL(19,4)) takes every amount, the most negative one too.
bool Beyond(int64_t scaled, int64_t largest) {
  return largest != INT64_MAX && (scaled > largest || scaled < -largest);
}

}  // namespace

void CheckStorableCurrency(const Currency& value, StorageKind kind, int64_t largest) {
  // REAL storage resolves 0.0001 up to 2^39; beyond it an amount would come
  // back different, so it is not written at all.
  if (kind == StorageKind::Jet &&
      (value.Scaled() > kLargestJetAmount || value.Scaled() < -kLargestJetAmount)) {
    Raise(errOverflow, "ZTkDb.Currency",
          "Overflow: the embedded engine cannot store " + value.Text() +
              " exactly (amounts up to ±549,755,813,888 are kept to the 0.0001).");
  }
  if (Beyond(value.Scaled(), largest)) {
    Raise(errOverflow, "ZTkDb.Currency",
          "Overflow: the data source cannot store " + value.Text() + " exactly (amounts up to ±" +
              Currency::FromScaled(largest).Text() + " are kept to the 0.0001).");
  }
}

void CheckStorableRows(const std::vector<std::vector<Variant>>& rows, size_t width,
                       int64_t largestAmount) {
  for (const auto& row : rows) {
    if (row.size() != width) {
      Raise(errInvalidArgument, "ZTkDb.Engine",
            "Invalid argument: a row of " + std::to_string(row.size()) + " values for " +
                std::to_string(width) + " columns; nothing was written.");
    }
    for (const Variant& v : row) {
      switch (v.Type()) {
        case vtDate: CheckStorableDate(v.ToDate()); break;
        case vtCurrency: {
          const Currency c = v.ToCurrency();
          if (Beyond(c.Scaled(), largestAmount)) {
            Raise(errOverflow, "ZTkDb.Currency",
                  "Overflow: the database cannot store " + c.Text() + " exactly (amounts up to ±" +
                      Currency::FromScaled(largestAmount).Text() +
                      " are kept to the 0.0001); nothing was written.");
          }
          break;
        }
        case vtDouble:
          if (!std::isfinite(v.ToDouble())) RaiseStandard(errOverflow, "ZTkDb.Number");
          break;
        default: break;
      }
    }
  }
}

}  // namespace ZTkDb::detail
