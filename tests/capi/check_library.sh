#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks the built shared library as a linker and a user see it:
#   - its SONAME is libnlssupport.so.1;
#   - every dynamic symbol it defines carries one of the module prefixes (apart from the version
#     node itself);
#   - every library source file's "@(#)" identification line is in the binary, as `strings`
#     shows it, together with the platform line.
# Usage: check_library.sh <libnlssupport.so> <source root>
set -u
lib=$1
src=$2
fail=0

soname=$(readelf -d "$lib" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')
if [ "$soname" != "libnlssupport.so.1" ]; then
    echo "SONAME is '$soname', expected libnlssupport.so.1"
    fail=1
fi

stray=$(nm -D --defined-only "$lib" | awk '{print $3}' | sed 's/@.*//' |
        grep -vE '^(ERRLIB_|MMFLAT_|IANACS_|IANACSOS_|gIANACS_|gIANACSOS_|KORANLS_|GLIB_|gGLIB_|CONV_|gCONV_|NLSSUPPORT_|LIBNLSSUPPORT_1$|LIBNLSSUPPORT_1\.1$)')
if [ -n "$stray" ]; then
    echo "symbols exported without a module prefix:"
    echo "$stray"
    fail=1
fi

# Names keep the version node of the release that added them.
for expected in CONV_StringToInt32@@LIBNLSSUPPORT_1 NLSSUPPORT_GetVersion@@LIBNLSSUPPORT_1.1; do
    if ! grep -qxF "$expected" <<<"$(nm -D --defined-only "$lib" | awk '{print $3}')"; then
        echo "symbol $expected not exported under that version node"
        fail=1
    fi
done

idents=$(strings -a "$lib" | grep '^@(#)')
for file in "$src"/errlib/*.cpp "$src"/memmgr/*.cpp "$src"/ianacs/*.cpp "$src"/nls/*.cpp \
            "$src"/glib/*.cpp "$src"/convlib/*.cpp; do
    [ -e "$file" ] || continue
    name=$(basename "$file")
    [ "$name" = nlsreport.cpp ] && continue
    line=$(printf '@(#)     %s\t\t$Revision$\t$Date$\t' "$name")
    if ! grep -qxF "$line" <<<"$idents"; then
        echo "identification line of $name missing"
        fail=1
    fi
done
if ! grep -qxF '@(#)     PLATFORM : Linux on Intel' <<<"$idents"; then
    echo "platform line missing"
    fail=1
fi

[ $fail -eq 0 ] && echo "shared library checks passed"
exit $fail
