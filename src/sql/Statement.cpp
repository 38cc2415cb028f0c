#include "sql/Statement.h"

#include <cstdint>
#include <cstring>

#include "runtime/Numbers.h"
#include "runtime/Raise.h"
#include "runtime/Storable.h"
#include "sql/Literals.h"

namespace ZTkDb::detail {
namespace {

constexpr int64_t kInt32Max = 2147483647;

[[noreturn]] void RaiseTooLarge() {
  Raise(7, "ZTkDb.SqlTemplate",
        "Out of memory: the filled statement would be larger than 16 MB; nothing was sent.");
}

void ReplaceAll(std::string& text, std::string_view placeholder, std::string_view value) {
  size_t pos = text.find(placeholder);
  if (pos == std::string::npos) return;
  size_t count = 0;
  for (size_t p = pos; p != std::string::npos; p = text.find(placeholder, p + placeholder.size())) {
    ++count;
  }
  const size_t grown = value.size() > placeholder.size() ? value.size() - placeholder.size() : 0;
  if (grown > 0 &&
      (grown > Statement::kMaxText / count || text.size() + grown * count > Statement::kMaxText)) {
    RaiseTooLarge();
  }
  std::string out;
  out.reserve(text.size() + grown * count);
  size_t from = 0;
  while (pos != std::string::npos) {
    out.append(text, from, pos - from);
    out.append(value);
    from = pos + placeholder.size();
    pos = text.find(placeholder, from);
  }
  out.append(text, from, std::string::npos);
  text = std::move(out);
}

// A text whose every character reads the same to each server's lexer
// inside a quoted slot, and which nothing after the lexer reads as more
// than text: no quote or backslash, no '#' a later step might match, no
// '?' a driver might take for a marker, no '.' that could make it a date.
bool IsInert(std::string_view text) {
  for (const char c : text) {
    const bool ok = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                    c == '_' || c == '-' || c == ':' || c == ' ';
    if (!ok) return false;
  }
  return true;
}

// The class of a number's plain text ("12", "-12", "1.5", "-1.5"), or
// kShapeOnly for anything else (an exponent, an integer past 32 bits).
FillStep::Class NumberClass(std::string_view text) {
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);
  const size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  if (whole.empty() || whole.find_first_not_of("0123456789") != std::string_view::npos) {
    return FillStep::kShapeOnly;
  }
  if (point == std::string_view::npos) {
    if (whole.size() > 10 || std::stoll(std::string(whole)) > kInt32Max)
      return FillStep::kShapeOnly;
    return negative ? FillStep::kNegative : FillStep::kPlain;
  }
  const std::string_view fraction = text.substr(point + 1);
  if (fraction.empty() || fraction.find_first_not_of("0123456789") != std::string_view::npos) {
    return FillStep::kShapeOnly;
  }
  return negative ? FillStep::kNegativeFraction : FillStep::kFraction;
}

FillStep::Class IntegerClass(int64_t value) {
  if (value >= 0) return value <= kInt32Max ? FillStep::kPlain : FillStep::kShapeOnly;
  return value >= -kInt32Max ? FillStep::kNegative : FillStep::kShapeOnly;
}

}  // namespace

// Its quotes are doubled and read back, but a '#' might be found by a later
// step, a backslash is read by some servers' other string forms, a '?' by
// some drivers, a NUL ends some texts early, and dd.mm.yyyy in a date
// column's place is rewritten as a date.
bool Statement::TextBindable(std::string_view text) {
  if (text.find_first_of(std::string_view("#\\?\0", 4)) != std::string_view::npos) return false;
  return !MayBeGermanDate(text);
}

Statement Statement::Text(std::string text) {
  Statement s;
  s.owned_ = std::move(text);
  s.host_text_ = true;
  s.bindable_ = false;
  return s;
}

FillStep& Statement::Add(Placeholder p, FillStep::Kind kind) {
  // A read fills three or four steps, an update some forty.
  if (steps_.empty()) steps_.reserve(8);
  FillStep& step = steps_.emplace_back();
  step.placeholder = p.Text();
  step.kind = kind;
  return step;
}

Statement& Statement::Name(Placeholder p, std::string_view text) {
  Add(p, FillStep::kName).text.assign(text);
  if (text.find('#') != std::string_view::npos) bindable_ = false;
  return *this;
}

Statement& Statement::Raw(Placeholder p, std::string_view text) {
  FillStep& step = Add(p, FillStep::kRaw);
  step.text.assign(text);
  // An inert text reads as its characters wherever it stands and is a
  // value; any other is part of the statement's shape.
  // Any other goes as text: it could change the statement's shape, and a
  // plan learnt for each such text would only crowd out the others.
  if (IsInert(text))
    step.cls = FillStep::kPlain;
  else
    bindable_ = false;
  return *this;
}

Statement& Statement::Text(Placeholder p, std::string_view value) {
  FillStep& step = Add(p, FillStep::kText);
  step.text.assign(value);
  if (TextBindable(value))
    step.cls = FillStep::kPlain;
  else
    bindable_ = false;
  return *this;
}

Statement& Statement::Long(Placeholder p, int64_t value) {
  FillStep& step = Add(p, FillStep::kLong);
  step.integer = value;
  step.cls = IntegerClass(value);
  if (step.cls == FillStep::kShapeOnly) bindable_ = false;
  return *this;
}

Statement& Statement::Flag(Placeholder p, bool value) {
  FillStep& step = Add(p, FillStep::kFlag);
  step.integer = value ? 1 : 0;
  step.cls = value && kind_ == StorageKind::Jet ? FillStep::kNegative : FillStep::kPlain;
  return *this;
}

