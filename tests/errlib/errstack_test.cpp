/* SPDX-License-Identifier: MIT */
// Error stacks: creation, destruction, the two push operations, record creation and release.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <ostream>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"

namespace {

using errlib_test::AllZero;
using errlib_test::ErrorCount;
using errlib_test::Letters;
using errlib_test::NewStack;
using errlib_test::PushMemoryError;
using errlib_test::PushOrdinary;
using errlib_test::StackPtr;

// ---- Creation and destruction ----

TEST(ErrorStackCreate, NullOutputReturnsOne) {
    EXPECT_EQ(ERRLIB_ErrorStack_Create(nullptr), 1);
}

TEST(ErrorStackCreate, EmptyStackHasTwentyNullSlots) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(stack->count, 0);
    EXPECT_EQ(stack->capacity, 20);
    EXPECT_EQ(stack->reservedWord, 0);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    ASSERT_NE(stack->slots, nullptr);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(stack->slots[i], nullptr) << "slot " << i;
    }
    EXPECT_EQ(ErrorCount(stack.get()), 0);
}

TEST(ErrorStackCreate, ReservedRecordIsAnEmptyMemoryRecordWithZeroFilledBuffers) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const ERRLIB_Error &reserved = stack->memoryError;
    EXPECT_EQ(reserved.component, 0);
    EXPECT_EQ(reserved.code, 0);
    EXPECT_EQ(reserved.errorClass, 2);
    EXPECT_EQ(reserved.line, 0);
    ASSERT_NE(reserved.origin, nullptr);
    ASSERT_NE(reserved.function, nullptr);
    ASSERT_NE(reserved.file, nullptr);
    ASSERT_NE(reserved.message, nullptr);
    EXPECT_TRUE(AllZero(reserved.origin, 51));
    EXPECT_TRUE(AllZero(reserved.function, 51));
    EXPECT_TRUE(AllZero(reserved.file, 51));
    EXPECT_TRUE(AllZero(reserved.message, 101));
    // Four distinct buffers.
    EXPECT_NE(reserved.origin, reserved.function);
    EXPECT_NE(reserved.function, reserved.file);
    EXPECT_NE(reserved.file, reserved.message);
}

TEST(ErrorStackCreate, OutputIsWrittenOnlyOnSuccess) {
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    EXPECT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

TEST(ErrorStackCreate, TwoStacksAreIndependent) {
    StackPtr a = NewStack();
    StackPtr b = NewStack();
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    ASSERT_EQ(PushOrdinary(a.get(), 1), 0);
    ASSERT_EQ(PushMemoryError(b.get(), "malloc", "x.cpp", 1, "8"), 0);
    EXPECT_EQ(a->count, 1);
    EXPECT_EQ(a->memoryErrorInUse, 0);
    EXPECT_EQ(b->count, 0);
    EXPECT_EQ(b->memoryErrorInUse, 1);
}

TEST(ErrorStackDestroy, NullStackReturnsOne) {
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(nullptr), 1);
}

TEST(ErrorStackDestroy, FreesHeapRecordsAndPendingMemoryError) {
    // Leaks would be reported by the sanitizer and valgrind runs of this suite.
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    for (int i = 1; i <= 25; ++i) {
        ASSERT_EQ(PushOrdinary(stack, i), 0);
    }
    ASSERT_EQ(PushMemoryError(stack, "malloc", "x.cpp", 1, "8"), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

TEST(ErrorStackDestroy, FreesARecordWhoseClassWasChangedToTwo) {
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    ASSERT_EQ(PushOrdinary(stack, 1), 0);
    ERRLIB_Error *peeked = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack, &peeked), 0);
    ASSERT_EQ(ERRLIB_Error_SetInt32(peeked, ERRLIB_ID_CLASS, 2), 0);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

TEST(ErrorStackDestroy, FreesEverythingEvenWhenAUsedSlotIsNull) {
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    for (int i = 1; i <= 3; ++i) {
        ASSERT_EQ(PushOrdinary(stack, i), 0);
    }
    ERRLIB_Error *lost = stack->slots[1];
    stack->slots[1] = nullptr;  // a damaged stack
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 1);
    errlib_test::DisposeRecord(lost);
}

// ---- AddError: common ----

TEST(ErrorStackAddError, NullStackReturnsOneAndRecordsNothing) {
    EXPECT_EQ(ERRLIB_ErrorStack_AddError(nullptr, 50, 1, 5, "o", "f", "x.cpp", 1, "m"), 1);
    EXPECT_EQ(ERRLIB_ErrorStack_AddError(nullptr, 50, 1, 2, "o", "f", "x.cpp", 1, "m"), 1);
}

