// SPDX-License-Identifier: MIT
// Direct reading of double text: the common forms of a number, read without the scratch copy and
// strtod of the general text-to-double conversion, to exactly the double strtod gives.
#include "dblread.h"

#include <langinfo.h>
#include <nlssupport/convlib.h>

#include <cfloat>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <system_error>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dblread.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     dblread.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Longest text the conversion takes, without its NUL.
constexpr size_t kMaxText = 999;

// Decimal digits that always fit in 64 bits.
constexpr int kMantissaDigits = 19;

// Exponents beyond this are kept at it: no double is that far from 1.
constexpr int32_t kExponentCeiling = 100000;

// A digit of the C locale's digit class, as the syntax check takes it.
constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// A blank under the number-syntax flags: the space always, a tab and a line feed only when
// their flags are set.
constexpr bool IsBlank(char c, uint32_t flags) noexcept {
    return c == ' ' || (c == '\t' && (flags & CONV_NUM_TAB_IS_BLANK) != 0) ||
           (c == '\n' && (flags & CONV_NUM_LF_IS_BLANK) != 0);
}

// A number text taken apart: where its pieces stand, and its value as a whole number of at most
// nineteen significant digits times a power of ten.
struct NumberParts {
    bool negative = false;
    const char *mantissa = nullptr;  // the first digit, or the point when it comes first
    const char *point = nullptr;     // the decimal point within the mantissa, or null
    const char *letter = nullptr;    // the exponent letter, or null
    const char *exponent = nullptr;  // the exponent's sign or first digit, behind the letter
    const char *end = nullptr;       // behind the number (its last digit or point)
    uint64_t digits = 0;             // the significant digits, as a whole number
    int32_t power = 0;               // the power of ten that digits is to be multiplied by
    bool inexact = false;            // a digit other than 0 did not fit into digits
};

// Adds a mantissa digit: into the whole number while it has room, else only into the power (an
// integer digit) or nowhere (a fraction digit). Zeros in front of the first other digit do not
// count as significant.
inline void AddDigit(NumberParts *parts, int *significant, char c, bool fraction) noexcept {
    const uint32_t digit = static_cast<uint32_t>(c - '0');
    if (*significant < kMantissaDigits) {
        parts->digits = parts->digits * 10 + digit;
        *significant += parts->digits != 0 ? 1 : 0;
        parts->power -= fraction ? 1 : 0;
    } else {
        parts->power += fraction ? 0 : 1;
        parts->inexact = parts->inexact || digit != 0;
    }
}

// Reads the common form of a double's text: blanks where the flags allow them, an optional sign
// with blanks after it, digits with at most one point and at least one digit, an optional
// exponent (letter, one blank, sign, digits) where the flags allow it, trailing blanks where they
// allow them, and the end of the text, at most the 999 characters the conversion takes. Such a
// text passes the syntax check under the flags, and the general conversion would hand strtod
// the same number. Only the usual point characters "." and "," qualify, so that a point that is
// itself a digit, a sign, a letter or a blank never gets here. Returns true with *parts filled;
// false for every other text.
bool ScanNumber(const char *text, uint32_t flags, char point, NumberParts *parts) noexcept {
    if (point != '.' && point != ',') {
        return false;
    }
    const char *p = text;
    if ((flags & CONV_NUM_LEADING_BLANKS) != 0) {
        while (IsBlank(*p, flags)) {
            ++p;
        }
    }
    if (*p == '-' || *p == '+') {
        parts->negative = *p == '-';
        ++p;
        while (IsBlank(*p, flags)) {
            ++p;
        }
    }
    parts->mantissa = p;
    int significant = 0;
    while (IsDigit(*p)) {
        AddDigit(parts, &significant, *p, false);
        ++p;
    }
    bool digits = p != parts->mantissa;
    if (*p == point && (flags & CONV_NUM_DECIMAL_POINT) != 0) {
        parts->point = p;
        ++p;
        const char *fraction = p;
        while (IsDigit(*p)) {
            AddDigit(parts, &significant, *p, true);
            ++p;
        }
        digits = digits || p != fraction;
    }
    if (!digits) {
        return false;
    }
    if ((flags & CONV_NUM_EXPONENT) != 0 &&
        (*p == 'e' || *p == 'E' ||
         ((flags & CONV_NUM_D_EXPONENT) != 0 && (*p == 'd' || *p == 'D')))) {
        parts->letter = p;
        ++p;
        if (IsBlank(*p, flags)) {
            ++p;
        }
        parts->exponent = p;
        const bool negative = *p == '-';
        if (*p == '+' || *p == '-') {
            ++p;
        }
        if (!IsDigit(*p)) {
            return false;
        }
        int32_t exponent = 0;
        while (IsDigit(*p)) {
            if (exponent < kExponentCeiling) {
                exponent = exponent * 10 + (*p - '0');
            }
            ++p;
        }
        parts->power += negative ? -exponent : exponent;
    }
    parts->end = p;
    if ((flags & CONV_NUM_TRAILING_BLANKS) != 0) {
        while (IsBlank(*p, flags)) {
            ++p;
        }
    }
    return *p == '\0' && static_cast<size_t>(p - text) <= kMaxText;
}

