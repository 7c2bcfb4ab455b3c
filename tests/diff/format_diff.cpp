/* SPDX-License-Identifier: MIT */
// format_diff.cpp - differential check of the formatter against an earlier build of it.
//
// The program links two formatters: the one of the library under test (GLIB_snprintf,
// GLIB_vsnprintf, GLIB_swprintf, GLIB_vswprintf) and a reference copy of glibformat.cpp from an
// earlier revision whose four entry points carry the prefix "ref_". It generates formats and
// arguments (flags, widths and precisions as digits and '*', length modifiers, every conversion,
// invalid conversions, backslash escapes, literal runs, formats that end inside a conversion),
// runs both formatters on the same sentinel-filled buffer under buffer sizes from 0 up (and a
// few huge ones), and compares the return value and every cell of the buffer, the cells behind
// the terminator included. Narrow and wide engines, variadic and va_list entry points.
//
// Both formatters use the library's other routines (UTF-8 encoders, wide-string helpers) from
// the tree under test, so that only the formatter itself is compared.
//
// Build and run (x86_64, then i386), from the root of the tree:
//   tests/diff/format_diff.sh build/<tree>              # native tree, reference = HEAD
//   tests/diff/format_diff.sh build/<m32-tree> -m32     # tree configured with -DNLS_M32=ON
//   tests/diff/format_diff.sh build/<tree> "" <rev> <formats> <seed>
// The script compiles <rev>:glib/glibformat.cpp (read with git show, the work tree untouched)
// as the library compiles it in Release, renames its entry points with objcopy
// --redefine-sym, links it with this program and the tree's libnlssupport.a, and runs it
// (KEEP=1 keeps its work directory). By hand:
//   format_diff [formats] [seed]     (defaults 2000000 and 1)
// With the environment variable FORMAT_DIFF_TRACE set, every call is printed before it is made.
// Built with -fsanitize=address,undefined against a sanitizer tree's library, the same run also
// checks that neither formatter reads or writes outside its buffers.
// Each format is run under one size, or under every size from 0 to a little past the length of
// its output; the program prints the number of formats and of calls compared and exits with 1
// at the first differences (up to 10 are printed).
//
// Arguments are passed through a fixed list of machine words laid out for the calling
// convention, so that one call site serves every generated format: on x86_64 integers and
// pointers take the general registers and the stack in order, doubles the eight vector
// registers (at most eight doubles per format); on i386 everything lies on the stack in order,
// a double in two words.

#include <nlssupport/glib.h>

#include <array>
#include <cinttypes>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

extern "C" {
int ref_GLIB_snprintf(char *buf, size_t size, const char *format, ...);
int ref_GLIB_vsnprintf(char *buf, size_t size, const char *format, va_list args);
int ref_GLIB_swprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, ...);
int ref_GLIB_vswprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, va_list args);
}

namespace {

// Deterministic generator (64-bit LCG, high bits).
class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed * 2862933555777941757u + 3037000493u) {}
    uint32_t Next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(state_ >> 32);
    }
    uint64_t Next64() {
        return (static_cast<uint64_t>(Next()) << 32) | Next();
    }
    uint32_t Below(uint32_t n) {
        return Next() % n;
    }
    bool Chance(uint32_t percent) {
        return Below(100) < percent;
    }
    int32_t Between(int32_t lo, int32_t hi) {
        return lo + static_cast<int32_t>(Below(static_cast<uint32_t>(hi - lo + 1)));
    }

  private:
    uint64_t state_;
};

// ---- Arguments ---------------------------------------------------------------------------

#if defined(__x86_64__)
constexpr size_t kWordArgs = 40;   // integers and pointers
constexpr size_t kDoubleArgs = 8;  // doubles, all in vector registers
using Word = uint64_t;
#elif defined(__i386__)
constexpr size_t kWordArgs = 64;   // integers, pointers and doubles (two words each)
constexpr size_t kDoubleArgs = 8;  // limit per format, to stay within the words
using Word = uint32_t;
#else
#error "format_diff lays arguments out for x86_64 and i386 only"
#endif

// The argument list of one case, in the order the formatter fetches it.
struct Arguments {
    std::array<Word, kWordArgs> words{};
    std::array<double, kDoubleArgs> doubles{};
    size_t wordCount = 0;
    size_t doubleCount = 0;
    std::string description;

