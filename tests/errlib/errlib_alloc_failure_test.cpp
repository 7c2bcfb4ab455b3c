/* SPDX-License-Identifier: MIT */
// Every allocation site of the error library made to fail for real (the failing allocator of
// tests/support replaces malloc, calloc, realloc and free in this executable): nothing crashes,
// nothing leaks, and the recorded errors are exactly the allocator's.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"
#include <nlssupport/memmgr.h>
#include "support/alloc_interpose.h"

namespace {

using errlib_test::DisposeRecord;
using errlib_test::ErrorCount;
using errlib_test::NewStack;
using errlib_test::PushOrdinary;
using errlib_test::StackPtr;

ERRLIB_ErrorStack *const kStackSentinel = reinterpret_cast<ERRLIB_ErrorStack *>(0x1234);
ERRLIB_Error *const kRecordSentinel = reinterpret_cast<ERRLIB_Error *>(0x5678);

// The memory error the allocator records for a failed `call` of `size` bytes made by the library
// file `file`.
void ExpectAllocatorError(const ERRLIB_ErrorStack *stack, const char *call, const char *file,
                          std::size_t size) {
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    EXPECT_EQ(stack->memoryError.component, 50);
    EXPECT_EQ(stack->memoryError.code, 1);
    EXPECT_EQ(stack->memoryError.errorClass, 2);
    EXPECT_STREQ(stack->memoryError.origin, "");
    EXPECT_STREQ(stack->memoryError.function, call);
    EXPECT_STREQ(stack->memoryError.file, file);
    EXPECT_GT(stack->memoryError.line, 0);
    EXPECT_EQ(std::string(stack->memoryError.message), std::to_string(size));
}

// ---- ERRLIB_ErrorStack_Create ----

TEST(ErrlibAllocationFailure, CreateMakesSixAllocations) {
    alloc_interpose::Scope scope;
    ERRLIB_ErrorStack *stack = nullptr;
    const int status = ERRLIB_ErrorStack_Create(&stack);
    const unsigned long calls = scope.Calls();
    const std::size_t bytes = scope.LiveBytes();
    ERRLIB_ErrorStack_Destroy(stack);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(calls, 6u);  // stack, slot array, four fixed buffers
    EXPECT_EQ(bytes, sizeof(ERRLIB_ErrorStack) + 20 * sizeof(ERRLIB_Error *) + 3 * 51 + 101);
    EXPECT_EQ(live, 0u);
}

TEST(ErrlibAllocationFailure, CreateFailingAtAnyAllocationReturnsOneAndFreesEverything) {
    // 1: stack block, 2: slot array, 3-6: origin, function, file and message buffers.
    for (unsigned long n = 1; n <= 6; ++n) {
        alloc_interpose::Scope scope;
        scope.FailNth(n);
        ERRLIB_ErrorStack *stack = kStackSentinel;
        const int status = ERRLIB_ErrorStack_Create(&stack);
        const unsigned long injected = scope.Injected();
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        EXPECT_EQ(status, 1) << "allocation " << n;
        EXPECT_EQ(stack, kStackSentinel) << "allocation " << n;
        EXPECT_EQ(injected, 1u) << "allocation " << n;
        EXPECT_EQ(live, 0u) << "allocation " << n;
    }
}

TEST(ErrlibAllocationFailure, CreateFailsWhenAFixedBufferSizeFails) {
    for (std::size_t size : {std::size_t{51}, std::size_t{101}}) {
        alloc_interpose::Scope scope;
        scope.FailSize(size);
        ERRLIB_ErrorStack *stack = kStackSentinel;
        const int status = ERRLIB_ErrorStack_Create(&stack);
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        EXPECT_EQ(status, 1) << size;
        EXPECT_EQ(stack, kStackSentinel);
        EXPECT_EQ(live, 0u);
    }
}

// ---- ERRLIB_ErrorStack_AddError ----

TEST(ErrlibAllocationFailure, AddErrorFailingAtEachAllocationRecordsTheAllocatorsError) {
    // Allocation 1 is the record, 2-5 the texts "o", "fn", "fil", "mess" (sizes 2 to 5).
    const std::size_t sizes[] = {sizeof(ERRLIB_Error), 2, 3, 4, 5};
    const char *files[] = {"errlib/errrecord.cpp", "errlib/errstack.cpp", "errlib/errstack.cpp",
                           "errlib/errstack.cpp", "errlib/errstack.cpp"};
    for (unsigned long n = 1; n <= 5; ++n) {
        StackPtr stack = NewStack();
        ASSERT_NE(stack, nullptr);
        ASSERT_EQ(PushOrdinary(stack.get(), 1), 0);
        alloc_interpose::Scope scope;
        scope.FailNth(n);
        const int status =
            ERRLIB_ErrorStack_AddError(stack.get(), 50, 9, 5, "o", "fn", "fil", 3, "mess");
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        SCOPED_TRACE("allocation " + std::to_string(n));
        EXPECT_EQ(status, 1);
        EXPECT_EQ(live, 0u);  // the half-filled record is given back
        EXPECT_EQ(stack->count, 1);
        EXPECT_EQ(stack->slots[1], nullptr);
        EXPECT_EQ(ErrorCount(stack.get()), 2);
        ExpectAllocatorError(stack.get(), "malloc", files[n - 1], sizes[n - 1]);
    }
}

TEST(ErrlibAllocationFailure, AddErrorAllocatesOnlyTheGivenTexts) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    ERRLIB_ErrorStack_AddError(stack.get(), 50, 9, 5, nullptr, "fn", nullptr, 3, nullptr);
    const unsigned long calls = scope.Calls();
    const std::size_t bytes = scope.LiveBytes();
    scope.End();
    EXPECT_EQ(calls, 2u);
    EXPECT_EQ(bytes, sizeof(ERRLIB_Error) + 3);
}

