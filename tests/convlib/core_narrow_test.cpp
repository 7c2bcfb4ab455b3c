/* SPDX-License-Identifier: MIT */
// Numeric narrowing: bounds, their neighbours one ulp inside and outside, truncation toward
// zero, NaN and untouched targets on overflow.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include <nlssupport/convlib.h>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kFloatBound = 3.4028238720334565e38;

double Up(double v) {
    return std::nextafter(v, kInf);
}
double Down(double v) {
    return std::nextafter(v, -kInf);
}

uint64_t Bits(double v) {
    uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    return bits;
}

// Runs fn on value with a target prefilled with sentinel; checks status and stored value (or an
// untouched target on overflow).
template <typename T>
void Expect(uint32_t (*fn)(T *, double), double value, uint32_t status, T expected,
            const char *what) {
    const T sentinel = static_cast<T>(0x5A);
    T target = sentinel;
    EXPECT_EQ(fn(&target, value), status) << what << " value " << value;
    if (status == CONV_ERR_OVERFLOW) {
        EXPECT_EQ(target, sentinel) << what << " target written on overflow, value " << value;
    } else {
        EXPECT_EQ(target, expected) << what << " value " << value;
    }
}

// Every double-to-integer routine: both bounds exact, one ulp inside (a fraction: truncation),
// one ulp outside (overflow), far outside and the infinities.
template <typename T>
void CheckDoubleBounds(uint32_t (*fn)(T *, double), double lower, double upper, const char *what) {
    Expect<T>(fn, lower, CONV_OK, static_cast<T>(lower), what);
    Expect<T>(fn, upper, CONV_OK, static_cast<T>(upper), what);
    Expect<T>(fn, Down(lower), CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, Up(upper), CONV_ERR_OVERFLOW, 0, what);
    if (lower == 0.0) {
        // One ulp above 0 is the smallest subnormal: truncated to 0.
        Expect<T>(fn, Up(lower), CONV_WARN_TRUNCATION, 0, what);
        Expect<T>(fn, -0.0, CONV_OK, 0, what);
        Expect<T>(fn, -0.25, CONV_ERR_OVERFLOW, 0, what);
    } else {
        Expect<T>(fn, Up(lower), CONV_WARN_TRUNCATION, static_cast<T>(lower + 1.0), what);
        Expect<T>(fn, lower - 0.5, CONV_ERR_OVERFLOW, 0, what);
    }
    Expect<T>(fn, Down(upper), CONV_WARN_TRUNCATION, static_cast<T>(upper - 1.0), what);
    Expect<T>(fn, upper + 0.5, CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, kInf, CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, -kInf, CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, DBL_MAX, CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, -DBL_MAX, CONV_ERR_OVERFLOW, 0, what);
    Expect<T>(fn, 0.0, CONV_OK, 0, what);
    Expect<T>(fn, 1.0, CONV_OK, 1, what);
    Expect<T>(fn, 1.75, CONV_WARN_TRUNCATION, 1, what);
    Expect<T>(fn, 0.9999999, CONV_WARN_TRUNCATION, 0, what);
}

TEST(CoreNarrow, DoubleToIntegerBoundsAndNeighbours) {
    CheckDoubleBounds<int32_t>(CONV_DoubleToInt32, -2147483648.0, 2147483647.0, "Int32");
    CheckDoubleBounds<uint32_t>(CONV_DoubleToUInt32, 0.0, 4294967295.0, "UInt32");
    CheckDoubleBounds<int16_t>(CONV_DoubleToInt16, -32768.0, 32767.0, "Int16");
    CheckDoubleBounds<uint16_t>(CONV_DoubleToUInt16, 0.0, 65535.0, "UInt16");
    CheckDoubleBounds<int8_t>(CONV_DoubleToInt8, -128.0, 127.0, "Int8");
    CheckDoubleBounds<uint8_t>(CONV_DoubleToUInt8, 0.0, 255.0, "UInt8");
}

TEST(CoreNarrow, DoubleToInt32ListedCases) {
    Expect<int32_t>(CONV_DoubleToInt32, 2147483647.0, CONV_OK, 2147483647, "a");
    Expect<int32_t>(CONV_DoubleToInt32, 2147483647.5, CONV_ERR_OVERFLOW, 0, "b");
    Expect<int32_t>(CONV_DoubleToInt32, -2147483648.5, CONV_ERR_OVERFLOW, 0, "c");
    Expect<int32_t>(CONV_DoubleToInt32, -2147483648.0, CONV_OK, INT32_MIN, "d");
    Expect<int32_t>(CONV_DoubleToInt32, -2.7, CONV_WARN_TRUNCATION, -2, "e");
    Expect<int32_t>(CONV_DoubleToInt32, 2.7, CONV_WARN_TRUNCATION, 2, "f");
    Expect<int32_t>(CONV_DoubleToInt32, -0.5, CONV_WARN_TRUNCATION, 0, "g");
    Expect<int32_t>(CONV_DoubleToInt32, 2147483646.9999998, CONV_WARN_TRUNCATION, 2147483646, "h");
}