    bool RoomForWord() const {
        return wordCount + 1 <= kWordArgs;
    }
    bool RoomForDouble() const {
#if defined(__x86_64__)
        return doubleCount < kDoubleArgs;
#else
        return doubleCount < kDoubleArgs && wordCount + 2 <= kWordArgs;
#endif
    }
    void Int(int32_t v) {
        // An int in a word of its own (sign-extended on x86_64, as a register would carry it).
        words[wordCount++] = static_cast<Word>(static_cast<int64_t>(v));
        description += " int:" + std::to_string(v);
    }
    void Pointer(const void *p, const char *what) {
        words[wordCount++] = static_cast<Word>(reinterpret_cast<uintptr_t>(p));
        description += std::string(" ") + what;
    }
    void Double(double v) {
#if defined(__x86_64__)
        doubles[doubleCount++] = v;
#else
        std::memcpy(&words[wordCount], &v, sizeof v);
        wordCount += 2;
        ++doubleCount;
#endif
        char text[64];
        std::snprintf(text, sizeof text, " double:%a", v);
        description += text;
    }
};

template <typename Fn, typename Unit, size_t... I>
int CallWith(Fn fn, Unit *buf, size_t size, const Unit *format, const Arguments &a,
             std::index_sequence<I...>) {
#if defined(__x86_64__)
    return fn(buf, size, format, a.words[I]..., a.doubles[0], a.doubles[1], a.doubles[2],
              a.doubles[3], a.doubles[4], a.doubles[5], a.doubles[6], a.doubles[7]);
#else
    return fn(buf, size, format, a.words[I]...);
#endif
}

// The va_list entry points, reached through a variadic wrapper.
template <typename Unit>
using ListFormatter = int (*)(Unit *, size_t, const Unit *, va_list);

template <typename Unit>
int ThroughList(ListFormatter<Unit> fn, Unit *buf, size_t size, const Unit *format, ...) {
    va_list args;
    va_start(args, format);
    const int result = fn(buf, size, format, args);
    va_end(args);
    return result;
}

template <typename Unit>
struct Wrapped {
    ListFormatter<Unit> fn;
    int operator()(Unit *buf, size_t size, const Unit *format, auto... args) const {
        return ThroughList<Unit>(fn, buf, size, format, args...);
    }
};

// ---- Argument pools ----------------------------------------------------------------------

std::vector<std::string> MakeNarrowStrings() {
    std::vector<std::string> v = {"",
                                  "a",
                                  "ab",
                                  "abc",
                                  "hello",
                                  "hello world",
                                  "\xC3\xA9t\xE9 \x80\xFF",
                                  "tab\there",
                                  "0123456789012345678901234567890123456789"};
    v.push_back(std::string(127, 'x'));
    v.push_back(std::string(128, 'y'));
    std::string mixed;
    for (int i = 0; i < 300; ++i)
        mixed += static_cast<char>(1 + (i * 37) % 255);
    v.push_back(mixed);
    return v;
}
const std::vector<std::string> kNarrowStrings = MakeNarrowStrings();

std::vector<std::vector<GLIB_WChar>> MakeWideStrings() {
    std::vector<std::vector<GLIB_WChar>> v = {
        {},
        {'a'},
        {'a', 'b', 'c'},
        {'h', 0xE9, 'l', 'l', 'o'},
        {0x20AC, 0x4E2D, 0x6587},
        {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF},
        {0xD800, 0xDC00, 'x', 0xDBFF, 0xDFFF},
        {0x1, 0x100, 0x3000, 'z'},
    };
    std::vector<GLIB_WChar> longer;
    for (int i = 0; i < 150; ++i)
        longer.push_back(static_cast<GLIB_WChar>(i % 3 == 0 ? 'a' + i % 26 : 0x61 + i * 331));
    for (GLIB_WChar &u : longer)
        if (u == 0)
            u = 'q';
    v.push_back(longer);
    for (auto &s : v)
        s.push_back(0);
    return v;
}
const std::vector<std::vector<GLIB_WChar>> kWideStrings = MakeWideStrings();

