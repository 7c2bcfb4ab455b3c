// SPDX-License-Identifier: MIT
// dtparse.cpp - date-time parsing: source text read into a CONV_DateTime under a format of the
// library's date-time format language, with the names of the caller or the defaults, the
// meridiem rules, era names and the SYEAR text, and the checks made once the format is read.
#include <ctype.h>
#include <nlssupport/convlib.h>
#include <nlssupport/memmgr.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

#include "datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dtparse.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Source path passed to the allocator with this file's own allocations (identifies call sites).
constexpr char kSourcePath[] = "convlib/dtparse.cpp";

// What is known about the meridiem while reading: nothing yet, an hour read by P without a
// designator, or the index (0 before noon, 1 after noon) of the designator read.
enum Meridiem : int32_t {
    kMeridiemBeforeNoon = 0,
    kMeridiemAfterNoon = 1,
    kMeridiemNone = 2,
    kMeridiemHourOnly = 3,
};

// State of one parse.
struct Parse {
    const char *source;        // current source position
    CONV_DateTime *record;     // the record being filled
    const char *const *names;  // caller's names record, or null
    int32_t centuryBase;       // added to a year read by Y
    int32_t meridiem;          // a Meridiem value
};

// The number read, kept by its low 16 bits: 65537 read for a day is day 1 (kept: the range test
// is made on the stored value).
int16_t Low16(int32_t value) {
    return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(value)));
}

