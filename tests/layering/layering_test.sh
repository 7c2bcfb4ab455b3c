#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks that each module's objects refer only to their own module and to the modules it uses.
# Every undefined symbol of a module's objects that belongs to the library is mapped to its
# module by its prefix (C names) or its namespace (C++ internal helpers).
# Usage: layering_test.sh <module>:<used,modules>:<object,files>...
set -uo pipefail
fail=0
owner() {
    case "$1" in
        ERRLIB_* | errlib::*) echo errlib ;;
        MMFLAT_*) echo memmgr ;;
        IANACS_* | IANACSOS_* | gIANACS_* | gIANACSOS_* | ianacs::*) echo ianacs ;;
        KORANLS_* | NLSSUPPORT_*) echo nls ;;
        GLIB_* | gGLIB_* | glib::*) echo glib ;;
        CONV_* | gCONV_* | conv::*) echo convlib ;;
        *) echo "" ;;
    esac
}
checked=0
for spec in "$@"; do
    module=${spec%%:*}
    rest=${spec#*:}
    uses=${rest%%:*}
    objects=${rest#*:}
    allowed=" $module ${uses//,/ } "
    IFS=, read -r -a files <<<"$objects"
    while read -r symbol; do
        [ -n "$symbol" ] || continue
        checked=$((checked + 1))
        target=$(owner "$symbol")
        if [ -n "$target" ] && [[ "$allowed" != *" $target "* ]]; then
            echo "$module uses $target ($symbol), which it does not declare"
            fail=1
        fi
    done < <(nm -u -C "${files[@]}" 2>/dev/null | awk '{ $1 = ""; sub(/^ /, ""); print }' | sort -u)
done
[ $checked -gt 0 ] || { echo "no undefined symbols read: the object lists are wrong"; exit 1; }
[ $fail -eq 0 ] && echo "every module calls only the modules it uses ($checked symbols)"
exit $fail
