/* SPDX-License-Identifier: MIT */
// bench_match.cpp - GLIB_ValueMatchesPattern against fnmatch (flags 0) on equivalent patterns:
// '%' is '*', '_' is '?', and the escape '\' is the same in both. The values hold none of the
// characters that only fnmatch treats specially ('*', '?', '[').

#include <benchmark/benchmark.h>

#include <fnmatch.h>

#include <cstdio>
#include <cstring>
#include <string>

#include <nlssupport/glib.h>

namespace {

constexpr int kInputs = 16;

// Values of the prefix and mixed cases: half match, half do not.
const char *const kNames[kInputs] = {
    "report_2024-03-05_final.txt",  "report_2023-11-30_draft.txt", "reply_2024-01-01.txt",
    "report_20x4-03-05.txt",        "rep_2024-07-07.txt.bak",      "report_2019-12-31_q4.txt",
    "readme.txt",                   "report_2024-03-05_final.doc", "report_2022-02-02_v2.txt",
    "rep._2024-05-05.txt",          "report2024-03-05.txt",        "report_2024-10-10_a_b_c.txt",
    "report_2021-06-15.txt",        "xreport_2024-03-05.txt",      "report_2000-01-01_y2k.txt",
    "report_1999-12-31_last.txt"};

// Prefix: a literal head and one trailing run.
constexpr char kOursPrefix[] = "report\\_%";
constexpr char kLibcPrefix[] = "report_*";
// Runs, single-character wildcards and an escaped literal wildcard character.
constexpr char kOursMixed[] = "rep%\\_20__-%.txt";
constexpr char kLibcMixed[] = "rep*\\_20?" "?-*.txt";

// The adversarial case: eight runs, each followed by a literal that occurs everywhere, and a tail
// that never occurs, against 1024 characters: every run is tried and the match fails at the end.
struct Adversarial {
    std::string ours;
    std::string libc;
    std::string value;
    Adversarial() {
        for (int i = 0; i < 8; ++i) {
            ours += "%a";
            libc += "*a";
        }
        ours += "%ab";
        libc += "*ab";
        value.assign(1024, 'a');
    }
};
const Adversarial gAdversarial;

// Checks once that both matchers agree on every value, so that both measure the same work.
bool Agree(const char *ours, const char *libc) {
    for (const char *value : kNames)
        if ((GLIB_ValueMatchesPattern(ours, value) == 1) != (fnmatch(libc, value, 0) == 0))
            return false;
    return true;
}

void BM_GlibMatchPrefix(benchmark::State &state) {
    if (!Agree(kOursPrefix, kLibcPrefix)) {
        state.SkipWithError("the matchers disagree");
        return;
    }
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(GLIB_ValueMatchesPattern(kOursPrefix, kNames[i++ & (kInputs - 1)]));
}
BENCHMARK(BM_GlibMatchPrefix);

void BM_LibcFnmatchPrefix(benchmark::State &state) {
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(fnmatch(kLibcPrefix, kNames[i++ & (kInputs - 1)], 0));
}
BENCHMARK(BM_LibcFnmatchPrefix);

void BM_GlibMatchMixed(benchmark::State &state) {
    if (!Agree(kOursMixed, kLibcMixed)) {
        state.SkipWithError("the matchers disagree");
        return;
    }
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(GLIB_ValueMatchesPattern(kOursMixed, kNames[i++ & (kInputs - 1)]));
}
BENCHMARK(BM_GlibMatchMixed);

void BM_LibcFnmatchMixed(benchmark::State &state) {
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(fnmatch(kLibcMixed, kNames[i++ & (kInputs - 1)], 0));
}
BENCHMARK(BM_LibcFnmatchMixed);

void BM_GlibMatchAdversarial(benchmark::State &state) {
    const char *pattern = gAdversarial.ours.c_str();
    const char *value = gAdversarial.value.c_str();
    if (GLIB_ValueMatchesPattern(pattern, value) != 0) {
        state.SkipWithError("the adversarial value matched");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(GLIB_ValueMatchesPattern(pattern, value));
}
BENCHMARK(BM_GlibMatchAdversarial);

void BM_LibcFnmatchAdversarial(benchmark::State &state) {
    const char *pattern = gAdversarial.libc.c_str();
    const char *value = gAdversarial.value.c_str();
    if (fnmatch(pattern, value, 0) == 0) {
        state.SkipWithError("the adversarial value matched");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(fnmatch(pattern, value, 0));
}
BENCHMARK(BM_LibcFnmatchAdversarial);

}  // namespace
