/* SPDX-License-Identifier: MIT */
// Helpers shared by the date-time tests: records, names records and sentinel-filled buffers.
#ifndef NLS_TESTS_CONVLIB_DT_TEST_UTIL_H
#define NLS_TESTS_CONVLIB_DT_TEST_UTIL_H

#include <stdint.h>
#include <string.h>

#include <string>

#include <nlssupport/convlib.h>

namespace dt_test {

// A record with every field unset.
inline CONV_DateTime Unset() {
    CONV_DateTime r;
    r.day = CONV_DT_UNSET;
    r.month = CONV_DT_UNSET;
    r.year = CONV_DT_UNSET;
    r.dayOfWeek = CONV_DT_UNSET;
    r.second = CONV_DT_UNSET;
    r.minute = CONV_DT_UNSET;
    r.hour = CONV_DT_UNSET;
    r.fraction = CONV_DT_UNSET;
    r.fractionBase = CONV_DT_UNSET;
    r.era = CONV_DT_UNSET;
    return r;
}

inline CONV_DateTime Date(int day, int month, int year) {
    CONV_DateTime r = Unset();
    r.day = static_cast<int16_t>(day);
    r.month = static_cast<int16_t>(month);
    r.year = static_cast<int16_t>(year);
    return r;
}

// 5 March 2009 13:07:09, a Thursday, fraction 0 with the base unset.
inline CONV_DateTime Sample() {
    CONV_DateTime r = Date(5, 3, 2009);
    r.dayOfWeek = 4;
    r.hour = 13;
    r.minute = 7;
    r.second = 9;
    r.fraction = 0;
    return r;
}

// Names record with the four era names and the SYEAR text set; other slots null.
struct EraNames {
    const char *slots[CONV_NAMES_COUNT] = {};
    EraNames() {
        slots[CONV_NAMES_ERA + 0] = "Meiji";
        slots[CONV_NAMES_ERA + 1] = "Taisho";
        slots[CONV_NAMES_ERA + 2] = "Showa";
        slots[CONV_NAMES_ERA + 3] = "Heisei";
        slots[CONV_NAMES_SYEAR] = "Gannen";
    }
    const char *const *get() const {
        return slots;
    }
};

constexpr char kSentinel = '\x5A';  // 'Z'

// A buffer of `size` bytes inside a larger sentinel-filled block, to check bytes behind it.
struct Buffer {
    static constexpr int kSlack = 16;
    char block[1200];
    int size;
    explicit Buffer(int n) : size(n) {
        memset(block, kSentinel, sizeof block);
    }
    char *data() {
        return block;
    }
    // The text up to the terminator (or the whole block when nothing was terminated).
    std::string text() const {
        return std::string(block, strnlen(block, sizeof block));
    }
    // True when every byte from offset `from` to the end of the slack is the sentinel.
    bool untouchedFrom(int from) const {
        for (int i = from; i < size + kSlack; ++i) {
            if (block[i] != kSentinel) {
                return false;
            }
        }
        return true;
    }
};

}  // namespace dt_test

#endif  // NLS_TESTS_CONVLIB_DT_TEST_UTIL_H
