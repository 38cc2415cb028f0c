-- The help-desk module database on MariaDB or MySQL (reached through ODBC).
-- InnoDB (row locks, transactions) in utf8mb4, so any Unicode text fits.
-- Flags are SMALLINT 1/0 (the literals the statements compare with), bytes
-- SMALLINT, currency DECIMAL(19,4) (exact), dates DATETIME (TIMESTAMP cannot
-- hold 31.12.9999, the date every open item carries), free texts LONGTEXT so
-- no length limit cuts a host's text; the two indexed texts (row token and
-- number prefix) are VARCHAR. The binary no-pad collation compares and sorts
-- texts by their code points, trailing blanks included, as the embedded engine
-- and PostgreSQL (C locale) do. MySQL has no collation of that name: there
-- the tables are made with utf8mb4_bin, which ignores trailing blanks.

CREATE TABLE T_Auftrag (
  lId                INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
  stUId              VARCHAR(255),
  lNr                INTEGER,
  lAnsprechId        INTEGER,
  byGebTyp           SMALLINT,
  lGebId             INTEGER,
  lAuftragNehmerId   INTEGER,
  AuftragsDatum      DATETIME,
  stAuftragsZeit     LONGTEXT,
  lObjId             INTEGER,
  byObjTyp           SMALLINT,
  stAuftrag          LONGTEXT,
  ErledBisDatum      DATETIME,
  stErledBisZeit     LONGTEXT,
  WiederDatum        DATETIME,
  stWiederZeit       LONGTEXT,
  bErledigt          SMALLINT,
  ErledigtDatum      DATETIME,
  stErledigtZeit     LONGTEXT,
  byAuftragstyp      SMALLINT NOT NULL DEFAULT 0,
  lTechObjTerminId   INTEGER,
  lTageFrist         INTEGER,
  byHerkunft         SMALLINT,
  stNrVorsatz        VARCHAR(255),
  stBearbeiter       LONGTEXT,
  stTelBearbeiter    LONGTEXT,
  stAuftragGeber     LONGTEXT,
  lAufGebFaId        INTEGER,
  stAufGebKst        LONGTEXT,
  stOrt              LONGTEXT,
  stObjekt           LONGTEXT,
  stKostenstelle     LONGTEXT,
  stRechnEmpf        LONGTEXT,
  bGesperrt          SMALLINT,
  stBemerkung        LONGTEXT,
  stAuftragstyp      LONGTEXT,
  cuKosten           DECIMAL(19,4),
  lSoId              INTEGER,
  stLeistungsart     LONGTEXT,
  stVerantwortlicher LONGTEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE UNIQUE INDEX IX_Auftrag_stUId ON T_Auftrag (stUId);
CREATE INDEX IX_Auftrag_Nr ON T_Auftrag (lNr, stNrVorsatz);
CREATE INDEX IX_Auftrag_SoId ON T_Auftrag (lSoId);
CREATE INDEX IX_Auftrag_Erledigt ON T_Auftrag (bErledigt, ErledigtDatum);
CREATE INDEX IX_Auftrag_ObjId ON T_Auftrag (lObjId);

CREATE TABLE T_AuftragMeldung (
  lAuftragId INTEGER,
  lMeldungId INTEGER
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE INDEX IX_AuftragMeldung_Auftrag ON T_AuftragMeldung (lAuftragId);
CREATE INDEX IX_AuftragMeldung_Meldung ON T_AuftragMeldung (lMeldungId);

CREATE TABLE T_Meldung (
  lId                INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
  stUId              VARCHAR(255),
  lNr                INTEGER,
  stMelder           LONGTEXT,
  lMelderFaId        INTEGER,
  stMelderTel        LONGTEXT,
  MeldeDatum         DATETIME,
  stMeldeZeit        LONGTEXT,
  lObjId             INTEGER,
  byObjTyp           SMALLINT,
  stMeldung          LONGTEXT,
  ErledBisDatum      DATETIME,
  stErledBisZeit     LONGTEXT,
  WiederDatum        DATETIME,
  stWiederZeit       LONGTEXT,
  bErledigt          SMALLINT,
  ErledigtDatum      DATETIME,
  stErledigtZeit     LONGTEXT,
  byGebTyp           SMALLINT,
  lGebId             INTEGER,
  lSoId              INTEGER,
  byHerkunft         SMALLINT,
  stNrVorsatz        VARCHAR(255),
  stBearbeiter       LONGTEXT,
  stTelBearbeiter    LONGTEXT,
  stOrt              LONGTEXT,
  stObjekt           LONGTEXT,
  stBemerkung        LONGTEXT,
  stEmail            LONGTEXT,
  stLeistungsart     LONGTEXT,
  stVerantwortlicher LONGTEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE UNIQUE INDEX IX_Meldung_stUId ON T_Meldung (stUId);
CREATE INDEX IX_Meldung_Nr ON T_Meldung (lNr, stNrVorsatz);
CREATE INDEX IX_Meldung_SoId ON T_Meldung (lSoId);
CREATE INDEX IX_Meldung_Erledigt ON T_Meldung (bErledigt, ErledigtDatum);
CREATE INDEX IX_Meldung_ObjId ON T_Meldung (lObjId);

CREATE TABLE T_Leistung (
  lId              INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
  stUId            VARCHAR(255),
  lAuftragId       INTEGER,
  lAuftragNehmerId INTEGER,
  AusfDatum        DATETIME,
  stAusfZeit       LONGTEXT,
  lLeistArtId      INTEGER,
  dStunden         DOUBLE,
  cuPreisProStd    DECIMAL(19,4),
  dFaktor          DOUBLE,
  dWeg             DOUBLE,
  cuPreisProKm     DECIMAL(19,4),
  stBemerkung      LONGTEXT,
  lRechnEmpfId     INTEGER,
  stKostenart      LONGTEXT,
  stKostenstelle   LONGTEXT,
  stAuftragnehmer  LONGTEXT,
  stAnsprech       LONGTEXT,
  stLeistArt       LONGTEXT,
  stRechnEmpf      LONGTEXT,
  lAnsprechId      INTEGER,
  bFremdleistung   SMALLINT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE UNIQUE INDEX IX_Leistung_stUId ON T_Leistung (stUId);
CREATE INDEX IX_Leistung_Auftrag ON T_Leistung (lAuftragId);

CREATE TABLE T_AMaterial (
  lId               INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
  stUId             VARCHAR(255),
  lAuftragId        INTEGER,
  stMatKlasse       LONGTEXT,
  stBezeichnung     LONGTEXT,
  dMenge            DOUBLE,
  cuPreisProEinheit DECIMAL(19,4),
  dFaktor           DOUBLE,
  lRechnEmpfId      INTEGER,
  stKostenart       LONGTEXT,
  stKostenstelle    LONGTEXT,
  stRechnEmpf       LONGTEXT,
  stEinheit         LONGTEXT,
  bFremdleistung    SMALLINT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE UNIQUE INDEX IX_AMaterial_stUId ON T_AMaterial (stUId);
CREATE INDEX IX_AMaterial_Auftrag ON T_AMaterial (lAuftragId);

CREATE TABLE T_MsgOrderDokument (
  lId      INT NOT NULL AUTO_INCREMENT PRIMARY KEY,
  stUId    VARCHAR(255),
  lMsgId   INTEGER,
  lOrderId INTEGER,
  stPfad   LONGTEXT,
  stDatei  LONGTEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_nopad_bin;
CREATE UNIQUE INDEX IX_MsgOrderDokument_stUId ON T_MsgOrderDokument (stUId);
CREATE INDEX IX_MsgOrderDokument_Order ON T_MsgOrderDokument (lOrderId);
CREATE INDEX IX_MsgOrderDokument_Msg ON T_MsgOrderDokument (lMsgId);
