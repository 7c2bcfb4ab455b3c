/* SPDX-License-Identifier: MIT */
// Ownership in the C++ layer: error stacks, the errors taken off them and blocks of the checked
// allocator, each against the C functions they stand for. The sanitizer build checks that every
// block is freed once; the allocation counts are in alloc_test.cpp.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlssupport/nlssupport.hpp>

namespace {

// The fields of a record that the tests compare (the timestamp changes from run to run).
struct Fields {
    std::int32_t component = 0;
    std::int32_t code = 0;
    std::int32_t errorClass = 0;
    std::int32_t line = 0;
    std::string origin;
    std::string function;
    std::string file;
    std::string message;
    bool operator==(const Fields &) const = default;
};

std::string TextOrEmpty(const char *text) {
    return text != nullptr ? text : "";
}

Fields FromC(const ERRLIB_Error &record) {
    return {record.component,           record.code,
            record.errorClass,          record.line,
            TextOrEmpty(record.origin), TextOrEmpty(record.function),
            TextOrEmpty(record.file),   TextOrEmpty(record.message)};
}

Fields FromCpp(const nls::Error &error) {
    return {error.component(),           error.code(),
            error.error_class(),         error.line(),
            std::string(error.origin()), std::string(error.function()),
            std::string(error.file()),   std::string(error.message())};
}

// Texts longer than the reserved record keeps (50 characters; the file keeps its end).
const std::string kLongOrigin(70, 'o');
const std::string kLongFile = std::string(40, 'd') + "/" + std::string(39, 'f') + ".cpp";

// Pushes the same errors onto a stack: a memory error (the reserved record) and three ordinary
// ones, one of them without origin and message.
void PushErrors(ERRLIB_ErrorStack *stack) {
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack, 7, 101, 30, "load", "fopen", "settings.c", 11,
                                         "not found"),
              0);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, 1, ERRLIB_CLASS_MEMORY,
                                         kLongOrigin.c_str(), "malloc", kLongFile.c_str(), 22,
                                         "1073741824"),
              0);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack, 7, 102, 31, nullptr, "read", "io.c", 33, nullptr),
              0);
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack, 8, 103, 32, "parse", "strtol", "parse.c", 44,
                                         "bad number"),
              0);
}

// What the C functions hand out, taking the errors off with `take` until the stack is empty.
std::vector<Fields> TakeAllWithC(ERRLIB_ErrorStack *stack,
                                 int (*take)(ERRLIB_ErrorStack *, ERRLIB_Error **)) {
    std::vector<Fields> taken;
    ERRLIB_Error *record = nullptr;
    while (take(stack, &record) == 0) {
        taken.push_back(FromC(*record));
        ERRLIB_Error_Release(record, stack);
    }
    return taken;
}

// --- nls::ErrorStack -------------------------------------------------------------------------

TEST(CppErrorStack, NewStackHoldsAHandleAndNoError) {
    nls::ErrorStack stack;
    EXPECT_TRUE(stack);
    EXPECT_NE(stack.get(), nullptr);
    EXPECT_EQ(stack.size(), 0u);
    EXPECT_TRUE(stack.empty());
}

TEST(CppErrorStack, NothrowConstructorAlsoMakesAStack) {
    nls::ErrorStack stack(std::nothrow);
    EXPECT_NE(stack.get(), nullptr);
    EXPECT_TRUE(stack.empty());
}

TEST(CppErrorStack, SizeIsTheCountOfTheCFunction) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    std::int32_t count = -1;
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack.get(), &count), 0);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(stack.size(), 4u);
    EXPECT_FALSE(stack.empty());
}

TEST(CppErrorStack, IterationTakesTheErrorsOffAsGetFirstErrorDoes) {
    ERRLIB_ErrorStack *reference = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&reference), 0);
    PushErrors(reference);
    const std::vector<Fields> expected = TakeAllWithC(reference, ERRLIB_ErrorStack_GetFirstError);
    ASSERT_EQ(ERRLIB_ErrorStack_Destroy(reference), 0);
    ASSERT_EQ(expected.size(), 4u);
    EXPECT_EQ(expected[0].errorClass, ERRLIB_CLASS_MEMORY);  // a pending memory error comes first
    EXPECT_EQ(expected[0].origin, std::string(50, 'o'));
    EXPECT_EQ(expected[0].file, kLongFile.substr(kLongFile.size() - 50));

    nls::ErrorStack stack;
    PushErrors(stack.get());
    std::vector<Fields> taken;
    for (const nls::Error &error : stack)
        taken.push_back(FromCpp(error));
    EXPECT_EQ(taken, expected);
    EXPECT_TRUE(stack.empty());
    EXPECT_TRUE(stack.begin() == std::default_sentinel);
}

