/* SPDX-License-Identifier: MIT */
// Differential tests of the formatter against the C library's snprintf, and of the wide engine
// against the narrow one, over generated formats and arguments.
//
// The families compared with snprintf are those where the two must agree:
//  - literal text without '\' (the formatter interprets backslash escapes, snprintf does not);
//  - "%%";
//  - d, i, u, x, X with any flags, widths (digits or '*'), precisions (digits, '.', '.*') below
//    128 and the 'h' modifier. Left out: 'o' (the formatter always puts a '0' cell in front of
//    the digits), 'l' (snprintf reads a 64-bit long on x86_64, the formatter always 32 bits), and
//    precisions of 128 or more (refused by the formatter);
//  - s with '-', widths and precisions, non-null strings (snprintf prints "(null)" whole or not
//    at all under a short precision, the formatter cuts it);
//  - e, E, f, g, G with any flags, widths and precisions up to 128 (the formatter hands these to
//    the C library itself; what is compared is how it rebuilds the conversion).
// Results are compared with a buffer large enough for the whole text: the two differ on purpose
// when the output is cut (-1 instead of the length needed, literal text up to index size). The
// places where they differ are tested exactly in format_test.cpp.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include <nlssupport/glib.h>
#include "glib/format_helpers.h"
#include "glib/wide_helpers.h"

using glibtest::kNarrowSentinel;
using glibtest::kWideSentinel;
using glibtest::Narrow;
using glibtest::TerminatedCleanly;
using glibtest::Wide;
using glibtest::WidenAscii;

namespace {

constexpr size_t kBig = 2048;
constexpr int kCasesPerFamily = 10000;

// Deterministic generator (64-bit LCG, high bits).
class Generator {
  public:
    explicit Generator(uint64_t seed) : state_(seed) {}
    uint32_t Next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(state_ >> 33);
    }
    // Uniform enough in [0, n).
    uint32_t Below(uint32_t n) {
        return Next() % n;
    }
    bool Chance(uint32_t percent) {
        return Below(100) < percent;
    }

  private:
    uint64_t state_;
};

// Literal text: printable ASCII without '%' and '\'.
std::string Literal(Generator &g) {
    std::string s;
    const uint32_t n = g.Below(4);
    for (uint32_t i = 0; i < n; ++i) {
        char c;
        do {
            c = static_cast<char>(' ' + g.Below(95));
        } while (c == '%' || c == '\\');
        s.push_back(c);
    }
    if (g.Chance(10))
        s += "%%";
    return s;
}

// How a conversion takes its width and precision.
struct Field {
    std::string text;  // flags, width and precision as written
    bool starWidth = false;
    bool starPrecision = false;
    int widthArg = 0;
    int precisionArg = 0;
};

Field MakeField(Generator &g, const char *flagSet, int maxWidth, int maxPrecision) {
    Field f;
    const std::string flags = flagSet;
    const uint32_t flagCount = g.Below(4);
    for (uint32_t i = 0; i < flagCount && !flags.empty(); ++i)
        f.text.push_back(flags[g.Below(static_cast<uint32_t>(flags.size()))]);
    switch (g.Below(3)) {
        case 0:
            break;
        case 1:
            f.text += std::to_string(1 + g.Below(static_cast<uint32_t>(maxWidth)));
            break;
        default:
            f.text += "*";
            f.starWidth = true;
            f.widthArg =
                static_cast<int>(g.Below(2 * static_cast<uint32_t>(maxWidth) + 1)) - maxWidth;
            break;
    }
    switch (g.Below(4)) {
        case 0:
            break;
        case 1:
            f.text += ".";
            break;
        case 2:
            f.text += "." + std::to_string(g.Below(static_cast<uint32_t>(maxPrecision) + 1));
            break;
        default:
            f.text += ".*";
            f.starPrecision = true;
            f.precisionArg = static_cast<int>(g.Below(static_cast<uint32_t>(maxPrecision) + 6)) - 5;
            break;
    }
    return f;
}

