#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the Debian packages twice with scripts/package.sh, in two different trees, and checks:
#   - lintian reports no error and no warning (info tags are listed in README.md);
#   - the two builds are bit-identical (reproducible packages);
#   - names, control fields, Multi-Arch, the symbols file, the ldconfig trigger, stripped
#     binaries with -dbgsym packages, and every file in exactly the package it belongs to;
# then unpacks them into a scratch root with dpkg -x (nothing is installed on the machine) and
# builds and runs consumers against the unpacked files: a C and a C++ program through the CMake
# package (and a C-only project linking the static library), a C program through pkg-config (shared and static), and the packaged nlsreport.
# Usage: package_test.sh <source dir> <work dir>
set -euo pipefail
src=$1
work=$2

fail() { echo "FAIL: $*"; exit 1; }
expect_eq() { [ "$1" = "$2" ] || fail "$3: expected '$2', got '$1'"; }

rm -rf "$work"
mkdir -p "$work"
for build in first second; do
    NLS_PACKAGE_TREE=$work/tree-$build "$src/scripts/package.sh" "$work/debs-$build" \
        >"$work/package-$build.log" 2>&1 || { cat "$work/package-$build.log"; exit 1; }
done
debs=$work/debs-first

# lintian on the whole upload (.changes: the packages and the .buildinfo file).
lintian --fail-on error,warning --display-info --pedantic "$debs"/*.changes >"$work/lintian.log" 2>&1 ||
    { cat "$work/lintian.log"; fail "lintian reported errors or warnings"; }
if grep -E '^[EW]: ' "$work/lintian.log"; then
    fail "lintian reported errors or warnings"
fi
grep -E '^[IPX]: ' "$work/lintian.log" || true

# Reproducible: the second build gives the same bytes.
for deb in "$debs"/*.deb; do
    cmp "$deb" "$work/debs-second/$(basename "$deb")" || fail "$(basename "$deb") is not reproducible"
done
expect_eq "$(find "$work/debs-second" -name '*.deb' | wc -l)" "$(find "$debs" -name '*.deb' | wc -l)" \
    "number of packages of the second build"

arch=$(dpkg --print-architecture)
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
version=$(sed -n 's/^project(nlsreport VERSION \([0-9.]*\).*/\1/p' "$src/CMakeLists.txt")
debver=$(dpkg-parsechangelog -l "$src/debian/changelog" -S Version)
expect_eq "${debver%-*}" "$version" "upstream version of debian/changelog"
runtime=$debs/libnlssupport1_${debver}_$arch.deb
dev=$debs/libnlssupport-dev_${debver}_$arch.deb
cmd=$debs/nlsreport_${debver}_$arch.deb
for deb in "$runtime" "$dev" "$cmd" "$debs/libnlssupport1-dbgsym_${debver}_$arch.deb" \
           "$debs/nlsreport-dbgsym_${debver}_$arch.deb"; do
    [ -f "$deb" ] || fail "package not built: $deb"
done
expect_eq "$(find "$debs" -name '*.deb' | wc -l)" 5 "number of packages"

# Control fields.
expect_eq "$(dpkg-deb -f "$runtime" Package)" libnlssupport1 "runtime package name"
expect_eq "$(dpkg-deb -f "$runtime" Section)" libs "runtime section"
expect_eq "$(dpkg-deb -f "$runtime" Multi-Arch)" same "runtime Multi-Arch"
expect_eq "$(dpkg-deb -f "$dev" Package)" libnlssupport-dev "development package name"
expect_eq "$(dpkg-deb -f "$dev" Section)" libdevel "development section"
expect_eq "$(dpkg-deb -f "$dev" Multi-Arch)" same "development Multi-Arch"
expect_eq "$(dpkg-deb -f "$dev" Depends)" "libnlssupport1 (= $debver)" "development package depends"
expect_eq "$(dpkg-deb -f "$cmd" Package)" nlsreport "command package name"
expect_eq "$(dpkg-deb -f "$cmd" Multi-Arch)" foreign "command Multi-Arch"
for deb in "$runtime" "$dev" "$cmd"; do
    expect_eq "$(dpkg-deb -f "$deb" Version)" "$debver" "version of $deb"
    expect_eq "$(dpkg-deb -f "$deb" Architecture)" "$arch" "architecture of $deb"
    grep -qv localhost <<<"$(dpkg-deb -f "$deb" Maintainer)" || fail "maintainer of $deb on localhost"
    long=$(dpkg-deb -f "$deb" Description | awk 'length($0) > 80')
    [ -z "$long" ] || fail "description line over 80 columns in $deb: $long"
