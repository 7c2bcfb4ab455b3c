/* SPDX-License-Identifier: MIT */
// Status codes and their messages.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include <nlssupport/convlib.h>

namespace {

struct MessageCase {
    uint32_t status;
    const char *sqlstate;
    const char *message;
};

constexpr MessageCase kMessages[] = {
    {1, "[22005]", "Illegal string representation of a byte stream"},
    {2, "[22008]", "Illegal value for a month field"},
    {3, "[22008]", "Illegal value for a month field"},
    {4, "[22008]", "Illegal value for a year field"},
    {5, "[22008]", "Illegal value for a day of the week field"},
    {6, "[22008]", "Illegal value for second field"},
    {7, "[22008]", "Illegal value for minutes field"},
    {8, "[22008]", "Illegal value for hour (24) field"},
    {9, "[22008]", "Illegal value for hour (12) field"},
    {10, "[22008]", "Illegal value for fractions of a second field"},
    {11, "[S1000]", "Illegal value for fractions of a second field base"},
    {12, "[S1000]", "Rescan of a field"},
    {13, "[22003]", "Target too small to contain data"},
    {14, "[22008]", "Date/Time data left in format string"},
    {15, "[22008]", "Date/Time data left in source string"},
    {16, "[01004]", "Truncation"},
    {17, "[22008]", "Date/Time scan mismatch"},
    {18, "[S1001]", "Memory allocation failed"},
    {19, "[S1000]", "Conversion failed"},
    {20, "[22003]", "Number overflow"},
    {21, "[22005]", "Not a number"},
    {22, "[01004]", "Round to zero"},
    {23, "[S1000]",
     "The date specified is out of program range for era calculation (< 8 Sep 1868)"},
    {24, "[S1000]", "No era names were specified"},
    {25, "[S1000]", "No valid SYEAR was specified"},
};

TEST(CoreStatus, CodeValuesAreFixed) {
    EXPECT_EQ(CONV_OK, 0u);
    EXPECT_EQ(CONV_ERR_BYTE_STREAM, 1u);
    EXPECT_EQ(CONV_ERR_DAY, 2u);
    EXPECT_EQ(CONV_ERR_MONTH, 3u);
    EXPECT_EQ(CONV_ERR_YEAR, 4u);
    EXPECT_EQ(CONV_ERR_DAY_OF_WEEK, 5u);
    EXPECT_EQ(CONV_ERR_SECOND, 6u);
    EXPECT_EQ(CONV_ERR_MINUTE, 7u);
    EXPECT_EQ(CONV_ERR_HOUR24, 8u);
    EXPECT_EQ(CONV_ERR_HOUR12, 9u);
    EXPECT_EQ(CONV_ERR_FRACTION, 10u);
    EXPECT_EQ(CONV_ERR_FRACTION_BASE, 11u);
    EXPECT_EQ(CONV_ERR_RESCAN, 12u);
    EXPECT_EQ(CONV_ERR_TARGET_TOO_SMALL, 13u);
    EXPECT_EQ(CONV_ERR_FORMAT_LEFT, 14u);
    EXPECT_EQ(CONV_ERR_SOURCE_LEFT, 15u);
    EXPECT_EQ(CONV_WARN_TRUNCATION, 16u);
    EXPECT_EQ(CONV_ERR_SCAN_MISMATCH, 17u);
    EXPECT_EQ(CONV_ERR_MEMORY, 18u);
    EXPECT_EQ(CONV_ERR_CONVERSION, 19u);
    EXPECT_EQ(CONV_ERR_OVERFLOW, 20u);
    EXPECT_EQ(CONV_ERR_NOT_A_NUMBER, 21u);
    EXPECT_EQ(CONV_WARN_ROUND_TO_ZERO, 22u);
    EXPECT_EQ(CONV_ERR_ERA_RANGE, 23u);
    EXPECT_EQ(CONV_ERR_NO_ERA_NAMES, 24u);
    EXPECT_EQ(CONV_ERR_NO_SYEAR, 25u);
}

TEST(CoreStatus, EveryKnownCodeHasItsStateAndText) {
    for (const MessageCase &c : kMessages) {
        const char *message = nullptr;
        const char *sqlstate = nullptr;
        EXPECT_EQ(CONV_ErrorMessage(c.status, &message, &sqlstate), 1u) << c.status;
        ASSERT_NE(message, nullptr);
        ASSERT_NE(sqlstate, nullptr);
        EXPECT_STREQ(sqlstate, c.sqlstate) << c.status;
        EXPECT_STREQ(message, c.message) << c.status;
    }
}

TEST(CoreStatus, SuccessGivesResultZeroAndEmptyTexts) {
    const char *message = "x";
    const char *sqlstate = "x";
    EXPECT_EQ(CONV_ErrorMessage(CONV_OK, &message, &sqlstate), 0u);
    EXPECT_STREQ(message, "");
    EXPECT_STREQ(sqlstate, "");
}

TEST(CoreStatus, UnknownCodesGiveResultZeroAndEmptyTexts) {
    for (uint32_t status : {26u, 27u, 1000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        const char *message = "x";
        const char *sqlstate = "x";
        EXPECT_EQ(CONV_ErrorMessage(status, &message, &sqlstate), 0u) << status;
        EXPECT_STREQ(message, "") << status;
        EXPECT_STREQ(sqlstate, "") << status;
    }
}

TEST(CoreStatus, BadDayReportsTheMonthText) {
    const char *dayMessage = nullptr;
    const char *dayState = nullptr;
    const char *monthMessage = nullptr;
    const char *monthState = nullptr;
    EXPECT_EQ(CONV_ErrorMessage(CONV_ERR_DAY, &dayMessage, &dayState), 1u);
    EXPECT_EQ(CONV_ErrorMessage(CONV_ERR_MONTH, &monthMessage, &monthState), 1u);
    EXPECT_STREQ(dayMessage, "Illegal value for a month field");
    EXPECT_STREQ(dayState, "[22008]");
    EXPECT_EQ(std::string(dayMessage), std::string(monthMessage));
    EXPECT_EQ(std::string(dayState), std::string(monthState));
}

TEST(CoreStatus, IdenticalStatesShareOneText) {
    const char *m = nullptr;
    const char *first = nullptr;
    const char *other = nullptr;
    CONV_ErrorMessage(CONV_ERR_MONTH, &m, &first);
    for (uint32_t status : {2u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 14u, 15u, 17u}) {
        CONV_ErrorMessage(status, &m, &other);
        EXPECT_EQ(other, first) << status;
    }
    CONV_ErrorMessage(CONV_ERR_CONVERSION, &m, &first);
    for (uint32_t status : {11u, 12u, 23u, 24u, 25u}) {
        CONV_ErrorMessage(status, &m, &other);
        EXPECT_EQ(other, first) << status;
    }
    CONV_ErrorMessage(CONV_WARN_TRUNCATION, &m, &first);
    CONV_ErrorMessage(CONV_WARN_ROUND_TO_ZERO, &m, &other);
    EXPECT_EQ(other, first);
}

TEST(CoreStatus, WarningsAndMemoryStates) {
    const char *m = nullptr;
    const char *s = nullptr;
    CONV_ErrorMessage(16, &m, &s);
    EXPECT_STREQ(s, "[01004]");
    CONV_ErrorMessage(22, &m, &s);
    EXPECT_STREQ(s, "[01004]");
    CONV_ErrorMessage(18, &m, &s);
    EXPECT_STREQ(s, "[S1001]");
}

TEST(CoreStatus, EraRangeTextHasOneBlankAfterLessThan) {
    const char *m = nullptr;
    const char *s = nullptr;
    CONV_ErrorMessage(CONV_ERR_ERA_RANGE, &m, &s);
    EXPECT_NE(std::string(m).find("(< 8 Sep 1868)"), std::string::npos);
}

}  // namespace
