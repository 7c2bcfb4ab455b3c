/* SPDX-License-Identifier: MIT */
// Binary text: hexadecimal text to bytes and bytes to hexadecimal text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <nlssupport/convlib.h>

namespace {

constexpr uint8_t kSentinel = 0xA5;

using Bytes = std::vector<uint8_t>;

struct ToBytes {
    uint32_t status;
    uint32_t count;
    Bytes bytes;  // the whole sentinel-filled buffer
};

ToBytes Read(const char *text, uint32_t capacity, std::size_t buffer = 16) {
    ToBytes r{0, capacity, Bytes(buffer, kSentinel)};
    r.status = CONV_StringToBinary(r.bytes.data(), text, &r.count);
    return r;
}

Bytes Expect(const Bytes &written, std::size_t buffer = 16) {
    Bytes b = written;
    b.resize(buffer, kSentinel);
    return b;
}

TEST(StringToBinary, PairsBecomeBytes) {
    ToBytes r = Read("0A1B", 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.count, 2u);
    EXPECT_EQ(r.bytes, Expect({0x0A, 0x1B}));
}

TEST(StringToBinary, LowerCaseLettersAreNoDigits) {
    ToBytes r = Read("0a1b", 4);
    EXPECT_EQ(r.status, CONV_ERR_BYTE_STREAM);
    EXPECT_EQ(r.count, 0u);
    EXPECT_EQ(r.bytes, Expect({}));
}

TEST(StringToBinary, LoneFinalDigitIsDroppedWithoutWarningOrCheck) {
    ToBytes r = Read("0A1", 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.count, 1u);
    EXPECT_EQ(r.bytes, Expect({0x0A}));
    ToBytes bad = Read("0Az", 4);
    EXPECT_EQ(bad.status, CONV_OK);
    EXPECT_EQ(bad.count, 1u);
    EXPECT_EQ(Read("z", 4).status, CONV_OK);
}

TEST(StringToBinary, TextBeyondTheCapacityIsCutWithAWarning) {
    ToBytes r = Read("0A1B2C", 2);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.count, 2u);
    EXPECT_EQ(r.bytes, Expect({0x0A, 0x1B}));
    // The cut part is never looked at.
    ToBytes unchecked = Read("0A1Bzz", 2);
    EXPECT_EQ(unchecked.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(unchecked.count, 2u);
    // One digit too many is a cut, not a lone digit.
    EXPECT_EQ(Read("0A1B2", 2).status, CONV_WARN_TRUNCATION);
}

TEST(StringToBinary, EmptyTextAndZeroCapacity) {
    ToBytes r = Read("", 4);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.count, 0u);
    EXPECT_EQ(r.bytes, Expect({}));
    ToBytes zero = Read("0A", 0);
    EXPECT_EQ(zero.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(zero.count, 0u);
    EXPECT_EQ(zero.bytes, Expect({}));
}

TEST(StringToBinary, BadPairKeepsTheBytesBeforeIt) {
    ToBytes r = Read("FF00G1AA", 8);
    EXPECT_EQ(r.status, CONV_ERR_BYTE_STREAM);
    EXPECT_EQ(r.count, 2u);
    EXPECT_EQ(r.bytes, Expect({0xFF, 0x00}));
    for (const char *text : {"0x", "-1", " 1", "1 ", "G0", "0G", "@0", "0:", "/0", "`0", "g0"}) {
        ToBytes bad = Read(text, 4);
        EXPECT_EQ(bad.status, CONV_ERR_BYTE_STREAM) << text;
        EXPECT_EQ(bad.count, 0u) << text;
    }
}

TEST(StringToBinary, EveryByteValueAgreesWithPrintfUpperCase) {
    for (int value = 0; value < 256; ++value) {
        char text[3];
        std::snprintf(text, sizeof text, "%02X", value);
        ToBytes r = Read(text, 1);
        ASSERT_EQ(r.status, CONV_OK) << text;
        ASSERT_EQ(r.count, 1u);
        ASSERT_EQ(r.bytes, Expect({static_cast<uint8_t>(value)})) << text;
    }
}

struct ToText {
    uint32_t status;
    std::string text;
    std::vector<char> buffer;
};

ToText Write(const Bytes &bytes, uint32_t size, std::size_t buffer = 32) {
    ToText r{0, "", std::vector<char>(buffer, static_cast<char>(kSentinel))};
    r.status = CONV_BinaryToString(r.buffer.data(), bytes.data(), size,
                                   static_cast<uint32_t>(bytes.size()));
    if (std::memchr(r.buffer.data(), '\0', buffer) != nullptr) {
        r.text = r.buffer.data();
    }
    return r;
}

::testing::AssertionResult UntouchedFrom(const ToText &r, std::size_t used) {
    for (std::size_t k = used; k < r.buffer.size(); ++k) {
        if (r.buffer[k] != static_cast<char>(kSentinel)) {
            return ::testing::AssertionFailure() << "byte " << k << " was written";
        }
    }
    return ::testing::AssertionSuccess();
}

TEST(BinaryToString, BytesBecomeUpperCasePairs) {
    ToText r = Write({0xDE, 0xAD}, 5);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "DEAD");
    EXPECT_TRUE(UntouchedFrom(r, 5));
}

