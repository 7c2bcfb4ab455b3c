/* SPDX-License-Identifier: MIT */
// The self-describing packed decimal: precision byte, signed scale byte, packed digits and sign.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

constexpr uint8_t kSentinel = 0xA5;
constexpr std::size_t kBuffer = 16;

using Bytes = std::vector<uint8_t>;

struct Encoded {
    uint32_t status;
    Bytes bytes;  // the whole sentinel-filled buffer
};

Encoded Encode(const char *text, std::size_t buffer = kBuffer) {
    Encoded r{0, Bytes(buffer, kSentinel)};
    r.status = CONV_StringToQLXBCD(r.bytes.data(), text);
    return r;
}

Bytes Expect(const Bytes &written, std::size_t buffer = kBuffer) {
    Bytes b = written;
    b.resize(buffer, kSentinel);
    return b;
}

struct Decoded {
    uint32_t status;
    std::string text;
    std::vector<char> buffer;
};

Decoded Decode(const Bytes &value) {
    Decoded r{0, "", std::vector<char>(64, static_cast<char>(kSentinel))};
    r.status = CONV_QLXBCDToString(r.buffer.data(), value.data());
    if (std::memchr(r.buffer.data(), '\0', r.buffer.size()) != nullptr) {
        r.text = r.buffer.data();
    }
    return r;
}

TEST(StringToQLXBCD, OddDigitCount) {
    Encoded r = Encode("123");
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({3, 0, 0x12, 0x3C}));
}

TEST(StringToQLXBCD, EvenDigitCountHasAPadThatIsNotCounted) {
    EXPECT_EQ(Encode("12").bytes, Expect({2, 0, 0x01, 0x2C}));
    EXPECT_EQ(Encode("-1.5").bytes, Expect({2, 1, 0x01, 0x5D}));
}

TEST(StringToQLXBCD, ZerosBetweenPointAndFirstDigitAreLeftToTheScale) {
    EXPECT_EQ(Encode("0.05").bytes, Expect({1, 2, 0x5C}));
    EXPECT_EQ(Encode(".05").bytes, Expect({1, 2, 0x5C}));
    EXPECT_EQ(Encode("-.5").bytes, Expect({1, 1, 0x5D}));
    EXPECT_EQ(Encode("+0.0123").bytes, Expect({3, 4, 0x12, 0x3C}));
    EXPECT_EQ(Encode("0000.05").bytes, Expect({1, 2, 0x5C}));
    EXPECT_EQ(Encode("0.012").bytes, Expect({2, 3, 0x01, 0x2C}));
}

TEST(StringToQLXBCD, LeadingZeroBytesAreSkipped) {
    EXPECT_EQ(Encode("007").bytes, Expect({1, 0, 0x7C}));
    EXPECT_EQ(Encode("0012").bytes, Expect({2, 0, 0x01, 0x2C}));
    EXPECT_EQ(Encode("000123").bytes, Expect({3, 0, 0x12, 0x3C}));
    EXPECT_EQ(Encode("01.5").bytes, Expect({2, 1, 0x01, 0x5C}));
}

TEST(StringToQLXBCD, TrailingIntegerZerosMakeTheScaleNegative) {
    Encoded r = Encode("100");
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({1, 0xFE, 0x1C}));
    EXPECT_EQ(Encode("120").bytes, Expect({2, 0xFF, 0x01, 0x2C}));
    EXPECT_EQ(Encode("100.").bytes, Expect({1, 0xFE, 0x1C}));
    EXPECT_EQ(Encode("10.0").bytes, Expect({1, 0xFF, 0x1C}));
}

TEST(StringToQLXBCD, TrailingFractionZerosVanish) {
    EXPECT_EQ(Encode("1.50").bytes, Expect({2, 1, 0x01, 0x5C}));
    EXPECT_EQ(Encode("10.5").bytes, Expect({3, 1, 0x10, 0x5C}));
    EXPECT_EQ(Encode("12.05").bytes, Expect({4, 2, 0x01, 0x20, 0x5C}));
}

TEST(StringToQLXBCD, CommaIsAPointToo) {
    EXPECT_EQ(Encode("-1,5").bytes, Expect({2, 1, 0x01, 0x5D}));
}

TEST(StringToQLXBCD, ValueWithoutNonZeroDigitIsPositiveZero) {
    for (const char *text : {"", "0", "0.00", "-0", "-0.0", "+000", ".", "-"}) {
        Encoded r = Encode(text);
        EXPECT_EQ(r.status, CONV_OK) << text;
        EXPECT_EQ(r.bytes, Expect({1, 0, 0x0C})) << text;
    }
}

