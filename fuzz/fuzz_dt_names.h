/* SPDX-License-Identifier: MIT */
// Names records for the date-time targets: none, or 45 slots filled from a small pool (null,
// empty, short, long and very long texts) by a seed byte.
#ifndef NLS_FUZZ_DT_NAMES_H
#define NLS_FUZZ_DT_NAMES_H

#include <cstdint>

#include <nlssupport/convlib.h>

namespace dtnames {

inline constexpr char kVeryLong[] =
    "NameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameName"
    "NameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameName"
    "NameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameName"
    "NameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameNameName";
inline const char *const kPool[8] = {nullptr, "", "X", "Mittwoch", kVeryLong, "AM", "Septembre",
                                     "%D"};

// Fills names from the pool with a small generator seeded by seed; returns null for seed 0 (the
// default names), otherwise names.
inline const char *const *Fill(CONV_DateTimeNames &names, uint8_t seed) {
    if (seed == 0) {
        return nullptr;
    }
    uint32_t state = seed * 2654435761u;
    for (auto &slot : names) {
        state = state * 1103515245u + 12345u;
        const uint32_t pick = (state >> 16) & 15u;
        // Mostly ordinary names, so that whole records without null slots come up often.
        slot = pick < 8 ? kPool[pick] : (seed & 1u ? "Name" : kPool[pick & 7u] ? kPool[pick & 7u]
                                                                                : "N");
    }
    return names;
}

// A small record field from one byte: 0x80 is unset, anything else its signed value.
inline int16_t Small(uint8_t b) {
    return b == 0x80 ? static_cast<int16_t>(CONV_DT_UNSET) : static_cast<int16_t>(static_cast<int8_t>(b));
}

}  // namespace dtnames

#endif  // NLS_FUZZ_DT_NAMES_H
