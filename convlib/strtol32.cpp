// SPDX-License-Identifier: MIT
// strtol32.cpp - the 32-bit saturating text-to-integer conversion shared by the number
// conversions, the date-time scanners and the general library.
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include "convlib_export.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     strtol32.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib_export.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

namespace conv {

int32_t StrToLong32(const char *text, char **end) noexcept {
    const long value = std::strtol(text, end, 10);
    if (value > INT32_MAX) {
        errno = ERANGE;
        return INT32_MAX;
    }
    if (value < INT32_MIN) {
        errno = ERANGE;
        return INT32_MIN;
    }
    return static_cast<int32_t>(value);
}

}  // namespace conv
