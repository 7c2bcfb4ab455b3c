/* SPDX-License-Identifier: MIT */
// glibformat.cpp - the library's bounded formatter: one engine shared by the narrow (byte) and
// the wide (16-bit unit) output.
//
// The engine reads the format in one loop driven by an explicit state (text, escape, flags,
// width, precision, conversion). The conversion state hands each conversion to an emitter of
// its own (literal character, integer, narrow string, floating value, pointer, wide character,
// wide string), and every emitter ends in the same tail: padding in front, the prefix, zeros,
// the body, padding behind (PutFront, the body, PutBack).
//
// The engine is compiled as one function (gnu::flatten), every helper inlined into it, so that
// the output count stays in a register through the whole call: a helper left out of line
// would be handed the output's address, and every byte stored into the output would then make
// the compiler reload the count. Pieces of up to 16 bytes are copied and filled without calls
// to the C library, and the digits of an integer are counted first and written straight into
// the output. Nothing on the formatting path allocates.

#include <nlssupport/convlib.h>
#include <nlssupport/glib.h>

#include <array>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "glib_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     glibformat.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     glib.h\t\t$Revision$\t$Date$",
    "@(#)     glib_internal.h\t\t$Revision$\t$Date$",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// States of the engine. A conversion goes through flags, width, precision and conversion in
// that order; the conversion state writes it through its emitter, after which the engine is
// back in the text state.
enum State {
    kText,        // literal text
    kEscape,      // the character behind a backslash
    kFlags,       // flags behind '%'
    kWidth,       // field width
    kPrecision,   // precision
    kConversion,  // length modifiers and the conversion character
};

// Conversion flags.
enum Flag : uint32_t {
    kLeft = 1u << 0,       // '-'
    kPlus = 1u << 1,       // '+'
    kZeroPad = 1u << 2,    // '0'
    kSpace = 1u << 3,      // ' '
    kAlternate = 1u << 4,  // '#'
    kLong = 1u << 8,       // 'l'
    kShort = 1u << 9,      // 'h'
};

// What a character stands for in the conversion state.
enum Conversion : uint8_t {
    kInvalid,        // ends the call with -1
    kShortModifier,  // 'h'
    kLongModifier,   // 'l' ("ll" is the same: integers are always 32 bits)
    kSigned,         // 'd', 'i'
    kUnsigned,       // 'u'
    kOctal,          // 'o'
    kHex,            // 'x', 'X'
    kChar,           // 'c'
    kString,         // 's'
    kPointer,        // 'p'
    kFloating,       // 'e', 'E', 'f', 'g', 'G'
};

// The conversion state takes the characters from 'E' to 'x'; every other one is invalid there.
constexpr unsigned kFirstConversionChar = 'E';
constexpr unsigned kLastConversionChar = 'x';

// The conversion table, one entry per character from 'E' to 'x'.
constexpr auto kConversions = [] {
    std::array<Conversion, kLastConversionChar - kFirstConversionChar + 1> table{};
    const auto set = [&table](char c, Conversion conversion) {
        table[static_cast<unsigned char>(c) - kFirstConversionChar] = conversion;
    };
    set('h', kShortModifier);
    set('l', kLongModifier);
    set('d', kSigned);
    set('i', kSigned);
    set('u', kUnsigned);
    set('o', kOctal);
    set('x', kHex);
    set('X', kHex);
    set('c', kChar);
    set('s', kString);
    set('p', kPointer);
    for (const char c : {'e', 'E', 'f', 'g', 'G'}) {
        set(c, kFloating);
    }
    return table;
}();

// True for the characters the conversion state takes.
constexpr bool IsConversionChar(unsigned c) {
    return c >= kFirstConversionChar && c <= kLastConversionChar;
}

// The meaning of character c in the conversion state.
constexpr Conversion ConversionOf(unsigned c) {
    return IsConversionChar(c) ? kConversions[c - kFirstConversionChar] : kInvalid;
}

// The flag of each flag character behind '%' (0 for the other characters).
constexpr auto kFlagChars = [] {
    std::array<uint32_t, 128> table{};
    table[' '] = kSpace;
    table['#'] = kAlternate;
    table['+'] = kPlus;
    table['-'] = kLeft;
    table['0'] = kZeroPad;
    return table;
}();

// The flag that character c sets behind '%', or 0.
constexpr uint32_t FlagOf(unsigned c) {
    return c < kFlagChars.size() ? kFlagChars[c] : 0;
}

// The characters that end a run of literal text: '%', '\' and the format's end.
constexpr auto kTextEnds = [] {
    std::array<bool, 256> table{};
    table['%'] = true;
    table['\\'] = true;
    table[0] = true;
    return table;
}();