TEST(CppErrorStack, TakeFirstAndTakeLastFollowGetFirstErrorAndGetLastError) {
    using Take = int (*)(ERRLIB_ErrorStack *, ERRLIB_Error **);
    const std::pair<Take, std::optional<nls::Error> (nls::ErrorStack::*)() noexcept> kPairs[] = {
        {ERRLIB_ErrorStack_GetFirstError, &nls::ErrorStack::take_first},
        {ERRLIB_ErrorStack_GetLastError, &nls::ErrorStack::take_last},
    };
    for (const auto &[c_take, cpp_take] : kPairs) {
        ERRLIB_ErrorStack *reference = nullptr;
        ASSERT_EQ(ERRLIB_ErrorStack_Create(&reference), 0);
        PushErrors(reference);
        const std::vector<Fields> expected = TakeAllWithC(reference, c_take);
        ASSERT_EQ(ERRLIB_ErrorStack_Destroy(reference), 0);

        nls::ErrorStack stack;
        PushErrors(stack.get());
        std::vector<Fields> taken;
        while (std::optional<nls::Error> error = (stack.*cpp_take)())
            taken.push_back(FromCpp(*error));
        EXPECT_EQ(taken, expected);
        EXPECT_FALSE((stack.*cpp_take)().has_value());
    }
}

TEST(CppErrorStack, MemoryErrorIsCopiedAndTheStackCanRecordTheNextOne) {
    nls::ErrorStack stack;
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, ERRLIB_CLASS_MEMORY, nullptr, "calloc",
                                         "a.c", 5, "64"),
              0);
    std::optional<nls::Error> first = stack.take_first();
    ASSERT_TRUE(first.has_value());
    EXPECT_TRUE(first->is_memory_error());
    EXPECT_EQ(first->function(), "calloc");
    EXPECT_EQ(first->origin(), "");  // the reserved record's empty buffer: no origin given
    EXPECT_TRUE(stack.empty());

    // The stack's reserved record is free again; the copy keeps its own texts.
    ASSERT_EQ(ERRLIB_ErrorStack_AddError(stack.get(), 50, 1, ERRLIB_CLASS_MEMORY, nullptr,
                                         "realloc", "b.c", 6, "128"),
              0);
    EXPECT_EQ(stack.size(), 1u);
    EXPECT_EQ(first->function(), "calloc");
    EXPECT_EQ(first->file(), "a.c");
    EXPECT_EQ(first->message(), "64");
    EXPECT_EQ(stack.take_first()->function(), "realloc");
}

TEST(CppErrorStack, ErrorsMovedOutOfTheLoopOutliveTheStack) {
    std::vector<nls::Error> kept;
    {
        nls::ErrorStack stack;
        PushErrors(stack.get());
        for (nls::Error &error : stack)
            kept.push_back(std::move(error));
    }
    ASSERT_EQ(kept.size(), 4u);
    EXPECT_EQ(kept[0].origin(), std::string(50, 'o'));
    EXPECT_EQ(kept[1].message(), "not found");
    EXPECT_EQ(kept[2].origin(), "");
    EXPECT_EQ(kept[2].get()->origin, nullptr);
    EXPECT_EQ(kept[3].function(), "strtol");
}

TEST(CppErrorStack, LeavingTheLoopEarlyLeavesTheOtherErrorsOnTheStack) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    for (const nls::Error &error : stack) {
        EXPECT_TRUE(error.is_memory_error());
        break;
    }
    EXPECT_EQ(stack.size(), 3u);
    EXPECT_EQ(stack.take_first()->code(), 101);
}

TEST(CppErrorStack, ClearRemovesEveryErrorAsTheCFunctionDoes) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    stack.clear();
    EXPECT_TRUE(stack.empty());
    EXPECT_FALSE(stack.take_first().has_value());
}

TEST(CppErrorStack, MovedFromStackHoldsNothing) {
    nls::ErrorStack first;
    PushErrors(first.get());
    ERRLIB_ErrorStack *const handle = first.get();

    nls::ErrorStack second(std::move(first));
    EXPECT_EQ(second.get(), handle);
    EXPECT_EQ(second.size(), 4u);
    EXPECT_FALSE(first);
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(first.size(), 0u);
    EXPECT_TRUE(first.empty());
    EXPECT_FALSE(first.take_first().has_value());
    EXPECT_TRUE(first.begin() == std::default_sentinel);
    first.clear();

    nls::ErrorStack third;
    third = std::move(second);  // destroys third's own stack
    EXPECT_EQ(third.get(), handle);
    EXPECT_EQ(second.get(), nullptr);
    EXPECT_EQ(third.size(), 4u);
}

TEST(CppErrorStack, ReleaseHandsTheHandleToTheCaller) {
    nls::ErrorStack stack;
    ERRLIB_ErrorStack *const handle = stack.release();
    EXPECT_EQ(stack.get(), nullptr);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(handle), 0);
}

