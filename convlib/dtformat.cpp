/* SPDX-License-Identifier: MIT */
/*
 * dtformat.cpp - date-time formatting: a CONV_DateTime written as text under the library's
 * date-time format language, the placing of one field (width, flag, cutting) and the measuring of
 * the longest text of a format.
 */
#include <stdint.h>
#include <string.h>

#include <charconv>

#include <nlssupport/convlib.h>
#include "convlib/convlib_internal.h"
#include "convlib/datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dtformat.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_internal.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

/* Scratch text of one numeric field: a sign, ten digits, fraction padding and the NUL. */
constexpr size_t kScratchSize = 32;

/* Writes value as plain decimal (a "-" when negative, no padding) into scratch and returns its
 * length. */
size_t PutDecimal(char (&scratch)[kScratchSize], int32_t value) {
    /* Most fields hold one or two digits: written directly, without the general conversion. */
    if (static_cast<uint32_t>(value) < 100u) {
        if (value < 10) {
            scratch[0] = static_cast<char>('0' + value);
            scratch[1] = '\0';
            return 1;
        }
        scratch[0] = static_cast<char>('0' + value / 10);
        scratch[1] = static_cast<char>('0' + value % 10);
        scratch[2] = '\0';
        return 2;
    }
    const std::to_chars_result result = std::to_chars(scratch, scratch + kScratchSize - 1, value);
    *result.ptr = '\0';
    return static_cast<size_t>(result.ptr - scratch);
}

/* Names slot `slot` of the caller's record, or the default text when the record or the slot is
 * null. */
const char *NameOrDefault(const char *const *names, int32_t slot, const char *fallback) {
    if (names != nullptr && names[slot] != nullptr) {
        return names[slot];
    }
    return fallback;
}

/* The fraction field: nanoseconds as a plain number when the base is unset, otherwise exactly
 * fractionBase digits, zero-filled on the left and then padded on the right with "0" up to the
 * precision. Returns CONV_OK with the text in scratch, or the status of a value that cannot be
 * written. */
