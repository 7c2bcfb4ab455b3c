// SPDX-License-Identifier: MIT
// UTF-8 encoding of wide characters (32-bit code points and 16-bit units) into caller buffers.
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#include <tmmintrin.h>
#endif

#include <nlssupport/convlib.h>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     utf8.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Continuation byte of six bits of the code point.
constexpr char Continuation(int32_t bits) noexcept {
    return static_cast<char>((bits & 0x3F) | 0x80);
}

// Encodes the characters of a wide string of unit type Unit, each unit one code point, until a
// 0 unit or maxUnits units; the count of bytes written covers the complete characters only.
template <typename Unit>
uint32_t EncodeString(const Unit *text, int32_t maxUnits, char *out, uint32_t capacity,
                      uint32_t *written) noexcept {
    *written = 0;
    for (int32_t i = 0; i != maxUnits && text[i] != 0; ++i) {
        uint32_t bytes = 0;
        const uint32_t status = CONV_WCharToUTF8(static_cast<int32_t>(text[i]), out + *written,
                                                 capacity - *written, &bytes);
        if (status != CONV_OK) {
            return status;
        }
        *written += bytes;
    }
    return CONV_OK;
}

// The 16-bit string encoder works in two passes: it first finds how many units it has to
// encode (up to the terminator or the maximum), then encodes that many units, in stretches for
// which the room left holds three bytes per unit (the most a 16-bit unit takes), so that no
// unit of a stretch needs its own room test. Knowing the count first lets the encoder read the
// units of a stretch in blocks, and lets a block write a few bytes beyond its last character
// that the characters behind it then overwrite: the bytes are only ever final once every unit
// of the stretch is written, and they are then exactly those of the unit-by-unit encoder.

// A unit of 0x80 and above takes two bytes below 0x800 and three from there on.
inline char *EncodeWideUnit(uint32_t unit, char *out) noexcept {
    if (unit < 0x80) {
        out[0] = static_cast<char>(unit);
        return out + 1;
    }
    if (unit < 0x800) {
        out[0] = static_cast<char>((unit >> 6) | 0xC0);
        out[1] = Continuation(static_cast<int32_t>(unit));
        return out + 2;
    }
    out[0] = static_cast<char>((unit >> 12) | 0xE0);
    out[1] = Continuation(static_cast<int32_t>(unit >> 6));
    out[2] = Continuation(static_cast<int32_t>(unit));
    return out + 3;
}

// The number of units of text before its terminating 0 unit, at most limit. Unit by unit: the
// string's length is not known, so no unit behind the terminator may be read. While eight or
// more units are left before the limit, the eight are tested one after the other without a
// limit test between them: the loads still happen in order, each only once the units before it
// were found to be non-zero, but the loop's bookkeeping is paid once per eight.
size_t CountUnits(const uint16_t *text, size_t limit) noexcept {
    size_t n = 0;
    while (limit - n >= 8) {
        for (int k = 0; k < 8; ++k) {
            if (text[n] == 0) {
                return n;
            }
            ++n;
        }
    }
    while (n != limit && text[n] != 0) {
        ++n;
    }
    return n;
}

#if defined(__SSE2__)

// Lanes of all ones for the units of `unit` below 0x80.
inline __m128i AsciiLanes(__m128i unit) noexcept {
    return _mm_cmpeq_epi16(_mm_and_si128(unit, _mm_set1_epi16(static_cast<short>(0xFF80))),
                           _mm_setzero_si128());
}

// The low eight bytes of v: moved to a 64-bit register, or stored where there is none.
inline uint64_t Low64(__m128i v) noexcept {
#if defined(__x86_64__)
    return static_cast<uint64_t>(_mm_cvtsi128_si64(v));
#else
    uint64_t low;
    _mm_storel_epi64(reinterpret_cast<__m128i *>(&low), v);
    return low;
#endif
}

