// SPDX-License-Identifier: MIT
// osaliastab.cpp - the operating-system code-set table.
//
// The code-set names that the system's locale services report (nl_langinfo(CODESET)), with the
// MIBenum each stands for. Rows are sorted by name ignoring case. "BIG5HKSCS" and "EUC-TW" carry
// -1: they are known code sets without an entry in the information table.
#include <nlssupport/ianacs.h>

#include <iterator>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     osaliastab.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     ianacs.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

// One row per line, as the table is read and maintained.
// clang-format off
const IANACS_AliasEntry gIANACSOS_AliasTab[] = {
    {"ANSI_X3.4-1968", 3},
    {"BIG5", 2026},
    {"BIG5HKSCS", -1},
    {"CP1251", 2251},
    {"EUC-JP", 18},
    {"EUC-KR", 38},
    {"EUC-TW", -1},
    {"GB18030", 114},
    {"GB2312", 2025},
    {"GBK", 113},
    {"ISO-8859-1", 4},
    {"ISO-8859-13", 109},
    {"ISO-8859-15", 111},
    {"ISO-8859-2", 5},
    {"ISO-8859-3", 6},
    {"ISO-8859-5", 8},
    {"ISO-8859-6", 9},
    {"ISO-8859-7", 10},
    {"ISO-8859-8", 11},
    {"ISO-8859-9", 12},
    {"KOI8-R", 2084},
    {"KOI8-U", 2088},
    {"TIS-620", 2259},
    {"UTF-8", 106},
};
// clang-format on

static_assert(std::size(gIANACSOS_AliasTab) == IANACSOS_ALIASTAB_ROWS, "OS table row count");