// Cells of the digit buffer, filled from its end.
constexpr int kDigitCells = 128;
// Largest integer precision: the digits plus the octal cell in front of them must fit.
constexpr int32_t kMaxIntegerPrecision = kDigitCells - 1;
// Largest floating width and precision handed to the C library.
constexpr int32_t kMaxFloatingField = 128;
// Scratch text of a floating value: a 128-wide field or 309 integer digits, a point and 128
// decimals, with room to spare.
constexpr int kScratchSize = 512;
// Digits of the pointer text: the low 32 bits of the address in hexadecimal.
constexpr int kPointerDigits = 8;
// Longest piece copied without a call to the C library; see CopyBytes.
constexpr size_t kShortCopy = 16;

// The decimal digit pairs "00" to "99", for writing two decimal digits per division.
constexpr char kDigitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";
// Powers of ten up to the largest below 2^32, for counting decimal digits.
constexpr uint32_t kPowersOfTen[] = {1,      10,      100,      1000,      10000,
                                     100000, 1000000, 10000000, 100000000, 1000000000};
// Digits of bases 8 and 16.
constexpr char kLowerDigits[] = "0123456789abcdef";
constexpr char kUpperDigits[] = "0123456789ABCDEF";

// A conversion as read from the format: flags, width (0 when absent) and precision (-1 when
// absent).
struct Spec {
    uint32_t flags = 0;
    int32_t width = 0;
    int32_t precision = -1;
};

// The value of a backslash escape character, or -1 when the character is not one of the eight.
constexpr int EscapeValue(unsigned c) {
    switch (c) {
        case '\\':
            return '\\';
        case 'a':
            return 7;
        case 'b':
            return 8;
        case 'f':
            return 12;
        case 'n':
            return 10;
        case 'r':
            return 13;
        case 't':
            return 9;
        case 'v':
            return 11;
        default:
            return -1;
    }
}

// Accumulates a decimal digit into a width or precision, wrapping like the 32-bit arithmetic
// it stands for instead of overflowing.
int32_t AddDigit(int32_t value, unsigned digit) {
    return static_cast<int32_t>(static_cast<uint32_t>(value) * 10u + digit);
}

// A format unit as the character code it is compared by; a signed char from 0x80 up is never
// special.
constexpr unsigned Code(char c) {
    return static_cast<unsigned char>(c);
}
constexpr unsigned Code(GLIB_WChar c) {
    return c;
}

// True when format unit c ends a run of literal text.
constexpr bool IsTextEnd(char c) {
    return kTextEnds[Code(c)];
}
constexpr bool IsTextEnd(GLIB_WChar c) {
    return c < kTextEnds.size() && kTextEnds[c];
}

// Copies n bytes. Up to 16 bytes this is two overlapping moves of a fixed size (each byte of
// the range written once or twice with the same value, nothing outside it touched): the
// pieces of a format are short, and a call to memcpy costs more than the copy itself.
inline void CopyBytes(void *dst, const void *src, size_t n) {
    auto *d = static_cast<unsigned char *>(dst);
    const auto *s = static_cast<const unsigned char *>(src);
    if (n > kShortCopy) {
        std::memcpy(d, s, n);
    } else if (n >= 8) {
        uint64_t head;
        uint64_t tail;
        std::memcpy(&head, s, 8);
        std::memcpy(&tail, s + n - 8, 8);
        std::memcpy(d, &head, 8);
        std::memcpy(d + n - 8, &tail, 8);
    } else if (n >= 4) {
        uint32_t head;
        uint32_t tail;
        std::memcpy(&head, s, 4);
        std::memcpy(&tail, s + n - 4, 4);
        std::memcpy(d, &head, 4);
        std::memcpy(d + n - 4, &tail, 4);
    } else if (n > 0) {
        // 1 to 3 bytes: the first, the middle and the last.
        const unsigned char first = s[0];
        const unsigned char middle = s[n / 2];
        const unsigned char last = s[n - 1];
        d[0] = first;
        d[n / 2] = middle;
        d[n - 1] = last;
    }
}

// Stores n copies of byte c, the way CopyBytes copies: up to 16 bytes as two overlapping
// stores of a fixed size.
inline void FillBytes(char *dst, char c, size_t n) {
    if (n > kShortCopy) {
        std::memset(dst, c, n);
    } else if (n >= 8) {
        const uint64_t pattern = 0x0101010101010101u * static_cast<unsigned char>(c);
        std::memcpy(dst, &pattern, 8);
        std::memcpy(dst + n - 8, &pattern, 8);
    } else if (n >= 4) {
        const uint32_t pattern = 0x01010101u * static_cast<unsigned char>(c);
        std::memcpy(dst, &pattern, 4);
        std::memcpy(dst + n - 4, &pattern, 4);
    } else if (n > 0) {
        dst[0] = c;
        dst[n / 2] = c;
        dst[n - 1] = c;
    }
}

