// SPDX-License-Identifier: MIT
// glibstring.cpp - trimming and blank handling of narrow strings, digit tests and a decimal
// parse.

#include <nlssupport/glib.h>

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "convlib_export.h"
#include "glib_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibstring.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     glib_internal.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_export.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// White space of the locale's ctype table.
bool IsSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// Decimal digit of the locale's ctype table.
bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// A blank of GLIB_strtrim: the space always, the tab and the line ends when the options say so.
bool IsTrimBlank(char c, uint32_t options) {
    if (c == ' ') {
        return true;
    }
    if (c == '\t') {
        return (options & GLIB_TRIM_TAB) != 0;
    }
    if (c == '\r' || c == '\n') {
        return (options & GLIB_TRIM_CRLF) != 0;
    }
    return false;
}
}  // namespace

// Trims blanks in place: option 1 the start, 2 the end; 4 adds the tab, 8 carriage return and
// line feed to the space.
extern "C" void GLIB_strtrim(char *text, uint32_t options) noexcept {
    if (options & GLIB_TRIM_START) {
        size_t first = 0;
        while (text[first] != 0 && IsTrimBlank(text[first], options)) {
            ++first;
        }
        if (first > 0) {
            std::memmove(text, text + first, std::strlen(text + first) + 1);
        }
    }
    if (options & GLIB_TRIM_END) {
        size_t length = std::strlen(text);
        while (length > 0 && IsTrimBlank(text[length - 1], options)) {
            --length;
        }
        text[length] = 0;
    }
}

// Copies src up to white space, its end or n characters and terminates dst (n + 1 bytes).
// Returns dst; a null dst or src is returned unchanged with nothing done.
extern "C" char *GLIB_CopyNonBlanks(char *dst, const char *src, int32_t n) noexcept {
    if (dst == nullptr || src == nullptr) {
        return dst;
    }
    int32_t i = 0;
    for (; i < n && src[i] != 0 && !IsSpace(src[i]); ++i) {
        dst[i] = src[i];
    }
    dst[i] = 0;
    return dst;
}

// The first non-white-space character of text, or its terminator.
extern "C" char *GLIB_ExtSkipBlanks(const char *text) noexcept {
    while (*text != 0 && IsSpace(*text)) {
        ++text;
    }
    return const_cast<char *>(text);
}

// 1 when no character is outside the digit class; the empty string counts as all digits, which
// callers rely on.
extern "C" int GLIB_AreDigits(const char *text) noexcept {
    for (; *text != 0; ++text) {
        if (!IsDigit(*text)) {
            return 0;
        }
    }
    return 1;
}

// strtol of text in base 10 (saturated to 32 bits). The end pointer does not come from strtol:
// it lies behind the digits that follow any mix of white space, '+' and '-', so for "+-5" it is
// behind the 5 while the value is 0. Callers rely on this end position; kept.
extern "C" int32_t GLIB_strtol(const char *text, char **end) noexcept {
    const char *p = text;
    while (*p != 0 && (IsSpace(*p) || *p == '+' || *p == '-')) {
        ++p;
    }
    if (*p == 0) {
        if (end != nullptr) {
            *end = const_cast<char *>(p);
        }
        return 0;
    }
    while (IsDigit(*p)) {
        ++p;
    }
    if (end != nullptr) {
        *end = const_cast<char *>(p);
    }
    return conv::StrToLong32(text, nullptr);
}
