// SPDX-License-Identifier: MIT
// datetime_internal.h - what the date-time files of the conversion library share (values and
// calendar, formatting, parsing, ODBC text, the field readers): the sixteen field letters and
// their rules in one table, the reader of "%" fields, the source scanners, the fraction check
// and the calendar helpers. Not exported.
#ifndef CONVLIB_DATETIME_INTERNAL_H
#define CONVLIB_DATETIME_INTERNAL_H

#include <nlssupport/convlib.h>
#include <stdint.h>

namespace [[gnu::visibility("hidden")]] conv {

// The unset marker as it is compared against the 32-bit fraction and the 16-bit fields.
inline constexpr int32_t kUnset = CONV_DT_UNSET;
// Width and precision of a field descriptor that were not given.
inline constexpr uint16_t kNotGiven = 65535;

// The sixteen field letters of the format language; a letter's position is its field index
// (CONV_FIELD_D ... CONV_FIELD_J). gCONV_Letter is this text.
inline constexpr char kFieldLetters[17] = "DFHIMPQSTUVWYZEJ";

// What a letter reads from the record and what it accepts. The formatter refuses a value
// outside low..high with `status`; the parser stores what it read into the member and gives
// `status` for a value outside the range; CONV_CheckDateTime applies the same ranges to the
// set fields. Name letters take their text from names slot firstName + (value - low), or from
// `defaults` when the slot is null. The year letters accept every year but the unset marker.
struct FieldRule {
    int16_t CONV_DateTime::*member;  // null: F (the 32-bit fraction has rules of its own)
    int16_t low;
    int16_t high;
    uint32_t status;
    int16_t firstName;            // first names slot of the letter, -1 for none
    int16_t nameCount;            // names in the group
    const char *const *defaults;  // default names, null for none
};

// One row per letter, in the order of the field indexes.
// clang-format off
inline constexpr FieldRule kFieldRules[16] = {
    // member                      low     high   status                firstName               count  defaults
    {&CONV_DateTime::day,            1,     31, CONV_ERR_DAY,         -1,                      0, nullptr},                        // D
    {nullptr,                        0,      0, CONV_ERR_FRACTION,    -1,                      0, nullptr},                        // F
    {&CONV_DateTime::hour,           0,     24, CONV_ERR_HOUR24,      -1,                      0, nullptr},                        // H
    {&CONV_DateTime::minute,         0,     59, CONV_ERR_MINUTE,      -1,                      0, nullptr},                        // I
    {&CONV_DateTime::month,          1,     12, CONV_ERR_MONTH,       -1,                      0, nullptr},                        // M
    {&CONV_DateTime::hour,           0,     24, CONV_ERR_HOUR24,      -1,                      0, nullptr},                        // P
    {&CONV_DateTime::hour,           0,     24, CONV_ERR_HOUR24,      CONV_NAMES_MERIDIEM,     2, gCONV_DefaultMeridiem},          // Q
    {&CONV_DateTime::second,         0,     59, CONV_ERR_SECOND,      -1,                      0, nullptr},                        // S
    {&CONV_DateTime::dayOfWeek,      0,      6, CONV_ERR_DAY_OF_WEEK, CONV_NAMES_DAY,          7, gCONV_DefaultNameOfDay},         // T
    {&CONV_DateTime::dayOfWeek,      0,      6, CONV_ERR_DAY_OF_WEEK, CONV_NAMES_SHORT_DAY,    7, gCONV_DefaultShortNameOfDay},    // U
    {&CONV_DateTime::month,          1,     12, CONV_ERR_MONTH,       CONV_NAMES_MONTH,       12, gCONV_DefaultNameOfMonth},       // V
    {&CONV_DateTime::month,          1,     12, CONV_ERR_MONTH,       CONV_NAMES_SHORT_MONTH, 12, gCONV_DefaultShortNameOfMonth},  // W
    {&CONV_DateTime::year,      -32767,  32767, CONV_ERR_YEAR,        -1,                      0, nullptr},                        // Y
    {&CONV_DateTime::year,      -32767,  32767, CONV_ERR_YEAR,        -1,                      0, nullptr},                        // Z
    {&CONV_DateTime::era,            0,      3, CONV_ERR_ERA_RANGE,   CONV_NAMES_ERA,          4, nullptr},                        // E
    {&CONV_DateTime::year,      -32767,  32767, CONV_ERR_YEAR,        CONV_NAMES_SYEAR,        1, nullptr},                        // J
};
// clang-format on
static_assert(sizeof kFieldLetters == 17 && sizeof kFieldRules / sizeof kFieldRules[0] == 16);

// True when value lies in the range of the letter's rule.
constexpr bool InRange(int32_t letter, int32_t value) noexcept {
    return value >= kFieldRules[letter].low && value <= kFieldRules[letter].high;
}

// The status of a letter for the value its member holds: CONV_OK or the rule's status.
inline uint32_t CheckValue(int32_t letter, const CONV_DateTime &record) noexcept {
    return InRange(letter, record.*kFieldRules[letter].member) ? CONV_OK
                                                               : kFieldRules[letter].status;
}

// The one check of a fraction against its base: with the base unset the fraction counts
// nanoseconds and must lie in 0..999999999 (compared unsigned, so negative values fail too);
// a set base must lie in 1..9 (CONV_ERR_FRACTION_BASE), and the fraction in 0 up to the base's
// ceiling in gCONV_SecFracBaseCeiling. Returns CONV_OK, CONV_ERR_FRACTION or
// CONV_ERR_FRACTION_BASE.
inline uint32_t CheckFraction(int32_t fraction, int32_t base) noexcept {
    if (base == kUnset) {
        return static_cast<uint32_t>(fraction) > 999999999u ? CONV_ERR_FRACTION : CONV_OK;
    }
    if (base < 1 || base > 9) {
        return CONV_ERR_FRACTION_BASE;
    }
    return fraction < 0 || fraction > gCONV_SecFracBaseCeiling[base] ? CONV_ERR_FRACTION : CONV_OK;
}

// Field index of every byte: the position of the letter in kFieldLetters, or -1. Built at
// compile time so that reading a field costs one load instead of a string search.
struct LetterTable {
    int8_t index[256];
    constexpr LetterTable() : index{} {
        for (int8_t &i : index) {
            i = -1;
        }
        for (int8_t i = 0; i < 16; ++i) {
            index[static_cast<unsigned char>(kFieldLetters[i])] = i;
        }
    }
};
inline constexpr LetterTable kLetterTable{};

// The field index of a character: 0..15 for a letter, -1 for any other character.
constexpr int32_t LetterIndex(char c) {
    return static_cast<int32_t>(kLetterTable.index[static_cast<unsigned char>(c)]);
}

// The fields of the usual numeric date and time texts: "%02" with a letter whose values have
// at most two digits (D H I M S), and "%04Z". For the "%" at p, returns the letter's index, or
// -1 for every other field, which CONV_CheckField reads. p[3] is read only behind a digit, so
// never past the terminator.
[[gnu::always_inline]] inline int32_t CommonNumberField(const char *p) noexcept {
    if (p[1] != '0') {
        return -1;
    }
    if (p[2] == '2') {
        constexpr uint32_t kTwoDigitLetters = 1u << CONV_FIELD_D | 1u << CONV_FIELD_H |
                                              1u << CONV_FIELD_I | 1u << CONV_FIELD_M |
                                              1u << CONV_FIELD_S;
        const int32_t letter = LetterIndex(p[3]);
        return letter >= 0 && (kTwoDigitLetters >> letter & 1u) != 0 ? letter : -1;
    }
    return p[2] == '4' && p[3] == 'Z' ? CONV_FIELD_Z : -1;
}

// The length of the format text of a field that CommonNumberField recognised.
inline constexpr int32_t kCommonFieldLength = 4;

// The width of a field that CommonNumberField recognised: 4 for "%04Z", 2 for the others.
constexpr int32_t CommonFieldWidth(int32_t letter) noexcept {
    return letter == CONV_FIELD_Z ? 4 : 2;
}

// Reads up to three digits at *position (the digit reader of the field syntax). Returns -1 and
// changes nothing when the first character is no digit; otherwise moves *position past the
// digits, adds their number to *count and returns their value in base ten.
inline int32_t CONV_CheckNumber(const char **position, uint16_t *count) noexcept {
    const char *p = *position;
    if (*p < '0' || *p > '9') {
        return -1;
    }
    int32_t value = 0;
    uint16_t digits = 0;
    while (digits < 3 && p[digits] >= '0' && p[digits] <= '9') {
        value = value * 10 + (p[digits] - '0');
        ++digits;
    }
    *count = static_cast<uint16_t>(*count + digits);
    *position = p + digits;
    return value;
}

// The one reader of the field syntax: a "%" field ("%", an optional "-" or "0" flag, an optional
// width, an optional "." and precision 1..9, a letter of kFieldLetters) at *position, decoded
// into *descriptor; returns the field index 0..15. Returns -1 when the text is not a field (the
// descriptor is then left as it was). *position is not moved, except for "%%", where it moves on
// to the second "%" (and -1 is returned); the caller advances past a field by its length. The
// parts are kept in locals and stored member by member at the end, so that no copy of a
// half-written record has to wait for its 16-bit stores.
[[gnu::always_inline]] inline int32_t CONV_CheckField(const char **position,
                                                      CONV_FieldDescriptor *descriptor) noexcept {
    const char *p = *position;
    if (p[0] != '%') {
        return -1;
    }
    if (p[1] == '%') {
        *position = p + 1;
        return -1;
    }
    // The shape of most fields, "%0" with a width of one digit and a letter ("%02M"), decoded
    // in one step; every other shape takes the general steps below.
    if (p[1] == '0' && p[2] >= '1' && p[2] <= '9') {
        // p[3] is read only behind a digit, so never past the terminator.
        const int32_t letter = LetterIndex(p[3]);
        if (letter >= 0) {
            descriptor->flag = 2;
            descriptor->width = static_cast<uint16_t>(p[2] - '0');
            descriptor->index = static_cast<uint16_t>(letter);
            descriptor->length = 4;
            descriptor->precision = kNotGiven;
            return letter;
        }
    }
    uint16_t flag = 0;
    uint16_t length = 1;
    const char *q = p + 1;
    if (*q == '-') {
        flag = 1;
        length = 2;
        ++q;
    } else if (*q == '0') {
        flag = 2;
        length = 2;
        ++q;
    }
    // The width: CONV_CheckNumber's three digits, read here without its loop (every field
    // passes this way).
    int32_t width = -1;
    unsigned digit = static_cast<unsigned char>(*q) - '0';
    if (digit <= 9) {
        width = static_cast<int32_t>(digit);
        ++q;
        digit = static_cast<unsigned char>(*q) - '0';
        if (digit <= 9) {
            width = width * 10 + static_cast<int32_t>(digit);
            ++q;
            digit = static_cast<unsigned char>(*q) - '0';
            if (digit <= 9) {
                width = width * 10 + static_cast<int32_t>(digit);
                ++q;
            }
        }
        if (width == 0) {
            return -1;  // e.g. "%-0D"
        }
        length = static_cast<uint16_t>(q - p);
    }
    uint16_t precision = kNotGiven;
    if (*q == '.') {
        ++q;
        ++length;
        const int32_t digits = CONV_CheckNumber(&q, &length);
        if (digits < 1 || digits > 9) {
            return -1;
        }
        precision = static_cast<uint16_t>(digits);
    }
    // The terminator is no letter (its table entry is -1).
    const int32_t letter = LetterIndex(*q);
    if (letter < 0) {
        return -1;
    }
    descriptor->flag = flag;
    descriptor->width = width < 0 ? kNotGiven : static_cast<uint16_t>(width);
    descriptor->index = static_cast<uint16_t>(letter);
    descriptor->length = static_cast<uint16_t>(length + 1);
    descriptor->precision = precision;
    return letter;
}

// The common case of CONV_ScanNumber, inline: a width of 1..9 whose characters are all digits is
// summed directly (strtol would read the same digits to the same value and stop exactly at the
// field's end). Returns true with *value set and *position moved past the field; false, changing
// nothing, for every other case, which CONV_ScanNumber handles.
inline bool ScanPlainDigits(const char **position, int32_t *value, uint16_t width) noexcept {
    if (width > 9) {
        return false;  // also "not given"
    }
    const char *source = *position;
    // Two digits, the width of most fields, without the loop.
    if (width == 2) {
        const unsigned tens = static_cast<unsigned char>(source[0]) - '0';
        if (tens > 9) {
            return false;
        }
        const unsigned ones = static_cast<unsigned char>(source[1]) - '0';
        if (ones > 9) {
            return false;
        }
        *position = source + 2;
        *value = static_cast<int32_t>(tens * 10 + ones);
        return true;
    }
    int32_t sum = 0;
    for (uint16_t i = 0; i < width; ++i) {
        const unsigned digit = static_cast<unsigned char>(source[i]) - '0';
        if (digit > 9) {
            return false;
        }
        sum = sum * 10 + static_cast<int32_t>(digit);
    }
    *position = source + width;
    *value = sum;
    return true;
}

// Finds the first of count names that stands at *position (whole name without a width; within a
// width-wide field, at its start under flag 1 and at its end otherwise) and stores its index.
// A null table or a null slot names nothing. On a match *position moves past the name (or the
// whole field). Returns CONV_OK, CONV_ERR_FORMAT_LEFT (fewer than width characters remain) or
// CONV_ERR_SCAN_MISMATCH.
uint32_t CONV_ScanString(const char **position, uint16_t *index, const char *const *names,
                         int32_t count, const CONV_FieldDescriptor *descriptor) noexcept;

// Reads a decimal integer with strtol at *position (exactly width characters when a width is
// given) into *value and moves *position past it. Returns CONV_OK, CONV_ERR_FORMAT_LEFT or
// CONV_ERR_SCAN_MISMATCH.
uint32_t CONV_ScanNumber(const char **position, int32_t *value,
                         const CONV_FieldDescriptor *descriptor) noexcept;

// Places one converted field at *position with room *room (bytes still free, the terminator's
// byte excluded): the text (NUL-terminated, only read) in the width of the descriptor with its
// flag, cut to the width, and cut to the room. Advances *position and reduces *room by the
// positions written. Writes no terminator. Returns CONV_OK, or CONV_ERR_TARGET_TOO_SMALL when
// the field had to be cut to the room.
uint32_t CONV_PutInBuffer(char **position, int32_t *room, const char *text,
                          const CONV_FieldDescriptor *descriptor) noexcept;

// Gregorian leap-year rule, applied to every year including zero and negative years.
bool IsLeapYear(int32_t year) noexcept;

// Checks the combination of a day 1..31 and a month 1..12: 31 in a 30-day month, 30 or 31 in
// February, and 29 February of a year that is set and not a leap year give CONV_ERR_DAY.
// Returns CONV_OK otherwise (29 February passes when the year is unset).
uint32_t CheckDayInMonth(int32_t day, int32_t month, int32_t year) noexcept;

// The era (0..3) of a date whose day, month and year are set, into *era. Returns CONV_OK, or
// CONV_ERR_ERA_RANGE for a date before 8 September 1868 (*era untouched).
uint32_t GetEra(int32_t day, int32_t month, int32_t year, int16_t *era) noexcept;

// The Gregorian year of year eraYear of era (0..3), for a date of the given month and day (either
// may be the unset marker), into *year. Returns CONV_OK, or CONV_ERR_YEAR when the era year is
// outside the era or the date lies before its first day or after its last (*year untouched).
uint32_t EraYearToYear(int32_t era, int32_t eraYear, int32_t month, int32_t day,
                       int16_t *year) noexcept;

// Offset of each era: era year = Gregorian year - offset.
inline constexpr int32_t kEraOffset[4] = {1867, 1911, 1925, 1988};

}  // namespace conv

#endif  // CONVLIB_DATETIME_INTERNAL_H
