/* SPDX-License-Identifier: MIT */
// Error records: field access by id, SetChar, Clear and Copy.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"

namespace {

using errlib_test::AllZero;
using errlib_test::DisposeRecord;
using errlib_test::ErrorCount;
using errlib_test::Letters;
using errlib_test::NewStack;
using errlib_test::PushMemoryError;
using errlib_test::StackPtr;

constexpr int32_t kSentinel = 0x5A5A5A5A;
char gSentinelText[] = "sentinel";

// A heap record with every field set.
ERRLIB_Error *FullRecord() {
    ERRLIB_Error *record = nullptr;
    if (ERRLIB_Error_Create(&record, nullptr) != 0) {
        return nullptr;
    }
    record->component = 50;
    record->code = 7;
    record->errorClass = 21;
    record->line = 170;
    record->timestamp = 1234567;
    ERRLIB_Error_SetChar(record, ERRLIB_ID_ORIGIN, "IANACS_GetMibEnum", nullptr);
    ERRLIB_Error_SetChar(record, ERRLIB_ID_FUNCTION, "strcasecmp", nullptr);
    ERRLIB_Error_SetChar(record, ERRLIB_ID_FILE, "ianacs/lookup.cpp", nullptr);
    ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "no such name", nullptr);
    return record;
}

// ---- GetInt32 / SetInt32 ----

struct IntField {
    int32_t id;
    int32_t ERRLIB_Error::*member;
};

constexpr IntField kIntFields[] = {
    {ERRLIB_ID_COMPONENT, &ERRLIB_Error::component},
    {ERRLIB_ID_CODE, &ERRLIB_Error::code},
    {ERRLIB_ID_CLASS, &ERRLIB_Error::errorClass},
    {ERRLIB_ID_LINE, &ERRLIB_Error::line},
};

TEST(ErrorGetInt32, ReadsComponentCodeClassAndLine) {
    ERRLIB_Error record{};
    record.component = 50;
    record.code = -4;
    record.errorClass = 23;
    record.line = 2147483647;
    int32_t value = kSentinel;
    ASSERT_EQ(ERRLIB_Error_GetInt32(&record, ERRLIB_ID_COMPONENT, &value), 0);
    EXPECT_EQ(value, 50);
    ASSERT_EQ(ERRLIB_Error_GetInt32(&record, ERRLIB_ID_CODE, &value), 0);
    EXPECT_EQ(value, -4);
    ASSERT_EQ(ERRLIB_Error_GetInt32(&record, ERRLIB_ID_CLASS, &value), 0);
    EXPECT_EQ(value, 23);
    ASSERT_EQ(ERRLIB_Error_GetInt32(&record, ERRLIB_ID_LINE, &value), 0);
    EXPECT_EQ(value, 2147483647);
}

TEST(ErrorGetInt32, LineOfAFailedAllocationIsReadById6) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x.cpp", 314, "8"), 0);
    int32_t value = kSentinel;
    ASSERT_EQ(ERRLIB_Error_GetInt32(&stack->memoryError, 6, &value), 0);
    EXPECT_EQ(value, 314);
}

TEST(ErrorGetInt32, OtherIdsReturnOneAndStoreNothing) {
    ERRLIB_Error record{};
    record.line = 5;
    for (int32_t id : {3, 4, 5, 7, 8, -1, 100}) {
        int32_t value = kSentinel;
        EXPECT_EQ(ERRLIB_Error_GetInt32(&record, id, &value), 1) << "id " << id;
        EXPECT_EQ(value, kSentinel) << "id " << id;
    }
}

TEST(ErrorGetInt32, NullRecordOrOutputReturnsOne) {
    ERRLIB_Error record{};
    int32_t value = kSentinel;
    EXPECT_EQ(ERRLIB_Error_GetInt32(nullptr, ERRLIB_ID_CODE, &value), 1);
    EXPECT_EQ(value, kSentinel);
    EXPECT_EQ(ERRLIB_Error_GetInt32(&record, ERRLIB_ID_CODE, nullptr), 1);
}

