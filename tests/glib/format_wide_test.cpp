/* SPDX-License-Identifier: MIT */
// The wide formatter: the same engine over 16-bit units, with its own rules for strings and
// characters of the other width.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include <nlssupport/glib.h>
#include "glib/format_helpers.h"
#include "glib/wide_helpers.h"

using glibtest::kWideSentinel;
using glibtest::TerminatedCleanly;
using glibtest::W;
using glibtest::Wide;

namespace {

constexpr size_t kBig = 512;

#define EXPECT_WIDE(outSize, expectedResult, expectedText, format, ...)                            \
    do {                                                                                           \
        const auto format_ = W(format);                                                            \
        const auto run_ = Wide(outSize, format_.data() __VA_OPT__(, ) __VA_ARGS__);                \
        EXPECT_EQ(run_.result, expectedResult);                                                    \
        EXPECT_TRUE(run_.text == std::u16string(expectedText));                                    \
        EXPECT_TRUE(                                                                               \
            TerminatedCleanly(run_, outSize, std::u16string(expectedText).size(), kWideSentinel)); \
    } while (0)

TEST(GlibSwprintfSize, SizeZeroWritesNothing) {
    const auto format = W(u"abc");
    const auto run = Wide(0, format.data());
    EXPECT_EQ(run.result, 0);
    for (GLIB_WChar c : run.raw)
        EXPECT_EQ(c, kWideSentinel);
}

TEST(GlibSwprintfSize, SameTerminationRulesInUnits) {
    EXPECT_WIDE(4, 4, u"abcd", u"abcd");
    EXPECT_WIDE(4, -1, u"abcd", u"abcde");
    EXPECT_WIDE(4, -1, u"abc", u"%s", "abcd");
    EXPECT_WIDE(4, 3, u"abc", u"%s", "abc");
    EXPECT_WIDE(3, -1, u"abc", u"abc%ls", W(u"x").data());
    EXPECT_WIDE(3, -1, u"abc", u"abc%d", 1);
    EXPECT_WIDE(3, 3, u"abc", u"abc%s", "");
}

TEST(GlibSwprintfText, WideLiteralUnitsAndEscapes) {
    EXPECT_WIDE(kBig, 4,
                u"\x4E2D"
                u"42\n",
                u"\x4E2D%d\\n", 42);
    // A unit whose low byte is '%' or '\' is ordinary text.
    EXPECT_WIDE(kBig, 2, u"\x0125\x015C", u"\x0125\x015C");
    EXPECT_WIDE(kBig, -1, u"a", u"a\\q");
    EXPECT_WIDE(kBig, -1, u"a", u"a%\x0164", 1);  // low byte 'd', but not a conversion
    EXPECT_WIDE(kBig, 2, u"ab", u"ab%");
}

TEST(GlibSwprintfNarrowString, HighBytesBecomeQuestionMarks) {
    EXPECT_WIDE(kBig, 4, u"a??b", u"%s",
                "a\xC3\xA9"
                "b");
    EXPECT_WIDE(kBig, 6, u"(null)", u"%s", nullptr);
    EXPECT_WIDE(kBig, 5, u"   ab", u"%5.2s", "abc");
    EXPECT_WIDE(kBig, 4, u"ab  ", u"%-4s", "ab");
}

TEST(GlibSwprintfWideString, CopiedUnitForUnit) {
    EXPECT_WIDE(kBig, 3, u"\x4E2D\xD83D\xDE00", u"%ls", W(u"\x4E2D\xD83D\xDE00").data());
    EXPECT_WIDE(kBig, 6, u"(null)", u"%ls", nullptr);
    EXPECT_WIDE(kBig, 5, u"   \xE9z", u"%5ls", W(u"\xE9z").data());
    EXPECT_WIDE(kBig, 5, u"\xE9z   ", u"%-5ls", W(u"\xE9z").data());
}

TEST(GlibSwprintfWideString, PrecisionCountsTheLastNarrowString) {
    // Before any "%s" the narrow string is empty: nothing is taken.
    EXPECT_WIDE(kBig, 0, u"", u"%.2ls", W(u"abcd").data());
    EXPECT_WIDE(kBig, 5, u"xyzab", u"%s%.2ls", "xyz", W(u"abcd").data());
    EXPECT_WIDE(kBig, 6, u"xyzabc", u"%s%.5ls", "xyz", W(u"abcd").data());
    EXPECT_WIDE(kBig, 1, u"x", u"%s%.0ls", "x", W(u"abcd").data());
    // A null narrow string stands as "(null)" for the count too.
    EXPECT_WIDE(kBig, 12, u"(null)abcdef", u"%s%.9ls", nullptr, W(u"abcdefgh").data());
}

TEST(GlibSwprintfWideString, ShortWideStringUnderPrecisionGivesZeroUnits) {
    const auto format = W(u"%s%.5ls|");
    const auto run = Wide(kBig, format.data(), "xyz", W(u"a").data());
    EXPECT_EQ(run.result, 7);
    const std::vector<GLIB_WChar> expected = {'x', 'y', 'z', 'a', 0, 0, '|', 0, kWideSentinel};
    EXPECT_EQ(std::vector<GLIB_WChar>(run.raw.begin(), run.raw.begin() + 9), expected);
}

TEST(GlibSwprintfChar, NarrowCharacterIsSignExtended) {
    EXPECT_WIDE(kBig, 1, u"A", u"%c", 'A');
    EXPECT_WIDE(kBig, 1, u"\xFFE9", u"%c", 0xE9);
    EXPECT_WIDE(kBig, 1, u"\xFF80", u"%c", 0x80);
    EXPECT_WIDE(kBig, 1, u"\x7F", u"%5c", 0x17F);
}

TEST(GlibSwprintfChar, WideCharacterKeepsItsLow16Bits) {
    EXPECT_WIDE(kBig, 1, u"\x4E2D", u"%lc", 0x4E2D);
    EXPECT_WIDE(kBig, 1, u"\xF600", u"%lc", 0x1F600);
    EXPECT_WIDE(kBig, 1, u"A", u"%5lc", 'A');
    EXPECT_WIDE(2, 2, u"ab", u"a%lc", 'b');  // a single unit may land at index size - 1
    EXPECT_WIDE(1, -1, u"a", u"a%lc", 'b');
}

TEST(GlibSwprintfNumbers, IntegersFloatingAndPointersAreWidened) {
    EXPECT_WIDE(kBig, 8, u"-0042 ff", u"%05d %x", -42, 255);
    EXPECT_WIDE(kBig, 3, u"010", u"%o", 8);
    EXPECT_WIDE(kBig, 4, u"1.50", u"%.2f", 1.5);
    EXPECT_WIDE(kBig, 8, u"0000ABCD", u"%p", reinterpret_cast<void *>(uintptr_t{0xABCD}));
    EXPECT_WIDE(5, -1, u"1.50", u"%f", 1.5);
    EXPECT_WIDE(kBig, -1, u"", u"%.128d", 1);
    EXPECT_WIDE(kBig, -1, u"", u"%129f", 1.0);
}

TEST(GlibSwprintfInvalid, SameInvalidConversions) {
    EXPECT_WIDE(kBig, -1, u"a", u"a%F", 1.0);
    EXPECT_WIDE(kBig, -1, u"a", u"a%n", nullptr);
    EXPECT_WIDE(kBig, -1, u"a", u"a%k", 1);
}

int CallV(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, ...) {
    va_list args;
    va_start(args, format);
    const int result = GLIB_vswprintf(buf, size, format, args);
    va_end(args);
    return result;
}

TEST(GlibVswprintf, TakesAnArgumentList) {
    GLIB_WChar buf[16];
    EXPECT_EQ(CallV(buf, 15, W(u"%d|%ls").data(), 7, W(u"ab").data()), 4);
    EXPECT_TRUE(glibtest::U16(buf) == u"7|ab");
}

}  // namespace
