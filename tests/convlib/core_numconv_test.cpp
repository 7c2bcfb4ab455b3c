/* SPDX-License-Identifier: MIT */
// Text to integer, double and float, and 32-bit integers to text.
#include <gtest/gtest.h>

#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include <nlssupport/convlib.h>

namespace {

constexpr uint32_t kPoint = CONV_NUM_DECIMAL_POINT;
constexpr uint32_t kExp = CONV_NUM_EXPONENT;

struct Int32Case {
    const char *text;
    uint32_t flags;
    char point;
    uint32_t status;
    int32_t value;  // expected when the status is CONV_OK or the warning
};

constexpr Int32Case kInt32Cases[] = {
    {"2147483647", 0, '.', CONV_OK, 2147483647},
    {"2147483648", 0, '.', CONV_ERR_OVERFLOW, 0},
    {"-2147483648", 0, '.', CONV_OK, INT32_MIN},
    {"-2147483649", 0, '.', CONV_ERR_OVERFLOW, 0},
    {"99999999999999999999999", 0, '.', CONV_ERR_OVERFLOW, 0},
    {"-99999999999999999999999", 0, '.', CONV_ERR_OVERFLOW, 0},
    // Only the first eleven characters are compared: a further digit is still the minimum.
    {"-21474836480", 0, '.', CONV_OK, INT32_MIN},
    {"-21474836489999999999999", 0, '.', CONV_OK, INT32_MIN},
    {"- 21474836480", 0, '.', CONV_OK, INT32_MIN},  // the blank after the sign is dropped
    {"-02147483648", 0, '.', CONV_OK, INT32_MIN},   // in range: no overflow to check
    {"-021474836480", 0, '.', CONV_ERR_OVERFLOW, 0},
    {"12.50", kPoint, '.', CONV_WARN_TRUNCATION, 12},
    {"12.000", kPoint, '.', CONV_OK, 12},
    {"12.", kPoint, '.', CONV_OK, 12},
    {"12.05", kPoint, '.', CONV_WARN_TRUNCATION, 12},
    {"-12.9", kPoint, '.', CONV_WARN_TRUNCATION, -12},
    {",5", kPoint, ',', CONV_WARN_TRUNCATION, 0},
    {"-,5", kPoint, ',', CONV_WARN_TRUNCATION, 0},
    {"7,25", kPoint, ',', CONV_WARN_TRUNCATION, 7},
    {"7.25", kPoint, ',', CONV_ERR_NOT_A_NUMBER, 0},
    {"12.5", 0, '.', CONV_ERR_NOT_A_NUMBER, 0},
    {"1.5E3", kPoint | kExp, '.', CONV_OK, 1500},
    {"1.5e3", kPoint | kExp, '.', CONV_OK, 1500},
    {"1.25E1", kPoint | kExp, '.', CONV_WARN_TRUNCATION, 12},
    {"1E-400", kPoint | kExp, '.', CONV_WARN_TRUNCATION, 0},
    {"-1E-400", kPoint | kExp, '.', CONV_WARN_TRUNCATION, 0},
    {"1E400", kPoint | kExp, '.', CONV_ERR_OVERFLOW, 0},
    {"3E9", kExp, '.', CONV_ERR_OVERFLOW, 0},
    {"-2.147483648E9", kPoint | kExp, '.', CONV_OK, INT32_MIN},
    {"2.1474836475E9", kPoint | kExp, '.', CONV_ERR_OVERFLOW, 0},
    {"1,5E 1", kPoint | kExp, ',', CONV_OK, 15},
    {"1E3", kPoint, '.', CONV_ERR_NOT_A_NUMBER, 0},
    {" 42 ", 0x03, '.', CONV_OK, 42},
    {" 42 ", 0x00, '.', CONV_ERR_NOT_A_NUMBER, 0},
    {"", 0, '.', CONV_ERR_NOT_A_NUMBER, 0},
    {"abc", 0x100, '.', CONV_ERR_NOT_A_NUMBER, 0},
    {"12abc", 0x100, '.', CONV_OK, 12},
    {"-0", 0, '.', CONV_OK, 0},
    {"+17", 0, '.', CONV_OK, 17},
    {"0000000000000000000000000000012", 0, '.', CONV_OK, 12},
};

TEST(CoreStringToInt32, ListedCases) {
    for (const Int32Case &c : kInt32Cases) {
        int32_t value = 0x5A5A5A5A;
        EXPECT_EQ(CONV_StringToInt32(&value, c.text, c.flags, c.point), c.status) << c.text;
        if (c.status == CONV_OK || c.status == CONV_WARN_TRUNCATION) {
            EXPECT_EQ(value, c.value) << c.text;
        } else {
            EXPECT_EQ(value, 0x5A5A5A5A) << c.text;
        }
    }
}

TEST(CoreStringToInt32, DExponentIsReadOnlyUpToTheLetterOnTheDoublePath) {
    // The exponent path reads the text with the no-check flag alone, so the "D" letter is not
    // rewritten and the number ends before it: 1.5 is truncated to 1.
    int32_t value = 0;
    EXPECT_EQ(CONV_StringToInt32(&value, "1.5D3", 0x4C, '.'), CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(CONV_StringToInt32(&value, "1.5D3", 0x0C, '.'), CONV_ERR_NOT_A_NUMBER);
}

TEST(CoreStringToInt32, TextOver999CharactersIsAConversionError) {
    std::string text(999, '0');
    int32_t value = 0;
    text.back() = '5';
    EXPECT_EQ(CONV_StringToInt32(&value, text.c_str(), 0, '.'), CONV_OK);
    EXPECT_EQ(value, 5);
    text = "1" + text;
    value = 9;
    EXPECT_EQ(CONV_StringToInt32(&value, text.c_str(), 0, '.'), CONV_ERR_CONVERSION);
    EXPECT_EQ(CONV_StringToInt32(&value, text.c_str(), 0x100, '.'), CONV_ERR_CONVERSION);
    EXPECT_EQ(value, 9);
    uint32_t u = 9;
    EXPECT_EQ(CONV_StringToUInt32(&u, text.c_str(), 0, '.'), CONV_ERR_CONVERSION);
    EXPECT_EQ(u, 9u);
}

// The longest texts that begin with the point: the copy handed to the C library gains a "0" in
// front of the point (behind a "-"), and still fits with its terminator.
TEST(CoreStringToInt32, LongestTextBeginningWithThePointGainsALeadingZero) {
    const std::string minusPoint = "-," + std::string(996, '0') + "7";
    ASSERT_EQ(minusPoint.size(), 999u);
    int32_t value = 9;
    EXPECT_EQ(CONV_StringToInt32(&value, minusPoint.c_str(), CONV_NUM_DECIMAL_POINT, ','),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, 0);
    const std::string point = "," + std::string(997, '0') + "7";
    ASSERT_EQ(point.size(), 999u);
    uint32_t u = 9;
    EXPECT_EQ(CONV_StringToUInt32(&u, point.c_str(), CONV_NUM_DECIMAL_POINT, ','),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(u, 0u);
}

// The longest text with the point and exponent letter that the direct reading rewrites ("," and
// "d" become "." and "e" in a copy of the number).
TEST(CoreStringToDouble, LongestTextWithCommaAndDExponentIsReadWhole) {
    const std::string text = "1," + std::string(993, '0') + "d+02";
    ASSERT_EQ(text.size(), 999u);
    double value = 0;
    EXPECT_EQ(CONV_StringToDouble(&value, text.c_str(),
                                  CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT | CONV_NUM_D_EXPONENT,
                                  ','),
              CONV_OK);
    EXPECT_EQ(value, 100.0);
}

TEST(CoreStringToInt32, ClearsErrnoOnSuccess) {
    errno = EDOM;
    int32_t value = 0;
    EXPECT_EQ(CONV_StringToInt32(&value, "-21474836480", 0, '.'), CONV_OK);
    EXPECT_EQ(errno, 0);
}

struct UInt32Case {
    const char *text;
    uint32_t flags;
    uint32_t status;
    uint32_t value;
};

constexpr UInt32Case kUInt32Cases[] = {
    {"4294967295", 0, CONV_OK, 4294967295u},
    {"4294967296", 0, CONV_ERR_OVERFLOW, 0},
    {"18446744073709551615", 0, CONV_ERR_OVERFLOW, 0},
    {"18446744073709551616", 0, CONV_ERR_OVERFLOW, 0},
    {"-0", 0, CONV_ERR_OVERFLOW, 0},
    {"-1", 0, CONV_ERR_OVERFLOW, 0},
    {" -1", 0x01, CONV_ERR_OVERFLOW, 0},
    {"+7", 0, CONV_OK, 7},
    {"2147483648", 0, CONV_OK, 2147483648u},
    {"3000000000.5", kPoint, CONV_WARN_TRUNCATION, 3000000000u},
    {"4.294967295E9", kPoint | kExp, CONV_OK, 4294967295u},
    {"4.294967296E9", kPoint | kExp, CONV_ERR_OVERFLOW, 0},
    {"-1E0", kExp, CONV_ERR_OVERFLOW, 0},
    {"-1E-400", kExp, CONV_WARN_TRUNCATION, 0},
    {"x", 0x100, CONV_ERR_NOT_A_NUMBER, 0},
    {".5", kPoint, CONV_WARN_TRUNCATION, 0},
};

TEST(CoreStringToUInt32, ListedCases) {
    for (const UInt32Case &c : kUInt32Cases) {
        uint32_t value = 0x5A5A5A5Au;
        EXPECT_EQ(CONV_StringToUInt32(&value, c.text, c.flags, '.'), c.status) << c.text;
        if (c.status == CONV_OK || c.status == CONV_WARN_TRUNCATION) {
            EXPECT_EQ(value, c.value) << c.text;
        } else {
            EXPECT_EQ(value, 0x5A5A5A5Au) << c.text;
        }
    }
}

TEST(CoreStringToSmall, RangesAndStatuses) {
    uint8_t u8 = 9;
    EXPECT_EQ(CONV_StringToUInt8(&u8, "-1", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(u8, 9);
    EXPECT_EQ(CONV_StringToUInt8(&u8, "255.9", kPoint, '.'), CONV_WARN_TRUNCATION);
    EXPECT_EQ(u8, 255);
    EXPECT_EQ(CONV_StringToUInt8(&u8, "256", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToUInt8(&u8, "0", 0, '.'), CONV_OK);
    EXPECT_EQ(u8, 0);
    EXPECT_EQ(CONV_StringToUInt8(&u8, "x", 0, '.'), CONV_ERR_NOT_A_NUMBER);
    int8_t i8 = 9;
    EXPECT_EQ(CONV_StringToInt8(&i8, "-128", 0, '.'), CONV_OK);
    EXPECT_EQ(i8, -128);
    EXPECT_EQ(CONV_StringToInt8(&i8, "127", 0, '.'), CONV_OK);
    EXPECT_EQ(i8, 127);
    i8 = 9;
    EXPECT_EQ(CONV_StringToInt8(&i8, "128", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToInt8(&i8, "-129", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(i8, 9);
    EXPECT_EQ(CONV_StringToInt8(&i8, "-128.7", kPoint, '.'), CONV_WARN_TRUNCATION);
    EXPECT_EQ(i8, -128);
    int16_t i16 = 9;
    EXPECT_EQ(CONV_StringToInt16(&i16, "-32768", 0, '.'), CONV_OK);
    EXPECT_EQ(i16, -32768);
    EXPECT_EQ(CONV_StringToInt16(&i16, "32767", 0, '.'), CONV_OK);
    EXPECT_EQ(i16, 32767);
    EXPECT_EQ(CONV_StringToInt16(&i16, "32768", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToInt16(&i16, "-32769", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToInt16(&i16, "3.2768E4", kPoint | kExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(i16, 32767);
    uint16_t u16 = 9;
    EXPECT_EQ(CONV_StringToUInt16(&u16, "65535", 0, '.'), CONV_OK);
    EXPECT_EQ(u16, 65535);
    EXPECT_EQ(CONV_StringToUInt16(&u16, "65536", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToUInt16(&u16, "-1", 0, '.'), CONV_ERR_OVERFLOW);
    // Through the signed 32-bit conversion: values beyond it overflow there.
    EXPECT_EQ(CONV_StringToUInt16(&u16, "4294967295", 0, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(u16, 65535);
    EXPECT_EQ(CONV_StringToUInt16(&u16, "-0.5", kPoint, '.'), CONV_WARN_TRUNCATION);
    EXPECT_EQ(u16, 0);
}

// Deterministic generator of integer texts.
struct Generator {
    uint64_t state;
    uint32_t Next() {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<uint32_t>(state >> 33);
    }
    std::string Digits(size_t count) {
        std::string s;
        for (size_t i = 0; i < count; ++i) {
            s += static_cast<char>('0' + Next() % 10);
        }
        return s;
    }
};

TEST(CoreStringToInt32, AgreesWithStrtollOnGeneratedTexts) {
    Generator gen{42};
    for (int i = 0; i < 30000; ++i) {
        std::string text;
        const uint32_t shape = gen.Next();
        if (shape & 1)
            text += " ";
        const int sign = static_cast<int>(gen.Next() % 3);
        if (sign == 1)
            text += "-";
        if (sign == 2)
            text += "+";
        const size_t digits = 1 + gen.Next() % 12;
        std::string number = gen.Digits(digits);
        if (shape & 2)
            number = "2147483" + gen.Digits(gen.Next() % 5);
        text += number;
        std::string fraction;
        if (shape & 4) {
            fraction = gen.Digits(gen.Next() % 4);
            text += "." + fraction;
        }
        const uint32_t flags = 0x001 | kPoint;
        // Expected by the rules: the value read by a 64-bit strtoll, overflow outside 32 bits,
        // truncation when a non-zero fraction digit follows.
        const long long wide = std::strtoll(text.c_str(), nullptr, 10);
        int32_t value = 0;
        const uint32_t status = CONV_StringToInt32(&value, text.c_str(), flags, '.');
        const bool minimumPrefix =
            text.compare(text.find_first_not_of(' '), 11, "-2147483648") == 0;
        if (wide < INT32_MIN && minimumPrefix) {
            // Read as the minimum: only its first eleven characters are looked at.
            EXPECT_EQ(value, INT32_MIN) << text;
            EXPECT_NE(status, CONV_ERR_OVERFLOW) << text;
            continue;
        }
        if (wide > INT32_MAX || wide < INT32_MIN) {
            EXPECT_EQ(status, CONV_ERR_OVERFLOW) << text;
            continue;
        }
        const bool dropped = fraction.find_first_not_of('0') != std::string::npos;
        EXPECT_EQ(status, dropped ? CONV_WARN_TRUNCATION : CONV_OK) << text;
        EXPECT_EQ(value, static_cast<int32_t>(wide)) << text;

        // Through the decimal point of the caller.
        std::string comma = text;
        const size_t at = comma.find('.');
        if (at != std::string::npos)
            comma[at] = ',';
        int32_t commaValue = 0;
        EXPECT_EQ(CONV_StringToInt32(&commaValue, comma.c_str(), flags, ','), status) << comma;
        EXPECT_EQ(commaValue, value) << comma;
    }
}

TEST(CoreStringToUInt32, AgreesWithStrtoullOnGeneratedTexts) {
    Generator gen{7};
    for (int i = 0; i < 30000; ++i) {
        std::string text;
        const uint32_t shape = gen.Next();
        const bool plus = (shape & 1) != 0;
        if (plus)
            text += "+";
        std::string number = gen.Digits(1 + gen.Next() % 12);
        if (shape & 2)
            number = "4294967" + gen.Digits(gen.Next() % 5);
        text += number;
        const unsigned long long wide = std::strtoull(text.c_str(), nullptr, 10);
        uint32_t value = 0;
        const uint32_t status = CONV_StringToUInt32(&value, text.c_str(), 0, '.');
        if (wide > UINT32_MAX) {
            EXPECT_EQ(status, CONV_ERR_OVERFLOW) << text;
        } else {
            EXPECT_EQ(status, CONV_OK) << text;
            EXPECT_EQ(value, static_cast<uint32_t>(wide)) << text;
        }
        int32_t signedValue = 0;
        const uint32_t signedStatus = CONV_StringToInt32(&signedValue, text.c_str(), 0, '.');
        if (wide > INT32_MAX) {
            EXPECT_EQ(signedStatus, CONV_ERR_OVERFLOW) << text;
        } else {
            EXPECT_EQ(signedStatus, CONV_OK) << text;
            EXPECT_EQ(signedValue, static_cast<int32_t>(wide)) << text;
        }
    }
}

uint64_t Bits(double v) {
    uint64_t b = 0;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

struct DoubleCase {
    const char *text;
    uint32_t flags;
    char point;
    uint32_t status;
    double value;
};

constexpr DoubleCase kDoubleCases[] = {
    {"1e999", kExp, '.', CONV_ERR_OVERFLOW, HUGE_VAL},
    {"-1e999", kExp, '.', CONV_ERR_OVERFLOW, -HUGE_VAL},
    {"1e-999", kExp, '.', CONV_WARN_ROUND_TO_ZERO, 0.0},
    {"1.7976931348623157e308", kPoint | kExp, '.', CONV_OK, DBL_MAX},
    {"4.9e-324", kPoint | kExp, '.', CONV_OK, 4.9e-324},  // subnormal: errno set, value kept
    {"1.5", kPoint, '.', CONV_OK, 1.5},
    {"1,5", kPoint, ',', CONV_OK, 1.5},
    {" - 2,5E 2 ", 0x0F, ',', CONV_OK, -250.0},
    {"+2.5", kPoint, '.', CONV_OK, 2.5},
    {"2.5D2", 0x4C, '.', CONV_OK, 250.0},
    {"2.5d-2", 0x4C, '.', CONV_OK, 0.025},
    {"2.5D2", 0x0C, '.', CONV_ERR_NOT_A_NUMBER, 0.0},
    {"2.5e\t2", 0x1C, '.', CONV_OK, 250.0},
    {".5", kPoint, '.', CONV_OK, 0.5},
    {"x", 0, '.', CONV_ERR_NOT_A_NUMBER, 0.0},
    {"", 0, '.', CONV_ERR_NOT_A_NUMBER, 0.0},
    {"1.5", 0, '.', CONV_ERR_NOT_A_NUMBER, 0.0},
};

TEST(CoreStringToDouble, ListedCases) {
    for (const DoubleCase &c : kDoubleCases) {
        double value = 77.0;
        EXPECT_EQ(CONV_StringToDouble(&value, c.text, c.flags, c.point), c.status) << c.text;
        if (c.status != CONV_ERR_NOT_A_NUMBER) {
            EXPECT_EQ(Bits(value), Bits(c.value)) << c.text << " gave " << value;
        }
    }
}

TEST(CoreStringToDouble, TargetIsWrittenBeforeTheStatus) {
    double value = 77.0;
    // Accepted without a check but nothing converted: strtod's 0.0 is stored.
    EXPECT_EQ(CONV_StringToDouble(&value, "abc", 0x100, '.'), CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 0.0);
    value = 77.0;
    // Rejected by the check: nothing is stored.
    EXPECT_EQ(CONV_StringToDouble(&value, "abc", 0, '.'), CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 77.0);
    value = 77.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "-1e-999", kExp, '.'), CONV_WARN_ROUND_TO_ZERO);
    EXPECT_EQ(value, 0.0);
    EXPECT_TRUE(std::signbit(value));
}

TEST(CoreStringToDouble, LengthIsCheckedAfterTheSyntax) {
    std::string text(1000, '0');
    double value = 77.0;
    EXPECT_EQ(CONV_StringToDouble(&value, text.c_str(), 0, '.'), CONV_ERR_CONVERSION);
    EXPECT_EQ(value, 77.0);
    text[5] = 'x';
    EXPECT_EQ(CONV_StringToDouble(&value, text.c_str(), 0, '.'), CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 77.0);
    text.resize(999);
    text[5] = '0';
    text.back() = '7';
    EXPECT_EQ(CONV_StringToDouble(&value, text.c_str(), 0, '.'), CONV_OK);
    EXPECT_EQ(value, 7.0);
}

TEST(CoreStringToDouble, AgreesWithStrtodOnGeneratedTexts) {
    Generator gen{99};
    for (int i = 0; i < 30000; ++i) {
        std::string text;
        const uint32_t shape = gen.Next();
        if (shape & 1)
            text += "-";
        text += gen.Digits(gen.Next() % 20);
        if (text.empty() || text == "-" || (shape & 2)) {
            text += "." + gen.Digits(1 + gen.Next() % 20);
        }
        if (shape & 4) {
            text += (shape & 8) ? "e" : "E";
            const uint32_t es = gen.Next() % 3;
            if (es == 1)
                text += "-";
            if (es == 2)
                text += "+";
            text += std::to_string(gen.Next() % 700);
        }
        errno = 0;
        const double expected = std::strtod(text.c_str(), nullptr);
        const bool range = errno != 0;
        double value = 0;
        const uint32_t status = CONV_StringToDouble(&value, text.c_str(), kPoint | kExp, '.');
        EXPECT_EQ(Bits(value), Bits(expected)) << text;
        if (range && std::fabs(expected) >= DBL_MAX) {
            EXPECT_EQ(status, CONV_ERR_OVERFLOW) << text;
        } else if (range && expected == 0.0) {
            EXPECT_EQ(status, CONV_WARN_ROUND_TO_ZERO) << text;
        } else {
            EXPECT_EQ(status, CONV_OK) << text;
        }
        std::string comma = text;
        const size_t at = comma.find('.');
        if (at != std::string::npos)
            comma[at] = ',';
        double commaValue = 0;
        EXPECT_EQ(CONV_StringToDouble(&commaValue, comma.c_str(), kPoint | kExp, ','), status);
        EXPECT_EQ(Bits(commaValue), Bits(expected)) << comma;
    }
}

TEST(CoreStringToFloat, BoundsAndStatuses) {
    float value = 5.0f;
    EXPECT_EQ(CONV_StringToFloat(&value, "1.5", kPoint, '.'), CONV_OK);
    EXPECT_EQ(value, 1.5f);
    EXPECT_EQ(CONV_StringToFloat(&value, "0.1", kPoint, '.'), CONV_OK);
    EXPECT_EQ(value, 0.1f);
    EXPECT_EQ(CONV_StringToFloat(&value, "3.4028234663852886e38", kPoint | kExp, '.'), CONV_OK);
    EXPECT_EQ(value, FLT_MAX);
    EXPECT_EQ(CONV_StringToFloat(&value, "3.4028238720334565e38", kPoint | kExp, '.'), CONV_OK);
    EXPECT_TRUE(std::isinf(value));
    value = 5.0f;
    EXPECT_EQ(CONV_StringToFloat(&value, "3.4028239e38", kPoint | kExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToFloat(&value, "-1e39", kExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToFloat(&value, "1e999", kExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_StringToFloat(&value, "x", 0, '.'), CONV_ERR_NOT_A_NUMBER);
    // The round-to-zero warning of the double conversion comes back with the float untouched.
    EXPECT_EQ(CONV_StringToFloat(&value, "1e-999", kExp, '.'), CONV_WARN_ROUND_TO_ZERO);
    EXPECT_EQ(value, 5.0f);
    // Too small for a float but not for a double: zero without a warning.
    EXPECT_EQ(CONV_StringToFloat(&value, "1e-50", kExp, '.'), CONV_OK);
    EXPECT_EQ(value, 0.0f);
}

TEST(CoreInt32ToString, SizesAndValues) {
    char out[16];
    std::memset(out, '#', sizeof out);
    EXPECT_EQ(CONV_Int32ToString(out, INT32_MIN, 11), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(out[0], '#');
    EXPECT_EQ(CONV_Int32ToString(out, INT32_MIN, 12), CONV_OK);
    EXPECT_STREQ(out, "-2147483648");
    EXPECT_EQ(out[12], '#');
    EXPECT_EQ(CONV_Int32ToString(out, 0, 2), CONV_OK);
    EXPECT_STREQ(out, "0");
    EXPECT_EQ(CONV_Int32ToString(out, 7, 1), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(CONV_Int32ToString(out, 7, 0), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(CONV_Int32ToString(out, INT32_MAX, 11), CONV_OK);
    EXPECT_STREQ(out, "2147483647");
    std::memset(out, '#', sizeof out);
    EXPECT_EQ(CONV_UInt32ToString(out, 4294967295u, 10), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(out[0], '#');
    EXPECT_EQ(CONV_UInt32ToString(out, 4294967295u, 11), CONV_OK);
    EXPECT_STREQ(out, "4294967295");
    EXPECT_EQ(out[11], '#');
    EXPECT_EQ(CONV_UInt32ToString(out, 0u, 0), CONV_ERR_TARGET_TOO_SMALL);
}

TEST(CoreInt32ToString, RoundTripsGeneratedValues) {
    Generator gen{3};
    for (int i = 0; i < 20000; ++i) {
        const uint32_t bits = gen.Next() ^ (gen.Next() << 16);
        const int32_t value = static_cast<int32_t>(bits);
        char out[12];
        ASSERT_EQ(CONV_Int32ToString(out, value, sizeof out), CONV_OK);
        EXPECT_EQ(std::to_string(value), out);
        int32_t back = 0;
        EXPECT_EQ(CONV_StringToInt32(&back, out, 0, '.'), CONV_OK) << out;
        EXPECT_EQ(back, value);
        char uout[11];
        ASSERT_EQ(CONV_UInt32ToString(uout, bits, sizeof uout), CONV_OK);
        EXPECT_EQ(std::to_string(bits), uout);
        uint32_t uback = 0;
        EXPECT_EQ(CONV_StringToUInt32(&uback, uout, 0, '.'), CONV_OK) << uout;
        EXPECT_EQ(uback, bits);
    }
}

}  // namespace
