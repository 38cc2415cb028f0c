#include "ztkdb/CMsgOrderDokument.h"

#include "connection/UIdGenerator.h"
#include "records/RecordCore.h"
#include "runtime/Guard.h"
#include "sql/Literals.h"
#include "sql/SqlTemplate.h"

namespace ZTkDb {
namespace {

using detail::ColumnBinding;
using detail::NullRule;
using detail::SqlTemplate;

struct DokumentFields {
  int32_t id = 0;
  std::string uid;
  int32_t msg_id = 0;
  int32_t order_id = 0;
  std::string pfad;
  std::string datei;
};

const std::vector<ColumnBinding<DokumentFields>>& LoadOrder() {
  static const std::vector<ColumnBinding<DokumentFields>> columns = {
      {"lId", &DokumentFields::id, NullRule::kError},
      {"stUId", &DokumentFields::uid, NullRule::kDefault},
      {"lMsgId", &DokumentFields::msg_id, NullRule::kError},
      {"lOrderId", &DokumentFields::order_id, NullRule::kError},
      {"stPfad", &DokumentFields::pfad, NullRule::kDefault},
      {"stDatei", &DokumentFields::datei, NullRule::kDefault},
  };
  return columns;
}

constexpr const char* kTable = "T_MsgOrderDokument";

constexpr const char* kInsert =
    "INSERT INTO #Tabelle# (stUId, lMsgId, lOrderId, stPfad, stDatei) VALUES ('#stUId#', "
    "#lMsgId#, #lOrderId#, '#stPfad#', '#stDatei#');";
constexpr const char* kSelectById = "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#;";
constexpr const char* kSelectByUId =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.stUId = '#stUId#';";
constexpr const char* kUpdate =
    "UPDATE #Tabelle# SET #Tabelle#.stUId = '#stNewUId#', #Tabelle#.lMsgId = #lMsgId#, "
    "#Tabelle#.lOrderId = #lOrderId#, #Tabelle#.stPfad = '#stPfad#', #Tabelle#.stDatei = "
    "'#stDatei#' WHERE ((#Tabelle#.lId=#lId#) AND (#Tabelle#.stUId='#stUId#'));";
constexpr const char* kDeleteJet = "DELETE #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.lId = #lId#;";
constexpr const char* kDeleteOdbc = "DELETE #Tabelle# WHERE #Tabelle#.lId = #lId#;";

}  // namespace

struct CMsgOrderDokument::Impl {
  detail::RecordCore<DokumentFields> core{"CMsgOrderDokument", LoadOrder()};

  void ReadByUId(const std::string& uid) {
    core.ReadBy("CMsgOrderDokument.ReadByUId",
                SqlTemplate(kSelectByUId).Replace("#Tabelle#", kTable).Replace("#stUId#", uid).Text());
  }
};

CMsgOrderDokument::CMsgOrderDokument() : impl_(std::make_unique<Impl>()) {}
CMsgOrderDokument::~CMsgOrderDokument() = default;

int32_t CMsgOrderDokument::Id() const { return impl_->core.F().id; }
const std::string& CMsgOrderDokument::UId() const { return impl_->core.F().uid; }
int32_t CMsgOrderDokument::MsgId() const { return impl_->core.F().msg_id; }
void CMsgOrderDokument::MsgId(int32_t value) { impl_->core.F().msg_id = value; }
int32_t CMsgOrderDokument::OrderId() const { return impl_->core.F().order_id; }
void CMsgOrderDokument::OrderId(int32_t value) { impl_->core.F().order_id = value; }
const std::string& CMsgOrderDokument::Pfad() const { return impl_->core.F().pfad; }
void CMsgOrderDokument::Pfad(const std::string& value) { impl_->core.F().pfad = value; }
const std::string& CMsgOrderDokument::Datei() const { return impl_->core.F().datei; }
void CMsgOrderDokument::Datei(const std::string& value) { impl_->core.F().datei = value; }

void CMsgOrderDokument::ConnectStorage(const std::string& stClientName) {
  detail::Guard("CMsgOrderDokument.ConnectStorage", [&] { impl_->core.ConnectStorage(stClientName); });
}

void CMsgOrderDokument::CreateNew(int32_t lMsgId, int32_t lOrderId, const std::string& stPfad,
                                  const std::string& stDatei) {
  constexpr const char* kMember = "CMsgOrderDokument.CreateNew";
  detail::Guard(kMember, [&] {
    auto& core = impl_->core;
    core.Storage(kMember);
    core.ClearFields();
    const std::string uid = detail::UIdGenerator::Instance().NewUId();
    SqlTemplate sql(kInsert);
    sql.Replace("#Tabelle#", kTable)
        .Replace("#stUId#", detail::TextValue(uid))
        .Replace("#lMsgId#", detail::LongLiteral(lMsgId))
        .Replace("#lOrderId#", detail::LongLiteral(lOrderId))
        .Replace("#stPfad#", detail::TextValue(stPfad))
        .Replace("#stDatei#", detail::TextValue(stDatei));
    core.ExecuteChecked(kMember, sql.Text(), "Create");
    core.Storage(kMember).CloseRecordset();
    impl_->ReadByUId(uid);
  });
}

void CMsgOrderDokument::ReadById(int32_t lId) {
  constexpr const char* kMember = "CMsgOrderDokument.ReadById";
  detail::Guard(kMember, [&] {
    impl_->core.ReadBy(kMember, SqlTemplate(kSelectById)
                                    .Replace("#Tabelle#", kTable)
                                    .Replace("#lId#", detail::LongLiteral(lId))
                                    .Text());
  });
}

void CMsgOrderDokument::Update() {
  constexpr const char* kMember = "CMsgOrderDokument.Update";
  detail::Guard(kMember, [&] {
    auto& core = impl_->core;
    auto& f = core.F();
    core.Storage(kMember);
    const std::string newUid = detail::UIdGenerator::Instance().NewUId();
    SqlTemplate sql(kUpdate);
    sql.Replace("#Tabelle#", kTable)
        .Replace("#stNewUId#", newUid)
        .Replace("#lMsgId#", detail::LongLiteral(f.msg_id))
        .Replace("#lOrderId#", detail::LongLiteral(f.order_id))
        .Replace("#stPfad#", detail::TextValue(f.pfad))
        .Replace("#stDatei#", detail::TextValue(f.datei))
        .Replace("#lId#", detail::LongLiteral(f.id))
        .Replace("#stUId#", f.uid);
    core.ExecuteChecked(kMember, sql.Text(), "Update");
    // Unconditional: after a failed update no row has this UId, so every
    // further Update fails too until the record is read again.
    f.uid = newUid;
    core.Storage(kMember).CloseRecordset();
  });
}

void CMsgOrderDokument::Delete() {
  constexpr const char* kMember = "CMsgOrderDokument.Delete";
  detail::Guard(kMember, [&] {
    auto& core = impl_->core;
    const int16_t kind = core.DbKind(kMember);
    std::string sql;
    if (kind == 1) sql = kDeleteJet;
    else if (kind == 2) sql = kDeleteOdbc;
    SqlTemplate filled(sql);
    filled.Replace("#Tabelle#", kTable).Replace("#lId#", detail::LongLiteral(core.F().id));
    core.ExecutePlain(kMember, filled.Text());
    core.ClearFields();
  });
}

void CMsgOrderDokument::LoadFromRecordset(Recordset& rs) { impl_->core.LoadFromRecordset(rs); }

}  // namespace ZTkDb
