#include "ztkdb/CAuftragListe.h"

#include <optional>

#include "lists/ListCursor.h"
#include "runtime/Guard.h"
#include "runtime/Raise.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

using detail::Statement;
using detail::StorageKind;

constexpr const char* kTable = "T_Auftrag";
constexpr const char* kLinkTable = "T_AuftragMeldung";

// Most reads start with this join, so every row carries its report id.
constexpr const char* kJoin =
    "SELECT #Tabelle#.*, #DetailTabelle#.lMeldungId FROM #Tabelle# LEFT JOIN #DetailTabelle# ON "
    "#Tabelle#.lId = #DetailTabelle#.lAuftragId";

struct SortColumn {
  const char* table;
  const char* field;
};

// The ORDER BY column of sort orders 1..6; nothing for 0 or out of range.
std::optional<SortColumn> SortColumnOf(int32_t sortOrder) {
  switch (sortOrder) {
    case osByOrderNumber: return SortColumn{"T_Auftrag", "lNr"};
    case osByOrderDate: return SortColumn{"T_Auftrag", "AuftragsDatum"};
    case osByOrderDoneTillDate: return SortColumn{"T_Auftrag", "ErledBisDatum"};
    case osByOrderDoneOnDate: return SortColumn{"T_Auftrag", "ErledigtDatum"};
    case osByOrderReturnOnDate: return SortColumn{"T_Auftrag", "WiederDatum"};
    case osByMsgId: return SortColumn{"T_AuftragMeldung", "lMeldungId"};
    default: return std::nullopt;
  }
}

bool IsSorted(int32_t sortOrder) { return sortOrder >= 1 && sortOrder <= 6; }

// The join + `tail` for sort 0, the join + `sortedTail` for 1..6, and an
// empty statement otherwise (the engine then refuses it).
std::string ByOrder(int32_t sortOrder, const char* tail, const char* sortedTail) {
  if (sortOrder == osUnsorted) return std::string(kJoin) + tail;
  if (IsSorted(sortOrder)) return std::string(kJoin) + sortedTail;
  return {};
}

// Fills the table, the caller's values (`values`), then the link table and
// the sort column, as every read but the done family does.
template <typename Values>
Statement Fill(std::string text, StorageKind kind, int32_t sortOrder, Values&& values) {
  Statement sql(std::move(text), kind);
  sql.Name("#Tabelle#", kTable);
  values(sql);
  sql.Name("#DetailTabelle#", kLinkTable);
  if (auto column = SortColumnOf(sortOrder)) {
    sql.Name("#SortTabelle#", column->table).Name("#SortField#", column->field);
  }
  return sql;
}
Statement Fill(std::string text, StorageKind kind, int32_t sortOrder = osUnsorted) {
  return Fill(std::move(text), kind, sortOrder, [](Statement&) {});
}

// The four texts of one done-family read, each following the join.
struct DoneTails {
  const char* jet_sorted;
  const char* other_sorted;
  const char* jet_unsorted;
  const char* other_unsorted;
};

// ReadByDone
const DoneTails kReadByDone{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.ErledigtDatum>=#datBack# ORDER "
    "BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER "
    "BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.ErledigtDatum>=#datBack# ORDER "
    "BY #DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER "
    "BY #DetailTabelle#.lMeldungId",
};
// ReadByDoneAndVorsatz
const DoneTails kReadByDoneAndVorsatz{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY #DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER BY #DetailTabelle#.lMeldungId",
};
// ReadByDoneAndSo
const DoneTails kReadByDoneAndSo{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY "
    "#SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER BY "
    "#SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY "
    "#DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>='#datBack#'",
};
// ReadByDoneAndSoAndVorsatz
const DoneTails kReadByDoneAndSoAndVorsatz{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>=#datBack# ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND  (#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>='#datBack#' ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND  (#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>=#datBack# ORDER BY #DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>='#datBack#'",
};
// ReadByDoneAndSoListe
const DoneTails kReadByDoneAndSoListe{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY "
    "#SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>='#datBack#' ORDER BY "
    "#SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>=#datBack# ORDER BY "
    "#DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum>='#datBack#'",
};
// ReadByDoneAndSoListeAndVorsatz
const DoneTails kReadByDoneAndSoListeAndVorsatz{
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>=#datBack# ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>='#datBack#' ORDER BY #SortTabelle#.#SortField#",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>=#datBack# ORDER BY #DetailTabelle#.lMeldungId",
    " WHERE #Tabelle#.bErledigt = #bErledigt# AND #Tabelle#.stNrVorsatz = '#stNrVorsatz#' "
    "AND (#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND "
    "#Tabelle#.ErledigtDatum>='#datBack#'",
};