// Reads the first name of a table of count names (null slots skipped) that stands at the source
// position; *index receives its position in the table. Returns CONV_OK, CONV_ERR_FORMAT_LEFT or
// CONV_ERR_SCAN_MISMATCH.
uint32_t ScanNames(Parse &parse, const char *const *table, int32_t count,
                   const CONV_FieldDescriptor &field, int32_t *index) {
    for (int32_t i = 0; i < count; ++i) {
        if (table[i] == nullptr) {
            continue;
        }
        uint16_t found = 0;
        const uint32_t status = conv::CONV_ScanString(&parse.source, &found, &table[i], 1, &field);
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

// Reads a name of the letter's group: the caller's group when a names record is given and the
// group's first slot is set, else the whole default group.
uint32_t ScanGroup(Parse &parse, int32_t letter, const CONV_FieldDescriptor &field,
                   int32_t *index) {
    const conv::FieldRule &rule = conv::kFieldRules[letter];
    const char *const *table = rule.defaults;
    if (parse.names != nullptr && parse.names[rule.firstName] != nullptr) {
        table = parse.names + rule.firstName;
    }
    return ScanNames(parse, table, rule.nameCount, field, index);
}

// Reads a number into *target (low 16 bits) after checking that the target is still unset.
// Returns CONV_OK, CONV_ERR_RESCAN or the status of the number reader.
uint32_t ScanField16(Parse &parse, const CONV_FieldDescriptor &field, int16_t *target) {
    if (*target != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    int32_t value = 0;
    if (!conv::ScanPlainDigits(&parse.source, &value, field.width)) {
        const uint32_t status = conv::CONV_ScanNumber(&parse.source, &value, &field);
        if (status != CONV_OK) {
            return status;
        }
    }
    *target = Low16(value);
    return CONV_OK;
}

// Letters D, H, I, M, S and Z: a number read into the letter's member, which must then lie in
// the letter's range. Returns CONV_OK or the failing status.
uint32_t ScanNumberField(Parse &parse, int32_t letter, const CONV_FieldDescriptor &field) {
    const uint32_t status =
        ScanField16(parse, field, &(parse.record->*conv::kFieldRules[letter].member));
    return status != CONV_OK ? status : conv::CheckValue(letter, *parse.record);
}

// Letters read as a plain number straight into their member: D H I M S Z.
constexpr bool IsPlainNumberLetter(int32_t letter) {
    constexpr uint32_t kMask = 1u << CONV_FIELD_D | 1u << CONV_FIELD_H | 1u << CONV_FIELD_I |
                               1u << CONV_FIELD_M | 1u << CONV_FIELD_S | 1u << CONV_FIELD_Z;
    return (kMask >> letter & 1u) != 0;
}

// A plain number field of a letter of IsPlainNumberLetter whose member is still unset, with a
// width of 1..9 whose characters are all digits: stores the number and *status (CONV_OK, or the
// letter's status for a value outside its range) and returns true, exactly what
// ScanNumberField does for such a field. Returns false, changing nothing, for every other field.
[[gnu::always_inline]] inline bool ScanPlainNumber(Parse &parse, int32_t letter, uint16_t width,
                                                   uint32_t *status) {
    int16_t &target = parse.record->*conv::kFieldRules[letter].member;
    int32_t value = 0;
    if (target != conv::kUnset || !conv::ScanPlainDigits(&parse.source, &value, width)) {
        return false;
    }
    target = Low16(value);
    *status = conv::InRange(letter, target) ? CONV_OK : conv::kFieldRules[letter].status;
    return true;
}

// A field that conv::CommonNumberField recognised ("%02D", "%04Z", ...), read by
// ScanPlainNumber with the field's width.
[[gnu::always_inline]] inline bool ScanCommonField(Parse &parse, int32_t letter, uint32_t *status) {
    return ScanPlainNumber(parse, letter, static_cast<uint16_t>(conv::CommonFieldWidth(letter)),
                           status);
}

// The common number field, read in the parsing loop itself: a letter of IsPlainNumberLetter
// read by ScanPlainNumber. Returns false, changing nothing, for every other field.
[[gnu::always_inline]] inline bool ScanNumberDirect(Parse &parse, int32_t letter,
                                                    const CONV_FieldDescriptor &field,
                                                    uint32_t *status) {
    return IsPlainNumberLetter(letter) && ScanPlainNumber(parse, letter, field.width, status);
}

// Letters T, U, V and W: a name of the letter's group; its position in the group, counted from
// the letter's lowest value, goes into the member, which must still be unset.
uint32_t ScanNameField(Parse &parse, int32_t letter, const CONV_FieldDescriptor &field) {
    const conv::FieldRule &rule = conv::kFieldRules[letter];
    int16_t &target = parse.record->*rule.member;
    if (target != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    int32_t index = 0;
    const uint32_t status = ScanGroup(parse, letter, field, &index);
    if (status == CONV_OK) {
        target = static_cast<int16_t>(rule.low + index);
    }
    return status;
}

// Letter P: an hour of the 12-hour clock, 1..12 (CONV_ERR_HOUR12), turned into the afternoon
// when a designator after noon was read before it.
uint32_t ScanHour12(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    const uint32_t status = ScanField16(parse, field, &record.hour);
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
}

// Letter Q: the meridiem designator, once per format; after noon it turns an hour read by P
// before it into the afternoon.
uint32_t ScanMeridiem(Parse &parse, const CONV_FieldDescriptor &field) {
    if (parse.meridiem == kMeridiemBeforeNoon || parse.meridiem == kMeridiemAfterNoon) {
        return CONV_ERR_RESCAN;
    }
    int32_t index = 0;
    const uint32_t status = ScanGroup(parse, CONV_FIELD_Q, field, &index);
    if (status != CONV_OK) {
        return status;
    }
    // The before-noon designator never changes the hour: "12" with it stays hour 12 (kept:
    // callers read 12 AM as noon).
    CONV_DateTime &record = *parse.record;
    if (parse.meridiem == kMeridiemHourOnly && index == kMeridiemAfterNoon && record.hour != 12) {
        record.hour = static_cast<int16_t>(record.hour + 12);
    }
    parse.meridiem = index;
    return CONV_OK;
}

// Letter Y: a year within the century, added to the century base. The sum is formed without
// overflow and kept by its low 16 bits, like every year.
uint32_t ScanCenturyYear(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    if (record.year != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    int32_t value = 0;
    const uint32_t status = conv::CONV_ScanNumber(&parse.source, &value, &field);
    if (status != CONV_OK) {
        return status;
    }
    record.year = Low16(static_cast<int32_t>(static_cast<uint32_t>(parse.centuryBase) +
                                             static_cast<uint32_t>(value)));
    return conv::CheckValue(CONV_FIELD_Y, record);
}

// Letter E: an era name of the caller's; the era must come before the year it qualifies.
uint32_t ScanEra(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    if (record.year != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    // Only the first era slot tells whether era names were given.
    if (parse.names == nullptr || parse.names[CONV_NAMES_ERA] == nullptr) {
        return CONV_ERR_NO_ERA_NAMES;
    }
    int32_t index = 0;
    const uint32_t status = ScanNames(parse, parse.names + CONV_NAMES_ERA, 4, field, &index);
    if (status == CONV_OK) {
        record.era = static_cast<int16_t>(index);
    }
    return status;
}

// Letter J: the SYEAR text (year 1) or the year within the era as a number.
uint32_t ScanEraYear(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    if (record.year != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    if (parse.names == nullptr || parse.names[CONV_NAMES_SYEAR] == nullptr) {
        return CONV_ERR_NO_SYEAR;
    }
    int32_t index = 0;
    const uint32_t status = ScanNames(parse, parse.names + CONV_NAMES_SYEAR, 1, field, &index);
    if (status == CONV_OK) {
        record.year = 1;
        return CONV_OK;
    }
    if (status != CONV_ERR_SCAN_MISMATCH) {
        return status;
    }
    return ScanNumberField(parse, CONV_FIELD_J, field);
}

// Letter F. Without a width the number is taken unscaled. With a width the characters are read
// as the first digits after a decimal point, scaled to fractionBase digits: with base 3, "5"
// gives 500 and "1234" gives 123. Either way the result must be a valid count of nanoseconds.
// Returns CONV_OK or the failing status.
uint32_t ScanFraction(Parse &parse, const CONV_FieldDescriptor &field) {
    CONV_DateTime &record = *parse.record;
    if (record.fraction != conv::kUnset) {
        return CONV_ERR_RESCAN;
    }
    if (field.width == conv::kNotGiven) {
        int32_t value = 0;
        const uint32_t status = conv::CONV_ScanNumber(&parse.source, &value, &field);
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
        // Without a flag the field may be blank on both sides; with "-" or "0" only on the right.
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
        // GCOVR_EXCL_BR_START: only *end != '\0' cannot hold: the scratch passed the number
        // check, so once strtol has read a digit nothing but digits follows.
        if (end == scratch || *end != '\0') {
            return CONV_ERR_SCAN_MISMATCH;
        }
        // GCOVR_EXCL_BR_STOP
        record.fraction = static_cast<int32_t>(value);
        parse.source += taken;
    }
    return conv::CheckFraction(record.fraction, conv::kUnset);
}

// Reads one field of the given letter into the record. Returns CONV_OK or the field's status.
uint32_t ScanField(Parse &parse, int32_t letter, const CONV_FieldDescriptor &field) {
    switch (letter) {
        case CONV_FIELD_F:
            return ScanFraction(parse, field);
        case CONV_FIELD_P:
            return ScanHour12(parse, field);
        case CONV_FIELD_Q:
            return ScanMeridiem(parse, field);
        case CONV_FIELD_T:
        case CONV_FIELD_U:
        case CONV_FIELD_V:
        case CONV_FIELD_W:
            return ScanNameField(parse, letter, field);
        case CONV_FIELD_Y:
            return ScanCenturyYear(parse, field);
        case CONV_FIELD_E:
            return ScanEra(parse, field);
        case CONV_FIELD_J:
            return ScanEraYear(parse, field);
        default:
            return ScanNumberField(parse, letter, field);
    }
}

// The checks made once reading has ended: era year to Gregorian year, 24:00:00, the day within
// its month, then what is left of the source or the format. Returns CONV_OK or the status.
uint32_t FinishParse(CONV_DateTime &record, bool sourceLeft, bool formatLeft) {
    if (record.era != conv::kUnset) {
        if (record.year == conv::kUnset) {
            return CONV_ERR_YEAR;
        }
        const uint32_t status =
            conv::EraYearToYear(record.era, record.year, record.month, record.day, &record.year);
        if (status != CONV_OK) {
            return status;
        }
    }
    if (record.hour == 24 && ((record.minute != conv::kUnset && record.minute != 0) ||
                              (record.second != conv::kUnset && record.second != 0))) {
        return CONV_ERR_HOUR24;
    }
    if (record.day != conv::kUnset && record.month != conv::kUnset) {
        const uint32_t status = conv::CheckDayInMonth(record.day, record.month, record.year);
        if (status != CONV_OK) {
            return status;
        }
    }
    if (sourceLeft) {
        return CONV_ERR_SOURCE_LEFT;
    }
    // Whatever the rest of the format holds, literals alone included.
    if (formatLeft) {
        return CONV_ERR_FORMAT_LEFT;
    }
    return CONV_OK;
}

}  // namespace

// Reads source under format into record (fractionBase is an input, every other field is reset).
// A source that shares bytes with the record is read from a temporary copy made by the checked
// allocator and released before returning. Returns CONV_OK or the failing status; the record
// keeps what was read up to the failure. The caller owns everything passed.
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
    *failedField = CONV_FIELD_NONE;

    // The record is reset before reading, so a source stored in it must be copied first.
    char *duplicate = nullptr;
    const uintptr_t sourceStart = reinterpret_cast<uintptr_t>(source);
    const uintptr_t recordStart = reinterpret_cast<uintptr_t>(record);
    // The source with its terminator shares bytes with the record when it starts inside the
    // record, or starts before it and has no terminator in front of it. A source starting
    // behind the record cannot reach it and is not measured; one in front of it is scanned at
    // most up to the record.
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
            MMFLAT_New(static_cast<uint32_t>(sourceLength + 1), nullptr, kSourcePath, __LINE__));
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
        CONV_FieldDescriptor field;
        int32_t letter = -1;
        // Only a "%" can begin a field: other characters skip the field reader. The commonest
        // fields are read here without it when they can be.
        if (*fmt == '%') {
            const int32_t common = conv::CommonNumberField(fmt);
            uint32_t status = CONV_OK;
            if (common >= 0 && ScanCommonField(parse, common, &status)) {
                ++*fieldCount;
                fmt += conv::kCommonFieldLength;
                if (status != CONV_OK) {
                    *failedField = static_cast<uint16_t>(common);
                    MMFLAT_Free(duplicate);
                    return status;
                }
                continue;
            }
            letter = conv::CONV_CheckField(&fmt, &field);
        }
        if (letter < 0) {
            // A literal must stand in the source as it is; "%%" matches a single "%".
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
        uint32_t status = CONV_OK;
        if (!ScanNumberDirect(parse, letter, field, &status)) {
            status = ScanField(parse, letter, field);
        }
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
