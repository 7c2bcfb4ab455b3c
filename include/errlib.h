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
int ERRLIB_ErrorStack_Create(ERRLIB_ErrorStack **stackOut);
/* Clears the stack and frees it with everything it owns. */
int ERRLIB_ErrorStack_Destroy(ERRLIB_ErrorStack *stack);
/*
 * Pushes one error; the four texts are optional. Class 2 fills the reserved record in place
 * (texts cut to 50, 50, the last 50 of the file path, and 100 characters); any other class pushes a
 * heap record. A null stack returns 1 and records nothing.
 */
int ERRLIB_ErrorStack_AddError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                               int32_t errorClass, const char *origin, const char *function,
                               const char *file, int32_t line, const char *message);
/*
 * Pushes a class-23 record for `code` and, when secondCode is not 0, a class-24 record for it.
 * A null or empty file, or a code of 0, returns 1 and pushes nothing.
 */
int ERRLIB_ErrorStack_Add_SMError(ERRLIB_ErrorStack *stack, const char *function, int32_t line,
                                  const char *file, int32_t code, int32_t secondCode);

/* Allocates an empty heap record (allocation failures reported on `stack`). */
int ERRLIB_Error_Create(ERRLIB_Error **recordOut, ERRLIB_ErrorStack *stack);
/* Clears the record and frees it, unless it is a reserved (class 2) record. `stack` is unused. */
int ERRLIB_Error_Release(ERRLIB_Error *record, ERRLIB_ErrorStack *stack);
/* The same operation as ERRLIB_Error_Release. */
int ERRLIB_Error_Destroy(ERRLIB_Error *record, ERRLIB_ErrorStack *stack);

/* Reads an integer field: ids 0 (component), 1 (code), 2 (class) and 6 (line). */
int ERRLIB_Error_GetInt32(const ERRLIB_Error *record, int32_t fieldId, int32_t *valueOut);
/* Writes an integer field: ids 0, 1, 2 and 6. */
int ERRLIB_Error_SetInt32(ERRLIB_Error *record, int32_t fieldId, int32_t value);
/*
 * Validates a text-field request (ids 3, 4, 5, 7) and stores nothing in *textOut: callers read
 * the text fields of the record directly. Kept so for compatibility.
 */
int ERRLIB_Error_GetChar(const ERRLIB_Error *record, int32_t fieldId, char **textOut);
/* Replaces a text field (ids 3, 4, 5, 7) of a heap record by a copy of `text`. */
int ERRLIB_Error_SetChar(ERRLIB_Error *record, int32_t fieldId, const char *text,
                         ERRLIB_ErrorStack *stack);
/* Resets a record: a reserved record keeps its buffers (zero-filled), others free their texts. */
int ERRLIB_Error_Clear(ERRLIB_Error *record, ERRLIB_ErrorStack *stack);
/* Makes `target` a deep copy of `source` (allocation failures reported on `stack`). */
int ERRLIB_Error_Copy(ERRLIB_Error *target, const ERRLIB_Error *source, ERRLIB_ErrorStack *stack);

/* Number of errors: heap records, plus 1 while the reserved record holds an error. */
int ERRLIB_ErrorStack_GetNumberofErrors(const ERRLIB_ErrorStack *stack, int32_t *countOut);
/*
 * Takes the oldest error off the stack. A pending memory error comes first; it is returned as a
 * pointer to the stack's own record. Heap records then belong to the caller
 * (ERRLIB_Error_Release). *recordOut is written before the stack is examined.
 */
int ERRLIB_ErrorStack_GetFirstError(ERRLIB_ErrorStack *stack, ERRLIB_Error **recordOut);
/* Takes the newest error off the stack; a pending memory error comes first. */
int ERRLIB_ErrorStack_GetLastError(ERRLIB_ErrorStack *stack, ERRLIB_Error **recordOut);
/* Shows the newest error (a pending memory error first) without removing it. */
int ERRLIB_ErrorStack_PeekLastError(ERRLIB_ErrorStack *stack, ERRLIB_Error **recordOut);
/*
 * Finds the first error with this component, code and class (and function and file, compared
 * ignoring case, when given). *indexOut is -1 when nothing matches. A match of the reserved record
 * gives index 0 and leaves *recordOut null. recordOut may be null.
 */
int ERRLIB_ErrorStack_FindError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                                int32_t errorClass, const char *function, const char *file,
                                int32_t *indexOut, ERRLIB_Error **recordOut);
/* Removes and releases the newest error. */
int ERRLIB_ErrorStack_RemoveLastError_U(ERRLIB_ErrorStack *stack);
/* Removes and releases the newest error only when it has this code and class. */
int ERRLIB_ErrorStack_RemoveLastError(ERRLIB_ErrorStack *stack, int32_t code, int32_t errorClass);
/* Removes and releases every error. */
int ERRLIB_ErrorStack_Clear(ERRLIB_ErrorStack *stack);

#ifdef __cplusplus
}
#endif

#endif /* ERRLIB_H */
