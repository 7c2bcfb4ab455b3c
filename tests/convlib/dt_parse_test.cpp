/* SPDX-License-Identifier: MIT */
// Date-time parsing: every letter, the rescan rule, the meridiem rules, eras and SYEAR, the end
// checks and statuses, a source lying inside the record, and the round trip through the
// formatter.
#include <gtest/gtest.h>
#include <stddef.h>
#include <stdio.h>

#include <new>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>
#include "convlib/datetime_internal.h"
#include "dt_test_util.h"

namespace {

using dt_test::EraNames;
using dt_test::Unset;

struct Parsed {
    uint32_t status;
    CONV_DateTime record;
    uint16_t failed;
    uint16_t count;
};

Parsed Parse(const char *source, const char *format, int16_t fractionBase = CONV_DT_UNSET,
             int32_t centuryBase = 0, const char *const *names = nullptr) {
    Parsed p{};
    // Every field but fractionBase holds garbage that parsing must reset.
    memset(&p.record, 0x11, sizeof p.record);
    p.record.fractionBase = fractionBase;
    p.failed = 7777;
    p.count = 7777;
    p.status =
        CONV_StringToDateTime(&p.record, source, format, centuryBase, names, &p.failed, &p.count);
    return p;
}

TEST(StringToDateTime, DateWithAndWithoutWidths) {
    for (const char *format : {"%4Z-%2M-%2D", "%Z-%M-%D"}) {
        const Parsed p = Parse("2009-03-05", format);
        EXPECT_EQ(p.status, CONV_OK) << format;
        EXPECT_EQ(p.record.day, 5);
        EXPECT_EQ(p.record.month, 3);
        EXPECT_EQ(p.record.year, 2009);
        EXPECT_EQ(p.failed, CONV_FIELD_NONE);
        EXPECT_EQ(p.count, 3);
    }
}

TEST(StringToDateTime, UnreadFieldsAreResetAndTheBaseIsKept) {
    const Parsed p = Parse("5", "%D", 4);
    ASSERT_EQ(p.status, CONV_OK);
    CONV_DateTime expected = Unset();
    expected.day = 5;
    expected.fractionBase = 4;
    EXPECT_EQ(memcmp(&p.record.day, &expected.day, 7 * sizeof(int16_t)), 0);
    EXPECT_EQ(p.record.fraction, CONV_DT_UNSET);
    EXPECT_EQ(p.record.fractionBase, 4);
    EXPECT_EQ(p.record.era, CONV_DT_UNSET);
}

TEST(StringToDateTime, EndOfInputStatuses) {
    struct Case {
        const char *source;
        const char *format;
        uint32_t status;
    };
    const Case cases[] = {
        {"2009-03-05 ", "%Z-%M-%D", CONV_ERR_SOURCE_LEFT},
        {"2009-03", "%Z-%M-%D", CONV_ERR_FORMAT_LEFT},
        {"2009", "%Z-", CONV_ERR_FORMAT_LEFT},  // literals alone left in the format
        {"", "%D", CONV_ERR_FORMAT_LEFT},
        {"", "", CONV_OK},
        {"x", "", CONV_ERR_SOURCE_LEFT},
        {"abc", "abc", CONV_OK},
        {"5%", "%D%%", CONV_OK},
        {"%5", "%%%D", CONV_OK},
        {"%X", "%X", CONV_OK},
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format);
        EXPECT_EQ(p.status, c.status) << c.source << " / " << c.format;
        EXPECT_EQ(p.failed, CONV_FIELD_NONE) << c.source << " / " << c.format;
    }
}

TEST(StringToDateTime, LiteralMismatchLeavesFailedFieldUnset) {
    const Parsed p = Parse("2009/03/05", "%Z-%M-%D");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_NONE);
    EXPECT_EQ(p.count, 1);
    EXPECT_EQ(p.record.year, 2009);  // what was read stays
    EXPECT_EQ(Parse("%", "%%").status, CONV_OK);
    EXPECT_EQ(Parse("%%", "%%").status, CONV_ERR_SOURCE_LEFT);
}

