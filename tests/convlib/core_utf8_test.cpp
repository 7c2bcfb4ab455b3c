/* SPDX-License-Identifier: MIT */
// UTF-8 encoding of code points and wide strings.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

std::vector<uint8_t> Encode(int32_t cp, uint32_t *status = nullptr) {
    char out[8];
    std::memset(out, '#', sizeof out);
    uint32_t count = 99;
    const uint32_t s = CONV_WCharToUTF8(cp, out, sizeof out, &count);
    if (status != nullptr)
        *status = s;
    return std::vector<uint8_t>(out, out + (count <= 8 ? count : 0));
}

using Bytes = std::vector<uint8_t>;

TEST(CoreUtf8, ListedCodePoints) {
    EXPECT_EQ(Encode(0x7F), (Bytes{0x7F}));
    EXPECT_EQ(Encode(0x80), (Bytes{0xC2, 0x80}));
    EXPECT_EQ(Encode(0x7FF), (Bytes{0xDF, 0xBF}));
    EXPECT_EQ(Encode(0x800), (Bytes{0xE0, 0xA0, 0x80}));
    EXPECT_EQ(Encode(0xFFFF), (Bytes{0xEF, 0xBF, 0xBF}));
    EXPECT_EQ(Encode(0x10000), (Bytes{0xF0, 0x90, 0x80, 0x80}));
    EXPECT_EQ(Encode(0x10FFFF), (Bytes{0xF4, 0x8F, 0xBF, 0xBF}));
    EXPECT_EQ(Encode(0x1FFFFF), (Bytes{0xF7, 0xBF, 0xBF, 0xBF}));
    EXPECT_EQ(Encode(0x200000), (Bytes{0xF8, 0x88, 0x80, 0x80, 0x80}));
    EXPECT_EQ(Encode(0x3FFFFFF), (Bytes{0xFB, 0xBF, 0xBF, 0xBF, 0xBF}));
    // The 6-byte form marks its second byte with 0xF8.
    EXPECT_EQ(Encode(0x4000000), (Bytes{0xFC, 0xFC, 0x80, 0x80, 0x80, 0x80}));
    EXPECT_EQ(Encode(0x7FFFFFFF), (Bytes{0xFD, 0xFF, 0xBF, 0xBF, 0xBF, 0xBF}));
    EXPECT_EQ(Encode(0x40000000), (Bytes{0xFD, 0xF8, 0x80, 0x80, 0x80, 0x80}));
    EXPECT_EQ(Encode(0xD800), (Bytes{0xED, 0xA0, 0x80}));  // surrogates are not refused
    EXPECT_EQ(Encode(0), (Bytes{0x00}));
}

TEST(CoreUtf8, NegativeCodePointsAreOneByte) {
    EXPECT_EQ(Encode(-1), (Bytes{0xFF}));
    EXPECT_EQ(Encode(-128), (Bytes{0x80}));
    EXPECT_EQ(Encode(-256), (Bytes{0x00}));
    EXPECT_EQ(Encode(INT32_MIN), (Bytes{0x00}));
    EXPECT_EQ(CONV_WCharToUTF8_BytesNeeded(-1), 1u);
    EXPECT_EQ(CONV_WCharToUTF8_BytesNeeded(INT32_MIN), 1u);
}

TEST(CoreUtf8, BytesNeededRanges) {
    struct Case {
        int32_t cp;
        uint32_t bytes;
    };
    const Case cases[] = {{0, 1},        {0x7F, 1},      {0x80, 2},      {0x7FF, 2},
                          {0x800, 3},    {0xFFFF, 3},    {0x10000, 4},   {0x1FFFFF, 4},
                          {0x200000, 5}, {0x3FFFFFF, 5}, {0x4000000, 6}, {INT32_MAX, 6}};
    for (const Case &c : cases) {
        EXPECT_EQ(CONV_WCharToUTF8_BytesNeeded(c.cp), c.bytes) << std::hex << c.cp;
        EXPECT_EQ(Encode(c.cp).size(), c.bytes) << std::hex << c.cp;
    }
}

