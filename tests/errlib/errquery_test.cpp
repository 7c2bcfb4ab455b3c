/* SPDX-License-Identifier: MIT */
// Error stack queries: counting, retrieval, search and removal.
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"

namespace {

using errlib_test::AllZero;
using errlib_test::ErrorCount;
using errlib_test::NewStack;
using errlib_test::PushMemoryError;
using errlib_test::PushOrdinary;
using errlib_test::StackPtr;

ERRLIB_Error gSentinelRecord{};
ERRLIB_Error *const kSentinel = &gSentinelRecord;

// One memory error and two ordinary errors (codes 1 then 2).
StackPtr MixedStack() {
    StackPtr stack = NewStack();
    if (stack == nullptr || PushOrdinary(stack.get(), 1) != 0 ||
        PushMemoryError(stack.get(), "malloc", "mm.cpp", 40, "100") != 0 ||
        PushOrdinary(stack.get(), 2) != 0) {
        return nullptr;
    }
    return stack;
}

// ---- GetNumberofErrors ----

TEST(ErrorStackCount, CountsHeapRecordsAndAPendingMemoryError) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    int32_t count = -5;
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack.get(), &count), 0);
    EXPECT_EQ(count, 3);
}

TEST(ErrorStackCount, NullStackOrOutputReturnsOne) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    int32_t count = -5;
    EXPECT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(nullptr, &count), 1);
    EXPECT_EQ(count, -5);
    EXPECT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack.get(), nullptr), 1);
}

// ---- GetFirstError ----

TEST(ErrorStackGetFirst, MemoryErrorFirstThenTheOlderOrdinaryError) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 0);
    EXPECT_EQ(record, &stack->memoryError);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_EQ(ErrorCount(stack.get()), 2);
    // Still readable after it stopped counting.
    EXPECT_STREQ(record->function, "malloc");
    EXPECT_EQ(record->line, 40);

    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 0);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->code, 1);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_EQ(stack->slots[0]->code, 2);
    EXPECT_EQ(stack->slots[1], nullptr);
    ERRLIB_Error_Release(record, stack.get());
}

TEST(ErrorStackGetFirst, ShiftsEverySlotOverTheWholeCapacity) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 21; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(stack->capacity, 30);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 0);
    EXPECT_EQ(record->code, 1);
    EXPECT_EQ(stack->count, 20);
    EXPECT_EQ(stack->capacity, 30);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(stack->slots[i]->code, i + 2);
    }
    for (int i = 20; i < 30; ++i) {
        EXPECT_EQ(stack->slots[i], nullptr);
    }
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorStackGetFirst, TakesOldestFirstUntilEmpty) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 4; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    for (int i = 1; i <= 4; ++i) {
        ERRLIB_Error *record = nullptr;
        ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 0);
        EXPECT_EQ(record->code, i);
        ERRLIB_Error_Release(record, nullptr);
    }
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 1);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackGetFirst, EmptyStackReturnsOneAndChangesNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 1);
    EXPECT_EQ(record, nullptr);  // written before the stack is examined
    EXPECT_EQ(stack->count, 0);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_EQ(stack->capacity, 20);
}

TEST(ErrorStackGetFirst, NullStackWritesNullAndReturnsOne) {
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_GetFirstError(nullptr, &record), 1);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackGetFirst, NullOutputReturnsOneAndTakesNothing) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), nullptr), 1);
    EXPECT_EQ(ErrorCount(stack.get()), 3);
}

// ---- GetLastError ----

TEST(ErrorStackGetLast, MemoryErrorFirstThenTheNewerOrdinaryError) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 0);
    EXPECT_EQ(record, &stack->memoryError);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    ASSERT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 0);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->code, 2);
    EXPECT_EQ(stack->count, 1);
    EXPECT_EQ(stack->slots[1], nullptr);
    EXPECT_EQ(stack->slots[0]->code, 1);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorStackGetLast, TakesNewestFirstUntilEmpty) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 22; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    for (int i = 22; i >= 1; --i) {
        ERRLIB_Error *record = nullptr;
        ASSERT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 0);
        EXPECT_EQ(record->code, i);
        EXPECT_EQ(stack->slots[i - 1], nullptr);
        ERRLIB_Error_Release(record, nullptr);
    }
    EXPECT_EQ(stack->capacity, 30);
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 1);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackGetLast, NullStackOrOutputReturnsOne) {
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_GetLastError(nullptr, &record), 1);
    EXPECT_EQ(record, nullptr);
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), nullptr), 1);
    EXPECT_EQ(ErrorCount(stack.get()), 3);
}