// The UTF-8 bytes of eight units (`ascii` from AsciiLanes), computed side by side: for each unit
// a 4-byte word holding its first, second and third byte (as many as it takes) and a 0, the
// words of units 0-3 in `low` and of units 4-7 in `high`, and the units' lengths, one byte each
// in unit order, in `lengths`.
struct BlockWords {
    __m128i low;
    __m128i high;
    uint64_t lengths;
};

[[gnu::always_inline]] inline BlockWords UnitWords(__m128i unit, __m128i ascii) noexcept {
    const __m128i below800 = _mm_cmpeq_epi16(
        _mm_and_si128(unit, _mm_set1_epi16(static_cast<short>(0xF800))), _mm_setzero_si128());
    const __m128i shifted6 = _mm_srli_epi16(unit, 6);
    const __m128i mark = _mm_set1_epi16(0x80);
    const __m128i sixBits = _mm_set1_epi16(0x3F);
    // Continuation bytes of bits 0-5 and of bits 6-11.
    const __m128i last = _mm_or_si128(_mm_and_si128(unit, sixBits), mark);
    const __m128i middle = _mm_or_si128(_mm_and_si128(shifted6, sixBits), mark);
    // First bytes of the two- and three-byte forms.
    const __m128i lead2 = _mm_or_si128(shifted6, _mm_set1_epi16(0xC0));
    const __m128i lead3 = _mm_or_si128(_mm_srli_epi16(unit, 12), _mm_set1_epi16(0xE0));
    const __m128i lead23 =
        _mm_or_si128(_mm_and_si128(below800, lead2), _mm_andnot_si128(below800, lead3));
    const __m128i lead = _mm_or_si128(_mm_and_si128(ascii, unit), _mm_andnot_si128(ascii, lead23));
    const __m128i second =
        _mm_or_si128(_mm_and_si128(below800, last), _mm_andnot_si128(below800, middle));
    // The words: first and second byte in the low half of each lane, the third above.
    const __m128i firstTwo = _mm_or_si128(lead, _mm_slli_epi16(second, 8));
    // Lengths 3 - (below 0x80) - (below 0x800), the masks being -1.
    const __m128i length = _mm_add_epi16(_mm_set1_epi16(3), _mm_add_epi16(ascii, below800));
    return {_mm_unpacklo_epi16(firstTwo, last), _mm_unpackhi_epi16(firstTwo, last),
            Low64(_mm_packus_epi16(length, length))};
}

// Loads the eight units at p. When all are ASCII, narrows them into *out, moves *out past them
// and returns true; otherwise stores their words (UnitWords) in *words and returns false.
[[gnu::always_inline]] inline bool NarrowAsciiBlock(const uint16_t *p, char **out,
                                                    BlockWords *words) noexcept {
    const __m128i unit = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p));
    const __m128i ascii = AsciiLanes(unit);
    if (_mm_movemask_epi8(ascii) == 0xFFFF) {
        _mm_storel_epi64(reinterpret_cast<__m128i *>(*out), _mm_packus_epi16(unit, unit));
        *out += 8;
        return true;
    }
    *words = UnitWords(unit, ascii);
    return false;
}

// Encodes count units, none of them 0, into out, which has room for three bytes per unit, and
// returns the end of what was written. Eight units at a time while at least three more follow
// them: a block of ASCII is narrowed in one step; any other block gets its words (UnitWords),
// stored one behind the other, each overwriting the unused bytes of the one before. The last
// word's unused bytes are overwritten by the (at least three) units that follow the block.
char *EncodeUnits(const uint16_t *p, size_t count, char *out) noexcept {
    const uint16_t *const end = p + count;
    while (end - p >= 11) {
        BlockWords w;
        if (NarrowAsciiBlock(p, &out, &w)) {
            p += 8;
            continue;
        }
        alignas(16) uint32_t words[8];
        _mm_store_si128(reinterpret_cast<__m128i *>(words), w.low);
        _mm_store_si128(reinterpret_cast<__m128i *>(words + 4), w.high);
        // Each word's place is the sum of the lengths in front of it, all eight sums taken at
        // once by one multiplication (no sum exceeds 24, so no byte carries into the next).
        const uint64_t places = w.lengths * 0x0101010101010100u;
        for (int k = 0; k < 8; ++k) {
            std::memcpy(out + ((places >> (8 * k)) & 0xFF), &words[k], sizeof words[k]);
        }
        out += (w.lengths * 0x0101010101010101u) >> 56;
        p += 8;
    }
    while (p != end) {
        out = EncodeWideUnit(*p++, out);
    }
    return out;
}