TEST(ErrorSetInt32, WritesOnlyTheNamedField) {
    for (const IntField &field : kIntFields) {
        ERRLIB_Error record{};
        record.component = 1;
        record.code = 2;
        record.errorClass = 3;
        record.line = 4;
        ERRLIB_Error expected = record;
        expected.*field.member = -77;
        ASSERT_EQ(ERRLIB_Error_SetInt32(&record, field.id, -77), 0) << "id " << field.id;
        EXPECT_EQ(record.component, expected.component);
        EXPECT_EQ(record.code, expected.code);
        EXPECT_EQ(record.errorClass, expected.errorClass);
        EXPECT_EQ(record.line, expected.line);
        int32_t value = 0;
        ASSERT_EQ(ERRLIB_Error_GetInt32(&record, field.id, &value), 0);
        EXPECT_EQ(value, -77);
    }
}

TEST(ErrorSetInt32, OtherIdsOrNullRecordReturnOneAndChangeNothing) {
    ERRLIB_Error record{};
    record.component = 1;
    record.code = 2;
    record.errorClass = 3;
    record.line = 4;
    for (int32_t id : {3, 4, 5, 7, 8, -1}) {
        EXPECT_EQ(ERRLIB_Error_SetInt32(&record, id, 99), 1) << "id " << id;
    }
    EXPECT_EQ(record.component, 1);
    EXPECT_EQ(record.code, 2);
    EXPECT_EQ(record.errorClass, 3);
    EXPECT_EQ(record.line, 4);
    EXPECT_EQ(record.origin, nullptr);
    EXPECT_EQ(ERRLIB_Error_SetInt32(nullptr, ERRLIB_ID_CODE, 1), 1);
}

// ---- GetChar ----

TEST(ErrorGetChar, TextIdValidatesAndLeavesTheOutputUnchanged) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x.cpp", 1, "8"), 0);
    char *text = gSentinelText;
    EXPECT_EQ(ERRLIB_Error_GetChar(&stack->memoryError, 4, &text), 0);
    EXPECT_EQ(text, gSentinelText);
    for (int32_t id : {3, 5, 7}) {
        EXPECT_EQ(ERRLIB_Error_GetChar(&stack->memoryError, id, &text), 0) << "id " << id;
        EXPECT_EQ(text, gSentinelText);
    }
}

TEST(ErrorGetChar, IntegerAndUnknownIdsReturnOne) {
    ERRLIB_Error record{};
    char *text = gSentinelText;
    for (int32_t id : {0, 1, 2, 6, 8, -1}) {
        EXPECT_EQ(ERRLIB_Error_GetChar(&record, id, &text), 1) << "id " << id;
        EXPECT_EQ(text, gSentinelText);
    }
}

TEST(ErrorGetChar, NullRecordOrOutputReturnsOne) {
    ERRLIB_Error record{};
    char *text = gSentinelText;
    EXPECT_EQ(ERRLIB_Error_GetChar(nullptr, ERRLIB_ID_FILE, &text), 1);
    EXPECT_EQ(text, gSentinelText);
    EXPECT_EQ(ERRLIB_Error_GetChar(&record, ERRLIB_ID_FILE, nullptr), 1);
}

// ---- SetChar ----

struct TextField {
    int32_t id;
    char *ERRLIB_Error::*member;
};

constexpr TextField kTextFields[] = {
    {ERRLIB_ID_ORIGIN, &ERRLIB_Error::origin},
    {ERRLIB_ID_FUNCTION, &ERRLIB_Error::function},
    {ERRLIB_ID_FILE, &ERRLIB_Error::file},
    {ERRLIB_ID_MESSAGE, &ERRLIB_Error::message},
};

TEST(ErrorSetChar, StoresAnExactCopyInTheNamedField) {
    for (const TextField &field : kTextFields) {
        ERRLIB_Error *record = nullptr;
        ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
        const std::string text = Letters(120);
        ASSERT_EQ(ERRLIB_Error_SetChar(record, field.id, text.c_str(), nullptr), 0);
        ASSERT_NE(record->*field.member, nullptr);
        EXPECT_NE(record->*field.member, text.c_str());
        EXPECT_EQ(std::string(record->*field.member), text);
        for (const TextField &other : kTextFields) {
            if (other.id != field.id) {
                EXPECT_EQ(record->*other.member, nullptr);
            }
        }
        ERRLIB_Error_Release(record, nullptr);
    }
}