// Stores n copies of output unit c.
inline void FillUnits(char *dst, char c, size_t n) {
    FillBytes(dst, c, n);
}
inline void FillUnits(GLIB_WChar *dst, GLIB_WChar c, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        dst[i] = c;
    }
}

// Copies n units of narrow text into output units: bytes as they are, or widened unit by unit
// (bytes from 0x80 up as '?') in the wide engine. The text holds no 0 among its n units.
inline void CopyNarrow(char *dst, const char *text, size_t n) {
    CopyBytes(dst, text, n);
}
inline void CopyNarrow(GLIB_WChar *dst, const char *text, size_t n) {
    GLIB_strwcsncpy(dst, text, n);
}

// One byte of narrow text as an output unit.
inline void CopyNarrow(char *dst, char c) {
    *dst = c;
}
inline void CopyNarrow(GLIB_WChar *dst, char c) {
    *dst = glib::WidenByte(c);
}

// Output buffer and count of one call.
//
// Two rules of room apply. Single characters (literal text, escapes, "%%", "%c", padding and
// prefixes) may fill positions 0 to size - 1: the output is full only when count has passed
// size - 1, so the terminator may then land at position size. Callers provide size + 1 units;
// kept for compatibility with them. Whole pieces (string, digits, floating and pointer text,
// UTF-8) are measured against size - count - 1, which leaves the terminator inside size; when
// one does not fit, the part that fits is written before the call fails.
template <typename Unit>
struct Output {
    Unit *buf;
    size_t size;
    int32_t count;

    // Positions left for single characters.
    size_t CharRoom() const {
        return static_cast<size_t>(count) > size - 1 ? 0 : size - static_cast<size_t>(count);
    }

    // Room for a whole piece, size - count - 1 taken as a signed 64-bit value. When single
    // characters have already filled the output up to position size it is negative: there is
    // no room at all; so is a size from 2^63 up.
    size_t Room() const {
        const auto signedSize = static_cast<int64_t>(size);
        return signedSize > count ? static_cast<size_t>(signedSize - count - 1) : 0;
    }

    // Stores one single character; false when the output is full.
    bool Put(Unit c) {
        if (CharRoom() == 0) {
            return false;
        }
        buf[count++] = c;
        return true;
    }

    // Stores n copies of c as single characters (nothing when n is 0 or less): those that fit,
    // and false when not all do.
    bool Fill(Unit c, int64_t n) {
        if (n <= 0) {
            return true;
        }
        const size_t room = CharRoom();
        const size_t stored = static_cast<uint64_t>(n) > room ? room : static_cast<size_t>(n);
        FillUnits(buf + count, c, stored);
        count += static_cast<int32_t>(stored);
        return stored == static_cast<uint64_t>(n);
    }

    // Copies the literal text of the format at p, up to the next '%', '\' or end, as single
    // characters. Returns where it stopped, or null when the output filled up first (the
    // characters that fit stay). The text is copied as it is scanned: it has to be looked at
    // character by character anyway.
    const Unit *PutLiteralText(const Unit *p) {
        const size_t room = CharRoom();
        Unit *dst = buf + count;
        size_t n = 0;
        for (; !IsTextEnd(p[n]); ++n) {
            if (n == room) {
                count += static_cast<int32_t>(n);
                return nullptr;
            }
            dst[n] = p[n];
        }
        count += static_cast<int32_t>(n);
        return p + n;
    }

    // Copies narrow text of a known length (no 0 among its units) as a whole piece.
    bool PutText(const char *text, size_t length) {
        const size_t room = Room();
        const size_t stored = length > room ? room : length;
        CopyNarrow(buf + count, text, stored);
        count += static_cast<int32_t>(stored);
        return stored == length;
    }

    // Copies a narrow string as a whole piece, measuring it on the way: up to its terminator,
    // or up to `precision` characters when that is 0 or more. Sets `length` to the units
    // written. Fails, with the part that fits written, when the string is longer than the
    // room. The first characters are copied one by one as they are looked at; the rest of a
    // longer string is measured and copied in one go.
    bool PutString(const char *text, int32_t precision, size_t &length) {
        const size_t room = Room();
        const bool bounded = precision >= 0 && static_cast<size_t>(precision) <= room;
        const size_t limit = bounded ? static_cast<size_t>(precision) : room;
        Unit *dst = buf + count;
        const size_t head = limit < kShortCopy ? limit : kShortCopy;
        size_t n = 0;
        for (; n < head; ++n) {
            const char c = text[n];
            if (c == 0) {
                break;
            }
            CopyNarrow(dst + n, c);
        }
        if (n == kShortCopy && n < limit && text[n] != 0) {
            const size_t rest = strnlen(text + n, limit - n);
            CopyNarrow(dst + n, text + n, rest);
            n += rest;
        }
        count += static_cast<int32_t>(n);
        length = n;
        // Stopped by the room, not by the terminator or the precision: the string goes on.
        return bounded || n < room || text[n] == 0;
    }