TEST(CoreNarrow, DoubleToSmallTypesListedCases) {
    Expect<uint8_t>(CONV_DoubleToUInt8, 255.0, CONV_OK, 255, "a");
    Expect<uint8_t>(CONV_DoubleToUInt8, 255.25, CONV_ERR_OVERFLOW, 0, "b");
    Expect<uint8_t>(CONV_DoubleToUInt8, 254.9, CONV_WARN_TRUNCATION, 254, "c");
    Expect<uint8_t>(CONV_DoubleToUInt8, -0.1, CONV_ERR_OVERFLOW, 0, "d");
    Expect<int8_t>(CONV_DoubleToInt8, -128.0, CONV_OK, -128, "e");
    Expect<int8_t>(CONV_DoubleToInt8, -128.5, CONV_ERR_OVERFLOW, 0, "f");
    Expect<int8_t>(CONV_DoubleToInt8, -127.5, CONV_WARN_TRUNCATION, -127, "g");
    Expect<uint32_t>(CONV_DoubleToUInt32, 4294967295.0, CONV_OK, 4294967295u, "h");
    Expect<uint32_t>(CONV_DoubleToUInt32, 4294967295.5, CONV_ERR_OVERFLOW, 0, "i");
    Expect<uint32_t>(CONV_DoubleToUInt32, 3000000000.75, CONV_WARN_TRUNCATION, 3000000000u, "j");
    Expect<int16_t>(CONV_DoubleToInt16, -32768.0, CONV_OK, -32768, "k");
    Expect<int16_t>(CONV_DoubleToInt16, 32767.5, CONV_ERR_OVERFLOW, 0, "l");
    Expect<uint16_t>(CONV_DoubleToUInt16, 65535.0, CONV_OK, 65535, "m");
    Expect<uint16_t>(CONV_DoubleToUInt16, -1e-300, CONV_ERR_OVERFLOW, 0, "n");
}

