#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Columns.h"
#include "Fields.h"
#include "Guards.h"
#include "Output.h"
#include "Refs.h"
#include "Session.h"
#include "Text.h"

namespace ztk {

// What the generic record commands need to know of one record class.
template <typename R>
struct RecordKind;

template <>
struct RecordKind<ZTkDb::CAuftrag> {
  static constexpr const char* kWord = "auftrag";
  static constexpr const char* kNoun = N_("order");
  static const auto& Fields() { return AuftragFields(); }
  static std::vector<std::string> Extract(const std::vector<std::string>& a) { return a; }
  // The next number: the highest over all prefixes, plus one.
  static void Number(ZTkDb::CAuftrag& draft, const std::string& client);
  static void Create(ZTkDb::CAuftrag& target, const ZTkDb::CAuftrag& draft);
  static void Prepare(ZTkDb::CAuftrag& draft);
};

template <>
struct RecordKind<ZTkDb::CMeldung> {
  static constexpr const char* kWord = "meldung";
  static constexpr const char* kNoun = N_("report");
  static const auto& Fields() { return MeldungFields(); }
  static std::vector<std::string> Extract(const std::vector<std::string>& a) { return a; }
  // The next number under the report's prefix.
  static void Number(ZTkDb::CMeldung& draft, const std::string& client);
  static void Create(ZTkDb::CMeldung& target, const ZTkDb::CMeldung& draft);
  static void Prepare(ZTkDb::CMeldung& draft);
};

template <>
struct RecordKind<ZTkDb::CLeistung> {
  static constexpr const char* kWord = "leistung";
  static constexpr const char* kNoun = N_("labour booking");
  static const auto& Fields() { return LeistungFields(); }
  static std::vector<std::string> Extract(const std::vector<std::string>& a) { return a; }
  static void Number(ZTkDb::CLeistung&, const std::string&) {}
  static void Create(ZTkDb::CLeistung& target, const ZTkDb::CLeistung& draft);
  static void Prepare(ZTkDb::CLeistung& draft);
};

template <>
struct RecordKind<ZTkDb::CMaterial> {
  static constexpr const char* kWord = "material";
  static constexpr const char* kNoun = N_("material booking");
  static const auto& Fields() { return MaterialFields(); }
  static void Number(ZTkDb::CMaterial&, const std::string&) {}
  // The unit cannot be assigned to a CMaterial, so `add` takes it out of the
  // assignments and hands it to the creation beside the draft.
  static inline std::string unit;
  static std::vector<std::string> Extract(const std::vector<std::string>& a);
  static void Create(ZTkDb::CMaterial& target, const ZTkDb::CMaterial& draft);
  static void Prepare(ZTkDb::CMaterial& draft) { draft.Faktor(1.0); }
};

template <>
struct RecordKind<ZTkDb::CMsgOrderDokument> {
  static constexpr const char* kWord = "dokument";
  static constexpr const char* kNoun = N_("document link");
  static const auto& Fields() { return DokumentFields(); }
  static std::vector<std::string> Extract(const std::vector<std::string>& a) { return a; }
  static void Number(ZTkDb::CMsgOrderDokument&, const std::string&) {}
  static void Create(ZTkDb::CMsgOrderDokument& target, const ZTkDb::CMsgOrderDokument& draft);
  static void Prepare(ZTkDb::CMsgOrderDokument&) {}
};

// The record with that id, connected; a Failure when there is none.
template <typename R>
std::unique_ptr<R> Load(Session& session, int32_t id) {
  auto record = std::make_unique<R>();
  record->ConnectStorage(session.Client());
  record->ReadById(id);
  if (record->Id() == 0) {
    throw Failure(Say(_("there is no {1} with id {2}"), _(RecordKind<R>::kNoun), id));
  }
  return record;
}

// A record as people name it: an order or a report by its number (A12),
// the others by their id.
template <typename R>
std::string Label(const R& r) {
  if constexpr (requires { r.NrVorsatz(); }) {
    return r.NrVorsatz() + std::to_string(r.Nr());
  } else {
    return std::to_string(r.Id());
  }
}

// Rows shown after a record's fields: figures about it, not fields of it.
using ExtraRows = std::vector<std::pair<std::string, FieldValue>>;

// One record: every field for programs (one JSON object, or a CSV header
// and row), field and value for people, a long value wrapped.
template <typename R>
void PrintRecord(const R& record, const OutputOptions& out, const ExtraRows& extra = {}) {
  const auto& fields = RecordKind<R>::Fields();
  if (out.json) {
    auto doc = RowJson(fields, record, out.local);
    for (const auto& [name, value] : extra) doc[name] = FieldJson(value, out.local);
    return PrintJson(doc);
  }
  if (out.csv) {
    std::vector<std::string> names, cells = RowCsv(fields, record, out.local);
    for (const auto& f : fields) names.push_back(f.name);
    for (const auto& [name, value] : extra) {
      names.push_back(name);
      cells.push_back(out.local ? DeskText(value) : MachineText(value));
    }
    Table table(names);
    table.Add(cells);
    table.PrintCsv(stdout);
    return;
  }
  Table table({Column{_("Field"), 1, true}, Column{_("Value"), 1, false, 20, true}});
  for (const auto& f : fields) table.Add({f.name, DeskText(f.get(record))});
  for (const auto& [name, value] : extra) table.Add({name, DeskText(value)});
  table.Print(stdout, out);
}

// What has been booked on an order: its hours, and what its labour and its
// material cost (hours times rate, quantity times unit price).
ExtraRows BookedOn(Session& session, int32_t orderId);

template <typename Keep, typename R>
bool Kept(const Keep& keep, const R& row) {
  if constexpr (std::is_pointer_v<Keep>) {
    return true;
  } else {
    return keep(row);
  }
}

// Prints the rows of a list, from its first row to its end; with `keep`,
// only the rows it keeps. Programs get every field, people the list's
// columns.
template <typename List, typename Keep = bool (*)(const void*)>
void PrintList(List& list, const OutputOptions& out, Keep keep = nullptr) {
  using R = typename decltype(list.MoveFirst())::element_type;
  const auto& fields = RecordKind<R>::Fields();
  if (out.json) {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (auto item = list.MoveFirst(); item; item = list.MoveNext()) {
      if (Kept(keep, *item)) rows.push_back(RowJson(fields, *item, out.local));
    }
    return PrintJson(rows);
  }
  if (out.csv) {
    Table table = CsvTable(fields);
    for (auto item = list.MoveFirst(); item; item = list.MoveNext()) {
      if (Kept(keep, *item)) table.Add(RowCsv(fields, *item, out.local));
    }
    table.PrintCsv(stdout);
    return;
  }
  Table table = ListTable<R>();
  const auto& columns = ListColumns(static_cast<const R*>(nullptr));
  for (auto item = list.MoveFirst(); item; item = list.MoveNext()) {
    if (!Kept(keep, *item)) continue;
    std::vector<std::string> row;
    row.reserve(columns.size());
    for (const auto& c : columns) row.push_back(c.cell(*item));
    table.Add(std::move(row));
  }
  PrintCount(table.Rows(), table.Print(stdout, out));
}

template <typename R>
void Show(Session& session, int32_t id, const OutputOptions& out) {
  const auto record = Load<R>(session, id);
  if constexpr (std::is_same_v<R, ZTkDb::CAuftrag>) {
    PrintRecord(*record, out, BookedOn(session, id));
  } else {
    PrintRecord(*record, out);
  }
}

// What the database holds now, not what was sent: the library fills some
// values itself (a remark naming a placeholder, the link of an order).
template <typename R>
void PrintStored(Session& session, int32_t id, const OutputOptions& out) {
  PrintRecord(*Load<R>(session, id), out);
}

template <typename R>
bool Names(const std::vector<std::pair<const Field<R>*, FieldValue>>& values, const char* name) {
  for (const auto& [field, value] : values) {
    if (std::string(field->name) == name) return true;
  }
  return false;
}

std::string ClockText(ZTkDb::Date when);

// The done state stays one: a done record has its date, an open one has
// none (NoDate, which the lists rely on).
template <typename R>
void MarkDone(R& record, bool done, const ZTkDb::Date* date) {
  if constexpr (requires(R r) { r.Erledigt(true); }) {
    if (!done) {
      record.Erledigt(false);
      record.ErledigtDatum(ZTkDb::NoDate);
      record.ErledigtZeit("");
      return;
    }
    const bool wasDone = record.Erledigt() && record.ErledigtDatum() != ZTkDb::NoDate;
    record.Erledigt(true);
    if (date) {
      record.ErledigtDatum(date->DatePart());
      record.ErledigtZeit(date->HasTime() ? ClockText(*date) : "");
    } else if (!wasDone) {
      const ZTkDb::Date now = ZTkDb::Date::Now();
      record.ErledigtDatum(now.DatePart());
      record.ErledigtZeit(ClockText(now));
    }
  }
}

// The date a record was opened on, which no done date precedes.
inline ZTkDb::Date OpenedOn(const ZTkDb::CAuftrag& r) { return r.AuftragsDatum(); }
inline ZTkDb::Date OpenedOn(const ZTkDb::CMeldung& r) { return r.MeldeDatum(); }

// The done state stays one whatever FIELD=VALUE pairs gave: a done date
// alone marks the record done, an empty one opens it again, Erledigt=ja
// without a date takes today's, Erledigt=nein clears the date; a done date
// beside Erledigt=nein, or before the record was opened, is refused.
template <typename R, typename Values>
void SettleDone(R& record, const Values& values, bool force) {
  if constexpr (requires(R r) { r.Erledigt(true); }) {
    const bool flag = Names(values, "Erledigt"), dated = Names(values, "ErledigtDatum");
    const ZTkDb::Date date = record.ErledigtDatum();
    if (flag && dated && record.Erledigt() != (date != ZTkDb::NoDate)) {
      throw UsageError(
          _("Erledigt and ErledigtDatum contradict each other: a done record has a "
            "done date, an open one none"));
    }
    if (dated && !flag) {
      MarkDone(record, date != ZTkDb::NoDate, date != ZTkDb::NoDate ? &date : nullptr);
    } else if (flag && !dated) {
      MarkDone(record, record.Erledigt(), nullptr);
    }
    if (record.Erledigt() && OpenedOn(record) != ZTkDb::NoDate &&
        record.ErledigtDatum().DatePart() < OpenedOn(record).DatePart() && !force) {
      throw UsageError(Say(_("the done date {1} lies before the day it was opened ({2}); --force "
                             "takes it"),
                           DeskText(record.ErledigtDatum()), DeskText(OpenedOn(record))));
    }
  }
}

template <typename R>
void Add(Session& session, const std::vector<std::string>& assignments, bool force,
         const OutputOptions& out) {
  const auto& fields = RecordKind<R>::Fields();
  const auto values =
      ParseAssignments(fields, RecordKind<R>::Extract(WithIds(session, assignments)));
  R draft;
  RecordKind<R>::Prepare(draft);
  Apply(draft, values);
  SettleDone(draft, values, force);
  const bool numbered = Names(values, "Nr");
  CheckGiven(values, force);
  CheckValues(fields, draft);
  CheckNew(session, draft, numbered, force);
  auto record = std::make_unique<R>();
  record->ConnectStorage(session.Client());
  session.Write([&] {
    if (!numbered) RecordKind<R>::Number(draft, session.Client());
    RecordKind<R>::Create(*record, draft);
  });
  if (record->Id() == 0) throw Failure(_("the new row could not be read back"));
  PrintStored<R>(session, record->Id(), out);
}

// --if-unchanged: the row must still hold the token it was shown with; the
// update's own guard then covers the time between this read and the write.
template <typename R>
void CheckUnchanged(const R& record, const std::string& token) {
  if (token.empty() || record.UId() == token) return;
  throw Conflict(Say(_("{1} {2} was changed by someone else since it was shown (its token is now "
                       "{3}), so nothing was written. Show it again and repeat the change if it "
                       "still applies."),
                     _(RecordKind<R>::kNoun), Label(record), record.UId()));
}

template <typename R>
void Set(Session& session, int32_t id, const std::vector<std::string>& assignments,
         const OutputOptions& out, const std::string& ifUnchanged = {}, bool force = false) {
  const auto& fields = RecordKind<R>::Fields();
  const auto values = ParseAssignments(fields, WithIds(session, assignments));
  if (values.empty()) throw UsageError(_("nothing to set: give FIELD=VALUE"));
  if (Names(values, "MeldungId")) {
    throw UsageError(_("MeldungId is the order's link: change it with auftrag link / unlink"));
  }
  CheckGiven(values, force);
  auto record = Load<R>(session, id);
  CheckUnchanged(*record, ifUnchanged);
  Apply(*record, values);
  if (Names(values, "Nr") || Names(values, "NrVorsatz")) CheckRenumbered(session, *record, force);
  SettleDone(*record, values, force);
  CheckValues(fields, *record);
  session.Write([&] { record->Update(); });
  PrintStored<R>(session, id, out);
}

template <typename R>
void Done(Session& session, int32_t id, bool done, const ZTkDb::Date* date,
          const OutputOptions& out, const std::string& ifUnchanged = {}) {
  if (date && date->DatePart() > ZTkDb::Date::Today()) {
    throw UsageError(_("--date: a done date cannot lie in the future"));
  }
  auto record = Load<R>(session, id);
  CheckUnchanged(*record, ifUnchanged);
  // Nothing to change: the row and its token stay as they are, so that a
  // colleague's --if-unchanged still holds.
  const bool isDone = record->Erledigt() && record->ErledigtDatum() != ZTkDb::NoDate;
  if ((done && isDone && !date) ||
      (!done && !record->Erledigt() && record->ErledigtDatum() == ZTkDb::NoDate)) {
    return PrintRecord(*record, out);
  }
  if (date && OpenedOn(*record) != ZTkDb::NoDate &&
      date->DatePart() < OpenedOn(*record).DatePart()) {
    throw UsageError(Say(_("--date: {1} lies before the day it was opened ({2})"), DeskText(*date),
                         DeskText(OpenedOn(*record))));
  }
  MarkDone(*record, done, date);
  session.Write([&] { record->Update(); });
  PrintStored<R>(session, id, out);
}

template <typename R>
void Delete(Session& session, int32_t id, bool cascade, const OutputOptions& out) {
  auto record = Load<R>(session, id);
  const auto dependents = Dependents(session, *record, false);
  if (!dependents.empty() && !cascade) {
    std::string list;
    for (const auto& d : dependents) list += "\n  " + d;
    // TRANSLATORS: {3} is a list of rows, one per line.
    throw Failure(Say(_("{1} {2} is referred to by{3}\n--cascade deletes them with it"),
                      _(RecordKind<R>::kNoun), Label(*record), list));
  }
  session.Write([&] {
    Dependents(session, *record, true);
    record->Delete();
  });
  if (out.json) return PrintJson({{"deleted", id}, {"with", dependents}});
  std::printf("%s\n", Say(_("{1} {2} deleted"), _(RecordKind<R>::kNoun), Label(*record)).c_str());
  for (const auto& d : dependents) std::printf("%s\n", Say(_("  with {1}"), d).c_str());
}

}  // namespace ztk