// Compares the formatter with snprintf for one format and one value; the stars take their
// arguments in front of the value.
template <typename Value>
::testing::AssertionResult Agree(const std::string &format, const Field &f, Value value) {
    std::vector<char> expected(kBig);
    int want;
    glibtest::NarrowRun run;
    const char *fmt = format.c_str();
    if (f.starWidth && f.starPrecision) {
        want = std::snprintf(expected.data(), kBig, fmt, f.widthArg, f.precisionArg, value);
        run = Narrow(kBig, fmt, f.widthArg, f.precisionArg, value);
    } else if (f.starWidth) {
        want = std::snprintf(expected.data(), kBig, fmt, f.widthArg, value);
        run = Narrow(kBig, fmt, f.widthArg, value);
    } else if (f.starPrecision) {
        want = std::snprintf(expected.data(), kBig, fmt, f.precisionArg, value);
        run = Narrow(kBig, fmt, f.precisionArg, value);
    } else {
        want = std::snprintf(expected.data(), kBig, fmt, value);
        run = Narrow(kBig, fmt, value);
    }
    if (run.result != want || run.text != std::string(expected.data()))
        return ::testing::AssertionFailure()
               << "format \"" << format << "\": snprintf " << want << " \"" << expected.data()
               << "\", formatter " << run.result << " \"" << run.text << "\"";
    if (!TerminatedCleanly(run, kBig, static_cast<size_t>(want), kNarrowSentinel))
        return ::testing::AssertionFailure() << "format \"" << format << "\" wrote past its end";
    return ::testing::AssertionSuccess();
}

int32_t IntegerValue(Generator &g) {
    static constexpr int32_t kInteresting[] = {
        0, 1, -1, 7, -42, 255, 65535, 65536, -32768, INT32_MAX, INT32_MIN, 0x12345678};
    if (g.Chance(40))
        return kInteresting[g.Below(sizeof kInteresting / sizeof kInteresting[0])];
    const uint32_t high = g.Next() << 1;
    return static_cast<int32_t>(high ^ g.Next());
}

double FloatingValue(Generator &g) {
    static const double kInteresting[] = {0.0,
                                          -0.0,
                                          1.0,
                                          -1.5,
                                          0.1,
                                          123.456,
                                          1e-300,
                                          -1e300,
                                          1e21,
                                          5e-324,
                                          0.5,
                                          2.5,
                                          9.99999,
                                          1e15,
                                          -7.0e-5,
                                          std::numeric_limits<double>::infinity(),
                                          -std::numeric_limits<double>::infinity(),
                                          std::numeric_limits<double>::quiet_NaN(),
                                          1.7976931348623157e308};
    if (g.Chance(40))
        return kInteresting[g.Below(sizeof kInteresting / sizeof kInteresting[0])];
    const double mantissa = static_cast<double>(g.Next()) / 4294967296.0 - 0.5;
    return std::ldexp(mantissa, static_cast<int>(g.Below(200)) - 100);
}

std::string StringValue(Generator &g) {
    std::string s;
    const uint32_t n = g.Below(20);
    for (uint32_t i = 0; i < n; ++i)
        s.push_back(static_cast<char>(' ' + g.Below(95)));
    return s;
}

TEST(GlibSnprintfDifferential, IntegersAgreeWithTheCLibrary) {
    Generator g(1);
    static constexpr char kConversions[] = {'d', 'i', 'u', 'x', 'X'};
    for (int i = 0; i < kCasesPerFamily; ++i) {
        const Field f = MakeField(g, "-+ #0", 40, 127);
        const std::string format = Literal(g) + "%" + f.text + (g.Chance(25) ? "h" : "") +
                                   kConversions[g.Below(5)] + Literal(g);
        ASSERT_TRUE(Agree(format, f, IntegerValue(g)));
    }
}

TEST(GlibSnprintfDifferential, StringsAgreeWithTheCLibrary) {
    Generator g(2);
    for (int i = 0; i < kCasesPerFamily; ++i) {
        const Field f = MakeField(g, "-", 30, 25);
        const std::string format = Literal(g) + "%" + f.text + "s" + Literal(g);
        const std::string value = StringValue(g);
        ASSERT_TRUE(Agree(format, f, value.c_str()));
    }
}

TEST(GlibSnprintfDifferential, FloatingAgreesWithTheCLibrary) {
    Generator g(3);
    static constexpr char kConversions[] = {'e', 'E', 'f', 'g', 'G'};
    for (int i = 0; i < kCasesPerFamily; ++i) {
        const Field f = MakeField(g, "-+ #0", 128, 128);
        const std::string format =
            Literal(g) + "%" + f.text + kConversions[g.Below(5)] + Literal(g);
        ASSERT_TRUE(Agree(format, f, FloatingValue(g)));
    }
}

