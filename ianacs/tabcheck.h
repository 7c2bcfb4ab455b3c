// SPDX-License-Identifier: MIT
// tabcheck.h - order checking of a name table (module-internal).
#ifndef IANACS_TABCHECK_H
#define IANACS_TABCHECK_H

#include <nlssupport/ianacs.h>

#include <cstddef>
#include <cstdio>

namespace [[gnu::visibility("hidden")]] ianacs {

// Returns the index of the later row of the first neighbouring pair of `table` that is not in
// strictly ascending strcasecmp order, or 0 when all `rows` rows are in order.
std::size_t FirstOutOfOrder(const IANACS_AliasEntry *table, std::size_t rows) noexcept;

// Checks the order of `table`. When a pair is out of order and `diag` is not null, writes
// "i = <later index>, <earlier name> <later name>\n" to `diag`. Returns 0 in order, 1 otherwise.
int CheckOrder(const IANACS_AliasEntry *table, std::size_t rows, std::FILE *diag) noexcept;

}  // namespace ianacs

#endif  // IANACS_TABCHECK_H