// ---- AddError: memory errors (class 2) ----

TEST(ErrorStackAddMemoryError, FillsTheReservedRecordInPlace) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    char *origin = stack->memoryError.origin;
    char *function = stack->memoryError.function;
    char *file = stack->memoryError.file;
    char *message = stack->memoryError.message;
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "MMFLAT_StrDup", "malloc",
                                         "glib/glibstring.cpp", 123, "4096"),
              0);
    const std::time_t after = std::time(nullptr);
    const ERRLIB_Error &reserved = stack->memoryError;
    EXPECT_EQ(reserved.component, 50);
    EXPECT_EQ(reserved.code, 1);
    EXPECT_EQ(reserved.errorClass, 2);
    EXPECT_EQ(reserved.line, 123);
    EXPECT_GE(reserved.timestamp, before);
    EXPECT_LE(reserved.timestamp, after);
    // Same buffers, new contents.
    EXPECT_EQ(reserved.origin, origin);
    EXPECT_EQ(reserved.function, function);
    EXPECT_EQ(reserved.file, file);
    EXPECT_EQ(reserved.message, message);
    EXPECT_STREQ(reserved.origin, "MMFLAT_StrDup");
    EXPECT_STREQ(reserved.function, "malloc");
    EXPECT_STREQ(reserved.file, "glib/glibstring.cpp");
    EXPECT_STREQ(reserved.message, "4096");
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    EXPECT_EQ(stack->count, 0);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
}

TEST(ErrorStackAddMemoryError, KeepsComponentCodeAndLineAsGiven) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), -7, 99, 2, nullptr, nullptr, nullptr, -3, nullptr),
        0);
    EXPECT_EQ(stack->memoryError.component, -7);
    EXPECT_EQ(stack->memoryError.code, 99);
    EXPECT_EQ(stack->memoryError.line, -3);
    EXPECT_EQ(stack->memoryError.errorClass, 2);
}

TEST(ErrorStackAddMemoryError, ReservedRecordKeepsLast50OfFile) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string file = Letters(60);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", file.c_str(), 1, "1"), 0);
    EXPECT_EQ(std::string(stack->memoryError.file), file.substr(10));
    EXPECT_EQ(std::strlen(stack->memoryError.file), 50u);
}

TEST(ErrorStackAddMemoryError, FileOfExactly50IsKeptWhole) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string file = Letters(50);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", file.c_str(), 1, "1"), 0);
    EXPECT_EQ(std::string(stack->memoryError.file), file);
}

TEST(ErrorStackAddMemoryError, FileOf51KeepsItsLast50) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string file = Letters(51);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", file.c_str(), 1, "1"), 0);
    EXPECT_EQ(std::string(stack->memoryError.file), file.substr(1));
}

TEST(ErrorStackAddMemoryError, ReservedRecordKeepsFirst50OfFunctionAndOrigin) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string function = Letters(80);
    const std::string origin = Letters(51, 'k');
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, origin.c_str(), function.c_str(),
                                         "x", 1, nullptr),
              0);
    EXPECT_EQ(std::string(stack->memoryError.function), function.substr(0, 50));
    EXPECT_EQ(std::string(stack->memoryError.origin), origin.substr(0, 50));
    EXPECT_EQ(stack->memoryError.function[50], '\0');
    EXPECT_EQ(stack->memoryError.origin[50], '\0');
}

TEST(ErrorStackAddMemoryError, ReservedRecordKeepsFirst100OfMessage) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string message = Letters(150);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x", 1, message.c_str()), 0);
    EXPECT_EQ(std::string(stack->memoryError.message), message.substr(0, 100));
    EXPECT_EQ(stack->memoryError.message[100], '\0');
}

TEST(ErrorStackAddMemoryError, TextsOfExactWidthAreKeptWhole) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string name = Letters(50, 'c');
    const std::string message = Letters(100, 'd');
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, name.c_str(), name.c_str(),
                                         name.c_str(), 1, message.c_str()),
              0);
    EXPECT_EQ(std::string(stack->memoryError.origin), name);
    EXPECT_EQ(std::string(stack->memoryError.function), name);
    EXPECT_EQ(std::string(stack->memoryError.file), name);
    EXPECT_EQ(std::string(stack->memoryError.message), message);
}

