/* SPDX-License-Identifier: MIT */
// The checked allocator when the system allocator really fails (the failing allocator of
// tests/support replaces malloc, calloc, realloc and free in this executable).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include "errlib/errlib_test_util.h"
#include "errlib/errstack_internal.h"
#include <nlssupport/memmgr.h>
#include "support/alloc_interpose.h"

namespace {

using errlib_test::ErrorCount;
using errlib_test::NewStack;
using errlib_test::StackPtr;

// 72 characters: the reserved record keeps the last 50.
constexpr char kLongPath[] =
    "/home/build/nlsreport/src/glib/deep/folder/of/the/sources/glibstring.cpp";
const std::string kPathTail = std::string(kLongPath).substr(sizeof kLongPath - 1 - 50);

// The message written for a failed request of `size` bytes: the size as a signed decimal.
std::string SizeText(uint32_t size) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", static_cast<int>(static_cast<int32_t>(size)));
    return text;
}

enum class Call { kNew, kNewClear, kResize };

// Runs one allocating function with its first allocation failing; returns its result.
void *FailOnce(Call call, uint32_t size, ERRLIB_ErrorStack *stack, void *block = nullptr) {
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    void *result = nullptr;
    switch (call) {
        case Call::kNew:
            result = MMFLAT_New(size, stack, kLongPath, 4711);
            break;
        case Call::kNewClear:
            result = MMFLAT_NewClear(size, stack, kLongPath, 4711);
            break;
        case Call::kResize:
            result = MMFLAT_Resize(block, size, stack, kLongPath, 4711);
            break;
    }
    return result;
}

struct FailureCase {
    const char *name;
    Call call;
    const char *function;
};

void PrintTo(const FailureCase &value, std::ostream *out) {
    *out << value.name;
}

class MmflatAllocationFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(MmflatAllocationFailure, RecordsComponent50Code1Class2WithTheCallSite) {
    const FailureCase &c = GetParam();
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(FailOnce(c.call, 4096, stack.get()), nullptr);
    ASSERT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_EQ(stack->count, 0);
    const ERRLIB_Error &error = stack->memoryError;
    EXPECT_EQ(error.component, 50);
    EXPECT_EQ(error.code, 1);
    EXPECT_EQ(error.errorClass, 2);
    EXPECT_STREQ(error.origin, "");  // no origin: the fresh buffer stays empty
    EXPECT_STREQ(error.function, c.function);
    EXPECT_EQ(std::string(error.file), kPathTail);
    EXPECT_EQ(error.line, 4711);
    EXPECT_STREQ(error.message, "4096");
}

TEST_P(MmflatAllocationFailure, WithoutStackReturnsNullAndRecordsNothing) {
    const FailureCase &c = GetParam();
    StackPtr stack = NewStack();  // exists, but is not passed
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(FailOnce(c.call, 4096, nullptr), nullptr);
    EXPECT_EQ(ErrorCount(stack.get()), 0);
}

TEST_P(MmflatAllocationFailure, SizeIsPrintedAsASignedDecimal) {
    const FailureCase &c = GetParam();
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    struct {
        uint32_t size;
        const char *text;
    } const cases[] = {
        {0u, "0"},
        {1u, "1"},
        {2147483647u, "2147483647"},
        {2147483648u, "-2147483648"},
        {3000000000u, "-1294967296"},
        {4294967295u, "-1"},
    };
    for (const auto &k : cases) {
        EXPECT_EQ(FailOnce(c.call, k.size, stack.get()), nullptr);
        EXPECT_STREQ(stack->memoryError.message, k.text) << k.size;
    }
    EXPECT_EQ(ErrorCount(stack.get()), 1);  // the latest memory error wins
}

TEST_P(MmflatAllocationFailure, SizeTextAgreesWithPrintfOverManySizes) {
    const FailureCase &c = GetParam();
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    uint32_t state = 12345u;
    for (int i = 0; i < 500; ++i) {
        state = state * 1664525u + 1013904223u;  // deterministic generator
        const uint32_t size = (i % 3 == 0) ? state : (state >> (i % 32));
        ASSERT_EQ(FailOnce(c.call, size, stack.get()), nullptr);
        ASSERT_EQ(std::string(stack->memoryError.message), SizeText(size)) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(Calls, MmflatAllocationFailure,
                         ::testing::Values(FailureCase{"New", Call::kNew, "malloc"},
                                           FailureCase{"NewClear", Call::kNewClear, "calloc"},
                                           FailureCase{"Resize", Call::kResize, "realloc"}),
                         [](const ::testing::TestParamInfo<FailureCase> &info) {
                             return info.param.name;
                         });

TEST(MmflatAllocationFailure, ShortFilePathIsKeptWhole) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    {
        alloc_interpose::Scope scope;
        scope.FailNth(1);
        EXPECT_EQ(MMFLAT_New(8, stack.get(), "nls/koranls.cpp", 12), nullptr);
    }
    EXPECT_STREQ(stack->memoryError.file, "nls/koranls.cpp");
    EXPECT_EQ(stack->memoryError.line, 12);
}

TEST(MmflatAllocationFailure, FailedResizeLeavesTheOldBlockToTheCaller) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    auto *block = static_cast<char *>(MMFLAT_New(8, nullptr, "t.cpp", 1));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abcdefg", 8);
    alloc_interpose::Begin();
    alloc_interpose::FailNth(1);
    void *resized = MMFLAT_Resize(block, 1000, stack.get(), "t.cpp", 2);
    alloc_interpose::End();
    EXPECT_EQ(resized, nullptr);
    EXPECT_STREQ(block, "abcdefg");
    EXPECT_STREQ(stack->memoryError.message, "1000");
    MMFLAT_Free(block);  // still the caller's: freeing it once is right
    alloc_interpose::Reset();
}

