/* SPDX-License-Identifier: MIT */
// bench_main.cpp - runs the benchmarks and prints, beside the usual console output, a table of
// each library routine against its C library counterpart measured in the same run: both times,
// their ratio and whether the target is met. With --nls_markdown=<file> the table is also
// written as Markdown rows (used by scripts/bench.sh for docs/performance.md).
//
// Extra options (taken out before Google Benchmark reads the rest):
//   --nls_markdown=<file>   write the result table as Markdown rows to <file>
//   --nls_locpath=<dir>     directory of the generated locales of the process comparison

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "bench/bench_pairs.h"

namespace nlsbench {
namespace {

// The result table. Each routine is compared with what a caller would write with the C library.
constexpr Pair kPairs[] = {
    {"GLIB_snprintf, integers (\"%d %d %d %d\")", "BM_GlibSnprintfIntegers",
     "BM_LibcSnprintfIntegers", "<= 0.25x", 0.25, false},
    {"GLIB_snprintf, strings (\"%s %s %s\")", "BM_GlibSnprintfStrings", "BM_LibcSnprintfStrings",
     "<= 0.25x", 0.25, false},
    {"GLIB_snprintf, mixed (\"%5d|%-10s|%08x|%c|%.3s|%%\")", "BM_GlibSnprintfMixed",
     "BM_LibcSnprintfMixed", "<= 0.30x", 0.30, false},
    {"GLIB_snprintf, one 200-byte \"%s\"", "BM_GlibSnprintfLongString",
     "BM_LibcSnprintfLongString", nullptr, 0, false},
    {"CONV_DateTimeToString vs strftime, numeric", "BM_ConvDateTimeToString/Numeric",
     "BM_LibcStrftime/Numeric", "<= 0.35x", 0.35, false},
    {"CONV_DateTimeToString vs strftime, names", "BM_ConvDateTimeToString/Names",
     "BM_LibcStrftime/Names", "<= 0.40x", 0.40, false},
    {"CONV_StringToDateTime vs strptime, numeric", "BM_ConvStringToDateTime/Numeric",
     "BM_LibcStrptime/Numeric", "<= 0.40x", 0.40, false},
    {"CONV_StringToDateTime vs strptime, names", "BM_ConvStringToDateTime/Names",
     "BM_LibcStrptime/Names", "<= 1.0x", 1.0, false},
    {"CONV_DateTimeToODBCTSString vs snprintf", "BM_ConvDateTimeToODBCTSString",
     "BM_LibcSnprintfODBCTS", "<= 0.2x (5x faster)", 0.2, false},
    {"GLIB_ValueMatchesPattern vs fnmatch, prefix", "BM_GlibMatchPrefix", "BM_LibcFnmatchPrefix",
     "<= 0.6x", 0.6, false},
    {"GLIB_ValueMatchesPattern vs fnmatch, wildcards and escape", "BM_GlibMatchMixed",
     "BM_LibcFnmatchMixed", "<= 0.6x", 0.6, false},
    {"GLIB_ValueMatchesPattern vs fnmatch, adversarial (8 any-runs, fails at the end)",
     "BM_GlibMatchAdversarial", "BM_LibcFnmatchAdversarial", "<= 1.0x", 1.0, false},
    {"CONV_StringToInt32 vs strtol", "BM_ConvStringToInt32", "BM_LibcStrtol", "<= 0.5x", 0.5,
     false},
    {"CONV_StringToInt32 vs strtol, blanks and sign", "BM_ConvStringToInt32Blanks",
     "BM_LibcStrtolBlanks", "<= 1.5x", 1.5, false},
    {"CONV_StringToDouble vs strtod", "BM_ConvStringToDouble", "BM_LibcStrtod", "<= 0.6x", 0.6,
     false},
    {"CONV_StringToDouble vs strtod, short (\"12.5\")", "BM_ConvStringToDoubleShort",
     "BM_LibcStrtodShort", nullptr, 0, false},
    {"CONV_StringToDouble vs strtod, long (17 digits and an exponent)",
     "BM_ConvStringToDoubleLong", "BM_LibcStrtodLong", nullptr, 0, false},
    {"CONV_StringToDecimal, one call", "BM_ConvStringToDecimal", nullptr, nullptr, 0, false},
    {"CONV_DecimalToString, one call", "BM_ConvDecimalToString", nullptr, nullptr, 0, false},
    {"CONV_WChar16StrToUTF8 vs iconv (256 units)", "BM_ConvWChar16StrToUTF8", "BM_LibcIconvUTF16",
     "<= 0.25x", 0.25, false},
    {"CONV_WChar16StrToUTF8 vs iconv, ASCII (256 units)", "BM_ConvWChar16StrToUTF8Ascii",
     "BM_LibcIconvUTF16Ascii", nullptr, 0, false},
    {"CONV_WChar16StrToUTF8 vs iconv, mostly non-ASCII (256 units)",
     "BM_ConvWChar16StrToUTF8NonAscii", "BM_LibcIconvUTF16NonAscii", nullptr, 0, false},
    {"IANACS_GetMibEnum, one lookup", "BM_IanacsGetMibEnum", nullptr, nullptr, 0, false},
    {"nlsreport with 30 locales vs 30 runs of locale charmap", "BM_NlsreportProcess",
     "BM_LocaleCharmapProcesses", nullptr, 0, true},
};

std::string gLocalePath;

// Median of a list of times (seconds).
double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    const size_t n = v.size();
    return n % 2 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// A time in seconds as text with a unit that keeps three to four significant digits.
std::string TimeText(double seconds) {
    char buf[64];
    if (seconds >= 1e-1)
        std::snprintf(buf, sizeof buf, "%.3f s", seconds);
    else if (seconds >= 1e-4)
        std::snprintf(buf, sizeof buf, "%.2f ms", seconds * 1e3);
    else if (seconds >= 1e-6)
        std::snprintf(buf, sizeof buf, "%.2f us", seconds * 1e6);
    else
        std::snprintf(buf, sizeof buf, "%.1f ns", seconds * 1e9);
    return buf;
}

// Console reporter that also keeps every repetition's CPU and wall-clock time per benchmark.
class PairReporter : public benchmark::ConsoleReporter {
  public:
    // Keeps the repetitions and shows only what summarises them (the aggregates) when a
    // benchmark runs more than once.
    void ReportRuns(const std::vector<Run> &reports) override {
        std::vector<Run> shown;
        for (const Run &run : reports)
            if (run.run_type == Run::RT_Aggregate || run.repetitions <= 1)
                shown.push_back(run);
        if (!shown.empty())
            ConsoleReporter::ReportRuns(shown);
        for (const Run &run : reports) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            Samples &s = samples_[run.run_name.function_name];
            if (run.error_occurred) {
                s.error = run.error_message;
                continue;
            }
            const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
            s.cpu.push_back(run.GetAdjustedCPUTime() / unit);
            s.real.push_back(run.GetAdjustedRealTime() / unit);
            const auto rate = run.counters.find("bytes_per_second");
            if (rate != run.counters.end())
                s.bytesPerSecond.push_back(rate->second.value);
        }
    }