TEST(ErrorSetChar, ReplacesAnEarlierText) {
    ERRLIB_Error *record = FullRecord();
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "", nullptr), 0);
    EXPECT_STREQ(record->message, "");
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, "second", nullptr), 0);
    EXPECT_STREQ(record->message, "second");
    EXPECT_STREQ(record->origin, "IANACS_GetMibEnum");
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorSetChar, RejectsNullRecordNullTextAndOtherIds) {
    ERRLIB_Error *record = FullRecord();
    ASSERT_NE(record, nullptr);
    char *origin = record->origin;
    EXPECT_EQ(ERRLIB_Error_SetChar(nullptr, ERRLIB_ID_ORIGIN, "x", nullptr), 1);
    EXPECT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_ORIGIN, nullptr, nullptr), 1);
    for (int32_t id : {0, 1, 2, 6, 8, -1}) {
        EXPECT_EQ(ERRLIB_Error_SetChar(record, id, "x", nullptr), 1) << "id " << id;
    }
    EXPECT_EQ(record->origin, origin);
    EXPECT_STREQ(record->origin, "IANACS_GetMibEnum");
    EXPECT_EQ(record->code, 7);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorSetChar, OnTheReservedRecordReplacesTheBufferAndStaysFillable) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    char *oldFunction = stack->memoryError.function;
    ASSERT_EQ(ERRLIB_Error_SetChar(&stack->memoryError, ERRLIB_ID_FUNCTION, "mmap", stack.get()),
              0);
    EXPECT_NE(stack->memoryError.function, oldFunction);
    EXPECT_STREQ(stack->memoryError.function, "mmap");
    // The replacement keeps the fixed width: a long function name still fits in place.
    const std::string function = Letters(80);
    ASSERT_EQ(PushMemoryError(stack.get(), function.c_str(), "x", 1, "1"), 0);
    EXPECT_EQ(std::string(stack->memoryError.function), function.substr(0, 50));
    ASSERT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    EXPECT_TRUE(AllZero(stack->memoryError.function, 51));
}

// ---- Clear ----

TEST(ErrorClear, NullRecordReturnsOne) {
    EXPECT_EQ(ERRLIB_Error_Clear(nullptr, nullptr), 1);
}

TEST(ErrorClear, OrdinaryRecordLosesItsFieldsAndTexts) {
    ERRLIB_Error *record = FullRecord();
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(ERRLIB_Error_Clear(record, nullptr), 0);
    EXPECT_EQ(record->component, 0);
    EXPECT_EQ(record->code, 0);
    EXPECT_EQ(record->errorClass, 0);
    EXPECT_EQ(record->line, 0);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_EQ(record->function, nullptr);
    EXPECT_EQ(record->file, nullptr);
    EXPECT_EQ(record->message, nullptr);
    EXPECT_EQ(record->timestamp, 1234567);  // left as it is
    // A cleared record is cleared again harmlessly.
    EXPECT_EQ(ERRLIB_Error_Clear(record, nullptr), 0);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorClear, ReservedRecordKeepsItsZeroFilledBuffersAndClass2) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const std::string name = Letters(70);
    const std::string message = Letters(130);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, name.c_str(), name.c_str(),
                                         name.c_str(), 88, message.c_str()),
              0);
    ERRLIB_Error &reserved = stack->memoryError;
    char *buffers[] = {reserved.origin, reserved.function, reserved.file, reserved.message};
    const std::time_t stamp = reserved.timestamp;
    for (ERRLIB_ErrorStack *given : {stack.get(), static_cast<ERRLIB_ErrorStack *>(nullptr)}) {
        ASSERT_EQ(ERRLIB_Error_Clear(&reserved, given), 0);
        EXPECT_EQ(reserved.component, 0);
        EXPECT_EQ(reserved.code, 0);
        EXPECT_EQ(reserved.line, 0);
        EXPECT_EQ(reserved.errorClass, 2);
        EXPECT_EQ(reserved.timestamp, stamp);
        EXPECT_EQ(reserved.origin, buffers[0]);
        EXPECT_EQ(reserved.function, buffers[1]);
        EXPECT_EQ(reserved.file, buffers[2]);
        EXPECT_EQ(reserved.message, buffers[3]);
        EXPECT_TRUE(AllZero(reserved.origin, 51));
        EXPECT_TRUE(AllZero(reserved.function, 51));
        EXPECT_TRUE(AllZero(reserved.file, 51));
        EXPECT_TRUE(AllZero(reserved.message, 101));
        ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, name.c_str(), name.c_str(),
                                             name.c_str(), 88, message.c_str()),
                  0);
    }
}

