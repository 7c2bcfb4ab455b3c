// SPDX-License-Identifier: MIT
// glibwide.cpp - wide-character strings of 16-bit units, narrow-to-wide copies and ASCII case
// changers.

#include <nlssupport/glib.h>

#include <climits>
#include <cstdlib>

#include "convlib_export.h"
#include "glib_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibwide.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     glib_internal.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_export.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Upper-case ASCII letter to lower case; every other unit unchanged.
constexpr unsigned FoldLower(unsigned c) {
    return (c >= 'A' && c <= 'Z') ? c + 32 : c;
}

// Lower-case ASCII letter to upper case; every other unit unchanged.
constexpr unsigned FoldUpper(unsigned c) {
    return (c >= 'a' && c <= 'z') ? c - 32 : c;
}

// Number of bytes kept by GLIB_wtoi.
constexpr int kWtoiUnits = 20;
}  // namespace

// Number of units before the 0 unit.
extern "C" size_t GLIB_wcslen(const GLIB_WChar *text) noexcept {
    size_t n = 0;
    while (text[n] != 0) {
        ++n;
    }
    return n;
}

// Copies src through its 0 unit; returns dst.
extern "C" GLIB_WChar *GLIB_wcscpy(GLIB_WChar *dst, const GLIB_WChar *src) noexcept {
    size_t i = 0;
    do {
        dst[i] = src[i];
    } while (src[i++] != 0);
    return dst;
}

// Appends src with its 0 unit behind dst's end; returns dst.
extern "C" GLIB_WChar *GLIB_wcscat(GLIB_WChar *dst, const GLIB_WChar *src) noexcept {
    GLIB_wcscpy(dst + GLIB_wcslen(dst), src);
    return dst;
}

// strncpy over units: at most n units, zero-filled behind a short source, unterminated when the
// source has n units or more. Returns dst.
extern "C" GLIB_WChar *GLIB_wcsncpy(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) noexcept {
    size_t i = 0;
    for (; i < n && src[i] != 0; ++i) {
        dst[i] = src[i];
    }
    for (; i < n; ++i) {
        dst[i] = 0;
    }
    return dst;
}

// Appends at most n units of src and always a 0 unit behind them; returns dst.
extern "C" GLIB_WChar *GLIB_wcsncat(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) noexcept {
    GLIB_WChar *end = dst + GLIB_wcslen(dst);
    size_t i = 0;
    for (; i < n && src[i] != 0; ++i) {
        end[i] = src[i];
    }
    end[i] = 0;
    return dst;
}

// Unit-by-unit comparison. Unlike the other comparers it returns exactly -1, 0 or 1; callers
// rely on that normalised result, so the asymmetry is kept.
extern "C" int GLIB_wcscmp(const GLIB_WChar *a, const GLIB_WChar *b) noexcept {
    size_t i = 0;
    while (a[i] != 0 && a[i] == b[i]) {
        ++i;
    }
    if (a[i] < b[i]) {
        return -1;
    }
    return a[i] > b[i] ? 1 : 0;
}

// Compares at most n units; returns the raw difference a - b of the first differing units.
extern "C" int GLIB_wcsncmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) noexcept {
    for (size_t i = 0; i < n; ++i) {
        if (a[i] != b[i]) {
            return static_cast<int>(a[i]) - static_cast<int>(b[i]);
        }
        if (a[i] == 0) {
            break;
        }
    }
    return 0;
}

// Case-insensitive (ASCII) comparison: stops where a's folded unit is 0 or the folded units
// differ and returns their raw difference.
extern "C" int GLIB_wcsicmp(const GLIB_WChar *a, const GLIB_WChar *b) noexcept {
    for (size_t i = 0;; ++i) {
        const unsigned ca = FoldLower(a[i]);
        const unsigned cb = FoldLower(b[i]);
        if (ca == 0 || ca != cb) {
            return static_cast<int>(ca) - static_cast<int>(cb);
        }
    }
}

// GLIB_wcsicmp over at most n units; 0 when the first n units agree.
extern "C" int GLIB_wcsnicmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) noexcept {
    for (size_t i = 0; i < n; ++i) {
        const unsigned ca = FoldLower(a[i]);
        const unsigned cb = FoldLower(b[i]);
        if (ca == 0 || ca != cb) {
            return static_cast<int>(ca) - static_cast<int>(cb);
        }
    }
    return 0;
}

