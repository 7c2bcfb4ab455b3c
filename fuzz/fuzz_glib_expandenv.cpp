/* SPDX-License-Identifier: MIT */
// Fuzzes GLIB_ExpandEnvStrings and compares its result with a direct expansion of every
// '${NAME}' (names shorter than 63 characters looked up, longer ones and unset ones giving
// nothing, an unclosed '${' kept as text). A few variables, among them an empty and a long one,
// are set before the run. The input is the source text (cut at its first 0 byte).
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/memmgr.h>

namespace {

std::string Expected(const std::string &source) {
    std::string out;
    size_t i = 0;
    while (i < source.size()) {
        if (source[i] == '$' && i + 1 < source.size() && source[i + 1] == '{') {
            const size_t close = source.find('}', i + 2);
            if (close != std::string::npos) {
                const std::string name = source.substr(i + 2, close - i - 2);
                if (name.size() < 63) {
                    if (const char *v = std::getenv(name.c_str())) {
                        out += v;
                    }
                }
                i = close + 1;
                continue;
            }
        }
        out += source[i++];
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    setenv("NLSFZ", "/h", 1);
    setenv("NLSFZ_EMPTY", "", 1);
    setenv("NLSFZ_LONG", std::string(1000, 'L').c_str(), 1);
    setenv("NLSFZ_REF", "${NLSFZ}", 1);
    setenv("A", "x", 1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string source(reinterpret_cast<const char *>(data), strnlen(
        reinterpret_cast<const char *>(data), size));
    char *result = GLIB_ExpandEnvStrings(source.c_str(), nullptr);
    if (result == nullptr) {
        std::abort();
    }
    if (Expected(source) != result) {
        std::abort();
    }
    MMFLAT_Free(result);
    return 0;
}
