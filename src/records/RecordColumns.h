#pragma once

// The columns of each record class, each written once. From these lists come
// the record's fields, its load order, the values its INSERT and UPDATE
// fill, its property accessors, the C interface's properties (and so the
// Python package's type information) and the tool's fields.
//
// X(Property, Type, column, placeholder, load, insert, update, access)
//   Property     the public property, and the field behind it
//   Type         the property's type; an enumeration is kept as its number
//   column       the column a row is loaded from
//   placeholder  the value's placeholder in the INSERT and the UPDATE,
//                without its #…#
//   load         what a Null in the column does while a row is loaded
//                (NullRule)
//   insert,      the value's place in the INSERT's and the UPDATE's filling
//   update       order, 0 where the statement does not carry it. The
//                placeholders are replaced one after another, so a value
//                holding a later placeholder's name is filled again: the
//                order is part of what hosts see. kLast comes after every
//                other value, in the UPDATE after the row's key.
//   access       rw; ro (no setter); kept (a setter that changes nothing)
//
// Each expansion site names what the macros it passes rely on (`Record`,
// `Fields`, `R`, the record's `impl_`).
//
// The lines stand in load order: a column that fails stops the copy, so the
// order decides which fields already hold the new row.

// clang-format off

#define ZTKDB_AUFTRAG_COLUMNS(X)                                                                  \
  X(Id,               int32_t,     lId,                lId,                kError,    0,  0,  ro)  \
  X(UId,              std::string, stUId,              stUId,              kError,    0,  0,  ro)  \
  X(Nr,               int32_t,     lNr,                lNr,                kError,    1,  1,  rw)  \
  X(AuftragNehmerId,  int32_t,     lAuftragNehmerId,   lAuftragNehmerId,   kError,    2,  2,  rw)  \
  X(AuftragsDatum,    Date,        AuftragsDatum,      AuftragsDatum,      kError,    3,  3,  rw)  \
  X(AuftragsZeit,     std::string, stAuftragsZeit,     stAuftragsZeit,     kDefault,  4,  4,  rw)  \
  X(ObjId,            int32_t,     lObjId,             lObjId,             kError,    5,  5,  rw)  \
  X(ObjTyp,           TkObjTypes,  byObjTyp,           byObjTyp,           kError,    6,  6,  rw)  \
  X(Auftrag,          std::string, stAuftrag,          stAuftrag,          kKeep,     7,  7,  rw)  \
  X(ErledBisDatum,    Date,        ErledBisDatum,      ErledBisDatum,      kError,    8,  8,  rw)  \
  X(ErledBisZeit,     std::string, stErledBisZeit,     stErledBisZeit,     kDefault,  9,  9,  rw)  \
  X(WiederDatum,      Date,        WiederDatum,        WiederDatum,        kError,   10, 10,  rw)  \
  X(WiederZeit,       std::string, stWiederZeit,       stWiederZeit,       kDefault, 11, 11,  rw)  \
  X(Erledigt,         bool,        bErledigt,          bErledigt,          kError,   12, 12,  rw)  \
  X(Gesperrt,         bool,        bGesperrt,          bGesperrt,          kError,   13, 13,  rw)  \
  X(ErledigtDatum,    Date,        ErledigtDatum,      ErledigtDatum,      kError,   14, 14,  rw)  \
  X(ErledigtZeit,     std::string, stErledigtZeit,     stErledigtZeit,     kDefault, 15, 15,  rw)  \
  X(ObjAufgabeId,     int32_t,     lTechObjTerminId,   lTechObjTerminId,   kError,   16, 16,  rw)  \
  X(ObjHistorieId,    int32_t,     lTageFrist,         lTageFrist,         kError,   17, 17,  rw)  \
  X(Auftragstyp,      uint8_t,     byAuftragstyp,      byAuftragstyp,      kDefault, 18, 18,  rw)  \
  X(AnsprechId,       int32_t,     lAnsprechId,        lAnsprechId,        kDefault, 19, 19,  rw)  \
  X(GebTyp,           uint8_t,     byGebTyp,           byGebTyp,           kDefault, 20, 20,  rw)  \
  X(GebId,            int32_t,     lGebId,             lGebId,             kDefault, 21, 21,  rw)  \
  X(SoId,             int32_t,     lSoId,              lSoId,              kDefault, 22, 22,  rw)  \
  X(Herkunft,         uint8_t,     byHerkunft,         byHerkunft,         kDefault, 23, 23,  rw)  \
  X(NrVorsatz,        std::string, stNrVorsatz,        stNrVorsatz,        kDefault, 24, 24,  rw)  \
  X(Bearbeiter,       std::string, stBearbeiter,       stBearbeiter,       kDefault, 25, 25,  rw)  \
  X(TelBearbeiter,    std::string, stTelBearbeiter,    stTelBearbeiter,    kDefault, 26, 26,  rw)  \
  X(AuftragGeber,     std::string, stAuftragGeber,     stAuftragGeber,     kDefault, 27, 27,  rw)  \
  X(AufGebFaId,       int32_t,     lAufGebFaId,        lAufGebFaId,        kError,   28, 28,  rw)  \
  X(AufGebKst,        std::string, stAufGebKst,        stAufGebKst,        kDefault, 29, 29,  rw)  \
  X(Ort,              std::string, stOrt,              stOrt,              kDefault, 30, 30,  rw)  \
  X(Objekt,           std::string, stObjekt,           stObjekt,           kDefault, 31, 31,  rw)  \
  X(Kostenstelle,     std::string, stKostenstelle,     stKostenstelle,     kDefault, 32, 32,  rw)  \
  X(RechnEmpf,        std::string, stRechnEmpf,        stRechnEmpf,        kDefault, 33, 33,  rw)  \
  X(Bemerkung,        std::string, stBemerkung,        stBemerkung,        kDefault, 34, 34,  rw)  \
  X(AuftragstypText,  std::string, stAuftragstyp,      stAuftragstyp,      kDefault, 35, 35,  rw)  \
  X(Kosten,           Currency,    cuKosten,           cuKosten,           kError,   36, 36,  rw)  \
  X(Leistungsart,     std::string, stLeistungsart,     stLeistungsart,     kDefault, 37, 37,  rw)  \
  X(Verantwortlicher, std::string, stVerantwortlicher, stVerantwortlicher, kDefault, 38, 38,  rw)  \
  /* from the link table; the order's own statements never write it */                          \
  X(MeldungId,        int32_t,     lMeldungId,         lMeldungId,         kOptional, 0,  0,  rw)