    // Median time of a benchmark in seconds, or a negative value when it did not run.
    double Time(const char *name, bool realTime, std::string *why) const {
        const auto it = samples_.find(name);
        if (it == samples_.end()) {
            *why = "not run";
            return -1;
        }
        const Samples &s = it->second;
        if (s.cpu.empty()) {
            *why = s.error.empty() ? "not run" : s.error;
            return -1;
        }
        return Median(realTime ? s.real : s.cpu);
    }

    // Median throughput of a benchmark in bytes per second, or a negative value when it does
    // not count bytes.
    double Throughput(const char *name) const {
        const auto it = samples_.find(name);
        if (it == samples_.end() || it->second.bytesPerSecond.empty())
            return -1;
        return Median(it->second.bytesPerSecond);
    }

  private:
    struct Samples {
        std::vector<double> cpu;
        std::vector<double> real;
        std::vector<double> bytesPerSecond;
        std::string error;
    };
    std::map<std::string, Samples> samples_;
};

// Text for a Markdown table cell: '|' would end the cell, so it is escaped.
std::string MarkdownCell(const char *text) {
    std::string cell;
    for (const char *p = text; *p != 0; ++p) {
        if (*p == '|')
            cell += '\\';
        cell += *p;
    }
    return cell;
}

// Prints the result table on standard output and, when markdown is not null, as Markdown rows.
void PrintTable(const PairReporter &reporter, FILE *markdown) {
    std::printf("\n%-78s %12s %12s %8s %-20s %s\n", "routine", "ours", "libc", "ratio", "target",
                "result");
    for (const Pair &pair : kPairs) {
        std::string why;
        const double ours = reporter.Time(pair.ours, pair.realTime, &why);
        const double libc = pair.libc ? reporter.Time(pair.libc, pair.realTime, &why) : -1;
        std::string oursText = ours >= 0 ? TimeText(ours) : "-";
        const double throughput = reporter.Throughput(pair.ours);
        if (ours >= 0 && throughput > 0) {
            char buf[32];
            std::snprintf(buf, sizeof buf, " (%.2f GB/s)", throughput / 1e9);
            oursText += buf;
        }
        std::string libcText = libc >= 0 ? TimeText(libc) : "-";
        std::string ratioText = "-";
        std::string result = "-";
        if (ours >= 0 && libc > 0) {
            char buf[32];
            const double ratio = ours / libc;
            std::snprintf(buf, sizeof buf, "%.2fx", ratio);
            ratioText = buf;
            if (pair.maxRatio > 0)
                result = ratio <= pair.maxRatio ? "met" : "missed";
        } else if (ours < 0 || (pair.libc && libc < 0)) {
            result = "not measured: " + why;
        }
        const char *target = pair.target ? pair.target : "-";
        std::printf("%-78s %12s %12s %8s %-20s %s\n", pair.routine, oursText.c_str(),
                    libcText.c_str(), ratioText.c_str(), target, result.c_str());
        if (markdown)
            std::fprintf(markdown, "| %s | %s | %s | %s | %s | %s |\n",
                         MarkdownCell(pair.routine).c_str(),
                         oursText.c_str(), libcText.c_str(), ratioText.c_str(), target,
                         result.c_str());
    }
}

}  // namespace

const char *LocalePath() {
    return gLocalePath.empty() ? nullptr : gLocalePath.c_str();
}

}  // namespace nlsbench

int main(int argc, char **argv) {
    std::string markdownPath;
    std::vector<char *> args;
    for (int i = 0; i < argc; ++i) {
        if (std::strncmp(argv[i], "--nls_markdown=", 15) == 0)
            markdownPath = argv[i] + 15;
        else if (std::strncmp(argv[i], "--nls_locpath=", 14) == 0)
            nlsbench::gLocalePath = argv[i] + 14;
        else
            args.push_back(argv[i]);
    }
    int count = static_cast<int>(args.size());
    args.push_back(nullptr);
    benchmark::Initialize(&count, args.data());
    if (benchmark::ReportUnrecognizedArguments(count, args.data()))
        return 1;

    nlsbench::PairReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    FILE *markdown = nullptr;
    if (!markdownPath.empty()) {
        markdown = std::fopen(markdownPath.c_str(), "w");
        if (!markdown) {
            std::perror(markdownPath.c_str());
            return 1;
        }
    }
    nlsbench::PrintTable(reporter, markdown);
    if (markdown)
        std::fclose(markdown);
    benchmark::Shutdown();
    return 0;
}
