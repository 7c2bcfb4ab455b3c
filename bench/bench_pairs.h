/* SPDX-License-Identifier: MIT */
// bench_pairs.h - shared declarations of the benchmark programs: the table that pairs each
// library routine with the C library routine a caller would use instead, and small helpers.
#ifndef NLS_BENCH_PAIRS_H
#define NLS_BENCH_PAIRS_H

#include <cstddef>

namespace nlsbench {

// One row of the result table. `ours` and `libc` are benchmark function names; `libc` is null
// for a routine measured on its own. The ratio is ours / libc (below 1: ours is faster).
struct Pair {
    const char *routine;  // what the row measures
    const char *ours;     // benchmark of the library routine
    const char *libc;     // benchmark of the C library routine, or null
    const char *target;   // the target as text ("<= 0.5x"), or null for none
    double maxRatio;      // the target: ratio at most this (0: no target)
    bool realTime;        // compare wall-clock time (whole processes) instead of CPU time
};

// Directory of the generated locales of the whole-process comparison (LOCPATH), or null when
// the program was started without --nls_locpath.
const char *LocalePath();

}  // namespace nlsbench

#endif  // NLS_BENCH_PAIRS_H