    // Terminates behind what was written.
    void Terminate() {
        buf[count] = 0;
    }
};

// The output and the narrow-string slot of one call.
template <typename Unit>
struct Engine {
    // Ends a failed call: the output terminated behind what was written, and -1.
    int Fail() {
        out.Terminate();
        return -1;
    }

    Output<Unit> out;
    // The narrow string last fetched by "%s"; the wide engine's "%ls" under a precision reads
    // it (empty before the first "%s").
    const char *narrowString;
};

// Integer digits of one call, written from the end of the cells; each conversion writes the
// cells from its first digit to the end. The octal rule looks at the cell in front of the
// digits, which must hold no '0' from before the call: the cells in front of `from` have not
// been written by this call and count as empty (they are not cleared).
struct DigitCells {
    int from = kDigitCells;
    char cells[kDigitCells];
};

// The frame of one conversion around its body: width, flags (left-justify and zero pad decide
// where the padding goes) and a prefix of up to two characters.
struct Field {
    int32_t width = 0;
    uint32_t flags = 0;
    char prefix[2] = {0, 0};
    int prefixLength = 0;
};

// What goes in front of a body of `length` units: width - prefix - length units of padding as
// spaces unless left-justified or zero-padded, then the prefix, then the padding as zeros
// under zero pad (left-justify wins over it). Single characters; false when the output fills
// up.
template <typename Unit>
bool PutFront(Output<Unit> &out, const Field &f, int64_t length) {
    const int64_t pad = static_cast<int64_t>(f.width) - f.prefixLength - length;
    if (!(f.flags & (kLeft | kZeroPad)) && !out.Fill(Unit(' '), pad)) {
        return false;
    }
    for (int i = 0; i < f.prefixLength; ++i) {
        if (!out.Put(static_cast<Unit>(f.prefix[i]))) {
            return false;
        }
    }
    return (f.flags & (kLeft | kZeroPad)) != kZeroPad || out.Fill(Unit('0'), pad);
}

// What goes behind a body of `length` units: the padding as spaces when left-justified.
template <typename Unit>
bool PutBack(Output<Unit> &out, const Field &f, int64_t length) {
    return !(f.flags & kLeft) ||
           out.Fill(Unit(' '), static_cast<int64_t>(f.width) - f.prefixLength - length);
}

// A whole field whose body is narrow text of a known length.
template <typename Unit>
bool PutField(Output<Unit> &out, const Field &f, const char *text, size_t length) {
    const auto signedLength = static_cast<int64_t>(length);
    return PutFront(out, f, signedLength) && out.PutText(text, length) &&
           PutBack(out, f, signedLength);  // GCOVR_EXCL_BR_LINE: no caller passes kLeft here
}

// Length of a narrow string under a precision: the whole string without one, at most p
// characters with p >= 1, nothing with p = 0.
size_t BoundedLength(const char *text, int32_t precision) {
    return precision < 0 ? std::strlen(text) : strnlen(text, static_cast<size_t>(precision));
}

// Number of digits of value in base Base; 0 for the value 0.
template <unsigned Base>
int DigitCount(uint32_t value) {
    const auto bits = static_cast<int>(std::bit_width(value));
    if constexpr (Base == 10) {
        // bits * 1233 / 4096 is floor(log10(2^bits)), the count of digits of 2^bits less one,
        // or one more than that of value; the comparison settles which.
        const int t = (bits * 1233) >> 12;
        return t + (value >= kPowersOfTen[t] ? 1 : 0);
    } else {
        constexpr int kBitsPerDigit = Base == 16 ? 4 : 3;
        return (bits + kBitsPerDigit - 1) / kBitsPerDigit;
    }
}

// Stores one digit character at index i of the digit cells and, when there is one, of the
// output.
template <typename Unit>
void StoreDigit(char *cells, Unit *out, size_t i, char digit) {
    cells[i] = digit;
    if (out != nullptr) {
        out[i] = static_cast<Unit>(static_cast<unsigned char>(digit));
    }
}

// Stores the two digits of `pair` (0 to 99) at indexes i and i + 1, as StoreDigit.
template <typename Unit>
void StorePair(char *cells, Unit *out, size_t i, uint32_t pair) {
    const char *digits = kDigitPairs + 2 * static_cast<size_t>(pair);
    std::memcpy(cells + i, digits, 2);
    if (out == nullptr) {
        return;
    }
    if constexpr (std::is_same_v<Unit, char>) {
        std::memcpy(out + i, digits, 2);
    } else {
        out[i] = static_cast<Unit>(static_cast<unsigned char>(digits[0]));
        out[i + 1] = static_cast<Unit>(static_cast<unsigned char>(digits[1]));
    }
}

