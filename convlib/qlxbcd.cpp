// SPDX-License-Identifier: MIT
// The self-describing packed decimal: a precision byte, a signed scale byte, then packed digits
// with the sign in the last low nibble. Written from number text and back.
#include <nlssupport/convlib.h>

#include <cstdint>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     qlxbcd.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Longest text read; the work bytes hold one digit per character and the sign.
constexpr std::size_t kMaxText = 999;
constexpr std::size_t kWorkBytes = kMaxText / 2 + 2;

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Both "." and "," mark the decimal point in this layout's text.
constexpr bool IsPoint(char c) {
    return c == '.' || c == ',';
}

}  // namespace

// Reads number text into the self-describing layout at out: byte 0 the significant digits, byte 1
// the scale as a signed byte, then the packed digits and sign. The text is read from its last
// character to its first, so trailing zeros are dropped as they are met: fraction zeros vanish and
// integer zeros make the scale negative ("100" is 1, -2, 0x1C). A value with no non-zero digit is
// 1, 0, 0x0C. Returns CONV_OK or CONV_ERR_NOT_A_NUMBER (bad character, second point, sign not in
// front, more than 255 digits, a scale outside -128..127, a text over 999 characters); out is
// only written on success.
extern "C" uint32_t CONV_StringToQLXBCD(uint8_t *out, const char *text) noexcept {
    const std::size_t n = strnlen(text, kMaxText + 1);
    if (n > kMaxText) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    // work[0] holds the sign and the last digit; each further byte two digits, growing leftwards.
    uint8_t work[kWorkBytes] = {};
    work[0] = CONV_DECIMAL_PLUS;
    std::size_t current = 0;
    bool nextIsHigh = true;
    int32_t count = 0;
    int32_t scale = 0;
    bool pointSeen = false;
    std::size_t pointPos = 0;
    bool nonZeroSeen = false;
    std::size_t leftmostNonZero = 0;
    bool rightEnd = true;

    for (std::size_t i = n; i-- > 0;) {
        const char c = text[i];
        if (IsPoint(c)) {
            if (pointSeen) {
                return CONV_ERR_NOT_A_NUMBER;
            }
            pointSeen = true;
            pointPos = i;
            scale += static_cast<int32_t>(n - 1 - i);
        } else if (c == '-' || c == '+') {
            if (i != 0) {
                return CONV_ERR_NOT_A_NUMBER;
            }
            work[0] = static_cast<uint8_t>((work[0] & 0xF0) |
                                           (c == '-' ? CONV_DECIMAL_MINUS : CONV_DECIMAL_PLUS));
        } else if (!IsDigit(c)) {
            return CONV_ERR_NOT_A_NUMBER;
        } else if (c == '0' && rightEnd) {
            // A trailing zero is not stored; the scale says where the digits stand instead.
            --scale;
        } else {
            if (c != '0') {
                nonZeroSeen = true;
                leftmostNonZero = i;
            }
            const uint8_t digit = static_cast<uint8_t>(c - '0');
            if (nextIsHigh) {
                work[current] = static_cast<uint8_t>(work[current] | (digit << 4));
            } else {
                ++current;
                work[current] = digit;
            }
            nextIsHigh = !nextIsHigh;
            ++count;
            rightEnd = false;
        }
    }

    if (!nonZeroSeen) {
        out[0] = 1;
        out[1] = 0;
        out[2] = CONV_DECIMAL_PLUS;
        return CONV_OK;
    }
    // A text without an integer digit (".5", "-.5") counts the zero that it leaves out.
    if (IsPoint(text[0]) || ((text[0] == '-' || text[0] == '+') && IsPoint(text[1]))) {
        ++count;
    }
    // Zeros between the point and the first significant digit of a value below one are not
    // digits of the value: the scale places them.
    if (pointSeen && pointPos < leftmostNonZero) {
        count -= static_cast<int32_t>(leftmostNonZero - pointPos);
    }
    std::size_t first = static_cast<std::size_t>(count / 2);
    // Leading zero bytes (zeros in front of the integer digits) are left out; each one removes
    // its two zeros from the count, which stays odd.
    while (first > 0 && work[first] == 0) {
        count = (count - 2) | 1;
        --first;
    }
    // A zero high nibble in front of an odd count is a pad, not a digit.
    if ((work[first] >> 4) == 0 && count % 2 == 1) {
        --count;
    }
    if (count > 255 || scale < -128 || scale > 127) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    out[0] = static_cast<uint8_t>(count);
    out[1] = static_cast<uint8_t>(static_cast<int8_t>(scale));
    uint8_t *o = out + 2;
    for (std::size_t k = first + 1; k-- > 0;) {
        *o++ = work[k];
    }
    return CONV_OK;
}

// Writes a value in the self-describing layout as text ("-" for a negative value, "." as the
// point) into out, which must have room for it (see the header). The precision byte is taken as
// an unsigned count. Returns CONV_OK or CONV_ERR_NOT_A_NUMBER for a sign nibble other than 0xC
// and 0xD (nothing written then).
extern "C" uint32_t CONV_QLXBCDToString(char *out, const uint8_t *value) noexcept {
    const uint32_t precision = value[0];
    // The scale byte is a signed 8-bit number (two's complement).
    const int32_t scale = value[1] < 128 ? value[1] : value[1] - 256;
    const uint8_t *digits = value + 2;
    const uint32_t lastByte = precision / 2;
    const uint8_t sign = digits[lastByte] & 0x0F;
    if (sign != CONV_DECIMAL_PLUS && sign != CONV_DECIMAL_MINUS) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    char *o = out;
    if (sign == CONV_DECIMAL_MINUS) {
        *o++ = '-';
    }
    bool pointPending = false;
    int64_t pointPlace = 0;
    if (scale < static_cast<int32_t>(precision)) {
        // The point follows the first precision - scale digits; with a scale of 0 or less that
        // place lies at or past the last digit, so no point is written.
        pointPending = true;
        pointPlace = static_cast<int64_t>(precision) - scale;
    } else {
        // A value below one: "0.", then the zeros that the scale implies before the digits.
        *o++ = '0';
        *o++ = '.';
        for (int32_t z = 0; z < scale - static_cast<int32_t>(precision); ++z) {
            *o++ = '0';
        }
    }
    int64_t position = 0;
    for (uint32_t b = 0; b <= lastByte; ++b) {
        *o++ = static_cast<char>('0' + (digits[b] >> 4));
        ++position;
        if (b == 0 && o[-1] == '0') {
            // The pad of an even precision, or a leading zero: taken back.
            --o;
            --position;
        }
        const uint8_t low = digits[b] & 0x0F;
        if (low < 10) {
            if (pointPending && position == pointPlace) {
                *o++ = '.';
                pointPending = false;
            }
            *o++ = static_cast<char>('0' + low);
            ++position;
            if (pointPending && position == pointPlace) {
                *o++ = '.';
                pointPending = false;
            }
        }
    }
    for (int32_t z = 0; z < -scale; ++z) {
        *o++ = '0';
    }
    if (o == out) {
        *o++ = '0';
    }
    *o = '\0';
    return CONV_OK;
}
