"""Type information of ztkdb, written by make_stub.py from the library."""
import datetime
import decimal
from typing import Any, Callable, Iterator, NamedTuple, Optional, Sequence

class Error(Exception):
    number: int
    source: str
    description: str
    def __init__(self, number: int, source: str, description: str) -> None: ...

class MemberError(Error, AttributeError): ...
class TypeMismatchError(Error, TypeError): ...

class ConflictError(Error):
    member: str
    text: str

class MessageBox(NamedTuple):
    text: str
    title: str
    critical: bool
    member: str
    number: int

Null: Any
NoDate: datetime.datetime

def classes() -> list[str]: ...
def set_message_hook(hook: Optional[Callable[[MessageBox], None]]) -> None: ...
def raise_conflicts(enabled: bool = ...) -> None: ...
def set_trace(hook: Optional[Callable[[str, str, bool, float, int], None]]) -> None: ...

class Object:
    def close(self) -> None: ...
    def __enter__(self: Any) -> Any: ...
    def __exit__(self, *exc: Any) -> bool: ...

class CTkDb(Object):
    def CloseDb(self) -> None:
        """Removes the connection if this object registered it; otherwise nothing."""
        ...
    DbPath: str
    """The database path (for ODBC the connection string), or ""."""
    def OpenJetDb(self, stClientName: str, stDbPath: str, bExclusive: bool, bReadOnly: bool) -> None:
        """Opens a database file of the embedded engine and adds the column T_Auftrag.byAuftragstyp where an old database lacks it."""
        ...
    def OpenOdbcDb(self, stClientName: str, stConnStr: str, bExclusive: bool, bReadOnly: bool) -> None:
        """Opens an ODBC data source."""
        ...
    Ws: Optional[Workspace]
    """The workspace of this client's connection, or Nothing."""
    def __init__(self) -> None: ...

class CMsgOrderDokument(Object):
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the object to the client's open database; nothing happens for an empty name or a client that is not open (the object keeps the storage it had, or stays unconnected and raises 91 on its next call)."""
        ...
    def CreateNew(self, lMsgId: int, lOrderId: int, stPfad: str, stDatei: str) -> None:
        """Inserts a row with a fresh UId and loads it back by that UId, which gives the object the id the database assigned."""
        ...
    Datei: str
    """File name of the document (stDatei)."""
    def Delete(self) -> None:
        """Deletes the row whatever its version and clears the object."""
        ...
    Id: int
    """Row id (lId), assigned by the database; 0 while no row is loaded."""
    MsgId: int
    """The report the document belongs to (lMsgId, a report's Id); 0 for none."""
    OrderId: int
    """The order the document belongs to (lOrderId, an order's Id); 0 for none."""
    Pfad: str
    """Folder path of the document (stPfad)."""
    def ReadById(self, lId: int) -> None:
        """Loads the row; a missing id clears the object (Id 0) without an error."""
        ...
    UId: str
    """Row token (stUId): replaced by every write; Update matches the row by it."""
    def Update(self) -> None:
        """Writes every field to the object's row in one statement, with a fresh UId, provided the row still carries the UId the object holds."""
        ...
    def __init__(self) -> None: ...

