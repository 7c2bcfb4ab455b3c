/* SPDX-License-Identifier: MIT */
/**
 * @file glib.h
 * @brief The general library: 16-bit wide strings, SQL-LIKE matching, a bounded formatter of its
 * own, and string, environment, file-system, time and random-number utilities.
 *
 * The library's wide character is #GLIB_WChar, an unsigned 16-bit code unit whatever the width
 * of the platform's `wchar_t`; a wide string is an array of such units ended by a 0 unit. Case
 * folding in the wide-string functions and in GLIB_strlwr and GLIB_strupr is ASCII only ('A' to
 * 'Z' and 'a' to 'z'); no locale is consulted. The matcher GLIB_ValueMatchesPatternEx (when it
 * ignores case) and the blank and digit tests of the string utilities use the `ctype` tables of
 * the current locale instead.
 *
 * Conventions: none of the functions checks its pointers for null unless it says so; a pointer
 * argument is not null and a string argument is terminated unless stated. String functions
 * return their destination, a count, or 1/0 for a match; the formatter returns a count or -1.
 * Only GLIB_ExpandEnvStrings and GLIB_MMStrDup_getenv can record an error: they allocate through
 * the checked allocator (memmgr.h), which pushes its record onto the optional error stack they
 * are given (null: nothing is recorded); their results are released with MMFLAT_Free.
 * GLIB_strtowcs allocates with `malloc` instead; its result is released with `free`.
 */
#ifndef NLSSUPPORT_GLIB_H
#define NLSSUPPORT_GLIB_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>
#include <time.h>

#include <nlssupport/errlib.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef GLIB_NOEXCEPT
#ifdef __cplusplus
/** Marks the functions of this header: `noexcept` for C++ callers, nothing for C. */
#define GLIB_NOEXCEPT noexcept
#else
#define GLIB_NOEXCEPT
#endif
#endif

/**
 * The library's wide character: one unsigned 16-bit code unit, whatever the width of the
 * platform's `wchar_t`. Characters outside the Basic Multilingual Plane take two units.
 */
typedef uint16_t GLIB_WChar;

/**
 * @name Constant data
 */
/** @{ */
/**
 * The text "(null)", written by the narrow and wide formatters in place of a null "%s"
 * argument (cut like any other string under a precision).
 */
extern const char gGLIB_nullstring[];
/**
 * The text "(null)" in wide units (seven units with the 0 unit), written by the formatters in
 * place of a null "%ls" argument.
 */
extern const GLIB_WChar gGLIB_nullwstring[];
/**
 * The directory separator set published for GLIB_mkdirp: the two characters '/' '/', with no
 * terminator (read exactly two characters; it is not a string).
 *
 * GLIB_mkdirp splits paths at '/' and also at '(': the set scanned has always run on past these
 * two characters, and paths in use depend on that split, so the function keeps that effective
 * set itself. This array is data only.
 */
extern const char gGLIB_DirSeparatorSet[2];
/** @} */

/**
 * @name Wide-character strings
 * Wide counterparts of the standard string functions, narrow-to-wide copies and ASCII case
 * changers. Units are compared as unsigned 16-bit values; destinations must not overlap their
 * sources; nothing is checked for null and no error is reported.
 */
/** @{ */

/**
 * Counts the units of a wide string.
 *
 * @param[in] text The wide string, ended by a 0 unit.
 * @return The number of units before the 0 unit.
 */
size_t GLIB_wcslen(const GLIB_WChar *text) GLIB_NOEXCEPT;

/**
 * Copies a wide string through its 0 unit.
 *
 * @param[out] dst Destination of GLIB_wcslen(src) + 1 units.
 * @param[in]  src The wide string to copy.
 * @return @p dst.
 */
GLIB_WChar *GLIB_wcscpy(GLIB_WChar *dst, const GLIB_WChar *src) GLIB_NOEXCEPT;

/**
 * Appends a wide string (with its 0 unit) behind the end of another.
 *
 * @param[in,out] dst A wide string with room for GLIB_wcslen(dst) + GLIB_wcslen(src) + 1 units.
 * @param[in]     src The wide string to append.
 * @return @p dst.
 */
