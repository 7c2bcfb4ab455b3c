/* SPDX-License-Identifier: MIT */
// Cases of the error stacks, error records and the checked allocator: each call works on a stack
// of its own.
#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <cstdint>
#include <string>

#include "concurrency/reentrancy_cases.h"

namespace concurrency_test {
namespace {

// The whole life of a stack, owned by the calling thread alone: heap records, slot growth, the
// reserved record filled by the allocator, every retrieval, and the release of all of it.
std::string ErrorStack() {
    Outcome o;
    ERRLIB_ErrorStack *stack = nullptr;
    o.Num(ERRLIB_ErrorStack_Create(&stack));
    o.Num(ERRLIB_ErrorStack_AddError(stack, 50, 7, 1, "origin", "function",
                                     "/a/rather/long/path/to/some/source/file/of/the/caller.cpp",
                                     42, "message"));
    o.Num(ERRLIB_ErrorStack_Add_SMError(stack, "Function", 12, "file.c", 3, 4));
    for (int i = 0; i < 25; ++i) {
        const std::string message = "error " + std::to_string(i);
        o.Num(ERRLIB_ErrorStack_AddError(stack, 60, i, 5, nullptr, "f", "file.c", i,
                                         message.c_str()));
    }
    int32_t count = -1;
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    // A null text given to the allocator fills the reserved record, which then comes first.
    o.Num(MMFLAT_StrDup(nullptr, stack, "concurrency/reentrancy_cases.cpp", 99) == nullptr);
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    ERRLIB_Error *record = nullptr;
    o.Num(ERRLIB_ErrorStack_PeekLastError(stack, &record)).Record(record);
    int32_t index = -2;
    record = nullptr;
    o.Num(ERRLIB_ErrorStack_FindError(stack, 50, 3, 23, "FUNCTION", "FILE.C", &index, &record));
    o.Num(index).Record(record);
    o.Num(ERRLIB_ErrorStack_FindError(stack, 50, 1, 2, nullptr, nullptr, &index, &record));
    o.Num(index).Record(record);
    // The reserved record handed out stays the stack's: releasing it only clears it.
    o.Num(ERRLIB_ErrorStack_GetFirstError(stack, &record)).Record(record);
    o.Num(ERRLIB_Error_Release(record, stack)).Record(record);
    o.Num(ERRLIB_ErrorStack_GetFirstError(stack, &record)).Record(record);
    o.Num(ERRLIB_Error_Release(record, stack));
    o.Num(ERRLIB_ErrorStack_GetLastError(stack, &record)).Record(record);
    o.Num(ERRLIB_Error_Release(record, nullptr));
    o.Num(ERRLIB_ErrorStack_RemoveLastError(stack, 23, 5));
    o.Num(ERRLIB_ErrorStack_RemoveLastError(stack, 22, 5));
    o.Num(ERRLIB_ErrorStack_RemoveLastError_U(stack));
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    o.Num(ERRLIB_ErrorStack_Clear(stack));
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    o.Num(ERRLIB_ErrorStack_GetFirstError(stack, &record)).Record(record);
    o.Num(ERRLIB_ErrorStack_Add_SMError(stack, nullptr, 1, "f.c", 9, 0));
    // Destroy releases the record still on the stack.
    o.Num(ERRLIB_ErrorStack_Destroy(stack));
    return o.Take();
}

std::string ErrorRecords() {
    Outcome o;
    ERRLIB_ErrorStack *stack = nullptr;
    o.Num(ERRLIB_ErrorStack_Create(&stack));
    ERRLIB_Error *record = nullptr;
    ERRLIB_Error *copy = nullptr;
    o.Num(ERRLIB_Error_Create(&record, stack)).Record(record);
    o.Num(ERRLIB_Error_Create(&copy, stack));
    for (int32_t id = ERRLIB_ID_COMPONENT; id <= ERRLIB_ID_MESSAGE + 1; ++id) {
        o.Num(ERRLIB_Error_SetInt32(record, id, 100 + id));
        o.Num(ERRLIB_Error_SetChar(record, id, "text of the field", stack));
        int32_t value = -1;
        o.Num(ERRLIB_Error_GetInt32(record, id, &value)).Num(value);
        char *text = nullptr;
        o.Num(ERRLIB_Error_GetChar(record, id, &text)).Num(text == nullptr);
    }
    o.Num(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "a second message", stack));
    o.Record(record);
    o.Num(ERRLIB_Error_Copy(copy, record, stack)).Record(copy);
    o.Num(ERRLIB_Error_Copy(copy, copy, stack)).Record(copy);
    o.Num(ERRLIB_Error_Clear(record, stack)).Record(record);
    o.Num(ERRLIB_Error_Release(record, stack));
    o.Num(ERRLIB_Error_Destroy(copy, nullptr));
    int32_t count = -1;
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    o.Num(ERRLIB_ErrorStack_Destroy(stack));
    return o.Take();
}

std::string CheckedAllocator() {
    Outcome o;
    ERRLIB_ErrorStack *stack = nullptr;
    o.Num(ERRLIB_ErrorStack_Create(&stack));
    auto *block = static_cast<unsigned char *>(MMFLAT_New(64, stack, __FILE__, __LINE__));
    for (int i = 0; i < 64; ++i) {
        block[i] = static_cast<unsigned char>(i);
    }
    block = static_cast<unsigned char *>(MMFLAT_Resize(block, 4096, stack, __FILE__, __LINE__));
    o.Bytes(block, 64);
    block = static_cast<unsigned char *>(MMFLAT_Resize(block, 16, stack, __FILE__, __LINE__));
    o.Bytes(block, 16);
    block = static_cast<unsigned char *>(MMFLAT_Resize(block, 0, stack, __FILE__, __LINE__));
    o.Num(block != nullptr);
    MMFLAT_Free(block);
    void *fresh = MMFLAT_Resize(nullptr, 8, stack, __FILE__, __LINE__);
    o.Num(fresh != nullptr);
    MMFLAT_Free(fresh);
    void *zeros = MMFLAT_NewClear(48, stack, __FILE__, __LINE__);
    o.Bytes(zeros, 48);
    MMFLAT_Free(zeros);
    char *text = MMFLAT_StrDup("a copied text", stack, __FILE__, __LINE__);
    o.Text(text);
    MMFLAT_Free(text);
    static constexpr uint16_t kUnits[] = {'A', 'B', 0};
    uint16_t *units = MMFLAT_WcsDup(kUnits, stack, __FILE__, __LINE__);
    o.Bytes(units, sizeof kUnits);
    MMFLAT_Free(units);
    MMFLAT_Free(nullptr);
    o.Num(MMFLAT_ValidSize());
    // Null texts are refused and recorded in the reserved record of this thread's stack.
    o.Num(MMFLAT_StrDup(nullptr, stack, "first.cpp", 1) == nullptr);
    o.Num(MMFLAT_WcsDup(nullptr, stack, "second.cpp", 2) == nullptr);
    int32_t count = -1;
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    ERRLIB_Error *record = nullptr;
    o.Num(ERRLIB_ErrorStack_PeekLastError(stack, &record)).Record(record);
    o.Num(ERRLIB_ErrorStack_RemoveLastError(stack, 2, ERRLIB_CLASS_MEMORY));
    o.Num(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count)).Num(count);
    o.Num(ERRLIB_ErrorStack_Destroy(stack));
    return o.Take();
}

constexpr ReentrancyCase kCases[] = {
    {"error stack", ErrorStack},
    {"error records", ErrorRecords},
    {"checked allocator", CheckedAllocator},
};

}  // namespace

std::span<const ReentrancyCase> ErrorCases() {
    return kCases;
}

}  // namespace concurrency_test
