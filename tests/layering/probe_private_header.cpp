/* SPDX-License-Identifier: MIT */
// Compiled with the general library's include path: the conversion library's private header must
// not be found (the layering test expects this compilation to fail on it).
#include "convlib/datetime_internal.h"

int LayeringProbe() { return conv::kFieldLetters[0]; }
