/* SPDX-License-Identifier: MIT */
// Date-time parsing under a failing system allocator: the copy of a source that lies inside the
// record is the only allocation, a failure is reported as CONV_ERR_MEMORY with nothing read, and
// the copy is released on every way out.
#include <gtest/gtest.h>
#include <string.h>

#include <nlssupport/convlib.h>
#include "dt_test_util.h"
#include "support/alloc_interpose.h"

namespace {

struct Outcome {
    uint32_t status;
    unsigned long calls;
    unsigned long injected;
    size_t live;
};

// Parses a source stored inside the record (at byte 2) under format, failing the n-th
// allocation when n is not 0.
Outcome ParseInsideRecord(CONV_DateTime *record, const char *text, const char *format,
                          unsigned long failNth) {
    memset(record, 0x33, sizeof *record);
    memcpy(reinterpret_cast<char *>(record) + 2, text, strlen(text) + 1);
    const char *source = reinterpret_cast<const char *>(record) + 2;
    alloc_interpose::Scope scope;
    scope.FailNth(failNth);
    Outcome o{};
    o.status = CONV_StringToDateTime(record, source, format, 0, nullptr, nullptr, nullptr);
    o.calls = scope.Calls();
    o.injected = scope.Injected();
    o.live = scope.LiveBlocks();
    scope.End();
    return o;
}

TEST(StringToDateTimeAllocation, FailedCopyIsAMemoryErrorWithNothingRead) {
    CONV_DateTime record;
    const Outcome o = ParseInsideRecord(&record, "12.11.1999", "%D.%M.%Z", 1);
    EXPECT_EQ(o.status, CONV_ERR_MEMORY);
    EXPECT_EQ(o.injected, 1u);
    EXPECT_EQ(o.live, 0u);
    // The record was not reset: it still holds the caller's bytes and the source text.
    EXPECT_EQ(memcmp(reinterpret_cast<char *>(&record) + 2, "12.11.1999", 11), 0);
    EXPECT_EQ(static_cast<unsigned char>(reinterpret_cast<char *>(&record)[0]), 0x33);
}

TEST(StringToDateTimeAllocation, CopyIsReleasedOnEveryWayOut) {
    struct Case {
        const char *text;
        const char *format;
        uint32_t status;
    };
    const Case cases[] = {
        {"12.11.1999", "%D.%M.%Z", CONV_OK},
        {"12/11/1999", "%D.%M.%Z", CONV_ERR_SCAN_MISMATCH},  // literal mismatch
        {"40.11.1999", "%D.%M.%Z", CONV_ERR_DAY},            // field failure
        {"31.11.1999", "%D.%M.%Z", CONV_ERR_DAY},            // end check
        {"12.11", "%D.%M.%Z", CONV_ERR_FORMAT_LEFT},
        {"12.11.1999x", "%D.%M.%Z", CONV_ERR_SOURCE_LEFT},
    };
    for (const Case &c : cases) {
        CONV_DateTime record;
        const Outcome o = ParseInsideRecord(&record, c.text, c.format, 0);
        EXPECT_EQ(o.status, c.status) << c.text;
        EXPECT_EQ(o.calls, 1u) << c.text;
        EXPECT_EQ(o.live, 0u) << c.text;
    }
}

TEST(StringToDateTimeAllocation, SourceOutsideTheRecordIsNotCopied) {
    CONV_DateTime record;
    alloc_interpose::Scope scope;
    scope.FailFrom(1);  // any allocation would fail the parse
    const uint32_t status =
        CONV_StringToDateTime(&record, "12.11.1999", "%D.%M.%Z", 0, nullptr, nullptr, nullptr);
    const unsigned long calls = scope.Calls();
    scope.End();
    EXPECT_EQ(status, CONV_OK);
    EXPECT_EQ(calls, 0u);
}

TEST(StringToDateTimeAllocation, EveryAllocationFailureIsCovered) {
    for (unsigned long n = 1;; ++n) {
        CONV_DateTime record;
        const Outcome o = ParseInsideRecord(&record, "1.2.2003", "%D.%M.%Z", n);
        EXPECT_EQ(o.live, 0u);
        if (o.injected == 0) {
            EXPECT_EQ(o.status, CONV_OK);
            EXPECT_EQ(record.year, 2003);
            break;
        }
        EXPECT_EQ(o.status, CONV_ERR_MEMORY);
    }
}

}  // namespace
