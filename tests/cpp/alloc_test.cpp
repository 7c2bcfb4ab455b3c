/* SPDX-License-Identifier: MIT */
// Allocations of the C++ layer, counted and made to fail with the interposing allocator: what
// the layer allocates it frees once, short texts need no allocation, failures are reported
// with the caller's position, and running out of memory throws only std::bad_alloc.
#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlssupport/nlssupport.hpp>
#include "support/alloc_interpose.h"

namespace {

// Pushes n ordinary errors.
void Push(ERRLIB_ErrorStack *stack, int n) {
    for (int i = 0; i < n; ++i)
        ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack, 7, i, 30, "origin", "function", "file.c", i,
                                             "message"),
                  0);
}

TEST(CppAlloc, StackAndItsErrorsAreFreedOnce) {
    alloc_interpose::Scope scope;
    {
        nls::ErrorStack stack;
        Push(stack.get(), 25);  // grows the slot array too
        std::optional<nls::Error> kept = stack.take_last();
        for (const nls::Error &error : stack)
            if (error.code() == 3)
                break;
        nls::ErrorStack moved(std::move(stack));
        nls::ErrorStack other;
        other = std::move(moved);
    }
    const std::size_t live = scope.LiveBlocks();
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_GT(calls, 0u);
    EXPECT_EQ(live, 0u);
}

TEST(CppAlloc, ErrorsOutliveTheirStackAndAreFreedOnce) {
    alloc_interpose::Scope scope;
    {
        std::vector<nls::Error> kept;
        kept.reserve(8);
        {
            nls::ErrorStack stack;
            Push(stack.get(), 5);
            for (nls::Error &error : stack)
                kept.push_back(std::move(error));
        }
        nls::Error moved = std::move(kept[0]);
        kept[1] = std::move(moved);
    }
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(live, 0u);
}

TEST(CppAlloc, TakingAMemoryErrorOffNeedsNoMemory) {
    nls::ErrorStack stack;
    alloc_interpose::Scope scope;
    scope.FailFrom(1);  // every allocation from now on fails
    const nls::unique_block<char[]> block = nls::make_block<char>(100, stack);
    std::optional<nls::Error> error = stack.take_first();
    const unsigned long calls = scope.Calls();
    const unsigned long injected = scope.Injected();
    scope.End();
    EXPECT_EQ(block, nullptr);
    EXPECT_EQ(calls, 1u);  // the block only
    EXPECT_EQ(injected, 1u);
    ASSERT_TRUE(error.has_value());
    EXPECT_TRUE(error->is_memory_error());
    EXPECT_EQ(error->function(), "calloc");
    EXPECT_EQ(error->message(), "100");
}

TEST(CppAlloc, EveryHelperReportsItsFailureAsTheCAllocatorDoes) {
    const std::source_location here = std::source_location::current();
    nls::ErrorStack stack;
    std::optional<nls::Error> errors[5];

    // Taking the records off needs no memory, so it happens while every allocation fails.
    alloc_interpose::Scope scope;
    scope.FailFrom(1);
    const auto zeroed = nls::make_block<std::uint32_t>(10, stack, here);
    errors[0] = stack.take_first();
    const auto raw = nls::make_block_for_overwrite<std::uint32_t>(10, stack, here);
    errors[1] = stack.take_first();
    const auto text = nls::strdup(std::string_view("abc"), stack, here);
    errors[2] = stack.take_first();
    const auto copy = nls::strdup("abcd", stack, here);
    errors[3] = stack.take_first();
    const auto wide = nls::wcsdup(std::u16string_view(u"ab"), stack, here);
    errors[4] = stack.take_first();
    const unsigned long injected = scope.Injected();
    scope.End();

    EXPECT_EQ(injected, 5u);
    EXPECT_EQ(zeroed, nullptr);
    EXPECT_EQ(raw, nullptr);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(wide, nullptr);
    EXPECT_TRUE(stack.empty());
    const std::string_view file = here.file_name();
    const std::string_view tail = file.size() > 50 ? file.substr(file.size() - 50) : file;
    const char *const functions[] = {"calloc", "malloc", "malloc", "malloc", "malloc"};
    const char *const sizes[] = {"40", "40", "4", "5", "6"};
    for (std::size_t i = 0; i < 5; ++i) {
        SCOPED_TRACE(i);
        ASSERT_TRUE(errors[i].has_value());
        EXPECT_TRUE(errors[i]->is_memory_error());
        EXPECT_EQ(errors[i]->code(), 1);
        EXPECT_EQ(errors[i]->function(), functions[i]);
        EXPECT_EQ(errors[i]->file(), tail);
        EXPECT_EQ(errors[i]->line(), static_cast<std::int32_t>(here.line()));
        EXPECT_EQ(errors[i]->message(), sizes[i]);
    }
}