TEST(CoreNarrow, NaNPassesBothBoundsAsATruncation) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    int32_t i32 = 7;
    EXPECT_EQ(CONV_DoubleToInt32(&i32, nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(i32, INT32_MIN);  // the processor's "integer indefinite" value
    uint32_t u32 = 7;
    EXPECT_EQ(CONV_DoubleToUInt32(&u32, nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(u32, 0u);
    int16_t i16 = 7;
    EXPECT_EQ(CONV_DoubleToInt16(&i16, nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(i16, 0);
    uint16_t u16 = 7;
    EXPECT_EQ(CONV_DoubleToUInt16(&u16, nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(u16, 0);
    int8_t i8 = 7;
    EXPECT_EQ(CONV_DoubleToInt8(&i8, -nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(i8, 0);
    uint8_t u8 = 7;
    EXPECT_EQ(CONV_DoubleToUInt8(&u8, nan), CONV_WARN_TRUNCATION);
    EXPECT_EQ(u8, 0);
}

TEST(CoreNarrow, DoubleToInt32AgreesWithTruncationOnManyValues) {
    // Deterministic values across and around the range; the expected result is computed from
    // the rules with std::trunc.
    uint64_t state = 0x9E3779B97F4A7C15ull;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        const double scale = (i % 3 == 0) ? 4.5e9 : (i % 3 == 1 ? 1000.0 : 70000.0);
        const double value =
            (static_cast<double>(state >> 11) / 9007199254740992.0 - 0.5) * 2.0 * scale;
        int32_t target = 12345;
        const uint32_t status = CONV_DoubleToInt32(&target, value);
        if (value < -2147483648.0 || value > 2147483647.0) {
            EXPECT_EQ(status, CONV_ERR_OVERFLOW) << value;
            EXPECT_EQ(target, 12345);
        } else {
            const double t = std::trunc(value);
            EXPECT_EQ(target, static_cast<int32_t>(t)) << value;
            EXPECT_EQ(status, t == value ? CONV_OK : CONV_WARN_TRUNCATION) << value;
        }
        int16_t small = 99;
        const uint32_t smallStatus = CONV_DoubleToInt16(&small, value);
        if (value < -32768.0 || value > 32767.0) {
            EXPECT_EQ(smallStatus, CONV_ERR_OVERFLOW) << value;
            EXPECT_EQ(small, 99);
        } else {
            EXPECT_EQ(small, static_cast<int16_t>(std::trunc(value))) << value;
        }
    }
}

TEST(CoreNarrow, DoubleToFloatBounds) {
    float target = 5.0f;
    // The bound itself (bits 0x47F000000FFFFFE0) is accepted; it rounds beyond the largest float.
    EXPECT_EQ(Bits(kFloatBound), 0x47F000000FFFFFE0ull);
    EXPECT_EQ(CONV_DoubleToFloat(&target, kFloatBound), CONV_OK);
    EXPECT_TRUE(std::isinf(target) && target > 0);
    target = 5.0f;
    EXPECT_EQ(CONV_DoubleToFloat(&target, Up(kFloatBound)), CONV_ERR_OVERFLOW);
    EXPECT_EQ(target, 5.0f);
    EXPECT_EQ(CONV_DoubleToFloat(&target, Down(kFloatBound)), CONV_OK);
    EXPECT_TRUE(std::isinf(target));
    EXPECT_EQ(CONV_DoubleToFloat(&target, -kFloatBound), CONV_OK);
    EXPECT_TRUE(std::isinf(target) && target < 0);
    target = 5.0f;
    EXPECT_EQ(CONV_DoubleToFloat(&target, Down(-kFloatBound)), CONV_ERR_OVERFLOW);
    EXPECT_EQ(target, 5.0f);
    EXPECT_EQ(CONV_DoubleToFloat(&target, Up(-kFloatBound)), CONV_OK);
    EXPECT_TRUE(std::isinf(target) && target < 0);
    EXPECT_EQ(CONV_DoubleToFloat(&target, static_cast<double>(FLT_MAX)), CONV_OK);
    EXPECT_EQ(target, FLT_MAX);
    EXPECT_EQ(CONV_DoubleToFloat(&target, -static_cast<double>(FLT_MAX)), CONV_OK);
    EXPECT_EQ(target, -FLT_MAX);
    // Just above the largest float but below half an ulp: rounds back to it.
    EXPECT_EQ(CONV_DoubleToFloat(&target, Up(static_cast<double>(FLT_MAX))), CONV_OK);
    EXPECT_EQ(target, FLT_MAX);
    target = 5.0f;
    EXPECT_EQ(CONV_DoubleToFloat(&target, 1e39), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_DoubleToFloat(&target, -1e39), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_DoubleToFloat(&target, kInf), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_DoubleToFloat(&target, -kInf), CONV_ERR_OVERFLOW);
    EXPECT_EQ(target, 5.0f);
}

TEST(CoreNarrow, DoubleToFloatHasNoUnderflowTest) {
    float target = 5.0f;
    EXPECT_EQ(CONV_DoubleToFloat(&target, 1e-50), CONV_OK);
    EXPECT_EQ(target, 0.0f);
    EXPECT_EQ(CONV_DoubleToFloat(&target, 1e-40), CONV_OK);
    EXPECT_EQ(target, static_cast<float>(1e-40));
    EXPECT_GT(target, 0.0f);
    EXPECT_EQ(CONV_DoubleToFloat(&target, 0.1), CONV_OK);
    EXPECT_EQ(target, 0.1f);
    EXPECT_EQ(CONV_DoubleToFloat(&target, std::numeric_limits<double>::quiet_NaN()), CONV_OK);
    EXPECT_TRUE(std::isnan(target));
}

TEST(CoreNarrow, IntegersToFloatingAreExactOrNearest) {
    double d = 0;
    float f = 0;
    EXPECT_EQ(CONV_Int32ToDouble(&d, INT32_MIN), CONV_OK);
    EXPECT_EQ(d, -2147483648.0);
    EXPECT_EQ(CONV_Int32ToDouble(&d, INT32_MAX), CONV_OK);
    EXPECT_EQ(d, 2147483647.0);
    EXPECT_EQ(CONV_Int32ToFloat(&f, 16777217), CONV_OK);
    EXPECT_EQ(f, 16777216.0f);
    EXPECT_EQ(CONV_Int32ToFloat(&f, INT32_MAX), CONV_OK);
    EXPECT_EQ(f, 2147483648.0f);
    EXPECT_EQ(CONV_UInt32ToDouble(&d, 4294967295u), CONV_OK);
    EXPECT_EQ(d, 4294967295.0);
    EXPECT_EQ(CONV_UInt32ToDouble(&d, 2147483648u), CONV_OK);
    EXPECT_EQ(d, 2147483648.0);
    EXPECT_EQ(CONV_UInt32ToFloat(&f, 4294967295u), CONV_OK);
    EXPECT_EQ(f, 4294967296.0f);
    EXPECT_EQ(CONV_UInt32ToFloat(&f, 2147483648u), CONV_OK);
    EXPECT_EQ(f, 2147483648.0f);
    EXPECT_EQ(CONV_UInt32ToFloat(&f, 16777217u), CONV_OK);
    EXPECT_EQ(f, 16777216.0f);
}

// Checks an integer-to-integer routine over the neighbours of its bounds and the extremes.
template <typename S, typename T>
void CheckIntegerRange(uint32_t (*fn)(T *, S), int64_t lower, int64_t upper, const char *what) {
    const int64_t probes[] = {lower - 1,
                              lower,
                              lower + 1,
                              upper - 1,
                              upper,
                              upper + 1,
                              0,
                              static_cast<int64_t>(std::numeric_limits<S>::min()),
                              static_cast<int64_t>(std::numeric_limits<S>::max()),
                              -1,
                              1};
    for (int64_t probe : probes) {
        if (probe < static_cast<int64_t>(std::numeric_limits<S>::min()) ||
            probe > static_cast<int64_t>(std::numeric_limits<S>::max())) {
            continue;
        }
        const T sentinel = static_cast<T>(0x5A);
        T target = sentinel;
        const uint32_t status = fn(&target, static_cast<S>(probe));
        if (probe < lower || probe > upper) {
            EXPECT_EQ(status, CONV_ERR_OVERFLOW) << what << " " << probe;
            EXPECT_EQ(target, sentinel) << what << " " << probe;
        } else {
            EXPECT_EQ(status, CONV_OK) << what << " " << probe;
            EXPECT_EQ(static_cast<int64_t>(target), probe) << what << " " << probe;
        }
    }
}

TEST(CoreNarrow, IntegerToIntegerBoundsAndNeighbours) {
    CheckIntegerRange<int32_t, uint32_t>(CONV_Int32ToUInt32, 0, 2147483647, "Int32ToUInt32");
    CheckIntegerRange<int32_t, int16_t>(CONV_Int32ToInt16, -32768, 32767, "Int32ToInt16");
    CheckIntegerRange<int32_t, uint16_t>(CONV_Int32ToUInt16, 0, 65535, "Int32ToUInt16");
    CheckIntegerRange<int32_t, int8_t>(CONV_Int32ToInt8, -128, 127, "Int32ToInt8");
    CheckIntegerRange<int32_t, uint8_t>(CONV_Int32ToUInt8, 0, 255, "Int32ToUInt8");
    CheckIntegerRange<uint32_t, int16_t>(CONV_UInt32ToInt16, 0, 32767, "UInt32ToInt16");
    CheckIntegerRange<uint32_t, uint16_t>(CONV_UInt32ToUInt16, 0, 65535, "UInt32ToUInt16");
    CheckIntegerRange<uint32_t, int8_t>(CONV_UInt32ToInt8, 0, 127, "UInt32ToInt8");
    CheckIntegerRange<uint32_t, uint8_t>(CONV_UInt32ToUInt8, 0, 255, "UInt32ToUInt8");
}

TEST(CoreNarrow, IntegerToIntegerListedCases) {
    uint16_t u16 = 9;
    EXPECT_EQ(CONV_Int32ToUInt16(&u16, -1), CONV_ERR_OVERFLOW);
    EXPECT_EQ(u16, 9);
    int16_t i16 = 9;
    EXPECT_EQ(CONV_Int32ToInt16(&i16, -32768), CONV_OK);
    EXPECT_EQ(i16, -32768);
    i16 = 9;
    EXPECT_EQ(CONV_Int32ToInt16(&i16, 32768), CONV_ERR_OVERFLOW);
    EXPECT_EQ(i16, 9);
    // The offset test must not wrap for the extremes.
    EXPECT_EQ(CONV_Int32ToInt16(&i16, INT32_MAX), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_Int32ToInt16(&i16, INT32_MAX - 32768), CONV_ERR_OVERFLOW);
    int8_t i8 = 9;
    EXPECT_EQ(CONV_Int32ToInt8(&i8, INT32_MIN), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_Int32ToInt8(&i8, INT32_MAX), CONV_ERR_OVERFLOW);
    EXPECT_EQ(i8, 9);
}

TEST(CoreNarrow, UInt32ToInt32StoresTheLowSixteenBitsSignExtended) {
    struct Case {
        uint32_t value;
        uint32_t status;
        int32_t stored;
    };
    const Case cases[] = {
        {0u, CONV_OK, 0},
        {1u, CONV_OK, 1},
        {32767u, CONV_OK, 32767},
        {32768u, CONV_OK, -32768},
        {40000u, CONV_OK, -25536},
        {65535u, CONV_OK, -1},
        {65536u, CONV_OK, 0},
        {70000u, CONV_OK, 4464},
        {2147483647u, CONV_OK, -1},
        {2147483648u, CONV_ERR_OVERFLOW, 0},
        {4294967295u, CONV_ERR_OVERFLOW, 0},
    };
    for (const Case &c : cases) {
        int32_t target = 0x5A5A5A5A;
        EXPECT_EQ(CONV_UInt32ToInt32(&target, c.value), c.status) << c.value;
        EXPECT_EQ(target, c.status == CONV_OK ? c.stored : 0x5A5A5A5A) << c.value;
    }
}

}  // namespace
