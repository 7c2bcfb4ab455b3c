/* SPDX-License-Identifier: MIT */
// Trimming, blank handling, digit tests and the decimal parse of narrow strings.

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/glib.h>

namespace {

std::string Trimmed(const char *text, uint32_t options) {
    std::string buffer(text);
    buffer.push_back('\0');
    GLIB_strtrim(buffer.data(), options);
    return std::string(buffer.c_str());
}

TEST(GlibStrtrim, SpaceIsAlwaysABlankOthersNeedOptions) {
    const char *text = " \tab\r\n";
    EXPECT_EQ(Trimmed(text, 3), "\tab\r\n");
    EXPECT_EQ(Trimmed(text, 3 | 4), "ab\r\n");
    EXPECT_EQ(Trimmed(text, 3 | 8), "\tab");
    EXPECT_EQ(Trimmed(text, 15), "ab");
}

TEST(GlibStrtrim, StartAndEndSeparately) {
    EXPECT_EQ(Trimmed("  ab  ", 1), "ab  ");
    EXPECT_EQ(Trimmed("  ab  ", 2), "  ab");
    EXPECT_EQ(Trimmed("  ab  ", 3), "ab");
    EXPECT_EQ(Trimmed("  ab  ", 0), "  ab  ");
    EXPECT_EQ(Trimmed("a b", 3), "a b");
}

TEST(GlibStrtrim, EmptyAndAllBlankStringsBecomeEmpty) {
    EXPECT_EQ(Trimmed("", 15), "");
    EXPECT_EQ(Trimmed("    ", 1), "");
    EXPECT_EQ(Trimmed("    ", 2), "");
    EXPECT_EQ(Trimmed("\t\n \r", 15), "");
}

TEST(GlibStrtrim, OtherWhiteSpaceIsNeverABlank) {
    EXPECT_EQ(Trimmed("\vab\f", 15), "\vab\f");
}

TEST(GlibStrtrim, MovesTheRestToTheFrontWithTerminator) {
    char buffer[] = "  abc\0ZZ";
    GLIB_strtrim(buffer, 1);
    EXPECT_EQ(std::memcmp(buffer, "abc\0c\0ZZ", 8), 0);
}

TEST(GlibCopyNonBlanks, CopiesUpToWhiteSpaceEndOrCount) {
    char dst[16];
    std::memset(dst, 'Z', sizeof dst);
    EXPECT_EQ(GLIB_CopyNonBlanks(dst, "abc def", 10), dst);
    EXPECT_STREQ(dst, "abc");
    EXPECT_EQ(dst[4], 'Z');

    std::memset(dst, 'Z', sizeof dst);
    GLIB_CopyNonBlanks(dst, "abcdef", 3);
    EXPECT_STREQ(dst, "abc");
    EXPECT_EQ(dst[4], 'Z');

    GLIB_CopyNonBlanks(dst, "ab\tc", 10);
    EXPECT_STREQ(dst, "ab");
    GLIB_CopyNonBlanks(dst, "ab\nc", 10);
    EXPECT_STREQ(dst, "ab");
    GLIB_CopyNonBlanks(dst, " ab", 10);
    EXPECT_STREQ(dst, "");
    GLIB_CopyNonBlanks(dst, "xy", 10);
    EXPECT_STREQ(dst, "xy");
}

TEST(GlibCopyNonBlanks, ZeroOrNegativeCountStoresOnlyTheTerminator) {
    char dst[4] = {'Z', 'Z', 'Z', 'Z'};
    GLIB_CopyNonBlanks(dst, "abc", 0);
    EXPECT_EQ(dst[0], 0);
    EXPECT_EQ(dst[1], 'Z');
    dst[0] = 'Z';
    GLIB_CopyNonBlanks(dst, "abc", -5);
    EXPECT_EQ(dst[0], 0);
    EXPECT_EQ(dst[1], 'Z');
}

TEST(GlibCopyNonBlanks, NullArgumentsReturnTheDestinationUntouched) {
    char dst[2] = {'Z', 'Z'};
    EXPECT_EQ(GLIB_CopyNonBlanks(dst, nullptr, 5), dst);
    EXPECT_EQ(dst[0], 'Z');
    EXPECT_EQ(GLIB_CopyNonBlanks(nullptr, "abc", 5), nullptr);
}

TEST(GlibExtSkipBlanks, PointsAtFirstNonWhiteSpace) {
    const char *text = " \t\n\v\f\rab ";
    EXPECT_EQ(GLIB_ExtSkipBlanks(text), text + 6);
    const char *blanks = "   ";
    EXPECT_EQ(GLIB_ExtSkipBlanks(blanks), blanks + 3);
    const char *none = "x";
    EXPECT_EQ(GLIB_ExtSkipBlanks(none), none);
    const char *empty = "";
    EXPECT_EQ(GLIB_ExtSkipBlanks(empty), empty);
}

TEST(GlibAreDigits, EmptyStringCountsAsAllDigits) {
    EXPECT_EQ(GLIB_AreDigits(""), 1);
    EXPECT_EQ(GLIB_AreDigits("0123456789"), 1);
    EXPECT_EQ(GLIB_AreDigits("12a"), 0);
    EXPECT_EQ(GLIB_AreDigits(" 1"), 0);
    EXPECT_EQ(GLIB_AreDigits("-1"), 0);
    EXPECT_EQ(GLIB_AreDigits("1\xB2"), 0);
}

TEST(GlibStrtol, ValueAndEndPointer) {
    char *end = nullptr;
    const char *text = "  42abc";
    EXPECT_EQ(GLIB_strtol(text, &end), 42);
    EXPECT_EQ(end, text + 4);

    const char *blanks = "   ";
    EXPECT_EQ(GLIB_strtol(blanks, &end), 0);
    EXPECT_EQ(end, blanks + 3);

    const char *empty = "";
    EXPECT_EQ(GLIB_strtol(empty, &end), 0);
    EXPECT_EQ(end, empty);

    const char *negative = " -17 ";
    EXPECT_EQ(GLIB_strtol(negative, &end), -17);
    EXPECT_EQ(end, negative + 4);

    const char *letters = "abc";
    EXPECT_EQ(GLIB_strtol(letters, &end), 0);
    EXPECT_EQ(end, letters);
}

TEST(GlibStrtol, EndPointerSkipsAnyMixOfSignsWhileValueComesFromStrtol) {
    char *end = nullptr;
    const char *text = "+-5";
    EXPECT_EQ(GLIB_strtol(text, &end), 0);
    EXPECT_EQ(end, text + 3);

    const char *mixed = " - +9x";
    EXPECT_EQ(GLIB_strtol(mixed, &end), 0);
    EXPECT_EQ(end, mixed + 5);

    const char *signsOnly = "+-";
    EXPECT_EQ(GLIB_strtol(signsOnly, &end), 0);
    EXPECT_EQ(end, signsOnly + 2);
}

TEST(GlibStrtol, EndPointerIsOptional) {
    EXPECT_EQ(GLIB_strtol("123", nullptr), 123);
    EXPECT_EQ(GLIB_strtol("  ", nullptr), 0);
}

TEST(GlibStrtol, SaturatesAtThirtyTwoBits) {
    EXPECT_EQ(GLIB_strtol("2147483647", nullptr), INT32_MAX);
    EXPECT_EQ(GLIB_strtol("2147483648", nullptr), INT32_MAX);
    EXPECT_EQ(GLIB_strtol("-2147483648", nullptr), INT32_MIN);
    EXPECT_EQ(GLIB_strtol("-99999999999999999999999", nullptr), INT32_MIN);
}

// Deterministic generator of decimal texts with blanks, signs, digits and trailing garbage.
TEST(GlibStrtol, AgreesWithStrtolInTheThirtyTwoBitRange) {
    uint32_t seed = 7;
    static constexpr char kAlphabet[] = " \t+-0123456789x.";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        const int length = GLIB_rand(&seed) % 12;
        for (int k = 0; k < length; ++k)
            text.push_back(kAlphabet[GLIB_rand(&seed) % (sizeof kAlphabet - 1)]);
        const long expected = std::strtol(text.c_str(), nullptr, 10);
        const long clamped = expected > INT32_MAX   ? INT32_MAX
                             : expected < INT32_MIN ? INT32_MIN
                                                    : expected;
        char *end = nullptr;
        ASSERT_EQ(GLIB_strtol(text.c_str(), &end), clamped) << '"' << text << '"';
        // The end pointer: behind blanks and signs, then behind the digits.
        size_t at = 0;
        while (at < text.size() && std::strchr(" \t+-", text[at]) != nullptr)
            ++at;
        while (at < text.size() && text[at] >= '0' && text[at] <= '9')
            ++at;
        ASSERT_EQ(end, text.c_str() + at) << '"' << text << '"';
    }
}

}  // namespace
