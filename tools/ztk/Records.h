#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Fields.h"
#include "Guards.h"
#include "Output.h"
#include "Session.h"

namespace ztk {

// What the generic record commands need to know of one record class.
template <typename R>
struct RecordKind;

template <>
struct RecordKind<ZTkDb::CAuftrag> {
  static constexpr const char* kWord = "auftrag";
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
  static const auto& Fields() { return LeistungFields(); }
  static std::vector<std::string> Extract(const std::vector<std::string>& a) { return a; }
  static void Number(ZTkDb::CLeistung&, const std::string&) {}
  static void Create(ZTkDb::CLeistung& target, const ZTkDb::CLeistung& draft);
  static void Prepare(ZTkDb::CLeistung& draft);
};

template <>
struct RecordKind<ZTkDb::CMaterial> {
  static constexpr const char* kWord = "material";
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
    throw Failure(std::string("no ") + RecordKind<R>::kWord + " with id " + std::to_string(id));
  }
  return record;
}

// Rows shown after a record's fields: figures about it, not fields of it.
using ExtraRows = std::vector<std::pair<std::string, FieldValue>>;

template <typename R>
void PrintRecord(const R& record, const OutputOptions& out, const ExtraRows& extra = {}) {
  const auto& fields = RecordKind<R>::Fields();
  if (out.json) {
    auto doc = RecordJson(fields, record);
    for (const auto& [name, value] : extra) doc[name] = JsonValue(value);
    return PrintJson(doc);
  }
  Table table({"Feld", "Wert"});
  for (const auto& f : fields) table.Add({f.name, DisplayText(f.get(record))});
  for (const auto& [name, value] : extra) table.Add({name, DisplayText(value)});
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
// only the rows it keeps.
template <typename List, typename Keep = bool (*)(const void*)>
void PrintList(List& list, const OutputOptions& out, Keep keep = nullptr) {
  using R = typename decltype(list.MoveFirst())::element_type;
  const auto& fields = RecordKind<R>::Fields();
  if (out.json) {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (auto item = list.MoveFirst(); item; item = list.MoveNext()) {
      if (Kept(keep, *item)) rows.push_back(RecordJson(fields, *item));
    }
    return PrintJson(rows);
  }
  std::vector<std::string> header;
  for (const auto& f : fields) {
    if (f.listed) header.push_back(f.name);
  }
  Table table(header);
  for (auto item = list.MoveFirst(); item; item = list.MoveNext()) {
    if (!Kept(keep, *item)) continue;
    std::vector<std::string> row;
    for (const auto& f : fields) {
      if (f.listed) row.push_back(DisplayText(f.get(*item)));
    }
    table.Add(std::move(row));
  }
  table.Print(stdout, out);
  if (!out.csv) std::printf("%zu %s\n", table.Rows(), table.Rows() == 1 ? "Zeile" : "Zeilen");
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

template <typename R>
void Add(Session& session, const std::vector<std::string>& assignments, bool force,
         const OutputOptions& out) {
  const auto& fields = RecordKind<R>::Fields();
  const auto values = ParseAssignments(fields, RecordKind<R>::Extract(assignments));
  R draft;
  RecordKind<R>::Prepare(draft);
  Apply(draft, values);
  if constexpr (requires(R r) { r.Erledigt(true); }) {
    if (Names(values, "Erledigt") && !Names(values, "ErledigtDatum")) {
      MarkDone(draft, draft.Erledigt(), nullptr);
    }
  }
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
  if (record->Id() == 0) throw Failure("the new row could not be read back");
  PrintStored<R>(session, record->Id(), out);
}

// --if-unchanged: the row must still hold the token it was shown with; the
// update's own guard then covers the time between this read and the write.
template <typename R>
void CheckUnchanged(const R& record, const std::string& token) {
  if (token.empty() || record.UId() == token) return;
  throw Conflict(std::string(RecordKind<R>::kWord) + " " + std::to_string(record.Id()) +
                 " was changed by someone else since it was shown (its token is now " +
                 record.UId() + "), so nothing was written. Show it again and repeat the change "
                 "if it still applies.");
}

template <typename R>
void Set(Session& session, int32_t id, const std::vector<std::string>& assignments,
         const OutputOptions& out, const std::string& ifUnchanged = {}, bool force = false) {
  const auto& fields = RecordKind<R>::Fields();
  const auto values = ParseAssignments(fields, assignments);
  if (values.empty()) throw UsageError("nothing to set: give FIELD=VALUE");
  if (Names(values, "MeldungId")) {
    throw UsageError("MeldungId is the order's link: change it with auftrag link / unlink");
  }
  CheckGiven(values, force);
  auto record = Load<R>(session, id);
  CheckUnchanged(*record, ifUnchanged);
  Apply(*record, values);
  if (Names(values, "Nr") || Names(values, "NrVorsatz")) CheckRenumbered(session, *record, force);
  if constexpr (requires(R r) { r.Erledigt(true); }) {
    // Erledigt=nein clears the date; Erledigt=ja without one sets today's.
    if (Names(values, "Erledigt") && (!record->Erledigt() || !Names(values, "ErledigtDatum"))) {
      MarkDone(*record, record->Erledigt(), nullptr);
    }
  }
  CheckValues(fields, *record);
  session.Write([&] { record->Update(); });
  PrintStored<R>(session, id, out);
}

template <typename R>
void Done(Session& session, int32_t id, bool done, const ZTkDb::Date* date,
          const OutputOptions& out, const std::string& ifUnchanged = {}) {
  if (date && date->DatePart() > ZTkDb::Date::Today()) {
    throw UsageError("--date: a done date cannot lie in the future");
  }
  auto record = Load<R>(session, id);
  CheckUnchanged(*record, ifUnchanged);
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
    throw Failure(std::string(RecordKind<R>::kWord) + " " + std::to_string(id) +
                  " is referred to by" + list + "\n--cascade deletes them with it");
  }
  session.Write([&] {
    Dependents(session, *record, true);
    record->Delete();
  });
  if (out.json) return PrintJson({{"deleted", id}, {"with", dependents}});
  std::printf("%s %d gelöscht\n", RecordKind<R>::kWord, id);
  for (const auto& d : dependents) std::printf("  mit %s\n", d.c_str());
}

}  // namespace ztk