// stOrt loads after stEmail but fills after stTelBearbeiter.
#define ZTKDB_MELDUNG_COLUMNS(X)                                                                  \
  X(Id,               int32_t,     lId,                lId,                kError,         0,  0, ro) \
  X(UId,              std::string, stUId,              stUId,              kError,         0,  0, ro) \
  X(Nr,               int32_t,     lNr,                lNr,                kError,         1,  1, rw) \
  X(Melder,           std::string, stMelder,           stMelder,           kDefault,       2,  2, rw) \
  X(MelderFaId,       int32_t,     lMelderFaId,        lMelderFaId,        kError,         3,  3, rw) \
  X(MelderTel,        std::string, stMelderTel,        stMelderTel,        kDefault,       4,  4, rw) \
  X(MeldeDatum,       Date,        MeldeDatum,         MeldeDatum,         kError,         5,  5, rw) \
  X(MeldeZeit,        std::string, stMeldeZeit,        stMeldeZeit,        kDefault,       6,  6, rw) \
  X(ObjId,            int32_t,     lObjId,             lObjId,             kError,         7,  7, rw) \
  X(ObjTyp,           TkObjTypes,  byObjTyp,           byObjTyp,           kError,         8,  8, rw) \
  X(Meldung,          std::string, stMeldung,          stMeldung,          kKeepAfterMove0, 9, 9, rw) \
  X(ErledBisDatum,    Date,        ErledBisDatum,      ErledBisDatum,      kError,        10, 10, rw) \
  X(ErledBisZeit,     std::string, stErledBisZeit,     stErledBisZeit,     kDefault,      11, 11, rw) \
  X(WiederDatum,      Date,        WiederDatum,        WiederDatum,        kError,        12, 12, rw) \
  X(WiederZeit,       std::string, stWiederZeit,       stWiederZeit,       kDefault,      13, 13, rw) \
  X(Erledigt,         bool,        bErledigt,          bErledigt,          kError,        14, 14, rw) \
  X(ErledigtDatum,    Date,        ErledigtDatum,      ErledigtDatum,      kError,        15, 15, rw) \
  X(ErledigtZeit,     std::string, stErledigtZeit,     stErledigtZeit,     kDefault,      16, 16, rw) \
  X(GebTyp,           uint8_t,     byGebTyp,           byGebTyp,           kDefault,      17, 17, rw) \
  X(GebId,            int32_t,     lGebId,             lGebId,             kDefault,      18, 18, rw) \
  X(SoId,             int32_t,     lSoId,              lSoId,              kDefault,      19, 19, rw) \
  X(Herkunft,         uint8_t,     byHerkunft,         byHerkunft,         kDefault,      20, 20, rw) \
  X(NrVorsatz,        std::string, stNrVorsatz,        stNrVorsatz,        kDefault,      21, 21, rw) \
  X(Bearbeiter,       std::string, stBearbeiter,       stBearbeiter,       kDefault,      22, 22, rw) \
  X(TelBearbeiter,    std::string, stTelBearbeiter,    stTelBearbeiter,    kDefault,      23, 23, rw) \
  X(Objekt,           std::string, stObjekt,           stObjekt,           kDefault,      25, 25, rw) \
  X(Bemerkung,        std::string, stBemerkung,        stBemerkung,        kDefault,      26, 26, rw) \
  X(Email,            std::string, stEmail,            stEmail,            kDefault,      27, 27, rw) \
  X(Ort,              std::string, stOrt,              stOrt,              kDefault,      24, 24, rw) \
  X(Leistungsart,     std::string, stLeistungsart,     stLeistungsart,     kDefault,      28, 28, rw) \
  X(Verantwortlicher, std::string, stVerantwortlicher, stVerantwortlicher, kDefault,      29, 29, rw)

