/* SPDX-License-Identifier: MIT */
// Wide-character strings of 16-bit units, narrow-to-wide copies and ASCII case changers.

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/glib.h>
#include "glib/wide_helpers.h"

using glibtest::U16;
using glibtest::W;

namespace {

constexpr GLIB_WChar kSentinel = 0xA5A5;

std::vector<GLIB_WChar> Filled(size_t n) {
    return std::vector<GLIB_WChar>(n, kSentinel);
}

TEST(GlibWcslen, CountsUnitsBeforeTheZeroUnit) {
    EXPECT_EQ(GLIB_wcslen(W(u"").data()), 0u);
    EXPECT_EQ(GLIB_wcslen(W(u"abc").data()), 3u);
    EXPECT_EQ(GLIB_wcslen(W(u"\xFFFF\x0100x").data()), 3u);
}

TEST(GlibWcscpy, CopiesThroughTheTerminatorOnly) {
    auto dst = Filled(8);
    EXPECT_EQ(GLIB_wcscpy(dst.data(), W(u"abc").data()), dst.data());
    EXPECT_EQ(U16(dst.data()), u"abc");
    EXPECT_EQ(dst[3], 0);
    EXPECT_EQ(dst[4], kSentinel);
}

TEST(GlibWcscat, AppendsBehindTheEndWithTerminator) {
    auto dst = Filled(10);
    GLIB_wcscpy(dst.data(), W(u"ab").data());
    EXPECT_EQ(GLIB_wcscat(dst.data(), W(u"cde").data()), dst.data());
    EXPECT_EQ(U16(dst.data()), u"abcde");
    EXPECT_EQ(dst[5], 0);
    EXPECT_EQ(dst[6], kSentinel);
}

TEST(GlibWcsncpy, ShortSourceIsZeroFilledUpToN) {
    auto dst = Filled(8);
    EXPECT_EQ(GLIB_wcsncpy(dst.data(), W(u"abc").data(), 5), dst.data());
    const std::vector<GLIB_WChar> expected = {'a', 'b', 'c', 0, 0, kSentinel, kSentinel, kSentinel};
    EXPECT_EQ(dst, expected);
}

TEST(GlibWcsncpy, LongSourceGetsNoTerminator) {
    auto dst = Filled(6);
    GLIB_wcsncpy(dst.data(), W(u"abcdef").data(), 3);
    const std::vector<GLIB_WChar> expected = {'a', 'b', 'c', kSentinel, kSentinel, kSentinel};
    EXPECT_EQ(dst, expected);
    auto exact = Filled(4);
    GLIB_wcsncpy(exact.data(), W(u"abc").data(), 3);
    EXPECT_EQ(exact[3], kSentinel);
}

TEST(GlibWcsncpy, ZeroCountWritesNothing) {
    auto dst = Filled(3);
    GLIB_wcsncpy(dst.data(), W(u"abc").data(), 0);
    EXPECT_EQ(dst, Filled(3));
}

TEST(GlibWcsncat, AppendsAtMostNUnitsAndAlwaysTerminates) {
    auto dst = Filled(10);
    GLIB_wcscpy(dst.data(), W(u"ab").data());
    EXPECT_EQ(GLIB_wcsncat(dst.data(), W(u"cdef").data(), 2), dst.data());
    EXPECT_EQ(U16(dst.data()), u"abcd");
    EXPECT_EQ(dst[5], kSentinel);

    GLIB_wcsncat(dst.data(), W(u"xy").data(), 5);
    EXPECT_EQ(U16(dst.data()), u"abcdxy");
    EXPECT_EQ(dst[7], kSentinel);
}

TEST(GlibWcsncat, ZeroCountOnlyWritesTheTerminatorAtTheEnd) {
    auto dst = Filled(6);
    GLIB_wcscpy(dst.data(), W(u"ab").data());
    dst[3] = kSentinel;
    GLIB_wcsncat(dst.data(), W(u"cd").data(), 0);
    EXPECT_EQ(dst[2], 0);
    EXPECT_EQ(dst[3], kSentinel);
    EXPECT_EQ(U16(dst.data()), u"ab");
}

TEST(GlibWcscmp, NormalisesToMinusOneZeroOne) {
    EXPECT_EQ(GLIB_wcscmp(W(u"b").data(), W(u"a").data()), 1);
    EXPECT_EQ(GLIB_wcscmp(W(u"z").data(), W(u"a").data()), 1);
    EXPECT_EQ(GLIB_wcscmp(W(u"a").data(), W(u"z").data()), -1);
    EXPECT_EQ(GLIB_wcscmp(W(u"abc").data(), W(u"abc").data()), 0);
    EXPECT_EQ(GLIB_wcscmp(W(u"ab").data(), W(u"abc").data()), -1);
    EXPECT_EQ(GLIB_wcscmp(W(u"abc").data(), W(u"ab").data()), 1);
    EXPECT_EQ(GLIB_wcscmp(W(u"").data(), W(u"").data()), 0);
}

TEST(GlibWcscmp, ComparesUnitsUnsigned) {
    EXPECT_EQ(GLIB_wcscmp(W(u"\xFFFF").data(), W(u"a").data()), 1);
    EXPECT_EQ(GLIB_wcscmp(W(u"\x8000").data(), W(u"\x7FFF").data()), 1);
}

TEST(GlibWcsncmp, ReturnsRawDifference) {
    EXPECT_EQ(GLIB_wcsncmp(W(u"z").data(), W(u"a").data(), 1), 25);
    EXPECT_EQ(GLIB_wcsncmp(W(u"a").data(), W(u"z").data(), 1), -25);
    EXPECT_EQ(GLIB_wcsncmp(W(u"\xFFFF").data(), W(u"").data(), 1), 65535);
    EXPECT_EQ(GLIB_wcsncmp(W(u"abX").data(), W(u"abY").data(), 2), 0);
    EXPECT_EQ(GLIB_wcsncmp(W(u"abX").data(), W(u"abY").data(), 3), 'X' - 'Y');
    EXPECT_EQ(GLIB_wcsncmp(W(u"ab").data(), W(u"ab").data(), 10), 0);
    EXPECT_EQ(GLIB_wcsncmp(W(u"ab").data(), W(u"abc").data(), 10), -'c');
}

TEST(GlibWcsncmp, ZeroCountGivesZero) {
    EXPECT_EQ(GLIB_wcsncmp(W(u"a").data(), W(u"b").data(), 0), 0);
}

TEST(GlibWcsicmp, IgnoresAsciiCaseAndReturnsFoldedDifference) {
    EXPECT_EQ(GLIB_wcsicmp(W(u"ABC").data(), W(u"abc").data()), 0);
    EXPECT_EQ(GLIB_wcsicmp(W(u"a").data(), W(u"[").data()), 6);  // '[' is not folded
    EXPECT_EQ(GLIB_wcsicmp(W(u"Z").data(), W(u"a").data()), 25);
    EXPECT_EQ(GLIB_wcsicmp(W(u"ab").data(), W(u"ABC").data()), -'c');
    EXPECT_EQ(GLIB_wcsicmp(W(u"\x00C9").data(), W(u"\x00E9").data()), 0xC9 - 0xE9);
}

TEST(GlibWcsnicmp, ComparesAtMostNFoldedUnits) {
    EXPECT_EQ(GLIB_wcsnicmp(W(u"ABCx").data(), W(u"abcy").data(), 3), 0);
    EXPECT_EQ(GLIB_wcsnicmp(W(u"ABCx").data(), W(u"abcy").data(), 4), 'x' - 'y');
    EXPECT_EQ(GLIB_wcsnicmp(W(u"a").data(), W(u"[").data(), 1), 6);
    EXPECT_EQ(GLIB_wcsnicmp(W(u"a").data(), W(u"b").data(), 0), 0);
    EXPECT_EQ(GLIB_wcsnicmp(W(u"Ab").data(), W(u"aB").data(), 99), 0);
}

TEST(GlibWcschr, FindsFirstUnitOrTerminator) {
    const auto s = W(u"abcb");
    EXPECT_EQ(GLIB_wcschr(s.data(), 'b'), s.data() + 1);
    EXPECT_EQ(GLIB_wcschr(s.data(), 'x'), nullptr);
    EXPECT_EQ(GLIB_wcschr(s.data(), 0), s.data() + 4);
}

TEST(GlibWcsstr, FindsFirstOccurrence) {
    const auto s = W(u"abcabd");
    EXPECT_EQ(GLIB_wcsstr(s.data(), W(u"abd").data()), s.data() + 3);
    EXPECT_EQ(GLIB_wcsstr(s.data(), W(u"ab").data()), s.data());
    EXPECT_EQ(GLIB_wcsstr(s.data(), W(u"abx").data()), nullptr);
    EXPECT_EQ(GLIB_wcsstr(s.data(), W(u"abcabdx").data()), nullptr);
}

TEST(GlibWcsstr, EmptyNeedleGivesHaystackButEmptyHaystackGivesNull) {
    const auto s = W(u"abc");
    EXPECT_EQ(GLIB_wcsstr(s.data(), W(u"").data()), s.data());
    EXPECT_EQ(GLIB_wcsstr(W(u"").data(), W(u"").data()), nullptr);
    EXPECT_EQ(GLIB_wcsstr(W(u"").data(), W(u"a").data()), nullptr);
}

TEST(GlibWcsCase, FoldsAsciiLettersOnlyInPlace) {
    auto s = W(u"aZ[@`{\x00E9\x00C9 09");
    EXPECT_EQ(GLIB_wcslwr(s.data()), s.data());
    EXPECT_EQ(U16(s.data()), u"az[@`{\x00E9\x00C9 09");
    EXPECT_EQ(GLIB_wcsupr(s.data()), s.data());
    EXPECT_EQ(U16(s.data()), u"AZ[@`{\x00E9\x00C9 09");
}

TEST(GlibStrCase, FoldsAsciiBytesOnlyInPlace) {
    char s[] = "aZ[@`{\xE9\xC9 09";
    EXPECT_EQ(GLIB_strlwr(s), s);
    EXPECT_STREQ(s, "az[@`{\xE9\xC9 09");
    EXPECT_EQ(GLIB_strupr(s), s);
    EXPECT_STREQ(s, "AZ[@`{\xE9\xC9 09");
}

// Only the 0 unit ends the text: a unit or byte of value 1 is folded past like any other.
TEST(GlibCase, ControlCharacterOneDoesNotEndTheText) {
    auto wide = W(u"a\x0001b");
    EXPECT_EQ(GLIB_wcsupr(wide.data()), wide.data());
    EXPECT_EQ(U16(wide.data()), u"A\x0001B");
    EXPECT_EQ(GLIB_wcslwr(wide.data()), wide.data());
    EXPECT_EQ(U16(wide.data()), u"a\x0001b");
    char narrow[] = "a\x01" "b";
    EXPECT_EQ(GLIB_strupr(narrow), narrow);
    EXPECT_STREQ(narrow, "A\x01" "B");
    EXPECT_EQ(GLIB_strlwr(narrow), narrow);
    EXPECT_STREQ(narrow, "a\x01" "b");
}

TEST(GlibStrwcscpy, HighBytesBecomeQuestionMarks) {
    auto dst = Filled(8);
    EXPECT_EQ(GLIB_strwcscpy(dst.data(), "a\xE9\x7F\x80z"), dst.data());
    const std::vector<GLIB_WChar> expected = {'a', '?', 0x7F, '?', 'z', 0, kSentinel, kSentinel};
    EXPECT_EQ(dst, expected);
}

TEST(GlibStrwcsncpy, FollowsStrncpyRules) {
    auto dst = Filled(7);
    EXPECT_EQ(GLIB_strwcsncpy(dst.data(), "a\xFF", 5), dst.data());
    const std::vector<GLIB_WChar> padded = {'a', '?', 0, 0, 0, kSentinel, kSentinel};
    EXPECT_EQ(dst, padded);

    auto cut = Filled(4);
    GLIB_strwcsncpy(cut.data(), "abcdef", 3);
    const std::vector<GLIB_WChar> unterminated = {'a', 'b', 'c', kSentinel};
    EXPECT_EQ(cut, unterminated);

    auto none = Filled(2);
    GLIB_strwcsncpy(none.data(), "abc", 0);
    EXPECT_EQ(none, Filled(2));
}

TEST(GlibStrtowcs, NullGivesNull) {
    EXPECT_EQ(GLIB_strtowcs(nullptr), nullptr);
}

TEST(GlibStrtowcs, CopiesSevenBitTextWithTerminator) {
    GLIB_WChar *copy = GLIB_strtowcs("hello");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(U16(copy), u"hello");
    std::free(copy);

    GLIB_WChar *empty = GLIB_strtowcs("");
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty[0], 0);
    std::free(empty);
}

