// SPDX-License-Identifier: MIT
// Conditions of the error library that the feature tests leave on one side only: a long text
// given to a class-2 record, and a memory error recorded after a caller has reclassified and
// cleared the stack's reserved record.
#include <gtest/gtest.h>
#include <nlssupport/errlib.h>

#include <cstdint>
#include <string>

#include "errlib/errlib_test_util.h"

namespace {

using errlib_test::NewStack;
using errlib_test::StackPtr;

// A class-2 record gets a block of at least the fixed buffer's size; a longer text gets a block
// of its own length and is stored whole.
TEST(ErrorSetChar, TextLongerThanTheFixedBufferOfAMemoryClassRecordIsStoredWhole) {
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_Error_Create(&record, nullptr), 0);
    ASSERT_EQ(ERRLIB_Error_SetInt32(record, ERRLIB_ID_CLASS, ERRLIB_CLASS_MEMORY), 0);
    const std::string origin(60, 'o');
    const std::string message(120, 'm');
    EXPECT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_ORIGIN, origin.c_str(), nullptr), 0);
    EXPECT_EQ(ERRLIB_Error_SetChar(record, ERRLIB_ID_MESSAGE, message.c_str(), nullptr), 0);
    ASSERT_NE(record->origin, nullptr);
    ASSERT_NE(record->message, nullptr);
    EXPECT_EQ(std::string(record->origin), origin);
    EXPECT_EQ(std::string(record->message), message);
    EXPECT_EQ(record->function, nullptr);
    EXPECT_EQ(record->file, nullptr);
    errlib_test::DisposeRecord(record);
}

// A caller that gives the stack's reserved record another class and clears it frees its four
// buffers. A later memory error still fills the record's numbers and class in place, but has
// nowhere to put its texts: they stay null.
TEST(ErrorStackAddMemoryError, ReservedRecordWhoseBuffersWereFreedKeepsItsTextsNull) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    ASSERT_EQ(errlib_test::PushMemoryError(stack.get(), "malloc", "memmgr/mmflat.cpp", 10, "64"),
              0);
    ERRLIB_Error *reserved = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &reserved), 0);
    ASSERT_EQ(ERRLIB_Error_SetInt32(reserved, ERRLIB_ID_CLASS, 5), 0);
    ASSERT_EQ(ERRLIB_Error_Clear(reserved, stack.get()), 0);
    ASSERT_EQ(reserved->origin, nullptr);

    EXPECT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 2, ERRLIB_CLASS_MEMORY, "MMFLAT_StrDup",
                                         "strdup", "errlib/errrecord.cpp", 20, "no text"),
              0);
    ERRLIB_Error *peeked = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(stack.get(), &peeked), 0);
    EXPECT_EQ(peeked, reserved);
    EXPECT_EQ(peeked->component, 50);
    EXPECT_EQ(peeked->code, 2);
    EXPECT_EQ(peeked->errorClass, ERRLIB_CLASS_MEMORY);
    EXPECT_EQ(peeked->line, 20);
    EXPECT_EQ(peeked->origin, nullptr);
    EXPECT_EQ(peeked->function, nullptr);
    EXPECT_EQ(peeked->file, nullptr);
    EXPECT_EQ(peeked->message, nullptr);
    EXPECT_EQ(errlib_test::ErrorCount(stack.get()), 1);
    // Clearing and destroying the stack cope with the null texts.
    EXPECT_EQ(ERRLIB_ErrorStack_Clear(stack.get()), 0);
    EXPECT_EQ(errlib_test::ErrorCount(stack.get()), 0);
}

}  // namespace
