/* SPDX-License-Identifier: MIT */
// glib_internal.h - helpers shared by the general library's source files.
#ifndef GLIB_GLIB_INTERNAL_H
#define GLIB_GLIB_INTERNAL_H

#include <cstdint>

#include <nlssupport/glib.h>

namespace glib {

// One narrow byte as a wide unit: 7-bit bytes keep their value, bytes from 0x80 up become '?'
// (there is no decoding of narrow text).
constexpr GLIB_WChar WidenByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return static_cast<GLIB_WChar>(byte < 0x80 ? byte : '?');
}

// A strtol result limited to the 32-bit range, so that 64-bit builds give the same values as
// 32-bit ones (where long is 32 bits and strtol itself saturates there).
constexpr int32_t SaturateToInt32(long value) {
    if (value > INT32_MAX)
        return INT32_MAX;
    if (value < INT32_MIN)
        return INT32_MIN;
    return static_cast<int32_t>(value);
}

}  // namespace glib

#endif  // GLIB_GLIB_INTERNAL_H
