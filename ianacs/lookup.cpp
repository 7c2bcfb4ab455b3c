// SPDX-License-Identifier: MIT
// lookup.cpp - name and MIBenum lookups over the registry tables.
//
// All three lookups are the system library's bsearch over a constant table. The name lookups
// compare with strcasecmp, which folds letters to lower case, while the alias table is stored in
// upper-case order. Where the two orders disagree (names holding "_" next to letters, such as
// "KS_C_5601-1987", or "csASCII" against "CSA_T500-1983") the search turns the wrong way and
// misses: "csAdobeStandardEncoding", "csASCII", "CSA_T500-1983", "csNATSSEFIADD", "CSN_369103",
// "eucJP", "eucKR", "GBK", "KSC_5601", "KS_C_5601-1987", "KS_C_5601-1989" and "MSZ_7795.3" are
// never found. Callers compare MIBenums produced by this exact search, so the table order and
// the comparison are kept as they are.
#include <nlssupport/ianacs.h>
#include <strings.h>

#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     lookup.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     ianacs.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// bsearch comparison for the name tables: the key is the searched name, the element a table row.
// Returns strcasecmp's result (letters folded to lower case in the current locale).
int CompareAliasName(const void *key, const void *element) {
    const auto *row = static_cast<const IANACS_AliasEntry *>(element);
    return strcasecmp(static_cast<const char *>(key), row->name);
}

// bsearch comparison for the information table: the key is the searched MIBenum, the element a
// row. Returns the sign of (key - row MIBenum); computed without the subtraction so that no
// int32_t value can overflow (for keys that are in the table the result is the same).
int CompareInfoMib(const void *key, const void *element) {
    const int32_t wanted = *static_cast<const int32_t *>(key);
    const int32_t rowMib = static_cast<const IANACS_InfoEntry *>(element)->mibEnum;
    return (wanted > rowMib) - (wanted < rowMib);
}

// Searches a sorted name table for `name`. Stores the row's MIBenum (found) or -1 (not found, or
// a null name) in *mibOut. Returns 0 when found, 1 otherwise; 1 without storing for a null mibOut.
int FindName(const IANACS_AliasEntry *table, std::size_t rows, const char *name, int32_t *mibOut) {
    if (mibOut == nullptr) {
        return 1;
    }
    *mibOut = -1;
    if (name == nullptr) {
        return 1;
    }
    const void *hit = std::bsearch(name, table, rows, sizeof *table, CompareAliasName);
    if (hit == nullptr) {
        return 1;
    }
    *mibOut = static_cast<const IANACS_AliasEntry *>(hit)->mibEnum;
    return 0;
}
}  // namespace

// Name to MIBenum through the alias table. Returns 0 and the MIBenum when found; stores -1 and
// returns 1 when not. Nothing is allocated.
extern "C" int IANACS_GetMibEnum(const char *name, int32_t *mibOut) noexcept {
    return FindName(gIANACS_AliasTab, std::size(gIANACS_AliasTab), name, mibOut);
}

// Operating-system code-set name to MIBenum. A row carrying -1 counts as found (returns 0 with
// -1). Returns 1 with -1 stored when the name is not in the table.
extern "C" int IANACSOS_GetMibEnum(const char *osName, int32_t *mibOut) noexcept {
    return FindName(gIANACSOS_AliasTab, std::size(gIANACSOS_AliasTab), osName, mibOut);
}

// MIBenum to information record. Found: copies name, MIBenum and the two sizes from the row and
// derives fixedBytes from them (the stored fixed-width column is not read); returns 0. Not found:
// name null, the requested MIBenum, -1 sizes; returns 1. The name points into constant table
// data and is never freed by the caller. For MIBenum 10038, which has two rows, the search meets
// "MacCyrillic" first.
extern "C" int IANACS_GetInfo(int32_t mibEnum, IANACS_Info *infoOut) noexcept {
    if (infoOut == nullptr) {
        return 1;
    }
    const void *hit = std::bsearch(&mibEnum, gIANACS_InfoTab, std::size(gIANACS_InfoTab),
                                   sizeof gIANACS_InfoTab[0], CompareInfoMib);
    if (hit == nullptr) {
        infoOut->name = nullptr;
        infoOut->mibEnum = mibEnum;
        infoOut->minBytes = -1;
        infoOut->maxBytes = -1;
        infoOut->fixedBytes = -1;
        return 1;
    }
    const auto *row = static_cast<const IANACS_InfoEntry *>(hit);
    infoOut->name = row->name;
    infoOut->mibEnum = row->mibEnum;
    infoOut->minBytes = row->minBytes;
    infoOut->maxBytes = row->maxBytes;
    infoOut->fixedBytes = row->minBytes == row->maxBytes ? row->maxBytes : 0;
    return 0;
}
