#include "ztkdb/CMeldungListe.h"

#include "lists/ListCursor.h"
#include "runtime/Guard.h"
#include "runtime/Raise.h"
#include "sql/Literals.h"
#include "sql/Statement.h"

namespace ZTkDb {
namespace {

using detail::Statement;
using detail::StorageKind;

constexpr const char* kTable = "T_Meldung";

// The ORDER BY column of sort orders 1..5; nullptr otherwise.
const char* SortFieldOf(int32_t sortOrder) {
  switch (sortOrder) {
    case msByMsgNumber: return "lNr";
    case msbymsgdate: return "MeldeDatum";
    case msByMsgDoneTillDate: return "ErledBisDatum";
    case msByMsgDoneOnDate: return "ErledigtDatum";
    case msByMsgReturnOnDate: return "WiederDatum";
    default: return nullptr;
  }
}

// `unsorted` for 0, `sorted` for 1..5, nothing otherwise (the engine then
// refuses the empty statement).
const char* BySortOrder(int32_t sortOrder, const char* unsorted, const char* sorted) {
  if (sortOrder == msUnsorted) return unsorted;
  if (SortFieldOf(sortOrder)) return sorted;
  return "";
}

// Table first, then the caller's values, then the sort column.
template <typename Values>
Statement Fill(const char* text, StorageKind kind, int32_t sortOrder, Values&& values) {
  Statement sql(text, kind);
  sql.Name("#Tabelle#", kTable);
  values(sql);
  if (const char* field = SortFieldOf(sortOrder)) sql.Name("#SortField#", field);
  return sql;
}

// The four texts of one done-family read.
struct DoneTexts {
  const char* jet_unsorted;
  const char* other_unsorted;
  const char* jet_sorted;
  const char* other_sorted;
};

const DoneTexts kReadByDone{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.ErledigtDatum >= #datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.ErledigtDatum >= '#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.ErledigtDatum >= #datBack# ORDER BY #Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.ErledigtDatum >= '#datBack#' ORDER BY #Tabelle#.#SortField#",
};
const DoneTexts kReadByDoneAndVorsatz{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND #Tabelle#.ErledigtDatum >= #datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND #Tabelle#.ErledigtDatum >= '#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND  #Tabelle#.ErledigtDatum >= #datBack# ORDER "
    "BY #Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND #Tabelle#.ErledigtDatum >= '#datBack#' "
    "ORDER BY #Tabelle#.#SortField#",
};
const DoneTexts kReadByDoneAndSo{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "#datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "'#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId = 0) AND #Tabelle#.ErledigtDatum >= "
    "#datBack# ORDER BY #Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId = #lSoId# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "'#datBack#' ORDER BY #Tabelle#.#SortField#",
};
const DoneTexts kReadByDoneAndSoAndVorsatz{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= #datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= '#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId = 0) AND #Tabelle#.ErledigtDatum >= #datBack# ORDER BY "
    "#Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId = #lSoId# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= '#datBack#' ORDER BY "
    "#Tabelle#.#SortField#",
};
const DoneTexts kReadByDoneAndSoListe{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "#datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "'#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId = 0) AND #Tabelle#.ErledigtDatum >= "
    "#datBack# ORDER BY #Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "(#Tabelle#.lSoId #lSoIdListe# OR #Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= "
    "'#datBack#' ORDER BY #Tabelle#.#SortField#",
};
const DoneTexts kReadByDoneAndSoListeAndVorsatz{
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= #datBack#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= '#datBack#'",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId = 0) AND #Tabelle#.ErledigtDatum >= #datBack# ORDER BY "
    "#Tabelle#.#SortField#",
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.bErledigt = #bErledigt# AND "
    "#Tabelle#.stNrVorsatz = '#stNrVorsatz#' AND (#Tabelle#.lSoId #lSoIdListe# OR "
    "#Tabelle#.lSoId =0) AND #Tabelle#.ErledigtDatum >= '#datBack#' ORDER BY "
    "#Tabelle#.#SortField#",
};

struct DoneFilter {
  const std::string* vorsatz = nullptr;
  const int32_t* so_id = nullptr;
  const std::vector<std::string>* so_list = nullptr;
};

Statement DoneStatement(const DoneTexts& texts, bool bDone, int32_t sortOrder, int32_t days,
                        StorageKind kind, const DoneFilter& filter) {
  // iShowingDays is a 16-bit parameter: a value it cannot hold is an
  // overflow at the call, never a wrapped number of days.
  if (days < INT16_MIN || days > INT16_MAX) detail::RaiseStandard(errOverflow, "ZTkDb.Integer");
  const bool jet = kind == StorageKind::Jet;
  const char* text = BySortOrder(sortOrder, jet ? texts.jet_unsorted : texts.other_unsorted,
                                 jet ? texts.jet_sorted : texts.other_sorted);
  return Fill(text, kind, sortOrder, [&](Statement& sql) {
    // Open reports carry NoDate as ErledigtDatum, so they always pass the cut.
    sql.Flag("#bErledigt#", bDone).FilterDate("#datBack#", Date::Today().AddDays(-days));
    if (filter.vorsatz) sql.Text("#stNrVorsatz#", *filter.vorsatz);
    if (filter.so_id) sql.Long("#lSoId#", *filter.so_id);
    if (filter.so_list) sql.Raw("#lSoIdListe#", detail::IdListLiteral(*filter.so_list));
  });
}

constexpr const char* kAll = "SELECT #Tabelle#.* FROM #Tabelle#";
constexpr const char* kAllSorted =
    "SELECT #Tabelle#.* FROM #Tabelle# ORDER BY #Tabelle#.#SortField#";
constexpr const char* kInZeitraumJet =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.MeldeDatum >= #datVon# AND "
    "#Tabelle#.MeldeDatum <= #datBis# ORDER BY #Tabelle#.lNr";
constexpr const char* kInZeitraumOther =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.MeldeDatum >= '#datVon#' AND "
    "#Tabelle#.MeldeDatum <= '#datBis#' ORDER BY #Tabelle#.lNr";
// Kept as hosts have always sent it: "AND" runs into the table name and the
// times stand bare, so the embedded engine rejects it.
constexpr const char* kDatumZeitJet =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.MeldeDatum = #dat#   "
    "AND#Tabelle#.stMeldeZeit >= #timeVon# AND #Tabelle#.stMeldeZeit <= #timeBis# ORDER BY "
    "#Tabelle#.lNr";
constexpr const char* kDatumZeitOther =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE #Tabelle#.MeldeDatum = '#dat#'  AND "
    "#Tabelle#.stMeldeZeit >= '#timeVon#' AND #Tabelle#.stMeldeZeit <= '#timeBis#' ORDER BY "
    "#Tabelle#.lNr";
constexpr const char* kInZeitAndOpenJet =
    "SELECT T_Meldung.* From T_Meldung Where (((T_Meldung.MeldeDatum) <= #datBis#) And "
    "((T_Meldung.ErledigtDatum) >= #datVon#)) ORDER BY T_Meldung.MeldeDatum";
constexpr const char* kInZeitAndOpenOther =
    "SELECT T_Meldung.* From T_Meldung Where (((T_Meldung.MeldeDatum) <= '#datBis#') And "
    "((T_Meldung.ErledigtDatum) >= '#datVon#')) ORDER BY T_Meldung.MeldeDatum";
constexpr const char* kByObj =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE (#Tabelle#.lObjId = #lObjId#) AND "
    "(#Tabelle#.byObjTyp = #byObjTyp#)";
constexpr const char* kAllBySo =
    "SELECT #Tabelle#.* FROM #Tabelle# WHERE (#Tabelle#.lSoId = #lSoId#)";

void NoValues(Statement&) {}

}  // namespace

CMeldungListe::CMeldungListe() : RecordList("CMeldungListe") {}

MsgSortOrderConstants CMeldungListe::SortOrder() const { return sort_order_; }

void CMeldungListe::ReadAll(MsgSortOrderConstants eSortOrder) {
  constexpr const char* kMember = "CMeldungListe.ReadAll";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(BySortOrder(eSortOrder, kAll, kAllSorted), kind, eSortOrder, NoValues);
    });
  });
}

