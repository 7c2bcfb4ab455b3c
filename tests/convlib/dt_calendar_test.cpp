/* SPDX-License-Identifier: MIT */
// Date-time values and the calendar: default tables, the validity check, the day of the week and
// the era calendar.
#include <gtest/gtest.h>
#include <stddef.h>
#include <string.h>
#include <time.h>

#include <nlssupport/convlib.h>
#include "convlib/datetime_internal.h"
#include "dt_test_util.h"

namespace {

using dt_test::Date;
using dt_test::Unset;

TEST(DateTimeRecord, FieldsAreInTheFixedOrderAndWidths) {
    EXPECT_EQ(offsetof(CONV_DateTime, day), 0u);
    EXPECT_EQ(offsetof(CONV_DateTime, month), 2u);
    EXPECT_EQ(offsetof(CONV_DateTime, year), 4u);
    EXPECT_EQ(offsetof(CONV_DateTime, dayOfWeek), 6u);
    EXPECT_EQ(offsetof(CONV_DateTime, second), 8u);
    EXPECT_EQ(offsetof(CONV_DateTime, minute), 10u);
    EXPECT_EQ(offsetof(CONV_DateTime, hour), 12u);
    EXPECT_EQ(offsetof(CONV_DateTime, fraction), 16u);
    EXPECT_EQ(offsetof(CONV_DateTime, fractionBase), 20u);
    EXPECT_EQ(offsetof(CONV_DateTime, era), 22u);
    EXPECT_EQ(sizeof(CONV_DateTime().fraction), 4u);
    EXPECT_EQ(CONV_DT_UNSET, -32768);
    EXPECT_EQ(sizeof(CONV_DateTimeNames), 45 * sizeof(const char *));
}

TEST(DateTimeNames, DefaultTablesHoldTheDocumentedTexts) {
    const char *days[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                          "Thursday", "Friday", "Saturday"};
    const char *shortDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    const char *months[] = {"January", "February", "March",     "April",   "May",      "June",
                            "July",    "August",   "September", "October", "November", "December"};
    const char *shortMonths[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                 "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    for (int i = 0; i < 7; ++i) {
        EXPECT_STREQ(gCONV_DefaultNameOfDay[i], days[i]);
        EXPECT_STREQ(gCONV_DefaultShortNameOfDay[i], shortDays[i]);
    }
    for (int i = 0; i < 12; ++i) {
        EXPECT_STREQ(gCONV_DefaultNameOfMonth[i], months[i]);
        EXPECT_STREQ(gCONV_DefaultShortNameOfMonth[i], shortMonths[i]);
    }
    EXPECT_STREQ(gCONV_DefaultMeridiem[0], "AM");
    EXPECT_STREQ(gCONV_DefaultMeridiem[1], "PM");
}

TEST(DateTimeNames, FractionCeilingsAreTenToTheBaseMinusOne) {
    const int32_t expected[10] = {-1,    9,      99,      999,      9999,
                                  99999, 999999, 9999999, 99999999, 999999999};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(gCONV_SecFracBaseCeiling[i], expected[i]) << i;
    }
}

// ---- CONV_CheckDateTime ----

struct CheckCase {
    const char *name;
    CONV_DateTime record;
    uint32_t expected;
};

CONV_DateTime With(CONV_DateTime r, int16_t CONV_DateTime::*field, int16_t value) {
    r.*field = value;
    return r;
}

CONV_DateTime Time(int h, int m, int s) {
    CONV_DateTime r = Unset();
    r.hour = static_cast<int16_t>(h);
    r.minute = static_cast<int16_t>(m);
    r.second = static_cast<int16_t>(s);
    return r;
}

CONV_DateTime Frac(int32_t fraction, int16_t base) {
    CONV_DateTime r = Unset();
    r.fraction = fraction;
    r.fractionBase = base;
    return r;
}