TEST(ErrorStackAddMemoryError, NullTextKeepsThePreviousErrorsText) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 2, 2, "MMFLAT_StrDup", "calloc",
                                         "first.cpp", 10, "16"),
              0);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, nullptr, nullptr, nullptr, 20, nullptr),
        0);
    EXPECT_EQ(stack->memoryError.code, 1);
    EXPECT_EQ(stack->memoryError.line, 20);
    EXPECT_STREQ(stack->memoryError.origin, "MMFLAT_StrDup");
    EXPECT_STREQ(stack->memoryError.function, "calloc");
    EXPECT_STREQ(stack->memoryError.file, "first.cpp");
    EXPECT_STREQ(stack->memoryError.message, "16");
}

TEST(ErrorStackAddMemoryError, ShorterTextLeavesNoBytesOfTheLongerOne) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string longName = Letters(70);
    const std::string longMessage = Letters(120);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, longName.c_str(), longName.c_str(),
                                         longName.c_str(), 1, longMessage.c_str()),
              0);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "o", "f", "x", 2, "9"), 0);
    EXPECT_STREQ(stack->memoryError.origin, "o");
    EXPECT_TRUE(AllZero(stack->memoryError.origin + 1, 50));
    EXPECT_TRUE(AllZero(stack->memoryError.function + 1, 50));
    EXPECT_TRUE(AllZero(stack->memoryError.file + 1, 50));
    EXPECT_TRUE(AllZero(stack->memoryError.message + 1, 100));
}

TEST(ErrorStackAddMemoryError, EmptyTextsEmptyTheBuffers) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "o", "f", "x", 1, "m"), 0);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "", "", "", 1, ""), 0);
    EXPECT_TRUE(AllZero(stack->memoryError.origin, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.function, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.file, 51));
    EXPECT_TRUE(AllZero(stack->memoryError.message, 101));
}

TEST(ErrorStackAddMemoryError, TwoMemoryErrorsLeaveOneReservedErrorTheSecond) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 7), 0);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "a.cpp", 1, "10"), 0);
    ASSERT_EQ(PushMemoryError(stack.get(), "realloc", "b.cpp", 2, "20"), 0);
    EXPECT_EQ(stack->count, 1);
    EXPECT_EQ(ErrorCount(stack.get()), 2);
    EXPECT_STREQ(stack->memoryError.function, "realloc");
    EXPECT_STREQ(stack->memoryError.file, "b.cpp");
    EXPECT_EQ(stack->memoryError.line, 2);
    EXPECT_STREQ(stack->memoryError.message, "20");
}

TEST(ErrorStackAddMemoryError, AllocatesNothingAndUsesNoSlot) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "a.cpp", i, "1"), 0);
    }
    EXPECT_EQ(stack->count, 0);
    EXPECT_EQ(stack->capacity, 20);
    EXPECT_EQ(stack->slots[0], nullptr);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
}

// ---- AddError: ordinary errors ----

TEST(ErrorStackAddOrdinaryError, PushesAHeapRecordWithExactCopies) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string origin = Letters(70);
    const std::string function = Letters(60, 'b');
    const std::string file = Letters(120, 'c');
    const std::string message = Letters(300, 'd');
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 42, 21, origin.c_str(), function.c_str(),
                                         file.c_str(), 170, message.c_str()),
              0);
    const std::time_t after = std::time(nullptr);
    ASSERT_EQ(stack->count, 1);
    const ERRLIB_Error *record = stack->slots[0];
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->component, 50);
    EXPECT_EQ(record->code, 42);
    EXPECT_EQ(record->errorClass, 21);
    EXPECT_EQ(record->line, 170);
    EXPECT_GE(record->timestamp, before);
    EXPECT_LE(record->timestamp, after);
    // Whole texts, not cut, in blocks of their own.
    EXPECT_EQ(std::string(record->origin), origin);
    EXPECT_EQ(std::string(record->function), function);
    EXPECT_EQ(std::string(record->file), file);
    EXPECT_EQ(std::string(record->message), message);
    EXPECT_NE(record->origin, origin.c_str());
    EXPECT_NE(record->message, message.c_str());
    EXPECT_EQ(stack->memoryErrorInUse, 0);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
}

TEST(ErrorStackAddOrdinaryError, NullTextsStayNull) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 2, 21, nullptr,
                                         "KORANLS_GetOsCodePageName", nullptr, 170, nullptr),
              0);
    const ERRLIB_Error *record = stack->slots[0];
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_STREQ(record->function, "KORANLS_GetOsCodePageName");
    EXPECT_EQ(record->file, nullptr);
    EXPECT_EQ(record->message, nullptr);
}