GLIB_WChar *GLIB_wcscat(GLIB_WChar *dst, const GLIB_WChar *src) GLIB_NOEXCEPT;

/**
 * Copies at most @p n units of a wide string with the rules of `strncpy`.
 *
 * Units are copied up to the source's 0 unit; the rest of the @p n units is filled with 0
 * units. A source of @p n units or more gives exactly @p n units and no terminator; @p n = 0
 * writes nothing.
 *
 * @param[out] dst Destination of @p n units.
 * @param[in]  src The wide string to copy.
 * @param[in]  n   Number of units written.
 * @return @p dst.
 */
GLIB_WChar *GLIB_wcsncpy(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) GLIB_NOEXCEPT;

/**
 * Appends at most @p n units of a wide string behind the end of another, and always a 0 unit.
 *
 * Copying stops at the source's 0 unit or after @p n units; a 0 unit is then stored behind
 * what was appended. With @p n = 0 only the 0 unit is written, at the destination's end.
 *
 * @param[in,out] dst A wide string with room for GLIB_wcslen(dst) + min(n, GLIB_wcslen(src)) + 1
 *                    units.
 * @param[in]     src The wide string to append.
 * @param[in]     n   Largest number of units appended.
 * @return @p dst.
 */
GLIB_WChar *GLIB_wcsncat(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) GLIB_NOEXCEPT;

/**
 * Compares two wide strings unit by unit, as unsigned 16-bit values.
 *
 * @note Unlike GLIB_wcsncmp, GLIB_wcsicmp and GLIB_wcsnicmp, the result is normalised to -1, 0
 * or 1 ("z" against "a" gives 1, not 25). Callers rely on both behaviours; kept as they are.
 *
 * @param[in] a First wide string.
 * @param[in] b Second wide string.
 * @retval -1 @p a sorts before @p b.
 * @retval 0  The strings are equal.
 * @retval 1  @p a sorts after @p b.
 */
int GLIB_wcscmp(const GLIB_WChar *a, const GLIB_WChar *b) GLIB_NOEXCEPT;

/**
 * Compares at most @p n units of two wide strings and returns the raw difference.
 *
 * The comparison stops at the first pair of different units, at a 0 unit common to both, or
 * after @p n units.
 *
 * @param[in] a First wide string.
 * @param[in] b Second wide string.
 * @param[in] n Largest number of units compared; 0 gives 0.
 * @return 0 when the compared units are equal; otherwise @p a's unit minus @p b's unit at the
 *         first difference, as a signed value from -65535 to 65535 ("z" against "a" with n = 1
 *         gives 25).
 * @see GLIB_wcscmp
 */
int GLIB_wcsncmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) GLIB_NOEXCEPT;

/**
 * Compares two wide strings ignoring ASCII letter case, and returns the raw difference.
 *
 * Each unit of both strings is folded to lower case ('A' to 'Z' only; every other unit stays
 * as it is). The comparison stops where @p a's folded unit is 0 or the folded units differ.
 * "ABC" against "abc" gives 0; "a" against "[" gives 97 - 91 = 6 ('[' is not folded).
 *
 * @param[in] a First wide string.
 * @param[in] b Second wide string.
 * @return @p a's folded unit minus @p b's folded unit where the comparison stopped: 0 when the
 *         strings are equal ignoring ASCII case.
 * @see GLIB_wcscmp
 */
int GLIB_wcsicmp(const GLIB_WChar *a, const GLIB_WChar *b) GLIB_NOEXCEPT;

/**
 * Compares at most @p n units of two wide strings ignoring ASCII letter case, as GLIB_wcsicmp.
 *
 * @param[in] a First wide string.
 * @param[in] b Second wide string.
 * @param[in] n Largest number of units compared; 0 gives 0.
 * @return 0 when the first @p n units (or the strings, if shorter) are equal ignoring ASCII
 *         case; otherwise the difference of the folded units at the first mismatch.
 */
int GLIB_wcsnicmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) GLIB_NOEXCEPT;