class CAuftrag(Object):
    AnsprechId: int
    """Id of the contact person (lAnsprechId)."""
    AufGebFaId: int
    """Company id of the client (lAufGebFaId)."""
    AufGebKst: str
    """The client's cost centre (stAufGebKst)."""
    Auftrag: str
    """Text of the order (stAuftrag)."""
    AuftragGeber: str
    """Client who placed the order (stAuftragGeber)."""
    AuftragNehmerId: int
    """Id of the contractor (lAuftragNehmerId)."""
    AuftragsDatum: datetime.datetime
    """Date of the order (AuftragsDatum); NoDate when none is set."""
    AuftragsZeit: str
    """Time of the order, as free text (stAuftragsZeit)."""
    Auftragstyp: int
    """Order type code (byAuftragstyp)."""
    AuftragstypText: str
    """Order type as text, stored in stAuftragstyp."""
    Bearbeiter: str
    """Clerk handling the order (stBearbeiter)."""
    Bemerkung: str
    """Remark (stBemerkung)."""
    def Connect2Msg(self, lMsgId: int) -> None:
        """Links this order (its Id) to report lMsgId by inserting a row into T_AuftragMeldung, and sets MeldungId."""
        ...
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the object to the client's open database; nothing happens for an empty name or a client that is not open (the object keeps the storage it had, or stays unconnected and raises 91 on its next call)."""
        ...
    def CreateNew(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str) -> None:
        """Retired: only shows the box "CreateNew2 benutzen." (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew1(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str) -> None:
        """Retired: only shows the box "CreateNew2 benutzen." (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew2(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool) -> None:
        """Retired: only shows the box "CreateNew3 benutzen!" (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew3(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool, stBemerkung: str) -> None:
        """Retired: only shows the box "CreateNew4 benutzen!" (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew4(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool, stBemerkung: str, stAuftragstyp: str) -> None:
        """Retired: only shows the box "Createnew5 benutzen!" (title "Zanto", number 0) and touches neither the database nor the object."""
        ...
    def CreateNew5(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool, stBemerkung: str, stAuftragstyp: str, cuKosten: decimal.Decimal) -> None:
        """Retired: only shows the box "Createnew6 benutzen!" (title "Zanto", number 0) and touches neither the database nor the object."""
        ...
    def CreateNew6(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, lSoId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool, stBemerkung: str, stAuftragstyp: str, cuKosten: decimal.Decimal) -> None:
        """Retired: only shows the box "Createnew7 benutzen!" (title "Zanto", number 0) and touches neither the database nor the object."""
        ...
    def CreateNew7(self, lNr: int, lAuftragNehmerId: int, AuftragsDatum: datetime.datetime, stAuftragsZeit: str, lObjId: int, eObjTyp: int, stAuftrag: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, lOvObjAufgabeId: int, lOvObjHistorieId: int, byAuftragstyp: int, lAnsprechId: int, byGebTyp: int, lGebId: int, lSoId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stAufGeber: str, lAufGebFaId: int, stAufGebKst: str, stOrt: str, stObjekt: str, stKostenstelle: str, stRechnEmpf: str, bGesperrt: bool, stBemerkung: str, stAuftragstyp: str, cuKosten: decimal.Decimal, stLeistungsart: str, stVerantwortlicher: str) -> None:
        """Inserts an order with a fresh UId and loads it back by that UId, which gives the object the id the database assigned (Id) and every stored value."""
        ...
    def Delete(self) -> None:
        """Deletes the row whatever its version, then clears the object (Id 0)."""
        ...
    def DisConnectFromMsg(self) -> None:
        """Removes the link between this order and the report in MeldungId and sets MeldungId to 0."""
        ...
    ErledBisDatum: datetime.datetime
    """Due date, to be done by (ErledBisDatum); NoDate when none is set."""
    ErledBisZeit: str
    """Due time, as free text (stErledBisZeit)."""
    Erledigt: bool
    """Whether the order is done (bErledigt)."""
    ErledigtDatum: datetime.datetime
    """Date the order was done (ErledigtDatum); NoDate while it is open, which the done lists rely on."""
    ErledigtZeit: str
    """Time the order was done, as free text (stErledigtZeit)."""
    GebId: int
    """Building id (lGebId)."""
    GebTyp: int
    """Building type (byGebTyp)."""
    Gesperrt: bool
    """Whether the order is locked (bGesperrt)."""
    def GetLastNr(self) -> int:
        """The highest order number over all prefixes; the object's fields do not change."""
        ...
    Herkunft: int
    """Origin (byHerkunft): a HerkunftTypes value held as a byte, so other values pass."""
    Id: int
    """Row id (lId), assigned by the database; 0 while no row is loaded."""
    Kosten: decimal.Decimal
    """Costs (cuKosten)."""
    Kostenstelle: str
    """Cost centre (stKostenstelle)."""
    Leistungsart: str
    """Kind of service (stLeistungsart)."""
    MeldungId: int
    """Id of the linked report (lMeldungId of T_AuftragMeldung), set by the reads that join the link table; 0 when the order has no link."""
    Nr: int
    """Order number (lNr); with NrVorsatz it forms the number users see."""
    NrVorsatz: str
    """Number prefix (stNrVorsatz)."""
    ObjAufgabeId: int
    """Id of the object task (maintenance appointment) that raised the order, stored in lTechObjTerminId."""
    ObjHistorieId: int
    """Id of the object history entry that belongs to the order, stored in lTageFrist."""
    ObjId: int
    """Id of the object the order concerns (lObjId)."""
    ObjTyp: int
    """Kind of that object (byObjTyp)."""
    Objekt: str
    """The object, as text (stObjekt)."""
    Ort: str
    """Place (stOrt)."""
    def ReadById(self, lId: int) -> None:
        """Loads the order with that id, with its linked report in MeldungId."""
        ...
    def ReadByNr(self, lNr: int, stVorsatz: str) -> None:
        """Loads the order with that number and prefix, as ReadById loads; of several matches the first in the engine's order."""
        ...
    def ReadByNrOhneVorsatz(self, lNr: int) -> None:
        """Loads an order with that number, whatever its prefix (of several, the first in the engine's order), as ReadById loads."""
        ...
    def ReadByObjHist(self, lObjId: int, lHistId: int) -> None:
        """Loads the open technical-equipment order (object type 6, origin 3) of object lObjId for history entry lHistId, as ReadById loads."""
        ...
    RechnEmpf: str
    """Invoice recipient (stRechnEmpf)."""
    SoId: int
    """Site id (lSoId); 0 means valid for every site, which the site filters of the lists always admit."""
    TelBearbeiter: str
    """The clerk's telephone (stTelBearbeiter)."""
    UId: str
    """Row token (stUId): replaced by every write; Update matches the row by it."""
    def Update(self) -> None:
        """Writes every field but MeldungId to the object's row in one statement, with a fresh UId, provided the row still carries the UId the object holds."""
        ...
    Verantwortlicher: str
    """Person responsible (stVerantwortlicher)."""
    WiederDatum: datetime.datetime
    """Resubmission date (WiederDatum); NoDate when none is set."""
    WiederZeit: str
    """Resubmission time, as free text (stWiederZeit)."""
    def __init__(self) -> None: ...

class CMeldung(Object):
    Bearbeiter: str
    """Clerk who took the report (stBearbeiter)."""
    Bemerkung: str
    """Remark (stBemerkung)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the object to the client's open database; nothing happens for an empty name or a client that is not open (the object keeps the storage it had, or stays unconnected and raises 91 on its next call)."""
        ...
    def CreateNew(self, lNr: int, stMelder: str, lMelderFaId: int, stMelderTel: str, MeldeDatum: datetime.datetime, stMeldeZeit: str, lObjId: int, eObjTyp: int, stMeldung: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stOrt: str, stObjekt: str) -> None:
        """Retired creation methods: each only shows a box naming the next version and touches neither the database nor the object."""
        ...
    def CreateNew1(self, lNr: int, stMelder: str, lMelderFaId: int, stMelderTel: str, MeldeDatum: datetime.datetime, stMeldeZeit: str, lObjId: int, eObjTyp: int, stMeldung: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stOrt: str, stObjekt: str, stBemerkung: str) -> None:
        """Retired: only shows "CreateNew2 benutzen!" (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew2(self, lNr: int, stMelder: str, lMelderFaId: int, stMelderTel: str, MeldeDatum: datetime.datetime, stMeldeZeit: str, lObjId: int, eObjTyp: int, stMeldung: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, byGebTyp: int, lGebId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stOrt: str, stObjekt: str, stBemerkung: str, stEmail: str) -> None:
        """Retired: only shows "CreateNew3 benutzen!" (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew3(self, lNr: int, stMelder: str, lMelderFaId: int, stMelderTel: str, MeldeDatum: datetime.datetime, stMeldeZeit: str, lObjId: int, eObjTyp: int, stMeldung: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, byGebTyp: int, lGebId: int, lSoId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stOrt: str, stObjekt: str, stBemerkung: str, stEmail: str) -> None:
        """Retired: only shows "CreateNew4 benutzen!" (default title, number 0) and touches neither the database nor the object."""
        ...
    def CreateNew4(self, lNr: int, stMelder: str, lMelderFaId: int, stMelderTel: str, MeldeDatum: datetime.datetime, stMeldeZeit: str, lObjId: int, eObjTyp: int, stMeldung: str, ErledBisDatum: datetime.datetime, stErledBisZeit: str, WiederDatum: datetime.datetime, stWiederZeit: str, bErledigt: bool, ErledigtDatum: datetime.datetime, stErledigtZeit: str, byGebTyp: int, lGebId: int, lSoId: int, byHerkunft: int, stNrVorsatz: str, stBearbeiter: str, stTelBearbeiter: str, stOrt: str, stObjekt: str, stBemerkung: str, stEmail: str, stLeistungsart: str, stVerantwortlicher: str) -> None:
        """Inserts a report with a fresh UId and loads it back by that UId, which gives the object the id the database assigned (Id) and every stored value."""
        ...
    def Delete(self) -> None:
        """Deletes the row whatever its version and clears the object."""
        ...
    Email: str
    """The reporter's e-mail address (stEmail)."""
    ErledBisDatum: datetime.datetime
    """To be done by, date (ErledBisDatum); NoDate when none is set."""
    ErledBisZeit: str
    """To be done by, time as free text (stErledBisZeit)."""
    Erledigt: bool
    """Whether the report is done (bErledigt)."""
    ErledigtDatum: datetime.datetime
    """Date the report was done (ErledigtDatum); NoDate while it is open, which the done lists rely on."""
    ErledigtZeit: str
    """Time the report was done, as free text (stErledigtZeit)."""
    GebId: int
    """Id of that building or location (lGebId)."""
    GebTyp: int
    """Kind of building or location reference (byGebTyp)."""
    def GetLastNr(self) -> int:
        """The highest report number over all prefixes; the object's fields do not change."""
        ...
    def GetLastNrVorsatz(self, stNrVorsatz: str) -> int:
        """The highest report number under one prefix; the object's fields do not change."""
        ...
    Herkunft: int
    """Origin (byHerkunft): a HerkunftTypes value held as a byte, so other values pass."""
    Id: int
    """Row id (lId), assigned by the database; 0 while no row is loaded."""
    Leistungsart: str
    """Kind of service requested (stLeistungsart)."""
    MeldeDatum: datetime.datetime
    """Report date (MeldeDatum); NoDate when none is set."""
    MeldeZeit: str
    """Report time, as free text (stMeldeZeit)."""
    Melder: str
    """The reporter's name (stMelder)."""
    MelderFaId: int
    """The reporter's company id (lMelderFaId)."""
    MelderTel: str
    """The reporter's telephone (stMelderTel)."""
    Meldung: str
    """The report text (stMeldung, a long text)."""
    Nr: int
    """Report number (lNr), counted per number prefix (NrVorsatz)."""
    NrVorsatz: str
    """Number prefix (stNrVorsatz); with Nr it forms the number users see."""
    ObjId: int
    """Id of the object the report concerns (lObjId)."""
    ObjTyp: int
    """Kind of that object (byObjTyp)."""
    Objekt: str
    """The object, as text (stObjekt)."""
    Ort: str
    """Place (stOrt)."""
    def ReadById(self, lId: int) -> None:
        """Loads the report with that id."""
        ...
    def ReadByNr(self, lNr: int, stVorsatz: str) -> None:
        """Loads the report with that number and prefix, as ReadById loads; of several matches the first delivered."""
        ...
    SoId: int
    """Site id (lSoId); 0 means valid for every site, which the site filters of the lists always admit."""
    TelBearbeiter: str
    """The clerk's telephone (stTelBearbeiter)."""
    UId: str
    """Row token (stUId): replaced by every write; Update matches the row by it."""
    def Update(self) -> None:
        """Writes every field to the object's row in one statement, with a fresh UId, provided the row still carries the UId the object holds."""
        ...
    Verantwortlicher: str
    """Person responsible (stVerantwortlicher)."""
    WiederDatum: datetime.datetime
    """Resubmission date (WiederDatum); NoDate when none is set."""
    WiederZeit: str
    """Resubmission time, as free text (stWiederZeit)."""
    def __init__(self) -> None: ...

class CLeistung(Object):
    Ansprech: str
    """The contact person, as display text (stAnsprech)."""
    AnsprechId: int
    """Id of the contact person (lAnsprechId)."""
    AuftragId: int
    """The work order the booking belongs to (lAuftragId, an order's Id)."""
    AuftragNehmerId: int
    """Id of the contractor who did the work (lAuftragNehmerId)."""
    Auftragnehmer: str
    """The contractor, as display text (stAuftragnehmer)."""
    AusfDatum: datetime.datetime
    """Date of execution (AusfDatum); NoDate when none is set."""
    AusfZeit: str
    """Time of execution, as free text (stAusfZeit)."""
    Bemerkung: str
    """Remark (stBemerkung)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the object to the client's open database; nothing happens for an empty name or a client that is not open (the object keeps the storage it had, or stays unconnected and raises 91 on its next call)."""
        ...
    def CreateNew(self, lAuftragId: int, lAuftragNehmerId: int, AusfDatum: datetime.datetime, stAusfZeit: str, lLeistArtId: int, dStunden: float, cuPreisProStd: decimal.Decimal, dFaktor: float, dWeg: float, cuPreisProKm: decimal.Decimal, stBemerkung: str, lRechnEmpfId: int, stKostenart: str, lAnsprechId: int, stKST: str) -> None:
        """Retired: only shows "CreateNew1 benutzen!" (title "Zanto", number 0) and touches nothing."""
        ...
    def CreateNew1(self, lAuftragId: int, lAuftragNehmerId: int, AusfDatum: datetime.datetime, stAusfZeit: str, lLeistArtId: int, dStunden: float, cuPreisProStd: decimal.Decimal, dFaktor: float, dWeg: float, cuPreisProKm: decimal.Decimal, stBemerkung: str, lRechnEmpfId: int, stKostenart: str, lAnsprechId: int, stKST: str, stAuftragnehmer: str, stAnsprech: str, stLeistArt: str, stRechnEmpf: str, bFremdleistung: bool) -> None:
        """Inserts a booking with a fresh UId and loads it back by that UId; stKST is the cost centre."""
        ...
    def Delete(self) -> None:
        """Deletes the row whatever its version and clears the object."""
        ...
    Faktor: float
    """Factor applied to the booking, a surcharge or discount (dFaktor)."""
    Fremdleistung: bool
    """Whether an outside firm did the work (bFremdleistung)."""
    Id: int
    """Row id (lId), assigned by the database; 0 while no row is loaded."""
    Kostenart: str
    """Cost type (stKostenart)."""
    Kostenstelle: str
    """Cost centre (stKostenstelle)."""
    LeistArtId: int
    """Id of the kind of service (lLeistArtId)."""
    Leistart: str
    """Kind of service, as display text (stored in stLeistArt)."""
    PreisProKm: decimal.Decimal
    """Price per kilometre (cuPreisProKm)."""
    PreisProStd: decimal.Decimal
    """Price per hour (cuPreisProStd)."""
    def ReadById(self, lId: int) -> None:
        """Loads the row without clearing first; a missing id clears the object (Id 0) without an error."""
        ...
    RechnEmpf: str
    """The invoice recipient, as display text (stRechnEmpf)."""
    RechnEmpfId: int
    """Id of the invoice recipient (lRechnEmpfId)."""
    Stunden: float
    """Hours worked (dStunden)."""
    UId: str
    """Row token (stUId): replaced by every write; Update matches the row by it."""
    def Update(self) -> None:
        """Writes every field to the object's row in one statement, with a fresh UId, provided the row still carries the UId the object holds."""
        ...
    Weg: float
    """Travel distance (dWeg)."""
    def __init__(self) -> None: ...

class CMaterial(Object):
    AuftragId: int
    """The work order the material is booked on (lAuftragId, an order's Id)."""
    Bezeichnung: str
    """Description of the material (stBezeichnung)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the object to the client's open database; nothing happens for an empty name or a client that is not open (the object keeps the storage it had, or stays unconnected and raises 91 on its next call)."""
        ...
    def CreateNew(self, lAuftragId: int, stBezeichnung: str, dMenge: float, cuPreisProEinheit: decimal.Decimal, dFaktor: float, lRechnEmpfId: int, stKostenart: str, stKST: str, stEinheit: str) -> None:
        """Retired creation methods (this, CreateNew1 and CreateNew2): each only shows its box ("CreateNew1 benutzen!", "CreateNew2 verwenden.", "CreateNew3 verwenden." in turn; title "Zanto", number 0) and touches nothing."""
        ...
    def CreateNew1(self, lAuftragId: int, stBezeichnung: str, dMenge: float, cuPreisProEinheit: decimal.Decimal, dFaktor: float, lRechnEmpfId: int, stKostenart: str, stKST: str, stEinheit: str, stRechnEmpf: str) -> None:
        """Retired: only shows "CreateNew2 verwenden." (title "Zanto", number 0) and touches nothing."""
        ...
    def CreateNew2(self, lAuftragId: int, stBezeichnung: str, dMenge: float, cuPreisProEinheit: decimal.Decimal, dFaktor: float, lRechnEmpfId: int, stKostenart: str, stKST: str, stEinheit: str, stRechnEmpf: str, bFremdleistung: bool) -> None:
        """Retired: only shows "CreateNew3 verwenden." (title "Zanto", number 0) and touches nothing."""
        ...
    def CreateNew3(self, lAuftragId: int, stMatKlasse: str, stBezeichnung: str, dMenge: float, cuPreisProEinheit: decimal.Decimal, dFaktor: float, lRechnEmpfId: int, stKostenart: str, stKST: str, stEinheit: str, stRechnEmpf: str, bFremdleistung: bool) -> None:
        """Inserts a booking with a fresh UId and loads it back by that UId; stKST is the cost centre."""
        ...
    def Delete(self) -> None:
        """Deletes the row whatever its version and clears the object."""
        ...
    Einheit: str
    """Unit of the quantity (stEinheit), as CreateNew3 or the last load left it."""
    Faktor: float
    """Factor applied to the booking (dFaktor)."""
    Fremdleistung: bool
    """Whether the material came with outside work (bFremdleistung)."""
    Id: int
    """Row id (lId), assigned by the database; 0 while no row is loaded."""
    Kostenart: str
    """Cost type (stKostenart)."""
    Kostenstelle: str
    """Cost centre (stKostenstelle)."""
    MatKlasse: str
    """Material class (stMatKlasse)."""
    Menge: float
    """Quantity, in Einheit (dMenge)."""
    PreisProEinheit: decimal.Decimal
    """Price per unit (cuPreisProEinheit)."""
    def ReadById(self, lId: int) -> None:
        """Loads the row without clearing first; a missing id clears the object (Id 0) without an error."""
        ...
    RechnEmpf: str
    """The invoice recipient, as display text (stRechnEmpf)."""
    RechnEmpfId: int
    """Id of the invoice recipient (lRechnEmpfId)."""
    UId: str
    """Row token (stUId): replaced by every write; Update matches the row by it."""
    def Update(self) -> None:
        """Writes every field to the object's row in one statement, with a fresh UId, provided the row still carries the UId the object holds; the unit written is the one loaded."""
        ...
    def __init__(self) -> None: ...

class CAuftragListe(Object):
    AbsolutePosition: int
    """0-based position of the current row; 0 without a result."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the list to the client's open database; nothing happens for an empty name or a client that is not open."""
        ...
    Count: int
    """Rows of the current result; 0 without one."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    def ItemByRecId(self, lRecId: int) -> Optional[CAuftrag]:
        """The row whose lId is lRecId, found without scanning; Nothing when absent (the cursor then stays where it was)."""
        ...
    def ItemByRsPos(self, vPos: Optional[int] = ...) -> Optional[CAuftrag]:
        """The row at vPos (0-based; the cursor moves there), or the current row when vPos is omitted."""
        ...
    def MoveFirst(self) -> Optional[CAuftrag]:
        """Each returns the row moved to, or Nothing on an empty result or past either end (the cursor then stands at Bof/Eof)."""
        ...
    def MoveLast(self) -> Optional[CAuftrag]:
        """Moves to the last row."""
        ...
    def MoveNext(self) -> Optional[CAuftrag]:
        """Moves to the next row."""
        ...
    def MovePrevious(self) -> Optional[CAuftrag]:
        """Moves to the previous row."""
        ...
    def ReadAll(self, eSortOrder: int = ...) -> None:
        """Every order with its linked report."""
        ...
    def ReadAllBySo(self, lSoId: int) -> None:
        """Exactly the site given, without the site-0 orders; no link column."""
        ...
    def ReadAllInZeitNoMsg(self, datVon: datetime.datetime, datBis: datetime.datetime) -> None:
        """Orders without a linked report."""
        ...
    def ReadAllInZeitraum(self, datVon: datetime.datetime, datBis: datetime.datetime) -> None:
        """Orders dated from datVon to datBis (dates without time), by number."""
        ...
    def ReadAllWithAuftragstyp(self) -> None:
        """Orders of origin 1, 2, 6, 7 or 8 without a type text; no link column."""
        ...
    def ReadByDone(self, bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """Done (or open) orders; done ones only when done within the last iShowingDays days."""
        ...
    def ReadByDoneAndSo(self, lSoId: int, bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDone, for one site and the site-0 orders."""
        ...
    def ReadByDoneAndSoAndVorsatz(self, lSoId: int, bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSo, for one number prefix."""
        ...
    def ReadByDoneAndSoListe(self, stSoIdListe: Sequence[str], bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSo, for several sites and the site-0 orders."""
        ...
    def ReadByDoneAndSoListeAndVorsatz(self, stSoIdListe: Sequence[str], bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSoListe, for one number prefix."""
        ...
    def ReadByDoneAndVorsatz(self, bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDone, for one number prefix."""
        ...
    def ReadByMsgId(self, lMsgId: int, eSortOrder: int = ...) -> None:
        """The orders linked to one report."""
        ...
    def ReadByMsgIdStatus(self, lMsgId: int, bErledigt: bool) -> None:
        """The orders linked to one report that are done (or open), unsorted."""
        ...
    def ReadByNr(self, lNr: int) -> None:
        """Every order with that number, whatever its prefix."""
        ...
    def ReadByObj(self, lObjId: int, eTyp: int) -> None:
        """The orders of one object, with their linked reports; unsorted."""
        ...
    def ReadByObjAndAufg(self, lObjId: int, lAufgId: int) -> None:
        """Technical-equipment orders (object type 6, origin 3) of one object raised for one object task, done or not; no link column."""
        ...
    def ReadWithMsgConn(self, bWithMsgConn: bool = ..., eSortOrder: int = ...) -> None:
        """bWithMsgConn true (or sort order 0) lists the orders without a linked report; false with a sort order lists those with one."""
        ...
    def Requery(self) -> None:
        """Runs the last query again and rebuilds the index."""
        ...
    RsClone: Optional[Recordset]
    """An independent cursor over the same result; Nothing without a result."""
    SortOrder: int
    """The sort order of the last read; 0 for reads without one."""
    def __call__(self, lRecId: int) -> Optional[CAuftrag]: ...
    def __iter__(self) -> Iterator[CAuftrag]: ...
    def __len__(self) -> int: ...
    def __init__(self) -> None: ...

class CMeldungListe(Object):
    AbsolutePosition: int
    """0-based position of the current row; 0 without a result."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the list to the client's open database; nothing happens for an empty name or a client that is not open."""
        ...
    Count: int
    """Rows of the current result; 0 without one."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    def ItemByRecId(self, lRecId: int) -> Optional[CMeldung]:
        """The row whose lId is lRecId, found without scanning; Nothing when absent (the cursor then stays where it was)."""
        ...
    def ItemByRsPos(self, vPos: Optional[int] = ...) -> Optional[CMeldung]:
        """The row at vPos (0-based; the cursor moves there), or the current row when vPos is omitted."""
        ...
    def MoveFirst(self) -> Optional[CMeldung]:
        """Each returns the row moved to, or Nothing on an empty result or past either end (the cursor then stands at Bof/Eof)."""
        ...
    def MoveLast(self) -> Optional[CMeldung]:
        """Moves to the last row."""
        ...
    def MoveNext(self) -> Optional[CMeldung]:
        """Moves to the next row."""
        ...
    def MovePrevious(self) -> Optional[CMeldung]:
        """Moves to the previous row."""
        ...
    def ReadAll(self, eSortOrder: int = ...) -> None:
        """Every report."""
        ...
    def ReadAllBySo(self, lSoId: int) -> None:
        """Exactly the site given, without the site-0 reports."""
        ...
    def ReadAllInZeitAndOpen(self, datVon: datetime.datetime, datBis: datetime.datetime) -> None:
        """Reports dated up to datBis and not done before datVon (open ones pass), by date."""
        ...
    def ReadAllInZeitraum(self, datVon: datetime.datetime, datBis: datetime.datetime) -> None:
        """Reports dated from datVon to datBis, by number."""
        ...
    def ReadAllInZeitraumDatumZeit(self, dat: datetime.datetime, timeVon: str, timeBis: str) -> None:
        """Reports of day `dat` whose time text lies from timeVon to timeBis (text comparison), by number."""
        ...
    def ReadByDone(self, bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """Done (or open) reports; done ones only when done within the last iShowingDays days."""
        ...
    def ReadByDoneAndSo(self, lSoId: int, bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDone, for one site and the site-0 reports."""
        ...
    def ReadByDoneAndSoAndVorsatz(self, lSoId: int, bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSo, for one number prefix."""
        ...
    def ReadByDoneAndSoListe(self, stSoIdListe: Sequence[str], bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSo, for several sites and the site-0 reports."""
        ...
    def ReadByDoneAndSoListeAndVorsatz(self, stSoIdListe: Sequence[str], bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDoneAndSoListe, for one number prefix."""
        ...
    def ReadByDoneAndVorsatz(self, bDone: bool, stNrVorsatz: str, eSortOrder: int = ..., iShowingDays: int = ...) -> None:
        """As ReadByDone, for one number prefix."""
        ...
    def ReadByObj(self, lObjId: int, eTyp: int) -> None:
        """The reports of one object; unsorted."""
        ...
    def Requery(self) -> None:
        """Runs the last query again and rebuilds the index."""
        ...
    RsClone: Optional[Recordset]
    """An independent cursor over the same result; Nothing without a result."""
    SortOrder: int
    """Hosts have always read 0 here: no read records the sort order it was given (ReadByObj and ReadAllBySo set it to 0 explicitly)."""
    def __call__(self, lRecId: int) -> Optional[CMeldung]: ...
    def __iter__(self) -> Iterator[CMeldung]: ...
    def __len__(self) -> int: ...
    def __init__(self) -> None: ...

class CLeistungListe(Object):
    AbsolutePosition: int
    """0-based position of the current row; 0 without a result."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the list to the client's open database; nothing happens for an empty name or a client that is not open."""
        ...
    Count: int
    """Rows of the current result; 0 without one."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    def ItemByRecId(self, lRecId: int) -> Optional[CLeistung]:
        """The row whose lId is lRecId, found without scanning; Nothing when absent (the cursor then stays where it was)."""
        ...
    def ItemByRsPos(self, vPos: Optional[int] = ...) -> Optional[CLeistung]:
        """The row at vPos (0-based; the cursor moves there), or the current row when vPos is omitted."""
        ...
    def MoveFirst(self) -> Optional[CLeistung]:
        """Each returns the row moved to, or Nothing on an empty result or past either end (the cursor then stands at Bof/Eof)."""
        ...
    def MoveLast(self) -> Optional[CLeistung]:
        """Moves to the last row."""
        ...
    def MoveNext(self) -> Optional[CLeistung]:
        """Moves to the next row."""
        ...
    def MovePrevious(self) -> Optional[CLeistung]:
        """Moves to the previous row."""
        ...
    def ReadAll(self) -> None:
        """Every booking, in the engine's order."""
        ...
    def ReadAllRechEmpfNotEmpty(self) -> None:
        """Bookings with an invoice recipient."""
        ...
    def ReadByOrderId(self, lOrderId: int) -> None:
        """The bookings of one order in the order they were entered (by lId)."""
        ...
    def Requery(self) -> None:
        """Runs the last query again and rebuilds the index."""
        ...
    RsClone: Optional[Recordset]
    """An independent cursor over the same result; Nothing without a result."""
    def __call__(self, lRecId: int) -> Optional[CLeistung]: ...
    def __iter__(self) -> Iterator[CLeistung]: ...
    def __len__(self) -> int: ...
    def __init__(self) -> None: ...

class CMaterialListe(Object):
    AbsolutePosition: int
    """0-based position of the current row; 0 without a result."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the list to the client's open database; nothing happens for an empty name or a client that is not open."""
        ...
    Count: int
    """Rows of the current result; 0 without one."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    def ItemByRecId(self, lRecId: int) -> Optional[CMaterial]:
        """The row whose lId is lRecId, found without scanning; Nothing when absent (the cursor then stays where it was)."""
        ...
    def ItemByRsPos(self, vPos: Optional[int] = ...) -> Optional[CMaterial]:
        """The row at vPos (0-based; the cursor moves there), or the current row when vPos is omitted."""
        ...
    def MoveFirst(self) -> Optional[CMaterial]:
        """Each returns the row moved to, or Nothing on an empty result or past either end (the cursor then stands at Bof/Eof)."""
        ...
    def MoveLast(self) -> Optional[CMaterial]:
        """Moves to the last row."""
        ...
    def MoveNext(self) -> Optional[CMaterial]:
        """Moves to the next row."""
        ...
    def MovePrevious(self) -> Optional[CMaterial]:
        """Moves to the previous row."""
        ...
    def ReadAll(self) -> None:
        """Every material booking."""
        ...
    def ReadByOrderId(self, lOrderId: int) -> None:
        """The material bookings of one order, own and outside alike."""
        ...
    def ReadFremdByOrderId(self, lOrderId: int) -> None:
        """The order's material supplied with outside work."""
        ...
    def ReadMaterialByOrderId(self, lOrderId: int) -> None:
        """The order's own material (not supplied with outside work)."""
        ...
    def Requery(self) -> None:
        """Runs the last query again and rebuilds the index."""
        ...
    RsClone: Optional[Recordset]
    """An independent cursor over the same result; Nothing without a result."""
    def __call__(self, lRecId: int) -> Optional[CMaterial]: ...
    def __iter__(self) -> Iterator[CMaterial]: ...
    def __len__(self) -> int: ...
    def __init__(self) -> None: ...

class CMsgOrderDokumentListe(Object):
    AbsolutePosition: int
    """0-based position of the current row; 0 without a result."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    def ConnectStorage(self, stClientName: str) -> None:
        """Binds the list to the client's open database; nothing happens for an empty name or a client that is not open."""
        ...
    Count: int
    """Rows of the current result; 0 without one."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    def ItemByRecId(self, lRecId: int) -> Optional[CMsgOrderDokument]:
        """The row whose lId is lRecId, found without scanning; Nothing when absent (the cursor then stays where it was)."""
        ...
    def ItemByRsPos(self, vPos: Optional[int] = ...) -> Optional[CMsgOrderDokument]:
        """The row at vPos (0-based; the cursor moves there), or the current row when vPos is omitted."""
        ...
    def MoveFirst(self) -> Optional[CMsgOrderDokument]:
        """Each returns the row moved to, or Nothing on an empty result or past either end (the cursor then stands at Bof/Eof)."""
        ...
    def MoveLast(self) -> Optional[CMsgOrderDokument]:
        """Moves to the last row."""
        ...
    def MoveNext(self) -> Optional[CMsgOrderDokument]:
        """Moves to the next row."""
        ...
    def MovePrevious(self) -> Optional[CMsgOrderDokument]:
        """Moves to the previous row."""
        ...
    def ReadAll(self) -> None:
        """Every document link."""
        ...
    def ReadByMsgId(self, lMsgId: int) -> None:
        """The links of one report."""
        ...
    def ReadByOrderId(self, lOrderId: int) -> None:
        """The links of one order; ReadByOrderId(0) gives those that belong to no order."""
        ...
    def Requery(self) -> None:
        """Runs the last query again and rebuilds the index."""
        ...
    RsClone: Optional[Recordset]
    """An independent cursor over the same result; Nothing without a result."""
    def __call__(self, lRecId: int) -> Optional[CMsgOrderDokument]: ...
    def __iter__(self) -> Iterator[CMsgOrderDokument]: ...
    def __len__(self) -> int: ...
    def __init__(self) -> None: ...

class ITestFixture(Object):
    def __init__(self) -> None: ...

class Recordset(Object):
    AbsolutePosition: int
    """-1 at BOF or EOF; setting a position outside 0..RecordCount-1 raises 3001."""
    BOF: bool
    """Whether the cursor stands before the first row (BOF)."""
    Clone: Optional[Recordset]
    """A second cursor over the same rows, on the first row, with its own position."""
    EOF: bool
    """Whether the cursor stands after the last row (EOF)."""
    FieldCount: int
    """The number of columns."""
    def FieldName(self, index: int) -> str:
        """The name of a column."""
        ...
    def Fields(self, name: str) -> Any:
        """The value of a column of the current row, looked up by name without regard to case."""
        ...
    def Move(self, rows: int) -> None:
        """Relative move; Move(0) re-reads the current row (3021 without one)."""
        ...
    def MoveFirst(self) -> None:
        """Moving first/last on an empty result leaves BOF and EOF set; MoveNext at EOF and MovePrevious at BOF raise 3021 (no current record)."""
        ...
    def MoveLast(self) -> None:
        """Moves to the last row; on an empty result BOF and EOF stay set."""
        ...
    def MoveNext(self) -> None:
        """Moves to the next row, or to EOF after the last one."""
        ...
    def MovePrevious(self) -> None:
        """Moves to the previous row, or to BOF before the first one."""
        ...
    RecordCount: int
    """The number of rows."""
    def Requery(self) -> None:
        """Runs the statement again and moves to the first row of the new result."""
        ...
    Restartable: bool
    """Whether Requery can run the statement again."""

class Workspace(Object):
    def BeginTrans(self) -> None:
        """Begins a transaction."""
        ...
    def CommitTrans(self) -> None:
        """Commits the transaction."""
        ...
    Name: str
    """The registry key of the connection: "<client>_ZTk" or "<client>_Zanto"."""
    def Rollback(self) -> None:
        """Rolls the transaction back."""
        ...

hetBrandTK: int
hetBrandschutz: int
hetGebaeude: int
hetImportGlt: int
hetInvTK: int
hetInventar: int
hetTechTK: int
hetTechnik: int
hetTikora: int
hetUndefined: int
msByMsgDoneOnDate: int
msByMsgDoneTillDate: int
msByMsgNumber: int
msByMsgReturnOnDate: int
msUnsorted: int
msbymsgdate: int
osByMsgId: int
osByOrderDate: int
osByOrderDoneOnDate: int
osByOrderDoneTillDate: int
osByOrderNumber: int
osByOrderReturnOnDate: int
osUnsorted: int
sotAnlage: int
sotBuilding: int
sotFloor: int
sotObjekt: int
sotRoom: int
sotStand: int
sotTechObj: int
sotTechObjFolder: int
sotUndefined: int
