/* SPDX-License-Identifier: MIT */
// What the C++ layer promises at compile time: ownership types are move-only and move without
// throwing, the status enumeration is an error code enumeration with the C values, the
// functions that cannot fail are noexcept, and nls::format accepts exactly its argument types.
#include <gtest/gtest.h>

#include <concepts>
#include <cstdint>
#include <iterator>
#include <memory>
#include <ranges>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

#include <nlssupport/nlssupport.hpp>

namespace {

// --- ownership -------------------------------------------------------------------------------

template <class T>
constexpr bool kMoveOnlyAndNothrowMovable =
    !std::is_copy_constructible_v<T> && !std::is_copy_assignable_v<T> &&
    std::is_nothrow_move_constructible_v<T> && std::is_nothrow_move_assignable_v<T> &&
    std::is_nothrow_destructible_v<T>;

static_assert(kMoveOnlyAndNothrowMovable<nls::ErrorStack>);
static_assert(kMoveOnlyAndNothrowMovable<nls::Error>);
static_assert(kMoveOnlyAndNothrowMovable<nls::unique_block<char[]>>);
static_assert(kMoveOnlyAndNothrowMovable<nls::ErrorStack::iterator>);

static_assert(std::is_default_constructible_v<nls::ErrorStack>);
static_assert(std::is_nothrow_constructible_v<nls::ErrorStack, std::nothrow_t>);
static_assert(std::is_nothrow_constructible_v<nls::ErrorStack, ERRLIB_ErrorStack *>);
static_assert(!std::is_convertible_v<ERRLIB_ErrorStack *, nls::ErrorStack>);
static_assert(!std::is_default_constructible_v<nls::Error>);

static_assert(
    std::is_same_v<nls::unique_block<char[]>, std::unique_ptr<char[], nls::block_deleter>>);
static_assert(sizeof(nls::unique_block<char[]>) == sizeof(char *));

static_assert(std::input_iterator<nls::ErrorStack::iterator>);
static_assert(std::sentinel_for<std::default_sentinel_t, nls::ErrorStack::iterator>);
static_assert(std::ranges::input_range<nls::ErrorStack>);
static_assert(std::is_same_v<std::iter_value_t<nls::ErrorStack::iterator>, nls::Error>);

static_assert(std::is_convertible_v<nls::ErrorStack &, nls::stack_ref>);
static_assert(std::is_convertible_v<ERRLIB_ErrorStack *, nls::stack_ref>);
static_assert(std::is_convertible_v<std::nullptr_t, nls::stack_ref>);
static_assert(!std::is_convertible_v<nls::ErrorStack &&, nls::stack_ref>);

static_assert(nls::block_element<char>);
static_assert(nls::block_element<std::uint32_t>);
static_assert(nls::block_element<CONV_DateTime>);
static_assert(!nls::block_element<std::string>);
static_assert(!nls::block_element<const int>);
static_assert(!nls::block_element<int[2]>);

// --- noexcept --------------------------------------------------------------------------------

static_assert(noexcept(std::declval<nls::ErrorStack &>().get()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().size()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().empty()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().clear()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().take_first()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().take_last()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().begin()));
static_assert(noexcept(std::declval<nls::ErrorStack &>().release()));
static_assert(noexcept(std::declval<const nls::Error &>().get()));
static_assert(noexcept(std::declval<const nls::Error &>().code()));
static_assert(noexcept(std::declval<const nls::Error &>().message()));
static_assert(noexcept(std::declval<const nls::Error &>().is_memory_error()));

static_assert(noexcept(nls::make_block<int>(1)));
static_assert(noexcept(nls::make_block_for_overwrite<int>(1)));
static_assert(noexcept(nls::strdup("text")));
static_assert(noexcept(nls::strdup(std::string_view("text"))));
static_assert(noexcept(nls::wcsdup(std::u16string_view(u"text"))));
static_assert(noexcept(nls::charset_info(106)));

static_assert(noexcept(nls::conv_category()));
static_assert(noexcept(nls::make_error_code(nls::conv_status::ok)));
static_assert(noexcept(nls::sqlstate(std::error_code())));
static_assert(noexcept(nls::is_warning(std::error_code())));
static_assert(noexcept(nls::is_warning(nls::conv_status::ok)));

// The wrappers that allocate their own strings may throw std::bad_alloc and say so.
static_assert(!noexcept(nls::format("text")));
static_assert(!noexcept(nls::to_int32("1")));
static_assert(!noexcept(nls::like("a", "a")));
static_assert(!noexcept(nls::os_codeset()));

// --- statuses --------------------------------------------------------------------------------

static_assert(std::is_error_code_enum_v<nls::conv_status>);
static_assert(std::is_same_v<std::underlying_type_t<nls::conv_status>, std::uint32_t>);
static_assert(std::is_convertible_v<nls::conv_status, std::error_code>);
static_assert(!std::is_convertible_v<nls::conv_status, std::uint32_t>);

static_assert(nls::is_warning(nls::conv_status::warn_truncation));
static_assert(nls::is_warning(nls::conv_status::warn_round_to_zero));
static_assert(!nls::is_warning(nls::conv_status::ok));
static_assert(!nls::is_warning(nls::conv_status::overflow));

constexpr nls::result<int> kWarned{7, nls::conv_status::warn_truncation};
static_assert(kWarned.warning() && !kWarned.ok() && !kWarned.error());
static_assert(kWarned.value() == 7);
static_assert(kWarned.value_or(-1) == 7);
constexpr nls::result<int> kFailed{0, nls::conv_status::not_a_number};
static_assert(kFailed.error() && kFailed.value_or(-1) == -1);
static_assert(noexcept(kWarned.ok()));
static_assert(noexcept(kWarned.status()));
static_assert(noexcept(kWarned.value()));
static_assert(noexcept(kWarned.error_code()));

// --- format arguments ------------------------------------------------------------------------

enum Colour { kRed };
using Callback = void (*)();

static_assert(nls::format_argument<int>);
static_assert(nls::format_argument<unsigned>);
static_assert(nls::format_argument<std::int32_t>);
static_assert(nls::format_argument<std::uint32_t>);
static_assert(nls::format_argument<std::int16_t>);
static_assert(nls::format_argument<std::uint8_t>);
static_assert(nls::format_argument<char>);
static_assert(nls::format_argument<char16_t>);
static_assert(nls::format_argument<char32_t>);
static_assert(nls::format_argument<double>);
static_assert(nls::format_argument<float>);
static_assert(nls::format_argument<const char *>);
static_assert(nls::format_argument<const char (&)[4]>);
static_assert(nls::format_argument<std::string>);
static_assert(nls::format_argument<const std::string &>);
static_assert(nls::format_argument<std::u16string>);
static_assert(nls::format_argument<const char16_t *>);
static_assert(nls::format_argument<const GLIB_WChar *>);
static_assert(nls::format_argument<void *>);
static_assert(nls::format_argument<const int *>);
static_assert(nls::format_argument<std::nullptr_t>);

static_assert(!nls::format_argument<long>);
static_assert(!nls::format_argument<unsigned long>);
static_assert(!nls::format_argument<long long>);
static_assert(!nls::format_argument<std::int64_t>);
static_assert(!nls::format_argument<bool>);
static_assert(!nls::format_argument<wchar_t>);
static_assert(!nls::format_argument<Colour>);
static_assert(!nls::format_argument<Callback>);
static_assert(!nls::format_argument<std::string_view>);
static_assert(!nls::format_argument<std::u16string_view>);
static_assert(!nls::format_argument<std::wstring>);

template <class... Args>
concept Formattable = requires(Args... args) {
    nls::format("", args...);
};
static_assert(Formattable<int, double, const char *>);
static_assert(!Formattable<long>);
static_assert(!Formattable<std::string_view>);

TEST(CppTraits, AreCheckedAtCompileTime) {
    SUCCEED() << "the static_asserts of this file hold";
}

}  // namespace
