/* SPDX-License-Identifier: MIT */
// Binary text with overlapping buffers when the temporary copy cannot be allocated.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include <nlssupport/convlib.h>
#include "support/alloc_interpose.h"

namespace {

TEST(StringToBinaryAllocation, SeparateBuffersAllocateNothing) {
    const char text[] = "0A1B";
    uint8_t out[4] = {};
    uint32_t count = sizeof out;
    alloc_interpose::Scope scope;
    const uint32_t status = CONV_StringToBinary(out, text, &count);
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(status, CONV_OK);
    EXPECT_EQ(calls, 0u);
}

TEST(StringToBinaryAllocation, InPlaceCopyIsReleasedAfterUse) {
    char buffer[] = "0A1B";
    uint32_t count = 4;
    alloc_interpose::Scope scope;
    const uint32_t status =
        CONV_StringToBinary(reinterpret_cast<uint8_t *>(buffer), buffer, &count);
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, CONV_OK);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(count, 2u);
}

TEST(StringToBinaryAllocation, FailedCopyIsAMemoryErrorAndChangesNothing) {
    char buffer[] = "0A1B";
    uint32_t count = 4;
    alloc_interpose::Scope scope;
    scope.FailNth(1);
    const uint32_t status =
        CONV_StringToBinary(reinterpret_cast<uint8_t *>(buffer), buffer, &count);
    const unsigned long injected = scope.Injected();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, CONV_ERR_MEMORY);
    EXPECT_EQ(injected, 1u);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(count, 4u);
    EXPECT_STREQ(buffer, "0A1B");
}

TEST(StringToBinaryAllocation, CopyIsReleasedAfterABadPair) {
    char buffer[] = "0AZZ";
    uint32_t count = 4;
    alloc_interpose::Scope scope;
    const uint32_t status =
        CONV_StringToBinary(reinterpret_cast<uint8_t *>(buffer), buffer, &count);
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, CONV_ERR_BYTE_STREAM);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(count, 1u);
}

TEST(BinaryToStringAllocation, SeparateBuffersAllocateNothing) {
    const uint8_t bytes[] = {0xDE, 0xAD};
    char out[5];
    alloc_interpose::Scope scope;
    const uint32_t status = CONV_BinaryToString(out, bytes, sizeof out, sizeof bytes);
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(status, CONV_OK);
    EXPECT_EQ(calls, 0u);
    EXPECT_STREQ(out, "DEAD");
}

TEST(BinaryToStringAllocation, FailedCopyOfTheSourceSizeIsAMemoryError) {
    char buffer[8] = {'\xDE', '\xAD', '\xBE'};
    alloc_interpose::Scope scope;
    scope.FailSize(3);  // the copy holds exactly the three source bytes
    const uint32_t status =
        CONV_BinaryToString(buffer, reinterpret_cast<const uint8_t *>(buffer), sizeof buffer, 3);
    const unsigned long injected = scope.Injected();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, CONV_ERR_MEMORY);
    EXPECT_EQ(injected, 1u);
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(0, std::memcmp(buffer, "\xDE\xAD\xBE", 3));
}

TEST(BinaryToStringAllocation, InPlaceCopyIsReleasedAfterUse) {
    char buffer[8] = {'\xDE', '\xAD', '\xBE'};
    alloc_interpose::Scope scope;
    const uint32_t status =
        CONV_BinaryToString(buffer, reinterpret_cast<const uint8_t *>(buffer), 6, 3);
    const unsigned long calls = scope.Calls();
    const std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(calls, 1u);
    EXPECT_EQ(live, 0u);
    EXPECT_STREQ(buffer, "DEAD");
}

}  // namespace
