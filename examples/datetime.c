/* SPDX-License-Identifier: MIT */
/*
 * datetime.c - formatting and parsing date-times, with day, month and era names.
 *
 * A CONV_DateTime holds day, month, year, day of the week, time of day and a fraction of a
 * second; any field may be CONV_DT_UNSET. The format language has fields of the form
 *   "%" [flag "-" or "0"] [width 1..999] [".precision" 1..9, for F only] letter
 * with the letters D day, M month, Z year, Y year in century, H hour, P hour 1..12, Q AM/PM,
 * I minute, S second, F fraction, T/U day name full/short, V/W month name full/short,
 * E era name and J year within the era. Everything else is copied literally ("%%" is "%").
 *
 * Names come from a caller's names record (CONV_DateTimeNames, 45 text pointers) or, where a slot
 * is null or no record is given, from the built-in English names. Era names sit in slots 40..43
 * (era 0 first) and slot 44 holds the word written instead of "1" for the first year of an era.
 * The eras are the four Japanese imperial eras from 8 September 1868 on.
 *
 * The program prints plain text (UTF-8) and returns 0, or 1 when a status is not the expected one.
 */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include <nlssupport/convlib.h>

static int failures = 0;

/* A names record: German day and month names, the default meridiem, four era names. */
/* clang-format off */
static CONV_DateTimeNames names = {
    /* 0..6: full day names, Sunday first */
    "Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag",
    /* 7..13: short day names */
    "So", "Mo", "Di", "Mi", "Do", "Fr", "Sa",
    /* 14..25: full month names, January first (UTF-8 text; widths count bytes) */
    "Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober",
    "November", "Dezember",
    /* 26..37: short month names */
    "Jan", "Feb", "Mär", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez",
    /* 38, 39: before noon, after noon */
    "AM", "PM",
    /* 40..43: era names; when slot 40 is filled, 41..43 must be filled too */
    "Meiji", "Taisho", "Showa", "Heisei",
    /* 44: the first year of an era is written as this word, not as "1" */
    "Gannen",
};
/* clang-format on */

/* Prints a status with its message text. */
static void check(uint32_t status, uint32_t expected) {
    const char *message = "";
    const char *sqlstate = "";

    if (CONV_ErrorMessage(status, &message, &sqlstate) == 0)
        printf("  status %" PRIu32 ": OK\n", status);
    else
        printf("  status %" PRIu32 ": %s %s\n", status, sqlstate, message);
    if (status != expected)
        failures++;
}

/* Formats the record with a format and the names record (may be null) and prints the text. */
static void format(CONV_DateTime *record, const char *fmt, const char *const *nameRecord,
                   uint32_t expected) {
    char text[80];
    uint16_t failedField = 0;
    uint16_t fieldCount = 0;
    uint32_t status = CONV_DateTimeToString(text, record, (int32_t)sizeof text, fmt, nameRecord,
                                            &failedField, &fieldCount);
    printf("\"%s\" -> \"%s\"\n", fmt, text);
    if (status != CONV_OK)
        printf("  failedField %u, fieldCount %u\n", (unsigned)failedField, (unsigned)fieldCount);
    check(status, expected);
}

/* Sets a record to a date and time; the fraction counts milliseconds (fractionBase 3). */
static void set_record(CONV_DateTime *record, int day, int month, int year, int hour, int minute,
                       int second, int32_t millis) {
    record->day = (int16_t)day;
    record->month = (int16_t)month;
    record->year = (int16_t)year;
    record->dayOfWeek = CONV_DT_UNSET;
    record->hour = (int16_t)hour;
    record->minute = (int16_t)minute;
    record->second = (int16_t)second;
    record->fraction = millis;
    record->fractionBase = 3;
    record->era = CONV_DT_UNSET;
}

/* Prints one field of a record, or "unset". */
static void print_field(const char *name, int32_t value, const char *separator) {
    if (value == CONV_DT_UNSET)
        printf("%s unset%s", name, separator);
    else
        printf("%s %" PRId32 "%s", name, value, separator);
}

/* Prints the fields of a record that parsing fills. */
static void print_record(const CONV_DateTime *record) {
    printf("  ");
    print_field("day", record->day, ", ");
    print_field("month", record->month, ", ");
    print_field("year", record->year, ", ");
    print_field("hour", record->hour, ", ");
    print_field("minute", record->minute, ", ");
    print_field("second", record->second, ", ");
    print_field("fraction", record->fraction, "\n");
}

/* Parses text into a record and prints the outcome. */
static uint32_t parse(CONV_DateTime *record, const char *source, const char *fmt,
                      int32_t centuryBase, uint32_t expected) {
    uint16_t failedField = 0;
    uint16_t fieldCount = 0;
    uint32_t status =
        CONV_StringToDateTime(record, source, fmt, centuryBase, names, &failedField, &fieldCount);
    printf("parse \"%s\" with \"%s\"\n", source, fmt);
    if (status == CONV_OK)
        print_record(record);
    else
        printf("  failedField %u, fieldCount %u\n", (unsigned)failedField, (unsigned)fieldCount);
    check(status, expected);
    return status;
}