TEST(GlibSnprintfDifferential, MixedConversionsAgreeWithTheCLibrary) {
    Generator g(4);
    static constexpr char kIntegers[] = {'d', 'i', 'u', 'x', 'X'};
    static constexpr char kFloating[] = {'e', 'E', 'f', 'g', 'G'};
    for (int i = 0; i < kCasesPerFamily; ++i) {
        // Digits only (no '*'), so that the arguments are always (int, string, double).
        std::string fields[3];
        for (int k = 0; k < 3; ++k) {
            Field f;
            do {
                f = MakeField(g, k == 1 ? "-" : "-+ #0", 30, k == 1 ? 25 : 60);
            } while (f.starWidth || f.starPrecision);
            fields[k] = f.text;
        }
        const std::string format = Literal(g) + "%" + fields[0] + kIntegers[g.Below(5)] +
                                   Literal(g) + "%" + fields[1] + "s" + Literal(g) + "%" +
                                   fields[2] + kFloating[g.Below(5)] + Literal(g);
        const int32_t n = IntegerValue(g);
        const std::string s = StringValue(g);
        const double d = FloatingValue(g);
        std::vector<char> expected(kBig);
        const int want = std::snprintf(expected.data(), kBig, format.c_str(), n, s.c_str(), d);
        const auto run = Narrow(kBig, format.c_str(), n, s.c_str(), d);
        ASSERT_EQ(run.result, want) << format;
        ASSERT_EQ(run.text, std::string(expected.data())) << format;
        ASSERT_TRUE(TerminatedCleanly(run, kBig, static_cast<size_t>(want), kNarrowSentinel));
    }
}

// Generated formats of every family, octal and pointer included, through both engines: the wide
// engine gives the narrow engine's text unit for unit (7-bit text only), and a smaller size gives
// a prefix of the full text, never a cell written behind index size.
TEST(GlibFormatEngines, WideAgreesWithNarrowAndCutOutputIsAPrefix) {
    Generator g(5);
    static constexpr char kIntegers[] = {'d', 'i', 'u', 'x', 'X', 'o'};
    static constexpr char kFloating[] = {'e', 'E', 'f', 'g', 'G'};
    // The last entry, "%c", is only ever used in front of the other conversions.
    static const char *const kEscapes[] = {"", "\\n", "\\t", "\\\\", "%%", "%c"};
    for (int i = 0; i < kCasesPerFamily; ++i) {
        std::string fields[3];
        for (int k = 0; k < 3; ++k) {
            Field f;
            do {
                f = MakeField(g, "-+ #0", 20, 20);
            } while (f.starWidth || f.starPrecision);
            fields[k] = f.text;
        }
        const std::string format = Literal(g) + kEscapes[g.Below(6)] + "%" + fields[0] +
                                   (g.Chance(30) ? "l" : "") + kIntegers[g.Below(6)] + Literal(g) +
                                   "%" + fields[1] + "s" + "%p" + Literal(g) + "%" + fields[2] +
                                   kFloating[g.Below(5)] + kEscapes[g.Below(5)];
        const int32_t n = IntegerValue(g);
        const std::string s = StringValue(g);
        const double d = FloatingValue(g);
        void *p = reinterpret_cast<void *>(static_cast<uintptr_t>(g.Next()));
        const int c = ' ' + static_cast<int>(g.Below(95));
        // "%c" only ever comes from the first escape, in front of every other conversion.
        const bool charFirst = format.find("%c") != std::string::npos;

        auto narrow = [&](size_t size) {
            if (charFirst)
                return Narrow(size, format.c_str(), c, n, s.c_str(), p, d);
            return Narrow(size, format.c_str(), n, s.c_str(), p, d);
        };
        const auto wideFormat = WidenAscii(format);
        auto wide = [&](size_t size) {
            if (charFirst)
                return Wide(size, wideFormat.data(), c, n, s.c_str(), p, d);
            return Wide(size, wideFormat.data(), n, s.c_str(), p, d);
        };

        const auto full = narrow(kBig);
        ASSERT_GE(full.result, 0) << format;
        const auto fullWide = wide(kBig);
        ASSERT_EQ(fullWide.result, full.result) << format;
        ASSERT_TRUE(fullWide.text == std::u16string(full.text.begin(), full.text.end())) << format;

        const size_t size = 1 + g.Below(static_cast<uint32_t>(full.result) + 2);
        const auto cut = narrow(size);
        const size_t written = cut.terminator;
        ASSERT_LE(written, size) << format;
        ASSERT_EQ(cut.text, full.text.substr(0, written)) << format << " size " << size;
        if (cut.result >= 0) {
            ASSERT_EQ(cut.result, full.result) << format;
        }
        if (static_cast<size_t>(full.result) < size) {
            ASSERT_EQ(cut.result, full.result) << format;
        }
        ASSERT_TRUE(TerminatedCleanly(cut, size, written, kNarrowSentinel)) << format;
        const auto cutWide = wide(size);
        ASSERT_EQ(cutWide.result, cut.result) << format;
        ASSERT_TRUE(cutWide.text == std::u16string(cut.text.begin(), cut.text.end())) << format;
        ASSERT_TRUE(TerminatedCleanly(cutWide, size, cutWide.terminator, kWideSentinel));
    }
}

}  // namespace
