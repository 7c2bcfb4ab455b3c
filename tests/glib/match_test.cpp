/* SPDX-License-Identifier: MIT */
// SQL-LIKE pattern matching: edge cases, and every pattern and value up to length 5 over a small
// alphabet compared with a straightforward recursive matcher.

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <string>
#include <vector>

#include <nlssupport/glib.h>
#include "glib/wide_helpers.h"

using glibtest::WidenAscii;

namespace {

// Every pattern and value up to length 5 is checked in all three configurations (about two
// seconds under the sanitizers).

// Reference: the textbook recursive definition of the match. any-run matches any run (also
// none), any-one exactly one character, escape makes the next pattern character literal; an
// escape with nothing behind it matches nothing.
bool Reference(const char *p, const char *v, char anyRun, char anyOne, char escape, bool fold) {
    const auto same = [fold](char a, char b) {
        return fold ? std::tolower(static_cast<signed char>(a)) ==
                          std::tolower(static_cast<signed char>(b))
                    : a == b;
    };
    if (*p == 0)
        return *v == 0;
    if (*p == anyRun) {
        for (const char *rest = v;; ++rest) {
            if (Reference(p + 1, rest, anyRun, anyOne, escape, fold))
                return true;
            if (*rest == 0)
                return false;
        }
    }
    if (*v == 0)
        return false;
    if (*p == anyOne)
        return Reference(p + 1, v + 1, anyRun, anyOne, escape, fold);
    if (*p == escape) {
        if (p[1] == 0)
            return false;
        return same(p[1], *v) && Reference(p + 2, v + 1, anyRun, anyOne, escape, fold);
    }
    return same(*p, *v) && Reference(p + 1, v + 1, anyRun, anyOne, escape, fold);
}

// Every string of length 0 to maxLength over the alphabet.
std::vector<std::string> AllStrings(const std::string &alphabet, size_t maxLength) {
    std::vector<std::string> all = {""};
    size_t begin = 0;
    for (size_t length = 1; length <= maxLength; ++length) {
        const size_t end = all.size();
        for (size_t i = begin; i < end; ++i)
            for (char c : alphabet)
                all.push_back(all[i] + c);
        begin = end;
    }
    return all;
}


TEST(GlibMatch, EmptyValue) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("", ""), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%", ""), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%%%", ""), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("_", ""), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a", ""), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%_", ""), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\", ""), 0);
}

TEST(GlibMatch, EmptyPatternMatchesOnlyEmptyValue) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("", ""), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("", "a"), 0);
}

TEST(GlibMatch, AnchoredAtBothEnds) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("%", "anything"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a%", "a"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a%", "abc"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a%", "ba"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%c", "abc"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%c", "abcd"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a_c", "abc"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a_c", "ac"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("abc", "abcd"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("abcd", "abc"), 0);
}

TEST(GlibMatch, AnyRunFollowedByAnyOneNeedsCharacters) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("%_", ""), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%_", "a"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%_", "abc"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("_%_", "a"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("_%_", "ab"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%_%", "x"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%__", "a"), 0);
}

TEST(GlibMatch, ResumesFromTheLatestAnyRun) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("%ab", "aab"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%a%b%c", "xaybzc"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%a%b%c", "xaybz"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("%aab", "aaaab"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a%b_d", "abxbcd"), 1);
}

TEST(GlibMatch, EscapeMakesWildcardsLiteral) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("a\\%", "a%"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a\\%", "ab"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a\\%", "a"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\_", "_"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\_", "x"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\\\", "\\"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\a", "a"), 1);
}

TEST(GlibMatch, LoneTrailingEscapeNeverMatches) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("a\\", "a\\"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a\\", "a"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\", "\\"), 0);
    // The mismatch is resumed from an earlier any-run, which cannot help either.
    EXPECT_EQ(GLIB_ValueMatchesPattern("%\\", "ab"), 0);
}

TEST(GlibMatch, CaseSensitive) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("A%", "abc"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPattern("a%", "ABC"), 0);
}