// ---- PeekLastError ----

TEST(ErrorStackPeek, ShowsAPendingMemoryErrorFirstAndChangesNothing) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &record), 0);
    EXPECT_EQ(record, &stack->memoryError);
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    EXPECT_EQ(ErrorCount(stack.get()), 3);
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &record), 0);
    EXPECT_EQ(record, &stack->memoryError);
}

TEST(ErrorStackPeek, ShowsTheNewestHeapRecordWithoutTakingIt) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &record), 0);
    EXPECT_EQ(record, stack->slots[1]);
    EXPECT_EQ(record->code, 2);
    EXPECT_EQ(stack->count, 2);
}

TEST(ErrorStackPeek, NoErrorReturnsOneWithNull) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &record), 1);
    EXPECT_EQ(record, nullptr);
    record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_PeekLastError(nullptr, &record), 1);
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), nullptr), 1);
}

// ---- FindError ----

TEST(ErrorStackFind, FunctionComparesIgnoringCase) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 3, nullptr, "malloc", "a.cpp", 1, nullptr),
        0);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(
        ERRLIB_ErrorStack_FindError(stack.get(), 50, 1, 3, "MALLOC", nullptr, &index, &record), 0);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(record, stack->slots[0]);
}

TEST(ErrorStackFind, SearchOfAFullSlotArrayReadsOnlyTheRecordsItHolds) {
    // Exactly as many records as the slot array has room for: the search must stop at the last
    // record (under AddressSanitizer a read of the slot behind it fails the test).
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int32_t i = 0; i < errlib::kInitialSlots; ++i) {
        ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 100 + i, 3, nullptr, "f", "x", i,
                                             nullptr),
                  0);
    }
    ASSERT_EQ(stack->count, stack->capacity);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 7, 3, nullptr, nullptr, &index, &record),
              0);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(record, nullptr);
    const int32_t last = 100 + errlib::kInitialSlots - 1;
    ASSERT_EQ(
        ERRLIB_ErrorStack_FindError(stack.get(), 50, last, 3, nullptr, nullptr, &index, &record), 0);
    EXPECT_EQ(index, errlib::kInitialSlots - 1);
    EXPECT_EQ(record, stack->slots[errlib::kInitialSlots - 1]);
}

TEST(ErrorStackFind, MatchOfTheReservedRecordGivesIndexZeroAndNullRecord) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, nullptr, "malloc", "a.cpp", 1, nullptr),
        0);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(
        ERRLIB_ErrorStack_FindError(stack.get(), 50, 1, 2, "Malloc", "A.CPP", &index, &record), 0);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(stack->memoryErrorInUse, 1);  // found, not taken
}

TEST(ErrorStackFind, ReservedRecordIsTestedBeforeTheSlots) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    // Slot 0 and the reserved record both match the query.
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 3, nullptr, "f", "x", 1, nullptr), 0);
    ERRLIB_Error_SetInt32(stack->slots[0], ERRLIB_ID_CLASS, 2);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, nullptr, "f", "x", 1, nullptr), 0);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 1, 2, nullptr, nullptr, &index, &record),
              0);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackFind, FirstMatchingSlotWins) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x", 1, "1"), 0);  // does not match
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 2, 5, "FUNCTION2", "File.cpp", &index,
                                          &record),
              0);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(record, stack->slots[1]);
    EXPECT_EQ(stack->count, 3);  // found, not taken
}

