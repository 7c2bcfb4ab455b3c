/*
 * glib.h - the general library.
 *
 * Wide-character strings of 16-bit code units, SQL-LIKE pattern matching, a bounded formatter of
 * its own (narrow and wide), and small string, environment, file-system, time and random-number
 * services.
 *
 * The library's wide character is GLIB_WChar, an unsigned 16-bit code unit whatever the width of
 * the platform's wchar_t; a wide string is an array of such units ended by a 0 unit. Case folding
 * in the wide-string functions is ASCII only ('A'-'Z' and 'a'-'z'). None of the string functions
 * checks its pointers unless stated, and none reports errors.
 */
#ifndef GLIB_H
#define GLIB_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>
#include <time.h>

#include "errlib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef GLIB_NOEXCEPT
#ifdef __cplusplus
#define GLIB_NOEXCEPT noexcept
#else
#define GLIB_NOEXCEPT
#endif
#endif

/* The library's wide character: one unsigned 16-bit code unit. */
typedef uint16_t GLIB_WChar;

/* "(null)": printed by the formatter for a null narrow string argument. */
extern const char gGLIB_nullstring[];
/* "(null)" in wide units: printed by the formatter for a null wide string argument. */
extern const GLIB_WChar gGLIB_nullwstring[];
/*
 * The directory separator set of GLIB_mkdirp: the two characters '/' '/' with no terminator.
 * GLIB_mkdirp splits a path at '/' and also at '(' (see there).
 */
extern const char gGLIB_DirSeparatorSet[2];

/* ---- Wide-character strings ---- */

/* Number of units before the 0 unit. */
size_t GLIB_wcslen(const GLIB_WChar *text) GLIB_NOEXCEPT;
/* Copies src through its 0 unit into dst; returns dst. */
GLIB_WChar *GLIB_wcscpy(GLIB_WChar *dst, const GLIB_WChar *src) GLIB_NOEXCEPT;
/* Appends src (with its 0 unit) behind the end of dst; returns dst. */
GLIB_WChar *GLIB_wcscat(GLIB_WChar *dst, const GLIB_WChar *src) GLIB_NOEXCEPT;
/*
 * strncpy in units: at most n units, the rest of the n filled with 0 after the source's 0 unit;
 * no terminator when src has n units or more; returns dst.
 */
GLIB_WChar *GLIB_wcsncpy(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) GLIB_NOEXCEPT;
/* Appends at most n units of src behind the end of dst and always a 0 unit; returns dst. */
GLIB_WChar *GLIB_wcsncat(GLIB_WChar *dst, const GLIB_WChar *src, size_t n) GLIB_NOEXCEPT;
/* Compares unit by unit (unsigned); returns exactly -1, 0 or 1. */
int GLIB_wcscmp(const GLIB_WChar *a, const GLIB_WChar *b) GLIB_NOEXCEPT;
/* Compares at most n units; returns a's unit minus b's unit at the first difference, or 0. */
int GLIB_wcsncmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) GLIB_NOEXCEPT;
/* Compares ignoring ASCII case; returns the difference of the lower-cased units at the stop. */
int GLIB_wcsicmp(const GLIB_WChar *a, const GLIB_WChar *b) GLIB_NOEXCEPT;
/* GLIB_wcsicmp over at most n units; n = 0 gives 0. */
int GLIB_wcsnicmp(const GLIB_WChar *a, const GLIB_WChar *b, size_t n) GLIB_NOEXCEPT;
/* First position of unit c in text (c = 0: the terminator), or null. */
GLIB_WChar *GLIB_wcschr(const GLIB_WChar *text, GLIB_WChar c) GLIB_NOEXCEPT;
/*
 * First occurrence of needle in haystack. An empty needle gives the haystack, but an empty
 * haystack gives null (also for an empty needle).
 */
GLIB_WChar *GLIB_wcsstr(const GLIB_WChar *haystack, const GLIB_WChar *needle) GLIB_NOEXCEPT;
/* Folds 'A'-'Z' to lower case in place; returns text. */
GLIB_WChar *GLIB_wcslwr(GLIB_WChar *text) GLIB_NOEXCEPT;
/* Folds 'a'-'z' to upper case in place; returns text. */
GLIB_WChar *GLIB_wcsupr(GLIB_WChar *text) GLIB_NOEXCEPT;
/* Folds 'A'-'Z' to lower case in place (bytes, ASCII only); returns text. */
char *GLIB_strlwr(char *text) GLIB_NOEXCEPT;
/* Folds 'a'-'z' to upper case in place (bytes, ASCII only); returns text. */
char *GLIB_strupr(char *text) GLIB_NOEXCEPT;
/*
 * Copies a narrow string through its terminator into wide units: bytes below 0x80 keep their
 * value, bytes from 0x80 up become '?'. Returns dst.
 */
GLIB_WChar *GLIB_strwcscpy(GLIB_WChar *dst, const char *src) GLIB_NOEXCEPT;
/* GLIB_strwcscpy with strncpy rules over n units; returns dst. */
GLIB_WChar *GLIB_strwcsncpy(GLIB_WChar *dst, const char *src, size_t n) GLIB_NOEXCEPT;
/*
 * A new wide copy from malloc (release with free), or null for a null text or a failed
 * allocation. Copying stops at the first byte from 0x80 up, leaving the copy unterminated:
 * callers that need a terminated result pass 7-bit text only.
 */