/**
 * Finds the first occurrence of a unit in a wide string.
 *
 * @param[in] text The wide string searched.
 * @param[in] c    The unit searched for; 0 finds the terminator.
 * @return A pointer into @p text (not const: write through it only if @p text is writable) to
 *         the first unit equal to @p c, or null when there is none.
 */
GLIB_WChar *GLIB_wcschr(const GLIB_WChar *text, GLIB_WChar c) GLIB_NOEXCEPT;

/**
 * Finds the first occurrence of a wide string in another.
 *
 * @note An empty needle gives the haystack, but an empty haystack gives null, also for an empty
 * needle. Callers test for null to detect an empty haystack; kept as it is.
 *
 * @param[in] haystack The wide string searched.
 * @param[in] needle   The wide string searched for.
 * @return A pointer into @p haystack (not const) to the first occurrence, or null.
 */
GLIB_WChar *GLIB_wcsstr(const GLIB_WChar *haystack, const GLIB_WChar *needle) GLIB_NOEXCEPT;

/**
 * Folds the letters 'A' to 'Z' of a wide string to lower case, in place; other units stay.
 *
 * @param[in,out] text The wide string changed.
 * @return @p text.
 */
GLIB_WChar *GLIB_wcslwr(GLIB_WChar *text) GLIB_NOEXCEPT;

/**
 * Folds the letters 'a' to 'z' of a wide string to upper case, in place; other units stay.
 *
 * @param[in,out] text The wide string changed.
 * @return @p text.
 */
GLIB_WChar *GLIB_wcsupr(GLIB_WChar *text) GLIB_NOEXCEPT;

/**
 * Folds the bytes 'A' to 'Z' of a narrow string to lower case, in place; other bytes (also
 * those from 0x80 up) stay. No locale is consulted.
 *
 * @param[in,out] text The narrow string changed.
 * @return @p text.
 */
char *GLIB_strlwr(char *text) GLIB_NOEXCEPT;

/**
 * Folds the bytes 'a' to 'z' of a narrow string to upper case, in place; other bytes (also
 * those from 0x80 up) stay. No locale is consulted.
 *
 * @param[in,out] text The narrow string changed.
 * @return @p text.
 */
char *GLIB_strupr(char *text) GLIB_NOEXCEPT;

/**
 * Copies a narrow string through its terminator into wide units.
 *
 * Each byte below 0x80 becomes the unit of the same value; each byte from 0x80 up becomes '?'.
 * Narrow text is not decoded (no UTF-8).
 *
 * @param[out] dst Destination of strlen(src) + 1 units.
 * @param[in]  src The narrow string.
 * @return @p dst.
 */
GLIB_WChar *GLIB_strwcscpy(GLIB_WChar *dst, const char *src) GLIB_NOEXCEPT;

/**
 * Copies at most @p n bytes of a narrow string into wide units with the rules of `strncpy`.
 *
 * Bytes are mapped as by GLIB_strwcscpy (from 0x80 up to '?'). The rest of the @p n units is
 * filled with 0 units behind the source's end; a source of @p n bytes or more gives exactly
 * @p n units and no terminator; @p n = 0 writes nothing.
 *
 * @param[out] dst Destination of @p n units.
 * @param[in]  src The narrow string.
 * @param[in]  n   Number of units written.
 * @return @p dst.
 */
GLIB_WChar *GLIB_strwcsncpy(GLIB_WChar *dst, const char *src, size_t n) GLIB_NOEXCEPT;

/**
 * Makes a new wide copy of a narrow string, allocated with `malloc`.
 *
 * The block has room for strlen(text) + 1 units; each byte becomes the unit of the same value.
 * Nothing is recorded on failure.
 *
 * @warning Copying stops at the first byte from 0x80 up: the units before it are set, and the
 * rest of the block, terminator included, is left unset. Callers that need a terminated result
 * pass 7-bit text only. Kept for compatibility.
 *
 * @param[in] text The narrow string; may be null.
 * @return The new wide string, which the caller releases with `free` (not MMFLAT_Free); null
 *         for a null @p text or a failed allocation.
 */
GLIB_WChar *GLIB_strtowcs(const char *text) GLIB_NOEXCEPT;

