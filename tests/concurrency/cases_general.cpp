/* SPDX-License-Identifier: MIT */
// Cases of the general library, the registry and the code-page services.
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>
#include <nlssupport/version.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "concurrency/reentrancy_cases.h"

namespace concurrency_test {
namespace {

// A constant whose address the "%p" conversion writes: the same for every thread.
constexpr char kPointee[] = "pointee";

std::string NarrowFormatter() {
    Outcome o;
    auto run = [&o](std::size_t size, auto format, auto... args) {
        Buffer<96> b;
        o.Num(GLIB_snprintf(b.data(), size, format, args...));
        b.Record(o);
    };
    run(95, "%d|%5i|%-5u|%x|%#X|%o %o|%+d|% d|%hd|%hu", 42, -17, 3u, 255u, 48879u, 8u, 8u, 5, 7,
        70000, 70000);
    const char *const none = nullptr;
    run(95, "%s|%.3s|%10s|%-8s|%s|%.2s", "text", "abcdef", "right", "left", none, none);
    run(95, "%c%c|%%|a\\tb|%*d|%.*d|%-*d|", 'x', 'y', 6, 12, 4, 7, -5, 3);
    run(95, "%e|%.3f|%g|%G|%E|%10.2f|%-+8.1f|", 1.5, -2.25e10, 0.000123, 1e20, -0.0, 3.14159, 2.5);
    run(95, "%ls|%.3ls|%lc|%lc|", kWideText, kWideText, 0x20AC, 0x10FFFF);
    run(95, "%p", static_cast<const void *>(kPointee));
    run(95, "bad %q conversion", 1);
    run(95, "bad \\q escape");
    run(8, "%s", "longer than the room");
    run(4, "abcd");
    run(0, "nothing");
    run(95, "unfinished %5");
    return o.Take();
}

std::string WideFormatter() {
    static constexpr auto kNumbers = Wide("%d|%5i|%x|%#X|%o %o|%+d|%hd");
    static constexpr auto kStrings = Wide("%s|%.3s|%ls|%.2ls|%lc|%c");
    static constexpr auto kFloats = Wide("%e|%.3f|%g|%10.2f");
    static constexpr auto kTooLong = Wide("%s");
    static constexpr auto kInvalid = Wide("%q");
    Outcome o;
    auto run = [&o](std::size_t size, const GLIB_WChar *format, auto... args) {
        std::array<GLIB_WChar, 96> b;
        b.fill(0x7E7E);
        o.Num(GLIB_swprintf(b.data(), size, format, args...));
        o.Bytes(b.data(), sizeof b);
    };
    run(95, kNumbers.data(), 42, -17, 255u, 48879u, 8u, 8u, 5, 70000);
    run(95, kStrings.data(), "text", "abcdef", kWideText, kWideText, 0x20AC, 0xE9);
    run(95, kFloats.data(), 1.5, -2.25e10, 0.000123, 3.14159);
    run(6, kTooLong.data(), "longer than the room");
    run(95, kInvalid.data(), 1);
    return o.Take();
}

std::string Matchers() {
    struct Pair {
        const char *pattern;
        const char *value;
    };
    static constexpr Pair kPairs[] = {
        {"a%", "abc"},  {"a_c", "abc"}, {"a_c", "ac"},   {"%_", ""},       {"", ""},
        {"%%", ""},     {"a\\%", "a%"}, {"a\\%", "ab"},  {"%b%c", "abxc"}, {"x\\", "x\\"},
        {"ABC", "abc"}, {"A*", "abc"},  {"?b!*", "ab*"}, {"%", "any"},     {"_%_", "a"},
    };
    Outcome o;
    for (const Pair &p : kPairs) {
        o.Num(GLIB_ValueMatchesPattern(p.pattern, p.value));
        o.Num(GLIB_ValueMatchesPatternEx(p.pattern, p.value, "*?!", 0));
        o.Num(GLIB_ValueMatchesPatternEx(p.pattern, p.value, "*?!", 1));
        o.Num(GLIB_ValueMatchesPatternEx(p.pattern, p.value, "%_\\", 1));
    }
    static constexpr auto kPattern1 = Wide("a%c");
    static constexpr auto kPattern2 = Wide("_\\%");
    static constexpr auto kValue1 = Wide("abbbc");
    static constexpr auto kValue2 = Wide("x%");
    const GLIB_WChar surrogates[] = {'_', '_', 0};
    const GLIB_WChar onePattern[] = {'_', 0};
    o.Num(GLIB_ValueMatchesPatternW(kPattern1.data(), kValue1.data()));
    o.Num(GLIB_ValueMatchesPatternW(kPattern1.data(), kValue2.data()));
    o.Num(GLIB_ValueMatchesPatternW(kPattern2.data(), kValue2.data()));
    o.Num(GLIB_ValueMatchesPatternW(surrogates, kWideText + 3));
    o.Num(GLIB_ValueMatchesPatternW(onePattern, kWideText + 3));
    return o.Take();
}

std::string WideStrings() {
    static constexpr auto kAbc = Wide("AbC");
    static constexpr auto kDef = Wide("dEf");
    static constexpr auto kNumber = Wide("  -1234567");
    Outcome o;
    std::array<GLIB_WChar, 32> w;
    w.fill(0x7E7E);
    GLIB_wcscpy(w.data(), kAbc.data());
    GLIB_wcscat(w.data(), kDef.data());
    o.Units(w.data()).Num(static_cast<long long>(GLIB_wcslen(w.data())));
    o.Num(GLIB_wcscmp(kAbc.data(), kDef.data())).Num(GLIB_wcsncmp(kAbc.data(), kDef.data(), 2));
    o.Num(GLIB_wcsicmp(kAbc.data(), w.data())).Num(GLIB_wcsnicmp(kAbc.data(), w.data(), 3));
    o.Num(GLIB_wcschr(w.data(), 'C') - w.data()).Num(GLIB_wcsstr(w.data(), kDef.data()) - w.data());
    o.Units(GLIB_wcslwr(w.data())).Units(GLIB_wcsupr(w.data()));
    GLIB_wcsncpy(w.data() + 10, kDef.data(), 5);
    GLIB_wcsncat(w.data(), kAbc.data(), 2);
    GLIB_strwcsncpy(w.data() + 20, "ab\xE9", 4);
    GLIB_strwcscpy(w.data() + 25, "x\xFFy");
    o.Bytes(w.data(), sizeof w);
    o.Num(GLIB_wtoi(kNumber.data()));
    GLIB_WChar *copy = GLIB_strtowcs("copy");
    o.Units(copy);
    std::free(copy);
    return o.Take();
}

std::string StringUtilities() {
    Outcome o;
    char trimmed[] = " \t text \r\n";
    GLIB_strtrim(trimmed, GLIB_TRIM_START | GLIB_TRIM_END | GLIB_TRIM_TAB | GLIB_TRIM_CRLF);
    o.Bytes(trimmed, sizeof trimmed);
    char cased[] = "MiXeD \xC9";
    o.Text(GLIB_strlwr(cased)).Text(GLIB_strupr(cased));
    Buffer<16> b;
    GLIB_CopyNonBlanks(b.data(), "word rest", 10);
    b.Record(o);
    const char spaced[] = " \t\n value";
    o.Num(GLIB_ExtSkipBlanks(spaced) - spaced);
    o.Num(GLIB_AreDigits("")).Num(GLIB_AreDigits("0123")).Num(GLIB_AreDigits("12a"));
    const char number[] = " +-5 rest";
    char *end = nullptr;
    o.Num(GLIB_strtol(number, &end)).Num(end - number);
    o.Num(GLIB_strtol("99999999999", nullptr));
    uint32_t seed = 0;
    for (int i = 0; i < 4; ++i) {
        o.Num(GLIB_rand(&seed));
    }
    o.Num(seed);
    Buffer<32> when;
    GLIB_ctime(86400 * 365, when.data(), 25);
    when.Record(o);
    // The environment is only read: no thread changes it while the tests run.
    char *expanded =
        GLIB_ExpandEnvStrings("x${NLS_CONCURRENCY_NO_SUCH_VARIABLE}y${PATH}z", nullptr);
    o.Text(expanded);
    MMFLAT_Free(expanded);
    char *value = GLIB_MMStrDup_getenv("PATH", nullptr);
    o.Text(value);
    MMFLAT_Free(value);
    return o.Take();
}

// --- Registry and code-page services -----------------------------------------------------------

std::string RegistryLookups() {
    static constexpr const char *kNames[] = {
        "utf-8", "UTF-8",   "ISO-8859-1",   "iso_8859-1:1987", "GBK",   "Cp1006",
        "Cp970", "csASCII", "windows-1252", "no such set",     nullptr, "",
    };
    static constexpr int32_t kMibs[] = {3, 4, 13, 106, 107, 1015, 2259, 10038, -1, 0};
    static constexpr const char *kOsNames[] = {
        "ANSI_X3.4-1968", "UTF-8", "utf-8", "EUC-TW", "BIG5HKSCS", "ISO-8859-4", "EUC-JP", nullptr,
    };
    Outcome o;
    for (const char *name : kNames) {
        int32_t mib = 12345;
        o.Num(IANACS_GetMibEnum(name, &mib)).Num(mib);
    }
    for (int32_t mib : kMibs) {
        IANACS_Info info;
        std::memset(&info, 0x7E, sizeof info);
        o.Num(IANACS_GetInfo(mib, &info)).Text(info.name).Num(info.mibEnum);
        o.Num(info.minBytes).Num(info.maxBytes).Num(info.fixedBytes);
    }
    for (const char *name : kOsNames) {
        int32_t mib = 12345;
        o.Num(IANACSOS_GetMibEnum(name, &mib)).Num(mib);
    }
    o.Num(IANACS_CheckAliasTab()).Num(IANACSOS_CheckAliasTab());
    o.Text(NLSSUPPORT_GetVersion());
    return o.Take();
}

// The code set of the locale the threads run in: the process locale, "C" in the test program.
std::string CodePageOfTheProcessLocale() {
    Outcome o;
    for (int32_t size : {64, 6, 1, 0}) {
        Buffer<65> b;
        o.Num(KORANLS_GetOsCodePageName(b.data(), size, 0, nullptr));
        b.Record(o);
    }
    for (int32_t size : {64, 8, 0}) {
        Buffer<65> b;
        o.Num(KORANLS_GetOsCodePageIanaName(b.data(), size, nullptr));
        b.Record(o);
    }
    return o.Take();
}

constexpr ReentrancyCase kCases[] = {
    {"GLIB_snprintf", NarrowFormatter},
    {"GLIB_swprintf", WideFormatter},
    {"pattern matchers", Matchers},
    {"wide strings", WideStrings},
    {"string utilities", StringUtilities},
    {"registry lookups and checks", RegistryLookups},
    {"code page of the process locale", CodePageOfTheProcessLocale},
};

}  // namespace

std::span<const ReentrancyCase> GeneralCases() {
    return kCases;
}

}  // namespace concurrency_test