TEST(StringToDateTime, SecondFieldForTheSameValueIsARescan) {
    struct Case {
        const char *source;
        const char *format;
        uint16_t failed;
    };
    const Case cases[] = {
        {"5 6", "%D %D", 0},        {"5 6", "%H %P", 5},      {"5 6", "%P %H", 2},
        {"5 6", "%M %M", 4},        {"3 MAR", "%M %W", 11},   {"MAR March", "%W %V", 10},
        {"1 2", "%I %I", 3},        {"1 2", "%S %S", 7},      {"Sun Mon", "%U %U", 9},
        {"Sunday Sun", "%T %U", 9}, {"94 1994", "%Y %Z", 13}, {"1994 94", "%Z %Y", 12},
        {"1 2", "%F %F", 1},        {"AM PM", "%Q %Q", 6},    {"1 PM AM", "%P %Q %Q", 6},
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format);
        EXPECT_EQ(p.status, CONV_ERR_RESCAN) << c.format;
        EXPECT_EQ(p.failed, c.failed) << c.format;
        EXPECT_EQ(p.count, 2 + (c.format[1] == 'P' && c.format[4] == 'Q' ? 1 : 0)) << c.format;
    }
}

TEST(StringToDateTime, RangeFailuresKeepTheOffendingValue) {
    struct Case {
        const char *source;
        const char *format;
        uint32_t status;
        uint16_t failed;
        int16_t CONV_DateTime::*field;
        int16_t stored;
    };
    const Case cases[] = {
        {"32", "%D", CONV_ERR_DAY, 0, &CONV_DateTime::day, 32},
        {"0", "%D", CONV_ERR_DAY, 0, &CONV_DateTime::day, 0},
        {"-1", "%D", CONV_ERR_DAY, 0, &CONV_DateTime::day, -1},
        {"25", "%H", CONV_ERR_HOUR24, 2, &CONV_DateTime::hour, 25},
        {"60", "%I", CONV_ERR_MINUTE, 3, &CONV_DateTime::minute, 60},
        {"13", "%M", CONV_ERR_MONTH, 4, &CONV_DateTime::month, 13},
        {"0", "%P", CONV_ERR_HOUR12, 5, &CONV_DateTime::hour, 0},
        {"13", "%P", CONV_ERR_HOUR12, 5, &CONV_DateTime::hour, 13},
        {"60", "%S", CONV_ERR_SECOND, 7, &CONV_DateTime::second, 60},
        {"-32768", "%Z", CONV_ERR_YEAR, 13, &CONV_DateTime::year, CONV_DT_UNSET},
        {"32768", "%Z", CONV_ERR_YEAR, 13, &CONV_DateTime::year, CONV_DT_UNSET},
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format);
        EXPECT_EQ(p.status, c.status) << c.source << " " << c.format;
        EXPECT_EQ(p.failed, c.failed) << c.format;
        EXPECT_EQ(p.record.*c.field, c.stored) << c.format;
    }
}

TEST(StringToDateTime, NumbersAreKeptByTheirLow16Bits) {
    Parsed p = Parse("65537", "%D");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.day, 1);
    p = Parse("65548", "%M");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 12);
    p = Parse("70000", "%Z");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 70000 - 65536);
}

TEST(StringToDateTime, NumberFieldsWithWidths) {
    Parsed p = Parse(" 5. 3.2009", "%2D.%2M.%4Z");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.day, 5);
    EXPECT_EQ(p.record.month, 3);
    p = Parse("05032009", "%2D%2M%4Z");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 2009);
    p = Parse("5 .3", "%2D.%M");  // "5 " leaves a blank unconverted
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_D);
    p = Parse("05", "%3D");
    EXPECT_EQ(p.status, CONV_ERR_FORMAT_LEFT);
    EXPECT_EQ(p.failed, CONV_FIELD_D);
    p = Parse("x", "%D");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_D);
    p = Parse("  -7", "%Z");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, -7);
}

