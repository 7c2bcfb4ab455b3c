/*
 * koranls.h - code-page services: the text encoding of the current process locale.
 *
 * Both functions read the code set of the locale currently set for the process (the caller
 * chooses it with setlocale) and report a failure on an optional error stack (null: nothing is
 * recorded). They return 0 on success and 1 on failure.
 */
#ifndef KORANLS_H
#define KORANLS_H

#include <stdint.h>

#include "errlib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef KORANLS_NOEXCEPT
#ifdef __cplusplus
#define KORANLS_NOEXCEPT noexcept
#else
#define KORANLS_NOEXCEPT
#endif
#endif

/* Code of the error pushed when the locale reports an empty code set (class 21, component 50). */
#define KORANLS_ERR_NO_CODESET 2
#define KORANLS_CLASS_NLS 21

/*
 * Copies the operating system's name of the current code set (nl_langinfo(CODESET)) into
 * `buffer` of `size` bytes: at most size - 1 characters and a terminator; a longer name is cut
 * silently and still returns 0. A size of 0 or less writes nothing. `flag` is accepted and
 * ignored (callers pass 0 or 1). An empty code set pushes one error (component 50, code 2,
 * class 21, function "KORANLS_GetOsCodePageName", line 170) on `stack`, leaves the buffer
 * untouched and returns 1. A null buffer with a positive size returns 1 without a record.
 */
int KORANLS_GetOsCodePageName(char *buffer, int32_t size, int32_t flag,
                              ERRLIB_ErrorStack *stack) KORANLS_NOEXCEPT;

/*
 * Stores the preferred IANA name of the current code set in `buffer`. The buffer is first
 * emptied, then receives the operating-system name (as KORANLS_GetOsCodePageName with `size`);
 * when that name is in the operating-system table and its MIBenum has a preferred name of at most
 * `size` characters, the preferred name and its terminator replace it. Note: a name of exactly
 * `size` characters is accepted and its terminator is written at buffer[size], so the buffer
 * must hold size + 1 bytes whenever such a name can occur.
 * Returns 0 with the preferred name, and also 0 with the operating-system name when that name
 * is not in the table or its MIBenum has no information. Returns 1 when the code set cannot be
 * read (buffer "", error on `stack`) and when the preferred name is longer than `size` (buffer
 * holds the operating-system name, nothing recorded). A null buffer returns 1; a size of 0 or
 * less leaves the buffer untouched (the status is then that of reading the code set).
 */
int KORANLS_GetOsCodePageIanaName(char *buffer, int32_t size,
                                  ERRLIB_ErrorStack *stack) KORANLS_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* KORANLS_H */
