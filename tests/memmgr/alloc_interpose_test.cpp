/* SPDX-License-Identifier: MIT */
// Checks of the failing, counting allocator that the allocation-failure tests rely on.
#include "support/alloc_interpose.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

// Called through volatile pointers so that the compiler cannot pair up and drop the calls.
void *(*volatile gMalloc)(std::size_t) = std::malloc;
void *(*volatile gCalloc)(std::size_t, std::size_t) = std::calloc;
void *(*volatile gRealloc)(void *, std::size_t) = std::realloc;
void (*volatile gFree)(void *) = std::free;

TEST(AllocInterpose, NothingIsCountedOrFailedWhileDisarmed) {
    alloc_interpose::Reset();
    alloc_interpose::FailSize(24);
    void *block = gMalloc(24);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(alloc_interpose::Calls(), 0u);
    EXPECT_EQ(alloc_interpose::LiveBlocks(), 0u);
    gFree(block);
    alloc_interpose::Reset();
}

TEST(AllocInterpose, CountsMallocCallocAndReallocCalls) {
    alloc_interpose::Scope scope;
    void *a = gMalloc(10);
    void *b = gCalloc(3, 4);
    void *c = gRealloc(nullptr, 7);
    unsigned long calls = scope.Calls();
    std::size_t live = scope.LiveBlocks();
    std::size_t bytes = scope.LiveBytes();
    gFree(a);
    gFree(b);
    gFree(c);
    std::size_t liveAfter = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(calls, 3u);
    EXPECT_EQ(live, 3u);
    EXPECT_EQ(bytes, 10u + 12u + 7u);
    EXPECT_EQ(liveAfter, 0u);
}

TEST(AllocInterpose, FailNthFailsExactlyThatCall) {
    alloc_interpose::Scope scope;
    scope.FailNth(2);
    void *a = gMalloc(8);
    void *b = gMalloc(8);
    void *c = gMalloc(8);
    unsigned long injected = scope.Injected();
    std::size_t live = scope.LiveBlocks();
    gFree(a);
    gFree(b);
    gFree(c);
    scope.End();
    EXPECT_NE(a, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_NE(c, nullptr);
    EXPECT_EQ(injected, 1u);
    EXPECT_EQ(live, 2u);
}

TEST(AllocInterpose, FailNthCountsFromTheTimeItIsSet) {
    alloc_interpose::Scope scope;
    void *a = gMalloc(8);
    scope.FailNth(1);
    void *b = gCalloc(1, 8);
    void *c = gMalloc(8);
    gFree(a);
    gFree(c);
    scope.End();
    EXPECT_EQ(b, nullptr);
    EXPECT_NE(c, nullptr);
}

TEST(AllocInterpose, FailFromFailsEveryLaterCall) {
    alloc_interpose::Scope scope;
    scope.FailFrom(2);
    void *a = gMalloc(8);
    void *b = gMalloc(8);
    void *c = gRealloc(a, 100);
    unsigned long injected = scope.Injected();
    gFree(a);
    std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_NE(a, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(c, nullptr);
    EXPECT_EQ(injected, 2u);
    EXPECT_EQ(live, 0u);
}

TEST(AllocInterpose, FailSizeFailsOnlyThatSize) {
    alloc_interpose::Scope scope;
    scope.FailSize(33);
    void *a = gMalloc(33);
    void *b = gCalloc(3, 11);
    void *c = gMalloc(32);
    void *d = gRealloc(c, 33);
    gFree(c);
    std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_NE(c, nullptr);
    EXPECT_EQ(d, nullptr);
    EXPECT_EQ(live, 0u);
}

TEST(AllocInterpose, ReallocFollowsAMovedBlock) {
    alloc_interpose::Scope scope;
    char *a = static_cast<char *>(gMalloc(4));
    std::memcpy(a, "abc", 4);
    char *b = static_cast<char *>(gRealloc(a, 1 << 20));  // large enough to move
    std::size_t liveMoved = scope.LiveBlocks();
    std::size_t bytesMoved = scope.LiveBytes();
    bool same = std::memcmp(b, "abc", 4) == 0;
    gFree(b);
    std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_TRUE(same);
    EXPECT_EQ(liveMoved, 1u);
    EXPECT_EQ(bytesMoved, std::size_t{1} << 20);
    EXPECT_EQ(live, 0u);
}

TEST(AllocInterpose, ReallocToZeroReleasesWithoutCounting) {
    alloc_interpose::Scope scope;
    void *a = gMalloc(16);
    scope.FailFrom(1);
    void *b = gRealloc(a, 0);
    unsigned long injected = scope.Injected();
    std::size_t live = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(injected, 0u);
    EXPECT_EQ(live, 0u);
}

TEST(AllocInterpose, BlocksFromBeforeTheMarkAreNotTracked) {
    alloc_interpose::Scope scope;
    void *old = gMalloc(16);
    scope.Mark();
    void *moved = gRealloc(old, 1 << 20);
    std::size_t live = scope.LiveBlocks();
    unsigned long calls = scope.Calls();
    gFree(moved);
    scope.End();
    EXPECT_EQ(live, 0u);
    EXPECT_EQ(calls, 1u);
}

TEST(AllocInterpose, FreeAfterTheScopeEndsIsMatched) {
    alloc_interpose::Begin();
    void *a = gMalloc(5);
    alloc_interpose::End();
    EXPECT_EQ(alloc_interpose::LiveBlocks(), 1u);
    gFree(a);
    EXPECT_EQ(alloc_interpose::LiveBlocks(), 0u);
    alloc_interpose::Reset();
}

TEST(AllocInterpose, PauseStopsCountingOnly) {
    alloc_interpose::Scope scope;
    scope.FailNth(2);
    void *a = gMalloc(5);
    scope.Pause();
    void *b = gMalloc(5);  // not counted, never failed
    scope.Resume();
    void *c = gMalloc(5);
    gFree(a);
    gFree(b);
    gFree(c);
    scope.End();
    EXPECT_NE(b, nullptr);
    EXPECT_EQ(c, nullptr);
}

TEST(AllocInterpose, TracksManyBlocksAndFreesInAnyOrder) {
    std::vector<void *> blocks(5000);
    alloc_interpose::Scope scope;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        blocks[i] = gMalloc(i % 64 + 1);
    }
    std::size_t live = scope.LiveBlocks();
    for (std::size_t i = 0; i < blocks.size(); i += 2) {
        gFree(blocks[i]);
    }
    std::size_t half = scope.LiveBlocks();
    for (std::size_t i = blocks.size(); i-- > 0;) {
        if (i % 2 == 1) {
            gFree(blocks[i]);
        }
    }
    std::size_t none = scope.LiveBlocks();
    scope.End();
    EXPECT_EQ(live, 5000u);
    EXPECT_EQ(half, 2500u);
    EXPECT_EQ(none, 0u);
}

}  // namespace
