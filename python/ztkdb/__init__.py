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

The library is found through ZTKDB_LIBRARY, in this package (a wheel), in
the tree the module is installed in (<prefix>/lib and its multiarch folder),
or by the system's loader (libztkdb.so.0).
"""

import ctypes
import datetime
import decimal
import glob
import inspect
import os
import sys
import threading

__all__ = ["Error", "MemberError", "TypeMismatchError", "ConflictError", "MessageBox", "Null",
           "NoDate", "set_message_hook", "raise_conflicts", "set_trace", "classes"]

_ZTK_EMPTY, _ZTK_NULL, _ZTK_INT16, _ZTK_INT32 = 0, 1, 2, 3
_ZTK_DOUBLE, _ZTK_CURRENCY, _ZTK_DATE, _ZTK_STRING = 5, 6, 7, 8
_ZTK_OBJECT, _ZTK_BOOL, _ZTK_BYTE = 9, 11, 17
_GET, _PUT, _METHOD = 1, 2, 3

_OLE_EPOCH = datetime.datetime(1899, 12, 30)

try:
    from ._signatures import SIGNATURES as _SIGNATURES
except ImportError:  # the module copied on its own
    _SIGNATURES = {}


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


class TypeMismatchError(Error, TypeError):
    """A value that does not convert to the member's type (the library's
    error 13), naming the class and member: also a TypeError."""


class _NullType:
    def __repr__(self):
        return "ztkdb.Null"


Null = _NullType()


def _load():
    candidates = []
    if os.environ.get("ZTKDB_LIBRARY"):
        candidates.append(os.environ["ZTKDB_LIBRARY"])
    here = os.path.dirname(os.path.abspath(__file__))
    # In the package (a wheel), then the tree it is installed in:
    # <prefix>/lib/python3/dist-packages/ztkdb -> <prefix>/lib and its multiarch
    # folder (lib/x86_64-linux-gnu); last the system's loader.
    candidates.append(os.path.join(here, "libztkdb.so.0"))
    lib = os.path.normpath(os.path.join(here, "..", "..", ".."))
    candidates.append(os.path.join(lib, "libztkdb.so.0"))
    candidates.extend(sorted(glob.glob(os.path.join(lib, "*-linux-*", "libztkdb.so.0"))))
    candidates.append("libztkdb.so.0")
    last = None
    for path in candidates:
        if os.path.sep in path and not os.path.exists(path):
            continue
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
class _Box(ctypes.Structure):
    _fields_ = [("text", ctypes.c_char_p), ("title", ctypes.c_char_p), ("critical", ctypes.c_int32),
                ("member", ctypes.c_char_p), ("number", ctypes.c_int32)]


_BOX_SINK = ctypes.CFUNCTYPE(None, ctypes.POINTER(_Box), ctypes.c_void_p)
_lib.ztk_set_box_sink.argtypes = [_BOX_SINK, ctypes.c_void_p]
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
        if x.tzinfo is not None and x.utcoffset() is not None:
            # The database holds the desk's wall-clock time: an aware time
            # is stored as this machine's local time of the same instant.
            x = x.astimezone().replace(tzinfo=None)
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
            return _wrap(handle)
    finally:
        _lib.ztk_value_clear(ctypes.byref(v))
    raise Error(13, "ztkdb", "Type mismatch (value of kind %d)" % t)


_members = {}


def _member_table(class_name):
    """Per member, lower-cased: its own spelling and {kind: (min, max) args}."""
    table = _members.get(class_name)
    if table is None:
        table = {}
        name_b = class_name.encode()
        for i in range(_lib.ztk_member_count(name_b)):
            name = ctypes.c_char_p()
            kind, lo, hi = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
            _check(_lib.ztk_member_info(name_b, i, ctypes.byref(name), ctypes.byref(kind),
                                        ctypes.byref(lo), ctypes.byref(hi)))
            spelled = name.value.decode()
            entry = table.setdefault(spelled.lower(), (spelled, {}))
            entry[1][kind.value] = (lo.value, hi.value)
        _members[class_name] = table
    return table


def _is_method(kinds):
    return _METHOD in kinds or (_GET in kinds and kinds[_GET][1] > 0)


def _named(error, what):
    """The library's error for a value given to `what`, naming it."""
    if error.number == 13:
        return TypeMismatchError(13, what, "Type mismatch: %s" % error.description)
    if error.number == 94:
        return Error(94, what, "Invalid use of Null: %s takes a value" % what)
    if error.number in (6, 5) and error.source in ("ztkdb", "ZTkDb.Variant"):
        return Error(error.number, what, error.description)
    return error