int32_t RandomInt(Random &r) {
    switch (r.Below(8)) {
        case 0:
            return 0;
        case 1:
            return r.Between(-9, 9);
        case 2:
            return r.Between(-1000, 1000);
        case 3: {
            const int32_t specials[] = {INT32_MIN, INT32_MAX,  -1,         1,          65535,
                                        65536,     -32768,     32767,      32768,      8,
                                        64,        0x7FFF0000, 0x0000FFFF, 0xFFFF,     100,
                                        99,        1000000000, 999999999,  -1000000000};
            return specials[r.Below(sizeof specials / sizeof specials[0])];
        }
        default: {
            // Every magnitude.
            const uint32_t bits = r.Below(33);
            const uint32_t v = bits == 32 ? r.Next() : (r.Next() & ((1u << bits) - 1));
            return static_cast<int32_t>(v);
        }
    }
}

double RandomDouble(Random &r) {
    switch (r.Below(6)) {
        case 0: {
            const double specials[] = {0.0,
                                       -0.0,
                                       1.0,
                                       -1.5,
                                       0.5,
                                       1e308,
                                       -1e308,
                                       1e-308,
                                       5e-324,
                                       123.456,
                                       9.9999,
                                       0.00001,
                                       1e100,
                                       1e21,
                                       HUGE_VAL,
                                       -HUGE_VAL,
                                       std::numeric_limits<double>::quiet_NaN(),
                                       -std::numeric_limits<double>::quiet_NaN(),
                                       2.5,
                                       0.125};
            return specials[r.Below(sizeof specials / sizeof specials[0])];
        }
        case 1: {
            const uint64_t bits = r.Next64();
            double v;
            std::memcpy(&v, &bits, sizeof v);
            return v;
        }
        case 2:
            return static_cast<double>(RandomInt(r)) / 7.0;
        default:
            return std::ldexp(static_cast<double>(r.Next()) / 4294967296.0 - 0.5,
                              r.Between(-40, 60));
    }
}

// ---- Formats -----------------------------------------------------------------------------

// One generated case: the format as 16-bit units (the narrow engine gets their low bytes), the
// arguments, and whether it may only produce bounded output (for the huge sizes).
struct Case {
    bool wide = false;
    std::vector<GLIB_WChar> format;  // without its terminator
    Arguments args;
};

class FormatGenerator {
  public:
    FormatGenerator(Random &r, bool wide, bool bounded) : r_(r), wide_(wide), bounded_(bounded) {}

    Case Make() {
        Case c;
        c.wide = wide_;
        const int pieces = 1 + static_cast<int>(r_.Below(8));
        for (int i = 0; i < pieces && !ended_; ++i) {
            const uint32_t kind = r_.Below(100);
            if (kind < 25)
                Literal(c);
            else if (kind < 32)
                Escape(c);
            else
                Conversion(c);
        }
        return c;
    }

  private:
    void Put(Case &c, unsigned unit) {
        c.format.push_back(static_cast<GLIB_WChar>(unit));
    }
    void Put(Case &c, const char *text) {
        for (; *text; ++text)
            Put(c, static_cast<unsigned char>(*text));
    }

    void Literal(Case &c) {
        const int n = 1 + static_cast<int>(r_.Below(r_.Chance(10) ? 200 : 12));
        for (int i = 0; i < n; ++i) {
            unsigned u;
            const uint32_t k = r_.Below(100);
            if (k < 80)
                u = 0x20 + r_.Below(0x5F);  // printable ASCII
            else if (k < 88)
                u = 1 + r_.Below(0x1F);  // control characters
            else if (k < 96 || !wide_)
                u = 0x80 + r_.Below(0x80);  // bytes from 0x80 up
            else
                u = 0x100 + r_.Below(0xFF00);  // other units of the wide engine
            if (u == '%' || u == '\\')
                u = 'L';
            Put(c, u);
        }
    }

    void Escape(Case &c) {
        Put(c, '\\');
        if (r_.Chance(3)) {  // a backslash that ends the format
            ended_ = true;
            return;
        }
        static const char kValid[] = "\\abfnrtv";
        static const char kInvalid[] = "qc0%w[]z_AZ`u\"'e";
        if (r_.Chance(90))
            Put(c, static_cast<unsigned char>(kValid[r_.Below(8)]));
        else if (r_.Chance(20))
            Put(c, wide_ && r_.Chance(50) ? 0x100 + 'n' : 0x80 + 'n');
        else
            Put(c, static_cast<unsigned char>(kInvalid[r_.Below(sizeof kInvalid - 1)]));
    }

