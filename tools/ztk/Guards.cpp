// The tool's own checks: what a help-desk engineer must not do by a slip of
// the keyboard, although the library (as it always did) would let a host.
#include "Guards.h"

#include <cstring>
#include <initializer_list>

#include "Columns.h"
#include "Text.h"

namespace ztk {
namespace {

using ZTkDb::CAuftrag;
using ZTkDb::CLeistung;
using ZTkDb::CMaterial;
using ZTkDb::CMeldung;
using ZTkDb::CMsgOrderDokument;

bool IsTime(const std::string& t) {
  return t.empty() || (t.size() == 5 && t[2] == ':' && t[0] >= '0' && t[0] <= '2' && t[1] >= '0' &&
                       t[1] <= '9' && (t[0] < '2' || t[1] <= '3') && t[3] >= '0' && t[3] <= '5' &&
                       t[4] >= '0' && t[4] <= '9');
}

bool EndsWith(const char* text, const char* tail) {
  const size_t n = std::strlen(text), m = std::strlen(tail);
  return n >= m && std::strcmp(text + n - m, tail) == 0;
}

}  // namespace

template <typename R>
void CheckValues(const std::vector<Field<R>>& fields, const R& record) {
  for (const auto& f : fields) {
    const FieldValue v = f.get(record);
    if (f.kind == FieldKind::kText && EndsWith(f.name, "Zeit") &&
        !IsTime(std::get<std::string>(v))) {
      // TRANSLATORS: {1} is a field name, {2} the value given.
      throw UsageError(Say(_("{1}: a time is HH:MM (00:00 to 23:59) or empty, got '{2}'"), f.name,
                           std::get<std::string>(v)));
    }
    if (std::strcmp(f.name, "ObjTyp") == 0 || std::strcmp(f.name, "Herkunft") == 0) {
      const int32_t n =
          std::holds_alternative<int32_t>(v) ? std::get<int32_t>(v) : std::get<uint8_t>(v);
      const int32_t last =
          f.name[0] == 'O' ? int32_t{ZTkDb::sotObjekt} : int32_t{ZTkDb::hetImportGlt};
      if (n < 0 || n > last) {
        // TRANSLATORS: {1} is a field name, {2} its largest value, {3} the
        // value given.
        throw UsageError(Say(_("{1} must lie in 0..{2}, got {3}"), f.name, last, n));
      }
    }
  }
}

template void CheckValues(const std::vector<Field<CAuftrag>>&, const CAuftrag&);
template void CheckValues(const std::vector<Field<CMeldung>>&, const CMeldung&);
template void CheckValues(const std::vector<Field<CLeistung>>&, const CLeistung&);
template void CheckValues(const std::vector<Field<CMaterial>>&, const CMaterial&);
template void CheckValues(const std::vector<Field<CMsgOrderDokument>>&, const CMsgOrderDokument&);

namespace {

bool Named(const char* name, std::initializer_list<const char*> names) {
  for (const char* n : names) {
    if (std::strcmp(name, n) == 0) return true;
  }
  return false;
}

bool Blank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

template <typename R>
void CheckGiven(const std::vector<std::pair<const Field<R>*, FieldValue>>& values, bool force) {
  for (const auto& [field, value] : values) {
    const std::string name = field->name;
    double number = 0, bound = 0;
    // The refusal of a value past `bound`: {1} the field, {2} the value,
    // {3} the bound as the desk writes it.
    const char* tooLarge =
        _("{1} {2} is more than {3}, which is most likely a slip; --force "
          "takes it");
    std::string limit;
    if (const auto* c = std::get_if<ZTkDb::Currency>(&value)) {
      number = static_cast<double>(c->Scaled()) / 10000.0;
      bound = 1000000.0;
      limit = DeskAmount("1000000");
    } else if (const auto* d = std::get_if<double>(&value)) {
      number = *d;
      if (name == "Stunden") {
        bound = 24.0;
        // TRANSLATORS: {1} is a field name, {2} the hours given.
        tooLarge =
            _("{1} {2} is more than 24 hours, which is most likely a slip; --force takes it");
      } else if (name == "Menge") {
        bound = 100000.0;
        limit = DeskAmount("100000");
      }
    } else if (const auto* n = std::get_if<int32_t>(&value)) {
      if (name != "Nr") continue;
      number = *n;
    } else if (const auto* date = std::get_if<ZTkDb::Date>(&value)) {
      if (name == "ErledigtDatum" && *date != ZTkDb::NoDate &&
          date->DatePart() > ZTkDb::Date::Today()) {
        // TRANSLATORS: {1} is a field name, {2} the date given.
        throw UsageError(Say(_("{1}: a done date cannot lie in the future, got {2}"), name,
                             date->ShortText().substr(0, 10)));
      }
      continue;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      if (Named(field->name, {"Auftrag", "Meldung", "Bezeichnung", "Datei"}) && Blank(*text)) {
        // TRANSLATORS: {1} is a field name.
        throw UsageError(Say(_("{1} must not be blank"), name));
      }
      continue;
    } else {
      continue;
    }
    if (number < 0) {
      // TRANSLATORS: {1} is a field name, {2} the value given.
      throw UsageError(Say(_("{1} cannot be negative, got {2}"), name, DeskText(value)));
    }
    if (bound > 0 && number > bound && !force) {
      throw UsageError(Say(tooLarge, name, DeskText(value), limit));
    }
  }
}

template void CheckGiven(const std::vector<std::pair<const Field<CAuftrag>*, FieldValue>>&, bool);
template void CheckGiven(const std::vector<std::pair<const Field<CMeldung>*, FieldValue>>&, bool);
template void CheckGiven(const std::vector<std::pair<const Field<CLeistung>*, FieldValue>>&, bool);
template void CheckGiven(const std::vector<std::pair<const Field<CMaterial>*, FieldValue>>&, bool);
template void CheckGiven(const std::vector<std::pair<const Field<CMsgOrderDokument>*, FieldValue>>&,
                         bool);

namespace {

// `taken`: the refusal, {1} the number and prefix, {2} the id that holds them.
template <typename R>
void CheckNumberFree(Session& session, const R& record, const char* taken, bool force) {
  if (force) return;
  R probe;
  probe.ConnectStorage(session.Client());
  probe.ReadByNr(record.Nr(), record.NrVorsatz());
  if (probe.Id() != 0 && probe.Id() != record.Id()) {
    throw Failure(Say(taken, record.NrVorsatz() + std::to_string(record.Nr()), probe.Id()));
  }
}

}  // namespace

void CheckRenumbered(Session& session, const CAuftrag& record, bool force) {
  const char* taken =
      // TRANSLATORS: {1} is an order's prefix and number (A12), {2} the id
      // of the order that has it.
      _("order {1} exists already (id {2}); --force gives this one the same number");
  CheckNumberFree(session, record, taken, force);
}

void CheckRenumbered(Session& session, const CMeldung& record, bool force) {
  const char* taken =
      // TRANSLATORS: {1} is a report's prefix and number (M12), {2} the id
      // of the report that has it.
      _("report {1} exists already (id {2}); --force gives this one the same number");
  CheckNumberFree(session, record, taken, force);
}

bool OrderExists(Session& session, int32_t id) {
  CAuftrag probe;
  probe.ConnectStorage(session.Client());
  probe.ReadById(id);
  return id != 0 && probe.Id() == id;
}

bool ReportExists(Session& session, int32_t id) {
  CMeldung probe;
  probe.ConnectStorage(session.Client());
  probe.ReadById(id);
  return id != 0 && probe.Id() == id;
}

namespace {

// A field left out is a wrong command line (2); a reference to nothing is a
// request that cannot be carried out (1). `missing` is the refusal, its {1}
// the field.
void RequireOrder(Session& session, int32_t id, const char* missing) {
  if (id == 0) throw UsageError(Say(missing, "AuftragId"));
  if (!OrderExists(session, id)) throw Failure(Say(_("no order with id {1}"), id));
}

void RequireText(const std::string& value, const char* field, const char* missing) {
  if (Blank(value)) throw UsageError(Say(missing, field));
}

}  // namespace

void CheckNew(Session& session, const CAuftrag& d, bool numbered, bool force) {
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireText(d.Auftrag(), "Auftrag", _("an order needs {1}=TEXT"));
  if (d.MeldungId() != 0 && !ReportExists(session, d.MeldungId())) {
    throw Failure(Say(_("no report with id {1}"), d.MeldungId()));
  }
  if (numbered && !force) {
    CAuftrag probe;
    probe.ConnectStorage(session.Client());
    probe.ReadByNr(d.Nr(), d.NrVorsatz());
    if (probe.Id() != 0) {
      // TRANSLATORS: {1} is an order's prefix and number (A12), {2} the id
      // of the order that has it.
      throw Failure(Say(_("order {1} exists already (id {2}); --force adds a second one"),
                        d.NrVorsatz() + std::to_string(d.Nr()), probe.Id()));
    }
  }
}

void CheckNew(Session& session, const CMeldung& d, bool numbered, bool force) {
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireText(d.Meldung(), "Meldung", _("a report needs {1}=TEXT"));
  if (numbered && !force) {
    CMeldung probe;
    probe.ConnectStorage(session.Client());
    probe.ReadByNr(d.Nr(), d.NrVorsatz());
    if (probe.Id() != 0) {
      // TRANSLATORS: {1} is a report's prefix and number (M12), {2} the id
      // of the report that has it.
      throw Failure(Say(_("report {1} exists already (id {2}); --force adds a second one"),
                        d.NrVorsatz() + std::to_string(d.Nr()), probe.Id()));
    }
  }
}

void CheckNew(Session& session, const CLeistung& d, bool, bool) {
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireOrder(session, d.AuftragId(), _("a labour booking needs {1}=ID"));
}

void CheckNew(Session& session, const CMaterial& d, bool, bool) {
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireOrder(session, d.AuftragId(), _("a material booking needs {1}=ID"));
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireText(d.Bezeichnung(), "Bezeichnung", _("a material booking needs {1}=TEXT"));
}

void CheckNew(Session& session, const CMsgOrderDokument& d, bool, bool) {
  // TRANSLATORS: {1} is a field name, as it is typed.
  RequireText(d.Datei(), "Datei", _("a document link needs {1}=TEXT"));
  if (d.OrderId() == 0 && d.MsgId() == 0) {
    // TRANSLATORS: {1} and {2} are field names, as they are typed.
    throw UsageError(Say(_("a document link needs {1}=ID or {2}=ID"), "OrderId", "MsgId"));
  }
  if (d.OrderId() != 0 && !OrderExists(session, d.OrderId())) {
    throw Failure(Say(_("no order with id {1}"), d.OrderId()));
  }
  if (d.MsgId() != 0 && !ReportExists(session, d.MsgId())) {
    throw Failure(Say(_("no report with id {1}"), d.MsgId()));
  }
}

std::vector<std::string> Dependents(Session& session, const CAuftrag& order, bool cascade) {
  std::vector<std::string> found;
  const std::string& client = session.Client();
  ZTkDb::CLeistungListe labour;
  labour.ConnectStorage(client);
  labour.ReadByOrderId(order.Id());
  for (auto b = labour.MoveFirst(); b; b = labour.MoveNext()) {
    found.push_back(Say(_("labour booking {1}"), b->Id()));
    if (cascade) b->Delete();
  }
  ZTkDb::CMaterialListe material;
  material.ConnectStorage(client);
  material.ReadByOrderId(order.Id());
  for (auto m = material.MoveFirst(); m; m = material.MoveNext()) {
    found.push_back(Say(_("material booking {1}"), m->Id()));
    if (cascade) m->Delete();
  }
  ZTkDb::CMsgOrderDokumentListe documents;
  documents.ConnectStorage(client);
  documents.ReadByOrderId(order.Id());
  for (auto d = documents.MoveFirst(); d; d = documents.MoveNext()) {
    found.push_back(Say(_("document link {1}"), d->Id()));
    if (cascade) d->Delete();
  }
  if (order.MeldungId() != 0) {
    CMeldung report;
    report.ConnectStorage(client);
    report.ReadById(order.MeldungId());
    // TRANSLATORS: {1} the report's number (M7), {2} its id.
    found.push_back(Say(_("the link to report {1} (id {2})"),
                        report.NrVorsatz() + std::to_string(report.Nr()), order.MeldungId()));
    if (cascade) {
      CAuftrag copy;
      copy.ConnectStorage(client);
      copy.ReadById(order.Id());
      copy.DisConnectFromMsg();
    }
  }
  return found;
}

std::vector<std::string> Dependents(Session& session, const CMeldung& report, bool cascade) {
  std::vector<std::string> found;
  const std::string& client = session.Client();
  ZTkDb::CAuftragListe orders;
  orders.ConnectStorage(client);
  orders.ReadByMsgId(report.Id());
  for (auto o = orders.MoveFirst(); o; o = orders.MoveNext()) {
    // TRANSLATORS: {1} the order's number (A12), {2} its id.
    found.push_back(Say(_("the link from order {1} (id {2})"),
                        o->NrVorsatz() + std::to_string(o->Nr()), o->Id()));
    if (cascade) o->DisConnectFromMsg();
  }
  ZTkDb::CMsgOrderDokumentListe documents;
  documents.ConnectStorage(client);
  documents.ReadByMsgId(report.Id());
  for (auto d = documents.MoveFirst(); d; d = documents.MoveNext()) {
    found.push_back(Say(_("document link {1}"), d->Id()));
    if (cascade) d->Delete();
  }
  return found;
}

}  // namespace ztk
