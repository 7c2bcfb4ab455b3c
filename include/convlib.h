/*
 * convlib.h - the conversion library.
 *
 * Converts between text, integers, floating values, binary-coded decimals, byte strings, UTF-8
 * and date-time values. Every function reports through the status codes below (CONV_OK is
 * success; the two warnings come with a usable, altered result). The conversion library never
 * records on an error stack.
 */
#ifndef CONVLIB_H
#define CONVLIB_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status codes and messages ---- */

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef CONV_NOEXCEPT
#ifdef __cplusplus
#define CONV_NOEXCEPT noexcept
#else
#define CONV_NOEXCEPT
#endif
#endif

/* Status codes returned by every CONV_ routine (except the trimming and length routines, which
 * return a length). 0 is success; 16 and 22 are warnings that come with a usable result. */
#define CONV_OK                   ((uint32_t)0)
#define CONV_ERR_BYTE_STREAM      ((uint32_t)1)
#define CONV_ERR_DAY              ((uint32_t)2)
#define CONV_ERR_MONTH            ((uint32_t)3)
#define CONV_ERR_YEAR             ((uint32_t)4)
#define CONV_ERR_DAY_OF_WEEK      ((uint32_t)5)
#define CONV_ERR_SECOND           ((uint32_t)6)
#define CONV_ERR_MINUTE           ((uint32_t)7)
#define CONV_ERR_HOUR24           ((uint32_t)8)
#define CONV_ERR_HOUR12           ((uint32_t)9)
#define CONV_ERR_FRACTION         ((uint32_t)10)
#define CONV_ERR_FRACTION_BASE    ((uint32_t)11)
#define CONV_ERR_RESCAN           ((uint32_t)12)
#define CONV_ERR_TARGET_TOO_SMALL ((uint32_t)13)
#define CONV_ERR_FORMAT_LEFT      ((uint32_t)14)
#define CONV_ERR_SOURCE_LEFT      ((uint32_t)15)
#define CONV_WARN_TRUNCATION      ((uint32_t)16)
#define CONV_ERR_SCAN_MISMATCH    ((uint32_t)17)
#define CONV_ERR_MEMORY           ((uint32_t)18)
#define CONV_ERR_CONVERSION       ((uint32_t)19)
#define CONV_ERR_OVERFLOW         ((uint32_t)20)
#define CONV_ERR_NOT_A_NUMBER     ((uint32_t)21)
#define CONV_WARN_ROUND_TO_ZERO   ((uint32_t)22)
#define CONV_ERR_ERA_RANGE        ((uint32_t)23)
#define CONV_ERR_NO_ERA_NAMES     ((uint32_t)24)
#define CONV_ERR_NO_SYEAR         ((uint32_t)25)

/* Maps a status to its message text and its bracketed SQLSTATE ("[22008]"). Both outputs are
 * always written (neither may be null) with static constant texts that the caller must not free.
 * Returns 1 for the codes 1..25; 0, with two empty texts, for 0 and for unknown codes. */
uint32_t CONV_ErrorMessage(uint32_t status, const char **message,
                           const char **sqlstate) CONV_NOEXCEPT;

/* ---- Numeric narrowing ---- */

/* Each routine stores the source value into the narrower target and returns CONV_OK,
 * CONV_WARN_TRUNCATION (a fraction was dropped toward zero, or the double was a NaN; the target
 * holds the truncated value) or CONV_ERR_OVERFLOW (the target is left untouched). */
