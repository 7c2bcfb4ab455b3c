/* SPDX-License-Identifier: MIT */
// Number text checking (CONV_IsNumber) and normalising (CONV_FormatNumString).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

struct NumberCase {
    const char *text;
    uint32_t flags;
    char point;
    uint32_t status;
};

constexpr uint32_t OK = CONV_OK;
constexpr uint32_t NAN_ = CONV_ERR_NOT_A_NUMBER;

constexpr NumberCase kNumberCases[] = {
    {" -1.5E+3 ", 0x0F, '.', OK},
    {" -1.5E+3 ", 0x0D, '.', NAN_},  // no trailing blanks
    {"1.5D3", 0x0C, '.', NAN_},
    {"1.5D3", 0x4C, '.', OK},
    {"1.5d3", 0x4C, '.', OK},
    {"1E 5", 0x08, '.', OK},  // one blank after the letter
    {"1E  5", 0x08, '.', NAN_},
    {"1E +5", 0x08, '.', OK},
    {"1E+ 5", 0x08, '.', NAN_},
    {"1E\t5", 0x08, '.', NAN_},
    {"1E\t5", 0x18, '.', OK},
    {"1E\n5", 0x08, '.', NAN_},
    {"1E\n5", 0x28, '.', OK},
    {"1E", 0x08, '.', NAN_},
    {"1E+", 0x08, '.', NAN_},
    {"1e-7", 0x08, '.', OK},
    {"1E5", 0x00, '.', NAN_},  // exponent not allowed
    {"- 5", 0, '.', OK},       // blanks after a sign are always skipped
    {"-\t5", 0, '.', NAN_},
    {"-\t5", 0x10, '.', OK},
    {"+5", 0, '.', OK},
    {"+-5", 0, '.', NAN_},
    {"", 0, '.', NAN_},
    {"abc", 0x100, '.', OK},
    {"", 0x100, '.', OK},
    {" 5", 0, '.', NAN_},  // leading blanks not allowed
    {" 5", 0x01, '.', OK},
    {"5 ", 0, '.', NAN_},
    {"5 ", 0x02, '.', OK},
    {"5\t", 0x02, '.', NAN_},
    {"5\t", 0x12, '.', OK},
    {"5\n", 0x22, '.', OK},
    {"5\r", 0x02, '.', NAN_},  // carriage return is never a blank
    {"\t5", 0x01, '.', NAN_},
    {"\t5", 0x11, '.', OK},
    {"\t-5", 0x01, '.', NAN_},
    {"\n-5", 0x21, '.', OK},
    {"5.", 0x04, '.', OK},
    {".5", 0x04, '.', OK},
    {".", 0x04, '.', NAN_},
    {"-.", 0x04, '.', NAN_},
    {"-.5", 0x04, '.', OK},
    {"5.5", 0x00, '.', NAN_},  // no decimal point without the flag
    {".5", 0x00, '.', NAN_},
    {"1,5", 0x04, ',', OK},
    {"1.5", 0x04, ',', NAN_},
    {",5E2", 0x0C, ',', OK},
    {"1.2.3", 0x04, '.', NAN_},
    {"12", 0, '.', OK},
    {"0012", 0, '.', OK},
    {"x", 0, '.', NAN_},
    {"1x", 0x02, '.', NAN_},
    {"5.E3", 0x0C, '.', OK},
    {".E3", 0x0C, '.', NAN_},
    // A NUL point character never matches (it could only be the terminator).
    {"", 0x04, '\0', NAN_},
    {"5", 0x04, '\0', OK},
    {"-", 0x04, '\0', NAN_},
};

TEST(CoreIsNumber, ListedCases) {
    for (const NumberCase &c : kNumberCases) {
        EXPECT_EQ(CONV_IsNumber(c.text, c.flags, c.point), c.status)
            << "'" << c.text << "' flags " << std::hex << c.flags;
    }
}

// An independent checker built from the syntax rules: every accepted form is a sequence of
// character classes with repeat counts, matched by backtracking.
struct Element {
    std::string set;
    size_t min;
    size_t max;
};
using Pattern = std::vector<Element>;
constexpr size_t kMany = 1000;