class Object:
    """An object of the library, reached by member name (without regard to
    case). Creatable classes are subclasses of this one; objects the library
    hands out (rows of a list, a list's Recordset, a workspace) are made of
    their own class."""

    __slots__ = ("_handle", "__weakref__")
    _class = "Object"

    def __init__(self):
        if not _creatable(self._class):
            raise TypeError("ztkdb.%s objects are handed out by the library, not created"
                            % self._class)
        handle = ctypes.c_void_p()
        _check(_lib.ztk_create(("ZTkDb." + self._class).encode(), ctypes.byref(handle)))
        object.__setattr__(self, "_handle", handle.value)

    def __del__(self):
        self.close()

    def close(self):
        """Ends the use of this object (a CTkDb closes its database first);
        using it afterwards raises error 91."""
        handle = getattr(self, "_handle", None)
        if handle and _lib is not None:
            object.__setattr__(self, "_handle", None)
            _lib.ztk_release(handle)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()
        return False

    def __repr__(self):
        if not getattr(self, "_handle", None):
            return "<ztkdb.%s (closed)>" % self._class
        if "id" in _member_table(self._class):
            try:
                return "<ztkdb.%s Id=%s>" % (self._class, self.Id)
            except Error:
                pass
        return "<ztkdb.%s>" % self._class

    def __dir__(self):
        own = [spelled for spelled, _ in _member_table(self._class).values()]
        return sorted(set(own) | set(object.__dir__(self)))

    def _call(self, name, *args):
        keep = []
        try:
            argv = (_Value * max(1, len(args)))(*[_to_value(a, keep) for a in args])
        except Error as e:
            raise _named(e, "%s.%s" % (self._class, name)) from None
        result = _Value()
        try:
            _check(_lib.ztk_call(self._handle, name.encode(), len(args), argv,
                                 ctypes.byref(result)))
        except Error as e:
            raise _named(e, "%s.%s" % (self._class, name)) from None
        finally:
            _raise_pending_conflict()
        return _from_value(result)

    def __getattr__(self, name):
        if name.startswith("_"):
            raise AttributeError(name)
        entry = _member_table(self._class).get(name.lower())
        if entry is None or not _is_method(entry[1]):
            # A property, or a name the class does not have: the library
            # answers the latter with its error 438.
            result = _Value()
            _check(_lib.ztk_get(self._handle, name.encode(), ctypes.byref(result)))
            return _from_value(result)
        spelled, kinds = entry
        return _method(self._class, spelled, kinds.get(_METHOD, kinds.get(_GET))[0]).__get__(self)

    def __setattr__(self, name, value):
        keep = []
        what = "%s.%s" % (self._class, name)
        try:
            # None is Python's Null: a property refuses it (94) rather than
            # storing the empty value's 30.12.1899 or "".
            v = _to_value(Null if value is None else value, keep)
            _check(_lib.ztk_put(self._handle, name.encode(), ctypes.byref(v)))
        except Error as e:
            raise _named(e, what) from None

    # An object is an object: "if record:" must not ask a record for a Count.
    def __bool__(self):
        return True


class _List(Object):
    """A list: callable with a row id (ItemByRecId), iterable from its first
    row, with a length."""

    __slots__ = ()

    def __call__(self, lRecId):
        return self._call("ItemByRecId", lRecId)

    def __iter__(self):
        # Each walk keeps its own place, so a walk inside a walk of the same
        # list does not move the outer one on.
        item = self._call("MoveFirst")
        while item is not None:
            position = self.AbsolutePosition
            yield item
            if self.AbsolutePosition != position:
                self.AbsolutePosition = position
            item = self._call("MoveNext")

    def __len__(self):
        return self.Count


_classes = {}
_creatable_names = set()


def _creatable(name):
    return name in _creatable_names


_OMITTED = object()


def _positional(where, names, args, kwargs):
    """Keyword arguments in their places; an optional one left out stays
    out, a required one left out is the library's error 449."""
    if names is None:
        raise TypeError("%s takes no keyword arguments" % where)
    twice = [n for n in names[:len(args)] if n in kwargs]
    if twice:
        raise TypeError("%s got %s by position and by name" % (where, ", ".join(twice)))
    out = list(args) + [kwargs.pop(n, _OMITTED) for n in names[len(args):]]
    if kwargs:
        raise TypeError("%s has no parameter %s" % (where, ", ".join(sorted(kwargs))))
    while out and out[-1] is _OMITTED:
        out.pop()
    return [None if a is _OMITTED else a for a in out]


def _method(class_name, spelled, required=0):
    names = _SIGNATURES.get(class_name, {}).get(spelled)
    where = "%s.%s" % (class_name, spelled)

    def call(self, *args, **kwargs):
        if kwargs:
            args = _positional(where, names, args, kwargs)
        return self._call(spelled, *args)

    call.__name__ = call.__qualname__ = spelled
    if names is not None:
        kind = inspect.Parameter.POSITIONAL_OR_KEYWORD
        call.__signature__ = inspect.Signature(
            [inspect.Parameter("self", kind)] +
            [inspect.Parameter(n, kind, default=inspect.Parameter.empty if i < required else None)
             for i, n in enumerate(names)])
    return call