TEST(ErrorStackAddOrdinaryError, RecordsKeepPushOrderOldestFirst) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 5; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(stack->count, 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(stack->slots[i]->code, i + 1);
    }
    for (int i = 5; i < 20; ++i) {
        EXPECT_EQ(stack->slots[i], nullptr);
    }
}

TEST(ErrorStackAddOrdinaryError, ClassZeroAndNegativeClassesAreOrdinary) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 0, 0, 0, nullptr, nullptr, nullptr, 0, nullptr), 0);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 1, 1, -2, nullptr, nullptr, nullptr, 0, nullptr),
        0);
    EXPECT_EQ(stack->count, 2);
    EXPECT_EQ(stack->memoryErrorInUse, 0);
}

TEST(ErrorStackGrowth, TwentyErrorsFitTheFirstArray) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error **slots = stack->slots;
    for (int i = 1; i <= 20; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    EXPECT_EQ(stack->capacity, 20);
    EXPECT_EQ(stack->count, 20);
    EXPECT_EQ(stack->slots, slots);
}

TEST(ErrorStackGrowth, TwentyOneErrorsGrowTheSlotsTo30) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 21; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    EXPECT_EQ(stack->capacity, 30);
    EXPECT_EQ(stack->count, 21);
    for (int i = 0; i < 21; ++i) {
        ASSERT_NE(stack->slots[i], nullptr);
        EXPECT_EQ(stack->slots[i]->code, i + 1);
    }
    for (int i = 21; i < 30; ++i) {
        EXPECT_EQ(stack->slots[i], nullptr) << "slot " << i;
    }
}

TEST(ErrorStackGrowth, ThirtyOneErrorsGrowTheSlotsTo40) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 31; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
        EXPECT_EQ(stack->capacity, i <= 20 ? 20 : (i <= 30 ? 30 : 40)) << "after " << i;
    }
    EXPECT_EQ(stack->count, 31);
    for (int i = 0; i < 31; ++i) {
        EXPECT_EQ(stack->slots[i]->code, i + 1);
    }
    for (int i = 31; i < 40; ++i) {
        EXPECT_EQ(stack->slots[i], nullptr);
    }
    EXPECT_EQ(ErrorCount(stack.get()), 31);
}

TEST(ErrorStackGrowth, MemoryErrorsDoNotGrowTheSlots) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (int i = 1; i <= 20; ++i) {
        ASSERT_EQ(PushOrdinary(stack.get(), i), 0);
    }
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x", 1, "1"), 0);
    EXPECT_EQ(stack->capacity, 20);
    EXPECT_EQ(ErrorCount(stack.get()), 21);
}

// ---- Add_SMError ----

TEST(ErrorStackAddSMError, SecondCodeZeroPushesOneClass23Record) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_Add_SMError(stack.get(), "shmget", 77, "sm.cpp", 13, 0), 0);
    ASSERT_EQ(stack->count, 1);
    const ERRLIB_Error *record = stack->slots[0];
    EXPECT_EQ(record->component, 50);
    EXPECT_EQ(record->code, 13);
    EXPECT_EQ(record->errorClass, 23);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_STREQ(record->function, "shmget");
    EXPECT_STREQ(record->file, "sm.cpp");
    EXPECT_EQ(record->line, 77);
    EXPECT_EQ(record->message, nullptr);
}

TEST(ErrorStackAddSMError, BothCodesPushClass23ThenClass24) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_Add_SMError(stack.get(), "semop", 5, "sm.cpp", 4, -9), 0);
    ASSERT_EQ(stack->count, 2);
    EXPECT_EQ(stack->slots[0]->code, 4);
    EXPECT_EQ(stack->slots[0]->errorClass, 23);
    EXPECT_EQ(stack->slots[1]->component, 50);
    EXPECT_EQ(stack->slots[1]->code, -9);
    EXPECT_EQ(stack->slots[1]->errorClass, 24);
    EXPECT_EQ(stack->slots[1]->origin, nullptr);
    EXPECT_STREQ(stack->slots[1]->function, "semop");
    EXPECT_STREQ(stack->slots[1]->file, "sm.cpp");
    EXPECT_EQ(stack->slots[1]->line, 5);
    EXPECT_EQ(stack->slots[1]->message, nullptr);
}

TEST(ErrorStackAddSMError, NullFunctionIsAllowed) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_Add_SMError(stack.get(), nullptr, 5, "sm.cpp", 4, 0), 0);
    ASSERT_EQ(stack->count, 1);
    EXPECT_EQ(stack->slots[0]->function, nullptr);
}