bool Matches(const Pattern &pattern, size_t at, const std::string &text, size_t pos) {
    if (at == pattern.size())
        return pos == text.size();
    const Element &e = pattern[at];
    size_t n = 0;
    while (n < e.max && pos + n < text.size() && e.set.find(text[pos + n]) != std::string::npos) {
        ++n;
    }
    for (size_t k = n + 1; k-- > e.min;) {
        if (Matches(pattern, at + 1, text, pos + k))
            return true;
    }
    return false;
}

bool IndependentIsNumber(const std::string &text, uint32_t flags, char point) {
    std::string blank = " ";
    if (flags & 0x10)
        blank += '\t';
    if (flags & 0x20)
        blank += '\n';
    const std::string digits = "0123456789";
    const std::string p(1, point);
    std::vector<Pattern> mantissas = {{{digits, 1, kMany}}};
    if (flags & 0x04) {
        mantissas.push_back({{digits, 1, kMany}, {p, 1, 1}, {digits, 0, kMany}});
        mantissas.push_back({{p, 1, 1}, {digits, 1, kMany}});
    }
    for (int sign = 0; sign < 2; ++sign) {
        for (const Pattern &mantissa : mantissas) {
            for (int exponent = 0; exponent < ((flags & 0x08) ? 2 : 1); ++exponent) {
                Pattern pattern;
                if (flags & 0x01)
                    pattern.push_back({blank, 0, kMany});
                if (sign) {
                    pattern.push_back({"+-", 1, 1});
                    pattern.push_back({blank, 0, kMany});
                }
                pattern.insert(pattern.end(), mantissa.begin(), mantissa.end());
                if (exponent) {
                    pattern.push_back({(flags & 0x40) ? "EeDd" : "Ee", 1, 1});
                    pattern.push_back({blank, 0, 1});
                    pattern.push_back({"+-", 0, 1});
                    pattern.push_back({digits, 1, kMany});
                }
                if (flags & 0x02)
                    pattern.push_back({blank, 0, kMany});
                if (Matches(pattern, 0, text, 0))
                    return true;
            }
        }
    }
    return false;
}

TEST(CoreIsNumber, AgreesWithAnIndependentCheckerOnGeneratedTexts) {
    static const char kAlphabet[] = "0019 \t\n\r+-.,EeDdx";
    const size_t alphabetSize = sizeof kAlphabet - 1;
    uint64_t state = 12345;
    auto next = [&state]() {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<uint32_t>(state >> 33);
    };
    int accepted = 0;
    for (int i = 0; i < 40000; ++i) {
        const size_t length = next() % 9;
        std::string text;
        for (size_t k = 0; k < length; ++k) {
            text += kAlphabet[next() % alphabetSize];
        }
        const uint32_t flags = next() % 128;
        const int pt = static_cast<int>(next() % 2);
        const bool expected = IndependentIsNumber(text, flags, pt == 0 ? '.' : ',');
        accepted += expected ? 1 : 0;
        EXPECT_EQ(CONV_IsNumber(text.c_str(), flags, pt == 0 ? '.' : ','),
                  expected ? CONV_OK : CONV_ERR_NOT_A_NUMBER)
            << "'" << text << "' flags " << std::hex << flags << " point " << pt;
        // The no-check flag accepts every text.
        EXPECT_EQ(CONV_IsNumber(text.c_str(), flags | 0x100, '.'), CONV_OK);
    }
    EXPECT_GT(accepted, 1000);  // the generator reaches the accepting paths
}

struct FormatCase {
    const char *text;
    uint32_t size;
    char point;
    uint32_t status;
    const char *out;  // expected text when the status is not an error
    uint32_t length;
};

