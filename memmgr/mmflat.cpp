// SPDX-License-Identifier: MIT
// mmflat.cpp - the checked allocator: the system allocator, with every failure reported on the
// caller's error stack. Keeps no state of its own.
#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     mmflat.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     errlib.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Allocation failures: code 1 of the memory class.
constexpr int32_t kCodeOutOfMemory = 1;
// A null text given to a duplicating function: code 2 of the memory class.
constexpr int32_t kCodeNullArgument = 2;

// Reports a failed system call `call` asking for `size` bytes on `stack` (nothing when the stack
// is null). The size is printed as a signed decimal ("%d"), so sizes above 2147483647 read
// negative; callers match on this text. Class 2 puts the report into the stack's reserved record,
// which needs no allocation.
void ReportAllocationFailure(ERRLIB_ErrorStack *stack, const char *call, uint32_t size,
                             const char *file, int32_t line) {
    if (stack == nullptr) {
        return;
    }
    char sizeText[12];  // "-2147483648" and the terminator
    std::snprintf(sizeText, sizeof sizeText, "%d", static_cast<int>(static_cast<int32_t>(size)));
    ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, kCodeOutOfMemory,
                               ERRLIB_CLASS_MEMORY, nullptr, call, file, line, sizeText);
}

// Reports a null text given to the duplicating function `origin` on `stack` (if any).
void ReportNullArgument(ERRLIB_ErrorStack *stack, const char *origin, const char *file,
                        int32_t line) {
    if (stack == nullptr) {
        return;
    }
    ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, kCodeNullArgument,
                               ERRLIB_CLASS_MEMORY, origin, nullptr, file, line, nullptr);
}

}  // namespace

// Allocates `size` bytes with malloc. Returns the block, which the caller frees with MMFLAT_Free,
// or null when the system cannot satisfy the request (reported on `stack` as "malloc" with the
// caller's file and line and the size).
extern "C" void *MMFLAT_New(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                            int32_t line) noexcept {
    void *block = std::malloc(size);
    if (block == nullptr) {
        ReportAllocationFailure(stack, "malloc", size, file, line);
    }
    return block;
}

// Allocates a zero-filled block of `size` bytes with calloc(1, size). Returns the block (freed
// with MMFLAT_Free), or null on failure (reported on `stack` as "calloc").
extern "C" void *MMFLAT_NewClear(uint32_t size, ERRLIB_ErrorStack *stack, const char *file,
                                 int32_t line) noexcept {
    void *block = std::calloc(1, size);
    if (block == nullptr) {
        ReportAllocationFailure(stack, "calloc", size, file, line);
    }
    return block;
}

// Resizes `block` (null: a new block) to `size` bytes with realloc. Returns the resized block,
// which replaces the old one; on failure returns null (reported on `stack` as "realloc") and the
// old block is untouched and still the caller's. A size of 0 for an existing block asks for a
// block of one byte: the system's realloc would free the block and return null, which the caller
// could not tell from a failure that keeps the block.
extern "C" void *MMFLAT_Resize(void *block, uint32_t size, ERRLIB_ErrorStack *stack,
                               const char *file, int32_t line) noexcept {
    std::size_t request = (block != nullptr && size == 0) ? 1 : size;
    void *resized = std::realloc(block, request);
    if (resized == nullptr) {
        ReportAllocationFailure(stack, "realloc", size, file, line);
    }
    return resized;
}

// Returns a copy of the terminated byte string `text` (length + 1 bytes, freed with MMFLAT_Free).
// A null text returns null and reports code 2 with origin "MMFLAT_StrDup"; a failed allocation
// returns null and is reported as "malloc" with the caller's file and line.
extern "C" char *MMFLAT_StrDup(const char *text, ERRLIB_ErrorStack *stack, const char *file,
                               int32_t line) noexcept {
    if (text == nullptr) {
        ReportNullArgument(stack, "MMFLAT_StrDup", file, line);
        return nullptr;
    }
    const std::size_t size = std::strlen(text) + 1;
    auto *copy = static_cast<char *>(MMFLAT_New(static_cast<uint32_t>(size), stack, file, line));
    if (copy != nullptr) {
        std::memcpy(copy, text, size);
    }
    return copy;
}

// Returns a copy of a string of 16-bit units ended by a zero unit: the units up to and including
// the zero unit, two bytes each, whatever the width of the platform's wchar_t (freed with
// MMFLAT_Free). A null text returns null and reports code 2 with origin "MMFLAT_WcsDup"; a failed
// allocation returns null and is reported as "malloc".
extern "C" uint16_t *MMFLAT_WcsDup(const uint16_t *text, ERRLIB_ErrorStack *stack, const char *file,
                                   int32_t line) noexcept {
    if (text == nullptr) {
        ReportNullArgument(stack, "MMFLAT_WcsDup", file, line);
        return nullptr;
    }
    std::size_t units = 1;
    while (text[units - 1] != 0) {
        ++units;
    }
    const std::size_t bytes = units * sizeof(uint16_t);
    auto *copy =
        static_cast<uint16_t *>(MMFLAT_New(static_cast<uint32_t>(bytes), stack, file, line));
    if (copy != nullptr) {
        std::memcpy(copy, text, bytes);
    }
    return copy;
}

// Frees a block of this allocator; a null block is accepted and ignored.
extern "C" void MMFLAT_Free(void *block) noexcept {
    if (block != nullptr) {
        std::free(block);
    }
}

// Every size is valid: always returns 1.
extern "C" int MMFLAT_ValidSize(void) noexcept {
    return 1;
}