TEST(GlibStrtowcs, StopsAtFirstHighByteWithoutTerminator) {
    GLIB_WChar *copy = GLIB_strtowcs("ab\xC3\xA9z");
    ASSERT_NE(copy, nullptr);
    // Only the units before the high byte are defined; the rest of the block is left unset.
    EXPECT_EQ(copy[0], 'a');
    EXPECT_EQ(copy[1], 'b');
    std::free(copy);
}

TEST(GlibWtoi, ParsesLikeStrtolBaseTen) {
    EXPECT_EQ(GLIB_wtoi(W(u"123").data()), 123);
    EXPECT_EQ(GLIB_wtoi(W(u"  -42x").data()), -42);
    EXPECT_EQ(GLIB_wtoi(W(u"+7").data()), 7);
    EXPECT_EQ(GLIB_wtoi(W(u"0x10").data()), 0);
    EXPECT_EQ(GLIB_wtoi(W(u"").data()), 0);
    EXPECT_EQ(GLIB_wtoi(W(u"abc").data()), 0);
    EXPECT_EQ(GLIB_wtoi(W(u"2147483647").data()), 2147483647);
    EXPECT_EQ(GLIB_wtoi(W(u"-2147483648").data()), INT32_MIN);
}

TEST(GlibWtoi, TakesLowBytesOfUnits) {
    // 0x0131 has the low byte 0x31 = '1'.
    EXPECT_EQ(GLIB_wtoi(W(u"\x0131\x0132").data()), 12);
}

TEST(GlibWtoi, ReadsOnlyTheFirstTwentyUnits) {
    // 19 blanks and a digit: the digit is the twentieth unit and counts.
    EXPECT_EQ(GLIB_wtoi(W(u"                   7").data()), 7);
    // 20 blanks: the digit behind them is ignored.
    EXPECT_EQ(GLIB_wtoi(W(u"                    7").data()), 0);
    EXPECT_EQ(GLIB_wtoi(W(u"00000000000000000012345").data()), 12);  // 18 zeros, "12" | "345"
}

TEST(GlibWtoi, TwentyFiveDigitsSaturateAtThirtyTwoBits) {
    EXPECT_EQ(GLIB_wtoi(W(u"1234567890123456789012345").data()), INT32_MAX);
    EXPECT_EQ(GLIB_wtoi(W(u"-123456789012345678901234").data()), INT32_MIN);
    EXPECT_EQ(GLIB_wtoi(W(u"2147483648").data()), INT32_MAX);
}

}  // namespace
