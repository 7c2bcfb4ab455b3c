/* SPDX-License-Identifier: MIT */
// The generic allocation-torture driver. For every row of the table (alloc_torture_rows.cpp):
//   1. one run without failure counts the call's allocations, which must be exactly its plan;
//   2. for n = 1 .. N, a run with only the n-th allocation failing;
//   3. for n = 1 .. N, a run with every allocation from the n-th on failing;
//   4. for every site, a run where allocations of that site's size fail (so the plan's sizes are
//      checked too: the first allocation of that size is the one that fails);
// a routine stops at its first failed allocation, except inside a batch of allocations it asks
// for together before checking them (Site::batch), where the rest of the batch is still asked for;
// and every run must leave no block allocated after the caller's cleanup (the set-up's blocks
// included), report the injected failure exactly as the row expects and, where the routine
// reports on an error stack, leave exactly the allocator's memory error for the failed site.
#include "torture/alloc_torture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include "support/alloc_interpose.h"

namespace {

using torture::Row;
using torture::Site;
using torture::World;

enum class Rule { kNone, kFailNth, kFailFrom, kFailSize };

struct Outcome {
    bool setupOk;
    unsigned long calls;     // allocation calls made by the call under test
    unsigned long injected;  // of which made to fail
    std::size_t live;        // blocks still allocated after the cleanup
};

// Runs one scenario under one failure rule; `check` runs (counting paused) between the call and
// the cleanup.
template <typename Check>
Outcome Execute(const Row &row, Rule rule, unsigned long n, std::size_t size, Check check) {
    World w{};
    Outcome outcome{};
    alloc_interpose::Scope scope;
    outcome.setupOk = row.setup(w);
    const unsigned long callsBefore = scope.Calls();
    switch (rule) {
        case Rule::kNone:
            break;
        case Rule::kFailNth:
            scope.FailNth(n);
            break;
        case Rule::kFailFrom:
            scope.FailFrom(n);
            break;
        case Rule::kFailSize:
            scope.FailSize(size);
            break;
    }
    if (outcome.setupOk) {
        row.run(w);
    }
    outcome.calls = scope.Calls() - callsBefore;
    outcome.injected = scope.Injected();
    scope.ClearFailures();
    scope.Pause();  // GoogleTest's own allocations are not the library's
    if (outcome.setupOk) {
        check(w);
    }
    row.cleanup(w);
    outcome.live = scope.LiveBlocks();
    scope.End();
    return outcome;
}

// The memory error the checked allocator records for a failed allocation at `site`: it is the
// newest error on the stack and reads component 50, code 1, class 2, the failing call, the
// reporting file and line, and the size asked for in decimal.
void ExpectAllocatorError(const World &w, const Site &site) {
    ASSERT_NE(w.stack, nullptr);
    ERRLIB_Error *newest = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_PeekLastError(w.stack, &newest), 0);
    ASSERT_NE(newest, nullptr);
    EXPECT_EQ(newest->component, 50);
    EXPECT_EQ(newest->code, 1);
    EXPECT_EQ(newest->errorClass, 2);
    ASSERT_NE(newest->origin, nullptr);
    EXPECT_STREQ(newest->origin, "");
    ASSERT_NE(newest->function, nullptr);
    EXPECT_STREQ(newest->function, site.call);
    ASSERT_NE(newest->file, nullptr);
    const std::string file = newest->file;
    const std::string suffix = site.file;
    EXPECT_GE(file.size(), suffix.size());
    EXPECT_EQ(file.substr(file.size() >= suffix.size() ? file.size() - suffix.size() : 0), suffix)
        << "reported file " << file;
    if (site.line != 0) {
        EXPECT_EQ(newest->line, site.line);
    } else {
        EXPECT_GT(newest->line, 0);
    }
    ASSERT_NE(newest->message, nullptr);
    EXPECT_STREQ(newest->message, std::to_string(site.reported).c_str());
}

// No memory error on the stack (a successful call reports nothing).
void ExpectNoAllocatorError(const World &w) {
    if (w.stack == nullptr) {
        return;
    }
    ERRLIB_Error *found = nullptr;
    int32_t index = 0;
    ASSERT_EQ(ERRLIB_ErrorStack_FindError(w.stack, 50, 1, 2, nullptr, nullptr, &index, &found), 0);
    EXPECT_EQ(index, -1);
}

class AllocTorture : public ::testing::TestWithParam<Row> {
  protected:
    static void SetUpTestSuite() {
        torture::PrepareEnvironment();
    }
};

