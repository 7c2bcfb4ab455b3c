// SPDX-License-Identifier: MIT
// glib_internal.h - helpers shared by the general library's source files.
#ifndef GLIB_GLIB_INTERNAL_H
#define GLIB_GLIB_INTERNAL_H

#include <nlssupport/glib.h>

#include <cstdint>

namespace [[gnu::visibility("hidden")]] glib {

// One narrow byte as a wide unit: 7-bit bytes keep their value, bytes from 0x80 up become '?'
// (there is no decoding of narrow text).
constexpr GLIB_WChar WidenByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return static_cast<GLIB_WChar>(byte < 0x80 ? byte : '?');
}

}  // namespace glib

#endif  // GLIB_GLIB_INTERNAL_H