TEST(CppErrorStack, AdoptsAStackMadeByTheCFunction) {
    ERRLIB_ErrorStack *handle = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&handle), 0);
    nls::ErrorStack stack(handle);
    EXPECT_EQ(stack.get(), handle);
    PushErrors(handle);
    EXPECT_EQ(stack.size(), 4u);
}

TEST(CppErrorStack, ServesAsTheStackArgumentOfTheLayer) {
    const char *const nothing = nullptr;
    nls::ErrorStack stack;
    EXPECT_EQ(nls::strdup(nothing, stack), nullptr);
    EXPECT_EQ(nls::strdup(nothing, stack.get()), nullptr);
    EXPECT_EQ(nls::strdup(nothing, nullptr), nullptr);
    EXPECT_EQ(nls::strdup(nothing), nullptr);
    // Two reports into the one reserved record, which counts once.
    EXPECT_EQ(stack.size(), 1u);
}

// --- nls::Error ------------------------------------------------------------------------------

TEST(CppError, MovedFromErrorHoldsNoRecord) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    stack.take_first();  // the memory error
    nls::Error first = *stack.take_first();
    nls::Error second(std::move(first));
    EXPECT_EQ(first.get(), nullptr);
    EXPECT_EQ(first.code(), 0);
    EXPECT_EQ(first.component(), 0);
    EXPECT_EQ(first.error_class(), 0);
    EXPECT_EQ(first.line(), 0);
    EXPECT_EQ(first.timestamp(), 0);
    EXPECT_EQ(first.message(), "");
    EXPECT_FALSE(first.is_memory_error());
    EXPECT_EQ(second.code(), 101);

    nls::Error third = *stack.take_first();
    third = std::move(second);  // releases third's own record
    EXPECT_EQ(third.code(), 101);
    EXPECT_EQ(second.get(), nullptr);
    nls::Error &same = third;
    third = std::move(same);  // moving onto itself keeps the record
    EXPECT_EQ(third.code(), 101);
}

TEST(CppError, MovedMemoryErrorReadsItsOwnTexts) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    nls::Error first = *stack.take_first();
    ASSERT_TRUE(first.is_memory_error());
    nls::Error second(std::move(first));
    EXPECT_EQ(first.get(), nullptr);
    ASSERT_NE(second.get(), nullptr);
    EXPECT_EQ(second.get()->origin, second.origin().data());
    EXPECT_EQ(second.get()->file, second.file().data());
    EXPECT_EQ(second.origin(), std::string(50, 'o'));
    EXPECT_EQ(second.line(), 22);
    EXPECT_EQ(second.message(), "1073741824");
}

TEST(CppError, RecordIsReadableThroughTheCAccessors) {
    nls::ErrorStack stack;
    PushErrors(stack.get());
    for (const nls::Error &error : stack) {
        std::int32_t line = -1;
        EXPECT_EQ(ERRLIB_Error_GetInt32(error.get(), ERRLIB_ID_LINE, &line), 0);
        EXPECT_EQ(line, error.line());
        EXPECT_NE(error.timestamp(), 0);
    }
}

// --- blocks of the checked allocator ---------------------------------------------------------

TEST(CppBlock, MakeBlockIsZeroFilledAsNewClearGivesIt) {
    nls::unique_block<std::uint32_t[]> block = nls::make_block<std::uint32_t>(16);
    nls::unique_block<char[]> reference(
        static_cast<char *>(MMFLAT_NewClear(64, nullptr, __FILE__, __LINE__)));
    ASSERT_NE(block, nullptr);
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(std::memcmp(block.get(), reference.get(), 64), 0);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(block[i], 0u);
}

TEST(CppBlock, MakeBlockForOverwriteHoldsEveryElement) {
    auto block = nls::make_block_for_overwrite<std::uint16_t>(1000);
    ASSERT_NE(block, nullptr);
    for (std::uint16_t i = 0; i < 1000; ++i)
        block[i] = i;
    EXPECT_EQ(block[999], 999);
}

TEST(CppBlock, StrdupCopiesATextAsMMFLAT_StrDupDoes) {
    const char *const text =
        "Gr\xC3\xBC\xC3\x9F"
        "e";
    const nls::unique_block<char[]> copy = nls::strdup(text);
    const nls::unique_block<char[]> reference(MMFLAT_StrDup(text, nullptr, __FILE__, __LINE__));
    ASSERT_NE(copy, nullptr);
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(std::memcmp(copy.get(), reference.get(), std::strlen(text) + 1), 0);
    EXPECT_NE(copy.get(), text);
}

