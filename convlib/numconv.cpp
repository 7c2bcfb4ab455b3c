// SPDX-License-Identifier: MIT
// Integer and floating text conversions: decimal number text with a caller-chosen decimal-point
// character to and from the signed and unsigned integer types, double and float.
#include <nlssupport/convlib.h>

#include <cctype>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "convlib_export.h"
#include "dblread.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     numconv.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_export.h\t\t$Revision$\t$Date$",
    "@(#)     dblread.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Longest text the conversions take, without its NUL; scratch copies are bounded by it.
constexpr size_t kMaxText = 999;
// A scratch copy may gain one "0" before a leading point.
constexpr size_t kScratchSize = kMaxText + 2;

// The number of the most negative 32-bit integer as the signed conversion accepts it.
constexpr char kInt32MinText[] = "-2147483648";

bool IsSpace(char c) noexcept {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

const char *SkipSpace(const char *p) noexcept {
    while (IsSpace(*p)) {
        ++p;
    }
    return p;
}

// strtoul in base ten with the results of a 32-bit unsigned long. Only texts without a "-" reach
// it, so a value beyond 32 bits is an overflow: errno ERANGE and the value 4294967295.
uint32_t StrToULong32(const char *text, char **end) noexcept {
    const unsigned long value = std::strtoul(text, end, 10);
    if (value > UINT32_MAX) {
        errno = ERANGE;
        return UINT32_MAX;
    }
    return static_cast<uint32_t>(value);
}

// Replaces the first occurrence of from by to.
void ReplaceFirst(char *text, char from, char to) noexcept {
    if (from == '\0') {
        return;
    }
    char *at = std::strchr(text, from);
    if (at != nullptr) {
        *at = to;
    }
}

// The integer scratch copy: leading white space skipped, a sign copied with the white space
// after it skipped, a "0" put before a leading point, and the first point made ".".
// Returns false, having copied nothing, when the text has a "-" and negatives are refused.
bool BuildIntegerScratch(char *scratch, const char *text, char point, bool refuseMinus) noexcept {
    const char *p = SkipSpace(text);
    char *out = scratch;
    if (*p == '-' || *p == '+') {
        if (*p == '-' && refuseMinus) {
            return false;
        }
        *out++ = *p++;
        p = SkipSpace(p);
    }
    if (*p == point && point != '\0') {
        *out++ = '0';
    }
    std::strcpy(out, p);
    ReplaceFirst(scratch, point, '.');
    return true;
}

// After an integer conversion that stopped at end: a "." followed (after its zeros) by a digit
// means a fraction was dropped toward zero.
uint32_t FractionStatus(const char *end) noexcept {
    if (*end != '.') {
        return CONV_OK;
    }
    const char *p = end + 1;
    while (*p == '0') {
        ++p;
    }
    return (*p >= '0' && *p <= '9') ? CONV_WARN_TRUNCATION : CONV_OK;
}

// Outcome of the syntax check of the integer conversions.
enum class IntegerSyntax {
    Plain,     // a number without an exponent (or no check asked for): read with strtol
    Exponent,  // a number that needs its exponent: read through double
    Invalid,   // not a number under the caller's flags
};

// Checks the text first without and then with the exponent bit, as the integer conversions do.
// *status receives the failure status for IntegerSyntax::Invalid.
IntegerSyntax CheckIntegerText(const char *text, uint32_t flags, char point,
                               uint32_t *status) noexcept {
    if ((flags & CONV_NUM_NO_CHECK) != 0 ||
        CONV_IsNumber(text, flags & ~CONV_NUM_EXPONENT, point) == CONV_OK) {
        return IntegerSyntax::Plain;
    }
    *status = CONV_IsNumber(text, flags, point);
    return *status == CONV_OK ? IntegerSyntax::Exponent : IntegerSyntax::Invalid;
}

// A number with an exponent goes through double; a value that rounded to zero becomes 0.1 so
// that the narrowing gives 0 with CONV_WARN_TRUNCATION. Returns CONV_OK with *value set, or the
// double conversion's failure.
uint32_t ExponentToDouble(double *value, const char *text, char point) noexcept {
    const uint32_t status = CONV_StringToDouble(value, text, CONV_NUM_NO_CHECK, point);
    if (status == CONV_WARN_ROUND_TO_ZERO) {
        *value = 0.1;
    } else if (status != CONV_OK) {
        return status;
    }
    return CONV_OK;
}

// Narrows the 32-bit result of the signed text conversion into a smaller target of the range
// [lower, upper], keeping the conversion's status (so a dropped fraction still warns).
template <typename T>
uint32_t StringToSmall(T *target, const char *text, uint32_t flags, char point, int32_t lower,
                       int32_t upper) noexcept {
    int32_t value = 0;
    const uint32_t status = CONV_StringToInt32(&value, text, flags, point);
    if (status != CONV_OK && status != CONV_WARN_TRUNCATION) {
        return status;
    }
    if (value < lower || value > upper) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<T>(value);
    return status;
}

// The common case of the signed conversion, read directly: optional spaces (when the flags allow
// leading blanks), an optional sign right before the digits, one to nine digits, optional spaces
// (when the flags allow trailing blanks), and the end of the text, no longer than the 999
// characters the conversion takes. Such a text passes the syntax check under any flags, holds no
// decimal point and cannot overflow, so the general path would give the same value and CONV_OK.
// Only the usual point characters "." and "," qualify, so that a point that is itself a digit, a
// sign or a blank never reaches this path. Returns true with *value set; false, having changed
// nothing, for every other text.
bool PlainInt32(const char *text, uint32_t flags, char point, int32_t *value) noexcept {
    if (point != '.' && point != ',') {
        return false;
    }
    const char *p = text;
    if ((flags & CONV_NUM_LEADING_BLANKS) != 0) {
        while (*p == ' ') {
            ++p;
        }
    }
    // Texts with and without a sign come mixed, so the sign is stepped over without a branch
    // that would be mispredicted half of the time.
    const char sign = *p;
    const bool negative = sign == '-';
    p += static_cast<int>(negative || sign == '+');
    uint32_t sum = static_cast<unsigned char>(*p) - uint32_t{'0'};
    if (sum > 9) {
        return false;
    }
    ++p;
    // The other eight digits at most, two at a time: a pair's value does not wait for the sum,
    // so the chain of multiplications that does is half as long. After nine digits p stands on
    // the next character, and a tenth digit fails the test of the end below.
    const auto pair = [&p, &sum]() noexcept {
        const uint32_t first = static_cast<unsigned char>(p[0]) - uint32_t{'0'};
        if (first > 9) {
            return false;
        }
        const uint32_t second = static_cast<unsigned char>(p[1]) - uint32_t{'0'};
        if (second > 9) {
            sum = sum * 10 + first;
            ++p;
            return false;
        }
        sum = sum * 100 + (first * 10 + second);
        p += 2;
        return true;
    };
    (void)(pair() && pair() && pair() && pair());
    if ((flags & (CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS)) == 0) {
        if (*p != '\0') {
            return false;
        }
    } else {
        if ((flags & CONV_NUM_TRAILING_BLANKS) != 0) {
            while (*p == ' ') {
                ++p;
            }
        }
        // Only blanks can make a text of at most nine digits longer than the limit.
        if (*p != '\0' || static_cast<size_t>(p - text) > kMaxText) {
            return false;
        }
    }
    *value = static_cast<int32_t>(negative ? 0 - sum : sum);
    return true;
}

// Copies printed text into out of size bytes, or fails without writing when it does not fit.
uint32_t CopyIfFits(char *out, const char *text, int printed, uint32_t size) noexcept {
    // GCOVR_EXCL_BR_START: printed < 0 cannot hold: snprintf of one 32-bit integer into 16
    // bytes does not fail.
    if (printed < 0 || static_cast<uint32_t>(printed) + 1 > size) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    // GCOVR_EXCL_BR_STOP
    std::memcpy(out, text, static_cast<size_t>(printed) + 1);
    return CONV_OK;
}
}  // namespace