TEST(StringToDateTime, DayWithinItsMonthIsCheckedAtTheEnd) {
    struct Case {
        const char *source;
        const char *format;
        uint32_t status;
    };
    const Case cases[] = {
        {"31.02.2009", "%D.%M.%Z", CONV_ERR_DAY},
        {"29.02.1900", "%D.%M.%Z", CONV_ERR_DAY},
        {"29.02", "%D.%M", CONV_OK},
        {"29.02.2000", "%D.%M.%Z", CONV_OK},
        {"31.04", "%D.%M", CONV_ERR_DAY},
        {"30.02", "%D.%M", CONV_ERR_DAY},
        {"31 September", "%D %V", CONV_ERR_DAY},
        {"31", "%D", CONV_OK},
        {"29.02.2009 x", "%D.%M.%Z", CONV_ERR_DAY},  // the day check comes before source-left
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format);
        EXPECT_EQ(p.status, c.status) << c.source;
        EXPECT_EQ(p.failed, CONV_FIELD_NONE) << c.source;
    }
}

TEST(StringToDateTime, HourTwentyFourOnlyAsMidnight) {
    EXPECT_EQ(Parse("24:00:00", "%H:%I:%S").status, CONV_OK);
    EXPECT_EQ(Parse("24", "%H").status, CONV_OK);
    Parsed p = Parse("24:01", "%H:%I");
    EXPECT_EQ(p.status, CONV_ERR_HOUR24);
    EXPECT_EQ(p.failed, CONV_FIELD_NONE);
    EXPECT_EQ(Parse("24:00:01", "%H:%I:%S").status, CONV_ERR_HOUR24);
}

TEST(StringToDateTime, MeridiemRules) {
    struct Case {
        const char *source;
        const char *format;
        int hour;
    };
    const Case cases[] = {
        {"12 AM", "%P %Q", 12},  // before noon never changes the hour (kept)
        {"12 PM", "%P %Q", 12}, {"1 PM", "%P %Q", 13}, {"11 PM", "%P %Q", 23},
        {"1 AM", "%P %Q", 1},   {"PM 1", "%Q %P", 13}, {"PM 12", "%Q %P", 12},
        {"AM 12", "%Q %P", 12}, {"AM 7", "%Q %P", 7},  {"7", "%P", 7},
        {"15 PM", "%H %Q", 15}, {"3 PM", "%H %Q", 3},  // Q without P leaves H's hour
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format);
        EXPECT_EQ(p.status, CONV_OK) << c.source;
        EXPECT_EQ(p.record.hour, c.hour) << c.source;
    }
    Parsed p = Parse("XM", "%Q");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_Q);
}

TEST(StringToDateTime, CenturyBaseIsAddedToY) {
    Parsed p = Parse("94", "%Y", CONV_DT_UNSET, 1900);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 1994);
    p = Parse("5", "%Y", CONV_DT_UNSET, 2000);
    EXPECT_EQ(p.record.year, 2005);
    p = Parse("0", "%Y", CONV_DT_UNSET, -32768);
    EXPECT_EQ(p.status, CONV_ERR_YEAR);
    EXPECT_EQ(p.failed, CONV_FIELD_Y);
    p = Parse("1", "%Y", CONV_DT_UNSET, 32767);  // 32768 kept by its low 16 bits
    EXPECT_EQ(p.status, CONV_ERR_YEAR);
    p = Parse("94", "%Z", CONV_DT_UNSET, 1900);  // Z ignores the century base
    EXPECT_EQ(p.record.year, 94);
}

