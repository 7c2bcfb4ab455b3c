/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_StringToDateTime with fuzzed sources, formats and names.
// Input: 1 byte names seed (0: no names), 1 byte fraction base (signed, 0x80 unset), 4 bytes
// century base (little-endian), then the source, a 0 byte, and the format. The status must be one
// of the conversion statuses and the failing field a field index, or 65535 after a success.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>
#include "fuzz_dt_names.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 6 || size > 2200) {
        return 0;
    }
    CONV_DateTimeNames storage;
    const char *const *names = dtnames::Fill(storage, data[0]);
    CONV_DateTime record;
    std::memset(&record, 0x5A, sizeof record);
    record.fractionBase = dtnames::Small(data[1]);
    uint32_t century = 0;
    std::memcpy(&century, data + 2, 4);
    const char *rest = reinterpret_cast<const char *>(data + 6);
    const size_t restSize = size - 6;
    const size_t sourceLength = strnlen(rest, restSize);
    const std::string source(rest, sourceLength);
    std::string format;
    if (sourceLength < restSize) {
        format.assign(rest + sourceLength + 1, strnlen(rest + sourceLength + 1,
                                                       restSize - sourceLength - 1));
    }
    uint16_t failed = 0;
    uint16_t fields = 0;
    const uint32_t s =
        CONV_StringToDateTime(&record, source.c_str(), format.c_str(),
                              static_cast<int32_t>(century), names, &failed, &fields);
    Require(s <= CONV_ERR_NO_SYEAR);
    Require(failed < 16 || failed == 65535);
    if (s == CONV_OK) {
        Require(failed == 65535);
    }
    return 0;
}
