// SPDX-License-Identifier: MIT
// dblread.h - the direct reading of the common forms of double text, used by the text-to-double
// conversion before it falls back on strtod. Internal to the conversion library.
#ifndef CONVLIB_DBLREAD_H
#define CONVLIB_DBLREAD_H

#include <stdint.h>

namespace [[gnu::visibility("hidden")]] conv {

// Reads text as CONV_StringToDouble would with strtod, for the texts and values where the result
// is known to be the same without strtod: a text that passes the syntax check under flags and
// point in its common form, whose value is zero or a normal double (so strtod would leave errno
// at 0). Returns true with *value set; false, with *value untouched, for every other text, which
// the caller then reads with strtod. Reads nothing beyond the text's terminator and allocates
// nothing.
bool ReadPlainDouble(const char *text, uint32_t flags, char point, double *value) noexcept;

}  // namespace conv

#endif  // CONVLIB_DBLREAD_H
