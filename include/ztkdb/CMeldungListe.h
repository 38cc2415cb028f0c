/// \file
/// The list of reports, CMeldungListe.
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

/// The reports one query selects, walked with the cursor members of
/// RecordList. Every read first drops the previous result. Sort orders 1..5
/// sort ascending by their column; a value outside 0..5 leaves the statement
/// empty and the engine's error (3129) reaches the caller.
///
/// The done family (ReadByDone…) lists reports with bErledigt = bDone whose
/// ErledigtDatum is on or after today minus iShowingDays: open reports carry
/// NoDate there and so always pass. iShowingDays is a 16-bit count
/// taken wide: outside -32768..32767 it raises 6 instead of wrapping.
/// Site filters also admit site 0;
/// stSoIdListe elements go into IN(…) as they stand.
///
/// Every read raises 91 while the list is unconnected, 3420 once the database
/// is closed, and passes other engine errors on unchanged.
class ZTKDB_API CMeldungListe : public RecordList<CMeldung> {
 public:
  /// An unconnected list without a result.
  CMeldungListe();

  /// Hosts have always read 0 here: no read records the sort order it was
  /// given (ReadByObj and ReadAllBySo set it to 0 explicitly).
  /// \return 0.
  MsgSortOrderConstants SortOrder() const;

  /// Every report.
  /// \param eSortOrder The column to sort by, ascending; msUnsorted for the engine's order.
  /// \throws ZTkDb::Error 3129 for a sort order outside 0..5; 91, 3420 and engine errors
  ///   as for every read.
  void ReadAll(MsgSortOrderConstants eSortOrder = msUnsorted);
  /// Reports dated from datVon to datBis, by number.
  /// \param datVon First day of the period.
  /// \param datBis Last day of the period.
  /// \throws ZTkDb::Error 6 for a date outside 01.01.0100 to 31.12.9999; 91, 3420 and
  ///   engine errors as for every read.
  void ReadAllInZeitraum(Date datVon, Date datBis);
  /// Reports dated up to datBis and not done before datVon (open ones pass), by date.
  /// \param datVon First day of the period.
  /// \param datBis Last day of the period.
  /// \throws ZTkDb::Error 6 for a date outside 01.01.0100 to 31.12.9999; 91, 3420 and
  ///   engine errors as for every read.
  void ReadAllInZeitAndOpen(Date datVon, Date datBis);
  /// Done (or open) reports; done ones only when done within the last iShowingDays days.
  /// \param bDone True for the done reports, false for the open ones (all of them).
  /// \param eSortOrder The column to sort by, ascending; msUnsorted for the engine's order.
  /// \param iShowingDays How many days back a done report may have been done; negative
  ///   moves the limit into the future.
  /// \throws ZTkDb::Error 6 for iShowingDays outside -32768..32767; 3129 for a sort order
  ///   outside 0..5; 91, 3420 and engine errors as for every read.
  void ReadByDone(bool bDone, MsgSortOrderConstants eSortOrder = msUnsorted,
                  int32_t iShowingDays = 30);
  /// The reports of one object; unsorted.
  /// \param lObjId Id of the object (lObjId).
  /// \param eTyp Kind of the object (byObjTyp).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadByObj(int32_t lObjId, TkObjTypes eTyp);
  /// As ReadByDone, for one site and the site-0 reports.
  /// \param lSoId Site id (lSoId).
  /// \param bDone True for the done reports, false for the open ones.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done report may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndSo(int32_t lSoId, bool bDone, MsgSortOrderConstants eSortOrder = msUnsorted,
                       int32_t iShowingDays = 30);
  /// Exactly the site given, without the site-0 reports.
  /// \param lSoId Site id (lSoId).
  /// \throws ZTkDb::Error 91, 3420 and engine errors as for every read.
  void ReadAllBySo(int32_t lSoId);
  /// As ReadByDoneAndSo, for several sites and the site-0 reports.
  /// \param stSoIdListe The site ids, each put into IN(…) as it stands, unquoted: pass only
  ///   number texts from a trusted source. An empty list makes the statement invalid
  ///   (3075 from the engine); a text that would make a second statement raises 3129.
  /// \param bDone True for the done reports, false for the open ones.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done report may have been done.
  /// \throws ZTkDb::Error as ReadByDone, and the engine's error for a list it cannot read.
  void ReadByDoneAndSoListe(const std::vector<std::string>& stSoIdListe, bool bDone,
                            MsgSortOrderConstants eSortOrder = msUnsorted,
                            int32_t iShowingDays = 30);
  /// As ReadByDone, for one number prefix.
  /// \param bDone True for the done reports, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done report may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndVorsatz(bool bDone, const std::string& stNrVorsatz,
                            MsgSortOrderConstants eSortOrder = msUnsorted,
                            int32_t iShowingDays = 30);
  /// As ReadByDoneAndSo, for one number prefix.
  /// \param lSoId Site id (lSoId).
  /// \param bDone True for the done reports, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done report may have been done.
  /// \throws ZTkDb::Error as ReadByDone.
  void ReadByDoneAndSoAndVorsatz(int32_t lSoId, bool bDone, const std::string& stNrVorsatz,
                                 MsgSortOrderConstants eSortOrder = msUnsorted,
                                 int32_t iShowingDays = 30);
  /// As ReadByDoneAndSoListe, for one number prefix.
  /// \param stSoIdListe The site ids, each put into IN(…) as it stands (see
  ///   ReadByDoneAndSoListe).
  /// \param bDone True for the done reports, false for the open ones.
  /// \param stNrVorsatz Number prefix (stNrVorsatz), compared as a quoted text.
  /// \param eSortOrder The column to sort by, ascending.
  /// \param iShowingDays How many days back a done report may have been done.
  /// \throws ZTkDb::Error as ReadByDoneAndSoListe.
  void ReadByDoneAndSoListeAndVorsatz(const std::vector<std::string>& stSoIdListe, bool bDone,
                                      const std::string& stNrVorsatz,
                                      MsgSortOrderConstants eSortOrder = msUnsorted,
                                      int32_t iShowingDays = 30);
  /// Reports of day `dat` whose time text lies from timeVon to timeBis (text
  /// comparison), by number. The times go in as given. The embedded engine's variant of
  /// this statement has always been malformed and fails there with the
  /// engine's syntax error (3075).
  /// \param dat The day (MeldeDatum).
  /// \param timeVon Earliest time text (stMeldeZeit), unescaped: pass only trusted text.
  /// \param timeBis Latest time text (stMeldeZeit), unescaped as timeVon.
  /// \throws ZTkDb::Error 3075 on an embedded database; 6 for a date outside 01.01.0100 to
  ///   31.12.9999; 3129 for times that would make a second statement; 91, 3420 and engine
  ///   errors as for every read.
  void ReadAllInZeitraumDatumZeit(Date dat, const std::string& timeVon, const std::string& timeBis);

 private:
  MsgSortOrderConstants sort_order_ = msUnsorted;
};

}  // namespace ZTkDb
