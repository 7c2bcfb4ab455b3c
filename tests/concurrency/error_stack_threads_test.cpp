/* SPDX-License-Identifier: MIT */
// Error stacks from several threads: a stack used by one thread only keeps exactly that thread's
// records while the other threads fill theirs, and a heap record taken off a stack is plain
// memory that another thread may read and release, once handed over under the caller's lock.
#include <gtest/gtest.h>
#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <latch>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace concurrency_test {
namespace {

constexpr int kThreads = 8;
constexpr int kPushes = 300;

// Component of the records these tests push (any number but the library's own 50).
constexpr int32_t kComponent = 70;

std::string MessageOf(int thread, int i) {
    return "thread " + std::to_string(thread) + " error " + std::to_string(i);
}

// The life of one thread's stack: heap records pushed (the slot array growing many times over),
// every third one taken off again, memory errors from the checked allocator on the way, and
// blocks allocated with the stack as the allocator's report target. Returns what differs from
// what this thread alone put there, or an empty text.
std::string FillOwnStack(int thread, std::latch &start) {
    ERRLIB_ErrorStack *stack = nullptr;
    if (ERRLIB_ErrorStack_Create(&stack) != 0) {
        return "no stack";
    }
    const std::string file = "thread-" + std::to_string(thread) + ".cpp";
    std::string problem;
    start.arrive_and_wait();
    int taken = 0;
    for (int i = 0; i < kPushes && problem.empty(); ++i) {
        ERRLIB_ErrorStack_AddError(stack, kComponent, thread, 1, "origin", "function", file.c_str(),
                                   i, MessageOf(thread, i).c_str());
        void *block = MMFLAT_New(static_cast<uint32_t>(16 + i), stack, file.c_str(), i);
        MMFLAT_Free(block);
        if (i % 7 == 0) {
            // A null text is refused and recorded in this stack's reserved record.
            MMFLAT_StrDup(nullptr, stack, file.c_str(), i);
        }
        if (i % 3 == 2) {
            ERRLIB_Error *record = nullptr;
            ERRLIB_ErrorStack_GetLastError(stack, &record);
            if (record != nullptr && record->errorClass == ERRLIB_CLASS_MEMORY) {
                // The pending memory error comes first; it stays the stack's.
                if (record->line != i - (i % 7) || file != record->file) {
                    problem = "reserved record of another call at push " + std::to_string(i);
                }
                ERRLIB_Error_Release(record, stack);
                ERRLIB_ErrorStack_GetLastError(stack, &record);
            }
            if (record == nullptr || record->code != thread || record->line != i ||
                MessageOf(thread, i) != record->message) {
                problem = "newest record is not this thread's push " + std::to_string(i);
            }
            ERRLIB_Error_Release(record, nullptr);
            ++taken;
        }
    }
    int32_t count = -1;
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &count);
    ERRLIB_Error *record = nullptr;
    ERRLIB_ErrorStack_PeekLastError(stack, &record);
    const bool memoryPending = record != nullptr && record->errorClass == ERRLIB_CLASS_MEMORY;
    if (problem.empty() && count != kPushes - taken + (memoryPending ? 1 : 0)) {
        problem = "count " + std::to_string(count);
    }
    if (memoryPending) {
        ERRLIB_ErrorStack_RemoveLastError(stack, 2, ERRLIB_CLASS_MEMORY);
    }
    // The records left, oldest first, are this thread's pushes that were not taken off.
    for (int i = 0; i < kPushes && problem.empty(); ++i) {
        if (i % 3 == 2) {
            continue;
        }
        ERRLIB_Error *oldest = nullptr;
        ERRLIB_ErrorStack_GetFirstError(stack, &oldest);
        if (oldest == nullptr || oldest->component != kComponent || oldest->code != thread ||
            oldest->line != i || file != oldest->file || MessageOf(thread, i) != oldest->message) {
            problem = "record " + std::to_string(i) + " is not this thread's";
        }
        ERRLIB_Error_Release(oldest, stack);
    }
    ERRLIB_ErrorStack_Destroy(stack);
    return problem;
}

TEST(ConcurrentErrorStacks, EachThreadKeepsItsOwnStack) {
    std::vector<std::string> problems(kThreads);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &start, &problems] {
            problems[static_cast<std::size_t>(t)] = FillOwnStack(t, start);
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ(problems[static_cast<std::size_t>(t)], "") << "thread " << t;
    }
}

// Records taken off a stack, on their way from the threads that made them to the threads that
// release them. The lock is the caller's synchronisation that the hand-over needs.
class RecordQueue {
  public:
    void Put(ERRLIB_Error *record) {
        std::lock_guard<std::mutex> lock(mutex_);
        records_.push_back(record);
    }
    // The oldest record, or null when there is none at the moment.
    ERRLIB_Error *Take() {
        std::lock_guard<std::mutex> lock(mutex_);
        if (records_.empty()) {
            return nullptr;
        }
        ERRLIB_Error *record = records_.front();
        records_.pop_front();
        return record;
    }

  private:
    std::mutex mutex_;
    std::deque<ERRLIB_Error *> records_;
};

constexpr int kProducers = 4;
constexpr int kRecordsEach = 500;

TEST(ConcurrentErrorStacks, RecordTakenOffAStackIsReleasedByAnotherThread) {
    RecordQueue queue;
    std::latch start(2 * kProducers);
    std::vector<int> made(kProducers, 0);
    std::vector<int> released(kProducers, 0);
    std::vector<int> wrong(kProducers, 0);
    std::vector<std::thread> threads;
    for (int p = 0; p < kProducers; ++p) {
        threads.emplace_back([p, &start, &queue, &made] {
            ERRLIB_ErrorStack *stack = nullptr;
            ERRLIB_ErrorStack_Create(&stack);
            start.arrive_and_wait();
            for (int i = 0; i < kRecordsEach; ++i) {
                ERRLIB_ErrorStack_AddError(stack, kComponent, p, 1, nullptr, "producer", nullptr, i,
                                           MessageOf(p, i).c_str());
                ERRLIB_Error *record = nullptr;
                if (ERRLIB_ErrorStack_GetFirstError(stack, &record) == 0) {
                    queue.Put(record);
                    ++made[static_cast<std::size_t>(p)];
                }
            }
            ERRLIB_ErrorStack_Destroy(stack);
        });
    }
    // Each consumer releases the records of one producer's count, whoever made them.
    for (int c = 0; c < kProducers; ++c) {
        threads.emplace_back([c, &start, &queue, &released, &wrong] {
            start.arrive_and_wait();
            int done = 0;
            while (done < kRecordsEach) {
                ERRLIB_Error *record = queue.Take();
                if (record == nullptr) {
                    std::this_thread::yield();
                    continue;
                }
                const int p = record->code;
                if (p < 0 || p >= kProducers || record->component != kComponent ||
                    std::strcmp(record->function, "producer") != 0 ||
                    MessageOf(p, record->line) != record->message) {
                    ++wrong[static_cast<std::size_t>(c)];
                }
                ERRLIB_Error_Release(record, nullptr);
                ++done;
            }
            released[static_cast<std::size_t>(c)] = done;
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(queue.Take(), nullptr);
    for (int i = 0; i < kProducers; ++i) {
        EXPECT_EQ(made[static_cast<std::size_t>(i)], kRecordsEach) << "producer " << i;
        EXPECT_EQ(released[static_cast<std::size_t>(i)], kRecordsEach) << "consumer " << i;
        EXPECT_EQ(wrong[static_cast<std::size_t>(i)], 0) << "consumer " << i;
    }
}

}  // namespace
}  // namespace concurrency_test
