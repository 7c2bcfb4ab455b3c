/* SPDX-License-Identifier: MIT */
// Decimal values and the binary number types.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

constexpr uint8_t kSentinel = 0xA5;

using Bytes = std::vector<uint8_t>;

// Packed bytes of a digit string (pad 0 in front of an even count, sign nibble last).
Bytes Pack(const std::string &digits, bool negative) {
    std::string nibbles = digits;
    if (nibbles.size() % 2 == 0) {
        nibbles.insert(nibbles.begin(), '0');
    }
    Bytes bytes;
    for (std::size_t k = 0; k + 1 < nibbles.size(); k += 2) {
        bytes.push_back(static_cast<uint8_t>(((nibbles[k] - '0') << 4) | (nibbles[k + 1] - '0')));
    }
    bytes.push_back(static_cast<uint8_t>(((nibbles.back() - '0') << 4) | (negative ? 0x0D : 0x0C)));
    return bytes;
}

Bytes Unpack(const std::string &digits, bool negative) {
    Bytes bytes;
    for (char d : digits) {
        bytes.push_back(static_cast<uint8_t>(d - '0'));
    }
    bytes.back() = static_cast<uint8_t>(bytes.back() | (negative ? 0xD0 : 0xC0));
    return bytes;
}

TEST(DecimalToDouble, ValueIsReadFromItsText) {
    double value = 0.0;
    const Bytes v = Pack("123", false);
    EXPECT_EQ(CONV_DecimalToDouble(&value, v.data(), 3, 1, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, std::strtod("12.3", nullptr));
    const Bytes neg = Unpack("05", true);
    EXPECT_EQ(CONV_DecimalToDouble(&value, neg.data(), 2, 2, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(value, -0.05);
}

TEST(DecimalToDouble, BadValueIsAConversionError) {
    double value = 7.0;
    const Bytes bad = {0x1B, 0x3C};
    EXPECT_EQ(CONV_DecimalToDouble(&value, bad.data(), 3, 1, CONV_DECIMAL_PACKED),
              CONV_ERR_CONVERSION);
    EXPECT_EQ(CONV_DecimalToDouble(&value, bad.data(), 3, 1, 9), CONV_ERR_CONVERSION);
    EXPECT_EQ(value, 7.0);
}

TEST(DecimalToDouble, ValueBeyondTheDoubleRangeOverflows) {
    double value = 0.0;
    // 400 digits: 1 followed by zeros.
    const Bytes big = Pack("1" + std::string(400, '0'), false);
    EXPECT_EQ(CONV_DecimalToDouble(&value, big.data(), 401, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_OVERFLOW);
    // More integer digits than the 1000-byte scratch holds.
    const Bytes huge = Pack(std::string(1001, '9'), false);
    EXPECT_EQ(CONV_DecimalToDouble(&value, huge.data(), 1001, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_OVERFLOW);
    int32_t i = 5;
    EXPECT_EQ(CONV_DecimalToInt32(&i, huge.data(), 1001, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_OVERFLOW);
    EXPECT_EQ(i, 5);
}

TEST(DecimalToDouble, LongFractionIsCutToTheScratchAndStillRead) {
    // 1200 fraction digits: the text is cut to 999 characters and read as it stands.
    const Bytes v = Pack("1" + std::string(1200, '5'), false);
    double value = 0.0;
    EXPECT_EQ(CONV_DecimalToDouble(&value, v.data(), 1201, 1200, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, std::strtod("1.5555555555555555555555", nullptr));
}

TEST(DecimalToFloat, ValueIsRoundedToFloat) {
    float value = 0.0f;
    const Bytes v = Pack("15", true);
    EXPECT_EQ(CONV_DecimalToFloat(&value, v.data(), 2, 1, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, -1.5f);
    const Bytes third = Pack("333", false);
    EXPECT_EQ(CONV_DecimalToFloat(&value, third.data(), 3, 3, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, static_cast<float>(std::strtod("0.333", nullptr)));
    const Bytes big = Pack("1" + std::string(39, '0'), false);
    EXPECT_EQ(CONV_DecimalToFloat(&value, big.data(), 40, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_OVERFLOW);
}

TEST(DecimalToInteger, PlainIntegerConvertsExactly) {
    int32_t value = 0;
    const Bytes v = Pack("2147483647", false);
    EXPECT_EQ(CONV_DecimalToInt32(&value, v.data(), 10, 0, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, 2147483647);
    const Bytes min = Unpack("2147483648", true);
    EXPECT_EQ(CONV_DecimalToInt32(&value, min.data(), 10, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(value, INT32_MIN);
    const Bytes over = Pack("2147483648", false);
    EXPECT_EQ(CONV_DecimalToInt32(&value, over.data(), 10, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_OVERFLOW);
}

TEST(DecimalToInteger, FractionIsTruncatedTowardZeroWithAWarning) {
    int32_t value = 0;
    const Bytes v = Pack("123", true);
    EXPECT_EQ(CONV_DecimalToInt32(&value, v.data(), 3, 1, CONV_DECIMAL_PACKED),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, -12);
    const Bytes pure = Pack("50", false);
    value = 9;
    EXPECT_EQ(CONV_DecimalToInt32(&value, pure.data(), 2, 2, CONV_DECIMAL_PACKED),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, 0);
    const Bytes negPure = Pack("5", true);
    value = 9;
    EXPECT_EQ(CONV_DecimalToInt32(&value, negPure.data(), 1, 1, CONV_DECIMAL_PACKED),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, 0);
}

TEST(DecimalToInteger, ZeroFractionIsNoTruncation) {
    int32_t value = 0;
    // The pad digit of "12" (12.0) is a zero fraction.
    const Bytes padded = {0x12, 0x0C};
    EXPECT_EQ(CONV_DecimalToInt32(&value, padded.data(), 3, 1, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, 12);
    const Bytes zeros = Pack("000", true);
    value = 9;
    EXPECT_EQ(CONV_DecimalToInt32(&value, zeros.data(), 3, 3, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, 0);
    const Bytes tenths = Pack("1200", false);
    EXPECT_EQ(CONV_DecimalToInt32(&value, tenths.data(), 4, 2, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(value, 12);
}

TEST(DecimalToInteger, NarrowTargetsCheckTheirRange) {
    const Bytes v2559 = Pack("2559", false);
    uint8_t u8 = 0;
    EXPECT_EQ(CONV_DecimalToUInt8(&u8, v2559.data(), 4, 1, CONV_DECIMAL_PACKED),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(u8, 255);
    const Bytes v256 = Pack("256", false);
    EXPECT_EQ(CONV_DecimalToUInt8(&u8, v256.data(), 3, 0, CONV_DECIMAL_PACKED), CONV_ERR_OVERFLOW);
    const Bytes m1 = Pack("1", true);
    EXPECT_EQ(CONV_DecimalToUInt8(&u8, m1.data(), 1, 0, CONV_DECIMAL_PACKED), CONV_ERR_OVERFLOW);
    EXPECT_EQ(u8, 255);

    int8_t i8 = 0;
    const Bytes m128 = Pack("128", true);
    EXPECT_EQ(CONV_DecimalToInt8(&i8, m128.data(), 3, 0, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(i8, -128);
    const Bytes p128 = Pack("128", false);
    EXPECT_EQ(CONV_DecimalToInt8(&i8, p128.data(), 3, 0, CONV_DECIMAL_PACKED), CONV_ERR_OVERFLOW);

    int16_t i16 = 0;
    const Bytes v = Pack("327679", true);
    EXPECT_EQ(CONV_DecimalToInt16(&i16, v.data(), 6, 1, CONV_DECIMAL_PACKED), CONV_WARN_TRUNCATION);
    EXPECT_EQ(i16, -32767);
    uint16_t u16 = 0;
    const Bytes v65535 = Unpack("65535", false);
    EXPECT_EQ(CONV_DecimalToUInt16(&u16, v65535.data(), 5, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(u16, 65535);
    const Bytes v65536 = Unpack("65536", false);
    EXPECT_EQ(CONV_DecimalToUInt16(&u16, v65536.data(), 5, 0, CONV_DECIMAL_UNPACKED),
              CONV_ERR_OVERFLOW);

    uint32_t u32 = 0;
    const Bytes max = Pack("42949672950", false);
    EXPECT_EQ(CONV_DecimalToUInt32(&u32, max.data(), 11, 1, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(u32, 4294967295u);
    const Bytes neg = Pack("0", true);
    EXPECT_EQ(CONV_DecimalToUInt32(&u32, neg.data(), 1, 0, CONV_DECIMAL_PACKED), CONV_ERR_OVERFLOW);
}

TEST(DecimalToInteger, BadValueIsAConversionError) {
    int16_t value = 3;
    const Bytes bad = {0x1C, 0x3C};
    EXPECT_EQ(CONV_DecimalToInt16(&value, bad.data(), 3, 0, CONV_DECIMAL_PACKED),
              CONV_ERR_CONVERSION);
    EXPECT_EQ(value, 3);
}

struct Packed {
    uint32_t status;
    Bytes bytes;
    uint32_t precision;
    uint32_t scale;
};

Packed FromInt32(int32_t value, uint32_t size) {
    Packed r{0, Bytes(12, kSentinel), 0xDEAD, 0xDEAD};
    r.status = CONV_Int32ToDecimal(r.bytes.data(), value, size, &r.precision, &r.scale);
    return r;
}

Bytes Expect(const Bytes &written, std::size_t buffer = 12) {
    Bytes b = written;
    b.resize(buffer, kSentinel);
    return b;
}

TEST(Int32ToDecimal, OddDigitCountHasNoFraction) {
    Packed r = FromInt32(123, 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x3C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 0u);
}

TEST(Int32ToDecimal, EvenDigitCountGetsThePadFraction) {
    Packed r = FromInt32(-12, 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x0D}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 1u);
}

TEST(Int32ToDecimal, ExtremesAndTooSmallTargets) {
    Packed min = FromInt32(INT32_MIN, 6);
    EXPECT_EQ(min.status, CONV_OK);
    EXPECT_EQ(min.bytes, Expect({0x21, 0x47, 0x48, 0x36, 0x48, 0x0D}));
    EXPECT_EQ(min.precision, 11u);
    EXPECT_EQ(min.scale, 1u);
    EXPECT_EQ(FromInt32(INT32_MIN, 5).status, CONV_ERR_TARGET_TOO_SMALL);
    Packed zero = FromInt32(0, 1);
    EXPECT_EQ(zero.status, CONV_OK);
    EXPECT_EQ(zero.bytes, Expect({0x0C}));
    EXPECT_EQ(FromInt32(5, 0).status, CONV_ERR_TARGET_TOO_SMALL);
}

TEST(UInt32ToDecimal, LargestValue) {
    Packed r{0, Bytes(12, kSentinel), 0, 0};
    r.status = CONV_UInt32ToDecimal(r.bytes.data(), 4294967295u, 6, &r.precision, &r.scale);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x42, 0x94, 0x96, 0x72, 0x95, 0x0C}));
    EXPECT_EQ(r.precision, 11u);
    EXPECT_EQ(r.scale, 1u);
    EXPECT_EQ(CONV_UInt32ToDecimal(r.bytes.data(), 4294967295u, 5, &r.precision, &r.scale),
              CONV_ERR_TARGET_TOO_SMALL);
}

// Integer -> packed decimal -> text and -> integer again, for generated values: the text is the
// integer's own text, with ".0" for the pad of an even digit count.
TEST(DecimalRoundTrip, IntegersThroughPackedDecimal) {
    uint32_t seed = 99;
    auto next = [&seed]() {
        seed = seed * 1664525u + 1013904223u;
        return seed;
    };
    std::vector<uint32_t> values = {0, 1, 9, 10, 99, 100, 2147483647u, 2147483648u, 4294967295u};
    for (int k = 0; k < 3000; ++k) {
        const uint32_t r = next();
        values.push_back(r >> (r % 32));
    }
    for (uint32_t u : values) {
        const int32_t i = static_cast<int32_t>(u);
        char expect[32];
        std::snprintf(expect, sizeof expect, "%ld", static_cast<long>(i));
        std::string text = expect;
        const std::size_t digitCount = text.size() - (i < 0 ? 1 : 0);
        if (digitCount % 2 == 0) {
            text += ".0";
        }
        uint8_t value[8];
        uint32_t precision = 0;
        uint32_t scale = 0;
        ASSERT_EQ(CONV_Int32ToDecimal(value, i, sizeof value, &precision, &scale), CONV_OK) << i;
        char out[32];
        uint32_t length = 0;
        ASSERT_EQ(CONV_DecimalToString(out, value, sizeof out, precision, scale, '.',
                                       CONV_DECIMAL_PACKED, &length),
                  CONV_OK);
        ASSERT_STREQ(out, text.c_str());
        int32_t back = 0;
        ASSERT_EQ(CONV_DecimalToInt32(&back, value, precision, scale, CONV_DECIMAL_PACKED),
                  CONV_OK);
        ASSERT_EQ(back, i);

        std::snprintf(expect, sizeof expect, "%lu", static_cast<unsigned long>(u));
        text = expect;
        if (text.size() % 2 == 0) {
            text += ".0";
        }
        ASSERT_EQ(CONV_UInt32ToDecimal(value, u, sizeof value, &precision, &scale), CONV_OK);
        ASSERT_EQ(CONV_DecimalToString(out, value, sizeof out, precision, scale, '.',
                                       CONV_DECIMAL_PACKED, &length),
                  CONV_OK);
        ASSERT_STREQ(out, text.c_str());
        uint32_t ubcak = 0;
        ASSERT_EQ(CONV_DecimalToUInt32(&ubcak, value, precision, scale, CONV_DECIMAL_PACKED),
                  CONV_OK);
        ASSERT_EQ(ubcak, u);
    }
}

Packed FromDouble(double value, uint32_t size, std::size_t buffer = 12) {
    Packed r{0, Bytes(buffer, kSentinel), 0xDEAD, 0xDEAD};
    r.status = CONV_DoubleToDecimal(r.bytes.data(), value, size, &r.precision, &r.scale);
    return r;
}

TEST(DoubleToDecimal, WholeNumberKeepsItsPointAndNoFraction) {
    Packed r = FromDouble(5.0, 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x5C}));
    EXPECT_EQ(r.precision, 1u);
    EXPECT_EQ(r.scale, 0u);
    Packed forty = FromDouble(-40.0, 4);
    EXPECT_EQ(forty.status, CONV_OK);
    EXPECT_EQ(forty.bytes, Expect({0x40, 0x0D}));
    EXPECT_EQ(forty.precision, 3u);
    EXPECT_EQ(forty.scale, 1u);
}

TEST(DoubleToDecimal, ExactFractionsAreExact) {
    Packed half = FromDouble(0.5, 4);
    EXPECT_EQ(half.status, CONV_OK);
    EXPECT_EQ(half.bytes, Expect({0x05, 0x0C}));
    EXPECT_EQ(half.precision, 3u);
    EXPECT_EQ(half.scale, 2u);
    Packed r = FromDouble(-1.25, 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x5D}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 2u);
}

TEST(DoubleToDecimal, InexactValueIsCutToTheSize) {
    // 0.1 is written with fifty fraction digits: "0.1000000000000000055511151231257827..."
    Packed r = FromDouble(0.1, 4);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.bytes, Expect({0x01, 0x00, 0x00, 0x0C}));
    EXPECT_EQ(r.precision, 7u);
    EXPECT_EQ(r.scale, 6u);
    // With room for everything the exact binary value appears, up to the 50th digit.
    Packed all = FromDouble(0.1, 40, 40);
    EXPECT_EQ(all.status, CONV_OK);
    // "0." then 49 digits (the 50th is a trailing 0 and is dropped): 50 digits in all, and the
    // pad 0 after them counts as one more fraction digit.
    EXPECT_EQ(all.precision, 51u);
    EXPECT_EQ(all.scale, 50u);
    const Bytes expected = {0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                            0x55, 0x51, 0x11, 0x51, 0x23, 0x12, 0x57, 0x82, 0x70,
                            0x21, 0x18, 0x15, 0x83, 0x40, 0x45, 0x41, 0x0C};
    EXPECT_EQ(Bytes(all.bytes.begin(), all.bytes.begin() + 26), expected);
    EXPECT_EQ(all.bytes[26], kSentinel);
}

TEST(DoubleToDecimal, LargestDoublesAreWrittenInFull) {
    Packed big = FromDouble(1e300, 151, 160);
    EXPECT_EQ(big.status, CONV_OK);
    EXPECT_EQ(big.precision, 301u);
    EXPECT_EQ(big.scale, 0u);
    EXPECT_EQ(big.bytes[150] & 0x0F, 0x0C);
    EXPECT_EQ(big.bytes[151], kSentinel);
    EXPECT_EQ(FromDouble(1e300, 150, 160).status, CONV_ERR_TARGET_TOO_SMALL);
    const double max = std::numeric_limits<double>::max();
    Packed m = FromDouble(-max, 160, 160);
    EXPECT_EQ(m.status, CONV_OK);
    EXPECT_EQ(m.precision, 309u);
    EXPECT_EQ(m.bytes[0], 0x17);
    EXPECT_EQ(m.bytes[154] & 0x0F, 0x0D);
}

TEST(DoubleToDecimal, InfinityOverflowsAndNaNIsNoNumber) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(FromDouble(inf, 8).status, CONV_ERR_OVERFLOW);
    EXPECT_EQ(FromDouble(-inf, 8).status, CONV_ERR_OVERFLOW);
    Packed nan = FromDouble(std::numeric_limits<double>::quiet_NaN(), 8);
    EXPECT_EQ(nan.status, CONV_ERR_CONVERSION);
    EXPECT_EQ(nan.bytes, Expect({}));
}

TEST(DoubleToDecimal, TinyValuesBecomeZeroDigits) {
    // 1e-60 prints as fifty zeros after the point: "0." is all that stays.
    Packed r = FromDouble(1e-60, 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x0C}));
    EXPECT_EQ(r.precision, 1u);
    EXPECT_EQ(r.scale, 0u);
    Packed neg = FromDouble(-0.0, 4);
    EXPECT_EQ(neg.status, CONV_OK);
    EXPECT_EQ(neg.bytes, Expect({0x0D}));
}

// Generated decimals of up to 12 digits agree with strtod of their text, in both layouts.
TEST(DecimalToDouble, GeneratedValuesAgreeWithStrtod) {
    uint32_t seed = 4242;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0x7FFF;
    };
    for (int round = 0; round < 2000; ++round) {
        const std::size_t p = 1 + next() % 12;
        std::string digits;
        for (std::size_t k = 0; k < p; ++k) {
            digits.push_back(static_cast<char>('0' + next() % 10));
        }
        const std::size_t s = next() % (p + 1);
        const bool negative = next() % 2 == 1;
        const std::string text =
            (negative ? "-" : "") + digits.substr(0, p - s) + "." + digits.substr(p - s);
        const double expected = std::strtod(text.c_str(), nullptr);
        const Bytes packed = Pack(digits, negative);
        const Bytes unpacked = Unpack(digits, negative);
        double value = 0.0;
        ASSERT_EQ(CONV_DecimalToDouble(&value, packed.data(), static_cast<uint32_t>(p),
                                       static_cast<uint32_t>(s), CONV_DECIMAL_PACKED),
                  CONV_OK)
            << text;
        ASSERT_EQ(value, expected) << text;
        ASSERT_EQ(CONV_DecimalToDouble(&value, unpacked.data(), static_cast<uint32_t>(p),
                                       static_cast<uint32_t>(s), CONV_DECIMAL_UNPACKED),
                  CONV_OK)
            << text;
        ASSERT_EQ(value, expected) << text;
        // The integer routine truncates toward zero and warns exactly when a non-zero fraction
        // digit is present.
        if (p - s <= 9) {
            int32_t i = 0;
            const uint32_t status =
                CONV_DecimalToInt32(&i, packed.data(), static_cast<uint32_t>(p),
                                    static_cast<uint32_t>(s), CONV_DECIMAL_PACKED);
            const std::string fraction = digits.substr(p - s);
            const bool hasFraction = fraction.find_first_not_of('0') != std::string::npos;
            ASSERT_EQ(status, hasFraction ? CONV_WARN_TRUNCATION : CONV_OK) << text;
            const long whole = std::strtol(
                ((negative ? "-" : "") + (p == s ? std::string("0") : digits.substr(0, p - s)))
                    .c_str(),
                nullptr, 10);
            ASSERT_EQ(i, whole) << text;
        }
    }
}

// A negative value whose text is a point and zeros ("-.0") keeps only "-" after its fraction's
// zeros and the point go: that is read as "0", so even the unsigned targets take it.
TEST(DecimalToInteger, NegativeZeroFractionWithoutIntegerDigitIsZero) {
    uint8_t value[4];
    uint32_t precision = 0;
    uint32_t scale = 0;
    ASSERT_EQ(CONV_StringToDecimal(value, "-.0", sizeof value, &precision, &scale,
                                   CONV_NUM_DECIMAL_POINT, '.'),
              CONV_OK);
    char text[16];
    uint32_t length = 0;
    ASSERT_EQ(CONV_DecimalToString(text, value, sizeof text, precision, scale, '.',
                                   CONV_DECIMAL_PACKED, &length),
              CONV_OK);
    ASSERT_STREQ(text, "-.0");
    uint32_t u32 = 7;
    EXPECT_EQ(CONV_DecimalToUInt32(&u32, value, precision, scale, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(u32, 0u);
    uint16_t u16 = 7;
    EXPECT_EQ(CONV_DecimalToUInt16(&u16, value, precision, scale, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(u16, 0u);
    uint8_t u8 = 7;
    EXPECT_EQ(CONV_DecimalToUInt8(&u8, value, precision, scale, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(u8, 0u);
    int32_t i32 = 7;
    EXPECT_EQ(CONV_DecimalToInt32(&i32, value, precision, scale, CONV_DECIMAL_PACKED), CONV_OK);
    EXPECT_EQ(i32, 0);
}

}  // namespace
