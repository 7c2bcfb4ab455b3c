// SPDX-License-Identifier: MIT
// glibenv.cpp - expansion of '${NAME}' environment references and copies of environment values,
// both allocated through the checked allocator.

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/memmgr.h>

#include <cstdlib>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibenv.cpp\t\t$Revision$\t$Date$\t", "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     errlib.h\t\t$Revision$\t$Date$",      "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Allocation sites reported to the checked allocator. The line numbers are fixed: error
// reports and the tools that read them identify the failing allocation by them.
// Call sites reported with this module's allocations: the module's path within the library,
// the same in every build tree, and the lines its callers have always seen.
constexpr char kSourcePath[] = "glib/glibenv.cpp";
constexpr int32_t kSiteExpandNew = 3772;
constexpr int32_t kSiteExpandResize = 3807;
constexpr int32_t kSiteGetenvDup = 2668;

// Names of this length or longer are never looked up.
constexpr size_t kNameLimit = 63;
}  // namespace

// Copies source with every '${NAME}' replaced by the value of NAME (unset or over-long names give
// nothing). No other syntax is recognised: '$NAME', an unclosed '${' and nested references stay
// as text. Returns a block from the checked allocator that the caller releases with MMFLAT_Free,
// or null when an allocation fails (reported on stack by the allocator).
extern "C" char *GLIB_ExpandEnvStrings(const char *source, ERRLIB_ErrorStack *stack) noexcept {
    const size_t sourceLength = std::strlen(source);
    uint32_t capacity = static_cast<uint32_t>(sourceLength + 1);
    auto *result = static_cast<char *>(MMFLAT_New(capacity, stack, kSourcePath, kSiteExpandNew));
    if (result == nullptr) {
        return nullptr;
    }

    size_t out = 0;
    size_t i = 0;
    while (i < sourceLength) {
        if (source[i] == '$' && source[i + 1] == '{') {
            const char *close = std::strchr(source + i + 2, '}');
            if (close != nullptr) {
                const char *name = source + i + 2;
                const size_t nameLength = static_cast<size_t>(close - name);
                i = static_cast<size_t>(close - source) + 1;
                if (nameLength < kNameLimit) {
                    char nameBuffer[kNameLimit];
                    std::memcpy(nameBuffer, name, nameLength);
                    nameBuffer[nameLength] = 0;
                    const char *value = std::getenv(nameBuffer);
                    if (value != nullptr) {
                        // The reference itself (at least four characters, since an empty name is
                        // never set) was counted in the capacity and produces nothing, so
                        // growing by the value's length less one always leaves room.
                        const size_t valueLength = std::strlen(value);
                        capacity = static_cast<uint32_t>(capacity + valueLength - 1);
                        auto *grown = static_cast<char *>(
                            MMFLAT_Resize(result, capacity, stack, kSourcePath, kSiteExpandResize));
                        if (grown == nullptr) {
                            MMFLAT_Free(result);
                            return nullptr;
                        }
                        result = grown;
                        std::memcpy(result + out, value, valueLength);
                        out += valueLength;
                    }
                }
                continue;
            }
            // No closing brace: the '$' is an ordinary character and the walk goes on at '{'.
        }
        result[out++] = source[i++];
    }
    result[out] = 0;
    return result;
}

// A copy of the value of the environment variable name from the checked allocator (released by
// the caller with MMFLAT_Free); null when it is unset (nothing reported) or the copy fails
// (reported on stack by the allocator).
extern "C" char *GLIB_MMStrDup_getenv(const char *name, ERRLIB_ErrorStack *stack) noexcept {
    const char *value = std::getenv(name);
    if (value == nullptr) {
        return nullptr;
    }
    return MMFLAT_StrDup(value, stack, kSourcePath, kSiteGetenvDup);
}
