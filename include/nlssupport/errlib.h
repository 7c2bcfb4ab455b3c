/* SPDX-License-Identifier: MIT */
/**
 * @file errlib.h
 * @brief Error records and error stacks.
 *
 * An error stack collects, for one caller, the errors that library functions report. Functions
 * that can fail take an optional stack as their last argument (null: nothing is recorded) and
 * push one record onto it on failure. A stack belongs to one caller at a time; it has no lock.
 *
 * Every stack owns a **reserved memory-error record** (class #ERRLIB_CLASS_MEMORY) that is filled
 * in place, without allocating, so that running out of memory can always be reported. Its texts
 * live in fixed buffers of the stack and are cut to 50, 50, 50 and 100 characters. There is one
 * such record per stack: the latest memory error wins, and it counts as one error at most. While
 * it holds an error it comes before every other record: it is both the oldest and the newest
 * error for the retrieval functions, and FindError tests it first.
 *
 * Every other error is a heap record that owns exact-size copies of its texts. It belongs to the
 * stack while it is on it, and to the caller once taken off (ERRLIB_ErrorStack_GetFirstError,
 * ERRLIB_ErrorStack_GetLastError), who releases it with ERRLIB_Error_Release.
 *
 * Every function returns 0 on success and 1 on failure; a null stack, record or output pointer
 * gives 1 without any other effect, except where a function says otherwise.
 */
#ifndef NLSSUPPORT_ERRLIB_H
#define NLSSUPPORT_ERRLIB_H

#include <stdint.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef ERRLIB_NOEXCEPT
#ifdef __cplusplus
/** Marks the functions of this header: `noexcept` for C++ callers, nothing for C. */
#define ERRLIB_NOEXCEPT noexcept
#else
#define ERRLIB_NOEXCEPT
#endif
#endif

/**
 * @name Field ids
 * The fields of a record, numbered as the arguments of ERRLIB_ErrorStack_AddError that follow
 * the stack; ERRLIB_Error_GetInt32, ERRLIB_Error_SetInt32, ERRLIB_Error_GetChar and
 * ERRLIB_Error_SetChar take them. The timestamp has no id.
 */
/** @{ */
#define ERRLIB_ID_COMPONENT 0 /**< ERRLIB_Error::component (integer) */
#define ERRLIB_ID_CODE 1      /**< ERRLIB_Error::code (integer) */
#define ERRLIB_ID_CLASS 2     /**< ERRLIB_Error::errorClass (integer) */
#define ERRLIB_ID_ORIGIN 3    /**< ERRLIB_Error::origin (text) */
#define ERRLIB_ID_FUNCTION 4  /**< ERRLIB_Error::function (text) */
#define ERRLIB_ID_FILE 5      /**< ERRLIB_Error::file (text) */
#define ERRLIB_ID_LINE 6      /**< ERRLIB_Error::line (integer) */
#define ERRLIB_ID_MESSAGE 7   /**< ERRLIB_Error::message (text) */
/** @} */

/** Component number of every error raised inside this library. */
#define ERRLIB_COMPONENT_NLSSUPPORT 50
/**
 * Class of the reserved memory-error record. The library raises it with code 1 for a failed
 * allocation (function "malloc", "calloc" or "realloc", message the requested size) and with
 * code 2 for a null text given to MMFLAT_StrDup or MMFLAT_WcsDup (origin the function's name).
 */
#define ERRLIB_CLASS_MEMORY 2

/**
 * One error.
 *
 * A heap record owns its four texts: exact-size copies (length + 1 bytes), or null. The reserved
 * record's texts point at fixed buffers of 51, 51, 51 and 101 bytes owned by its stack, so they
 * are never null and an empty text means "not given".
 *
 * Classes raised inside the library (component 50): 2 for memory errors (see
 * #ERRLIB_CLASS_MEMORY); 21 for an empty code set (KORANLS_GetOsCodePageName); 23 and 24 for the
 * two records of ERRLIB_ErrorStack_Add_SMError.
 */
