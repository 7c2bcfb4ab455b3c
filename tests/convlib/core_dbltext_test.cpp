/* SPDX-License-Identifier: MIT */
// Double to text in the scientific, fixed and general styles.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include <nlssupport/convlib.h>

namespace {

constexpr uint32_t kSci = CONV_DOUBLE_SCIENTIFIC;
constexpr uint32_t kFixed = CONV_DOUBLE_FIXED;
constexpr uint32_t kGeneral = CONV_DOUBLE_GENERAL;

struct Case {
    double value;
    uint32_t size;
    uint32_t style;
    uint32_t precision;
    char point;
    uint32_t status;
    const char *out;  // expected text for CONV_OK and the warning
    uint32_t length;
};

const Case kCases[] = {
    {1.5, 20, kSci, 2, ',', CONV_OK, "1,50E", 5},
    {-0.00012, 20, kSci, 1, '.', CONV_OK, "-1.2E-4", 7},
    {123456.789, 20, kSci, 6, '.', CONV_OK, "1.234568E5", 10},
    {123456.789, 8, kSci, 6, '.', CONV_WARN_TRUNCATION, "1.234E5", 10},
    {123456.789, 4, kSci, 6, '.', CONV_WARN_TRUNCATION, "1E5", 10},
    {123456.789, 3, kSci, 6, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 10},
    {-123456.789, 20, kSci, 3, '.', CONV_OK, "-1.235E5", 8},
    {-123456.789, 5, kSci, 3, '.', CONV_WARN_TRUNCATION, "-1E5", 8},
    {-123456.789, 4, kSci, 3, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 8},
    {0.000123, 20, kSci, 2, '.', CONV_OK, "1.23E-4", 7},
    {0.000123, 5, kSci, 2, '.', CONV_WARN_TRUNCATION, "1E-4", 7},
    {0.000123, 4, kSci, 2, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 7},
    {0.0, 20, kSci, 3, '.', CONV_OK, "0.000E", 6},
    {0.0, 3, kSci, 3, '.', CONV_WARN_TRUNCATION, "0E", 6},
    {0.0, 2, kSci, 3, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 6},
    {1e100, 20, kSci, 1, '.', CONV_OK, "1.0E100", 7},
    {1e100, 6, kSci, 1, '.', CONV_WARN_TRUNCATION, "1E100", 7},
    {1e100, 5, kSci, 1, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 7},
    {1e-300, 20, kSci, 1, '.', CONV_OK, "1.0E-300", 8},
    {1e-300, 7, kSci, 1, '.', CONV_WARN_TRUNCATION, "1E-300", 8},
    {1e-300, 6, kSci, 1, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 8},
    {2.0, 20, kSci, 0, '.', CONV_OK, "2E", 2},
    {15.0, 20, kSci, 0, '.', CONV_OK, "2E1", 3},  // printf's rounding of the digit
    // Zero counts as "0 or more" also with its sign, so the shortest form is taken as two
    // characters and the cut keeps only the sign before "E".
    {-0.0, 20, kSci, 1, '.', CONV_OK, "-0.0E", 5},
    {-0.0, 3, kSci, 1, '.', CONV_WARN_TRUNCATION, "-E", 5},

    {3.14159, 20, kFixed, 2, '.', CONV_OK, "3.14", 4},
    {3.14159, 20, kFixed, 2, ',', CONV_OK, "3,14", 4},
    {3.14159, 4, kFixed, 2, '.', CONV_WARN_TRUNCATION, "3.1", 4},
    {3.14159, 3, kFixed, 2, '.', CONV_WARN_TRUNCATION, "3.", 4},
    {-0.5, 20, kFixed, 3, '.', CONV_OK, "-0.500", 6},
    {0.5, 20, kFixed, 1, '.', CONV_OK, "0.5", 3},
    {1234.25, 20, kFixed, 0, '.', CONV_OK, "1234", 4},
    {1234.25, 4, kFixed, 0, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 4},
    {-1234.25, 6, kFixed, 1, '.', CONV_WARN_TRUNCATION, "-1234", 7},

    {1234.5, 20, kGeneral, 6, '.', CONV_OK, "1234.5", 6},
    {1234.5, 20, kGeneral, 6, ',', CONV_OK, "1234,5", 6},
    {1234.5, 5, kGeneral, 6, '.', CONV_WARN_TRUNCATION, "1234", 6},
    // The plain number does not fit: scientific, keeping the plain number's length.
    {1234.5, 4, kGeneral, 6, '.', CONV_WARN_TRUNCATION, "1E3", 6},
    {1234.5, 2, kGeneral, 6, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 6},
    {1e20, 20, kGeneral, 6, '.', CONV_OK, "1E20", 4},
    {1e20, 4, kGeneral, 6, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 4},
    {1.25e20, 20, kGeneral, 6, ',', CONV_OK, "1,25E20", 7},
    {1.25e20, 5, kGeneral, 6, ',', CONV_WARN_TRUNCATION, "1E20", 7},
    {0.0001, 20, kGeneral, 6, '.', CONV_OK, "0.0001", 6},
    {0.00001, 20, kGeneral, 6, '.', CONV_OK, "1E-5", 4},
    {-0.00001, 20, kGeneral, 6, '.', CONV_OK, "-1E-5", 5},
    {100.0, 20, kGeneral, 6, '.', CONV_OK, "100", 3},
};

TEST(CoreDoubleToString, ListedCases) {
    for (const Case &c : kCases) {
        char out[64];
        std::memset(out, '#', sizeof out);
        uint32_t length = 999;
        const uint32_t status =
            CONV_DoubleToString(out, c.value, c.size, c.style, c.precision, c.point, &length);
        EXPECT_EQ(status, c.status) << c.value << " style " << c.style << " size " << c.size;
        EXPECT_EQ(length, c.length) << c.value << " style " << c.style << " size " << c.size;
        if (c.out != nullptr) {
            EXPECT_STREQ(out, c.out) << c.value << " style " << c.style << " size " << c.size;
        }
        for (size_t k = c.size; k < sizeof out; ++k) {
            ASSERT_EQ(out[k], '#') << c.value << " wrote past size " << c.size;
        }
    }
}

TEST(CoreDoubleToString, RefusedArgumentsLeaveTheLength) {
    char out[32];
    uint32_t length = 999;
    EXPECT_EQ(CONV_DoubleToString(out, 1.0, 1, kSci, 2, '.', &length), CONV_ERR_CONVERSION);
    EXPECT_EQ(CONV_DoubleToString(out, 1.0, 0, kSci, 2, '.', &length), CONV_ERR_CONVERSION);
    EXPECT_EQ(CONV_DoubleToString(out, 1.0, 20, kSci, 101, '.', &length), CONV_ERR_CONVERSION);
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(CONV_DoubleToString(out, inf, 20, kSci, 2, '.', &length), CONV_ERR_OVERFLOW);
    EXPECT_EQ(CONV_DoubleToString(out, -inf, 20, kFixed, 2, '.', &length), CONV_ERR_OVERFLOW);
    EXPECT_EQ(length, 999u);
}

TEST(CoreDoubleToString, UnknownStyleAndNaNAreConversionErrors) {
    char out[32];
    uint32_t length = 999;
    EXPECT_EQ(CONV_DoubleToString(out, 1.0, 20, 0, 2, '.', &length), CONV_ERR_CONVERSION);
    EXPECT_EQ(length, 0u);
    length = 999;
    EXPECT_EQ(CONV_DoubleToString(out, 1.0, 20, 4, 2, '.', &length), CONV_ERR_CONVERSION);
    EXPECT_EQ(length, 0u);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(CONV_DoubleToString(out, nan, 20, kSci, 2, '.', &length), CONV_ERR_CONVERSION);
    EXPECT_EQ(CONV_DoubleToString(out, nan, 20, kGeneral, 2, '.', &length), CONV_ERR_CONVERSION);
}

TEST(CoreDoubleToString, LargestPrecisionAndValue) {
    std::string out(600, '#');
    uint32_t length = 0;
    EXPECT_EQ(CONV_DoubleToString(out.data(), 1.0, 200, kFixed, 100, '.', &length), CONV_OK);
    EXPECT_EQ(length, 102u);
    EXPECT_EQ(std::string(out.c_str()), "1." + std::string(100, '0'));
    EXPECT_EQ(
        CONV_DoubleToString(out.data(), -1.7976931348623157e308, 600, kFixed, 100, '.', &length),
        CONV_OK);
    EXPECT_EQ(length, 1u + 309u + 1u + 100u);
    EXPECT_EQ(CONV_DoubleToString(out.data(), 1.7976931348623157e308, 600, kSci, 100, '.', &length),
              CONV_OK);
    EXPECT_EQ(length, 1u + 1u + 100u + 4u);
}

// The exponent rewriting done independently: "+" dropped, leading zeros dropped.
std::string Shorten(const std::string &printed) {
    const size_t e = printed.find('E');
    const long exponent = std::strtol(printed.c_str() + e + 1, nullptr, 10);
    std::string result = printed.substr(0, e + 1);
    if (exponent < 0)
        result += "-" + std::to_string(-exponent);
    if (exponent > 0)
        result += std::to_string(exponent);
    return result;
}

TEST(CoreDoubleToString, AgreesWithPrintfOnGeneratedValues) {
    uint64_t state = 2026;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        uint64_t bits = state;
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        if (i % 2 == 0) {
            // Everyday magnitudes as well as the whole range.
            value = std::ldexp(static_cast<double>(state >> 11) / 9007199254740992.0,
                               static_cast<int>(state % 80) - 40) *
                    ((state & 1) ? -1.0 : 1.0);
        }
        const uint32_t precision = static_cast<uint32_t>((state >> 7) % 18);
        char printed[600];
        std::snprintf(printed, sizeof printed, "%.*E", static_cast<int>(precision), value);
        const std::string expected = Shorten(printed);
        char out[600];
        uint32_t length = 0;
        EXPECT_EQ(CONV_DoubleToString(out, value, sizeof out, kSci, precision, '.', &length),
                  CONV_OK);
        EXPECT_EQ(std::string(out), expected);
        EXPECT_EQ(length, expected.size());

        // General style: the plain number as printed, or the shortened scientific form.
        std::snprintf(printed, sizeof printed, "%.*G", static_cast<int>(precision), value);
        const std::string general =
            std::strchr(printed, 'E') != nullptr ? Shorten(printed) : std::string(printed);
        EXPECT_EQ(CONV_DoubleToString(out, value, sizeof out, kGeneral, precision, '.', &length),
                  CONV_OK);
        EXPECT_EQ(std::string(out), general);
        EXPECT_EQ(length, general.size());

        if (std::fabs(value) < 1e30) {
            std::snprintf(printed, sizeof printed, "%.*f", static_cast<int>(precision), value);
            EXPECT_EQ(CONV_DoubleToString(out, value, sizeof out, kFixed, precision, '.', &length),
                      CONV_OK);
            EXPECT_STREQ(out, printed);
            EXPECT_EQ(length, std::strlen(printed));
        }
    }
}

}  // namespace
