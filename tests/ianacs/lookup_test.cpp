/* SPDX-License-Identifier: MIT */
// Name and MIBenum lookups of the registry.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <nlssupport/ianacs.h>
#include "registry_facts.h"

namespace {

using ianacs_test::FoldLower;
using ianacs_test::FoldUpper;
using ianacs_test::IsUnreachable;
using ianacs_test::kUnreachableNames;

constexpr int32_t kSentinel = 0x5A5A5A5A;

struct Lookup {
    int status;
    int32_t mib;
};

Lookup Alias(const char *name) {
    Lookup r{-7, kSentinel};
    r.status = IANACS_GetMibEnum(name, &r.mib);
    return r;
}

Lookup OsAlias(const char *name) {
    Lookup r{-7, kSentinel};
    r.status = IANACSOS_GetMibEnum(name, &r.mib);
    return r;
}

// MIBenum a reachable alias resolves to: the duplicated names give their second row.
int32_t ExpectedMib(const IANACS_AliasEntry &row) {
    if (std::strcmp(row.name, "Cp1006") == 0) {
        return 10022;
    }
    if (std::strcmp(row.name, "Cp970") == 0) {
        return 10020;
    }
    return row.mibEnum;
}

void ExpectAliasResult(const std::string &key, const IANACS_AliasEntry &row) {
    const Lookup r = Alias(key.c_str());
    if (IsUnreachable(row.name)) {
        EXPECT_EQ(r.status, 1) << key;
        EXPECT_EQ(r.mib, -1) << key;
    } else {
        EXPECT_EQ(r.status, 0) << key;
        EXPECT_EQ(r.mib, ExpectedMib(row)) << key;
    }
}

TEST(IanaGetMibEnum, EveryAliasAsWrittenIsFoundExceptTheTwelveUnreachable) {
    int missed = 0;
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        ExpectAliasResult(row.name, row);
        if (Alias(row.name).status != 0) {
            ++missed;
        }
    }
    EXPECT_EQ(missed, 12);
}

TEST(IanaGetMibEnum, EveryAliasInUpperCaseGivesTheSameResult) {
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        ExpectAliasResult(FoldUpper(row.name), row);
    }
}

TEST(IanaGetMibEnum, EveryAliasInLowerCaseGivesTheSameResult) {
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        ExpectAliasResult(FoldLower(row.name), row);
    }
}

TEST(IanaGetMibEnum, UnreachableNamesAreMissedInEveryCase) {
    for (std::string_view name : kUnreachableNames) {
        const std::string asWritten(name);
        for (const std::string &key : {asWritten, FoldUpper(name), FoldLower(name)}) {
            const Lookup r = Alias(key.c_str());
            EXPECT_EQ(r.status, 1) << key;
            EXPECT_EQ(r.mib, -1) << key;
        }
    }
}

TEST(IanaGetMibEnum, UnreachableNamesAreInTheTable) {
    for (std::string_view name : kUnreachableNames) {
        int rows = 0;
        for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
            rows += name == row.name ? 1 : 0;
        }
        EXPECT_EQ(rows, 1) << name;
    }
}

TEST(IanaGetMibEnum, IgnoresLetterCase) {
    for (const char *name : {"UTF-8", "utf-8", "Utf-8", "uTf-8", "UTF8", "utf8", "IBM-1208"}) {
        const Lookup r = Alias(name);
        EXPECT_EQ(r.status, 0) << name;
        EXPECT_EQ(r.mib, 106) << name;
    }
}

TEST(IanaGetMibEnum, DuplicatedNamesResolveToTheirSecondRow) {
    EXPECT_EQ(Alias("Cp1006").mib, 10022);
    EXPECT_EQ(Alias("CP1006").mib, 10022);
    EXPECT_EQ(Alias("Cp970").mib, 10020);
    EXPECT_EQ(Alias("cp970").mib, 10020);
    EXPECT_EQ(Alias("Cp970").status, 0);
}

TEST(IanaGetMibEnum, NamesOfTheReportCommand) {
    struct Case {
        const char *name;
        int status;
        int32_t mib;
    };
    const Case cases[] = {
        {"US-ASCII", 0, 3},        {"ANSI_X3.4-1968", 0, 3},
        {"ISO-8859-1", 0, 4},      {"ISO_8859-2:1987", 0, 5},
        {"ISO-8859-4", 0, 7},      {"EUC-KR", 0, 38},
        {"EUC-JP", 0, 18},         {"Big5", 0, 2026},
        {"BIG5", 0, 2026},         {"BIG5-HKSCS", 0, 2101},
        {"GB2312", 0, 2025},       {"GB18030", 0, 114},
        {"TIS620", 0, 2259},       {"TIS-620", 0, 2259},
        {"KOI8-R", 0, 2084},       {"KOI8-U", 0, 2088},
        {"windows-1251", 0, 2251}, {"ISO-8859-13", 0, 109},
        {"ISO-8859-15", 0, 111},   {"GBK", 1, -1},
        {"EUC-TW", 1, -1},         {"BIG5HKSCS", 1, -1},
        {"CP1251", 1, -1},         {"ARMSCII-8", 1, -1},
    };
    for (const Case &c : cases) {
        const Lookup r = Alias(c.name);
        EXPECT_EQ(r.status, c.status) << c.name;
        EXPECT_EQ(r.mib, c.mib) << c.name;
    }
}

