"""Writes ztkdb/__init__.pyi, the type information editors and mypy use,
from the library's own type information (ztk_member_info): every class with
its properties and methods, under the names the library answers to.

    ZTKDB_LIBRARY=build/libztkdb.so PYTHONPATH=python python3 python/make_stub.py \
        python/ztkdb/__init__.pyi
"""
import ctypes
import sys

import ztkdb

_KIND_NAMES = {1: "get", 2: "put", 3: "method"}


def members(class_name):
    lib = ztkdb._lib
    name_b = class_name.encode()
    found = {}
    for i in range(lib.ztk_member_count(name_b)):
        name = ctypes.c_char_p()
        kind, lo, hi = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
        ztkdb._check(lib.ztk_member_info(name_b, i, ctypes.byref(name), ctypes.byref(kind),
                                         ctypes.byref(lo), ctypes.byref(hi)))
        entry = found.setdefault(name.value.decode(), {})
        entry[kind.value] = (lo.value, hi.value)
    return found


def stub():
    lines = ['"""Type information of ztkdb, written by make_stub.py from the library."""',
             "import datetime", "from typing import Any, Callable, Iterator, NamedTuple, Optional",
             "", "class Error(Exception):", "    number: int", "    source: str",
             "    description: str",
             "    def __init__(self, number: int, source: str, description: str) -> None: ...",
             "", "class MemberError(Error, AttributeError): ...",
             "class TypeMismatchError(Error, TypeError): ...", "",
             "class ConflictError(Error):", "    member: str", "    text: str", "",
             "class MessageBox(NamedTuple):", "    text: str", "    title: str",
             "    critical: bool", "    member: str", "    number: int", "",
             "Null: Any", "NoDate: datetime.datetime", "",
             "def classes() -> list[str]: ...",
             "def set_message_hook(hook: Optional[Callable[[MessageBox], None]]) -> None: ...",
             "def raise_conflicts(enabled: bool = ...) -> None: ...",
             "def set_trace(hook: Optional[Callable[[str, str, bool, float, int], None]]) -> None: ...",
             "", "class Object:", "    def close(self) -> None: ...",
             "    def __enter__(self: Any) -> Any: ...",
             "    def __exit__(self, *exc: Any) -> bool: ...", ""]
    for class_name in ztkdb.classes():
        lines.append("class %s(Object):" % class_name)
        body = []
        for name, kinds in sorted(members(class_name).items()):
            if 3 in kinds or (1 in kinds and kinds[1][1] > 0):
                lo, hi = kinds.get(3, kinds.get(1))
                params = ", ".join(["a%d: Any" % i for i in range(lo)] +
                                   ["a%d: Any = ..." % i for i in range(lo, hi)])
                body.append("    def %s(self%s) -> Any: ..." % (name, ", " + params if params else ""))
            else:
                body.append("    %s: Any" % name)
        if any(name.lower() == "itembyrecid" for name in members(class_name)):
            # Lists: callable with a row id, iterable from the first row.
            body.append("    def __call__(self, lRecId: int) -> Any: ...")
            body.append("    def __iter__(self) -> Iterator[Any]: ...")
            body.append("    def __len__(self) -> int: ...")
        lines.extend(body or ["    ..."])
        lines.append("")
    for constant in sorted(n for n in dir(ztkdb) if n[:2] in ("so", "he", "os", "ms") and
                           isinstance(getattr(ztkdb, n), int)):
        lines.append("%s: int" % constant)
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    text = stub()
    if len(sys.argv) > 1:
        with open(sys.argv[1], "w", encoding="utf-8") as out:
            out.write(text)
    else:
        sys.stdout.write(text)
