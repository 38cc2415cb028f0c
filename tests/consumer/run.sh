#!/usr/bin/env bash
# Installs the build into a scratch prefix, then builds a C++ consumer with
# find_package(ZTkDb) and a C consumer with pkg-config against it, and runs
# both.
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
export PKG_CONFIG_PATH="$libdir/pkgconfig"
cc "$here/consumer.c" $(pkg-config --cflags --libs ztkdb) -o "$prefix/c-consumer"
LD_LIBRARY_PATH="$libdir" "$prefix/c-consumer"
# C++ through pkg-config with the compiler's default language level.
c++ "$here/consumer.cpp" $(pkg-config --cflags --libs ztkdb) -o "$prefix/cxx-consumer"
LD_LIBRARY_PATH="$libdir" "$prefix/cxx-consumer"
