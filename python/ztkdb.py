"""ZTkDb from Python, through the library's C interface (ctypes only).

    import ztkdb
    db = ztkdb.CTkDb()
    db.OpenJetDb("Haustechnik", "/srv/facility/module.db", False, False)
    orders = ztkdb.CAuftragListe()
    orders.ConnectStorage("Haustechnik")
    orders.ReadByDone(False, ztkdb.osByOrderDate, 30)
    for order in orders:
        print(order.Nr, order.Auftrag, order.AuftragsDatum)

Objects answer to their members by name (without regard to case): properties
as attributes (``a.Nr = 5``), methods as calls (``a.ReadById(3)``); trailing
optional arguments may be left out. Lists iterate from their first row and
are callable with a row id (their default member, ItemByRecId). "Nothing"
is None; Null is ``ztkdb.Null``. Dates are ``datetime.datetime`` (no date:
31.12.9999), currency is ``decimal.Decimal``. Failures raise ``ztkdb.Error``
with the number, source and description the library gives.

The library is found through ZTKDB_LIBRARY, beside this file (../../../lib
of an installed tree), or by the system's loader (libztkdb.so.0).
"""

import ctypes
import datetime
import decimal
import os

__all__ = ["Error", "MemberError", "Null", "set_message_hook", "classes"]

_ZTK_EMPTY, _ZTK_NULL, _ZTK_INT16, _ZTK_INT32 = 0, 1, 2, 3
_ZTK_DOUBLE, _ZTK_CURRENCY, _ZTK_DATE, _ZTK_STRING = 5, 6, 7, 8
_ZTK_OBJECT, _ZTK_BOOL, _ZTK_BYTE = 9, 11, 17
_GET, _PUT, _METHOD = 1, 2, 3

_OLE_EPOCH = datetime.datetime(1899, 12, 30)


class _Union(ctypes.Union):
    _fields_ = [("i16", ctypes.c_int16), ("i32", ctypes.c_int32), ("d", ctypes.c_double),
                ("cy", ctypes.c_int64), ("date", ctypes.c_double), ("s", ctypes.c_void_p),
                ("obj", ctypes.c_void_p),
                ("b", ctypes.c_int32), ("by", ctypes.c_uint8)]


class _Value(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("v", _Union)]


class Error(Exception):
    """A failure of the library: number, source and description."""

    def __init__(self, number, source, description):
        super().__init__("%d (%s): %s" % (number, source, description))
        self.number = number
        self.source = source
        self.description = description


class MemberError(Error, AttributeError):
    """A name the object does not have (the library's error 438): also an
    AttributeError, so that hasattr() and getattr() with a default work."""


class _NullType:
    def __repr__(self):
        return "ztkdb.Null"


Null = _NullType()


def _load():
    candidates = []
    if os.environ.get("ZTKDB_LIBRARY"):
        candidates.append(os.environ["ZTKDB_LIBRARY"])
    here = os.path.dirname(os.path.abspath(__file__))
    candidates.append(os.path.join(here, "..", "..", "..", "lib", "libztkdb.so.0"))
    candidates.append("libztkdb.so.0")
    last = None
    for path in candidates:
        try:
            return ctypes.CDLL(path)
        except OSError as e:
            last = e
    raise ImportError("ztkdb: cannot load libztkdb (set ZTKDB_LIBRARY): %s" % last)


_lib = _load()
_lib.ztk_create.argtypes = [ctypes.c_char_p, ctypes.POINTER(ctypes.c_void_p)]
_lib.ztk_release.argtypes = [ctypes.c_void_p]
_lib.ztk_get.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(_Value)]
_lib.ztk_put.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.POINTER(_Value)]
_lib.ztk_call.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int32,
                          ctypes.POINTER(_Value), ctypes.POINTER(_Value)]
_lib.ztk_value_clear.argtypes = [ctypes.POINTER(_Value)]
_lib.ztk_value_clear.restype = None
_lib.ztk_last_error.argtypes = [ctypes.POINTER(ctypes.c_int32), ctypes.POINTER(ctypes.c_char_p),
                                ctypes.POINTER(ctypes.c_char_p)]
_lib.ztk_class_name.restype = ctypes.c_char_p
_lib.ztk_class_of.argtypes = [ctypes.c_void_p]
_lib.ztk_class_of.restype = ctypes.c_char_p
_lib.ztk_member_count.argtypes = [ctypes.c_char_p]
_lib.ztk_member_info.argtypes = [ctypes.c_char_p, ctypes.c_int32, ctypes.POINTER(ctypes.c_char_p),
                                 ctypes.POINTER(ctypes.c_int32), ctypes.POINTER(ctypes.c_int32),
                                 ctypes.POINTER(ctypes.c_int32)]
_SINK = ctypes.CFUNCTYPE(None, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_int32, ctypes.c_void_p)
_lib.ztk_set_message_sink.argtypes = [_SINK, ctypes.c_void_p]
_TRACE = ctypes.CFUNCTYPE(None, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_int32, ctypes.c_double,
                          ctypes.c_int64, ctypes.c_void_p)