    // A '*' argument for a width or a precision.
    int32_t StarValue(bool precision) {
        if (bounded_)
            return r_.Between(precision ? -3 : -300, 300);
        switch (r_.Below(10)) {
            case 0: {
                const int32_t specials[] = {INT32_MIN, INT32_MAX, -INT32_MAX, 126,  127,  128,
                                            129,       -1,        1000000,    2000, -2000};
                return specials[r_.Below(sizeof specials / sizeof specials[0])];
            }
            case 1:
            case 2:
                return r_.Between(-300, 300);
            default:
                return r_.Between(-40, 40);
        }
    }

    void Digits(Case &c, bool allowLong) {
        if (allowLong && !bounded_ && r_.Chance(3)) {  // wraps around 32 bits
            const char *longOnes[] = {"4294967296",  "4294967301", "2147483648",
                                      "99999999999", "2147483647", "4294967295"};
            Put(c, longOnes[r_.Below(6)]);
            return;
        }
        const uint32_t k = r_.Below(10);
        const int32_t v = k < 6   ? r_.Between(0, 20)
                          : k < 9 ? r_.Between(0, 140)
                                  : r_.Between(0, bounded_ ? 400 : 2000);
        Put(c, std::to_string(v).c_str());
    }

    void Width(Case &c) {
        const uint32_t k = r_.Below(100);
        if (k < 45)
            return;
        if (k < 75) {
            Put(c, '1' + r_.Below(9));
            if (!bounded_ && r_.Chance(40))
                Digits(c, true);
        } else if (k < 92 || bounded_) {
            Star(c, false);
        } else {
            // Mixtures: "*5", "5*", "**", "*0".
            const int n = 2 + static_cast<int>(r_.Below(2));
            for (int i = 0; i < n; ++i) {
                if (r_.Chance(50))
                    Star(c, false);
                else
                    Put(c, '0' + r_.Below(10));
            }
        }
    }

    void Star(Case &c, bool precision) {
        if (!c.args.RoomForWord()) {
            Put(c, '3');
            return;
        }
        Put(c, '*');
        c.args.Int(StarValue(precision));
    }

    void Precision(Case &c) {
        const uint32_t k = r_.Below(100);
        if (k < 45)
            return;
        Put(c, '.');
        if (k < 55)
            return;  // '.' alone: precision 0
        if (k < 80) {
            Digits(c, true);
        } else if (k < 93) {
            Star(c, true);
        } else if (k < 97) {
            const int n = 1 + static_cast<int>(r_.Below(3));
            for (int i = 0; i < n; ++i) {
                if (r_.Chance(50))
                    Star(c, true);
                else
                    Put(c, '0' + r_.Below(10));
            }
        } else {
            Put(c, r_.Chance(50) ? "." : "5.");  // a second '.'
        }
    }

    void Conversion(Case &c) {
        Put(c, '%');
        if (r_.Chance(2)) {  // the format ends behind '%'
            ended_ = true;
            return;
        }
        if (r_.Chance(60)) {
            static const char kFlags[] = " #+-0";
            const int n = 1 + static_cast<int>(r_.Below(4));
            for (int i = 0; i < n; ++i)
                Put(c, static_cast<unsigned char>(kFlags[r_.Below(5)]));
        }
        if (r_.Chance(1)) {
            // A flag character with high bits set is no flag: the conversion fails there.
            Put(c, (wide_ && r_.Chance(50) ? 0x100 : 0x80) + ' ');
            return;
        }
        if (r_.Chance(4)) {
            if (r_.Chance(30))
                Width(c);
            Put(c, '%');
            return;
        }
        Width(c);
        Precision(c);
        bool isLong = false;
        if (r_.Chance(20)) {
            static const char *const kModifiers[] = {"h", "l", "hh", "ll", "lh", "hl", "lll"};
            const char *m = kModifiers[r_.Below(7)];
            isLong = std::strchr(m, 'l') != nullptr;
            Put(c, m);
        }
        if (r_.Chance(2)) {  // the format ends inside the conversion
            ended_ = true;
            return;
        }
        ConversionCharacter(c, isLong);
    }

