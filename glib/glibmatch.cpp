// SPDX-License-Identifier: MIT
// glibmatch.cpp - SQL-LIKE pattern matching of whole values: any-run, any-one and escape
// wildcards, narrow and wide, with an iterative matcher that keeps a single resume point.

#include <nlssupport/glib.h>

#include <array>
#include <cctype>

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

    // Whether c is the 0 unit or one of the three: a character the matcher must look at
    // before it can compare it as a literal.
    bool Special(Unit c) const {
        return c == 0 || c == anyRun || c == anyOne || c == escape;
    }
};

// The wildcards of GLIB_ValueMatchesPattern and GLIB_ValueMatchesPatternW ('%', '_', '\'),
// with the test for a special character as one look-up in a constant table for narrow text.
template <typename Unit>
struct StandardWildcards {
    static constexpr Unit anyRun = '%';
    static constexpr Unit anyOne = '_';
    static constexpr Unit escape = '\\';

    bool Special(Unit c) const {
        if constexpr (sizeof(Unit) == 1) {
            return kSpecial[static_cast<unsigned char>(c)];
        } else {
            return c == 0 || c == anyRun || c == anyOne || c == escape;
        }
    }

  private:
    static constexpr std::array<bool, 256> kSpecial = [] {
        std::array<bool, 256> table{};
        table[0] = true;
        table[static_cast<unsigned char>(anyRun)] = true;
        table[static_cast<unsigned char>(anyOne)] = true;
        table[static_cast<unsigned char>(escape)] = true;
        return table;
    }();
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

// Matches the whole value against the whole pattern, both ending at their 0 unit. Iterative,
// with one resume point: the pattern position behind the most recent run of any-run wildcards
// and the value position it was tried at. On a mismatch the value position of the resume point
// moves one character on and matching restarts there. Only the latest any-run is ever resumed;
// for patterns made of literal characters, any-one and any-run wildcards this greedy scheme finds
// every match, in linear memory and without recursion. Returns 1 for a match, else 0.
//
// The pattern character at a resume point is a literal (or the escape and the literal behind
// it): a restart fails at once on every value character that is not that literal, so the
// restart moves the value position straight to the next character that is, and when none is
// left the match has failed. A 0 wildcard (possible with the caller's own set) is never
// recognised: the 0 unit ends the pattern first.
template <typename Unit, typename Wild, typename Equal>
int Match(const Unit *pattern, const Unit *value, Wild wild, Equal equal) {
    const Unit *p = pattern;
    const Unit *v = value;
    const Unit *resumeP = nullptr;
    const Unit *resumeV = nullptr;

    while (*v != 0) {
        const Unit c = *p;
        // A literal, the common case, is compared at once; the special characters are then
        // told apart in the order any-run, any-one, escape, which decides when a caller's set
        // repeats a character.
        if (!wild.Special(c)) {
            if (equal(c, *v)) {
                ++p;
                ++v;
                continue;
            }
        } else if (c != 0 && c != wild.anyRun) {
            bool same;
            if (c == wild.anyOne) {
                same = true;
            } else {
                ++p;  // the escape
                // A lone escape at the pattern's end matches nothing here.
                same = *p != 0 && equal(*p, *v);
            }
            if (same) {
                ++p;
                ++v;
                continue;
            }
        } else if (c != 0) {
            while (*p == wild.anyRun) {
                ++p;
            }
            if (*p == 0) {
                return 1;  // the rest of the value is absorbed
            }
            // Any-one wildcards right behind take one value character each, for good.
            while (*p != 0 && *p == wild.anyOne && *v != 0) {
                ++p;
                ++v;
            }
            if (*p == 0) {
                return 1;
            }
            if (*p == wild.anyRun) {
                continue;  // '%_%' collapses into one run
            }
            resumeP = p;
            resumeV = v;
            continue;
        }

        // A mismatch: restart behind the resume point at the next value character that equals
        // the literal there.
        if (resumeP == nullptr) {
            return 0;
        }
        const Unit *literal = *resumeP == wild.escape ? resumeP + 1 : resumeP;
        if (*literal == 0) {
            return 0;  // a lone escape matches no value character
        }
        do {
            ++resumeV;
        } while (*resumeV != 0 && !equal(*literal, *resumeV));
        if (*resumeV == 0) {
            return 0;
        }
        v = resumeV;
        p = resumeP;
    }

    while (*p != 0 && *p == wild.anyRun) {
        ++p;
    }
    return *p == 0 ? 1 : 0;
}
}  // namespace

// 1 when the whole value matches the pattern ('%', '_', '\'), compared exactly; else 0.
extern "C" int GLIB_ValueMatchesPattern(const char *pattern, const char *value) noexcept {
    return Match(pattern, value, StandardWildcards<char>{}, ExactEqual{});
}

// The same over wide strings.
extern "C" int GLIB_ValueMatchesPatternW(const GLIB_WChar *pattern,
                                         const GLIB_WChar *value) noexcept {
    return Match(pattern, value, StandardWildcards<GLIB_WChar>{}, ExactEqual{});
}

// The same with the caller's any-run, any-one and escape characters (wildcards[0..2]); a
// non-zero ignoreCase compares characters (also escaped ones) through the locale's tolower, while
// the wildcards themselves are always recognised exactly.
extern "C" int GLIB_ValueMatchesPatternEx(const char *pattern, const char *value,
                                          const char *wildcards, uint32_t ignoreCase) noexcept {
    const Wildcards<char> wild{wildcards[0], wildcards[1], wildcards[2]};
    if (ignoreCase != 0) {
        return Match(pattern, value, wild, FoldedEqual{});
    }
    return Match(pattern, value, wild, ExactEqual{});
}