void CMeldungListe::ReadAllInZeitraum(Date datVon, Date datBis) {
  constexpr const char* kMember = "CMeldungListe.ReadAllInZeitraum";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(kind == StorageKind::Jet ? kInZeitraumJet : kInZeitraumOther, kind, msUnsorted,
                  [&](Statement& sql) {
                    sql.FilterDate("#datVon#", datVon).FilterDate("#datBis#", datBis);
                  });
    });
  });
}

void CMeldungListe::ReadAllInZeitAndOpen(Date datVon, Date datBis) {
  constexpr const char* kMember = "CMeldungListe.ReadAllInZeitAndOpen";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(kind == StorageKind::Jet ? kInZeitAndOpenJet : kInZeitAndOpenOther, kind,
                  msUnsorted, [&](Statement& sql) {
                    sql.FilterDate("#datBis#", datBis).FilterDate("#datVon#", datVon);
                  });
    });
  });
}

void CMeldungListe::ReadByDone(bool bDone, MsgSortOrderConstants eSortOrder, int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDone";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDone, bDone, eSortOrder, iShowingDays, kind, {});
    });
  });
}

void CMeldungListe::ReadByObj(int32_t lObjId, TkObjTypes eTyp) {
  constexpr const char* kMember = "CMeldungListe.ReadByObj";
  detail::Guard(kMember, [&] {
    sort_order_ = msUnsorted;
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(kByObj, kind, msUnsorted,
                  [&](Statement& sql) { sql.Long("#lObjId#", lObjId).Long("#byObjTyp#", eTyp); });
    });
  });
}