GLIB_WChar *GLIB_strtowcs(const char *text) GLIB_NOEXCEPT;
/* Decimal value of the first 20 units (their low bytes), read like strtol in base 10. */
int32_t GLIB_wtoi(const GLIB_WChar *text) GLIB_NOEXCEPT;

/* ---- Pattern matching (SQL LIKE: '%' any run, '_' any one, '\' escape) ---- */

/* 1 when the whole value matches the whole pattern, else 0. Case-sensitive. */
int GLIB_ValueMatchesPattern(const char *pattern, const char *value) GLIB_NOEXCEPT;
/* The same on wide strings. */
int GLIB_ValueMatchesPatternW(const GLIB_WChar *pattern, const GLIB_WChar *value) GLIB_NOEXCEPT;
/*
 * The same with the caller's wildcards: wildcards[0] any run, wildcards[1] any one, wildcards[2]
 * escape. A non-zero ignoreCase compares characters through the locale's tolower.
 */
int GLIB_ValueMatchesPatternEx(const char *pattern, const char *value, const char *wildcards,
                               uint32_t ignoreCase) GLIB_NOEXCEPT;

/* ---- Formatted output ---- */

/*
 * Bounded formatting into buf. Returns the number of characters written (terminator not
 * counted), or -1 when the output is full or the format is invalid; the output is always
 * terminated behind what was written. Size 0 writes nothing and returns 0. Literal characters
 * may fill positions 0 to size - 1, so the terminator can land at position size: buf needs room
 * for size + 1 characters. Backslash escapes written in the format (\\ \a \b \f \n \r \t \v) are
 * interpreted. Integers are 32 bits ('l' and 'h' as in printf, "ll" as "l"); "%ls" and "%lc" are
 * written as UTF-8; "%p" gives eight upper-case hexadecimal digits.
 */
int GLIB_vsnprintf(char *buf, size_t size, const char *format, va_list args) GLIB_NOEXCEPT;
/* GLIB_vsnprintf with variable arguments. */
int GLIB_snprintf(char *buf, size_t size, const char *format, ...) GLIB_NOEXCEPT;
/* The same engine over 16-bit units: size, count and result in units. */
int GLIB_vswprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format,
                   va_list args) GLIB_NOEXCEPT;
/* GLIB_vswprintf with variable arguments. */
int GLIB_swprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, ...) GLIB_NOEXCEPT;

/* ---- Strings, environment, file system, time, random numbers ---- */

/* Option bits of GLIB_strtrim. */
#define GLIB_TRIM_START 1u /* trim the start */
#define GLIB_TRIM_END 2u   /* trim the end */
#define GLIB_TRIM_TAB 4u   /* the tab counts as a blank */
#define GLIB_TRIM_CRLF 8u  /* carriage return and line feed count as blanks */

/* Trims blanks (the space, plus what the options add) in place. */
void GLIB_strtrim(char *text, uint32_t options) GLIB_NOEXCEPT;
/*
 * Copies src into dst up to a white-space character, the terminator or n characters, then
 * terminates dst (which needs n + 1 bytes). Null dst or src: nothing done. Returns dst.
 */
char *GLIB_CopyNonBlanks(char *dst, const char *src, int32_t n) GLIB_NOEXCEPT;
/* The first non-white-space character of text (its terminator if there is none). */
char *GLIB_ExtSkipBlanks(const char *text) GLIB_NOEXCEPT;
/* 1 if every character is a decimal digit (also for ""), else 0. */
int GLIB_AreDigits(const char *text) GLIB_NOEXCEPT;
/*
 * strtol in base 10, saturated to 32 bits. *end (when end is not null) is set behind the digits
 * that follow any leading white space and signs, whatever strtol took.
 */
int32_t GLIB_strtol(const char *text, char **end) GLIB_NOEXCEPT;
/*
 * A copy of source with every '${NAME}' replaced by the value of the environment variable NAME
 * (nothing for unset variables and names of 63 characters or more). The result comes from the
 * checked allocator (release with MMFLAT_Free); null when an allocation fails, reported on stack.
 */
char *GLIB_ExpandEnvStrings(const char *source, ERRLIB_ErrorStack *stack) GLIB_NOEXCEPT;
/*
 * A copy of the environment variable's value from the checked allocator (release with
 * MMFLAT_Free); null when unset (nothing reported) or when the copy fails (reported on stack).
 */
char *GLIB_MMStrDup_getenv(const char *name, ERRLIB_ErrorStack *stack) GLIB_NOEXCEPT;
/*
 * Creates every missing directory of path (split at '/' and '('), then path itself. The path is
 * modified during the call and restored, except on failure. Returns 0, or the failing mkdir
 * result (-1 with errno set).
 */
int GLIB_mkdirp(char *path, mode_t mode) GLIB_NOEXCEPT;
/*
 * ctime_r text of t without its line feed, cut to size - 1 characters and terminated in
 * dst[size - 1]. Returns dst (null if dst is null).
 */
char *GLIB_ctime(time_t t, char *dst, size_t size) GLIB_NOEXCEPT;
/* Next value (0..32767) of the linear congruential generator whose state is *seed. */
int32_t GLIB_rand(uint32_t *seed) GLIB_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* GLIB_H */