uint32_t FormatFraction(char (&scratch)[kScratchSize], size_t *scratchLength,
                        const CONV_DateTime &record, uint16_t precision) {
    const int32_t base = record.fractionBase;
    if (base == kConvUnset) {
        /* Compared unsigned, so negative fractions fail too. */
        if (static_cast<uint32_t>(record.fraction) > 999999999u) {
            return CONV_ERR_FRACTION;
        }
        *scratchLength = PutDecimal(scratch, record.fraction);
        return CONV_OK;
    }
    if (base < 1 || base > 9) {
        return CONV_ERR_FRACTION_BASE;
    }
    if (record.fraction < 0 || record.fraction > gCONV_SecFracBaseCeiling[base]) {
        return CONV_ERR_FRACTION;
    }
    int32_t value = record.fraction;
    for (int32_t i = base - 1; i >= 0; --i) {
        scratch[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    int32_t length = base;
    if (precision != kConvNoField) {
        while (length < precision) {
            scratch[length++] = '0';
        }
    }
    scratch[length] = '\0';
    *scratchLength = static_cast<size_t>(length);
    return CONV_OK;
}

/* Converts one field of the record to its text: *text points either at scratch, whose length
 * is then stored in *scratchLength, or at a name (caller's or default). record.era is written by
 * an E field. Returns CONV_OK or the status of a value that the letter cannot write. */
uint32_t ConvertField(int32_t letter, const CONV_FieldDescriptor &field, CONV_DateTime &record,
                      const char *const *names, char (&scratch)[kScratchSize],
                      size_t *scratchLength, const char **text) {
    *text = scratch;
    switch (letter) {
        case kLetterD:
            if (record.day < 1 || record.day > 31) {
                return CONV_ERR_DAY;
            }
            *scratchLength = PutDecimal(scratch, record.day);
            return CONV_OK;
        case kLetterF:
            return FormatFraction(scratch, scratchLength, record, field.precision);
        case kLetterH:
            if (record.hour < 0 || record.hour > 24) {
                return CONV_ERR_HOUR24;
            }
            *scratchLength = PutDecimal(scratch, record.hour);
            return CONV_OK;
        case kLetterI:
            if (record.minute < 0 || record.minute > 59) {
                return CONV_ERR_MINUTE;
            }
            *scratchLength = PutDecimal(scratch, record.minute);
            return CONV_OK;
        case kLetterM:
            if (record.month < 1 || record.month > 12) {
                return CONV_ERR_MONTH;
            }
            *scratchLength = PutDecimal(scratch, record.month);
            return CONV_OK;
        case kLetterP:
            if (record.hour < 0 || record.hour > 24) {
                return CONV_ERR_HOUR24;
            }
            /* Midnight, noon and 24:00 all read "12" on the 12-hour clock. */
            *scratchLength = PutDecimal(scratch, record.hour % 12 == 0 ? 12 : record.hour % 12);
            return CONV_OK;
        case kLetterQ:
            if (record.hour < 0 || record.hour > 24) {
                return CONV_ERR_HOUR24;
            }
            if (record.hour < 12) {
                *text = NameOrDefault(names, CONV_NAMES_MERIDIEM, gCONV_DefaultMeridiem[0]);
            } else {
                *text = NameOrDefault(names, CONV_NAMES_MERIDIEM + 1, gCONV_DefaultMeridiem[1]);
            }
            return CONV_OK;
        case kLetterS:
            if (record.second < 0 || record.second > 59) {
                return CONV_ERR_SECOND;
            }
            *scratchLength = PutDecimal(scratch, record.second);
            return CONV_OK;
        case kLetterT:
        case kLetterU:
            if (record.dayOfWeek < 0 || record.dayOfWeek > 6) {
                return CONV_ERR_DAY_OF_WEEK;
            }
            if (letter == kLetterT) {
                *text = NameOrDefault(names, CONV_NAMES_DAY + record.dayOfWeek,
                                      gCONV_DefaultNameOfDay[record.dayOfWeek]);
            } else {
                *text = NameOrDefault(names, CONV_NAMES_SHORT_DAY + record.dayOfWeek,
                                      gCONV_DefaultShortNameOfDay[record.dayOfWeek]);
            }
            return CONV_OK;
        case kLetterV:
        case kLetterW:
            if (record.month < 1 || record.month > 12) {
                return CONV_ERR_MONTH;
            }
            if (letter == kLetterV) {
                *text = NameOrDefault(names, CONV_NAMES_MONTH + record.month - 1,
                                      gCONV_DefaultNameOfMonth[record.month - 1]);
            } else {
                *text = NameOrDefault(names, CONV_NAMES_SHORT_MONTH + record.month - 1,
                                      gCONV_DefaultShortNameOfMonth[record.month - 1]);
            }
            return CONV_OK;
        case kLetterY:
            if (record.year == kConvUnset) {
                return CONV_ERR_YEAR;
            }
            /* Truncating division: -5 stays "-5". */
            *scratchLength = PutDecimal(scratch, record.year - (record.year / 100) * 100);
            return CONV_OK;
        case kLetterZ:
            if (record.year == kConvUnset) {
                return CONV_ERR_YEAR;
            }
            *scratchLength = PutDecimal(scratch, record.year);
            return CONV_OK;
        case kLetterE: {
            if (record.day < 1 || record.day > 31) {
                return CONV_ERR_DAY;
            }
            if (record.month < 1 || record.month > 12) {
                return CONV_ERR_MONTH;
            }
            if (record.year == kConvUnset) {
                return CONV_ERR_YEAR;
            }
            /* Only the first era slot tells whether era names were given; a caller that fills it
             * fills all four. A missing later slot is refused the same way rather than read. */
            if (names == nullptr || names[CONV_NAMES_ERA] == nullptr) {
                return CONV_ERR_NO_ERA_NAMES;
            }
            int16_t era = 0;
            const uint32_t status = CONV_GetEra(record.day, record.month, record.year, &era);
            if (status != CONV_OK) {
                return status;
            }
            record.era = era;
            if (names[CONV_NAMES_ERA + era] == nullptr) {
                return CONV_ERR_NO_ERA_NAMES;
            }
            *text = names[CONV_NAMES_ERA + era];
            return CONV_OK;
        }
        case kLetterJ: {
            if (record.year == kConvUnset) {
                return CONV_ERR_YEAR;
            }
            /* The era comes from an E field earlier in the same format; without one the Gregorian
             * year itself is written. */
            int32_t year = record.year;
            if (record.era >= 0 && record.era <= 3) {
                year -= kConvEraOffset[record.era];
            }
            if (year == 1) {
                if (names == nullptr || names[CONV_NAMES_SYEAR] == nullptr) {
                    return CONV_ERR_NO_SYEAR;
                }
                *text = names[CONV_NAMES_SYEAR];
                return CONV_OK;
            }
            *scratchLength = PutDecimal(scratch, year);
            return CONV_OK;
        }
        default:
            return CONV_ERR_CONVERSION;
    }
}

/* Fills count bytes at position with c. */
void Fill(char *position, size_t count, char c) {
    if (count > 0) {
        memset(position, c, count);
    }
}

/* Places the text of one field (length bytes) at *position within *room free bytes: cut to the
 * width when one is given (keeping the left part), justified and padded in the width, and cut to
 * the room. No terminator is written. Advances *position and reduces *room by the positions
 * written. Returns CONV_OK, or CONV_ERR_TARGET_TOO_SMALL when the field did not fit in the room. */
uint32_t PlaceField(char **position, int32_t *room, const char *text, size_t textLength,
                    const CONV_FieldDescriptor *descriptor) {
    char *out = *position;
    const size_t roomLeft = *room > 0 ? static_cast<size_t>(*room) : 0;
    size_t length = textLength;
    uint32_t status = CONV_OK;
    size_t written = 0;

    if (descriptor->width == kConvNoField) {
        if (length > roomLeft) {
            length = roomLeft;
            status = CONV_ERR_TARGET_TOO_SMALL;
        }
        memcpy(out, text, length);
        written = length;
    } else {
        const size_t width = descriptor->width;
        /* A value wider than its field is silently cut to the field, keeping its left part. */
        if (length > width) {
            length = width;
        }
        const size_t padding = width - length;
        const char pad = descriptor->flag == 2 ? '0' : ' ';
        if (roomLeft >= width) {
            if (descriptor->flag == 1) {
                memcpy(out, text, length);
                Fill(out + length, padding, ' ');
            } else {
                Fill(out, padding, pad);
                memcpy(out + padding, text, length);
            }
            written = width;
        } else {
            status = CONV_ERR_TARGET_TOO_SMALL;
            if (descriptor->flag == 1) {
                const size_t shown = length < roomLeft ? length : roomLeft;
                memcpy(out, text, shown);
                Fill(out + shown, roomLeft - shown, ' ');
            } else if (roomLeft <= padding) {
                Fill(out, roomLeft, pad);
            } else {
                Fill(out, padding, pad);
                memcpy(out + padding, text, roomLeft - padding);
            }
            written = roomLeft;
        }
    }
    *position = out + written;
    *room -= static_cast<int32_t>(written);
    return status;
}

}  // namespace

/* Places the NUL-terminated text of one field at *position within *room free bytes, as
 * PlaceField does. Returns CONV_OK or CONV_ERR_TARGET_TOO_SMALL. */
uint32_t CONV_PutInBuffer(char **position, int32_t *room, const char *text,
                          const CONV_FieldDescriptor *descriptor) noexcept {
    return PlaceField(position, room, text, strlen(text), descriptor);
}

/* Formats the record under format into target (targetSize bytes, terminated whenever targetSize
 * is at least 1). Returns CONV_OK, the status of the field that stopped formatting, or
 * CONV_ERR_TARGET_TOO_SMALL when the room ran out; a fraction field cut by the room gives
 * CONV_WARN_TRUNCATION. The caller keeps ownership of everything; only record->era and the
 * target are written. */
extern "C" uint32_t CONV_DateTimeToString(char *target, CONV_DateTime *record, int32_t targetSize,
                                          const char *format, const char *const *names,
                                          uint16_t *failedField, uint16_t *fieldCount) noexcept {
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

    /* A record that shares bytes with the target is read from a copy, so that the text written
     * cannot change the values still to be read. */
    CONV_DateTime copy;
    CONV_DateTime *values = record;
    if (targetSize > 0) {
        const uintptr_t recordStart = reinterpret_cast<uintptr_t>(record);
        const uintptr_t targetStart = reinterpret_cast<uintptr_t>(target);
        if (recordStart < targetStart + static_cast<uintptr_t>(targetSize) &&
            recordStart + sizeof(CONV_DateTime) > targetStart) {
            memcpy(&copy, record, sizeof copy);
            values = &copy;
        }
    }
    values->era = CONV_DT_UNSET;

    /* Not even the terminator fits in a target of no bytes: nothing is written there. */
    if (targetSize < 1) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }

    char *out = target;
    int32_t room = targetSize - 1;
    const char *fmt = format;
    while (room > 0 && *fmt != '\0') {
        CONV_FieldDescriptor field;
        /* Only a "%" can begin a field: other characters skip the field reader. */
        const int32_t letter = *fmt == '%' ? CONV_ReadField(&fmt, &field) : -1;
        if (letter < 0) {
            /* A literal; for "%%" the reader already stepped onto the second "%". */
            *out++ = *fmt++;
            --room;
            continue;
        }
        ++*fieldCount;
        fmt += field.length;

        char scratch[kScratchSize];
        size_t scratchLength = 0;
        const char *text = scratch;
        uint32_t status =
            ConvertField(letter, field, *values, names, scratch, &scratchLength, &text);
        if (status == CONV_OK && text != scratch && field.width == kConvNoField &&
            (names == nullptr ||
             reinterpret_cast<uintptr_t>(text) >= reinterpret_cast<uintptr_t>(out))) {
            /* A name without a width: copied up to its terminator or the end of the room in one
             * pass, instead of measuring it first. Same bytes and status as PlaceField. A name
             * of the caller's that starts before the write position could lie in the target
             * itself and be changed by the copy; such a name is measured first, as before. */
            int32_t i = 0;
            while (i < room && text[i] != '\0') {
                out[i] = text[i];
                ++i;
            }
            out += i;
            room -= i;
            if (text[i] != '\0') {
                status = CONV_ERR_TARGET_TOO_SMALL;
            }
        } else if (status == CONV_OK) {
            /* The length of digits just written is known; reading them back with strlen would
             * have to wait for their stores. */
            const size_t length = text == scratch ? scratchLength : strlen(text);
            status = PlaceField(&out, &room, text, length, &field);
            /* A cut fraction is reported as a warning: the digits shown are still the leading
             * digits of the value (callers accept a shortened timestamp). */
            if (status != CONV_OK && letter == kLetterF) {
                status = CONV_WARN_TRUNCATION;
            }
        }
        if (status != CONV_OK) {
            *out = '\0';
            *failedField = static_cast<uint16_t>(letter);
            return status;
        }
    }
    *out = '\0';
    return *fmt == '\0' ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL;
}

