/* SPDX-License-Identifier: MIT */
/**
 * @file convlib.h
 * @brief The conversion library: text, integers, floating values, binary-coded decimals, byte
 *        strings, UTF-8 and date-time values.
 *
 * Every function returns one of the status codes below, except the routines that return a
 * length or a byte count and the two in-place trimming routines, which return nothing. CONV_OK
 * is success. The two warnings, CONV_WARN_TRUNCATION and CONV_WARN_ROUND_TO_ZERO, come with a
 * usable, altered result that the caller may accept; every other code is an error whose result
 * is not to be used. CONV_ErrorMessage turns a code into its bracketed SQLSTATE and message text.
 *
 * Conventions shared by all functions:
 * - Results come back through pointer arguments, for most functions the first one; text
 *   outputs come with their capacity in bytes. What an output holds after a failure is stated
 *   for each function.
 * - Input texts are byte strings, NUL-terminated unless a length is passed. Only the UTF-8
 *   encoders take wide characters.
 * - The caller owns every buffer, record and names record it passes; the library keeps no
 *   pointer to them after the call. Texts returned by the library (messages, default names) are
 *   static constants that are never freed.
 * - Pointer arguments must not be null unless the function says that they may be; they are not
 *   tested.
 * - No function records anything on an error stack, keeps state between calls or allocates
 *   memory that survives the call. Only the binary-text routines (for overlapping buffers) and
 *   the date-time parser (for a source inside its record) take a temporary copy through the
 *   checked allocator; a failed allocation is CONV_ERR_MEMORY. All functions are reentrant.
 */
#ifndef NLSSUPPORT_CONVLIB_H
#define NLSSUPPORT_CONVLIB_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** @name Status codes and messages */
/** @{ */

#ifndef CONV_NOEXCEPT
/** Unless defined before, expands to `noexcept` in C++ and to nothing in C: nothing throws. */
#ifdef __cplusplus
#define CONV_NOEXCEPT noexcept
#else
#define CONV_NOEXCEPT
#endif
#endif

/** Success; no SQLSTATE or message (CONV_ErrorMessage gives two empty texts and the result 0). */
#define CONV_OK                   ((uint32_t)0)
/**
 * Hexadecimal text holds a pair that is not two digits "0"-"9" or "A"-"F"
 * (CONV_StringToBinary). SQLSTATE `[22005]`, "Illegal string representation of a byte stream".
 */
#define CONV_ERR_BYTE_STREAM      ((uint32_t)1)
/**
 * A day outside 1..31, or a day that its month (or 29 February, a common year) does not have.
 * SQLSTATE `[22008]`; the message is "Illegal value for a month field", the same as for
 * CONV_ERR_MONTH (kept for compatibility: callers see one text for a bad day and a bad month).
 */
#define CONV_ERR_DAY              ((uint32_t)2)
/** A month outside 1..12. SQLSTATE `[22008]`, "Illegal value for a month field". */
#define CONV_ERR_MONTH            ((uint32_t)3)
/**
 * A year that is needed but unset, or an era year outside its era (parsing). SQLSTATE
 * `[22008]`, "Illegal value for a year field".
 */
#define CONV_ERR_YEAR             ((uint32_t)4)
/**
 * A day of the week outside 0..6 where a day name is to be written. SQLSTATE `[22008]`,
 * "Illegal value for a day of the week field".
 */
#define CONV_ERR_DAY_OF_WEEK      ((uint32_t)5)
/** A second outside 0..59. SQLSTATE `[22008]`, "Illegal value for second field". */
#define CONV_ERR_SECOND           ((uint32_t)6)
/** A minute outside 0..59. SQLSTATE `[22008]`, "Illegal value for minutes field". */
#define CONV_ERR_MINUTE           ((uint32_t)7)
/**
 * An hour outside 0..24, or hour 24 with a non-zero minute or second. SQLSTATE `[22008]`,
 * "Illegal value for hour (24) field".
 */
#define CONV_ERR_HOUR24           ((uint32_t)8)
/**
 * An hour outside 1..12 read for the 12-hour clock (parsing). SQLSTATE `[22008]`, "Illegal value
 * for hour (12) field".
 */
#define CONV_ERR_HOUR12           ((uint32_t)9)
/**
 * A fraction of a second outside the range that its base allows. SQLSTATE `[22008]`, "Illegal
 * value for fractions of a second field".
 */
#define CONV_ERR_FRACTION         ((uint32_t)10)
/**
 * A fraction base (number of fraction digits) outside 1..9. SQLSTATE `[S1000]`, "Illegal value
 * for fractions of a second field base".
 */
#define CONV_ERR_FRACTION_BASE    ((uint32_t)11)
/**
 * Parsing met a second field for a value that is already read (for example a day twice, or an
 * hour under both H and P). SQLSTATE `[S1000]`, "Rescan of a field".
 */
#define CONV_ERR_RESCAN           ((uint32_t)12)
/**
 * The output buffer cannot hold the result (or the part of it that may not be cut). SQLSTATE
 * `[22003]`, "Target too small to contain data".
 */
#define CONV_ERR_TARGET_TOO_SMALL ((uint32_t)13)
/**
 * Parsing: the source ended while the format still had something to read, or fewer characters
 * were left than a field's width. SQLSTATE `[22008]`, "Date/Time data left in format string".
 */
#define CONV_ERR_FORMAT_LEFT      ((uint32_t)14)
/**
 * Parsing: the format ended while source text was left. SQLSTATE `[22008]`, "Date/Time data
 * left in source string".
 */
#define CONV_ERR_SOURCE_LEFT      ((uint32_t)15)
/**
 * Warning: the result was cut to fit (fraction digits or characters dropped, or a fraction
 * dropped toward zero by an integer conversion); the output holds the usable, shortened result.
 * SQLSTATE `[01004]`, "Truncation".
 */
#define CONV_WARN_TRUNCATION      ((uint32_t)16)
/**
 * Parsing: a literal character of the format, a name or a number was not found in the source.
 * SQLSTATE `[22008]`, "Date/Time scan mismatch".
 */
#define CONV_ERR_SCAN_MISMATCH    ((uint32_t)17)
/**
 * A temporary copy could not be allocated; nothing was converted. SQLSTATE `[S1001]`, "Memory
 * allocation failed".
 */
#define CONV_ERR_MEMORY           ((uint32_t)18)
/**
 * The conversion cannot be made: an input text over 999 characters, an unknown style or layout,
 * a bad decimal value, a NaN. SQLSTATE `[S1000]`, "Conversion failed".
 */
#define CONV_ERR_CONVERSION       ((uint32_t)19)
/**
 * The value lies outside the range of the target type (the target is not written unless the
 * function says otherwise). SQLSTATE `[22003]`, "Number overflow".
 */
#define CONV_ERR_OVERFLOW         ((uint32_t)20)
/**
 * The text is not a number under the number-syntax flags or the function's own rules (or a
 * self-describing decimal value has a bad sign). SQLSTATE `[22005]`, "Not a number".
 */
#define CONV_ERR_NOT_A_NUMBER     ((uint32_t)21)
/**
 * Warning: a non-zero number text is too small for a double and was read as 0.0; where the
 * function says so, the target holds 0.0. SQLSTATE `[01004]`, "Round to zero".
 */
#define CONV_WARN_ROUND_TO_ZERO   ((uint32_t)22)
/**
 * An era name was asked for a date before 8 September 1868, the first day of the era calendar.
 * SQLSTATE `[S1000]`, "The date specified is out of program range for era calculation
 * (< 8 Sep 1868)".
 */
#define CONV_ERR_ERA_RANGE        ((uint32_t)23)
/**
 * An era field was met but the names record holds no era names (slot CONV_NAMES_ERA is null, or
 * no names record was given). SQLSTATE `[S1000]`, "No era names were specified".
 */
#define CONV_ERR_NO_ERA_NAMES     ((uint32_t)24)
/**
 * The first year of an era is to be written but the names record holds no SYEAR text (slot
 * CONV_NAMES_SYEAR). SQLSTATE `[S1000]`, "No valid SYEAR was specified".
 */
#define CONV_ERR_NO_SYEAR         ((uint32_t)25)

/**
 * Maps a status code to its message text and its bracketed SQLSTATE.
 *
 * Both outputs are always written, also for CONV_OK and unknown codes, with static constant
 * texts that the caller must not free or change; texts are shared, so different codes may give
 * the same pointer. The SQLSTATE is five characters in square brackets, for example `[22008]`.
 *
 * @note CONV_ERR_DAY gives the text of CONV_ERR_MONTH, "Illegal value for a month field"; this
 *       is kept for compatibility, and callers match on that text.
 *
 * @param[in]  status    The status code.
 * @param[out] message   Receives the message text, or "" for 0 and unknown codes. Must not be
 *                       null.
 * @param[out] sqlstate  Receives the bracketed SQLSTATE, or "" for 0 and unknown codes. Must not
 *                       be null.
 * @retval 1 The code is one of 1..25.
 * @retval 0 The code is CONV_OK (0) or above 25; both texts are empty.
 */
uint32_t CONV_ErrorMessage(uint32_t status, const char **message,
                           const char **sqlstate) CONV_NOEXCEPT;

/** @} */

/**
 * @name Numeric narrowing
 *
 * Each routine moves the source value into the target type. A value outside the accepted range
 * returns CONV_ERR_OVERFLOW and leaves the target untouched. The double-to-integer routines
 * compare the value with their bounds as reals (so 2147483647.5 overflows an int32_t), then
 * store it truncated toward zero and return CONV_WARN_TRUNCATION when a fraction was dropped.
 * A NaN passes the bound tests: the target receives what the truncating conversion of a NaN
 * gives (INT32_MIN for int32_t, 0 for the others) and the status is CONV_WARN_TRUNCATION.
 * The target pointer must not be null.
 */
/** @{ */

/**
 * Narrows a double to a float, rounding to nearest.
 *
 * The accepted range is +-3.4028238720334565e38, a little above the largest finite float; a
 * value between the two that rounds beyond the largest float is stored as infinity with
 * CONV_OK (callers rely on this bound). There is no underflow test: tiny values become subnormal
 * or zero with CONV_OK. A NaN is stored as a NaN with CONV_OK.
 *
 * @param[out] target  Receives the float.
 * @param[in]  value   The double.
 * @retval CONV_OK           Stored.
 * @retval CONV_ERR_OVERFLOW Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToFloat(float *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to a signed 32-bit integer (-2147483648.0..2147483647.0), truncating.
 *
 * @param[out] target  Receives the value truncated toward zero (-2.7 gives -2).
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToInt32(int32_t *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to an unsigned 32-bit integer (0.0..4294967295.0), truncating.
 *
 * Any negative value, even -0.25, overflows; -0.0 gives 0.
 *
 * @param[out] target  Receives the value truncated toward zero.
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToUInt32(uint32_t *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to a signed 16-bit integer (-32768.0..32767.0), truncating.
 *
 * @param[out] target  Receives the value truncated toward zero.
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToInt16(int16_t *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to an unsigned 16-bit integer (0.0..65535.0), truncating.
 *
 * Any negative value overflows.
 *
 * @param[out] target  Receives the value truncated toward zero.
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToUInt16(uint16_t *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to a signed 8-bit integer (-128.0..127.0), truncating.
 *
 * @param[out] target  Receives the value truncated toward zero.
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range (-128.5 overflows); the target is untouched.
 */