TEST(IanaGetMibEnum, UnknownNamesStoreMinusOne) {
    for (const char *name : {"", "UTF-9", "UTF-8 ", " UTF-8", "UTF", "zzz", "0", "\x7f",
                             "Extended_UNIX_Code_Packed_Format_for_Japanese_"}) {
        const Lookup r = Alias(name);
        EXPECT_EQ(r.status, 1) << name;
        EXPECT_EQ(r.mib, -1) << name;
    }
}

TEST(IanaGetMibEnum, NullNameStoresMinusOne) {
    const Lookup r = Alias(nullptr);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.mib, -1);
}

TEST(IanaGetMibEnum, NullOutputFails) {
    EXPECT_EQ(IANACS_GetMibEnum("UTF-8", nullptr), 1);
}

// The search described for the alias lookup, written out: lower bound 0, upper bound the row
// count, probe (l + u) / 2, letters folded to lower case.
Lookup ModelSearch(const IANACS_AliasEntry *table, std::size_t rows, const std::string &key) {
    const std::string k = FoldLower(key);
    std::size_t l = 0;
    std::size_t u = rows;
    while (l < u) {
        const std::size_t i = (l + u) / 2;
        const int c = k.compare(FoldLower(table[i].name));
        if (c < 0) {
            u = i;
        } else if (c > 0) {
            l = i + 1;
        } else {
            return {0, table[i].mibEnum};
        }
    }
    return {1, -1};
}

// Deterministic variations of the table names: cut, extended, with one character changed.
std::vector<std::string> GeneratedNames() {
    std::vector<std::string> out;
    uint32_t seed = 12345;
    auto next = [&seed]() {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 16) & 0x7FFF;
    };
    const std::string alphabet = "-_.:0123456789ABCXYZabcxyz()+";
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        const std::string name = row.name;
        out.push_back(name.substr(0, name.size() - 1));
        out.push_back(name + alphabet[next() % alphabet.size()]);
        std::string changed = name;
        changed[next() % changed.size()] = alphabet[next() % alphabet.size()];
        out.push_back(changed);
    }
    return out;
}

TEST(IanaGetMibEnum, AgreesWithTheClassicBinarySearchOnGeneratedNames) {
    for (const std::string &name : GeneratedNames()) {
        const Lookup want = ModelSearch(gIANACS_AliasTab, std::size(gIANACS_AliasTab), name);
        const Lookup got = Alias(name.c_str());
        EXPECT_EQ(got.status, want.status) << name;
        EXPECT_EQ(got.mib, want.mib) << name;
    }
}

TEST(IanaOsGetMibEnum, FindsEveryRowInAnyCase) {
    for (const IANACS_AliasEntry &row : gIANACSOS_AliasTab) {
        const std::string asWritten = row.name;
        for (const std::string &key : {asWritten, FoldUpper(asWritten), FoldLower(asWritten)}) {
            const Lookup r = OsAlias(key.c_str());
            EXPECT_EQ(r.status, 0) << key;
            EXPECT_EQ(r.mib, row.mibEnum) << key;
        }
    }
}

TEST(IanaOsGetMibEnum, RowsWithoutMibEnumCountAsFound) {
    for (const char *name : {"EUC-TW", "BIG5HKSCS", "euc-tw", "big5hkscs"}) {
        const Lookup r = OsAlias(name);
        EXPECT_EQ(r.status, 0) << name;
        EXPECT_EQ(r.mib, -1) << name;
    }
}

TEST(IanaOsGetMibEnum, NamesOutsideTheTableStoreMinusOne) {
    for (const char *name : {"ISO-8859-4", "BIG5-HKSCS", "US-ASCII", "UTF8", "", "ARMSCII-8",
                             "ISO-8859-10", "GB", "ZZZ"}) {
        const Lookup r = OsAlias(name);
        EXPECT_EQ(r.status, 1) << name;
        EXPECT_EQ(r.mib, -1) << name;
    }
}

TEST(IanaOsGetMibEnum, NullArguments) {
    const Lookup r = OsAlias(nullptr);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.mib, -1);
    EXPECT_EQ(IANACSOS_GetMibEnum("UTF-8", nullptr), 1);
}

IANACS_Info SentinelInfo() {
    IANACS_Info info;
    info.name = "sentinel";
    info.mibEnum = kSentinel;
    info.minBytes = kSentinel;
    info.maxBytes = kSentinel;
    info.fixedBytes = kSentinel;
    return info;
}