namespace {
// Converts decimal text to a signed 32-bit integer, as CONV_StringToInt32 says, for every text
// that the direct reading does not take. Kept out of line, so that the direct reading runs
// without setting up this function's scratch buffer.
[[gnu::noinline]] uint32_t StringToInt32General(int32_t *target, const char *text, uint32_t flags,
                                                char point) noexcept {
    if (std::strlen(text) > kMaxText) {
        return CONV_ERR_CONVERSION;
    }
    uint32_t status = CONV_OK;
    const IntegerSyntax syntax = CheckIntegerText(text, flags, point, &status);
    if (syntax == IntegerSyntax::Invalid) {
        return status;
    }
    if (syntax == IntegerSyntax::Exponent) {
        double value = 0.0;
        status = ExponentToDouble(&value, text, point);
        if (status != CONV_OK) {
            return status;
        }
        return CONV_DoubleToInt32(target, value);
    }
    char scratch[kScratchSize];
    BuildIntegerScratch(scratch, text, point, false);
    errno = 0;
    char *end = nullptr;
    const int32_t value = conv::StrToLong32(scratch, &end);
    if (end == scratch) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    if (errno != 0) {
        // Kept for compatibility: only the first eleven characters are compared, so a longer
        // text that begins with "-2147483648" (a further digit, say) is read as the minimum.
        if (value == INT32_MIN && std::strncmp(scratch, kInt32MinText, 11) == 0) {
            errno = 0;
        } else {
            return CONV_ERR_OVERFLOW;
        }
    }
    *target = value;
    return FractionStatus(end);
}
}  // namespace

