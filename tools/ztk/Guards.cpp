// The tool's own checks: what a help-desk engineer must not do by a slip of
// the keyboard, although the library (as it always did) would let a host.
#include "Guards.h"

#include <cstring>
#include <initializer_list>

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
      throw UsageError(std::string(f.name) + ": a time is HH:MM (00:00 to 23:59) or empty, got '" +
                       std::get<std::string>(v) + "'");
    }
    if (std::strcmp(f.name, "ObjTyp") == 0 || std::strcmp(f.name, "Herkunft") == 0) {
      const int32_t n =
          std::holds_alternative<int32_t>(v) ? std::get<int32_t>(v) : std::get<uint8_t>(v);
      const int32_t last =
          f.name[0] == 'O' ? int32_t{ZTkDb::sotObjekt} : int32_t{ZTkDb::hetImportGlt};
      if (n < 0 || n > last) {
        throw UsageError(std::string(f.name) + " must lie in 0.." + std::to_string(last) +
                         ", got " + std::to_string(n));
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
    const char* unit = "";
    if (const auto* c = std::get_if<ZTkDb::Currency>(&value)) {
      number = static_cast<double>(c->Scaled()) / 10000.0;
      bound = 1000000.0;
      unit = "1.000.000,00";
    } else if (const auto* d = std::get_if<double>(&value)) {
      number = *d;
      if (name == "Stunden") {
        bound = 24.0;
        unit = "24 hours";
      } else if (name == "Menge") {
        bound = 100000.0;
        unit = "100.000";
      }
    } else if (const auto* date = std::get_if<ZTkDb::Date>(&value)) {
      if (name == "ErledigtDatum" && *date != ZTkDb::NoDate &&
          date->DatePart() > ZTkDb::Date::Today()) {
        throw UsageError(name + ": a done date cannot lie in the future, got " +
                         date->ShortText().substr(0, 10));
      }
      continue;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
      if (Named(field->name, {"Auftrag", "Meldung", "Bezeichnung", "Datei"}) && Blank(*text)) {
        throw UsageError(name + " must not be blank");
      }
      continue;
    } else {
      continue;
    }
    if (number < 0) throw UsageError(name + " cannot be negative, got " + DisplayText(value));
    if (bound > 0 && number > bound && !force) {
      throw UsageError(name + " " + DisplayText(value) + " is more than " + unit +
                       ", which is most likely a slip; --force takes it");
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

template <typename R>
void CheckNumberFree(Session& session, const R& record, const char* word, bool force) {
  if (force) return;
  R probe;
  probe.ConnectStorage(session.Client());
  probe.ReadByNr(record.Nr(), record.NrVorsatz());
  if (probe.Id() != 0 && probe.Id() != record.Id()) {
    throw Failure(std::string(word) + " " + record.NrVorsatz() + std::to_string(record.Nr()) +
                  " exists already (id " + std::to_string(probe.Id()) +
                  "); --force gives this one the same number");
  }
}

}  // namespace

void CheckRenumbered(Session& session, const CAuftrag& record, bool force) {
  CheckNumberFree(session, record, "auftrag", force);
}

void CheckRenumbered(Session& session, const CMeldung& record, bool force) {
  CheckNumberFree(session, record, "meldung", force);
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
// request that cannot be carried out (1).
void RequireOrder(Session& session, int32_t id, const char* what) {
  if (id == 0) throw UsageError(std::string(what) + " needs AuftragId=ID");
  if (!OrderExists(session, id)) throw Failure("no auftrag with id " + std::to_string(id));
}

void RequireText(const std::string& value, const char* field, const char* what) {
  if (Blank(value)) throw UsageError(std::string(what) + " needs " + field + "=TEXT");
}

}  // namespace

void CheckNew(Session& session, const CAuftrag& d, bool numbered, bool force) {
  RequireText(d.Auftrag(), "Auftrag", "an order");
  if (d.MeldungId() != 0 && !ReportExists(session, d.MeldungId())) {
    throw Failure("no meldung with id " + std::to_string(d.MeldungId()));
  }
  if (numbered && !force) {
    CAuftrag probe;
    probe.ConnectStorage(session.Client());
    probe.ReadByNr(d.Nr(), d.NrVorsatz());
    if (probe.Id() != 0) {
      throw Failure("auftrag " + d.NrVorsatz() + std::to_string(d.Nr()) + " exists already (id " +
                    std::to_string(probe.Id()) + "); --force adds a second one");
    }
  }
}

void CheckNew(Session& session, const CMeldung& d, bool numbered, bool force) {
  RequireText(d.Meldung(), "Meldung", "a report");
  if (numbered && !force) {
    CMeldung probe;
    probe.ConnectStorage(session.Client());
    probe.ReadByNr(d.Nr(), d.NrVorsatz());
    if (probe.Id() != 0) {
      throw Failure("meldung " + d.NrVorsatz() + std::to_string(d.Nr()) + " exists already (id " +
                    std::to_string(probe.Id()) + "); --force adds a second one");
    }
  }
}

void CheckNew(Session& session, const CLeistung& d, bool, bool) {
  RequireOrder(session, d.AuftragId(), "a labour booking");
}

void CheckNew(Session& session, const CMaterial& d, bool, bool) {
  RequireOrder(session, d.AuftragId(), "a material booking");
  RequireText(d.Bezeichnung(), "Bezeichnung", "a material booking");
}

void CheckNew(Session& session, const CMsgOrderDokument& d, bool, bool) {
  RequireText(d.Datei(), "Datei", "a document link");
  if (d.OrderId() == 0 && d.MsgId() == 0) {
    throw UsageError("a document link needs OrderId=ID or MsgId=ID");
  }
  if (d.OrderId() != 0 && !OrderExists(session, d.OrderId())) {
    throw Failure("no auftrag with id " + std::to_string(d.OrderId()));
  }
  if (d.MsgId() != 0 && !ReportExists(session, d.MsgId())) {
    throw Failure("no meldung with id " + std::to_string(d.MsgId()));
  }
}

std::vector<std::string> Dependents(Session& session, const CAuftrag& order, bool cascade) {
  std::vector<std::string> found;
  const std::string& client = session.Client();
  ZTkDb::CLeistungListe labour;
  labour.ConnectStorage(client);
  labour.ReadByOrderId(order.Id());
  for (auto b = labour.MoveFirst(); b; b = labour.MoveNext()) {
    found.push_back("leistung " + std::to_string(b->Id()));
    if (cascade) b->Delete();
  }
  ZTkDb::CMaterialListe material;
  material.ConnectStorage(client);
  material.ReadByOrderId(order.Id());
  for (auto m = material.MoveFirst(); m; m = material.MoveNext()) {
    found.push_back("material " + std::to_string(m->Id()));
    if (cascade) m->Delete();
  }
  ZTkDb::CMsgOrderDokumentListe documents;
  documents.ConnectStorage(client);
  documents.ReadByOrderId(order.Id());
  for (auto d = documents.MoveFirst(); d; d = documents.MoveNext()) {
    found.push_back("dokument " + std::to_string(d->Id()));
    if (cascade) d->Delete();
  }
  if (order.MeldungId() != 0) {
    found.push_back("meldung " + std::to_string(order.MeldungId()) + " (link)");
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
    found.push_back("auftrag " + std::to_string(o->Id()) + " (link)");
    if (cascade) o->DisConnectFromMsg();
  }
  ZTkDb::CMsgOrderDokumentListe documents;
  documents.ConnectStorage(client);
  documents.ReadByMsgId(report.Id());
  for (auto d = documents.MoveFirst(); d; d = documents.MoveNext()) {
    found.push_back("dokument " + std::to_string(d->Id()));
    if (cascade) d->Delete();
  }
  return found;
}

}  // namespace ztk
