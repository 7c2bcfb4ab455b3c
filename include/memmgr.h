/*
 * memmgr.h - the checked allocator.
 *
 * Wraps the system allocator so that every failed allocation is reported on the caller's error
 * stack (component 50, code 1, class 2, the failing call's name, the caller's source path and
 * line, and the requested size as "%d"). A null stack silences the report. Every block is released
 * with MMFLAT_Free.
 */
#ifndef MEMMGR_H
#define MEMMGR_H

#include <stdint.h>

#include "errlib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef MMFLAT_NOEXCEPT
#ifdef __cplusplus
#define MMFLAT_NOEXCEPT noexcept
#else
#define MMFLAT_NOEXCEPT
#endif
#endif

/* malloc(size); null on failure. */
void *MMFLAT_New(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                 int32_t line) MMFLAT_NOEXCEPT;
/* calloc(1, size): a zero-filled block; null on failure. */
void *MMFLAT_NewClear(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                      int32_t line) MMFLAT_NOEXCEPT;
/*
 * realloc(block, size); on failure null, and the old block stays the caller's. A size of 0 for an
 * existing block gives a one-byte block (never the system's free-and-return-null).
 */
void *MMFLAT_Resize(void *block, uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                    int32_t line) MMFLAT_NOEXCEPT;
/* A copy of a terminated byte string; a null text reports code 2 with origin "MMFLAT_StrDup". */
char *MMFLAT_StrDup(const char *text, ERRLIB_ErrorStack *stack, const char *file,
                    int32_t line) MMFLAT_NOEXCEPT;
/* A copy of a string of 16-bit units ended by a zero unit; a null text reports "MMFLAT_WcsDup". */
uint16_t *MMFLAT_WcsDup(const uint16_t *text, ERRLIB_ErrorStack *stack, const char *file,
                        int32_t line) MMFLAT_NOEXCEPT;
/* free(block); null is ignored. */
void MMFLAT_Free(void *block) MMFLAT_NOEXCEPT;
/* Every size is valid: always 1. */
int MMFLAT_ValidSize(void) MMFLAT_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* MEMMGR_H */
