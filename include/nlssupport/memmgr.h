/* SPDX-License-Identifier: MIT */
/**
 * @file memmgr.h
 * @brief The checked allocator.
 *
 * Wraps the system allocator so that every failed allocation is reported on the caller's error
 * stack, with the call site that asked for the memory. Every allocating function takes, after its
 * own arguments, the optional stack (null: the failure is only seen in the null result), the
 * caller's source path and the caller's source line; path and line only end up in the error
 * record. Every block is released with MMFLAT_Free. The allocator keeps no state of its own.
 *
 * A failed allocation fills the stack's reserved memory-error record (see errlib.h), which needs
 * no memory: component 50, code 1, class #ERRLIB_CLASS_MEMORY, function "malloc", "calloc" or
 * "realloc", the caller's file (its last 50 characters) and line, and as message the requested
 * size written with "%d", so that a size above 2147483647 reads as a negative number (callers
 * match on this text). Nothing is printed and nothing aborts.
 */
#ifndef NLSSUPPORT_MEMMGR_H
#define NLSSUPPORT_MEMMGR_H

#include <stdint.h>

#include <nlssupport/errlib.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef MMFLAT_NOEXCEPT
#ifdef __cplusplus
/** Marks the functions of this header: `noexcept` for C++ callers, nothing for C. */
#define MMFLAT_NOEXCEPT noexcept
#else
#define MMFLAT_NOEXCEPT
#endif
#endif

/**
 * Allocates `size` bytes (malloc).
 *
 * @param[in]     size  Bytes wanted.
 * @param[in,out] stack Receives the failure ("malloc"), or null.
 * @param[in]     file  Caller's source path for the report, NUL-terminated, or null.
 * @param[in]     line  Caller's source line for the report.
 * @return The block, freed by the caller with MMFLAT_Free; null when the system cannot satisfy
 *         the request.
 */
void *MMFLAT_New(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                 int32_t line) MMFLAT_NOEXCEPT;
/**
 * Allocates a zero-filled block of `size` bytes (calloc(1, size)).
 *
 * @param[in]     size  Bytes wanted.
 * @param[in,out] stack Receives the failure ("calloc"), or null.
 * @param[in]     file  Caller's source path for the report, NUL-terminated, or null.
 * @param[in]     line  Caller's source line for the report.
 * @return The block, freed by the caller with MMFLAT_Free; null on failure.
 */
void *MMFLAT_NewClear(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                      int32_t line) MMFLAT_NOEXCEPT;
/**
 * Resizes a block (realloc), keeping its contents up to the smaller of the two sizes.
 *
 * @note A size of 0 for an existing block gives a block of one byte: the system's realloc would
 * free the block and return null, which a caller could not tell from a failure that keeps it.
 *
 * @param[in]     block The block to resize, or null for a new block.
 * @param[in]     size  Bytes wanted.
 * @param[in,out] stack Receives the failure ("realloc"), or null.
 * @param[in]     file  Caller's source path for the report, NUL-terminated, or null.
 * @param[in]     line  Caller's source line for the report.
 * @return The resized block, which replaces `block` (freed with MMFLAT_Free). Null on failure:
 *         the old block is then untouched and still the caller's, who must keep its pointer.
 */
void *MMFLAT_Resize(void *block, uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                    int32_t line) MMFLAT_NOEXCEPT;
/**
 * Copies a NUL-terminated byte string into a new block of its length + 1 bytes.
 *
 * @param[in]     text  The text. Null is reported on `stack` (component 50, code 2, class 2,
 *                      origin "MMFLAT_StrDup", the caller's file and line) and gives null.
 * @param[in,out] stack Receives the failure, or null.
 * @param[in]     file  Caller's source path for the report, NUL-terminated, or null.
 * @param[in]     line  Caller's source line for the report.
 * @return The copy, freed by the caller with MMFLAT_Free ("" gives a one-byte block); null for a
 *         null text or a failed allocation (reported as "malloc" with the caller's call site).
 */
char *MMFLAT_StrDup(const char *text, ERRLIB_ErrorStack *stack, const char *file,
                    int32_t line) MMFLAT_NOEXCEPT;
/**
 * Copies a string of 16-bit units ended by a zero unit: the units up to and including the zero
 * unit, two bytes each, whatever the width of the platform's wchar_t ("AB" gives 6 bytes).
 *
 * @param[in]     text  The text. Null is reported on `stack` (component 50, code 2, class 2,
 *                      origin "MMFLAT_WcsDup", the caller's file and line) and gives null.
 * @param[in,out] stack Receives the failure, or null.
 * @param[in]     file  Caller's source path for the report, NUL-terminated, or null.
 * @param[in]     line  Caller's source line for the report.
 * @return The copy, freed by the caller with MMFLAT_Free; null for a null text or a failed
 *         allocation (reported as "malloc").
 */
uint16_t *MMFLAT_WcsDup(const uint16_t *text, ERRLIB_ErrorStack *stack, const char *file,
                        int32_t line) MMFLAT_NOEXCEPT;
/**
 * Releases a block of this allocator (free), or of any function of the library documented as
 * returning memory to be freed with MMFLAT_Free.
 *
 * @param[in] block The block, or null (ignored).
 */
void MMFLAT_Free(void *block) MMFLAT_NOEXCEPT;
/**
 * Tells whether a size is valid for this allocator: every size is.
 *
 * @return Always 1.
 */
int MMFLAT_ValidSize(void) MMFLAT_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_MEMMGR_H */
