/* SPDX-License-Identifier: MIT */
// Helpers shared by the error library's tests.
#ifndef NLS_TESTS_ERRLIB_ERRLIB_TEST_UTIL_H
#define NLS_TESTS_ERRLIB_ERRLIB_TEST_UTIL_H

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errstack_internal.h"

namespace errlib_test {

struct StackDeleter {
    void operator()(ERRLIB_ErrorStack *stack) const {
        ERRLIB_ErrorStack_Destroy(stack);
    }
};
using StackPtr = std::unique_ptr<ERRLIB_ErrorStack, StackDeleter>;

// A fresh stack; the test fails when it cannot be created.
inline StackPtr NewStack() {
    ERRLIB_ErrorStack *stack = nullptr;
    if (ERRLIB_ErrorStack_Create(&stack) != 0) {
        return nullptr;
    }
    return StackPtr(stack);
}

// Pushes an ordinary error of class 5 with the given code and texts derived from it.
inline int PushOrdinary(ERRLIB_ErrorStack *stack, int32_t code) {
    std::string function = "function" + std::to_string(code);
    return ERRLIB_ErrorStack_AddError(stack, 50, code, 5, "origin", function.c_str(), "file.cpp",
                                      code * 10, "message");
}

// Pushes a memory error the way the allocator does.
inline int PushMemoryError(ERRLIB_ErrorStack *stack, const char *function, const char *file,
                           int32_t line, const char *message) {
    return ERRLIB_ErrorStack_AddError(stack, 50, 1, 2, nullptr, function, file, line, message);
}

// Count of errors, or -1 when the query fails.
inline int32_t ErrorCount(const ERRLIB_ErrorStack *stack) {
    int32_t count = -1;
    if (ERRLIB_ErrorStack_GetNumberofErrors(stack, &count) != 0) {
        return -1;
    }
    return count;
}

// True when the `size` bytes at `buffer` are all zero.
inline bool AllZero(const char *buffer, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        if (buffer[i] != '\0') {
            return false;
        }
    }
    return true;
}

// A text of `length` characters cycling through the alphabet, starting at `first`.
inline std::string Letters(std::size_t length, char first = 'a') {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text.push_back(static_cast<char>('a' + (first - 'a' + i) % 26));
    }
    return text;
}

// Frees a caller-held record of any class, texts included (a class-2 copy is not freed by
// ERRLIB_Error_Release: it is given another class first).
inline void DisposeRecord(ERRLIB_Error *record) {
    if (record == nullptr) {
        return;
    }
    ERRLIB_Error_SetInt32(record, ERRLIB_ID_CLASS, 0);
    ERRLIB_Error_Release(record, nullptr);
}

}  // namespace errlib_test

#endif  // NLS_TESTS_ERRLIB_ERRLIB_TEST_UTIL_H
