/* SPDX-License-Identifier: MIT */
// Number text to packed decimals and decimals back to text.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

constexpr uint8_t kSentinel = 0xA5;
constexpr uint32_t kUnset = 0xDEADBEEF;

using Bytes = std::vector<uint8_t>;

// Packs a digit string the way the packed layout holds it: a pad 0 in front of an even number of
// digits, two digits a byte, the sign nibble last. (Text read by CONV_StringToDecimal gets its pad
// at the end instead, as a fraction digit: that is Pack(digits + "0").)
Bytes Pack(const std::string &digits, bool negative) {
    std::string nibbles = digits;
    if (nibbles.size() % 2 == 0) {
        nibbles.insert(nibbles.begin(), '0');
    }
    Bytes bytes;
    for (std::size_t k = 0; k + 1 < nibbles.size(); k += 2) {
        bytes.push_back(static_cast<uint8_t>(((nibbles[k] - '0') << 4) | (nibbles[k + 1] - '0')));
    }
    bytes.push_back(static_cast<uint8_t>(((nibbles.back() - '0') << 4) | (negative ? 0x0D : 0x0C)));
    return bytes;
}

struct ToDecimal {
    uint32_t status;
    Bytes bytes;  // the whole sentinel-filled buffer after the call
    uint32_t precision;
    uint32_t scale;
};

ToDecimal Read(const char *text, uint32_t size, uint32_t flags, char point = '.',
               std::size_t buffer = 16) {
    ToDecimal r{0, Bytes(buffer, kSentinel), kUnset, kUnset};
    r.status =
        CONV_StringToDecimal(r.bytes.data(), text, size, &r.precision, &r.scale, flags, point);
    return r;
}

// The first n bytes, then sentinels up to the end of the buffer.
Bytes Expect(const Bytes &written, std::size_t buffer = 16) {
    Bytes b = written;
    b.resize(buffer, kSentinel);
    return b;
}

TEST(StringToDecimal, OddDigitCountPacksWithSignLast) {
    ToDecimal r = Read("123", 4, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x3C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 0u);
}

TEST(StringToDecimal, NegativeFractionGetsPadDigitCountedAsFraction) {
    ToDecimal r = Read("-1.5", 4, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x15, 0x0D}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 2u);
}

TEST(StringToDecimal, EvenIntegerDigitsNeedThePointFlagBecauseThePadIsAFractionDigit) {
    EXPECT_EQ(Read("12", 4, 0).status, CONV_ERR_NOT_A_NUMBER);
    ToDecimal r = Read("12", 4, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x0C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 1u);
    ToDecimal unchecked = Read("12", 4, CONV_NUM_NO_CHECK);
    EXPECT_EQ(unchecked.status, CONV_OK);
    EXPECT_EQ(unchecked.bytes, Expect({0x12, 0x0C}));
}

TEST(StringToDecimal, OddIntegerDigitsNeedNoFlag) {
    ToDecimal r = Read("7", 1, 0);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x7C}));
    EXPECT_EQ(r.precision, 1u);
    EXPECT_EQ(r.scale, 0u);
}

TEST(StringToDecimal, PureFractionStartsWithItsFirstDigit) {
    ToDecimal r = Read(".5", 1, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x5C}));
    EXPECT_EQ(r.precision, 1u);
    EXPECT_EQ(r.scale, 1u);
}

TEST(StringToDecimal, TrailingPointAddsNoDigit) {
    ToDecimal r = Read("5.", 1, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x5C}));
    EXPECT_EQ(r.precision, 1u);
    EXPECT_EQ(r.scale, 0u);
}

TEST(StringToDecimal, CallersPointCharacterIsUsed) {
    ToDecimal r = Read("1,25", 4, CONV_NUM_DECIMAL_POINT, ',');
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x5C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 2u);
    EXPECT_EQ(Read("1.25", 4, CONV_NUM_DECIMAL_POINT, ',').status, CONV_ERR_NOT_A_NUMBER);
}

