#!/usr/bin/env bash
# Installs the build into a scratch prefix, then builds C++ consumers with
# find_package(ZTkDb) (shared and static) and C and C++ consumers with
# pkg-config against it, none setting a language level, and runs them; and
# checks the installed tool and its files.
set -euo pipefail
build=$1
prefix=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(dirname "$(find "$prefix" -name 'libztkdb.so' | head -1)")
cmake -S "$here" -B "$prefix/consumer-build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$prefix/consumer-build" >/dev/null
LD_LIBRARY_PATH="$libdir" "$prefix/consumer-build/consumer"
"$prefix/consumer-build/consumer_static"
# The tool, its manual page and completion, the schema files.
"$prefix/bin/ztk" --version
test -s "$prefix/share/man/man1/ztk.1.gz"
bash -n "$prefix/share/bash-completion/completions/ztk"
test -s "$prefix/share/ztkdb/schema/mariadb.sql"
export PKG_CONFIG_PATH="$libdir/pkgconfig"
cc "$here/consumer.c" $(pkg-config --cflags --libs ztkdb) -o "$prefix/c-consumer"
LD_LIBRARY_PATH="$libdir" "$prefix/c-consumer"
# C++ through pkg-config with the compiler's default language level.
c++ "$here/consumer.cpp" $(pkg-config --cflags --libs ztkdb) -o "$prefix/cxx-consumer"
LD_LIBRARY_PATH="$libdir" "$prefix/cxx-consumer"
# Every package's copyright; the module beside the tree finds the tree's
# library without being told.
test -s "$prefix/share/doc/libztkdb0/copyright"
(cd "$prefix" && PYTHONPATH="$prefix/lib/python3/dist-packages" env -u ZTKDB_LIBRARY \
  python3 -c "import ztkdb, os; assert ztkdb._lib._name.startswith('$prefix'), ztkdb._lib._name")