// What a done-family read filters on besides the done state.
struct DoneFilter {
  const std::string* vorsatz = nullptr;
  std::optional<int32_t> so_id;
  const std::vector<std::string>* so_list = nullptr;
};

Statement DoneStatement(const DoneTails& tails, bool bDone, int32_t sortOrder, int32_t days,
                        StorageKind kind, const DoneFilter& filter) {
  // iShowingDays is a 16-bit parameter: a value it cannot hold is an
  // overflow at the call, never a wrapped number of days.
  if (days < INT16_MIN || days > INT16_MAX) detail::RaiseStandard(errOverflow, "ZTkDb.Integer");
  const char* tail = nullptr;
  if (sortOrder == osUnsorted)
    tail = kind == StorageKind::Jet ? tails.jet_unsorted : tails.other_unsorted;
  else if (IsSorted(sortOrder))
    tail = kind == StorageKind::Jet ? tails.jet_sorted : tails.other_sorted;
  else
    return Statement("", kind);
  Statement sql(std::string(kJoin) + tail, kind);
  sql.Name("#Tabelle#", kTable);
  if (auto column = SortColumnOf(sortOrder)) {
    sql.Name("#SortTabelle#", column->table).Name("#SortField#", column->field);
  }
  // Open orders carry NoDate as ErledigtDatum, so they always pass the cut.
  const Date back = Date::Today().AddDays(-days);
  sql.FilterDate("#datBack#", back).Name("#DetailTabelle#", kLinkTable).Flag("#bErledigt#", bDone);
  if (filter.vorsatz) sql.Text("#stNrVorsatz#", *filter.vorsatz);
  if (filter.so_id) sql.Long("#lSoId#", *filter.so_id);
  if (filter.so_list) sql.Raw("#lSoIdListe#", detail::IdListLiteral(*filter.so_list));
  return sql;
}

constexpr const char* kWithAuftragstyp =
    "SELECT T_Auftrag.* From T_Auftrag WHERE (((T_Auftrag.stAuftragstyp)='') AND "
    "((T_Auftrag.byHerkunft)=1 Or (T_Auftrag.byHerkunft)=2 Or (T_Auftrag.byHerkunft)=6 Or "
    "(T_Auftrag.byHerkunft)=7 Or (T_Auftrag.byHerkunft)=8))";
constexpr const char* kInZeitraumJet =
    " WHERE #Tabelle#.Auftragsdatum >= #datVon# AND #Tabelle#.Auftragsdatum <=#datBis# ORDER BY "
    "#Tabelle#.lNr";
constexpr const char* kInZeitraumOther =
    " WHERE #Tabelle#.Auftragsdatum >= '#datVon#' AND #Tabelle#.Auftragsdatum <='#datBis#' ORDER "
    "BY #Tabelle#.lNr";
// The two kinds keep different conditions; hosts rely on each as it is.
constexpr const char* kInZeitNoMsgJet =
    "SELECT T_Auftrag.* FROM T_Auftrag LEFT JOIN  T_AuftragMeldung ON T_Auftrag.lId = "
    "T_AuftragMeldung.lAuftragId  Where (((T_Auftrag.AuftragsDatum) <= #datBis#) And  "
    "((T_Auftrag.ErledigtDatum) >= #datVon#) And ((T_AuftragMeldung.lAuftragId) Is Null)) ORDER "
    "BY T_Auftrag.AuftragsDatum, T_Auftrag.lNr";
constexpr const char* kInZeitNoMsgOther =
    "SELECT #Tabelle#.* FROM #Tabelle# LEFT JOIN #DetailTabelle# ON #Tabelle#.lId = "
    "#DetailTabelle#.lAuftragId WHERE ((#DetailTabelle#.lAuftragId Is Null) AND "
    "(#Tabelle#.AuftragsDatum >= '#datVon#' And #Tabelle#.AuftragsDatum <= '#datBis#')) OR "
    "((#DetailTabelle#.lAuftragId Is Null) AND (#Tabelle#.bErledigt=0) AND "
    "(#Tabelle#.Auftragsdatum <'#datVon#')) ORDER BY "
    "#SortTabelle#.#SortField#,#SortTabelle#.#SortField2#";
constexpr const char* kByMsgId = " WHERE #DetailTabelle#.lMeldungId = #lMeldungId#";
constexpr const char* kByMsgIdSorted =
    " WHERE #DetailTabelle#.lMeldungId = #lMeldungId# ORDER BY #SortTabelle#.#SortField#";
