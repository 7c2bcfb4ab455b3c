// SPDX-License-Identifier: MIT
// glibsys.cpp - directory paths, time-stamp text and the seedable pseudo-random generator.

#include <nlssupport/glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <ctime>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibsys.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// The separators GLIB_mkdirp splits at. The scan over gGLIB_DirSeparatorSet ("//", unterminated)
// has always continued into the text behind it, which made '(' a separator as well; paths in use
// depend on that split, so the effective set is kept here, terminated.
constexpr char kEffectiveSeparators[] = "/(";

// ctime_r needs 26 bytes; the rest is margin.
constexpr size_t kTimeTextSize = 64;
}  // namespace

// Creates every missing directory along path (split at '/' and '(' from its second character on,
// so a leading '/' is not a split point), then path itself, each with mkdir(prefix, mode). The
// path is cut at each separator while its prefix is handled and restored afterwards; a failing
// mkdir returns its result at once and leaves the path cut there. Returns 0 or that result
// (-1, errno set).
extern "C" int GLIB_mkdirp(char *path, mode_t mode) noexcept {
    int result = 0;
    char *scan = path[0] != 0 ? path + 1 : path;
    while ((scan = std::strpbrk(scan, kEffectiveSeparators)) != nullptr) {
        const char separator = *scan;
        *scan = 0;
        if (access(path, F_OK) != 0) {
            result = mkdir(path, mode);
            if (result != 0) {
                return result;
            }
        }
        *scan = separator;
        ++scan;
    }
    if (access(path, F_OK) == 0) {
        return result;
    }
    return mkdir(path, mode);
}

// ctime_r text of t without its final line feed, copied with strncpy into dst and cut by a
// terminator in dst[size - 1]. Returns dst. A size of 0 leaves dst untouched (there is no byte
// for the terminator); a time that ctime_r cannot represent gives the empty text.
extern "C" char *GLIB_ctime(time_t t, char *dst, size_t size) noexcept {
    char text[kTimeTextSize] = {};
    if (ctime_r(&t, text) == nullptr) {
        text[0] = 0;
    }
    const size_t length = std::strlen(text);
    if (length > 0 && text[length - 1] == '\n') {  // GCOVR_EXCL_BR_LINE: ctime_r ends in "\n"
        text[length - 1] = 0;
    }
    if (dst != nullptr && size > 0) {
        std::strncpy(dst, text, size);
        dst[size - 1] = 0;
    }
    return dst;
}

// Linear congruential step: seed := seed * 1103515245 + 12345 (mod 2^32); returns bits 16-30.
// The whole state is the caller's seed.
extern "C" int32_t GLIB_rand(uint32_t *seed) noexcept {
    *seed = *seed * 1103515245u + 12345u;
    return static_cast<int32_t>((*seed >> 16) & 0x7FFFu);
}
