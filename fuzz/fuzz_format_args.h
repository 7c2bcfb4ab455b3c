/* SPDX-License-Identifier: MIT */
// Argument supply for the formatter targets. The format written by the fuzzer is first read with
// the formatter's own grammar to learn which argument each conversion and each '*' takes (int,
// unsigned int, double, narrow string, wide string); the call is then made with exactly those
// types, drawn from fixed pools, so every conversion the engine meets is fed a valid argument.
// At most kMaxArgs arguments are passed: the format is cut in front of the conversion that would
// need more.
#ifndef NLS_FUZZ_FORMAT_ARGS_H
#define NLS_FUZZ_FORMAT_ARGS_H

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include <nlssupport/glib.h>

namespace fuzzargs {

enum class Arg : uint8_t { kInt, kUnsigned, kDouble, kString, kWide };

constexpr std::size_t kMaxArgs = 4;

inline constexpr int kIntPool[16] = {0,     1,       -1,      42,      255,    -32768,
                                     65535, INT_MAX, INT_MIN, 0x80,    8,      1000000,
                                     -5,    0x7FFF,  0x10000, 127};

inline const double kDoublePool[16] = {0.0,    -0.0,     1.5,       -2.25,   1e300,
                                       -DBL_MAX, DBL_MIN, 5e-324,   HUGE_VAL, -HUGE_VAL,
                                       NAN,    123456789.125, 0.1,  1e15,    1e-5,
                                       9.999999};

inline constexpr char kLongText[] =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrst"
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrst"
    "0123456789abcdefghij";
inline const char *const kStringPool[8] = {"", "abc", "x", kLongText, "with\nnewline",
                                           "\xC3\xA9t\xE9", nullptr, "%d%s"};

inline constexpr GLIB_WChar kWEmpty[] = {0};
inline constexpr GLIB_WChar kWAbc[] = {'a', 'b', 'c', 0};
inline constexpr GLIB_WChar kWAccents[] = {0x00E9, 0x20AC, 0x0041, 0};
inline constexpr GLIB_WChar kWSurrogates[] = {0xD800, 0xDC00, 0};
inline constexpr GLIB_WChar kWHigh[] = {0xFFFF, 0x0800, 0x07FF, 0x0080, 0x007F, 0};
inline constexpr GLIB_WChar kWX[] = {'x', 0};
struct LongWide {
    GLIB_WChar units[151];
    constexpr LongWide() : units{} {
        for (int i = 0; i < 150; ++i) {
            units[i] = static_cast<GLIB_WChar>(i % 3 == 0 ? 0x4E2D : 'a' + i % 26);
        }
        units[150] = 0;
    }
};
inline constexpr LongWide kWLong{};
inline const GLIB_WChar *const kWidePool[8] = {kWEmpty, kWAbc,   kWAccents, kWSurrogates,
                                               kWHigh,  nullptr, kWLong.units, kWX};

template <typename U>
constexpr bool IsDigit(U c) {
    return c >= '0' && c <= '9';
}

// Reads the format as the engine does and records the argument types it consumes in types.
// Returns their number; *cut receives the index of the '%' in front of which the format must be
// cut so that no more than kMaxArgs arguments are consumed, or -1.
template <typename U>
std::size_t ScanArgs(const U *f, Arg *types, long *cut) {
    std::size_t n = 0;
    std::size_t i = 0;
    *cut = -1;
    while (f[i] != 0) {
        const U c = f[i];
        if (c == '\\') {
            ++i;
            if (f[i] == 0) {
                break;
            }
            ++i;
            continue;
        }
        if (c != '%') {
            ++i;
            continue;
        }
        const std::size_t start = i++;
        Arg local[kMaxArgs + 2];
        std::size_t m = 0;
        bool overflow = false;
        auto add = [&](Arg a) {
            if (n + m >= kMaxArgs) {
                overflow = true;
            } else {
                local[m++] = a;
            }
        };
        while (f[i] == ' ' || f[i] == '#' || f[i] == '+' || f[i] == '-' || f[i] == '0') {
            ++i;
        }
        if (f[i] == '%') {
            ++i;
            continue;
        }
        while (f[i] == '*' || IsDigit(f[i])) {
            if (f[i] == '*') {
                add(Arg::kInt);
            }
            ++i;
        }
        if (f[i] == '.') {
            bool firstDot = true;
            for (;;) {
                if (f[i] == '.' && firstDot) {
                    firstDot = false;
                } else if (f[i] == '*') {
                    add(Arg::kInt);
                } else if (!IsDigit(f[i])) {
                    break;
                }
                ++i;
            }
        }
        bool isLong = false;
        while (f[i] == 'h' || f[i] == 'l') {
            isLong = isLong || f[i] == 'l';
            ++i;
        }
        bool valid = true;
        switch (f[i]) {
            case 'd':
            case 'i':
            case 'c':
                add(Arg::kInt);
                break;
            case 'u':
            case 'o':
            case 'x':
            case 'X':
                add(Arg::kUnsigned);
                break;
            case 's':
                add(isLong ? Arg::kWide : Arg::kString);
                break;
            case 'p':
                add(Arg::kString);
                break;
            case 'e':
            case 'E':
            case 'f':
            case 'g':
            case 'G':
                add(Arg::kDouble);
                break;
            default:
                valid = false;  // the engine stops here, after the '*' arguments
                break;
        }
        if (overflow) {
            *cut = static_cast<long>(start);
            return n;
        }
        for (std::size_t k = 0; k < m; ++k) {
            types[n++] = local[k];
        }
        if (!valid) {
            return n;
        }
        ++i;
    }
    return n;
}

// Calls f(args...) with one argument per recorded type, taken from the pools by the selectors.
template <typename F, typename... A>
int Dispatch(F &f, const Arg *types, std::size_t n, const uint8_t *sel, std::size_t k, A... args) {
    if constexpr (sizeof...(A) >= kMaxArgs) {
        return f(args...);
    } else {
        if (k >= n) {
            return f(args...);
        }
        const uint8_t s = sel[k];
        switch (types[k]) {
            case Arg::kInt:
                return Dispatch(f, types, n, sel, k + 1, args..., kIntPool[s & 15]);
            case Arg::kUnsigned:
                return Dispatch(f, types, n, sel, k + 1, args...,
                                static_cast<unsigned>(kIntPool[s & 15]));
            case Arg::kDouble:
                return Dispatch(f, types, n, sel, k + 1, args..., kDoublePool[s & 15]);
            case Arg::kString:
                return Dispatch(f, types, n, sel, k + 1, args..., kStringPool[s & 7]);
            case Arg::kWide:
                return Dispatch(f, types, n, sel, k + 1, args..., kWidePool[s & 7]);
        }
        return 0;
    }
}

}  // namespace fuzzargs

#endif  // NLS_FUZZ_FORMAT_ARGS_H