// First position holding c (the terminator when c is 0), or null.
extern "C" GLIB_WChar *GLIB_wcschr(const GLIB_WChar *text, GLIB_WChar c) noexcept {
    for (size_t i = 0;; ++i) {
        if (text[i] == c) {
            return const_cast<GLIB_WChar *>(text + i);
        }
        if (text[i] == 0) {
            return nullptr;
        }
    }
}

// First occurrence of needle. An empty haystack never contains anything, not even the empty
// needle: callers test for null to detect an empty haystack, so this is kept.
extern "C" GLIB_WChar *GLIB_wcsstr(const GLIB_WChar *haystack, const GLIB_WChar *needle) noexcept {
    if (haystack[0] == 0) {
        return nullptr;
    }
    if (needle[0] == 0) {
        return const_cast<GLIB_WChar *>(haystack);
    }
    for (const GLIB_WChar *h = haystack; *h != 0; ++h) {
        size_t i = 0;
        while (needle[i] != 0 && h[i] == needle[i]) {
            ++i;
        }
        if (needle[i] == 0) {
            return const_cast<GLIB_WChar *>(h);
        }
    }
    return nullptr;
}

// ASCII lower-casing in place; returns text.
extern "C" GLIB_WChar *GLIB_wcslwr(GLIB_WChar *text) noexcept {
    for (GLIB_WChar *p = text; *p != 0; ++p) {
        *p = static_cast<GLIB_WChar>(FoldLower(*p));
    }
    return text;
}

// ASCII upper-casing in place; returns text.
extern "C" GLIB_WChar *GLIB_wcsupr(GLIB_WChar *text) noexcept {
    for (GLIB_WChar *p = text; *p != 0; ++p) {
        *p = static_cast<GLIB_WChar>(FoldUpper(*p));
    }
    return text;
}

// ASCII lower-casing of bytes in place; returns text.
extern "C" char *GLIB_strlwr(char *text) noexcept {
    for (char *p = text; *p != 0; ++p) {
        *p = static_cast<char>(FoldLower(static_cast<unsigned char>(*p)));
    }
    return text;
}

// ASCII upper-casing of bytes in place; returns text.
extern "C" char *GLIB_strupr(char *text) noexcept {
    for (char *p = text; *p != 0; ++p) {
        *p = static_cast<char>(FoldUpper(static_cast<unsigned char>(*p)));
    }
    return text;
}

// Narrow-to-wide copy through the terminator; bytes from 0x80 up become '?'. Returns dst.
extern "C" GLIB_WChar *GLIB_strwcscpy(GLIB_WChar *dst, const char *src) noexcept {
    size_t i = 0;
    do {
        dst[i] = glib::WidenByte(src[i]);
    } while (src[i++] != 0);
    return dst;
}

// GLIB_strwcscpy with strncpy rules over n units; returns dst.
extern "C" GLIB_WChar *GLIB_strwcsncpy(GLIB_WChar *dst, const char *src, size_t n) noexcept {
    size_t i = 0;
    for (; i < n && src[i] != 0; ++i) {
        dst[i] = glib::WidenByte(src[i]);
    }
    for (; i < n; ++i) {
        dst[i] = 0;
    }
    return dst;
}

// A malloc'ed wide copy (the caller frees it with free), or null. Copying stops at the first
// byte from 0x80 up and leaves the rest of the block, terminator included, unset: kept for
// compatibility, callers pass 7-bit text when they need a terminated copy.
extern "C" GLIB_WChar *GLIB_strtowcs(const char *text) noexcept {
    if (text == nullptr) {
        return nullptr;
    }
    size_t length = 0;
    while (text[length] != 0) {
        ++length;
    }
    auto *copy = static_cast<GLIB_WChar *>(std::malloc((length + 1) * sizeof(GLIB_WChar)));
    if (copy == nullptr) {
        return nullptr;
    }
    for (size_t i = 0; i <= length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= 0x80) {
            break;
        }
        copy[i] = byte;
    }
    return copy;
}

// strtol (base 10) of the low bytes of the first 20 units; digits further on are ignored.
extern "C" int32_t GLIB_wtoi(const GLIB_WChar *text) noexcept {
    char narrow[kWtoiUnits + 1];
    int i = 0;
    for (; i < kWtoiUnits && text[i] != 0; ++i) {
        narrow[i] = static_cast<char>(text[i] & 0xFF);
    }
    narrow[i] = 0;
    return conv::StrToLong32(narrow, nullptr);
}