/**
 * Reads the decimal value at the start of a wide string.
 *
 * At most the first 20 units are read, each taken as its low byte (so U+0131 reads as '1'),
 * and converted like `strtol` in base 10: leading white space and a sign are allowed and the
 * conversion stops at the first non-digit. Units after the twentieth are ignored.
 *
 * @param[in] text The wide string.
 * @return The value, saturated to the signed 32-bit range (the same on every platform); 0 when
 *         there is no digit.
 */
int32_t GLIB_wtoi(const GLIB_WChar *text) GLIB_NOEXCEPT;

/** @} */

/**
 * @name Pattern matching
 * Whole-value matching in the style of the SQL LIKE predicate: `%` stands for any run of
 * characters (also none), `_` for exactly one character, and a backslash makes the next
 * pattern character literal (the pattern `a\%` matches the value `a%` only). The match is
 * anchored at both ends. An empty pattern matches only the empty value; the empty value matches
 * the empty pattern and patterns made only of `%`. A backslash at the very end of the pattern
 * matches nothing at that place (a mismatch, which an earlier `%` may still resume). The pattern
 * always comes first; neither argument may be null.
 */
/** @{ */

/**
 * Tells whether a whole narrow value matches a pattern, comparing bytes exactly.
 *
 * `%` any run, `_` exactly one byte, backslash escape. Case-sensitive; bytes from 0x80 up are
 * compared as they are (no UTF-8: `_` matches one byte). Examples: "a%" matches "a" and "abc";
 * "a_c" matches "abc" but not "ac"; "%_" needs at least one character.
 *
 * @param[in] pattern The pattern.
 * @param[in] value   The value matched as a whole.
 * @retval 1 The whole value matches the whole pattern.
 * @retval 0 It does not.
 */
int GLIB_ValueMatchesPattern(const char *pattern, const char *value) GLIB_NOEXCEPT;

/**
 * Tells whether a whole wide value matches a wide pattern, comparing units exactly.
 *
 * The rules of GLIB_ValueMatchesPattern over 16-bit units: `_` matches one unit (a character
 * written as a surrogate pair needs two). Case-sensitive.
 *
 * @param[in] pattern The wide pattern.
 * @param[in] value   The wide value matched as a whole.
 * @retval 1 The whole value matches the whole pattern.
 * @retval 0 It does not.
 */
int GLIB_ValueMatchesPatternW(const GLIB_WChar *pattern, const GLIB_WChar *value) GLIB_NOEXCEPT;

/**
 * Tells whether a whole narrow value matches a pattern written with the caller's wildcards,
 * optionally ignoring case.
 *
 * The three characters of @p wildcards replace `%`, `_` and the backslash, which are then
 * ordinary characters (unless chosen again). When @p ignoreCase is non-zero, each pattern
 * character is compared with the value character through the current locale's `tolower` table
 * (each byte taken as a signed char), also a character written behind the escape; the wildcard
 * and escape characters themselves are always recognised exactly. With the set "*?!" and the
 * flag set, "A*" matches "abc"; with the flag clear it does not.
 *
 * @param[in] pattern    The pattern.
 * @param[in] value      The value matched as a whole.
 * @param[in] wildcards  Three characters, read exactly (no terminator needed): any run, any one,
 *                       escape.
 * @param[in] ignoreCase Non-zero: compare through the locale's `tolower`; 0: exactly.
 * @retval 1 The whole value matches the whole pattern.
 * @retval 0 It does not.
 */
int GLIB_ValueMatchesPatternEx(const char *pattern, const char *value, const char *wildcards,
                               uint32_t ignoreCase) GLIB_NOEXCEPT;

/** @} */

/**
 * @name Formatted output
 * The library's own bounded formatter, one engine for narrow (byte) and wide (16-bit unit)
 * output. Its size rules and conversions differ from C's `snprintf`; they are described at
 * GLIB_vsnprintf and hold for all four functions.
 */
/** @{ */

