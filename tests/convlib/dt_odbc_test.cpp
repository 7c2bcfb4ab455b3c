/* SPDX-License-Identifier: MIT */
// ODBC date, time and timestamp text: the unchecked fast path, the fraction digits for every
// base, the formatter's slow path at every smaller target size, and the record inside the target.
#include <gtest/gtest.h>

#include <new>
#include <string>

#include <nlssupport/convlib.h>
#include "dt_test_util.h"

namespace {

using dt_test::Buffer;
using dt_test::Sample;

using OdbcFunction = uint32_t (*)(char *, const CONV_DateTime *, int32_t, uint16_t *, uint16_t *);

struct Written {
    uint32_t status;
    std::string text;
    uint16_t failed;
    uint16_t count;
    bool tailUntouched;
};

Written Write(OdbcFunction function, const CONV_DateTime &record, int size) {
    Buffer buffer(size);
    Written w{};
    w.failed = 7777;
    w.count = 7777;
    w.status = function(buffer.data(), &record, size, &w.failed, &w.count);
    w.text = buffer.text();
    w.tailUntouched = buffer.untouchedFrom(size > 0 ? static_cast<int>(w.text.size()) + 1 : 0);
    return w;
}

TEST(OdbcText, FastPathsWriteTheWholeForm) {
    Written w = Write(CONV_DateTimeToODBCTSString, Sample(), 30);
    EXPECT_EQ(w.status, CONV_OK);
    EXPECT_EQ(w.text, "2009-03-05 13:07:09.000000000");
    EXPECT_TRUE(w.tailUntouched);
    EXPECT_EQ(w.failed, 7777);  // untouched on the fast path
    EXPECT_EQ(w.count, 7777);
    w = Write(CONV_DateTimeToODBCDateString, Sample(), 11);
    EXPECT_EQ(w.status, CONV_OK);
    EXPECT_EQ(w.text, "2009-03-05");
    EXPECT_TRUE(w.tailUntouched);
    w = Write(CONV_DateTimeToODBCTimeString, Sample(), 9);
    EXPECT_EQ(w.status, CONV_OK);
    EXPECT_EQ(w.text, "13:07:09");
    EXPECT_TRUE(w.tailUntouched);
    w = Write(CONV_DateTimeToODBCTimeString, Sample(), 100);
    EXPECT_EQ(w.text, "13:07:09");
    EXPECT_TRUE(w.tailUntouched);
}

TEST(OdbcText, FastPathDoesNotCheckAndKeepsTheLowestDigits) {
    CONV_DateTime r = Sample();
    r.month = 13;
    EXPECT_EQ(Write(CONV_DateTimeToODBCDateString, r, 11).text, "2009-13-05");
    r.year = 12345;
    r.hour = 123;
    r.minute = 99;
    EXPECT_EQ(Write(CONV_DateTimeToODBCTSString, r, 30).text, "2345-13-05 23:99:09.000000000");
    r = Sample();
    r.year = -1;  // a negative value gives characters below "0"
    EXPECT_EQ(Write(CONV_DateTimeToODBCDateString, r, 11).text, "000/-03-05");
    r.year = CONV_DT_UNSET;
    const Written w = Write(CONV_DateTimeToODBCDateString, r, 11);
    EXPECT_EQ(w.status, CONV_OK);
    EXPECT_EQ(w.text.size(), 10u);
}

TEST(OdbcText, TimestampFractionDigitsForEachBase) {
    struct Case {
        int32_t fraction;
        int16_t base;
        const char *digits;
    };
    const Case cases[] = {
        {0, 3, "000000000"},
        {0, CONV_DT_UNSET, "000000000"},
        {0, 77, "000000000"},
        {5, 3, "005000000"},
        {123456789, 9, "123456789"},
        {12345, 3, "345000000"},  // only the lowest base digits
        {1, 6, "000001000"},
        {7, 1, "700000000"},
        {5, 0, "000000000"},
        // Bases outside 0..9 are taken as 9, so nothing lands beyond the nine places.
        {5, CONV_DT_UNSET, "000000005"},
        {123, 10, "000000123"},
        {123, -1, "000000123"},
        {5000000, CONV_DT_UNSET, "005000000"},
    };
    for (const Case &c : cases) {
        CONV_DateTime r = Sample();
        r.fraction = c.fraction;
        r.fractionBase = c.base;
        const Written w = Write(CONV_DateTimeToODBCTSString, r, 30);
        EXPECT_EQ(w.status, CONV_OK);
        EXPECT_EQ(w.text, std::string("2009-03-05 13:07:09.") + c.digits) << c.base;
        EXPECT_TRUE(w.tailUntouched);
    }
}

TEST(OdbcText, TimestampNeverWritesOutsideTheTargetWhateverTheBase) {
    for (int32_t base = -32768; base <= 32767; base += 97) {
        for (int32_t fraction : {1, 999999999, -5, 2147483647}) {
            CONV_DateTime r = Sample();
            r.fraction = fraction;
            r.fractionBase = static_cast<int16_t>(base);
            const Written w = Write(CONV_DateTimeToODBCTSString, r, 30);
            ASSERT_EQ(w.status, CONV_OK);
            ASSERT_EQ(w.text.size(), 29u) << base;
            ASSERT_TRUE(w.tailUntouched) << base;
        }
    }
}

TEST(OdbcText, SmallTargetsGoThroughTheCheckingFormatter) {
    Written w = Write(CONV_DateTimeToODBCDateString, Sample(), 10);
    EXPECT_EQ(w.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(w.text, "2009-03-0");
    EXPECT_EQ(w.failed, CONV_FIELD_D);
    EXPECT_EQ(w.count, 3);
    EXPECT_TRUE(w.tailUntouched);
    w = Write(CONV_DateTimeToODBCTimeString, Sample(), 8);
    EXPECT_EQ(w.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(w.text, "13:07:0");
    EXPECT_EQ(w.failed, CONV_FIELD_S);
    EXPECT_TRUE(w.tailUntouched);
    CONV_DateTime bad = Sample();
    bad.month = 13;
    w = Write(CONV_DateTimeToODBCDateString, bad, 10);
    EXPECT_EQ(w.status, CONV_ERR_MONTH);
    EXPECT_EQ(w.text, "2009-");
    EXPECT_EQ(w.failed, CONV_FIELD_M);
    bad = Sample();
    bad.year = CONV_DT_UNSET;
    EXPECT_EQ(Write(CONV_DateTimeToODBCTSString, bad, 29).status, CONV_ERR_YEAR);
}

TEST(OdbcText, TimestampCutInTheFractionIsATruncationWarning) {
    CONV_DateTime r = Sample();
    r.fraction = 5;
    r.fractionBase = 3;
    Written w = Write(CONV_DateTimeToODBCTSString, r, 29);
    EXPECT_EQ(w.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(w.text, "2009-03-05 13:07:09.00500000");
    EXPECT_EQ(w.failed, CONV_FIELD_F);
    EXPECT_TRUE(w.tailUntouched);
    // With the base unset the slow path writes nanoseconds left-justified (the fast path
    // writes them zero-filled): the two paths differ on purpose.
    r.fraction = 5000000;
    r.fractionBase = CONV_DT_UNSET;
    w = Write(CONV_DateTimeToODBCTSString, r, 29);
    EXPECT_EQ(w.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(w.text, "2009-03-05 13:07:09.5000000 ");
}

TEST(OdbcText, SlowPathAtEverySmallerSize) {
    struct Form {
        OdbcFunction function;
        const char *full;  // what the formatter would write with room enough
        int fastSize;
        // Field spans in the text and their indexes.
        struct Span {
            int start, end;
            uint16_t index;
        } spans[7];
        int spanCount;
    };
    const Form forms[] = {
        {CONV_DateTimeToODBCTSString,
         "2009-03-05 13:07:09.0        ",
         30,
         {{0, 4, 13}, {5, 7, 4}, {8, 10, 0}, {11, 13, 2}, {14, 16, 3}, {17, 19, 7}, {20, 29, 1}},
         7},
        {CONV_DateTimeToODBCTimeString, "13:07:09", 9, {{0, 2, 2}, {3, 5, 3}, {6, 8, 7}}, 3},
        {CONV_DateTimeToODBCDateString, "2009-03-05", 11, {{0, 4, 13}, {5, 7, 4}, {8, 10, 0}}, 3},
    };
    for (const Form &form : forms) {
        const std::string full = form.full;
        for (int size = 1; size < form.fastSize; ++size) {
            const Written w = Write(form.function, Sample(), size);
            const int room = size - 1;
            EXPECT_EQ(w.text, full.substr(0, static_cast<size_t>(room))) << size;
            EXPECT_TRUE(w.tailUntouched) << size;
            uint16_t failed = 65535;
            for (int i = 0; i < form.spanCount; ++i) {
                if (room > form.spans[i].start && room < form.spans[i].end) {
                    failed = form.spans[i].index;
                }
            }
            EXPECT_EQ(w.failed, failed) << full << " " << size;
            EXPECT_EQ(w.status, failed == 1 ? CONV_WARN_TRUNCATION : CONV_ERR_TARGET_TOO_SMALL)
                << full << " " << size;
        }
        // No room at all: the formatter writes only the terminator, at the first byte.
        for (int size : {0, -1, INT32_MIN}) {
            Buffer buffer(1);
            uint16_t failed = 7777;
            uint16_t count = 7777;
            const CONV_DateTime record = Sample();
            EXPECT_EQ(form.function(buffer.data(), &record, size, &failed, &count),
                      CONV_ERR_TARGET_TOO_SMALL);
            EXPECT_EQ(buffer.data()[0], '\0') << size;
            EXPECT_TRUE(buffer.untouchedFrom(1)) << size;
            EXPECT_EQ(failed, CONV_FIELD_NONE);
            EXPECT_EQ(count, 0);
        }
    }
}

TEST(OdbcText, NullResultAddressesAreAllowedOnTheSlowPath) {
    char out[8];
    const CONV_DateTime r = Sample();
    EXPECT_EQ(CONV_DateTimeToODBCDateString(out, &r, sizeof out, nullptr, nullptr),
              CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_STREQ(out, "2009-03");
}

TEST(OdbcText, RecordIsNeverWritten) {
    CONV_DateTime r = Sample();
    r.era = 2;
    const CONV_DateTime before = r;
    char out[40];
    CONV_DateTimeToODBCTSString(out, &r, 20, nullptr, nullptr);
    CONV_DateTimeToODBCTSString(out, &r, 40, nullptr, nullptr);
    EXPECT_EQ(memcmp(&r, &before, sizeof r), 0);
}

TEST(OdbcText, RecordLyingInsideTheTarget) {
    for (int size : {40, 25}) {
        alignas(CONV_DateTime) char block[64];
        memset(block, dt_test::kSentinel, sizeof block);
        CONV_DateTime *record = new (block) CONV_DateTime(Sample());
        record->fraction = 5;
        record->fractionBase = 3;
        const uint32_t status = CONV_DateTimeToODBCTSString(block, record, size, nullptr, nullptr);
        const std::string full = "2009-03-05 13:07:09.005000000";
        EXPECT_EQ(std::string(block), full.substr(0, static_cast<size_t>(size - 1)));
        EXPECT_EQ(status, size == 40 ? CONV_OK : CONV_WARN_TRUNCATION);
        for (size_t i = static_cast<size_t>(size < 30 ? size : 30); i < sizeof block; ++i) {
            EXPECT_EQ(block[i], dt_test::kSentinel) << size << " " << i;
        }
    }
}

}  // namespace