uint32_t CONV_DoubleToInt8(int8_t *target, double value) CONV_NOEXCEPT;
/**
 * Narrows a double to an unsigned 8-bit integer (0.0..255.0), truncating.
 *
 * Any negative value overflows (-0.1 too); 254.9 gives 254 with a warning.
 *
 * @param[out] target  Receives the value truncated toward zero.
 * @param[in]  value   The double.
 * @retval CONV_OK              The value was whole.
 * @retval CONV_WARN_TRUNCATION A fraction was dropped, or the value was a NaN.
 * @retval CONV_ERR_OVERFLOW    Outside the range; the target is untouched.
 */
uint32_t CONV_DoubleToUInt8(uint8_t *target, double value) CONV_NOEXCEPT;
/**
 * Widens a signed 32-bit integer to a double, exactly.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK Always.
 */
uint32_t CONV_Int32ToDouble(double *target, int32_t value) CONV_NOEXCEPT;
/**
 * Converts a signed 32-bit integer to a float, rounding to nearest.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK Always.
 */
uint32_t CONV_Int32ToFloat(float *target, int32_t value) CONV_NOEXCEPT;
/**
 * Copies a signed 32-bit integer of 0..2147483647 into an unsigned 32-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW A negative value; the target is untouched.
 */
uint32_t CONV_Int32ToUInt32(uint32_t *target, int32_t value) CONV_NOEXCEPT;
/**
 * Copies a signed 32-bit integer of -32768..32767 into a signed 16-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Outside the range; the target is untouched.
 */
uint32_t CONV_Int32ToInt16(int16_t *target, int32_t value) CONV_NOEXCEPT;
/**
 * Copies a signed 32-bit integer of 0..65535 into an unsigned 16-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Outside the range (-1 too); the target is untouched.
 */
uint32_t CONV_Int32ToUInt16(uint16_t *target, int32_t value) CONV_NOEXCEPT;
/**
 * Copies a signed 32-bit integer of -128..127 into a signed 8-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Outside the range; the target is untouched.
 */
uint32_t CONV_Int32ToInt8(int8_t *target, int32_t value) CONV_NOEXCEPT;
/**
 * Copies a signed 32-bit integer of 0..255 into an unsigned 8-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Outside the range; the target is untouched.
 */
uint32_t CONV_Int32ToUInt8(uint8_t *target, int32_t value) CONV_NOEXCEPT;
/**
 * Widens an unsigned 32-bit integer to a double, exactly (4294967295 gives 4294967295.0).
 *
 * @param[out] target  Receives the value; values of 2^31 and above stay positive.
 * @param[in]  value   The integer.
 * @retval CONV_OK Always.
 */