TEST(CheckDateTime, TableOfEdgeCases) {
    const CONV_DateTime dm29 = Date(29, 2, CONV_DT_UNSET);
    const CheckCase cases[] = {
        {"all unset", Unset(), CONV_OK},
        {"29 Feb, year unset", dm29, CONV_OK},
        {"29 Feb 1900", Date(29, 2, 1900), CONV_ERR_DAY},
        {"29 Feb 2000", Date(29, 2, 2000), CONV_OK},
        {"29 Feb 2004", Date(29, 2, 2004), CONV_OK},
        {"29 Feb 2001", Date(29, 2, 2001), CONV_ERR_DAY},
        {"29 Feb year 0 (leap)", Date(29, 2, 0), CONV_OK},
        {"29 Feb year -4 (leap)", Date(29, 2, -4), CONV_OK},
        {"29 Feb year -100", Date(29, 2, -100), CONV_ERR_DAY},
        {"29 Feb year -400", Date(29, 2, -400), CONV_OK},
        {"29 Feb year -1", Date(29, 2, -1), CONV_ERR_DAY},
        {"30 Feb, year unset", Date(30, 2, CONV_DT_UNSET), CONV_ERR_DAY},
        {"31 Feb", Date(31, 2, 2000), CONV_ERR_DAY},
        {"31 April, year unset", Date(31, 4, CONV_DT_UNSET), CONV_ERR_DAY},
        {"31 June", Date(31, 6, 2000), CONV_ERR_DAY},
        {"31 September", Date(31, 9, 2000), CONV_ERR_DAY},
        {"31 November", Date(31, 11, 2000), CONV_ERR_DAY},
        {"30 April", Date(30, 4, 2000), CONV_OK},
        {"31 December", Date(31, 12, 2000), CONV_OK},
        {"31, month unset", Date(31, CONV_DT_UNSET, CONV_DT_UNSET), CONV_OK},
        {"day 0", Date(0, 1, 2000), CONV_ERR_DAY},
        {"day 32", Date(32, 1, 2000), CONV_ERR_DAY},
        {"month 0", Date(1, 0, 2000), CONV_ERR_MONTH},
        {"month 13", Date(1, 13, 2000), CONV_ERR_MONTH},
        {"bad day before bad month", Date(0, 13, 2000), CONV_ERR_DAY},
        {"year -32767", Date(1, 1, -32767), CONV_OK},
        {"year 32767", Date(1, 1, 32767), CONV_OK},
        {"24:00:00", Time(24, 0, 0), CONV_OK},
        {"24:00:01", Time(24, 0, 1), CONV_ERR_HOUR24},
        {"24:01:00", Time(24, 1, 0), CONV_ERR_HOUR24},
        {"24 with minute and second unset", Time(24, CONV_DT_UNSET, CONV_DT_UNSET), CONV_OK},
        {"hour 25", Time(25, 0, 0), CONV_ERR_HOUR24},
        {"hour -1", Time(-1, 0, 0), CONV_ERR_HOUR24},
        {"minute 60", Time(0, 60, 0), CONV_ERR_MINUTE},
        {"second 60", Time(0, 0, 60), CONV_ERR_SECOND},
        {"minute checked before second", Time(0, 60, 60), CONV_ERR_MINUTE},
        {"hour checked before minute", Time(25, 60, 60), CONV_ERR_HOUR24},
        {"23:59:59", Time(23, 59, 59), CONV_OK},
        {"fraction unset, base 12 not examined", Frac(CONV_DT_UNSET, 12), CONV_OK},
        {"fraction -1, base unset", Frac(-1, CONV_DT_UNSET), CONV_ERR_FRACTION},
        {"fraction 999999999, base unset", Frac(999999999, CONV_DT_UNSET), CONV_OK},
        {"fraction 1000000000, base unset", Frac(1000000000, CONV_DT_UNSET), CONV_ERR_FRACTION},
        {"fraction 1000, base 3", Frac(1000, 3), CONV_ERR_FRACTION},
        {"fraction 999, base 3", Frac(999, 3), CONV_OK},
        {"fraction -1, base 3", Frac(-1, 3), CONV_ERR_FRACTION},
        {"base 0", Frac(0, 0), CONV_ERR_FRACTION_BASE},
        {"base 10", Frac(0, 10), CONV_ERR_FRACTION_BASE},
        {"base 9, 999999999", Frac(999999999, 9), CONV_OK},
        {"base 1, 10", Frac(10, 1), CONV_ERR_FRACTION},
        {"day error before fraction error", With(Frac(-1, 3), &CONV_DateTime::day, 40),
         CONV_ERR_DAY},
    };
    for (const CheckCase &c : cases) {
        EXPECT_EQ(CONV_CheckDateTime(&c.record), c.expected) << c.name;
    }
}

TEST(CheckDateTime, HourTwentyFourWithFractionPasses) {
    CONV_DateTime r = Time(24, 0, 0);
    r.fraction = 5;
    EXPECT_EQ(CONV_CheckDateTime(&r), CONV_OK);
}

TEST(CheckDateTime, DayOfWeekAndEraAreNeverChecked) {
    CONV_DateTime r = Date(1, 1, 2024);
    r.dayOfWeek = 99;  // wrong and out of range
    r.era = -7;
    EXPECT_EQ(CONV_CheckDateTime(&r), CONV_OK);
}

