"""Builds the ztkdb wheel with the standard library alone, so that
``pip install ./python`` needs nothing a fresh venv lacks and no network.

PEP 517 hooks: build_wheel, build_sdist, and build_editable (PEP 660).
A wheel holds the package (module, stub, py.typed). With the config setting
``library=PATH`` (or ZTKDB_WHEEL_LIBRARY in the environment) it also holds
that shared library as ztkdb/libztkdb.so.0, which the module loads first,
and is tagged for this platform instead of py3-none-any.
"""
import base64
import hashlib
import io
import os
import re
import sysconfig
import tarfile
import zipfile

_HERE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
_PACKAGE_FILES = ("__init__.py", "__init__.pyi", "py.typed", "_signatures.py")


def _project():
    with open(os.path.join(_HERE, "pyproject.toml"), encoding="utf-8") as f:
        text = f.read()

    def field(name):
        return re.search(r'^%s\s*=\s*"([^"]*)"' % name, text, re.M).group(1)

    return field("name"), field("version"), field("description"), field("requires-python")


def _metadata():
    name, version, summary, requires = _project()
    with open(os.path.join(_HERE, "README.md"), encoding="utf-8") as f:
        readme = f.read()
    return ("Metadata-Version: 2.1\nName: %s\nVersion: %s\nSummary: %s\n"
            "Requires-Python: %s\nLicense: Proprietary\n"
            "Classifier: Programming Language :: Python :: 3\n"
            "Classifier: Operating System :: POSIX :: Linux\n"
            "Description-Content-Type: text/markdown\n\n%s" % (name, version, summary, requires,
                                                                readme))


def _library(config_settings):
    path = (config_settings or {}).get("library") or os.environ.get("ZTKDB_WHEEL_LIBRARY")
    if path and not os.path.isfile(path):
        raise FileNotFoundError("ztkdb wheel: no library at %s" % path)
    return path


def _tag(library):
    if not library:
        return "py3-none-any"
    return "py3-none-" + re.sub(r"[-.]", "_", sysconfig.get_platform())


class _Wheel:
    def __init__(self, directory, tag):
        name, version = _project()[:2]
        self.dist_info = "%s-%s.dist-info" % (name, version)
        self.filename = "%s-%s-%s.whl" % (name, version, tag)
        self.path = os.path.join(directory, self.filename)
        self.zip = zipfile.ZipFile(self.path, "w", zipfile.ZIP_DEFLATED)
        self.records = []

    def add(self, arcname, data, mode=0o644):
        info = zipfile.ZipInfo(arcname, date_time=(2020, 1, 1, 0, 0, 0))
        info.external_attr = (mode | 0o100000) << 16
        info.compress_type = zipfile.ZIP_DEFLATED
        self.zip.writestr(info, data)
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        self.records.append("%s,sha256=%s,%d" % (arcname, digest, len(data)))

    def finish(self, tag):
        self.add(self.dist_info + "/METADATA", _metadata().encode())
        self.add(self.dist_info + "/WHEEL", ("Wheel-Version: 1.0\nGenerator: ztkdb_build\n"
                                             "Root-Is-Purelib: %s\nTag: %s\n"
                                             % ("true" if tag.endswith("any") else "false",
                                                tag)).encode())
        self.add(self.dist_info + "/top_level.txt", b"ztkdb\n")
        record = "\n".join(self.records + [self.dist_info + "/RECORD,,"]) + "\n"
        self.zip.writestr(zipfile.ZipInfo(self.dist_info + "/RECORD",
                                          date_time=(2020, 1, 1, 0, 0, 0)), record)
        self.zip.close()
        return self.filename


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    library = _library(config_settings)
    tag = _tag(library)
    wheel = _Wheel(wheel_directory, tag)
    for name in _PACKAGE_FILES:
        with open(os.path.join(_HERE, "ztkdb", name), "rb") as f:
            wheel.add("ztkdb/" + name, f.read())
    if library:
        with open(library, "rb") as f:
            wheel.add("ztkdb/libztkdb.so.0", f.read(), 0o755)
    return wheel.finish(tag)


def build_editable(wheel_directory, config_settings=None, metadata_directory=None):
    # A .pth file puts the source folder on the path.
    wheel = _Wheel(wheel_directory, "py3-none-any")
    wheel.add("ztkdb_editable.pth", (_HERE + "\n").encode())
    return wheel.finish("py3-none-any")


def build_sdist(sdist_directory, config_settings=None):
    name, version = _project()[:2]
    base = "%s-%s" % (name, version)
    path = os.path.join(sdist_directory, base + ".tar.gz")
    files = ["pyproject.toml", "README.md", "make_stub.py", "build_backend/ztkdb_build.py"]
    files += ["ztkdb/" + n for n in _PACKAGE_FILES]
    with tarfile.open(path, "w:gz", format=tarfile.PAX_FORMAT) as tar:
        for rel in files:
            tar.add(os.path.join(_HERE, rel), arcname=base + "/" + rel)
        pkg_info = _metadata().encode()
        info = tarfile.TarInfo(base + "/PKG-INFO")
        info.size = len(pkg_info)
        tar.addfile(info, io.BytesIO(pkg_info))
    return base + ".tar.gz"


def get_requires_for_build_wheel(config_settings=None):
    return []


def get_requires_for_build_sdist(config_settings=None):
    return []


def get_requires_for_build_editable(config_settings=None):
    return []