typedef struct ERRLIB_Error {
    int32_t component;  /**< Reporting component; 50 for this library. */
    time_t timestamp;   /**< When the record was created or last filled (seconds, as time()). */
    int32_t code;       /**< Error number within its class. */
    int32_t errorClass; /**< Error class; 2 marks a memory error (#ERRLIB_CLASS_MEMORY). */
    char *origin;       /**< Library function that rejected its argument, or null. */
    char *function;     /**< Function or system call that failed, or null. */
    char *file;         /**< Source path of the code that reported the error, or null. */
    int32_t line;       /**< Source line of the report. */
    char *message;      /**< Free text, or null. */
} ERRLIB_Error;

/**
 * An error stack. Its layout is private: stacks are made by ERRLIB_ErrorStack_Create and freed
 * by ERRLIB_ErrorStack_Destroy only.
 */
typedef struct ERRLIB_ErrorStack ERRLIB_ErrorStack;

/** @name Stacks */
/** @{ */

/**
 * Creates an empty stack: 20 slots, growing by 10 when full, and the reserved memory-error record
 * with its four zero-filled fixed buffers.
 *
 * @param[out] stackOut Receives the new stack, which the caller owns and frees with
 *                      ERRLIB_ErrorStack_Destroy. Written on success only.
 * @retval 0 Created.
 * @retval 1 Null stackOut, or an allocation failed: whatever was obtained is freed and nothing is
 *           recorded (there is no stack to record on).
 */
int ERRLIB_ErrorStack_Create(ERRLIB_ErrorStack **stackOut) ERRLIB_NOEXCEPT;

/**
 * Clears the stack (ERRLIB_ErrorStack_Clear) and frees it with everything it owns: the heap
 * records still on it, the reserved record's buffers and the slot array.
 *
 * Records the caller has taken off the stack stay the caller's. A reserved record handed out by
 * a retrieval function must not be used after this call.
 *
 * @param[in] stack The stack; freed by this call.
 * @retval 0 Destroyed.
 * @retval 1 Null stack (nothing done), or the clear met a null slot (everything is freed all the
 *           same).
 */
