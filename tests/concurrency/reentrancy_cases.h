/* SPDX-License-Identifier: MIT */
// The calls that the concurrency tests make from many threads at once. Each case calls one
// family of reentrant routines on a fixed set of inputs, with its own buffers, records and error
// stack, and returns everything the calls produced (statuses, counts, every byte of the
// sentinel-filled outputs) as one text. Two runs of a case behaved the same exactly when their
// texts are equal, so a case run on any thread must give the text it gives on one thread alone.
// The inputs reach the main paths of each family, warnings and failures included.
#ifndef NLS_TESTS_CONCURRENCY_REENTRANCY_CASES_H
#define NLS_TESTS_CONCURRENCY_REENTRANCY_CASES_H

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace concurrency_test {

// The recorded result of a run of calls: each item is appended with a separator, so that the
// text of one sequence of results can never equal the text of another.
class Outcome {
  public:
    Outcome &Num(long long value);
    // The bytes in hexadecimal.
    Outcome &Bytes(const void *data, std::size_t size);
    // The text up to its terminator, or "(null)" for a null pointer.
    Outcome &Text(const char *text);
    // The units of a wide string up to its 0 unit, or "(null)".
    Outcome &Units(const GLIB_WChar *text);
    Outcome &Double(double value);
    Outcome &Float(float value);
    // Every field of an error record but its timestamp (the time it was filled).
    Outcome &Record(const ERRLIB_Error *record);

    std::string Take() {
        return std::move(text_);
    }

  private:
    std::string text_;
};

// One family of routines: a name for the reports and the function that runs its calls.
struct ReentrancyCase {
    const char *name;
    std::string (*run)();
};

// The cases of each group, one or more per family of reentrant routines.
std::span<const ReentrancyCase> GeneralCases();   // glib.h, ianacs.h, koranls.h
std::span<const ReentrancyCase> NumberCases();    // convlib.h but date-time values
std::span<const ReentrancyCase> DateTimeCases();  // convlib.h date-time values
std::span<const ReentrancyCase> ErrorCases();     // errlib.h and memmgr.h

// Every case of every group.
std::vector<ReentrancyCase> ReentrancyCases();

// The byte that fills an output before a call.
inline constexpr char kFill = '\x7E';

// A sentinel-filled byte buffer, recorded whole so that a stray write shows.
template <std::size_t N>
struct Buffer {
    std::array<char, N> bytes;
    Buffer() {
        bytes.fill(kFill);
    }
    char *data() {
        return bytes.data();
    }
    void Record(Outcome &o) const {
        o.Bytes(bytes.data(), bytes.size());
    }
};

// A wide string with the bytes of an ASCII literal, built at compile time.
template <std::size_t N>
constexpr std::array<GLIB_WChar, N> Wide(const char (&text)[N]) {
    std::array<GLIB_WChar, N> units{};
    for (std::size_t i = 0; i < N; ++i) {
        units[i] = static_cast<unsigned char>(text[i]);
    }
    return units;
}

// Text of four wide characters, one of them written as a surrogate pair.
inline constexpr GLIB_WChar kWideText[] = {0x0041, 0x00E9, 0x20AC, 0xD83D, 0xDE00, 0};

}  // namespace concurrency_test

#endif  // NLS_TESTS_CONCURRENCY_REENTRANCY_CASES_H