#if defined(__x86_64__)

// Byte shuffles that pack four words of UnitWords into the bytes of their characters, one after
// the other: entry d0 + 3 d1 + 9 d2 + 27 d3 for the lengths dk + 1 of the four units, with the
// number of bytes packed. Mask bytes behind them select nothing (0x80 gives a 0 byte).
struct PackMasks {
    uint8_t mask[81][16];
    uint8_t total[81];
    constexpr PackMasks() : mask{}, total{} {
        for (int index = 0; index < 81; ++index) {
            int place = 0;
            for (int k = 0, rest = index; k < 4; ++k, rest /= 3) {
                for (int b = 0; b <= rest % 3; ++b) {
                    mask[index][place++] = static_cast<uint8_t>(4 * k + b);
                }
            }
            total[index] = static_cast<uint8_t>(place);
            while (place < 16) {
                mask[index][place++] = 0x80;
            }
        }
    }
};
constexpr PackMasks kPackMasks{};

// The PackMasks entry of four lengths 1..3 held one byte each in the low bytes of lengths: the
// multiplication sums d0 + 3 d1 + 9 d2 + 27 d3 into the top byte (no lower byte exceeds 78, so
// nothing carries into it).
constexpr uint32_t PackIndex(uint32_t lengths) noexcept {
    return ((lengths - 0x01010101u) * 0x0103091Bu) >> 24;
}

// As EncodeUnits, on processors with SSSE3 (tested at run time): the words of a block are
// packed by two byte shuffles and stored sixteen bytes at a time. A store may leave up to twelve
// bytes behind the block's last character, so a block is taken only while at least twelve more
// units follow it, whose bytes overwrite them; the units left go to EncodeUnits.
[[gnu::target("ssse3")]] char *EncodeUnitsShuffled(const uint16_t *p, size_t count,
                                                   char *out) noexcept {
    const uint16_t *const end = p + count;
    while (end - p >= 20) {
        BlockWords w;
        if (NarrowAsciiBlock(p, &out, &w)) {
            p += 8;
            continue;
        }
        const uint32_t low = PackIndex(static_cast<uint32_t>(w.lengths));
        const uint32_t high = PackIndex(static_cast<uint32_t>(w.lengths >> 32));
        const __m128i lowMask =
            _mm_loadu_si128(reinterpret_cast<const __m128i *>(kPackMasks.mask[low]));
        const __m128i highMask =
            _mm_loadu_si128(reinterpret_cast<const __m128i *>(kPackMasks.mask[high]));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_shuffle_epi8(w.low, lowMask));
        out += kPackMasks.total[low];
        _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_shuffle_epi8(w.high, highMask));
        out += kPackMasks.total[high];
        p += 8;
    }
    return EncodeUnits(p, static_cast<size_t>(end - p), out);
}

// The encoder for this processor.
char *EncodeUnitsBest(const uint16_t *p, size_t count, char *out) noexcept {
    if (__builtin_cpu_supports("ssse3")) {
        return EncodeUnitsShuffled(p, count, out);
    }
    return EncodeUnits(p, count, out);
}

#else

char *EncodeUnitsBest(const uint16_t *p, size_t count, char *out) noexcept {
    return EncodeUnits(p, count, out);
}

#endif

#else  // no SSE2: four units at a time through a 64-bit word

