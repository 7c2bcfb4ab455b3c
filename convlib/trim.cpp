// SPDX-License-Identifier: MIT
// Trimming of byte strings: blanks stripped in place from NUL-terminated strings, trimmed lengths
// of counted buffers, and the bytes taken by a number of UTF-8 characters.
#include <nlssupport/convlib.h>

#include <cstdint>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     trim.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// A blank under the trim flags: the space always, a tab and a line feed only when their flags
// are set.
constexpr bool IsTrimBlank(char c, uint32_t flags) noexcept {
    return c == ' ' || (c == '\t' && (flags & CONV_TRIM_TAB_IS_BLANK) != 0) ||
           (c == '\n' && (flags & CONV_TRIM_LF_IS_BLANK) != 0);
}

// Width that the character count gives a lead byte. Kept for compatibility: a lead byte of 0xF0
// or above counts as one byte, so the continuation bytes of a 4-byte sequence are then counted
// as characters of their own.
constexpr int32_t LeadWidth(unsigned char lead) noexcept {
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    if (lead >= 0xC0 && lead <= 0xDF) {
        return 2;
    }
    return 1;
}
}  // namespace

// Returns the length of buffer (length bytes, no NUL needed) without its trailing spaces (byte 32
// only); a length of 0 or less comes back unchanged.
extern "C" int32_t CONV_GetTrimmedLength(const char *buffer, int32_t length) noexcept {
    if (length <= 0) {
        return length;
    }
    int32_t end = length;
    while (end > 0 && buffer[end - 1] == ' ') {
        --end;
    }
    return end;
}

// The same as CONV_GetTrimmedLength, under the name the UTF-8 callers use.
extern "C" int32_t CONV_GetTrimmedLengthUTF8Blanks(const char *buffer, int32_t length) noexcept {
    return CONV_GetTrimmedLength(buffer, length);
}

// Returns the bytes occupied by the first charCount characters of the UTF-8 buffer, counting
// from lead bytes (3 for 0xE0-0xEF, 2 for 0xC0-0xDF, 1 otherwise) and stopping once byteLength
// bytes or charCount characters are reached; the result may pass byteLength by up to two when
// the last character is wider than the bytes left. 0 when byteLength or charCount is below 1.
// Only bytes before byteLength are read.
extern "C" int32_t CONV_GetTrimmedLengthUTF8Chars(const char *buffer, int32_t byteLength,
                                                  int32_t charCount) noexcept {
    if (byteLength < 1 || charCount < 1) {
        return 0;
    }
    int32_t bytes = 0;
    int32_t chars = 0;
    for (;;) {
        const int32_t width = LeadWidth(static_cast<unsigned char>(buffer[bytes]));
        ++chars;
        bytes += width;
        if (bytes >= byteLength || chars >= charCount) {
            return bytes;
        }
    }
}

// Computes CONV_GetTrimmedLength and stores a NUL at that index (buffer[length] must be
// writable); returns the trimmed length. A negative length comes back as it is and nothing is
// stored: its index lies before the buffer.
extern "C" int32_t CONV_TrimWithStrlen(char *buffer, int32_t length) noexcept {
    const int32_t trimmed = CONV_GetTrimmedLength(buffer, length);
    if (trimmed >= 0) {
        buffer[trimmed] = '\0';
    }
    return trimmed;
}

// Strips blanks in place from the NUL-terminated string: leading ones under CONV_TRIM_LEADING
// (the rest moves down), trailing ones under CONV_TRIM_TRAILING (a NUL after the last kept
// byte). The space is always a blank; tab and line feed only under their flags.
extern "C" void CONV_Trim(char *string, uint32_t flags) noexcept {
    if ((flags & CONV_TRIM_LEADING) != 0) {
        size_t skip = 0;
        while (IsTrimBlank(string[skip], flags)) {
            ++skip;
        }
        if (skip > 0) {
            std::memmove(string, string + skip, std::strlen(string + skip) + 1);
        }
    }
    if ((flags & CONV_TRIM_TRAILING) != 0) {
        size_t end = std::strlen(string);
        while (end > 0 && IsTrimBlank(string[end - 1], flags)) {
            --end;
        }
        string[end] = '\0';
    }
}

// Strips blanks from a UTF-8 string exactly as CONV_Trim (blanks are single bytes in UTF-8).
extern "C" void CONV_TrimUTF8(char *string, uint32_t flags) noexcept {
    CONV_Trim(string, flags);
}
