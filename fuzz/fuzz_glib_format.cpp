/* SPDX-License-Identifier: MIT */
// Fuzzes the narrow formatter GLIB_snprintf / GLIB_vsnprintf.
// Input: 2 bytes output size (little-endian, below 600), 4 argument selectors, then the format.
// The output buffer has exactly size + 1 bytes (the room the formatter asks for), so the address
// checks catch any store past it; the result and the terminator are checked after each call.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "fuzz_format_args.h"
#include <nlssupport/glib.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 6) {
        return 0;
    }
    const size_t outSize = (data[0] | (data[1] << 8)) % 600;
    const uint8_t *sel = data + 2;
    const size_t formatLength = size - 6;
    std::unique_ptr<char[]> format(new char[formatLength + 1]);
    std::memcpy(format.get(), data + 6, formatLength);
    format[formatLength] = '\0';

    fuzzargs::Arg types[fuzzargs::kMaxArgs];
    long cut = -1;
    const size_t n = fuzzargs::ScanArgs(format.get(), types, &cut);
    if (cut >= 0) {
        format[static_cast<size_t>(cut)] = '\0';
    }

    std::unique_ptr<char[]> buf(new char[outSize + 1]);
    std::memset(buf.get(), 0x5A, outSize + 1);
    auto call = [&](auto... args) { return GLIB_snprintf(buf.get(), outSize, format.get(), args...); };
    const int r = fuzzargs::Dispatch(call, types, n, sel, 0);

    if (outSize == 0) {
        // Nothing written, not even a terminator.
        if (r != 0 || buf[0] != 0x5A) {
            std::abort();
        }
        return 0;
    }
    if (r < -1 || r > static_cast<int>(outSize)) {
        std::abort();
    }
    if (r >= 0 && buf[static_cast<size_t>(r)] != '\0') {
        std::abort();
    }
    if (r == -1 && std::memchr(buf.get(), 0, outSize + 1) == nullptr) {
        std::abort();
    }
    return 0;
}