TEST(StringToDateTime, Fractions) {
    struct Case {
        const char *source;
        const char *format;
        int16_t base;
        uint32_t status;
        int32_t fraction;
    };
    const Case cases[] = {
        {".5", ".%3F", 3, CONV_OK, 500},
        {"5", "%3F", 3, CONV_OK, 500},
        {"1234", "%4F", 3, CONV_OK, 123},
        {"1234", "%F", 3, CONV_OK, 1234},  // no width: unscaled, whatever the base
        {"1234", "%F", CONV_DT_UNSET, CONV_OK, 1234},
        {"999999999", "%F", CONV_DT_UNSET, CONV_OK, 999999999},
        {"1000000000", "%F", CONV_DT_UNSET, CONV_ERR_FRACTION, 1000000000},
        {"-5", "%F", CONV_DT_UNSET, CONV_ERR_FRACTION, -5},
        {"12x", "%3F", 3, CONV_ERR_SCAN_MISMATCH, CONV_DT_UNSET},
        {" 5 ", "%3F", 3, CONV_OK, 500},  // no flag: blanks trimmed on both sides
        {" 5 ", "%-3F", 3, CONV_ERR_SCAN_MISMATCH, CONV_DT_UNSET},  // "-": right side only
        {" 5 ", "%03F", 3, CONV_ERR_SCAN_MISMATCH, CONV_DT_UNSET},
        {"5  ", "%-3F", 3, CONV_OK, 500},
        {"005000000", "%-9.9F", 3, CONV_OK, 5},
        {"000001", "%6F", 6, CONV_OK, 1},
        {"1", "%9F", 9, CONV_OK, 100000000},
        {"12", "%5F", 3, CONV_OK, 120},  // fewer characters than the width: those left
        {"   ", "%3F", 3, CONV_ERR_SCAN_MISMATCH, CONV_DT_UNSET},
        {"1.5", "%3F", 3, CONV_ERR_SCAN_MISMATCH, CONV_DT_UNSET},
        {"-5", "%2F", 3, CONV_ERR_FRACTION, -50},
        {"5", "%1F", CONV_DT_UNSET, CONV_ERR_FRACTION_BASE, CONV_DT_UNSET},
        {"5", "%1F", 0, CONV_ERR_FRACTION_BASE, CONV_DT_UNSET},
        {"5", "%1F", 10, CONV_ERR_FRACTION_BASE, CONV_DT_UNSET},
    };
    for (const Case &c : cases) {
        const Parsed p = Parse(c.source, c.format, c.base);
        EXPECT_EQ(p.status, c.status) << "'" << c.source << "' " << c.format;
        EXPECT_EQ(p.record.fraction, c.fraction) << "'" << c.source << "' " << c.format;
        if (c.status != CONV_OK) {
            EXPECT_EQ(p.failed, CONV_FIELD_F);
        }
        EXPECT_EQ(p.record.fractionBase, c.base);
    }
}

TEST(StringToDateTime, FractionFieldAdvancesByTheCharactersCopied) {
    Parsed p = Parse("123|", "%3F|", 3);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.fraction, 123);
    p = Parse("1  |", "%3F|", 3);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.fraction, 100);
    // The width takes whatever stands there, a following literal included.
    p = Parse("1 |", "%3F|", 3);
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_F);
}

TEST(StringToDateTime, DefaultNamesAreCaseSensitive) {
    Parsed p = Parse("JAN", "%W");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 1);
    p = Parse("Jan", "%W");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_W);
    p = Parse("December", "%V");
    EXPECT_EQ(p.record.month, 12);
    p = Parse("Saturday Sat", "%T %U");
    EXPECT_EQ(p.status, CONV_ERR_RESCAN);
    p = Parse("Saturday", "%T");
    EXPECT_EQ(p.record.dayOfWeek, 6);
    p = Parse("Tue", "%U");
    EXPECT_EQ(p.record.dayOfWeek, 2);
    p = Parse("JUL", "%W");
    EXPECT_EQ(p.record.month, 7);
}