struct RejectedSMError {
    const char *name;
    const char *file;
    int32_t code;
    int32_t secondCode;
};

// Printed by its name in test output.
void PrintTo(const RejectedSMError &value, std::ostream *out) {
    *out << value.name;
}

class ErrorStackAddSMErrorRejects : public ::testing::TestWithParam<RejectedSMError> {};

TEST_P(ErrorStackAddSMErrorRejects, ReturnsOneAndPushesNothing) {
    const RejectedSMError &c = GetParam();
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_Add_SMError(stack.get(), "f", 1, c.file, c.code, c.secondCode), 1);
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    EXPECT_EQ(stack->slots[0], nullptr);
}

INSTANTIATE_TEST_SUITE_P(Cases, ErrorStackAddSMErrorRejects,
                         ::testing::Values(RejectedSMError{"EmptyFile", "", 1, 2},
                                           RejectedSMError{"NullFile", nullptr, 1, 2},
                                           RejectedSMError{"CodeZero", "sm.cpp", 0, 2},
                                           RejectedSMError{"CodeZeroSecondZero", "sm.cpp", 0, 0}),
                         [](const ::testing::TestParamInfo<RejectedSMError> &info) {
                             return info.param.name;
                         });

TEST(ErrorStackAddSMError, NullStackReturnsOne) {
    EXPECT_EQ(ERRLIB_ErrorStack_Add_SMError(nullptr, "f", 1, "sm.cpp", 1, 2), 1);
}

// ---- Error_Create, Release and Destroy ----

TEST(ErrorCreate, NullOutputReturnsOne) {
    EXPECT_EQ(ERRLIB_Error_Create(nullptr, nullptr), 1);
}

TEST(ErrorCreate, GivesAnEmptyRecordStampedNow) {
    ERRLIB_Error *record = nullptr;
    const std::time_t before = std::time(nullptr);
    ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
    const std::time_t after = std::time(nullptr);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->component, 0);
    EXPECT_EQ(record->code, 0);
    EXPECT_EQ(record->errorClass, 0);
    EXPECT_EQ(record->line, 0);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_EQ(record->function, nullptr);
    EXPECT_EQ(record->file, nullptr);
    EXPECT_EQ(record->message, nullptr);
    EXPECT_GE(record->timestamp, before);
    EXPECT_LE(record->timestamp, after);
    EXPECT_EQ(ERRLIB_Error_Release(record, nullptr), 0);
}

TEST(ErrorCreate, WithAStackRecordsNothingOnSuccess) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&record, stack.get()), 0);
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    EXPECT_EQ(ERRLIB_Error_Destroy(record, stack.get()), 0);
}

TEST(ErrorRelease, NullRecordReturnsOne) {
    EXPECT_EQ(ERRLIB_Error_Release(nullptr, nullptr), 1);
    EXPECT_EQ(ERRLIB_Error_Destroy(nullptr, nullptr), 1);
}

TEST(ErrorRelease, FreesAHeapRecordWithItsTexts) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 3), 0);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 0);
    EXPECT_EQ(ERRLIB_Error_Release(record, nullptr), 0);  // leak checkers watch the texts
}

TEST(ErrorRelease, DestroyIsTheSameOperation) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushOrdinary(stack.get(), 3), 0);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetLastError(stack.get(), &record), 0);
    EXPECT_EQ(ERRLIB_Error_Destroy(record, stack.get()), 0);
}

TEST(ErrorRelease, ReservedRecordIsClearedInPlaceAndNotFreed) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, "o", "malloc", "x.cpp", 9, "12"),
              0);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack.get(), &record), 0);
    ASSERT_EQ(record, &stack->memoryError);
    const std::time_t stamp = record->timestamp;
    EXPECT_EQ(ERRLIB_Error_Release(record, nullptr), 0);
    EXPECT_EQ(record->component, 0);
    EXPECT_EQ(record->code, 0);
    EXPECT_EQ(record->line, 0);
    EXPECT_EQ(record->errorClass, 2);
    EXPECT_EQ(record->timestamp, stamp);
    EXPECT_TRUE(AllZero(record->origin, 51));
    EXPECT_TRUE(AllZero(record->function, 51));
    EXPECT_TRUE(AllZero(record->file, 51));
    EXPECT_TRUE(AllZero(record->message, 101));
    // The stack is still whole and records the next memory error.
    ASSERT_EQ(PushMemoryError(stack.get(), "calloc", "y.cpp", 3, "4"), 0);
    EXPECT_STREQ(stack->memoryError.function, "calloc");
}

}  // namespace
