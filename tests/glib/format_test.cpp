/* SPDX-License-Identifier: MIT */
// The narrow formatter: size and termination rules, escapes, flags, widths and precisions,
// every conversion, invalid formats, and the places where it differs from the C library.

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <nlssupport/glib.h>
#include "glib/format_helpers.h"
#include "glib/wide_helpers.h"

using glibtest::kNarrowSentinel;
using glibtest::Narrow;
using glibtest::TerminatedCleanly;
using glibtest::W;

namespace {

constexpr size_t kBig = 512;

// Checks result, text, terminator position and untouched cells behind it.
#define EXPECT_NARROW(outSize, expectedResult, expectedText, ...)                                 \
    do {                                                                                          \
        const auto run_ = Narrow(outSize, __VA_ARGS__);                                           \
        EXPECT_EQ(run_.result, expectedResult);                                                   \
        EXPECT_EQ(run_.text, std::string(expectedText));                                          \
        EXPECT_TRUE(                                                                              \
            TerminatedCleanly(run_, outSize, std::string(expectedText).size(), kNarrowSentinel)); \
    } while (0)

// ---- Size and termination ----

TEST(GlibSnprintfSize, SizeZeroWritesNothingAndReturnsZero) {
    const auto run = Narrow(0, "abc%d", 5);
    EXPECT_EQ(run.result, 0);
    for (char c : run.raw)
        EXPECT_EQ(c, kNarrowSentinel);
}

TEST(GlibSnprintfSize, LiteralTextMayFillSizeCellsWithTerminatorAtSize) {
    EXPECT_NARROW(4, 4, "abcd", "abcd");
    EXPECT_NARROW(1, 1, "a", "a");
}

TEST(GlibSnprintfSize, LiteralTextPastSizeFails) {
    EXPECT_NARROW(4, -1, "abcd", "abcde");
    EXPECT_NARROW(1, -1, "a", "ab");
}

TEST(GlibSnprintfSize, WholeStringLeavesRoomForTerminatorInsideSize) {
    EXPECT_NARROW(4, -1, "abc", "%s", "abcd");
    EXPECT_NARROW(4, 3, "abc", "%s", "abc");
    EXPECT_NARROW(1, -1, "", "%s", "a");
    EXPECT_NARROW(1, 0, "", "%s", "");
}

TEST(GlibSnprintfSize, NumberDigitsAreCopiedInPart) {
    EXPECT_NARROW(6, -1, "ab123", "ab%d", 12345);
    EXPECT_NARROW(8, 7, "ab12345", "ab%d", 12345);
}

TEST(GlibSnprintfSize, PaddingAndPrefixAreSingleCharacters) {
    // Three pad spaces fill the output; the fourth finds it full.
    EXPECT_NARROW(3, -1, "   ", "%5d", 1);
    // The sign fits at index size - 1; the digits then have no room.
    EXPECT_NARROW(1, -1, "-", "%d", -1);
}

TEST(GlibSnprintfSize, PieceAfterOutputFilledBySingleCharactersHasNoRoom) {
    // Literal text fills the cells up to index size; what follows has no room at all.
    EXPECT_NARROW(3, -1, "abc", "abc%s", "x");
    EXPECT_NARROW(3, -1, "abc", "abc%d", 1);
    EXPECT_NARROW(3, -1, "abc", "abc%f", 1.0);
    EXPECT_NARROW(3, -1, "abc", "abc%p", nullptr);
    EXPECT_NARROW(3, -1, "abc", "abc%ls", W(u"x").data());
    EXPECT_NARROW(3, -1, "abc", "abc%lc", 'x');
    // An empty piece needs no room.
    EXPECT_NARROW(3, 3, "abc", "abc%s", "");
    EXPECT_NARROW(3, 3, "abc", "abc%.0d", 0);
    EXPECT_NARROW(3, 3, "abc", "abc%ls", W(u"").data());
}

// ---- Literal text and escapes ----

TEST(GlibSnprintfEscape, EightEscapesAreInterpreted) {
    EXPECT_NARROW(kBig, 8, "\\\a\b\f\n\r\t\v", "\\\\\\a\\b\\f\\n\\r\\t\\v");
    EXPECT_NARROW(kBig, 3, "a\nb", "a\\nb");
}

TEST(GlibSnprintfEscape, OtherEscapesFail) {
    EXPECT_NARROW(kBig, -1, "ab", "ab\\qcd");
    EXPECT_NARROW(kBig, -1, "", "\\%d", 1);
    EXPECT_NARROW(kBig, -1, "", "\\0");
    EXPECT_NARROW(kBig, -1, "", "\\[");
    EXPECT_NARROW(kBig, -1, "", "\\w");
    EXPECT_NARROW(kBig, -1, "", "\\A");
}

TEST(GlibSnprintfEscape, EscapeCountsAsSingleCharacter) {
    EXPECT_NARROW(2, 2, "a\n", "a\\n");
    EXPECT_NARROW(2, -1, "a\n", "a\\n\\t");
}

TEST(GlibSnprintfEscape, PercentPercentIsLiteralAlsoBehindFlags) {
    EXPECT_NARROW(kBig, 3, "a%b", "a%%b");
    EXPECT_NARROW(kBig, 1, "%", "%-+ #0%");
    // A width is not a flag: '%' after it is an invalid conversion.
    EXPECT_NARROW(kBig, -1, "x", "x%5%");
}

TEST(GlibSnprintfFormatEnd, UnfinishedConversionOrEscapePrintsNothing) {
    EXPECT_NARROW(kBig, 3, "abc", "abc%");
    EXPECT_NARROW(kBig, 3, "abc", "abc%5");
    EXPECT_NARROW(kBig, 3, "abc", "abc%-");
    EXPECT_NARROW(kBig, 3, "abc", "abc%5.");
    EXPECT_NARROW(kBig, 3, "abc", "abc%.3");
    EXPECT_NARROW(kBig, 3, "abc", "abc%l");
    EXPECT_NARROW(kBig, 3, "abc", "abc%hl");
    EXPECT_NARROW(kBig, 3, "abc", "abc\\");
}

// ---- Invalid formats ----

TEST(GlibSnprintfInvalid, ConversionsOutsideTheTableFail) {
    for (const char *format : {"a%F", "a%n", "a%k", "a%!", "a%q", "a%j", "a%z", "a%t", "a%C", "a%S",
                               "a%I", "a%L", "a%D", "a%y", "a%a", "a%A", "a%\x80"}) {
        SCOPED_TRACE(format);
        EXPECT_NARROW(kBig, -1, "a", format, 1);
    }
}

TEST(GlibSnprintfInvalid, SecondDotInPrecisionFails) {
    EXPECT_NARROW(kBig, -1, "", "%.2.3d", 1);
}

// ---- Integers ----

TEST(GlibSnprintfInteger, PrecisionWidthAndFlags) {
    EXPECT_NARROW(kBig, 5, "    0", "%5.1d", 0);
    EXPECT_NARROW(kBig, 0, "", "%.0d", 0);
    EXPECT_NARROW(kBig, 3, "   ", "%3.0d", 0);
    EXPECT_NARROW(kBig, 5, "42   ", "%-05d", 42);
    EXPECT_NARROW(kBig, 5, "-0042", "%05d", -42);
    EXPECT_NARROW(kBig, 5, "  042", "%05.3d", 42);  // a precision cancels zero padding
    EXPECT_NARROW(kBig, 2, "+5", "%+d", 5);
    EXPECT_NARROW(kBig, 2, "-5", "% d", -5);
    EXPECT_NARROW(kBig, 2, " 5", "% d", 5);
    EXPECT_NARROW(kBig, 2, "+5", "%+ d", 5);
    EXPECT_NARROW(kBig, 2, "+5", "% +d", 5);
    EXPECT_NARROW(kBig, 1, "5", "%+u", 5);
    EXPECT_NARROW(kBig, 11, "-2147483648", "%d", INT_MIN);
    EXPECT_NARROW(kBig, 10, "2147483647", "%i", INT_MAX);
    EXPECT_NARROW(kBig, 10, "4294967295", "%u", -1);
    EXPECT_NARROW(kBig, 5, "-0005", "%.4d", -5);
}

// The digit count changes at every power of ten: each side of each one, signed and unsigned,
// against the C library.
TEST(GlibSnprintfInteger, DigitCountAtEveryPowerOfTen) {
    char expected[32];
    for (uint64_t power = 1; power <= 1000000000u; power *= 10) {
        for (const uint64_t value : {power - 1, power, power + 1}) {
            const auto u = static_cast<uint32_t>(value);
            std::snprintf(expected, sizeof expected, "%u", u);
            EXPECT_NARROW(kBig, static_cast<int>(std::strlen(expected)), expected, "%u", u);
            const auto d = static_cast<int32_t>(value);
            std::snprintf(expected, sizeof expected, "%d", d);
            EXPECT_NARROW(kBig, static_cast<int>(std::strlen(expected)), expected, "%d", d);
            std::snprintf(expected, sizeof expected, "%d", -d);
            EXPECT_NARROW(kBig, static_cast<int>(std::strlen(expected)), expected, "%d", -d);
        }
    }
    EXPECT_NARROW(kBig, 10, "4294967295", "%u", 4294967295u);
    EXPECT_NARROW(kBig, 11, "-2147483648", "%d", INT32_MIN);
}

TEST(GlibSnprintfInteger, HexadecimalAndPrefix) {
    EXPECT_NARROW(kBig, 1, "0", "%#x", 0);
    EXPECT_NARROW(kBig, 4, "0XFF", "%#X", 255);
    EXPECT_NARROW(kBig, 4, "0xff", "%#x", 255);
    EXPECT_NARROW(kBig, 8, "deadbeef", "%x", 0xDEADBEEFu);
    EXPECT_NARROW(kBig, 8, "DEADBEEF", "%X", 0xDEADBEEFu);
    EXPECT_NARROW(kBig, 8, "0x0000ff", "%#08x", 255);
    EXPECT_NARROW(kBig, 8, "    0xff", "%#8x", 255);
    EXPECT_NARROW(kBig, 8, "0xff    ", "%#-8x", 255);
    EXPECT_NARROW(kBig, 0, "", "%#.0x", 0);
    EXPECT_NARROW(kBig, 6, "0x00ab", "%#.4x", 0xAB);
}

TEST(GlibSnprintfInteger, ShortAndLongModifiers) {
    EXPECT_NARROW(kBig, 6, "-32768", "%hd", 0x18000);
    EXPECT_NARROW(kBig, 5, "65535", "%hu", -1);
    EXPECT_NARROW(kBig, 4, "2345", "%hx", 0x12345);
    EXPECT_NARROW(kBig, 2, "-1", "%hi", 0xFFFF);
    // "ll" reads one 32-bit argument like "l".
    EXPECT_NARROW(kBig, 2, "57", "%lld%d", 5, 7);
    EXPECT_NARROW(kBig, 3, "5|7", "%ld|%lu", 5, 7);
}

TEST(GlibSnprintfInteger, StarWidthAndPrecision) {
    EXPECT_NARROW(kBig, 5, "   42", "%*d", 5, 42);
    EXPECT_NARROW(kBig, 5, "42   ", "%*d", -5, 42);
    // '*' then a digit: the argument times ten plus the digit.
    EXPECT_NARROW(kBig, 25, std::string(24, ' ') + "7", "%*5d", 2, 7);
    EXPECT_NARROW(kBig, 3, "007", "%.*d", 3, 7);
    EXPECT_NARROW(kBig, 1, "7", "%.*d", -1, 7);
    EXPECT_NARROW(kBig, 4, "0007", "%0*d", 4, 7);
    EXPECT_NARROW(kBig, 4, "7   ", "%0*d", -4, 7);
}

TEST(GlibSnprintfInteger, OctalCarriesLeadingZeroWithoutAlternateFlag) {
    EXPECT_NARROW(kBig, 3, "010", "%o", 8);
    EXPECT_NARROW(kBig, 2, "00", "%o", 0);
    EXPECT_NARROW(kBig, 3, "010", "%#o", 8);
    EXPECT_NARROW(kBig, 1, "0", "%.0o", 0);
    EXPECT_NARROW(kBig, 5, "  010", "%5o", 8);
    EXPECT_NARROW(kBig, 12, "037777777777", "%o", -1);
}

TEST(GlibSnprintfInteger, OctalZeroLeftByEarlierConversionOfTheSameCall) {
    // The first conversion leaves '0' in the cell in front of "10": the second gets none.
    EXPECT_NARROW(kBig, 6, "010 10", "%o %o", 8, 8);
    EXPECT_NARROW(kBig, 4, "00|0", "%o|%o", 0, 0);
    EXPECT_NARROW(kBig, 8, "010 0100", "%o %o", 8, 64);
    EXPECT_NARROW(kBig, 8, "010 1 10", "%o %x %o", 8, 1, 8);
    // A new call starts again without any '0' in the digit buffer.
    EXPECT_NARROW(kBig, 3, "010", "%o", 8);
}

TEST(GlibSnprintfInteger, PrecisionsThatOverflowTheDigitBufferAreRefused) {
    EXPECT_NARROW(kBig, 127, std::string(126, '0') + "1", "%.127d", 1);
    EXPECT_NARROW(kBig, 128, std::string(127, '0') + "1", "%.127o", 1);
    EXPECT_NARROW(kBig, -1, "ab", "ab%.128d", 1);
    EXPECT_NARROW(kBig, -1, "ab", "ab%.*x", 100000, 1);
    EXPECT_NARROW(kBig, -1, "", "%.99999999999d", 1);
}

TEST(GlibSnprintfInteger, HugeWidthEndsWhenTheOutputIsFull) {
    EXPECT_NARROW(10, -1, std::string(10, ' '), "%2147483647d", 1);
    EXPECT_NARROW(10, -1, "1" + std::string(9, ' '), "%-99999999999d", 1);  // 32-bit wrap
}

// ---- Characters and strings ----

TEST(GlibSnprintfChar, LowByteAsLiteralIgnoringWidthAndFlags) {
    EXPECT_NARROW(kBig, 1, "A", "%c", 'A');
    EXPECT_NARROW(kBig, 1, "A", "%5c", 'A');
    EXPECT_NARROW(kBig, 1, "A", "%-05c", 'A');
    EXPECT_NARROW(kBig, 1, "A", "%c", 0x141);
    EXPECT_NARROW(kBig, 1, "\xE9", "%c", 0xE9);
    EXPECT_NARROW(1, 1, "A", "%c", 'A');  // a single character may land at index size - 1
}

TEST(GlibSnprintfChar, NulCharacterIsCounted) {
    const auto run = Narrow(kBig, "a%cb", 0);
    EXPECT_EQ(run.result, 3);
    EXPECT_EQ(std::string(run.raw.data(), 4), std::string("a\0b\0", 4));
}

TEST(GlibSnprintfString, WidthPrecisionAndLeftJustify) {
    EXPECT_NARROW(kBig, 8, "      ab", "%8s", "ab");
    EXPECT_NARROW(kBig, 5, "ab  |", "%-4s|", "ab");
    EXPECT_NARROW(kBig, 4, "  ab", "%04s", "ab");  // zero padding has no effect on strings
    EXPECT_NARROW(kBig, 0, "", "%.0s", "abc");
    EXPECT_NARROW(kBig, 2, "ab", "%.2s", "abc");
    EXPECT_NARROW(kBig, 3, "abc", "%.9s", "abc");
    EXPECT_NARROW(kBig, 5, "   ab", "%5.2s", "abc");
    EXPECT_NARROW(kBig, 2, "ab", "%1s", "ab");
}

TEST(GlibSnprintfString, NullPrintsNullTextAlsoUnderPrecision) {
    EXPECT_NARROW(kBig, 6, "(null)", "%s", nullptr);
    EXPECT_NARROW(kBig, 3, "(nu", "%.3s", nullptr);
    EXPECT_NARROW(kBig, 8, "  (null)", "%8s", nullptr);
}

TEST(GlibSnprintfWideString, WrittenAsUtf8) {
    EXPECT_NARROW(kBig, 6, "a\xC3\xA9\xE4\xB8\xAD", "%ls", W(u"a\xE9\x4E2D").data());
    // A surrogate pair is two 3-byte sequences.
    EXPECT_NARROW(kBig, 6, "\xED\xA0\xBD\xED\xB8\x80", "%ls", W(u"\xD83D\xDE00").data());
    EXPECT_NARROW(kBig, 6, "(null)", "%ls", nullptr);
    EXPECT_NARROW(kBig, 6, "(null)", "%lls", nullptr);
}

TEST(GlibSnprintfWideString, PrecisionCountsBytesAndKeepsTheCharacterThatReachesIt) {
    EXPECT_NARROW(kBig, 2, "ab", "%.2ls", W(u"abc").data());
    EXPECT_NARROW(kBig, 3, "\xE4\xB8\xAD", "%.2ls", W(u"\x4E2D\x4E2D").data());
    EXPECT_NARROW(kBig, 3, "a\xC3\xA9", "%.2ls", W(u"a\xE9z").data());
    EXPECT_NARROW(kBig, 0, "", "%.0ls", W(u"abc").data());
}

TEST(GlibSnprintfWideString, PaddingCountsUtf8Bytes) {
    EXPECT_NARROW(kBig, 5, "   \xC3\xA9", "%5ls", W(u"\xE9").data());
    EXPECT_NARROW(kBig, 6, "\xC3\xA9   |", "%-5ls|", W(u"\xE9").data());
}

TEST(GlibSnprintfWideString, EncoderWithoutRoomFailsBehindEarlierText) {
    // Room for three bytes: the encoder writes "\xC3\xA9", then fails on the 3-byte character.
    // The count does not take the encoder's bytes, so the terminator lands in front of them;
    // only the byte behind it is left over, inside the room, and nothing further is touched.
    const auto run = Narrow(6, "ab%ls", W(u"\xE9\x4E2D").data());
    EXPECT_EQ(run.result, -1);
    EXPECT_EQ(run.text, "ab");
    EXPECT_EQ(run.raw[3], '\xA9');
    for (size_t i = 4; i < run.raw.size(); ++i)
        EXPECT_EQ(run.raw[i], kNarrowSentinel) << i;

    EXPECT_NARROW(6, 5, "ab\xE4\xB8\xAD", "ab%ls", W(u"\x4E2D").data());
    EXPECT_NARROW(5, -1, "ab", "ab%ls", W(u"\x4E2D").data());
}

TEST(GlibSnprintfWideChar, WrittenAsUtf8WithoutPadding) {
    EXPECT_NARROW(kBig, 2, "\xC3\xA9", "%lc", 0xE9);
    EXPECT_NARROW(kBig, 1, "A", "%5lc", 'A');
    EXPECT_NARROW(kBig, 4, "\xF4\x8F\xBF\xBF", "%lc", 0x10FFFF);
    EXPECT_NARROW(3, -1, "x", "x%lc", 0x4E2D);  // room for one byte, three needed
    EXPECT_NARROW(5, 4, "x\xE4\xB8\xAD", "x%lc", 0x4E2D);
}

// ---- Pointers and floating values ----

TEST(GlibSnprintfPointer, EightUpperCaseHexDigitsIgnoringFlags) {
    EXPECT_NARROW(kBig, 8, "1234ABCD", "%p", reinterpret_cast<void *>(uintptr_t{0x1234ABCD}));
    EXPECT_NARROW(kBig, 8, "00000000", "%p", nullptr);
    EXPECT_NARROW(kBig, 8, "0000ABCD", "%-#20.3p", reinterpret_cast<void *>(uintptr_t{0xABCD}));
    EXPECT_NARROW(6, -1, "00000", "%p", nullptr);
}

#if UINTPTR_MAX > 0xFFFFFFFFu
TEST(GlibSnprintfPointer, SixtyFourBitAddressesKeepTheirLowEightDigits) {
    EXPECT_NARROW(kBig, 8, "9ABCDEF0", "%p",
                  reinterpret_cast<void *>(uintptr_t{0x123456789ABCDEF0}));
}
#endif

TEST(GlibSnprintfFloating, FlagsWidthAndPrecisionAreHandedToTheCLibrary) {
    EXPECT_NARROW(kBig, 8, "1.500000", "%f", 1.5);
    EXPECT_NARROW(kBig, 11, "+00001.500|", "%+010.3f|", 1.5);
    EXPECT_NARROW(kBig, 12, "1.500000e+00", "%e", 1.5);
    EXPECT_NARROW(kBig, 5, "1E+06", "%G", 1e6);
    EXPECT_NARROW(kBig, 6, "-1.000", "%#.4g", -1.0);
    EXPECT_NARROW(kBig, 5, "2.5  ", "%-5g", 2.5);
    EXPECT_NARROW(kBig, 5, " +inf", "%+5f", 1.0 / 0.0);
    EXPECT_NARROW(kBig, 6, "   1.5", "%*g", 6, 1.5);
    EXPECT_NARROW(kBig, 2, "2.", "%#.0f", 2.0);
}

TEST(GlibSnprintfFloating, WidthOrPrecisionAbove128Fails) {
    EXPECT_NARROW(kBig, 128, std::string(127, ' ') + "1", "%128.0f", 1.0);
    EXPECT_NARROW(kBig, 130, "1." + std::string(128, '0'), "%.128f", 1.0);
    EXPECT_NARROW(kBig, -1, "x", "x%129f", 1.0);
    EXPECT_NARROW(kBig, -1, "x", "x%.129f", 1.0);
    EXPECT_NARROW(kBig, -1, "x", "x%*e", -129, 1.0);
}

TEST(GlibSnprintfFloating, LargestTextFitsTheScratchBuffer) {
    const auto run = Narrow(kBig, "%-128.128f", -1.7976931348623157e308);
    EXPECT_EQ(run.result, 1 + 309 + 1 + 128);
    EXPECT_TRUE(TerminatedCleanly(run, kBig, static_cast<size_t>(run.result), kNarrowSentinel));
}

TEST(GlibSnprintfFloating, CopiedInPartWhenItDoesNotFit) {
    EXPECT_NARROW(5, -1, "1.50", "%f", 1.5);
}

// ---- The forwarding entry points ----

int CallV(char *buf, size_t size, const char *format, ...) {
    va_list args;
    va_start(args, format);
    const int result = GLIB_vsnprintf(buf, size, format, args);
    va_end(args);
    return result;
}

TEST(GlibVsnprintf, TakesAnArgumentList) {
    char buf[32];
    EXPECT_EQ(CallV(buf, sizeof buf - 1, "%s-%d-%c", "ab", 12, 'z'), 7);
    EXPECT_STREQ(buf, "ab-12-z");
    EXPECT_EQ(CallV(buf, 3, "%s", "abcdef"), -1);
    EXPECT_STREQ(buf, "ab");
}

}  // namespace
