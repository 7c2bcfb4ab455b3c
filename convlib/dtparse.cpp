/* SPDX-License-Identifier: MIT */
/*
 * dtparse.cpp - date-time parsing: source text read into a CONV_DateTime under a format of the
 * library's date-time format language, with the names of the caller or the defaults, the
 * meridiem rules, era names and the SYEAR text, and the checks made once the format is read.
 */
#include <ctype.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include <nlssupport/convlib.h>
#include "convlib/convlib_internal.h"
#include "convlib/datetime_internal.h"
#include <nlssupport/memmgr.h>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dtparse.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_internal.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

/* What is known about the meridiem while reading: nothing yet, an hour read by P without a
 * designator, or the index (0 before noon, 1 after noon) of the designator read. */
enum Meridiem : int32_t {
    kMeridiemBeforeNoon = 0,
    kMeridiemAfterNoon = 1,
    kMeridiemNone = 2,
    kMeridiemHourOnly = 3,
};

/* State of one parse. */
struct Parse {
    const char *source;       /* current source position */
    CONV_DateTime *record;    /* the record being filled */
    const char *const *names; /* caller's names record, or null */
    int32_t centuryBase;      /* added to a year read by Y */
    int32_t meridiem;         /* a Meridiem value */
};

/* The number read, kept by its low 16 bits: 65537 read for a day is day 1 (kept: the range test
 * is made on the stored value). */
int16_t Low16(int32_t value) {
    return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(value)));
}

/* A number field read straight into a 16-bit member of the record: the member and the range
 * its stored value must lie in. */
struct PlainField {
    int16_t CONV_DateTime::*member; /* null: the letter is not read this way */
    int16_t low;
    int16_t high;
};

/* The plain number fields by field index: D, H, I, M, S and Z. Z takes any year except the
 * unset value, which lies outside every other range too. */
constexpr PlainField kPlainFields[16] = {
    {&CONV_DateTime::day, 1, 31},                 /* D */
    {nullptr, 0, 0},                              /* F */
    {&CONV_DateTime::hour, 0, 24},                /* H */
    {&CONV_DateTime::minute, 0, 59},              /* I */
    {&CONV_DateTime::month, 1, 12},               /* M */
    {nullptr, 0, 0},                              /* P */
    {nullptr, 0, 0},                              /* Q */
    {&CONV_DateTime::second, 0, 59},              /* S */
    {nullptr, 0, 0},                              /* T */
    {nullptr, 0, 0},                              /* U */
    {nullptr, 0, 0},                              /* V */
    {nullptr, 0, 0},                              /* W */
    {nullptr, 0, 0},                              /* Y */
    {&CONV_DateTime::year, INT16_MIN, INT16_MAX}, /* Z */
    {nullptr, 0, 0},                              /* E */
    {nullptr, 0, 0},                              /* J */
};

/* The common field "%<w>L" or "%0<w>L" (w one digit 1..9, L one of D H I M S Z) whose member is
 * still unset, whose w source characters are all digits and whose value is in range: stores
 * the value, moves *fmt and the source past field and number and returns true. Returns false,
 * changing nothing, for everything else, which the general field reader then handles with the
 * same result (these are exactly the steps it takes for such a field when it succeeds). */
inline bool ReadPlainField(Parse &parse, const char **fmt) {
    const char *f = *fmt;
    size_t at = 1;
    if (f[1] == '0') {
        at = 2;
    }
    const unsigned width = static_cast<unsigned char>(f[at]) - '0';
    if (width < 1 || width > 9) {
        return false;
    }
    const int32_t letter = kConvLetterTable.index[static_cast<unsigned char>(f[at + 1])];
    if (letter < 0 || kPlainFields[letter].member == nullptr) {
        return false;
    }
    const PlainField &plain = kPlainFields[letter];
    int16_t &target = parse.record->*plain.member;
    if (target != kConvUnset) {
        return false;
    }
    const char *source = parse.source;
    int32_t value = 0;
    for (unsigned i = 0; i < width; ++i) {
        const unsigned digit = static_cast<unsigned char>(source[i]) - '0';
        if (digit > 9) {
            return false;
        }
        value = value * 10 + static_cast<int32_t>(digit);
    }
    const int16_t stored = Low16(value);
    if (stored < plain.low || stored > plain.high || stored == kConvUnset) {
        return false;
    }
    target = stored;
    parse.source = source + width;
    *fmt = f + at + 2;
    return true;
}

