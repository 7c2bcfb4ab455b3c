#!/usr/bin/env bash
# Builds the Debian packages with scripts/package.sh, checks their names, control fields and
# contents, unpacks them into a scratch root with dpkg -x (no root rights, nothing installed on
# the machine) and builds and runs consumers against the unpacked files: a C and a C++ program
# through the CMake package, a C program through pkg-config, and the packaged nlsreport.
# Usage: package_test.sh <source dir> <work dir>
set -euo pipefail
src=$1
work=$2

rm -rf "$work"
mkdir -p "$work"
NLS_PACKAGE_TREE=$work/tree "$src/scripts/package.sh" "$work/debs" >"$work/package.log" 2>&1 ||
    { cat "$work/package.log"; exit 1; }

fail() { echo "FAIL: $*"; exit 1; }
expect_eq() { [ "$1" = "$2" ] || fail "$3: expected '$2', got '$1'"; }

arch=$(dpkg --print-architecture)
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
version=$(sed -n 's/^project(nlsreport VERSION \([0-9.]*\).*/\1/p' "$src/CMakeLists.txt")
debver=$version-1
runtime=$work/debs/libnlssupport1_${debver}_$arch.deb
dev=$work/debs/libnlssupport-dev_${debver}_$arch.deb
cmd=$work/debs/nlsreport_${debver}_$arch.deb
for deb in "$runtime" "$dev" "$cmd"; do
    [ -f "$deb" ] || fail "package not built: $deb"
done
expect_eq "$(find "$work/debs" -name '*.deb' | wc -l)" 3 "number of packages"

# Control fields.
expect_eq "$(dpkg-deb -f "$runtime" Package)" libnlssupport1 "runtime package name"
expect_eq "$(dpkg-deb -f "$runtime" Section)" libs "runtime section"
expect_eq "$(dpkg-deb -f "$dev" Package)" libnlssupport-dev "development package name"
expect_eq "$(dpkg-deb -f "$dev" Depends)" "libnlssupport1 (= $debver)" "development package depends"
expect_eq "$(dpkg-deb -f "$cmd" Package)" nlsreport "command package name"
for deb in "$runtime" "$dev" "$cmd"; do
    expect_eq "$(dpkg-deb -f "$deb" Version)" "$debver" "version of $deb"
    expect_eq "$(dpkg-deb -f "$deb" Architecture)" "$arch" "architecture of $deb"
done
dpkg-deb -f "$runtime" Depends | grep -q 'libc6' || fail "runtime package does not depend on libc6"
dpkg-deb --ctrl-tarfile "$runtime" | tar -xO ./shlibs >"$work/shlibs"
expect_eq "$(cat "$work/shlibs")" "libnlssupport 1 libnlssupport1 (>= $debver)" "shlibs file"
dpkg-deb --ctrl-tarfile "$runtime" | tar -xO ./postinst | grep -q ldconfig ||
    fail "runtime package does not run ldconfig"

# Contents: every file in exactly the package it belongs to.
contents() { dpkg-deb -c "$1" | awk '$1 !~ /^d/ {print $6}' | sort; }
lib=./usr/lib/$multiarch
expect_eq "$(contents "$runtime")" "$(printf '%s\n' "$lib/libnlssupport.so.1" \
    "$lib/libnlssupport.so.$version" | sort)" "runtime package contents"
expect_eq "$(contents "$dev")" "$(printf '%s\n' \
    ./usr/include/nlssupport/convlib.h ./usr/include/nlssupport/errlib.h \
    ./usr/include/nlssupport/glib.h ./usr/include/nlssupport/ianacs.h \
    ./usr/include/nlssupport/koranls.h ./usr/include/nlssupport/memmgr.h \
    "$lib/cmake/NlsSupport/NlsSupportConfig.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportConfigVersion.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportTargets-release.cmake" \
    "$lib/cmake/NlsSupport/NlsSupportTargets.cmake" \
    "$lib/libnlssupport.a" "$lib/libnlssupport.so" "$lib/pkgconfig/nlssupport.pc" | sort)" \
    "development package contents"
expect_eq "$(contents "$cmd")" "$(printf '%s\n' ./usr/bin/nlsreport \
    ./usr/share/man/man1/nlsreport.1.gz | sort)" "command package contents"

# Unpack into a scratch root.
root=$work/root
for deb in "$runtime" "$dev" "$cmd"; do
    dpkg -x "$deb" "$root"
done
libdir=$root/usr/lib/$multiarch
expect_eq "$(readlink "$libdir/libnlssupport.so")" libnlssupport.so.1 "development link"
expect_eq "$(readlink "$libdir/libnlssupport.so.1")" "libnlssupport.so.$version" "SONAME link"
objdump -p "$libdir/libnlssupport.so.$version" | grep -q 'SONAME *libnlssupport\.so\.1$' ||
    fail "shared library SONAME"
gzip -dc "$root/usr/share/man/man1/nlsreport.1.gz" | cmp - "$src/nls/nlsreport.1" ||
    fail "manual page differs"
for h in convlib errlib glib ianacs koranls memmgr; do
    cmp "$src/include/$h.h" "$root/usr/include/nlssupport/$h.h" || fail "header $h.h differs"
done

# Consumers through the CMake package: C against the shared library, C++ against the static one.
consumer=$src/tests/install/consumer
cmake -S "$consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$root/usr" \
    >"$work/configure.log" 2>&1 || { cat "$work/configure.log"; exit 1; }
cmake --build "$work/consumer" >"$work/build.log" 2>&1 || { cat "$work/build.log"; exit 1; }
grep -q "$libdir/libnlssupport.so" "$work/consumer/CMakeFiles/consumer_c.dir/link.txt" ||
    fail "C consumer not linked against the unpacked shared library"
LD_LIBRARY_PATH=$libdir "$work/consumer/consumer_c"
"$work/consumer/consumer_cpp"

# Consumer through pkg-config, against the unpacked shared library.
PKG_CONFIG_PATH=$libdir/pkgconfig
export PKG_CONFIG_PATH
expect_eq "$(pkg-config --modversion nlssupport)" "$version" "pkg-config version"
# shellcheck disable=SC2046
cc -std=c11 -Wall -Wextra -Werror "$consumer/consumer.c" -o "$work/consumer_pc" \
    $(pkg-config --cflags --libs nlssupport)
LD_LIBRARY_PATH=$libdir "$work/consumer_pc"

# The static library through pkg-config --static (its objects need the C++ runtime, which
# Libs.private adds): a copy of the unpacked files without the shared library.
cp -a "$root" "$work/static-root"
rm "$work/static-root/usr/lib/$multiarch"/libnlssupport.so*
PKG_CONFIG_PATH=$work/static-root/usr/lib/$multiarch/pkgconfig
# shellcheck disable=SC2046
cc -std=c11 -Wall -Wextra -Werror "$consumer/consumer.c" -o "$work/consumer_static" \
    $(pkg-config --static --cflags --libs nlssupport)
if objdump -p "$work/consumer_static" | grep -q 'NEEDED *libnlssupport'; then
    fail "static consumer linked against the shared library"
fi
"$work/consumer_static"

# The packaged command.
expected='                  locale         codepage         iananame IANAAppCodePage
                       C   ANSI_X3.4-1968         US-ASCII 3'
expect_eq "$("$root/usr/bin/nlsreport" C)" "$expected" "packaged nlsreport output"

rm -rf "$work"
echo "packages built, unpacked into a scratch root and used by C, C++ and pkg-config consumers" \
    "(shared and static)"