TEST(StringToDateTime, NamesWithWidths) {
    Parsed p = Parse("JAN  |", "%-5W|");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 1);
    p = Parse("  FEB|", "%5W|");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 2);
    p = Parse("Wed", "%5U");
    EXPECT_EQ(p.status, CONV_ERR_FORMAT_LEFT);
    EXPECT_EQ(p.failed, CONV_FIELD_U);
    // A width below the name's length compares the whole field with the name's start.
    p = Parse("Sept", "%4V");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 9);
    p = Parse("Sept", "%-4V");
    EXPECT_EQ(p.record.month, 9);
    // Without a flag the name ends the field; with "-" it starts it.
    p = Parse("  May", "%5V");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 5);
    p = Parse("May  ", "%5V");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_V);
    p = Parse("May  ", "%-5V");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 5);
}

TEST(StringToDateTime, CallerGroupsAreUsedWhenTheirFirstSlotIsSet) {
    const char *names[CONV_NAMES_COUNT] = {};
    names[CONV_NAMES_MONTH] = "Januar";
    names[CONV_NAMES_MONTH + 2] = "Maerz";      // February left null: skipped
    names[CONV_NAMES_SHORT_MONTH + 1] = "Feb";  // first slot null: defaults used
    names[CONV_NAMES_MERIDIEM] = "vorm.";
    names[CONV_NAMES_MERIDIEM + 1] = "nachm.";
    Parsed p = Parse("Maerz", "%V", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 3);
    p = Parse("March", "%V", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    p = Parse("FEB", "%W", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.month, 2);
    p = Parse("Feb", "%W", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    p = Parse("3 nachm.", "%P %Q", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.hour, 15);
    p = Parse("Monday", "%T", CONV_DT_UNSET, 0, names);  // day group: first slot null
    EXPECT_EQ(p.record.dayOfWeek, 1);
}

TEST(StringToDateTime, FirstMatchingNameInTableOrderWins) {
    const char *names[CONV_NAMES_COUNT] = {};
    names[CONV_NAMES_MONTH] = "Jan";
    names[CONV_NAMES_MONTH + 1] = "January";
    Parsed p = Parse("January 5", "%V%D", CONV_DT_UNSET, 0, names);
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);  // "Jan" matched, "uary 5" is no number
    EXPECT_EQ(p.record.month, 1);
    EXPECT_EQ(p.failed, CONV_FIELD_D);
}

// ---- Eras and SYEAR ----

Parsed ParseEra(const char *source, const char *format) {
    static const EraNames names;
    return Parse(source, format, CONV_DT_UNSET, 0, names.get());
}

TEST(StringToDateTime, EraAndSyearGiveTheGregorianYear) {
    Parsed p = ParseEra("Heisei Gannen", "%E %J");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 1989);
    EXPECT_EQ(p.record.era, 3);
    // Era 3 has no test of its first day.
    p = ParseEra("Heisei Gannen 7.1", "%E %J %D.%M");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 1989);
    p = ParseEra("Showa 64 8.1", "%E %J %D.%M");
    EXPECT_EQ(p.status, CONV_ERR_YEAR);
    EXPECT_EQ(p.failed, CONV_FIELD_NONE);
    p = ParseEra("Heisei 5", "%E %J");
    EXPECT_EQ(p.record.year, 1993);
    p = ParseEra("Meiji 5", "%E %Z");  // any year letter gives the era year
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 1872);
}

