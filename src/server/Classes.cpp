#include "server/Classes.h"

#include "records/RecordColumns.h"
#include "ztkdb/ITestFixture.h"
#include "ztkdb/ZTkDb.h"

// The dispatch tables of the public classes: a record class's properties
// from its column table, then its methods in the order of its interfaces.
// Each entry names a C++ member by pointer, so the tables cannot name what
// the classes do not have; a test compares them with the public headers the
// other way round.
namespace ZTkDb::server {
namespace {

// Creatable classes are made through the class factory.
template <typename T>
std::function<std::unique_ptr<Object>()> Factory() {
  return [] { return Box(std::make_unique<T>()); };
}

// The cursor members every list shares.
template <typename O>
std::vector<Member> CursorMembers() {
  return {Get<O>("AbsolutePosition", &O::AbsolutePosition),
          Put<O>("AbsolutePosition", &O::AbsolutePosition),
          Get<O>("Count", &O::Count),
          Method<O>("ItemByRsPos", &O::ItemByRsPos, {Variant()}, Kind::kGet),
          Method<O>("ItemByRecId", &O::ItemByRecId, {}, Kind::kGet),
          Get<O>("BOF", &O::Bof),
          Get<O>("EOF", &O::Eof),
          Get<O>("RsClone", &O::RsClone),
          Method<O>("ConnectStorage", &O::ConnectStorage),
          Method<O>("Requery", &O::Requery),
          Method<O>("MoveFirst", &O::MoveFirst),
          Method<O>("MoveLast", &O::MoveLast),
          Method<O>("MoveNext", &O::MoveNext),
          Method<O>("MovePrevious", &O::MovePrevious)};
}

// Get, and Put where the property has a setter, of each property in a record
// class's column table.
#define ZTKDB_DISPATCH(Property, Type, column, placeholder, load, insert, update, access) \
  ZTKDB_DISPATCH_##access(Property)
#define ZTKDB_DISPATCH_ro(Property) Get<R>(#Property, &R::Property),
#define ZTKDB_DISPATCH_rw(Property) ZTKDB_DISPATCH_ro(Property) Put<R>(#Property, &R::Property),
#define ZTKDB_DISPATCH_kept(Property) ZTKDB_DISPATCH_rw(Property)

// Members of a list: the cursor members, then its own.
std::vector<Member> Join(std::vector<Member> a, std::vector<Member> b) {
  a.insert(a.end(), std::make_move_iterator(b.begin()), std::make_move_iterator(b.end()));
  return a;
}

}  // namespace

template <>
const ClassInfo& ClassOf<CTkDb>() {
  static const ClassInfo info{
      "CTkDb",
      true,
      Factory<CTkDb>(),
      {Get<CTkDb>("Ws", &CTkDb::Ws), Get<CTkDb>("DbPath", &CTkDb::DbPath),
       Method<CTkDb>("OpenOdbcDb", &CTkDb::OpenOdbcDb),
       Method<CTkDb>("OpenJetDb", &CTkDb::OpenJetDb), Method<CTkDb>("CloseDb", &CTkDb::CloseDb)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMsgOrderDokument>() {
  using R = CMsgOrderDokument;
  static const ClassInfo info{
      "CMsgOrderDokument",
      true,
      Factory<R>(),
      {ZTKDB_DOKUMENT_COLUMNS(ZTKDB_DISPATCH) Method<R>("ConnectStorage", &R::ConnectStorage),
       Method<R>("CreateNew", &R::CreateNew), Method<R>("ReadById", &R::ReadById),
       Method<R>("Update", &R::Update), Method<R>("Delete", &R::Delete)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CAuftrag>() {
  using R = CAuftrag;
  static const ClassInfo info{
      "CAuftrag",
      true,
      Factory<R>(),
      {ZTKDB_AUFTRAG_COLUMNS(ZTKDB_DISPATCH) Method<R>("ConnectStorage", &R::ConnectStorage),
       Method<R>("CreateNew", &R::CreateNew), Method<R>("CreateNew1", &R::CreateNew1),
       Method<R>("CreateNew2", &R::CreateNew2), Method<R>("Connect2Msg", &R::Connect2Msg),
       Method<R>("DisConnectFromMsg", &R::DisConnectFromMsg), Method<R>("ReadById", &R::ReadById),
       Method<R>("ReadByObjHist", &R::ReadByObjHist), Method<R>("ReadByNr", &R::ReadByNr),
       Method<R>("ReadByNrOhneVorsatz", &R::ReadByNrOhneVorsatz), Method<R>("Update", &R::Update),
       Method<R>("Delete", &R::Delete), Method<R>("GetLastNr", &R::GetLastNr),
       Method<R>("CreateNew3", &R::CreateNew3), Method<R>("CreateNew4", &R::CreateNew4),
       Method<R>("CreateNew5", &R::CreateNew5), Method<R>("CreateNew6", &R::CreateNew6),
       Method<R>("CreateNew7", &R::CreateNew7)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMeldung>() {
  using R = CMeldung;
  static const ClassInfo info{
      "CMeldung",
      true,
      Factory<R>(),
      {ZTKDB_MELDUNG_COLUMNS(ZTKDB_DISPATCH) Method<R>("ConnectStorage", &R::ConnectStorage),
       Method<R>("CreateNew", &R::CreateNew), Method<R>("ReadById", &R::ReadById),
       Method<R>("ReadByNr", &R::ReadByNr), Method<R>("Update", &R::Update),
       Method<R>("Delete", &R::Delete), Method<R>("GetLastNr", &R::GetLastNr),
       Method<R>("CreateNew1", &R::CreateNew1), Method<R>("CreateNew2", &R::CreateNew2),
       Method<R>("GetLastNrVorsatz", &R::GetLastNrVorsatz), Method<R>("CreateNew3", &R::CreateNew3),
       Method<R>("CreateNew4", &R::CreateNew4)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CLeistung>() {
  using R = CLeistung;
  static const ClassInfo info{
      "CLeistung",
      true,
      Factory<R>(),
      {ZTKDB_LEISTUNG_COLUMNS(ZTKDB_DISPATCH) Method<R>("ConnectStorage", &R::ConnectStorage),
       Method<R>("CreateNew", &R::CreateNew), Method<R>("CreateNew1", &R::CreateNew1),
       Method<R>("ReadById", &R::ReadById), Method<R>("Update", &R::Update),
       Method<R>("Delete", &R::Delete)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CMaterial>() {
  using R = CMaterial;
  static const ClassInfo info{
      "CMaterial",
      true,
      Factory<R>(),
      {ZTKDB_MATERIAL_COLUMNS(ZTKDB_DISPATCH) Method<R>("ConnectStorage", &R::ConnectStorage),
       Method<R>("CreateNew", &R::CreateNew), Method<R>("CreateNew1", &R::CreateNew1),
       Method<R>("CreateNew2", &R::CreateNew2), Method<R>("ReadById", &R::ReadById),
       Method<R>("Update", &R::Update), Method<R>("Delete", &R::Delete),
       Method<R>("CreateNew3", &R::CreateNew3)}};
  return info;
}

template <>
const ClassInfo& ClassOf<CAuftragListe>() {
  static const ClassInfo info{
      "CAuftragListe", true, Factory<CAuftragListe>(),
      Join(
          CursorMembers<CAuftragListe>(),
          {Get<CAuftragListe>("SortOrder", &CAuftragListe::SortOrder),
           Method<CAuftragListe>("ReadAll", &CAuftragListe::ReadAll, {Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadAllWithAuftragstyp", &CAuftragListe::ReadAllWithAuftragstyp),
           Method<CAuftragListe>("ReadAllInZeitraum", &CAuftragListe::ReadAllInZeitraum),
           Method<CAuftragListe>("ReadAllInZeitNoMsg", &CAuftragListe::ReadAllInZeitNoMsg),
           Method<CAuftragListe>("ReadByMsgId", &CAuftragListe::ReadByMsgId, {Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadByMsgIdStatus", &CAuftragListe::ReadByMsgIdStatus),
           Method<CAuftragListe>("ReadByDone", &CAuftragListe::ReadByDone,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadWithMsgConn", &CAuftragListe::ReadWithMsgConn,
                                 {Variant(true), Variant(int32_t(0))}),
           Method<CAuftragListe>("ReadByObj", &CAuftragListe::ReadByObj),
           Method<CAuftragListe>("ReadByNr", &CAuftragListe::ReadByNr),
           Method<CAuftragListe>("ReadByDoneAndSo", &CAuftragListe::ReadByDoneAndSo,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadAllBySo", &CAuftragListe::ReadAllBySo),
           Method<CAuftragListe>("ReadByDoneAndSoListe", &CAuftragListe::ReadByDoneAndSoListe,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByObjAndAufg", &CAuftragListe::ReadByObjAndAufg),
           Method<CAuftragListe>("ReadByDoneAndVorsatz", &CAuftragListe::ReadByDoneAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByDoneAndSoAndVorsatz",
                                 &CAuftragListe::ReadByDoneAndSoAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))}),
           Method<CAuftragListe>("ReadByDoneAndSoListeAndVorsatz",
                                 &CAuftragListe::ReadByDoneAndSoListeAndVorsatz,
                                 {Variant(int32_t(0)), Variant(int16_t(30))})})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMeldungListe>() {
  static const ClassInfo info{
      "CMeldungListe", true, Factory<CMeldungListe>(),
      Join(CursorMembers<CMeldungListe>(),
           {Get<CMeldungListe>("SortOrder", &CMeldungListe::SortOrder),
            Method<CMeldungListe>("ReadAll", &CMeldungListe::ReadAll, {Variant(int32_t(0))}),
            Method<CMeldungListe>("ReadAllInZeitraum", &CMeldungListe::ReadAllInZeitraum),
            Method<CMeldungListe>("ReadAllInZeitAndOpen", &CMeldungListe::ReadAllInZeitAndOpen),
            Method<CMeldungListe>("ReadByDone", &CMeldungListe::ReadByDone,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByObj", &CMeldungListe::ReadByObj),
            Method<CMeldungListe>("ReadByDoneAndSo", &CMeldungListe::ReadByDoneAndSo,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadAllBySo", &CMeldungListe::ReadAllBySo),
            Method<CMeldungListe>("ReadByDoneAndSoListe", &CMeldungListe::ReadByDoneAndSoListe,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndVorsatz", &CMeldungListe::ReadByDoneAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndSoAndVorsatz",
                                  &CMeldungListe::ReadByDoneAndSoAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadByDoneAndSoListeAndVorsatz",
                                  &CMeldungListe::ReadByDoneAndSoListeAndVorsatz,
                                  {Variant(int32_t(0)), Variant(int16_t(30))}),
            Method<CMeldungListe>("ReadAllInZeitraumDatumZeit",
                                  &CMeldungListe::ReadAllInZeitraumDatumZeit)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CLeistungListe>() {
  static const ClassInfo info{
      "CLeistungListe", true, Factory<CLeistungListe>(),
      Join(CursorMembers<CLeistungListe>(),
           {Method<CLeistungListe>("ReadAll", &CLeistungListe::ReadAll),
            Method<CLeistungListe>("ReadByOrderId", &CLeistungListe::ReadByOrderId),
            Method<CLeistungListe>("ReadAllRechEmpfNotEmpty",
                                   &CLeistungListe::ReadAllRechEmpfNotEmpty)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMaterialListe>() {
  static const ClassInfo info{
      "CMaterialListe", true, Factory<CMaterialListe>(),
      Join(CursorMembers<CMaterialListe>(),
           {Method<CMaterialListe>("ReadAll", &CMaterialListe::ReadAll),
            Method<CMaterialListe>("ReadByOrderId", &CMaterialListe::ReadByOrderId),
            Method<CMaterialListe>("ReadMaterialByOrderId", &CMaterialListe::ReadMaterialByOrderId),
            Method<CMaterialListe>("ReadFremdByOrderId", &CMaterialListe::ReadFremdByOrderId)})};
  return info;
}

template <>
const ClassInfo& ClassOf<CMsgOrderDokumentListe>() {
  static const ClassInfo info{
      "CMsgOrderDokumentListe", true, Factory<CMsgOrderDokumentListe>(),
      Join(CursorMembers<CMsgOrderDokumentListe>(),
           {Method<CMsgOrderDokumentListe>("ReadAll", &CMsgOrderDokumentListe::ReadAll),
            Method<CMsgOrderDokumentListe>("ReadByOrderId", &CMsgOrderDokumentListe::ReadByOrderId),
            Method<CMsgOrderDokumentListe>("ReadByMsgId", &CMsgOrderDokumentListe::ReadByMsgId)})};
  return info;
}

template <>
const ClassInfo& ClassOf<ITestFixture>() {
  static const ClassInfo info{"ITestFixture", true, Factory<ITestFixture>(), {}};
  return info;
}

// Handed out, never created by name.
template <>
const ClassInfo& ClassOf<Workspace>() {
  static const ClassInfo info{"Workspace",
                              false,
                              nullptr,
                              {Get<Workspace>("Name", &Workspace::Name),
                               Method<Workspace>("BeginTrans", &Workspace::BeginTrans),
                               Method<Workspace>("CommitTrans", &Workspace::CommitTrans),
                               Method<Workspace>("Rollback", &Workspace::Rollback)}};
  return info;
}

template <>
const ClassInfo& ClassOf<Recordset>() {
  using O = Recordset;
  static const ClassInfo info{
      "Recordset",
      false,
      nullptr,
      {Get<O>("RecordCount", &O::RecordCount), Get<O>("AbsolutePosition", &O::AbsolutePosition),
       Put<O>("AbsolutePosition", &O::AbsolutePosition), Get<O>("BOF", &O::Bof),
       Get<O>("EOF", &O::Eof), Method<O>("MoveFirst", &O::MoveFirst),
       Method<O>("MoveLast", &O::MoveLast), Method<O>("MoveNext", &O::MoveNext),
       Method<O>("MovePrevious", &O::MovePrevious), Method<O>("Move", &O::Move),
       Get<O>("Clone", &O::Clone), Get<O>("Restartable", &O::Restartable),
       Method<O>("Requery", &O::Requery),
       // Fields(index) or Fields("name"): the argument's type decides.
       Member{"Fields", Kind::kGet, 1, 1,
              [](void* self, const Args& args) {
                const O& rs = *static_cast<O*>(self);
                const Variant& key = args.at(0);
                Out out;
                out.value =
                    key.Type() == vtString ? rs.Fields(key.ToString()) : rs.Fields(key.ToLong());
                return out;
              }},
       Get<O>("FieldCount", &O::FieldCount),
       Method<O>("FieldName", &O::FieldName, {}, Kind::kGet)}};
  return info;
}

const std::vector<const ClassInfo*>& CreatableClasses() {
  static const std::vector<const ClassInfo*> classes = {&ClassOf<CTkDb>(),
                                                        &ClassOf<CMsgOrderDokument>(),
                                                        &ClassOf<CAuftrag>(),
                                                        &ClassOf<CMeldung>(),
                                                        &ClassOf<CLeistung>(),
                                                        &ClassOf<CMaterial>(),
                                                        &ClassOf<CAuftragListe>(),
                                                        &ClassOf<CMeldungListe>(),
                                                        &ClassOf<CLeistungListe>(),
                                                        &ClassOf<CMaterialListe>(),
                                                        &ClassOf<CMsgOrderDokumentListe>(),
                                                        &ClassOf<ITestFixture>()};
  return classes;
}

const ClassInfo* FindClass(const std::string& name) {
  for (const ClassInfo* c : CreatableClasses()) {
    if (strcasecmp(c->name.c_str(), name.c_str()) == 0) return c;
  }
  for (const ClassInfo* c : {&ClassOf<Recordset>(), &ClassOf<Workspace>()}) {
    if (strcasecmp(c->name.c_str(), name.c_str()) == 0) return c;
  }
  return nullptr;
}

}  // namespace ZTkDb::server