TEST(ErrorStackFind, RecordOutputIsOptional) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    int32_t index = 99;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 2, 5, nullptr, nullptr, &index, nullptr),
              0);
    EXPECT_EQ(index, 1);
}

struct FindMiss {
    const char *name;
    int32_t component;
    int32_t code;
    int32_t errorClass;
    const char *function;
    const char *file;
};

// Printed by its name in test output.
void PrintTo(const FindMiss &value, std::ostream *out) {
    *out << value.name;
}

class ErrorStackFindMisses : public ::testing::TestWithParam<FindMiss> {};

// The stack holds one record: component 50, code 2, class 5, function "function2", file
// "file.cpp", and a memory error: 50, 1, 2, "malloc", "mm.cpp". Each query misses both.
TEST_P(ErrorStackFindMisses, GivesIndexMinusOneAndNullRecord) {
    const FindMiss &q = GetParam();
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 1, "1"), 0);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), q.component, q.code, q.errorClass,
                                          q.function, q.file, &index, &record),
              0);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(record, nullptr);
    EXPECT_EQ(ErrorCount(stack.get()), 2);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ErrorStackFindMisses,
    ::testing::Values(FindMiss{"OtherComponent", 51, 2, 5, nullptr, nullptr},
                      FindMiss{"OtherCode", 50, 3, 5, nullptr, nullptr},
                      FindMiss{"OtherClass", 50, 2, 6, nullptr, nullptr},
                      FindMiss{"OtherFunction", 50, 2, 5, "function3", nullptr},
                      FindMiss{"FunctionPrefix", 50, 2, 5, "function", nullptr},
                      FindMiss{"OtherFile", 50, 2, 5, nullptr, "file.cp"},
                      FindMiss{"MemoryOtherFunction", 50, 1, 2, "calloc", nullptr},
                      FindMiss{"MemoryOtherFile", 50, 1, 2, nullptr, "mm.c"},
                      FindMiss{"MemoryOtherComponent", 0, 1, 2, nullptr, nullptr}),
    [](const ::testing::TestParamInfo<FindMiss> &info) { return info.param.name; });

TEST(ErrorStackFind, GivenFunctionDoesNotMatchANullFunction) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 2, 21, nullptr, nullptr, nullptr, 170, nullptr),
        0);
    int32_t index = 99;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 2, 21, "", nullptr, &index, nullptr), 0);
    EXPECT_EQ(index, -1);
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 2, 21, nullptr, "", &index, nullptr), 0);
    EXPECT_EQ(index, -1);
    ASSERT_EQ(
        ERRLIB_ErrorStack_FindError(stack.get(), 50, 2, 21, nullptr, nullptr, &index, nullptr), 0);
    EXPECT_EQ(index, 0);
}

TEST(ErrorStackFind, ATakenMemoryErrorIsNotFound) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 1, "1"), 0);
    ERRLIB_Error *taken = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &taken), 0);
    int32_t index = 99;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 50, 1, 2, nullptr, nullptr, &index, nullptr),
              0);
    EXPECT_EQ(index, -1);
}

TEST(ErrorStackFind, EmptyStackIsNotFound) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_FindError(stack.get(), 0, 0, 2, nullptr, nullptr, &index, &record),
              0);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackFind, NullStackReturnsOneWithIndexMinusOne) {
    int32_t index = 99;
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(ERRLIB_ErrorStack_FindError(nullptr, 50, 1, 2, nullptr, nullptr, &index, &record), 1);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(record, nullptr);
}

TEST(ErrorStackFind, NullIndexOutputReturnsOne) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kSentinel;
    EXPECT_EQ(
        ERRLIB_ErrorStack_FindError(stack.get(), 50, 1, 5, nullptr, nullptr, nullptr, &record), 1);
}

// ---- RemoveLastError and RemoveLastError_U ----

TEST(ErrorStackRemoveLast, MatchingMemoryErrorEmptiesTheReservedRecord) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 2), 0);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 1, 2), 0);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_EQ(ErrorCount(stack.get()), 2);
    EXPECT_EQ(stack->memoryError.errorClass, 2);
    EXPECT_EQ(stack->memoryError.code, 0);
    EXPECT_EQ(stack->memoryError.line, 0);
    EXPECT_TRUE(AllZero(stack->memoryError.function, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.file, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.message, 101));
}

