// SPDX-License-Identifier: MIT
// glibdata.cpp - constant data of the general library.

#include <nlssupport/glib.h>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibdata.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

// Printed by the formatter in place of a null narrow string.
extern "C" const char gGLIB_nullstring[] = "(null)";

// Printed by the formatter in place of a null wide string.
extern "C" const GLIB_WChar gGLIB_nullwstring[] = {'(', 'n', 'u', 'l', 'l', ')', 0};

// Directory separators of GLIB_mkdirp: two '/' and no terminator. The path scan has always run
// on past these two characters into the text stored behind them, which made '(' a separator
// too; GLIB_mkdirp keeps that set ("/(") in a terminated table of its own, so nothing is ever
// read past this array.
extern "C" const char gGLIB_DirSeparatorSet[2] = {'/', '/'};
