"""The Python package as users get it: pip installs it from ./python, and its
type information is the library's own, current."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def test_the_type_information_is_written_from_the_library():
    sys.path.insert(0, str(ROOT / "python"))
    import make_stub
    committed = (ROOT / "python" / "ztkdb.pyi").read_text(encoding="utf-8")
    assert make_stub.stub() == committed, "python/ztkdb.pyi is stale: run python/make_stub.py"
    assert "def ReadByDone(self" in committed
    assert "def __iter__" in committed


def test_pip_installs_the_module_and_it_imports():
    with tempfile.TemporaryDirectory() as scratch:
        # A copy: building writes build/ and *.egg-info beside the sources.
        source = pathlib.Path(scratch) / "source"
        shutil.copytree(ROOT / "python", source)
        target = str(pathlib.Path(scratch) / "target")
        subprocess.run([sys.executable, "-m", "pip", "install", "--quiet", "--no-build-isolation",
                        "--no-index", "--no-deps", "--target", target, str(source)],
                       check=True)
        assert (pathlib.Path(target) / "ztkdb.py").exists()
        found = subprocess.run([sys.executable, "-c", "import ztkdb; print(len(ztkdb.classes()))"],
                               cwd=target, env=dict(os.environ, PYTHONPATH=target), check=True,
                               capture_output=True, text=True)
        assert found.stdout.strip() == "12"