TEST(CppAlloc, FailedResizeKeepsTheBlockAndReportsRealloc) {
    nls::ErrorStack stack;
    auto block = nls::make_block<char>(8, stack);
    ASSERT_NE(block, nullptr);
    char *const before = block.get();
    alloc_interpose::Scope scope;
    scope.FailFrom(1);
    const auto [resized, line] = std::pair(nls::resize_block(block, 1000, stack), __LINE__);
    scope.End();
    EXPECT_FALSE(resized);
    EXPECT_EQ(block.get(), before);
    const nls::Error error = *stack.take_first();
    EXPECT_EQ(error.function(), "realloc");
    EXPECT_EQ(error.line(), line);
    EXPECT_EQ(error.message(), "1000");
}

// Runs `run` with the first, second, ... allocation made to fail, until a run has no
// allocation left to fail. After every run no block may be left, and `run` (which says whether
// it succeeded) must have failed exactly when an allocation did.
template <class Run>
void EachAllocationFailing(Run run) {
    for (unsigned long n = 1;; ++n) {
        alloc_interpose::Scope scope;
        scope.FailNth(n);
        const bool succeeded = run();
        const bool injected = scope.Injected() != 0;
        const std::size_t live = scope.LiveBlocks();
        scope.End();
        EXPECT_EQ(live, 0u) << n;
        EXPECT_EQ(succeeded, !injected) << n;
        if (!injected)
            break;
    }
}

TEST(CppAlloc, FailedStackCreationThrowsBadAlloc) {
    EachAllocationFailing([] {
        try {
            nls::ErrorStack stack;
        } catch (const std::bad_alloc &) {
            return false;
        }
        return true;
    });
}

TEST(CppAlloc, FailedStackCreationWithNothrowLeavesNoStack) {
    EachAllocationFailing([] {
        nls::ErrorStack stack(std::nothrow);
        return stack.get() != nullptr;
    });
}

TEST(CppAlloc, ShortTextsAreCopiedWithoutAllocating) {
    alloc_interpose::Scope scope;
    const bool matched = nls::like("a%", "abc");
    const nls::result<std::int32_t> number = nls::to_int32("  42 ");
    const std::optional<std::int32_t> mib = nls::charset_mib("UTF-8");
    const bool wide = nls::like(u"_b%", u"abc");
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_TRUE(matched);
    EXPECT_EQ(number.value(), 42);
    EXPECT_EQ(mib, 106);
    EXPECT_TRUE(wide);
    EXPECT_EQ(calls, 0u);
}

TEST(CppAlloc, LongTextsAreCopiedOnTheHeapAndFreed) {
    const std::string value(300, 'x');
    alloc_interpose::Scope scope;
    const bool matched = nls::like("%x", value);
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_TRUE(matched);
    EXPECT_EQ(calls, 1u);  // the value; the pattern is short
    EXPECT_EQ(live, 0u);
}

TEST(CppAlloc, WrappersFreeWhatTheyAllocate) {
    CONV_DateTime record{};
    record.year = 1994;
    record.month = 10;
    record.day = 9;
    alloc_interpose::Scope scope;
    {
        const auto text = nls::format("%s %ls %500d", "narrow", u"wide", 5);
        const auto utf8 = nls::to_utf8(std::u16string(500, u'\u20ac'));
        const auto hex = nls::to_hex(std::vector<std::byte>(300));
        const auto bytes = nls::from_hex(std::string(600, 'A'));
        const auto decimal = nls::to_decimal("-123.456");
        const auto back = nls::decimal_to_string(decimal.value());
        const auto date = nls::format_datetime(record, "%Z-%02M-%02D, %999D");
        const auto read = nls::parse_datetime("1994-10-09", "%Z-%M-%D");
        const auto os = nls::os_codeset();
        const auto iana = nls::os_iana_name();
        EXPECT_TRUE(text.has_value());
        EXPECT_TRUE(back.ok());
        EXPECT_TRUE(date.ok());
        EXPECT_TRUE(read.ok());
    }
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(live, 0u);
}

TEST(CppAlloc, OutOfMemoryInTheLayersOwnStringsThrowsBadAllocAndLeaksNothing) {
    const std::string value(300, 'x');
    // The results of a run without failures; a run that does not throw gives them again.
    const auto expectedText = nls::format("%s|%ls", value.c_str(), u"\u20ac");
    const auto expectedHex = nls::to_hex(std::vector<std::byte>(300));
    ASSERT_TRUE(expectedText.has_value());
    EachAllocationFailing([&] {
        try {
            const auto text = nls::format("%s|%ls", value.c_str(), u"\u20ac");
            const auto hex = nls::to_hex(std::vector<std::byte>(300));
            EXPECT_EQ(text, expectedText);
            EXPECT_EQ(hex.value(), expectedHex.value());
            EXPECT_TRUE(nls::like("%x", value));
            EXPECT_FALSE(nls::like("%x", value + "y"));
        } catch (const std::bad_alloc &) {
            return false;
        }
        return true;
    });
}

}  // namespace