// Writes `count` digits: those of value in base Base (none for 0) at the end, '0's in front of
// them, into the digit cells and, unless `out` is null, into the output at the same time.
// Digits above 9 are letters from `letters`; decimal digits are produced two at a time. The
// output is written directly rather than copied from the cells: reading back bytes just stored
// one or two at a time costs more than storing them twice.
template <unsigned Base, typename Unit>
void WriteDigits(char *cells, Unit *out, size_t count, uint32_t value, const char *letters) {
    size_t i = count;
    if constexpr (Base == 10) {
        (void)letters;
        while (value >= 10000) {
            const uint32_t four = value % 10000;
            value /= 10000;
            i -= 4;
            StorePair(cells, out, i, four / 100);
            StorePair(cells, out, i + 2, four % 100);
        }
        if (value >= 100) {
            const uint32_t pair = value % 100;
            value /= 100;
            i -= 2;
            StorePair(cells, out, i, pair);
        }
        if (value >= 10) {
            i -= 2;
            StorePair(cells, out, i, value);
        } else if (value != 0) {
            StoreDigit(cells, out, --i, static_cast<char>('0' + value));
        }
    } else {
        constexpr unsigned kShift = Base == 16 ? 4 : 3;
        for (; value != 0; value >>= kShift) {
            StoreDigit(cells, out, --i, letters[value & (Base - 1)]);
        }
    }
    while (i > 0) {
        StoreDigit(cells, out, --i, '0');
    }
}

// Integer conversion c of a value already fetched, in base Base: `sign` is the prefix of a
// signed conversion ('-', '+', ' ' or none); an alternate hexadecimal one has the prefix "0x"
// or "0X" unless the value is 0. A precision clears zero pad; without one at least one digit
// is written. The digits are counted first, so that padding and room are known before they are
// written.
template <unsigned Base, typename Unit>
bool PutInteger(Output<Unit> &out, DigitCells &d, const Spec &spec, uint32_t value, char sign,
                unsigned c) {
    Field f{spec.width, spec.flags, {sign, 0}, sign != 0 ? 1 : 0};
    int32_t precision = spec.precision;
    if (precision < 0) {
        precision = 1;
    } else {
        f.flags &= ~kZeroPad;
    }
    // The digit buffer holds 128 cells; longer precisions are refused.
    if (precision > kMaxIntegerPrecision) {
        return false;
    }
    if (Base == 16 && (f.flags & kAlternate) && value != 0) {
        f.prefix[0] = '0';
        f.prefix[1] = static_cast<char>(c);
        f.prefixLength = 2;
    }
    const int produced = DigitCount<Base>(value);
    int start = kDigitCells - (produced > precision ? produced : precision);
    // Octal: the cell in front of the digits decides, not the leading digit. A '0' left there
    // by an earlier conversion of the same call suppresses the extra zero; kept for
    // compatibility.
    if (Base == 8 && !(start < kDigitCells && start - 1 >= d.from && d.cells[start - 1] == '0')) {
        --start;
    }
    if (start < d.from) {
        d.from = start;
    }
    const auto count = static_cast<size_t>(kDigitCells - start);
    const char *letters = c == 'X' ? kUpperDigits : kLowerDigits;
    if (!PutFront(out, f, static_cast<int64_t>(count))) {
        return false;
    }
    if (count > out.Room()) {
        // Cut: the part that fits is copied from the cells.
        WriteDigits<Base, Unit>(d.cells + start, nullptr, count, value, letters);
        out.PutText(d.cells + start, count);
        return false;
    }
    WriteDigits<Base>(d.cells + start, out.buf + out.count, count, value, letters);
    out.count += static_cast<int32_t>(count);
    return PutBack(out, f, static_cast<int64_t>(count));
}

// 'd', 'i', 'u', 'o', 'x', 'X': fetches the argument, always 32 bits ("l" changes nothing), under
// "h" its low 16 bits sign-extended for 'd' and 'i' and zero-extended for the others. A negative
// value of a signed conversion is written as its magnitude behind '-'; any other one gets '+'
// or ' ' under those flags.
template <typename Unit>
bool PutIntegerArgument(Output<Unit> &out, DigitCells &d, const Spec &spec, Conversion kind,
                        unsigned c, va_list *args) {
    uint32_t value;
    char sign = 0;
    if (kind == kSigned) {
        int32_t signedValue = va_arg(*args, int);
        if (spec.flags & kShort) {
            signedValue = static_cast<int16_t>(signedValue);
        }
        value = static_cast<uint32_t>(signedValue);
        if (signedValue < 0) {
            value = 0u - value;
            sign = '-';
        } else if (spec.flags & kPlus) {
            sign = '+';
        } else if (spec.flags & kSpace) {
            sign = ' ';
        }
    } else {
        value = va_arg(*args, unsigned int);
        if (spec.flags & kShort) {
            value &= 0xFFFFu;
        }
    }
    if (kind == kOctal) {
        return PutInteger<8>(out, d, spec, value, sign, c);
    }
    if (kind == kHex) {
        return PutInteger<16>(out, d, spec, value, sign, c);
    }
    return PutInteger<10>(out, d, spec, value, sign, c);
}