/* Reads the first name of a table of count names (null slots skipped) that stands at the source
 * position; *index receives its position in the table. Returns CONV_OK, CONV_ERR_FORMAT_LEFT or
 * CONV_ERR_SCAN_MISMATCH. */
uint32_t ScanNames(Parse &parse, const char *const *table, int32_t count,
                   const CONV_FieldDescriptor &field, int32_t *index) {
    for (int32_t i = 0; i < count; ++i) {
        if (table[i] == nullptr) {
            continue;
        }
        uint16_t found = 0;
        const uint32_t status = CONV_ScanString(&parse.source, &found, &table[i], 1, &field);
        if (status == CONV_OK) {
            *index = i;
            return CONV_OK;
        }
        if (status != CONV_ERR_SCAN_MISMATCH) {
            return status;
        }
    }
    return CONV_ERR_SCAN_MISMATCH;
}

/* Reads a name of one group: the caller's group when a names record is given and the group's
 * first slot is set, else the whole default group. */
uint32_t ScanGroup(Parse &parse, int32_t firstSlot, const char *const *defaults, int32_t count,
                   const CONV_FieldDescriptor &field, int32_t *index) {
    const char *const *table = defaults;
    if (parse.names != nullptr && parse.names[firstSlot] != nullptr) {
        table = parse.names + firstSlot;
    }
    return ScanNames(parse, table, count, field, index);
}

/* Reads a number into *target (low 16 bits) after checking that the target is still unset.
 * Returns CONV_OK, CONV_ERR_RESCAN or the status of the number reader. */
uint32_t ScanField16(Parse &parse, const CONV_FieldDescriptor &field, int16_t *target) {
    if (*target != kConvUnset) {
        return CONV_ERR_RESCAN;
    }
    int32_t value = 0;
    if (!CONV_ScanPlainDigits(&parse.source, &value, field.width)) {
        const uint32_t status = CONV_ScanNumber(&parse.source, &value, &field);
        if (status != CONV_OK) {
            return status;
        }
    }
    *target = Low16(value);
    return CONV_OK;
}

/* Letter F. Without a width the number is taken unscaled. With a width the characters are read
 * as the first digits after a decimal point, scaled to fractionBase digits: with base 3, "5"
 * gives 500 and "1234" gives 123. Returns CONV_OK or the failing status. */
uint32_t ScanFraction(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    if (record.fraction != kConvUnset) {
        return CONV_ERR_RESCAN;
    }
    if (field.width == kConvNoField) {
        int32_t value = 0;
        const uint32_t status = CONV_ScanNumber(&parse.source, &value, &field);
        if (status != CONV_OK) {
            return status;
        }
        record.fraction = value;
    } else {
        const int32_t base = record.fractionBase;
        if (base < 1 || base > 9) {
            return CONV_ERR_FRACTION_BASE;
        }
        const size_t taken = strnlen(parse.source, field.width);
        char scratch[1000];
        memcpy(scratch, parse.source, taken);
        scratch[taken] = '\0';
        /* Without a flag the field may be blank on both sides; with "-" or "0" only on the right.
         */
        CONV_Trim(scratch,
                  field.flag == 0 ? (CONV_TRIM_LEADING | CONV_TRIM_TRAILING) : CONV_TRIM_TRAILING);
        if (isspace(static_cast<unsigned char>(scratch[0])) != 0) {
            return CONV_ERR_SCAN_MISMATCH;
        }
        if (CONV_IsNumber(scratch, 0, '.') != CONV_OK) {
            return CONV_ERR_SCAN_MISMATCH;
        }
        size_t length = strlen(scratch);
        while (length < static_cast<size_t>(base)) {
            scratch[length++] = '0';
        }
        scratch[base] = '\0';
        char *end = nullptr;
        const long value = strtol(scratch, &end, 10);
        if (end == scratch || *end != '\0') {
            return CONV_ERR_SCAN_MISMATCH;
        }
        record.fraction = static_cast<int32_t>(value);
        parse.source += taken;
    }
    /* Compared unsigned, so a negative fraction fails as well. */
    if (static_cast<uint32_t>(record.fraction) > 999999999u) {
        return CONV_ERR_FRACTION;
    }
    return CONV_OK;
}