Statement& Statement::Number(Placeholder p, double value) {
  std::string text = PlainNumberText(value);  // raises 6 for what no literal writes
  FillStep& step = Add(p, FillStep::kNumber);
  step.number = value;
  step.cls = NumberClass(text);
  if (step.cls == FillStep::kShapeOnly) bindable_ = false;
  if (text.front() == '-') text.erase(0, 1);
  step.text = std::move(text);  // the digits a bound value carries
  return *this;
}

Statement& Statement::Amount(Placeholder p, const Currency& value, int64_t largest) {
  CheckStorableCurrency(value, kind_, largest);
  FillStep& step = Add(p, FillStep::kAmount);
  const int64_t scaled = value.Scaled();
  step.integer = scaled;
  const bool negative = scaled < 0;
  const uint64_t magnitude =
      negative ? uint64_t{0} - static_cast<uint64_t>(scaled) : static_cast<uint64_t>(scaled);
  if (magnitude % 10000 != 0) {
    step.cls = negative ? FillStep::kNegativeFraction : FillStep::kFraction;
  } else if (magnitude / 10000 <= static_cast<uint64_t>(kInt32Max)) {
    step.cls = negative ? FillStep::kNegative : FillStep::kPlain;
  } else {
    bindable_ = false;
  }
  return *this;
}

Statement& Statement::RecordDate(Placeholder p, const Date& value) {
  CheckStorableDate(value);
  FillStep& step = Add(p, FillStep::kDate);
  step.number = value.Value();
  step.cls = value.ShortText().size() > 10 ? FillStep::kDateTime : FillStep::kDateOnly;
  return *this;
}

Statement& Statement::FilterDate(Placeholder p, const Date& value) {
  CheckStorableDate(value);
  FillStep& step = Add(p, FillStep::kFilterDate);
  step.number = value.Value();
  step.cls = kind_ == StorageKind::Jet ? FillStep::kDateTime : FillStep::kDateOnly;
  return *this;
}

std::string Statement::LiteralOf(const FillStep& step) const {
  switch (step.kind) {
    case FillStep::kName:
    case FillStep::kRaw: return step.text;
    case FillStep::kText: return TextValue(step.text);
    case FillStep::kLong: return LongLiteral(step.integer);
    case FillStep::kFlag: return FlagLiteral(step.integer != 0, kind_);
    case FillStep::kNumber: return NumberLiteral(step.number);
    case FillStep::kAmount: return Currency::FromScaled(step.integer).Text();
    case FillStep::kDate: return RecordDateText(Date(step.number));
    case FillStep::kFilterDate: return FilterDateLiteral(Date(step.number), kind_);
  }
  return {};
}

std::string Statement::Render() const { return host_text_ ? owned_ : RenderWith(steps_); }

std::string Statement::RenderWith(const std::vector<FillStep>& values) const {
  std::string text(Template());
  if (text.size() > kMaxText) RaiseTooLarge();
  for (const FillStep& step : values) ReplaceAll(text, step.placeholder, LiteralOf(step));
  return text;
}

void Statement::AppendKey(std::string& out) const {
  const auto put = [&out](const void* data, size_t size) {
    out.append(static_cast<const char*>(data), size);
  };
  if (constant_) {
    out += 'c';
    put(&constant_, sizeof constant_);
  } else {
    const uint32_t size = static_cast<uint32_t>(owned_.size());
    out += 'o';
    put(&size, sizeof size);
    out += owned_;
  }
  put(&kind_, sizeof kind_);
  for (const FillStep& step : steps_) {
    const char* name = step.placeholder.data();
    put(&name, sizeof name);
    out += static_cast<char>(step.kind);
    out += static_cast<char>(step.cls);
    if (!step.IsValue()) {
      const uint32_t size = static_cast<uint32_t>(step.text.size());
      put(&size, sizeof size);
      out += step.text;
    }
  }
}

FillStep Statement::StandIn(const FillStep& step, size_t index, int set) const {
  FillStep s = step;
  const auto n = static_cast<int64_t>(index);
  // Integers past any the templates hold, distinct per value and per set.
  const int64_t whole = 1000000000 + set * 500000000 + n * 7 + 1;
  const bool negative = step.cls == FillStep::kNegative || step.cls == FillStep::kNegativeFraction;
  const bool fraction = step.cls == FillStep::kFraction || step.cls == FillStep::kNegativeFraction;
  switch (step.kind) {
    case FillStep::kName: break;
    case FillStep::kRaw:
    case FillStep::kText:
      if (step.IsValue()) s.text = (set ? "zSbb" : "zSa") + std::to_string(index) + "z";
      break;
    case FillStep::kLong:
    case FillStep::kFlag:
      s.kind = FillStep::kLong;
      s.integer = negative ? -whole : whole;
      break;
    case FillStep::kNumber:
    case FillStep::kAmount: {
      // A fraction with one digit and six before the point: any decimal
      // column the templates write holds it.
      const int64_t units = fraction ? 100000 + set * 50000 + n : whole;
      const int64_t scaled = units * 10000 + (fraction ? 5000 : 0);
      s.kind = FillStep::kAmount;
      s.integer = negative ? -scaled : scaled;
      break;
    }
    case FillStep::kDate:
    case FillStep::kFilterDate: {
      const bool timed = step.cls == FillStep::kDateTime;
      Date d = Date::FromYmd(2001 + set, 1 + set, 1 + set, timed ? 1 + set : 0, timed ? 2 : 0,
                             timed ? 3 : 0);
      s.number = d.AddDays(static_cast<int>(n) * 3).Value();
      break;
    }
  }
  return s;
}

}  // namespace ZTkDb::detail
