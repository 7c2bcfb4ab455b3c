// SPDX-License-Identifier: MIT
// errquery.cpp - error stack queries: counting, retrieval, search and removal.
//
// Whenever the reserved record holds an error it counts as both the oldest and the newest error:
// retrieval hands it out (a pointer to the stack's own record) before any heap record, and the
// search tests it before the heap records.
#include <nlssupport/errlib.h>
#include <strings.h>

#include <cstdint>

#include "errstack_internal.h"

namespace {

[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     errquery.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     errlib.h\t\t$Revision$\t$Date$",
    "@(#)     errstack_internal.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// True when the stack holds no error at all.
bool IsEmpty(const ERRLIB_ErrorStack *stack) {
    return stack->count == 0 && stack->memoryErrorInUse == 0;
}

// Hands out the reserved record: it no longer counts as an error, its contents stay readable.
ERRLIB_Error *TakeReservedRecord(ERRLIB_ErrorStack *stack) {
    stack->memoryErrorInUse = 0;
    return &stack->memoryError;
}

// True when the record has this component, code and class and, for each of function and file
// that is given, a text equal to it ignoring case.
bool Matches(const ERRLIB_Error &record, int32_t component, int32_t code, int32_t errorClass,
             const char *function, const char *file) {
    if (record.code != code || record.errorClass != errorClass || record.component != component) {
        return false;
    }
    if (function != nullptr &&
        (record.function == nullptr || strcasecmp(record.function, function) != 0)) {
        return false;
    }
    if (file != nullptr && (record.file == nullptr || strcasecmp(record.file, file) != 0)) {
        return false;
    }
    return true;
}

// Takes the newest error off the stack into *recordOut (0), or returns 1 when there is none. The
// second result tells whether the record came out of the slot array.
int TakeLast(ERRLIB_ErrorStack *stack, ERRLIB_Error **recordOut, bool *fromSlot) {
    *recordOut = nullptr;
    *fromSlot = false;
    if (stack == nullptr || IsEmpty(stack)) {
        return 1;
    }
    if (stack->memoryErrorInUse != 0) {
        *recordOut = TakeReservedRecord(stack);
        return 0;
    }
    const int32_t last = stack->count - 1;
    *recordOut = stack->slots[last];
    stack->slots[last] = nullptr;
    --stack->count;
    *fromSlot = true;
    return 0;
}

}  // namespace

// Stores in *countOut the number of errors: the heap records plus 1 while the reserved record
// holds an error. Returns 0, or 1 for a null stack or countOut.
extern "C" int ERRLIB_ErrorStack_GetNumberofErrors(const ERRLIB_ErrorStack *stack,
                                                   int32_t *countOut) noexcept {
    if (stack == nullptr || countOut == nullptr) {
        return 1;
    }
    *countOut = stack->count + (stack->memoryErrorInUse != 0 ? 1 : 0);
    return 0;
}

// Takes the oldest error off the stack. *recordOut is set to null before the stack is examined.
// A pending memory error comes first: *recordOut then points at the stack's own reserved record,
// which stops counting as an error but stays readable until the next memory error or a clear.
// Otherwise the record of slot 0 is handed over (the caller owns it and releases it with
// ERRLIB_Error_Release) and the other slots move one place towards the front. Returns 0, or 1
// for a null recordOut (nothing written), a null stack or a stack without errors.
extern "C" int ERRLIB_ErrorStack_GetFirstError(ERRLIB_ErrorStack *stack,
                                               ERRLIB_Error **recordOut) noexcept {
    if (recordOut == nullptr) {
        return 1;
    }
    *recordOut = nullptr;
    if (stack == nullptr || IsEmpty(stack)) {
        return 1;
    }
    if (stack->memoryErrorInUse != 0) {
        *recordOut = TakeReservedRecord(stack);
        return 0;
    }
    *recordOut = stack->slots[0];
    --stack->count;
    for (int32_t i = 0; i < stack->capacity - 1; ++i) {
        stack->slots[i] = stack->slots[i + 1];
    }
    stack->slots[stack->capacity - 1] = nullptr;
    return 0;
}

// Takes the newest error off the stack (last in, first out); a pending memory error comes first
// and is handed out as with ERRLIB_ErrorStack_GetFirstError. A heap record becomes the caller's.
// *recordOut is set to null before the stack is examined. Returns 0, or 1 for a null recordOut
// (nothing written), a null stack or a stack without errors.
extern "C" int ERRLIB_ErrorStack_GetLastError(ERRLIB_ErrorStack *stack,
                                              ERRLIB_Error **recordOut) noexcept {
    if (recordOut == nullptr) {
        return 1;
    }
    bool fromSlot = false;
    return TakeLast(stack, recordOut, &fromSlot);
}

// Shows the newest error without removing it: the reserved record while it holds an error, else
// the record of the last used slot. The stack keeps ownership. *recordOut is set to null before
// the stack is examined. Returns 0, or 1 for a null recordOut (nothing written), a null stack or
// a stack without errors.
extern "C" int ERRLIB_ErrorStack_PeekLastError(ERRLIB_ErrorStack *stack,
                                               ERRLIB_Error **recordOut) noexcept {
    if (recordOut == nullptr) {
        return 1;
    }
    *recordOut = nullptr;
    if (stack == nullptr || IsEmpty(stack)) {
        return 1;
    }
    if (stack->memoryErrorInUse != 0) {
        *recordOut = &stack->memoryError;
    } else {
        *recordOut = stack->slots[stack->count - 1];
    }
    return 0;
}

// Finds the first error with this component, code and class whose function and file texts equal
// the given ones ignoring case (a null function or file matches anything). Sets *indexOut to -1
// and *recordOut (when recordOut is given) to null first. A pending memory error is tested first:
// its match gives index 0 and leaves *recordOut null (kept so: the reserved record is reported by
// index only). Then slots 0 .. count - 1 in order: the first match gives its slot index and, when
// recordOut is given, the record (still owned by the stack). Returns 0 whether found or not, or 1
// for a null stack or indexOut.
extern "C" int ERRLIB_ErrorStack_FindError(ERRLIB_ErrorStack *stack, int32_t component,
                                           int32_t code, int32_t errorClass, const char *function,
                                           const char *file, int32_t *indexOut,
                                           ERRLIB_Error **recordOut) noexcept {
    if (indexOut == nullptr) {
        return 1;
    }
    *indexOut = -1;
    if (recordOut != nullptr) {
        *recordOut = nullptr;
    }
    if (stack == nullptr) {
        return 1;
    }
    if (IsEmpty(stack)) {
        return 0;
    }
    if (stack->memoryErrorInUse != 0 &&
        Matches(stack->memoryError, component, code, errorClass, function, file)) {
        *indexOut = 0;
        return 0;
    }
    for (int32_t i = 0; i < stack->count; ++i) {
        const ERRLIB_Error *record = stack->slots[i];
        // GCOVR_EXCL_BR_START: record != nullptr always holds: slots 0 .. count - 1 hold the
        // records pushed, never null; only a stack damaged from outside has a null one there.
        if (record != nullptr && Matches(*record, component, code, errorClass, function, file)) {
            // GCOVR_EXCL_BR_STOP
            *indexOut = i;
            if (recordOut != nullptr) {
                *recordOut = stack->slots[i];
            }
            return 0;
        }
    }
    return 0;
}

// Removes the newest error and releases it: a pending memory error is only cleared in place (the
// reserved record belongs to the stack); a heap record is freed with its texts. Returns 0, or 1
// for a null stack or a stack without errors.
extern "C" int ERRLIB_ErrorStack_RemoveLastError_U(ERRLIB_ErrorStack *stack) noexcept {
    ERRLIB_Error *record = nullptr;
    bool fromSlot = false;
    if (TakeLast(stack, &record, &fromSlot) != 0) {
        return 1;
    }
    if (fromSlot) {
        // A slot always holds a heap record, even if its class was changed to 2 since.
        errlib::FreeHeapRecord(record);
        return 0;
    }
    return ERRLIB_Error_Release(record, stack);
}

// Removes and releases the newest error only when its code and class are the given ones. Returns
// 0 when removed, 1 for a null stack, a stack without errors or a newest error that does not
// match (it is then kept).
extern "C" int ERRLIB_ErrorStack_RemoveLastError(ERRLIB_ErrorStack *stack, int32_t code,
                                                 int32_t errorClass) noexcept {
    ERRLIB_Error *record = nullptr;
    int status = ERRLIB_ErrorStack_PeekLastError(stack, &record);
    if (status != 0) {
        return status;
    }
    if (record->errorClass != errorClass || record->code != code) {
        return 1;
    }
    return ERRLIB_ErrorStack_RemoveLastError_U(stack);
}

// Removes and releases every error: frees the heap records of slots 0 .. count - 1 in order, sets
// count and reservedWord to 0 (the slots keep their old pointers; they lie beyond count and are
// never read), and clears a pending memory error. Returns 0, or 1 for a null stack, or at once
// when a used slot is null (count is then left as it was and the slots already freed are set to
// null, so that destroying the stack frees the rest exactly once).
extern "C" int ERRLIB_ErrorStack_Clear(ERRLIB_ErrorStack *stack) noexcept {
    if (stack == nullptr) {
        return 1;
    }
    for (int32_t i = 0; i < stack->count; ++i) {
        if (stack->slots[i] == nullptr) {
            for (int32_t j = 0; j < i; ++j) {
                stack->slots[j] = nullptr;
            }
            return 1;
        }
        // A slot always holds a heap record, even if its class was changed to 2 since.
        errlib::FreeHeapRecord(stack->slots[i]);
    }
    stack->count = 0;
    stack->reservedWord = 0;
    if (stack->memoryErrorInUse != 0) {
        ERRLIB_Error_Clear(&stack->memoryError, stack);
        stack->memoryErrorInUse = 0;
    }
    return 0;
}
