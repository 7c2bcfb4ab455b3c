#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Every source, header, script and CMake file of the tree carries the licence identifier
# "SPDX-License-Identifier: MIT" in its first three lines, and LICENSE holds the MIT licence.
# Usage: license_test.sh <source dir>
set -euo pipefail
src=$1
cd "$src"
grep -q '^MIT License$' LICENSE || { echo "LICENSE is not the MIT licence"; exit 1; }
grep -q '^Copyright (c) 2026 The nlssupport authors$' LICENSE || { echo "LICENSE copyright line"; exit 1; }
missing=0
count=0
while IFS= read -r -d '' file; do
    count=$((count + 1))
    if ! grep -q 'SPDX-License-Identifier: MIT' <<<"$(head -n 3 "$file")"; then
        echo "no SPDX-License-Identifier line: $file"
        missing=1
    fi
done < <(find . -path ./build -prune -o -path ./.git -prune -o -type f \
             \( -name '*.c' -o -name '*.cpp' -o -name '*.h' -o -name '*.hpp' -o -name '*.sh' \
                -o -name '*.cmake' -o -name 'CMakeLists.txt' -o -name '*.in' -o -name '*.map' \
                -o -path ./debian/rules -o -path ./.ci/run \) -print0)
[ $missing -eq 0 ] || exit 1
echo "$count files carry the licence identifier"