done
grep -q 'libc6' <<<"$(dpkg-deb -f "$runtime" Depends)" ||
    fail "runtime package does not depend on libc6"
control() { dpkg-deb --ctrl-tarfile "$1" | tar -xO "./$2"; }
expect_eq "$(control "$runtime" shlibs)" "libnlssupport 1 libnlssupport1 (>= $version)" "shlibs file"
symbols=$(control "$runtime" symbols)
grep -qxF ' NLSSUPPORT_GetVersion@LIBNLSSUPPORT_1.1 1.1.0' <<<"$symbols" ||
    fail "symbols file lacks NLSSUPPORT_GetVersion at 1.1.0"
grep -qxF ' CONV_StringToInt32@LIBNLSSUPPORT_1 1.0.0' <<<"$symbols" ||
    fail "symbols file lacks CONV_StringToInt32 at 1.0.0"
grep -qx 'activate-noawait ldconfig' <<<"$(control "$runtime" triggers)" ||
    fail "runtime package has no ldconfig trigger"
if grep -qE 'postinst|postrm' <<<"$(dpkg-deb --ctrl-tarfile "$runtime" | tar -t)"; then
    fail "runtime package has maintainer scripts (ldconfig belongs to the trigger)"
fi

# Contents: every file in exactly the package it belongs to.
contents() { dpkg-deb -c "$1" | awk '$1 !~ /^d/ {print $6}' | sort; }
lib=./usr/lib/$multiarch
docs() { printf '%s\n' "./usr/share/doc/$1/changelog.Debian.gz" "./usr/share/doc/$1/copyright"; }
expect_eq "$(contents "$runtime")" "$( { printf '%s\n' "$lib/libnlssupport.so.1" \
    "$lib/libnlssupport.so.$version"; docs libnlssupport1; } | sort)" "runtime package contents"
headers=$(find "$src/include/nlssupport" -name '*.h' -o -name '*.hpp' | sed 's|.*/|./usr/include/nlssupport/|')
expect_eq "$(contents "$dev")" "$( { printf '%s\n' "$headers" ./usr/include/nlssupport/version.h \
    "$lib/cmake/NlsSupport/NlsSupportConfig.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportConfigVersion.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportTargets-none.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportTargets.cmake" \
    "$lib/libnlssupport.a" "$lib/libnlssupport.so" "$lib/pkgconfig/nlssupport.pc"; \
    docs libnlssupport-dev; } | sort)" "development package contents"
expect_eq "$(contents "$cmd")" "$( { printf '%s\n' ./usr/bin/nlsreport \
    ./usr/share/man/man1/nlsreport.1.gz; docs nlsreport; } | sort)" "command package contents"

# Unpack into a scratch root.
root=$work/root
for deb in "$runtime" "$dev" "$cmd"; do
    dpkg -x "$deb" "$root"
done
libdir=$root/usr/lib/$multiarch
expect_eq "$(readlink "$libdir/libnlssupport.so")" libnlssupport.so.1 "development link"
expect_eq "$(readlink "$libdir/libnlssupport.so.1")" "libnlssupport.so.$version" "SONAME link"
grep -q 'SONAME *libnlssupport\.so\.1$' <<<"$(objdump -p "$libdir/libnlssupport.so.$version")" ||
    fail "shared library SONAME"
for binary in "$libdir/libnlssupport.so.$version" "$root/usr/bin/nlsreport"; do
    grep -q ', stripped' <<<"$(file -L "$binary")" || fail "$binary is not stripped"
    grep -q 'BIND_NOW' <<<"$(readelf -d "$binary")" || fail "$binary is not linked with -z now"