uint32_t CONV_DoubleToFloat(float *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToInt32(int32_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToUInt32(uint32_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToInt16(int16_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToUInt16(uint16_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToInt8(int8_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_DoubleToUInt8(uint8_t *target, double value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToDouble(double *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToFloat(float *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToUInt32(uint32_t *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToInt16(int16_t *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToUInt16(uint16_t *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToInt8(int8_t *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_Int32ToUInt8(uint8_t *target, int32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToDouble(double *target, uint32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToFloat(float *target, uint32_t value) CONV_NOEXCEPT;
/* Accepts 0..2147483647 but stores the value's low 16 bits sign-extended (40000 -> -25536). */
uint32_t CONV_UInt32ToInt32(int32_t *target, uint32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToInt16(int16_t *target, uint32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToUInt16(uint16_t *target, uint32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToInt8(int8_t *target, uint32_t value) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToUInt8(uint8_t *target, uint32_t value) CONV_NOEXCEPT;

/* ---- Number text scanning and checking ---- */

/* Number-syntax flags, taken by CONV_IsNumber and the text-to-number routines. The space always
 * counts as a blank; carriage return never does. */
#define CONV_NUM_LEADING_BLANKS  ((uint32_t)0x001) /* leading blanks allowed */
#define CONV_NUM_TRAILING_BLANKS ((uint32_t)0x002) /* trailing blanks allowed */
#define CONV_NUM_DECIMAL_POINT   ((uint32_t)0x004) /* a decimal point allowed */
#define CONV_NUM_EXPONENT        ((uint32_t)0x008) /* an exponent ("E" or "e") allowed */
#define CONV_NUM_TAB_IS_BLANK    ((uint32_t)0x010) /* a horizontal tab counts as a blank */
#define CONV_NUM_LF_IS_BLANK     ((uint32_t)0x020) /* a line feed counts as a blank */
#define CONV_NUM_D_EXPONENT      ((uint32_t)0x040) /* "D" and "d" also mark the exponent */
#define CONV_NUM_NO_CHECK        ((uint32_t)0x100) /* no check: the text is taken as it stands */

/* Field descriptor of a "%" field of a date-time format, filled by the module's field reader. */
typedef struct CONV_FieldDescriptor {
    uint16_t flag;      /* 0 none, 1 "-" (left-justified), 2 "0" (zero-padded) */
    uint16_t width;     /* 1..999, or 65535 when not given */
    uint16_t index;     /* 0..15: position of the field letter in "DFHIMPQSTUVWYZEJ" */
    uint16_t length;    /* format characters from "%" to the letter inclusive */
    uint16_t precision; /* 1..9, or 65535 when not given */
} CONV_FieldDescriptor;

/* Checks that the NUL-terminated text is a decimal number under the flags, with the given
 * decimal-point character. Returns CONV_OK or CONV_ERR_NOT_A_NUMBER. */
uint32_t CONV_IsNumber(const char *text, uint32_t flags, char point) CONV_NOEXCEPT;
/* Normalises number text (blanks trimmed, leading zeros and "+" dropped) into out of size bytes,
 * cutting fraction digits when needed. *length receives the full, uncut length. Returns CONV_OK,
 * CONV_WARN_TRUNCATION or CONV_ERR_TARGET_TOO_SMALL. */
uint32_t CONV_FormatNumString(char *out, const char *text, uint32_t size, char point,
                              uint32_t *length) CONV_NOEXCEPT;

/* ---- Integer and floating text conversions ---- */

/* Text to number: the text is checked under the number-syntax flags, the caller's decimal-point
 * character is accepted in place of ".". Integer targets return CONV_OK, CONV_WARN_TRUNCATION
 * (fraction dropped toward zero), CONV_ERR_OVERFLOW, CONV_ERR_NOT_A_NUMBER or
 * CONV_ERR_CONVERSION (text longer than 999 characters). */
uint32_t CONV_StringToInt32(int32_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
uint32_t CONV_StringToUInt32(uint32_t *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
uint32_t CONV_StringToInt16(int16_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
uint32_t CONV_StringToUInt16(uint16_t *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
uint32_t CONV_StringToInt8(int8_t *target, const char *text, uint32_t flags,
                           char point) CONV_NOEXCEPT;
uint32_t CONV_StringToUInt8(uint8_t *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/* Returns CONV_OK, CONV_ERR_NOT_A_NUMBER, CONV_ERR_OVERFLOW, CONV_WARN_ROUND_TO_ZERO (the target
 * holds 0.0) or CONV_ERR_CONVERSION. */
uint32_t CONV_StringToDouble(double *target, const char *text, uint32_t flags,
                             char point) CONV_NOEXCEPT;
uint32_t CONV_StringToFloat(float *target, const char *text, uint32_t flags,
                            char point) CONV_NOEXCEPT;
/* Number to text into out of size bytes: CONV_OK or CONV_ERR_TARGET_TOO_SMALL (nothing written). */
uint32_t CONV_Int32ToString(char *out, int32_t value, uint32_t size) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToString(char *out, uint32_t value, uint32_t size) CONV_NOEXCEPT;
/* Styles of CONV_DoubleToString. */
#define CONV_DOUBLE_SCIENTIFIC ((uint32_t)1)
#define CONV_DOUBLE_FIXED      ((uint32_t)2)
#define CONV_DOUBLE_GENERAL    ((uint32_t)3)
/* Writes value in the style with precision digits (at most 100) and the decimal-point character.
 * *length receives the full, uncut length of the text. Returns CONV_OK, CONV_WARN_TRUNCATION
 * (digits cut to fit), CONV_ERR_TARGET_TOO_SMALL, CONV_ERR_OVERFLOW or CONV_ERR_CONVERSION. */
uint32_t CONV_DoubleToString(char *out, double value, uint32_t size, uint32_t style,
                             uint32_t precision, char point, uint32_t *length) CONV_NOEXCEPT;

/* ---- Trimming and UTF-8 ---- */

/* Trim flags of CONV_Trim and CONV_TrimUTF8. The space always counts as a blank. */
#define CONV_TRIM_LEADING     ((uint32_t)0x01) /* strip leading blanks */
#define CONV_TRIM_TRAILING    ((uint32_t)0x02) /* strip trailing blanks */
#define CONV_TRIM_TAB_IS_BLANK ((uint32_t)0x10) /* a horizontal tab also counts as a blank */
#define CONV_TRIM_LF_IS_BLANK  ((uint32_t)0x20) /* a line feed also counts as a blank */

/* Encodes one code point as UTF-8 (1 to 6 bytes; negative values as one byte) into out of
 * capacity bytes. *count always receives the bytes the character needs. Returns CONV_OK, or
 * CONV_ERR_TARGET_TOO_SMALL with nothing written. No terminating NUL is written. */
uint32_t CONV_WCharToUTF8(int32_t codePoint, char *out, uint32_t capacity,
                          uint32_t *count) CONV_NOEXCEPT;
/* Number of UTF-8 bytes (1 to 6) that CONV_WCharToUTF8 writes for the code point. */
uint32_t CONV_WCharToUTF8_BytesNeeded(int32_t codePoint) CONV_NOEXCEPT;
/* Bytes needed by the characters of text before its first 0 or its first maxChars characters. */
uint32_t CONV_WCharStrToUTF8_BytesNeeded(const int32_t *text, int32_t maxChars) CONV_NOEXCEPT;
/* Encodes the characters of text (up to its first 0 or maxChars characters) into out of capacity
 * bytes, without a terminator. *written receives the bytes of the complete characters written.
 * Returns CONV_OK or CONV_ERR_TARGET_TOO_SMALL. */
uint32_t CONV_WCharStrToUTF8(const int32_t *text, int32_t maxChars, char *out, uint32_t capacity,
                             uint32_t *written) CONV_NOEXCEPT;
/* The same for 16-bit units, each taken as a code point of its own (pairs are not combined). */
uint32_t CONV_WChar16StrToUTF8(const uint16_t *text, int32_t maxUnits, char *out,
                               uint32_t capacity, uint32_t *written) CONV_NOEXCEPT;
/* Length of the buffer without its trailing spaces; a length of 0 or less comes back as it is. */
int32_t CONV_GetTrimmedLength(const char *buffer, int32_t length) CONV_NOEXCEPT;
int32_t CONV_GetTrimmedLengthUTF8Blanks(const char *buffer, int32_t length) CONV_NOEXCEPT;
/* Bytes occupied by the first charCount UTF-8 characters (a lead byte of 0xF0 or above counts as
 * one byte); 0 when byteLength or charCount is below 1. */
int32_t CONV_GetTrimmedLengthUTF8Chars(const char *buffer, int32_t byteLength,
                                       int32_t charCount) CONV_NOEXCEPT;
/* CONV_GetTrimmedLength, and a NUL stored at the resulting index (buffer[length] must exist). */
int32_t CONV_TrimWithStrlen(char *buffer, int32_t length) CONV_NOEXCEPT;
/* Strips blanks in place from a NUL-terminated string under the trim flags. */
void CONV_Trim(char *string, uint32_t flags) CONV_NOEXCEPT;
void CONV_TrimUTF8(char *string, uint32_t flags) CONV_NOEXCEPT;

/* ---- Decimal values ---- */

/* Layouts of a decimal value (precision and scale travel beside it as separate arguments). */
#define CONV_DECIMAL_UNPACKED ((uint32_t)1) /* one digit per byte in the low nibble, precision
                                             * bytes; the sign is the last byte's high nibble */
#define CONV_DECIMAL_PACKED   ((uint32_t)2) /* two digits per byte, high nibble first,
                                             * precision / 2 + 1 bytes; the sign is the last
                                             * byte's low nibble; an even precision starts with a
                                             * pad 0 */
/* Sign nibbles: 0xD is negative; readers take every other value as positive. */
#define CONV_DECIMAL_PLUS  0x0C
#define CONV_DECIMAL_MINUS 0x0D

/* Reads number text (number-syntax flags, decimal-point character) into out, a packed decimal of
 * at most size bytes, and stores its precision and scale. A number of digits that would leave
 * the sign alone in a byte gets a pad 0 after it that counts as a fraction digit ("12" is 12.0,
 * precision 3, scale 1), so an even count of integer digits needs CONV_NUM_DECIMAL_POINT or
 * CONV_NUM_NO_CHECK. Text with an exponent goes through a double. Returns CONV_OK,
 * CONV_WARN_TRUNCATION (fraction digits cut to fit), CONV_ERR_NOT_A_NUMBER,
 * CONV_ERR_TARGET_TOO_SMALL (integer digits do not fit, size 0, text over 999 characters) or a
 * status of the double conversion. */
uint32_t CONV_StringToDecimal(uint8_t *out, const char *text, uint32_t size, uint32_t *precision,
                              uint32_t *scale, uint32_t flags, char point) CONV_NOEXCEPT;
/* Writes a decimal value (layout CONV_DECIMAL_UNPACKED or CONV_DECIMAL_PACKED) as text into out
 * of size bytes with the decimal-point character. Leading zeros are dropped, and a value whose
 * digits are all fraction digits is written without an integer digit (".5"). *length receives
 * the full, uncut length of the text, sign included. Returns CONV_OK, CONV_WARN_TRUNCATION
 * (fraction digits cut, not rounded), CONV_ERR_TARGET_TOO_SMALL (nothing written) or
 * CONV_ERR_CONVERSION (unknown layout, a digit nibble above 9, or a scale above the precision). */
uint32_t CONV_DecimalToString(char *out, const uint8_t *value, uint32_t size, uint32_t precision,
                              uint32_t scale, char point, uint32_t layout,
                              uint32_t *length) CONV_NOEXCEPT;
/* Decimal value to a binary number, through its text: the floating targets return the statuses
 * of CONV_StringToDouble / CONV_StringToFloat, the integer targets those of the text-to-integer
 * routines (a dropped fraction is CONV_WARN_TRUNCATION); CONV_ERR_CONVERSION for a bad value and
 * CONV_ERR_OVERFLOW for a value whose integer digits do not fit a 999-character text. */
uint32_t CONV_DecimalToDouble(double *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToFloat(float *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToInt32(int32_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToUInt32(uint32_t *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToInt16(int16_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToUInt16(uint16_t *target, const uint8_t *value, uint32_t precision,
                              uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToInt8(int8_t *target, const uint8_t *value, uint32_t precision,
                            uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
uint32_t CONV_DecimalToUInt8(uint8_t *target, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) CONV_NOEXCEPT;
/* Binary number to a packed decimal of at most size bytes (see CONV_StringToDecimal). The double
 * is written with 50 fraction digits whose trailing zeros are dropped; it returns
 * CONV_ERR_OVERFLOW for an infinity and CONV_ERR_CONVERSION for a NaN. */
uint32_t CONV_Int32ToDecimal(uint8_t *out, int32_t value, uint32_t size, uint32_t *precision,
                             uint32_t *scale) CONV_NOEXCEPT;
uint32_t CONV_UInt32ToDecimal(uint8_t *out, uint32_t value, uint32_t size, uint32_t *precision,
                              uint32_t *scale) CONV_NOEXCEPT;
uint32_t CONV_DoubleToDecimal(uint8_t *out, double value, uint32_t size, uint32_t *precision,
                              uint32_t *scale) CONV_NOEXCEPT;
/* Self-describing packed decimal: byte 0 the precision (significant digits, unsigned), byte 1
 * the scale (signed; negative when trailing integer zeros were dropped), then packed digits with
 * the sign nibble last (an even precision starts with a pad 0). Zero is 1, 0, 0x0C.
 * CONV_StringToQLXBCD reads text ("." and "," are both points; an optional sign in front) into
 * out, which needs room for 3 + (digits + 1) / 2 bytes; CONV_ERR_NOT_A_NUMBER for anything else
 * and for more than 255 significant digits, a scale outside -128..127 or a text over 999
 * characters. CONV_QLXBCDToString writes the value back as text ("." point) into out, which
 * needs room for the sign, the point, "0." and every digit and zero the scale implies, plus the
 * NUL; CONV_ERR_NOT_A_NUMBER for a sign nibble other than 0xC or 0xD. */
uint32_t CONV_StringToQLXBCD(uint8_t *out, const char *text) CONV_NOEXCEPT;
uint32_t CONV_QLXBCDToString(char *out, const uint8_t *value) CONV_NOEXCEPT;

/* ---- Binary text ---- */

/* Reads hexadecimal text (digit pairs, high nibble first, "0"-"9" and "A"-"F" only) into out.
 * *count holds the capacity of out in bytes on entry and the number of bytes written on return.
 * A lone final digit is ignored. Returns CONV_OK, CONV_WARN_TRUNCATION (text cut to the
 * capacity), CONV_ERR_BYTE_STREAM (a bad pair; the bytes before it stay written and counted),
 * CONV_ERR_TARGET_TOO_SMALL (capacity 0) or CONV_ERR_MEMORY (the temporary copy of a text that
 * overlaps out could not be made). */
uint32_t CONV_StringToBinary(uint8_t *out, const char *text, uint32_t *count) CONV_NOEXCEPT;
/* Writes length bytes as upper-case hexadecimal text with a NUL into out of size bytes. A target
 * too small for all of them gets the whole bytes that fit and CONV_WARN_TRUNCATION. Returns
 * CONV_OK, CONV_WARN_TRUNCATION, CONV_ERR_TARGET_TOO_SMALL (size 0) or CONV_ERR_MEMORY (the
 * temporary copy of bytes that overlap out could not be made). */
uint32_t CONV_BinaryToString(char *out, const uint8_t *bytes, uint32_t size,
                             uint32_t length) CONV_NOEXCEPT;

/* ---- Date-time values and calendar ---- */

/* Marker of a date-time field that holds no value (also in the 32-bit fraction). */
#define CONV_DT_UNSET (-32768)

/* A date-time value. Any field may hold CONV_DT_UNSET. fraction counts nanoseconds when
 * fractionBase is unset, and units of 10^-fractionBase seconds when it is 1..9 (base 3, value 5:
 * 5 ms, written "005"). dayOfWeek (0 = Sunday) is never derived from the date implicitly. era
 * (0..3) is working state of formatting and parsing; callers need not fill it. */
typedef struct CONV_DateTime {
    int16_t day;          /* 1..31 */
    int16_t month;        /* 1..12 */
    int16_t year;         /* Gregorian year; never range-checked */
    int16_t dayOfWeek;    /* 0 = Sunday .. 6 = Saturday */
    int16_t second;       /* 0..59 */
    int16_t minute;       /* 0..59 */
    int16_t hour;         /* 0..24 (24 only as 24:00:00) */
    int32_t fraction;     /* fraction of a second, see fractionBase */
    int16_t fractionBase; /* digits of fraction, 1..9, or unset for nanoseconds */
    int16_t era;          /* era 0..3 of the era calendar, or unset */
} CONV_DateTime;

/* Slots of a names record (45 caller-owned text pointers; any may be null). */
#define CONV_NAMES_DAY          0  /* 0..6: full day names, Sunday first */
#define CONV_NAMES_SHORT_DAY    7  /* 7..13: short day names, Sunday first */
#define CONV_NAMES_MONTH        14 /* 14..25: full month names, January first */
#define CONV_NAMES_SHORT_MONTH  26 /* 26..37: short month names, January first */
#define CONV_NAMES_MERIDIEM     38 /* 38, 39: before noon, after noon */
#define CONV_NAMES_ERA          40 /* 40..43: era names, era 0 first */
#define CONV_NAMES_SYEAR        44 /* 44: the word written for the first year of an era */
#define CONV_NAMES_COUNT        45

/* The names record. Functions take it as `const char *const *` (null, or its first slot). */
typedef const char *CONV_DateTimeNames[CONV_NAMES_COUNT];

/* Default names, used where the caller gives none. Short month names are in capitals. */
extern const char *const gCONV_DefaultNameOfDay[7];
extern const char *const gCONV_DefaultShortNameOfDay[7];
extern const char *const gCONV_DefaultNameOfMonth[12];
extern const char *const gCONV_DefaultShortNameOfMonth[12];
extern const char *const gCONV_DefaultMeridiem[2];
/* Largest fraction per fractionBase: index b (1..9) holds 10^b - 1; index 0 holds -1. */
extern const int32_t gCONV_SecFracBaseCeiling[10];

/* Checks the set fields of the record (unset fields are skipped; the year has no range) and
 * returns CONV_OK or the first failure: CONV_ERR_DAY, CONV_ERR_MONTH, CONV_ERR_HOUR24,
 * CONV_ERR_MINUTE, CONV_ERR_SECOND, CONV_ERR_FRACTION or CONV_ERR_FRACTION_BASE. */
uint32_t CONV_CheckDateTime(const CONV_DateTime *record) CONV_NOEXCEPT;
/* Computes the day of the week of day, month and year into record->dayOfWeek (0 = Sunday) and
 * returns CONV_OK; on CONV_ERR_DAY, CONV_ERR_MONTH or CONV_ERR_YEAR the record is unchanged. */
uint32_t CONV_GetDayOfWeek(CONV_DateTime *record) CONV_NOEXCEPT;

/* ---- Date-time formatting ---- */

/*
 * Writes the record as text under format into target of targetSize bytes; the target is always
 * NUL-terminated when targetSize is at least 1. A field is "%", an optional flag ("-" left-justify,
 * "0" zero-pad), an optional width (1..999), an optional precision (".1" .. ".9", for F only) and
 * one of the letters D (day), F (fraction), H (hour 0..24), I (minute), M (month), P (hour 1..12),
 * Q (meridiem), S (second), T (day name), U (short day name), V (month name), W (short month
 * name), Y (year in century), Z (year), E (era name), J (year in era). "%%" writes "%"; any other
 * "%" is literal. names is optional (null: default names). record->era is set to unset, then to
 * the era of an E field. *failedField (optional) receives the index of the failing field or 65535;
 * *fieldCount (optional) the number of fields met. Returns CONV_OK, a field's error,
 * CONV_ERR_TARGET_TOO_SMALL or CONV_WARN_TRUNCATION (only the fraction field was cut).
 */
uint32_t CONV_DateTimeToString(char *target, CONV_DateTime *record, int32_t targetSize,
                               const char *format, const char *const *names,
                               uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;
/* Stores in *length the bytes (terminator included) that the longest text of format needs with
 * these names (null: default names) and returns CONV_OK; on any failure stores 0 and returns
 * CONV_ERR_TARGET_TOO_SMALL. */
uint32_t CONV_CalcDateTimeLength(const char *format, const char *const *names,
                                 uint32_t *length) CONV_NOEXCEPT;

/* ---- Date-time parsing ---- */

/*
 * Reads source under format (the language of CONV_DateTimeToString) into record. Every field of
 * the record but fractionBase (an input: the fraction digits wanted, 1..9, or unset) is reset
 * first. Y adds centuryBase to the year read. names is optional. *failedField and *fieldCount
 * (optional) as for CONV_DateTimeToString. A source lying inside the record is read from a
 * temporary copy (CONV_ERR_MEMORY when it cannot be made). Returns CONV_OK or the status of the
 * failing field or end check (CONV_ERR_SOURCE_LEFT, CONV_ERR_FORMAT_LEFT, CONV_ERR_SCAN_MISMATCH,
 * a field's range error, CONV_ERR_RESCAN, ...); on failure the record keeps what was read.
 */
uint32_t CONV_StringToDateTime(CONV_DateTime *record, const char *source, const char *format,
                               int32_t centuryBase, const char *const *names,
                               uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;

/* ---- ODBC date and time text ---- */

/*
 * Write the record as "yyyy-mm-dd hh:mm:ss.fffffffff", "hh:mm:ss" or "yyyy-mm-dd". When targetSize
 * holds the whole form (30, 9 or 11 bytes) the digits are written unchecked and CONV_OK is
 * returned (failedField and fieldCount untouched). A smaller target is filled through
 * CONV_DateTimeToString with "%04Z-%02M-%02D %02H:%02I:%02S.%-9.9F", "%02H:%02I:%02S" or
 * "%04Z-%02M-%02D" and no names, whose status is returned. The record is only read.
 */
uint32_t CONV_DateTimeToODBCTSString(char *target, const CONV_DateTime *record, int32_t targetSize,
                                     uint16_t *failedField, uint16_t *fieldCount) CONV_NOEXCEPT;
uint32_t CONV_DateTimeToODBCTimeString(char *target, const CONV_DateTime *record,
                                       int32_t targetSize, uint16_t *failedField,
                                       uint16_t *fieldCount) CONV_NOEXCEPT;
uint32_t CONV_DateTimeToODBCDateString(char *target, const CONV_DateTime *record,
                                       int32_t targetSize, uint16_t *failedField,
                                       uint16_t *fieldCount) CONV_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* CONVLIB_H */