/* Reads one field of the given letter into the record. Returns CONV_OK or the field's status. */
uint32_t ScanField(Parse &parse, int32_t letter, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    uint32_t status = CONV_OK;
    int32_t index = 0;
    switch (letter) {
        case kLetterD:
            status = ScanField16(parse, field, &record.day);
            if (status == CONV_OK && (record.day < 1 || record.day > 31)) {
                status = CONV_ERR_DAY;
            }
            return status;
        case kLetterF:
            return ScanFraction(parse, field);
        case kLetterH:
            status = ScanField16(parse, field, &record.hour);
            if (status == CONV_OK && (record.hour < 0 || record.hour > 24)) {
                status = CONV_ERR_HOUR24;
            }
            return status;
        case kLetterI:
            status = ScanField16(parse, field, &record.minute);
            if (status == CONV_OK && (record.minute < 0 || record.minute > 59)) {
                status = CONV_ERR_MINUTE;
            }
            return status;
        case kLetterM:
            status = ScanField16(parse, field, &record.month);
            if (status == CONV_OK && (record.month < 1 || record.month > 12)) {
                status = CONV_ERR_MONTH;
            }
            return status;
        case kLetterP:
            status = ScanField16(parse, field, &record.hour);
            if (status != CONV_OK) {
                return status;
            }
            if (record.hour < 1 || record.hour > 12) {
                return CONV_ERR_HOUR12;
            }
            if (parse.meridiem == kMeridiemNone) {
                parse.meridiem = kMeridiemHourOnly;
            } else if (parse.meridiem == kMeridiemAfterNoon && record.hour != 12) {
                record.hour = static_cast<int16_t>(record.hour + 12);
            }
            return CONV_OK;
        case kLetterQ:
            if (parse.meridiem == kMeridiemBeforeNoon || parse.meridiem == kMeridiemAfterNoon) {
                return CONV_ERR_RESCAN;
            }
            status = ScanGroup(parse, CONV_NAMES_MERIDIEM, gCONV_DefaultMeridiem, 2, field, &index);
            if (status != CONV_OK) {
                return status;
            }
            /* The before-noon designator never changes the hour: "12" with it stays hour 12
             * (kept: callers read 12 AM as noon). */
            if (parse.meridiem == kMeridiemHourOnly && index == kMeridiemAfterNoon &&
                record.hour != 12) {
                record.hour = static_cast<int16_t>(record.hour + 12);
            }
            parse.meridiem = index;
            return CONV_OK;
        case kLetterS:
            status = ScanField16(parse, field, &record.second);
            if (status == CONV_OK && (record.second < 0 || record.second > 59)) {
                status = CONV_ERR_SECOND;
            }
            return status;
        case kLetterT:
        case kLetterU:
            if (record.dayOfWeek != kConvUnset) {
                return CONV_ERR_RESCAN;
            }
            if (letter == kLetterT) {
                status = ScanGroup(parse, CONV_NAMES_DAY, gCONV_DefaultNameOfDay, 7, field, &index);
            } else {
                status = ScanGroup(parse, CONV_NAMES_SHORT_DAY, gCONV_DefaultShortNameOfDay, 7,
                                   field, &index);
            }
            if (status == CONV_OK) {
                record.dayOfWeek = static_cast<int16_t>(index);
            }
            return status;
        case kLetterV:
        case kLetterW:
            if (record.month != kConvUnset) {
                return CONV_ERR_RESCAN;
            }
            if (letter == kLetterV) {
                status =
                    ScanGroup(parse, CONV_NAMES_MONTH, gCONV_DefaultNameOfMonth, 12, field, &index);
            } else {
                status = ScanGroup(parse, CONV_NAMES_SHORT_MONTH, gCONV_DefaultShortNameOfMonth, 12,
                                   field, &index);
            }
            if (status == CONV_OK) {
                record.month = static_cast<int16_t>(index + 1);
            }
            return status;
        case kLetterY: {
            if (record.year != kConvUnset) {
                return CONV_ERR_RESCAN;
            }
            int32_t value = 0;
            status = CONV_ScanNumber(&parse.source, &value, &field);
            if (status != CONV_OK) {
                return status;
            }
            /* The sum is formed without overflow and kept by its low 16 bits, like every year. */
            record.year = Low16(static_cast<int32_t>(static_cast<uint32_t>(parse.centuryBase) +
                                                     static_cast<uint32_t>(value)));
            return record.year == kConvUnset ? CONV_ERR_YEAR : CONV_OK;
        }
        case kLetterZ:
            status = ScanField16(parse, field, &record.year);
            if (status == CONV_OK && record.year == kConvUnset) {
                status = CONV_ERR_YEAR;
            }
            return status;
        case kLetterE:
            /* The era must come before the year it qualifies. */
            if (record.year != kConvUnset) {
                return CONV_ERR_RESCAN;
            }
            /* Only the first era slot tells whether era names were given. */
            if (parse.names == nullptr || parse.names[CONV_NAMES_ERA] == nullptr) {
                return CONV_ERR_NO_ERA_NAMES;
            }
            status = ScanNames(parse, parse.names + CONV_NAMES_ERA, 4, field, &index);
            if (status == CONV_OK) {
                record.era = static_cast<int16_t>(index);
            }
            return status;
        case kLetterJ: {
            if (record.year != kConvUnset) {
                return CONV_ERR_RESCAN;
            }
            if (parse.names == nullptr || parse.names[CONV_NAMES_SYEAR] == nullptr) {
                return CONV_ERR_NO_SYEAR;
            }
            status = ScanNames(parse, parse.names + CONV_NAMES_SYEAR, 1, field, &index);
            if (status == CONV_OK) {
                record.year = 1;
                return CONV_OK;
            }
            if (status != CONV_ERR_SCAN_MISMATCH) {
                return status;
            }
            status = ScanField16(parse, field, &record.year);
            if (status == CONV_OK && record.year == kConvUnset) {
                status = CONV_ERR_YEAR;
            }
            return status;
        }
        default:
            return CONV_ERR_CONVERSION;
    }
}

