/* SPDX-License-Identifier: MIT */
// Conversion statuses as standard error codes, and nls::result.
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <nlssupport/nlssupport.hpp>

namespace {

struct Enumerator {
    nls::conv_status status;
    std::uint32_t code;
};

// One row per status, written out: the enumerators carry the C codes.
constexpr Enumerator kEnumerators[] = {
    {nls::conv_status::ok, CONV_OK},
    {nls::conv_status::byte_stream, CONV_ERR_BYTE_STREAM},
    {nls::conv_status::day, CONV_ERR_DAY},
    {nls::conv_status::month, CONV_ERR_MONTH},
    {nls::conv_status::year, CONV_ERR_YEAR},
    {nls::conv_status::day_of_week, CONV_ERR_DAY_OF_WEEK},
    {nls::conv_status::second, CONV_ERR_SECOND},
    {nls::conv_status::minute, CONV_ERR_MINUTE},
    {nls::conv_status::hour24, CONV_ERR_HOUR24},
    {nls::conv_status::hour12, CONV_ERR_HOUR12},
    {nls::conv_status::fraction, CONV_ERR_FRACTION},
    {nls::conv_status::fraction_base, CONV_ERR_FRACTION_BASE},
    {nls::conv_status::rescan, CONV_ERR_RESCAN},
    {nls::conv_status::target_too_small, CONV_ERR_TARGET_TOO_SMALL},
    {nls::conv_status::format_left, CONV_ERR_FORMAT_LEFT},
    {nls::conv_status::source_left, CONV_ERR_SOURCE_LEFT},
    {nls::conv_status::warn_truncation, CONV_WARN_TRUNCATION},
    {nls::conv_status::scan_mismatch, CONV_ERR_SCAN_MISMATCH},
    {nls::conv_status::memory, CONV_ERR_MEMORY},
    {nls::conv_status::conversion, CONV_ERR_CONVERSION},
    {nls::conv_status::overflow, CONV_ERR_OVERFLOW},
    {nls::conv_status::not_a_number, CONV_ERR_NOT_A_NUMBER},
    {nls::conv_status::warn_round_to_zero, CONV_WARN_ROUND_TO_ZERO},
    {nls::conv_status::era_range, CONV_ERR_ERA_RANGE},
    {nls::conv_status::no_era_names, CONV_ERR_NO_ERA_NAMES},
    {nls::conv_status::no_syear, CONV_ERR_NO_SYEAR},
};
static_assert(std::size(kEnumerators) == 26);

consteval bool EnumeratorsMatchTheCodes() {
    std::uint32_t expected = 0;
    for (const Enumerator &e : kEnumerators)
        if (static_cast<std::uint32_t>(e.status) != e.code || e.code != expected++)
            return false;
    return true;
}
static_assert(EnumeratorsMatchTheCodes(), "one enumerator per code 0..25, in order");

TEST(CppStatus, CategoryIsNamedNlssupportConv) {
    EXPECT_STREQ(nls::conv_category().name(), "nlssupport.conv");
    EXPECT_EQ(&nls::conv_category(), &nls::conv_category());
}

TEST(CppStatus, EveryStatusRoundTripsThroughAnErrorCode) {
    for (const Enumerator &e : kEnumerators) {
        SCOPED_TRACE(e.code);
        const char *message = nullptr;
        const char *state = nullptr;
        CONV_ErrorMessage(e.code, &message, &state);

        const std::error_code code = e.status;  // implicit, through make_error_code
        EXPECT_EQ(code, nls::make_error_code(e.status));
        EXPECT_EQ(&code.category(), &nls::conv_category());
        EXPECT_EQ(code.value(), static_cast<int>(e.code));
        EXPECT_EQ(static_cast<nls::conv_status>(code.value()), e.status);
        EXPECT_EQ(code.message(), message);
        EXPECT_EQ(nls::sqlstate(code), state);
        EXPECT_EQ(static_cast<bool>(code), e.code != CONV_OK);
        EXPECT_TRUE(code == e.status);
        EXPECT_EQ(nls::is_warning(code),
                  e.code == CONV_WARN_TRUNCATION || e.code == CONV_WARN_ROUND_TO_ZERO);
        EXPECT_EQ(nls::is_warning(e.status), nls::is_warning(code));
    }
}

TEST(CppStatus, OkIsTheEmptyErrorCodeWithEmptyTexts) {
    const std::error_code code = nls::conv_status::ok;
    EXPECT_FALSE(code);
    EXPECT_EQ(code.message(), "");
    EXPECT_EQ(nls::sqlstate(code), "");
}

TEST(CppStatus, BadDayReportsTheMonthText) {
    const std::error_code day = nls::conv_status::day;
    const std::error_code month = nls::conv_status::month;
    EXPECT_EQ(day.message(), "Illegal value for a month field");
    EXPECT_EQ(day.message(), month.message());
    EXPECT_EQ(nls::sqlstate(day), "[22008]");
    EXPECT_NE(day, month);
}

TEST(CppStatus, WarningsCarrySqlstate01004) {
    EXPECT_EQ(nls::sqlstate(nls::conv_status::warn_truncation), "[01004]");
    EXPECT_EQ(nls::sqlstate(nls::conv_status::warn_round_to_zero), "[01004]");
    EXPECT_EQ(std::error_code(nls::conv_status::warn_truncation).message(), "Truncation");
    EXPECT_EQ(std::error_code(nls::conv_status::warn_round_to_zero).message(), "Round to zero");
    EXPECT_EQ(nls::sqlstate(nls::conv_status::memory), "[S1001]");
}

TEST(CppStatus, UnknownValuesOfTheCategoryGiveEmptyTexts) {
    for (int value : {26, 1000, -1}) {
        const std::error_code code(value, nls::conv_category());
        EXPECT_EQ(code.message(), "") << value;
        EXPECT_EQ(nls::sqlstate(code), "") << value;
        EXPECT_FALSE(nls::is_warning(code)) << value;
    }
}

TEST(CppStatus, CodesOfOtherCategoriesAreNeitherWarningsNorSqlstates) {
    // Values 16 and 22 of another category are not the two warnings.
    for (int value : {16, 22}) {
        const std::error_code code(value, std::generic_category());
        EXPECT_FALSE(nls::is_warning(code)) << value;
        EXPECT_EQ(nls::sqlstate(code), "") << value;
        EXPECT_NE(code, std::error_code(static_cast<nls::conv_status>(value)));
    }
}

// --- nls::result -----------------------------------------------------------------------------

TEST(CppResult, OkCarriesTheValue) {
    const nls::result<int> r{42, nls::conv_status::ok};
    EXPECT_TRUE(r.ok());
    EXPECT_FALSE(r.warning());
    EXPECT_FALSE(r.error());
    EXPECT_EQ(r.value(), 42);
    EXPECT_EQ(r.status(), nls::conv_status::ok);
    EXPECT_FALSE(r.error_code());
    EXPECT_EQ(r.value_or(-1), 42);
}

TEST(CppResult, WarningKeepsItsValueAndIsNoError) {
    const nls::result<int> r{12, nls::conv_status::warn_truncation};
    EXPECT_FALSE(r.ok());
    EXPECT_TRUE(r.warning());
    EXPECT_FALSE(r.error());
    EXPECT_EQ(r.value(), 12);
    EXPECT_EQ(r.value_or(-1), 12);
    EXPECT_EQ(r.error_code(), nls::conv_status::warn_truncation);
    EXPECT_TRUE(nls::is_warning(r.error_code()));
}

TEST(CppResult, ErrorFallsBackInValueOr) {
    const nls::result<int> r{0, nls::conv_status::overflow};
    EXPECT_FALSE(r.ok());
    EXPECT_FALSE(r.warning());
    EXPECT_TRUE(r.error());
    EXPECT_EQ(r.value_or(-1), -1);
    EXPECT_EQ(r.error_code().message(), "Number overflow");
    EXPECT_EQ(nls::sqlstate(r.error_code()), "[22003]");
}

TEST(CppResult, ValueMovesOutOfAnRvalue) {
    nls::result<std::string> r{std::string(100, 'x'), nls::conv_status::ok};
    const std::string taken = std::move(r).value();
    EXPECT_EQ(taken, std::string(100, 'x'));
    r.value() = "changed";
    EXPECT_EQ(r.value(), "changed");
}

}  // namespace
