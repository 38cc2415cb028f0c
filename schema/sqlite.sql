-- The help-desk module database for the embedded engine (SQLite).
-- Declared types carry meaning for the library: DATETIME columns hold dates as
-- 'YYYY-MM-DD HH:MM:SS' text, BIT columns flags as -1/0, TINYINT bytes,
-- CURRENCY amounts (read back exact to 4 decimals), DOUBLE doubles.
-- lId is assigned by the database and never reused after a delete.

CREATE TABLE T_Auftrag (
  lId                INTEGER PRIMARY KEY AUTOINCREMENT,
  stUId              VARCHAR(50),
  lNr                INTEGER,
  lAnsprechId        INTEGER,
  byGebTyp           TINYINT,
  lGebId             INTEGER,
  lAuftragNehmerId   INTEGER,
  AuftragsDatum      DATETIME,
  stAuftragsZeit     VARCHAR(20),
  lObjId             INTEGER,
  byObjTyp           TINYINT,
  stAuftrag          TEXT,
  ErledBisDatum      DATETIME,
  stErledBisZeit     VARCHAR(20),
  WiederDatum        DATETIME,
  stWiederZeit       VARCHAR(20),
  bErledigt          BIT,
  ErledigtDatum      DATETIME,
  stErledigtZeit     VARCHAR(20),
  byAuftragstyp      TINYINT NOT NULL DEFAULT 0,
  lTechObjTerminId   INTEGER,
  lTageFrist         INTEGER,
  byHerkunft         TINYINT,
  stNrVorsatz        VARCHAR(20),
  stBearbeiter       VARCHAR(100),
  stTelBearbeiter    VARCHAR(50),
  stAuftragGeber     VARCHAR(100),
  lAufGebFaId        INTEGER,
  stAufGebKst        VARCHAR(50),
  stOrt              VARCHAR(255),
  stObjekt           VARCHAR(255),
  stKostenstelle     VARCHAR(50),
  stRechnEmpf        VARCHAR(255),
  bGesperrt          BIT,
  stBemerkung        TEXT,
  stAuftragstyp      VARCHAR(100),
  cuKosten           CURRENCY,
  lSoId              INTEGER,
  stLeistungsart     VARCHAR(100),
  stVerantwortlicher VARCHAR(100)
);
CREATE UNIQUE INDEX IX_Auftrag_stUId ON T_Auftrag (stUId);
CREATE INDEX IX_Auftrag_Nr ON T_Auftrag (lNr, stNrVorsatz);
CREATE INDEX IX_Auftrag_SoId ON T_Auftrag (lSoId);
CREATE INDEX IX_Auftrag_Erledigt ON T_Auftrag (bErledigt, ErledigtDatum);
CREATE INDEX IX_Auftrag_ObjId ON T_Auftrag (lObjId);

CREATE TABLE T_AuftragMeldung (
  lAuftragId INTEGER,
  lMeldungId INTEGER
);
CREATE INDEX IX_AuftragMeldung_Auftrag ON T_AuftragMeldung (lAuftragId);
CREATE INDEX IX_AuftragMeldung_Meldung ON T_AuftragMeldung (lMeldungId);

