#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks that a mutant which survives the tests cannot change a result: the committed sources
# (git HEAD) with one line replaced are built as the reference of nls_diff (see nls_diff.sh) and
# compared with the working tree over the generated inputs of the named groups, on x86_64 and
# i386. Used for the survivors of scripts/mutate.sh that docs/reliability.md lists as
# equivalent.
#
# Usage: tests/diff/mutant_diff.sh <file> <line> <replacement line> [nls_diff options/groups...]
#   e.g. tests/diff/mutant_diff.sh convlib/qlxbcd.cpp 79 '' decimal
# The line number is 1-based; the line must still read as the mutant's "before" text does.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
if [ $# -lt 3 ]; then
    echo "usage: $0 <file> <line> <replacement line> [nls_diff options/groups...]" >&2
    exit 2
fi
file=$1
line=$2
replacement=$3
shift 3
src="$root/build/diff/mutant-src"
rm -rf "$src"
mkdir -p "$src"
git -C "$root" archive HEAD | tar -x -C "$src"
python3 - "$src/$file" "$line" "$replacement" <<'PY'
import sys
path, n, replacement = sys.argv[1], int(sys.argv[2]), sys.argv[3]
lines = open(path).read().split('\n')
print('mutant %s:%d\n  before: %s\n  after:  %s' % (path, n, lines[n - 1].strip(),
                                                  replacement.strip()))
lines[n - 1] = replacement
open(path, 'w').write('\n'.join(lines))
PY
# A new tree each time: nls_diff.sh rebuilds the reference when its source directory changes.
rm -f "$root/build/diff/ref-rev"
exec "$root/tests/diff/nls_diff.sh" --ref-tree="$src" "$@"