int ERRLIB_ErrorStack_Destroy(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Pushes one error.
 *
 * Class 2 (#ERRLIB_CLASS_MEMORY) fills the reserved record in place and allocates nothing:
 * origin and function keep their first 50 characters, the file path its **last** 50 (the end of
 * a path is the informative part), the message its first 100. A text given as null leaves that
 * buffer's previous content in place, so a second memory error that omits a text keeps the first
 * one's; the count of errors rises by one at most. Callers rely on this overwrite in place.
 *
 * Any other class pushes a heap record holding exact-size copies of the given texts, growing the
 * slot array by 10 slots when it is full (records already pushed are never lost).
 *
 * @param[in,out] stack      The stack. Null: nothing is recorded and 1 is returned; this is what
 *                           makes a null stack silence every library function.
 * @param[in]     component  Reporting component (50 inside this library).
 * @param[in]     code       Error number within its class.
 * @param[in]     errorClass Error class; 2 selects the reserved record.
 * @param[in]     origin     Function that rejected its argument, NUL-terminated, or null.
 * @param[in]     function   Function or system call that failed, NUL-terminated, or null.
 * @param[in]     file       Source path of the report, NUL-terminated, or null.
 * @param[in]     line       Source line of the report.
 * @param[in]     message    Free text, NUL-terminated, or null.
 * @retval 0 Pushed (or, for class 2, stored in the reserved record).
 * @retval 1 Null stack, or an allocation failed. The error being pushed is then lost, nothing is
 *           leaked, and the allocator's own memory error is in the reserved record, so the caller
 *           still learns that memory ran out.
 */
int ERRLIB_ErrorStack_AddError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                               int32_t errorClass, const char *origin, const char *function,
                               const char *file, int32_t line, const char *message) ERRLIB_NOEXCEPT;

/**
 * Pushes a class-23 record for `code` and, when secondCode is not 0, a class-24 record for
 * secondCode after it. Both have component 50, the caller's function, file and line, and no
 * origin or message.
 *
 * @param[in,out] stack      The stack; null records nothing (1).
 * @param[in]     function   Name of the failing function, NUL-terminated, or null.
 * @param[in]     line       Source line of the report.
 * @param[in]     file       Source path of the report, NUL-terminated; must not be null or empty.
 * @param[in]     code       Code of the class-23 record; must not be 0.
 * @param[in]     secondCode Code of the class-24 record, or 0 for none.
 * @retval 0 Every record was pushed.
 * @retval 1 Null or empty file, or code 0 (nothing pushed); or a push failed (as
 *           ERRLIB_ErrorStack_AddError; a class-23 record already pushed stays).
 */
int ERRLIB_ErrorStack_Add_SMError(ERRLIB_ErrorStack *stack, const char *function, int32_t line,
                                  const char *file, int32_t code,
                                  int32_t secondCode) ERRLIB_NOEXCEPT;
/** @} */

/** @name Records */
/** @{ */

/**
 * Allocates an empty heap record: component, code, class and line 0, texts null, timestamp now.
 *
 * @param[out]    recordOut Receives the record, which the caller releases with
 *                          ERRLIB_Error_Release. Written on success only.
 * @param[in,out] stack     Receives the allocation failure, or null.
 * @retval 0 Created.
 * @retval 1 Null recordOut, or the allocation failed (reported on `stack`).
 */
int ERRLIB_Error_Create(ERRLIB_Error **recordOut, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Clears the record (ERRLIB_Error_Clear) and frees it with its texts.
 *
 * @note A class-2 record counts as a reserved record and is only cleared in place, not freed:
 * the stack's own reserved record, and also a caller's copy of one (ERRLIB_Error_Copy copies the
 * class), which stays the caller's with its texts. To free such a copy, give it another class
 * with ERRLIB_Error_SetInt32 and release it again.
 *
 * @param[in] record The record; freed unless it has class 2.
 * @param[in] stack  Only serves to recognise that stack's own reserved record; may be null.
 * @retval 0 Released (or, for class 2, cleared).
 * @retval 1 Null record.
 */
int ERRLIB_Error_Release(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * The same operation as ERRLIB_Error_Release.
 *
 * @param[in] record The record; freed unless it has class 2.
 * @param[in] stack  Only serves to recognise that stack's own reserved record; may be null.
 * @retval 0 Released (or, for class 2, cleared).
 * @retval 1 Null record.
 */
int ERRLIB_Error_Destroy(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Reads an integer field.
 *
 * @param[in]  record   The record.
 * @param[in]  fieldId  #ERRLIB_ID_COMPONENT, #ERRLIB_ID_CODE, #ERRLIB_ID_CLASS or
 *                      #ERRLIB_ID_LINE.
 * @param[out] valueOut Receives the field's value; untouched on failure.
 * @retval 0 Read.
 * @retval 1 Null record or valueOut, or another id.
 */
int ERRLIB_Error_GetInt32(const ERRLIB_Error *record, int32_t fieldId,
                          int32_t *valueOut) ERRLIB_NOEXCEPT;

/**
 * Writes an integer field.
 *
 * @param[in,out] record  The record.
 * @param[in]     fieldId #ERRLIB_ID_COMPONENT, #ERRLIB_ID_CODE, #ERRLIB_ID_CLASS or
 *                        #ERRLIB_ID_LINE.
 * @param[in]     value   The new value.
 * @retval 0 Written.
 * @retval 1 Null record or another id.
 */
int ERRLIB_Error_SetInt32(ERRLIB_Error *record, int32_t fieldId, int32_t value) ERRLIB_NOEXCEPT;

/**
 * Validates a text-field request and stores nothing.
 *
 * @note It never writes `*textOut`, whatever it returns. Kept so for compatibility: callers
 * read the text fields of the record (ERRLIB_Error::origin and the others) directly.
 *
 * @param[in]  record  The record.
 * @param[in]  fieldId #ERRLIB_ID_ORIGIN, #ERRLIB_ID_FUNCTION, #ERRLIB_ID_FILE or
 *                     #ERRLIB_ID_MESSAGE.
 * @param[out] textOut Must not be null; left untouched.
 * @retval 0 Record and textOut are not null and the id is a text field.
 * @retval 1 Otherwise.
 */
int ERRLIB_Error_GetChar(const ERRLIB_Error *record, int32_t fieldId,
                         char **textOut) ERRLIB_NOEXCEPT;

/**
 * Replaces a text field by a heap copy of `text` and frees the old text.
 *
 * The new block is allocated before the old text is freed, so a failed allocation keeps the old
 * text. Meant for heap records; on a class-2 record the new block is at least as large as the
 * fixed buffer it replaces (51 or 101 bytes, zero-padded), so the record stays fillable in place.
 *
 * @param[in,out] record  The record; it owns the new text.
 * @param[in]     fieldId #ERRLIB_ID_ORIGIN, #ERRLIB_ID_FUNCTION, #ERRLIB_ID_FILE or
 *                        #ERRLIB_ID_MESSAGE.
 * @param[in]     text    The new text, NUL-terminated; copied.
 * @param[in,out] stack   Receives the allocation failure, or null.
 * @retval 0 Replaced.
 * @retval 1 Null record or text, another id, or the allocation failed (reported on `stack`; the
 *           old text stays).
 */
int ERRLIB_Error_SetChar(ERRLIB_Error *record, int32_t fieldId, const char *text,
                         ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Resets a record; the timestamp stays as it is.
 *
 * A class-2 record keeps its class and its buffers, zero-filled: all 51/101 bytes of each buffer
 * for the reserved record of `stack`, the bytes each text occupies for any other class-2 record
 * (a copy may hold shorter texts). Any other record gets class 0 and its texts freed and set to
 * null. Component, code and line become 0 in both cases.
 *
 * @param[in,out] record The record.
 * @param[in]     stack  Only serves to recognise that stack's own reserved record; may be null.
 * @retval 0 Cleared.
 * @retval 1 Null record.
 */
int ERRLIB_Error_Clear(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Makes `target` a deep copy of `source`.
 *
 * The target is cleared first (ERRLIB_Error_Clear), then receives component, code, class and
 * timestamp, exact-size heap copies of the texts, and the line. The class is copied as it is, so
 * a copy of a reserved record has class 2 and is treated as a reserved record by Clear and
 * Release (see ERRLIB_Error_Release). Copying a record onto itself changes nothing.
 *
 * @param[in,out] target The record that receives the copy; it owns the copied texts.
 * @param[in]     source The record to copy.
 * @param[in,out] stack  Receives allocation failures, or null. Its own reserved record is refused
 *                       as a target: its buffers belong to the stack.
 * @retval 0 Copied.
 * @retval 1 Null target or source, a target that is the reserved record of `stack`, or an
 *           allocation failed (reported on `stack`; the target is then partly filled and remains
 *           the caller's to release).
 */
int ERRLIB_Error_Copy(ERRLIB_Error *target, const ERRLIB_Error *source,
                      ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/** @} */

/** @name Stack queries */
/** @{ */

/**
 * Counts the errors on a stack: the heap records, plus 1 while the reserved record holds an
 * error.
 *
 * @param[in]  stack    The stack.
 * @param[out] countOut Receives the count; untouched on failure.
 * @retval 0 Counted.
 * @retval 1 Null stack or countOut.
 */
int ERRLIB_ErrorStack_GetNumberofErrors(const ERRLIB_ErrorStack *stack,
                                        int32_t *countOut) ERRLIB_NOEXCEPT;

/**
 * Takes the oldest error off the stack.
 *
 * A pending memory error comes first: `*recordOut` then points at the stack's own reserved
 * record, which stops counting as an error but stays readable until the next memory error or a
 * clear. The caller must not free it (ERRLIB_Error_Release only clears it in place). Otherwise the oldest heap record is handed over and belongs to the caller, who
 * releases it with ERRLIB_Error_Release.
 *
 * @param[in,out] stack     The stack.
 * @param[out]    recordOut Set to null first, then receives the record.
 * @retval 0 An error was taken.
 * @retval 1 Null recordOut (nothing written), null stack, or no error on the stack.
 */
int ERRLIB_ErrorStack_GetFirstError(ERRLIB_ErrorStack *stack,
                                    ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;

/**
 * Takes the newest error off the stack (last in, first out). A pending memory error comes first,
 * handed out as by ERRLIB_ErrorStack_GetFirstError; a heap record becomes the caller's.
 *
 * @param[in,out] stack     The stack.
 * @param[out]    recordOut Set to null first, then receives the record.
 * @retval 0 An error was taken.
 * @retval 1 Null recordOut (nothing written), null stack, or no error on the stack.
 */
int ERRLIB_ErrorStack_GetLastError(ERRLIB_ErrorStack *stack,
                                   ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;

/**
 * Shows the newest error without removing it: the reserved record while it holds an error, else
 * the newest heap record. The stack keeps ownership.
 *
 * @param[in]  stack     The stack.
 * @param[out] recordOut Set to null first, then receives the record (still the stack's).
 * @retval 0 An error is shown.
 * @retval 1 Null recordOut (nothing written), null stack, or no error on the stack.
 */
int ERRLIB_ErrorStack_PeekLastError(ERRLIB_ErrorStack *stack,
                                    ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;

/**
 * Finds the first error with this component, code and class whose function and file texts equal
 * the given ones ignoring case (strcasecmp); a null function or file matches anything.
 *
 * A pending memory error is tested first. When it matches, `*indexOut` is 0 and `*recordOut`
 * stays null: the reserved record is reported by index only, which the caller cannot tell from
 * slot 0 (kept so for compatibility). Otherwise the heap records are tested oldest first, and the
 * first match gives its index (0 = oldest) and the record, which stays the stack's.
 *
 * @param[in]  stack      The stack.
 * @param[in]  component  Component to match.
 * @param[in]  code       Code to match.
 * @param[in]  errorClass Class to match.
 * @param[in]  function   Function text to match ignoring case, or null for any.
 * @param[in]  file       File text to match ignoring case, or null for any.
 * @param[out] indexOut   Set to -1 first, then to the index of the match.
 * @param[out] recordOut  Set to null first, then to the matching heap record; may be null.
 * @retval 0 Searched, whether found or not (not found: index -1).
 * @retval 1 Null stack or indexOut.
 */
int ERRLIB_ErrorStack_FindError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                                int32_t errorClass, const char *function, const char *file,
                                int32_t *indexOut, ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;

/**
 * Removes and releases the newest error: a pending memory error is only cleared in place, a heap
 * record is freed with its texts.
 *
 * @param[in,out] stack The stack.
 * @retval 0 Removed.
 * @retval 1 Null stack, or no error on the stack.
 */
int ERRLIB_ErrorStack_RemoveLastError_U(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/**
 * Removes and releases the newest error (as ERRLIB_ErrorStack_RemoveLastError_U) only when it
 * has this code and class. After a failed allocation, (1, 2) removes the memory error.
 *
 * @param[in,out] stack      The stack.
 * @param[in]     code       Code the newest error must have.
 * @param[in]     errorClass Class the newest error must have.
 * @retval 0 Removed.
 * @retval 1 Null stack, no error on the stack, or a newest error that does not match (it stays).
 */
int ERRLIB_ErrorStack_RemoveLastError(ERRLIB_ErrorStack *stack, int32_t code,
                                      int32_t errorClass) ERRLIB_NOEXCEPT;

/**
 * Removes and releases every error: frees the heap records and clears a pending memory error.
 * The slot array keeps its capacity.
 *
 * @param[in,out] stack The stack.
 * @retval 0 Cleared.
 * @retval 1 Null stack, or a used slot was null (the count is then left as it was and the records
 *           already freed are forgotten, so ERRLIB_ErrorStack_Destroy frees the rest once).
 */
int ERRLIB_ErrorStack_Clear(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/** @} */

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_ERRLIB_H */
