"""The Python package as users get it: pip installs it from ./python offline
into a fresh venv, the wheel with the library inside installs and imports
there on its own, mypy finds its types, and its type information is the
library's own, current."""
import importlib.util
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
STUB = ROOT / "python" / "ztkdb" / "__init__.pyi"


def test_the_type_information_is_written_from_the_library():
    sys.path.insert(0, str(ROOT / "python"))
    import make_stub
    stub, signatures = make_stub.stub_and_signatures()
    committed = STUB.read_text(encoding="utf-8")
    assert stub == committed, "python/ztkdb/__init__.pyi is stale: run python/make_stub.py"
    assert signatures == (STUB.parent / "_signatures.py").read_text(encoding="utf-8"), \
        "python/ztkdb/_signatures.py is stale: run python/make_stub.py"
    # The headers' names and types, not placeholders.
    assert "def ReadByDone(self, bDone: bool, eSortOrder: int = ..., iShowingDays: int = ...)" \
        in committed
    assert "def MoveFirst(self) -> Optional[CAuftrag]" in committed
    assert "    Kosten: decimal.Decimal" in committed
    assert "def __iter__(self) -> Iterator[CAuftrag]" in committed
    assert "a0: Any" not in committed


def fresh_venv(scratch):
    """A venv as a user makes one: pip and nothing else, no network."""
    venv = pathlib.Path(scratch) / "venv"
    made = subprocess.run([sys.executable, "-m", "venv", str(venv)], capture_output=True)
    if made.returncode != 0:
        pytest.skip("no venv module here: %s" % made.stderr.decode()[-200:])
    return venv / "bin" / "python"


def pip(python, *args):
    env = dict(os.environ, PIP_NO_INDEX="1", PIP_DISABLE_PIP_VERSION_CHECK="1")
    subprocess.run([str(python), "-m", "pip", "install", "--quiet", *args], check=True, env=env)


def imports(python, cwd, env_extra=None):
    env = {k: v for k, v in os.environ.items() if k not in ("PYTHONPATH",)}
    env.update(env_extra or {})
    return subprocess.run([str(python), "-c", "import ztkdb; print(len(ztkdb.classes()))"],
                          cwd=cwd, env=env, check=True, capture_output=True, text=True)


def test_pip_installs_the_source_offline_in_a_fresh_venv():
    with tempfile.TemporaryDirectory() as scratch:
        # A copy: nothing may be written beside the sources.
        source = pathlib.Path(scratch) / "source"
        shutil.copytree(ROOT / "python", source, ignore=shutil.ignore_patterns("__pycache__"))
        python = fresh_venv(scratch)
        pip(python, str(source))
        found = imports(python, scratch)
        assert found.stdout.strip() == "12"
        site = subprocess.run([str(python), "-c", "import ztkdb; print(ztkdb.__file__)"],
                              cwd=scratch, check=True, capture_output=True, text=True)
        package = pathlib.Path(site.stdout.strip()).parent
        assert (package / "__init__.pyi").exists() and (package / "py.typed").exists()


def test_the_wheel_carries_the_library_and_mypy_reads_its_types():
    library = pathlib.Path(os.environ["ZTKDB_LIBRARY"]).resolve()
    sys.path.insert(0, str(ROOT / "python" / "build_backend"))
    import ztkdb_build
    with tempfile.TemporaryDirectory() as scratch:
        name = ztkdb_build.build_wheel(scratch, {"library": str(library)})
        assert name.startswith("ztkdb-") and not name.endswith("-any.whl")
        python = fresh_venv(scratch)
        pip(python, os.path.join(scratch, name))
        # No ZTKDB_LIBRARY and no installed tree: the wheel's own library.
        env = {"ZTKDB_LIBRARY": ""}
        assert imports(python, scratch, env).stdout.strip() == "12"
        bare = {k: v for k, v in os.environ.items() if k not in ("PYTHONPATH", "ZTKDB_LIBRARY")}
        where = subprocess.run([str(python), "-c", "import ztkdb; print(ztkdb._lib._name)"],
                               cwd=scratch, env=bare, check=True, capture_output=True, text=True)
        assert "site-packages/ztkdb/libztkdb.so.0" in where.stdout, where.stdout
        script = pathlib.Path(scratch) / "use.py"
        script.write_text("import ztkdb\n"
                          "order = ztkdb.CAuftrag()\n"
                          "box: ztkdb.MessageBox\n"
                          "ztkdb.raise_conflicts(True)\n"
                          "n: int = ztkdb.classes()\n")  # a list is no int: mypy says so
        if importlib.util.find_spec("mypy") is None:
            pytest.skip("mypy is not installed (scripts/setup installs python3-mypy)")
        checked = subprocess.run([sys.executable, "-m", "mypy", "--python-executable", str(python), "--no-incremental",
                                  "--cache-dir", os.path.join(scratch, "cache"), str(script)],
                                 capture_output=True, text=True)
        assert "missing library stubs" not in checked.stdout, checked.stdout
        assert "Incompatible types in assignment" in checked.stdout, checked.stdout
        assert checked.stdout.count("error:") == 1, checked.stdout
