/* SPDX-License-Identifier: MIT */
// format_helpers.h - running the library's formatters over sentinel-filled buffers.
#ifndef NLS_TESTS_GLIB_FORMAT_HELPERS_H
#define NLS_TESTS_GLIB_FORMAT_HELPERS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <nlssupport/glib.h>

namespace glibtest {

constexpr char kNarrowSentinel = '\x5A';  // 'Z' is never produced by the tests' formats
constexpr GLIB_WChar kWideSentinel = 0xA5A5;
// Cells behind size + 1 that must stay untouched.
constexpr size_t kSlack = 16;

// Result of one narrow call: the return value, the text before the first 0 and the raw buffer.
struct NarrowRun {
    int result;
    std::string text;
    std::vector<char> raw;
    size_t terminator;  // index of the first 0 (raw.size() when there is none)
};

// Result of one wide call.
struct WideRun {
    int result;
    std::u16string text;
    std::vector<GLIB_WChar> raw;
    size_t terminator;
};

// Formats into a buffer of size + kSlack sentinel cells.
template <typename... Args>
NarrowRun Narrow(size_t size, const char *format, Args... args) {
    NarrowRun run;
    run.raw.assign(size + kSlack, kNarrowSentinel);
    run.result = GLIB_snprintf(run.raw.data(), size, format, args...);
    run.terminator = 0;
    while (run.terminator < run.raw.size() && run.raw[run.terminator] != 0)
        ++run.terminator;
    run.text.assign(run.raw.data(), run.terminator);
    return run;
}

template <typename... Args>
WideRun Wide(size_t size, const GLIB_WChar *format, Args... args) {
    WideRun run;
    run.raw.assign(size + kSlack, kWideSentinel);
    run.result = GLIB_swprintf(run.raw.data(), size, format, args...);
    run.terminator = 0;
    while (run.terminator < run.raw.size() && run.raw[run.terminator] != 0)
        ++run.terminator;
    for (size_t i = 0; i < run.terminator; ++i)
        run.text.push_back(char16_t(run.raw[i]));
    return run;
}

// The terminator lies at most at index size and every cell behind it is untouched. With
// `count` the number of cells written before the terminator (the result, or the expected text
// length when the result is -1), the terminator must lie at exactly that index.
template <typename Run, typename Unit>
::testing::AssertionResult TerminatedCleanly(const Run &run, size_t size, size_t count,
                                             Unit sentinel) {
    if (count > size)
        return ::testing::AssertionFailure() << "count " << count << " > size";
    if (run.raw[count] != 0)
        return ::testing::AssertionFailure() << "no terminator at index " << count;
    for (size_t i = count + 1; i < run.raw.size(); ++i)
        if (run.raw[i] != sentinel)
            return ::testing::AssertionFailure() << "cell " << i << " written behind the end";
    return ::testing::AssertionSuccess();
}

}  // namespace glibtest

#endif  // NLS_TESTS_GLIB_FORMAT_HELPERS_H
