/* SPDX-License-Identifier: MIT */
// Cases of the conversion library's date-time routines.
#include <nlssupport/convlib.h>

#include <cstdint>
#include <cstring>
#include <span>

#include "concurrency/reentrancy_cases.h"

namespace concurrency_test {
namespace {

// A record of these values, with the day of the week and the era unset.
CONV_DateTime DateTimeRecord(int day, int month, int year, int hour, int minute, int second,
                             int fraction, int fractionBase) {
    CONV_DateTime r;
    std::memset(&r, 0, sizeof r);
    r.day = static_cast<int16_t>(day);
    r.month = static_cast<int16_t>(month);
    r.year = static_cast<int16_t>(year);
    r.dayOfWeek = CONV_DT_UNSET;
    r.hour = static_cast<int16_t>(hour);
    r.minute = static_cast<int16_t>(minute);
    r.second = static_cast<int16_t>(second);
    r.fraction = fraction;
    r.fractionBase = static_cast<int16_t>(fractionBase);
    r.era = CONV_DT_UNSET;
    return r;
}

// A record filled with a pattern before parsing, so that every field is recorded as written.
CONV_DateTime Scratch() {
    CONV_DateTime r;
    std::memset(&r, 0x7E, sizeof r);
    return r;
}

void RecordFields(Outcome &o, const CONV_DateTime &r) {
    o.Num(r.day).Num(r.month).Num(r.year).Num(r.dayOfWeek).Num(r.second).Num(r.minute);
    o.Num(r.hour).Num(r.fraction).Num(r.fractionBase).Num(r.era);
}

// A names record in another language, with era names and the SYEAR text.
const CONV_DateTimeNames &GermanNames() {
    static const CONV_DateTimeNames kNames = {
        "Sonntag",    "Montag",    "Dienstag",    "Mittwoch", "Donnerstag", "Freitag", "Samstag",
        "So",         "Mo",        "Di",          "Mi",       "Do",         "Fr",      "Sa",
        "Januar",     "Februar",   "M\xC3\xA4rz", "April",    "Mai",        "Juni",    "Juli",
        "August",     "September", "Oktober",     "November", "Dezember",   "Jan",     "Feb",
        "M\xC3\xA4r", "Apr",       "Mai",         "Jun",      "Jul",        "Aug",     "Sep",
        "Okt",        "Nov",       "Dez",         "vorm.",    "nachm.",     "Meiji",   "Taisho",
        "Showa",      "Heisei",    "Gannen",
    };
    return kNames;
}

constexpr const char *kFormats[] = {
    "%T, %D %V %Z %H:%I:%S.%3F",
    "%U %W %02D %Y %P %Q %-9.9F|",
    "%05V %04Z %%",
    "%E %J %M/%D",
    "%-12T|%12V|",
};

std::string DateTimeFormatting(const char *const *names) {
    const CONV_DateTime records[] = {
        DateTimeRecord(10, 10, 1994, 23, 59, 58, 123, 3),
        DateTimeRecord(8, 1, 1989, 0, 0, 0, 5, 9),
        DateTimeRecord(29, 2, 2001, 12, 0, 0, 0, 1),
        DateTimeRecord(1, 1, 1850, 24, 0, 0, CONV_DT_UNSET, CONV_DT_UNSET),
    };
    Outcome o;
    for (CONV_DateTime record : records) {
        o.Num(CONV_GetDayOfWeek(&record));
        for (const char *format : kFormats) {
            for (int32_t size : {64, 12, 0}) {
                Buffer<64> b;
                uint16_t failed = 0x7E7E;
                uint16_t fields = 0x7E7E;
                o.Num(CONV_DateTimeToString(b.data(), &record, size, format, names, &failed,
                                            &fields));
                o.Num(failed).Num(fields);
                b.Record(o);
                RecordFields(o, record);
            }
        }
    }
    for (const char *format : kFormats) {
        uint32_t length = 0x7E7E;
        o.Num(CONV_CalcDateTimeLength(format, names, &length)).Num(length);
    }
    return o.Take();
}

std::string DateTimeFormattingWithDefaultNames() {
    return DateTimeFormatting(nullptr);
}

std::string DateTimeFormattingWithNames() {
    return DateTimeFormatting(GermanNames());
}

struct ParseCase {
    const char *source;
    const char *format;
};

std::string DateTimeParsing(const char *const *names, std::span<const ParseCase> cases) {
    Outcome o;
    for (const ParseCase &c : cases) {
        for (int16_t base : {int16_t{3}, int16_t{CONV_DT_UNSET}}) {
            CONV_DateTime record = Scratch();
            record.fractionBase = base;
            uint16_t failed = 0x7E7E;
            uint16_t fields = 0x7E7E;
            o.Num(
                CONV_StringToDateTime(&record, c.source, c.format, 1900, names, &failed, &fields));
            o.Num(failed).Num(fields);
            RecordFields(o, record);
        }
    }
    return o.Take();
}

std::string DateTimeParsingWithDefaultNames() {
    static constexpr ParseCase kCases[] = {
        {"Monday, 10 October 1994 23:59:58.123", "%T, %D %V %Z %H:%I:%S.%3F"},
        {"Sun JAN 08 89 12 AM", "%U %W %02D %Y %P %Q"},
        {"Sun Jan 08 89", "%U %W %02D %Y"},
        {"31.11.1999", "%D.%M.%Z"},
        {"65537.1.2000", "%D.%M.%Z"},
        {"1.1.2000 extra", "%D.%M.%Z"},
        {"1.1.", "%D.%M.%Z"},
        {"24:00:01", "%H:%I:%S"},
        {"  7/ 3/2009 5", "%D/%M/%Z %F"},
    };
    return DateTimeParsing(nullptr, kCases);
}

std::string DateTimeParsingWithNames() {
    static constexpr ParseCase kCases[] = {
        {"Montag, 10 Oktober 1994", "%T, %D %V %Z"},
        {"Heisei Gannen 1/8", "%E %J %M/%D"},
        {"Showa 64 1/7", "%E %J %M/%D"},
        {"Heisei 2 5/3", "%E %J %M/%D"},
        {"Meiji 1 1/1", "%E %J %M/%D"},
        {"Mo M\xC3\xA4r 05 09 3 nachm.", "%U %W %02D %Y %P %Q"},
        {"  Okt", "%5W"},
    };
    return DateTimeParsing(GermanNames(), kCases);
}

// A source stored inside the record is read from a temporary copy that the parser allocates.
std::string DateTimeParsingInsideTheRecord() {
    Outcome o;
    for (const char *text : {"12.11.1999", "40.11.1999", "1.2.3"}) {
        CONV_DateTime record = Scratch();
        char *inside = reinterpret_cast<char *>(&record) + 2;
        std::memcpy(inside, text, std::strlen(text) + 1);
        uint16_t failed = 0x7E7E;
        uint16_t fields = 0x7E7E;
        o.Num(CONV_StringToDateTime(&record, inside, "%D.%M.%Z", 0, nullptr, &failed, &fields));
        o.Num(failed).Num(fields);
        RecordFields(o, record);
    }
    return o.Take();
}

std::string CheckDateTime() {
    CONV_DateTime records[] = {
        DateTimeRecord(10, 10, 1994, 23, 59, 58, 123, 3),
        DateTimeRecord(31, 11, 1999, 0, 0, 0, 0, 3),
        DateTimeRecord(29, 2, 1900, 0, 0, 0, 0, 3),
        DateTimeRecord(29, 2, 2000, 0, 0, 0, 0, 3),
        DateTimeRecord(1, 13, 2000, 0, 0, 0, 0, 3),
        DateTimeRecord(1, 1, 2000, 24, 0, 0, 5, 1),
        DateTimeRecord(1, 1, 2000, 24, 1, 0, 0, 1),
        DateTimeRecord(1, 1, 2000, 0, 60, 0, 0, 1),
        DateTimeRecord(1, 1, 2000, 0, 0, 60, 0, 1),
        DateTimeRecord(1, 1, 2000, 0, 0, 0, 1000, 3),
        DateTimeRecord(1, 1, 2000, 0, 0, 0, 1, 10),
        DateTimeRecord(1, 1, CONV_DT_UNSET, 0, 0, 0, 0, 1),
        DateTimeRecord(1, 1, 2000, 0, 0, 0, CONV_DT_UNSET, 0),
    };
    records[0].dayOfWeek = 1;
    records[1].dayOfWeek = 7;
    Outcome o;
    for (const CONV_DateTime &record : records) {
        o.Num(CONV_CheckDateTime(&record));
    }
    return o.Take();
}

std::string DayOfWeek() {
    const CONV_DateTime records[] = {
        DateTimeRecord(10, 10, 1994, 0, 0, 0, 0, 1),
        DateTimeRecord(1, 3, -9, 0, 0, 0, 0, 1),
        DateTimeRecord(29, 2, 2000, 0, 0, 0, 0, 1),
        DateTimeRecord(1, 1, 1, 0, 0, 0, 0, 1),
        DateTimeRecord(31, 12, 32767, 0, 0, 0, 0, 1),
        DateTimeRecord(31, 4, 2000, 0, 0, 0, 0, 1),
        DateTimeRecord(1, 1, CONV_DT_UNSET, 0, 0, 0, 0, 1),
    };
    Outcome o;
    for (CONV_DateTime record : records) {
        o.Num(CONV_GetDayOfWeek(&record));
        RecordFields(o, record);
    }
    return o.Take();
}

std::string OdbcWriters() {
    const CONV_DateTime records[] = {
        DateTimeRecord(5, 3, 2009, 13, 7, 9, 5, 3),
        DateTimeRecord(5, 3, 2009, 13, 7, 9, 5000000, CONV_DT_UNSET),
        DateTimeRecord(5, 13, 12345, 25, 7, 9, 1, 6),
    };
    Outcome o;
    for (const CONV_DateTime &record : records) {
        for (int32_t size : {40, 30, 29, 20, 11, 10, 9, 8, 0}) {
            uint16_t failed = 0x7E7E;
            uint16_t fields = 0x7E7E;
            Buffer<40> ts;
            o.Num(CONV_DateTimeToODBCTSString(ts.data(), &record, size, &failed, &fields));
            o.Num(failed).Num(fields);
            ts.Record(o);
            Buffer<40> time;
            o.Num(CONV_DateTimeToODBCTimeString(time.data(), &record, size, &failed, &fields));
            o.Num(failed).Num(fields);
            time.Record(o);
            Buffer<40> date;
            o.Num(CONV_DateTimeToODBCDateString(date.data(), &record, size, &failed, &fields));
            o.Num(failed).Num(fields);
            date.Record(o);
        }
    }
    return o.Take();
}

constexpr ReentrancyCase kCases[] = {
    {"date-time formatting, default names", DateTimeFormattingWithDefaultNames},
    {"date-time formatting, caller's names", DateTimeFormattingWithNames},
    {"date-time parsing, default names", DateTimeParsingWithDefaultNames},
    {"date-time parsing, caller's names", DateTimeParsingWithNames},
    {"date-time parsing inside the record", DateTimeParsingInsideTheRecord},
    {"CONV_CheckDateTime", CheckDateTime},
    {"CONV_GetDayOfWeek", DayOfWeek},
    {"ODBC writers", OdbcWriters},
};

}  // namespace

std::span<const ReentrancyCase> DateTimeCases() {
    return kCases;
}

}  // namespace concurrency_test