// The cost centre's placeholder is #stKST# (a remark holding "#stKST#" is
// replaced again by that later step); the contractor fills before the
// contact person although it loads after it.
#define ZTKDB_LEISTUNG_COLUMNS(X)                                                                 \
  X(Id,               int32_t,     lId,                lId,                kError,    0,  0,  ro)  \
  X(UId,              std::string, stUId,              stUId,              kError,    0,  0,  ro)  \
  X(AuftragId,        int32_t,     lAuftragId,         lAuftragId,         kError,    1,  1,  rw)  \
  X(AuftragNehmerId,  int32_t,     lAuftragNehmerId,   lAuftragNehmerId,   kError,    2,  2,  rw)  \
  X(AusfDatum,        Date,        AusfDatum,          AusfDatum,          kError,    3,  3,  rw)  \
  X(AusfZeit,         std::string, stAusfZeit,         stAusfZeit,         kDefault,  4,  4,  rw)  \
  X(LeistArtId,       int32_t,     lLeistArtId,        lLeistArtId,        kError,    5,  5,  rw)  \
  X(Stunden,          double,      dStunden,           dStunden,           kError,    6,  6,  rw)  \
  X(PreisProStd,      Currency,    cuPreisProStd,      cuPreisProStd,      kError,    7,  7,  rw)  \
  X(Faktor,           double,      dFaktor,            dFaktor,            kError,    8,  8,  rw)  \
  X(Weg,              double,      dWeg,               dWeg,               kError,    9,  9,  rw)  \
  X(PreisProKm,       Currency,    cuPreisProKm,       cuPreisProKm,       kError,   10, 10,  rw)  \
  X(Bemerkung,        std::string, stBemerkung,        stBemerkung,        kDefault, 11, 11,  rw)  \
  X(RechnEmpfId,      int32_t,     lRechnEmpfId,       lRechnEmpfId,       kError,   12, 12,  rw)  \
  X(Kostenart,        std::string, stKostenart,        stKostenart,        kDefault, 13, 13,  rw)  \
  X(Kostenstelle,     std::string, stKostenstelle,     stKST,              kDefault, 14, 14,  rw)  \
  X(Ansprech,         std::string, stAnsprech,         stAnsprech,         kDefault, 16, 16,  rw)  \
  X(Auftragnehmer,    std::string, stAuftragnehmer,    stAuftragnehmer,    kDefault, 15, 15,  rw)  \
  X(Leistart,         std::string, stLeistArt,         stLeistArt,         kDefault, 17, 17,  rw)  \
  X(RechnEmpf,        std::string, stRechnEmpf,        stRechnEmpf,        kDefault, 18, 18,  rw)  \
  X(AnsprechId,       int32_t,     lAnsprechId,        lAnsprechId,        kDefault, 19, 19,  rw)  \
  X(Fremdleistung,    bool,        bFremdleistung,     bFremdleistung,     kError,   20, 20,  rw)