// "%s": a narrow string, cut to the precision; zero pad has no effect. When nothing goes in
// front of it (left-justified, or no width), the string is measured while it is copied.
template <typename Unit>
bool PutNarrowString(Output<Unit> &out, const Spec &spec, const char *text) {
    const Field f{spec.width, spec.flags & kLeft};
    if ((f.flags & kLeft) || f.width <= 0) {
        size_t length = 0;
        return out.PutString(text, spec.precision, length) &&
               PutBack(out, f, static_cast<int64_t>(length));
    }
    return PutField(out, f, text, BoundedLength(text, spec.precision));
}

// Builds the C library format of a floating conversion: '%', the flags set, the width when
// above 0, the precision when given, and the conversion character.
void FloatingFormat(char *format, uint32_t flags, int32_t width, int32_t precision,
                    char conversion) {
    char *p = format;
    *p++ = '%';
    if (flags & kLeft) {
        *p++ = '-';
    }
    if (flags & kPlus) {
        *p++ = '+';
    }
    if (flags & kZeroPad) {
        *p++ = '0';
    }
    if (flags & kSpace) {
        *p++ = ' ';
    }
    if (flags & kAlternate) {
        *p++ = '#';
    }
    if (width > 0) {
        p += std::sprintf(p, "%d", static_cast<int>(width));
    }
    if (precision >= 0) {
        p += std::sprintf(p, ".%d", static_cast<int>(precision));
    }
    *p++ = conversion;
    *p = 0;
}

// 'e', 'E', 'f', 'g', 'G': the C library writes the value under the same flags, width and
// precision; its text is the body of a field without padding of its own. Fields above 128 are
// refused.
template <typename Unit>
bool PutFloating(Output<Unit> &out, const Spec &spec, char conversion, double value) {
    if (spec.width > kMaxFloatingField || spec.precision > kMaxFloatingField) {
        return false;
    }
    char format[32];
    FloatingFormat(format, spec.flags, spec.width, spec.precision, conversion);
    char scratch[kScratchSize];
    const int length = std::snprintf(scratch, sizeof scratch, format, value);
    if (length < 0) {  // GCOVR_EXCL_BR_LINE: printing one double with this format cannot fail
        return false;
    }
    return PutField(out, Field{}, scratch, static_cast<size_t>(length));
}

// "%p": always eight upper-case hexadecimal digits (the low 32 bits of the address), whatever
// the flags, width and precision.
template <typename Unit>
bool PutPointer(Output<Unit> &out, const void *pointer) {
    auto address = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pointer));
    char text[kPointerDigits];
    for (int i = kPointerDigits - 1; i >= 0; --i, address >>= 4) {
        text[i] = kUpperDigits[address & 0xF];
    }
    return PutField(out, Field{}, text, kPointerDigits);
}

// "%lc" in narrow output: the character as UTF-8 in the room left; no width or padding.
bool PutWideChar(Output<char> &out, int32_t wideChar) {
    uint32_t bytes = 0;
    const size_t room = out.Room();
    const auto capacity = static_cast<uint32_t>(room > UINT32_MAX ? UINT32_MAX : room);
    if (CONV_WCharToUTF8(wideChar, out.buf + out.count, capacity, &bytes) != CONV_OK) {
        return false;
    }
    out.count += static_cast<int32_t>(bytes);
    return true;
}

// "%lc" in wide output: the low 16 bits as one single character.
bool PutWideChar(Output<GLIB_WChar> &out, int32_t wideChar) {
    return out.Put(static_cast<GLIB_WChar>(wideChar & 0xFFFF));
}

// "%ls" in narrow output: UTF-8, measured in bytes. Under a precision p, units are taken while
// the running total is below p, so the unit that reaches or passes p is still written whole.
// The encoder gets the room left and fails the call when it does not finish.
bool PutWideString(Output<char> &out, const Spec &spec, const GLIB_WChar *text, const char *) {
    size_t units = 0;
    int64_t total = 0;
    if (spec.precision < 0) {
        for (; text[units] != 0; ++units) {
            total += CONV_WCharToUTF8_BytesNeeded(text[units]);
        }
    } else {
        for (; text[units] != 0 && total < spec.precision; ++units) {
            total += CONV_WCharToUTF8_BytesNeeded(text[units]);
        }
    }
    const Field f{spec.width, spec.flags & kLeft};
    if (!PutFront(out, f, total)) {
        return false;
    }
    uint32_t written = 0;
    const size_t room = out.Room();
    const auto capacity = static_cast<uint32_t>(room > UINT32_MAX ? UINT32_MAX : room);
    const auto maxUnits = static_cast<int32_t>(units > INT32_MAX ? INT32_MAX : units);
    if (CONV_WChar16StrToUTF8(text, maxUnits, out.buf + out.count, capacity, &written) != CONV_OK) {
        return false;
    }
    out.count += static_cast<int32_t>(written);
    return PutBack(out, f, total);
}

