/* SPDX-License-Identifier: MIT */
// Allocation failures of the environment functions, with a system allocator made to fail.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/memmgr.h>
#include "support/alloc_interpose.h"

namespace {

// What the allocator left on a stack: the number of errors and the first record's fields.
struct Report {
    int32_t errors = 0;
    int32_t code = 0;
    int32_t errorClass = 0;
    int32_t line = 0;
    std::string file;
};

Report TakeReport(ERRLIB_ErrorStack *stack) {
    Report report;
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &report.errors);
    if (report.errors > 0) {
        ERRLIB_Error *record = nullptr;
        if (ERRLIB_ErrorStack_GetFirstError(stack, &record) == 0 && record != nullptr) {
            report.code = record->code;
            report.errorClass = record->errorClass;
            report.line = record->line;
            report.file = record->file != nullptr ? record->file : "";
            ERRLIB_Error_Release(record, stack);
        }
    }
    return report;
}

class GlibAllocFailure : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("GLIBTEST_VALUE", "0123456789", 1);
        ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack_), 0);
    }
    void TearDown() override {
        ERRLIB_ErrorStack_Destroy(stack_);
        unsetenv("GLIBTEST_VALUE");
    }
    ERRLIB_ErrorStack *stack_ = nullptr;
};

TEST_F(GlibAllocFailure, ExpandFirstAllocationFailsWithItsSite) {
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    char *result = GLIB_ExpandEnvStrings("a${GLIBTEST_VALUE}b", stack_);
    const unsigned long injected = scope.Injected();
    const size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(injected, 1u);
    EXPECT_EQ(live, 0u);
    const Report report = TakeReport(stack_);
    EXPECT_EQ(report.errors, 1);
    EXPECT_EQ(report.code, 1);
    EXPECT_EQ(report.errorClass, 2);
    EXPECT_EQ(report.line, 3772);
    EXPECT_EQ(report.file, "glib/glibenv.cpp");
}

TEST_F(GlibAllocFailure, ExpandResizeFailureReleasesTheBlockWithItsSite) {
    alloc_interpose::Scope scope;
    scope.FailNth(2);
    char *result = GLIB_ExpandEnvStrings("a${GLIBTEST_VALUE}b", stack_);
    const unsigned long injected = scope.Injected();
    const size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(injected, 1u);
    EXPECT_EQ(live, 0u);
    const Report report = TakeReport(stack_);
    EXPECT_EQ(report.errors, 1);
    EXPECT_EQ(report.line, 3807);
    EXPECT_EQ(report.file, "glib/glibenv.cpp");
}

TEST_F(GlibAllocFailure, ExpandCapacityGrowsByValueLengthLessOne) {
    alloc_interpose::Scope scope;
    // Source of 19 characters: 20 bytes, then 20 + 10 - 1 for the value.
    scope.FailSize(29);
    char *result = GLIB_ExpandEnvStrings("a${GLIBTEST_VALUE}b", stack_);
    const unsigned long calls = scope.Calls();
    const unsigned long injected = scope.Injected();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(calls, 2u);
    EXPECT_EQ(injected, 1u);
}

TEST_F(GlibAllocFailure, ExpandEveryFailurePointLeaksNothing) {
    for (unsigned long n = 1;; ++n) {
        alloc_interpose::Scope scope;
        scope.FailNth(n);
        char *result = GLIB_ExpandEnvStrings("${GLIBTEST_VALUE}-${GLIBTEST_VALUE}-${NOPE}", stack_);
        const bool injected = scope.Injected() != 0;
        if (result != nullptr)
            MMFLAT_Free(result);
        const size_t live = scope.LiveBlocks();
        scope.End();
        EXPECT_EQ(live, 0u) << n;
        EXPECT_EQ(result == nullptr, injected) << n;
        ERRLIB_ErrorStack_Clear(stack_);
        if (!injected) {
            EXPECT_EQ(n, 4u);  // one allocation and two resizes
            break;
        }
    }
}

TEST_F(GlibAllocFailure, ExpandNullStackStillReturnsNull) {
    alloc_interpose::Scope scope;
    scope.FailNth(2);
    char *result = GLIB_ExpandEnvStrings("${GLIBTEST_VALUE}", nullptr);
    const size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(live, 0u);
}

TEST_F(GlibAllocFailure, GetenvCopyFailureWithItsSite) {
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    char *result = GLIB_MMStrDup_getenv("GLIBTEST_VALUE", stack_);
    const size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(live, 0u);
    const Report report = TakeReport(stack_);
    EXPECT_EQ(report.errors, 1);
    EXPECT_EQ(report.errorClass, 2);
    EXPECT_EQ(report.line, 2668);
    EXPECT_EQ(report.file, "glib/glibenv.cpp");
}

TEST_F(GlibAllocFailure, GetenvCopySucceedsWithOneAllocation) {
    alloc_interpose::Scope scope;
    char *result = GLIB_MMStrDup_getenv("GLIBTEST_VALUE", stack_);
    const unsigned long calls = scope.Calls();
    scope.End();
    ASSERT_NE(result, nullptr);
    EXPECT_STREQ(result, "0123456789");
    EXPECT_EQ(calls, 1u);
    MMFLAT_Free(result);
}

TEST_F(GlibAllocFailure, StrtowcsFailureGivesNull) {
    alloc_interpose::Scope scope;
    scope.FailSize(2 * (3 + 1));
    GLIB_WChar *result = GLIB_strtowcs("abc");
    const unsigned long injected = scope.Injected();
    scope.End();
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(injected, 1u);
}

}  // namespace