TEST(ErrorClear, ClearingTheReservedRecordDirectlyLeavesTheErrorCounted) {
    // Clear resets the record only; whether the stack counts it is the stack's business.
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "x", 1, "1"), 0);
    ASSERT_EQ(ERRLIB_Error_Clear(&stack->memoryError, stack.get()), 0);
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
}

TEST(ErrorClear, Class2HeapRecordZeroesOnlyTheBytesItsTextsOccupy) {
    // Heap texts of a class-2 record are exact-size blocks; the sanitizer and valgrind runs
    // catch any write past them.
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_ORIGIN, "ab", nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_FILE, "", nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, Letters(150).c_str(), nullptr), 0);
    record->component = 50;
    record->code = 3;
    record->line = 9;
    ASSERT_EQ(ERRLIB_Error_SetInt32(record, ERRLIB_ID_CLASS, 2), 0);
    char *origin = record->origin;
    ASSERT_EQ(ERRLIB_Error_Clear(record, nullptr), 0);
    EXPECT_EQ(record->errorClass, 2);
    EXPECT_EQ(record->component, 0);
    EXPECT_EQ(record->code, 0);
    EXPECT_EQ(record->line, 0);
    EXPECT_EQ(record->origin, origin);
    EXPECT_TRUE(AllZero(record->origin, 3));
    EXPECT_EQ(record->function, nullptr);
    EXPECT_TRUE(AllZero(record->file, 1));
    EXPECT_STREQ(record->message, "");
    DisposeRecord(record);
}

// ---- Copy ----

TEST(ErrorCopy, NullTargetOrSourceReturnsOne) {
    ERRLIB_Error record{};
    EXPECT_EQ(ERRLIB_Error_Copy(nullptr, &record, nullptr), 1);
    EXPECT_EQ(ERRLIB_Error_Copy(&record, nullptr, nullptr), 1);
}

TEST(ErrorCopy, MakesADeepCopy) {
    ERRLIB_Error *source = FullRecord();
    ASSERT_NE(source, nullptr);
    ERRLIB_Error *target = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&target, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_Copy(target, source, nullptr), 0);
    EXPECT_EQ(target->component, 50);
    EXPECT_EQ(target->code, 7);
    EXPECT_EQ(target->errorClass, 21);
    EXPECT_EQ(target->line, 170);
    EXPECT_EQ(target->timestamp, 1234567);
    EXPECT_STREQ(target->origin, "IANACS_GetMibEnum");
    EXPECT_STREQ(target->function, "strcasecmp");
    EXPECT_STREQ(target->file, "ianacs/lookup.cpp");
    EXPECT_STREQ(target->message, "no such name");
    EXPECT_NE(target->origin, source->origin);
    EXPECT_NE(target->function, source->function);
    EXPECT_NE(target->file, source->file);
    EXPECT_NE(target->message, source->message);
    // Independent: releasing the source leaves the copy whole.
    ERRLIB_Error_Release(source, nullptr);
    EXPECT_STREQ(target->message, "no such name");
    ERRLIB_Error_Release(target, nullptr);
}

TEST(ErrorCopy, NullTextsStayNullAndOldTextsOfTheTargetGo) {
    ERRLIB_Error *target = FullRecord();
    ASSERT_NE(target, nullptr);
    ERRLIB_Error source{};
    source.component = 1;
    source.code = 2;
    source.errorClass = 3;
    source.line = 4;
    source.timestamp = 5;
    ASSERT_EQ(ERRLIB_Error_Copy(target, &source, nullptr), 0);
    EXPECT_EQ(target->component, 1);
    EXPECT_EQ(target->code, 2);
    EXPECT_EQ(target->errorClass, 3);
    EXPECT_EQ(target->line, 4);
    EXPECT_EQ(target->timestamp, 5);
    EXPECT_EQ(target->origin, nullptr);
    EXPECT_EQ(target->function, nullptr);
    EXPECT_EQ(target->file, nullptr);
    EXPECT_EQ(target->message, nullptr);
    ERRLIB_Error_Release(target, nullptr);
}

