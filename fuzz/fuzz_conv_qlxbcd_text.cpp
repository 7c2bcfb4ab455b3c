/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_QLXBCDToString with arbitrary bytes in the self-describing layout.
// Input: the value bytes. The value buffer holds exactly the bytes the header says the value has
// (2 + precision / 2 + 1, missing ones 0), and the text buffer exactly the room the caller is told
// to give: sign, point, "0.", the precision's digits, the zeros the scale implies and the NUL.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <nlssupport/convlib.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) {
        return 0;
    }
    const int p = data[0];
    const int s = static_cast<int8_t>(data[1]);
    const size_t valueBytes = 2 + static_cast<size_t>(p / 2) + 1;
    std::unique_ptr<uint8_t[]> value(new uint8_t[valueBytes]);
    std::memset(value.get(), 0, valueBytes);
    std::memcpy(value.get(), data, std::min(valueBytes, size));
    const size_t room =
        static_cast<size_t>(1 + 1 + 2 + p + std::max(s - p, 0) + std::max(-s, 0) + 1);
    std::unique_ptr<char[]> out(new char[room]);
    std::memset(out.get(), 0x5A, room);
    const uint32_t status = CONV_QLXBCDToString(out.get(), value.get());
    if (status == CONV_OK) {
        if (strnlen(out.get(), room) >= room) {
            std::abort();
        }
    } else if (status != CONV_ERR_NOT_A_NUMBER || out[0] != 0x5A) {
        std::abort();
    }
    return 0;
}