TEST(CoreUtf8, TooSmallWritesNothingAndReportsTheCount) {
    char out[8];
    std::memset(out, '#', sizeof out);
    uint32_t count = 99;
    EXPECT_EQ(CONV_WCharToUTF8('A', out, 0, &count), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(out[0], '#');
    EXPECT_EQ(CONV_WCharToUTF8(0x80, out, 1, &count), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(out[0], '#');
    EXPECT_EQ(CONV_WCharToUTF8(0x7FFFFFFF, out, 5, &count), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(count, 6u);
    EXPECT_EQ(out[0], '#');
    EXPECT_EQ(CONV_WCharToUTF8(0x7FFFFFFF, out, 6, &count), CONV_OK);
    EXPECT_EQ(count, 6u);
    EXPECT_EQ(out[6], '#');  // no terminator
}

// An independent encoder of standard UTF-8 for 0..0x10FFFF.
std::string Reference(uint32_t cp) {
    std::string s;
    if (cp < 0x80) {
        s += static_cast<char>(cp);
    } else if (cp < 0x800) {
        s += static_cast<char>(0xC0 + cp / 64);
        s += static_cast<char>(0x80 + cp % 64);
    } else if (cp < 0x10000) {
        s += static_cast<char>(0xE0 + cp / 4096);
        s += static_cast<char>(0x80 + (cp / 64) % 64);
        s += static_cast<char>(0x80 + cp % 64);
    } else {
        s += static_cast<char>(0xF0 + cp / 262144);
        s += static_cast<char>(0x80 + (cp / 4096) % 64);
        s += static_cast<char>(0x80 + (cp / 64) % 64);
        s += static_cast<char>(0x80 + cp % 64);
    }
    return s;
}

TEST(CoreUtf8, EveryCodePointAgreesWithAnIndependentEncoder) {
    char out[8];
    for (uint32_t cp = 0; cp <= 0x10FFFF; ++cp) {
        uint32_t count = 0;
        const uint32_t status = CONV_WCharToUTF8(static_cast<int32_t>(cp), out, 4, &count);
        const std::string expected = Reference(cp);
        if (status != CONV_OK || count != expected.size() ||
            std::memcmp(out, expected.data(), count) != 0) {
            ADD_FAILURE() << "code point " << std::hex << cp;
            break;
        }
        ASSERT_EQ(CONV_WCharToUTF8_BytesNeeded(static_cast<int32_t>(cp)), count);
    }
}

TEST(CoreUtf8, StringBytesNeeded) {
    const int32_t text[] = {'a', 0xE9, 0x20AC, 0x1F600, 0, 'z'};
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(text, 100), 10u);
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(text, -1), 10u);  // no limit: up to the 0
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(text, 3), 6u);
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(text, 1), 1u);
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(text, 0), 0u);
    const int32_t empty[] = {0, 'a'};
    EXPECT_EQ(CONV_WCharStrToUTF8_BytesNeeded(empty, 5), 0u);
}

TEST(CoreUtf8, StringEncoderWritesUpToTheZeroOrTheMaximum) {
    const int32_t text[] = {'a', 0xE9, 0x20AC, 0x1F600, 0, 'z'};
    char out[32];
    std::memset(out, '#', sizeof out);
    uint32_t written = 99;
    EXPECT_EQ(CONV_WCharStrToUTF8(text, 100, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 10u);
    EXPECT_EQ(std::string(out, 10), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(out[10], '#');  // no terminator
    std::memset(out, '#', sizeof out);
    EXPECT_EQ(CONV_WCharStrToUTF8(text, 2, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 3u);
    EXPECT_EQ(out[3], '#');
    EXPECT_EQ(CONV_WCharStrToUTF8(text, 0, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 0u);
    const int32_t empty[] = {0};
    written = 99;
    EXPECT_EQ(CONV_WCharStrToUTF8(empty, 5, out, 0, &written), CONV_OK);
    EXPECT_EQ(written, 0u);
}

TEST(CoreUtf8, StringEncoderKeepsCompleteCharactersOnFailure) {
    const int32_t text[] = {'a', 0xE9, 0x20AC, 0};
    char out[16];
    std::memset(out, '#', sizeof out);
    uint32_t written = 99;
    EXPECT_EQ(CONV_WCharStrToUTF8(text, -1, out, 5, &written), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(written, 3u);
    EXPECT_EQ(std::string(out, 3), "a\xC3\xA9");
    EXPECT_EQ(out[3], '#');
    EXPECT_EQ(CONV_WCharStrToUTF8(text, -1, out, 6, &written), CONV_OK);
    EXPECT_EQ(written, 6u);
    EXPECT_EQ(CONV_WCharStrToUTF8(text, -1, out, 0, &written), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(written, 0u);
}

TEST(CoreUtf8, SixteenBitUnitsAreEncodedOneByOne) {
    const uint16_t pair[] = {0xD83D, 0xDE00, 0};
    char out[16];
    std::memset(out, '#', sizeof out);
    uint32_t written = 99;
    EXPECT_EQ(CONV_WChar16StrToUTF8(pair, 10, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 6u);
    EXPECT_EQ(Bytes(out, out + 6), (Bytes{0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}));
    EXPECT_EQ(out[6], '#');
    const uint16_t high[] = {0xFFFF, 'b', 0};  // zero-extended, never negative
    EXPECT_EQ(CONV_WChar16StrToUTF8(high, -1, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 4u);
    EXPECT_EQ(Bytes(out, out + 4), (Bytes{0xEF, 0xBF, 0xBF, 'b'}));
    EXPECT_EQ(CONV_WChar16StrToUTF8(high, 1, out, sizeof out, &written), CONV_OK);
    EXPECT_EQ(written, 3u);
    EXPECT_EQ(CONV_WChar16StrToUTF8(high, 5, out, 3, &written), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(written, 3u);
    EXPECT_EQ(CONV_WChar16StrToUTF8(high, 0, out, 3, &written), CONV_OK);
    EXPECT_EQ(written, 0u);
}

TEST(CoreUtf8, SixteenBitStringsAgreeWithTheOneCharacterEncoder) {
    uint64_t state = 5;
    for (int i = 0; i < 2000; ++i) {
        uint16_t text[9];
        std::string expected;
        for (int k = 0; k < 8; ++k) {
            state = state * 6364136223846793005ull + 1442695040888963407ull;
            text[k] = static_cast<uint16_t>(1 + (state >> 33) % 0xFFFF);
            expected += Reference(text[k]);
        }
        text[8] = 0;
        char out[32];
        uint32_t written = 0;
        ASSERT_EQ(CONV_WChar16StrToUTF8(text, -1, out, sizeof out, &written), CONV_OK);
        EXPECT_EQ(std::string(out, written), expected);
    }
}

}  // namespace
