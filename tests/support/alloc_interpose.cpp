/* SPDX-License-Identifier: MIT */
/*
 * alloc_interpose.cpp - replaces malloc, calloc, realloc and free for a test executable.
 * See alloc_interpose.h for the usage.
 *
 * The state lives in plain static storage and the tracking table is a fixed open-addressing hash
 * table, so the replacement allocator never allocates itself.
 */
#include "support/alloc_interpose.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void __libc_free(void *block);
}

namespace {

constexpr std::size_t kTableSize = std::size_t{1} << 16;  // power of two
constexpr std::size_t kMaxTracked = kTableSize / 2;

struct Entry {
    void *block;
    std::size_t size;
};

struct State {
    bool armed;
    unsigned long calls;
    unsigned long injected;
    unsigned long failNthAt;   // 0: no rule; else the value of `calls` that fails
    unsigned long failFromAt;  // 0: no rule; else the first value of `calls` that fails
    bool failSizeSet;
    std::size_t failSize;
    std::size_t tracked;
    std::size_t trackedBytes;
    Entry table[kTableSize];
};

State gState;  // zero-initialised static storage; test support only, single-threaded

[[noreturn]] void Die(const char *text) {
    std::size_t len = 0;
    while (text[len] != '\0') {
        ++len;
    }
    ssize_t ignored = write(2, text, len);
    (void)ignored;
    std::abort();
}

std::size_t Slot(const void *block) {
    auto value = reinterpret_cast<std::uintptr_t>(block);
    value ^= value >> 17;
    value *= static_cast<std::uintptr_t>(0x9E3779B97F4A7C15ULL);
    value ^= value >> 15;
    return static_cast<std::size_t>(value) & (kTableSize - 1);
}

void Track(void *block, std::size_t size) {
    if (block == nullptr) {
        return;
    }
    if (gState.tracked >= kMaxTracked) {
        Die("alloc_interpose: too many live blocks tracked\n");
    }
    std::size_t i = Slot(block);
    while (gState.table[i].block != nullptr) {
        if (gState.table[i].block == block) {
            Die("alloc_interpose: block handed out twice\n");
        }
        i = (i + 1) & (kTableSize - 1);
    }
    gState.table[i] = Entry{block, size};
    ++gState.tracked;
    gState.trackedBytes += size;
}

// Removes `block` from the table; returns true when it was tracked (its size in *sizeOut).
bool Untrack(const void *block, std::size_t *sizeOut = nullptr) {
    if (block == nullptr || gState.tracked == 0) {
        return false;
    }
    std::size_t i = Slot(block);
    while (gState.table[i].block != block) {
        if (gState.table[i].block == nullptr) {
            return false;
        }
        i = (i + 1) & (kTableSize - 1);
    }
    if (sizeOut != nullptr) {
        *sizeOut = gState.table[i].size;
    }
    --gState.tracked;
    gState.trackedBytes -= gState.table[i].size;
    gState.table[i] = Entry{nullptr, 0};
    // Backward-shift deletion keeps every probe chain unbroken.
    std::size_t hole = i;
    std::size_t j = (i + 1) & (kTableSize - 1);
    while (gState.table[j].block != nullptr) {
        std::size_t home = Slot(gState.table[j].block);
        // Move entry j into the hole when its home is not cyclically in (hole, j].
        bool homeInRange = (hole <= j) ? (home > hole && home <= j) : (home > hole || home <= j);
        if (!homeInRange) {
            gState.table[hole] = gState.table[j];
            gState.table[j] = Entry{nullptr, 0};
            hole = j;
        }
        j = (j + 1) & (kTableSize - 1);
    }
    return true;
}

void ClearTable() {
    if (gState.tracked != 0) {
        for (Entry &entry : gState.table) {
            entry = Entry{nullptr, 0};
        }
    }
    gState.tracked = 0;
    gState.trackedBytes = 0;
}

// Counts one allocation call (only while armed) and tells whether it must fail.
bool CountAndDecide(std::size_t size) {
    if (!gState.armed) {
        return false;
    }
    ++gState.calls;
    bool fail = (gState.failNthAt != 0 && gState.calls == gState.failNthAt) ||
                (gState.failFromAt != 0 && gState.calls >= gState.failFromAt) ||
                (gState.failSizeSet && size == gState.failSize);
    if (fail) {
        ++gState.injected;
    }
    return fail;
}

}  // namespace

namespace alloc_interpose {

void Begin() {
    Reset();
    gState.armed = true;
}

void End() {
    gState.armed = false;
    ClearFailures();
}

void Reset() {
    gState.armed = false;
    ClearFailures();
    Mark();
}

void Pause() {
    gState.armed = false;
}

void Resume() {
    gState.armed = true;
}

bool Armed() {
    return gState.armed;
}

void Mark() {
    gState.calls = 0;
    gState.injected = 0;
    ClearTable();
}

void FailNth(unsigned long n) {
    gState.failNthAt = (n == 0) ? 0 : gState.calls + n;
}

void FailFrom(unsigned long n) {
    gState.failFromAt = (n == 0) ? 0 : gState.calls + n;
}

void FailSize(std::size_t size) {
    gState.failSizeSet = true;
    gState.failSize = size;
}

void ClearFailures() {
    gState.failNthAt = 0;
    gState.failFromAt = 0;
    gState.failSizeSet = false;
    gState.failSize = 0;
}

unsigned long Calls() {
    return gState.calls;
}

unsigned long Injected() {
    return gState.injected;
}

std::size_t LiveBlocks() {
    return gState.tracked;
}

std::size_t LiveBytes() {
    return gState.trackedBytes;
}

}  // namespace alloc_interpose

extern "C" {

void *malloc(std::size_t size) noexcept {
    if (CountAndDecide(size)) {
        return nullptr;
    }
    void *block = __libc_malloc(size);
    if (gState.armed) {
        Track(block, size);
    }
    return block;
}

void *calloc(std::size_t count, std::size_t size) noexcept {
    // The product only selects a size rule; __libc_calloc checks the overflow itself.
    if (CountAndDecide(count * size)) {
        return nullptr;
    }
    void *block = __libc_calloc(count, size);
    if (gState.armed) {
        Track(block, count * size);
    }
    return block;
}

void *realloc(void *block, std::size_t size) noexcept {
    if (block != nullptr && size == 0) {
        // glibc frees the block and returns null: a release, never made to fail.
        Untrack(block);
        return __libc_realloc(block, size);
    }
    if (CountAndDecide(size)) {
        return nullptr;  // the old block stays valid and stays tracked
    }
    std::size_t oldSize = 0;
    bool wasTracked = Untrack(block, &oldSize);
    void *result = __libc_realloc(block, size);
    if (result == nullptr) {
        if (wasTracked) {
            Track(block, oldSize);  // real failure: the old block is still live
        }
        return nullptr;
    }
    if (wasTracked || (block == nullptr && gState.armed)) {
        Track(result, size);
    }
    return result;
}

void free(void *block) noexcept {
    Untrack(block);
    __libc_free(block);
}

}  // extern "C"
