/* SPDX-License-Identifier: MIT */
// Fuzzes the wide formatter GLIB_swprintf / GLIB_vswprintf.
// Input: 2 bytes output size in units (little-endian, below 600), 4 argument selectors, then the
// format: each byte is one unit, except a byte 0xFF which takes the next two bytes as one unit
// (high byte first), so units above 0xFF reach the engine too. The output buffer has exactly
// size + 1 units; the result and the terminator are checked after each call.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fuzz_format_args.h"
#include <nlssupport/glib.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 6) {
        return 0;
    }
    const size_t outSize = (data[0] | (data[1] << 8)) % 600;
    const uint8_t *sel = data + 2;
    std::vector<GLIB_WChar> format;
    for (size_t i = 6; i < size; ++i) {
        if (data[i] == 0xFF && i + 2 < size) {
            format.push_back(static_cast<GLIB_WChar>((data[i + 1] << 8) | data[i + 2]));
            i += 2;
        } else {
            format.push_back(data[i]);
        }
    }
    format.push_back(0);

    fuzzargs::Arg types[fuzzargs::kMaxArgs];
    long cut = -1;
    const size_t n = fuzzargs::ScanArgs(format.data(), types, &cut);
    if (cut >= 0) {
        format[static_cast<size_t>(cut)] = 0;
    }

    std::vector<GLIB_WChar> buf(outSize + 1, 0x5A5A);
    auto call = [&](auto... args) { return GLIB_swprintf(buf.data(), outSize, format.data(), args...); };
    const int r = fuzzargs::Dispatch(call, types, n, sel, 0);

    if (outSize == 0) {
        if (r != 0 || buf[0] != 0x5A5A) {
            std::abort();
        }
        return 0;
    }
    if (r < -1 || r > static_cast<int>(outSize)) {
        std::abort();
    }
    if (r >= 0 && buf[static_cast<size_t>(r)] != 0) {
        std::abort();
    }
    if (r == -1) {
        bool terminated = false;
        for (GLIB_WChar u : buf) {
            terminated = terminated || u == 0;
        }
        if (!terminated) {
            std::abort();
        }
    }
    return 0;
}
