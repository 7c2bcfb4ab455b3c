// SPDX-License-Identifier: MIT
// Decimal values: number text to packed binary-coded decimals and packed or unpacked decimals back
// to text.
#include <nlssupport/convlib.h>

#include <cstdint>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     decimal.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Longest number text the decimal routines read.
constexpr std::size_t kMaxText = 999;

// Marker of "no decimal point in the text".
constexpr uint64_t kNoPoint = UINT64_MAX;

// A digit in the C locale's sense.
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// A blank under the number-syntax flags: the space always, a tab or a line feed under their flags.
constexpr bool IsBlank(char c, uint32_t flags) {
    return c == ' ' || (c == '\t' && (flags & CONV_NUM_TAB_IS_BLANK) != 0) ||
           (c == '\n' && (flags & CONV_NUM_LF_IS_BLANK) != 0);
}

// Status of a packed decimal whose fraction was cut to fit the output: a warning when no fraction
// digit was kept or the caller allows fractions (or skips the check); otherwise the fraction
// itself was not allowed.
constexpr uint32_t FractionCutStatus(uint32_t scale, uint32_t flags) {
    return (scale == 0 || (flags & (CONV_NUM_NO_CHECK | CONV_NUM_DECIMAL_POINT)) != 0)
               ? CONV_WARN_TRUNCATION
               : CONV_ERR_NOT_A_NUMBER;
}

// The text of a packed or unpacked decimal before leading zeros are dropped: its digit nibbles in
// order, with the decimal point standing before the digit at index pointAt (kNoPoint: none).
struct DecimalDigits {
    const uint8_t *value;
    uint32_t layout;
    uint64_t nibbles;  // digit nibbles written, the pad of an even packed precision included
    uint64_t pointAt;  // index in the raw text at which the point stands, or kNoPoint
    char point;

    uint64_t RawLength() const {
        return nibbles + (pointAt == kNoPoint ? 0 : 1);
    }

    // The k-th digit nibble.
    uint8_t Nibble(uint64_t k) const {
        if (layout == CONV_DECIMAL_UNPACKED) {
            return value[k] & 0x0F;
        }
        const uint8_t byte = value[k / 2];
        return (k % 2 == 0) ? static_cast<uint8_t>(byte >> 4) : static_cast<uint8_t>(byte & 0x0F);
    }

    bool IsPoint(uint64_t r) const {
        return pointAt != kNoPoint && r == pointAt;
    }

    // The character at index r of the raw text.
    char At(uint64_t r) const {
        if (pointAt != kNoPoint) {
            if (r == pointAt) {
                return point;
            }
            if (r > pointAt) {
                --r;
            }
        }
        return static_cast<char>('0' + Nibble(r));
    }
};

}  // namespace

// Reads number text into a packed decimal of at most size bytes: two digits a byte, high nibble
// first, the sign (0xC, or 0xD after a leading "-") in the low nibble of the last byte. Stores
// the digits counted and the fraction digits among them in *precision and *scale. Returns
// CONV_OK, CONV_WARN_TRUNCATION, CONV_ERR_NOT_A_NUMBER, CONV_ERR_TARGET_TOO_SMALL or a status of
// the double conversion taken by text with an exponent. out may be partly written on failure.
extern "C" uint32_t CONV_StringToDecimal(uint8_t *out, const char *text, uint32_t size,
                                         uint32_t *precision, uint32_t *scale, uint32_t flags,
                                         char point) noexcept {
    const std::size_t textLength = strnlen(text, kMaxText + 1);
    if (textLength > kMaxText || size == 0) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    if ((flags & CONV_NUM_NO_CHECK) == 0 &&
        CONV_IsNumber(text, flags & ~CONV_NUM_EXPONENT, point) != CONV_OK) {
        const uint32_t status = CONV_IsNumber(text, flags, point);
        if (status != CONV_OK) {
            return status;
        }
        // Only the exponent made the difference: the value goes through a double.
        double value = 0.0;
        const uint32_t doubleStatus = CONV_StringToDouble(&value, text, CONV_NUM_NO_CHECK, point);
        if (doubleStatus != CONV_OK) {
            return doubleStatus;
        }
        return CONV_DoubleToDecimal(out, value, size, precision, scale);
    }

    uint32_t &digits = *precision;
    uint32_t &fractionDigits = *scale;
    digits = 0;
    fractionDigits = 0;
    const char *pos = text;
    const char *end = text + textLength;
    if ((flags & CONV_NUM_LEADING_BLANKS) != 0) {
        while (pos < end && IsBlank(*pos, flags)) {
            ++pos;
        }
    }
    if ((flags & CONV_NUM_TRAILING_BLANKS) != 0) {
        while (end > pos && IsBlank(end[-1], flags)) {
            --end;
        }
    }
    // Only "-" is taken as a sign here; a "+" fails the digit test below.
    uint8_t sign = CONV_DECIMAL_PLUS;
    if (pos < end && *pos == '-') {
        sign = CONV_DECIMAL_MINUS;
        ++pos;
    }
    bool inFraction = false;
    if (pos < end && *pos == point) {
        inFraction = true;
        ++pos;
    }

    const uint32_t lastByte = size - 1;
    uint32_t byte = 0;
    out[0] = 0;
    while (pos < end) {
        // High nibble.
        if (!IsDigit(*pos)) {
            return CONV_ERR_NOT_A_NUMBER;
        }
        out[byte] = static_cast<uint8_t>((*pos - '0') << 4);
        ++digits;
        if (inFraction) {
            ++fractionDigits;
        }
        ++pos;
        if (pos < end && *pos == point) {
            inFraction = true;
            ++pos;
        }
        if (pos == end) {
            break;
        }
        if (byte == lastByte && inFraction) {
            // No room for the rest of the fraction: the sign closes this byte and the remaining
            // fraction digits are dropped; every integer digit has been kept.
            out[byte] = static_cast<uint8_t>(out[byte] | sign);
            return FractionCutStatus(fractionDigits, flags);
        }

        // Low nibble.
        if (!IsDigit(*pos)) {
            return CONV_ERR_NOT_A_NUMBER;
        }
        out[byte] = static_cast<uint8_t>(out[byte] | (*pos - '0'));
        ++digits;
        if (inFraction) {
            ++fractionDigits;
        }
        ++pos;
        if (pos < end && *pos == point) {
            inFraction = true;
            ++pos;
        }
        if (pos == end) {
            // The sign goes to the next byte, whose high nibble holds a pad 0. That pad is
            // counted as one more fraction digit, so "12" reads as 12.0 (precision 3, scale 1);
            // callers rely on the precision being odd.
            ++digits;
            ++fractionDigits;
        }
        if (byte == lastByte) {
            // The byte is full and the sign has no room. Had the fraction begun before this
            // digit, the test above would already have cut it: this digit is an integer digit
            // (at most followed by the point). Putting the sign over it would lose an integer
            // digit while still counting it, and a reader given the returned precision would
            // read one byte more than was written; so the value does not fit.
            return CONV_ERR_TARGET_TOO_SMALL;
        }
        ++byte;
        out[byte] = 0;
    }
    if (fractionDigits != 0 && (flags & (CONV_NUM_NO_CHECK | CONV_NUM_DECIMAL_POINT)) == 0) {
        // Also reached through the pad digit of an even number of integer digits.
        return CONV_ERR_NOT_A_NUMBER;
    }
    out[byte] = static_cast<uint8_t>(out[byte] | sign);
    return CONV_OK;
}