// Whether the four 16-bit units held in word are all ASCII: no unit has a bit above the low
// seven.
constexpr bool FourAsciiUnits(uint64_t word) noexcept {
    return (word & 0xFF80FF80FF80FF80u) == 0;
}

// Whether one of the four 16-bit units held in word is 0: subtracting 1 from a unit borrows
// through its top bit only when the unit is 0 (or when a lower unit borrowed, which needs a 0
// below it), and a unit with its top bit already set is not counted.
constexpr bool HasZeroUnit(uint64_t word) noexcept {
    return ((word - 0x0001000100010001u) & ~word & 0x8000800080008000u) != 0;
}

// The unit at index k (in memory order) of four units loaded into word.
constexpr char UnitByte(uint64_t word, int k) noexcept {
    const int shift = std::endian::native == std::endian::little ? 16 * k : 48 - 16 * k;
    return static_cast<char>(word >> shift);
}

// Encodes count units, none of them 0, into out, which has room for three bytes per unit, and
// returns the end of what was written. Runs of ASCII go four units at a time.
char *EncodeUnits(const uint16_t *p, size_t count, char *out) noexcept {
    const uint16_t *const end = p + count;
    while (end - p >= 4) {
        uint64_t word;
        std::memcpy(&word, p, sizeof word);
        if (FourAsciiUnits(word)) {
            out[0] = UnitByte(word, 0);
            out[1] = UnitByte(word, 1);
            out[2] = UnitByte(word, 2);
            out[3] = UnitByte(word, 3);
            out += 4;
            p += 4;
            continue;
        }
        for (int k = 0; k < 4; ++k) {
            out = EncodeWideUnit(*p++, out);
        }
    }
    while (p != end) {
        out = EncodeWideUnit(*p++, out);
    }
    return out;
}

// The encoder of this target.
char *EncodeUnitsBest(const uint16_t *p, size_t count, char *out) noexcept {
    return EncodeUnits(p, count, out);
}

#endif
}  // namespace

// Returns the bytes (1 to 6) that CONV_WCharToUTF8 writes for codePoint; every negative value
// takes one byte.
extern "C" uint32_t CONV_WCharToUTF8_BytesNeeded(int32_t codePoint) noexcept {
    if (codePoint < 0x80) {
        return 1;
    }
    if (codePoint < 0x800) {
        return 2;
    }
    if (codePoint < 0x10000) {
        return 3;
    }
    if (codePoint < 0x200000) {
        return 4;
    }
    if (codePoint < 0x4000000) {
        return 5;
    }
    return 6;
}

// Encodes codePoint as UTF-8 into out (capacity bytes), without a NUL. Values are not checked
// for being Unicode scalar values: surrogates and values up to 0x7FFFFFFF follow the same bit
// rule, negative values are written as their low 8 bits. *count always receives the bytes the
// character needs. Returns CONV_OK, or CONV_ERR_TARGET_TOO_SMALL with nothing written.
extern "C" uint32_t CONV_WCharToUTF8(int32_t codePoint, char *out, uint32_t capacity,
                                     uint32_t *count) noexcept {
    const uint32_t bytes = CONV_WCharToUTF8_BytesNeeded(codePoint);
    *count = bytes;
    if (capacity < bytes) {
        return CONV_ERR_TARGET_TOO_SMALL;
    }
    const int32_t cp = codePoint;
    switch (bytes) {
        case 1:
            out[0] = static_cast<char>(cp & 0xFF);
            break;
        case 2:
            out[0] = static_cast<char>((cp >> 6) | 0xC0);
            out[1] = Continuation(cp);
            break;
        case 3:
            out[0] = static_cast<char>((cp >> 12) | 0xE0);
            out[1] = Continuation(cp >> 6);
            out[2] = Continuation(cp);
            break;
        case 4:
            out[0] = static_cast<char>((cp >> 18) | 0xF0);
            out[1] = Continuation(cp >> 12);
            out[2] = Continuation(cp >> 6);
            out[3] = Continuation(cp);
            break;
        case 5:
            out[0] = static_cast<char>((cp >> 24) | 0xF8);
            out[1] = Continuation(cp >> 18);
            out[2] = Continuation(cp >> 12);
            out[3] = Continuation(cp >> 6);
            out[4] = Continuation(cp);
            break;
        default:
            out[0] = static_cast<char>((cp >> 30) | 0xFC);
            // Kept for compatibility: the second byte of the 6-byte form carries the mark 0xF8
            // instead of the continuation mark 0x80, as readers of this encoder expect.
            out[1] = static_cast<char>(((cp >> 24) & 0x3F) | 0xF8);
            out[2] = Continuation(cp >> 18);
            out[3] = Continuation(cp >> 12);
            out[4] = Continuation(cp >> 6);
            out[5] = Continuation(cp);
            break;
    }
    return CONV_OK;
}

