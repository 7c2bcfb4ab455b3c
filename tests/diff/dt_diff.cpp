/* SPDX-License-Identifier: MIT */
// dt_diff.cpp - a differential driver of the date-time routines. It generates, from a seed,
// millions of cases (formats of every field syntax, records with boundary and random values,
// names records, target sizes, sources made by formatting and then damaging the text) and feeds
// them to CONV_DateTimeToString, CONV_CalcDateTimeLength, CONV_StringToDateTime,
// CONV_CheckDateTime, CONV_GetDayOfWeek and the three ODBC writers. Everything observable goes
// into one 64-bit digest per routine family: statuses, every byte of sentinel-filled targets,
// failedField and fieldCount, the record afterwards.
//
// The driver is built twice, once against a reference build of the library and once against the
// build under test, and the two outputs must be identical: tests/diff/run_diff.sh does all of
// this. With --dump <first> <count> it prints the cases of that range one per line instead, so
// that a difference can be narrowed down with diff(1).
// Usage: dt_diff [cases] [seed] [--dump first count]
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>

namespace {

// SplitMix64: a small generator whose sequence is the same on every target.
struct Random {
    uint64_t state;
    uint64_t Next() {
        uint64_t z = (state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    uint32_t Below(uint32_t n) { return static_cast<uint32_t>(Next() % n); }
    bool Chance(uint32_t percent) { return Below(100) < percent; }
};

// FNV-1a over bytes, one digest per routine family.
struct Digest {
    uint64_t hash = 0xCBF29CE484222325ull;
    uint64_t cases = 0;
    void Add(const void *data, size_t size) {
        const auto *p = static_cast<const unsigned char *>(data);
        for (size_t i = 0; i < size; ++i) {
            hash = (hash ^ p[i]) * 0x100000001B3ull;
        }
    }
    template <typename T>
    void Value(T v) {
        Add(&v, sizeof v);
    }
};

constexpr char kLetters[] = "DFHIMPQSTUVWYZEJ";
constexpr char kSentinel = '\x5A';
constexpr int kBufferSize = 1100;

// A field value: in range for a valid record, else one of the marker, a random 16-bit value,
// the edges of the range or a value in range.
int16_t FieldValue(Random &r, int16_t low, int16_t high, bool valid) {
    switch (valid ? 7 : r.Below(8)) {
        case 0:
            return CONV_DT_UNSET;
        case 1:
            return static_cast<int16_t>(r.Next());
        case 2:
            return static_cast<int16_t>(low - 1 + static_cast<int>(r.Below(3)));
        case 3:
            return static_cast<int16_t>(high - 1 + static_cast<int>(r.Below(3)));
        default:
            return static_cast<int16_t>(low + static_cast<int>(r.Below(
                                                  static_cast<uint32_t>(high - low + 1))));
    }
}

CONV_DateTime MakeRecord(Random &r) {
    const bool valid = r.Chance(60);
    CONV_DateTime d;
    d.day = FieldValue(r, 1, valid ? 28 : 31, valid);
    d.month = FieldValue(r, 1, 12, valid);
    switch (valid ? 5 : r.Below(6)) {
        case 0:
            d.year = CONV_DT_UNSET;
            break;
        case 1:
            d.year = static_cast<int16_t>(r.Next());
            break;
        case 2:
            d.year = static_cast<int16_t>(1860 + r.Below(140));
            break;
        default:
            d.year = static_cast<int16_t>(1900 + r.Below(200));
    }
    d.dayOfWeek = FieldValue(r, 0, 6, valid);
    d.second = FieldValue(r, 0, 59, valid);
    d.minute = FieldValue(r, 0, 59, valid);
    d.hour = FieldValue(r, 0, valid ? 23 : 24, valid);
    switch (valid ? 2 : r.Below(6)) {
        case 0:
            d.fraction = CONV_DT_UNSET;
            break;
        case 1:
            d.fraction = static_cast<int32_t>(r.Next());
            break;
        case 2:
            d.fraction = static_cast<int32_t>(r.Below(1000));
            break;
        default:
            d.fraction = static_cast<int32_t>(r.Below(1000000000u));
    }
    d.fractionBase = r.Chance(30) || valid ? CONV_DT_UNSET : static_cast<int16_t>(r.Below(12) - 1);
    d.era = r.Chance(50) ? CONV_DT_UNSET : static_cast<int16_t>(r.Below(6) - 1);
    return d;
}

// Names records: none, a few filled groups, empty texts, era names and SYEAR.
struct Names {
    std::string text[CONV_NAMES_COUNT];
    const char *slot[CONV_NAMES_COUNT];
    bool given;
};

void MakeNames(Random &r, Names &names) {
    names.given = r.Chance(60);
    static const char *const kPool[] = {"", "A", "Jan", "January", "Mon", "Monday", "AM",
                                        "PM", "x", "Heisei", "Showa", "Gannen", "12", "longer name",
                                        "Ja", "M"};
    for (int i = 0; i < CONV_NAMES_COUNT; ++i) {
        if (r.Chance(25)) {
            names.slot[i] = nullptr;
            continue;
        }
        names.text[i] = kPool[r.Below(sizeof kPool / sizeof kPool[0])];
        if (r.Chance(20)) {
            names.text[i] += static_cast<char>('a' + r.Below(26));
        }
        names.slot[i] = names.text[i].c_str();
    }
}

std::string MakeFormat(Random &r) {
    std::string f;
    const uint32_t parts = 1 + r.Below(8);
    for (uint32_t p = 0; p < parts; ++p) {
        const uint32_t kind = r.Below(20);
        if (kind < 3) {
            static const char kLiterals[] = "-: ./,Tx%9 ";
            f += kLiterals[r.Below(sizeof kLiterals - 1)];
            continue;
        }
        if (kind == 3) {
            f += "%%";
            continue;
        }
        f += '%';
        const uint32_t flag = r.Below(4);
        if (flag == 1) {
            f += '-';
        } else if (flag == 2) {
            f += '0';
        }
        if (r.Chance(50)) {
            const uint32_t width = r.Chance(10) ? r.Below(1200) : r.Below(12);
            f += std::to_string(width);
        }
        if (r.Chance(20)) {
            f += '.';
            if (r.Chance(90)) {
                f += std::to_string(r.Below(12));
            }
        }
        f += r.Chance(95) ? kLetters[r.Below(16)] : "XdAB%"[r.Below(5)];
    }
    return f;
}

void DumpBytes(const char *label, const char *data, int size) {
    std::printf(" %s=", label);
    for (int i = 0; i < size; ++i) {
        std::printf("%02x", static_cast<unsigned char>(data[i]));
    }
}

void DumpRecord(const CONV_DateTime &d) {
    std::printf(" rec=%d,%d,%d,%d,%d,%d,%d,%" PRId32 ",%d,%d", d.day, d.month, d.year, d.dayOfWeek,
                d.second, d.minute, d.hour, d.fraction, d.fractionBase, d.era);
}

struct Run {
    Digest format, format0, calc, parse, check, odbc, odbc0;
    uint64_t dumpFirst = 0;
    uint64_t dumpCount = 0;
    bool Dumping(uint64_t i) const { return i >= dumpFirst && i < dumpFirst + dumpCount; }
};

void OneCase(Run &run, Random &r, uint64_t index) {
    Names names;
    MakeNames(r, names);
    const char *const *namesArg = names.given ? names.slot : nullptr;
    const std::string format = MakeFormat(r);
    CONV_DateTime record = MakeRecord(r);
    const bool dump = run.Dumping(index);
    if (dump) {
        std::printf("%" PRIu64 " fmt=[%s]", index, format.c_str());
        DumpRecord(record);
    }

    // Formatting, at a random size (below 1 too).
    int32_t size = r.Chance(5) ? -static_cast<int32_t>(r.Below(3)) : static_cast<int32_t>(r.Below(90));
    if (r.Chance(3)) {
        size = 1000;
    }
    char buffer[kBufferSize];
    std::memset(buffer, kSentinel, sizeof buffer);
    uint16_t failed = 7777;
    uint16_t count = 7777;
    CONV_DateTime formatted = record;
    uint32_t status = CONV_DateTimeToString(buffer, &formatted, size, format.c_str(), namesArg,
                                            &failed, &count);
    Digest &fd = size > 0 ? run.format : run.format0;
    fd.Value(status);
    fd.Value(failed);
    fd.Value(count);
    fd.Add(buffer, sizeof buffer);
    fd.Add(&formatted, sizeof formatted);
    ++fd.cases;
    if (dump) {
        std::printf(" fs=%u ff=%u fc=%u", status, failed, count);
        DumpBytes("out", buffer, size > 0 ? size + 1 : 1);
        DumpRecord(formatted);
    }

    // Measuring.
    uint32_t length = 4242;
    status = CONV_CalcDateTimeLength(format.c_str(), namesArg, &length);
    run.calc.Value(status);
    run.calc.Value(length);
    ++run.calc.cases;
    if (dump) {
        std::printf(" cs=%u cl=%u", status, length);
    }

    // Parsing: mostly the whole text of the format, else the text cut to the size above; either
    // damaged now and then.
    std::string source;
    if (size > 0) {
        source.assign(buffer, strnlen(buffer, sizeof buffer));
    }
    if (source.empty() || r.Chance(80)) {
        char full[kBufferSize];
        CONV_DateTime again = record;
        CONV_DateTimeToString(full, &again, sizeof full, format.c_str(), namesArg, nullptr, nullptr);
        source.assign(full, strnlen(full, sizeof full));
    }
    const uint32_t damage = r.Below(10);
    if (damage == 0 && !source.empty()) {
        source[r.Below(static_cast<uint32_t>(source.size()))] = "0 9-+a:%"[r.Below(8)];
    } else if (damage == 1 && !source.empty()) {
        source.erase(r.Below(static_cast<uint32_t>(source.size())), 1);
    } else if (damage == 2) {
        source.insert(r.Below(static_cast<uint32_t>(source.size() + 1)), 1, "0 15x"[r.Below(5)]);
    }
    CONV_DateTime parsed = MakeRecord(r);
    const int32_t century = r.Chance(50) ? 1900 : static_cast<int32_t>(r.Next());
    failed = 7777;
    count = 7777;
    status = CONV_StringToDateTime(&parsed, source.c_str(), format.c_str(), century, namesArg,
                                   &failed, &count);
    run.parse.Value(status);
    run.parse.Value(failed);
    run.parse.Value(count);
    run.parse.Add(&parsed, sizeof parsed);
    ++run.parse.cases;
    if (dump) {
        std::printf(" src=[%s] ps=%u pf=%u pc=%u", source.c_str(), status, failed, count);
        DumpRecord(parsed);
    }

    // Checking and the day of the week.
    run.check.Value(CONV_CheckDateTime(&record));
    CONV_DateTime week = record;
    run.check.Value(CONV_GetDayOfWeek(&week));
    run.check.Add(&week, sizeof week);
    ++run.check.cases;

    // The ODBC writers, fast and slow paths.
    typedef uint32_t (*Writer)(char *, const CONV_DateTime *, int32_t, uint16_t *, uint16_t *);
    static const Writer kWriters[] = {CONV_DateTimeToODBCTSString, CONV_DateTimeToODBCTimeString,
                                      CONV_DateTimeToODBCDateString};
    const int32_t odbcSize = static_cast<int32_t>(r.Below(34)) - 2;
    std::memset(buffer, kSentinel, 64);
    failed = 7777;
    count = 7777;
    status = kWriters[r.Below(3)](buffer, &record, odbcSize, &failed, &count);
    Digest &od = odbcSize > 0 ? run.odbc : run.odbc0;
    od.Value(status);
    od.Value(failed);
    od.Value(count);
    od.Add(buffer, 64);
    ++od.cases;
    if (dump) {
        std::printf(" os=%u", status);
        DumpBytes("odbc", buffer, 40);
        std::printf("\n");
    }
}

}  // namespace

int main(int argc, char **argv) {
    uint64_t cases = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    Run run;
    if (argc > 5 && std::strcmp(argv[3], "--dump") == 0) {
        run.dumpFirst = std::strtoull(argv[4], nullptr, 10);
        run.dumpCount = std::strtoull(argv[5], nullptr, 10);
        cases = run.dumpFirst + run.dumpCount;
    }
    Random r{seed};
    for (uint64_t i = 0; i < cases; ++i) {
        OneCase(run, r, i);
    }
    if (run.dumpCount != 0) {
        return 0;
    }
    const struct {
        const char *name;
        const Digest &digest;
    } rows[] = {{"DateTimeToString (size 1 and up)", run.format},
                {"DateTimeToString (size 0 and below)", run.format0},
                {"CalcDateTimeLength", run.calc},
                {"StringToDateTime", run.parse},
                {"CheckDateTime and GetDayOfWeek", run.check},
                {"ODBC writers (size 1 and up)", run.odbc},
                {"ODBC writers (size 0 and below)", run.odbc0}};
    for (const auto &row : rows) {
        std::printf("%-40s %12" PRIu64 " cases  digest %016" PRIx64 "\n", row.name,
                    row.digest.cases, row.digest.hash);
    }
    return 0;
}
