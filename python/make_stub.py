"""Writes the package's type information from the library and its headers:
ztkdb/__init__.pyi (what editors and mypy read: every class with its
properties and methods under the names the library answers to, with the
headers' parameter names, Python types and contracts) and
ztkdb/_signatures.py (the parameter names, for keyword arguments).

    ZTKDB_LIBRARY=build/libztkdb.so PYTHONPATH=python python3 python/make_stub.py
"""
import ctypes
import os
import re
import sys

import ztkdb

HERE = os.path.dirname(os.path.abspath(__file__))
HEADERS = os.path.join(HERE, "..", "include", "ztkdb")

_GET, _PUT, _METHOD = 1, 2, 3

_TYPES = {
    "int32_t": "int", "int16_t": "int", "int64_t": "int", "uint8_t": "int", "long": "int",
    "int": "int", "bool": "bool", "double": "float", "std::string": "str", "Date": "datetime.datetime",
    "Currency": "decimal.Decimal", "Variant": "Any", "void": "None",
}


def members(class_name):
    """The library's own table: spelled name -> {kind: (min, max)}."""
    lib = ztkdb._lib
    name_b = class_name.encode()
    found = {}
    for i in range(lib.ztk_member_count(name_b)):
        name = ctypes.c_char_p()
        kind, lo, hi = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
        ztkdb._check(lib.ztk_member_info(name_b, i, ctypes.byref(name), ctypes.byref(kind),
                                         ctypes.byref(lo), ctypes.byref(hi)))
        found.setdefault(name.value.decode(), {})[kind.value] = (lo.value, hi.value)
    return found


def python_type(cpp, item=None):
    """The Python type of a C++ parameter or result type."""
    t = re.sub(r"\b(const|ZTkDb::)\b|&|::ZTkDb", "", cpp).strip()
    t = t.replace("ZTkDb::", "").strip()
    m = re.fullmatch(r"std::optional<(.+)>", t)
    if m:
        return "Optional[%s]" % python_type(m.group(1), item)
    m = re.fullmatch(r"std::unique_ptr<(.+)>", t)
    if m:
        inner = m.group(1).strip()
        return "Optional[%s]" % (item if inner == "Record" and item else inner)
    if re.fullmatch(r"std::vector<std::string>", t):
        return "Sequence[str]"
    if t in _TYPES:
        return _TYPES[t]
    if re.fullmatch(r"[A-Z][A-Za-z]*(Types|Constants|Typ|Order)", t) or t.endswith("Constants"):
        return "int"  # the enumerations
    return "Any"


def _split(text, sep=","):
    parts, depth, cur = [], 0, ""
    for c in text:
        if c in "<([{":
            depth += 1
        elif c in ">)]}":
            depth -= 1
        if c == sep and depth == 0:
            parts.append(cur)
            cur = ""
        else:
            cur += c
    if cur.strip():
        parts.append(cur)
    return parts


class Declaration:
    def __init__(self, result, name, params, doc):
        self.result, self.name, self.params, self.doc = result, name, params, doc


def _declarations(header, class_name):
    """The public declarations of `class_name` in `header`: name -> list of
    Declaration (getter and setter share a name)."""
    with open(os.path.join(HEADERS, header), encoding="utf-8") as f:
        text = f.read()
    start = re.search(r"class ZTKDB_API %s\b[^{;]*\{" % re.escape(class_name), text)
    if not start:
        return {}
    body, depth, i = "", 1, start.end()
    while depth:
        c = text[i]
        depth += c == "{"
        depth -= c == "}"
        body += c
        i += 1
    found = {}
    public = False
    doc = []
    statement = ""
    nested = 0
    for line in body.splitlines():
        s = line.strip()
        if re.fullmatch(r"(public|protected|private):", s):
            public = s == "public:"
            doc = []
            continue
        if s.startswith("///"):
            doc.append(s[3:].lstrip("<").strip())
            continue
        if s.startswith("//") or not s:
            continue
        statement += " " + s
        nested += s.count("{") - s.count("}")
        if nested > 0 or not (statement.rstrip().endswith(";") or statement.rstrip().endswith("}")):
            continue
        decl, statement = statement.strip(), ""
        # A trailing "///<" on the same line documents it.
        m = re.search(r"///<?(.*)$", decl)
        if m:
            doc.append(m.group(1).strip())
            decl = decl[:m.start()].strip()
        if public:
            m = re.match(r"(?:static\s+)?(?P<ret>[\w:<>,\s&*]+?)\s*\b(?P<name>\w+)\s*\((?P<params>.*)\)"
                         r"\s*(const)?\s*(noexcept)?\s*(override)?\s*(=\s*\w+)?\s*[;{]", decl)
            if m and not m.group("name").startswith("operator"):
                params = []
                for p in _split(m.group("params")):
                    p = p.strip()
                    default = "=" in p
                    p = p.split("=")[0].strip()
                    pm = re.match(r"(?P<type>.+?)\s*\b(?P<pname>\w+)$", p)
                    if pm:
                        params.append((pm.group("type"), pm.group("pname"), default))
                found.setdefault(m.group("name").lower(), []).append(
                    Declaration(m.group("ret").strip(), m.group("name"), params, " ".join(doc)))
        doc = []
    return found