constexpr const char* kByMsgIdStatus =
    " WHERE #DetailTabelle#.lMeldungId = #lMeldungId# and #Tabelle#.bErledigt=#bErledigt#";
constexpr const char* kWithMsgConn = " WHERE #DetailTabelle#.lMeldungId Is Null";
constexpr const char* kWithMsgConnSorted =
    " #WHERE# #DetailTabelle#.lMeldungId Is Null ORDER BY #SortTabelle#.#SortField#";
constexpr const char* kByObj =
    " WHERE (#Tabelle#.lObjId = #lObjId#) AND (#Tabelle#.byObjTyp = #byObjTyp#)";
constexpr const char* kByObjAndAufg =
    "SELECT #Tabelle#.* From #Tabelle# WHERE #Tabelle#.lObjId=#lObjektId#  AND "
    "#Tabelle#.byObjTyp=6 AND #Tabelle#.byHerkunft=3 AND #Tabelle#.lTechObjTerminId= "
    "#lTechObjTerminId#";
constexpr const char* kAllBySo =
    "SELECT #Tabelle#.* FROM #Tabelle#  WHERE (#Tabelle#.lSoId = #lSoId#)";
constexpr const char* kByNr = " WHERE (#Tabelle#.lNr = #lNr#)";

constexpr const char* kOrderBy = " ORDER BY #SortTabelle#.#SortField#";

// Every read: reset (SortOrder 0 included) before anything can fail, build
// the statement for the storage's kind, open it; reads with a sort order
// record it once the result is open.
template <typename Build>
void RunRead(detail::ListCursor<CAuftrag>& cursor, OrderSortOrderConstants& sortSlot,
             const char* member, OrderSortOrderConstants sortAfter, Build&& build) {
  detail::Guard(member, [&] {
    sortSlot = osUnsorted;
    cursor.Read(member, build, [&] { sortSlot = sortAfter; });
  });
}

}  // namespace

CAuftragListe::CAuftragListe() : RecordList("CAuftragListe") {}

OrderSortOrderConstants CAuftragListe::SortOrder() const { return sort_order_; }

void CAuftragListe::ReadAll(OrderSortOrderConstants eSortOrder) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadAll", eSortOrder, [&](StorageKind kind) {
    return Fill(ByOrder(eSortOrder, "", kOrderBy), kind, eSortOrder);
  });
}

void CAuftragListe::ReadAllWithAuftragstyp() {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadAllWithAuftragstyp", osUnsorted,
          [&](StorageKind kind) { return Statement(kWithAuftragstyp, kind); });
}

void CAuftragListe::ReadAllInZeitraum(Date datVon, Date datBis) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadAllInZeitraum", osUnsorted,
          [&](StorageKind kind) {
            return Fill(
                std::string(kJoin) + (kind == StorageKind::Jet ? kInZeitraumJet : kInZeitraumOther),
                kind, osUnsorted, [&](Statement& sql) {
                  sql.FilterDate("#datVon#", datVon).FilterDate("#datBis#", datBis);
                });
          });
}

void CAuftragListe::ReadAllInZeitNoMsg(Date datVon, Date datBis) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadAllInZeitNoMsg", osUnsorted,
          [&](StorageKind kind) {
            Statement sql(kind == StorageKind::Jet ? kInZeitNoMsgJet : kInZeitNoMsgOther, kind);
            sql.Name("#Tabelle#", kTable)
                .FilterDate("#datVon#", datVon)
                .FilterDate("#datBis#", datBis)
                .Name("#DetailTabelle#", kLinkTable)
                .Name("#SortTabelle#", kTable)
                .Name("#SortField#", "AuftragsDatum")
                .Name("#SortField2#", "lNr");
            return sql;
          });
}

void CAuftragListe::ReadByMsgId(int32_t lMsgId, OrderSortOrderConstants eSortOrder) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByMsgId", eSortOrder, [&](StorageKind kind) {
    return Fill(ByOrder(eSortOrder, kByMsgId, kByMsgIdSorted), kind, eSortOrder,
                [&](Statement& sql) { sql.Long("#lMeldungId#", lMsgId); });
  });
}

void CAuftragListe::ReadByMsgIdStatus(int32_t lMsgId, bool bErledigt) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByMsgIdStatus", osUnsorted,
          [&](StorageKind kind) {
            return Fill(std::string(kJoin) + kByMsgIdStatus, kind, osUnsorted, [&](Statement& sql) {
              sql.Long("#lMeldungId#", lMsgId).Flag("#bErledigt#", bErledigt);
            });
          });
}

