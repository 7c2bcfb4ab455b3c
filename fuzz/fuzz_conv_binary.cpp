/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_StringToBinary (hexadecimal text to bytes) and writes what it read back with
// CONV_BinaryToString. Input: 2 bytes capacity (little-endian, below 600), then the text (cut at
// its first 0 byte). The output has exactly the capacity given, so the address checks catch any
// store past it; the same text is then read in place and must give the same bytes.
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) {
        return 0;
    }
    const uint32_t capacity = static_cast<uint32_t>(data[0] | (data[1] << 8)) % 600;
    const std::string text(reinterpret_cast<const char *>(data + 2),
                           strnlen(reinterpret_cast<const char *>(data + 2), size - 2));
    std::unique_ptr<uint8_t[]> out(new uint8_t[capacity == 0 ? 1 : capacity]);
    std::memset(out.get(), 0xEE, capacity == 0 ? 1 : capacity);
    uint32_t count = capacity;
    const uint32_t s = CONV_StringToBinary(out.get(), text.c_str(), &count);
    Require(s == CONV_OK || s == CONV_WARN_TRUNCATION || s == CONV_ERR_BYTE_STREAM ||
            s == CONV_ERR_TARGET_TOO_SMALL);
    if (capacity == 0) {
        Require(s == CONV_ERR_TARGET_TOO_SMALL && out[0] == 0xEE);
        return 0;
    }
    Require(count <= capacity && count <= text.size() / 2);
    if (s == CONV_OK) {
        Require(count == text.size() / 2);
    }
    // The bytes read are the upper-case pairs of the text they came from.
    std::unique_ptr<char[]> back(new char[2 * count + 1]);
    Require(CONV_BinaryToString(back.get(), out.get(), 2 * count + 1, count) == CONV_OK);
    Require(std::memcmp(back.get(), text.data(), 2 * count) == 0);
    // Reading the text in place (output and text at the same address) gives the same result.
    if (capacity <= text.size() + 1) {
        std::unique_ptr<char[]> inPlace(new char[text.size() + 1]);
        std::memcpy(inPlace.get(), text.c_str(), text.size() + 1);
        uint32_t count2 = capacity;
        auto *bytes = reinterpret_cast<uint8_t *>(inPlace.get());
        Require(CONV_StringToBinary(bytes, inPlace.get(), &count2) == s && count2 == count);
        Require(std::memcmp(bytes, out.get(), count) == 0);
    }
    return 0;
}
