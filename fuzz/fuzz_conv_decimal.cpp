/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_StringToDecimal (text into a packed decimal of a given size) and
// CONV_DecimalToString (packed or unpacked bytes back to text).
// Input: byte 0 mode (bit 0: 0 text to decimal, 1 decimal bytes to text), then
//   text mode:  byte 1 output size (0..63), 2 bytes flags, 1 byte point, then the text;
//   bytes mode: byte 1 precision, byte 2 scale, byte 3 layout (1..3), byte 4 output size, byte 5
//               point, then the value bytes (as many as the layout reads; missing ones are 0).
// Every buffer is allocated with exactly the size the caller is told to give, so the address
// checks catch any access past it; a decimal that was written is also read back as text.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <nlssupport/convlib.h>

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// Writes value as text into a buffer of exactly size bytes and checks the status and length.
void ToText(const uint8_t *value, uint32_t size, uint32_t precision, uint32_t scale, char point,
            uint32_t layout) {
    std::unique_ptr<char[]> out(new char[size == 0 ? 1 : size]);
    std::memset(out.get(), 0x5A, size == 0 ? 1 : size);
    uint32_t length = 0xFFFFFFFFu;
    const uint32_t s =
        CONV_DecimalToString(out.get(), value, size, precision, scale, point, layout, &length);
    Require(s == CONV_OK || s == CONV_WARN_TRUNCATION || s == CONV_ERR_TARGET_TOO_SMALL ||
            s == CONV_ERR_CONVERSION);
    if (s == CONV_OK || s == CONV_WARN_TRUNCATION) {
        const size_t written = strnlen(out.get(), size);
        Require(written < size);
        if (s == CONV_OK) {
            Require(written == length);
        } else {
            Require(written < length);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 6 || size > 1100) {
        return 0;
    }
    if ((data[0] & 1u) == 0) {
        const uint32_t outSize = data[1] & 63u;
        const uint32_t flags = static_cast<uint32_t>(data[2] | (data[3] << 8)) & 0x17Fu;
        const char point = static_cast<char>(data[4]);
        const std::string text(reinterpret_cast<const char *>(data + 5),
                               strnlen(reinterpret_cast<const char *>(data + 5), size - 5));
        std::unique_ptr<uint8_t[]> out(new uint8_t[outSize == 0 ? 1 : outSize]);
        std::memset(out.get(), 0xEE, outSize == 0 ? 1 : outSize);
        uint32_t precision = 0xFFFFFFFFu;
        uint32_t scale = 0xFFFFFFFFu;
        const uint32_t s =
            CONV_StringToDecimal(out.get(), text.c_str(), outSize, &precision, &scale, flags, point);
        Require(s <= 25);
        if (outSize == 0) {
            Require(s == CONV_ERR_TARGET_TOO_SMALL && out[0] == 0xEE);
        }
        if (s == CONV_OK || s == CONV_WARN_TRUNCATION) {
            Require(scale <= precision);
            // The value fits the room it was given and reads back.
            Require(precision / 2 + 1 <= outSize);
            std::unique_ptr<uint8_t[]> exact(new uint8_t[precision / 2 + 1]);
            std::memcpy(exact.get(), out.get(), precision / 2 + 1);
            ToText(exact.get(), 2 * precision + 3, precision, scale, '.', CONV_DECIMAL_PACKED);
        }
        return 0;
    }
    const uint32_t precision = data[1];
    const uint32_t scale = data[2];
    const uint32_t layout = data[3] % 3 + 1;
    const uint32_t outSize = data[4];
    // A NUL point would end the text early; any other byte may serve.
    const char point = data[5] == 0 ? '.' : static_cast<char>(data[5]);
    // The bytes the layout reads: precision for unpacked, precision / 2 + 1 for packed.
    const size_t valueBytes = layout == CONV_DECIMAL_UNPACKED ? precision : precision / 2 + 1;
    std::unique_ptr<uint8_t[]> value(new uint8_t[valueBytes == 0 ? 1 : valueBytes]);
    std::memset(value.get(), 0, valueBytes == 0 ? 1 : valueBytes);
    std::memcpy(value.get(), data + 6, std::min(valueBytes, size - 6));
    ToText(value.get(), outSize, precision, scale, point, layout);
    return 0;
}
