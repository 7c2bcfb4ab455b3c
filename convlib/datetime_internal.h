/* SPDX-License-Identifier: MIT */
/*
 * datetime_internal.h - calendar helpers and the field placer shared by the date-time files of the
 * conversion library (values and calendar, formatting, parsing, ODBC text). Not exported.
 */
#ifndef CONVLIB_DATETIME_INTERNAL_H
#define CONVLIB_DATETIME_INTERNAL_H

#include <stdint.h>

#include <nlssupport/convlib.h>

/* Internal to the library: kept out of the shared library's exported names. */
#define CONV_DT_INTERNAL __attribute__((visibility("hidden")))

/* Field indexes of the format letters: their positions in "DFHIMPQSTUVWYZEJ". */
enum ConvFieldLetter : int32_t {
    kLetterD = 0,
    kLetterF,
    kLetterH,
    kLetterI,
    kLetterM,
    kLetterP,
    kLetterQ,
    kLetterS,
    kLetterT,
    kLetterU,
    kLetterV,
    kLetterW,
    kLetterY,
    kLetterZ,
    kLetterE,
    kLetterJ,
};

/* The unset marker as it is compared against the 32-bit fraction and the 16-bit fields. */
inline constexpr int32_t kConvUnset = CONV_DT_UNSET;
/* failedField when no field failed; width and precision when not given. */
inline constexpr uint16_t kConvNoField = 65535;

/* Gregorian leap-year rule, applied to every year including zero and negative years. */
CONV_DT_INTERNAL bool CONV_IsLeapYear(int32_t year) noexcept;

/* Checks the combination of a day 1..31 and a month 1..12: 31 in a 30-day month, 30 or 31 in
 * February, and 29 February of a year that is set and not a leap year give CONV_ERR_DAY.
 * Returns CONV_OK otherwise (29 February passes when the year is unset). */
CONV_DT_INTERNAL uint32_t CONV_CheckDayInMonth(int32_t day, int32_t month, int32_t year) noexcept;

/* The era (0..3) of a date whose day, month and year are set, into *era. Returns CONV_OK, or
 * CONV_ERR_ERA_RANGE for a date before 8 September 1868 (*era untouched). */
CONV_DT_INTERNAL uint32_t CONV_GetEra(int32_t day, int32_t month, int32_t year,
                                      int16_t *era) noexcept;

/* The Gregorian year of year eraYear of era (0..3), for a date of the given month and day (either
 * may be the unset marker), into *year. Returns CONV_OK, or CONV_ERR_YEAR when the era year is
 * outside the era or the date lies before its first day or after its last (*year untouched). */
CONV_DT_INTERNAL uint32_t CONV_EraYearToYear(int32_t era, int32_t eraYear, int32_t month,
                                             int32_t day, int16_t *year) noexcept;

/* Offset of each era: era year = Gregorian year - offset. */
inline constexpr int32_t kConvEraOffset[4] = {1867, 1911, 1925, 1988};

/*
 * Places one converted field at *position with room *room (bytes still free, the terminator's
 * byte excluded): the text (NUL-terminated, only read) in the width of the descriptor with its
 * flag, cut to the width, and cut to the room. Advances *position and reduces *room by the
 * positions written. Writes no terminator. Returns CONV_OK, or CONV_ERR_TARGET_TOO_SMALL when
 * the field had to be cut to the room.
 */
CONV_DT_INTERNAL uint32_t CONV_PutInBuffer(char **position, int32_t *room, const char *text,
                                           const CONV_FieldDescriptor *descriptor) noexcept;

#endif /* CONVLIB_DATETIME_INTERNAL_H */