// "%ls" in wide output: copied unit for unit. Without a precision the whole string. Under a
// precision the length is counted over the narrow string last printed by "%s" in this call
// (empty before any), a quirk kept for compatibility; a wide string shorter than that gives 0
// units for the rest, as GLIB_wcsncpy fills them. The string is a whole piece.
bool PutWideString(Output<GLIB_WChar> &out, const Spec &spec, const GLIB_WChar *text,
                   const char *narrowString) {
    const size_t length =
        spec.precision < 0 ? GLIB_wcslen(text) : BoundedLength(narrowString, spec.precision);
    const Field f{spec.width, spec.flags & kLeft};
    if (!PutFront(out, f, static_cast<int64_t>(length))) {
        return false;
    }
    const size_t room = out.Room();
    const size_t stored = length > room ? room : length;
    GLIB_wcsncpy(out.buf + out.count, text, stored);
    out.count += static_cast<int32_t>(stored);
    return stored == length && PutBack(out, f, static_cast<int64_t>(length));
}

// 's': fetches the argument, a wide string under "l" and a narrow one otherwise (which the call
// keeps as its narrow-string slot); a null pointer prints "(null)".
template <typename Unit>
bool PutStringArgument(Engine<Unit> &e, const Spec &spec, va_list *args) {
    if (spec.flags & kLong) {
        const GLIB_WChar *text = va_arg(*args, const GLIB_WChar *);
        return PutWideString(e.out, spec, text != nullptr ? text : gGLIB_nullwstring,
                             e.narrowString);
    }
    e.narrowString = va_arg(*args, const char *);
    if (e.narrowString == nullptr) {
        e.narrowString = gGLIB_nullstring;
    }
    return PutNarrowString(e.out, spec, e.narrowString);
}

// Conversion `kind` (character c) under spec: fetches its argument and writes it through its
// emitter. Returns false when the output fills up or c is not a conversion.
template <typename Unit>
bool Convert(Engine<Unit> &e, DigitCells &digits, const Spec &spec, Conversion kind, unsigned c,
             va_list *args) {
    switch (kind) {
        case kSigned:
        case kUnsigned:
        case kOctal:
        case kHex:
            return PutIntegerArgument(e.out, digits, spec, kind, c, args);
        case kChar: {
            if (spec.flags & kLong) {
                return PutWideChar(e.out, va_arg(*args, int));
            }
            // Width and flags do not apply: one literal character. The wide engine
            // sign-extends the byte, so bytes from 0x80 give units from 0xFF80 up; kept as is.
            const auto byte = static_cast<signed char>(va_arg(*args, int) & 0xFF);
            return e.out.Put(static_cast<Unit>(byte));
        }
        case kString:
            return PutStringArgument(e, spec, args);
        case kPointer:
            return PutPointer(e.out, va_arg(*args, void *));
        case kFloating:
            return PutFloating(e.out, spec, static_cast<char>(c), va_arg(*args, double));
        default:
            return false;
    }
}

// The width state: '*' takes the next argument as the width so far, a negative one setting
// left-justify and giving its magnitude; digits multiply the width so far by ten and add
// themselves ("%*5d" gives argument * 10 + 5). Nothing when p is at neither. Returns where the
// width ends.
template <typename Unit>
const Unit *ReadWidth(const Unit *p, Spec &spec, va_list *args) {
    for (;; ++p) {
        const unsigned c = Code(*p);
        if (c == '*') {
            spec.width = va_arg(*args, int);
            if (spec.width < 0) {
                spec.flags |= kLeft;
                spec.width = static_cast<int32_t>(0u - static_cast<uint32_t>(spec.width));
            }
        } else if (c >= '0' && c <= '9') {
            spec.width = AddDigit(spec.width, c - '0');
        } else {
            return p;
        }
    }
}

// The precision state, behind its '.': 0, then digits and '*' as for the width, a negative '*'
// argument meaning no precision (-1). A second '.' is left to the conversion state, which
// refuses it. Returns where the precision ends.
template <typename Unit>
const Unit *ReadPrecision(const Unit *p, Spec &spec, va_list *args) {
    spec.precision = 0;
    for (;; ++p) {
        const unsigned c = Code(*p);
        if (c >= '0' && c <= '9') {
            spec.precision = AddDigit(spec.precision, c - '0');
        } else if (c == '*') {
            spec.precision = va_arg(*args, int);
            if (spec.precision < 0) {
                spec.precision = -1;
            }
        } else {
            return p;
        }
    }
}