TEST(StringToDateTime, EraBoundariesPlusAndMinusOneDay) {
    struct Case {
        const char *source;
        uint32_t status;
        int year;
    };
    const Case cases[] = {
        {"Meiji Gannen 8.9", CONV_OK, 1868},      {"Meiji Gannen 7.9", CONV_ERR_YEAR, 0},
        {"Meiji 45 30.7", CONV_OK, 1912},         {"Meiji 45 31.7", CONV_ERR_YEAR, 0},
        {"Meiji 45 1.8", CONV_ERR_YEAR, 0},       {"Taisho Gannen 31.7", CONV_OK, 1912},
        {"Taisho Gannen 30.7", CONV_ERR_YEAR, 0}, {"Taisho 15 25.12", CONV_OK, 1926},
        {"Taisho 15 30.12", CONV_OK, 1926},  // era 1 does not test its end (kept)
        {"Showa Gannen 26.12", CONV_OK, 1926},    {"Showa Gannen 25.12", CONV_ERR_YEAR, 0},
        {"Showa 64 7.1", CONV_OK, 1989},          {"Showa 64 8.1", CONV_ERR_YEAR, 0},
        {"Heisei Gannen 8.1", CONV_OK, 1989},     {"Heisei Gannen 7.1", CONV_OK, 1989},
        {"Meiji 46 1.1", CONV_ERR_YEAR, 0},       {"Showa 0 1.1", CONV_ERR_YEAR, 0},
        {"Heisei 0 1.1", CONV_ERR_YEAR, 0},       {"Heisei -3 1.1", CONV_ERR_YEAR, 0},
    };
    for (const Case &c : cases) {
        const Parsed p = ParseEra(c.source, "%E %J %D.%M");
        EXPECT_EQ(p.status, c.status) << c.source;
        if (c.status == CONV_OK) {
            EXPECT_EQ(p.record.year, c.year) << c.source;
        }
    }
}

TEST(StringToDateTime, EraFailures) {
    Parsed p = ParseEra("2009 Heisei", "%Z %E");
    EXPECT_EQ(p.status, CONV_ERR_RESCAN);  // the era must come before the year
    EXPECT_EQ(p.failed, CONV_FIELD_E);
    p = Parse("Heisei 5", "%E %J");
    EXPECT_EQ(p.status, CONV_ERR_NO_ERA_NAMES);
    EXPECT_EQ(p.failed, CONV_FIELD_E);
    const char *onlySyear[CONV_NAMES_COUNT] = {};
    onlySyear[CONV_NAMES_SYEAR] = "Gannen";
    p = Parse("Heisei 5", "%E %J", CONV_DT_UNSET, 0, onlySyear);
    EXPECT_EQ(p.status, CONV_ERR_NO_ERA_NAMES);
    const char *onlyEras[CONV_NAMES_COUNT] = {};
    onlyEras[CONV_NAMES_ERA] = "Meiji";
    onlyEras[CONV_NAMES_ERA + 3] = "Heisei";  // slots 41 and 42 null: skipped, not read
    p = Parse("Heisei 5", "%E %J", CONV_DT_UNSET, 0, onlyEras);
    EXPECT_EQ(p.status, CONV_ERR_NO_SYEAR);
    EXPECT_EQ(p.failed, CONV_FIELD_J);
    EXPECT_EQ(p.record.era, 3);
    p = ParseEra("Reiwa 5", "%E %J");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_E);
    p = ParseEra("Heisei", "%E");  // an era with no year
    EXPECT_EQ(p.status, CONV_ERR_YEAR);
    EXPECT_EQ(p.failed, CONV_FIELD_NONE);
    p = ParseEra("Heisei x", "%E %J");
    EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(p.failed, CONV_FIELD_J);
    p = ParseEra("Heisei Gan", "%E %10J");  // fewer characters than the width
    EXPECT_EQ(p.status, CONV_ERR_FORMAT_LEFT);
    EXPECT_EQ(p.failed, CONV_FIELD_J);
    p = ParseEra("1 Gannen", "%Z %J");
    EXPECT_EQ(p.status, CONV_ERR_RESCAN);
    p = ParseEra("Heisei 32768", "%E %J");
    EXPECT_EQ(p.status, CONV_ERR_YEAR);
    EXPECT_EQ(p.failed, CONV_FIELD_J);
    p = ParseEra("Heisei Showa 5", "%E %E %J");  // a second era replaces the first
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.era, 2);
    EXPECT_EQ(p.record.year, 1930);
}

