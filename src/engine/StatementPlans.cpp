#include "engine/StatementPlans.h"

#include <cstdlib>
#include <optional>

#include "ztkdb/Error.h"

namespace ZTkDb::detail {
namespace {

using Param = StatementPlan::Param;

bool IsDate(const FillStep& step) {
  return step.kind == FillStep::kDate || step.kind == FillStep::kFilterDate;
}

// The date a date step's literal names: a record's to the second, a
// filter's on servers without its time (dd.mm.yyyy).
Date LiteralDate(const FillStep& step, StorageKind kind) {
  const Date d(step.number);
  return step.kind == FillStep::kFilterDate && kind != StorageKind::Jet ? d.DatePart() : d;
}

// The characters between a date literal's quotes where it is German text.
std::string GermanText(const FillStep& step, StorageKind kind) {
  const std::string text = LiteralDate(step, kind).ShortText();
  return step.kind == FillStep::kFilterDate ? text.substr(0, 10) : text;
}

// The magnitude of an integer literal: its sign, when it has one, stays in
// the text.
int64_t Magnitude(const FillStep& step) {
  switch (step.kind) {
    case FillStep::kAmount: return std::llabs(step.integer / 10000);
    case FillStep::kNumber:
      return static_cast<int64_t>(step.number < 0 ? -step.number : step.number);
    default: return std::llabs(step.integer);
  }
}

// The digits of a decimal literal, without its sign.
std::string Digits(const FillStep& step) {
  if (step.kind == FillStep::kNumber) return step.text;
  std::string text = Currency::FromScaled(step.integer).Text();
  return text.substr(1);  // the blank or the sign
}

bool IsFraction(const FillStep& step) {
  return step.cls == FillStep::kFraction || step.cls == FillStep::kNegativeFraction;
}

// Finds `content` once in `text`: what stands before and after it.
bool Around(const std::string& text, const std::string& content, Param& p) {
  const size_t at = text.find(content);
  if (at == std::string::npos || text.find(content, at + 1) != std::string::npos) return false;
  p.prefix = text.substr(0, at);
  p.suffix = text.substr(at + content.size());
  return true;
}

// How `v` came from the value `step` (a stand-in), if it did.
std::optional<Param> Match(const LiftedValue& v, const FillStep& step, StorageKind kind) {
  Param p;
  p.value = v;
  p.value.text.clear();
  if (v.kind == LiftedValue::kInteger && !IsDate(step) && step.kind != FillStep::kText &&
      step.kind != FillStep::kRaw && !IsFraction(step)) {
    // Some readings take the sign into the literal, some leave it in the text.
    const int64_t magnitude = Magnitude(step);
    const bool negative = step.cls == FillStep::kNegative;
    if (v.integer == magnitude) {
      p.conversion = Param::kInteger;
    } else if (negative && v.integer == -magnitude) {
      p.conversion = Param::kNegatedInteger;
    } else {
      return std::nullopt;
    }
    return p;
  }
  // SQLite binds a decimal as the text of its digits, which its marker casts.
  if ((v.kind == LiftedValue::kDecimal || v.kind == LiftedValue::kText) && IsFraction(step)) {
    if (v.text != Digits(step)) return std::nullopt;
    p.conversion = Param::kDecimal;
    return p;
  }
  if (v.kind == LiftedValue::kText &&
      (step.kind == FillStep::kText || step.kind == FillStep::kRaw)) {
    if (!Around(v.text, step.text, p)) return std::nullopt;
    p.conversion = Param::kText;
    return p;
  }
  if (!IsDate(step)) return std::nullopt;
  const Date date = LiteralDate(step, kind);
  if (v.kind == LiftedValue::kTimestamp) {
    LiftedValue parts;
    if (!ParseTimestamp(date.IsoText(), parts) || v.year != parts.year || v.month != parts.month ||
        v.day != parts.day || v.hour != parts.hour || v.minute != parts.minute ||
        v.second != parts.second) {
      return std::nullopt;
    }
    p.conversion = Param::kParts;
    return p;
  }
  if (v.kind != LiftedValue::kText) return std::nullopt;
  if (Around(v.text, date.IsoText(), p)) {
    p.conversion = Param::kIsoText;
    return p;
  }
  if (Around(v.text, GermanText(step, kind), p)) {
    p.conversion = Param::kGermanText;
    return p;
  }
  return std::nullopt;
}

bool SameValue(const LiftedValue& a, const LiftedValue& b) {
  return a.kind == b.kind && a.text == b.text && a.integer == b.integer && a.number == b.number &&
         a.null_as == b.null_as && a.year == b.year && a.month == b.month && a.day == b.day &&
         a.hour == b.hour && a.minute == b.minute && a.second == b.second;
}

bool SameConversion(const Param& a, const Param& b) {
  return a.conversion == b.conversion && a.step == b.step && a.prefix == b.prefix &&
         a.suffix == b.suffix && a.value.kind == b.value.kind && a.value.room == b.value.room;
}

}  // namespace

StatementPlan StatementPlans::Learn(const Statement& sql) const {
  StatementPlan plan;
  const std::vector<FillStep>& steps = sql.Steps();
  std::vector<FillStep> a = steps, b = steps;
  for (size_t i = 0; i < steps.size(); ++i) {
    if (!steps[i].IsValue()) continue;
    a[i] = sql.StandIn(steps[i], i, 0);
    b[i] = sql.StandIn(steps[i], i, 1);
  }
  StatementFacts fa, fb;
  try {
    adapt_(sql.RenderWith(a), fa);
    adapt_(sql.RenderWith(b), fb);
  } catch (const Error&) {
    return plan;  // the statement's own text runs, and fails, as text
  }
  if (!fa.lifted || !fb.lifted || fa.lifted->Shape() != fb.lifted->Shape() ||
      fa.lifted->values.size() != fb.lifted->values.size()) {
    return plan;
  }
  const std::vector<LiftedValue>& va = fa.lifted->values;
  const std::vector<LiftedValue>& vb = fb.lifted->values;
  for (size_t j = 0; j < va.size(); ++j) {
    if (SameValue(va[j], vb[j])) {
      Param p;
      p.value = va[j];
      plan.params.push_back(std::move(p));
      continue;
    }
    std::optional<Param> found;
    for (size_t i = 0; i < steps.size() && !found; ++i) {
      if (!steps[i].IsValue()) continue;
      auto pa = Match(va[j], a[i], sql.Kind());
      if (!pa) continue;
      auto pb = Match(vb[j], b[i], sql.Kind());
      if (!pb) return plan;
      pa->step = pb->step = static_cast<uint32_t>(i);
      if (!SameConversion(*pa, *pb)) return plan;
      found = std::move(pa);
    }
    if (!found) return plan;
    plan.params.push_back(std::move(*found));
  }
  plan.uses.assign(steps.size(), 0);
  for (const Param& p : plan.params) {
    if (p.conversion != Param::kConstant) ++plan.uses[p.step];
  }
  plan.bound = true;
  plan.plain_query = fa.plain_query;
  plan.shape = std::make_shared<const std::string>(fa.lifted->Shape());
  return plan;
}

bool StatementPlans::Bind(const Statement& sql, LiftedStatement& out, bool& plainQuery) {
  if (!sql.Bindable()) return false;
  key_.clear();
  sql.AppendKey(key_);
  StatementPlan* plan = plans_.Find(key_);
  if (!plan) plan = &plans_.Insert(key_, Learn(sql));
  if (!plan->bound) return false;
  const std::vector<FillStep>& steps = sql.Steps();
  // A text near the limit a filled statement may reach goes the text path,
  // which raises 7 exactly where the text would pass it. The bound: the
  // template's names many times over, each text doubled by its quotes.
  size_t most = sql.Template().size() * 8;
  for (size_t i = 0; i < steps.size(); ++i) {
    most += plan->uses[i] * (2 * steps[i].text.size() + 32);
  }
  if (most > Statement::kMaxText) return false;
  out.shape.clear();
  out.shared_shape = plan->shape;
  out.values.resize(plan->params.size());
  for (size_t j = 0; j < plan->params.size(); ++j) {
    const Param& p = plan->params[j];
    LiftedValue& v = out.values[j];
    if (p.conversion == Param::kConstant) {
      v = p.value;
      continue;
    }
    const FillStep& step = steps[p.step];
    static_cast<LiftedScalars&>(v) = p.value;
    switch (p.conversion) {
      case Param::kConstant: break;
      case Param::kInteger: v.integer = Magnitude(step); break;
      case Param::kNegatedInteger: v.integer = -Magnitude(step); break;
      case Param::kDecimal:
        v.text = Digits(step);
        if (!p.value.room.Holds(v.text)) return false;
        break;
      case Param::kText:
        v.text.assign(p.prefix).append(step.text).append(p.suffix);
        // The template's characters around the value may make a date of it.
        if ((!p.prefix.empty() || !p.suffix.empty()) && !Statement::TextBindable(v.text)) {
          return false;
        }
        break;
      case Param::kIsoText:
        v.text.assign(p.prefix).append(LiteralDate(step, sql.Kind()).IsoText()).append(p.suffix);
        break;
      case Param::kGermanText:
        v.text.assign(p.prefix).append(GermanText(step, sql.Kind())).append(p.suffix);
        break;
      case Param::kParts:
        if (!ParseTimestamp(LiteralDate(step, sql.Kind()).IsoText(), v)) return false;
        break;
    }
  }
  plainQuery = plan->plain_query;
  return true;
}

}  // namespace ZTkDb::detail