TEST(GlibMatch, HighBytesCompareExactly) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("\xE9%", "\xE9t\xE9"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("_\xFF", "a\xFF"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\xC9", "\xE9"), 0);
}

TEST(GlibMatchW, MatchesWideUnits) {
    const auto pattern = glibtest::W(u"\x4E2D%\xFFFF_");
    EXPECT_EQ(GLIB_ValueMatchesPatternW(pattern.data(), glibtest::W(u"\x4E2Dxy\xFFFFz").data()), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternW(pattern.data(), glibtest::W(u"\x4E2Dxy\xFFFF").data()), 0);
    // A unit whose low byte is '%' is not the wildcard.
    EXPECT_EQ(GLIB_ValueMatchesPatternW(glibtest::W(u"\x0125").data(), glibtest::W(u"abc").data()),
              0);
    EXPECT_EQ(GLIB_ValueMatchesPatternW(glibtest::W(u"a\\%").data(), glibtest::W(u"a%").data()), 1);
}

TEST(GlibMatchEx, CallerWildcardsAndCaseFlag) {
    const char set[] = {'*', '?', '!'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("A*", "abc", set, 1), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("A*", "abc", set, 0), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a*", "abc", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("%", "abc", set, 1), 0);  // '%' is ordinary now
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("%", "%", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a?c", "aXc", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a!*", "a*", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a!*", "ab", set, 0), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("_", "a", set, 0), 0);
}

TEST(GlibMatchEx, CaseFlagAppliesBehindTheEscape) {
    const char set[] = {'*', '?', '!'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("!A", "a", set, 1), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("!A", "a", set, 0), 0);
}

TEST(GlibMatchEx, WildcardsAreRecognisedExactlyEvenWhenFolding) {
    // Letters as wildcards: 'X' is the any-run, 'y' the any-one, 'Z' the escape.
    const char set[] = {'X', 'y', 'Z'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("aX", "abc", set, 1), 1);
    // Lower-case 'x' is an ordinary character that folds to 'X' only as a value comparison.
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("ax", "abc", set, 1), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("ax", "aX", set, 1), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("aY", "ab", set, 1), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("ay", "ab", set, 1), 1);
}

TEST(GlibMatchEx, DefaultWildcardsBehaveLikeThePlainMatcher) {
    const char set[] = {'%', '_', '\\'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a\\%", "a%", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("%_", "", set, 0), 0);
}

// Control characters are characters like any other: behind the escape, as wildcards, and a
// trailing run of any-run wildcards made of the character 1 still matches nothing at the end.
TEST(GlibMatch, EscapedCharacterOneMatchesItself) {
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\\x01", "\x01"), 1);
    EXPECT_EQ(GLIB_ValueMatchesPattern("\\\x01", "\x02"), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternW(glibtest::W(u"\\\x0001").data(),
                                        glibtest::W(u"\x0001").data()),
              1);
}

TEST(GlibMatchEx, ControlCharactersServeAsWildcards) {
    const char set[] = {'\x01', '\x02', '\x03'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a\x01", "a", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a\x01\x01", "abc", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a\x02", "ab", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a\x02", "a", set, 0), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("\x03\x01", "\x01", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("\x03\x01", "x", set, 0), 0);
}

// A 0 any-run character can never be met inside a pattern, whose end is its first 0: the
// pattern is then matched with the other two wildcards only.
TEST(GlibMatchEx, ZeroAnyRunCharacterIsNeverMet) {
    const char set[] = {'\0', '?', '!'};
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a", "a", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a?", "ab", set, 0), 1);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("a", "ab", set, 0), 0);
    EXPECT_EQ(GLIB_ValueMatchesPatternEx("", "", set, 0), 1);
}

TEST(GlibMatchExhaustive, PlainAndWideAgreeWithRecursiveDefinition) {
    const auto patterns = AllStrings("ab%_\\", 5);
    const auto values = AllStrings("ab%_\\", 5);
    std::vector<std::vector<GLIB_WChar>> widePatterns;
    std::vector<std::vector<GLIB_WChar>> wideValues;
    for (const auto &v : values)
        wideValues.push_back(WidenAscii(v));
    size_t checked = 0;
    for (size_t pi = 0; pi < patterns.size(); ++pi) {
        const std::string &p = patterns[pi];
        const auto wp = WidenAscii(p);
        for (size_t vi = 0; vi < values.size(); ++vi) {
            const std::string &v = values[vi];
            const int expected = Reference(p.c_str(), v.c_str(), '%', '_', '\\', false) ? 1 : 0;
            const int narrow = GLIB_ValueMatchesPattern(p.c_str(), v.c_str());
            const int wide = GLIB_ValueMatchesPatternW(wp.data(), wideValues[vi].data());
            if (narrow != expected || wide != expected) {
                ADD_FAILURE() << "pattern '" << p << "' value '" << v << "': expected " << expected
                              << ", narrow " << narrow << ", wide " << wide;
                return;
            }
            ++checked;
        }
    }
    EXPECT_GT(checked, 1000000u);
}

TEST(GlibMatchExhaustive, ExAgreesWithRecursiveDefinitionBothCases) {
    std::setlocale(LC_CTYPE, "C");
    const char set[] = {'*', '?', '!'};
    const auto patterns = AllStrings("aA*?!", 5);
    const auto values = AllStrings("aA*!%", 4);
    size_t checked = 0;
    for (size_t pi = 0; pi < patterns.size(); ++pi) {
        const std::string &p = patterns[pi];
        for (const auto &v : values) {
            for (uint32_t fold = 0; fold < 2; ++fold) {
                const int expected =
                    Reference(p.c_str(), v.c_str(), '*', '?', '!', fold != 0) ? 1 : 0;
                const int got = GLIB_ValueMatchesPatternEx(p.c_str(), v.c_str(), set, fold);
                if (got != expected) {
                    ADD_FAILURE() << "pattern '" << p << "' value '" << v << "' fold " << fold
                                  << ": expected " << expected << ", got " << got;
                    return;
                }
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 100000u);
}

}  // namespace