/**
 * Formats an argument list into a byte buffer under a size bound, with the library's own rules.
 *
 * **Size and termination.**
 * - A @p size of 0 returns 0 at once: nothing is written, not even a terminator.
 * - Single characters (literal text, escapes, "%%", "%c", padding spaces and zeros, the sign
 *   and the `0x` prefix) are stored one by one while the count is at most size - 1: they may
 *   fill positions 0 to size - 1, and the terminator then lands at `buf[size]`. The buffer must
 *   hold size + 1 bytes. Kept for compatibility: callers size their buffers this way.
 * - Whole pieces (the characters of a string, the digits of a number, floating and pointer
 *   text, UTF-8 text) must fit the room size - count - 1, which leaves the terminator inside
 *   @p size. Once single characters have filled the output up to position size there is no
 *   room at all (a room below 0 counts as 0); an empty piece always fits.
 * - When the format ends, the terminator is stored behind the output and the count returned.
 *   A format that ends inside a conversion or an escape (`abc%`, `abc%5`, a last backslash)
 *   ends the output there: the unfinished part prints nothing and the count is returned.
 * - When the output is full or the format is invalid, the output is terminated behind what was
 *   written and -1 is returned. A string, number, floating or pointer text that does not fit
 *   whole is first copied in part (size - count - 1 bytes). UTF-8 text of "%ls" and "%lc" is
 *   not cut: the terminator lands where it would have begun (bytes of whole characters that
 *   did fit may remain behind the terminator, inside the room).
 *
 * **Escapes.** Backslash escapes written in the format text itself (the two characters
 * backslash and `n`, as the C source literal `"\\n"` gives them) are interpreted: `\\` gives a
 * backslash, and `\a`, `\b`, `\f`, `\n`, `\r`, `\t`, `\v` give the bytes 7, 8, 12, 10, 13,
 * 9, 11. Any other character behind a backslash (`\q`) is invalid. An escape is one single
 * character.
 *
 * **Conversions**, written `%`, flags, width, precision, length, conversion character:
 * - Flags `-`, `+`, `0`, space and `#`, repeatable and in any order. `%%` prints `%`, also
 *   behind flags.
 * - Width: decimal digits or `*` (an `int` argument; a negative one sets `-` and its magnitude
 *   is taken). Digits and `*` accumulate: `%*5d` has the width 10 times the argument plus 5.
 * - Precision: `.` and decimal digits or `*` (an `int` argument, a negative one meaning none). A
 *   second `.` is invalid.
 * - Length `h`: integers from their low 16 bits (sign-extended for `d` and `i`, zero-extended
 *   otherwise). Length `l` selects wide arguments for `c` and `s` and changes nothing for
 *   integers: integers are always 32 bits, one `int` or `unsigned int` argument is read, and
 *   `ll` is the same as `l` (pass 32-bit values, never 64-bit ones).
 * - `d`, `i` signed decimal; `u` unsigned decimal; `o` octal; `x`, `X` hexadecimal with lower-
 *   or upper-case letters, `#` adding `0x` or `0X` except for the value 0. The precision is the
 *   least number of digits (the `0` flag is then ignored); precision 0 with the value 0 gives no
 *   digits. `+` and space give the sign of non-negative signed values. A precision above 127 is
 *   invalid.
 * - `o` carries a leading `0` also without `#` (8 gives `010`, 0 gives `00`), except when an
 *   earlier integer conversion of the same call left a `0` just in front of where the digits
 *   begin: "%o %o" of 8 and 8 gives "010 10". Kept as is.
 * - `c`: the low byte of an `int` argument as one literal character; width and flags are
 *   ignored, and a 0 byte is stored and counted.
 * - `s`: a narrow string; the precision is the largest number of bytes taken, the width pads
 *   with spaces (the `0` flag has no effect). A null argument prints `(null)`
 *   (#gGLIB_nullstring), cut by a precision too.
 * - `ls`: a #GLIB_WChar string written as UTF-8, each unit encoded on its own (a surrogate pair
 *   gives two 3-byte sequences). Width and precision count UTF-8 bytes; under a precision p,
 *   units are taken while the byte total is below p, so the character that reaches or passes p
 *   is written whole (a 3-byte character under `%.2ls`). A null argument prints `(null)`.
 * - `lc`: the `int` argument (normally a #GLIB_WChar) as one UTF-8 character of 1 to 6 bytes
 *   (a value above 0xFFFF is encoded too: 0x10FFFF gives 4 bytes); no width or padding.
 * - `p`: exactly eight upper-case hexadecimal digits of the pointer's low 32 bits, without
 *   `0x`; flags, width and precision are ignored.
 * - `e`, `E`, `f`, `g`, `G`: a `double`, written by the C library's `sprintf` with the same
 *   flags, width and precision. A width or precision above 128 is invalid.
 * - Every other conversion character is invalid: among them `F`, `a`, `n`, `L`, `q`, `j`,
 *   `z`, `t`, `C`, `S`, `I`, and characters such as `k` or `!`.
 *
 * @param[out] buf    Output of size + 1 bytes (see above); untouched when @p size is 0.
 * @param[in]  size   The size bound, in bytes; 0 writes nothing.
 * @param[in]  format The format text, NUL-terminated.
 * @param[in]  args   The arguments of the conversions.
 * @return The number of bytes written (terminator not counted; a "%c" of 0 counts); 0 for a
 *         @p size of 0; -1 when the output is full or the format is invalid (output terminated
 *         behind what was written).
 * @see GLIB_snprintf, GLIB_vswprintf
 */
