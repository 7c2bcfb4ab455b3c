#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Mutation testing of the library (scripts/mutate.py, Python 3 standard library only): small
# changes to the sources, one at a time, each built and run against its module's tests. Takes
# about 15 minutes for the default sample of 200 mutants on two cores (a full build first); not
# part of the test command.
# Usage: scripts/mutate.sh [--seed N] [--count N] [--timeout SECONDS] [--modules a,b]
#                          [--only a,b] [--report] [--rerun-survivors [--sanitize]]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/deps.sh"
nls_require_packages cmake make g++ googletest libgtest-dev locales python3 || exit 1
exec python3 "$root/scripts/mutate.py" "$@"
