/* SPDX-License-Identifier: MIT */
// Every reentrant routine family called from eight threads at once gives, call for call, the
// answer it gives on one thread alone. Each thread has its own buffers, records and error stack;
// what the threads share is the library's code and constant tables, the C library (allocator,
// locale, environment) and the process. Under ThreadSanitizer the same run also shows that the
// calls touch no common writable memory.
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <latch>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "concurrency/reentrancy_cases.h"

namespace concurrency_test {
namespace {

constexpr int kThreads = 8;
// Rounds of every case on every thread: enough for the threads to meet in every family many
// times, few enough to finish in a few seconds under ThreadSanitizer on two cores.
constexpr int kRounds = 12;

// What one thread saw: the number of calls whose result differed, and the first of them.
struct ThreadReport {
    int mismatches = 0;
    std::string first;
};

// Runs every case kRounds times, each thread starting at another case, so that at any moment
// the threads are in different families as well as in the same one.
void RunCases(int thread, std::span<const ReentrancyCase> cases,
              const std::vector<std::string> &expected, std::latch &start, ThreadReport &report) {
    start.arrive_and_wait();
    const std::size_t n = cases.size();
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t k = 0; k < n; ++k) {
            const std::size_t i = (k + static_cast<std::size_t>(thread) * 3 + round) % n;
            const std::string got = cases[i].run();
            if (got == expected[i]) {
                continue;
            }
            if (report.mismatches++ == 0) {
                report.first = std::string(cases[i].name) + " in round " + std::to_string(round) +
                               "\n  expected: " + expected[i] + "\n  got:      " + got;
            }
        }
    }
}

TEST(ConcurrentCalls, EveryReentrantFamilyGivesTheSingleThreadedAnswer) {
    const std::vector<ReentrancyCase> all = ReentrancyCases();
    const std::span<const ReentrancyCase> cases = all;
    std::vector<std::string> expected;
    for (const ReentrancyCase &c : cases) {
        expected.push_back(c.run());
    }
    // The answers do not depend on what ran before on the same thread.
    for (std::size_t i = cases.size(); i-- > 0;) {
        ASSERT_EQ(cases[i].run(), expected[i]) << cases[i].name;
    }

    std::vector<ThreadReport> reports(kThreads);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back(RunCases, t, cases, std::cref(expected), std::ref(start),
                             std::ref(reports[static_cast<std::size_t>(t)]));
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (int t = 0; t < kThreads; ++t) {
        const ThreadReport &r = reports[static_cast<std::size_t>(t)];
        EXPECT_EQ(r.mismatches, 0) << "thread " << t << ", first difference: " << r.first;
    }
}

}  // namespace
}  // namespace concurrency_test