/* The checks made once reading has ended: era year to Gregorian year, 24:00:00, the day within
 * its month, then what is left of the source or the format. Returns CONV_OK or the status. */
uint32_t FinishParse(CONV_DateTime &record, bool sourceLeft, bool formatLeft) {
    if (record.era != kConvUnset) {
        if (record.year == kConvUnset) {
            return CONV_ERR_YEAR;
        }
        const uint32_t status =
            CONV_EraYearToYear(record.era, record.year, record.month, record.day, &record.year);
        if (status != CONV_OK) {
            return status;
        }
    }
    if (record.hour == 24 && ((record.minute != kConvUnset && record.minute != 0) ||
                              (record.second != kConvUnset && record.second != 0))) {
        return CONV_ERR_HOUR24;
    }
    if (record.day != kConvUnset && record.month != kConvUnset) {
        const uint32_t status = CONV_CheckDayInMonth(record.day, record.month, record.year);
        if (status != CONV_OK) {
            return status;
        }
    }
    if (sourceLeft) {
        return CONV_ERR_SOURCE_LEFT;
    }
    /* Whatever the rest of the format holds, literals alone included. */
    if (formatLeft) {
        return CONV_ERR_FORMAT_LEFT;
    }
    return CONV_OK;
}

}  // namespace