// The INSERT puts the unit before the recipient, the UPDATE after it; the
// flag has always been filled last. The unit's setter keeps the current
// unit: hosts rely on Update writing the unit the booking was loaded with.
#define ZTKDB_MATERIAL_COLUMNS(X)                                                                 \
  X(Id,               int32_t,     lId,                lId,                kError,    0,     0,     ro)   \
  X(UId,              std::string, stUId,              stUId,              kError,    0,     0,     ro)   \
  X(AuftragId,        int32_t,     lAuftragId,         lAuftragId,         kError,    1,     1,     rw)   \
  X(MatKlasse,        std::string, stMatKlasse,        stMatKlasse,        kDefault,  2,     2,     rw)   \
  X(Bezeichnung,      std::string, stBezeichnung,      stBezeichnung,      kDefault,  3,     3,     rw)   \
  X(Menge,            double,      dMenge,             dMenge,             kError,    4,     4,     rw)   \
  X(PreisProEinheit,  Currency,    cuPreisProEinheit,  cuPreisProEinheit,  kError,    5,     5,     rw)   \
  X(Faktor,           double,      dFaktor,            dFaktor,            kError,    6,     6,     rw)   \
  X(RechnEmpfId,      int32_t,     lRechnEmpfId,       lRechnEmpfId,       kError,    7,     7,     rw)   \
  X(Kostenart,        std::string, stKostenart,        stKostenart,        kDefault,  8,     8,     rw)   \
  X(Kostenstelle,     std::string, stKostenstelle,     stKostenstelle,     kDefault,  9,     9,     rw)   \
  X(RechnEmpf,        std::string, stRechnEmpf,        stRechnEmpf,        kDefault, 11,    10,     rw)   \
  X(Einheit,          std::string, stEinheit,          stEinheit,          kDefault, 10,    11,     kept) \
  X(Fremdleistung,    bool,        bFremdleistung,     bFremdleistung,     kError,   kLast, kLast,  rw)

#define ZTKDB_DOKUMENT_COLUMNS(X)                                                                 \
  X(Id,               int32_t,     lId,                lId,                kError,    0,  0,  ro)  \
  X(UId,              std::string, stUId,              stUId,              kDefault,  0,  0,  ro)  \
  X(MsgId,            int32_t,     lMsgId,             lMsgId,             kError,    1,  1,  rw)  \
  X(OrderId,          int32_t,     lOrderId,           lOrderId,           kError,    2,  2,  rw)  \
  X(Pfad,             std::string, stPfad,             stPfad,             kDefault,  3,  3,  rw)  \
  X(Datei,            std::string, stDatei,            stDatei,            kDefault,  4,  4,  rw)

// clang-format on