CREATE TABLE T_Meldung (
  lId                INTEGER PRIMARY KEY AUTOINCREMENT,
  stUId              VARCHAR(50),
  lNr                INTEGER,
  stMelder           VARCHAR(100),
  lMelderFaId        INTEGER,
  stMelderTel        VARCHAR(50),
  MeldeDatum         DATETIME,
  stMeldeZeit        VARCHAR(20),
  lObjId             INTEGER,
  byObjTyp           TINYINT,
  stMeldung          TEXT,
  ErledBisDatum      DATETIME,
  stErledBisZeit     VARCHAR(20),
  WiederDatum        DATETIME,
  stWiederZeit       VARCHAR(20),
  bErledigt          BIT,
  ErledigtDatum      DATETIME,
  stErledigtZeit     VARCHAR(20),
  byGebTyp           TINYINT,
  lGebId             INTEGER,
  lSoId              INTEGER,
  byHerkunft         TINYINT,
  stNrVorsatz        VARCHAR(20),
  stBearbeiter       VARCHAR(100),
  stTelBearbeiter    VARCHAR(50),
  stOrt              VARCHAR(255),
  stObjekt           VARCHAR(255),
  stBemerkung        TEXT,
  stEmail            VARCHAR(255),
  stLeistungsart     VARCHAR(100),
  stVerantwortlicher VARCHAR(100)
);
CREATE UNIQUE INDEX IX_Meldung_stUId ON T_Meldung (stUId);
CREATE INDEX IX_Meldung_Nr ON T_Meldung (lNr, stNrVorsatz);
CREATE INDEX IX_Meldung_SoId ON T_Meldung (lSoId);
CREATE INDEX IX_Meldung_Erledigt ON T_Meldung (bErledigt, ErledigtDatum);
CREATE INDEX IX_Meldung_ObjId ON T_Meldung (lObjId);

CREATE TABLE T_Leistung (
  lId              INTEGER PRIMARY KEY AUTOINCREMENT,
  stUId            VARCHAR(50),
  lAuftragId       INTEGER,
  lAuftragNehmerId INTEGER,
  AusfDatum        DATETIME,
  stAusfZeit       VARCHAR(20),
  lLeistArtId      INTEGER,
  dStunden         DOUBLE,
  cuPreisProStd    CURRENCY,
  dFaktor          DOUBLE,
  dWeg             DOUBLE,
  cuPreisProKm     CURRENCY,
  stBemerkung      TEXT,
  lRechnEmpfId     INTEGER,
  stKostenart      VARCHAR(50),
  stKostenstelle   VARCHAR(50),
  stAuftragnehmer  VARCHAR(100),
  stAnsprech       VARCHAR(100),
  stLeistArt       VARCHAR(100),
  stRechnEmpf      VARCHAR(255),
  lAnsprechId      INTEGER,
  bFremdleistung   BIT
);
CREATE UNIQUE INDEX IX_Leistung_stUId ON T_Leistung (stUId);
CREATE INDEX IX_Leistung_Auftrag ON T_Leistung (lAuftragId);

CREATE TABLE T_AMaterial (
  lId               INTEGER PRIMARY KEY AUTOINCREMENT,
  stUId             VARCHAR(50),
  lAuftragId        INTEGER,
  stMatKlasse       VARCHAR(100),
  stBezeichnung     VARCHAR(255),
  dMenge            DOUBLE,
  cuPreisProEinheit CURRENCY,
  dFaktor           DOUBLE,
  lRechnEmpfId      INTEGER,
  stKostenart       VARCHAR(50),
  stKostenstelle    VARCHAR(50),
  stRechnEmpf       VARCHAR(255),
  stEinheit         VARCHAR(20),
  bFremdleistung    BIT
);
CREATE UNIQUE INDEX IX_AMaterial_stUId ON T_AMaterial (stUId);
CREATE INDEX IX_AMaterial_Auftrag ON T_AMaterial (lAuftragId);

CREATE TABLE T_MsgOrderDokument (
  lId      INTEGER PRIMARY KEY AUTOINCREMENT,
  stUId    VARCHAR(50),
  lMsgId   INTEGER,
  lOrderId INTEGER,
  stPfad   VARCHAR(255),
  stDatei  VARCHAR(255)
);
CREATE UNIQUE INDEX IX_MsgOrderDokument_stUId ON T_MsgOrderDokument (stUId);
CREATE INDEX IX_MsgOrderDokument_Order ON T_MsgOrderDokument (lOrderId);
CREATE INDEX IX_MsgOrderDokument_Msg ON T_MsgOrderDokument (lMsgId);