// Converts decimal text to a signed 32-bit integer. A text with an exponent (allowed by the
// flags) goes through double and is narrowed; otherwise strtol reads it after the point was
// made ".". Returns CONV_OK, CONV_WARN_TRUNCATION (fraction dropped toward zero),
// CONV_ERR_OVERFLOW, CONV_ERR_NOT_A_NUMBER or CONV_ERR_CONVERSION (text over 999 characters);
// *target is written on CONV_OK and on the warning only.
extern "C" uint32_t CONV_StringToInt32(int32_t *target, const char *text, uint32_t flags,
                                       char point) noexcept {
    if (PlainInt32(text, flags, point, target)) {
        errno = 0;  // as after the general path, which clears errno before strtol
        return CONV_OK;
    }
    return StringToInt32General(target, text, flags, point);
}

// Converts decimal text to an unsigned 32-bit integer, as CONV_StringToInt32 with strtoul; a "-"
// sign (even "-0") is CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_StringToUInt32(uint32_t *target, const char *text, uint32_t flags,
                                        char point) noexcept {
    if (std::strlen(text) > kMaxText) {
        return CONV_ERR_CONVERSION;
    }
    uint32_t status = CONV_OK;
    const IntegerSyntax syntax = CheckIntegerText(text, flags, point, &status);
    if (syntax == IntegerSyntax::Invalid) {
        return status;
    }
    if (syntax == IntegerSyntax::Exponent) {
        double value = 0.0;
        status = ExponentToDouble(&value, text, point);
        if (status != CONV_OK) {
            return status;
        }
        return CONV_DoubleToUInt32(target, value);
    }
    char scratch[kScratchSize];
    if (!BuildIntegerScratch(scratch, text, point, true)) {
        return CONV_ERR_OVERFLOW;
    }
    errno = 0;
    char *end = nullptr;
    const uint32_t value = StrToULong32(scratch, &end);
    if (end == scratch) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    if (errno != 0) {
        return CONV_ERR_OVERFLOW;
    }
    *target = value;
    return FractionStatus(end);
}

// Decimal text to signed 16-bit (-32768..32767) through the signed 32-bit conversion.
extern "C" uint32_t CONV_StringToInt16(int16_t *target, const char *text, uint32_t flags,
                                       char point) noexcept {
    return StringToSmall(target, text, flags, point, -32768, 32767);
}

// Decimal text to unsigned 16-bit (0..65535) through the signed 32-bit conversion.
extern "C" uint32_t CONV_StringToUInt16(uint16_t *target, const char *text, uint32_t flags,
                                        char point) noexcept {
    return StringToSmall(target, text, flags, point, 0, 65535);
}

// Decimal text to signed 8-bit (-128..127) through the signed 32-bit conversion.
extern "C" uint32_t CONV_StringToInt8(int8_t *target, const char *text, uint32_t flags,
                                      char point) noexcept {
    return StringToSmall(target, text, flags, point, -128, 127);
}

// Decimal text to unsigned 8-bit (0..255) through the signed 32-bit conversion.
extern "C" uint32_t CONV_StringToUInt8(uint8_t *target, const char *text, uint32_t flags,
                                       char point) noexcept {
    return StringToSmall(target, text, flags, point, 0, 255);
}

