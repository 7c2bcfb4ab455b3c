#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The one abidw command of the project: the ABI of a libnlssupport.so as its public headers show
# it, written to <out> with source paths relative to the source tree (a baseline does not depend
# on where the tree was checked out).
# Usage: abi_dump.sh <source dir> <generated header dir> <library> <out>
set -euo pipefail
abidw --headers-dir "$1/include/nlssupport" --headers-dir "$2" --drop-private-types \
    --no-corpus-path --no-comp-dir-path --out-file "$4" "$3"
sed -i "s|path='$1/|path='|g" "$4"
