// SPDX-License-Identifier: MIT
// dtformat.cpp - date-time formatting: a CONV_DateTime written as text under the library's
// date-time format language, the placing of one field (width, flag, cutting) and the measuring of
// the longest text of a format.
#include <nlssupport/convlib.h>
#include <stdint.h>
#include <string.h>

#include <charconv>
#include <initializer_list>

#include "datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     dtformat.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Scratch text of one numeric field: a sign, ten digits, fraction padding and the NUL.
constexpr size_t kScratchSize = 32;

// Writes value as plain decimal (a "-" when negative, no padding) into scratch and returns its
// length.
size_t PutDecimal(char (&scratch)[kScratchSize], int32_t value) {
    // Most fields hold one or two digits: written directly, without the general conversion.
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

// The texts "00" to "99", two characters each, for writing numbers two digits at a time.
struct DigitPairs {
    char text[200];
    constexpr DigitPairs() : text{} {
        for (int i = 0; i < 100; ++i) {
            text[static_cast<size_t>(2 * i)] = static_cast<char>('0' + i / 10);
            text[static_cast<size_t>(2 * i) + 1] = static_cast<char>('0' + i % 10);
        }
    }
};
inline constexpr DigitPairs kDigitPairs{};

// The two digits of a value 0..99.
const char *Pair(uint32_t value) {
    return &kDigitPairs.text[2 * static_cast<size_t>(value)];
}

// Writes value (below 10^width) as width digits, width 2 or 4, at *position, and moves on.
[[gnu::always_inline]] inline void PutPairs(char **position, int32_t *room, uint32_t value,
                                            int32_t width) {
    char *out = *position;
    if (width == 4) {
        memcpy(out, Pair(value / 100), 2);
        memcpy(out + 2, Pair(value % 100), 2);
    } else {
        memcpy(out, Pair(value), 2);
    }
    *position = out + width;
    *room -= width;
}

// Letters whose text is a plain decimal number taken from the record: D H I M P S Y Z.
constexpr bool IsNumberLetter(int32_t letter) {
    constexpr uint32_t kMask = 1u << CONV_FIELD_D | 1u << CONV_FIELD_H | 1u << CONV_FIELD_I |
                               1u << CONV_FIELD_M | 1u << CONV_FIELD_P | 1u << CONV_FIELD_S |
                               1u << CONV_FIELD_Y | 1u << CONV_FIELD_Z;
    return (kMask >> letter & 1u) != 0;
}

// The number a number letter writes: the member checked by the letter's rule, then the 12-hour
// clock for P and the year within the century for Y. Returns CONV_OK with *value set, or the
// rule's status.
uint32_t NumberValue(int32_t letter, const CONV_DateTime &record, int32_t *value) {
    const uint32_t status = conv::CheckValue(letter, record);
    if (status != CONV_OK) {
        return status;
    }
    int32_t v = record.*conv::kFieldRules[letter].member;
    if (letter == CONV_FIELD_P) {
        // Midnight, noon and 24:00 all read "12" on the 12-hour clock.
        v = v % 12 == 0 ? 12 : v % 12;
    } else if (letter == CONV_FIELD_Y) {
        // Truncating division: -5 stays "-5".
        v -= (v / 100) * 100;
    }
    *value = v;
    return CONV_OK;
}

// Writes a number field straight into the target in the common case: a value of 0..99999 whose
// field fits in the room and is no narrower than the value. The bytes are those that placing the
// value's text would write (padding by the flag, the digits two at a time). Returns false,
// writing nothing, for every other case, which the general placing handles.
bool PutNumberDirect(char **position, int32_t *room, int32_t value,
                     const CONV_FieldDescriptor &field) {
    if (static_cast<uint32_t>(value) > 99999u) {
        return false;
    }
    uint32_t v = static_cast<uint32_t>(value);
    // The fields of the usual date and time texts, "%02M" and "%04Z": one or two digit pairs.
    if (field.flag == 2 && field.width <= *room &&
        ((field.width == 2 && v < 100) || (field.width == 4 && v < 10000))) {
        PutPairs(position, room, v, field.width);
        return true;
    }
    const int32_t digits = v < 10 ? 1 : v < 100 ? 2 : v < 1000 ? 3 : v < 10000 ? 4 : 5;
    const int32_t width = field.width == conv::kNotGiven ? digits : field.width;
    if (width < digits || width > *room) {
        return false;
    }
    char *out = *position;
    // Zero padding up to ten places is just more digits of the number.
    int32_t shown = digits;
    if (field.flag == 2 && width <= 10) {
        shown = width;
    }
    char *end = out + width;
    if (field.flag == 1) {
        memset(out + digits, ' ', static_cast<size_t>(width - digits));
        end = out + digits;
    } else if (width > shown) {
        memset(out, field.flag == 2 ? '0' : ' ', static_cast<size_t>(width - shown));
    }
    // The digits, from the right: two at a time, then a single one for an odd count.
    char *p = end;
    char *const first = end - shown;
    while (p - first >= 2) {
        p -= 2;
        memcpy(p, Pair(v % 100), 2);
        v /= 100;
    }
    if (p > first) {
        *--p = static_cast<char>('0' + v);
    }
    *position = out + width;
    *room -= width;
    return true;
}

// Writes a field that conv::CommonNumberField recognised ("%02D", "%04Z", ...) straight into
// the target when its value is in the letter's range and the room holds it: the bytes are those
// of FormatField, which gets every other case (returns false, writing nothing).
[[gnu::always_inline]] inline bool PutCommonField(char **position, int32_t *room, int32_t letter,
                                                  const CONV_DateTime &record) {
    const int32_t v = record.*conv::kFieldRules[letter].member;
    // The two-digit letters' ranges lie within 0..99; Z's goes beyond 0..9999.
    const int32_t width = conv::CommonFieldWidth(letter);
    if (!conv::InRange(letter, v) || *room < width ||
        (letter == CONV_FIELD_Z && (v < 0 || v > 9999))) {
        return false;
    }
    PutPairs(position, room, static_cast<uint32_t>(v), width);
    return true;
}

// A field of a letter alone ("%Z", "%T", ...), written in the main loop in the common cases: a
// number whose value is in range and fits the room (as PutNumberDirect writes it without a
// width), or a name of T, U, V or W whose value is in range and whose text is the default one
// (no names record, or a null slot), copied up to its terminator or the end of the room as
// FormatField copies a name without a width, with *status CONV_OK or CONV_ERR_TARGET_TOO_SMALL.
// Returns false, writing nothing, for every other case. format[1] is read behind the "%", so
// never past the terminator.
[[gnu::always_inline]] inline bool PutLetterField(char **position, int32_t *room,
                                                  const char *format, const CONV_DateTime &record,
                                                  const char *const *names, int32_t *letter,
                                                  uint32_t *status) {
    constexpr uint32_t kNameLetters =
        1u << CONV_FIELD_T | 1u << CONV_FIELD_U | 1u << CONV_FIELD_V | 1u << CONV_FIELD_W;
    const int32_t l = conv::LetterIndex(format[1]);
    if (l < 0) {
        return false;
    }
    if (IsNumberLetter(l)) {
        constexpr CONV_FieldDescriptor kLetterAlone = {0, conv::kNotGiven, 0, 2, conv::kNotGiven};
        int32_t value = 0;
        if (NumberValue(l, record, &value) != CONV_OK ||
            !PutNumberDirect(position, room, value, kLetterAlone)) {
            return false;
        }
        *letter = l;
        *status = CONV_OK;
        return true;
    }
    if ((kNameLetters >> l & 1u) == 0) {
        return false;
    }
    const conv::FieldRule &rule = conv::kFieldRules[l];
    const int32_t value = record.*rule.member;
    if (!conv::InRange(l, value)) {
        return false;
    }
    const int32_t index = value - rule.low;
    if (names != nullptr && names[rule.firstName + index] != nullptr) {
        return false;
    }
    const char *name = rule.defaults[index];
    char *out = *position;
    int32_t left = *room;
    while (*name != '\0' && left > 0) {
        *out++ = *name++;
        --left;
    }
    *position = out;
    *room = left;
    *letter = l;
    *status = *name == '\0' ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL;
    return true;
}

// Names slot `slot` of the caller's record, or the default text when the record or the slot is
// null.
const char *NameOrDefault(const char *const *names, int32_t slot, const char *fallback) {
    if (names != nullptr && names[slot] != nullptr) {
        return names[slot];
    }
    return fallback;
}

// The fraction field: nanoseconds as a plain number when the base is unset, otherwise exactly
// fractionBase digits, zero-filled on the left and then padded on the right with "0" up to the
// precision. Returns CONV_OK with the text in scratch, or the status of a value that cannot be
// written.
uint32_t FormatFraction(char (&scratch)[kScratchSize], size_t *scratchLength,
                        const CONV_DateTime &record, uint16_t precision) {
    const int32_t base = record.fractionBase;
    const uint32_t status = conv::CheckFraction(record.fraction, base);
    if (status != CONV_OK) {
        return status;
    }
    if (base == conv::kUnset) {
        *scratchLength = PutDecimal(scratch, record.fraction);
        return CONV_OK;
    }
    int32_t value = record.fraction;
    for (int32_t i = base - 1; i >= 0; --i) {
        scratch[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    int32_t length = base;
    if (precision != conv::kNotGiven) {
        while (length < precision) {
            scratch[length++] = '0';
        }
    }
    scratch[length] = '\0';
    *scratchLength = static_cast<size_t>(length);
    return CONV_OK;
}

// Letter E: the era of the record's date, stored in record.era, and its name from the caller's
// era slots (there are no default era names). Returns CONV_OK with *text set, or the status of
// a date that has no era name.
uint32_t FormatEra(CONV_DateTime &record, const char *const *names, const char **text) {
    for (const int32_t letter : {CONV_FIELD_D, CONV_FIELD_M, CONV_FIELD_Z}) {
        const uint32_t status = conv::CheckValue(letter, record);
        if (status != CONV_OK) {
            return status;
        }
    }
    // Only the first era slot tells whether era names were given; a caller that fills it fills
    // all four. A missing later slot is refused the same way rather than read.
    if (names == nullptr || names[CONV_NAMES_ERA] == nullptr) {
        return CONV_ERR_NO_ERA_NAMES;
    }
    int16_t era = 0;
    const uint32_t status = conv::GetEra(record.day, record.month, record.year, &era);
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

// Letter J: the year within the era that an E field earlier in the same format set (without
// one, the Gregorian year itself), or the SYEAR text for the first year of an era. Returns
// CONV_OK with *text set or the year in scratch, or the status of a year that cannot be
// written.
uint32_t FormatEraYear(const CONV_DateTime &record, const char *const *names,
                       char (&scratch)[kScratchSize], size_t *scratchLength, const char **text) {
    const uint32_t status = conv::CheckValue(CONV_FIELD_J, record);
    if (status != CONV_OK) {
        return status;
    }
    int32_t year = record.year;
    if (record.era >= 0 && record.era <= 3) {  // GCOVR_EXCL_BR_LINE: unset, or GetEra's 0..3
        year -= conv::kEraOffset[record.era];
    }
    if (year != 1) {
        *scratchLength = PutDecimal(scratch, year);
        return CONV_OK;
    }
    if (names == nullptr || names[CONV_NAMES_SYEAR] == nullptr) {
        return CONV_ERR_NO_SYEAR;
    }
    *text = names[CONV_NAMES_SYEAR];
    return CONV_OK;
}

// Converts one field of the record to its text by the letter's rule: *text points either at
// scratch, whose length is then stored in *scratchLength, or at a name (caller's or default).
// record.era is written by an E field. Returns CONV_OK or the status of a value that the letter
// cannot write.
uint32_t ConvertField(int32_t letter, const CONV_FieldDescriptor &field, CONV_DateTime &record,
                      const char *const *names, char (&scratch)[kScratchSize],
                      size_t *scratchLength, const char **text) {
    *text = scratch;
    switch (letter) {
        case CONV_FIELD_F:
            return FormatFraction(scratch, scratchLength, record, field.precision);
        case CONV_FIELD_E:
            return FormatEra(record, names, text);
        case CONV_FIELD_J:
            return FormatEraYear(record, names, scratch, scratchLength, text);
        default:
            break;
    }
    int32_t value = 0;
    if (IsNumberLetter(letter)) {
        const uint32_t status = NumberValue(letter, record, &value);
        if (status == CONV_OK) {  // GCOVR_EXCL_BR_LINE: FormatField checked this value first
            *scratchLength = PutDecimal(scratch, value);
        }
        return status;
    }
    // A name: Q picks the designator by the half of the day, the others by the value.
    const conv::FieldRule &rule = conv::kFieldRules[letter];
    const uint32_t status = conv::CheckValue(letter, record);
    if (status != CONV_OK) {
        return status;
    }
    value = record.*rule.member;
    const int32_t index = letter == CONV_FIELD_Q ? (value < 12 ? 0 : 1) : value - rule.low;
    *text = NameOrDefault(names, rule.firstName + index, rule.defaults[index]);
    return CONV_OK;
}

// Fills count bytes at position with c.
void Fill(char *position, size_t count, char c) {
    if (count > 0) {
        memset(position, c, count);
    }
}

// Places the text of one field (length bytes) at *position within *room free bytes: cut to the
// width when one is given (keeping the left part), justified and padded in the width, and cut to
// the room. No terminator is written. Advances *position and reduces *room by the positions
// written. Returns CONV_OK, or CONV_ERR_TARGET_TOO_SMALL when the field did not fit in the room.
uint32_t PlaceField(char **position, int32_t *room, const char *text, size_t textLength,
                    const CONV_FieldDescriptor *descriptor) {
    char *out = *position;
    const size_t roomLeft = *room > 0 ? static_cast<size_t>(*room) : 0;
    size_t length = textLength;
    uint32_t status = CONV_OK;
    size_t written = 0;

    if (descriptor->width == conv::kNotGiven) {
        if (length > roomLeft) {
            length = roomLeft;
            status = CONV_ERR_TARGET_TOO_SMALL;
        }
        memcpy(out, text, length);
        written = length;
    } else {
        const size_t width = descriptor->width;
        // A value wider than its field is silently cut to the field, keeping its left part.
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

// Converts one field and places it at *position within *room free bytes. Number fields of the
// common shape are written directly; names without a width are copied up to their terminator
// or the end of the room; everything else goes through the scratch text and PlaceField. Returns
// CONV_OK, the status of a value the letter cannot write, CONV_ERR_TARGET_TOO_SMALL when the
// field was cut to the room, or CONV_WARN_TRUNCATION for a fraction cut to the room.
uint32_t FormatField(char **position, int32_t *room, int32_t letter,
                     const CONV_FieldDescriptor &field, CONV_DateTime &record,
                     const char *const *names) {
    if (IsNumberLetter(letter)) {
        int32_t value = 0;
        const uint32_t status = NumberValue(letter, record, &value);
        if (status != CONV_OK || PutNumberDirect(position, room, value, field)) {
            return status;
        }
    }
    char scratch[kScratchSize];
    size_t scratchLength = 0;
    const char *text = scratch;
    uint32_t status = ConvertField(letter, field, record, names, scratch, &scratchLength, &text);
    if (status != CONV_OK) {
        return status;
    }
    char *out = *position;
    if (text != scratch && field.width == conv::kNotGiven &&
        (names == nullptr ||
         reinterpret_cast<uintptr_t>(text) >= reinterpret_cast<uintptr_t>(out))) {
        // A name without a width: copied up to its terminator or the end of the room, without
        // the general placing. Same bytes and status as PlaceField. A name of the caller's that
        // starts at or after the write position may lie in the target itself; it is measured
        // before anything is written and moved as a whole, which reads every byte before it is
        // overwritten. One that starts before the write position goes through PlaceField.
        const size_t length = strlen(text);
        const size_t shown =
            length < static_cast<size_t>(*room) ? length : static_cast<size_t>(*room);
        memmove(out, text, shown);
        *position = out + shown;
        *room -= static_cast<int32_t>(shown);
        return shown == length ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL;
    }
    // The length of digits just written is known; reading them back with strlen would have to
    // wait for their stores.
    const size_t length = text == scratch ? scratchLength : strlen(text);
    status = PlaceField(position, room, text, length, &field);
    // A cut fraction is reported as a warning: the digits shown are still the leading digits of
    // the value (callers accept a shortened timestamp).
    if (status != CONV_OK && letter == CONV_FIELD_F) {
        status = CONV_WARN_TRUNCATION;
    }
    return status;
}

}  // namespace

// Places the NUL-terminated text of one field at *position within *room free bytes, as
// PlaceField does. Returns CONV_OK or CONV_ERR_TARGET_TOO_SMALL.
uint32_t conv::CONV_PutInBuffer(char **position, int32_t *room, const char *text,
                                const CONV_FieldDescriptor *descriptor) noexcept {
    return PlaceField(position, room, text, strlen(text), descriptor);
}

// Formats the record under format into target (targetSize bytes), always terminated: a size of 0
// or below leaves no room for text, and the terminator still goes to target[0] (callers pass a
// target of at least one byte). Returns CONV_OK, the status of the field that stopped formatting,
// or CONV_ERR_TARGET_TOO_SMALL when the room ran out; a fraction field cut by the room gives
// CONV_WARN_TRUNCATION. The caller keeps ownership of everything; only record->era and the
// target are written.
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
    *failedField = CONV_FIELD_NONE;

    // A record that shares bytes with the target is read from a copy, so that the text written
    // cannot change the values still to be read.
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

    char *out = target;
    // One byte is kept for the terminator; a size of 0 or below leaves no room at all (and the
    // size is not decremented there, which could overflow).
    int32_t room = targetSize > 0 ? targetSize - 1 : 0;
    const char *fmt = format;
    while (room > 0 && *fmt != '\0') {
        CONV_FieldDescriptor field;
        int32_t letter = -1;
        // Only a "%" can begin a field: other characters skip the field reader. The commonest
        // fields are written here without it when they can be.
        if (*fmt == '%') {
            const int32_t common = conv::CommonNumberField(fmt);
            if (common >= 0 && PutCommonField(&out, &room, common, *values)) {
                ++*fieldCount;
                fmt += conv::kCommonFieldLength;
                continue;
            }
            uint32_t status = CONV_OK;
            if (PutLetterField(&out, &room, fmt, *values, names, &letter, &status)) {
                ++*fieldCount;
                fmt += 2;  // "%" and the letter
                if (status != CONV_OK) {
                    *out = '\0';
                    *failedField = static_cast<uint16_t>(letter);
                    return status;
                }
                continue;
            }
            letter = conv::CONV_CheckField(&fmt, &field);
        }
        if (letter < 0) {
            // A literal; for "%%" the reader already stepped onto the second "%".
            *out++ = *fmt++;
            --room;
            continue;
        }
        ++*fieldCount;
        fmt += field.length;

        const uint32_t status = FormatField(&out, &room, letter, field, *values, names);
        if (status != CONV_OK) {
            *out = '\0';
            *failedField = static_cast<uint16_t>(letter);
            return status;
        }
    }
    *out = '\0';
    return *fmt == '\0' ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL;
}

// Measures format by formatting a worst-case sample (10 October 1994, 23:59:59.999999999, a
// Sunday) with the longest name of every group placed where the sample reads it. Era names and
// the SYEAR text are not available to the measurement (an E field fails it; J measures the
// Gregorian year). Stores the text length plus the terminator in *length and returns CONV_OK; on
// any failure stores 0 and returns CONV_ERR_TARGET_TOO_SMALL.
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

    // Slots 0..39 from the caller, a null slot (or no record) taking its default text.
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

    // The longest text of each group (the first wins a tie) goes into the slot the sample uses:
    // Sunday, October and after noon.
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