// The engine. Reads the format in one loop over its states. A conversion passes through the
// states in order (flags, width, precision, conversion), each taking what it can of the format
// and handing the character that ends it to the next one by falling through; a state whose
// part is absent takes nothing. Returns the count of units written or -1; the output is always
// terminated behind what was written (a size of 0 writes nothing and returns 0). A format that
// ends inside a conversion or an escape ends the output there.
template <typename Unit>
[[gnu::flatten]] int Format(Unit *buf, size_t size, const Unit *format, va_list *args) {
    if (size == 0) {
        return 0;
    }
    Engine<Unit> e{{buf, size, 0}, ""};
    DigitCells digits;
    State state = kText;
    Spec spec;
    const Unit *p = format;
    while (*p != 0) {
        unsigned c = Code(*p);
        // The states after kText are entered only by falling through from it within a pass,
        // and a pass through them ends back in kText or at the end of the format.
        switch (state) {  // GCOVR_EXCL_BR_LINE: a pass begins only in kText or kEscape
            case kEscape: {
                const int value = (c >= '\\' && c <= 'v') ? EscapeValue(c) : -1;
                if (value < 0 || !e.out.Put(static_cast<Unit>(value))) {
                    return e.Fail();
                }
                ++p;
                state = kText;
                break;
            }
            case kText:
                p = e.out.PutLiteralText(p);
                if (p == nullptr) {
                    return e.Fail();
                }
                if (*p != '%') {
                    if (*p == '\\') {
                        state = kEscape;
                        ++p;
                    }
                    break;
                }
                spec = Spec{};
                c = Code(*++p);
                // The most common conversions, "%d", "%i" and "%s" with nothing between '%'
                // and the letter, go to their emitters at once, with the plain spec.
                if (c == 'd' || c == 'i') {
                    ++p;
                    if (!PutIntegerArgument(e.out, digits, Spec{}, kSigned, c, args)) {
                        return e.Fail();
                    }
                    break;
                }
                if (c == 's') {
                    ++p;
                    if (!PutStringArgument(e, Spec{}, args)) {
                        return e.Fail();
                    }
                    break;
                }
                state = kFlags;
                [[fallthrough]];
            case kFlags:
                // Flags may repeat and come in any order; "%%", also behind flags, is a '%'.
                for (uint32_t flag; (flag = FlagOf(c)) != 0; c = Code(*++p)) {
                    spec.flags |= flag;
                }
                if (c == '%') {
                    if (!e.out.Put(Unit('%'))) {
                        return e.Fail();
                    }
                    ++p;
                    state = kText;
                    break;
                }
                state = kWidth;
                [[fallthrough]];
            case kWidth:
                p = ReadWidth(p, spec, args);
                c = Code(*p);
                state = kPrecision;
                [[fallthrough]];
            case kPrecision:
                if (c == '.') {
                    p = ReadPrecision(p + 1, spec, args);
                    c = Code(*p);
                }
                state = kConversion;
                [[fallthrough]];
            case kConversion: {
                Conversion kind = ConversionOf(c);
                for (; kind == kShortModifier || kind == kLongModifier; kind = ConversionOf(c)) {
                    spec.flags |= kind == kShortModifier ? kShort : kLong;
                    c = Code(*++p);
                }
                if (c == 0) {
                    break;
                }
                ++p;
                if (!Convert(e, digits, spec, kind, c, args)) {
                    return e.Fail();
                }
                state = kText;
                break;
            }
        }
    }
    e.out.Terminate();
    return e.out.count;
}
}  // namespace

// The engine reads the arguments through a pointer to the list, so that every step takes them
// from the same place. The variadic functions hand over their own list; the va_list functions
// a copy of the caller's (a va_list parameter cannot be pointed at portably).

// Narrow engine: formats into buf (size + 1 bytes of room); returns the count or -1.
extern "C" int GLIB_vsnprintf(char *buf, size_t size, const char *format, va_list args) noexcept {
    va_list copy;
    va_copy(copy, args);
    const int result = Format(buf, size, format, &copy);
    va_end(copy);
    return result;
}

// GLIB_vsnprintf with variable arguments; returns its result.
extern "C" int GLIB_snprintf(char *buf, size_t size, const char *format, ...) noexcept {
    va_list args;
    va_start(args, format);
    const int result = Format(buf, size, format, &args);
    va_end(args);
    return result;
}

// Wide engine: formats 16-bit units into buf (size + 1 units of room); returns the count or -1.
extern "C" int GLIB_vswprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format,
                              va_list args) noexcept {
    va_list copy;
    va_copy(copy, args);
    const int result = Format(buf, size, format, &copy);
    va_end(copy);
    return result;
}

// GLIB_vswprintf with variable arguments; returns its result.
extern "C" int GLIB_swprintf(GLIB_WChar *buf, size_t size, const GLIB_WChar *format, ...) noexcept {
    va_list args;
    va_start(args, format);
    const int result = Format(buf, size, format, &args);
    va_end(args);
    return result;
}
