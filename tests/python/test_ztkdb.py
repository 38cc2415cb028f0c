"""The Python binding on a real database: create, read, update with a
conflict, list, and clear errors for mistakes."""
import datetime
import decimal
import inspect
import os
import subprocess
import tempfile
import unittest

import ztkdb


def new_order(client, nr, text):
    order = ztkdb.CAuftrag()
    order.ConnectStorage(client)
    day = datetime.datetime(2026, 11, 20, 8, 15)
    order.CreateNew7(nr, 17, day, "08:15", 100, ztkdb.sotRoom, text, day, "", ztkdb.NoDate, "",
                     False, ztkdb.NoDate, "", 0, 0, 2, 31, 1, 12, 1, ztkdb.hetTikora, "A", "Meier",
                     "0711", "HV", 5, "K1", "Köln", "Objekt", "KST", "RE", False, "", "Typ",
                     decimal.Decimal("12.5"), "LA", "VA")
    return order


def read_back(client, record_id):
    order = ztkdb.CAuftrag()
    order.ConnectStorage(client)
    order.ReadById(record_id)
    return order


class Binding(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        self.path = os.path.join(self.dir.name, "py.db")
        subprocess.run([os.environ["ZTKDB_ZTK"], "init", self.path], check=True,
                       stdout=subprocess.DEVNULL)
        self.boxes = []
        ztkdb.set_message_hook(lambda box: self.boxes.append((box.text, box.critical)))
        self.db = ztkdb.CTkDb()
        self.db.OpenJetDb("py", self.path, False, False)

    def tearDown(self):
        ztkdb.set_message_hook(None)
        ztkdb.raise_conflicts(False)
        del self.db
        self.dir.cleanup()

    def test_trace_shows_each_statement_and_how_it_ran(self):
        seen = []
        ztkdb.set_trace(lambda *t: seen.append(t))
        try:
            order = new_order("py", 1, "Tür 'klemmt'")
            order.Ort = "Halle 7"
            order.Update()
        finally:
            ztkdb.set_trace(None)
        new_order("py", 2, "after")
        texts = [t[0] for t in seen]
        self.assertEqual(len(seen), 3, texts)
        update = seen[2]
        self.assertTrue(update[0].startswith("UPDATE T_Auftrag SET T_Auftrag.stUId = '"))
        self.assertIn("T_Auftrag.stOrt='Halle 7'", update[0])
        self.assertIn("'Tür ''klemmt'''", update[0])
        self.assertEqual(update[1], "SQLite")
        self.assertEqual(update[2], os.environ.get("ZTKDB_STATEMENT_CACHE") != "0")
        self.assertGreaterEqual(update[3], 0.0)
        self.assertEqual(update[4], 1)

    def test_create_read_update_with_conflict_and_list(self):
        first = new_order("py", 1, "Tür 'klemmt'")
        new_order("py", 2, "Heizung")
        self.assertGreater(first.Id, 0)
        self.assertEqual(first.Auftrag, "Tür 'klemmt'")
        self.assertEqual(first.Kosten, decimal.Decimal("12.5"))
        self.assertEqual(first.AuftragsDatum, datetime.datetime(2026, 11, 20, 8, 15))
        self.assertEqual(first.ErledigtDatum, ztkdb.NoDate)

        copy = read_back("py", first.Id)
        first.Ort = "Stuttgart"
        first.Update()
        copy.Ort = "Ulm"
        copy.Update()
        self.assertEqual(self.boxes, [("CAuftrag.Update fehlgeschlagen. Bitte an TORQ melden!", True)])
        # A script opts in to a conflict raised from the call, with no box.
        ztkdb.raise_conflicts(True)
        with self.assertRaises(ztkdb.ConflictError) as e:
            copy.Update()
        self.assertEqual((e.exception.number, e.exception.member), (3197, "CAuftrag.Update"))
        self.assertIsInstance(e.exception, ztkdb.Error)
        self.assertEqual(len(self.boxes), 1)
        first.Update()  # a write that succeeds raises nothing
        ztkdb.raise_conflicts(False)
        seen = []
        ztkdb.set_message_hook(seen.append)
        copy.Update()
        self.assertEqual(seen[0].number, 3197)
        self.assertEqual(seen[0].member, "CAuftrag.Update")
        text, title, critical, member, number = seen[0]
        self.assertEqual((title, critical), ("Zanto", True))

        orders = ztkdb.CAuftragListe()
        orders.ConnectStorage("py")
        orders.ReadByDone(False, ztkdb.osByOrderNumber)
        self.assertEqual([(o.Nr, o.Ort) for o in orders], [(1, "Stuttgart"), (2, "Köln")])
        self.assertEqual(len(orders), 2)
        self.assertEqual(orders(first.Id).Nr, 1)  # the default member
        self.assertIsNone(orders(4711))
        self.assertEqual(orders.SortOrder, ztkdb.osByOrderNumber)
        # A walk inside a walk of the same list leaves the outer one its place.
        pairs = [(a.Nr, b.Nr) for a in orders for b in orders]
        self.assertEqual(pairs, [(1, 1), (1, 2), (2, 1), (2, 2)])

    def test_keyword_arguments_by_the_headers_names(self):
        order = ztkdb.CAuftrag()
        order.ConnectStorage(stClientName="py")
        day = datetime.datetime(2026, 11, 20, 8, 15)
        values = dict(lNr=9, lAuftragNehmerId=17, AuftragsDatum=day, stAuftragsZeit="08:15",
                      lObjId=100, eObjTyp=ztkdb.sotRoom, stAuftrag="per Name", ErledBisDatum=day,
                      stErledBisZeit="", WiederDatum=ztkdb.NoDate, stWiederZeit="",
                      bErledigt=False, ErledigtDatum=ztkdb.NoDate, stErledigtZeit="",
                      lOvObjAufgabeId=0, lOvObjHistorieId=0, byAuftragstyp=2, lAnsprechId=31,
                      byGebTyp=1, lGebId=12, lSoId=1, byHerkunft=ztkdb.hetTikora,
                      stNrVorsatz="A", stBearbeiter="Meier", stTelBearbeiter="0711",
                      stAufGeber="HV", lAufGebFaId=5, stAufGebKst="K1", stOrt="Köln",
                      stObjekt="Objekt", stKostenstelle="KST", stRechnEmpf="RE", bGesperrt=False,
                      stBemerkung="", stAuftragstyp="Typ", cuKosten=decimal.Decimal("1.5"),
                      stLeistungsart="LA", stVerantwortlicher="VA")
        order.CreateNew7(**values)
        self.assertEqual((order.Nr, order.Auftrag, order.Ort), (9, "per Name", "Köln"))
        orders = ztkdb.CAuftragListe()
        orders.ConnectStorage("py")
        orders.ReadByDone(bDone=False, iShowingDays=30)  # eSortOrder left out between
        self.assertEqual(len(orders), 1)
        self.assertIn("bDone", str(inspect.signature(ztkdb.CAuftragListe.ReadByDone)))
        with self.assertRaises(TypeError) as e:
            order.ReadById(lNummer=3)
        self.assertIn("CAuftrag.ReadById has no parameter lNummer", str(e.exception))
        with self.assertRaises(TypeError):
            order.ReadById(3, lId=3)
        with self.assertRaises(ztkdb.Error) as missing:
            orders.ReadByDone(iShowingDays=30)  # bDone is required
        self.assertEqual(missing.exception.number, 449)

    def test_classes_are_python_classes(self):
        order = new_order("py", 5, "Tür")
        self.assertIsInstance(order, ztkdb.CAuftrag)
        self.assertIn("ReadById", dir(order))
        self.assertIn("Nr", dir(ztkdb.CAuftrag))
        self.assertEqual(repr(order), "<ztkdb.CAuftrag Id=%d>" % order.Id)
        self.assertEqual(order.nr, 5)  # names without regard to case, as before
        with ztkdb.CAuftragListe() as orders:
            orders.ConnectStorage("py")
            orders.ReadByDone(False)
            row = next(iter(orders))
            self.assertIsInstance(row, ztkdb.CAuftrag)
            self.assertEqual(type(orders.RsClone).__name__, "Recordset")
        with self.assertRaises(ztkdb.Error) as e:
            orders.Count  # released at the end of the with block
        self.assertEqual(e.exception.number, 91)
        with self.assertRaises(TypeError):
            ztkdb._class_for("Recordset")()  # handed out, never created
        with ztkdb.CTkDb() as second:
            second.OpenJetDb("py2", self.path, False, True)
            self.assertEqual(second.DbPath, self.path)

    def test_mistakes_raise_clear_errors(self):
        order = ztkdb.CAuftrag()
        with self.assertRaises(ztkdb.Error) as e:
            order.Gibtsnicht
        self.assertEqual(e.exception.number, 438)
        with self.assertRaises(ztkdb.Error) as e:
            order.ReadById()
        self.assertEqual(e.exception.number, 450)
        with self.assertRaises(TypeError) as e:
            order.Nr = "viele"
        self.assertEqual(e.exception.number, 13)
        self.assertIn("CAuftrag.Nr", str(e.exception))
        with self.assertRaises(ztkdb.Error) as e:
            order.AuftragsDatum = None  # no date is NoDate, not None
        self.assertEqual(e.exception.number, 94)
        self.assertIn("CAuftrag.AuftragsDatum", str(e.exception))
        self.assertEqual(order.AuftragsDatum, ztkdb.NoDate)
        with self.assertRaises(ztkdb.Error) as e:
            order.ReadById(1)  # not connected
        self.assertEqual(e.exception.number, 91)
        self.assertIn("ITestFixture", ztkdb.classes())
        with self.assertRaises(AttributeError):
            ztkdb.CNichtDa()

    def test_dates_the_database_cannot_hold_are_refused_before_writing(self):
        order = new_order("py", 1, "Tür")
        for bad in (datetime.datetime(26, 11, 15), datetime.datetime(1, 1, 1)):
            order.AuftragsDatum = bad
            with self.assertRaises(ztkdb.Error) as e:
                order.Update()
            self.assertEqual(e.exception.number, 6)
        copy = read_back("py", order.Id)
        self.assertEqual(copy.AuftragsDatum, datetime.datetime(2026, 11, 20, 8, 15))

    def test_python_conventions(self):
        order = new_order("py", 1, "Tür")
        self.assertTrue(order)  # objects are true, whatever their Count
        self.assertFalse(hasattr(order, "Gibtsnicht"))
        self.assertEqual(getattr(order, "Gibtsnicht", 7), 7)
        self.assertTrue(hasattr(order, "Nr"))
        # Before 30.12.1899 the time of day still counts forward.
        for when in (datetime.datetime(1850, 1, 1, 12, 0), datetime.datetime(1899, 12, 29, 6, 0),
                     datetime.datetime(1900, 1, 1, 18, 30)):
            order.AuftragsDatum = when
            order.Update()
            copy = read_back("py", order.Id)
            self.assertEqual(copy.AuftragsDatum, when)
        # An aware time is stored as the same instant in this machine's time.
        aware = datetime.datetime(2026, 3, 1, 12, 0, tzinfo=datetime.timezone.utc)
        order.AuftragsDatum = aware
        self.assertEqual(order.AuftragsDatum, aware.astimezone().replace(tzinfo=None))
        for amount in (decimal.Decimal("1e15"), decimal.Decimal("NaN")):
            with self.assertRaises(ztkdb.Error) as e:
                order.Kosten = amount
            self.assertEqual(e.exception.number, 6)
        with self.assertRaises(ztkdb.Error):
            order.Ort = "Köln\0Bonn"
        self.assertEqual(order.Kosten, decimal.Decimal("12.5"))

    def test_text_that_is_not_utf8_reads_and_writes_back_unchanged(self):
        import sqlite3
        order = new_order("py", 1, "Tür")
        raw = sqlite3.connect(self.path)
        raw.execute("UPDATE T_Auftrag SET stOrt = CAST(X'4BF66C6E' AS TEXT)")
        raw.commit()
        raw.close()
        copy = read_back("py", order.Id)
        self.assertEqual(copy.Ort.encode("utf-8", "surrogateescape"), b"K\xf6ln")
        copy.Update()
        check = sqlite3.connect(self.path)
        self.assertEqual(check.execute("SELECT CAST(stOrt AS BLOB) FROM T_Auftrag").fetchone()[0],
                         b"K\xf6ln")
        check.close()


if __name__ == "__main__":
    unittest.main()
