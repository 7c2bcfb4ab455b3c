/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_IsNumber and the text-to-number routines CONV_StringToInt32 .. CONV_StringToFloat.
// Input: 2 bytes number-syntax flags (little-endian), 1 byte decimal-point character, then the
// text (cut at its first 0 byte). Each routine must return one of its documented statuses, and a
// text that fails the check must be refused by every routine.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool IntegerStatus(uint32_t s) {
    return s == CONV_OK || s == CONV_WARN_TRUNCATION || s == CONV_ERR_OVERFLOW ||
           s == CONV_ERR_NOT_A_NUMBER || s == CONV_ERR_CONVERSION;
}

bool FloatingStatus(uint32_t s) {
    return s == CONV_OK || s == CONV_ERR_NOT_A_NUMBER || s == CONV_ERR_OVERFLOW ||
           s == CONV_WARN_ROUND_TO_ZERO || s == CONV_ERR_CONVERSION;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 3 || size > 1200) {
        return 0;
    }
    const uint32_t flags = static_cast<uint32_t>(data[0] | (data[1] << 8)) & 0x17Fu;
    const char point = static_cast<char>(data[2]);
    const std::string text(reinterpret_cast<const char *>(data + 3),
                           strnlen(reinterpret_cast<const char *>(data + 3), size - 3));

    const uint32_t checked = CONV_IsNumber(text.c_str(), flags, point);
    Require(checked == CONV_OK || checked == CONV_ERR_NOT_A_NUMBER);

    int32_t i32 = 0x5A5A5A5A;
    uint32_t u32 = 0;
    int16_t i16 = 0;
    uint16_t u16 = 0;
    int8_t i8 = 0;
    uint8_t u8 = 0;
    double d = 0.0;
    float f = 0.0f;
    const uint32_t s32 = CONV_StringToInt32(&i32, text.c_str(), flags, point);
    const uint32_t su32 = CONV_StringToUInt32(&u32, text.c_str(), flags, point);
    const uint32_t s16 = CONV_StringToInt16(&i16, text.c_str(), flags, point);
    const uint32_t su16 = CONV_StringToUInt16(&u16, text.c_str(), flags, point);
    const uint32_t s8 = CONV_StringToInt8(&i8, text.c_str(), flags, point);
    const uint32_t su8 = CONV_StringToUInt8(&u8, text.c_str(), flags, point);
    const uint32_t sd = CONV_StringToDouble(&d, text.c_str(), flags, point);
    const uint32_t sf = CONV_StringToFloat(&f, text.c_str(), flags, point);
    Require(IntegerStatus(s32) && IntegerStatus(su32) && IntegerStatus(s16) &&
            IntegerStatus(su16) && IntegerStatus(s8) && IntegerStatus(su8));
    Require(FloatingStatus(sd) && FloatingStatus(sf));

    if ((flags & CONV_NUM_NO_CHECK) == 0 && checked != CONV_OK) {
        const uint32_t all[] = {s32, su32, s16, su16, s8, su8, sd, sf};
        for (uint32_t s : all) {
            Require(s == CONV_ERR_NOT_A_NUMBER || s == CONV_ERR_CONVERSION);
        }
    }
    return 0;
}
