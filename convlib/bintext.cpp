// SPDX-License-Identifier: MIT
// Binary text: byte strings to and from hexadecimal text, two upper-case digits a byte.
#include <nlssupport/convlib.h>
#include <nlssupport/memmgr.h>

#include <cstdint>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     bintext.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Source path passed to the allocator with this file's own allocations (identifies call sites).
constexpr char kSourcePath[] = "convlib/bintext.cpp";

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Value of a hexadecimal digit ("0"-"9", "A"-"F"; lower case is not accepted), or -1.
constexpr int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// True when the byte ranges [a, a + aSize) and [b, b + bSize) share a byte. Addresses are
// compared as integers, since the two ranges may belong to different objects.
bool Overlap(const void *a, std::size_t aSize, const void *b, std::size_t bSize) {
    const auto pa = reinterpret_cast<uintptr_t>(a);
    const auto pb = reinterpret_cast<uintptr_t>(b);
    // GCOVR_EXCL_BR_START: aSize is the output's size, which both callers refuse when it is 0.
    return aSize > 0 && bSize > 0 && pa < pb + bSize && pb < pa + aSize;
    // GCOVR_EXCL_BR_STOP
}

// A temporary block from the checked allocator, released when the holder goes out of scope.
struct TemporaryCopy {
    void *block = nullptr;
    TemporaryCopy() = default;
    TemporaryCopy(const TemporaryCopy &) = delete;
    TemporaryCopy &operator=(const TemporaryCopy &) = delete;
    ~TemporaryCopy() {
        MMFLAT_Free(block);
    }

    // Copies size bytes of source into a new block; returns the copy, or null when the block
    // cannot be allocated.
    const void *Take(const void *source, std::size_t size) {
        if (size > UINT32_MAX) {
            return nullptr;
        }
        block = MMFLAT_New(static_cast<uint32_t>(size), nullptr, kSourcePath, __LINE__);
        if (block != nullptr) {
            std::memcpy(block, source, size);
        }
        return block;
    }
};

}  // namespace

// Reads hexadecimal text into out. *count is the capacity of out on entry and the number of
// bytes written on return (untouched when the capacity is 0 or the copy fails). Text longer than
// twice the capacity is cut with CONV_WARN_TRUNCATION; a lone final digit is dropped without a
// warning and without being checked, as callers expect. A text that overlaps out is read from a
// temporary copy (CONV_ERR_MEMORY when it cannot be made), so converting in place gives the same
// bytes as separate buffers. Returns CONV_OK, CONV_WARN_TRUNCATION, CONV_ERR_BYTE_STREAM (the
// bytes before the bad pair stay written and counted), CONV_ERR_TARGET_TOO_SMALL or
// CONV_ERR_MEMORY.
extern "C" uint32_t CONV_StringToBinary(uint8_t *out, const char *text, uint32_t *count) noexcept {
    const uint32_t capacity = *count;
    if (capacity == 0) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    const std::size_t textLength = std::strlen(text);
    TemporaryCopy copy;
    const char *source = text;
    if (Overlap(out, capacity, text, textLength + 1)) {
        source = static_cast<const char *>(copy.Take(text, textLength + 1));
        if (source == nullptr) {
            return CONV_ERR_MEMORY;
        }
    }
    uint64_t digits = textLength;
    uint32_t status = CONV_OK;
    if (digits > 2 * static_cast<uint64_t>(capacity)) {
        digits = 2 * static_cast<uint64_t>(capacity);
        status = CONV_WARN_TRUNCATION;
    } else {
        digits -= digits % 2;
    }
    *count = 0;
    for (uint64_t k = 0; k < digits; k += 2) {
        const int high = HexValue(source[k]);
        const int low = HexValue(source[k + 1]);
        if (high < 0 || low < 0) {
            return CONV_ERR_BYTE_STREAM;
        }
        out[k / 2] = static_cast<uint8_t>(high * 16 + low);
        ++*count;
    }
    return status;
}

// Writes length bytes as hexadecimal text, high nibble first, and a NUL into out of size bytes.
// When 2 * length + 1 bytes do not fit, only (size - 1) / 2 bytes are written (whole bytes only;
// an even size leaves one byte unused) and CONV_WARN_TRUNCATION is returned. Bytes that overlap
// out are read from a temporary copy (CONV_ERR_MEMORY when it cannot be made). Returns CONV_OK,
// CONV_WARN_TRUNCATION, CONV_ERR_TARGET_TOO_SMALL (size 0) or CONV_ERR_MEMORY.
extern "C" uint32_t CONV_BinaryToString(char *out, const uint8_t *bytes, uint32_t size,
                                        uint32_t length) noexcept {
    if (size == 0) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    TemporaryCopy copy;
    const uint8_t *source = bytes;
    if (Overlap(out, size, bytes, length)) {
        source = static_cast<const uint8_t *>(copy.Take(bytes, length));
        if (source == nullptr) {
            return CONV_ERR_MEMORY;
        }
    }
    uint64_t converted = length;
    uint32_t status = CONV_OK;
    if (size < 2 * static_cast<uint64_t>(length) + 1) {
        converted = (size - 1) / 2;
        status = CONV_WARN_TRUNCATION;
    }
    char *o = out;
    for (uint64_t k = 0; k < converted; ++k) {
        *o++ = kHexDigits[source[k] >> 4];
        *o++ = kHexDigits[source[k] & 0x0F];
    }
    *o = '\0';
    return status;
}