void CAuftragListe::ReadByDone(bool bDone, OrderSortOrderConstants eSortOrder,
                               int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDone", eSortOrder, [&](StorageKind kind) {
    return DoneStatement(kReadByDone, bDone, eSortOrder, iShowingDays, kind, {});
  });
}

void CAuftragListe::ReadWithMsgConn(bool bWithMsgConn, OrderSortOrderConstants eSortOrder) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadWithMsgConn", eSortOrder,
          [&](StorageKind kind) {
            // With sort 0 the text has no #WHERE#: the flag then changes nothing.
            return Fill(
                ByOrder(eSortOrder, kWithMsgConn, kWithMsgConnSorted), kind, eSortOrder,
                [&](Statement& sql) { sql.Name("#WHERE#", bWithMsgConn ? "WHERE" : "WHERE Not"); });
          });
}

void CAuftragListe::ReadByObj(int32_t lObjId, TkObjTypes eTyp) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByObj", osUnsorted, [&](StorageKind kind) {
    return Fill(std::string(kJoin) + kByObj, kind, osUnsorted,
                [&](Statement& sql) { sql.Long("#lObjId#", lObjId).Long("#byObjTyp#", eTyp); });
  });
}

void CAuftragListe::ReadByNr(int32_t lNr) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByNr", osUnsorted, [&](StorageKind kind) {
    return Fill(std::string(kJoin) + kByNr, kind, osUnsorted,
                [&](Statement& sql) { sql.Long("#lNr#", lNr); });
  });
}

void CAuftragListe::ReadByDoneAndSo(int32_t lSoId, bool bDone, OrderSortOrderConstants eSortOrder,
                                    int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDoneAndSo", eSortOrder,
          [&](StorageKind kind) {
            return DoneStatement(kReadByDoneAndSo, bDone, eSortOrder, iShowingDays, kind,
                                 {.vorsatz = nullptr, .so_id = lSoId, .so_list = nullptr});
          });
}

void CAuftragListe::ReadAllBySo(int32_t lSoId) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadAllBySo", osUnsorted, [&](StorageKind kind) {
    return Fill(kAllBySo, kind, osUnsorted, [&](Statement& sql) { sql.Long("#lSoId#", lSoId); });
  });
}

void CAuftragListe::ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                                         OrderSortOrderConstants eSortOrder, int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDoneAndSoListe", eSortOrder,
          [&](StorageKind kind) {
            return DoneStatement(
                kReadByDoneAndSoListe, bDone, eSortOrder, iShowingDays, kind,
                {.vorsatz = nullptr, .so_id = std::nullopt, .so_list = &stSoIdListe});
          });
}

void CAuftragListe::ReadByObjAndAufg(int32_t lObjId, int32_t lAufgId) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByObjAndAufg", osUnsorted,
          [&](StorageKind kind) {
            return Fill(kByObjAndAufg, kind, osUnsorted, [&](Statement& sql) {
              sql.Long("#lObjektId#", lObjId).Long("#lTechObjTerminId#", lAufgId);
            });
          });
}

void CAuftragListe::ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                                         OrderSortOrderConstants eSortOrder, int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDoneAndVorsatz", eSortOrder,
          [&](StorageKind kind) {
            return DoneStatement(
                kReadByDoneAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                {.vorsatz = &stNrVorsatz, .so_id = std::nullopt, .so_list = nullptr});
          });
}

void CAuftragListe::ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone,
                                              const std::string& stNrVorsatz,
                                              OrderSortOrderConstants eSortOrder,
                                              int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDoneAndSoAndVorsatz", eSortOrder,
          [&](StorageKind kind) {
            return DoneStatement(kReadByDoneAndSoAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                                 {.vorsatz = &stNrVorsatz, .so_id = lSoId, .so_list = nullptr});
          });
}

void CAuftragListe::ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe,
                                                   bool bDone, const std::string& stNrVorsatz,
                                                   OrderSortOrderConstants eSortOrder,
                                                   int32_t iShowingDays) {
  RunRead(Cursor(), sort_order_, "CAuftragListe.ReadByDoneAndSoListeAndVorsatz", eSortOrder,
          [&](StorageKind kind) {
            return DoneStatement(
                kReadByDoneAndSoListeAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                {.vorsatz = &stNrVorsatz, .so_id = std::nullopt, .so_list = &stSoIdListe});
          });
}

}  // namespace ZTkDb
