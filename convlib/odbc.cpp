// SPDX-License-Identifier: MIT
// odbc.cpp - a CONV_DateTime in the fixed ODBC text forms: timestamp "yyyy-mm-dd
// hh:mm:ss.fffffffff", time "hh:mm:ss" and date "yyyy-mm-dd". A target that holds the whole form
// gets the digits directly, unchecked; a smaller one goes through the formatter, which checks the
// values and cuts the text to the room.
#include <nlssupport/convlib.h>
#include <stdint.h>
#include <string.h>

#include "datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     odbc.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

constexpr char kTimestampFormat[] = "%04Z-%02M-%02D %02H:%02I:%02S.%-9.9F";
constexpr char kTimeFormat[] = "%02H:%02I:%02S";
constexpr char kDateFormat[] = "%04Z-%02M-%02D";

// Characters of the three forms, terminator excluded.
constexpr int32_t kTimestampLength = 29;
constexpr int32_t kTimeLength = 8;
constexpr int32_t kDateLength = 10;

// Writes the lowest `count` decimal digits of value at out, lowest digit last, by repeated
// truncating division. Values are expected to be non-negative; a negative one gives characters
// below "0", as it always has on this path.
void PutDigits(char *out, int32_t value, int32_t count) {
    for (int32_t i = count - 1; i >= 0; --i) {
        out[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
}

// "yyyy-mm-dd" at out (10 characters, no terminator).
void PutDate(char *out, const CONV_DateTime &record) {
    PutDigits(out, record.year, 4);
    out[4] = '-';
    PutDigits(out + 5, record.month, 2);
    out[7] = '-';
    PutDigits(out + 8, record.day, 2);
}

// "hh:mm:ss" at out (8 characters, no terminator).
void PutTime(char *out, const CONV_DateTime &record) {
    PutDigits(out, record.hour, 2);
    out[2] = ':';
    PutDigits(out + 3, record.minute, 2);
    out[5] = ':';
    PutDigits(out + 6, record.second, 2);
}

// The nine fraction digits at out: the lowest fractionBase digits of the fraction, zero-filled on
// the left, then "0" up to nine places. A zero fraction, or a base of 0, gives nine zeros. A base
// outside 0..9 (the unset marker included) is taken as 9 so that the digits stay inside the nine
// places.
void PutFraction(char *out, const CONV_DateTime &record) {
    memset(out, '0', 9);
    if (record.fraction == 0) {
        return;
    }
    int32_t base = record.fractionBase;
    if (base < 0 || base > 9) {
        base = 9;
    }
    PutDigits(out, record.fraction, base);
}

// Shared body of the three functions: the fast path writes `length` characters with `put` when
// the target holds them and the terminator; otherwise the formatter writes `format`. The record
// is copied first, so a record lying inside the target is read intact and the caller's record is
// never written.
uint32_t WriteForm(char *target, const CONV_DateTime *record, int32_t targetSize, int32_t length,
                   void (*put)(char *, const CONV_DateTime &), const char *format,
                   uint16_t *failedField, uint16_t *fieldCount) {
    CONV_DateTime copy;
    memcpy(&copy, record, sizeof copy);
    if (targetSize > length) {
        put(target, copy);
        target[length] = '\0';
        return CONV_OK;
    }
    return CONV_DateTimeToString(target, &copy, targetSize, format, nullptr, failedField,
                                 fieldCount);
}

void PutTimestamp(char *out, const CONV_DateTime &record) {
    PutDate(out, record);
    out[10] = ' ';
    PutTime(out + 11, record);
    out[19] = '.';
    PutFraction(out + 20, record);
}

}  // namespace

// Writes the record as an ODBC timestamp. Returns CONV_OK on the fast path (target of 30 bytes
// or more), otherwise the status of the formatter. The caller owns the target.
extern "C" uint32_t CONV_DateTimeToODBCTSString(char *target, const CONV_DateTime *record,
                                                int32_t targetSize, uint16_t *failedField,
                                                uint16_t *fieldCount) noexcept {
    return WriteForm(target, record, targetSize, kTimestampLength, PutTimestamp, kTimestampFormat,
                     failedField, fieldCount);
}

// Writes the record as an ODBC time. Returns CONV_OK on the fast path (target of 9 bytes or
// more), otherwise the status of the formatter.
extern "C" uint32_t CONV_DateTimeToODBCTimeString(char *target, const CONV_DateTime *record,
                                                  int32_t targetSize, uint16_t *failedField,
                                                  uint16_t *fieldCount) noexcept {
    return WriteForm(target, record, targetSize, kTimeLength, PutTime, kTimeFormat, failedField,
                     fieldCount);
}

// Writes the record as an ODBC date. Returns CONV_OK on the fast path (target of 11 bytes or
// more), otherwise the status of the formatter.
extern "C" uint32_t CONV_DateTimeToODBCDateString(char *target, const CONV_DateTime *record,
                                                  int32_t targetSize, uint16_t *failedField,
                                                  uint16_t *fieldCount) noexcept {
    return WriteForm(target, record, targetSize, kDateLength, PutDate, kDateFormat, failedField,
                     fieldCount);
}