int GLIB_vsnprintf(char *buf, size_t size, const char *format, va_list args) GLIB_NOEXCEPT;

/**
 * Formats variable arguments into a byte buffer under a size bound, as GLIB_vsnprintf.
 *
 * Examples: size 4 with the literal format `abcd` stores four bytes and the terminator in the
 * fifth and returns 4; "%s" of "abcd" with size 4 stores "abc" and returns -1; "%s" of "abc"
 * with size 4 returns 3.
 *
 * @param[out] buf    Output of size + 1 bytes; untouched when @p size is 0.
 * @param[in]  size   The size bound, in bytes; 0 writes nothing.
 * @param[in]  format The format text, NUL-terminated (rules at GLIB_vsnprintf).
 * @param[in]  ...    The arguments of the conversions.
 * @return The result of GLIB_vsnprintf: the count of bytes written, 0 for a @p size of 0, or -1.
 */
int GLIB_snprintf(char *buf, size_t size, const char *format, ...) GLIB_NOEXCEPT;

/**
 * Formats an argument list into a buffer of 16-bit units under a size bound.
 *
 * The engine and rules of GLIB_vsnprintf, with size, count and result in units (the buffer
 * needs size + 1 units). Where the wide engine differs:
 * - "%s" (and floating and pointer text): each byte below 0x80 becomes the unit of the same
 *   value, each byte from 0x80 up becomes '?' (no UTF-8 decoding).
 * - "%ls": copied unit for unit; its length is GLIB_wcslen without a precision. Under a
 *   precision p the number of units is the length, at most p, of the narrow string last fetched
 *   by "%s" in the same call (0 before any), kept for compatibility; units beyond the wide
 *   string's end are written as 0 units and counted.
 * - "%lc": the argument's low 16 bits as one single unit.
 * - "%c": the low byte sign-extended to 16 bits, so a byte from 0x80 up gives a unit from
 *   0xFF80 up. Kept as is.
 *
 * @param[out] buf    Output of size + 1 units; untouched when @p size is 0.
 * @param[in]  size   The size bound, in units; 0 writes nothing.
 * @param[in]  format The wide format text, ended by a 0 unit.
 * @param[in]  args   The arguments of the conversions.
 * @return The number of units written (terminator not counted); 0 for a @p size of 0; -1 when
 *         the output is full or the format is invalid (output terminated behind what was
 *         written).
 * @see GLIB_swprintf
 */
int GLIB_vswprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format,
                   va_list args) GLIB_NOEXCEPT;

/**
 * Formats variable arguments into a buffer of 16-bit units under a size bound, as
 * GLIB_vswprintf.
 *
 * @param[out] buf    Output of size + 1 units; untouched when @p size is 0.
 * @param[in]  size   The size bound, in units; 0 writes nothing.
 * @param[in]  format The wide format text, ended by a 0 unit (rules at GLIB_vsnprintf and
 *                    GLIB_vswprintf).
 * @param[in]  ...    The arguments of the conversions.
 * @return The result of GLIB_vswprintf: the count of units written, 0 for a @p size of 0, or
 *         -1.
 */
