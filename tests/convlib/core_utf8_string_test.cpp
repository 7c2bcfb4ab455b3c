/* SPDX-License-Identifier: MIT */
// The 16-bit string encoder over long texts: the same bytes, statuses and counts as encoding the
// units one at a time with CONV_WCharToUTF8, at every capacity and maximum, nothing written
// behind the complete characters, and nothing read behind the terminator that could fault.
#include <gtest/gtest.h>
#include <nlssupport/convlib.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

// The encoder's definition: each unit (up to the first 0 or maxUnits) through the one-character
// encoder into the room left, stopping at the first that does not fit.
struct Encoded {
    uint32_t status = CONV_OK;
    uint32_t written = 0;
    std::string bytes;
};

Encoded UnitByUnit(const uint16_t *text, int32_t maxUnits, uint32_t capacity) {
    Encoded e;
    for (int32_t i = 0; i != maxUnits && text[i] != 0; ++i) {
        char buf[8];
        uint32_t count = 0;
        const uint32_t status = CONV_WCharToUTF8(text[i], buf, capacity - e.written, &count);
        if (status != CONV_OK) {
            e.status = status;
            return e;
        }
        e.bytes.append(buf, count);
        e.written += count;
    }
    return e;
}

// A text of runs: ASCII, two-byte, three-byte units and surrogates, runs of 1 to 20 units.
std::vector<uint16_t> MixedText(uint32_t seed, size_t length) {
    std::vector<uint16_t> units;
    uint32_t x = seed;
    while (units.size() < length) {
        x = x * 1103515245u + 12345u;
        const uint32_t kind = (x >> 16) % 4u;
        const size_t run = 1 + (x >> 8) % 20u;
        for (size_t r = 0; r < run && units.size() < length; ++r) {
            x = x * 1103515245u + 12345u;
            const uint32_t v = x >> 12;
            switch (kind) {
                case 0:
                    units.push_back(static_cast<uint16_t>(1 + v % 0x7F));
                    break;
                case 1:
                    units.push_back(static_cast<uint16_t>(0x80 + v % 0x780));
                    break;
                case 2:
                    units.push_back(static_cast<uint16_t>(0x800 + v % 0xF800));
                    break;
                default:
                    units.push_back(static_cast<uint16_t>(0xD800 + v % 0x800));
                    break;
            }
        }
    }
    units.push_back(0);
    return units;
}

void ExpectLikeUnitByUnit(const uint16_t *text, int32_t maxUnits, uint32_t capacity,
                          const std::string &what) {
    const Encoded want = UnitByUnit(text, maxUnits, capacity);
    std::vector<char> out(capacity + 16, '\x5A');
    uint32_t written = 12345;
    const uint32_t status = CONV_WChar16StrToUTF8(text, maxUnits, out.data(), capacity, &written);
    ASSERT_EQ(status, want.status) << what;
    ASSERT_EQ(written, want.written) << what;
    ASSERT_EQ(std::string(out.data(), written), want.bytes) << what;
    for (size_t i = written; i < out.size(); ++i) {
        ASSERT_EQ(out[i], '\x5A') << what << ": byte " << i << " behind the characters written";
    }
}

TEST(CoreUtf8String, EveryCapacityOfAMixedText) {
    const std::vector<uint16_t> text = MixedText(7, 300);
    const Encoded full = UnitByUnit(text.data(), -1, 4096);
    for (uint32_t capacity = 0; capacity <= full.written + 3; ++capacity) {
        ExpectLikeUnitByUnit(text.data(), -1, capacity, "capacity " + std::to_string(capacity));
    }
}

TEST(CoreUtf8String, EveryMaximumAndStart) {
    const std::vector<uint16_t> text = MixedText(11, 120);
    for (size_t start = 0; start < 8; ++start) {
        for (int32_t maxUnits = -1; maxUnits <= 125; ++maxUnits) {
            ExpectLikeUnitByUnit(
                text.data() + start, maxUnits, 1000,
                "start " + std::to_string(start) + " max " + std::to_string(maxUnits));
        }
    }
}

TEST(CoreUtf8String, TerminatorAnywhereInALongText) {
    std::vector<uint16_t> text = MixedText(13, 200);
    for (size_t at = 0; at < 200; ++at) {
        std::vector<uint16_t> cut = text;
        cut[at] = 0;
        ExpectLikeUnitByUnit(cut.data(), -1, 1000, "terminator at " + std::to_string(at));
        ExpectLikeUnitByUnit(cut.data(), 150, 1000, "terminator at " + std::to_string(at));
    }
}

TEST(CoreUtf8String, AsciiAndTwoByteRuns) {
    std::vector<uint16_t> ascii(257, 'a');
    ascii.back() = 0;
    std::vector<uint16_t> greek(257, 0x3B1);
    greek.back() = 0;
    for (uint32_t capacity : {0u, 1u, 7u, 8u, 255u, 256u, 257u, 511u, 512u, 513u}) {
        ExpectLikeUnitByUnit(ascii.data(), -1, capacity, "ASCII " + std::to_string(capacity));
        ExpectLikeUnitByUnit(greek.data(), -1, capacity, "Greek " + std::to_string(capacity));
    }
}

TEST(CoreUtf8String, LargestCapacity) {
    const std::vector<uint16_t> text = MixedText(19, 50);
    const Encoded want = UnitByUnit(text.data(), -1, 1000);
    std::vector<char> out(want.written + 16, '\x5A');
    uint32_t written = 0;
    // The buffer is declared as large as a capacity can be; the text needs far less of it.
    EXPECT_EQ(CONV_WChar16StrToUTF8(text.data(), -1, out.data(), UINT32_MAX, &written), CONV_OK);
    EXPECT_EQ(written, want.written);
    EXPECT_EQ(std::string(out.data(), written), want.bytes);
}

// Texts that end right in front of a page that cannot be read: the encoder may not touch it.
TEST(CoreUtf8String, TextEndingAtAnUnreadablePage) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    void *mem = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(mem, MAP_FAILED);
    char *base = static_cast<char *>(mem);
    ASSERT_EQ(mprotect(base + page, page, PROT_NONE), 0);
    const std::vector<uint16_t> source = MixedText(17, 64);
    for (size_t length = 0; length < 40; ++length) {
        uint16_t *text = reinterpret_cast<uint16_t *>(base + page) - (length + 1);
        std::memcpy(text, source.data(), length * sizeof(uint16_t));
        text[length] = 0;
        ExpectLikeUnitByUnit(text, -1, 200, "length " + std::to_string(length));
        // Without a terminator, only the maximum keeps the encoder inside the page.
        uint16_t *open = reinterpret_cast<uint16_t *>(base + page) - length;
        std::memcpy(open, source.data(), length * sizeof(uint16_t));
        ExpectLikeUnitByUnit(open, static_cast<int32_t>(length), 200,
                             "unterminated length " + std::to_string(length));
    }
    munmap(mem, 2 * page);
}

}  // namespace