TEST(CheckDateTime, EveryFractionBaseUsesItsCeiling) {
    for (int16_t base = 1; base <= 9; ++base) {
        const int32_t ceiling = gCONV_SecFracBaseCeiling[base];
        CONV_DateTime ok = Frac(ceiling, base);
        CONV_DateTime over = Frac(ceiling + 1, base);
        EXPECT_EQ(CONV_CheckDateTime(&ok), CONV_OK) << base;
        EXPECT_EQ(CONV_CheckDateTime(&over), CONV_ERR_FRACTION) << base;
    }
}

TEST(CheckDateTime, DoesNotWriteTheRecord) {
    CONV_DateTime r = Date(31, 4, 2000);
    const CONV_DateTime before = r;
    EXPECT_EQ(CONV_CheckDateTime(&r), CONV_ERR_DAY);
    EXPECT_EQ(memcmp(&r, &before, sizeof r), 0);
}

// ---- CONV_GetDayOfWeek ----

int DayOfWeekOf(int d, int m, int y) {
    CONV_DateTime r = Date(d, m, y);
    EXPECT_EQ(CONV_GetDayOfWeek(&r), CONV_OK) << d << "." << m << "." << y;
    return r.dayOfWeek;
}

TEST(GetDayOfWeek, KnownDates) {
    EXPECT_EQ(DayOfWeekOf(1, 1, 2024), 1);   // Monday
    EXPECT_EQ(DayOfWeekOf(29, 2, 2000), 2);  // Tuesday
    EXPECT_EQ(DayOfWeekOf(1, 1, 1900), 1);   // Monday
    EXPECT_EQ(DayOfWeekOf(1, 1, 1970), 4);   // Thursday
    EXPECT_EQ(DayOfWeekOf(5, 3, 2009), 4);   // Thursday
    EXPECT_EQ(DayOfWeekOf(1, 1, 1), 1);      // Monday (proleptic Gregorian)
}

TEST(GetDayOfWeek, WritesOnlyTheDayOfWeek) {
    CONV_DateTime r = Date(1, 1, 2024);
    r.hour = 99;  // time fields are not read
    r.second = -5;
    CONV_DateTime expected = r;
    expected.dayOfWeek = 1;
    ASSERT_EQ(CONV_GetDayOfWeek(&r), CONV_OK);
    EXPECT_EQ(memcmp(&r, &expected, sizeof r), 0);
}

TEST(GetDayOfWeek, FailuresLeaveTheRecordUnchanged) {
    struct Case {
        int d, m, y;
        uint32_t expected;
    };
    const Case cases[] = {
        {CONV_DT_UNSET, 1, 2024, CONV_ERR_DAY},
        {0, 1, 2024, CONV_ERR_DAY},
        {32, 1, 2024, CONV_ERR_DAY},
        {1, CONV_DT_UNSET, 2024, CONV_ERR_MONTH},
        {1, 13, 2024, CONV_ERR_MONTH},
        {1, 0, 2024, CONV_ERR_MONTH},
        {1, 1, CONV_DT_UNSET, CONV_ERR_YEAR},
        {31, 4, 2024, CONV_ERR_DAY},
        {30, 2, 2024, CONV_ERR_DAY},
        {29, 2, 2023, CONV_ERR_DAY},
        {29, 2, 1900, CONV_ERR_DAY},
        {40, 13, CONV_DT_UNSET, CONV_ERR_DAY},
    };
    for (const Case &c : cases) {
        CONV_DateTime r = Date(c.d, c.m, c.y);
        r.dayOfWeek = 77;
        const CONV_DateTime before = r;
        EXPECT_EQ(CONV_GetDayOfWeek(&r), c.expected) << c.d << "." << c.m << "." << c.y;
        EXPECT_EQ(memcmp(&r, &before, sizeof r), 0);
    }
}

TEST(GetDayOfWeek, NegativeYearsKeepTheTruncatingRemainder) {
    // 1 March of year -100: 1 + 9 - 100 - 25 + 1 + 0 = -114, and -114 % 7 is -2.
    EXPECT_EQ(DayOfWeekOf(1, 3, -100), -2);
    // 1 March of year 0 is a Wednesday; 1 January of year 0 gives 0 through the truncating
    // quotients of year -1 (the proleptic weekday would be Saturday).
    EXPECT_EQ(DayOfWeekOf(1, 3, 0), 3);
    EXPECT_EQ(DayOfWeekOf(1, 1, 0), 0);
    // The smallest year: January turns -32767 into -32768 inside the computation.
    CONV_DateTime r = Date(1, 1, -32767);
    EXPECT_EQ(CONV_GetDayOfWeek(&r), CONV_OK);
    const int32_t y = -32768;
    const int32_t expected = (1 + (13 * 13 + 8) / 5 + y + y / 4 - y / 100 + y / 400) % 7;
    EXPECT_EQ(r.dayOfWeek, expected);
}