    void ConversionCharacter(Case &c, bool isLong) {
        const uint32_t k = r_.Below(100);
        if (k < 3) {
            static const char kInvalid[] = "FnqjztCSIk!yD@LY[w";
            Put(c, static_cast<unsigned char>(kInvalid[r_.Below(sizeof kInvalid - 1)]));
            return;
        }
        if (k < 4) {
            Put(c, (wide_ && r_.Chance(50) ? 0x100 : 0x80) + 'd');
            return;
        }
        if (!c.args.RoomForWord()) {
            Put(c, 'Q');
            return;
        }
        if (k < 20) {
            Put(c, r_.Chance(50) ? 'd' : 'i');
            c.args.Int(RandomInt(r_));
        } else if (k < 28) {
            Put(c, 'u');
            c.args.Int(RandomInt(r_));
        } else if (k < 40) {
            Put(c, 'o');
            c.args.Int(RandomInt(r_));
        } else if (k < 50) {
            Put(c, r_.Chance(50) ? 'x' : 'X');
            c.args.Int(RandomInt(r_));
        } else if (k < 57) {
            Put(c, 'c');
            if (isLong)
                c.args.Int(r_.Chance(70) ? r_.Between(0, 0x11000) : RandomInt(r_));
            else
                c.args.Int(RandomInt(r_));
        } else if (k < 80) {
            Put(c, 's');
            if (isLong) {
                if (r_.Chance(8)) {
                    c.args.Pointer(nullptr, "wide:null");
                } else {
                    const size_t i = r_.Below(static_cast<uint32_t>(kWideStrings.size()));
                    c.args.Pointer(kWideStrings[i].data(), ("wide#" + std::to_string(i)).c_str());
                }
            } else {
                if (r_.Chance(8)) {
                    c.args.Pointer(nullptr, "str:null");
                } else {
                    const size_t i = r_.Below(static_cast<uint32_t>(kNarrowStrings.size()));
                    c.args.Pointer(kNarrowStrings[i].c_str(), ("str#" + std::to_string(i)).c_str());
                }
            }
        } else if (k < 85) {
            Put(c, 'p');
            const uintptr_t bits = static_cast<uintptr_t>(r_.Next64());
            c.args.Pointer(reinterpret_cast<const void *>(bits), "pointer");
        } else if (c.args.RoomForDouble()) {
            static const char kFloating[] = "eEfgG";
            Put(c, static_cast<unsigned char>(kFloating[r_.Below(5)]));
            c.args.Double(RandomDouble(r_));
        } else {
            Put(c, 'd');
            c.args.Int(RandomInt(r_));
        }
    }

    Random &r_;
    bool wide_;
    bool bounded_;
    bool ended_ = false;
};

// ---- Running and comparing ---------------------------------------------------------------

constexpr size_t kSlack = 64;
// Set by the environment variable FORMAT_DIFF_TRACE: every call is printed before it is made.
const bool gTrace = std::getenv("FORMAT_DIFF_TRACE") != nullptr;
constexpr size_t kHugeCells = 1 << 16;

std::string Escaped(const std::vector<GLIB_WChar> &format) {
    std::string s;
    for (GLIB_WChar u : format) {
        char text[16];
        if (u >= 0x20 && u < 0x7F && u != '"')
            s += static_cast<char>(u);
        else {
            std::snprintf(text, sizeof text, "\\x{%X}", u);
            s += text;
        }
    }
    return s;
}

template <typename Unit>
struct Runner {
    std::vector<Unit> ours;
    std::vector<Unit> theirs;
    std::vector<Unit> format;
    uint64_t compared = 0;
    int differences = 0;

    // Runs one case under one size over `cells` sentinel cells; reports a difference.
    bool Run(const Case &c, size_t size, size_t cells, bool viaList, Unit sentinel) {
        if (gTrace)
            std::printf("%s size %zu format \"%s\"%s\n", c.wide ? "wide" : "narrow", size,
                        Escaped(c.format).c_str(), c.args.description.c_str()),
                std::fflush(stdout);
        ours.assign(cells, sentinel);
        theirs.assign(cells, sentinel);
        constexpr auto seq = std::make_index_sequence<kWordArgs>();
        int a;
        int b;
        if constexpr (std::is_same_v<Unit, char>) {
            if (viaList) {
                a = CallWith(Wrapped<char>{GLIB_vsnprintf}, ours.data(), size, format.data(),
                             c.args, seq);
                b = CallWith(Wrapped<char>{ref_GLIB_vsnprintf}, theirs.data(), size, format.data(),
                             c.args, seq);
            } else {
                a = CallWith(GLIB_snprintf, ours.data(), size, format.data(), c.args, seq);
                b = CallWith(ref_GLIB_snprintf, theirs.data(), size, format.data(), c.args, seq);
            }
        } else {
            if (viaList) {
                a = CallWith(Wrapped<GLIB_WChar>{GLIB_vswprintf}, ours.data(), size, format.data(),
                             c.args, seq);
                b = CallWith(Wrapped<GLIB_WChar>{ref_GLIB_vswprintf}, theirs.data(), size,
                             format.data(), c.args, seq);
            } else {
                a = CallWith(GLIB_swprintf, ours.data(), size, format.data(), c.args, seq);
                b = CallWith(ref_GLIB_swprintf, theirs.data(), size, format.data(), c.args, seq);
            }
        }
        ++compared;
        if (a == b && ours == theirs)
            return true;
        size_t at = 0;
        while (at < cells && ours[at] == theirs[at])
            ++at;
        std::printf("DIFFERENCE (%s, %s): size %zu, format \"%s\", arguments%s\n",
                    c.wide ? "wide" : "narrow", viaList ? "va_list" : "variadic", size,
                    Escaped(c.format).c_str(), c.args.description.c_str());
        std::printf("  result %d, reference %d; first differing cell %zu", a, b, at);
        if (at < cells)
            std::printf(" (%X against %X)", static_cast<unsigned>(ours[at]) & 0xFFFF,
                        static_cast<unsigned>(theirs[at]) & 0xFFFF);
        std::printf("\n");
        ++differences;
        return false;
    }

