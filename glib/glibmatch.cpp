// SPDX-License-Identifier: MIT
// glibmatch.cpp - SQL-LIKE pattern matching of whole values: any-run, any-one and escape
// wildcards, narrow and wide, with an iterative matcher that keeps a single resume point.

#include <nlssupport/glib.h>

#include <cctype>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibmatch.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// The three special characters of a pattern.
template <typename Unit>
struct Wildcards {
    Unit anyRun;
    Unit anyOne;
    Unit escape;
};

// Exact comparison of a pattern character with a value character.
struct ExactEqual {
    template <typename Unit>
    bool operator()(Unit a, Unit b) const {
        return a == b;
    }
};

// Comparison through the locale's tolower table; each byte is passed as a signed char, which
// the table accepts.
struct FoldedEqual {
    bool operator()(char a, char b) const {
        return std::tolower(static_cast<signed char>(a)) ==
               std::tolower(static_cast<signed char>(b));
    }
};

// Matches the whole value against the whole pattern. Iterative, with one resume point: the
// pattern position behind the most recent run of any-run wildcards and the value position it
// was tried at. On a mismatch the value position of the resume point moves one character on and
// matching restarts there. Only the latest any-run is ever resumed; for patterns made of literal
// characters, any-one and any-run wildcards this greedy scheme finds every match, in linear
// memory and without recursion. Returns 1 for a match, else 0.
template <typename Unit, typename Equal>
int Match(const Unit *pattern, size_t patternLength, const Unit *value, size_t valueLength,
          Wildcards<Unit> wild, Equal equal) {
    size_t p = 0;
    size_t v = 0;
    bool resumeSet = false;
    size_t resumeP = 0;
    size_t resumeV = 0;

    while (v < valueLength) {
        bool mismatch = false;
        if (p >= patternLength) {
            mismatch = true;
        } else if (pattern[p] != wild.anyRun) {
            bool same;
            if (pattern[p] == wild.anyOne) {
                same = true;
            } else if (pattern[p] == wild.escape) {
                ++p;
                // A lone escape at the pattern's end matches nothing here.
                same = p < patternLength && equal(pattern[p], value[v]);
            } else {
                same = equal(pattern[p], value[v]);
            }
            if (same) {
                ++p;
                ++v;
                continue;
            }
            mismatch = true;
        } else {
            while (p < patternLength && pattern[p] == wild.anyRun) {
                ++p;
            }
            if (p == patternLength) {
                return 1;  // the rest of the value is absorbed
            }
            // Any-one wildcards right behind take one value character each, for good.
            while (p < patternLength && pattern[p] == wild.anyOne && v < valueLength) {
                ++p;
                ++v;
            }
            if (p == patternLength) {
                return 1;
            }
            if (pattern[p] == wild.anyRun) {
                continue;  // '%_%' collapses into one run
            }
            resumeSet = true;
            resumeP = p;
            resumeV = v;
            continue;
        }

        if (mismatch) {
            if (!resumeSet) {
                return 0;
            }
            ++resumeV;
            v = resumeV;
            p = resumeP;
        }
    }

    while (p < patternLength && pattern[p] == wild.anyRun) {
        ++p;
    }
    return p == patternLength ? 1 : 0;
}

// Number of units before the 0 unit of a narrow string.
size_t NarrowLength(const char *text) {
    return std::strlen(text);
}
}  // namespace

// 1 when the whole value matches the pattern ('%', '_', '\'), compared exactly; else 0.
extern "C" int GLIB_ValueMatchesPattern(const char *pattern, const char *value) noexcept {
    return Match(pattern, NarrowLength(pattern), value, NarrowLength(value),
                 Wildcards<char>{'%', '_', '\\'}, ExactEqual{});
}

// The same over wide strings.
extern "C" int GLIB_ValueMatchesPatternW(const GLIB_WChar *pattern,
                                         const GLIB_WChar *value) noexcept {
    return Match(pattern, GLIB_wcslen(pattern), value, GLIB_wcslen(value),
                 Wildcards<GLIB_WChar>{u'%', u'_', u'\\'}, ExactEqual{});
}

// The same with the caller's any-run, any-one and escape characters (wildcards[0..2]); a
// non-zero ignoreCase compares characters (also escaped ones) through the locale's tolower, while
// the wildcards themselves are always recognised exactly.
extern "C" int GLIB_ValueMatchesPatternEx(const char *pattern, const char *value,
                                          const char *wildcards, uint32_t ignoreCase) noexcept {
    const Wildcards<char> wild{wildcards[0], wildcards[1], wildcards[2]};
    const size_t patternLength = NarrowLength(pattern);
    const size_t valueLength = NarrowLength(value);
    if (ignoreCase != 0) {
        return Match(pattern, patternLength, value, valueLength, wild, FoldedEqual{});
    }
    return Match(pattern, patternLength, value, valueLength, wild, ExactEqual{});
}