_lib.ztk_set_trace.argtypes = [_TRACE, ctypes.c_void_p]


def _check(status):
    if status != 0:
        number = ctypes.c_int32()
        source = ctypes.c_char_p()
        description = ctypes.c_char_p()
        _lib.ztk_last_error(ctypes.byref(number), ctypes.byref(source), ctypes.byref(description))
        kind = MemberError if number.value == 438 else Error
        raise kind(number.value, (source.value or b"").decode("utf-8", "replace"),
                   (description.value or b"").decode("utf-8", "replace"))


_CURRENCY_MIN, _CURRENCY_MAX = -2**63, 2**63 - 1


def _ole(x):
    """An OLE date: whole days from 30.12.1899, the fraction the time of day,
    which before that day still counts forward from midnight (-1.25 is
    29.12.1899 06:00)."""
    day = (x.date() - _OLE_EPOCH.date()).days
    fraction = (x.hour * 3600 + x.minute * 60 + x.second + x.microsecond / 1e6) / 86400.0
    return day + fraction if day >= 0 else day - fraction


def _from_ole(value):
    day = int(value)  # toward zero: the day, also before 1899-12-30
    seconds = round(abs(value - day) * 86400)
    return _OLE_EPOCH + datetime.timedelta(days=day, seconds=seconds)


def _to_value(x, keep):
    v = _Value()
    if x is None:
        v.type = _ZTK_EMPTY
    elif x is Null:
        v.type = _ZTK_NULL
    elif isinstance(x, bool):
        v.type, v.v.b = _ZTK_BOOL, 1 if x else 0
    elif isinstance(x, int):
        if -2**31 <= x < 2**31:
            v.type, v.v.i32 = _ZTK_INT32, x
        else:
            v.type, v.v.d = _ZTK_DOUBLE, float(x)
    elif isinstance(x, float):
        v.type, v.v.d = _ZTK_DOUBLE, x
    elif isinstance(x, decimal.Decimal):
        # Checked here: ctypes would wrap an amount past 64 bits silently.
        if not x.is_finite():
            raise Error(6, "ztkdb", "Overflow: %s is no amount" % x)
        scaled = int((x * 10000).to_integral_value(decimal.ROUND_HALF_EVEN))
        if not _CURRENCY_MIN <= scaled <= _CURRENCY_MAX:
            raise Error(6, "ztkdb", "Overflow: %s is beyond the currency range" % x)
        v.type, v.v.cy = _ZTK_CURRENCY, scaled
    elif isinstance(x, datetime.datetime):
        v.type, v.v.date = _ZTK_DATE, _ole(x)
    elif isinstance(x, datetime.date):
        v.type, v.v.date = _ZTK_DATE, float((x - _OLE_EPOCH.date()).days)
    elif isinstance(x, str):
        if "\0" in x:
            # A C string would end there and the rest be lost.
            raise Error(5, "ztkdb", "Invalid procedure call or argument: the text holds a NUL")
        data = ctypes.create_string_buffer(x.encode("utf-8", "surrogateescape"))
        keep.append(data)
        v.type, v.v.s = _ZTK_STRING, ctypes.cast(data, ctypes.c_void_p).value
    elif isinstance(x, (list, tuple)):
        return _to_value(",".join(str(e) for e in x), keep)  # string arrays
    elif isinstance(x, Object):
        v.type, v.v.obj = _ZTK_OBJECT, x._handle
    else:
        raise TypeError("ztkdb: no value form for %r" % (x,))
    return v


def _from_value(v):
    t = v.type
    try:
        if t in (_ZTK_EMPTY, _ZTK_NULL):
            return None if t == _ZTK_EMPTY else Null
        if t == _ZTK_INT16:
            return v.v.i16
        if t == _ZTK_INT32:
            return v.v.i32
        if t == _ZTK_BYTE:
            return v.v.by
        if t == _ZTK_BOOL:
            return v.v.b != 0
        if t == _ZTK_DOUBLE:
            return v.v.d
        if t == _ZTK_CURRENCY:
            return decimal.Decimal(v.v.cy).scaleb(-4)
        if t == _ZTK_DATE:
            return _from_ole(v.v.date)
        if t == _ZTK_STRING:
            # Bytes that are not UTF-8 (stored by some other program) come
            # back as surrogates and go back to the database unchanged.
            return ctypes.string_at(v.v.s).decode("utf-8", "surrogateescape")
        if t == _ZTK_OBJECT:
            if not v.v.obj:
                return None
            handle = v.v.obj
            v.v.obj = None  # the Object owns it now
            v.type = _ZTK_EMPTY
            return Object(handle)
    finally:
        _lib.ztk_value_clear(ctypes.byref(v))
    raise Error(13, "ztkdb", "Type mismatch (value of kind %d)" % t)


_members = {}


