/* SPDX-License-Identifier: MIT */
// nls::format against GLIB_snprintf: the same bytes for every format the formatter accepts,
// nothing where it refuses one, and nothing where the arguments do not suit the format.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <nlssupport/nlssupport.hpp>

namespace {

// Room for every text these tests format.
constexpr std::size_t kRoom = 16384;

// What GLIB_snprintf writes for the format and arguments into a buffer large enough for it, or
// nothing when it returns -1.
template <class... A>
std::optional<std::string> Glib(const char *format, const A &...args) {
    std::string buffer(kRoom + 1, '\x7F');
    const int count = GLIB_snprintf(buffer.data(), kRoom, format, args...);
    if (count < 0)
        return std::nullopt;
    buffer.resize(static_cast<std::size_t>(count));
    return buffer;
}

template <class... A>
void ExpectSameAsGlib(const char *format, const A &...args) {
    SCOPED_TRACE(format);
    const std::optional<std::string> expected = Glib(format, args...);
    ASSERT_TRUE(expected.has_value());
    EXPECT_EQ(nls::format(format, args...), expected);
}

constexpr GLIB_WChar kWide[] = {0x41, 0xE9, 0x20AC, 0};  // "A", e acute, euro sign
constexpr GLIB_WChar kPair[] = {0xD83D, 0xDE00, 0};      // one character outside the BMP

TEST(CppFormat, LiteralTextIsCopied) {
    EXPECT_EQ(nls::format("plain text"), "plain text");
    EXPECT_EQ(nls::format(""), "");
    ExpectSameAsGlib("plain text");
}

TEST(CppFormat, IntegerConversionsGiveTheFormattersBytes) {
    const char *const flags[] = {"", "-", "0", "+", " ", "#", "-0", "+ ", "#0"};
    const char *const widths[] = {"", "1", "6", "12"};
    const char *const precisions[] = {"", ".0", ".1", ".5"};
    const char *const lengths[] = {"", "h", "l", "ll"};
    const char conversions[] = {'d', 'i', 'u', 'o', 'x', 'X'};
    const std::int32_t values[] = {0,
                                   1,
                                   -1,
                                   7,
                                   8,
                                   255,
                                   65535,
                                   70000,
                                   std::numeric_limits<std::int32_t>::min(),
                                   std::numeric_limits<std::int32_t>::max()};
    int compared = 0;
    int mismatches = 0;
    for (const char *flag : flags)
        for (const char *width : widths)
            for (const char *precision : precisions)
                for (const char *length : lengths)
                    for (const char conversion : conversions)
                        for (const std::int32_t value : values) {
                            const std::string format = std::string("[%") + flag + width +
                                                       precision + length + conversion + "]";
                            const auto expected = Glib(format.c_str(), value);
                            const auto actual = nls::format(format, value);
                            ++compared;
                            if (actual != expected && ++mismatches <= 10)
                                ADD_FAILURE() << format << " of " << value << ": \""
                                              << actual.value_or("<none>") << "\" instead of \""
                                              << expected.value_or("<none>") << "\"";
                        }
    EXPECT_EQ(compared, 9 * 4 * 4 * 4 * 6 * 10);
    EXPECT_EQ(mismatches, 0);
}

TEST(CppFormat, UnsignedAndSmallIntegerArgumentsArePassedAsTheFormatterReadsThem) {
    ExpectSameAsGlib("%u %x %d", 4294967295u, 4294967295u, 4294967295u);
    ExpectSameAsGlib("%d %u", static_cast<std::int16_t>(-2), static_cast<std::uint16_t>(65535));
    ExpectSameAsGlib("%d %d", static_cast<std::int8_t>(-128), static_cast<std::uint8_t>(200));
    EXPECT_EQ(nls::format("%u", 4294967295u), "4294967295");
    EXPECT_EQ(nls::format("%d", 4294967295u), "-1");
    EXPECT_EQ(nls::format("%lc", U'\U0001F600'), "\xF0\x9F\x98\x80");
}

TEST(CppFormat, OctalLeadingZeroFollowsTheFormatter) {
    // The zero in front of an octal number is left out where an earlier number of the same call
    // left one just in front of the digits; the layer measures one byte more and trims.
    EXPECT_EQ(nls::format("%o %o", 8, 8), "010 10");
    ExpectSameAsGlib("%o %o", 8, 8);
    ExpectSameAsGlib("%o", 0);
    ExpectSameAsGlib("%5o|%-5o|%05o", 8, 8, 8);
    ExpectSameAsGlib("%x %o %o %d %o", 0x80, 8, 64, 0, 1);
}

TEST(CppFormat, WidthsThatWrapFollowTheFormattersArithmetic) {
    ExpectSameAsGlib("[%2147483648d]", 1);  // wraps to a negative width: no padding
    ExpectSameAsGlib("[%4294967297d]", 1);  // wraps to 1
    ExpectSameAsGlib("[%*d]", -6, 42);      // a negative '*' width left-justifies
    ExpectSameAsGlib("[%*5d]", 1, 3);       // digits after '*' accumulate: width 15
    ExpectSameAsGlib("[%.*d]", 3, 7);
    ExpectSameAsGlib("[%.*d]", -3, 7);
}

TEST(CppFormat, TextOfTwoGigabytesOrMoreIsRefused) {
    EXPECT_EQ(nls::format("%2147483647d", 1), std::nullopt);
    EXPECT_EQ(nls::format("%2147483646d%2147483646d", 1, 1), std::nullopt);
}

TEST(CppFormat, CharacterConversions) {
    EXPECT_EQ(nls::format("%c", 'A'), "A");
    EXPECT_EQ(nls::format("a%cb", 0), std::string("a\0b", 3));
    ExpectSameAsGlib("a%cb", 0);
    ExpectSameAsGlib("[%5c][%-5c]", 'x', 'y');
    ExpectSameAsGlib("%c", 0x141);  // the low byte
    EXPECT_EQ(nls::format("%lc", 0xE9), "\xC3\xA9");
    EXPECT_EQ(nls::format("%lc", 0x10FFFF), "\xF4\x8F\xBF\xBF");
    ExpectSameAsGlib("%lc|%lc|%lc|%5lc", 0x41, 0x20AC, 0x7FFFFFFF, 0x41);
    ExpectSameAsGlib("%lc", -1);
}

TEST(CppFormat, NarrowStrings) {
    ExpectSameAsGlib("%s", "abc");
    ExpectSameAsGlib("[%-6s][%6s][%06s]", "ab", "ab", "ab");
    ExpectSameAsGlib("%.2s|%.0s|%.9s", "abcdef", "abcdef", "abcdef");
    ExpectSameAsGlib("[%*s][%-*s][%.*s]", 8, "x", 8, "y", -1, "abc");
    EXPECT_EQ(nls::format("%s|%.3s", nullptr, nullptr), "(null)|(nu");
    ExpectSameAsGlib("%s|%.3s", nullptr, nullptr);
    const char *const null_text = nullptr;
    ExpectSameAsGlib("%s", null_text);
}

TEST(CppFormat, WideStringsAreWrittenAsUtf8) {
    EXPECT_EQ(nls::format("%ls", kWide), "A\xC3\xA9\xE2\x82\xAC");
    ExpectSameAsGlib("%ls", kWide);
    // Under a precision the character that reaches it is written whole.
    EXPECT_EQ(nls::format("%.2ls", kWide), "A\xC3\xA9");
    ExpectSameAsGlib("%.1ls|%.2ls|%.3ls|%.4ls|%.0ls", kWide, kWide, kWide, kWide, kWide);
    ExpectSameAsGlib("[%8ls][%-8ls][%2ls]", kWide, kWide, kWide);
    EXPECT_EQ(nls::format("%ls", kPair), "\xED\xA0\xBD\xED\xB8\x80");
    ExpectSameAsGlib("%ls", kPair);
    ExpectSameAsGlib("%ls|%.2ls", nullptr, nullptr);
}

TEST(CppFormat, WideStringsMayBeChar16OrStandardStrings) {
    const std::optional<std::string> expected = Glib("%ls/%ls", kWide, kPair);
    EXPECT_EQ(nls::format("%ls/%ls", u"A\u00e9\u20ac", u"\U0001F600"), expected);
    EXPECT_EQ(
        nls::format("%ls/%ls", std::u16string(u"A\u00e9\u20ac"), std::u16string(u"\U0001F600")),
        expected);
    const char16_t *const wide = u"A\u00e9\u20ac";
    EXPECT_EQ(nls::format("%ls/%ls", wide, u"\U0001F600"), expected);
    EXPECT_EQ(nls::format("%s|%-4s|", std::string("abc"), std::string("d")), "abc|d   |");
}

TEST(CppFormat, PointersAreEightHexadecimalDigits) {
    int object = 0;
    ExpectSameAsGlib("%p", static_cast<void *>(&object));
    ExpectSameAsGlib("[%20p][%-p]", static_cast<void *>(&object), static_cast<void *>(&object));
    EXPECT_EQ(nls::format("%p", nullptr), "00000000");
    EXPECT_EQ(nls::format("%p", &object), Glib("%p", static_cast<void *>(&object)));
    EXPECT_EQ(nls::format("%p", "text")->size(), 8u);
}

TEST(CppFormat, FloatingConversions) {
    ExpectSameAsGlib("%e|%E|%f|%g|%G", 1234.5678, 1234.5678, 1234.5678, 1234.5678, 1234.5678);
    ExpectSameAsGlib("[%10.3f][%+08.2f][%#.0f][%-12e][% g]", -3.14159, 3.5, 2.0, 1e-300, 0.5);
    ExpectSameAsGlib("%f", 1e308);
    ExpectSameAsGlib("%.128f|%128.3f", 1.0, -2.5);
    ExpectSameAsGlib("%f %e", std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN());
    ExpectSameAsGlib("%lf %hf", 1.25, 2.5);
    EXPECT_EQ(nls::format("%f", 1.5f), Glib("%f", 1.5));
    EXPECT_EQ(nls::format("%f", 2.5L), Glib("%f", 2.5));
}

TEST(CppFormat, EscapesInTheFormatTextAreInterpreted) {
    EXPECT_EQ(nls::format("a\\nb\\tc\\\\d"), "a\nb\tc\\d");
    ExpectSameAsGlib("\\a\\b\\f\\n\\r\\t\\v\\\\");
}

TEST(CppFormat, PercentSigns) {
    EXPECT_EQ(nls::format("100%%"), "100%");
    ExpectSameAsGlib("%-%|%+ #%|%0%");
}

TEST(CppFormat, FormatEndingInsideAConversionOrEscapeEndsTheText) {
    for (const char *format :
         {"abc%", "abc%5", "abc%-", "abc%.", "abc%.3", "abc%l", "abc%hl", "abc\\"}) {
        EXPECT_EQ(nls::format(format), "abc") << format;
        ExpectSameAsGlib(format);
    }
    EXPECT_EQ(nls::format("abc%*", 5), "abc");
    ExpectSameAsGlib("abc%*", 5);
}

TEST(CppFormat, LongTexts) {
    ExpectSameAsGlib("%1000d|%-1000d|", 1, 2);
    ExpectSameAsGlib("%5000s", "x");
    const std::string long_text(10000, 'y');
    ExpectSameAsGlib("<%s>", long_text.c_str());
    const std::string long_format = std::string(300, 'a') + "%d" + std::string(300, 'b');
    ExpectSameAsGlib(long_format.c_str(), 5);
}

TEST(CppFormat, FormatsTheFormatterRefusesGiveNothing) {
    const char *const refused_with_int[] = {"%k",     "%!",   "%n",     "%L",     "%q", "%j",
                                            "%z",     "%t",   "%C",     "%S",     "%I", "abc%k",
                                            "%.1.2d", "%5%d", "%.128d", "%#.200x"};
    for (const char *format : refused_with_int) {
        EXPECT_EQ(Glib(format, 1), std::nullopt) << format;
        EXPECT_EQ(nls::format(format, 1), std::nullopt) << format;
    }
    const char *const refused_with_double[] = {"%F", "%a", "%129f", "%.129f", "%200e"};
    for (const char *format : refused_with_double) {
        EXPECT_EQ(Glib(format, 1.0), std::nullopt) << format;
        EXPECT_EQ(nls::format(format, 1.0), std::nullopt) << format;
    }
    EXPECT_EQ(Glib("x\\q"), std::nullopt);
    EXPECT_EQ(nls::format("x\\q"), std::nullopt);
    EXPECT_EQ(nls::format("%.127d", 1)->size(), 127u);  // the largest integer precision
}

TEST(CppFormat, ArgumentsThatDoNotSuitTheFormatAreRefused) {
    int object = 0;
    EXPECT_EQ(nls::format("%d", "abc"), std::nullopt);
    EXPECT_EQ(nls::format("%s", 42), std::nullopt);
    EXPECT_EQ(nls::format("%s", &object), std::nullopt);
    EXPECT_EQ(nls::format("%f", 1), std::nullopt);
    EXPECT_EQ(nls::format("%d", 1.0), std::nullopt);
    EXPECT_EQ(nls::format("%c", 1.5), std::nullopt);
    EXPECT_EQ(nls::format("%ls", "narrow"), std::nullopt);
    EXPECT_EQ(nls::format("%s", u"wide"), std::nullopt);
    EXPECT_EQ(nls::format("%*d", 1.0, 2), std::nullopt);
    EXPECT_EQ(nls::format("%.*s", "3", "abc"), std::nullopt);
    EXPECT_EQ(nls::format("%p", 42), std::nullopt);
    EXPECT_EQ(nls::format("%d %d", nullptr, 1), std::nullopt);
}

TEST(CppFormat, MissingOrLeftOverArgumentsAreRefused) {
    EXPECT_EQ(nls::format("%d"), std::nullopt);
    EXPECT_EQ(nls::format("%s %s", "a"), std::nullopt);
    EXPECT_EQ(nls::format("%*d", 5), std::nullopt);
    EXPECT_EQ(nls::format("%d", 1, 2), std::nullopt);
    EXPECT_EQ(nls::format("plain", 1), std::nullopt);
    EXPECT_EQ(nls::format("%%", 1), std::nullopt);
}

TEST(CppFormat, FormatViewIsReadToItsEndOrToANul) {
    EXPECT_EQ(nls::format(std::string_view("abc%d", 3)), "abc");
    EXPECT_EQ(nls::format(std::string_view("ab\0%d", 5)), "ab");
    EXPECT_EQ(nls::format(std::string("x=%d;"), 4), "x=4;");
}

TEST(CppFormat, SeveralConversionsInOneCall) {
    const std::int32_t count = -17;
    ExpectSameAsGlib("%s=%d (%#x) [%-8.2f] %ls %c%% %5.3s|%lc|%o", "name", count, 255u, 2.345,
                     kWide, 'z', "abcdef", 0x20AC, 9);
}

}  // namespace