done
grep -q 'Type: *DYN' <<<"$(readelf -h "$root/usr/bin/nlsreport")" || fail "nlsreport is not PIE"
cmp "$root/usr/share/doc/nlsreport/copyright" "$src/debian/copyright" || fail "copyright file"
gzip -dc "$root/usr/share/man/man1/nlsreport.1.gz" | cmp - "$src/nls/nlsreport.1" ||
    fail "manual page differs"
for h in "$src"/include/nlssupport/*.h; do
    cmp "$h" "$root/usr/include/nlssupport/$(basename "$h")" || fail "header $(basename "$h") differs"
done
grep -qx 'prefix=/usr' "$libdir/pkgconfig/nlssupport.pc" || fail "pkg-config prefix is not /usr"

# Consumers through the CMake package: C against the shared library, C++ against the static one.
consumer=$src/tests/install/consumer
cmake -S "$consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$root/usr" \
    >"$work/configure.log" 2>&1 || { cat "$work/configure.log"; exit 1; }
cmake --build "$work/consumer" >"$work/build.log" 2>&1 || { cat "$work/build.log"; exit 1; }
grep -q "$libdir/libnlssupport.so" "$work/consumer/CMakeFiles/consumer_c.dir/link.txt" ||
    fail "C consumer not linked against the unpacked shared library"
LD_LIBRARY_PATH=$libdir "$work/consumer/consumer_c"
"$work/consumer/consumer_cpp"
LD_LIBRARY_PATH=$libdir "$work/consumer/consumer_hpp"
# A C-only project linking the static library.
cmake -S "$src/tests/install/consumer-c" -B "$work/consumer-c" -DCMAKE_PREFIX_PATH="$root/usr" \
    >"$work/configure-c.log" 2>&1 || { cat "$work/configure-c.log"; exit 1; }
cmake --build "$work/consumer-c" >"$work/build-c.log" 2>&1 || { cat "$work/build-c.log"; exit 1; }
"$work/consumer-c/consumer_c_static"

# Consumer through pkg-config, against the unpacked shared library. The file names /usr; the
# scratch root stands in for it through PKG_CONFIG_SYSROOT_DIR.
export PKG_CONFIG_PATH=$libdir/pkgconfig PKG_CONFIG_SYSROOT_DIR=$root
expect_eq "$(pkg-config --modversion nlssupport)" "$version" "pkg-config version"
expect_eq "$(pkg-config --cflags nlssupport | xargs)" "-I$root/usr/include" "pkg-config --cflags"
# shellcheck disable=SC2046
cc -std=c11 -Wall -Wextra -Werror "$consumer/consumer.c" -o "$work/consumer_pc" \
    $(pkg-config --cflags --libs nlssupport)
LD_LIBRARY_PATH=$libdir "$work/consumer_pc"
# The C++ layer through pkg-config.
# shellcheck disable=SC2046
c++ -std=c++20 -Wall -Wextra -Werror "$consumer/consumer_hpp.cpp" -o "$work/consumer_hpp_pc" \
    $(pkg-config --cflags --libs nlssupport)
LD_LIBRARY_PATH=$libdir "$work/consumer_hpp_pc"

# The static library through pkg-config --static (its objects need the C++ runtime, which
# Libs.private adds): a copy of the unpacked files without the shared library.
cp -a "$root" "$work/static-root"
rm "$work/static-root/usr/lib/$multiarch"/libnlssupport.so*
export PKG_CONFIG_PATH=$work/static-root/usr/lib/$multiarch/pkgconfig
export PKG_CONFIG_SYSROOT_DIR=$work/static-root
# shellcheck disable=SC2046
cc -std=c11 -Wall -Wextra -Werror "$consumer/consumer.c" -o "$work/consumer_static" \
    $(pkg-config --static --cflags --libs nlssupport)
if grep -q 'NEEDED *libnlssupport' <<<"$(objdump -p "$work/consumer_static")"; then
    fail "static consumer linked against the shared library"
fi
"$work/consumer_static"

# The packaged command.
expected='                  locale         codepage         iananame IANAAppCodePage
                       C   ANSI_X3.4-1968         US-ASCII 3'
expect_eq "$("$root/usr/bin/nlsreport" C)" "$expected" "packaged nlsreport output"

rm -rf "$work"
echo "packages lintian-clean and reproducible; unpacked into a scratch root and used by C, C++" \
    "and pkg-config consumers (shared and static)"