int main(void) {
    CONV_DateTime dt;

    printf("-- day of the week\n");
    /* Never derived implicitly: CONV_GetDayOfWeek fills it from day, month and year. */
    set_record(&dt, 5, 3, 2009, 13, 7, 9, 5);
    check(CONV_GetDayOfWeek(&dt), CONV_OK);
    printf("5 March 2009 is day %d of the week (0 = Sunday)\n", dt.dayOfWeek);

    printf("-- formatting\n");
    /* Width and "0" flag make fixed-width numbers; F writes fractionBase digits ("005"). */
    format(&dt, "%04Z-%02M-%02D %02H:%02I:%02S.%F", NULL, CONV_OK);
    /* A precision pads the fraction on the right to that many digits. */
    format(&dt, "%02H:%02I:%02S.%.6F", NULL, CONV_OK);
    /* Without a names record the built-in English names are used. */
    format(&dt, "%T, %D %V %Z, %P:%02I %Q", NULL, CONV_OK);
    format(&dt, "%T, %D. %V %Z", names, CONV_OK);
    format(&dt, "%U %02D.%02M.%02Y", names, CONV_OK);
    /* "-" left-justifies in the width; "%%" writes one "%". Widths count bytes: "März" takes 5. */
    format(&dt, "[%-10V] [%10V] 100%%", names, CONV_OK);
    /* E writes the era name and sets the era for a J that follows it. */
    format(&dt, "%E %J (%Z)", names, CONV_OK);
    /* Without an E before it, J writes the Gregorian year. */
    format(&dt, "%J", names, CONV_OK);

    /* The first day of an era: J writes the word of slot 44 instead of "1". */
    set_record(&dt, 8, 1, 1989, 0, 0, 0, 0);
    format(&dt, "%D. %V %Z: %E %J", names, CONV_OK);
    /* The day before belongs to the previous era, in its 64th year. */
    set_record(&dt, 7, 1, 1989, 0, 0, 0, 0);
    format(&dt, "%D. %V %Z: %E %J", names, CONV_OK);
    /* Before 8 September 1868 there is no era. */
    set_record(&dt, 7, 9, 1868, 0, 0, 0, 0);
    format(&dt, "%Z: %E", names, CONV_ERR_ERA_RANGE);
    /* Era fields need era names. */
    set_record(&dt, 5, 3, 2009, 0, 0, 0, 0);
    format(&dt, "%E", NULL, CONV_ERR_NO_ERA_NAMES);
    /* A value a field cannot write stops formatting; the text so far stays. */
    set_record(&dt, 5, 13, 2009, 0, 0, 0, 0);
    format(&dt, "%04Z-%02M-%02D", NULL, CONV_ERR_MONTH);

    printf("-- buffer lengths\n");
    {
        /* The bytes (terminator included) that the longest text of a format needs. */
        static const char *const formats[] = {"%04Z-%02M-%02D", "%T, %D. %V %Z"};
        size_t i;
        for (i = 0; i < sizeof formats / sizeof formats[0]; i++) {
            uint32_t length = 0;
            uint32_t status = CONV_CalcDateTimeLength(formats[i], NULL, &length);
            printf("\"%s\" with the built-in names needs %" PRIu32 " bytes\n", formats[i], length);
            check(status, CONV_OK);
            status = CONV_CalcDateTimeLength(formats[i], names, &length);
            printf("\"%s\" with the German names needs %" PRIu32 " bytes\n", formats[i], length);
            check(status, CONV_OK);
        }
    }

    printf("-- parsing\n");
    /* Every field but fractionBase is reset first; fractionBase says how many digits F keeps. */
    dt.fractionBase = 3;
    parse(&dt, "2009-03-05 13:07:09.5", "%Z-%M-%D %H:%I:%S.%3F", 0, CONV_OK);
    /* Names are matched case-sensitively against the names record. */
    dt.fractionBase = CONV_DT_UNSET;
    if (parse(&dt, "Donnerstag, 5. März 2009", "%T, %D. %V %Z", 0, CONV_OK) == CONV_OK)
        printf("  dayOfWeek %d\n", dt.dayOfWeek);
    /* Y adds centuryBase to the two digits it reads. */
    parse(&dt, "05.03.09", "%D.%M.%Y", 2000, CONV_OK);
    parse(&dt, "05.03.94", "%D.%M.%Y", 1900, CONV_OK);
    /* An era name and an era year give the Gregorian year; the era must come before the year. */
    parse(&dt, "Heisei 21, 5. März", "%E %J, %D. %V", 0, CONV_OK);
    parse(&dt, "Heisei Gannen, 8. Januar", "%E %J, %D. %V", 0, CONV_OK);
    /* Parsing leaves dayOfWeek unset; CONV_GetDayOfWeek fills it. */
    if (CONV_GetDayOfWeek(&dt) == CONV_OK)
        format(&dt, "  that is a %T", names, CONV_OK);

    printf("-- failing parses\n");
    /* A field's own range check: failedField is the field's index (M is 4). */
    parse(&dt, "05.13.2009", "%D.%M.%Z", 0, CONV_ERR_MONTH);
    /*
     * Day and month are checked together at the end, so failedField stays 65535. A bad day
     * reports the month text; callers match on it.
     */
    parse(&dt, "31.02.2009", "%D.%M.%Z", 0, CONV_ERR_DAY);
    /* A literal character that differs. */
    parse(&dt, "2009/03/05", "%Z-%M-%D", 0, CONV_ERR_SCAN_MISMATCH);
    /* Source text left over. */
    parse(&dt, "2009-03-05 ", "%Z-%M-%D", 0, CONV_ERR_SOURCE_LEFT);
    /* An era year beyond the era's end. */
    parse(&dt, "Showa 64, 8. Januar", "%E %J, %D. %V", 0, CONV_ERR_YEAR);

    if (failures != 0) {
        printf("%d unexpected results\n", failures);
        return 1;
    }
    return 0;
}