TEST(StringToQLXBCD, BadTextIsNoNumberAndWritesNothing) {
    for (const char *text :
         {"1.2.3", "1-", "1,2.3", "1+", "12a", " 12", "12 ", "--1", "0x1", "1e5"}) {
        Encoded r = Encode(text);
        EXPECT_EQ(r.status, CONV_ERR_NOT_A_NUMBER) << text;
        EXPECT_EQ(r.bytes, Expect({})) << text;
    }
}

TEST(StringToQLXBCD, LimitsOfTheHeaderBytes) {
    const std::string digits255(255, '7');
    Encoded r = Encode(digits255.c_str(), 140);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes[0], 255);
    EXPECT_EQ(r.bytes[1], 0);
    EXPECT_EQ(r.bytes[2], 0x77);
    EXPECT_EQ(r.bytes[129], 0x7C);
    EXPECT_EQ(r.bytes[130], kSentinel);
    EXPECT_EQ(Encode(std::string(256, '7').c_str(), 140).status, CONV_ERR_NOT_A_NUMBER);
    // Scale -127 .. 127 and -128 fit the signed byte; beyond does not.
    EXPECT_EQ(Encode(("1" + std::string(128, '0')).c_str()).bytes, Expect({1, 0x80, 0x1C}));
    EXPECT_EQ(Encode(("1" + std::string(129, '0')).c_str()).status, CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(Encode(("." + std::string(126, '0') + "1").c_str()).bytes, Expect({1, 127, 0x1C}));
    EXPECT_EQ(Encode(("." + std::string(127, '0') + "1").c_str()).status, CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(Encode(std::string(1000, '0').c_str()).status, CONV_ERR_NOT_A_NUMBER);
}

// The longest text, every character a significant digit: all 999 digits are read (into work
// space of their own) before the count is found to be over 255.
TEST(StringToQLXBCD, LongestTextOfSignificantDigitsIsNoNumber) {
    for (const std::string &text : {std::string(999, '9'), "-" + std::string(998, '1')}) {
        const Encoded r = Encode(text.c_str(), 140);
        EXPECT_EQ(r.status, CONV_ERR_NOT_A_NUMBER);
        EXPECT_EQ(r.bytes, Bytes(140, kSentinel));  // nothing written on failure
    }
}

TEST(QLXBCDToString, Examples) {
    EXPECT_EQ(Decode({3, 1, 0x12, 0x3C}).text, "12.3");
    EXPECT_EQ(Decode({2, 1, 0x01, 0x5D}).text, "-1.5");
    EXPECT_EQ(Decode({1, 2, 0x5C}).text, "0.05");
    EXPECT_EQ(Decode({1, 0xFE, 0x1C}).text, "100");
    EXPECT_EQ(Decode({1, 0, 0x0C}).text, "0");
}

TEST(QLXBCDToString, PointAfterEveryDigitPosition) {
    EXPECT_EQ(Decode({5, 1, 0x12, 0x34, 0x5C}).text, "1234.5");
    EXPECT_EQ(Decode({5, 2, 0x12, 0x34, 0x5C}).text, "123.45");
    EXPECT_EQ(Decode({5, 3, 0x12, 0x34, 0x5C}).text, "12.345");
    EXPECT_EQ(Decode({5, 4, 0x12, 0x34, 0x5C}).text, "1.2345");
    EXPECT_EQ(Decode({5, 5, 0x12, 0x34, 0x5C}).text, "0.12345");
    EXPECT_EQ(Decode({4, 1, 0x01, 0x23, 0x4D}).text, "-123.4");
    EXPECT_EQ(Decode({4, 2, 0x01, 0x23, 0x4D}).text, "-12.34");
    EXPECT_EQ(Decode({4, 3, 0x01, 0x23, 0x4D}).text, "-1.234");
    EXPECT_EQ(Decode({4, 4, 0x01, 0x23, 0x4D}).text, "-0.1234");
    EXPECT_EQ(Decode({4, 6, 0x01, 0x23, 0x4D}).text, "-0.001234");
    EXPECT_EQ(Decode({4, 0xFD, 0x01, 0x23, 0x4D}).text, "-1234000");
}

TEST(QLXBCDToString, TextEndsWithTheNulAndNothingAfterIt) {
    Decoded r = Decode({3, 1, 0x12, 0x3C});
    EXPECT_EQ(r.status, CONV_OK);
    ASSERT_EQ(r.buffer[4], '\0');
    for (std::size_t k = 5; k < r.buffer.size(); ++k) {
        EXPECT_EQ(r.buffer[k], static_cast<char>(kSentinel)) << k;
    }
}

TEST(QLXBCDToString, UnknownSignNibbleIsNoNumber) {
    for (uint8_t sign : {0x0, 0x9, 0xA, 0xB, 0xE, 0xF}) {
        Decoded r = Decode({1, 0, static_cast<uint8_t>(0x50 | sign)});
        EXPECT_EQ(r.status, CONV_ERR_NOT_A_NUMBER);
        EXPECT_EQ(r.buffer[0], static_cast<char>(kSentinel));
    }
}

TEST(QLXBCDToString, NegativeZeroWritesOnlyItsSign) {
    // Nothing but the sign is written for a zero that carries the minus nibble; such a value is
    // never written by CONV_StringToQLXBCD.
    EXPECT_EQ(Decode({1, 0, 0x0D}).text, "-");
}

TEST(QLXBCDRoundTrip, CanonicalTextsComeBackUnchanged) {
    for (const char *text : {"0", "1", "-1", "12.3", "-0.05", "100", "0.5", "-7000", "0.000001",
                             "123456789012", "-1200.034", "99.99", "10.01"}) {
        Encoded r = Encode(text);
        ASSERT_EQ(r.status, CONV_OK) << text;
        Decoded back = Decode(r.bytes);
        EXPECT_EQ(back.status, CONV_OK) << text;
        EXPECT_EQ(back.text, text);
    }
}

// The self-describing bytes of a text worked out from its digits: trailing zeros of the digit
// string go to the scale, leading zeros go, the rest is packed with a pad in front of an even
// count. Returns the bytes and, through canonical, the text that the layout reads back as.
Bytes Model(bool negative, const std::string &integer, const std::string &fraction,
            std::string *canonical) {
    std::string digits = integer + fraction;
    int scale = static_cast<int>(fraction.size());
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
        --scale;
    }
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) {
        *canonical = "0";
        return {1, 0, 0x0C};
    }
    digits.erase(0, first);
    const int p = static_cast<int>(digits.size());
    if (scale <= 0) {
        *canonical = digits + std::string(static_cast<std::size_t>(-scale), '0');
    } else if (scale >= p) {
        *canonical = "0." + std::string(static_cast<std::size_t>(scale - p), '0') + digits;
    } else {
        *canonical = digits.substr(0, static_cast<std::size_t>(p - scale)) + "." +
                     digits.substr(static_cast<std::size_t>(p - scale));
    }
    if (negative) {
        canonical->insert(canonical->begin(), '-');
    }
    std::string nibbles = (p % 2 == 0 ? "0" : "") + digits;
    Bytes bytes = {static_cast<uint8_t>(p), static_cast<uint8_t>(static_cast<int8_t>(scale))};
    for (std::size_t k = 0; k + 1 < nibbles.size(); k += 2) {
        bytes.push_back(static_cast<uint8_t>(((nibbles[k] - '0') << 4) | (nibbles[k + 1] - '0')));
    }
    bytes.push_back(static_cast<uint8_t>(((nibbles.back() - '0') << 4) | (negative ? 0x0D : 0x0C)));
    return bytes;
}