constexpr FormatCase kFormatCases[] = {
    {"123.456", 5, '.', CONV_WARN_TRUNCATION, "123.", 7},
    {"123.456", 3, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 7},
    {"123.456", 4, '.', CONV_WARN_TRUNCATION, "123", 7},
    {"123.456", 8, '.', CONV_OK, "123.456", 7},
    {"123.456", 7, '.', CONV_WARN_TRUNCATION, "123.45", 7},
    // Zeros after a sign are kept: trimming comes first, then zeros, then the sign.
    {" +0042 ", 10, '.', CONV_OK, "0042", 4},
    {"0042", 10, '.', CONV_OK, "42", 2},
    {"0007", 10, '.', CONV_OK, "7", 1},
    {"000.5", 10, '.', CONV_OK, "0.5", 3},
    {"000,5", 10, ',', CONV_OK, "0,5", 3},
    {"000,5", 10, '.', CONV_OK, ",5", 2},
    {"0", 10, '.', CONV_OK, "0", 1},
    {"000", 10, '.', CONV_OK, "0", 1},
    {"-007", 10, '.', CONV_OK, "-007", 4},
    {"-1.25", 6, '.', CONV_OK, "-1.25", 5},
    {"-1.25", 5, '.', CONV_WARN_TRUNCATION, "-1.2", 5},
    {"-1.25", 3, '.', CONV_WARN_TRUNCATION, "-1", 5},
    {"-12.5", 3, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 5},
    {"- 12", 10, '.', CONV_OK, "-12", 3},  // white space after the sign is skipped
    {"+\t7", 10, '.', CONV_OK, "7", 1},
    {".5", 2, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 2},
    {".55", 3, '.', CONV_WARN_TRUNCATION, ".5", 3},
    {"-.5", 3, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 3},
    {"-5", 2, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 2},
    {"-", 2, '.', CONV_OK, "-", 1},
    {"", 2, '.', CONV_OK, "", 0},
    {"   ", 2, '.', CONV_OK, "", 0},
    {"5", 2, '.', CONV_OK, "5", 1},
    {"55", 2, '.', CONV_ERR_TARGET_TOO_SMALL, nullptr, 2},
    {"5\t", 10, '.', CONV_OK, "5\t", 2},  // only spaces are trimmed
    {" \t5", 10, '.', CONV_OK, "5", 1},   // white space before the digits is skipped
};

TEST(CoreFormatNumString, ListedCases) {
    for (const FormatCase &c : kFormatCases) {
        char out[32];
        std::memset(out, '#', sizeof out);
        uint32_t length = 999;
        EXPECT_EQ(CONV_FormatNumString(out, c.text, c.size, c.point, &length), c.status)
            << "'" << c.text << "' size " << c.size;
        EXPECT_EQ(length, c.length) << "'" << c.text << "' size " << c.size;
        if (c.out != nullptr) {
            EXPECT_STREQ(out, c.out) << "'" << c.text << "' size " << c.size;
        }
        for (size_t k = c.size; k < sizeof out; ++k) {
            ASSERT_EQ(out[k], '#') << "'" << c.text << "' wrote past its size " << c.size;
        }
    }
}

TEST(CoreFormatNumString, SignIsWrittenBeforeTooSmall) {
    char out[8];
    std::memset(out, '#', sizeof out);
    uint32_t length = 0;
    EXPECT_EQ(CONV_FormatNumString(out, "-123.4", 3, '.', &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(out[0], '-');
    EXPECT_EQ(out[1], '#');
}

TEST(CoreFormatNumString, RefusesSizeBelowTwoAndOverlongText) {
    char out[4] = {'#', '#', '#', '#'};
    uint32_t length = 77;
    EXPECT_EQ(CONV_FormatNumString(out, "1", 1, '.', &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(CONV_FormatNumString(out, "1", 0, '.', &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 77u);
    EXPECT_EQ(out[0], '#');
    const std::string longest(999, '7');
    const std::string tooLong(1000, '7');
    std::string big(1200, '#');
    EXPECT_EQ(CONV_FormatNumString(big.data(), longest.c_str(), 1100, '.', &length), CONV_OK);
    EXPECT_EQ(length, 999u);
    EXPECT_EQ(std::string(big.c_str()), longest);
    EXPECT_EQ(CONV_FormatNumString(big.data(), tooLong.c_str(), 1100, '.', &length),
              CONV_ERR_TARGET_TOO_SMALL);
}

}  // namespace
