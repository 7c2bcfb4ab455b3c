#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the built project into a temporary prefix with cmake --install, checks the installed
# layout, then builds and runs consumers outside the project against it: a C and a C++ program
# through the CMake package (find_package(NlsSupport)), and a C program through pkg-config.
# Usage: install_test.sh <build dir> <consumer source dir> <C compiler> <C++ compiler> [flags]
# flags are the configuration's extra compile and link flags (-m32, sanitizers), given to the
# consumers too.
set -euo pipefail
build=$1
consumer=$2
cc=$3
cxx=$4
flags=${5:-}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

cmake --install "$build" --prefix "$prefix" >/dev/null

libdir=$(dirname "$(find "$prefix" -name libnlssupport.a | head -n 1)")
for f in "$prefix/include/nlssupport/errlib.h" "$prefix/include/nlssupport/memmgr.h" \
         "$prefix/include/nlssupport/ianacs.h" "$prefix/include/nlssupport/koranls.h" \
         "$prefix/include/nlssupport/glib.h" "$prefix/include/nlssupport/convlib.h" \
         "$prefix/include/nlssupport/nlssupport.h" "$prefix/include/nlssupport/version.h" \
         "$prefix/include/nlssupport/nlssupport.hpp" \
         "$libdir/libnlssupport.a" "$libdir/libnlssupport.so.1" "$libdir/libnlssupport.so" \
         "$libdir/cmake/NlsSupport/NlsSupportConfig.cmake" "$libdir/pkgconfig/nlssupport.pc" \
         "$prefix/bin/nlsreport" "$prefix/share/man/man1/nlsreport.1"; do
    if [ ! -e "$f" ]; then
        echo "not installed: $f"
        exit 1
    fi
done

# The CMake package: C against the shared library, C++ against the static one.
CC=$cc CXX=$cxx cmake -S "$consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
    >"$work/configure.log" 2>&1 || { cat "$work/configure.log"; exit 1; }
cmake --build "$work/consumer" >"$work/build.log" 2>&1 || { cat "$work/build.log"; exit 1; }
"$work/consumer/consumer_c"
"$work/consumer/consumer_cpp"
"$work/consumer/consumer_hpp"

# A C-only project (C++ not enabled) linking the static library through the CMake package.
CC=$cc cmake -S "$consumer-c" -B "$work/consumer-c" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_EXE_LINKER_FLAGS="$flags" \
    >"$work/configure-c.log" 2>&1 || { cat "$work/configure-c.log"; exit 1; }
cmake --build "$work/consumer-c" >"$work/build-c.log" 2>&1 || { cat "$work/build-c.log"; exit 1; }
"$work/consumer-c/consumer_c_static"

# pkg-config: the same C program, compiled by hand.
export PKG_CONFIG_PATH=$libdir/pkgconfig
# The include directory is the plain include/, whose nlssupport/ holds the headers.
cflags=$(pkg-config --cflags nlssupport | xargs)
if [ ! -f "${cflags#-I}/nlssupport/convlib.h" ]; then
    echo "pkg-config --cflags gives '$cflags', not the directory above nlssupport/"
    exit 1
fi
# shellcheck disable=SC2046,SC2086
"$cc" -std=c11 -Wall -Wextra -Werror $flags "$consumer/consumer.c" -o "$work/consumer_pc" \
    $(pkg-config --cflags --libs nlssupport)
LD_LIBRARY_PATH=$libdir "$work/consumer_pc"
# The C++ layer through pkg-config.
# shellcheck disable=SC2086
"$cxx" -std=c++20 -Wall -Wextra -Werror $flags "$consumer/consumer_hpp.cpp" -o "$work/consumer_hpp_pc" \
    $(pkg-config --cflags --libs nlssupport)
LD_LIBRARY_PATH=$libdir "$work/consumer_hpp_pc"
echo "installed layout, CMake package and pkg-config consumers passed"