def _property(spelled, kinds):
    def get(self):
        result = _Value()
        _check(_lib.ztk_get(self._handle, spelled.encode(), ctypes.byref(result)))
        return _from_value(result)

    def put(self, value):
        Object.__setattr__(self, spelled, value)

    access = "read and write" if _PUT in kinds and _GET in kinds else (
        "write only" if _PUT in kinds else "read only")
    return property(get if _GET in kinds else None, put if _PUT in kinds else None,
                    doc="%s (%s)" % (spelled, access))


def _class_for(name):
    cls = _classes.get(name)
    if cls is None:
        table = _member_table(name)
        body = {"__slots__": (), "_class": name, "__module__": __name__,
                "__doc__": "ZTkDb.%s. Members answer by name without regard to case; "
                           "errors raise ztkdb.Error." % name}
        for spelled, kinds in table.values():
            if spelled.startswith("_") or spelled in ("close",):
                continue
            if _is_method(kinds):
                body[spelled] = _method(name, spelled, kinds.get(_METHOD, kinds.get(_GET))[0])
            else:
                body[spelled] = _property(spelled, kinds)
        base = _List if "itembyrecid" in table else Object
        cls = type(name, (base,), body)
        _classes[name] = cls
    return cls


def _wrap(handle):
    obj = object.__new__(_class_for(_lib.ztk_class_of(handle).decode()))
    object.__setattr__(obj, "_handle", handle)
    return obj


def classes():
    """The class names hosts create (ZTkDb.<name>)."""
    return [_lib.ztk_class_name(i).decode() for i in range(_lib.ztk_class_count())]


for _name in classes():
    _creatable_names.add(_name)
    globals()[_name] = _class_for(_name)
    __all__.append(_name)


class ConflictError(Error):
    """A write that wrote nothing, raised (with raise_conflicts(True)) from
    the call that showed its box: number 3197 when the row was changed or
    deleted by another writer since it was read, 3155 when a create's insert
    wrote no row. `member` names the call, `text` is the box's text."""

    def __init__(self, number, member, text):
        super().__init__(number, member, text)
        self.member = member
        self.text = text


class MessageBox(tuple):
    """A message box: text, title, critical, member (the member that showed
    it) and number (3197 write conflict, 3155 create wrote nothing, a failed
    open's error number, 0 for a box that only informs)."""

    __slots__ = ()
    _fields = ("text", "title", "critical", "member", "number")

    def __new__(cls, text, title, critical, member, number):
        return tuple.__new__(cls, (text, title, critical, member, number))

    text = property(lambda self: self[0])
    title = property(lambda self: self[1])
    critical = property(lambda self: self[2])
    member = property(lambda self: self[3])
    number = property(lambda self: self[4])

    def __repr__(self):
        return "MessageBox(text=%r, title=%r, critical=%r, member=%r, number=%r)" % self


_CONFLICTS = (3197, 3155)
_state = threading.local()
_hook = None
_conflicts_raise = False
_installed = None


def _raise_pending_conflict():
    pending = getattr(_state, "conflict", None)
    if pending is not None:
        _state.conflict = None
        raise ConflictError(pending.number, pending.member, pending.text)


def _box_sink(box_p, _user):
    box = box_p.contents
    call = MessageBox(box.text.decode("utf-8", "replace"), box.title.decode("utf-8", "replace"),
                      bool(box.critical), box.member.decode("utf-8", "replace"), box.number)
    if _conflicts_raise and call.number in _CONFLICTS:
        _state.conflict = call
        return
    if _hook is not None:
        try:
            _hook(call)
        except Exception:  # a hook's failure must not fail the write
            pass
    else:
        # The library's own default: one line on stderr.
        sys.stderr.write("%s%s: %s\n" % (call.title, " [critical]" if call.critical else "",
                                          " ".join(call.text.splitlines())))


def _install_sink():
    global _installed
    if _hook is None and not _conflicts_raise:
        _installed = None
        _check(_lib.ztk_set_box_sink(_BOX_SINK(), None))
    elif _installed is None:
        _installed = _BOX_SINK(_box_sink)  # kept alive while installed
        _check(_lib.ztk_set_box_sink(_installed, None))


def set_message_hook(hook):
    """hook(box) receives the library's message boxes as MessageBox tuples
    (text, title, critical, member, number); None restores the default (a
    line on stderr)."""
    global _hook
    _hook = hook
    _install_sink()


def raise_conflicts(enabled=True):
    """For scripts: a write that wrote nothing (3197, 3155) raises
    ConflictError from the call that showed its box, instead of the box.
    The default (False) is the component's: the box, and the call returns."""
    global _conflicts_raise
    _conflicts_raise = bool(enabled)
    _install_sink()


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