TEST(StringToDateTime, SyearWithoutAnEraIsYearOne) {
    const Parsed p = ParseEra("Gannen", "%J");
    EXPECT_EQ(p.status, CONV_OK);
    EXPECT_EQ(p.record.year, 1);
    EXPECT_EQ(p.record.era, CONV_DT_UNSET);
}

// ---- The source inside the record ----

TEST(StringToDateTime, SourceLyingInsideTheRecordIsReadFromACopy) {
    CONV_DateTime record;
    memset(&record, 0, sizeof record);
    memcpy(reinterpret_cast<char *>(&record) + 2, "12.11.1999", 11);
    const char *source = reinterpret_cast<const char *>(&record) + 2;
    uint16_t failed = 0;
    EXPECT_EQ(CONV_StringToDateTime(&record, source, "%D.%M.%Z", 0, nullptr, &failed, nullptr),
              CONV_OK);
    EXPECT_EQ(record.day, 12);
    EXPECT_EQ(record.month, 11);
    EXPECT_EQ(record.year, 1999);
    EXPECT_EQ(record.hour, CONV_DT_UNSET);
}

TEST(StringToDateTime, SourceRunningIntoTheRecordIsReadFromACopy) {
    struct Layout {
        char prefix[4];
        CONV_DateTime record;
    };
    Layout layout;
    memset(&layout, 0, sizeof layout);
    ASSERT_EQ(offsetof(Layout, record), 4u);
    memcpy(layout.prefix, "05032009", 9);  // runs four bytes into the record
    EXPECT_EQ(CONV_StringToDateTime(&layout.record, layout.prefix, "%2D%2M%4Z", 0, nullptr, nullptr,
                                    nullptr),
              CONV_OK);
    EXPECT_EQ(layout.record.day, 5);
    EXPECT_EQ(layout.record.month, 3);
    EXPECT_EQ(layout.record.year, 2009);
}

// ---- Round trip through the formatter ----

// Deterministic generator (a 32-bit linear congruential sequence).
struct Generator {
    uint32_t state = 12345u;
    uint32_t Next() {
        state = state * 1103515245u + 12345u;
        return state >> 8;
    }
    int32_t Range(int32_t low, int32_t high) {
        return low + static_cast<int32_t>(Next() % static_cast<uint32_t>(high - low + 1));
    }
};

int DaysIn(int month, int year) {
    static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && conv::IsLeapYear(year) ? 29 : kDays[month - 1];
}

CONV_DateTime RandomValidRecord(Generator &g, int32_t lowYear, int32_t highYear) {
    CONV_DateTime r = Unset();
    int32_t year;
    do {
        year = g.Range(lowYear, highYear);
    } while (year == CONV_DT_UNSET);
    r.year = static_cast<int16_t>(year);
    r.month = static_cast<int16_t>(g.Range(1, 12));
    r.day = static_cast<int16_t>(g.Range(1, DaysIn(r.month, r.year)));
    if (g.Range(0, 50) == 0) {
        r.hour = 24;
        r.minute = 0;
        r.second = 0;
    } else {
        r.hour = static_cast<int16_t>(g.Range(0, 23));
        r.minute = static_cast<int16_t>(g.Range(0, 59));
        r.second = static_cast<int16_t>(g.Range(0, 59));
    }
    const int32_t base = g.Range(0, 9);
    if (base == 0) {
        r.fractionBase = CONV_DT_UNSET;
        r.fraction = g.Range(0, 999999999);
    } else {
        r.fractionBase = static_cast<int16_t>(base);
        r.fraction = g.Range(0, gCONV_SecFracBaseCeiling[base]);
    }
    return r;
}