TEST(ErrlibAllocationFailure, FailedGrowthKeepsTheOldArrayAndDropsTheNewRecord) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 20; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ERRLIB_Error **slots = stack->slots;
    alloc_interpose::Scope scope;
    scope.FailSize(30 * sizeof(ERRLIB_Error *));
    const int status = PushOrdinary(stack.get(), 21);
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(calls, 6u);  // record, four texts, then the growth
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(stack->capacity, 20);
    EXPECT_EQ(stack->count, 20);
    EXPECT_EQ(stack->slots, slots);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(stack->slots[i]->code, i + 1);
    }
    // (count + 10) slots of the platform's pointer width: 120 bytes on i386, 240 on x86_64.
    ExpectAllocatorError(stack.get(), "realloc", "errlib/errstack.cpp", 30 * sizeof(void *));
    EXPECT_EQ(ErrorCount(stack.get()), 21);
    // The next push grows the array.
    ASSERT_EQ(PushOrdinary(stack.get(), 22), 0);
    EXPECT_EQ(stack->capacity, 30);
    EXPECT_EQ(stack->slots[20]->code, 22);
}

TEST(ErrlibAllocationFailure, GrowthAsksForCountPlusTenPointers) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 30; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    alloc_interpose::Scope scope;
    scope.FailSize(40 * sizeof(ERRLIB_Error *));
    const int status = PushOrdinary(stack.get(), 31);
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(stack->capacity, 30);
    EXPECT_EQ(std::string(stack->memoryError.message), std::to_string(40 * sizeof(void *)));
}

TEST(ErrlibAllocationFailure, MemoryErrorsAllocateNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    scope.FailFrom(1);  // any allocation would fail
    const int status =
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "o", "malloc", "f.cpp", 1, "12");
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(calls, 0u);
    EXPECT_STREQ(stack->memoryError.function, "malloc");
}

// ---- Add_SMError ----

TEST(ErrlibAllocationFailure, SMErrorFirstPushFailingPushesNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    const int status = ERRLIB_ErrorStack_Add_SMError(stack.get(), "semop", 4, "sm.cpp", 1, 2);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(stack->count, 0);
    ExpectAllocatorError(stack.get(), "malloc", "errlib/errrecord.cpp", sizeof(ERRLIB_Error));
}

TEST(ErrlibAllocationFailure, SMErrorSecondPushFailingKeepsTheFirst) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    scope.FailNth(4);  // record, function, file of the first push; then the second record
    const int status = ERRLIB_ErrorStack_Add_SMError(stack.get(), "semop", 4, "sm.cpp", 1, 2);
    scope.End();
    EXPECT_EQ(status, 1);
    ASSERT_EQ(stack->count, 1);
    EXPECT_EQ(stack->slots[0]->errorClass, 23);
    EXPECT_EQ(ErrorCount(stack.get()), 2);
}