TEST(ErrorStackRemoveLast, NonMatchingCodeOrClassKeepsTheError) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 4), 0);  // code 4, class 5
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 4, 6), 1);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 5, 5), 1);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x", 1, "1"), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 4, 5),
              1);  // newest is the memory error
    EXPECT_EQ(ErrorCount(stack.get()), 2);
    EXPECT_STREQ(stack->memoryError.function, "malloc");
}

TEST(ErrorStackRemoveLast, MatchingHeapRecordIsRemoved) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 3), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 4), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 4, 5), 0);
    EXPECT_EQ(stack->count, 1);
    EXPECT_EQ(stack->slots[1], nullptr);
    EXPECT_EQ(stack->slots[0]->code, 3);
}

TEST(ErrorStackRemoveLast, EmptyOrNullStackReturnsOne) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(stack.get(), 0, 0), 1);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError(nullptr, 1, 2), 1);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 1);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(nullptr), 1);
}

TEST(ErrorStackRemoveLastU, RemovesTheMemoryErrorThenTheNewestHeapRecords) {
    StackPtr stack = MixedStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 0);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_TRUE(AllZero(stack->memoryError.function, 51));
    EXPECT_EQ(ErrorCount(stack.get()), 2);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 0);
    ASSERT_EQ(stack->count, 1);
    EXPECT_EQ(stack->slots[0]->code, 1);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 0);
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 1);
}

TEST(ErrorStackRemoveLastU, FreesARecordWhoseClassWasChangedToTwo) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
    ERRLIB_Error_SetInt32(stack->slots[0], ERRLIB_ID_CLASS, 2);
    EXPECT_EQ(ERRLIB_ErrorStack_RemoveLastError_U(stack.get()), 0);  // leak checkers watch it
    EXPECT_EQ(ErrorCount(stack.get()), 0);
}

// ---- Clear ----

TEST(ErrorStackClear, TwentyFiveRecordsAndAMemoryErrorLeaveNoErrorAndCapacity30) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 25; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    stack->reservedWord = 7;
    ERRLIB_Error *first = stack->slots[0];
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    EXPECT_EQ(stack->count, 0);
    EXPECT_EQ(stack->capacity, 30);
    EXPECT_EQ(stack->reservedWord, 0);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_EQ(stack->memoryError.errorClass, 2);
    EXPECT_EQ(stack->memoryError.line, 0);
    EXPECT_TRUE(AllZero(stack->memoryError.function, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.file, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.message, 101));
    // The slots beyond count keep their old pointers.
    EXPECT_EQ(stack->slots[0], first);
}

TEST(ErrorStackClear, StackIsUsableAfterwards) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 3; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    ASSERT_EQ(PushOrdinary(stack.get(), 9), 0);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_EQ(stack->slots[0]->code, 9);
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);  // twice is harmless
}

TEST(ErrorStackClear, ATakenMemoryErrorKeepsItsContents) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    ERRLIB_Error *taken = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &taken), 0);
    ASSERT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    EXPECT_STREQ(taken->function, "malloc");
    EXPECT_EQ(taken->line, 12);
}

TEST(ErrorStackClear, NullStackReturnsOne) {
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(nullptr), 1);
}

TEST(ErrorStackClear, NullUsedSlotStopsTheClearWithCountKept) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 3; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    stack->reservedWord = 7;
    ERRLIB_Error *third = stack->slots[2];
    ERRLIB_Error *second = stack->slots[1];
    stack->slots[1] = nullptr;  // a damaged stack
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 1);
    EXPECT_EQ(stack->count, 3);
    EXPECT_EQ(stack->reservedWord, 7);
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    EXPECT_EQ(stack->slots[0], nullptr);  // freed, so not freed again by the destroy
    EXPECT_EQ(stack->slots[2], third);
    errlib_test::DisposeRecord(second);
}

}  // namespace
