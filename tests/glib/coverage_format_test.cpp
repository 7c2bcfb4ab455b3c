/* SPDX-License-Identifier: MIT */
// Formatting a wide string that does not fit: the padding before it, the string itself and the
// padding behind it each end the call with -1 and a terminator behind what fits.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include <nlssupport/glib.h>

namespace {

const GLIB_WChar *W(const char16_t *text) {
    return reinterpret_cast<const GLIB_WChar *>(text);
}

struct Case {
    const char16_t *format;
    const char16_t *argument;
    const char16_t *written;  // the units before the terminator
};

TEST(WideFormatOverflow, WideStringThatDoesNotFitEndsTheCallWithMinusOne) {
    const Case cases[] = {
        {u"%10ls", u"ab", u"    "},   // the padding in front fills positions 0 to size - 1
        {u"%ls", u"abcdef", u"abc"},  // the part of the string that fits within size - 1
        {u"%-10ls", u"ab", u"ab  "},  // the padding behind fills up to position size - 1
    };
    for (const Case &c : cases) {
        GLIB_WChar buf[12];
        for (GLIB_WChar &unit : buf) {
            unit = 0x7777;
        }
        EXPECT_EQ(GLIB_swprintf(buf, 4, W(c.format), W(c.argument)), -1);
        std::size_t n = 0;
        while (c.written[n] != 0) {
            EXPECT_EQ(buf[n], c.written[n]) << n;
            ++n;
        }
        EXPECT_EQ(buf[n], 0);
        for (std::size_t i = n + 1; i < 12; ++i) {
            EXPECT_EQ(buf[i], 0x7777) << i;  // nothing behind the terminator
        }
    }
}

// The narrow engine writes a wide string as UTF-8; padding in front of it that does not fit ends
// the call the same way.
TEST(NarrowFormatOverflow, PaddingBeforeAWideStringThatDoesNotFitEndsTheCallWithMinusOne) {
    const GLIB_WChar wide[] = {'a', 'b', 0};
    char buf[12];
    for (char &c : buf) {
        c = '#';
    }
    EXPECT_EQ(GLIB_snprintf(buf, 4, "%10ls", wide), -1);
    EXPECT_EQ(std::string(buf, 5), std::string("    \0", 5));
    EXPECT_EQ(buf[5], '#');
}

// And so does padding behind it.
TEST(NarrowFormatOverflow, PaddingBehindAWideStringThatDoesNotFitEndsTheCallWithMinusOne) {
    const GLIB_WChar wide[] = {'a', 'b', 0};
    char buf[12];
    for (char &c : buf) {
        c = '#';
    }
    EXPECT_EQ(GLIB_snprintf(buf, 4, "%-10ls", wide), -1);
    EXPECT_EQ(std::string(buf, 5), std::string("ab  \0", 5));
    EXPECT_EQ(buf[5], '#');
}

}  // namespace
