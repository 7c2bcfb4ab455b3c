/* SPDX-License-Identifier: MIT */
// Fuzzes CONV_DateTimeToString and CONV_CalcDateTimeLength with fuzzed formats, records and
// names. Input: 2 bytes target size (little-endian, taken as -5..1094), 1 byte names seed (0: no
// names), the record (day, month, 2 bytes year, day of week, second, minute, hour, 4 bytes
// fraction, fraction base, era; one-byte fields are signed, 0x80 meaning unset), then the format.
// The target has exactly targetSize bytes (one byte, which gets the terminator, for a size below
// 1), so the address checks catch any store past it. The text must be terminated inside the target, and a format that the measurement
// accepts must fit, for a four-digit year, in the length it measured.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <nlssupport/convlib.h>
#include "fuzz_dt_names.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool FormatStatus(uint32_t s) {
    return s == CONV_OK || (s >= CONV_ERR_DAY && s <= CONV_ERR_FRACTION_BASE) ||
           s == CONV_ERR_TARGET_TOO_SMALL || s == CONV_WARN_TRUNCATION ||
           s == CONV_ERR_ERA_RANGE || s == CONV_ERR_NO_ERA_NAMES || s == CONV_ERR_NO_SYEAR;
}

// Formats into a buffer of exactly targetSize bytes (at least 1); returns the status and the text.
uint32_t Format(int32_t targetSize, CONV_DateTime record, const std::string &format,
                const char *const *names, std::string *text) {
    const size_t bytes = targetSize < 1 ? 1 : static_cast<size_t>(targetSize);
    std::unique_ptr<char[]> target(new char[bytes]);
    std::memset(target.get(), 0x5A, bytes);
    uint16_t failed = 0;
    uint16_t fields = 0;
    const uint32_t s = CONV_DateTimeToString(target.get(), &record, targetSize, format.c_str(),
                                             names, &failed, &fields);
    Require(FormatStatus(s));
    if (targetSize < 1) {
        // No room for text: only the terminator, at the first byte.
        Require(s == (format.empty() ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL) && target[0] == 0);
        return s;
    }
    Require(strnlen(target.get(), bytes) < bytes);
    Require(s == CONV_OK || s == CONV_ERR_TARGET_TOO_SMALL || failed < 16);
    *text = target.get();
    return s;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 17 || size > 1200) {
        return 0;
    }
    const int32_t targetSize = static_cast<int32_t>((data[0] | (data[1] << 8)) % 1100) - 5;
    CONV_DateTimeNames storage;
    const char *const *names = dtnames::Fill(storage, data[2]);
    CONV_DateTime record;
    record.day = dtnames::Small(data[3]);
    record.month = dtnames::Small(data[4]);
    record.year = static_cast<int16_t>(data[5] | (data[6] << 8));
    record.dayOfWeek = dtnames::Small(data[7]);
    record.second = dtnames::Small(data[8]);
    record.minute = dtnames::Small(data[9]);
    record.hour = dtnames::Small(data[10]);
    uint32_t fraction = 0;
    std::memcpy(&fraction, data + 11, 4);
    record.fraction = static_cast<int32_t>(fraction);
    record.fractionBase = dtnames::Small(data[15]);
    record.era = dtnames::Small(data[16]);
    const std::string format(reinterpret_cast<const char *>(data + 17),
                             strnlen(reinterpret_cast<const char *>(data + 17), size - 17));

    std::string text;
    Format(targetSize, record, format, names, &text);

    uint32_t length = 0xFFFFFFFFu;
    const uint32_t measured = CONV_CalcDateTimeLength(format.c_str(), names, &length);
    Require((measured == CONV_OK && length >= 1 && length <= 1000) ||
            (measured == CONV_ERR_TARGET_TOO_SMALL && length == 0));

    // The measurement is an upper bound for records whose values are no longer than the sample's.
    bool namesComplete = true;
    if (names != nullptr) {
        for (int slot = 0; slot < 40; ++slot) {
            namesComplete = namesComplete && names[slot] != nullptr;
        }
    }
    if (measured == CONV_OK && namesComplete && record.year >= 1000 && record.year <= 9999) {
        std::string full;
        if (Format(4096, record, format, names, &full) == CONV_OK) {
            std::string fitted;
            Require(Format(static_cast<int32_t>(length), record, format, names, &fitted) ==
                    CONV_OK);
            Require(fitted == full);
        }
    }
    return 0;
}
