// SPDX-License-Identifier: MIT
// Double to text in the scientific, fixed and general styles, with a caller-chosen
// decimal-point character and a shortened exponent.
#include <nlssupport/convlib.h>

#include <cfloat>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dbltext.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Room for any finite double printed with a precision of at most 100 in any style (at most 309
// integer digits, a sign, a point and 100 fraction digits).
constexpr size_t kPrintSize = 512;
constexpr uint32_t kMaxPrecision = 100;

// Replaces the first "." by the point.
void PutPoint(char *text, char point) noexcept {
    char *dot = std::strchr(text, '.');
    if (dot != nullptr) {
        *dot = point;
    }
}

// Removes count characters at position at (the rest, NUL included, moves left).
void RemoveAt(char *text, size_t at, size_t count) noexcept {
    std::memmove(text + at, text + at + count, std::strlen(text + at + count) + 1);
}

// Finishes a scientific text: the point put in, the exponent's "+" and leading zeros removed
// (an exponent of zero leaves nothing after "E"), then the text copied into out, or cut by
// moving the "E" part left over the last mantissa characters. keepLength is false when *length
// already holds the length of the fixed text that the general style tried first.
uint32_t FinishScientific(char *out, char *text, double value, uint32_t size, char point,
                          uint32_t *length, bool keepLength) noexcept {
    PutPoint(text, point);
    // Shortest text that still shows the value: sign, one digit and "E", plus the exponent.
    size_t minimum = value >= 0.0 ? 2 : 3;
    char *e = std::strchr(text, 'E');
    if (e == nullptr) {
        return CONV_ERR_CONVERSION;
    }
    size_t at = static_cast<size_t>(e - text) + 1;
    if (text[at] == '+') {
        RemoveAt(text, at, 1);
    } else if (text[at] == '-') {  // GCOVR_EXCL_BR_LINE: "%E" always puts a sign behind the E
        ++minimum;
        ++at;
    }
    minimum += std::strlen(text + at);
    size_t zeros = 0;
    while (text[at + zeros] == '0') {
        ++zeros;
    }
    RemoveAt(text, at, zeros);
    minimum -= zeros;

    const size_t textLength = std::strlen(text);
    if (!keepLength) {
        *length = static_cast<uint32_t>(textLength);
    }
    const size_t room = size - 1;
    if (textLength <= room) {
        std::memcpy(out, text, textLength + 1);
        return CONV_OK;
    }
    if (minimum > room) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    const size_t exponentStart = static_cast<size_t>(std::strchr(text, 'E') - text);
    const size_t exponentLength = textLength - exponentStart;
    const size_t mantissa = room - exponentLength;
    std::memcpy(out, text, mantissa);
    std::memcpy(out + mantissa, text + exponentStart, exponentLength + 1);
    return CONV_WARN_TRUNCATION;
}
}  // namespace

// Writes value as text into out (size bytes) in style 1 scientific ("%-.<precision>E"), 2 fixed
// ("%-.<precision>f") or 3 general ("%-.<precision>G", falling back to scientific when the plain
// number does not fit), with point as the decimal point. The exponent loses its "+" and leading
// zeros ("1.50E+00" becomes "1.50E"). Too long texts are cut: fixed texts lose fraction digits,
// scientific ones mantissa digits before the "E" part (CONV_WARN_TRUNCATION). *length receives
// the uncut length. Returns CONV_OK, CONV_WARN_TRUNCATION, CONV_ERR_TARGET_TOO_SMALL,
// CONV_ERR_OVERFLOW (an infinite value) or CONV_ERR_CONVERSION (size below 2, precision above
// 100, an unknown style).
extern "C" uint32_t CONV_DoubleToString(char *out, double value, uint32_t size, uint32_t style,
                                        uint32_t precision, char point, uint32_t *length) noexcept {
    if (size < 2 || precision > kMaxPrecision) {
        return CONV_ERR_CONVERSION;
    }
    if (value > DBL_MAX || value < -DBL_MAX) {
        return CONV_ERR_OVERFLOW;
    }
    *length = 0;
    const int digits = static_cast<int>(precision);
    char text[kPrintSize];
    switch (style) {
        case CONV_DOUBLE_FIXED:
            std::snprintf(text, sizeof text, "%-.*f", digits, value);
            PutPoint(text, point);
            return CONV_FormatNumString(out, text, size, point, length);
        case CONV_DOUBLE_GENERAL: {
            std::snprintf(text, sizeof text, "%-.*G", digits, value);
            if (CONV_IsNumber(text, CONV_NUM_DECIMAL_POINT, '.') != CONV_OK) {
                // The general format printed an exponent.
                return FinishScientific(out, text, value, size, point, length, false);
            }
            PutPoint(text, point);
            const uint32_t status = CONV_FormatNumString(out, text, size, point, length);
            if (status == CONV_OK || status == CONV_WARN_TRUNCATION) {
                return status;
            }
            // The plain number does not fit: try the scientific form, keeping the length that
            // the plain number reported.
            std::snprintf(text, sizeof text, "%-.*E", digits, value);
            return FinishScientific(out, text, value, size, point, length, true);
        }
        case CONV_DOUBLE_SCIENTIFIC:
            std::snprintf(text, sizeof text, "%-.*E", digits, value);
            return FinishScientific(out, text, value, size, point, length, false);
        default:
            return CONV_ERR_CONVERSION;
    }
}
