/* SPDX-License-Identifier: MIT */
// nls_diff.cpp - differential check of the number, UTF-8 and matching routines against a
// previous build of the library, linked into the same program under the prefix "nlsref_" (see
// nls_diff.sh and CMakeLists.txt in this directory). Every routine gets the same generated
// inputs on both sides; the statuses, the results, every bit of the doubles, every byte of the
// output buffers (sentinel-filled, also the bytes behind what was written) and errno after the
// call must be equal.
//
// Usage: nls_diff [--scale=<factor>] [--seed=<n>] [group...]
//   groups: double int utf8 match decimal (all when none is named)
// The default counts are 12 million texts for the double conversion, 4 million for the integer
// conversions, 3 million strings for the UTF-8 encoders, 4 million pattern/value pairs and 3
// million texts and values for the decimal and self-describing decimal conversions;
// --scale multiplies them. A locale with "," as its decimal point (de_DE.UTF-8, found through
// LOCPATH as nls_diff.sh generates it) is used for part of the number texts when it can be set.
// Exit status 0 when everything agreed, 1 on the first difference (printed with its input).

#include <nlssupport/convlib.h>
#include <nlssupport/glib.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// The previous build's routines, renamed when the reference library was linked in.
extern "C" {
uint32_t nlsref_CONV_StringToDouble(double *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToFloat(float *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToInt32(int32_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToUInt32(uint32_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToInt16(int16_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToUInt16(uint16_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToInt8(int8_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_StringToUInt8(uint8_t *, const char *, uint32_t, char) noexcept;
uint32_t nlsref_CONV_WChar16StrToUTF8(const uint16_t *, int32_t, char *, uint32_t,
                                      uint32_t *) noexcept;
uint32_t nlsref_CONV_WCharStrToUTF8(const int32_t *, int32_t, char *, uint32_t,
                                    uint32_t *) noexcept;
int nlsref_GLIB_ValueMatchesPattern(const char *, const char *) noexcept;
int nlsref_GLIB_ValueMatchesPatternW(const GLIB_WChar *, const GLIB_WChar *) noexcept;
int nlsref_GLIB_ValueMatchesPatternEx(const char *, const char *, const char *, uint32_t) noexcept;
uint32_t nlsref_CONV_StringToQLXBCD(uint8_t *, const char *) noexcept;
uint32_t nlsref_CONV_QLXBCDToString(char *, const uint8_t *) noexcept;
uint32_t nlsref_CONV_StringToDecimal(uint8_t *, const char *, uint32_t, uint32_t *, uint32_t *,
                                     uint32_t, char) noexcept;
uint32_t nlsref_CONV_DecimalToString(char *, const uint8_t *, uint32_t, uint32_t, uint32_t, char,
                                     uint32_t, uint32_t *) noexcept;
uint32_t nlsref_CONV_DecimalToInt32(int32_t *, const uint8_t *, uint32_t, uint32_t,
                                    uint32_t) noexcept;
uint32_t nlsref_CONV_DecimalToUInt32(uint32_t *, const uint8_t *, uint32_t, uint32_t,
                                     uint32_t) noexcept;
}

namespace {

// xoshiro256** seeded through splitmix64: fast, and the same sequence on every platform.
class Random {
  public:
    explicit Random(uint64_t seed) {
        for (uint64_t &s : state_) {
            seed += 0x9E3779B97F4A7C15u;
            uint64_t z = seed;
            z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
            z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
            s = z ^ (z >> 31);
        }
    }
    uint64_t Next() {
        const uint64_t result = Rotl(state_[1] * 5, 7) * 9;
        const uint64_t t = state_[1] << 17;
        state_[2] ^= state_[0];
        state_[3] ^= state_[1];
        state_[1] ^= state_[2];
        state_[0] ^= state_[3];
        state_[2] ^= t;
        state_[3] = Rotl(state_[3], 45);
        return result;
    }
    // A number in [0, n).
    uint32_t Below(uint32_t n) {
        return static_cast<uint32_t>((Next() >> 32) * n >> 32);
    }
    bool OneIn(uint32_t n) {
        return Below(n) == 0;
    }
    char Pick(const char *choices) {
        return choices[Below(static_cast<uint32_t>(std::strlen(choices)))];
    }

  private:
    static uint64_t Rotl(uint64_t x, int k) {
        return (x << k) | (x >> (64 - k));
    }
    uint64_t state_[4];
};

// Shows a text with its unprintable bytes escaped, for a difference report.
std::string Shown(const char *text) {
    std::string shown = "\"";
    for (const char *p = text; *p != 0; ++p) {
        const unsigned char c = static_cast<unsigned char>(*p);
        if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
            shown += static_cast<char>(c);
        } else {
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\x%02X", c);
            shown += buf;
        }
    }
    return shown + "\"";
}

[[noreturn]] void Differ(const char *what, const std::string &input) {
    std::printf("DIFFERENCE in %s for %s\n", what, input.c_str());
    std::fflush(stdout);
    std::exit(1);
}

// ---------------------------------------------------------------------------------------------
// Number texts.

const char kPoints[] = ".,.,.,.,.,.,.,.,., 0e-+d'\x01";  // mostly "." and ","

void AppendDigits(Random &rng, std::string &text, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        text += static_cast<char>('0' + rng.Below(10));
    }
}

// A digit count: mostly short, sometimes around the 15-20 digits where exact reading changes
// method, sometimes hundreds.
uint32_t DigitCount(Random &rng) {
    switch (rng.Below(8)) {
        case 0:
            return 0;
        case 1:
        case 2:
        case 3:
            return 1 + rng.Below(6);
        case 4:
        case 5:
            return 1 + rng.Below(20);
        case 6:
            return 15 + rng.Below(10);
        default:
            return rng.OneIn(4) ? rng.Below(1010) : rng.Below(60);
    }
}

// Blanks of every kind that a number's check or strtod may skip or refuse.
void AppendBlanks(Random &rng, std::string &text) {
    const uint32_t count = rng.OneIn(3) ? 0 : 1 + rng.Below(3);
    for (uint32_t i = 0; i < count; ++i) {
        text += rng.OneIn(4) ? rng.Pick("\t\n\r\v\f ") : ' ';
    }
}

// A text made of the parts of a decimal number, each of them sometimes left out, doubled or
// replaced; then, now and then, one byte changed, inserted or removed.
std::string StructuredNumber(Random &rng, char point) {
    std::string text;
    if (rng.OneIn(3)) {
        AppendBlanks(rng, text);
    }
    if (rng.OneIn(2)) {
        text += rng.OneIn(8) ? rng.Pick("+-+-*") : (rng.OneIn(2) ? '-' : '+');
        if (rng.OneIn(5)) {
            AppendBlanks(rng, text);
        }
    }
    const uint32_t leadingZeros = rng.OneIn(6) ? rng.Below(30) : 0;
    text.append(leadingZeros, '0');
    AppendDigits(rng, text, DigitCount(rng));
    if (rng.OneIn(2)) {
        text += rng.OneIn(10) ? rng.Pick(".,") : point;
        if (rng.OneIn(8)) {
            text.append(rng.Below(40), '0');
        }
        AppendDigits(rng, text, DigitCount(rng));
    }
    if (rng.OneIn(2)) {
        text += rng.Pick("eeeEEEdDx");
        if (rng.OneIn(5)) {
            text += rng.Pick("  \t\n\r");
            if (rng.OneIn(4)) {
                text += ' ';
            }
        }
        if (rng.OneIn(2)) {
            text += rng.OneIn(2) ? '-' : '+';
        }
        if (rng.OneIn(8)) {
            text.append(rng.Below(30), '0');
        }
        switch (rng.Below(6)) {
            case 0:
                break;  // no exponent digits
            case 1:
                AppendDigits(rng, text, 1);
                break;
            case 2:
                AppendDigits(rng, text, 2);
                break;
            case 3:  // around the ends of the double range
                text += std::to_string(280 + rng.Below(60));
                break;
            default:
                AppendDigits(rng, text, 1 + rng.Below(rng.OneIn(10) ? 25 : 4));
                break;
        }
    }
    if (rng.OneIn(3)) {
        AppendBlanks(rng, text);
    }
    if (rng.OneIn(12) && !text.empty()) {
        const size_t at = rng.Below(static_cast<uint32_t>(text.size()));
        const char garbage = static_cast<char>(1 + rng.Below(255));
        switch (rng.Below(3)) {
            case 0:
                text[at] = garbage;
                break;
            case 1:
                text.insert(text.begin() + static_cast<long>(at), garbage);
                break;
            default:
                text.erase(at, 1);
                break;
        }
    }
    return text;
}

// A double printed the way programs print them (shortest and fixed widths, fixed and scientific),
// with the point replaced; among them values at the ends of the range and texts right at, just
// below and just above the halfway point between two neighbouring doubles.
std::string PrintedNumber(Random &rng, char point) {
    double value;
    uint64_t bits = rng.Next();
    switch (rng.Below(5)) {
        case 0:  // any finite double
            if (((bits >> 52) & 0x7FF) == 0x7FF) {
                bits ^= uint64_t{1} << 62;
            }
            std::memcpy(&value, &bits, sizeof value);
            break;
        case 1:  // subnormal and around the smallest normal
            bits &= 0x001FFFFFFFFFFFFFu;
            std::memcpy(&value, &bits, sizeof value);
            break;
        case 2:  // around the largest double
            bits = 0x7FEFFFFFFFFFFFFFu - rng.Below(4096);
            std::memcpy(&value, &bits, sizeof value);
            break;
        case 3:  // ordinary magnitudes
            value = static_cast<double>(rng.Next() >> 11) * std::ldexp(1.0, -53) *
                    std::pow(10.0, static_cast<int>(rng.Below(40)) - 20);
            break;
        default:  // small integers and short decimals
            value = static_cast<double>(rng.Below(2000000)) / std::pow(10.0, rng.Below(8));
            break;
    }
    if (rng.OneIn(2)) {
        value = -value;
    }
    char buf[1600];
    const int precision = static_cast<int>(rng.Below(40));
    switch (rng.Below(4)) {
        case 0:
            std::snprintf(buf, sizeof buf, "%.17g", value);
            break;
        case 1:
            std::snprintf(buf, sizeof buf, "%.*e", precision, value);
            break;
        case 2:
            std::snprintf(buf, sizeof buf, "%.*g", precision, value);
            break;
        default:
            std::snprintf(buf, sizeof buf, "%.*f", precision % 12, value);
            break;
    }
    std::string text = buf;
    const double magnitude = std::fabs(value);
    const double up = std::nextafter(magnitude, INFINITY);
    if (rng.OneIn(3) && std::isfinite(up)) {
        // The exact decimal of the halfway point (a long double holds it exactly), cut short
        // (just below it) or cut and its last digit raised (just above it).
        const long double mid = (static_cast<long double>(magnitude) + up) / 2;
        std::snprintf(buf, sizeof buf, "%.780Le", mid);
        std::string digits = buf;
        const size_t e = digits.find('e');
        std::string mantissa = digits.substr(0, e);
        const std::string exponent = digits.substr(e);
        mantissa.erase(mantissa.find_last_not_of('0') + 1);
        switch (rng.Below(3)) {
            case 0:
                break;
            case 1:
                mantissa.resize(std::min<size_t>(mantissa.size(), 3 + rng.Below(40)));
                break;
            default: {
                mantissa.resize(std::min<size_t>(mantissa.size(), 3 + rng.Below(40)));
                char &last = mantissa.back();
                if (last >= '0' && last <= '8') {
                    ++last;
                }
                break;
            }
        }
        text = (value < 0 ? "-" : "") + mantissa + exponent;
    }
    for (char &c : text) {
        if (c == '.') {
            c = point;
            break;
        }
    }
    if (rng.OneIn(4)) {
        text = "  " + text + "  ";
    }
    return text;
}

// Texts that stand for themselves: specials strtod knows, edge lengths and values.
std::string SpecialNumber(Random &rng, char point) {
    // clang-format off
    static const char *const kTexts[] = {
        "inf", "-inf", "nan", "NAN", "infinity", "0x1p3", "0X10", "1e999", "-1e999", "1e-999",
        "-1e-999", "1.7976931348623157e308", "1.7976931348623158e308", "1.7976931348623159e308",
        "2.2250738585072014e-308", "2.2250738585072011e-308", "4.9406564584124654e-324",
        "2.4703282292062327e-324", "2.4703282292062328e-324", "0", "-0", "+0", "0.0", ".0",
        "0.", ".", "-.", "+", "-", "", " ", "e5", "1e", "1e+", "1e-", "1E 5", "1E  5", "1d5",
        "1D-5", "1 e5", "- 5", "+ 5", "1..5", "1.5.5", "00000000000000000000001",
        "2147483647", "2147483648", "-2147483648", "-2147483649", "-2147483648x",
        "-21474836480", "4294967295", "4294967296", "99999999999999999999", "1e9", "2.5e9",
        "-2.5E9", "3e-1", "0.5e1", "1E400", "1E-400"};
    // clang-format on
    std::string text = kTexts[rng.Below(sizeof kTexts / sizeof kTexts[0])];
    if (rng.OneIn(3)) {
        // Lengths around the 999-character limit.
        const size_t length = 995 + rng.Below(8);
        text = rng.OneIn(2) ? "1" : " 1";
        if (rng.OneIn(2)) {
            text += point;
        }
        while (text.size() < length) {
            text += static_cast<char>('0' + rng.Below(10));
        }
        if (rng.OneIn(3)) {
            text += "e-5";
        }
        if (rng.OneIn(3)) {
            text += "   ";
        }
    }
    for (char &c : text) {
        if (c == '.') {
            c = point;
        }
    }
    return text;
}

// Any flags: the seven syntax bits and the no-check bit, each combination equally often, with
// now and then an unknown bit as well.
uint32_t NumberFlags(uint64_t index, Random &rng) {
    const uint32_t combination = static_cast<uint32_t>(index % 256);
    uint32_t flags = (combination & 0x7F) | ((combination & 0x80) != 0 ? CONV_NUM_NO_CHECK : 0);
    if (rng.OneIn(50)) {
        flags |= 0x80u << rng.Below(20);
    }
    return flags;
}

std::string NumberInput(const char *what, const std::string &text, uint32_t flags, char point) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%s flags 0x%X point 0x%02X text ", what, flags,
                  static_cast<unsigned char>(point));
    return buf + Shown(text.c_str());
}

constexpr int kErrnoSentinel = 12345;

template <typename T, typename Ours, typename Theirs>
void CompareNumber(const char *what, Ours ours, Theirs theirs, const std::string &text,
                   uint32_t flags, char point) {
    T a;
    T b;
    std::memset(&a, 0xA5, sizeof a);
    std::memset(&b, 0xA5, sizeof b);
    errno = kErrnoSentinel;
    const uint32_t sa = ours(&a, text.c_str(), flags, point);
    const int ea = errno;
    errno = kErrnoSentinel;
    const uint32_t sb = theirs(&b, text.c_str(), flags, point);
    const int eb = errno;
    if (sa != sb || std::memcmp(&a, &b, sizeof a) != 0 || ea != eb) {
        char buf[200];
        uint64_t ba = 0;
        uint64_t bb = 0;
        std::memcpy(&ba, &a, sizeof a);
        std::memcpy(&bb, &b, sizeof b);
        std::snprintf(buf, sizeof buf, " (status %u/%u, result bits %llX/%llX, errno %d/%d)", sa,
                      sb, static_cast<unsigned long long>(ba), static_cast<unsigned long long>(bb),
                      ea, eb);
        Differ(what, NumberInput(what, text, flags, point) + buf);
    }
}

// Locales whose decimal point is not "." change what strtod reads; part of the texts are read
// under one when it is there.
bool gHaveCommaLocale = false;

void SetNumericLocale(bool comma) {
    std::setlocale(LC_NUMERIC, comma ? "de_DE.UTF-8" : "C");
}

uint64_t RunDouble(uint64_t count, uint64_t seed) {
    Random rng(seed);
    static const int kModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};
    uint64_t texts = 0;
    for (uint64_t i = 0; i < count; ++i) {
        char point = (i & 1) != 0 ? ',' : '.';
        if (rng.OneIn(20)) {
            point = rng.Pick(kPoints);
            if (rng.OneIn(10)) {
                point = '\0';
            }
        }
        const uint32_t flags = NumberFlags(i >> 1, rng);
        std::string text;
        switch (rng.Below(10)) {
            case 0:
            case 1:
            case 2:
            case 3:
                text = StructuredNumber(rng, point);
                break;
            case 4:
            case 5:
            case 6:
            case 7:
                text = PrintedNumber(rng, point);
                break;
            case 8:
                text = SpecialNumber(rng, point);
                break;
            default: {
                // Short texts over a small alphabet.
                const uint32_t length = rng.Below(10);
                for (uint32_t k = 0; k < length; ++k) {
                    text += rng.Pick("0123456789.,eEdD+- \t\n");
                }
                break;
            }
        }
        // One text in 32 under another rounding mode, one in 32 under a "," locale (drawn, so
        // that they meet every flag combination).
        const bool otherMode = rng.OneIn(32);
        const bool commaLocale = gHaveCommaLocale && rng.OneIn(32);
        if (otherMode) {
            std::fesetround(kModes[1 + rng.Below(3)]);
        }
        if (commaLocale) {
            SetNumericLocale(true);
        }
        CompareNumber<double>("CONV_StringToDouble", CONV_StringToDouble,
                              nlsref_CONV_StringToDouble, text, flags, point);
        CompareNumber<float>("CONV_StringToFloat", CONV_StringToFloat, nlsref_CONV_StringToFloat,
                             text, flags, point);
        CompareNumber<int32_t>("CONV_StringToInt32", CONV_StringToInt32, nlsref_CONV_StringToInt32,
                               text, flags, point);
        CompareNumber<uint32_t>("CONV_StringToUInt32", CONV_StringToUInt32,
                                nlsref_CONV_StringToUInt32, text, flags, point);
        if (otherMode) {
            std::fesetround(FE_TONEAREST);
        }
        if (commaLocale) {
            SetNumericLocale(false);
        }
        ++texts;
    }
    return texts;
}

// Integer texts: mostly plain numbers of every length around the 32-bit limits, with blanks,
// signs, points, fractions and exponents, plus the double generator's texts.
uint64_t RunInteger(uint64_t count, uint64_t seed) {
    Random rng(seed);
    static const char *const kLimits[] = {
        "2147483647", "2147483648", "-2147483648", "-2147483649", "4294967295",
        "4294967296", "999999999",  "1000000000",  "-999999999",  "0000000000000002147483647"};
    uint64_t texts = 0;
    for (uint64_t i = 0; i < count; ++i) {
        char point = (i & 1) != 0 ? ',' : '.';
        if (rng.OneIn(20)) {
            point = rng.Pick(kPoints);
        }
        const uint32_t flags = NumberFlags(i >> 1, rng);
        std::string text;
        if (rng.OneIn(4)) {
            text = rng.OneIn(2) ? StructuredNumber(rng, point) : SpecialNumber(rng, point);
        } else {
            if (rng.OneIn(3)) {
                text.append(rng.Below(4), rng.OneIn(5) ? '\t' : ' ');
            }
            if (rng.OneIn(2)) {
                text += rng.OneIn(2) ? '-' : '+';
                if (rng.OneIn(10)) {
                    text += ' ';
                }
            }
            if (rng.OneIn(6)) {
                std::string limit = kLimits[rng.Below(sizeof kLimits / sizeof kLimits[0])];
                const bool afterSign = !text.empty() && (text.back() == '-' || text.back() == '+');
                if (limit[0] == '-' && afterSign) {
                    limit.erase(0, 1);
                }
                text += limit;
                if (rng.OneIn(3)) {
                    AppendDigits(rng, text, 1 + rng.Below(2));
                }
            } else {
                AppendDigits(rng, text, rng.OneIn(10) ? rng.Below(1005) : rng.Below(13));
            }
            if (rng.OneIn(4)) {
                text += rng.OneIn(8) ? '.' : point;
                if (rng.OneIn(2)) {
                    text.append(rng.Below(4), '0');
                }
                AppendDigits(rng, text, rng.Below(4));
            }
            if (rng.OneIn(8)) {
                text += rng.Pick("eEdD");
                if (rng.OneIn(2)) {
                    text += rng.Pick("+-");
                }
                AppendDigits(rng, text, rng.Below(4));
            }
            if (rng.OneIn(3)) {
                text.append(rng.Below(4), rng.OneIn(5) ? '\n' : ' ');
            }
            if (rng.OneIn(30) && !text.empty()) {
                text[rng.Below(static_cast<uint32_t>(text.size()))] =
                    static_cast<char>(1 + rng.Below(255));
            }
        }
        CompareNumber<int32_t>("CONV_StringToInt32", CONV_StringToInt32, nlsref_CONV_StringToInt32,
                               text, flags, point);
        CompareNumber<uint32_t>("CONV_StringToUInt32", CONV_StringToUInt32,
                                nlsref_CONV_StringToUInt32, text, flags, point);
        CompareNumber<int16_t>("CONV_StringToInt16", CONV_StringToInt16, nlsref_CONV_StringToInt16,
                               text, flags, point);
        CompareNumber<uint16_t>("CONV_StringToUInt16", CONV_StringToUInt16,
                                nlsref_CONV_StringToUInt16, text, flags, point);
        CompareNumber<int8_t>("CONV_StringToInt8", CONV_StringToInt8, nlsref_CONV_StringToInt8,
                              text, flags, point);
        CompareNumber<uint8_t>("CONV_StringToUInt8", CONV_StringToUInt8, nlsref_CONV_StringToUInt8,
                               text, flags, point);
        ++texts;
    }
    return texts;
}

// ---------------------------------------------------------------------------------------------
// UTF-8 encoders.

// A unit of a given kind: ASCII, two-byte, three-byte, surrogate, the terminator.
uint16_t Unit(Random &rng, uint32_t kind) {
    switch (kind) {
        case 0:
            return static_cast<uint16_t>(1 + rng.Below(0x7F));
        case 1:
            return static_cast<uint16_t>(0x80 + rng.Below(0x780));
        case 2:
            return static_cast<uint16_t>(0x800 + rng.Below(0xF800));
        case 3:
            return static_cast<uint16_t>(0xD800 + rng.Below(0x800));
        default:
            return static_cast<uint16_t>(rng.OneIn(2) ? 0x7F : (rng.OneIn(2) ? 0x80 : 0xFFFF));
    }
}

// The memory of the strings: two pages, the second unreadable, so that strings ending right
// before it show any read beyond their end.
struct GuardedPages {
    char *base = nullptr;
    size_t page = 0;
    GuardedPages() {
        page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        void *m =
            mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m == MAP_FAILED) {
            std::perror("mmap");
            std::exit(2);
        }
        base = static_cast<char *>(m);
        mprotect(base + page, page, PROT_NONE);
    }
};

std::string UnitsInput(const char *what, const uint16_t *units, size_t count, int32_t maxUnits,
                       uint32_t capacity) {
    std::string s = what;
    char buf[64];
    std::snprintf(buf, sizeof buf, " max %d capacity %u units", maxUnits, capacity);
    s += buf;
    for (size_t k = 0; k < count; ++k) {
        std::snprintf(buf, sizeof buf, " %04X", units[k]);
        s += buf;
    }
    return s;
}

uint64_t RunUtf8(uint64_t count, uint64_t seed) {
    Random rng(seed);
    static GuardedPages pages;
    std::vector<char> outA(4 * 1024 + 64);
    std::vector<char> outB(outA.size());
    std::vector<int32_t> wide(1100);
    uint64_t strings = 0;
    for (uint64_t i = 0; i < count; ++i) {
        // The text: runs of one kind of unit, a terminator somewhere (or none before the
        // maximum), placed at any 2-byte alignment, sometimes right before the guard page.
        const uint32_t length = rng.OneIn(10) ? rng.Below(1000) : rng.Below(40);
        const size_t slots = length + 1;
        uint16_t *units;
        if (rng.OneIn(2)) {
            units = reinterpret_cast<uint16_t *>(pages.base + pages.page) - slots;
        } else {
            units = reinterpret_cast<uint16_t *>(pages.base) + rng.Below(8);
        }
        const uint32_t mix = rng.Below(4);  // ASCII only, mostly ASCII, mostly not, anything
        uint32_t k = 0;
        while (k < length) {
            uint32_t kind;
            switch (mix) {
                case 0:
                    kind = 0;
                    break;
                case 1:
                    kind = rng.OneIn(8) ? rng.Below(5) : 0;
                    break;
                case 2:
                    kind = rng.OneIn(8) ? 0 : 1 + rng.Below(3);
                    break;
                default:
                    kind = rng.Below(5);
                    break;
            }
            const uint32_t run = 1 + rng.Below(rng.OneIn(3) ? 20 : 4);
            for (uint32_t r = 0; r < run && k < length; ++r) {
                units[k++] = Unit(rng, kind);
            }
        }
        units[length] = 0;
        if (length > 0 && rng.OneIn(8)) {
            units[rng.Below(length)] = 0;  // an early terminator
        }
        int32_t maxUnits;
        switch (rng.Below(5)) {
            case 0:
                maxUnits = -1 - static_cast<int32_t>(rng.Below(3));
                break;
            case 1:
                maxUnits = static_cast<int32_t>(rng.Below(length + 1));
                break;
            case 2:
                maxUnits = static_cast<int32_t>(length + rng.Below(5));
                break;
            default:
                maxUnits = static_cast<int32_t>(length);
                break;
        }
        // Reading is limited by the terminator; a maximum beyond it must not matter.
        if (maxUnits > static_cast<int32_t>(length)) {
            maxUnits = rng.OneIn(2) ? maxUnits : -1;
        }
        uint32_t capacity;
        switch (rng.Below(4)) {
            case 0:
                capacity = rng.Below(3 * length + 8);
                break;
            case 1:
                capacity = rng.Below(8);
                break;
            default:
                capacity = 3 * length + rng.Below(16);
                break;
        }
        const size_t outOffset = rng.Below(8);
        std::memset(outA.data(), 0x5A, outA.size());
        std::memset(outB.data(), 0x5A, outB.size());
        uint32_t writtenA = 0xDEAD;
        uint32_t writtenB = 0xBEEF;
        const uint32_t sa =
            CONV_WChar16StrToUTF8(units, maxUnits, outA.data() + outOffset, capacity, &writtenA);
        const uint32_t sb = nlsref_CONV_WChar16StrToUTF8(units, maxUnits, outB.data() + outOffset,
                                                         capacity, &writtenB);
        if (sa != sb || writtenA != writtenB || outA != outB) {
            Differ("CONV_WChar16StrToUTF8", UnitsInput("", units, slots, maxUnits, capacity));
        }
        // The 32-bit encoder on the same code points, with negative and large values mixed in.
        if ((i & 3) == 0) {
            for (size_t u = 0; u < slots; ++u) {
                wide[u] = units[u];
                if (units[u] != 0 && rng.OneIn(6)) {
                    wide[u] = static_cast<int32_t>(rng.Next());
                    if (wide[u] == 0) {
                        wide[u] = 1;
                    }
                }
            }
            std::memset(outA.data(), 0x5A, outA.size());
            std::memset(outB.data(), 0x5A, outB.size());
            const uint32_t wa =
                CONV_WCharStrToUTF8(wide.data(), maxUnits, outA.data(), capacity, &writtenA);
            const uint32_t wb =
                nlsref_CONV_WCharStrToUTF8(wide.data(), maxUnits, outB.data(), capacity, &writtenB);
            if (wa != wb || writtenA != writtenB || outA != outB) {
                Differ("CONV_WCharStrToUTF8", UnitsInput("", units, slots, maxUnits, capacity));
            }
        }
        ++strings;
    }
    return strings;
}

// ---------------------------------------------------------------------------------------------
// Pattern matching.

std::string RandomText(Random &rng, const char *alphabet, uint32_t maxLength) {
    std::string text;
    const uint32_t length = rng.Below(maxLength + 1);
    for (uint32_t k = 0; k < length; ++k) {
        text += rng.Pick(alphabet);
    }
    return text;
}

uint64_t RunMatch(uint64_t count, uint64_t seed) {
    Random rng(seed);
    uint64_t pairs = 0;
    for (uint64_t i = 0; i < count; ++i) {
        // Small alphabets, so that matches are frequent and every wildcard meets every other.
        const bool longer = rng.OneIn(10);
        std::string pattern = RandomText(rng, "ab%_\\ab%", longer ? 24 : 8);
        std::string value = RandomText(rng, "ab%_\\ab", longer ? 60 : 10);
        if (rng.OneIn(3)) {
            // A value built from the pattern, so that more of them match.
            value.clear();
            for (char c : pattern) {
                if (c == '%') {
                    value += RandomText(rng, "ab_%", 4);
                } else if (c == '_') {
                    value += rng.Pick("ab%");
                } else if (c != '\\' || rng.OneIn(2)) {
                    value += c;
                }
            }
        }
        const int a = GLIB_ValueMatchesPattern(pattern.c_str(), value.c_str());
        const int b = nlsref_GLIB_ValueMatchesPattern(pattern.c_str(), value.c_str());
        if (a != b) {
            Differ("GLIB_ValueMatchesPattern", Shown(pattern.c_str()) + " " + Shown(value.c_str()));
        }

        // The wide matcher on the same texts.
        std::vector<GLIB_WChar> wp(pattern.begin(), pattern.end());
        std::vector<GLIB_WChar> wv(value.begin(), value.end());
        for (GLIB_WChar &u : wv) {
            if (u == 'b' && rng.OneIn(4)) {
                u = 0x3B2;
            }
        }
        wp.push_back(0);
        wv.push_back(0);
        if (GLIB_ValueMatchesPatternW(wp.data(), wv.data()) !=
            nlsref_GLIB_ValueMatchesPatternW(wp.data(), wv.data())) {
            Differ("GLIB_ValueMatchesPatternW",
                   Shown(pattern.c_str()) + " " + Shown(value.c_str()));
        }

        // The caller's wildcards, with repeats and the terminator among them, and case folding.
        char wild[4] = {rng.Pick("*%a\001"), rng.Pick("?_%b\001"), rng.Pick("!\\%*\001"), 0};
        if (rng.OneIn(20)) {
            wild[rng.Below(3)] = '\0';
        }
        std::string ep = RandomText(rng, "aAbB*?!%_\\", longer ? 20 : 8);
        std::string ev = RandomText(rng, "aAbB*?!%", longer ? 40 : 10);
        const uint32_t ignoreCase = rng.Below(2) * (rng.OneIn(4) ? 0x80000000u : 1u);
        if (GLIB_ValueMatchesPatternEx(ep.c_str(), ev.c_str(), wild, ignoreCase) !=
            nlsref_GLIB_ValueMatchesPatternEx(ep.c_str(), ev.c_str(), wild, ignoreCase)) {
            char buf[64];
            std::snprintf(buf, sizeof buf, " wildcards %02X %02X %02X ignoreCase %u",
                          static_cast<unsigned char>(wild[0]), static_cast<unsigned char>(wild[1]),
                          static_cast<unsigned char>(wild[2]), ignoreCase);
            Differ("GLIB_ValueMatchesPatternEx", Shown(ep.c_str()) + " " + Shown(ev.c_str()) + buf);
        }
        ++pairs;
    }
    return pairs;
}

}  // namespace


// ---------------------------------------------------------------------------------------------
// Decimal values: number text to the packed and the self-describing layouts and back, decimal
// values (valid and damaged) to text at every size, and to the 32-bit integers.

// A number text as the decimal readers meet it: blanks, a sign, digits with zeros in runs, a
// point ("." or ","), sometimes an exponent or a stray character; now and then very long.
std::string DecimalText(Random &rng, char point) {
    std::string text;
    if (rng.OneIn(8)) {
        text.append(1 + rng.Below(2), ' ');
    }
    if (rng.OneIn(3)) {
        text += rng.OneIn(6) ? '+' : '-';
    }
    const uint32_t longest = rng.OneIn(20) ? 1000 : 14;
    const uint32_t integers = rng.Below(longest);
    for (uint32_t k = 0; k < integers; ++k) {
        text += rng.OneIn(3) ? '0' : static_cast<char>('0' + rng.Below(10));
    }
    if (rng.OneIn(2)) {
        text += rng.OneIn(10) ? rng.Pick(".,") : point;
        const uint32_t fraction = rng.Below(longest);
        for (uint32_t k = 0; k < fraction; ++k) {
            text += rng.OneIn(3) ? '0' : static_cast<char>('0' + rng.Below(10));
        }
    }
    if (rng.OneIn(20)) {
        text += rng.Pick("eE");
        text += std::to_string(static_cast<int>(rng.Below(80)) - 40);
    }
    if (rng.OneIn(40) && !text.empty()) {
        text[rng.Below(static_cast<uint32_t>(text.size()))] = rng.Pick("x-+. ");
    }
    return text;
}

// Compares two output areas and reports the first difference.
void CompareBytes(const char *what, const std::string &input, uint32_t statusA, uint32_t statusB,
                  const void *a, const void *b, size_t size) {
    if (statusA != statusB || std::memcmp(a, b, size) != 0) {
        char buf[64];
        std::snprintf(buf, sizeof buf, " (status %u/%u)", statusA, statusB);
        Differ(what, input + buf);
    }
}

// A decimal value to an integer type on both sides: status and target bytes.
template <typename T>
void CompareDecimalToInteger(const char *what,
                             uint32_t (*ours)(T *, const uint8_t *, uint32_t, uint32_t, uint32_t),
                             uint32_t (*theirs)(T *, const uint8_t *, uint32_t, uint32_t,
                                                uint32_t),
                             const std::string &input, const uint8_t *value, uint32_t precision,
                             uint32_t scale, uint32_t layout) {
    T a = 7;
    T b = 7;
    const uint32_t sa = ours(&a, value, precision, scale, layout);
    const uint32_t sb = theirs(&b, value, precision, scale, layout);
    CompareBytes(what, input, sa, sb, &a, &b, sizeof a);
}

uint64_t RunDecimal(uint64_t count, uint64_t seed) {
    Random rng(seed);
    constexpr size_t kValueBytes = 600;
    constexpr size_t kTextBytes = 1200;
    std::vector<uint8_t> valueA(kValueBytes);
    std::vector<uint8_t> valueB(kValueBytes);
    std::vector<char> textA(kTextBytes);
    std::vector<char> textB(kTextBytes);
    uint64_t cases = 0;
    for (uint64_t i = 0; i < count; ++i) {
        const char point = rng.OneIn(2) ? '.' : ',';
        const std::string text = DecimalText(rng, point);
        const std::string shown = "text " + Shown(text.c_str());

        // Text to the self-describing layout and back.
        std::fill(valueA.begin(), valueA.end(), 0xA5);
        std::fill(valueB.begin(), valueB.end(), 0xA5);
        const uint32_t qa = CONV_StringToQLXBCD(valueA.data(), text.c_str());
        const uint32_t qb = nlsref_CONV_StringToQLXBCD(valueB.data(), text.c_str());
        CompareBytes("CONV_StringToQLXBCD", shown, qa, qb, valueA.data(), valueB.data(),
                     kValueBytes);
        if (qa == CONV_OK) {
            std::fill(textA.begin(), textA.end(), 'Z');
            std::fill(textB.begin(), textB.end(), 'Z');
            CompareBytes("CONV_QLXBCDToString", shown, CONV_QLXBCDToString(textA.data(),
                                                                           valueA.data()),
                         nlsref_CONV_QLXBCDToString(textB.data(), valueB.data()), textA.data(),
                         textB.data(), kTextBytes);
        }

        // Text to a packed decimal at a random size.
        const uint32_t size = rng.OneIn(10) ? rng.Below(520) : rng.Below(12);
        const uint32_t flags = NumberFlags(i, rng);
        std::fill(valueA.begin(), valueA.end(), 0xA5);
        std::fill(valueB.begin(), valueB.end(), 0xA5);
        uint32_t precisionA = 777;
        uint32_t precisionB = 777;
        uint32_t scaleA = 777;
        uint32_t scaleB = 777;
        SetNumericLocale(false);
        const uint32_t da = CONV_StringToDecimal(valueA.data(), text.c_str(), size, &precisionA,
                                                 &scaleA, flags, point);
        const uint32_t db = nlsref_CONV_StringToDecimal(valueB.data(), text.c_str(), size,
                                                        &precisionB, &scaleB, flags, point);
        CompareBytes("CONV_StringToDecimal", shown, da, db, valueA.data(), valueB.data(),
                     kValueBytes);
        if (precisionA != precisionB || scaleA != scaleB) {
            Differ("CONV_StringToDecimal precision or scale", shown);
        }

        // A decimal value (the one just read, or random digits, sometimes damaged) to text at
        // a random size, and to the 32-bit integers.
        uint32_t precision = precisionA;
        uint32_t scale = scaleA;
        uint32_t layout = CONV_DECIMAL_PACKED;
        if (da != CONV_OK || rng.OneIn(3)) {
            layout = rng.OneIn(2) ? CONV_DECIMAL_PACKED : CONV_DECIMAL_UNPACKED;
            // Long values too, as long as their bytes stay inside the value area.
            precision = rng.OneIn(10) ? rng.Below(layout == CONV_DECIMAL_PACKED ? 1100 : 600)
                                      : rng.Below(20);
            scale = rng.OneIn(4) ? rng.Below(precision + 3) : rng.Below(precision + 1);
            for (size_t k = 0; k < kValueBytes; ++k) {
                const uint8_t digits = static_cast<uint8_t>(rng.Below(10) << 4 | rng.Below(10));
                valueA[k] = rng.OneIn(200) ? static_cast<uint8_t>(rng.Below(256))
                            : layout == CONV_DECIMAL_PACKED ? digits
                                                            : static_cast<uint8_t>(digits & 0x0F);
            }
            const size_t signAt = layout == CONV_DECIMAL_PACKED ? precision / 2
                                                                : (precision > 0 ? precision - 1
                                                                                 : 0);
            if (signAt < kValueBytes && !rng.OneIn(20)) {
                const uint8_t sign = rng.OneIn(2) ? CONV_DECIMAL_MINUS : CONV_DECIMAL_PLUS;
                valueA[signAt] = layout == CONV_DECIMAL_PACKED
                                     ? static_cast<uint8_t>((valueA[signAt] & 0xF0) | sign)
                                     : static_cast<uint8_t>(valueA[signAt] | sign << 4);
            }
        }
        const uint32_t textSize = rng.OneIn(10) ? rng.Below(1100) : rng.Below(24);
        std::fill(textA.begin(), textA.end(), 'Z');
        std::fill(textB.begin(), textB.end(), 'Z');
        uint32_t lengthA = 777;
        uint32_t lengthB = 777;
        char buf[96];
        std::snprintf(buf, sizeof buf, " precision %u scale %u layout %u size %u", precision,
                      scale, layout, textSize);
        const std::string valueShown = shown + buf;
        CompareBytes("CONV_DecimalToString", valueShown,
                     CONV_DecimalToString(textA.data(), valueA.data(), textSize, precision, scale,
                                          point, layout, &lengthA),
                     nlsref_CONV_DecimalToString(textB.data(), valueA.data(), textSize, precision,
                                                 scale, point, layout, &lengthB),
                     textA.data(), textB.data(), kTextBytes);
        if (lengthA != lengthB) {
            Differ("CONV_DecimalToString length", valueShown);
        }
        if (precision < 40) {
            CompareDecimalToInteger<int32_t>("CONV_DecimalToInt32", CONV_DecimalToInt32,
                                             nlsref_CONV_DecimalToInt32, valueShown,
                                             valueA.data(), precision, scale, layout);
            CompareDecimalToInteger<uint32_t>("CONV_DecimalToUInt32", CONV_DecimalToUInt32,
                                              nlsref_CONV_DecimalToUInt32, valueShown,
                                              valueA.data(), precision, scale, layout);
        }

        // Arbitrary bytes in the self-describing layout.
        if (rng.OneIn(4)) {
            for (size_t k = 0; k < 140; ++k) {
                valueA[k] = static_cast<uint8_t>(rng.Below(256));
            }
            if (!rng.OneIn(8)) {
                const size_t last = 2 + valueA[0] / 2u;
                valueA[last] = static_cast<uint8_t>((valueA[last] & 0xF0) |
                                                    (rng.OneIn(2) ? CONV_DECIMAL_MINUS
                                                                  : CONV_DECIMAL_PLUS));
                for (size_t k = 2; k <= last; ++k) {
                    const uint8_t high = valueA[k] >> 4;
                    if (high > 9) {
                        valueA[k] = static_cast<uint8_t>((high - 10) << 4 | (valueA[k] & 0x0F));
                    }
                }
            }
            std::fill(textA.begin(), textA.end(), 'Z');
            std::fill(textB.begin(), textB.end(), 'Z');
            CompareBytes("CONV_QLXBCDToString (arbitrary bytes)", valueShown,
                         CONV_QLXBCDToString(textA.data(), valueA.data()),
                         nlsref_CONV_QLXBCDToString(textB.data(), valueA.data()), textA.data(),
                         textB.data(), kTextBytes);
        }
        ++cases;
    }
    return cases;
}

int main(int argc, char **argv) {
    double scale = 1.0;
    uint64_t seed = 20261121;
    std::vector<std::string> groups;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--scale=", 8) == 0) {
            scale = std::atof(argv[i] + 8);
        } else if (std::strncmp(argv[i], "--seed=", 7) == 0) {
            seed = std::strtoull(argv[i] + 7, nullptr, 10);
        } else {
            groups.push_back(argv[i]);
        }
    }
    auto wanted = [&](const char *group) {
        if (groups.empty()) {
            return true;
        }
        for (const std::string &g : groups) {
            if (g == group) {
                return true;
            }
        }
        return false;
    };
    auto scaled = [&](double count) { return static_cast<uint64_t>(count * scale); };

    gHaveCommaLocale = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    std::setlocale(LC_NUMERIC, "C");
    std::printf("nls_diff: %zu-bit, seed %llu, \",\" locale %s\n", sizeof(void *) * 8,
                static_cast<unsigned long long>(seed), gHaveCommaLocale ? "used" : "not found");

    // The groups, each with its default count and its own seed (the seed plus its index).
    struct Group {
        const char *name;
        double count;
        uint64_t (*run)(uint64_t count, uint64_t seed);
        const char *what;
    };
    static const Group kGroups[] = {
        {"double", 12e6, RunDouble,
         "texts equal (CONV_StringToDouble, CONV_StringToFloat, CONV_StringToInt32, "
         "CONV_StringToUInt32)"},
        {"int", 4e6, RunInteger,
         "texts equal (CONV_StringToInt32, UInt32, Int16, UInt16, Int8, UInt8)"},
        {"utf8", 3e6, RunUtf8,
         "strings equal (CONV_WChar16StrToUTF8; a quarter also through CONV_WCharStrToUTF8)"},
        {"match", 4e6, RunMatch,
         "pattern/value pairs equal (GLIB_ValueMatchesPattern, ...W, ...Ex)"},
        {"decimal", 3e6, RunDecimal,
         "texts and values equal (CONV_StringToQLXBCD, CONV_QLXBCDToString, "
         "CONV_StringToDecimal, CONV_DecimalToString, CONV_DecimalToInt32, ...UInt32)"},
    };
    for (size_t i = 0; i < sizeof kGroups / sizeof kGroups[0]; ++i) {
        const Group &group = kGroups[i];
        if (wanted(group.name)) {
            const uint64_t n = group.run(scaled(group.count), seed + i);
            std::printf("%s: %llu %s\n", group.name, static_cast<unsigned long long>(n),
                        group.what);
        }
    }
    std::fflush(stdout);
    return 0;
}