TEST_P(AllocTorture, CountsExactlyThePlannedAllocations) {
    const Row &row = GetParam();
    const std::vector<Site> plan = row.plan();
    const Outcome o = Execute(row, Rule::kNone, 0, 0, [&](const World &w) {
        row.expectSuccess(w);
        if (row.reportsOnStack) {
            ExpectNoAllocatorError(w);
        }
    });
    ASSERT_TRUE(o.setupOk);
    EXPECT_EQ(o.calls, plan.size());
    EXPECT_EQ(o.injected, 0u);
    EXPECT_EQ(o.live, 0u);
}

TEST_P(AllocTorture, EachAllocationFailingAloneIsReportedWithoutLeak) {
    const Row &row = GetParam();
    const std::vector<Site> plan = row.plan();
    for (std::size_t k = 0; k < plan.size(); ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k + 1) + " of " + std::to_string(plan.size()));
        const Outcome o = Execute(row, Rule::kFailNth, k + 1, 0, [&](const World &w) {
            row.expectFailure(w, k);
            if (row.reportsOnStack) {
                ExpectAllocatorError(w, plan[k]);
            }
        });
        ASSERT_TRUE(o.setupOk);
        EXPECT_EQ(o.injected, 1u);
        EXPECT_EQ(o.calls, torture::BatchEnd(plan, k) + 1) << "the call stops after the failure";
        EXPECT_EQ(o.live, 0u);
    }
    // One past the last allocation: nothing fails and the call succeeds.
    const Outcome o = Execute(row, Rule::kFailNth, plan.size() + 1, 0,
                              [&](const World &w) { row.expectSuccess(w); });
    EXPECT_EQ(o.injected, 0u);
    EXPECT_EQ(o.live, 0u);
}

TEST_P(AllocTorture, EveryAllocationFromTheNthFailingIsReportedWithoutLeak) {
    const Row &row = GetParam();
    const std::vector<Site> plan = row.plan();
    for (std::size_t k = 0; k < plan.size(); ++k) {
        SCOPED_TRACE("allocations from " + std::to_string(k + 1) + " of " +
                     std::to_string(plan.size()));
        const Outcome o = Execute(row, Rule::kFailFrom, k + 1, 0, [&](const World &w) {
            row.expectFailure(w, k);
            if (row.reportsOnStack) {
                ExpectAllocatorError(w, plan[k]);
            }
        });
        ASSERT_TRUE(o.setupOk);
        EXPECT_EQ(o.injected, torture::BatchEnd(plan, k) - k + 1)
            << "the call stops after its first failed allocation";
        EXPECT_EQ(o.live, 0u);
    }
}

TEST_P(AllocTorture, EachAllocationSizeFailingHitsTheFirstSiteOfThatSize) {
    const Row &row = GetParam();
    const std::vector<Site> plan = row.plan();
    for (std::size_t k = 0; k < plan.size(); ++k) {
        std::size_t first = 0;
        while (plan[first].size != plan[k].size) {
            ++first;
        }
        SCOPED_TRACE("size " + std::to_string(plan[k].size) + " of allocation " +
                     std::to_string(k + 1));
        const Outcome o = Execute(row, Rule::kFailSize, 0, plan[k].size, [&](const World &w) {
            row.expectFailure(w, first);
            if (row.reportsOnStack) {
                ExpectAllocatorError(w, plan[first]);
            }
        });
        const std::size_t end = torture::BatchEnd(plan, first);
        std::size_t sameSize = 0;
        for (std::size_t i = first; i <= end; ++i) {
            sameSize += plan[i].size == plan[k].size ? 1 : 0;
        }
        ASSERT_TRUE(o.setupOk);
        EXPECT_EQ(o.injected, sameSize);
        EXPECT_EQ(o.calls, end + 1);
        EXPECT_EQ(o.live, 0u);
    }
}

INSTANTIATE_TEST_SUITE_P(Routines, AllocTorture, ::testing::ValuesIn(torture::Rows()),
                         [](const ::testing::TestParamInfo<Row> &info) {
                             return std::string(info.param.name);
                         });

// The table covers every allocating routine of the public interface at least once.
TEST(AllocTortureTable, HasOneRowPerScenarioAndUniqueNames) {
    const std::vector<Row> &rows = torture::Rows();
    std::size_t sites = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        sites += rows[i].plan().size();
        for (std::size_t j = i + 1; j < rows.size(); ++j) {
            EXPECT_STRNE(rows[i].name, rows[j].name);
        }
    }
    EXPECT_GE(rows.size(), 30u);
    EXPECT_GE(sites, 60u);
}

}  // namespace
