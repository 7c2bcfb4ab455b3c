/* SPDX-License-Identifier: MIT */
/*
 * odbc.c - ODBC timestamp, time and date text.
 *
 * CONV_DateTimeToODBCTSString, CONV_DateTimeToODBCTimeString and CONV_DateTimeToODBCDateString
 * write a CONV_DateTime as
 *     "yyyy-mm-dd hh:mm:ss.fffffffff"  (30 bytes with the terminator)
 *     "hh:mm:ss"                       (9 bytes)
 *     "yyyy-mm-dd"                     (11 bytes)
 * Given a target of at least that size they take the fast path: the digits are written directly,
 * nothing is checked, the status is always CONV_OK. A smaller target takes the slow path through
 * CONV_DateTimeToString, which checks the values and cuts the text to the room there is, reporting
 * CONV_WARN_TRUNCATION when only the fraction was cut and CONV_ERR_TARGET_TOO_SMALL otherwise.
 *
 * The program prints plain text and returns 0, or 1 when a status is not the expected one.
 */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include <nlssupport/convlib.h>

static int failures = 0;

/* The three writers share one signature. */
typedef uint32_t (*OdbcWriter)(char *, const CONV_DateTime *, int32_t, uint16_t *, uint16_t *);

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

/*
 * Writes the record with one writer into a target of targetSize bytes and prints the text in
 * brackets (trailing blanks show). failedField and fieldCount are filled on the slow path only,
 * so they start at a marker value here.
 */
static void write_text(const char *name, OdbcWriter writer, const CONV_DateTime *record,
                       int32_t targetSize, uint32_t expected) {
    char target[40];
    uint16_t failedField = 9999;
    uint16_t fieldCount = 9999;
    uint32_t status;

    memset(target, '#', sizeof target);
    status = writer(target, record, targetSize, &failedField, &fieldCount);
    printf("%s, size %2" PRId32 ": [%s]\n", name, targetSize, target);
    if (failedField != 9999 || fieldCount != 9999)
        printf("  slow path: failedField %u, fieldCount %u\n", (unsigned)failedField,
               (unsigned)fieldCount);
    check(status, expected);
}

/* A record for 5 March 2009 13:07:09 with the given fraction and fractionBase. */
static CONV_DateTime make_record(int32_t fraction, int16_t fractionBase) {
    CONV_DateTime record;
    record.day = 5;
    record.month = 3;
    record.year = 2009;
    record.dayOfWeek = CONV_DT_UNSET;
    record.hour = 13;
    record.minute = 7;
    record.second = 9;
    record.fraction = fraction;
    record.fractionBase = fractionBase;
    record.era = CONV_DT_UNSET;
    return record;
}

int main(void) {
    CONV_DateTime record = make_record(0, CONV_DT_UNSET);

    printf("-- fast path: full-size targets\n");
    write_text("timestamp", CONV_DateTimeToODBCTSString, &record, 30, CONV_OK);
    write_text("time     ", CONV_DateTimeToODBCTimeString, &record, 9, CONV_OK);
    write_text("date     ", CONV_DateTimeToODBCDateString, &record, 11, CONV_OK);

    printf("-- the fraction on the fast path: always nine digits\n");
    /*
     * fraction counts units of 10^-fractionBase seconds: base 3 is milliseconds, base 6
     * microseconds, base 9 nanoseconds. The digits are placed right after the point and the rest
     * is filled with zeros.
     */
    record = make_record(5, 3);
    write_text("5 ms     ", CONV_DateTimeToODBCTSString, &record, 30, CONV_OK);
    record = make_record(1, 6);
    write_text("1 us     ", CONV_DateTimeToODBCTSString, &record, 30, CONV_OK);
    record = make_record(123456789, 9);
    write_text("ns       ", CONV_DateTimeToODBCTSString, &record, 30, CONV_OK);

    printf("-- slow path: smaller targets\n");
    /* One byte short: the fraction is cut to eight places, which is only a warning. */
    record = make_record(5, 3);
    write_text("timestamp", CONV_DateTimeToODBCTSString, &record, 29, CONV_WARN_TRUNCATION);
    /*
     * Without a fractionBase the fraction counts nanoseconds; the slow path writes that count as
     * it is, left-justified in nine places (the fast path would write it zero-filled).
     */
    record = make_record(5000000, CONV_DT_UNSET);
    write_text("timestamp", CONV_DateTimeToODBCTSString, &record, 29, CONV_WARN_TRUNCATION);
    /* Cutting any other field is an error; the text written so far stays, terminated. */
    record = make_record(0, CONV_DT_UNSET);
    write_text("date     ", CONV_DateTimeToODBCDateString, &record, 10, CONV_ERR_TARGET_TOO_SMALL);
    write_text("time     ", CONV_DateTimeToODBCTimeString, &record, 8, CONV_ERR_TARGET_TOO_SMALL);

    printf("-- values are checked on the slow path only\n");
    /* Month 13: the fast path writes whatever the record holds. */
    record.month = 13;
    write_text("date     ", CONV_DateTimeToODBCDateString, &record, 11, CONV_OK);
    write_text("date     ", CONV_DateTimeToODBCDateString, &record, 10, CONV_ERR_MONTH);
    /* The slow path also needs every field it writes: an unset year is an error. */
    record = make_record(0, CONV_DT_UNSET);
    record.year = CONV_DT_UNSET;
    write_text("date     ", CONV_DateTimeToODBCDateString, &record, 10, CONV_ERR_YEAR);

    if (failures != 0) {
        printf("%d unexpected results\n", failures);
        return 1;
    }
    return 0;
}
