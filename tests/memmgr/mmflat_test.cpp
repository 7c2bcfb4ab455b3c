/* SPDX-License-Identifier: MIT */
// The checked allocator with the system allocator as it is (failures are driven in
// mmflat_alloc_failure_test.cpp).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"
#include <nlssupport/memmgr.h>

namespace {

using errlib_test::AllZero;
using errlib_test::ErrorCount;
using errlib_test::NewStack;
using errlib_test::StackPtr;

constexpr char kLongPath[] =
    "/home/build/nlsreport/src/glib/very/deep/folder/of/sources/glibstring.cpp";

TEST(MmflatNew, GivesAWritableBlockAndRecordsNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (uint32_t size : {1u, 7u, 64u, 4096u, 1u << 20}) {
        auto *block = static_cast<unsigned char *>(MMFLAT_New(size, stack.get(), "t.cpp", 1));
        ASSERT_NE(block, nullptr) << size;
        std::memset(block, 0xA5, size);
        EXPECT_EQ(block[size - 1], 0xA5);
        MMFLAT_Free(block);
    }
    EXPECT_EQ(ErrorCount(stack.get()), 0);
}

TEST(MmflatNew, SizeZeroGivesABlockAndRecordsNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    void *block = MMFLAT_New(0, stack.get(), "t.cpp", 1);
    EXPECT_NE(block, nullptr);  // the C library's malloc(0) gives a unique block
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    MMFLAT_Free(block);
}

TEST(MmflatNewClear, GivesAZeroFilledBlock) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    for (uint32_t size : {1u, 51u, 101u, 4096u, 1u << 20}) {
        // Dirty a block of the same size first so that a recycled chunk would show.
        auto *dirty = static_cast<char *>(MMFLAT_New(size, nullptr, "t.cpp", 1));
        ASSERT_NE(dirty, nullptr);
        std::memset(dirty, 0x5A, size);
        MMFLAT_Free(dirty);
        auto *block = static_cast<char *>(MMFLAT_NewClear(size, stack.get(), "t.cpp", 2));
        ASSERT_NE(block, nullptr) << size;
        EXPECT_TRUE(AllZero(block, size)) << size;
        MMFLAT_Free(block);
    }
    EXPECT_EQ(ErrorCount(stack.get()), 0);
}

TEST(MmflatResize, GrowsAndShrinksKeepingTheContents) {
    auto *block = static_cast<char *>(MMFLAT_New(16, nullptr, "t.cpp", 1));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "0123456789abcdef", 16);
    block = static_cast<char *>(MMFLAT_Resize(block, 1u << 20, nullptr, "t.cpp", 2));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "0123456789abcdef", 16), 0);
    block[(1u << 20) - 1] = 'z';
    block = static_cast<char *>(MMFLAT_Resize(block, 4, nullptr, "t.cpp", 3));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "0123", 4), 0);
    MMFLAT_Free(block);
}

TEST(MmflatResize, NullBlockAllocates) {
    auto *block = static_cast<char *>(MMFLAT_Resize(nullptr, 10, nullptr, "t.cpp", 1));
    ASSERT_NE(block, nullptr);
    std::memset(block, 1, 10);
    MMFLAT_Free(block);
}

TEST(MmflatResize, SizeZeroKeepsAMinimalBlockInsteadOfFreeing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    auto *block = static_cast<char *>(MMFLAT_New(32, nullptr, "t.cpp", 1));
    ASSERT_NE(block, nullptr);
    block[0] = 'q';
    auto *resized = static_cast<char *>(MMFLAT_Resize(block, 0, stack.get(), "t.cpp", 2));
    ASSERT_NE(resized, nullptr);
    EXPECT_EQ(resized[0], 'q');
    EXPECT_EQ(ErrorCount(stack.get()), 0);
    MMFLAT_Free(resized);
}

TEST(MmflatStrDup, CopiesTheText) {
    const std::string text = errlib_test::Letters(300);
    char *copy = MMFLAT_StrDup(text.c_str(), nullptr, "t.cpp", 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, text.c_str());
    EXPECT_EQ(std::string(copy), text);
    MMFLAT_Free(copy);
}