struct InfoCase {
    int32_t mib;
    const char *name;
    int32_t minBytes, maxBytes, fixedBytes;
};

TEST(IanaGetInfo, KnownMibEnums) {
    const InfoCase cases[] = {
        {106, "UTF-8", 1, 4, 0},
        {1015, "UTF-16", 2, 2, 2},
        {17, "Shift_JIS", 1, 2, 0},
        {13, "ISO-8859-10", -1, -1, -1},
        {3, "US-ASCII", 1, 1, 1},
        {4, "ISO-8859-1", 1, 1, 1},
        {18, "Extended_UNIX_Code_Packed_Format_for_Japanese", 1, 3, 0},
        {1017, "UTF-32", 4, 4, 4},
        {105, "ISO-2022-CN-EXT", 2, 8, 0},
        {16, "JIS_Encoding", 1, 6, 0},
        {2026, "Big5", 1, 2, 0},
        {2259, "TIS620", 1, 1, 1},
        {10019, "Cp970", -1, -1, -1},
        {10022, "Cp1006", -1, -1, -1},
        {10047, "MacUkraine", -1, -1, -1},
    };
    for (const InfoCase &c : cases) {
        IANACS_Info info = SentinelInfo();
        EXPECT_EQ(IANACS_GetInfo(c.mib, &info), 0) << c.mib;
        EXPECT_STREQ(info.name, c.name);
        EXPECT_EQ(info.mibEnum, c.mib);
        EXPECT_EQ(info.minBytes, c.minBytes) << c.mib;
        EXPECT_EQ(info.maxBytes, c.maxBytes) << c.mib;
        EXPECT_EQ(info.fixedBytes, c.fixedBytes) << c.mib;
    }
}

TEST(IanaGetInfo, MibEnumWithTwoRowsGivesMacCyrillic) {
    IANACS_Info info = SentinelInfo();
    EXPECT_EQ(IANACS_GetInfo(10038, &info), 0);
    EXPECT_STREQ(info.name, "MacCyrillic");
    EXPECT_EQ(info.mibEnum, 10038);
    EXPECT_EQ(info.minBytes, -1);
    EXPECT_EQ(info.maxBytes, -1);
    EXPECT_EQ(info.fixedBytes, -1);
}

TEST(IanaGetInfo, EveryRowIsFoundWithItsValues) {
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        if (std::strcmp(row.name, "MacDingbat") == 0) {
            continue;  // shadowed by the other row of 10038
        }
        IANACS_Info info = SentinelInfo();
        ASSERT_EQ(IANACS_GetInfo(row.mibEnum, &info), 0) << row.mibEnum;
        EXPECT_EQ(info.name, row.name);
        EXPECT_EQ(info.mibEnum, row.mibEnum);
        EXPECT_EQ(info.minBytes, row.minBytes);
        EXPECT_EQ(info.maxBytes, row.maxBytes);
        EXPECT_EQ(info.fixedBytes, row.minBytes == row.maxBytes ? row.maxBytes : 0);
    }
}

TEST(IanaGetInfo, UnknownMibEnumsGiveTheNotFoundRecord) {
    std::set<int32_t> known;
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        known.insert(row.mibEnum);
    }
    std::vector<int32_t> unknown = {
        107,  108,  0,    1,    2,     -1,        115,           999,       1021,         1999,
        2104, 2249, 2260, 9999, 10048, INT32_MIN, INT32_MIN + 1, INT32_MAX, INT32_MAX - 1};
    for (int32_t mib = -5; mib <= 10060; ++mib) {
        if (known.count(mib) == 0 && (mib % 97 == 0 || (mib > 10040))) {
            unknown.push_back(mib);
        }
    }
    for (int32_t mib : unknown) {
        IANACS_Info info = SentinelInfo();
        EXPECT_EQ(IANACS_GetInfo(mib, &info), 1) << mib;
        EXPECT_EQ(info.name, nullptr) << mib;
        EXPECT_EQ(info.mibEnum, mib);
        EXPECT_EQ(info.minBytes, -1) << mib;
        EXPECT_EQ(info.maxBytes, -1) << mib;
        EXPECT_EQ(info.fixedBytes, -1) << mib;
    }
}

TEST(IanaGetInfo, NullOutputFails) {
    EXPECT_EQ(IANACS_GetInfo(106, nullptr), 1);
    EXPECT_EQ(IANACS_GetInfo(107, nullptr), 1);
}

TEST(IanaGetInfo, OperatingSystemRowsWithoutMibEnumHaveNoInformation) {
    IANACS_Info info = SentinelInfo();
    EXPECT_EQ(IANACS_GetInfo(-1, &info), 1);
    EXPECT_EQ(info.name, nullptr);
    EXPECT_EQ(info.mibEnum, -1);
}

}  // namespace