// Writes a decimal value as text into out of size bytes: "-" for the sign nibble 0xD, the digits
// with the point before the last scale of them, leading zeros dropped (a value with no integer
// digit comes out as ".5"). *length receives the full length of the text, sign included.
// Returns CONV_OK, CONV_WARN_TRUNCATION (fraction digits cut, the point may end the text),
// CONV_ERR_TARGET_TOO_SMALL (nothing written) or CONV_ERR_CONVERSION (*length untouched).
extern "C" uint32_t CONV_DecimalToString(char *out, const uint8_t *value, uint32_t size,
                                         uint32_t precision, uint32_t scale, char point,
                                         uint32_t layout, uint32_t *length) noexcept {
    if (layout != CONV_DECIMAL_UNPACKED && layout != CONV_DECIMAL_PACKED) {
        return CONV_ERR_CONVERSION;
    }
    if (scale > precision) {
        // More fraction digits than digits: the value has no meaning.
        return CONV_ERR_CONVERSION;
    }
    DecimalDigits digits{value, layout, 0, kNoPoint, point};
    uint8_t sign = CONV_DECIMAL_PLUS;
    uint64_t pad = 0;
    if (layout == CONV_DECIMAL_UNPACKED) {
        digits.nibbles = precision;
        if (precision > 0) {
            sign = static_cast<uint8_t>(value[precision - 1] >> 4);
        }
    } else {
        // precision / 2 + 1 bytes: all nibbles but the last one are digits.
        digits.nibbles = 2 * static_cast<uint64_t>(precision / 2) + 1;
        sign = value[precision / 2] & 0x0F;
        pad = (precision % 2 == 0) ? 1 : 0;
    }
    if (scale > 0) {
        digits.pointAt = precision - scale + pad;
    }
    for (uint64_t k = 0; k < digits.nibbles; ++k) {
        if (digits.Nibble(k) > 9) {
            return CONV_ERR_CONVERSION;
        }
    }
    const bool negative = sign == CONV_DECIMAL_MINUS;

    // Leading zeros go while a digit or the point follows; a value that has only fraction digits
    // also loses the zero before its point (".5", not "0.5"), as callers expect.
    const uint64_t rawLength = digits.RawLength();
    uint64_t start = 0;
    while (start + 1 < rawLength && digits.At(start) == '0' && !digits.IsPoint(start + 1)) {
        ++start;
    }
    // GCOVR_EXCL_BR_START: the loop above stops on a "0" with more text behind it only where
    // the point follows, so the last test cannot fail once the others hold.
    if (precision == scale && start + 1 < rawLength && digits.At(start) == '0' &&
        digits.IsPoint(start + 1)) {
        ++start;
    }
    // GCOVR_EXCL_BR_STOP
    const uint64_t textLength = rawLength - start;
    const bool startsWithPoint = digits.IsPoint(start);
    const uint64_t integerDigits = digits.pointAt == kNoPoint ? textLength : digits.pointAt - start;
    *length = static_cast<uint32_t>(textLength + (negative ? 1 : 0));

    int64_t room = static_cast<int64_t>(size) - 1;
    if (room < 1 || (room == 1 && negative) ||
        ((room == 1 || (room == 2 && negative)) && startsWithPoint)) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    if (negative) {
        --room;
    }
    uint32_t status = CONV_OK;
    uint64_t written = textLength;
    if (textLength > static_cast<uint64_t>(room)) {
        if (integerDigits > static_cast<uint64_t>(room)) {
            return CONV_ERR_TARGET_TOO_SMALL;
        }
        written = static_cast<uint64_t>(room);
        status = CONV_WARN_TRUNCATION;
    }
    char *o = out;
    if (negative) {
        *o++ = '-';
    }
    for (uint64_t r = 0; r < written; ++r) {
        *o++ = digits.At(start + r);
    }
    *o = '\0';
    return status;
}