/* Reads source under format into record (fractionBase is an input, every other field is reset).
 * A source that shares bytes with the record is read from a temporary copy made by the checked
 * allocator and released before returning. Returns CONV_OK or the failing status; the record
 * keeps what was read up to the failure. The caller owns everything passed. */
extern "C" uint32_t CONV_StringToDateTime(CONV_DateTime *record, const char *source,
                                          const char *format, int32_t centuryBase,
                                          const char *const *names, uint16_t *failedField,
                                          uint16_t *fieldCount) noexcept {
    uint16_t localFailed = 0;
    uint16_t localCount = 0;
    if (failedField == nullptr) {
        failedField = &localFailed;
    }
    if (fieldCount == nullptr) {
        fieldCount = &localCount;
    }
    *fieldCount = 0;
    *failedField = kConvNoField;

    /* The record is reset before reading, so a source stored in it must be copied first. */
    char *duplicate = nullptr;
    const uintptr_t sourceStart = reinterpret_cast<uintptr_t>(source);
    const uintptr_t recordStart = reinterpret_cast<uintptr_t>(record);
    /* The source with its terminator shares bytes with the record when it starts inside the
     * record, or starts before it and has no terminator in front of it. A source starting
     * behind the record cannot reach it and is not measured; one in front of it is scanned at
     * most up to the record. */
    bool overlaps = false;
    if (sourceStart < recordStart) {
        const size_t distance = recordStart - sourceStart;
        overlaps = strnlen(source, distance) == distance;
    } else {
        overlaps = sourceStart < recordStart + sizeof(CONV_DateTime);
    }
    if (overlaps) {
        const size_t sourceLength = strlen(source);
        duplicate = static_cast<char *>(
            MMFLAT_New(static_cast<uint32_t>(sourceLength + 1), nullptr, __FILE__, __LINE__));
        if (duplicate == nullptr) {
            return CONV_ERR_MEMORY;
        }
        memcpy(duplicate, source, sourceLength + 1);
        source = duplicate;
    }

    record->day = CONV_DT_UNSET;
    record->month = CONV_DT_UNSET;
    record->year = CONV_DT_UNSET;
    record->dayOfWeek = CONV_DT_UNSET;
    record->second = CONV_DT_UNSET;
    record->minute = CONV_DT_UNSET;
    record->hour = CONV_DT_UNSET;
    record->era = CONV_DT_UNSET;
    record->fraction = CONV_DT_UNSET;

    Parse parse{source, record, names, centuryBase, kMeridiemNone};
    const char *fmt = format;
    while (*parse.source != '\0' && *fmt != '\0') {
        if (*fmt == '%' && ReadPlainField(parse, &fmt)) {
            ++*fieldCount;
            continue;
        }
        CONV_FieldDescriptor field;
        /* Only a "%" can begin a field: other characters skip the field reader. */
        const int32_t letter = *fmt == '%' ? CONV_ReadField(&fmt, &field) : -1;
        if (letter < 0) {
            /* A literal must stand in the source as it is; "%%" matches a single "%". */
            if (*parse.source != *fmt) {
                MMFLAT_Free(duplicate);
                return CONV_ERR_SCAN_MISMATCH;
            }
            ++parse.source;
            ++fmt;
            continue;
        }
        ++*fieldCount;
        fmt += field.length;
        const uint32_t status = ScanField(parse, letter, field);
        if (status != CONV_OK) {
            *failedField = static_cast<uint16_t>(letter);
            MMFLAT_Free(duplicate);
            return status;
        }
    }
    const bool sourceLeft = *parse.source != '\0';
    const bool formatLeft = *fmt != '\0';
    if (duplicate != nullptr) {
        MMFLAT_Free(duplicate);
    }
    return FinishParse(*record, sourceLeft, formatLeft);
}