TEST(BinaryToString, SmallTargetHoldsWholeBytesOnly) {
    ToText r = Write({0xDE, 0xAD}, 4);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.text, "DE");
    // An even size leaves one byte unused.
    EXPECT_TRUE(UntouchedFrom(r, 3));
    ToText three = Write({0xDE, 0xAD}, 3);
    EXPECT_EQ(three.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(three.text, "DE");
    ToText one = Write({0xDE, 0xAD}, 1);
    EXPECT_EQ(one.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(one.text, "");
    EXPECT_TRUE(UntouchedFrom(one, 1));
}

TEST(BinaryToString, SizeZeroIsTooSmallAndWritesNothing) {
    ToText r = Write({0xDE}, 0);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_TRUE(UntouchedFrom(r, 0));
}

TEST(BinaryToString, NoBytesGiveTheEmptyText) {
    ToText r = Write({}, 1);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "");
    EXPECT_TRUE(UntouchedFrom(r, 1));
}

// Generated byte strings: the text agrees with printf's "%02X" for every byte, for every size
// from 0 to 2 * length + 3, and reading the text back gives the bytes.
TEST(BinaryToString, GeneratedBytesAgreeWithPrintfAndReadBack) {
    uint32_t seed = 31337;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0xFF;
    };
    for (int round = 0; round < 300; ++round) {
        Bytes bytes(next() % 12);
        for (uint8_t &b : bytes) {
            b = static_cast<uint8_t>(next());
        }
        std::string full;
        for (uint8_t b : bytes) {
            char pair[3];
            std::snprintf(pair, sizeof pair, "%02X", b);
            full += pair;
        }
        for (uint32_t size = 0; size <= 2 * bytes.size() + 3; ++size) {
            ToText r = Write(bytes, size);
            if (size == 0) {
                ASSERT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
                continue;
            }
            const std::size_t whole = std::min<std::size_t>(bytes.size(), (size - 1) / 2);
            ASSERT_EQ(r.status, whole < bytes.size() ? CONV_WARN_TRUNCATION : CONV_OK);
            ASSERT_EQ(r.text, full.substr(0, 2 * whole));
            ASSERT_TRUE(UntouchedFrom(r, 2 * whole + 1));
        }
        ToBytes back = Read(full.c_str(), static_cast<uint32_t>(bytes.size() + 1));
        ASSERT_EQ(back.status, CONV_OK);
        ASSERT_EQ(back.count, bytes.size());
        ASSERT_EQ(back.bytes, Expect(bytes));
    }
}

// Overlapping buffers: the text is placed at every offset around the output area inside one
// block, and the result must equal that of separate buffers.
TEST(StringToBinary, OverlappingTextGivesTheSameBytesAsSeparateBuffers) {
    const std::string texts[] = {"0A1B2C3D", "DEADBEEF00", "0A1B2C3D4E5F6071", "FF00G1", "0A1"};
    for (const std::string &text : texts) {
        for (uint32_t capacity : {1u, 2u, 3u, 4u, 8u, 12u}) {
            ToBytes reference = Read(text.c_str(), capacity, 64);
            for (std::size_t textAt = 0; textAt <= 24; ++textAt) {
                const std::size_t outAt = 8;
                Bytes block(64, kSentinel);
                std::memcpy(block.data() + textAt, text.c_str(), text.size() + 1);
                uint32_t count = capacity;
                const uint32_t status = CONV_StringToBinary(
                    block.data() + outAt, reinterpret_cast<const char *>(block.data() + textAt),
                    &count);
                SCOPED_TRACE(text + " capacity " + std::to_string(capacity) + " text at " +
                             std::to_string(textAt));
                ASSERT_EQ(status, reference.status);
                ASSERT_EQ(count, reference.count);
                ASSERT_EQ(0, std::memcmp(block.data() + outAt, reference.bytes.data(), count));
            }
        }
    }
}

TEST(StringToBinary, InPlaceConversionEqualsSeparateBuffers) {
    char buffer[] = "0A1B2C3D";
    uint32_t count = sizeof buffer;
    EXPECT_EQ(CONV_StringToBinary(reinterpret_cast<uint8_t *>(buffer), buffer, &count), CONV_OK);
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(0, std::memcmp(buffer, "\x0A\x1B\x2C\x3D", 4));
    // The rest of the text is left as it was.
    EXPECT_STREQ(buffer + 4, "2C3D");
}

TEST(BinaryToString, OverlappingBytesGiveTheSameTextAsSeparateBuffers) {
    const Bytes sources[] = {
        {0xDE, 0xAD, 0xBE, 0xEF}, {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB}, {0x00}, {0xFF, 0x10, 0x20}};
    for (const Bytes &source : sources) {
        for (uint32_t size : {1u, 2u, 3u, 5u, 8u, 13u, 20u}) {
            ToText reference = Write(source, size, 64);
            for (std::size_t sourceAt = 0; sourceAt <= 32; ++sourceAt) {
                const std::size_t outAt = 12;
                std::vector<char> block(80, static_cast<char>(kSentinel));
                std::memcpy(block.data() + sourceAt, source.data(), source.size());
                const uint32_t status =
                    CONV_BinaryToString(block.data() + outAt,
                                        reinterpret_cast<const uint8_t *>(block.data() + sourceAt),
                                        size, static_cast<uint32_t>(source.size()));
                SCOPED_TRACE("size " + std::to_string(size) + " source at " +
                             std::to_string(sourceAt));
                ASSERT_EQ(status, reference.status);
                ASSERT_STREQ(block.data() + outAt, reference.text.c_str());
            }
        }
    }
}

TEST(BinaryToString, InPlaceConversionEqualsSeparateBuffers) {
    char buffer[16] = {'\xCA', '\xFE', '\x12'};
    EXPECT_EQ(
        CONV_BinaryToString(buffer, reinterpret_cast<const uint8_t *>(buffer), sizeof buffer, 3),
        CONV_OK);
    EXPECT_STREQ(buffer, "CAFE12");
}

}  // namespace