int GLIB_swprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, ...) GLIB_NOEXCEPT;

/** @} */

/**
 * @name Strings, environment, file system, time, random numbers
 */
/** @{ */

/** GLIB_strtrim option: remove the blanks at the start. */
#define GLIB_TRIM_START 1u
/** GLIB_strtrim option: remove the blanks at the end. */
#define GLIB_TRIM_END 2u
/** GLIB_strtrim option: the tab (9) counts as a blank. */
#define GLIB_TRIM_TAB 4u
/** GLIB_strtrim option: carriage return (13) and line feed (10) count as blanks. */
#define GLIB_TRIM_CRLF 8u

/**
 * Removes blanks from the start and/or the end of a narrow string, in place.
 *
 * The space is always a blank; the tab, carriage return and line feed only when the options
 * say so, and no other character ever is (no locale class is used). At the start, the rest of
 * the string (with its terminator) is moved to the front; at the end, the string is ended behind
 * its last non-blank. A string of blanks becomes empty. Without #GLIB_TRIM_START and
 * #GLIB_TRIM_END nothing changes.
 *
 * @param[in,out] text    The narrow string changed.
 * @param[in]     options Bits #GLIB_TRIM_START, #GLIB_TRIM_END, #GLIB_TRIM_TAB, #GLIB_TRIM_CRLF.
 */
void GLIB_strtrim(char *text, uint32_t options) GLIB_NOEXCEPT;

/**
 * Copies the start of a narrow string up to its first white-space character.
 *
 * Characters are copied until a white-space character (the current locale's class), the
 * terminator, or @p n characters; then a terminator is stored.
 *
 * @param[out] dst Destination of @p n + 1 bytes; may be null (nothing is done).
 * @param[in]  src The narrow string; may be null (nothing is done).
 * @param[in]  n   Largest number of characters copied; 0 or less stores only the terminator.
 * @return @p dst (also when it or @p src is null).
 */
char *GLIB_CopyNonBlanks(char *dst, const char *src, int32_t n) GLIB_NOEXCEPT;

/**
 * Skips the white space at the start of a narrow string (the current locale's class).
 *
 * @param[in] text The narrow string.
 * @return A pointer into @p text (not const) to its first non-white-space character, or to its
 *         terminator when there is none.
 */
char *GLIB_ExtSkipBlanks(const char *text) GLIB_NOEXCEPT;

/**
 * Tells whether every character of a narrow string is a decimal digit (the current locale's
 * class).
 *
 * @param[in] text The narrow string.
 * @retval 1 Every character is a digit; also for the empty string, which callers rely on.
 * @retval 0 A character is not a digit (" 1" and "12a" give 0).
 */
int GLIB_AreDigits(const char *text) GLIB_NOEXCEPT;

/**
 * Reads a decimal value like `strtol` in base 10, with an end position of its own.
 *
 * The value is the C library's `strtol` of the whole text, saturated to the signed 32-bit
 * range (the same on every platform). The end position is not taken from `strtol`: any mix of
 * leading white space, '+' and '-' is skipped, then the decimal digits that follow; the end lies
 * behind them. So for "+-5" the end lies behind the 5 while the value is 0, and for "  abc" it
 * lies on the 'a'. Callers rely on this end position; kept as it is.
 *
 * @param[in]  text The narrow string.
 * @param[out] end  Optional (may be null): receives the end position within @p text (the
 *                  terminator when nothing but white space and signs is there).
 * @return The value; 0 when there is no number.
 */
int32_t GLIB_strtol(const char *text, char **end) GLIB_NOEXCEPT;