// Whether strtod reads "." as the decimal point: it takes the point of the current locale.
bool LocalePointIsDot() noexcept {
    const char *radix = nl_langinfo(RADIXCHAR);
    // GCOVR_EXCL_BR_START: a locale's point is one character, and no multibyte character
    // begins with the byte '.', so a point that starts with '.' is "." itself.
    return radix[0] == '.' && radix[1] == '\0';
    // GCOVR_EXCL_BR_STOP
}

// Whether a multiplication or division of doubles rounds once. Where doubles are computed in
// the x87's wider registers (32-bit x86) it rounds twice, and so does the fast path of
// std::from_chars, which can then be one unit off: there strtod reads every text.
#if FLT_EVAL_METHOD == 0 && !defined(__i386__)
constexpr bool kDoubleArithmeticRoundsOnce = true;
#else
constexpr bool kDoubleArithmeticRoundsOnce = false;
#endif

// The powers of ten that a double holds exactly.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int32_t kLargestExactPower = 22;
constexpr uint64_t kLargestExactWhole = uint64_t{1} << 53;

// The value of a number of at most 2^53 times a power of ten of at most 22 in magnitude: both
// are doubles exactly, so one multiplication or division, which rounds once, gives the double
// nearest to the value in the current rounding mode, which is what strtod gives. The sign is
// applied first, since the directed modes round a negative value the other way.
bool ReadExactly(const NumberParts &parts, double *value) noexcept {
    if (parts.inexact || parts.digits > kLargestExactWhole || parts.power < -kLargestExactPower ||
        parts.power > kLargestExactPower) {
        return false;
    }
    double whole = static_cast<double>(parts.digits);
    if (parts.negative) {
        whole = -whole;
    }
    *value =
        parts.power >= 0 ? whole * kExactPowers[parts.power] : whole / kExactPowers[-parts.power];
    return true;
}

// Whether the current rounding mode is to nearest, the one std::from_chars always uses: it is
// the only mode in which a tiny addend leaves 1.0 unchanged from both sides. volatile keeps the
// compiler from folding the test at build time.
bool RoundingToNearest() noexcept {
    volatile double one = 1.0;
    constexpr double kTiny = 0x1p-60;
    return one + kTiny == 1.0 && one - kTiny == 1.0;
}

// Reads the number with std::from_chars, which rounds correctly to nearest as strtod does. The
// text is read where it stands when it already has the form from_chars takes (a "." point, an
// "e" or "E" exponent letter with no blank behind it); otherwise its pieces are copied with "."
// and "e". Returns false when strtod must decide: a rounding mode other than to nearest, a value
// that overflows, underflows or is subnormal (strtod sets errno for those).
bool ReadCorrectlyRounded(const NumberParts &parts, double *value) noexcept {
    if (!RoundingToNearest()) {
        return false;
    }
    const char *first = parts.mantissa;
    const char *last = parts.end;
    char copy[kMaxText + 1];
    const bool direct =
        (parts.point == nullptr || *parts.point == '.') &&
        (parts.letter == nullptr ||
         ((*parts.letter == 'e' || *parts.letter == 'E') && parts.exponent == parts.letter + 1));
    if (!direct) {
        const char *mantissaEnd = parts.letter != nullptr ? parts.letter : parts.end;
        const size_t mantissaLength = static_cast<size_t>(mantissaEnd - parts.mantissa);
        std::memcpy(copy, parts.mantissa, mantissaLength);
        char *out = copy + mantissaLength;
        if (parts.point != nullptr) {
            copy[parts.point - parts.mantissa] = '.';
        }
        if (parts.letter != nullptr) {
            *out++ = 'e';
            const size_t exponentLength = static_cast<size_t>(parts.end - parts.exponent);
            std::memcpy(out, parts.exponent, exponentLength);
            out += exponentLength;
        }
        first = copy;
        last = out;
    }
    double read = 0.0;
    const std::from_chars_result result = std::from_chars(first, last, read);
    // GCOVR_EXCL_BR_START: ScanNumber passed only digits, one point and an exponent with digits
    // (the copy has "." and "e"), all of which from_chars reads up to last.
    if (result.ec != std::errc() || result.ptr != last) {
        return false;  // out of range: overflow, or underflow to zero
    }
    // GCOVR_EXCL_BR_STOP
    // A zero is read only from a text of zeros (from_chars reports the values that underflow to
    // zero as out of range), and strtod reads that without setting errno; a subnormal value
    // makes strtod set errno.
    // GCOVR_EXCL_BR_START: the text read starts behind the sign, so read is never negative.
    if (read == 0.0 ? parts.digits != 0 : read < DBL_MIN && read > -DBL_MIN) {
        return false;
    }
    // GCOVR_EXCL_BR_STOP
    *value = parts.negative ? -read : read;
    return true;
}
}  // namespace

namespace conv {

bool ReadPlainDouble(const char *text, uint32_t flags, char point, double *value) noexcept {
    if (!kDoubleArithmeticRoundsOnce) {
        return false;
    }
    NumberParts parts;
    if (!ScanNumber(text, flags, point, &parts)) {
        return false;
    }
    // With a point in the text strtod reads it only where the locale's point is ".".
    if (parts.point != nullptr && !LocalePointIsDot()) {
        return false;
    }
    return ReadExactly(parts, value) || ReadCorrectlyRounded(parts, value);
}

}  // namespace conv
