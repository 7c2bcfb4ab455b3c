// SPDX-License-Identifier: MIT
// datetime.cpp - date-time values and the calendar: the default name tables, the fraction
// ceilings, the validity check of a record, the day of the week and the era calendar (four
// Japanese imperial eras, the first beginning on 8 September 1868).
#include <nlssupport/convlib.h>
#include <stdint.h>

#include <initializer_list>

#include "datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     datetime.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

// Default names. The short month names are in capitals while the short day names are
// capitalised words: parsing compares case-sensitively and callers match on these texts.
extern "C" const char *const gCONV_DefaultNameOfDay[7] = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
extern "C" const char *const gCONV_DefaultShortNameOfDay[7] = {"Sun", "Mon", "Tue", "Wed",
                                                               "Thu", "Fri", "Sat"};
extern "C" const char *const gCONV_DefaultNameOfMonth[12] = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
extern "C" const char *const gCONV_DefaultShortNameOfMonth[12] = {
    "JAN", "FEB", "MAR", "APR", "MAY", "JUN", "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
extern "C" const char *const gCONV_DefaultMeridiem[2] = {"AM", "PM"};

// The field letters, the text of conv::kFieldLetters.
extern "C" const char gCONV_Letter[17] = {
    conv::kFieldLetters[0],  conv::kFieldLetters[1],  conv::kFieldLetters[2],
    conv::kFieldLetters[3],  conv::kFieldLetters[4],  conv::kFieldLetters[5],
    conv::kFieldLetters[6],  conv::kFieldLetters[7],  conv::kFieldLetters[8],
    conv::kFieldLetters[9],  conv::kFieldLetters[10], conv::kFieldLetters[11],
    conv::kFieldLetters[12], conv::kFieldLetters[13], conv::kFieldLetters[14],
    conv::kFieldLetters[15], conv::kFieldLetters[16]};

// Index 0 is never used: a base of 0 is rejected before the table is read.
extern "C" const int32_t gCONV_SecFracBaseCeiling[10] = {
    -1, 9, 99, 999, 9999, 99999, 999999, 9999999, 99999999, 999999999};

namespace conv {

// Gregorian rule for every year, zero and negative years included. Divisibility by 4 is read from
// the two's-complement low bits; by 100 and 400 from truncating remainders, which give the
// mathematical answer for negative years as well. Returns true for a leap year.
bool IsLeapYear(int32_t year) noexcept {
    if ((year & 3) != 0) {
        return false;
    }
    return year % 100 != 0 || year % 400 == 0;
}

// Checks a day against the length of its month (both already in range); the year only matters
// for 29 February and only when it is set. Returns CONV_OK or CONV_ERR_DAY.
uint32_t CheckDayInMonth(int32_t day, int32_t month, int32_t year) noexcept {
    if (day == 31 && (month == 4 || month == 6 || month == 9 || month == 11)) {
        return CONV_ERR_DAY;
    }
    if (month == 2) {
        if (day >= 30) {
            return CONV_ERR_DAY;
        }
        if (day == 29 && year != kUnset && !IsLeapYear(year)) {
            return CONV_ERR_DAY;
        }
    }
    return CONV_OK;
}

}  // namespace conv

// Checks every set field of the record in a fixed order (day, month, the day within its month,
// hour, minute, second, 24:00:00, the fraction) by the letters' rules and returns the first
// failure, or CONV_OK. The record is only read.
extern "C" uint32_t CONV_CheckDateTime(const CONV_DateTime *record) noexcept {
    using conv::kUnset;
    // A set field outside the range of its letter fails with the letter's status.
    const auto check = [record](int32_t letter) {
        const int32_t value = record->*conv::kFieldRules[letter].member;
        return value == kUnset ? CONV_OK : conv::CheckValue(letter, *record);
    };
    uint32_t status = check(CONV_FIELD_D);
    if (status == CONV_OK) {
        status = check(CONV_FIELD_M);
    }
    if (status == CONV_OK && record->day != kUnset && record->month != kUnset) {
        status = conv::CheckDayInMonth(record->day, record->month, record->year);
    }
    for (const int32_t letter : {CONV_FIELD_H, CONV_FIELD_I, CONV_FIELD_S}) {
        if (status == CONV_OK) {
            status = check(letter);
        }
    }
    if (status != CONV_OK) {
        return status;
    }
    // 24:00:00 is midnight at the end of the day; its fraction is not looked at, so 24:00:00
    // with a non-zero fraction passes (kept: callers rely on it).
    if (record->hour == 24 && ((record->minute != kUnset && record->minute != 0) ||
                               (record->second != kUnset && record->second != 0))) {
        return CONV_ERR_HOUR24;
    }
    // The unset fraction is the 16-bit marker compared over the whole 32-bit field; with it the
    // base is not examined at all.
    if (record->fraction == kUnset) {
        return CONV_OK;
    }
    return conv::CheckFraction(record->fraction, record->fractionBase);
}

// Computes the day of the week (0 = Sunday) of the record's date with Zeller's congruence, the
// year counted from March, and stores it in dayOfWeek. Returns CONV_OK; on failure
// (CONV_ERR_DAY, CONV_ERR_MONTH, CONV_ERR_YEAR) the record is unchanged.
extern "C" uint32_t CONV_GetDayOfWeek(CONV_DateTime *record) noexcept {
    const int32_t day = record->day;
    int32_t month = record->month;
    if (day < 1 || day > 31) {
        return CONV_ERR_DAY;
    }
    if (month < 1 || month > 12) {
        return CONV_ERR_MONTH;
    }
    if (record->year == conv::kUnset) {
        return CONV_ERR_YEAR;
    }
    const uint32_t status = conv::CheckDayInMonth(day, month, record->year);
    if (status != CONV_OK) {
        return status;
    }
    // January and February count as months 13 and 14 of the previous year. The year stays a
    // 16-bit value (-32767 - 1 still fits); divisions truncate, so the remainder of a negative
    // year can be negative and is stored as it is.
    int16_t year = record->year;
    if (month <= 2) {
        year = static_cast<int16_t>(year - 1);
        month += 12;
    }
    const int32_t y = year;
    const int32_t sum = day + (13 * month + 8) / 5 + y + y / 4 - y / 100 + y / 400;
    record->dayOfWeek = static_cast<int16_t>(sum % 7);
    return CONV_OK;
}

namespace conv {

// Era of a set date, first matching row wins. The first days (8 Sep 1868, 31 Jul 1912,
// 26 Dec 1926, 8 Jan 1989) are fixed as the formatter and the parser both use them. Returns
// CONV_OK with *era written, or CONV_ERR_ERA_RANGE before 8 September 1868.
uint32_t GetEra(int32_t day, int32_t month, int32_t year, int16_t *era) noexcept {
    int16_t result;
    if (year > 1989) {
        result = 3;
    } else if (year == 1989) {
        result = (month == 1 && day <= 7) ? 2 : 3;
    } else if (year > 1926) {
        result = 2;
    } else if (year == 1926) {
        result = (month == 12 && day >= 26) ? 2 : 1;
    } else if (year > 1912) {
        result = 1;
    } else if (year == 1912) {
        if (month <= 6) {
            result = 0;
        } else if (month == 7) {
            result = day >= 31 ? 1 : 0;
        } else {
            result = 1;
        }
    } else if (year > 1868) {
        result = 0;
    } else if (year == 1868) {
        if (month <= 8 || (month == 9 && day <= 7)) {
            return CONV_ERR_ERA_RANGE;
        }
        result = 0;
    } else {
        return CONV_ERR_ERA_RANGE;
    }
    *era = result;
    return CONV_OK;
}

// Gregorian year of an era year, for the parsed month and day (unset ones compare as -32768).
// Kept asymmetries: era 3 does not test its first day (year 1, 7 January is accepted as
// 7 January 1989), and era 1 does not test the end of its fifteenth year (year 15, 30 December
// becomes 30 December 1926, which formatting assigns to era 2); callers depend on both. A result
// beyond the 16-bit year is refused as well. Returns CONV_OK with *year written, or
// CONV_ERR_YEAR.
uint32_t EraYearToYear(int32_t era, int32_t eraYear, int32_t month, int32_t day,
                       int16_t *year) noexcept {
    switch (era) {
        case 0:
            if (eraYear < 1 || eraYear > 45) {
                return CONV_ERR_YEAR;
            }
            if (eraYear == 1 && (month <= 8 || (month == 9 && day <= 7))) {
                return CONV_ERR_YEAR;
            }
            if (eraYear == 45 && (month >= 8 || (month == 7 && day >= 31))) {
                return CONV_ERR_YEAR;
            }
            break;
        case 1:
            if (eraYear < 1 || eraYear > 15) {
                return CONV_ERR_YEAR;
            }
            if (eraYear == 1 && (month <= 6 || (month == 7 && day <= 30))) {
                return CONV_ERR_YEAR;
            }
            break;
        case 2:
            if (eraYear < 1 || eraYear > 64) {
                return CONV_ERR_YEAR;
            }
            // GCOVR_EXCL_BR_START: the parser range-checks a month as it reads it, so one that
            // is set and not up to 11 is 12.
            if (eraYear == 1 && (month <= 11 || (month == 12 && day <= 25))) {
                return CONV_ERR_YEAR;
            }
            // GCOVR_EXCL_BR_STOP
            if (eraYear == 64 && (month >= 2 || (month == 1 && day >= 8))) {
                return CONV_ERR_YEAR;
            }
            break;
        case 3:
            if (eraYear <= 0) {
                return CONV_ERR_YEAR;
            }
            break;
        default:
            return CONV_ERR_YEAR;
    }
    const int32_t gregorian = eraYear + kEraOffset[era];
    if (gregorian > 32767) {
        return CONV_ERR_YEAR;
    }
    *year = static_cast<int16_t>(gregorian);
    return CONV_OK;
}

}  // namespace conv
