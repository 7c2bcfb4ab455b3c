// SPDX-License-Identifier: MIT
// checktab.cpp - order checks of the name tables.
//
// The name lookups are binary searches that compare with strcasecmp; they work only for rows in
// strictly ascending order under that comparison. These checks verify it, pair by pair.
#include <nlssupport/ianacs.h>
#include <strings.h>

#include <cstddef>
#include <cstdio>
#include <iterator>

#include "tabcheck.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     checktab.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     ianacs.h\t\t$Revision$\t$Date$",
    "@(#)     tabcheck.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

namespace ianacs {

std::size_t FirstOutOfOrder(const IANACS_AliasEntry *table, std::size_t rows) noexcept {
    for (std::size_t i = 1; i < rows; ++i) {
        if (strcasecmp(table[i - 1].name, table[i].name) >= 0) {
            return i;
        }
    }
    return 0;
}

int CheckOrder(const IANACS_AliasEntry *table, std::size_t rows, std::FILE *diag) noexcept {
    const std::size_t i = FirstOutOfOrder(table, rows);
    if (i == 0) {
        return 0;
    }
    if (diag != nullptr) {
        std::fprintf(diag, "i = %d, %s %s\n", static_cast<int>(i), table[i - 1].name,
                     table[i].name);
    }
    return 1;
}

}  // namespace ianacs

// Checks the alias table's order under the lookup comparison. Returns 0 when in order, 1 at the
// first pair that is not. The shipped table gives 1 (first at the duplicated "Cp1006"): it is
// stored in upper-case order, which the lookup's results depend on. Prints nothing.
extern "C" int IANACS_CheckAliasTab(void) noexcept {
    return ianacs::CheckOrder(gIANACS_AliasTab, std::size(gIANACS_AliasTab), nullptr);
}

// Checks the operating-system table's order. At the first pair out of order writes
// "i = <later index>, <earlier name> <later name>\n" on standard error and returns 1; returns 0
// when the table is in order (as shipped).
extern "C" int IANACSOS_CheckAliasTab(void) noexcept {
    return ianacs::CheckOrder(gIANACSOS_AliasTab, std::size(gIANACSOS_AliasTab), stderr);
}
