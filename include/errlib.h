/*
 * errlib.h - error records and error stacks.
 *
 * An error stack collects, for one caller, the errors that library functions report. Functions
 * that can fail take an optional stack (null: nothing is recorded) and push one record on failure.
 * Every stack owns a reserved memory-error record that is filled in place, without allocating, so
 * that running out of memory can always be reported.
 *
 * Every function returns 0 on success and 1 on failure.
 */
#ifndef ERRLIB_H
#define ERRLIB_H

#include <stdint.h>
#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef ERRLIB_NOEXCEPT
#ifdef __cplusplus
#define ERRLIB_NOEXCEPT noexcept
#else
#define ERRLIB_NOEXCEPT
#endif
#endif

/* Field ids: the arguments of ERRLIB_ErrorStack_AddError that follow the stack. */
#define ERRLIB_ID_COMPONENT 0
#define ERRLIB_ID_CODE 1
#define ERRLIB_ID_CLASS 2
#define ERRLIB_ID_ORIGIN 3
#define ERRLIB_ID_FUNCTION 4
#define ERRLIB_ID_FILE 5
#define ERRLIB_ID_LINE 6
#define ERRLIB_ID_MESSAGE 7

/* Component number of every error raised inside this library. */
#define ERRLIB_COMPONENT_NLSSUPPORT 50
/* Class of the reserved memory-error record (allocation failures, null duplicate arguments). */
#define ERRLIB_CLASS_MEMORY 2

/*
 * One error. Heap records own their four texts (exact-size copies); the reserved record's texts
 * point at fixed buffers of 51, 51, 51 and 101 bytes owned by its stack.
 */
typedef struct ERRLIB_Error {
    int32_t component;  /* reporting component; 50 for this library */
    time_t timestamp;   /* when the record was created or last filled */
    int32_t code;       /* error number within its class */
    int32_t errorClass; /* error class; 2 marks a memory error */
    char *origin;       /* library function that rejected its argument, or null */
    char *function;     /* function or system call that failed, or null */
    char *file;         /* source path of the report, or null */
    int32_t line;       /* source line of the report */
    char *message;      /* free text, or null */
} ERRLIB_Error;

/* An error stack; created and destroyed by this library only. */
typedef struct ERRLIB_ErrorStack ERRLIB_ErrorStack;

/* Creates an empty stack (20 slots) and stores it in *stackOut. */
int ERRLIB_ErrorStack_Create(ERRLIB_ErrorStack **stackOut) ERRLIB_NOEXCEPT;
/* Clears the stack and frees it with everything it owns. */
int ERRLIB_ErrorStack_Destroy(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/*
 * Pushes one error; the four texts are optional. Class 2 fills the reserved record in place
 * (texts cut to 50, 50, the last 50 of the file path, and 100 characters); any other class pushes a
 * heap record. A null stack returns 1 and records nothing.
 */
int ERRLIB_ErrorStack_AddError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                               int32_t errorClass, const char *origin, const char *function,
                               const char *file, int32_t line, const char *message) ERRLIB_NOEXCEPT;
/*
 * Pushes a class-23 record for `code` and, when secondCode is not 0, a class-24 record for it.
 * A null or empty file, or a code of 0, returns 1 and pushes nothing.
 */
int ERRLIB_ErrorStack_Add_SMError(ERRLIB_ErrorStack *stack, const char *function, int32_t line,
                                  const char *file, int32_t code,
                                  int32_t secondCode) ERRLIB_NOEXCEPT;