    // Runs a case under a random size, or under every size from 0 to a little past the
    // length of its full output.
    void RunCase(Random &r, const Case &c, bool bounded) {
        format.clear();
        for (GLIB_WChar u : c.format)
            format.push_back(static_cast<Unit>(u));
        format.push_back(0);
        const bool viaList = r.Chance(25);
        const Unit sentinel = static_cast<Unit>(r.Chance(50) ? 0x5A : r.Next() | 1);
        if (bounded) {
            // No size from 2^63 to 2^63 + count on x86_64: there the reference's room
            // arithmetic overflows a signed 64-bit value, which has no defined result.
            static const size_t kHuge[] = {SIZE_MAX,
                                           SIZE_MAX - 1,
                                           SIZE_MAX / 2,
                                           SIZE_MAX / 2 + 1 + kHugeCells,
                                           static_cast<size_t>(INT32_MAX),
                                           static_cast<size_t>(INT32_MAX) + 1,
                                           kHugeCells * 4,
                                           static_cast<size_t>(UINT32_MAX)};
            Run(c, kHuge[r.Below(8)], kHugeCells, viaList, sentinel);
            return;
        }
        if (r.Chance(20)) {
            // Every size up to a little past what the whole output needs (400 at most).
            Run(c, 4096, 4096 + kSlack, viaList, sentinel);
            size_t needed = 0;
            while (needed < 4096 && ours[needed] != 0)
                ++needed;
            const size_t last = needed + 3 < 400 ? needed + 3 : 400;
            for (size_t size = 0; size <= last && differences < 10; ++size)
                Run(c, size, size + 1 + kSlack, viaList, sentinel);
            return;
        }
        const uint32_t k = r.Below(100);
        size_t size;
        if (k < 5)
            size = 0;
        else if (k < 35)
            size = 1 + r.Below(8);
        else if (k < 75)
            size = 9 + r.Below(56);
        else
            size = 65 + r.Below(600);
        Run(c, size, size + 1 + kSlack, viaList, sentinel);
    }
};

}  // namespace

int main(int argc, char **argv) {
    const uint64_t cases = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 2000000;
    const uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    Random r(seed);
    Runner<char> narrow;
    Runner<GLIB_WChar> wide;
    uint64_t generated = 0;
    for (; generated < cases && narrow.differences + wide.differences < 10; ++generated) {
        const bool isWide = r.Chance(30);
        const bool bounded = r.Chance(5);
        FormatGenerator generator(r, isWide, bounded);
        const Case c = generator.Make();
        if (isWide)
            wide.RunCase(r, c, bounded);
        else
            narrow.RunCase(r, c, bounded);
    }
    const int differences = narrow.differences + wide.differences;
    std::printf("%s: %" PRIu64 " formats, %" PRIu64 " calls compared (%" PRIu64 " narrow, %" PRIu64
                " wide), %d difference%s\n",
#if defined(__x86_64__)
                "x86_64",
#else
                "i386",
#endif
                generated, narrow.compared + wide.compared, narrow.compared, wide.compared,
                differences, differences == 1 ? "" : "s");
    return differences == 0 ? 0 : 1;
}