bool IsLeap(int y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int DaysInMonth(int m, int y) {
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && IsLeap(y) ? 29 : kDays[m - 1];
}

TEST(GetDayOfWeek, AgreesWithADayCountForEveryDateOfYears1To9999) {
    // 1 January of year 1 is a Monday in the proleptic Gregorian calendar; count days from there.
    long dayNumber = 1;
    long mismatches = 0;
    CONV_DateTime r = Unset();
    for (int y = 1; y <= 9999; ++y) {
        r.year = static_cast<int16_t>(y);
        for (int m = 1; m <= 12; ++m) {
            r.month = static_cast<int16_t>(m);
            const int days = DaysInMonth(m, y);
            for (int d = 1; d <= days; ++d) {
                r.day = static_cast<int16_t>(d);
                r.dayOfWeek = CONV_DT_UNSET;
                const uint32_t status = CONV_GetDayOfWeek(&r);
                if (status != CONV_OK || r.dayOfWeek != dayNumber % 7) {
                    if (++mismatches < 5) {
                        ADD_FAILURE() << d << "." << m << "." << y << " status " << status
                                      << " got " << r.dayOfWeek << " want " << dayNumber % 7;
                    }
                }
                ++dayNumber;
            }
            // The day after the last of the month is refused.
            if (y % 97 == 0) {
                r.day = static_cast<int16_t>(days + 1);
                if (days + 1 <= 31) {
                    EXPECT_EQ(CONV_GetDayOfWeek(&r), CONV_ERR_DAY);
                }
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_EQ(dayNumber - 1, 3652059L);  // days of 9999 Gregorian years
}

TEST(GetDayOfWeek, AgreesWithTheCLibraryWhereTimeTIsDefined) {
    // 1902..2037 lies inside a 32-bit time_t as well.
    long checked = 0;
    for (int y = 1902; y <= 2037; ++y) {
        for (int m = 1; m <= 12; ++m) {
            for (int d = 1; d <= DaysInMonth(m, y); ++d) {
                struct tm in = {};
                in.tm_year = y - 1900;
                in.tm_mon = m - 1;
                in.tm_mday = d;
                in.tm_hour = 12;
                const time_t t = timegm(&in);
                struct tm out = {};
                ASSERT_NE(gmtime_r(&t, &out), nullptr);
                ASSERT_EQ(out.tm_mday, d);
                CONV_DateTime r = Date(d, m, y);
                ASSERT_EQ(CONV_GetDayOfWeek(&r), CONV_OK);
                ASSERT_EQ(r.dayOfWeek, out.tm_wday) << d << "." << m << "." << y;
                ++checked;
            }
        }
    }
    EXPECT_EQ(checked, 49674L);
}

// ---- Era calendar ----

struct EraCase {
    int d, m, y;
    uint32_t status;
    int era;
};

TEST(EraCalendar, FirstDaysPlusAndMinusOneDay) {
    const EraCase cases[] = {
        {7, 9, 1868, CONV_ERR_ERA_RANGE, 0},
        {8, 9, 1868, CONV_OK, 0},
        {31, 8, 1868, CONV_ERR_ERA_RANGE, 0},
        {1, 10, 1868, CONV_OK, 0},
        {31, 12, 1867, CONV_ERR_ERA_RANGE, 0},
        {1, 1, -5, CONV_ERR_ERA_RANGE, 0},
        {1, 1, 1869, CONV_OK, 0},
        {30, 7, 1912, CONV_OK, 0},
        {31, 7, 1912, CONV_OK, 1},
        {30, 6, 1912, CONV_OK, 0},
        {1, 8, 1912, CONV_OK, 1},
        {31, 12, 1911, CONV_OK, 0},
        {1, 1, 1913, CONV_OK, 1},
        {25, 12, 1926, CONV_OK, 1},
        {26, 12, 1926, CONV_OK, 2},
        {31, 12, 1926, CONV_OK, 2},
        {30, 11, 1926, CONV_OK, 1},
        {1, 1, 1927, CONV_OK, 2},
        {7, 1, 1989, CONV_OK, 2},
        {8, 1, 1989, CONV_OK, 3},
        {1, 2, 1989, CONV_OK, 3},
        {31, 12, 1988, CONV_OK, 2},
        {1, 1, 1990, CONV_OK, 3},
        {1, 1, 32767, CONV_OK, 3},
    };
    for (const EraCase &c : cases) {
        int16_t era = 99;
        EXPECT_EQ(conv::GetEra(c.d, c.m, c.y, &era), c.status) << c.d << "." << c.m << "." << c.y;
        if (c.status == CONV_OK) {
            EXPECT_EQ(era, c.era) << c.d << "." << c.m << "." << c.y;
        } else {
            EXPECT_EQ(era, 99);
        }
    }
}

struct EraYearCase {
    int era, eraYear, m, d;
    uint32_t status;
    int year;
};

TEST(EraCalendar, EraYearToGregorianYearWithItsAsymmetries) {
    const EraYearCase cases[] = {
        {0, 1, 9, 8, CONV_OK, 1868},
        {0, 1, 9, 7, CONV_ERR_YEAR, 0},
        {0, 1, 8, 31, CONV_ERR_YEAR, 0},
        {0, 0, 10, 1, CONV_ERR_YEAR, 0},
        {0, 45, 7, 30, CONV_OK, 1912},
        {0, 45, 7, 31, CONV_ERR_YEAR, 0},
        {0, 45, 8, 1, CONV_ERR_YEAR, 0},
        {0, 46, 1, 1, CONV_ERR_YEAR, 0},
        {1, 1, 7, 31, CONV_OK, 1912},
        {1, 1, 7, 30, CONV_ERR_YEAR, 0},
        {1, 1, 6, 30, CONV_ERR_YEAR, 0},
        {1, 15, 12, 25, CONV_OK, 1926},
        {1, 15, 12, 30, CONV_OK, 1926},  // no test of the end of era 1 (kept)
        {1, 16, 1, 1, CONV_ERR_YEAR, 0},
        {1, 0, 8, 1, CONV_ERR_YEAR, 0},
        {2, 1, 12, 26, CONV_OK, 1926},
        {2, 1, 12, 25, CONV_ERR_YEAR, 0},
        {2, 1, 11, 30, CONV_ERR_YEAR, 0},
        {2, 64, 1, 7, CONV_OK, 1989},
        {2, 64, 1, 8, CONV_ERR_YEAR, 0},
        {2, 64, 2, 1, CONV_ERR_YEAR, 0},
        {2, 65, 1, 1, CONV_ERR_YEAR, 0},
        {3, 1, 1, 7, CONV_OK, 1989},  // no first-day test
        {3, 1, 1, 8, CONV_OK, 1989},
        {3, 0, 1, 8, CONV_ERR_YEAR, 0},
        {3, -1, 1, 8, CONV_ERR_YEAR, 0},
        {3, 36, 5, 1, CONV_OK, 2024},
        {3, 30779, 1, 1, CONV_OK, 32767},
        {3, 30780, 1, 1, CONV_ERR_YEAR, 0},
        // Unset month and day compare as -32768.
        {0, 1, CONV_DT_UNSET, CONV_DT_UNSET, CONV_ERR_YEAR, 0},
        {0, 45, CONV_DT_UNSET, CONV_DT_UNSET, CONV_OK, 1912},
        {2, 64, CONV_DT_UNSET, CONV_DT_UNSET, CONV_OK, 1989},
        {2, 1, 12, CONV_DT_UNSET, CONV_ERR_YEAR, 0},
        {4, 1, 1, 1, CONV_ERR_YEAR, 0},
    };
    for (const EraYearCase &c : cases) {
        int16_t year = 7;
        EXPECT_EQ(conv::EraYearToYear(c.era, c.eraYear, c.m, c.d, &year), c.status)
            << c.era << " " << c.eraYear << " " << c.m << " " << c.d;
        EXPECT_EQ(year, c.status == CONV_OK ? c.year : 7);
    }
}

TEST(EraCalendar, EveryDateFrom1868To2030RoundTripsThroughItsEraYear) {
    for (int y = 1868; y <= 2030; ++y) {
        for (int m = 1; m <= 12; ++m) {
            for (int d = 1; d <= DaysInMonth(m, y); ++d) {
                int16_t era = -1;
                const uint32_t status = conv::GetEra(d, m, y, &era);
                if (y == 1868 && (m < 9 || (m == 9 && d < 8))) {
                    ASSERT_EQ(status, CONV_ERR_ERA_RANGE);
                    continue;
                }
                ASSERT_EQ(status, CONV_OK);
                int16_t back = 0;
                ASSERT_EQ(conv::EraYearToYear(era, y - conv::kEraOffset[era], m, d, &back), CONV_OK)
                    << d << "." << m << "." << y;
                ASSERT_EQ(back, y);
            }
        }
    }
}

}  // namespace