// Returns the bytes needed by the characters of text before its first 0 or its first maxChars
// characters (0 when maxChars is 0 or text is empty; a negative maxChars sets no limit).
extern "C" uint32_t CONV_WCharStrToUTF8_BytesNeeded(const int32_t *text,
                                                    int32_t maxChars) noexcept {
    uint32_t total = 0;
    for (int32_t i = 0; i != maxChars && text[i] != 0; ++i) {
        total += CONV_WCharToUTF8_BytesNeeded(text[i]);
    }
    return total;
}

// Encodes the characters of text (until its first 0 or maxChars characters; a negative maxChars
// sets no limit) into out (capacity bytes), without a terminator. On CONV_ERR_TARGET_TOO_SMALL
// the buffer holds the complete characters before the one that did not fit; *written always
// gives the bytes of the complete characters.
extern "C" uint32_t CONV_WCharStrToUTF8(const int32_t *text, int32_t maxChars, char *out,
                                        uint32_t capacity, uint32_t *written) noexcept {
    return EncodeString(text, maxChars, out, capacity, written);
}

// The same for 16-bit units, each zero-extended and encoded as a code point of its own:
// surrogate pairs are written as two 3-byte sequences. The units are counted first (no more than
// capacity + 1 of them can be reached, each taking a byte at least); then, while the room left
// holds three bytes per unit for a stretch of them, that stretch is encoded without testing the
// room unit by unit. The last units before the end of the room go one by one through the checked
// encoder, so a unit that does not fit fails exactly where it would.
extern "C" uint32_t CONV_WChar16StrToUTF8(const uint16_t *text, int32_t maxUnits, char *out,
                                          uint32_t capacity, uint32_t *written) noexcept {
    *written = 0;
    size_t limit = static_cast<size_t>(capacity) + 1;
    // GCOVR_EXCL_BR_START: capacity + 1 wraps to 0 only where size_t has 32 bits, and coverage
    // is measured on the 64-bit build.
    if (limit == 0) {
        limit = SIZE_MAX;  // the largest capacity, where size_t has 32 bits
    }
    // GCOVR_EXCL_BR_STOP
    if (maxUnits >= 0 && static_cast<size_t>(maxUnits) < limit) {
        limit = static_cast<size_t>(maxUnits);
    }
    const size_t units = CountUnits(text, limit);
    const uint16_t *p = text;
    const uint16_t *const end = text + units;
    char *o = out;
    while (p != end) {
        const uint32_t room = capacity - static_cast<uint32_t>(o - out);
        size_t stretch = room / 3;
        if (stretch == 0) {
            uint32_t bytes = 0;
            const uint32_t status = CONV_WCharToUTF8(*p, o, room, &bytes);
            if (status != CONV_OK) {
                *written = static_cast<uint32_t>(o - out);
                return status;
            }
            o += bytes;
            ++p;
            continue;
        }
        if (stretch > static_cast<size_t>(end - p)) {
            stretch = static_cast<size_t>(end - p);
        }
        o = EncodeUnitsBest(p, stretch, o);
        p += stretch;
    }
    *written = static_cast<uint32_t>(o - out);
    return CONV_OK;
}