/* Measures format by formatting a worst-case sample (10 October 1994, 23:59:59.999999999, a
 * Sunday) with the longest name of every group placed where the sample reads it. Era names and
 * the SYEAR text are not available to the measurement (an E field fails it; J measures the
 * Gregorian year). Stores the text length plus the terminator in *length and returns CONV_OK; on
 * any failure stores 0 and returns CONV_ERR_TARGET_TOO_SMALL. */
extern "C" uint32_t CONV_CalcDateTimeLength(const char *format, const char *const *names,
                                            uint32_t *length) noexcept {
    CONV_DateTime sample;
    sample.day = 10;
    sample.month = 10;
    sample.year = 1994;
    sample.dayOfWeek = 0;
    sample.second = 59;
    sample.minute = 59;
    sample.hour = 23;
    sample.fraction = 999999999;
    sample.fractionBase = 9;
    sample.era = CONV_DT_UNSET;

    /* Slots 0..39 from the caller, a null slot (or no record) taking its default text. */
    const char *local[CONV_NAMES_COUNT] = {};
    for (int32_t i = 0; i < 7; ++i) {
        local[CONV_NAMES_DAY + i] =
            NameOrDefault(names, CONV_NAMES_DAY + i, gCONV_DefaultNameOfDay[i]);
        local[CONV_NAMES_SHORT_DAY + i] =
            NameOrDefault(names, CONV_NAMES_SHORT_DAY + i, gCONV_DefaultShortNameOfDay[i]);
    }
    for (int32_t i = 0; i < 12; ++i) {
        local[CONV_NAMES_MONTH + i] =
            NameOrDefault(names, CONV_NAMES_MONTH + i, gCONV_DefaultNameOfMonth[i]);
        local[CONV_NAMES_SHORT_MONTH + i] =
            NameOrDefault(names, CONV_NAMES_SHORT_MONTH + i, gCONV_DefaultShortNameOfMonth[i]);
    }
    for (int32_t i = 0; i < 2; ++i) {
        local[CONV_NAMES_MERIDIEM + i] =
            NameOrDefault(names, CONV_NAMES_MERIDIEM + i, gCONV_DefaultMeridiem[i]);
    }

    /* The longest text of each group (the first wins a tie) goes into the slot the sample uses:
     * Sunday, October and after noon. */
    struct Group {
        int32_t first;
        int32_t count;
        int32_t sampleSlot;
    };
    constexpr Group kGroups[] = {
        {CONV_NAMES_DAY, 7, CONV_NAMES_DAY},
        {CONV_NAMES_SHORT_DAY, 7, CONV_NAMES_SHORT_DAY},
        {CONV_NAMES_MONTH, 12, CONV_NAMES_MONTH + 9},
        {CONV_NAMES_SHORT_MONTH, 12, CONV_NAMES_SHORT_MONTH + 9},
        {CONV_NAMES_MERIDIEM, 2, CONV_NAMES_MERIDIEM + 1},
    };
    for (const Group &group : kGroups) {
        const char *longest = local[group.first];
        size_t longestLength = strlen(longest);
        for (int32_t i = 1; i < group.count; ++i) {
            const size_t candidate = strlen(local[group.first + i]);
            if (candidate > longestLength) {
                longest = local[group.first + i];
                longestLength = candidate;
            }
        }
        local[group.sampleSlot] = longest;
    }

    char buffer[1000];
    const uint32_t status = CONV_DateTimeToString(
        buffer, &sample, static_cast<int32_t>(sizeof buffer), format, local, nullptr, nullptr);
    if (status != CONV_OK) {
        *length = 0;
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    *length = static_cast<uint32_t>(strlen(buffer) + 1);
    return CONV_OK;
}
