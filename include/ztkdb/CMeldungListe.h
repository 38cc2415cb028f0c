#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ztkdb/CMeldung.h"
#include "ztkdb/Date.h"
#include "ztkdb/Enums.h"
#include "ztkdb/Export.h"
#include "ztkdb/RecordList.h"

namespace ZTkDb {

extern template class RecordList<CMeldung>;

// The reports one query selects, walked with the cursor members of
// RecordList. Every read first drops the previous result. Sort orders 1..5
// sort ascending by their column; a value outside 0..5 leaves the statement
// empty and the engine's error reaches the caller.
//
// The done family (ReadByDone…) lists reports with bErledigt = bDone whose
// ErledigtDatum is on or after today minus iShowingDays: open reports carry
// NoDate there and so always pass. iShowingDays is a 16-bit count
// taken wide: outside -32768..32767 it raises 6 instead of wrapping.
// Site filters also admit site 0;
// stSoIdListe elements go into IN(…) as they stand.
class ZTKDB_API CMeldungListe : public RecordList<CMeldung> {
 public:
  CMeldungListe();

  // Hosts have always read 0 here: no read records the sort order it was
  // given (ReadByObj and ReadAllBySo set it to 0 explicitly).
  MsgSortOrderConstants SortOrder() const;

  void ReadAll(MsgSortOrderConstants eSortOrder = msUnsorted);
  // Reports dated from datVon to datBis, by number.
  void ReadAllInZeitraum(Date datVon, Date datBis);
  // Reports dated up to datBis and not done before datVon (open ones pass).
  void ReadAllInZeitAndOpen(Date datVon, Date datBis);
  void ReadByDone(bool bDone, MsgSortOrderConstants eSortOrder = msUnsorted,
                  int32_t iShowingDays = 30);
  void ReadByObj(int32_t lObjId, TkObjTypes eTyp);
  void ReadByDoneAndSo(int32_t lSoId, bool bDone, MsgSortOrderConstants eSortOrder = msUnsorted,
                       int32_t iShowingDays = 30);
  // Exactly the site given, without the site-0 reports.
  void ReadAllBySo(int32_t lSoId);
  void ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                            MsgSortOrderConstants eSortOrder = msUnsorted,
                            int32_t iShowingDays = 30);
  void ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                            MsgSortOrderConstants eSortOrder = msUnsorted,
                            int32_t iShowingDays = 30);
  void ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone, const std::string& stNrVorsatz,
                                 MsgSortOrderConstants eSortOrder = msUnsorted,
                                 int32_t iShowingDays = 30);
  void ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe, bool bDone,
                                      const std::string& stNrVorsatz,
                                      MsgSortOrderConstants eSortOrder = msUnsorted,
                                      int32_t iShowingDays = 30);
  // Reports of day `dat` whose time text lies from timeVon to timeBis (text
  // comparison). The times go in as given. The embedded engine's variant of
  // this statement has always been malformed and fails there with the
  // engine's syntax error.
  void ReadAllInZeitraumDatumZeit(Date dat, const std::string& timeVon,
                                  const std::string& timeBis);

 private:
  MsgSortOrderConstants sort_order_ = msUnsorted;
};

}  // namespace ZTkDb
