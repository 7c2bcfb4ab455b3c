/* SPDX-License-Identifier: MIT */
// Cases of the conversion library's number, decimal, binary-text, UTF-8 and trimming routines
// and of its status messages.
#include <nlssupport/convlib.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "concurrency/reentrancy_cases.h"

namespace concurrency_test {
namespace {

// One conversion into a target filled with 0x7E first: its status and the target's bytes.
template <class T, class... Args>
void Convert(Outcome &o, uint32_t (*convert)(T *, Args...), std::type_identity_t<Args>... args) {
    T target;
    std::memset(&target, 0x7E, sizeof target);
    const uint32_t status = convert(&target, args...);
    o.Num(status).Bytes(&target, sizeof target);
}

std::string Narrowing() {
    static constexpr double kDoubles[] = {0.0,  -2.7,  2147483647.5, 4294967295.0, 1e40,
                                          -0.1, 254.9, -128.5,       65535.0,      3.4e38};
    static constexpr int32_t kInts[] = {0, -1, 127, -129, 255, 40000, -32768, 2147483647};
    static constexpr uint32_t kUints[] = {0u, 127u, 255u, 40000u, 65535u, 2147483648u, 4294967295u};
    Outcome o;
    for (double d : kDoubles) {
        Convert(o, CONV_DoubleToFloat, d);
        Convert(o, CONV_DoubleToInt32, d);
        Convert(o, CONV_DoubleToUInt32, d);
        Convert(o, CONV_DoubleToInt16, d);
        Convert(o, CONV_DoubleToUInt16, d);
        Convert(o, CONV_DoubleToInt8, d);
        Convert(o, CONV_DoubleToUInt8, d);
    }
    for (int32_t v : kInts) {
        Convert(o, CONV_Int32ToDouble, v);
        Convert(o, CONV_Int32ToFloat, v);
        Convert(o, CONV_Int32ToUInt32, v);
        Convert(o, CONV_Int32ToInt16, v);
        Convert(o, CONV_Int32ToUInt16, v);
        Convert(o, CONV_Int32ToInt8, v);
        Convert(o, CONV_Int32ToUInt8, v);
    }
    for (uint32_t v : kUints) {
        Convert(o, CONV_UInt32ToDouble, v);
        Convert(o, CONV_UInt32ToFloat, v);
        Convert(o, CONV_UInt32ToInt32, v);
        Convert(o, CONV_UInt32ToInt16, v);
        Convert(o, CONV_UInt32ToUInt16, v);
        Convert(o, CONV_UInt32ToInt8, v);
        Convert(o, CONV_UInt32ToUInt8, v);
    }
    return o.Take();
}

std::string TextToNumbers() {
    static constexpr const char *kTexts[] = {
        "123",          " -45 ",   "12.50", "1e3", "1E 5",  "abc", "4294967296",
        "-21474836489", "1e-999",  "  7\t", "300", "-0.75", "1,5", "",
        "1.5D2",        "65535.9", "2e9",   ".5",  "5.",    "+ 5", "1e999",
    };
    static constexpr uint32_t kFlags[] = {
        0,
        CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS | CONV_NUM_DECIMAL_POINT |
            CONV_NUM_EXPONENT,
        CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT | CONV_NUM_D_EXPONENT | CONV_NUM_TAB_IS_BLANK |
            CONV_NUM_TRAILING_BLANKS | CONV_NUM_LEADING_BLANKS,
        CONV_NUM_NO_CHECK,
    };
    Outcome o;
    for (const char *text : kTexts) {
        for (uint32_t flags : kFlags) {
            for (char point : {'.', ','}) {
                o.Num(CONV_IsNumber(text, flags, point));
                Convert(o, CONV_StringToInt32, text, flags, point);
                Convert(o, CONV_StringToUInt32, text, flags, point);
                Convert(o, CONV_StringToInt16, text, flags, point);
                Convert(o, CONV_StringToUInt16, text, flags, point);
                Convert(o, CONV_StringToInt8, text, flags, point);
                Convert(o, CONV_StringToUInt8, text, flags, point);
                double d = 0.5;
                float f = 0.5F;
                // errno is the calling thread's own: what a routine leaves in it (0, ERANGE, or
                // the mark when it does not touch it) must not come from another thread.
                errno = EDOM;
                o.Num(CONV_StringToDouble(&d, text, flags, point)).Double(d).Num(errno);
                errno = EDOM;
                o.Num(CONV_StringToFloat(&f, text, flags, point)).Float(f).Num(errno);
            }
        }
    }
    return o.Take();
}

std::string NumbersToText() {
    static constexpr const char *kNumberTexts[] = {"0007",    "000.5",       " -007 ", "+12.5",
                                                   "123.456", "-123456.789", ".25"};
    static constexpr double kDoubles[] = {1.5, -0.00012, 123456.789, 1e300, -2.5e-300, 0.0, 42.0};
    Outcome o;
    for (const char *text : kNumberTexts) {
        for (uint32_t size : {16u, 5u, 2u}) {
            Buffer<17> b;
            uint32_t length = 0x7E7E7E7E;
            o.Num(CONV_FormatNumString(b.data(), text, size, ',', &length)).Num(length);
            b.Record(o);
        }
    }
    for (int32_t v : {0, -2147483647 - 1, 2147483647, -5}) {
        for (uint32_t size : {12u, 3u}) {
            Buffer<13> b;
            o.Num(CONV_Int32ToString(b.data(), v, size));
            b.Record(o);
            Buffer<13> u;
            o.Num(CONV_UInt32ToString(u.data(), static_cast<uint32_t>(v), size));
            u.Record(o);
        }
    }
    for (double d : kDoubles) {
        for (uint32_t style :
             {CONV_DOUBLE_SCIENTIFIC, CONV_DOUBLE_FIXED, CONV_DOUBLE_GENERAL, uint32_t{7}}) {
            for (uint32_t size : {40u, 8u}) {
                Buffer<41> b;
                uint32_t length = 0x7E7E7E7E;
                o.Num(CONV_DoubleToString(b.data(), d, size, style, 2, ',', &length)).Num(length);
                b.Record(o);
            }
        }
    }
    return o.Take();
}

// --- Conversion library: decimal values and binary text ----------------------------------------

std::string Decimals() {
    static constexpr const char *kTexts[] = {"-1.5",  "12",      "123.456", "1e3",
                                             "-0.00", "99999.9", "+1",      "1.2.3"};
    Outcome o;
    for (const char *text : kTexts) {
        for (uint32_t size : {8u, 2u}) {
            std::array<uint8_t, 8> value;
            value.fill(0x7E);
            uint32_t precision = 0x7E7E;
            uint32_t scale = 0x7E7E;
            const uint32_t status =
                CONV_StringToDecimal(value.data(), text, size, &precision, &scale,
                                     CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, '.');
            o.Num(status).Bytes(value.data(), value.size()).Num(precision).Num(scale);
            if (status != CONV_OK && status != CONV_WARN_TRUNCATION) {
                continue;
            }
            for (uint32_t outSize : {32u, 3u}) {
                Buffer<33> b;
                uint32_t length = 0x7E7E7E7E;
                o.Num(CONV_DecimalToString(b.data(), value.data(), outSize, precision, scale, ',',
                                           CONV_DECIMAL_PACKED, &length))
                    .Num(length);
                b.Record(o);
            }
            const uint8_t *v = value.data();
            constexpr uint32_t kPacked = CONV_DECIMAL_PACKED;
            Convert(o, CONV_DecimalToDouble, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToFloat, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToInt32, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToUInt32, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToInt16, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToUInt16, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToInt8, v, precision, scale, kPacked);
            Convert(o, CONV_DecimalToUInt8, v, precision, scale, kPacked);
        }
    }
    // One digit a byte, the sign in the last byte's high nibble: -123.45.
    static constexpr uint8_t kUnpacked[] = {0x01, 0x02, 0x03, 0x04, 0xD5};
    Buffer<16> unpacked;
    uint32_t length = 0;
    o.Num(CONV_DecimalToString(unpacked.data(), kUnpacked, 16, 5, 2, '.', CONV_DECIMAL_UNPACKED,
                               &length))
        .Num(length);
    unpacked.Record(o);
    for (int32_t v : {0, 12, -2147483647 - 1, 99999}) {
        std::array<uint8_t, 8> value;
        value.fill(0x7E);
        uint32_t precision = 0;
        uint32_t scale = 0;
        o.Num(CONV_Int32ToDecimal(value.data(), v, 8, &precision, &scale));
        o.Bytes(value.data(), value.size()).Num(precision).Num(scale);
        value.fill(0x7E);
        o.Num(CONV_UInt32ToDecimal(value.data(), static_cast<uint32_t>(v), 8, &precision, &scale));
        o.Bytes(value.data(), value.size()).Num(precision).Num(scale);
    }
    for (double d : {1.25, -1e-5, 1e30, 123456.5}) {
        std::array<uint8_t, 24> value;
        value.fill(0x7E);
        uint32_t precision = 0;
        uint32_t scale = 0;
        o.Num(CONV_DoubleToDecimal(value.data(), d, static_cast<uint32_t>(value.size()), &precision,
                                   &scale));
        o.Bytes(value.data(), value.size()).Num(precision).Num(scale);
    }
    return o.Take();
}

std::string SelfDescribingDecimals() {
    Outcome o;
    for (const char *text : {"-123.45", "0.05", "100", "0", "12x"}) {
        std::array<uint8_t, 16> value;
        value.fill(0x7E);
        const uint32_t status = CONV_StringToQLXBCD(value.data(), text);
        o.Num(status).Bytes(value.data(), value.size());
        if (status == CONV_OK) {
            Buffer<32> b;
            o.Num(CONV_QLXBCDToString(b.data(), value.data()));
            b.Record(o);
        }
    }
    return o.Take();
}

std::string BinaryText() {
    static constexpr uint8_t kBytes[] = {0xDE, 0xAD, 0xBE, 0xEF, 0x00, 0x7F};
    Outcome o;
    for (const char *text : {"0A1BFF", "0A1", "0a", "", "00112233445566778899"}) {
        std::array<uint8_t, 8> out;
        out.fill(0x7E);
        uint32_t count = 4;
        o.Num(CONV_StringToBinary(out.data(), text, &count)).Num(count);
        o.Bytes(out.data(), out.size());
    }
    for (uint32_t size : {13u, 5u, 4u, 1u, 0u}) {
        Buffer<16> b;
        o.Num(CONV_BinaryToString(b.data(), kBytes, size, sizeof kBytes));
        b.Record(o);
    }
    return o.Take();
}

// Source and target in the same buffer: the routines read from a temporary copy that they
// allocate, so each thread allocates and releases while the others do the same.
std::string BinaryTextInPlace() {
    Outcome o;
    char text[] = "0A1BFF3C";
    uint32_t count = 4;
    o.Num(CONV_StringToBinary(reinterpret_cast<uint8_t *>(text), text, &count)).Num(count);
    o.Bytes(text, sizeof text);
    char bytes[16] = {'\x12', '\x34', '\xAB'};
    std::memset(bytes + 3, kFill, sizeof bytes - 3);
    o.Num(CONV_BinaryToString(bytes, reinterpret_cast<const uint8_t *>(bytes), sizeof bytes, 3));
    o.Bytes(bytes, sizeof bytes);
    return o.Take();
}

// --- Conversion library: UTF-8 and trimming ------------------------------------------------------

std::string Utf8Encoders() {
    static constexpr int32_t kCodePoints[] = {0x41,     0xE9,      0x20AC,     0x1F600,
                                              0x200000, 0x4000000, 0x7FFFFFFF, -1};
    static constexpr int32_t kText[] = {0x48, 0xE9, 0x20AC, 0x1F600, 0};
    Outcome o;
    for (int32_t cp : kCodePoints) {
        for (uint32_t capacity : {8u, 2u}) {
            Buffer<8> b;
            uint32_t count = 0x7E7E;
            o.Num(CONV_WCharToUTF8(cp, b.data(), capacity, &count)).Num(count);
            b.Record(o);
        }
        o.Num(CONV_WCharToUTF8_BytesNeeded(cp));
    }
    o.Num(CONV_WCharStrToUTF8_BytesNeeded(kText, -1))
        .Num(CONV_WCharStrToUTF8_BytesNeeded(kText, 2));
    for (uint32_t capacity : {16u, 5u}) {
        Buffer<16> b;
        uint32_t written = 0x7E7E;
        o.Num(CONV_WCharStrToUTF8(kText, -1, b.data(), capacity, &written)).Num(written);
        b.Record(o);
        Buffer<16> w;
        written = 0x7E7E;
        o.Num(CONV_WChar16StrToUTF8(kWideText, -1, w.data(), capacity, &written)).Num(written);
        w.Record(o);
    }
    return o.Take();
}

std::string Trimming() {
    static constexpr char kPadded[] = "text with end   ";
    static constexpr char kUtf8[] = "\xC3\xA9t\xC3\xA9 \xE2\x82\xAC\xF0\x9F\x98\x80  ";
    Outcome o;
    const int32_t padded = static_cast<int32_t>(sizeof kPadded - 1);
    const int32_t utf8 = static_cast<int32_t>(sizeof kUtf8 - 1);
    o.Num(CONV_GetTrimmedLength(kPadded, padded)).Num(CONV_GetTrimmedLength(kPadded, 0));
    o.Num(CONV_GetTrimmedLengthUTF8Blanks(kUtf8, utf8));
    for (int32_t chars : {1, 3, 5, 7, 100}) {
        o.Num(CONV_GetTrimmedLengthUTF8Chars(kUtf8, utf8, chars));
    }
    char counted[sizeof kPadded + 1];
    std::memcpy(counted, kPadded, sizeof kPadded);
    counted[sizeof kPadded] = kFill;
    o.Num(CONV_TrimWithStrlen(counted, padded)).Bytes(counted, sizeof counted);
    for (uint32_t flags : {CONV_TRIM_LEADING | CONV_TRIM_TRAILING, CONV_TRIM_TRAILING,
                           CONV_TRIM_LEADING | CONV_TRIM_TAB_IS_BLANK | CONV_TRIM_LF_IS_BLANK}) {
        char text[] = "\t  both ends \n ";
        CONV_Trim(text, flags);
        o.Bytes(text, sizeof text);
        char utf8Text[] = "  \xC3\xA9t\xC3\xA9\t ";
        CONV_TrimUTF8(utf8Text, flags);
        o.Bytes(utf8Text, sizeof utf8Text);
    }
    return o.Take();
}

std::string ErrorMessages() {
    Outcome o;
    for (uint32_t status = 0; status <= 27; ++status) {
        const char *message = nullptr;
        const char *sqlstate = nullptr;
        o.Num(CONV_ErrorMessage(status, &message, &sqlstate)).Text(message).Text(sqlstate);
    }
    return o.Take();
}

constexpr ReentrancyCase kCases[] = {
    {"numeric narrowing", Narrowing},
    {"number text to numbers", TextToNumbers},
    {"numbers to text", NumbersToText},
    {"decimal values", Decimals},
    {"self-describing decimal values", SelfDescribingDecimals},
    {"binary text", BinaryText},
    {"binary text in place", BinaryTextInPlace},
    {"UTF-8 encoders", Utf8Encoders},
    {"trimming", Trimming},
    {"CONV_ErrorMessage", ErrorMessages},
};

}  // namespace

std::span<const ReentrancyCase> NumberCases() {
    return kCases;
}

}  // namespace concurrency_test