/**
 * Makes a copy of a text in which every `${NAME}` reference is replaced by the value of the
 * environment variable NAME.
 *
 * A `$` directly followed by `{` starts a reference that runs to the next `}`; the reference
 * produces the variable's value, or nothing when the variable is unset or the name has 63
 * characters or more. Without a closing `}` the `$` is an ordinary character. No other syntax
 * is recognised: `$NAME` stays text, references do not nest (the name runs to the first `}`)
 * and there is no escape for `$`. Example: `x${HOME}y` with HOME set to "/h" gives "x/hy".
 *
 * The result is allocated with MMFLAT_New and grown with MMFLAT_Resize for each variable found.
 * When an allocation fails, the checked allocator pushes its record onto @p stack (source path
 * "glib/glibenv.cpp", line 3772 for the first block, 3807 for growing it), the block allocated
 * so far is released, and null is returned.
 *
 * @param[in]     source The text, NUL-terminated.
 * @param[in,out] stack  Optional error stack for the allocator's record; null: nothing is
 *                       recorded.
 * @return The expanded text, which the caller releases with MMFLAT_Free; null when an
 *         allocation fails.
 */
char *GLIB_ExpandEnvStrings(const char *source, ERRLIB_ErrorStack *stack) GLIB_NOEXCEPT;

/**
 * Makes a copy of the value of an environment variable, through the checked allocator.
 *
 * The value is `getenv(name)`, copied with MMFLAT_StrDup (an empty value gives an empty copy).
 * When the copy fails, the checked allocator pushes its record onto @p stack (source path
 * "glib/glibenv.cpp", line 2668).
 *
 * @param[in]     name  The variable's name, NUL-terminated.
 * @param[in,out] stack Optional error stack for the allocator's record; null: nothing is
 *                      recorded.
 * @return The copy, which the caller releases with MMFLAT_Free; null when the variable is unset
 *         (nothing recorded) or when the copy fails (recorded on @p stack).
 */
char *GLIB_MMStrDup_getenv(const char *name, ERRLIB_ErrorStack *stack) GLIB_NOEXCEPT;

/**
 * Creates every missing directory along a path, then the path itself.
 *
 * The path is split at every '/' and every '(' from its second character on (a leading '/' is
 * not a split point; '(' is a separator too, which paths in use depend on). At each split point
 * the path is ended there for the moment; when that prefix does not exist (`access` with
 * `F_OK`: any kind of file counts), it is created with `mkdir(prefix, mode)`; the separator is
 * then put back. Finally the whole path is created unless it exists. "a/b/c" creates "a",
 * "a/b" and "a/b/c" as needed; "/x" tries only "/x".
 *
 * @param[in,out] path The path, NUL-terminated and writable: changed during the call and
 *                     restored, except when creating a prefix fails.
 * @param[in]     mode The mode passed unchanged to `mkdir` (the process's umask applies).
 * @retval 0  Every level exists or was created.
 * @retval -1 A `mkdir` failed (`errno` tells why; an empty path fails too). The path then stays
 *            ended at the failing prefix (its separator is replaced by a terminator).
 */
int GLIB_mkdirp(char *path, mode_t mode) GLIB_NOEXCEPT;

/**
 * Writes the `ctime_r` text of a time without its line feed, cut to fit a buffer.
 *
 * The text (local time, such as "Sat Nov 21 06:24:39 2026", 24 characters) loses its final
 * line feed, is copied with `strncpy` (zero-filled behind a shorter text) into at most @p size
 * bytes, and `dst[size - 1]` is set to the terminator: the text is cut to size - 1 characters
 * (25 bytes hold it whole). A time that `ctime_r` cannot represent gives the empty text.
 *
 * @param[in]  t    The time.
 * @param[out] dst  Destination of @p size bytes; may be null (nothing is written).
 * @param[in]  size Size of @p dst in bytes; 0 writes nothing.
 * @return @p dst (null when it is null).
 */
char *GLIB_ctime(time_t t, char *dst, size_t size) GLIB_NOEXCEPT;

/**
 * Returns the next value of a seedable linear congruential generator.
 *
 * The seed becomes seed * 1103515245 + 12345 (modulo 2^32); the result is bits 16 to 30 of the
 * new seed.
 * The whole state is the caller's seed: seed 0 returns 0 and leaves 12345, and the next call
 * returns 21468.
 *
 * @param[in,out] seed The generator state, updated.
 * @return A value from 0 to 32767.
 */
int32_t GLIB_rand(uint32_t *seed) GLIB_NOEXCEPT;

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_GLIB_H */