/* Allocates an empty heap record (allocation failures reported on `stack`). */
int ERRLIB_Error_Create(ERRLIB_Error **recordOut, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/*
 * Clears the record and frees it with its texts. A class-2 record counts as a reserved record and
 * is only cleared in place, not freed: the stack's own reserved record, and also a caller's copy
 * of one, which stays the caller's (give it another class, then release it, to free it).
 * `stack` only serves to recognise that stack's own reserved record; it may be null.
 */
int ERRLIB_Error_Release(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/* The same operation as ERRLIB_Error_Release. */
int ERRLIB_Error_Destroy(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/* Reads an integer field: ids 0 (component), 1 (code), 2 (class) and 6 (line). */
int ERRLIB_Error_GetInt32(const ERRLIB_Error *record, int32_t fieldId,
                          int32_t *valueOut) ERRLIB_NOEXCEPT;
/* Writes an integer field: ids 0, 1, 2 and 6. */
int ERRLIB_Error_SetInt32(ERRLIB_Error *record, int32_t fieldId, int32_t value) ERRLIB_NOEXCEPT;
/*
 * Validates a text-field request (ids 3, 4, 5, 7) and stores nothing in *textOut: callers read
 * the text fields of the record directly. Kept so for compatibility.
 */
int ERRLIB_Error_GetChar(const ERRLIB_Error *record, int32_t fieldId,
                         char **textOut) ERRLIB_NOEXCEPT;
/*
 * Replaces a text field (ids 3, 4, 5, 7) by a heap copy of `text` and frees the old text. When the
 * allocation fails (reported on `stack`) it returns 1 and the old text stays. Meant for heap
 * records; a class-2 record gets a block of at least its fixed buffer's size (51 or 101 bytes).
 */
int ERRLIB_Error_SetChar(ERRLIB_Error *record, int32_t fieldId, const char *text,
                         ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/*
 * Resets a record (the timestamp stays). A class-2 record keeps its class and buffers, zero-filled
 * (all 51/101 bytes for the reserved record of `stack`, the bytes each text occupies for any
 * other); any other record gets class 0 and its texts freed and set to null. Component, code and
 * line become 0.
 */
int ERRLIB_Error_Clear(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/*
 * Makes `target` a deep copy of `source` (exact-size texts; the class is copied as it is).
 * Allocation failures are reported on `stack` and return 1 with the target partly filled. The
 * reserved record of `stack` is refused as a target (1): its buffers belong to the stack.
 */
int ERRLIB_Error_Copy(ERRLIB_Error *target, const ERRLIB_Error *source,
                      ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

/* Number of errors: heap records, plus 1 while the reserved record holds an error. */
int ERRLIB_ErrorStack_GetNumberofErrors(const ERRLIB_ErrorStack *stack,
                                        int32_t *countOut) ERRLIB_NOEXCEPT;
/*
 * Takes the oldest error off the stack. A pending memory error comes first; it is returned as a
 * pointer to the stack's own record. Heap records then belong to the caller
 * (ERRLIB_Error_Release). *recordOut is set to null before the stack is examined (so it is null
 * on failure); a null recordOut returns 1. The same holds for GetLast and PeekLast.
 */
int ERRLIB_ErrorStack_GetFirstError(ERRLIB_ErrorStack *stack,
                                    ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;
/* Takes the newest error off the stack; a pending memory error comes first. */
int ERRLIB_ErrorStack_GetLastError(ERRLIB_ErrorStack *stack,
                                   ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;
/* Shows the newest error (a pending memory error first) without removing it. */
int ERRLIB_ErrorStack_PeekLastError(ERRLIB_ErrorStack *stack,
                                    ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;
/*
 * Finds the first error with this component, code and class (and function and file, compared
 * ignoring case, when given). *indexOut is -1 when nothing matches. A match of the reserved record
 * gives index 0 and leaves *recordOut null. recordOut may be null.
 */
int ERRLIB_ErrorStack_FindError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                                int32_t errorClass, const char *function, const char *file,
                                int32_t *indexOut, ERRLIB_Error **recordOut) ERRLIB_NOEXCEPT;
/* Removes and releases the newest error. */
int ERRLIB_ErrorStack_RemoveLastError_U(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;
/* Removes and releases the newest error only when it has this code and class. */
int ERRLIB_ErrorStack_RemoveLastError(ERRLIB_ErrorStack *stack, int32_t code,
                                      int32_t errorClass) ERRLIB_NOEXCEPT;
/* Removes and releases every error. */
int ERRLIB_ErrorStack_Clear(ERRLIB_ErrorStack *stack) ERRLIB_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* ERRLIB_H */
