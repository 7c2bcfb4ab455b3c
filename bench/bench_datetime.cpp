/* SPDX-License-Identifier: MIT */
// bench_datetime.cpp - the date-time routines against the C library on equivalent formats:
// CONV_DateTimeToString against strftime, CONV_StringToDateTime against strptime, and the ODBC
// time-stamp text against snprintf with "%04d-%02d-%02d %02d:%02d:%02d.%09d".

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>

#include <nlssupport/convlib.h>

namespace {

constexpr int kInputs = 64;

// The same 64 date-times as library records, as struct tm, and as text in both formats.
struct DateTimes {
    CONV_DateTime record[kInputs];
    struct tm tm[kInputs];
    char numeric[kInputs][32];
    char names[kInputs][48];

    DateTimes() {
        uint32_t x = 2024u;
        for (int i = 0; i < kInputs; ++i) {
            x = x * 1103515245u + 12345u;
            struct tm t {};
            t.tm_year = static_cast<int>(1900 + (x >> 4) % 200) - 1900;
            t.tm_mon = static_cast<int>((x >> 12) % 12);
            t.tm_mday = 1 + static_cast<int>((x >> 16) % 28);
            t.tm_hour = static_cast<int>((x >> 20) % 24);
            t.tm_min = static_cast<int>((x >> 6) % 60);
            t.tm_sec = static_cast<int>((x >> 9) % 60);
            t.tm_isdst = -1;
            time_t when = timegm(&t);  // fills tm_wday
            gmtime_r(&when, &t);
            tm[i] = t;
            CONV_DateTime &r = record[i];
            r.day = static_cast<int16_t>(t.tm_mday);
            r.month = static_cast<int16_t>(t.tm_mon + 1);
            r.year = static_cast<int16_t>(t.tm_year + 1900);
            r.dayOfWeek = static_cast<int16_t>(t.tm_wday);
            r.second = static_cast<int16_t>(t.tm_sec);
            r.minute = static_cast<int16_t>(t.tm_min);
            r.hour = static_cast<int16_t>(t.tm_hour);
            r.fraction = static_cast<int32_t>(x % 1000000000u);
            r.fractionBase = CONV_DT_UNSET;
            r.era = CONV_DT_UNSET;
            std::strftime(numeric[i], sizeof numeric[i], "%Y-%m-%d %H:%M:%S", &t);
            std::strftime(names[i], sizeof names[i], "%A, %d %B %Y", &t);
        }
    }
};
const DateTimes gDates;

// Library formats equivalent to the strftime / strptime formats used beside them.
constexpr char kOursNumeric[] = "%04Z-%02M-%02D %02H:%02I:%02S";
constexpr char kLibcNumeric[] = "%Y-%m-%d %H:%M:%S";
constexpr char kOursNames[] = "%T, %02D %V %Z";
constexpr char kLibcNames[] = "%A, %d %B %Y";

// One benchmark per routine; the format (and, for parsing, the texts) are captured arguments, so
// the numeric and the names variant run the same loop.
void BM_ConvDateTimeToString(benchmark::State &state, const char *format) {
    char buf[64];
    CONV_DateTime record[kInputs];
    std::memcpy(record, gDates.record, sizeof record);
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_DateTimeToString(buf, &record[i++ & (kInputs - 1)],
                                                       sizeof buf, format, nullptr, nullptr,
                                                       nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(BM_ConvDateTimeToString, Numeric, kOursNumeric);
BENCHMARK_CAPTURE(BM_ConvDateTimeToString, Names, kOursNames);

void BM_LibcStrftime(benchmark::State &state, const char *format) {
    char buf[64];
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            std::strftime(buf, sizeof buf, format, &gDates.tm[i++ & (kInputs - 1)]));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(BM_LibcStrftime, Numeric, kLibcNumeric);
BENCHMARK_CAPTURE(BM_LibcStrftime, Names, kLibcNames);

// The texts strftime wrote: kInputs of them, `stride` bytes apart from `first` on.
const char *Text(const char *first, size_t stride, int i) {
    return first + static_cast<size_t>(i & (kInputs - 1)) * stride;
}

// Checks once that the library reads the text that strftime wrote; a benchmark of a failing
// parse would measure the wrong path.
bool ParsesAll(const char *first, size_t stride, const char *format) {
    for (int i = 0; i < kInputs; ++i) {
        CONV_DateTime r{};
        r.fractionBase = CONV_DT_UNSET;
        if (CONV_StringToDateTime(&r, Text(first, stride, i), format, 0, nullptr, nullptr,
                                  nullptr) != CONV_OK)
            return false;
    }
    return true;
}

void BM_ConvStringToDateTime(benchmark::State &state, const char *first, size_t stride,
                             const char *format) {
    if (!ParsesAll(first, stride, format)) {
        state.SkipWithError("the library does not read the strftime text");
        return;
    }
    CONV_DateTime r{};
    r.fractionBase = CONV_DT_UNSET;
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_StringToDateTime(&r, Text(first, stride, i++), format, 0,
                                                       nullptr, nullptr, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(BM_ConvStringToDateTime, Numeric, gDates.numeric[0], sizeof gDates.numeric[0],
                  kOursNumeric);
BENCHMARK_CAPTURE(BM_ConvStringToDateTime, Names, gDates.names[0], sizeof gDates.names[0],
                  kOursNames);

void BM_LibcStrptime(benchmark::State &state, const char *first, size_t stride,
                     const char *format) {
    struct tm t;
    int i = 0;
    for (auto _ : state) {
        std::memset(&t, 0, sizeof t);
        benchmark::DoNotOptimize(strptime(Text(first, stride, i++), format, &t));
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(BM_LibcStrptime, Numeric, gDates.numeric[0], sizeof gDates.numeric[0],
                  kLibcNumeric);
BENCHMARK_CAPTURE(BM_LibcStrptime, Names, gDates.names[0], sizeof gDates.names[0], kLibcNames);

void BM_ConvDateTimeToODBCTSString(benchmark::State &state) {
    char buf[32];
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CONV_DateTimeToODBCTSString(
            buf, &gDates.record[i++ & (kInputs - 1)], 30, nullptr, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ConvDateTimeToODBCTSString);

void BM_LibcSnprintfODBCTS(benchmark::State &state) {
    char buf[32];
    int i = 0;
    for (auto _ : state) {
        const CONV_DateTime &r = gDates.record[i++ & (kInputs - 1)];
        benchmark::DoNotOptimize(std::snprintf(buf, 30, "%04d-%02d-%02d %02d:%02d:%02d.%09d",
                                               r.year, r.month, r.day, r.hour, r.minute, r.second,
                                               static_cast<int>(r.fraction)));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_LibcSnprintfODBCTS);

}  // namespace