// ---- Error_Create, SetChar, Copy ----

TEST(ErrlibAllocationFailure, ErrorCreateFailureLeavesTheOutputAndRecordsMalloc) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = kRecordSentinel;
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    const int status = ERRLIB_Error_Create(&record, stack.get());
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(record, kRecordSentinel);
    ExpectAllocatorError(stack.get(), "malloc", "errlib/errrecord.cpp", sizeof(ERRLIB_Error));
}

TEST(ErrlibAllocationFailure, ErrorCreateFailureWithoutStackRecordsNothing) {
    ERRLIB_Error *record = kRecordSentinel;
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    const int status = ERRLIB_Error_Create(&record, nullptr);
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(record, kRecordSentinel);
}

TEST(ErrlibAllocationFailure, SetCharFailureReturnsOneAndKeepsTheOldText) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "old", nullptr), 0);
    char *old = record->message;
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    const int status = ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "hello", stack.get());
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(record->message, old);
    EXPECT_STREQ(record->message, "old");
    ExpectAllocatorError(stack.get(), "malloc", "errlib/errrecord.cpp", 6);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrlibAllocationFailure, SetCharAllocatesLengthPlusOneForAHeapRecord) {
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
    alloc_interpose::Scope scope;
    ERRLIB_Error_SetChar(record, ERRLIB_ID_FILE, "abcdef", nullptr);
    const std::size_t bytes = scope.LiveBytes();
    scope.End();
    EXPECT_EQ(bytes, 7u);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrlibAllocationFailure, CopyFailingAtEachTextReturnsOneWithTheTargetPartlyFilled) {
    ERRLIB_Error source{};
    source.component = 50;
    source.code = 3;
    source.errorClass = 21;
    source.line = 8;
    source.timestamp = 99;
    char origin[] = "o";
    char function[] = "fn";
    char file[] = "fil";
    char message[] = "mess";
    source.origin = origin;
    source.function = function;
    source.file = file;
    source.message = message;
    // Allocation n copies the n-th text: origin, function, file, message.
    for (unsigned long n = 1; n <= 4; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));  // before counting: it allocates
        StackPtr stack = NewStack();
        ASSERT_NE(stack, nullptr);
        alloc_interpose::Scope scope;
        ERRLIB_Error *target = nullptr;
        ASSERT_EQ(ERRLIB_Error_Create(&target, nullptr), 0);
        scope.FailNth(n);
        const int status = ERRLIB_Error_Copy(target, &source, stack.get());
        scope.ClearFailures();
        EXPECT_EQ(status, 1);
        EXPECT_EQ(target->code, 3);
        EXPECT_EQ(target->errorClass, 21);
        EXPECT_EQ(target->timestamp, 99);
        EXPECT_EQ(target->origin != nullptr, n > 1);
        EXPECT_EQ(target->function != nullptr, n > 2);
        EXPECT_EQ(target->file != nullptr, n > 3);
        EXPECT_EQ(target->line, n > 3 ? 8 : 0);  // the line is copied after the file
        EXPECT_EQ(target->message, nullptr);
        ExpectAllocatorError(stack.get(), "malloc", "errlib/errrecord.cpp", n + 1);
        ERRLIB_Error_Release(target, nullptr);
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        EXPECT_EQ(live, 0u);
    }
}

TEST(ErrlibAllocationFailure, PartialCopyOfTheReservedRecordIsDisposedOfWithoutLeak) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "o", "malloc", "mm.cpp", 4, "8"),
              0);
    alloc_interpose::Scope scope;
    ERRLIB_Error *target = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&target, nullptr), 0);
    scope.FailNth(2);  // origin, then the function text
    const int status = ERRLIB_Error_Copy(target, &stack->memoryError, nullptr);
    scope.ClearFailures();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(target->errorClass, 2);
    EXPECT_STREQ(target->origin, "o");
    // Release keeps a class-2 record; the copy is disposed of by giving it another class.
    ERRLIB_Error_Release(target, nullptr);
    const std::size_t kept = scope.LiveBlocks();
    DisposeRecord(target);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(kept, 2u);  // the record and its origin text
    EXPECT_EQ(live, 0u);
}

