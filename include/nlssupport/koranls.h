/* SPDX-License-Identifier: MIT */
/**
 * @file koranls.h
 * @brief Code-page services: the text encoding of the current process locale.
 *
 * Both functions read the code set of the locale currently set for the process (the caller
 * chooses it with `setlocale`) through `nl_langinfo(CODESET)`: KORANLS_GetOsCodePageName gives
 * it as the operating system names it, KORANLS_GetOsCodePageIanaName as its preferred IANA name
 * from the character-set registry (ianacs.h), falling back to the operating system's name.
 *
 * They return 0 on success and 1 on failure. The only failure they record is an empty code set:
 * one record (component #ERRLIB_COMPONENT_NLSSUPPORT, code #KORANLS_ERR_NO_CODESET, class
 * #KORANLS_CLASS_NLS) is pushed onto the optional error stack passed by the caller (null: nothing
 * is recorded). Nothing is allocated: the caller owns the buffer and the stack, and takes the
 * record off the stack (and releases it) as for any other error.
 */
#ifndef NLSSUPPORT_KORANLS_H
#define NLSSUPPORT_KORANLS_H

#include <stdint.h>

#include <nlssupport/errlib.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef KORANLS_NOEXCEPT
#ifdef __cplusplus
/** Marks the functions of this header: `noexcept` for C++ callers, nothing for C. */
#define KORANLS_NOEXCEPT noexcept
#else
#define KORANLS_NOEXCEPT
#endif
#endif

/**
 * @name Error of the code-page services
 * The record pushed when the locale reports an empty code set: component
 * #ERRLIB_COMPONENT_NLSSUPPORT (50), this code and class, origin null, function
 * "KORANLS_GetOsCodePageName", file null, line 170, message null. The record names no source
 * file; callers identify it by its code, class, function and line.
 */
/** @{ */
/** Code of the error pushed when the locale reports an empty code set. */
#define KORANLS_ERR_NO_CODESET 2
/** Class of the error pushed when the locale reports an empty code set. */
#define KORANLS_CLASS_NLS 21
/** @} */

/**
 * Copies the operating system's name of the current code set into a caller's buffer.
 *
 * The name is `nl_langinfo(CODESET)` of the current locale (for example "ANSI_X3.4-1968" in the
 * "C" locale, "UTF-8" in a UTF-8 locale). It is copied as a bounded "%s" formatting copies it:
 * at most size - 1 characters, then the terminator. A longer name is cut silently to its first
 * size - 1 characters and the call still returns 0 (size 3 in a UTF-8 locale gives "UT"); size 1
 * gives "". A size of 0 or less writes nothing.
 *
 * An empty code set pushes the error described under #KORANLS_ERR_NO_CODESET onto @p stack,
 * leaves the buffer untouched and returns 1; the code set is read before the buffer is looked
 * at, so this happens also for a null buffer.
 *
 * @param[out]    buffer Receives the name and its terminator, within @p size bytes. May be null
 *                       only when @p size is 0 or less.
 * @param[in]     size   Size of @p buffer in bytes (signed); 0 or less: nothing is written.
 * @param[in]     flag   Accepted and ignored (callers pass 0 or 1); kept so that existing callers
 *                       link unchanged.
 * @param[in,out] stack  Optional error stack that receives the empty-code-set record; null:
 *                       nothing is recorded.
 * @retval 0 The name was copied (possibly cut), or nothing was written because @p size is 0 or
 *           less.
 * @retval 1 The code set is empty (one record pushed, buffer untouched), or @p buffer is null
 *           with a positive @p size (nothing recorded).
 * @see KORANLS_GetOsCodePageIanaName
 */
int KORANLS_GetOsCodePageName(char *buffer, int32_t size, int32_t flag,
                              ERRLIB_ErrorStack *stack) KORANLS_NOEXCEPT;

/**
 * Stores the preferred IANA name of the current code set in a caller's buffer, or else the
 * operating system's own name.
 *
 * Steps: the buffer is emptied (`buffer[0]` = terminator); the operating-system name is copied
 * into it as by KORANLS_GetOsCodePageName with @p size (cut to size - 1 characters); that text,
 * as it now stands in the buffer, is looked up with IANACSOS_GetMibEnum; the MIBenum found is
 * looked up with IANACS_GetInfo; when the preferred name has at most @p size characters, it and
 * its terminator replace the buffer's content. Examples: "ANSI_X3.4-1968" gives "US-ASCII",
 * "BIG5" gives "Big5", "TIS-620" gives "TIS620", "UTF-8" stays "UTF-8".
 *
 * The status does not tell which name the buffer holds: a code set that is not in
 * #gIANACSOS_AliasTab (such as "ISO-8859-4", or a name cut by a small @p size), or whose row has
 * no information (the -1 rows "EUC-TW" and "BIG5HKSCS"), leaves the operating-system name in
 * the buffer and returns 0. Callers that need to know look the text up again (the report
 * command calls IANACS_GetMibEnum on it).
 *
 * @warning The fit test compares the preferred name's length with @p size itself, not with
 * size - 1: a name of exactly @p size characters is accepted and its terminator is written at
 * `buffer[size]`. Callers pass a buffer of at least size + 1 bytes whenever a preferred name of
 * exactly @p size characters can occur (the longest has 45 characters). Kept for compatibility.
 *
 * @param[out]    buffer Receives the name and its terminator; size + 1 bytes (see the warning),
 *                       so at least one byte: buffer[0] is set to the terminator first,
 *                       whatever the size. Must not be null (a null buffer returns 1 at once,
 *                       nothing read or recorded).
 * @param[in]     size   Number of characters the name may have (signed). 0 or less: the buffer
 *                       reads "" (only buffer[0] is written) and only the code set is read
 *                       (status as below).
 * @param[in,out] stack  Optional error stack that receives the empty-code-set record of
 *                       KORANLS_GetOsCodePageName; null: nothing is recorded.
 * @retval 0 The buffer holds the preferred IANA name; or it holds the operating-system name
 *           because that name is unknown to #gIANACSOS_AliasTab or its MIBenum has no
 *           information row; or @p size is 0 or less and the code set could be read (buffer
 *           "").
 * @retval 1 The code set is empty (buffer "", one record pushed onto
 *           @p stack); or the preferred name is longer than @p size (the buffer keeps the
 *           operating-system name, nothing recorded; e.g. "EUC-JP", whose preferred name has 45
 *           characters, with size 41); or @p buffer is null.
 * @see KORANLS_GetOsCodePageName, IANACSOS_GetMibEnum, IANACS_GetInfo
 */
int KORANLS_GetOsCodePageIanaName(char *buffer, int32_t size,
                                  ERRLIB_ErrorStack *stack) KORANLS_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_KORANLS_H */