uint32_t CONV_UInt32ToDouble(double *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Converts an unsigned 32-bit integer to a float, rounding to nearest.
 *
 * @param[out] target  Receives the value; values of 2^31 and above stay positive.
 * @param[in]  value   The integer.
 * @retval CONV_OK Always.
 */
uint32_t CONV_UInt32ToFloat(float *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Accepts an unsigned 32-bit integer of 0..2147483647 and stores its low 16 bits sign-extended.
 *
 * @note Kept for compatibility, unlike its siblings: the value stored is not the value but its
 *       low 16 bits taken as a signed 16-bit number, so 40000 gives -25536, 65535 gives -1 and
 *       70000 gives 4464, all with CONV_OK; only 0..32767 come through unchanged. Callers rely
 *       on this.
 *
 * @param[out] target  Receives the sign-extended low 16 bits.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Stored.
 * @retval CONV_ERR_OVERFLOW A value of 2^31 or above; the target is untouched.
 */
uint32_t CONV_UInt32ToInt32(int32_t *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Copies an unsigned 32-bit integer of 0..32767 into a signed 16-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Above 32767; the target is untouched.
 */
uint32_t CONV_UInt32ToInt16(int16_t *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Copies an unsigned 32-bit integer of 0..65535 into an unsigned 16-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Above 65535; the target is untouched.
 */
uint32_t CONV_UInt32ToUInt16(uint16_t *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Copies an unsigned 32-bit integer of 0..127 into a signed 8-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Above 127; the target is untouched.
 */
uint32_t CONV_UInt32ToInt8(int8_t *target, uint32_t value) CONV_NOEXCEPT;
/**
 * Copies an unsigned 32-bit integer of 0..255 into an unsigned 8-bit target.
 *
 * @param[out] target  Receives the value.
 * @param[in]  value   The integer.
 * @retval CONV_OK           Copied.
 * @retval CONV_ERR_OVERFLOW Above 255; the target is untouched.
 */
uint32_t CONV_UInt32ToUInt8(uint8_t *target, uint32_t value) CONV_NOEXCEPT;

/** @} */

/**
 * @name Number text scanning and checking
 *
 * Number-syntax flags: a bit set taken by CONV_IsNumber, the text-to-number routines and
 * CONV_StringToDecimal. The space always counts as a blank; carriage return never does, nor
 * does any other character. The decimal-point character is an argument of each routine, not a
 * flag. Digits are "0" to "9".
 */
/** @{ */

/** Blanks may stand before the number (before its sign). */
#define CONV_NUM_LEADING_BLANKS  ((uint32_t)0x001)
/** Blanks may stand after the number. */
#define CONV_NUM_TRAILING_BLANKS ((uint32_t)0x002)
/** A decimal point may stand in the number; without this flag any point fails the check. */
#define CONV_NUM_DECIMAL_POINT   ((uint32_t)0x004)
/** An exponent, introduced by "E" or "e", may follow the digits. */
#define CONV_NUM_EXPONENT        ((uint32_t)0x008)
/** A horizontal tab counts as a blank (otherwise a tab fails the check wherever it stands). */
#define CONV_NUM_TAB_IS_BLANK    ((uint32_t)0x010)
/** A line feed counts as a blank (otherwise a line feed fails the check wherever it stands). */
#define CONV_NUM_LF_IS_BLANK     ((uint32_t)0x020)
/** "D" and "d" also introduce the exponent (with CONV_NUM_EXPONENT). */
#define CONV_NUM_D_EXPONENT      ((uint32_t)0x040)
/** No check at all: the text is taken as it stands. */
#define CONV_NUM_NO_CHECK        ((uint32_t)0x100)

/**
 * One `%` field of a date-time format, as the library's field reader decodes it.
 *
 * The date-time formatter and parser fill and read it internally; it is shown here because it
 * describes the parts of a field of the format language (see CONV_DateTimeToString).
 */
typedef struct CONV_FieldDescriptor {
    uint16_t flag;      /**< 0 no flag, 1 `-` (left-justified), 2 `0` (zero-padded). */
    uint16_t width;     /**< Width 1..999, or 65535 when none is given. */
    uint16_t index;     /**< Field index 0..15: the letter's position in #gCONV_Letter. */
    uint16_t length;    /**< Format characters of the field, from `%` to the letter inclusive. */
    uint16_t precision; /**< Precision 1..9, or 65535 when none is given. */
} CONV_FieldDescriptor;

/**
 * @name Field indexes of the date-time format letters
 * A letter's field index is its position in #gCONV_Letter. The formatter and the parser report
 * the index of the field that failed in their failedField result, and CONV_FIELD_NONE when no
 * field failed.
 */
/** @{ */
#define CONV_FIELD_D 0  /**< D: day of the month. */
#define CONV_FIELD_F 1  /**< F: fraction of a second. */
#define CONV_FIELD_H 2  /**< H: hour on the 24-hour clock. */
#define CONV_FIELD_I 3  /**< I: minute. */
#define CONV_FIELD_M 4  /**< M: month number. */
#define CONV_FIELD_P 5  /**< P: hour on the 12-hour clock. */
#define CONV_FIELD_Q 6  /**< Q: meridiem designator. */
#define CONV_FIELD_S 7  /**< S: second. */
#define CONV_FIELD_T 8  /**< T: full day name. */
#define CONV_FIELD_U 9  /**< U: short day name. */
#define CONV_FIELD_V 10 /**< V: full month name. */
#define CONV_FIELD_W 11 /**< W: short month name. */
#define CONV_FIELD_Y 12 /**< Y: year within the century. */
#define CONV_FIELD_Z 13 /**< Z: full year. */
#define CONV_FIELD_E 14 /**< E: era name. */
#define CONV_FIELD_J 15 /**< J: year within the era, or the SYEAR text. */
/** No field: the failedField result when no field failed. */
#define CONV_FIELD_NONE 65535

/** The sixteen field letters, "DFHIMPQSTUVWYZEJ", in the order of their field indexes. */
extern const char gCONV_Letter[17];
/** @} */

/**
 * Checks that a text is a decimal number under the number-syntax flags.
 *
 * The accepted form is, in this order: blanks (with CONV_NUM_LEADING_BLANKS); an optional "-"
 * or "+", which blanks may always follow ("- 5" passes); digits, and with CONV_NUM_DECIMAL_POINT
 * a point with digits before it, after it or both ("5." and ".5" pass, "." and "-." fail); with
 * CONV_NUM_EXPONENT an exponent letter, at most one blank, an optional sign and at least one
 * digit ("1E 5" passes, "1E  5" fails); blanks (with CONV_NUM_TRAILING_BLANKS); the end of the
 * text. An empty text fails. A NUL point character never stands for a point.
 *
 * @param[in] text   The text, NUL-terminated.
 * @param[in] flags  Number-syntax flags (CONV_NUM_...); CONV_NUM_NO_CHECK accepts any text.
 * @param[in] point  The decimal-point character, for example '.' or ','.
 * @retval CONV_OK               The text is a number under the flags.
 * @retval CONV_ERR_NOT_A_NUMBER It is not.
 */
uint32_t CONV_IsNumber(const char *text, uint32_t flags, char point) CONV_NOEXCEPT;
/**
 * Normalises number text into a buffer, cutting fraction characters when it does not fit.
 *
 * Spaces are trimmed at both ends; leading "0" characters are dropped while another character
 * other than the point follows ("0007" gives "7", "000.5" gives "0.5", "0" stays), before the
 * sign is looked at, so zeros after a sign stay ("-007"); a "+" is dropped and white space after
 * the sign is skipped. The text itself is not checked for being a number. When the result does
 * not fit, characters are cut from its end as long as every character before the first point
 * stays ("123.456" into 5 bytes gives "123." with a warning).
 *
 * @param[out] out     The buffer, size bytes; on success and on the warning it holds the
 *                     NUL-terminated text. After CONV_ERR_TARGET_TOO_SMALL it may hold a "-"
 *                     without a terminator.
 * @param[in]  text    The number text, NUL-terminated, at most 999 characters.
 * @param[in]  size    Bytes of out, terminator included; at least 2.
 * @param[in]  point   The decimal-point character.
 * @param[out] length  Receives the full, uncut length of the normalised text, sign included,
 *                     so that a caller learns the size it would have needed (also on
 *                     CONV_ERR_TARGET_TOO_SMALL for a text that does not fit). Untouched when
 *                     the text is over 999 characters or size is below 2.
 * @retval CONV_OK                   The whole text was written.
 * @retval CONV_WARN_TRUNCATION      Characters after the integer digits were cut.
 * @retval CONV_ERR_TARGET_TOO_SMALL The integer digits do not fit (a text that begins with the
 *                                   point needs room for it and one digit), size is below 2, or
 *                                   the text is over 999 characters.
 */
uint32_t CONV_FormatNumString(char *out, const char *text, uint32_t size, char point,
                              uint32_t *length) CONV_NOEXCEPT;

/** @} */

/**
 * @name Integer and floating text conversions
 *
 * The text-to-number routines check the text under the number-syntax flags, accept the caller's
 * decimal-point character in place of "." and read texts of at most 999 characters. The
 * text-to-integer routines read a text without an exponent directly and drop a fraction toward
 * zero with CONV_WARN_TRUNCATION ("12.50" gives 12 with the warning, "12.000" gives 12 with
 * CONV_OK, ",5" with point ',' gives 0 with the warning). A text that needs its exponent (allowed
 * by CONV_NUM_EXPONENT) is read as a double and narrowed like CONV_DoubleToInt32 ("1.5E3" gives
 * 1500; "1E-400" gives 0 with CONV_WARN_TRUNCATION). Their target is written only on CONV_OK and
 * CONV_WARN_TRUNCATION.
 */
/** @{ */

/**
 * Converts decimal number text to a signed 32-bit integer.
 *
 * @note Kept for compatibility: on overflow only the first eleven characters of the number (white
 *       space before and after the sign left out) are compared with "-2147483648", so a longer
 *       text that begins with them (with a further digit, say) is read as -2147483648 with
 *       CONV_OK. Callers rely on it.
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     Outside -2147483648..2147483647.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToInt32(int32_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to an unsigned 32-bit integer.
 *
 * A "-" sign is an overflow whatever follows it, even "-0".
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     A "-" sign, or above 4294967295.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToUInt32(uint32_t *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to a signed 16-bit integer (-32768..32767).
 *
 * The text is read by CONV_StringToInt32 and the result range-checked.
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     Outside the range.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToInt16(int16_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to an unsigned 16-bit integer (0..65535).
 *
 * The text is read by CONV_StringToInt32 and the result range-checked, so negative values
 * overflow.
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     Outside the range.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToUInt16(uint16_t *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to a signed 8-bit integer (-128..127).
 *
 * The text is read by CONV_StringToInt32 and the result range-checked.
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     Outside the range.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToInt8(int8_t *target, const char *text, uint32_t flags,
                           char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to an unsigned 8-bit integer (0..255).
 *
 * The text is read by CONV_StringToInt32 and the result range-checked: "-1" overflows, "255.9"
 * gives 255 with CONV_WARN_TRUNCATION.
 *
 * @param[out] target  Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK               Converted.
 * @retval CONV_WARN_TRUNCATION  A fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW     Outside the range.
 * @retval CONV_ERR_NOT_A_NUMBER Not a number under the flags.
 * @retval CONV_ERR_CONVERSION   The text is longer than 999 characters.
 */
uint32_t CONV_StringToUInt8(uint8_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text, with an optional exponent, to a double.
 *
 * With CONV_NUM_D_EXPONENT a "D" or "d" also marks the exponent; blanks between the exponent
 * letter and its digits are allowed as CONV_IsNumber allows them. A value that underflows to a
 * subnormal number is returned with CONV_OK.
 *
 * @param[out] target  Written as soon as the text passed the checks: the value on CONV_OK,
 *                     0.0 on CONV_WARN_ROUND_TO_ZERO, an infinity on CONV_ERR_OVERFLOW, 0.0
 *                     when nothing could be read (CONV_ERR_NOT_A_NUMBER under
 *                     CONV_NUM_NO_CHECK). Untouched when the check or the length test fails.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK                 Converted.
 * @retval CONV_WARN_ROUND_TO_ZERO The value is too small for a double ("1e-999"); the target
 *                                 holds 0.0.
 * @retval CONV_ERR_OVERFLOW       The value is beyond the largest double ("1e999").
 * @retval CONV_ERR_NOT_A_NUMBER   Not a number under the flags.
 * @retval CONV_ERR_CONVERSION     The text is longer than 999 characters.
 */
uint32_t CONV_StringToDouble(double *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
/**
 * Converts decimal number text to a float, through CONV_StringToDouble.
 *
 * Every status of CONV_StringToDouble other than CONV_OK is returned as it is, the round-to-zero
 * warning included, and the target is then left untouched. The double is then narrowed as by
 * CONV_DoubleToFloat.
 *
 * @param[out] target  Receives the value rounded to float, on CONV_OK only.
 * @param[in]  text    The text, NUL-terminated.
 * @param[in]  flags   Number-syntax flags (CONV_NUM_...).
 * @param[in]  point   The decimal-point character.
 * @retval CONV_OK                 Converted.
 * @retval CONV_WARN_ROUND_TO_ZERO The value is too small for a double; the target is untouched.
 * @retval CONV_ERR_OVERFLOW       Beyond +-3.4028238720334565e38 (or beyond the largest double).
 * @retval CONV_ERR_NOT_A_NUMBER   Not a number under the flags.
 * @retval CONV_ERR_CONVERSION     The text is longer than 999 characters.
 */
uint32_t CONV_StringToFloat(float *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/**
 * Writes a signed 32-bit integer as decimal text ("-2147483648" needs 12 bytes).
 *
 * @param[out] out    The buffer, size bytes; receives the text and its NUL, or nothing.
 * @param[in]  value  The integer.
 * @param[in]  size   Bytes of out, terminator included.
 * @retval CONV_OK                   Written.
 * @retval CONV_ERR_TARGET_TOO_SMALL The text and its NUL do not fit; nothing is written.
 */
uint32_t CONV_Int32ToString(char *out, int32_t value, uint32_t size) CONV_NOEXCEPT;
/**
 * Writes an unsigned 32-bit integer as decimal text ("4294967295" needs 11 bytes).
 *
 * @param[out] out    The buffer, size bytes; receives the text and its NUL, or nothing.
 * @param[in]  value  The integer.
 * @param[in]  size   Bytes of out, terminator included.
 * @retval CONV_OK                   Written.
 * @retval CONV_ERR_TARGET_TOO_SMALL The text and its NUL do not fit; nothing is written.
 */
uint32_t CONV_UInt32ToString(char *out, uint32_t value, uint32_t size) CONV_NOEXCEPT;

/** Style of CONV_DoubleToString: scientific, as printf writes `%-.6E` for precision 6. */
#define CONV_DOUBLE_SCIENTIFIC ((uint32_t)1)
/** Style of CONV_DoubleToString: fixed, as printf writes `%-.6f` for precision 6. */
#define CONV_DOUBLE_FIXED      ((uint32_t)2)
/**
 * Style of CONV_DoubleToString: general, as printf writes `%-.6G` for precision 6, falling back
 * to the scientific style when the plain number does not fit.
 */
#define CONV_DOUBLE_GENERAL    ((uint32_t)3)

/**
 * Writes a double as text in one of three styles with the caller's decimal-point character.
 *
 * The number is printed as printf prints it with the style's conversion and the precision
 * (digits after the point for the scientific and fixed styles, significant digits for the
 * general style), then the "." is replaced by point.
 * - Fixed texts, and general texts without an exponent, are fitted by CONV_FormatNumString:
 *   fraction characters are cut with CONV_WARN_TRUNCATION. A general text whose integer digits
 *   do not fit is written in the scientific style instead.
 * - Scientific texts lose the "+" and the leading zeros of their exponent; an exponent of zero
 *   leaves nothing after the "E" (1.5 with precision 2 gives "1.50E", kept for compatibility;
 *   -0.00012 with precision 1 gives "-1.2E-4"). A text too long is cut by dropping the last
 *   mantissa characters before the "E" part, with CONV_WARN_TRUNCATION, as long as the sign,
 *   one digit, "E" and the exponent fit.
 *
 * A NaN gives CONV_ERR_CONVERSION in the scientific and general styles; the fixed style writes
 * it as printf does ("nan" or "-nan") with CONV_OK.
 *
 * @param[out] out        The buffer, size bytes; on CONV_OK and on the warning it holds the
 *                        NUL-terminated text. After an error nothing is written, except that a
 *                        fixed or general text may leave a "-" without a terminator.
 * @param[in]  value      The double.
 * @param[in]  size       Bytes of out, terminator included; at least 2.
 * @param[in]  style      CONV_DOUBLE_SCIENTIFIC, CONV_DOUBLE_FIXED or CONV_DOUBLE_GENERAL.
 * @param[in]  precision  The printf precision, 0..100.
 * @param[in]  point      The decimal-point character.
 * @param[out] length     Receives the full, uncut length of the text (for a general text that
 *                        fell back to the scientific style, the length of the plain text); 0
 *                        for an unknown style. Untouched when size, precision or an infinite
 *                        value is refused.
 * @retval CONV_OK                   The whole text was written.
 * @retval CONV_WARN_TRUNCATION      Digits were cut to fit.
 * @retval CONV_ERR_TARGET_TOO_SMALL Not even the shortest form fits.
 * @retval CONV_ERR_OVERFLOW         The value is infinite.
 * @retval CONV_ERR_CONVERSION       size below 2, precision above 100, an unknown style, or a
 *                                   NaN in the scientific or general style.
 */
uint32_t CONV_DoubleToString(char *out, double value, uint32_t size, uint32_t style,
                             uint32_t precision, char point, uint32_t *length) CONV_NOEXCEPT;

/** @} */

/**
 * @name Trimming and UTF-8
 *
 * The UTF-8 encoders write wide characters (32-bit code points, or 16-bit units each taken as a
 * code point of its own) into a caller's buffer and never write a terminating NUL: the caller
 * adds one after the returned byte count. Code points are not checked for being Unicode scalar
 * values. The trimming routines strip blanks; they cannot fail and do not test their pointers.
 */
/** @{ */

/** Trim flag of CONV_Trim and CONV_TrimUTF8: strip leading blanks (the space always). */
#define CONV_TRIM_LEADING     ((uint32_t)0x01)
/** Trim flag of CONV_Trim and CONV_TrimUTF8: strip trailing blanks (the space always). */
#define CONV_TRIM_TRAILING    ((uint32_t)0x02)
/** Trim flag of CONV_Trim and CONV_TrimUTF8: a horizontal tab also counts as a blank. */
#define CONV_TRIM_TAB_IS_BLANK ((uint32_t)0x10)
/** Trim flag of CONV_Trim and CONV_TrimUTF8: a line feed also counts as a blank. */
#define CONV_TRIM_LF_IS_BLANK  ((uint32_t)0x20)

/**
 * Encodes one code point as UTF-8, in 1 to 6 bytes, without a terminating NUL.
 *
 * Values up to 0x7F take one byte, up to 0x7FF two, up to 0xFFFF three, up to 0x1FFFFF four,
 * up to 0x3FFFFFF five and up to 0x7FFFFFFF six; surrogates and values above 0x10FFFF follow
 * the same rule. A negative value is written as one byte, its low 8 bits (-1 gives 0xFF).
 *
 * @note Kept for compatibility: the second byte of the 6-byte form carries the mark 0xF8
 *       instead of the continuation mark 0x80 (0x4000000 gives FC FC 80 80 80 80), as the
 *       readers of this encoding expect.
 *
 * @param[in]  codePoint  The code point.
 * @param[out] out        The buffer, capacity bytes; receives the sequence, or nothing.
 * @param[in]  capacity   Bytes free at out.
 * @param[out] count      Always receives the number of bytes the character needs (also on
 *                        failure, so that a caller can enlarge its buffer).
 * @retval CONV_OK                   Written.
 * @retval CONV_ERR_TARGET_TOO_SMALL capacity is below the bytes needed; nothing is written.
 */
uint32_t CONV_WCharToUTF8(int32_t codePoint, char *out, uint32_t capacity,
                          uint32_t *count) CONV_NOEXCEPT;
/**
 * Gives the number of UTF-8 bytes that CONV_WCharToUTF8 writes for a code point.
 *
 * @param[in] codePoint  The code point; every negative value takes one byte.
 * @return 1 to 6.
 */
uint32_t CONV_WCharToUTF8_BytesNeeded(int32_t codePoint) CONV_NOEXCEPT;
/**
 * Gives the UTF-8 bytes that the characters of a 32-bit wide string need.
 *
 * @param[in] text      The string; read up to its first 0 or its first maxChars characters.
 * @param[in] maxChars  Most characters to count; 0 counts none, a negative value sets no limit.
 * @return The total of CONV_WCharToUTF8_BytesNeeded over those characters (terminator not
 *         counted); 0 for an empty string or a maxChars of 0.
 */
uint32_t CONV_WCharStrToUTF8_BytesNeeded(const int32_t *text, int32_t maxChars) CONV_NOEXCEPT;
/**
 * Encodes the characters of a 32-bit wide string as UTF-8, without a terminator.
 *
 * Each character is encoded by CONV_WCharToUTF8 into the room left. Encoding stops at the first
 * 0 character, after maxChars characters, or at the first character that does not fit.
 *
 * @param[in]  text      The string of code points.
 * @param[in]  maxChars  Most characters to encode; 0 encodes none, a negative value sets no
 *                       limit.
 * @param[out] out       The buffer, capacity bytes. On failure it holds the complete sequences
 *                       of the characters before the one that did not fit.
 * @param[in]  capacity  Bytes of out.
 * @param[out] written   Receives the bytes of the complete characters written (0 at first).
 * @retval CONV_OK                   Every character was written.
 * @retval CONV_ERR_TARGET_TOO_SMALL A character did not fit.
 */
uint32_t CONV_WCharStrToUTF8(const int32_t *text, int32_t maxChars, char *out, uint32_t capacity,
                             uint32_t *written) CONV_NOEXCEPT;
/**
 * Encodes the units of a 16-bit wide string as UTF-8, without a terminator.
 *
 * Each unit is zero-extended and encoded as a code point of its own: surrogate pairs are not
 * combined, so 0xD83D 0xDE00 gives the two 3-byte sequences ED A0 BD ED B8 80.
 *
 * @param[in]  text      The string of 16-bit units.
 * @param[in]  maxUnits  Most units to encode; 0 encodes none, a negative value sets no limit.
 * @param[out] out       The buffer, capacity bytes. On failure it holds the complete sequences
 *                       of the units before the one that did not fit.
 * @param[in]  capacity  Bytes of out.
 * @param[out] written   Receives the bytes of the complete units written (0 at first).
 * @retval CONV_OK                   Every unit was written (up to the first 0 unit or maxUnits).
 * @retval CONV_ERR_TARGET_TOO_SMALL A unit did not fit.
 */
uint32_t CONV_WChar16StrToUTF8(const uint16_t *text, int32_t maxUnits, char *out,
                               uint32_t capacity, uint32_t *written) CONV_NOEXCEPT;
/**
 * Gives the length of a counted buffer without its trailing spaces.
 *
 * Only the space (32) is trimmed; a tab is not. The buffer need not be NUL-terminated.
 *
 * @param[in] buffer  The bytes; only the first length are read.
 * @param[in] length  Bytes of buffer.
 * @return The index after the last byte that is not a space (0 when all are spaces); a length
 *         of 0 or less comes back unchanged.
 */
int32_t CONV_GetTrimmedLength(const char *buffer, int32_t length) CONV_NOEXCEPT;
/**
 * Gives the length of a counted UTF-8 buffer without its trailing spaces.
 *
 * The same routine as CONV_GetTrimmedLength under the name that UTF-8 callers use.
 *
 * @param[in] buffer  The bytes; only the first length are read.
 * @param[in] length  Bytes of buffer.
 * @return The index after the last byte that is not a space; a length of 0 or less comes back
 *         unchanged.
 */
int32_t CONV_GetTrimmedLengthUTF8Blanks(const char *buffer, int32_t length) CONV_NOEXCEPT;
/**
 * Gives the bytes that the first charCount characters of a UTF-8 buffer occupy.
 *
 * Characters are counted from their lead bytes: 0xE0-0xEF take 3 bytes, 0xC0-0xDF take 2, every
 * other byte takes 1. Counting stops as soon as byteLength bytes or charCount characters are
 * reached, so the result can exceed byteLength by up to two when the last character is wider
 * than the bytes left. Only bytes before byteLength are read.
 *
 * @note Kept for compatibility: a lead byte of 0xF0 or above counts as one byte, so the
 *       continuation bytes of a 4-byte sequence are then counted as characters of their own
 *       (F0 9F 98 80 with charCount 1 gives 1). Callers rely on it.
 *
 * @param[in] buffer      The UTF-8 bytes.
 * @param[in] byteLength  Bytes of buffer.
 * @param[in] charCount   Characters wanted.
 * @return The bytes counted; 0 when byteLength or charCount is below 1.
 */
int32_t CONV_GetTrimmedLengthUTF8Chars(const char *buffer, int32_t byteLength,
                                       int32_t charCount) CONV_NOEXCEPT;
/**
 * Trims the trailing spaces of a counted buffer and stores a NUL after what is left.
 *
 * @param[in,out] buffer  The bytes, with room for one more byte at index length: the NUL is
 *                        stored at the index of the trimmed length.
 * @param[in]     length  Bytes of buffer. A negative length is returned as it is and nothing
 *                        is stored (its index would lie before the buffer).
 * @return The trimmed length, as CONV_GetTrimmedLength gives it.
 */
int32_t CONV_TrimWithStrlen(char *buffer, int32_t length) CONV_NOEXCEPT;
/**
 * Strips blanks in place from a NUL-terminated string.
 *
 * Under CONV_TRIM_LEADING the leading blanks are skipped and the rest of the string, NUL
 * included, moves down to the start. Under CONV_TRIM_TRAILING a NUL is stored after the last
 * byte that is not a blank (at index 0 when every byte is one). The space is always a blank;
 * a tab and a line feed only under CONV_TRIM_TAB_IS_BLANK and CONV_TRIM_LF_IS_BLANK; carriage
 * return never. A scan stops at the first byte that is not a blank, so with flags 0x03 the text
 * tab, space, "ab", space, line feed stays unchanged. Other flag bits are ignored.
 *
 * @param[in,out] string  The string, changed in place; it never grows.
 * @param[in]     flags   Trim flags (CONV_TRIM_...).
 */
void CONV_Trim(char *string, uint32_t flags) CONV_NOEXCEPT;
/**
 * Strips blanks in place from a NUL-terminated UTF-8 string, exactly as CONV_Trim does.
 *
 * Blanks are single bytes in UTF-8, so the bytes of other characters are never touched.
 *
 * @param[in,out] string  The string, changed in place.
 * @param[in]     flags   Trim flags (CONV_TRIM_...).
 */
void CONV_TrimUTF8(char *string, uint32_t flags) CONV_NOEXCEPT;

/** @} */

/**
 * @name Decimal values
 *
 * A decimal value is a string of binary-coded decimal digits, most significant first. Its
 * precision (number of digits) and scale (how many of them follow the decimal point) travel
 * beside it as separate arguments. Two layouts exist, CONV_DECIMAL_PACKED (the form that
 * CONV_StringToDecimal writes) and CONV_DECIMAL_UNPACKED; a third, self-describing layout
 * carries its own precision and scale (CONV_StringToQLXBCD, CONV_QLXBCDToString). Conversions
 * between decimal values and the binary number types go through the value's text.
 */
/** @{ */

/**
 * Layout of a decimal value: one digit per byte in the low nibble, precision bytes in all; the
 * sign is the high nibble of the last byte.
 */
#define CONV_DECIMAL_UNPACKED ((uint32_t)1)
/**
 * Layout of a decimal value: two digits per byte, high nibble first, precision / 2 + 1 bytes;
 * the sign is the low nibble of the last byte, and an even precision starts with a pad digit 0
 * that is not counted.
 */
#define CONV_DECIMAL_PACKED   ((uint32_t)2)
/** Sign nibble of a positive decimal value (CONV_DecimalToString takes any nibble but 0xD so). */
#define CONV_DECIMAL_PLUS  0x0C
/** Sign nibble of a negative decimal value. */
#define CONV_DECIMAL_MINUS 0x0D

/**
 * Reads number text into a packed decimal value (layout CONV_DECIMAL_PACKED).
 *
 * Blanks are skipped under the number-syntax flags; a leading "-" gives the sign 0xD (a "+" is
 * not accepted here), otherwise 0xC. The digits are stored two per byte and the sign fills the
 * low nibble after the last digit. A text with an exponent (allowed by CONV_NUM_EXPONENT) is read
 * as a double and stored by CONV_DoubleToDecimal.
 *
 * @note Kept for compatibility: when the digits fill their last byte completely, the sign goes
 *       into the next byte behind a pad 0, and that pad counts as one more fraction digit, so the
 *       precision is always odd: "12" is stored as 12.0 (0x12 0x0C, precision 3, scale 1).
 *       Since that gives the value a fraction, a text without a point and with an even number of
 *       digits fails with CONV_ERR_NOT_A_NUMBER unless the flags hold CONV_NUM_DECIMAL_POINT or
 *       CONV_NUM_NO_CHECK. Callers rely on this.
 *
 * @param[out] out        The value, at most size bytes; "123" needs 2, in general the number
 *                        of digits / 2 + 1. May be partly written on failure.
 * @param[in]  text       The number text, NUL-terminated, at most 999 characters.
 * @param[in]  size       Bytes of out.
 * @param[out] precision  Receives the digits stored, pad included. Written once the text has
 *                        passed the checks (also before a later failure).
 * @param[out] scale      Receives the fraction digits among them, pad included; written like
 *                        precision.
 * @param[in]  flags      Number-syntax flags (CONV_NUM_...).
 * @param[in]  point      The decimal-point character.
 * @retval CONV_OK                   Stored ("-1.5" gives 0x15 0x0D, precision 3, scale 2).
 * @retval CONV_WARN_TRUNCATION      size was too small for the fraction: trailing fraction
 *                                   digits were dropped (not rounded) and the sign closes the
 *                                   last byte.
 * @retval CONV_ERR_NOT_A_NUMBER     Not a number under the flags, a fraction that the flags do
 *                                   not allow (see the note), a "+" sign, or (under
 *                                   CONV_NUM_NO_CHECK) a character that is no digit.
 * @retval CONV_ERR_TARGET_TOO_SMALL The integer digits and the sign do not fit in size bytes,
 *                                   size is 0, or the text is over 999 characters.
 * @retval CONV_WARN_ROUND_TO_ZERO   A text with an exponent is too small for a double; nothing
 *                                   is written.
 * @retval CONV_ERR_OVERFLOW         A text with an exponent is beyond the largest double;
 *                                   nothing is written.
 */
uint32_t CONV_StringToDecimal(uint8_t *out, const char *text, uint32_t size, uint32_t *precision,
                              uint32_t *scale, uint32_t flags, char point) CONV_NOEXCEPT;
/**
 * Writes a packed or unpacked decimal value as text.
 *
 * The text is "-" for the sign nibble 0xD, then the digits with the point before the last scale
 * of them (no point when scale is 0). Leading zeros are dropped while another digit follows
 * them (a zero before the point stays), except that a value whose digits are all fraction
 * digits also loses the zero before its point: packed 0x05 0x0D with precision 2 and scale 2
 * gives "-.50".
 *
 * @param[out] out        The buffer, size bytes; receives the NUL-terminated text, cut on the
 *                        warning. Nothing is written on an error.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  size       Bytes of out, terminator included.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them; at most precision.
 * @param[in]  point      The decimal-point character written.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @param[out] length     Receives the full, uncut length of the text, sign included (also on
 *                        CONV_ERR_TARGET_TOO_SMALL); untouched on CONV_ERR_CONVERSION.
 * @retval CONV_OK                   The whole text was written ("12.3" for packed 0x12 0x3C,
 *                                   precision 3, scale 1).
 * @retval CONV_WARN_TRUNCATION      Fraction digits were cut, not rounded; the point may end the
 *                                   text (size 3 gives "12" for the same value).
 * @retval CONV_ERR_TARGET_TOO_SMALL The sign and the integer digits do not fit (or a text that
 *                                   begins with the point has room for nothing after it).
 * @retval CONV_ERR_CONVERSION       An unknown layout, a digit nibble above 9, or a scale above
 *                                   the precision.
 */
uint32_t CONV_DecimalToString(char *out, const uint8_t *value, uint32_t size, uint32_t precision,
                              uint32_t scale, char point, uint32_t layout,
                              uint32_t *length) CONV_NOEXCEPT;
/**
 * Converts a decimal value to a double, through its text and CONV_StringToDouble.
 *
 * @param[out] target     Receives the value, as CONV_StringToDouble writes it; untouched on
 *                        CONV_ERR_CONVERSION and when the value does not fit a 999-character
 *                        text.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK                 Converted.
 * @retval CONV_WARN_ROUND_TO_ZERO The value is too small for a double; the target holds 0.0.
 * @retval CONV_ERR_OVERFLOW       The value is beyond the largest double, or its integer digits
 *                                 do not fit a 999-character text.
 * @retval CONV_ERR_NOT_A_NUMBER   An unpacked value of precision 0 (no digit to read).
 * @retval CONV_ERR_CONVERSION     A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToDouble(double *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to a float, through its text and CONV_StringToFloat.
 *
 * @param[out] target     Receives the value on CONV_OK only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK                 Converted.
 * @retval CONV_WARN_ROUND_TO_ZERO The value is too small for a double; the target is untouched.
 * @retval CONV_ERR_OVERFLOW       The value is beyond the float range, or its integer digits do
 *                                 not fit a 999-character text.
 * @retval CONV_ERR_NOT_A_NUMBER   An unpacked value of precision 0 (no digit to read).
 * @retval CONV_ERR_CONVERSION     A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToFloat(float *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to a signed 32-bit integer, through its text and CONV_StringToInt32.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToInt32(int32_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to an unsigned 32-bit integer, through its text and
 * CONV_StringToUInt32.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 * A negative value overflows.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToUInt32(uint32_t *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to a signed 16-bit integer, through its text and CONV_StringToInt16.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToInt16(int16_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to an unsigned 16-bit integer, through its text and
 * CONV_StringToUInt16.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToUInt16(uint16_t *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to a signed 8-bit integer, through its text and CONV_StringToInt8.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToInt8(int8_t *target, const uint8_t *value, uint32_t precision,
                            uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Converts a decimal value to an unsigned 8-bit integer, through its text and CONV_StringToUInt8.
 *
 * Trailing zeros of the fraction are ignored; what is left of a fraction is dropped toward zero.
 *
 * @param[out] target     Receives the value on CONV_OK and CONV_WARN_TRUNCATION only.
 * @param[in]  value      The decimal value in the given layout.
 * @param[in]  precision  Digits of the value.
 * @param[in]  scale      Fraction digits among them.
 * @param[in]  layout     CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED.
 * @retval CONV_OK              Converted.
 * @retval CONV_WARN_TRUNCATION A non-zero fraction was dropped toward zero.
 * @retval CONV_ERR_OVERFLOW    Outside the target's range.
 * @retval CONV_ERR_CONVERSION  A bad value (as for CONV_DecimalToString).
 */
uint32_t CONV_DecimalToUInt8(uint8_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/**
 * Stores a signed 32-bit integer as a packed decimal value, through its text.
 *
 * The text is read by CONV_StringToDecimal with CONV_NUM_NO_CHECK, so an even number of digits
 * gets the counted pad digit ("12" gives precision 3, scale 1).
 *
 * @param[out] out        The value, at most size bytes (6 always suffice).
 * @param[in]  value      The integer.
 * @param[in]  size       Bytes of out.
 * @param[out] precision  Receives the digits stored, pad included.
 * @param[out] scale      Receives the fraction digits stored (0, or 1 for the pad).
 * @retval CONV_OK                   Stored.
 * @retval CONV_ERR_TARGET_TOO_SMALL The digits do not fit in size bytes (or size is 0).
 */
uint32_t CONV_Int32ToDecimal(uint8_t *out, int32_t value, uint32_t size, uint32_t *precision,
                             uint32_t *scale) CONV_NOEXCEPT;
/**
 * Stores an unsigned 32-bit integer as a packed decimal value, through its text.
 *
 * The text is read by CONV_StringToDecimal with CONV_NUM_NO_CHECK, so an even number of digits
 * gets the counted pad digit.
 *
 * @param[out] out        The value, at most size bytes (6 always suffice).
 * @param[in]  value      The integer.
 * @param[in]  size       Bytes of out.
 * @param[out] precision  Receives the digits stored, pad included.
 * @param[out] scale      Receives the fraction digits stored (0, or 1 for the pad).
 * @retval CONV_OK                   Stored.
 * @retval CONV_ERR_TARGET_TOO_SMALL The digits do not fit in size bytes (or size is 0).
 */
uint32_t CONV_UInt32ToDecimal(uint8_t *out, uint32_t value, uint32_t size, uint32_t *precision,
                              uint32_t *scale) CONV_NOEXCEPT;
/**
 * Stores a double as a packed decimal value, through its text.
 *
 * The value is printed with 50 fraction digits and its trailing zeros are dropped (the point
 * stays, so 5.0 is read as "5."), then read by CONV_StringToDecimal with CONV_NUM_NO_CHECK.
 * Fraction digits that do not fit in size bytes are cut with CONV_WARN_TRUNCATION.
 *
 * @param[out] out        The value, at most size bytes. May be partly written on failure.
 * @param[in]  value      The double.
 * @param[in]  size       Bytes of out.
 * @param[out] precision  Receives the digits stored, pad included.
 * @param[out] scale      Receives the fraction digits stored, pad included.
 * @retval CONV_OK                   Stored.
 * @retval CONV_WARN_TRUNCATION      Fraction digits were cut to fit.
 * @retval CONV_ERR_TARGET_TOO_SMALL The integer digits do not fit in size bytes (or size is 0).
 * @retval CONV_ERR_OVERFLOW         The value is infinite.
 * @retval CONV_ERR_CONVERSION       The value is a NaN.
 */
uint32_t CONV_DoubleToDecimal(uint8_t *out, double value, uint32_t size, uint32_t *precision,
                              uint32_t *scale) CONV_NOEXCEPT;
/**
 * Reads number text into the self-describing packed decimal layout.
 *
 * The layout is: byte 0 the number of significant digits (unsigned); byte 1 the scale (a signed
 * byte; negative when trailing zeros of the integer part were dropped: the value is then the
 * digits times ten to the power of minus the scale); then the digits packed two per byte, high
 * nibble first, with the sign (0xC positive, 0xD negative) in the low nibble of the last byte and
 * a pad 0 in front when the digit count is even. Leading and trailing zeros are not stored:
 * "123" gives 3, 0, 0x12, 0x3C; "-1.5" gives 2, 1, 0x01, 0x5D; "0.05" gives 1, 2, 0x5C; "100"
 * gives 1, -2, 0x1C. A value without a non-zero digit ("0.00", "-0", the empty text) is 1, 0,
 * 0x0C.
 *
 * The text is digits with at most one point, where "." and "," both count as the point, and an
 * optional "-" or "+" in front; blanks are not allowed.
 *
 * @param[out] out   The value; needs at most 3 + (d + 1) / 2 bytes, d being the number of digits
 *                   in the text. Written on CONV_OK only.
 * @param[in]  text  The number text, NUL-terminated, at most 999 characters.
 * @retval CONV_OK               Stored.
 * @retval CONV_ERR_NOT_A_NUMBER A character that is not a digit, a point or a leading sign, a
 *                               second point, a sign not in front, more than 255 significant
 *                               digits, a scale outside -128..127, or a text over 999
 *                               characters.
 */
uint32_t CONV_StringToQLXBCD(uint8_t *out, const char *text) CONV_NOEXCEPT;
/**
 * Writes a value of the self-describing packed decimal layout as text.
 *
 * The text is "-" for a negative value, the digits with "." as the point, "0." and the zeros the
 * scale implies in front of a value below one, and the zeros of a negative scale behind: 3, 1,
 * 0x12, 0x3C gives "12.3"; 1, 2, 0x5C gives "0.05"; 1, -2, 0x1C gives "100"; 1, 0, 0x0C gives
 * "0". The layout is that of CONV_StringToQLXBCD.
 *
 * @param[out] out    The buffer; no size is passed. p + |s| + 5 bytes always suffice, p being
 *                    byte 0 of value and s byte 1 as a signed number. Receives the
 *                    NUL-terminated text on CONV_OK; nothing is written on failure.
 * @param[in]  value  The value in the self-describing layout.
 * @retval CONV_OK               Written.
 * @retval CONV_ERR_NOT_A_NUMBER The sign nibble is neither 0xC nor 0xD.
 */
uint32_t CONV_QLXBCDToString(char *out, const uint8_t *value) CONV_NOEXCEPT;

/** @} */

/**
 * @name Binary text
 *
 * Conversions between byte strings and hexadecimal text of two upper-case digits a byte, high
 * nibble first, with no prefix, blank or separator. Source and target may overlap: the source
 * is then read from a temporary copy taken through the checked allocator.
 */
/** @{ */

/**
 * Reads hexadecimal text into bytes.
 *
 * Only "0"-"9" and "A"-"F" are digits (lower-case letters fail). A text longer than twice the
 * capacity is cut to it with a warning. A lone final digit is dropped without a warning and
 * without being checked ("0A1" gives the one byte 0x0A with CONV_OK); callers expect it. A text
 * that shares bytes with out is read from a temporary copy, so converting in place gives the
 * same bytes as separate buffers.
 *
 * @param[out]    out    The bytes; no terminator is written.
 * @param[in]     text   The hexadecimal text, NUL-terminated.
 * @param[in,out] count  On entry the capacity of out in bytes; on return the bytes written.
 *                       Untouched on CONV_ERR_TARGET_TOO_SMALL and CONV_ERR_MEMORY.
 * @retval CONV_OK                   Every pair was converted (an empty text gives count 0).
 * @retval CONV_WARN_TRUNCATION      The text was cut to the capacity; out is full.
 * @retval CONV_ERR_BYTE_STREAM      A pair is not two digits; the bytes before it stay written
 *                                   and counted.
 * @retval CONV_ERR_TARGET_TOO_SMALL The capacity is 0.
 * @retval CONV_ERR_MEMORY           The temporary copy could not be allocated.
 */
uint32_t CONV_StringToBinary(uint8_t *out, const char *text, uint32_t *count) CONV_NOEXCEPT;
/**
 * Writes bytes as upper-case hexadecimal text with a NUL.
 *
 * The whole text needs 2 * length + 1 bytes. A smaller target receives the (size - 1) / 2 whole
 * bytes that fit and a NUL, with a warning (with an even size one byte stays unused; size 1
 * gives the empty text). Bytes that share memory with out are read from a temporary copy.
 *
 * @param[out] out     The buffer, size bytes; NUL-terminated unless an error is returned, in
 *                     which case nothing is written.
 * @param[in]  bytes   The bytes to write; may be null when length is 0.
 * @param[in]  size    Bytes of out, terminator included.
 * @param[in]  length  Number of bytes to write.
 * @retval CONV_OK                   Every byte was written ("DEAD" for 0xDE 0xAD in 5 bytes).
 * @retval CONV_WARN_TRUNCATION      Only the whole bytes that fit were written ("DE" in 4).
 * @retval CONV_ERR_TARGET_TOO_SMALL size is 0.
 * @retval CONV_ERR_MEMORY           The temporary copy could not be allocated.
 */
uint32_t CONV_BinaryToString(char *out, const uint8_t *bytes, uint32_t size,
                             uint32_t length) CONV_NOEXCEPT;

/** @} */

/**
 * @name Date-time values and calendar
 *
 * The date-time record, the optional names record with its default tables, the fraction
 * ceilings, the validity check and the day of the week. Dates are Gregorian for every year,
 * zero and negative years included. Era names and era years follow a calendar of four eras:
 * era 0 from 8 September 1868, era 1 from 31 July 1912, era 2 from 26 December 1926 and era 3
 * from 8 January 1989; the era year is the Gregorian year minus 1867, 1911, 1925 or 1988.
 */
/** @{ */

/**
 * Marker of a date-time field that holds no value: -32768 in every field, the 32-bit fraction
 * included (kept: the whole fraction is compared with -32768, not with INT32_MIN).
 */
#define CONV_DT_UNSET (-32768)

/**
 * A date-time value; any field may hold CONV_DT_UNSET.
 *
 * The caller owns the record. The fraction counts nanoseconds when fractionBase is unset, and
 * units of ten to the power of minus fractionBase seconds when fractionBase is 1..9 (base 3,
 * value 5: 5 milliseconds, written "005"). dayOfWeek is never derived from the date implicitly:
 * CONV_GetDayOfWeek or parsing a day name fills it. era is working state of formatting and
 * parsing; callers need not fill it.
 */
typedef struct CONV_DateTime {
    int16_t day;          /**< Day of the month, 1..31 and within the month. */
    int16_t month;        /**< Month, 1..12. */
    int16_t year;         /**< Gregorian year; any value but the marker, never range-checked. */
    int16_t dayOfWeek;    /**< Day of the week, 0 (Sunday) to 6 (Saturday). */
    int16_t second;       /**< Seconds, 0..59. */
    int16_t minute;       /**< Minutes, 0..59. */
    int16_t hour;         /**< Hours on the 24-hour clock, 0..24 (24 only as 24:00:00). */
    int32_t fraction;     /**< Fraction of a second, in the unit that fractionBase sets. */
    int16_t fractionBase; /**< Number of decimal digits of fraction, 1..9, or unset (ns). */
    int16_t era;          /**< Era 0..3 of the era calendar, or unset. */
} CONV_DateTime;

/** First slot of a names record holding the full day names, Sunday first (slots 0..6). */
#define CONV_NAMES_DAY          0
/** First slot of a names record holding the short day names, Sunday first (slots 7..13). */
#define CONV_NAMES_SHORT_DAY    7
/** First slot of a names record holding the full month names, January first (slots 14..25). */
#define CONV_NAMES_MONTH        14
/** First slot of a names record holding the short month names, January first (slots 26..37). */
#define CONV_NAMES_SHORT_MONTH  26
/** First slot of a names record holding the meridiem designators: 38 before noon, 39 after. */
#define CONV_NAMES_MERIDIEM     38
/**
 * First slot of a names record holding the era names, era 0 first (slots 40..43). There are no
 * default era names; only slot 40 is tested, so a caller that fills it fills all four.
 */
#define CONV_NAMES_ERA          40
/**
 * Slot of a names record holding the SYEAR text: the word written and read instead of the
 * numeral 1 for the first year of an era. There is no default SYEAR text.
 */
#define CONV_NAMES_SYEAR        44
/** Number of slots of a names record. */
#define CONV_NAMES_COUNT        45

/**
 * The names record: 45 pointers to NUL-terminated texts, caller-owned and only read.
 *
 * Any slot may be null. Functions take the record as `const char *const *` (null for none, or a
 * pointer to its first slot). Formatting takes the default text for each null day, month or
 * meridiem slot on its own; parsing tests only the first slot of a group (0, 7, 14, 26, 38) and
 * uses either the caller's whole group or the whole default group.
 */
typedef const char *CONV_DateTimeNames[CONV_NAMES_COUNT];

/** Default full day names: "Sunday", "Monday", ... "Saturday". */
extern const char *const gCONV_DefaultNameOfDay[7];
/** Default short day names: "Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat". */
extern const char *const gCONV_DefaultShortNameOfDay[7];
/** Default full month names: "January", "February", ... "December". */
extern const char *const gCONV_DefaultNameOfMonth[12];
/**
 * Default short month names, in capitals: "JAN", "FEB", ... "DEC".
 *
 * Kept in capitals while the short day names are capitalised words: parsing compares names
 * case-sensitively, and callers match on these texts ("Jan" does not read as January).
 */
extern const char *const gCONV_DefaultShortNameOfMonth[12];
/** Default meridiem designators: "AM" (before noon) and "PM" (after noon). */
extern const char *const gCONV_DefaultMeridiem[2];
/**
 * Largest fraction for each fractionBase: index b (1..9) holds ten to the power b, minus 1
 * (9, 99, ... 999999999); index 0 holds -1 and is never used, since a base of 0 is refused first.
 */
extern const int32_t gCONV_SecFracBaseCeiling[10];

/**
 * Checks the set fields of a date-time record, in a fixed order, and returns the first failure.
 *
 * Unset fields are skipped. The order: day 1..31; month 1..12; when day and month are both set,
 * the day within the month (29 February fails only when the year is set and is not a leap year);
 * hour 0..24; minute 0..59; second 0..59; hour 24 with a set, non-zero minute or second; then the
 * fraction, unless it is unset: 0..999999999 when fractionBase is unset, else fractionBase 1..9
 * and the fraction 0..gCONV_SecFracBaseCeiling[fractionBase]. The year is never range-checked,
 * and dayOfWeek and era are never checked (nor whether dayOfWeek agrees with the date).
 *
 * @note Kept: 24:00:00 with a non-zero fraction passes, and an unset fraction passes whatever
 *       fractionBase holds.
 *
 * @param[in] record  The record; only read.
 * @retval CONV_OK                All set fields are valid.
 * @retval CONV_ERR_DAY           A day outside 1..31 or not in its month.
 * @retval CONV_ERR_MONTH         A month outside 1..12.
 * @retval CONV_ERR_HOUR24        An hour outside 0..24, or 24 with non-zero minutes or seconds.
 * @retval CONV_ERR_MINUTE        A minute outside 0..59.
 * @retval CONV_ERR_SECOND        A second outside 0..59.
 * @retval CONV_ERR_FRACTION      A fraction outside the range of its base.
 * @retval CONV_ERR_FRACTION_BASE A set fractionBase outside 1..9 with a set fraction.
 */
uint32_t CONV_CheckDateTime(const CONV_DateTime *record) CONV_NOEXCEPT;
/**
 * Computes the day of the week of the record's date into its dayOfWeek field.
 *
 * Only day, month and year are read and only dayOfWeek is written, on success only. The
 * result is 0 for Sunday (1 January 2024 gives 1, Monday). For years before 1 the truncating
 * remainder is kept, so the result can be negative there.
 *
 * @param[in,out] record  The record; day, month and year must be set.
 * @retval CONV_OK        dayOfWeek was written.
 * @retval CONV_ERR_DAY   The day is unset, outside 1..31 or not in its month; record unchanged.
 * @retval CONV_ERR_MONTH The month is unset or outside 1..12; record unchanged.
 * @retval CONV_ERR_YEAR  The year is unset; record unchanged.
 */
uint32_t CONV_GetDayOfWeek(CONV_DateTime *record) CONV_NOEXCEPT;

/** @} */

/** @name Date-time formatting */
/** @{ */

/**
 * Writes a date-time record as text under a format of the library's date-time format language.
 *
 * <b>The format language.</b> A format is a NUL-terminated text of literal characters and
 * fields. A field is, in this order: `%`; an optional flag, `-` (left-justify: the value, then
 * blanks) or `0` (right-justify with "0" characters in front; without a flag the value is
 * right-justified with blanks in front); an optional width of one to three digits, 1..999, the
 * number of characters the field occupies; an optional precision, `.` and one to three digits
 * of value 1..9, used by F only; and one of the sixteen letters below, case-sensitive. A `%`
 * that does not begin a valid field is an ordinary literal and the characters after it are read
 * on as usual: <tt>\%X</tt> writes <tt>\%X</tt>, and `%00D`, `%-0D`, `%.0F`, `%.10F`, `%.F`
 * and `%1000D` are not fields. `%%` writes one `%`. A flag without a width has no effect
 * (`%0D` writes the day unpadded). The letter's position in #gCONV_Letter is its field
 * index.
 *
 * | Letter | Index | Writes | Status when the value cannot be written |
 * |---|---|---|---|
 * | D | 0 | day of the month | CONV_ERR_DAY unless 1..31 |
 * | F | 1 | fraction of a second (see below) | see below |
 * | H | 2 | hour on the 24-hour clock | CONV_ERR_HOUR24 unless 0..24 |
 * | I | 3 | minute | CONV_ERR_MINUTE unless 0..59 |
 * | M | 4 | month number | CONV_ERR_MONTH unless 1..12 |
 * | P | 5 | hour on the 12-hour clock (see below) | CONV_ERR_HOUR24 unless 0..24 |
 * | Q | 6 | meridiem designator (see below) | CONV_ERR_HOUR24 unless 0..24 |
 * | S | 7 | second | CONV_ERR_SECOND unless 0..59 |
 * | T | 8 | full day name of dayOfWeek | CONV_ERR_DAY_OF_WEEK unless 0..6 |
 * | U | 9 | short day name of dayOfWeek | CONV_ERR_DAY_OF_WEEK unless 0..6 |
 * | V | 10 | full month name | CONV_ERR_MONTH unless 1..12 |
 * | W | 11 | short month name | CONV_ERR_MONTH unless 1..12 |
 * | Y | 12 | year within the century (see below) | CONV_ERR_YEAR when unset |
 * | Z | 13 | full year | CONV_ERR_YEAR when unset |
 * | E | 14 | era name, names slot 40 + era | see below |
 * | J | 15 | year within the era, or the SYEAR text | see below |
 *
 * P writes "12" for the hours 0, 12 and 24 and the hour modulo 12 otherwise. Q writes names
 * slot 38 (default "AM") for the hours 0..11 and slot 39 (default "PM") for 12..24. Y writes
 * year - (year / 100) * 100 with truncating division: "94" for 1994, "5" for 2005, "-5" for -5.
 * T, U, V and W write names slots 0, 7, 14 and 26 plus the day of the week or the month - 1.
 * Numbers are written in plain decimal, with a "-" when negative and no padding but the
 * field's. A text longer than the width is silently cut to its left part (`%2Z` writes "19" for
 * 1994, `%3V` writes "Jan"). The `0` flag pads with "0" whatever the text, kept for
 * compatibility: `%05V` of May writes "00May" and `%04Z` of year -5 writes "00-5".
 *
 * <b>F</b>: with fractionBase unset the fraction is nanoseconds, written as a plain number
 * (5000000 as "5000000"; CONV_ERR_FRACTION outside 0..999999999) and the precision is not
 * applied. With fractionBase 1..9 it is written with exactly fractionBase digits, zero-filled on
 * the left (base 3, value 5: "005"), then "0" characters are appended up to the precision
 * (`%.6F` gives "005000"); CONV_ERR_FRACTION outside 0..gCONV_SecFracBaseCeiling[fractionBase].
 * Any other fractionBase gives CONV_ERR_FRACTION_BASE.
 *
 * <b>E</b>: day, month and year must be set and in range (CONV_ERR_DAY, CONV_ERR_MONTH,
 * CONV_ERR_YEAR); CONV_ERR_NO_ERA_NAMES without names or with slot 40 null (or the slot of the
 * era found null); CONV_ERR_ERA_RANGE before 8 September 1868. The era found is stored in
 * record->era. <b>J</b>: CONV_ERR_YEAR when the year is unset. The year is taken relative to the
 * era that an earlier E field of the same call stored; without one the Gregorian year itself is
 * written. An era year of 1 is written as the SYEAR text of slot 44 (CONV_ERR_NO_SYEAR when
 * there is none), so <tt>\%J</tt> alone of Gregorian year 1 writes it too.
 *
 * Text is written until the format ends or the room of targetSize - 1 characters runs out. A
 * field that does not fit is written cut where the room ends (left-justified: the text, then
 * blanks; otherwise the padding first, then the text cut from its right). A value that its
 * letter cannot write stops formatting with the letter's status, and nothing of that field is
 * written. Every stop stores the NUL after the text written so far.
 *
 * @note Kept for compatibility: a fraction field cut by the room stops with CONV_WARN_TRUNCATION
 *       instead of CONV_ERR_TARGET_TOO_SMALL; the digits shown are the leading digits of the
 *       value, and callers accept the shortened text.
 *
 * @param[out]    target       The buffer, targetSize bytes and never less than one byte:
 *                             NUL-terminated on return, also on failure; with targetSize 0 or
 *                             below only target[0] is written (the NUL).
 * @param[in,out] record       The values; only its era field is written: set to CONV_DT_UNSET
 *                             at the start (also when targetSize is below 1), then to the era
 *                             of an E field. A record that shares bytes with the target is read
 *                             from a copy, and the copy receives those writes.
 * @param[in]     targetSize   Bytes of target, terminator included. 0 or less leaves no room
 *                             for text: the NUL goes to target[0], and the result is
 *                             CONV_ERR_TARGET_TOO_SMALL (CONV_OK for an empty format).
 * @param[in]     format       The format, NUL-terminated.
 * @param[in]     names        The names record, or null for the default names. Null day, month
 *                             and meridiem slots take their default text; era names and the
 *                             SYEAR text have no default.
 * @param[out]    failedField  May be null. Receives the field index (0..15) of the field that
 *                             stopped formatting, or 65535 when no field failed (also when the
 *                             room ran out between fields).
 * @param[out]    fieldCount   May be null. Receives the number of fields met, the failing one
 *                             included.
 * @retval CONV_OK                   The whole format was written.
 * @retval CONV_WARN_TRUNCATION      The room ended inside a fraction field.
 * @retval CONV_ERR_TARGET_TOO_SMALL The room ended inside another field or between fields, or
 *                                   there was no room at all (a size of 1 or below holds only the
 *                                   NUL).
 * @retval CONV_ERR_DAY              (and CONV_ERR_MONTH, CONV_ERR_YEAR, CONV_ERR_DAY_OF_WEEK,
 *                                   CONV_ERR_SECOND, CONV_ERR_MINUTE, CONV_ERR_HOUR24,
 *                                   CONV_ERR_FRACTION, CONV_ERR_FRACTION_BASE) A field's value
 *                                   cannot be written, as the letter table says.
 * @retval CONV_ERR_ERA_RANGE        An E field for a date before 8 September 1868.
 * @retval CONV_ERR_NO_ERA_NAMES     An E field without era names.
 * @retval CONV_ERR_NO_SYEAR         A J field for the first year of an era without SYEAR text.
 */
uint32_t CONV_DateTimeToString(char *target, CONV_DateTime *record, int32_t targetSize,
                               const char *format, const char *const *names,
                               uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;
/**
 * Measures the bytes that the longest text of a format needs with the given names.
 *
 * The format is written by CONV_DateTimeToString for a worst-case sample (10 October 1994,
 * 23:59:59.999999999 with fractionBase 9, a Sunday) with the longest name of each group placed
 * where the sample reads it, into a 1000-byte buffer. `%04Z-%02M-%02D` gives 11;
 * <tt>\%T, \%D \%V \%Z</tt> with the default names gives 29. The measurement has no era names
 * and no SYEAR text: an E field makes it fail, a J field measures the Gregorian year.
 *
 * @param[in]  format  The format, NUL-terminated.
 * @param[in]  names   The names record, or null for the default names; slots 0..39 are used,
 *                     a null slot taking its default text.
 * @param[out] length  Receives the length of the sample text plus 1 for the terminator, or 0 on
 *                     failure.
 * @retval CONV_OK                   Measured.
 * @retval CONV_ERR_TARGET_TOO_SMALL Formatting the sample failed for any reason (an E field, a
 *                                   text over 999 characters, ...); length holds 0.
 */
uint32_t CONV_CalcDateTimeLength(const char *format, const char *const *names,
                                 uint32_t *length) CONV_NOEXCEPT;

/** @} */

/** @name Date-time parsing */
/** @{ */

/**
 * Reads a date-time from source text under a format of the date-time format language.
 *
 * Every field of the record but fractionBase is first set to CONV_DT_UNSET. Reading then walks
 * the format and the source together until either reaches its end. A literal character of the
 * format must stand in the source as it is (`%%` matches one `%`), else reading stops with
 * CONV_ERR_SCAN_MISMATCH. Each field reads one value:
 * - Numbers (D, H, I, M, S, P, Y, Z, J): with a width, exactly that many characters, which must
 *   form one decimal integer (CONV_ERR_FORMAT_LEFT when fewer remain); without one, a decimal
 *   integer as far as it goes, leading white space and a sign accepted (CONV_ERR_SCAN_MISMATCH
 *   when there is none). The ranges are those of CONV_DateTimeToString (CONV_ERR_DAY,
 *   CONV_ERR_HOUR24, ...). Y stores centuryBase plus the number, Z the number; a year equal to
 *   the marker is CONV_ERR_YEAR.
 * - Names (T, U, V, W, Q; E; the SYEAR text of J): the first name in table order that matches,
 *   byte for byte and case-sensitively ("Jan" does not match the default "JAN"). Without a width
 *   the name must stand at the source position; with one, the field of that many characters is
 *   compared with each name over the shorter of the two lengths, at the field's left end under
 *   the `-` flag and at its right end otherwise, and the whole field is consumed. T and U store
 *   dayOfWeek, V and W store month (index + 1). T, U, V, W and Q take the caller's group when
 *   names are given and the group's first slot is set, else the whole default group.
 * - F without a width reads a number into fraction unscaled. With a width, fractionBase must be
 *   1..9 (CONV_ERR_FRACTION_BASE); the next width characters, trimmed of blanks (at both ends
 *   without a flag, at the right end with `-` or `0`), must be a number (CONV_ERR_SCAN_MISMATCH)
 *   and are read as the first digits after a decimal point, scaled to fractionBase digits: with
 *   base 3, "5" gives 500 and "1234" gives 123. A fraction outside 0..999999999 is
 *   CONV_ERR_FRACTION.
 * - P reads an hour 1..12 (CONV_ERR_HOUR12) and Q a meridiem designator; the after-noon
 *   designator adds 12 to an hour other than 12 read by P, whichever of the two comes first. It
 *   does not change an hour read by H. A second Q is CONV_ERR_RESCAN.
 * - E reads one of the era names of slots 40..43 into era (CONV_ERR_NO_ERA_NAMES without names
 *   or with slot 40 null); it must come before any year field (else CONV_ERR_RESCAN). J reads
 *   the SYEAR text of slot 44 as year 1, or else a number (CONV_ERR_NO_SYEAR without that text).
 *
 * Every letter but Q and E needs its value still unset: a second field for the same value is
 * CONV_ERR_RESCAN (H and P share the hour; T and U the day of the week; M, V and W the month;
 * Y, Z and J the year). When reading has ended: an era read turns the era year into the
 * Gregorian year (CONV_ERR_YEAR for an era year outside its era, 1..45, 1..15, 1..64 and 1 up,
 * for a date before the era's first day or after its last, or for no year); hour 24 with a
 * non-zero minute or second is CONV_ERR_HOUR24; a day not in its month is CONV_ERR_DAY; source
 * left over is CONV_ERR_SOURCE_LEFT; format left over, whatever it holds, is
 * CONV_ERR_FORMAT_LEFT. The fraction is not checked against fractionBase, nor dayOfWeek against
 * the date: CONV_CheckDateTime does that.
 *
 * @note Kept for compatibility, and relied on by callers: a number is stored by its low 16 bits
 *       and the range test is made on the stored value (65537 read for D gives day 1); the value
 *       is stored before it is tested, so the record holds the offending value after a range
 *       failure. The before-noon designator never changes the hour ("12 AM" gives hour 12). Era
 *       3 has no test of its first day (era 3, year 1, 7 January gives 7 January 1989), and era
 *       1 none of the end of its year 15.
 *
 * @param[in,out] record       The record to fill. fractionBase is an input: the fraction
 *                             digits wanted (1..9) or unset. On failure the record keeps what
 *                             was read; after success era keeps the era read while year holds
 *                             the Gregorian year.
 * @param[in]     source       The text to read, NUL-terminated. A source whose text shares bytes
 *                             with the record is read from a temporary copy.
 * @param[in]     format       The format, NUL-terminated.
 * @param[in]     centuryBase  Added to the year read by Y (1900 makes "94" the year 1994).
 * @param[in]     names        The names record, or null for the default names.
 * @param[out]    failedField  May be null. Receives the field index (0..15) of the field that
 *                             failed, or 65535 when none did (a literal mismatch and the checks
 *                             made at the end leave 65535).
 * @param[out]    fieldCount   May be null. Receives the number of fields met, the failing one
 *                             included.
 * @retval CONV_OK                The whole format was read from the whole source.
 * @retval CONV_ERR_SCAN_MISMATCH A literal, a number or a name was not found.
 * @retval CONV_ERR_FORMAT_LEFT   The source ended before the format, or fewer characters were
 *                                left than a width.
 * @retval CONV_ERR_SOURCE_LEFT   The format ended before the source.
 * @retval CONV_ERR_RESCAN        A second field for a value already read, or E after a year.
 * @retval CONV_ERR_DAY           (and CONV_ERR_MONTH, CONV_ERR_YEAR, CONV_ERR_SECOND,
 *                                CONV_ERR_MINUTE, CONV_ERR_HOUR24, CONV_ERR_HOUR12,
 *                                CONV_ERR_FRACTION, CONV_ERR_FRACTION_BASE) A value out of
 *                                range, read or found by the checks at the end.
 * @retval CONV_ERR_NO_ERA_NAMES  An E field without era names.
 * @retval CONV_ERR_NO_SYEAR      A J field without SYEAR text.
 * @retval CONV_ERR_MEMORY        The copy of a source inside the record could not be made;
 *                                nothing was read and the record is untouched.
 */
uint32_t CONV_StringToDateTime(CONV_DateTime *record, const char *source, const char *format,
                               int32_t centuryBase, const char *const *names,
                               uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;

/** @} */

/**
 * @name ODBC date and time text
 *
 * The three writers share one shape. When targetSize holds the whole form and its terminator
 * (the fast path), the digits are written directly, unchecked, and CONV_OK is returned: each
 * field is written as its lowest digits (year 4, the others 2: year 12345 gives "2345", month 13
 * gives "13"); values are expected to be set and non-negative. A smaller target (the slow path)
 * is filled by CONV_DateTimeToString with the form's format and no names, which checks the
 * values and cuts the text to the room; its status is returned. Neither path writes the record.
 */
/** @{ */

/**
 * Writes a record as an ODBC timestamp, "yyyy-mm-dd hh:mm:ss.fffffffff" (29 characters).
 *
 * Fast path (targetSize 30 or more): the fraction always takes nine places. A fraction of 0
 * gives nine "0" characters; otherwise its lowest fractionBase digits, zero-filled on the left,
 * are followed by "0" characters (base 3, fraction 5: "005000000"; base 6, fraction 1:
 * "000001000"). A fractionBase of 0 gives nine zeros; one outside 0..9, unset included, is
 * taken as 9.
 *
 * Slow path: the format `%04Z-%02M-%02D %02H:%02I:%02S.%-9.9F`. A 29-byte target cuts the
 * fraction to eight places with CONV_WARN_TRUNCATION; smaller targets cut an earlier field with
 * CONV_ERR_TARGET_TOO_SMALL.
 *
 * @note Kept for compatibility: on the slow path a fraction whose fractionBase is unset is
 *       written as a plain nanosecond count, left-justified and padded with blanks to nine
 *       places ("5000000" and two blanks for 5000000), unlike the fast path.
 *
 * @param[out] target       The buffer, targetSize bytes and never less than one byte; always
 *                          NUL-terminated (with targetSize 0 or below, at target[0] only).
 * @param[in]  record       The values; only read.
 * @param[in]  targetSize   Bytes of target, terminator included.
 * @param[out] failedField  May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @param[out] fieldCount   May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @retval CONV_OK                   Written (always on the fast path).
 * @retval CONV_WARN_TRUNCATION      Slow path: only the fraction was cut.
 * @retval CONV_ERR_TARGET_TOO_SMALL Slow path: an earlier field was cut, or targetSize is below
 *                                   1 (only the NUL at target[0]).
 * @retval CONV_ERR_YEAR             (and the other field statuses of CONV_DateTimeToString) Slow
 *                                   path: a value cannot be written.
 */
uint32_t CONV_DateTimeToODBCTSString(char *target, const CONV_DateTime *record, int32_t targetSize,
                                     uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;
/**
 * Writes a record as an ODBC time, "hh:mm:ss" (8 characters).
 *
 * Fast path with targetSize 9 or more; slow path with the format `%02H:%02I:%02S` (8 bytes give
 * "13:07:0" and CONV_ERR_TARGET_TOO_SMALL).
 *
 * @param[out] target       The buffer, targetSize bytes and never less than one byte; always
 *                          NUL-terminated (with targetSize 0 or below, at target[0] only).
 * @param[in]  record       The values; only read.
 * @param[in]  targetSize   Bytes of target, terminator included.
 * @param[out] failedField  May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @param[out] fieldCount   May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @retval CONV_OK                   Written (always on the fast path).
 * @retval CONV_ERR_TARGET_TOO_SMALL Slow path: the text was cut, or targetSize is below 1
 *                                   (only the NUL at target[0]).
 * @retval CONV_ERR_HOUR24           (and CONV_ERR_MINUTE, CONV_ERR_SECOND) Slow path: a value
 *                                   cannot be written.
 */
uint32_t CONV_DateTimeToODBCTimeString(char *target, const CONV_DateTime *record,
                                       int32_t targetSize, uint16_t *failedField,
                                       uint16_t *fieldCount) CONV_NOEXCEPT;
/**
 * Writes a record as an ODBC date, "yyyy-mm-dd" (10 characters).
 *
 * Fast path with targetSize 11 or more (month 13 is written "13", unchecked); slow path with the
 * format `%04Z-%02M-%02D` (10 bytes give "2009-03-0" and CONV_ERR_TARGET_TOO_SMALL; month 13
 * gives CONV_ERR_MONTH).
 *
 * @param[out] target       The buffer, targetSize bytes and never less than one byte; always
 *                          NUL-terminated (with targetSize 0 or below, at target[0] only).
 * @param[in]  record       The values; only read.
 * @param[in]  targetSize   Bytes of target, terminator included.
 * @param[out] failedField  May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @param[out] fieldCount   May be null; untouched on the fast path, else as for
 *                          CONV_DateTimeToString.
 * @retval CONV_OK                   Written (always on the fast path).
 * @retval CONV_ERR_TARGET_TOO_SMALL Slow path: the text was cut, or targetSize is below 1
 *                                   (only the NUL at target[0]).
 * @retval CONV_ERR_YEAR             (and CONV_ERR_MONTH, CONV_ERR_DAY) Slow path: a value cannot
 *                                   be written.
 */
uint32_t CONV_DateTimeToODBCDateString(char *target, const CONV_DateTime *record,
                                       int32_t targetSize, uint16_t *failedField,
                                       uint16_t *fieldCount) CONV_NOEXCEPT;

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_CONVLIB_H */
