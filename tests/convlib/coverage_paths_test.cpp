/* SPDX-License-Identifier: MIT */
// Paths of the conversion library not reached by the feature tests: a non-digit in a low nibble
// of unchecked decimal text, a packed nibble above 9 read as a float, a NUL decimal-point
// character, unsigned text that is no number or whose exponent overflows, and date-time fields
// without a width that find no number.
#include <gtest/gtest.h>

#include <cstring>

#include <nlssupport/convlib.h>

namespace {

TEST(DecimalUncheckedText, NonDigitInALowNibbleIsNotANumber) {
    uint8_t out[8];
    std::memset(out, 0xEE, sizeof out);
    uint32_t precision = 99;
    uint32_t scale = 99;
    EXPECT_EQ(
        CONV_StringToDecimal(out, "1a", sizeof out, &precision, &scale, CONV_NUM_NO_CHECK, '.'),
        CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(out[0], 0x10);  // the high nibble read before the bad character
    EXPECT_EQ(precision, 1u);
    EXPECT_EQ(scale, 0u);
    EXPECT_EQ(out[1], 0xEE);
}

TEST(UInt32Text, TextThatIsNoNumberLeavesTheTarget) {
    uint32_t target = 7;
    EXPECT_EQ(CONV_StringToUInt32(&target, "abc", 0, '.'), CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(target, 7u);
}

TEST(UInt32Text, ExponentBeyondTheDoubleRangeOverflows) {
    uint32_t target = 7;
    EXPECT_EQ(CONV_StringToUInt32(&target, "1e999", CONV_NUM_EXPONENT, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(target, 7u);
}

TEST(DecimalToFloat, NibbleAboveNineIsAConversionError) {
    const uint8_t value[] = {0xAA, 0x0C};  // packed, precision 2: digits "A" and "A"
    float target = 7.0f;
    EXPECT_EQ(CONV_DecimalToFloat(&target, value, 2, 0, 2), CONV_ERR_CONVERSION);
    EXPECT_EQ(target, 7.0f);
}

// A NUL decimal-point character means the text has no point: the digits convert as they are.
TEST(NumberText, NulPointCharacterLeavesPlainDigits) {
    int32_t integer = 0;
    EXPECT_EQ(CONV_StringToInt32(&integer, "12", 0, '\0'), CONV_OK);
    EXPECT_EQ(integer, 12);
    double value = 0.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "-12", 0, '\0'), CONV_OK);
    EXPECT_EQ(value, -12.0);
}

// A field without a width that finds no number stops the parse with a scan mismatch on it.
TEST(DateTimeParse, FieldWithoutWidthFindingNoNumberIsAScanMismatch) {
    for (const char *format : {"%F", "%Y"}) {
        CONV_DateTime record;
        std::memset(&record, 0, sizeof record);
        record.fractionBase = CONV_DT_UNSET;
        uint16_t failedField = 7;
        uint16_t fieldCount = 7;
        EXPECT_EQ(
            CONV_StringToDateTime(&record, "x", format, 0, nullptr, &failedField, &fieldCount),
            CONV_ERR_SCAN_MISMATCH)
            << format;
        EXPECT_EQ(fieldCount, 1) << format;
        EXPECT_NE(failedField, 65535) << format;
        EXPECT_EQ(record.fraction, CONV_DT_UNSET) << format;
        EXPECT_EQ(record.year, CONV_DT_UNSET) << format;
    }
}

}  // namespace
