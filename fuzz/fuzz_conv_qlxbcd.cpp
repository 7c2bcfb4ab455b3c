/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_StringToQLXBCD and reads every value it writes back with CONV_QLXBCDToString.
// Input: the text (cut at its first 0 byte). The output gets exactly the room the caller is told
// to give, 3 + (digits + 1) / 2 bytes (digits: the digit characters of the text), and the text
// buffer of the read-back exactly the room its header implies, so the address checks catch any
// store past either. A value written and read back must give the same value again.
#include <algorithm>
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

// Room for the text of a value: sign, point, "0.", the digits, the zeros the scale implies, NUL.
size_t TextRoom(const uint8_t *value) {
    const int p = value[0];
    const int s = static_cast<int8_t>(value[1]);
    return static_cast<size_t>(1 + 1 + 2 + p + std::max(s - p, 0) + std::max(-s, 0) + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size > 1100) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char *>(data),
                           strnlen(reinterpret_cast<const char *>(data), size));
    const size_t digits = static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }));
    const size_t room = 3 + (digits + 1) / 2;
    std::unique_ptr<uint8_t[]> out(new uint8_t[room]);
    std::memset(out.get(), 0xEE, room);
    const uint32_t s = CONV_StringToQLXBCD(out.get(), text.c_str());
    Require(s == CONV_OK || s == CONV_ERR_NOT_A_NUMBER);
    if (s != CONV_OK) {
        return 0;
    }
    // The value's own length: 2 header bytes and precision / 2 + 1 digit bytes.
    Require(2u + out[0] / 2u + 1u <= room);
    const size_t textRoom = TextRoom(out.get());
    std::unique_ptr<char[]> back(new char[textRoom]);
    Require(CONV_QLXBCDToString(back.get(), out.get()) == CONV_OK);
    Require(strnlen(back.get(), textRoom) < textRoom);
    // Writing the text again gives the same bytes.
    const size_t used = 2u + out[0] / 2u + 1u;
    std::unique_ptr<uint8_t[]> again(new uint8_t[room + 2]);
    Require(CONV_StringToQLXBCD(again.get(), back.get()) == CONV_OK);
    Require(std::memcmp(again.get(), out.get(), used) == 0);
    return 0;
}
