// SPDX-License-Identifier: MIT
// errstack_internal.h - the error stack's layout and the helpers shared by the error library's
// files. Not installed; the public interface is include/errlib.h.
#ifndef ERRLIB_ERRSTACK_INTERNAL_H
#define ERRLIB_ERRSTACK_INTERNAL_H

#include <nlssupport/errlib.h>

#include <cstddef>
#include <cstdint>

// An error stack. Slots 0 .. count - 1 hold the heap records, oldest first; slots from count on
// are null after growth, or keep stale pointers after ERRLIB_ErrorStack_Clear (never read).
// The reserved record memoryError always has class 2; its texts point at four fixed buffers of
// 51, 51, 51 and 101 bytes that the stack owns, so a memory error is recorded without allocating.
struct ERRLIB_ErrorStack {
    int32_t count;             // heap records in the slot array
    int32_t capacity;          // slots; 20 at creation, grows by 10
    int32_t reservedWord;      // 0 at creation and after a clear; read by nothing
    int32_t memoryErrorInUse;  // 1 while memoryError holds an error
    ERRLIB_Error memoryError;  // the reserved memory-error record
    ERRLIB_Error **slots;      // capacity pointers to heap records
};

namespace [[gnu::visibility("hidden")]] errlib {

inline constexpr int32_t kInitialSlots = 20;
inline constexpr int32_t kSlotGrowth = 10;
// Sizes of the reserved record's fixed buffers: 50 or 100 characters and the terminator.
inline constexpr std::size_t kNameBufferSize = 51;      // origin, function, file
inline constexpr std::size_t kMessageBufferSize = 101;  // message

// Size of the fixed buffer behind a text field id (3, 4, 5, 7); 0 for any other id.
constexpr std::size_t FixedBufferSize(int32_t fieldId) {
    switch (fieldId) {
        case ERRLIB_ID_ORIGIN:
        case ERRLIB_ID_FUNCTION:
        case ERRLIB_ID_FILE:
            return kNameBufferSize;
        case ERRLIB_ID_MESSAGE:
            return kMessageBufferSize;
        default:
            return 0;
    }
}

// True when `record` is the reserved record embedded in `stack` (a null stack: false).
inline bool IsReservedRecordOf(const ERRLIB_Error *record, const ERRLIB_ErrorStack *stack) {
    return stack != nullptr && record == &stack->memoryError;
}

// Frees a record that came out of a stack's slot array, with its four texts, whatever class it
// carries now (a caller may have changed the class of a record it peeked at). Null is ignored.
void FreeHeapRecord(ERRLIB_Error *record);

// Stores in *field an exact-size heap copy (length + 1 bytes) of `text`; a null text leaves
// *field null. Returns false when the allocation fails: the failure is then recorded on `stack`
// with the call site `path`:`line`, and *field is null.
bool CopyText(char **field, const char *text, ERRLIB_ErrorStack *stack, const char *path,
              int32_t line);

}  // namespace errlib

#endif  // ERRLIB_ERRSTACK_INTERNAL_H
