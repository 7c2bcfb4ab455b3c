/* SPDX-License-Identifier: MIT */
// Inputs found by the fuzz targets of the conversion library, with the results they must give.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

constexpr uint8_t kSentinel = 0xA5;

// "3124.56" into two bytes: the point follows the digit that fills the last byte. The sign has
// no room without dropping that integer digit, so the value does not fit, and nothing is stored
// past the size given.
TEST(DecimalFuzzRegress, PointAfterLastFittingDigitIsTooSmall) {
    std::vector<uint8_t> out(8, kSentinel);
    uint32_t precision = 0;
    uint32_t scale = 0;
    EXPECT_EQ(CONV_StringToDecimal(out.data(), "3124.56", 2, &precision, &scale,
                                   CONV_NUM_DECIMAL_POINT, '.'),
              CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_TRUE(std::all_of(out.begin() + 2, out.end(), [](uint8_t b) { return b == kSentinel; }));
}

// One byte more holds every integer digit, and the value reads back with its fraction cut.
TEST(DecimalFuzzRegress, OneByteMoreKeepsTheIntegerDigits) {
    std::vector<uint8_t> out(8, kSentinel);
    uint32_t precision = 0;
    uint32_t scale = 0;
    EXPECT_EQ(CONV_StringToDecimal(out.data(), "3124.56", 3, &precision, &scale,
                                   CONV_NUM_DECIMAL_POINT, '.'),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(out, (std::vector<uint8_t>{0x31, 0x24, 0x5C, kSentinel, kSentinel, kSentinel,
                                         kSentinel, kSentinel}));
    EXPECT_EQ(precision, 5u);
    EXPECT_EQ(scale, 1u);
    char text[16];
    std::memset(text, 'x', sizeof text);
    uint32_t length = 0;
    EXPECT_EQ(CONV_DecimalToString(text, out.data(), sizeof text, precision, scale, '.',
                                   CONV_DECIMAL_PACKED, &length),
              CONV_OK);
    EXPECT_STREQ(text, "3124.5");
    EXPECT_EQ(length, 6u);
}

}  // namespace