namespace {
// Converts decimal text to a double with strtod, as CONV_StringToDouble says, for every text that
// the direct reading does not take. Kept out of line, so that the direct reading runs without
// setting up this function's scratch buffer.
[[gnu::noinline]] uint32_t StringToDoubleGeneral(double *target, const char *text, uint32_t flags,
                                                 char point) noexcept {
    if ((flags & CONV_NUM_NO_CHECK) == 0) {
        const uint32_t status = CONV_IsNumber(text, flags, point);
        if (status != CONV_OK) {
            return status;
        }
    }
    if (std::strlen(text) > kMaxText) {
        return CONV_ERR_CONVERSION;
    }
    char scratch[kScratchSize];
    const char *p = SkipSpace(text);
    char *out = scratch;
    if (*p == '-' || *p == '+') {
        if (*p == '-') {
            *out++ = '-';
        }
        p = SkipSpace(p + 1);
    }
    std::strcpy(out, p);

    if ((flags & CONV_NUM_D_EXPONENT) != 0) {
        char *d = std::strchr(scratch, 'D');
        if (d == nullptr) {
            d = std::strchr(scratch, 'd');
        }
        if (d != nullptr) {
            *d = 'E';
        }
    }
    ReplaceFirst(scratch, 'e', 'E');
    if (char *e = std::strchr(scratch, 'E'); e != nullptr) {
        // The blanks allowed between the letter and the exponent go, so strtod sees the digits.
        char *after = e + 1;
        char *rest = after;
        while (*rest == ' ' || (*rest == '\t' && (flags & CONV_NUM_TAB_IS_BLANK) != 0) ||
               (*rest == '\n' && (flags & CONV_NUM_LF_IS_BLANK) != 0)) {
            ++rest;
        }
        if (rest != after) {
            std::memmove(after, rest, std::strlen(rest) + 1);
        }
    }
    ReplaceFirst(scratch, point, '.');

    errno = 0;
    char *end = nullptr;
    const double value = std::strtod(scratch, &end);
    *target = value;
    if (end == scratch) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    if (errno != 0) {
        if (value >= DBL_MAX || value <= -DBL_MAX) {
            return CONV_ERR_OVERFLOW;
        }
        if (value == 0.0) {
            return CONV_WARN_ROUND_TO_ZERO;
        }
    }
    return CONV_OK;
}
}  // namespace

// Converts decimal text (with an optional exponent; "D" too under CONV_NUM_D_EXPONENT) to a
// double with strtod, or, for the common texts whose value strtod reads without a range error,
// directly to the same double. *target is written as soon as the value has been read. Returns
// CONV_OK,
// CONV_ERR_NOT_A_NUMBER, CONV_ERR_OVERFLOW (beyond the largest double), CONV_WARN_ROUND_TO_ZERO
// (the value underflowed to 0.0) or CONV_ERR_CONVERSION (text over 999 characters).
extern "C" uint32_t CONV_StringToDouble(double *target, const char *text, uint32_t flags,
                                        char point) noexcept {
    // The common texts are read directly; everything else, and every value for which strtod
    // reports a range error, takes the general path.
    if (conv::ReadPlainDouble(text, flags, point, target)) {
        errno = 0;  // as after the general path, which clears errno before strtod
        return CONV_OK;
    }
    return StringToDoubleGeneral(target, text, flags, point);
}

// Converts decimal text to a float through CONV_StringToDouble. Any non-zero status of the
// double conversion, the round-to-zero warning included, is returned with *target untouched;
// beyond +-3.4028238720334565e38 CONV_ERR_OVERFLOW; otherwise the value rounded to float.
extern "C" uint32_t CONV_StringToFloat(float *target, const char *text, uint32_t flags,
                                       char point) noexcept {
    double value = 0.0;
    const uint32_t status = CONV_StringToDouble(&value, text, flags, point);
    if (status != CONV_OK) {
        return status;
    }
    return CONV_DoubleToFloat(target, value);
}

// Writes value in decimal ("%-ld") into out of size bytes with its NUL. Returns CONV_OK, or
// CONV_ERR_TARGET_TOO_SMALL with nothing written.
extern "C" uint32_t CONV_Int32ToString(char *out, int32_t value, uint32_t size) noexcept {
    char text[16];
    const int printed = std::snprintf(text, sizeof text, "%-ld", static_cast<long>(value));
    return CopyIfFits(out, text, printed, size);
}

// Writes value in decimal ("%-lu") into out of size bytes with its NUL. Returns CONV_OK, or
// CONV_ERR_TARGET_TOO_SMALL with nothing written.
extern "C" uint32_t CONV_UInt32ToString(char *out, uint32_t value, uint32_t size) noexcept {
    char text[16];
    const int printed = std::snprintf(text, sizeof text, "%-lu", static_cast<unsigned long>(value));
    return CopyIfFits(out, text, printed, size);
}