void CMeldungListe::ReadByDoneAndSo(int32_t lSoId, bool bDone, MsgSortOrderConstants eSortOrder,
                                    int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDoneAndSo";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDoneAndSo, bDone, eSortOrder, iShowingDays, kind,
                           {.vorsatz = nullptr, .so_id = &lSoId, .so_list = nullptr});
    });
  });
}

void CMeldungListe::ReadAllBySo(int32_t lSoId) {
  constexpr const char* kMember = "CMeldungListe.ReadAllBySo";
  detail::Guard(kMember, [&] {
    sort_order_ = msUnsorted;
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(kAllBySo, kind, msUnsorted, [&](Statement& sql) { sql.Long("#lSoId#", lSoId); });
    });
  });
}

void CMeldungListe::ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                                         MsgSortOrderConstants eSortOrder, int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDoneAndSoListe";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDoneAndSoListe, bDone, eSortOrder, iShowingDays, kind,
                           {.vorsatz = nullptr, .so_id = nullptr, .so_list = &stSoIdListe});
    });
  });
}

void CMeldungListe::ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                                         MsgSortOrderConstants eSortOrder, int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDoneAndVorsatz";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDoneAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                           {.vorsatz = &stNrVorsatz, .so_id = nullptr, .so_list = nullptr});
    });
  });
}

void CMeldungListe::ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone,
                                              const std::string& stNrVorsatz,
                                              MsgSortOrderConstants eSortOrder,
                                              int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDoneAndSoAndVorsatz";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDoneAndSoAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                           {.vorsatz = &stNrVorsatz, .so_id = &lSoId, .so_list = nullptr});
    });
  });
}

void CMeldungListe::ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe,
                                                   bool bDone, const std::string& stNrVorsatz,
                                                   MsgSortOrderConstants eSortOrder,
                                                   int32_t iShowingDays) {
  constexpr const char* kMember = "CMeldungListe.ReadByDoneAndSoListeAndVorsatz";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return DoneStatement(kReadByDoneAndSoListeAndVorsatz, bDone, eSortOrder, iShowingDays, kind,
                           {.vorsatz = &stNrVorsatz, .so_id = nullptr, .so_list = &stSoIdListe});
    });
  });
}

void CMeldungListe::ReadAllInZeitraumDatumZeit(Date dat, const std::string& timeVon,
                                               const std::string& timeBis) {
  constexpr const char* kMember = "CMeldungListe.ReadAllInZeitraumDatumZeit";
  detail::Guard(kMember, [&] {
    Cursor().Read(kMember, [&](StorageKind kind) {
      return Fill(
          kind == StorageKind::Jet ? kDatumZeitJet : kDatumZeitOther, kind, msUnsorted,
          [&](Statement& sql) {
            sql.FilterDate("#dat#", dat).Raw("#timeVon#", timeVon).Raw("#timeBis#", timeBis);
          });
    });
  });
}

}  // namespace ZTkDb
