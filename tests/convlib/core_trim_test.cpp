/* SPDX-License-Identifier: MIT */
// Trimming of byte strings and trimmed lengths.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>

namespace {

TEST(CoreTrimmedLength, TrailingSpacesOnly) {
    EXPECT_EQ(CONV_GetTrimmedLength("ab  ", 4), 2);
    EXPECT_EQ(CONV_GetTrimmedLength("    ", 4), 0);
    EXPECT_EQ(CONV_GetTrimmedLength("ab\t", 3), 3);  // a tab is not trimmed
    EXPECT_EQ(CONV_GetTrimmedLength("ab\n", 3), 3);
    EXPECT_EQ(CONV_GetTrimmedLength("  ab", 4), 4);
    EXPECT_EQ(CONV_GetTrimmedLength("a b ", 4), 3);
    EXPECT_EQ(CONV_GetTrimmedLength("ab  cd", 4), 2);  // only the given length counts
    EXPECT_EQ(CONV_GetTrimmedLength("", 0), 0);
    EXPECT_EQ(CONV_GetTrimmedLength(nullptr, 0), 0);
    EXPECT_EQ(CONV_GetTrimmedLength(nullptr, -5), -5);  // returned unchanged
    const char noTerminator[3] = {'x', ' ', ' '};
    EXPECT_EQ(CONV_GetTrimmedLength(noTerminator, 3), 1);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Blanks("ab  ", 4), 2);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Blanks(nullptr, -2), -2);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Blanks("\xC3\xA9 ", 3), 2);
}

TEST(CoreTrimWithStrlen, StoresTheTerminator) {
    char buffer[8] = {'a', 'b', ' ', ' ', 'x', '#', '#', '#'};
    EXPECT_EQ(CONV_TrimWithStrlen(buffer, 4), 2);
    EXPECT_EQ(buffer[2], '\0');
    EXPECT_EQ(buffer[3], ' ');
    EXPECT_EQ(buffer[4], 'x');
    char full[4] = {'a', 'b', 'c', '#'};
    EXPECT_EQ(CONV_TrimWithStrlen(full, 3), 3);
    EXPECT_EQ(full[3], '\0');
    char spaces[3] = {' ', ' ', '#'};
    EXPECT_EQ(CONV_TrimWithStrlen(spaces, 2), 0);
    EXPECT_EQ(spaces[0], '\0');
}

TEST(CoreTrimWithStrlen, NegativeLengthComesBackAndStoresNothing) {
    char buffer[6] = {'#', '#', 'a', ' ', '#', '#'};
    EXPECT_EQ(CONV_TrimWithStrlen(buffer + 2, -1), -1);
    EXPECT_EQ(CONV_TrimWithStrlen(buffer + 2, -2), -2);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("##a ##", 6));
    char empty[2] = {'x', '#'};
    EXPECT_EQ(CONV_TrimWithStrlen(empty, 0), 0);
    EXPECT_EQ(empty[0], '\0');
    EXPECT_EQ(empty[1], '#');
}

TEST(CoreTrimmedLengthUtf8Chars, LeadBytesGiveTheWidths) {
    const char text[] = "a\xC3\xA9";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, 1), 1);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, 2), 3);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, 5), 3);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 0, 5), 0);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, 0), 0);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, -1, 5), 0);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, -1), 0);
    const char euro[] =
        "\xE2\x82\xAC"
        "b";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(euro, 4, 1), 3);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(euro, 4, 2), 4);
}

TEST(CoreTrimmedLengthUtf8Chars, FourByteLeadCountsAsOneByte) {
    const char text[] =
        "\xF0\x9F\x98\x80"
        "a";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 5, 1), 1);
    // Its continuation bytes are then characters of their own (below 0xC0: width 1).
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 5, 2), 2);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 5, 4), 4);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 5, 9), 5);
    const char high[] =
        "\xFF\xF8"
        "a";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(high, 3, 2), 2);
}

TEST(CoreTrimmedLengthUtf8Chars, ResultMayPassTheByteLength) {
    // The last character counted is wider than the bytes left: up to two more.
    const char text[] = "a\xE2\x82\xAC";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 2, 5), 4);
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(text, 3, 5), 4);
    const char two[] = "a\xC3\xA9";
    EXPECT_EQ(CONV_GetTrimmedLengthUTF8Chars(two, 2, 5), 3);
}

struct TrimCase {
    const char *text;
    uint32_t flags;
    const char *result;
};

constexpr TrimCase kTrimCases[] = {
    {"\t ab \n", 0x03, "\t ab \n"},  // the tab stops the leading scan, the line feed the trailing
    {"\t ab \n", 0x33, "ab"},
    {"\t ab \n", 0x13, "ab \n"},
    {"\t ab \n", 0x23, "\t ab"},
    {"   ", 0x02, ""},
    {"   ", 0x01, ""},
    {"", 0x03, ""},
    {"", 0x02, ""},
    {"  a b  ", 0x01, "a b  "},
    {"  a b  ", 0x02, "  a b"},
    {"  a b  ", 0x03, "a b"},
    {"  a b  ", 0x00, "  a b  "},
    {"  a b  ", 0x30, "  a b  "},    // blank kinds alone strip nothing
    {" \r a \r ", 0x03, "\r a \r"},  // carriage return is never a blank
    {"\n\n", 0x22, ""},
    {"\n\n", 0x02, "\n\n"},
    {"  x", 0x0C, "  x"},  // other bits are ignored
};

TEST(CoreTrim, TableOfStrings) {
    for (const TrimCase &c : kTrimCases) {
        char buffer[32];
        std::memset(buffer, '#', sizeof buffer);
        std::strcpy(buffer, c.text);
        CONV_Trim(buffer, c.flags);
        EXPECT_STREQ(buffer, c.result) << "'" << c.text << "' flags " << std::hex << c.flags;
        std::memset(buffer, '#', sizeof buffer);
        std::strcpy(buffer, c.text);
        CONV_TrimUTF8(buffer, c.flags);
        EXPECT_STREQ(buffer, c.result) << "'" << c.text << "' flags " << std::hex << c.flags;
        EXPECT_EQ(buffer[std::strlen(c.text) + 1], '#');  // nothing written past the string
    }
}

TEST(CoreTrim, Utf8TextKeepsItsBytes) {
    char buffer[] = "  \xC3\xA9t\xC3\xA9  ";
    CONV_TrimUTF8(buffer, 0x03);
    EXPECT_STREQ(buffer, "\xC3\xA9t\xC3\xA9");
}

}  // namespace