// ---- Every allocation of whole scenarios made to fail in turn ----

// Runs `scenario` with its n-th allocation failing, for n = 1, 2, ... until a run injects no
// failure; each run must end with no block left and no crash. With `failRest`, every allocation
// from the n-th on fails.
void SweepFailures(const std::function<void()> &scenario, bool failRest) {
    for (unsigned long n = 1; n < 10000; ++n) {
        alloc_interpose::Scope scope;
        if (failRest) {
            scope.FailFrom(n);
        } else {
            scope.FailNth(n);
        }
        scenario();
        const unsigned long injected = scope.Injected();
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        ASSERT_EQ(live, 0u) << "allocation " << n;
        if (injected == 0) {
            return;
        }
    }
    FAIL() << "the scenario never ran to completion";
}

// A stack's whole life: pushes past two growths, memory errors, queries, copies, removals.
void StackLife() {
    ERRLIB_ErrorStack *stack = nullptr;
    if (ERRLIB_ErrorStack_Create(&stack) != 0) {
        return;
    }
    for (int i = 1; i <= 32; ++i) {
        ERRLIB_ErrorStack_AddError(stack, 50, i, 5, "origin", "function", "file.cpp", i,
                                   i % 2 ? "message" : nullptr);
        if (i % 10 == 0) {
            ERRLIB_ErrorStack_AddError(stack, 50, 1, 2, nullptr, "malloc", "m.cpp", i, "1");
        }
    }
    ERRLIB_ErrorStack_Add_SMError(stack, "semop", 1, "sm.cpp", 4, 5);
    int32_t index = 0;
    ERRLIB_Error *found = nullptr;
    ERRLIB_ErrorStack_FindError(stack, 50, 7, 5, "FUNCTION", nullptr, &index, &found);
    ERRLIB_Error *copy = nullptr;
    if (ERRLIB_Error_Create(&copy, stack) == 0) {
        if (found != nullptr) {
            ERRLIB_Error_Copy(copy, found, stack);
        }
        ERRLIB_Error_SetChar(copy, ERRLIB_ID_MESSAGE, "replaced", stack);
        ERRLIB_Error_Copy(copy, &stack->memoryError, stack);
        DisposeRecord(copy);
    }
    ERRLIB_Error *record = nullptr;
    if (ERRLIB_ErrorStack_GetFirstError(stack, &record) == 0) {
        ERRLIB_Error_Release(record, stack);
    }
    if (ERRLIB_ErrorStack_GetFirstError(stack, &record) == 0) {
        ERRLIB_Error_Release(record, stack);
    }
    if (ERRLIB_ErrorStack_GetLastError(stack, &record) == 0) {
        ERRLIB_Error_Destroy(record, stack);
    }
    ERRLIB_ErrorStack_RemoveLastError_U(stack);
    ERRLIB_ErrorStack_RemoveLastError(stack, 1, 2);
    ERRLIB_ErrorStack_Clear(stack);
    ERRLIB_ErrorStack_AddError(stack, 50, 1, 5, "again", nullptr, nullptr, 1, nullptr);
    ERRLIB_ErrorStack_Destroy(stack);
}

TEST(ErrlibAllocationFailureSweep, AStacksLifeRunsCleanWithoutFailures) {
    alloc_interpose::Scope scope;
    StackLife();
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_GT(calls, 150u);  // every site is reached many times
    EXPECT_EQ(live, 0u);
}

TEST(ErrlibAllocationFailureSweep, EveryAllocationOfAStacksLifeFailingInTurn) {
    SweepFailures(StackLife, false);
}

TEST(ErrlibAllocationFailureSweep, EveryAllocationFromTheNthOnFailing) {
    SweepFailures(StackLife, true);
}

TEST(ErrlibAllocationFailureSweep, AMemoryErrorIsAlwaysRecordedWhenAPushFails) {
    for (unsigned long n = 1; n <= 5; ++n) {
        StackPtr stack = NewStack();
        ASSERT_NE(stack, nullptr);
        alloc_interpose::Scope scope;
        scope.FailFrom(n);
        const int status = PushOrdinary(stack.get(), 1);
        scope.End();
        EXPECT_EQ(status, 1);
        EXPECT_EQ(stack->memoryErrorInUse, 1);
        EXPECT_EQ(stack->count, 0);
    }
}

}  // namespace