// Generated texts of up to 12 digits with the point at every position (or none), every sign and
// both point characters: the bytes match the model, and reading them back gives the canonical
// text, which itself encodes to the same bytes.
TEST(StringToQLXBCD, GeneratedTextsMatchTheModelAndReadBack) {
    uint32_t seed = 2024;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0x7FFF;
    };
    int checked = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::size_t n = next() % 13;
        std::string digits;
        for (std::size_t k = 0; k < n; ++k) {
            digits.push_back(next() % 2 == 0 ? '0' : static_cast<char>('0' + next() % 10));
        }
        for (std::size_t pointPos = 0; pointPos <= n + 1; ++pointPos) {
            const bool hasPoint = pointPos <= n;
            for (int signKind = 0; signKind < 3; ++signKind) {
                const char point = (next() % 2 == 0) ? '.' : ',';
                const std::string integer = hasPoint ? digits.substr(0, pointPos) : digits;
                const std::string fraction = hasPoint ? digits.substr(pointPos) : "";
                std::string text = signKind == 1 ? "-" : signKind == 2 ? "+" : "";
                text += integer;
                if (hasPoint) {
                    text += point;
                }
                text += fraction;
                std::string canonical;
                const Bytes expected = Model(signKind == 1, integer, fraction, &canonical);
                SCOPED_TRACE(text);
                Encoded r = Encode(text.c_str());
                ASSERT_EQ(r.status, CONV_OK);
                ASSERT_EQ(r.bytes, Expect(expected));
                Decoded back = Decode(r.bytes);
                ASSERT_EQ(back.status, CONV_OK);
                ASSERT_EQ(back.text, canonical == "-0" ? "0" : canonical);
                ASSERT_EQ(Encode(back.text.c_str()).bytes, r.bytes);
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 10000);
}

}  // namespace