def _header_of(class_name):
    path = os.path.join(HEADERS, class_name + ".h")
    return class_name + ".h" if os.path.exists(path) else None


def declarations(class_name):
    """Public declarations of a class and of the list base it derives from."""
    header = _header_of(class_name)
    if not header:
        return {}, None
    found = _declarations(header, class_name)
    item = None
    with open(os.path.join(HEADERS, header), encoding="utf-8") as f:
        m = re.search(r"class ZTKDB_API %s : public RecordList<(\w+)>" % class_name, f.read())
    if m:
        item = m.group(1)
        for name, decls in _declarations("RecordList.h", "RecordList").items():
            found.setdefault(name, decls)
    return found, item


def _doc(text, indent):
    """The contract's first sentence, Doxygen commands left out."""
    text = re.sub(r"^[\\@]brief\s+", "", " ".join(text.split()))
    text = re.split(r"\s*[\\@](?:param|return|returns|throws|note|see)\b", text)[0]
    text = re.split(r"(?<=[.!?])\s", text)[0].strip()
    text = text.replace('"""', "'''").replace("\\", "\\\\")
    return '%s"""%s"""' % (indent, text) if text else ""


def stub_and_signatures():
    lines = ['"""Type information of ztkdb, written by make_stub.py from the library."""',
             "import datetime", "import decimal",
             "from typing import Any, Callable, Iterator, NamedTuple, Optional, Sequence",
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
    signatures = {}
    handed_out = ["Recordset", "Workspace"]
    for class_name in ztkdb.classes() + handed_out:
        table = members(class_name)
        found, item = declarations(class_name)
        lines.append("class %s(Object):" % class_name)
        body = []
        sigs = {}
        for name, kinds in sorted(table.items()):
            header = found.get(name.lower(), [])
            if _METHOD in kinds or (_GET in kinds and kinds[_GET][1] > 0):
                lo, hi = kinds.get(_METHOD, kinds.get(_GET))
                decl = next((d for d in header if len(d.params) >= lo), None)
                if decl and len(decl.params) == hi:
                    params = ["%s: %s%s" % (pn, python_type(pt, item), " = ..." if i >= lo else "")
                              for i, (pt, pn, _) in enumerate(decl.params)]
                    result = python_type(decl.result, item)
                    sigs[name] = tuple(pn for _, pn, _ in decl.params)
                else:
                    params = ["a%d: Any%s" % (i, " = ..." if i >= lo else "") for i in range(hi)]
                    result = "Any"
                body.append("    def %s(self%s) -> %s:" % (name, "".join(", " + p for p in params),
                                                          result))
                body.append(_doc(decl.doc if decl else "", "        ") or "        ...")
                if decl and decl.doc:
                    body.append("        ...")
            else:
                getter = next((d for d in header if not d.params), None)
                setter = next((d for d in header if len(d.params) == 1), None)
                typ = python_type(getter.result, item) if getter else (
                    python_type(setter.params[0][0], item) if setter else "Any")
                body.append("    %s: %s" % (name, typ))
                doc = (getter and getter.doc) or (setter and setter.doc)
                if doc:
                    body.append(_doc(doc, "    "))
        if item:
            body.append("    def __call__(self, lRecId: int) -> Optional[%s]: ..." % item)
            body.append("    def __iter__(self) -> Iterator[%s]: ..." % item)
            body.append("    def __len__(self) -> int: ...")
        if class_name not in handed_out:
            body.append("    def __init__(self) -> None: ...")
        lines.extend(body or ["    ..."])
        lines.append("")
        if sigs:
            signatures[class_name] = sigs
    for constant in sorted(n for n in dir(ztkdb) if n[:2] in ("so", "he", "os", "ms") and
                           isinstance(getattr(ztkdb, n), int)):
        lines.append("%s: int" % constant)
    stub = "\n".join(line for line in lines if line is not None) + "\n"
    sig_lines = ['"""Parameter names of the library\'s methods, for keyword arguments;',
                 'written by make_stub.py from the public headers."""', "", "SIGNATURES = {"]
    for class_name in sorted(signatures):
        sig_lines.append("    %r: {" % class_name)
        for name in sorted(signatures[class_name]):
            sig_lines.append("        %r: %r," % (name, signatures[class_name][name]))
        sig_lines.append("    },")
    sig_lines.append("}")
    return stub, "\n".join(sig_lines) + "\n"


def stub():
    return stub_and_signatures()[0]


if __name__ == "__main__":
    text, sigs = stub_and_signatures()
    package = os.path.join(HERE, "ztkdb")
    with open(os.path.join(package, "__init__.pyi"), "w", encoding="utf-8") as out:
        out.write(text)
    with open(os.path.join(package, "_signatures.py"), "w", encoding="utf-8") as out:
        out.write(sigs)
