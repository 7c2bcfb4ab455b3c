// SPDX-License-Identifier: MIT
// convlib_export.h - helpers of the conversion library that the modules built on it (the general
// library) use as well. Not installed and not exported from the shared library: a module that
// links the conversion library's objects gets this directory on its include path, no other.
#ifndef CONVLIB_EXPORT_H
#define CONVLIB_EXPORT_H

#include <stdint.h>

namespace [[gnu::visibility("hidden")]] conv {

// strtol in base ten with the results of a 32-bit long, the same on every target: a value beyond
// the 32-bit range comes back as the nearest 32-bit limit with errno set to ERANGE, exactly as
// where long has 32 bits. *end (when end is not null) is strtol's end pointer.
int32_t StrToLong32(const char *text, char **end) noexcept;

}  // namespace conv

#endif  // CONVLIB_EXPORT_H