TEST(MmflatAllocationFailure, StrDupFailureIsReportedAsMallocWithTheCallersSite) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    char *copy = nullptr;
    {
        alloc_interpose::Scope scope;
        scope.FailNth(1);
        copy = MMFLAT_StrDup("hello", stack.get(), kLongPath, 99);
    }
    EXPECT_EQ(copy, nullptr);
    ASSERT_EQ(ErrorCount(stack.get()), 1);
    EXPECT_EQ(stack->memoryError.code, 1);
    EXPECT_STREQ(stack->memoryError.origin, "");
    EXPECT_STREQ(stack->memoryError.function, "malloc");
    EXPECT_EQ(std::string(stack->memoryError.file), kPathTail);
    EXPECT_EQ(stack->memoryError.line, 99);
    EXPECT_STREQ(stack->memoryError.message, "6");
}

TEST(MmflatAllocationFailure, WcsDupFailureReportsTheByteCount) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    const uint16_t text[] = {u'A', u'B', u'C', 0};
    uint16_t *copy = nullptr;
    {
        alloc_interpose::Scope scope;
        scope.FailNth(1);
        copy = MMFLAT_WcsDup(text, stack.get(), "glib/glibwide.cpp", 8);
    }
    EXPECT_EQ(copy, nullptr);
    EXPECT_STREQ(stack->memoryError.function, "malloc");
    EXPECT_STREQ(stack->memoryError.message, "8");
    EXPECT_EQ(stack->memoryError.line, 8);
}

TEST(MmflatAllocationSizes, StrDupOfEmptyTextAllocatesOneByte) {
    alloc_interpose::Scope scope;
    char *copy = MMFLAT_StrDup("", nullptr, "t.cpp", 1);
    const unsigned long calls = scope.Calls();
    const std::size_t bytes = scope.LiveBytes();
    MMFLAT_Free(copy);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(bytes, 1u);
    EXPECT_EQ(live, 0u);
}

TEST(MmflatAllocationSizes, SizeZeroMakesOneBlockThatFreeReleases) {
    alloc_interpose::Scope scope;
    void *block = MMFLAT_New(0, nullptr, "t.cpp", 1);
    const unsigned long calls = scope.Calls();
    const std::size_t liveBefore = scope.LiveBlocks();
    MMFLAT_Free(block);
    const std::size_t liveAfter = scope.LiveBlocks();
    scope.End();
    EXPECT_NE(block, nullptr);  // the C library's malloc(0) gives a unique block
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(liveBefore, 1u);
    EXPECT_EQ(liveAfter, 0u);
}

TEST(MmflatAllocationSizes, FreeOfNullTouchesNoBlock) {
    void *kept = MMFLAT_New(16, nullptr, "t.cpp", 1);
    ASSERT_NE(kept, nullptr);
    alloc_interpose::Scope scope;
    void *other = MMFLAT_New(8, nullptr, "t.cpp", 1);
    MMFLAT_Free(nullptr);
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    MMFLAT_Free(other);
    scope.End();
    EXPECT_EQ(calls, 1u);  // only the New above
    EXPECT_EQ(live, 1u);   // nothing was released by the null
    MMFLAT_Free(kept);
}

TEST(MmflatAllocationSizes, StrDupAllocatesLengthPlusOne) {
    alloc_interpose::Scope scope;
    char *copy = MMFLAT_StrDup("nlsreport", nullptr, "t.cpp", 1);
    const std::size_t bytes = scope.LiveBytes();
    MMFLAT_Free(copy);
    scope.End();
    EXPECT_EQ(bytes, 10u);
}

TEST(MmflatAllocationSizes, WcsDupOfABAllocatesSixBytes) {
    const uint16_t text[] = {u'A', u'B', 0};
    alloc_interpose::Scope scope;
    uint16_t *copy = MMFLAT_WcsDup(text, nullptr, "t.cpp", 1);
    const unsigned long calls = scope.Calls();
    const std::size_t bytes = scope.LiveBytes();
    MMFLAT_Free(copy);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(bytes, 6u);
    EXPECT_EQ(live, 0u);
}

TEST(MmflatAllocationSizes, EachCallAllocatesExactlyTheRequestedSize) {
    alloc_interpose::Scope scope;
    void *a = MMFLAT_New(13, nullptr, "t.cpp", 1);
    void *b = MMFLAT_NewClear(17, nullptr, "t.cpp", 2);
    void *c = MMFLAT_Resize(nullptr, 19, nullptr, "t.cpp", 3);
    const unsigned long calls = scope.Calls();
    const std::size_t bytes = scope.LiveBytes();
    MMFLAT_Free(a);
    MMFLAT_Free(b);
    MMFLAT_Free(c);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(calls, 3u);
    EXPECT_EQ(bytes, 13u + 17u + 19u);
    EXPECT_EQ(live, 0u);
}

TEST(MmflatAllocationSizes, NullArgumentToADuplicatorAllocatesNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    MMFLAT_StrDup(nullptr, stack.get(), "t.cpp", 1);
    MMFLAT_WcsDup(nullptr, stack.get(), "t.cpp", 2);
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(calls, 0u);
    EXPECT_STREQ(stack->memoryError.origin, "MMFLAT_WcsDup");
}

TEST(MmflatAllocationSizes, ReportingAFailureAllocatesNothing) {
    StackPtr stack = NewStack();
    ASSERT_NE(stack, nullptr);
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    void *block = MMFLAT_New(64, stack.get(), "t.cpp", 1);
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(ErrorCount(stack.get()), 1);
}

}  // namespace