TEST(ErrorCopy, CopyOfTheReservedRecordHasExactTextsAndClass2) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(
        ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, 2, nullptr, "malloc", "mm.cpp", 12, "64"),
        0);
    ERRLIB_Error *copy = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&copy, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_Copy(copy, &stack->memoryError, stack.get()), 0);
    EXPECT_EQ(copy->errorClass, 2);
    EXPECT_EQ(copy->component, 50);
    EXPECT_EQ(copy->code, 1);
    EXPECT_EQ(copy->line, 12);
    EXPECT_EQ(copy->timestamp, stack->memoryError.timestamp);
    EXPECT_STREQ(copy->origin, "");  // the reserved record's origin buffer is empty, not null
    EXPECT_STREQ(copy->function, "malloc");
    EXPECT_STREQ(copy->file, "mm.cpp");
    EXPECT_STREQ(copy->message, "64");
    EXPECT_NE(copy->function, stack->memoryError.function);
    // A copy of a reserved record counts as one: Release clears it in place and keeps it.
    ASSERT_EQ(ERRLIB_Error_Release(copy, stack.get()), 0);
    EXPECT_EQ(copy->errorClass, 2);
    EXPECT_EQ(copy->code, 0);
    EXPECT_EQ(copy->line, 0);
    EXPECT_STREQ(copy->function, "");
    EXPECT_STREQ(copy->message, "");
    // The reserved record itself is untouched.
    EXPECT_STREQ(stack->memoryError.function, "malloc");
    EXPECT_EQ(stack->memoryErrorInUse, 1);
    DisposeRecord(copy);
}

TEST(ErrorCopy, TargetOfClass2GivesUpItsOldTexts) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    ERRLIB_Error *copy = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&copy, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_Copy(copy, &stack->memoryError, nullptr), 0);
    ERRLIB_Error *source = FullRecord();
    ASSERT_NE(source, nullptr);
    ASSERT_EQ(ERRLIB_Error_Copy(copy, source, nullptr), 0);  // leak checkers watch the old texts
    EXPECT_EQ(copy->errorClass, 21);
    EXPECT_STREQ(copy->function, "strcasecmp");
    ERRLIB_Error_Release(source, nullptr);
    ERRLIB_Error_Release(copy, nullptr);
}

TEST(ErrorCopy, TheStacksOwnReservedRecordIsNotATarget) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(PushMemoryError(stack.get(), "malloc", "mm.cpp", 12, "64"), 0);
    ERRLIB_Error *source = FullRecord();
    ASSERT_NE(source, nullptr);
    char *function = stack->memoryError.function;
    EXPECT_EQ(ERRLIB_Error_Copy(&stack->memoryError, source, stack.get()), 1);
    EXPECT_EQ(stack->memoryError.function, function);
    EXPECT_STREQ(stack->memoryError.function, "malloc");
    EXPECT_EQ(stack->memoryError.errorClass, 2);
    EXPECT_EQ(stack->memoryError.line, 12);
    ERRLIB_Error_Release(source, nullptr);
}

TEST(ErrorCopy, OntoItselfChangesNothing) {
    ERRLIB_Error *record = FullRecord();
    ASSERT_NE(record, nullptr);
    char *origin = record->origin;
    EXPECT_EQ(ERRLIB_Error_Copy(record, record, nullptr), 0);
    EXPECT_EQ(record->origin, origin);
    EXPECT_STREQ(record->origin, "IANACS_GetMibEnum");
    EXPECT_EQ(record->code, 7);
    ERRLIB_Error_Release(record, nullptr);
}

TEST(ErrorCopy, IntoACallerOwnedRecordOnTheStack) {
    ERRLIB_Error *source = FullRecord();
    ASSERT_NE(source, nullptr);
    ERRLIB_Error local{};
    ASSERT_EQ(ERRLIB_Error_Copy(&local, source, nullptr), 0);
    EXPECT_STREQ(local.file, "ianacs/lookup.cpp");
    ASSERT_EQ(ERRLIB_Error_Clear(&local, nullptr), 0);  // frees the copied texts
    EXPECT_EQ(local.file, nullptr);
    ERRLIB_Error_Release(source, nullptr);
}

}  // namespace