void ExpectRoundTrip(const CONV_DateTime &original, const std::string &format) {
    ASSERT_EQ(CONV_CheckDateTime(&original), CONV_OK);
    CONV_DateTime formatted = original;
    char text[128];
    ASSERT_EQ(CONV_DateTimeToString(text, &formatted, sizeof text, format.c_str(), nullptr, nullptr,
                                    nullptr),
              CONV_OK)
        << format;
    CONV_DateTime parsed;
    memset(&parsed, 0x22, sizeof parsed);
    parsed.fractionBase = original.fractionBase;
    uint16_t failed = 0;
    ASSERT_EQ(CONV_StringToDateTime(&parsed, text, format.c_str(), 0, nullptr, &failed, nullptr),
              CONV_OK)
        << "'" << text << "' " << format << " failed " << failed;
    EXPECT_EQ(parsed.day, original.day) << text;
    EXPECT_EQ(parsed.month, original.month) << text;
    EXPECT_EQ(parsed.year, original.year) << text;
    EXPECT_EQ(parsed.hour, original.hour) << text;
    EXPECT_EQ(parsed.minute, original.minute) << text;
    EXPECT_EQ(parsed.second, original.second) << text;
    const bool hasFraction = format.find('F') != std::string::npos;
    EXPECT_EQ(parsed.fraction, hasFraction ? original.fraction : CONV_DT_UNSET)
        << text << " " << format;
    EXPECT_EQ(parsed.fractionBase, original.fractionBase);
    EXPECT_EQ(parsed.dayOfWeek, CONV_DT_UNSET);
    EXPECT_EQ(parsed.era, CONV_DT_UNSET);
}

TEST(DateTimeRoundTrip, NumericFormatsGiveBackTheSameFields) {
    Generator g;
    for (int i = 0; i < 3000; ++i) {
        const CONV_DateTime any = RandomValidRecord(g, -32767, 32767);
        ExpectRoundTrip(any, "%Z-%M-%D %H:%I:%S.%F");
        ExpectRoundTrip(any, "%D.%M.%Z %H%%%I%%%S %F");
        ExpectRoundTrip(any, "%6Z%2M%2D%2H%2I%2S%F");
        ExpectRoundTrip(any, "%02D%02M%6Z %02H%02I%02S%F");
        if (any.fractionBase != CONV_DT_UNSET) {
            char fraction[16];
            snprintf(fraction, sizeof fraction, "%%%dF", any.fractionBase);
            ExpectRoundTrip(any, std::string("%Z-%M-%D %H:%I:%S.") + fraction);
            snprintf(fraction, sizeof fraction, "%%0%dF", any.fractionBase);
            ExpectRoundTrip(any, std::string("%Z %M %D %H %I %S ") + fraction);
            snprintf(fraction, sizeof fraction, "%%%dF", any.fractionBase + 3);
            ExpectRoundTrip(any, std::string("%D/%M/%Z %H:%I:%S ") + fraction);
        }
        if (HasFailure()) {
            return;
        }
        const CONV_DateTime modern = RandomValidRecord(g, 0, 9999);
        if (modern.fractionBase != CONV_DT_UNSET) {
            ExpectRoundTrip(modern, "%04Z-%02M-%02D %02H:%02I:%02S.%-9.9F");
        }
        ExpectRoundTrip(modern, "%04Z%02M%02D%02H%02I%02S");
    }
}

// A name field reads names only: digits where a name should stand are a mismatch, with or
// without a width, also for the fields whose member a number field shares (V and W with M, T
// and U with the day of week).
TEST(StringToDateTime, NameFieldsDoNotReadDigits) {
    const dt_test::EraNames names;
    for (const char *format : {"%T", "%U", "%V", "%W", "%Q", "%E", "%1T", "%1U", "%1V", "%1W",
                               "%1Q", "%1E", "%02V", "%-2T"}) {
        const Parsed p = Parse("31", format, CONV_DT_UNSET, 0, names.get());
        EXPECT_EQ(p.status, CONV_ERR_SCAN_MISMATCH) << format;
        const char letter = format[strlen(format) - 1];
        EXPECT_EQ(p.failed, static_cast<uint16_t>(std::string("DFHIMPQSTUVWYZEJ").find(letter)))
            << format;
    }
}

}  // namespace
