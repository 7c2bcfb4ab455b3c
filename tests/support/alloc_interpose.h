/* SPDX-License-Identifier: MIT */
/*
 * alloc_interpose.h - a failing, counting system allocator for allocation-failure tests.
 *
 * Linking tests/support/alloc_interpose.cpp into a test executable replaces malloc, calloc,
 * realloc and free for the whole process (they forward to glibc's __libc_malloc, __libc_calloc,
 * __libc_realloc and __libc_free). Nothing is counted or failed until a counting period is armed,
 * so GoogleTest's own allocations outside a test scope are left alone.
 *
 * Usage (one executable per module group; not built when NLS_SANITIZE is ON, because ASan owns
 * malloc):
 *
 *     nls_add_gtest(memmgr_alloc_failure_test
 *                   SOURCES ${CMAKE_CURRENT_LIST_DIR}/alloc_failure_test.cpp
 *                           ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
 *                   MODULES memmgr errlib)
 *
 *     #include "support/alloc_interpose.h"
 *
 *     TEST(Foo, EveryAllocationFailureIsReported) {
 *         for (unsigned long n = 1;; ++n) {
 *             alloc_interpose::Scope scope;   // arms counting; all counters start at 0
 *             scope.FailNth(n);               // the n-th allocation call from now returns null
 *             void *result = CodeUnderTest();
 *             bool injected = scope.Injected() != 0;
 *             CleanUp(result);
 *             size_t live = scope.LiveBlocks(); // blocks allocated in the scope and not freed
 *             scope.End();                    // stop counting before gtest allocates
 *             EXPECT_EQ(live, 0u);
 *             if (!injected) break;           // n went past the last allocation: all covered
 *         }
 *     }
 *
 * Counted "allocation calls" are calls of malloc, calloc and realloc made while armed (realloc
 * with a null block or with a non-zero size included). Live blocks are the blocks handed out while
 * armed and not yet freed; a free of such a block is matched even after the period ends, and a
 * realloc that moves a tracked block keeps tracking it at its new address (realloc of a block that
 * was allocated before the mark is not tracked). Calls made by the test itself (std::string,
 * GoogleTest assertion failures) count too while armed: take the counts into locals and End() the
 * scope before asserting, or Pause() around such code.
 *
 * Works on x86_64 and i386. Single-threaded use only.
 */
#ifndef NLS_TESTS_SUPPORT_ALLOC_INTERPOSE_H
#define NLS_TESTS_SUPPORT_ALLOC_INTERPOSE_H

#include <cstddef>

namespace alloc_interpose {

/* Starts a counting period: clears rules, counters and tracked blocks, then arms. */
void Begin();
/* Ends the counting period: disarms and clears the failure rules (counters stay readable). */
void End();
/* Forgets everything: disarms, clears rules, counters and tracked blocks. */
void Reset();
/* Stops and restarts counting without touching rules, counters or tracked blocks. */
void Pause();
void Resume();
/* True while counting. */
bool Armed();

/* Sets the mark: counters and tracked blocks start again from zero (rules are kept). */
void Mark();

/* The n-th allocation call from now (1 = the next one) returns null; 0 cancels. */
void FailNth(unsigned long n);
/* Every allocation call from the n-th from now on (1 = the next one) returns null; 0 cancels. */
void FailFrom(unsigned long n);
/* Every allocation call asking for exactly `size` bytes (calloc: nmemb * size) returns null. */
void FailSize(std::size_t size);
/* Cancels FailNth, FailFrom and FailSize. */
void ClearFailures();

/* Allocation calls (malloc, calloc, realloc) made while armed since the mark. */
unsigned long Calls();
/* Allocation calls made to fail since the mark. */
unsigned long Injected();
/* Blocks allocated while armed since the mark and not freed yet. */
std::size_t LiveBlocks();
/* Bytes of those blocks (as requested). */
std::size_t LiveBytes();

/* RAII guard: Begin() on construction, Reset() on destruction. */
class Scope {
public:
    Scope() { Begin(); }
    ~Scope() { Reset(); }
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;

    void End() { alloc_interpose::End(); }
    void Pause() { alloc_interpose::Pause(); }
    void Resume() { alloc_interpose::Resume(); }
    void Mark() { alloc_interpose::Mark(); }
    void FailNth(unsigned long n) { alloc_interpose::FailNth(n); }
    void FailFrom(unsigned long n) { alloc_interpose::FailFrom(n); }
    void FailSize(std::size_t size) { alloc_interpose::FailSize(size); }
    void ClearFailures() { alloc_interpose::ClearFailures(); }
    unsigned long Calls() const { return alloc_interpose::Calls(); }
    unsigned long Injected() const { return alloc_interpose::Injected(); }
    std::size_t LiveBlocks() const { return alloc_interpose::LiveBlocks(); }
    std::size_t LiveBytes() const { return alloc_interpose::LiveBytes(); }
};

}  // namespace alloc_interpose

#endif /* NLS_TESTS_SUPPORT_ALLOC_INTERPOSE_H */
