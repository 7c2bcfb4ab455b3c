// SPDX-License-Identifier: MIT
// errstack.cpp - error stacks: creation, destruction and the two push operations.
#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "errstack_internal.h"

namespace {

[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     errstack.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     errlib.h\t\t$Revision$\t$Date$",
    "@(#)     errstack_internal.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Source path passed to the allocator with this file's own allocations (identifies call sites).
constexpr char kSourcePath[] = "errlib/errstack.cpp";

using errlib::kMessageBufferSize;
using errlib::kNameBufferSize;

// Copies at most size - 1 characters of `text` into the fixed buffer `buffer` of `size` bytes,
// zero-filling the rest, so that the buffer is terminated at position size - 1 and holds no stale
// bytes of an earlier, longer text. Reads at most size - 1 bytes of `text`.
void CopyIntoFixedBuffer(char *buffer, std::size_t size, const char *text) {
    std::size_t length = strnlen(text, size - 1);
    std::memcpy(buffer, text, length);
    std::memset(buffer + length, 0, size - length);
}

// Fills the stack's reserved record in place with a memory error; allocates nothing. A null text
// leaves that buffer's previous content in place: there is one reserved record, the latest memory
// error wins, and a report that omits a text keeps the earlier one's (kept so for compatibility).
void FillReservedRecord(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                        const char *origin, const char *function, const char *file, int32_t line,
                        const char *message) {
    ERRLIB_Error &reserved = stack->memoryError;
    reserved.component = component;
    reserved.code = code;
    reserved.errorClass = ERRLIB_CLASS_MEMORY;
    reserved.line = line;
    reserved.timestamp = std::time(nullptr);
    if (origin != nullptr && reserved.origin != nullptr) {
        CopyIntoFixedBuffer(reserved.origin, kNameBufferSize, origin);
    }
    if (function != nullptr && reserved.function != nullptr) {
        CopyIntoFixedBuffer(reserved.function, kNameBufferSize, function);
    }
    if (file != nullptr && reserved.file != nullptr) {
        // The end of a path is its informative part: a long path keeps its last 50 characters.
        std::size_t length = std::strlen(file);
        const char *tail =
            (length > kNameBufferSize - 1) ? file + (length - (kNameBufferSize - 1)) : file;
        CopyIntoFixedBuffer(reserved.file, kNameBufferSize, tail);
    }
    if (message != nullptr && reserved.message != nullptr) {
        CopyIntoFixedBuffer(reserved.message, kMessageBufferSize, message);
    }
    stack->memoryErrorInUse = 1;
}

// Makes room for one more record, growing the slot array by 10 slots when it is full. A failed
// growth is reported on the stack itself (into its reserved record) and keeps the old array.
bool EnsureFreeSlot(ERRLIB_ErrorStack *stack) {
    if (stack->count < stack->capacity) {
        return true;
    }
    const int32_t newCapacity = stack->count + errlib::kSlotGrowth;
    const auto bytes =
        static_cast<uint32_t>(static_cast<std::size_t>(newCapacity) * sizeof(ERRLIB_Error *));
    auto **grown = static_cast<ERRLIB_Error **>(
        MMFLAT_Resize(stack->slots, bytes, stack, kSourcePath, __LINE__));
    if (grown == nullptr) {
        return false;
    }
    for (int32_t i = stack->capacity; i < newCapacity; ++i) {
        grown[i] = nullptr;
    }
    stack->slots = grown;
    stack->capacity = newCapacity;
    return true;
}

}  // namespace

// Creates an empty stack: 20 null slots and a reserved record (class 2) whose four fixed buffers
// are allocated zero-filled. Stores the stack in *stackOut and returns 0; the caller owns it and
// destroys it with ERRLIB_ErrorStack_Destroy. Returns 1, leaving *stackOut untouched and having
// freed whatever it had obtained, on a null stackOut or when an allocation fails (nothing is
// recorded: there is no stack yet).
extern "C" int ERRLIB_ErrorStack_Create(ERRLIB_ErrorStack **stackOut) noexcept {
    if (stackOut == nullptr) {
        return 1;
    }
    auto *stack = static_cast<ERRLIB_ErrorStack *>(
        MMFLAT_New(sizeof(ERRLIB_ErrorStack), nullptr, kSourcePath, __LINE__));
    if (stack == nullptr) {
        return 1;
    }
    auto **slots = static_cast<ERRLIB_Error **>(
        MMFLAT_New(static_cast<uint32_t>(errlib::kInitialSlots * sizeof(ERRLIB_Error *)), nullptr,
                   kSourcePath, __LINE__));
    if (slots == nullptr) {
        MMFLAT_Free(stack);
        return 1;
    }
    for (int32_t i = 0; i < errlib::kInitialSlots; ++i) {
        slots[i] = nullptr;
    }
    stack->count = 0;
    stack->capacity = errlib::kInitialSlots;
    stack->reservedWord = 0;
    stack->memoryErrorInUse = 0;
    stack->slots = slots;

    ERRLIB_Error &reserved = stack->memoryError;
    reserved.component = 0;
    reserved.timestamp = 0;
    reserved.code = 0;
    reserved.errorClass = ERRLIB_CLASS_MEMORY;
    reserved.line = 0;
    reserved.origin =
        static_cast<char *>(MMFLAT_NewClear(kNameBufferSize, nullptr, kSourcePath, __LINE__));
    reserved.function =
        static_cast<char *>(MMFLAT_NewClear(kNameBufferSize, nullptr, kSourcePath, __LINE__));
    reserved.file =
        static_cast<char *>(MMFLAT_NewClear(kNameBufferSize, nullptr, kSourcePath, __LINE__));
    reserved.message =
        static_cast<char *>(MMFLAT_NewClear(kMessageBufferSize, nullptr, kSourcePath, __LINE__));
    if (reserved.origin == nullptr || reserved.function == nullptr || reserved.file == nullptr ||
        reserved.message == nullptr) {
        // The half-built stack is given back entirely, the stack block included.
        MMFLAT_Free(reserved.origin);
        MMFLAT_Free(reserved.function);
        MMFLAT_Free(reserved.file);
        MMFLAT_Free(reserved.message);
        MMFLAT_Free(slots);
        MMFLAT_Free(stack);
        return 1;
    }
    *stackOut = stack;
    return 0;
}

// Clears the stack (every heap record is freed, the reserved record emptied) and frees the fixed
// buffers, the slot array and the stack. Returns 0, or 1 for a null stack or when the clear met
// a null slot (everything is freed all the same).
extern "C" int ERRLIB_ErrorStack_Destroy(ERRLIB_ErrorStack *stack) noexcept {
    if (stack == nullptr) {
        return 1;
    }
    int status = ERRLIB_ErrorStack_Clear(stack);
    if (status != 0) {
        // The clear stopped at a null slot: free the records it did not reach.
        for (int32_t i = 0; i < stack->count; ++i) {
            errlib::FreeHeapRecord(stack->slots[i]);
        }
    }
    MMFLAT_Free(stack->memoryError.origin);
    MMFLAT_Free(stack->memoryError.function);
    MMFLAT_Free(stack->memoryError.file);
    MMFLAT_Free(stack->memoryError.message);
    MMFLAT_Free(stack->slots);
    MMFLAT_Free(stack);
    return status;
}

// Pushes one error; the four texts are optional. Class 2 fills the reserved record in place
// (origin and function cut to their first 50 characters, the file path to its last 50, the
// message to its first 100) and allocates nothing. Any other class pushes a heap record holding
// exact-size copies of the texts, growing the slot array by 10 when it is full. Returns 0, or 1
// for a null stack (nothing recorded: a null stack silences every library function) or when an
// allocation fails; the error being pushed is then lost, nothing is leaked, and the allocator's
// own memory error is in the reserved record.
extern "C" int ERRLIB_ErrorStack_AddError(ERRLIB_ErrorStack *stack, int32_t component, int32_t code,
                                          int32_t errorClass, const char *origin,
                                          const char *function, const char *file, int32_t line,
                                          const char *message) noexcept {
    if (stack == nullptr) {
        return 1;
    }
    if (errorClass == ERRLIB_CLASS_MEMORY) {
        FillReservedRecord(stack, component, code, origin, function, file, line, message);
        return 0;
    }
    ERRLIB_Error *record = nullptr;
    if (ERRLIB_Error_Create(&record, stack) != 0) {
        return 1;
    }
    record->component = component;
    record->code = code;
    record->errorClass = errorClass;
    record->line = line;
    if (!errlib::CopyText(&record->origin, origin, stack, kSourcePath, __LINE__) ||
        !errlib::CopyText(&record->function, function, stack, kSourcePath, __LINE__) ||
        !errlib::CopyText(&record->file, file, stack, kSourcePath, __LINE__) ||
        !errlib::CopyText(&record->message, message, stack, kSourcePath, __LINE__)) {
        errlib::FreeHeapRecord(record);  // not pushed; given back rather than lost
        return 1;
    }
    record->timestamp = std::time(nullptr);
    if (!EnsureFreeSlot(stack)) {
        errlib::FreeHeapRecord(record);
        return 1;
    }
    stack->slots[stack->count] = record;
    ++stack->count;
    return 0;
}

// Pushes a class-23 record (component 50, `code`, the caller's function, file and line) and,
// when secondCode is not 0, a class-24 record for secondCode after it. A null or empty file, or a
// code of 0, returns 1 and pushes nothing. Otherwise returns the status of the last push made.
extern "C" int ERRLIB_ErrorStack_Add_SMError(ERRLIB_ErrorStack *stack, const char *function,
                                             int32_t line, const char *file, int32_t code,
                                             int32_t secondCode) noexcept {
    if (file == nullptr || file[0] == '\0' || code == 0) {
        return 1;
    }
    int status = ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, code, 23, nullptr,
                                            function, file, line, nullptr);
    if (status != 0) {
        return status;
    }
    if (secondCode != 0) {
        return ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, secondCode, 24,
                                          nullptr, function, file, line, nullptr);
    }
    return 0;
}