TEST(StringToDecimal, LeadingAndTrailingBlanksUnderTheirFlags) {
    ToDecimal r = Read("  12.5  ", 4, 0x007);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x5C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 1u);
    EXPECT_EQ(Read("  12.5", 4, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(Read("12.5  ", 4, 0x005).status, CONV_ERR_NOT_A_NUMBER);
    // Tabs and line feeds count as blanks only under their flags.
    EXPECT_EQ(Read("\t12.5\n", 4, 0x007).status, CONV_ERR_NOT_A_NUMBER);
    ToDecimal tabs = Read("\t12.5\n", 4, 0x037);
    EXPECT_EQ(tabs.status, CONV_OK);
    EXPECT_EQ(tabs.bytes, Expect({0x12, 0x5C}));
}

TEST(StringToDecimal, BlanksAreCutEvenWithoutCheck) {
    ToDecimal r = Read("  -7  ", 4, CONV_NUM_NO_CHECK | 0x003);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.bytes, Expect({0x7D}));
}

TEST(StringToDecimal, PlusSignIsNotAcceptedOnTheDigitPath) {
    EXPECT_EQ(Read("+5", 4, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_NOT_A_NUMBER);
}

TEST(StringToDecimal, BlankAfterMinusPassesTheCheckButFailsTheDigitTest) {
    EXPECT_EQ(Read("- 5", 4, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_NOT_A_NUMBER);
}

TEST(StringToDecimal, TextThatIsNoNumberFailsBeforeAnythingIsWritten) {
    for (const char *text : {"abc", "", ".", "-.", "1..2", "1.2.3", "1e5", "0x10"}) {
        ToDecimal r = Read(text, 4, CONV_NUM_DECIMAL_POINT);
        EXPECT_EQ(r.status, CONV_ERR_NOT_A_NUMBER) << text;
        EXPECT_EQ(r.bytes, Expect({})) << text;
        EXPECT_EQ(r.precision, kUnset) << text;
    }
}

TEST(StringToDecimal, UncheckedGarbageFailsAtTheFirstNonDigit) {
    ToDecimal r = Read("12x4", 4, CONV_NUM_NO_CHECK);
    EXPECT_EQ(r.status, CONV_ERR_NOT_A_NUMBER);
    // Nothing beyond the bytes reached is touched.
    EXPECT_EQ(r.bytes[2], kSentinel);
}

TEST(StringToDecimal, SizeZeroAndOverlongTextAreTooSmallTargets) {
    EXPECT_EQ(Read("1", 0, 0).status, CONV_ERR_TARGET_TOO_SMALL);
    std::string longText(1000, '1');
    EXPECT_EQ(Read(longText.c_str(), 8, CONV_NUM_NO_CHECK).status, CONV_ERR_TARGET_TOO_SMALL);
    std::string longest(999, '1');
    ToDecimal ok = Read(longest.c_str(), 500, CONV_NUM_NO_CHECK, '.', 600);
    EXPECT_EQ(ok.status, CONV_OK);
    EXPECT_EQ(ok.precision, 999u);
    EXPECT_EQ(ok.bytes[499], 0x1C);
    EXPECT_EQ(ok.bytes[500], kSentinel);
}

TEST(StringToDecimal, FractionIsCutToTheSizeKeepingEveryIntegerDigit) {
    ToDecimal r = Read("123.45", 2, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.bytes, Expect({0x12, 0x3C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 0u);

    ToDecimal f = Read("-1.2345", 2, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(f.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(f.bytes, Expect({0x12, 0x3D}));
    EXPECT_EQ(f.precision, 3u);
    EXPECT_EQ(f.scale, 2u);
}

TEST(StringToDecimal, IntegerDigitsThatDoNotFitAreTooSmall) {
    EXPECT_EQ(Read("123", 1, 0).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Read("1234", 2, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_TARGET_TOO_SMALL);
    // The point right after the last digit that fits: the sign would replace an integer digit.
    EXPECT_EQ(Read("12.3", 1, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Read("12.", 1, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Read("-1234.5", 2, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_TARGET_TOO_SMALL);
    // "12" needs the pad byte for its sign.
    ToDecimal r = Read("12", 1, CONV_NUM_DECIMAL_POINT);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(r.bytes[1], kSentinel);
}

TEST(StringToDecimal, ExponentTextGoesThroughADouble) {
    ToDecimal r = Read("1.5E2", 4, CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT);
    EXPECT_EQ(r.status, CONV_OK);
    // 150.0 is written as "150." and read back: three integer digits, no fraction.
    EXPECT_EQ(r.bytes, Expect({0x15, 0x0C}));
    EXPECT_EQ(r.precision, 3u);
    EXPECT_EQ(r.scale, 0u);

    ToDecimal comma = Read("-2,5e-1", 4, CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, ',');
    EXPECT_EQ(comma.status, CONV_OK);
    EXPECT_EQ(comma.bytes, Expect({0x02, 0x5D}));  // -0.25: digits 0, 2, 5
    EXPECT_EQ(comma.precision, 3u);
    EXPECT_EQ(comma.scale, 2u);

    EXPECT_EQ(Read("1E5", 4, CONV_NUM_DECIMAL_POINT).status, CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(Read("1e999", 4, CONV_NUM_EXPONENT).status, CONV_ERR_OVERFLOW);
    ToDecimal tiny = Read("1e-999", 4, CONV_NUM_EXPONENT);
    EXPECT_EQ(tiny.status, CONV_WARN_ROUND_TO_ZERO);
    EXPECT_EQ(tiny.bytes, Expect({}));
}

// Generated texts: up to 12 digits, the point at every position (or none), with and without
// "-", with "+" (refused), both point characters, every size from 1 to 9 bytes. The expected
// result is worked out from the digits: the value needs digits / 2 + 1 bytes; if it does not fit,
// 2 * size - 1 digits can stay, which is a cut fraction when all integer digits are among them and
// a too small target otherwise.
TEST(StringToDecimal, GeneratedTextsMatchThePackedModel) {
    uint32_t seed = 12345;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0x7FFF;
    };
    int checked = 0;
    for (int round = 0; round < 300; ++round) {
        const std::size_t n = 1 + next() % 12;
        std::string digits;
        for (std::size_t k = 0; k < n; ++k) {
            // Zeros are frequent so that leading and trailing zeros are well covered.
            digits.push_back(next() % 3 == 0 ? '0' : static_cast<char>('0' + next() % 10));
        }
        for (std::size_t pointPos = 0; pointPos <= n + 1; ++pointPos) {
            const bool hasPoint = pointPos <= n;  // n + 1: no point
            for (int signKind = 0; signKind < 3; ++signKind) {
                for (char point : {'.', ','}) {
                    std::string text = signKind == 1 ? "-" : signKind == 2 ? "+" : "";
                    const std::string integer = hasPoint ? digits.substr(0, pointPos) : digits;
                    const std::string fraction = hasPoint ? digits.substr(pointPos) : "";
                    text += integer;
                    if (hasPoint) {
                        text += point;
                    }
                    text += fraction;
                    const uint32_t flags =
                        (round % 2 == 0) ? CONV_NUM_DECIMAL_POINT : CONV_NUM_NO_CHECK;
                    for (uint32_t size = 1; size <= 9; ++size) {
                        ToDecimal r = Read(text.c_str(), size, flags, point);
                        SCOPED_TRACE(text + " size " + std::to_string(size));
                        ++checked;
                        if (signKind == 2) {
                            ASSERT_EQ(r.status, CONV_ERR_NOT_A_NUMBER);
                            continue;
                        }
                        const bool negative = signKind == 1;
                        const std::size_t needed = n / 2 + 1;
                        const std::size_t keep = 2 * size - 1;
                        if (needed <= size) {
                            const uint32_t pad = n % 2 == 0 ? 1 : 0;
                            ASSERT_EQ(r.status, CONV_OK);
                            ASSERT_EQ(r.bytes, Expect(Pack(pad ? digits + "0" : digits, negative)));
                            ASSERT_EQ(r.precision, n + pad);
                            ASSERT_EQ(r.scale, fraction.size() + pad);
                        } else if (integer.size() > keep) {
                            ASSERT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
                            ASSERT_EQ(r.bytes[size], kSentinel);
                        } else {
                            ASSERT_EQ(r.status, CONV_WARN_TRUNCATION);
                            ASSERT_EQ(r.bytes, Expect(Pack(digits.substr(0, keep), negative)));
                            ASSERT_EQ(r.precision, keep);
                            ASSERT_EQ(r.scale, keep - integer.size());
                        }
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 50000);
}

struct ToText {
    uint32_t status;
    std::string text;  // up to the NUL, or empty when nothing was written
    uint32_t length;
    std::vector<char> buffer;
};

ToText Write(const Bytes &value, uint32_t size, uint32_t precision, uint32_t scale, uint32_t layout,
             char point = '.', std::size_t buffer = 40) {
    ToText r{0, "", kUnset, std::vector<char>(buffer, static_cast<char>(kSentinel))};
    r.status = CONV_DecimalToString(r.buffer.data(), value.data(), size, precision, scale, point,
                                    layout, &r.length);
    if (std::memchr(r.buffer.data(), '\0', buffer) != nullptr) {
        r.text = r.buffer.data();
    }
    return r;
}

// Every byte of the buffer after index `used` still holds the sentinel.
::testing::AssertionResult UntouchedFrom(const ToText &r, std::size_t used) {
    for (std::size_t k = used; k < r.buffer.size(); ++k) {
        if (r.buffer[k] != static_cast<char>(kSentinel)) {
            return ::testing::AssertionFailure() << "byte " << k << " was written";
        }
    }
    return ::testing::AssertionSuccess();
}

TEST(DecimalToString, PackedValueWithPoint) {
    ToText r = Write({0x12, 0x3C}, 10, 3, 1, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "12.3");
    EXPECT_EQ(r.length, 4u);
    EXPECT_TRUE(UntouchedFrom(r, 5));
}

TEST(DecimalToString, PureFractionWithEvenPrecisionLosesPadAndZero) {
    ToText r = Write({0x05, 0x0D}, 10, 2, 2, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "-.50");
    EXPECT_EQ(r.length, 4u);
    EXPECT_TRUE(UntouchedFrom(r, 5));
}

TEST(DecimalToString, PureFractionIsWrittenWithoutIntegerDigit) {
    EXPECT_EQ(Write({0x5C}, 10, 1, 1, CONV_DECIMAL_PACKED).text, ".5");
    EXPECT_EQ(Write({0x05, 0x05, 0xC5}, 10, 3, 3, CONV_DECIMAL_UNPACKED).text, ".555");
    // One integer digit 0 with a fraction keeps its zero.
    EXPECT_EQ(Write({0x00, 0x5C}, 10, 2, 1, CONV_DECIMAL_PACKED).text, "0.5");
    EXPECT_EQ(Write({0x00, 0x00, 0xC5}, 10, 3, 1, CONV_DECIMAL_UNPACKED).text, "0.5");
}

TEST(DecimalToString, LeadingZerosAreDroppedButOneZeroStays) {
    ToText r = Write({0x00, 0x00, 0x7C}, 10, 5, 0, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.text, "7");
    EXPECT_EQ(r.length, 1u);
    EXPECT_EQ(Write({0x00, 0x0C}, 10, 3, 0, CONV_DECIMAL_PACKED).text, "0");
    EXPECT_EQ(Write({0x00, 0x0D}, 10, 3, 0, CONV_DECIMAL_PACKED).text, "-0");
}

TEST(DecimalToString, CutTextDropsFractionDigitsWithoutRounding) {
    ToText r = Write({0x12, 0x3C}, 3, 3, 1, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.text, "12");
    EXPECT_EQ(r.length, 4u);
    EXPECT_TRUE(UntouchedFrom(r, 3));
    ToText withPoint = Write({0x12, 0x3C}, 4, 3, 1, CONV_DECIMAL_PACKED);
    EXPECT_EQ(withPoint.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(withPoint.text, "12.");
    ToText nines = Write({0x19, 0x9D}, 4, 3, 2, CONV_DECIMAL_PACKED);
    EXPECT_EQ(nines.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(nines.text, "-1.");
    EXPECT_EQ(nines.length, 5u);
}

TEST(DecimalToString, IntegerDigitsThatDoNotFitWriteNothing) {
    ToText r = Write({0x12, 0x3C}, 3, 3, 0, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(r.length, 3u);
    EXPECT_TRUE(UntouchedFrom(r, 0));
    ToText neg = Write({0x12, 0x3D}, 4, 3, 1, CONV_DECIMAL_PACKED);
    EXPECT_EQ(neg.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(neg.text, "-12");
    EXPECT_EQ(Write({0x12, 0x3D}, 3, 3, 1, CONV_DECIMAL_PACKED).status, CONV_ERR_TARGET_TOO_SMALL);
}

TEST(DecimalToString, RoomRulesForTinyTargets) {
    EXPECT_EQ(Write({0x5C}, 0, 1, 0, CONV_DECIMAL_PACKED).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Write({0x5C}, 1, 1, 0, CONV_DECIMAL_PACKED).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Write({0x5C}, 2, 1, 0, CONV_DECIMAL_PACKED).text, "5");
    EXPECT_EQ(Write({0x5D}, 2, 1, 0, CONV_DECIMAL_PACKED).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Write({0x5D}, 3, 1, 0, CONV_DECIMAL_PACKED).text, "-5");
    // A text that begins with the point needs room for a digit after it.
    ToText point = Write({0x5C}, 2, 1, 1, CONV_DECIMAL_PACKED);
    EXPECT_EQ(point.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_TRUE(UntouchedFrom(point, 0));
    EXPECT_EQ(Write({0x5C}, 3, 1, 1, CONV_DECIMAL_PACKED).text, ".5");
    EXPECT_EQ(Write({0x5D}, 3, 1, 1, CONV_DECIMAL_PACKED).status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(Write({0x5D}, 4, 1, 1, CONV_DECIMAL_PACKED).text, "-.5");
    ToText cut = Write({0x12, 0x3C}, 3, 3, 3, CONV_DECIMAL_PACKED);
    EXPECT_EQ(cut.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(cut.text, ".1");
    EXPECT_EQ(cut.length, 4u);
}

TEST(DecimalToString, UnpackedLayoutReadsLowNibblesAndSignFromLastHighNibble) {
    // High nibbles other than the last one's are ignored.
    ToText r = Write({0x71, 0x32, 0xD3}, 10, 3, 1, CONV_DECIMAL_UNPACKED, ',');
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "-12,3");
    EXPECT_EQ(r.length, 5u);
    EXPECT_EQ(Write({0x01, 0x02, 0xC3}, 10, 3, 0, CONV_DECIMAL_UNPACKED).text, "123");
    EXPECT_EQ(Write({0x01, 0x02, 0x03}, 10, 3, 0, CONV_DECIMAL_UNPACKED).text, "123");
}

TEST(DecimalToString, SignNibblesOtherThanDAreNotNegative) {
    for (uint8_t sign : {0x0, 0xA, 0xB, 0xC, 0xE, 0xF}) {
        EXPECT_EQ(Write({static_cast<uint8_t>(0x40 | sign)}, 10, 1, 0, CONV_DECIMAL_PACKED).text,
                  "4");
    }
}

TEST(DecimalToString, BadLayoutDigitOrScaleIsAConversionError) {
    for (uint32_t layout : {0u, 3u, 255u}) {
        ToText r = Write({0x12, 0x3C}, 10, 3, 1, layout);
        EXPECT_EQ(r.status, CONV_ERR_CONVERSION);
        EXPECT_EQ(r.length, kUnset);
        EXPECT_TRUE(UntouchedFrom(r, 0));
    }
    EXPECT_EQ(Write({0x1A, 0x3C}, 10, 3, 1, CONV_DECIMAL_PACKED).status, CONV_ERR_CONVERSION);
    EXPECT_EQ(Write({0xA1, 0x3C}, 10, 3, 1, CONV_DECIMAL_PACKED).status, CONV_ERR_CONVERSION);
    // The pad nibble is a digit too.
    EXPECT_EQ(Write({0xF1, 0x3C}, 10, 2, 0, CONV_DECIMAL_PACKED).status, CONV_ERR_CONVERSION);
    EXPECT_EQ(Write({0x01, 0x0B, 0xC3}, 10, 3, 0, CONV_DECIMAL_UNPACKED).status,
              CONV_ERR_CONVERSION);
    EXPECT_EQ(Write({0x12, 0x3C}, 10, 3, 4, CONV_DECIMAL_PACKED).status, CONV_ERR_CONVERSION);
}

TEST(DecimalToString, ZeroPrecisionPackedValueIsZero) {
    ToText r = Write({0x0C}, 10, 0, 0, CONV_DECIMAL_PACKED);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "0");
}

// Generated values of 1 to 12 digits at every scale, both signs, both layouts and point
// characters, every size from 1 to 16: the expected text is built from the digit string.
TEST(DecimalToString, GeneratedValuesMatchTheTextModel) {
    uint32_t seed = 777;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0x7FFF;
    };
    int checked = 0;
    for (int round = 0; round < 400; ++round) {
        const std::size_t p = 1 + next() % 12;
        std::string digits;
        for (std::size_t k = 0; k < p; ++k) {
            digits.push_back(next() % 3 == 0 ? '0' : static_cast<char>('0' + next() % 10));
        }
        for (std::size_t s = 0; s <= p; ++s) {
            for (bool negative : {false, true}) {
                const Bytes packed = Pack(digits, negative);
                Bytes unpacked;
                for (char d : digits) {
                    unpacked.push_back(static_cast<uint8_t>(d - '0'));
                }
                unpacked.back() = static_cast<uint8_t>(unpacked.back() | (negative ? 0xD0 : 0xC0));
                const char point = (round % 2 == 0) ? '.' : ',';
                // Expected text: integer digits without leading zeros (one zero kept when the
                // value has integer digits), then the point and the fraction digits.
                std::string integer = digits.substr(0, p - s);
                while (integer.size() > 1 && integer[0] == '0') {
                    integer.erase(0, 1);
                }
                std::string full = integer;
                if (s > 0) {
                    full += point;
                    full += digits.substr(p - s);
                }
                const std::size_t length = full.size() + (negative ? 1 : 0);
                for (uint32_t layout : {CONV_DECIMAL_UNPACKED, CONV_DECIMAL_PACKED}) {
                    const Bytes &value = layout == CONV_DECIMAL_PACKED ? packed : unpacked;
                    for (uint32_t size = 1; size <= 16; ++size) {
                        SCOPED_TRACE(full + " size " + std::to_string(size) + " layout " +
                                     std::to_string(layout) + " neg " + std::to_string(negative));
                        ToText r = Write(value, size, static_cast<uint32_t>(p),
                                         static_cast<uint32_t>(s), layout, point);
                        ++checked;
                        int64_t room = static_cast<int64_t>(size) - 1 - (negative ? 1 : 0);
                        const bool startsWithPoint = integer.empty();
                        if (static_cast<int64_t>(full.size()) <= room && room >= 1 &&
                            !(startsWithPoint && room < 2)) {
                            ASSERT_EQ(r.status, CONV_OK);
                            ASSERT_EQ(r.text, (negative ? "-" : "") + full);
                            ASSERT_TRUE(UntouchedFrom(r, length + 1));
                        } else if (room < 1 || static_cast<int64_t>(integer.size()) > room ||
                                   (startsWithPoint && room < 2)) {
                            ASSERT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
                            ASSERT_TRUE(UntouchedFrom(r, 0));
                        } else {
                            ASSERT_EQ(r.status, CONV_WARN_TRUNCATION);
                            ASSERT_EQ(r.text, (negative ? "-" : "") +
                                                  full.substr(0, static_cast<std::size_t>(room)));
                            ASSERT_TRUE(UntouchedFrom(r, size));
                        }
                        ASSERT_EQ(r.length, length);
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 100000);
}

// Text -> packed decimal -> text gives the text back, with the pad of an even digit count as a
// trailing fraction zero.
TEST(DecimalRoundTrip, TextThroughPackedDecimalAndBack) {
    const struct {
        const char *in;
        const char *out;
    } cases[] = {
        {"123", "123"},  {"-1.5", "-1.50"},   {"12", "12.0"},     {".5", ".5"},
        {"0.5", "0.50"}, {"-0.25", "-0.25"},  {"1000", "1000.0"}, {"5.", "5"},
        {"007", "7"},    {"1.234", "1.2340"}, {"99999", "99999"}, {"-.05", "-.050"},
    };
    for (const auto &c : cases) {
        uint8_t value[8];
        uint32_t precision = 0;
        uint32_t scale = 0;
        ASSERT_EQ(CONV_StringToDecimal(value, c.in, sizeof value, &precision, &scale,
                                       CONV_NUM_DECIMAL_POINT, '.'),
                  CONV_OK)
            << c.in;
        char text[32];
        uint32_t length = 0;
        ASSERT_EQ(CONV_DecimalToString(text, value, sizeof text, precision, scale, '.',
                                       CONV_DECIMAL_PACKED, &length),
                  CONV_OK)
            << c.in;
        EXPECT_STREQ(text, c.out) << c.in;
        EXPECT_EQ(length, std::strlen(c.out)) << c.in;
    }
}

}  // namespace
