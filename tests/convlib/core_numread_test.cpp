/* SPDX-License-Identifier: MIT */
// Text to double and to integer where the C library's own reading could differ: every rounding
// mode, a locale whose decimal point is not ".", signed zeros, values at the ends of the range
// and at halfway points, errno after the call, and the plain integer texts around nine digits.
#include <gtest/gtest.h>
#include <nlssupport/convlib.h>

#include <cerrno>
#include <cfenv>
#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr uint32_t kPoint = CONV_NUM_DECIMAL_POINT;
constexpr uint32_t kExp = CONV_NUM_EXPONENT;

uint64_t Bits(double v) {
    uint64_t b = 0;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

// What the conversion gives according to its definition: strtod on the text with the point made
// "." (the texts below have no blanks, "+" or "D"), and the status from errno and the value.
struct Expected {
    double value;
    uint32_t status;
    int error;
};

Expected FromStrtod(const std::string &text) {
    errno = 0;
    const double value = std::strtod(text.c_str(), nullptr);
    const int error = errno;
    uint32_t status = CONV_OK;
    if (error != 0 && std::fabs(value) >= DBL_MAX) {
        status = CONV_ERR_OVERFLOW;
    } else if (error != 0 && value == 0.0) {
        status = CONV_WARN_ROUND_TO_ZERO;
    }
    return {value, status, error};
}

// Texts of every kind the conversion reads: short and long, exact and inexact, at halfway
// points, around the largest and smallest doubles, zeros of both signs.
const std::vector<std::string> &Texts() {
    static const std::vector<std::string> texts = [] {
        std::vector<std::string> t = {
            "0",
            "-0",
            "0.000",
            "-0.0e5",
            "1",
            "-1",
            "12.5",
            "0.1",
            "-0.1",
            "0.3",
            "2.5e-3",
            "3.14159",
            "123456789012345",
            "9007199254740992",
            "9007199254740993",
            "9007199254740995",
            "-9007199254740993",
            "1e22",
            "1e23",
            "-1e23",
            "4.35e-22",
            "1.7976931348623157e308",
            "1.7976931348623158e308",
            "1.7976931348623159e308",
            "-1.7976931348623159e308",
            "2.2250738585072014e-308",
            "2.2250738585072011e-308",
            "4.9406564584124654e-324",
            "2.4703282292062328e-324",
            "2.4703282292062327e-324",
            "1e-400",
            "-1e-400",
            "1e400",
            "123456789012345678901234567890",
            "0.000000000000000000000000000001234567890123456789",
            "1.00000000000000011102230246251565404236316680908203125",
            "1.00000000000000011102230246251565404236316680908203124",
            "1.00000000000000011102230246251565404236316680908203126",
            "6.02214076e23",
            "-6.62607015e-34",
        };
        // Numbers of 1 to 20 digits with the point anywhere and small exponents.
        uint32_t x = 12345u;
        for (int i = 0; i < 2000; ++i) {
            std::string s;
            x = x * 1103515245u + 12345u;
            if (x & 0x10000u) {
                s += '-';
            }
            const int digits = 1 + static_cast<int>((x >> 8) % 20u);
            const int pointAt = static_cast<int>((x >> 20) % static_cast<uint32_t>(digits + 1));
            for (int d = 0; d < digits; ++d) {
                if (d == pointAt) {
                    s += '.';
                }
                x = x * 1103515245u + 12345u;
                s += static_cast<char>('0' + (x >> 16) % 10u);
            }
            if (x & 0x200000u) {
                s += 'e' + std::to_string(static_cast<int>((x >> 3) % 61u) - 30);
            }
            t.push_back(s);
        }
        return t;
    }();
    return texts;
}

void ExpectAsStrtod(const std::string &text, char point, const char *mode) {
    const Expected want = FromStrtod(text);
    std::string ours = text;
    const size_t at = ours.find('.');
    if (at != std::string::npos) {
        ours[at] = point;
    }
    double value = 77.0;
    errno = EDOM;
    const uint32_t status = CONV_StringToDouble(&value, ours.c_str(), kPoint | kExp, point);
    const int error = errno;
    EXPECT_EQ(status, want.status) << ours << " " << mode;
    EXPECT_EQ(Bits(value), Bits(want.value)) << ours << " " << mode << ": " << value;
    EXPECT_EQ(error, want.error) << ours << " " << mode;
}

TEST(CoreNumRead, DoubleIsStrtodsInEveryRoundingMode) {
    const struct {
        int mode;
        const char *name;
    } modes[] = {{FE_TONEAREST, "to nearest"},
                 {FE_UPWARD, "upward"},
                 {FE_DOWNWARD, "downward"},
                 {FE_TOWARDZERO, "toward zero"}};
    for (const auto &m : modes) {
        ASSERT_EQ(std::fesetround(m.mode), 0);
        for (const std::string &text : Texts()) {
            ExpectAsStrtod(text, '.', m.name);
            ExpectAsStrtod(text, ',', m.name);
        }
    }
    std::fesetround(FE_TONEAREST);
}

TEST(CoreNumRead, SignedZerosKeepTheirSign) {
    for (const char *text : {"-0", "-0.0", "-.0e9", "-0e-999", "- 0"}) {
        double value = 1.0;
        EXPECT_EQ(CONV_StringToDouble(&value, text, kPoint | kExp, '.'), CONV_OK) << text;
        EXPECT_EQ(Bits(value), Bits(-0.0)) << text;
    }
}

TEST(CoreNumRead, ErrnoIsWhatStrtodLeaves) {
    double value = 0;
    errno = EDOM;
    EXPECT_EQ(CONV_StringToDouble(&value, "12.5", kPoint, '.'), CONV_OK);
    EXPECT_EQ(errno, 0);
    errno = EDOM;
    // A subnormal value: strtod reports the range, the conversion keeps the value and CONV_OK.
    EXPECT_EQ(CONV_StringToDouble(&value, "4e-320", kExp, '.'), CONV_OK);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(value, 4e-320);
    errno = EDOM;
    // Rejected by the check: strtod never ran.
    EXPECT_EQ(CONV_StringToDouble(&value, "12.5x", kPoint, '.'), CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(errno, EDOM);
}

// A locale with "," as its decimal point, when one is installed; strtod then stops at the "."
// that the conversion puts in place of the caller's point.
const char *CommaLocale() {
    for (const char *name :
         {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "fr_FR"}) {
        if (std::setlocale(LC_NUMERIC, name) != nullptr) {
            std::setlocale(LC_NUMERIC, "C");
            return name;
        }
    }
    return nullptr;
}

TEST(CoreNumRead, DoubleFollowsTheLocalesDecimalPoint) {
    const char *name = CommaLocale();
    if (name == nullptr) {
        GTEST_SKIP() << "no locale with a \",\" decimal point";
    }
    ASSERT_NE(std::setlocale(LC_NUMERIC, name), nullptr);
    double value = 0;
    // The conversion hands strtod "12.5", and strtod there reads "12".
    EXPECT_EQ(CONV_StringToDouble(&value, "12,5", kPoint, ','), CONV_OK);
    EXPECT_EQ(value, 12.0);
    EXPECT_EQ(CONV_StringToDouble(&value, "12.5", kPoint, '.'), CONV_OK);
    EXPECT_EQ(value, 12.0);
    EXPECT_EQ(CONV_StringToDouble(&value, "125e-1", kExp, '.'), CONV_OK);
    EXPECT_EQ(value, 12.5);
    std::setlocale(LC_NUMERIC, "C");
}

struct Int32Case {
    const char *text;
    uint32_t flags;
    uint32_t status;
    int32_t value;
    char point;  // the only decimal-point character the case holds for, or 0 for "." and ","
};

constexpr uint32_t kBlanks = CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS;

constexpr Int32Case kPlainCases[] = {
    {"0", 0, CONV_OK, 0, 0},
    {"-0", 0, CONV_OK, 0, 0},
    {"+7", 0, CONV_OK, 7, 0},
    {"12", 0, CONV_OK, 12, 0},
    {"-123", 0, CONV_OK, -123, 0},
    {"99999999", 0, CONV_OK, 99999999, 0},
    {"999999999", 0, CONV_OK, 999999999, 0},
    {"-999999999", 0, CONV_OK, -999999999, 0},
    {"1000000000", 0, CONV_OK, 1000000000, 0},
    {"2147483647", 0, CONV_OK, 2147483647, 0},
    {"2147483648", 0, CONV_ERR_OVERFLOW, 0, 0},
    {"0000000001", 0, CONV_OK, 1, 0},
    {"000000000000000000042", 0, CONV_OK, 42, 0},
    {"  42  ", kBlanks, CONV_OK, 42, 0},
    {"  -42", CONV_NUM_LEADING_BLANKS, CONV_OK, -42, 0},
    {"42  ", CONV_NUM_TRAILING_BLANKS, CONV_OK, 42, 0},
    {"  42", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"42 ", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"- 42", 0, CONV_OK, -42, 0},
    {"+-42", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"--42", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"-", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"\t42", CONV_NUM_LEADING_BLANKS, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"\t42", CONV_NUM_LEADING_BLANKS | CONV_NUM_TAB_IS_BLANK, CONV_OK, 42, 0},
    {"42\n", CONV_NUM_TRAILING_BLANKS | CONV_NUM_LF_IS_BLANK, CONV_OK, 42, 0},
    {"4 2", kBlanks, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"42x", 0, CONV_ERR_NOT_A_NUMBER, 0, 0},
    {"42.", kPoint, CONV_OK, 42, '.'},
    {"42.", kPoint, CONV_ERR_NOT_A_NUMBER, 0, ','},
    {"42,9", kPoint, CONV_ERR_NOT_A_NUMBER, 0, '.'},
    {"42,9", kPoint, CONV_WARN_TRUNCATION, 42, ','},
};

TEST(CoreNumRead, PlainIntegerTexts) {
    for (const char point : {'.', ','}) {
        for (const Int32Case &c : kPlainCases) {
            if (c.point != '\0' && c.point != point) {
                continue;
            }
            int32_t value = 77;
            errno = EDOM;
            EXPECT_EQ(CONV_StringToInt32(&value, c.text, c.flags, point), c.status)
                << '"' << c.text << "\" point " << point;
            if (c.status == CONV_OK || c.status == CONV_WARN_TRUNCATION) {
                EXPECT_EQ(value, c.value) << c.text;
                EXPECT_EQ(errno, 0) << c.text;
            } else {
                EXPECT_EQ(value, 77) << c.text;
            }
        }
    }
}

TEST(CoreNumRead, BlanksCountTowardTheLengthLimit) {
    int32_t value = 77;
    const std::string fits = std::string(997, ' ') + "42";
    EXPECT_EQ(CONV_StringToInt32(&value, fits.c_str(), CONV_NUM_LEADING_BLANKS, '.'), CONV_OK);
    EXPECT_EQ(value, 42);
    value = 77;
    const std::string leading = std::string(998, ' ') + "42";
    EXPECT_EQ(CONV_StringToInt32(&value, leading.c_str(), CONV_NUM_LEADING_BLANKS, '.'),
              CONV_ERR_CONVERSION);
    const std::string trailing = "-42" + std::string(997, ' ');
    EXPECT_EQ(CONV_StringToInt32(&value, trailing.c_str(), CONV_NUM_TRAILING_BLANKS, '.'),
              CONV_ERR_CONVERSION);
    EXPECT_EQ(value, 77);
    double d = 77.0;
    const std::string number = std::string(990, ' ') + "1.5e1" + std::string(5, ' ');
    EXPECT_EQ(CONV_StringToDouble(&d, number.c_str(), kBlanks | kPoint | kExp, '.'),
              CONV_ERR_CONVERSION);
    EXPECT_EQ(d, 77.0);
}

}  // namespace