TEST(CppBlock, StrdupOfAViewCopiesTheWholeViewAndATerminator) {
    const std::string_view inner("ab\0cd", 5);
    const auto copy = nls::strdup(inner);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(std::memcmp(copy.get(), "ab\0cd\0", 6), 0);

    const std::string_view part = std::string_view("abcdef").substr(1, 3);
    const auto cut = nls::strdup(part);
    ASSERT_NE(cut, nullptr);
    EXPECT_STREQ(cut.get(), "bcd");

    const auto empty = nls::strdup(std::string_view());
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty[0], '\0');
}

TEST(CppBlock, NullTextIsReportedWithTheCallersPositionAsMMFLAT_StrDupReportsIt) {
    const char *const nothing = nullptr;
    const std::source_location here = std::source_location::current();

    nls::ErrorStack stack;
    EXPECT_EQ(nls::strdup(nothing, stack, here), nullptr);
    nls::ErrorStack reference;
    EXPECT_EQ(MMFLAT_StrDup(nothing, reference.get(), here.file_name(),
                            static_cast<std::int32_t>(here.line())),
              nullptr);

    const Fields expected = FromCpp(*reference.take_first());
    const Fields actual = FromCpp(*stack.take_first());
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(actual.origin, "MMFLAT_StrDup");
    EXPECT_EQ(actual.code, 2);
    EXPECT_EQ(actual.errorClass, ERRLIB_CLASS_MEMORY);
    EXPECT_EQ(actual.line, static_cast<std::int32_t>(here.line()));
}

TEST(CppBlock, DefaultPositionIsTheCallingLineOfTheCallingFile) {
    const char *const nothing = nullptr;
    nls::ErrorStack stack;
    const auto [copy, line] = std::pair(nls::strdup(nothing, stack), __LINE__);
    EXPECT_EQ(copy, nullptr);
    const nls::Error error = *stack.take_first();
    EXPECT_EQ(error.line(), line);
    const std::string_view file = __FILE__;
    EXPECT_EQ(error.file(), file.size() > 50 ? file.substr(file.size() - 50) : file);
}

TEST(CppBlock, WcsdupCopiesUnitsAsMMFLAT_WcsDupDoes) {
    const GLIB_WChar text[] = {0x41, 0xE9, 0x20AC, 0xD83D, 0xDE00, 0};
    const auto copy = nls::wcsdup(text);
    const nls::unique_block<GLIB_WChar[]> reference(
        MMFLAT_WcsDup(text, nullptr, __FILE__, __LINE__));
    ASSERT_NE(copy, nullptr);
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(std::memcmp(copy.get(), reference.get(), sizeof text), 0);

    const auto from_view = nls::wcsdup(std::u16string_view(u"A\u00e9\u20ac\U0001F600"));
    ASSERT_NE(from_view, nullptr);
    EXPECT_EQ(std::memcmp(from_view.get(), reference.get(), sizeof text), 0);
}

TEST(CppBlock, ResizeBlockKeepsTheContents) {
    auto block = nls::make_block<char>(4);
    ASSERT_NE(block, nullptr);
    std::memcpy(block.get(), "abc", 4);
    ASSERT_TRUE(nls::resize_block(block, 100000));
    EXPECT_STREQ(block.get(), "abc");
    ASSERT_TRUE(nls::resize_block(block, 2));
    EXPECT_EQ(std::memcmp(block.get(), "ab", 2), 0);

    nls::unique_block<int[]> fresh;
    ASSERT_TRUE(nls::resize_block(fresh, 3));
    EXPECT_NE(fresh, nullptr);
}

TEST(CppBlock, SizesBeyondThirtyTwoBitsGiveNoBlockAndRecordNothing) {
    nls::ErrorStack stack;
    const std::size_t too_many = std::size_t{1} << 29;  // 2^32 bytes of 8-byte elements
    EXPECT_EQ(nls::make_block<std::uint64_t>(too_many, stack), nullptr);
    EXPECT_EQ(nls::make_block_for_overwrite<std::uint64_t>(too_many, stack), nullptr);
    auto block = nls::make_block<std::uint64_t>(1, stack);
    ASSERT_NE(block, nullptr);
    std::uint64_t *const kept = block.get();
    EXPECT_FALSE(nls::resize_block(block, too_many, stack));
    EXPECT_EQ(block.get(), kept);
    EXPECT_TRUE(stack.empty());
}

TEST(CppBlock, UniqueBlockTakesOverALibraryResult) {
    ASSERT_EQ(setenv("CPP_LAYER_TEST", "value", 1), 0);
    nls::ErrorStack stack;
    const nls::unique_block<char[]> text(GLIB_ExpandEnvStrings("<${CPP_LAYER_TEST}>", stack.get()));
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(text.get(), "<value>");
    unsetenv("CPP_LAYER_TEST");
}

TEST(CppBlock, MovedFromBlockIsEmpty) {
    auto first = nls::strdup("text");
    char *const address = first.get();
    auto second = std::move(first);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(second.get(), address);
}

}  // namespace