def _member_table(class_name):
    table = _members.get(class_name)
    if table is None:
        table = {}
        name_b = class_name.encode()
        for i in range(_lib.ztk_member_count(name_b)):
            name = ctypes.c_char_p()
            kind, lo, hi = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
            _check(_lib.ztk_member_info(name_b, i, ctypes.byref(name), ctypes.byref(kind),
                                        ctypes.byref(lo), ctypes.byref(hi)))
            entry = table.setdefault(name.value.decode().lower(), {})
            entry[kind.value] = (lo.value, hi.value)
        _members[class_name] = table
    return table


class Object:
    """An object of the library, reached by member name."""

    __slots__ = ("_handle", "_class")

    def __init__(self, handle):
        object.__setattr__(self, "_handle", handle)
        object.__setattr__(self, "_class", _lib.ztk_class_of(handle).decode())

    def __del__(self):
        handle = getattr(self, "_handle", None)
        if handle and _lib is not None:
            _lib.ztk_release(handle)
            object.__setattr__(self, "_handle", None)

    def __repr__(self):
        return "<ztkdb.%s>" % self._class

    def _call(self, name, *args):
        keep = []
        argv = (_Value * max(1, len(args)))(*[_to_value(a, keep) for a in args])
        result = _Value()
        _check(_lib.ztk_call(self._handle, name.encode(), len(args), argv, ctypes.byref(result)))
        return _from_value(result)

    def __getattr__(self, name):
        if name.startswith("__"):
            raise AttributeError(name)
        entry = _member_table(self._class).get(name.lower())
        if entry is None or (_GET in entry and entry[_GET][1] == 0):
            # A property, or a name the class does not have: the library
            # answers the latter with its error 438.
            result = _Value()
            _check(_lib.ztk_get(self._handle, name.encode(), ctypes.byref(result)))
            return _from_value(result)
        # A method, or a property get with arguments.
        return lambda *args: self._call(name, *args)

    def __setattr__(self, name, value):
        keep = []
        v = _to_value(value, keep)
        _check(_lib.ztk_put(self._handle, name.encode(), ctypes.byref(v)))

    def __call__(self, *args):
        return self._call("ItemByRecId", *args)

    def __iter__(self):
        item = self._call("MoveFirst")
        while item is not None:
            yield item
            item = self._call("MoveNext")

    def __len__(self):
        return self.Count

    # An object is an object: "if record:" must not ask a record for a Count.
    def __bool__(self):
        return True


def classes():
    """The class names hosts create (ZTkDb.<name>)."""
    return [_lib.ztk_class_name(i).decode() for i in range(_lib.ztk_class_count())]


def _factory(class_name):
    def create():
        handle = ctypes.c_void_p()
        _check(_lib.ztk_create(("ZTkDb." + class_name).encode(), ctypes.byref(handle)))
        return Object(handle.value)
    create.__name__ = class_name
    create.__doc__ = "A new ZTkDb.%s." % class_name
    return create


for _name in classes():
    globals()[_name] = _factory(_name)
    __all__.append(_name)

_hook = None


def set_message_hook(hook):
    """hook(text, title, critical) receives the library's message boxes;
    None restores the default (a line on stderr)."""
    global _hook
    if hook is None:
        _hook = None
        _check(_lib.ztk_set_message_sink(_SINK(), None))
        return

    def sink(text, title, critical, _user):
        hook(text.decode("utf-8"), title.decode("utf-8"), bool(critical))

    _hook = _SINK(sink)  # kept alive while installed
    _check(_lib.ztk_set_message_sink(_hook, None))


_traces = []


def set_trace(hook):
    """hook(text, engine, bound, milliseconds, rows) receives every statement
    the library runs, once it ended (rows is -1 when it failed); None ends
    the trace."""
    if hook is None:
        _check(_lib.ztk_set_trace(_TRACE(), None))
        return

    def sink(text, engine, bound, milliseconds, rows, _user):
        try:
            hook(text.decode("utf-8", "replace"), engine.decode("utf-8"), bool(bound),
                 milliseconds, rows)
        except Exception:  # a hook's failure must not fail the statement
            pass

    installed = _TRACE(sink)
    # Kept for the life of the module: a statement ending in another thread
    # may still reach a hook that was just replaced.
    _traces.append(installed)
    _check(_lib.ztk_set_trace(installed, None))


# The enumerations, as the C++ and automation hosts know them.
(sotUndefined, sotStand, sotBuilding, sotFloor, sotRoom, sotTechObjFolder, sotTechObj, sotAnlage,
 sotObjekt) = range(9)
(hetUndefined, hetTikora, hetGebaeude, hetTechnik, hetInventar, hetBrandschutz, hetInvTK,
 hetBrandTK, hetTechTK, hetImportGlt) = range(10)
(osUnsorted, osByOrderNumber, osByOrderDate, osByOrderDoneTillDate, osByOrderDoneOnDate,
 osByOrderReturnOnDate, osByMsgId) = range(7)
(msUnsorted, msByMsgNumber, msbymsgdate, msByMsgDoneTillDate, msByMsgDoneOnDate,
 msByMsgReturnOnDate) = range(6)
NoDate = datetime.datetime(9999, 12, 31)