TEST(MmflatStrDup, EmptyTextGivesAFreshTerminator) {
    const char *empty = "";
    char *copy = MMFLAT_StrDup(empty, nullptr, "t.cpp", 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, empty);
    EXPECT_EQ(copy[0], '\0');
    MMFLAT_Free(copy);
}

TEST(MmflatStrDup, NullTextRecordsCode2WithTheDuplicatorAsOrigin) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(MMFLAT_StrDup(nullptr, stack.get(), kLongPath, 77), nullptr);
    ASSERT_EQ(ErrorCount(stack.get()), 1);
    const ERRLIB_Error &error = stack->memoryError;
    EXPECT_EQ(error.component, 50);
    EXPECT_EQ(error.code, 2);
    EXPECT_EQ(error.errorClass, 2);
    EXPECT_STREQ(error.origin, "MMFLAT_StrDup");
    EXPECT_STREQ(error.function, "");  // no function: the fresh buffer stays empty
    EXPECT_EQ(std::string(error.file), std::string(kLongPath).substr(sizeof kLongPath - 1 - 50));
    EXPECT_EQ(error.line, 77);
    EXPECT_STREQ(error.message, "");
}

TEST(MmflatStrDup, NullTextWithoutStackRecordsNothing) {
    EXPECT_EQ(MMFLAT_StrDup(nullptr, nullptr, "t.cpp", 1), nullptr);
}

TEST(MmflatWcsDup, CopiesUnitsUpToAndIncludingTheZeroUnit) {
    const uint16_t text[] = {u'A', u'B', 0, u'C', 0};
    uint16_t *copy = MMFLAT_WcsDup(text, nullptr, "t.cpp", 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, text);
    EXPECT_EQ(copy[0], u'A');
    EXPECT_EQ(copy[1], u'B');
    EXPECT_EQ(copy[2], 0);
    MMFLAT_Free(copy);
}

TEST(MmflatWcsDup, KeepsUnitsAboveTheByteRange) {
    const uint16_t text[] = {0xFFFF, 0xD800, 0x0100, 0x00FF, 0};
    uint16_t *copy = MMFLAT_WcsDup(text, nullptr, "t.cpp", 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(std::memcmp(copy, text, sizeof text), 0);
    MMFLAT_Free(copy);
}

TEST(MmflatWcsDup, EmptyTextGivesOneZeroUnit) {
    const uint16_t text[] = {0};
    uint16_t *copy = MMFLAT_WcsDup(text, nullptr, "t.cpp", 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy[0], 0);
    MMFLAT_Free(copy);
}

TEST(MmflatWcsDup, NullTextRecordsCode2WithTheDuplicatorAsOrigin) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(MMFLAT_WcsDup(nullptr, stack.get(), "glib/glibwide.cpp", 5), nullptr);
    ASSERT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_EQ(stack->memoryError.component, 50);
    EXPECT_EQ(stack->memoryError.code, 2);
    EXPECT_EQ(stack->memoryError.errorClass, 2);
    EXPECT_STREQ(stack->memoryError.origin, "MMFLAT_WcsDup");
    EXPECT_STREQ(stack->memoryError.file, "glib/glibwide.cpp");
    EXPECT_EQ(stack->memoryError.line, 5);
    EXPECT_EQ(MMFLAT_WcsDup(nullptr, nullptr, "t.cpp", 1), nullptr);
}

TEST(MmflatValidSize, IsAlwaysOne) {
    EXPECT_EQ(MMFLAT_ValidSize(), 1);
}

TEST(MmflatNew, ImpossibleSizeOn32BitsIsReportedWithANegativeSize) {
    if (sizeof(void *) != 4) {
        GTEST_SKIP() << "4 GiB may be granted on a 64-bit system; covered with the failing "
                        "allocator";
    }
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(MMFLAT_New(0xFFFFFFFFu, stack.get(), "big.cpp", 3), nullptr);
    ASSERT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_STREQ(stack->memoryError.function, "malloc");
    EXPECT_STREQ(stack->memoryError.message, "-1");
    EXPECT_EQ(MMFLAT_New(0xFFFFFFFFu, nullptr, "big.cpp", 3), nullptr);
}

}  // namespace
