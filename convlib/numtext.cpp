// SPDX-License-Identifier: MIT
// Number text checking and normalising: the syntax check of decimal number text under the
// number-syntax flags, and the fitting of number text into a caller's buffer.
#include <nlssupport/convlib.h>

#include <cctype>
#include <cstdint>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     numtext.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Longest number text the normaliser takes, without its NUL.
constexpr size_t kMaxNumberText = 999;

// A digit of the C locale's digit class.
constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// A blank under the number-syntax flags: the space always, a tab and a line feed only when
// their flags are set.
constexpr bool IsBlank(char c, uint32_t flags) noexcept {
    return c == ' ' || (c == '\t' && (flags & CONV_NUM_TAB_IS_BLANK) != 0) ||
           (c == '\n' && (flags & CONV_NUM_LF_IS_BLANK) != 0);
}

// A tab or line feed whose flag is clear: it ends a blank scan and fails where it stands.
constexpr bool IsRefusedBlank(char c, uint32_t flags) noexcept {
    // GCOVR_EXCL_BR_START: its one caller has skipped the blanks first, so a tab or line feed
    // here always has its flag clear.
    return (c == '\t' && (flags & CONV_NUM_TAB_IS_BLANK) == 0) ||
           (c == '\n' && (flags & CONV_NUM_LF_IS_BLANK) == 0);
    // GCOVR_EXCL_BR_STOP
}

// An exponent letter under the flags: "E" or "e", and "D" or "d" with the D flag.
constexpr bool IsExponentLetter(char c, uint32_t flags) noexcept {
    return c == 'E' || c == 'e' || ((flags & CONV_NUM_D_EXPONENT) != 0 && (c == 'D' || c == 'd'));
}

const char *SkipDigits(const char *p) noexcept {
    while (IsDigit(*p)) {
        ++p;
    }
    return p;
}

const char *SkipBlanks(const char *p, uint32_t flags) noexcept {
    while (IsBlank(*p, flags)) {
        ++p;
    }
    return p;
}
}  // namespace

// Checks that text is a decimal number under flags with the decimal-point character point:
// optional blanks and sign, digits and/or a point with digits, an optional exponent, optional
// trailing blanks. Returns CONV_OK or CONV_ERR_NOT_A_NUMBER; CONV_NUM_NO_CHECK accepts anything.
extern "C" uint32_t CONV_IsNumber(const char *text, uint32_t flags, char point) noexcept {
    if ((flags & CONV_NUM_NO_CHECK) != 0) {
        return CONV_OK;
    }
    const char *p = text;
    bool lookForSign = true;
    if ((flags & CONV_NUM_LEADING_BLANKS) != 0) {
        p = SkipBlanks(p, flags);
        // A refused tab or line feed goes straight to the digit test, where it fails.
        lookForSign = !IsRefusedBlank(*p, flags);
    }
    // A sign is accepted whether or not leading blanks are; blanks may follow it.
    if (lookForSign && (*p == '-' || *p == '+')) {
        p = SkipBlanks(p + 1, flags);
    }
    // A NUL point character could only match the terminator: it never stands for a point.
    const bool hasPoint = point != '\0';
    bool startsWithPoint = false;
    if (hasPoint && *p == point) {
        startsWithPoint = true;
    } else if (!IsDigit(*p)) {
        return CONV_ERR_NOT_A_NUMBER;
    }
    p = SkipDigits(p);
    if ((flags & CONV_NUM_DECIMAL_POINT) != 0 && hasPoint && *p == point) {
        ++p;
        if (!IsDigit(*p) && startsWithPoint) {
            return CONV_ERR_NOT_A_NUMBER;  // "." alone, or "-."
        }
        p = SkipDigits(p);
    }
    if ((flags & CONV_NUM_EXPONENT) != 0 && IsExponentLetter(*p, flags)) {
        ++p;
        if (IsBlank(*p, flags)) {
            ++p;  // one blank may stand between the letter and the exponent
        }
        if (*p == '+' || *p == '-') {
            ++p;
        }
        if (!IsDigit(*p)) {
            return CONV_ERR_NOT_A_NUMBER;
        }
        p = SkipDigits(p);
    }
    if ((flags & CONV_NUM_TRAILING_BLANKS) != 0) {
        p = SkipBlanks(p, flags);
    }
    return *p == '\0' ? CONV_OK : CONV_ERR_NOT_A_NUMBER;
}

// Normalises number text into out (size bytes): spaces trimmed, leading zeros dropped (up to the
// last before the point or the end; zeros after a sign are kept), a "+" dropped, white space
// after the sign skipped. When the text does not fit, fraction characters are cut
// (CONV_WARN_TRUNCATION); when even the integer digits do not fit, CONV_ERR_TARGET_TOO_SMALL
// (a "-" may already have been written). *length receives the full, uncut length including the
// sign, so that a caller learns the size it would have needed.
extern "C" uint32_t CONV_FormatNumString(char *out, const char *text, uint32_t size, char point,
                                         uint32_t *length) noexcept {
    const size_t textLength = std::strlen(text);
    if (textLength > kMaxNumberText || size < 2) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    char scratch[kMaxNumberText + 1];
    std::memcpy(scratch, text, textLength + 1);
    CONV_Trim(scratch, CONV_TRIM_LEADING | CONV_TRIM_TRAILING);

    // Leading zeros go before the sign is looked at, so "-007" keeps its zeros.
    const char *p = scratch;
    while (p[0] == '0' && p[1] != point && p[1] != '\0') {
        ++p;
    }

    uint32_t room = size - 1;
    *length = 0;
    char *target = out;
    if (*p == '-') {
        *target++ = '-';
        room = size - 2;
        *length = 1;
        ++p;
    } else if (*p == '+') {
        ++p;
    }
    while (std::isspace(static_cast<unsigned char>(*p)) != 0) {
        ++p;
    }

    const size_t rest = std::strlen(p);
    *length += static_cast<uint32_t>(rest);
    if (rest <= room) {
        std::memcpy(target, p, rest + 1);
        return CONV_OK;
    }
    const char *pointAt = std::strchr(p, point);
    const size_t integerDigits =
        (point != '\0' && pointAt != nullptr) ? static_cast<size_t>(pointAt - p) : rest;
    if (room < integerDigits || room == 0 || (p[0] == point && room == 1)) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    std::memcpy(target, p, room);
    target[room] = '\0';
    return CONV_WARN_TRUNCATION;
}
