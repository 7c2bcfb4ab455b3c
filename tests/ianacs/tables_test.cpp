/* SPDX-License-Identifier: MIT */
// Contents and order of the three registry tables.
#include <gtest/gtest.h>
#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlssupport/ianacs.h>
#include "registry_facts.h"

namespace {

using ianacs_test::FoldLower;
using ianacs_test::FoldUpper;

std::set<int32_t> AliasMibs() {
    std::set<int32_t> mibs;
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        mibs.insert(row.mibEnum);
    }
    return mibs;
}

std::set<int32_t> InfoMibs() {
    std::set<int32_t> mibs;
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        mibs.insert(row.mibEnum);
    }
    return mibs;
}

TEST(IanaAliasTable, Has968RowsWithNonEmptyNames) {
    EXPECT_EQ(std::size(gIANACS_AliasTab), 968u);
    EXPECT_EQ(IANACS_ALIASTAB_ROWS, 968);
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        ASSERT_NE(row.name, nullptr);
        EXPECT_GT(std::strlen(row.name), 0u);
        EXPECT_EQ(std::strchr(row.name, ' '), nullptr) << row.name;
    }
}

TEST(IanaAliasTable, Has966DistinctNamesWithCp1006AndCp970Twice) {
    std::map<std::string, std::vector<int32_t>> byName;
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        byName[row.name].push_back(row.mibEnum);
    }
    EXPECT_EQ(byName.size(), 966u);
    std::vector<std::pair<std::string, std::vector<int32_t>>> duplicated;
    for (const auto &[name, mibs] : byName) {
        if (mibs.size() > 1) {
            duplicated.emplace_back(name, mibs);
        }
    }
    const std::vector<std::pair<std::string, std::vector<int32_t>>> expected = {
        {"Cp1006", {10021, 10022}},
        {"Cp970", {10019, 10020}},
    };
    EXPECT_EQ(duplicated, expected);
}

TEST(IanaAliasTable, NamesAreDistinctEvenIgnoringCaseExceptTheTwoDuplicates) {
    std::set<std::string> folded;
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        folded.insert(FoldUpper(row.name));
    }
    EXPECT_EQ(folded.size(), 966u);
}

TEST(IanaAliasTable, Has293DistinctMibEnums) {
    EXPECT_EQ(AliasMibs().size(), 293u);
}

TEST(IanaAliasTable, IsSortedByNameWithLettersFoldedToUpperCase) {
    for (std::size_t i = 1; i < std::size(gIANACS_AliasTab); ++i) {
        const std::string prev = FoldUpper(gIANACS_AliasTab[i - 1].name);
        const std::string next = FoldUpper(gIANACS_AliasTab[i].name);
        if (prev == next) {
            // Only the two duplicated names, each in ascending MIBenum order.
            EXPECT_TRUE(prev == "CP1006" || prev == "CP970") << prev;
            EXPECT_LT(gIANACS_AliasTab[i - 1].mibEnum, gIANACS_AliasTab[i].mibEnum);
        } else {
            EXPECT_LT(prev, next) << "row " << i;
        }
    }
}

TEST(IanaAliasTable, UnderscoreSortsAfterTheLetters) {
    // "KSC_5601" stands before "KS_C_5601-1987": 'C' (0x43) is below '_' (0x5F).
    std::size_t ksc = 0;
    std::size_t ks_c = 0;
    for (std::size_t i = 0; i < std::size(gIANACS_AliasTab); ++i) {
        if (std::strcmp(gIANACS_AliasTab[i].name, "KSC_5601") == 0) {
            ksc = i;
        }
        if (std::strcmp(gIANACS_AliasTab[i].name, "KS_C_5601-1987") == 0) {
            ks_c = i;
        }
    }
    ASSERT_NE(ksc, 0u);
    ASSERT_NE(ks_c, 0u);
    EXPECT_LT(ksc, ks_c);
}

TEST(IanaAliasTable, FirstAndLastRows) {
    EXPECT_STREQ(gIANACS_AliasTab[0].name, "437");
    EXPECT_EQ(gIANACS_AliasTab[0].mibEnum, 2011);
    EXPECT_STREQ(gIANACS_AliasTab[967].name, "yu");
    EXPECT_EQ(gIANACS_AliasTab[967].mibEnum, 87);
}

TEST(IanaAliasTable, SelectedNamesCarryTheirMibEnums) {
    const std::vector<std::pair<std::string_view, int32_t>> cases = {
        {"ANSI_X3.4-1968", 3},
        {"US-ASCII", 3},
        {"csASCII", 3},
        {"ISO-8859-1", 4},
        {"latin1", 4},
        {"ISO_8859-2:1987", 5},
        {"ibm-912", 5},
        {"ISO8859_2", 5},
        {"EUC-JP", 18},
        {"eucJP", 18},
        {"Extended_UNIX_Code_Packed_Format_for_Japanese", 18},
        {"KS_C_5601-1987", 36},
        {"EUC-KR", 38},
        {"UTF-8", 106},
        {"ibm-1208", 106},
        {"GBK", 113},
        {"GB18030", 114},
        {"UTF-16", 1015},
        {"csAdobeStandardEncoding", 2005},
        {"GB2312", 2025},
        {"Big5", 2026},
        {"KOI8-R", 2084},
        {"KOI8-U", 2088},
        {"Big5-HKSCS", 2101},
        {"Cp1140", 2091},
        {"windows-1250", 2250},
        {"windows-1251", 2251},
        {"TIS620", 2259},
        {"TIS-620", 2259},
        {"Cp737", 10000},
        {"MacCyrillic", 10038},
        {"MacDingbat", 10038},
        {"MacUkraine", 10047},
        {"ebcdic-Latin9--euro", 2090},
        {"NF_Z_62-010_(1973)", 46},
        {"PC-Multilingual-850+euro", 2089},
    };
    for (const auto &[name, mib] : cases) {
        int found = 0;
        for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
            if (name == row.name) {
                EXPECT_EQ(row.mibEnum, mib) << name;
                ++found;
            }
        }
        EXPECT_EQ(found, 1) << name;
    }
}

TEST(IanaAliasTable, NumberOfAliasesPerMibEnum) {
    std::map<int32_t, int> count;
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        ++count[row.mibEnum];
    }
    const std::vector<std::pair<int32_t, int>> cases = {
        {3, 12},    {4, 12},    {5, 10},    {18, 5},    {36, 6},    {106, 3},
        {113, 5},   {114, 1},   {2025, 5},  {2026, 3},  {2091, 6},  {2259, 4},
        {10019, 1}, {10020, 1}, {10021, 1}, {10022, 1}, {10038, 2}, {10047, 1},
    };
    for (const auto &[mib, n] : cases) {
        EXPECT_EQ(count[mib], n) << mib;
    }
}

TEST(IanaAliasTable, MibEnumsLieInTheIanaAndPrivateRanges) {
    for (const IANACS_AliasEntry &row : gIANACS_AliasTab) {
        const bool iana = row.mibEnum >= 3 && row.mibEnum <= 2259;
        const bool vendor = row.mibEnum >= 10000 && row.mibEnum <= 10047;
        EXPECT_TRUE(iana || vendor) << row.name << " " << row.mibEnum;
    }
}

TEST(IanaInfoTable, Has294RowsInAscendingMibEnumOrder) {
    EXPECT_EQ(std::size(gIANACS_InfoTab), 294u);
    EXPECT_EQ(IANACS_INFOTAB_ROWS, 294);
    for (std::size_t i = 1; i < std::size(gIANACS_InfoTab); ++i) {
        const IANACS_InfoEntry &prev = gIANACS_InfoTab[i - 1];
        const IANACS_InfoEntry &next = gIANACS_InfoTab[i];
        if (prev.mibEnum == next.mibEnum) {
            EXPECT_EQ(prev.mibEnum, 10038);
            EXPECT_STREQ(prev.name, "MacCyrillic");
            EXPECT_STREQ(next.name, "MacDingbat");
        } else {
            EXPECT_LT(prev.mibEnum, next.mibEnum) << "row " << i;
        }
    }
    EXPECT_EQ(gIANACS_InfoTab[0].mibEnum, 3);
    EXPECT_EQ(gIANACS_InfoTab[293].mibEnum, 10047);
}

TEST(IanaInfoTable, Has293DistinctMibEnumsEachWithAnAlias) {
    const std::set<int32_t> info = InfoMibs();
    EXPECT_EQ(info.size(), 293u);
    EXPECT_EQ(info, AliasMibs());
}

TEST(IanaInfoTable, SizeColumnsAreConsistent) {
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        ASSERT_NE(row.name, nullptr);
        if (row.minBytes == -1 || row.maxBytes == -1) {
            EXPECT_EQ(row.minBytes, -1) << row.name;
            EXPECT_EQ(row.maxBytes, -1) << row.name;
            EXPECT_EQ(row.fixedBytes, -1) << row.name;
        } else {
            EXPECT_GE(row.minBytes, 1) << row.name;
            EXPECT_LE(row.minBytes, row.maxBytes) << row.name;
            EXPECT_EQ(row.fixedBytes, row.minBytes == row.maxBytes ? row.maxBytes : 0) << row.name;
        }
    }
}

TEST(IanaInfoTable, RowsPerSizeGroup) {
    std::map<std::pair<int32_t, int32_t>, int> groups;
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        ++groups[{row.minBytes, row.maxBytes}];
    }
    const std::map<std::pair<int32_t, int32_t>, int> expected = {
        {{1, 1}, 81}, {{1, 2}, 17}, {{1, 3}, 5}, {{1, 4}, 5},     {{1, 6}, 3},
        {{2, 2}, 4},  {{2, 8}, 2},  {{4, 4}, 4}, {{-1, -1}, 173},
    };
    EXPECT_EQ(groups, expected);
}

TEST(IanaInfoTable, SelectedRows) {
    struct Row {
        int32_t mib;
        const char *name;
        int32_t minBytes, maxBytes, fixedBytes;
    };
    const Row cases[] = {
        {3, "US-ASCII", 1, 1, 1},
        {18, "Extended_UNIX_Code_Packed_Format_for_Japanese", 1, 3, 0},
        {19, "Extended_UNIX_Code_Fixed_Width_for_Japanese", -1, -1, -1},
        {106, "UTF-8", 1, 4, 0},
        {113, "GBK", 1, 2, 0},
        {1000, "ISO-10646-UCS-2", 2, 2, 2},
        {1001, "ISO-10646-UCS-4", 4, 4, 4},
        {104, "ISO-2022-CN", 2, 8, 0},
        {40, "ISO-2022-JP-2", 1, 6, 0},
        {2101, "Big5-HKSCS", -1, -1, -1},
        {2259, "TIS620", 1, 1, 1},
        {10019, "Cp970", -1, -1, -1},
        {10020, "Cp970", -1, -1, -1},
        {10021, "Cp1006", -1, -1, -1},
        {10022, "Cp1006", -1, -1, -1},
        {10047, "MacUkraine", -1, -1, -1},
    };
    for (const Row &want : cases) {
        int found = 0;
        for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
            if (row.mibEnum == want.mib) {
                EXPECT_STREQ(row.name, want.name);
                EXPECT_EQ(row.minBytes, want.minBytes) << want.mib;
                EXPECT_EQ(row.maxBytes, want.maxBytes) << want.mib;
                EXPECT_EQ(row.fixedBytes, want.fixedBytes) << want.mib;
                ++found;
            }
        }
        EXPECT_EQ(found, 1) << want.mib;
    }
}

TEST(IanaInfoTable, LongestPreferredNameHas45Characters) {
    std::vector<std::string> over40;
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        if (std::strlen(row.name) > 40) {
            over40.emplace_back(row.name);
        }
    }
    // Sorted by MIBenum: 18 (45 characters), then 19 (43 characters).
    const std::vector<std::string> expected = {
        "Extended_UNIX_Code_Packed_Format_for_Japanese",
        "Extended_UNIX_Code_Fixed_Width_for_Japanese",
    };
    EXPECT_EQ(over40, expected);
    EXPECT_EQ(expected[0].size(), 45u);
    EXPECT_EQ(expected[1].size(), 43u);
}

TEST(IanaInfoTable, EveryPreferredNameIsAnAliasOfItsMibEnum) {
    // Exactly as written, except "ROMAN8", whose alias is spelled "roman8".
    std::vector<std::string> onlyIgnoringCase;
    for (const IANACS_InfoEntry &info : gIANACS_InfoTab) {
        bool exact = false;
        bool folded = false;
        for (const IANACS_AliasEntry &alias : gIANACS_AliasTab) {
            if (alias.mibEnum == info.mibEnum) {
                exact = exact || std::strcmp(alias.name, info.name) == 0;
                folded = folded || FoldUpper(alias.name) == FoldUpper(info.name);
            }
        }
        EXPECT_TRUE(folded) << info.mibEnum << " " << info.name;
        if (!exact) {
            onlyIgnoringCase.emplace_back(info.name);
        }
    }
    EXPECT_EQ(onlyIgnoringCase, std::vector<std::string>{"ROMAN8"});
}

TEST(IanaOsAliasTable, HoldsTheOperatingSystemCodeSets) {
    const std::vector<std::pair<std::string, int32_t>> expected = {
        {"ANSI_X3.4-1968", 3}, {"BIG5", 2026},     {"BIG5HKSCS", -1},  {"CP1251", 2251},
        {"EUC-JP", 18},        {"EUC-KR", 38},     {"EUC-TW", -1},     {"GB18030", 114},
        {"GB2312", 2025},      {"GBK", 113},       {"ISO-8859-1", 4},  {"ISO-8859-13", 109},
        {"ISO-8859-15", 111},  {"ISO-8859-2", 5},  {"ISO-8859-3", 6},  {"ISO-8859-5", 8},
        {"ISO-8859-6", 9},     {"ISO-8859-7", 10}, {"ISO-8859-8", 11}, {"ISO-8859-9", 12},
        {"KOI8-R", 2084},      {"KOI8-U", 2088},   {"TIS-620", 2259},  {"UTF-8", 106},
    };
    ASSERT_EQ(std::size(gIANACSOS_AliasTab), 24u);
    EXPECT_EQ(IANACSOS_ALIASTAB_ROWS, 24);
    std::vector<std::pair<std::string, int32_t>> actual;
    for (const IANACS_AliasEntry &row : gIANACSOS_AliasTab) {
        actual.emplace_back(row.name, row.mibEnum);
    }
    EXPECT_EQ(actual, expected);
}

TEST(IanaOsAliasTable, IsSortedTheSameWhetherLettersFoldUpOrDown) {
    for (std::size_t i = 1; i < std::size(gIANACSOS_AliasTab); ++i) {
        EXPECT_LT(FoldUpper(gIANACSOS_AliasTab[i - 1].name), FoldUpper(gIANACSOS_AliasTab[i].name));
        EXPECT_LT(FoldLower(gIANACSOS_AliasTab[i - 1].name), FoldLower(gIANACSOS_AliasTab[i].name));
    }
}

TEST(IanaOsAliasTable, EveryKnownMibEnumHasAnInformationRow) {
    const std::set<int32_t> info = InfoMibs();
    int unknown = 0;
    for (const IANACS_AliasEntry &row : gIANACSOS_AliasTab) {
        if (row.mibEnum == -1) {
            ++unknown;
        } else {
            EXPECT_EQ(info.count(row.mibEnum), 1u) << row.name;
        }
    }
    EXPECT_EQ(unknown, 2);
}


// ---- Every row, as shipped ----
// The tables are data that callers depend on row by row. The properties above catch a row out
// of order or a name lost; these digests catch any single value changed: every name (with its
// terminator) and every number (as four little-endian bytes), row by row, folded into one 64-bit
// FNV-1a value recorded when the tables were last changed on purpose.

class TableDigest {
public:
    void Text(const char *text) {
        for (const char *p = text; ; ++p) {
            Byte(static_cast<unsigned char>(*p));
            if (*p == '\0') {
                break;
            }
        }
    }
    void Number(int32_t value) {
        const auto bits = static_cast<uint32_t>(value);
        for (int shift = 0; shift < 32; shift += 8) {
            Byte(static_cast<unsigned char>(bits >> shift));
        }
    }
    uint64_t Value() const {
        return hash_;
    }

private:
    void Byte(unsigned char byte) {
        hash_ = (hash_ ^ byte) * 0x100000001B3ull;
    }
    uint64_t hash_ = 0xCBF29CE484222325ull;
};

uint64_t AliasDigest(const IANACS_AliasEntry *rows, size_t count) {
    TableDigest digest;
    for (size_t i = 0; i < count; ++i) {
        digest.Text(rows[i].name);
        digest.Number(rows[i].mibEnum);
    }
    return digest.Value();
}

TEST(IanaAliasTable, EveryRowMatchesTheRecordedDigest) {
    EXPECT_EQ(AliasDigest(gIANACS_AliasTab, IANACS_ALIASTAB_ROWS), 0x75cbe48371f0db39ull);
}

TEST(IanaOsAliasTable, EveryRowMatchesTheRecordedDigest) {
    EXPECT_EQ(AliasDigest(gIANACSOS_AliasTab, IANACSOS_ALIASTAB_ROWS), 0x4c8630035aef3d84ull);
}

TEST(IanaInfoTable, EveryRowMatchesTheRecordedDigest) {
    TableDigest digest;
    for (const IANACS_InfoEntry &row : gIANACS_InfoTab) {
        digest.Number(row.mibEnum);
        digest.Text(row.name);
        digest.Number(row.minBytes);
        digest.Number(row.maxBytes);
        digest.Number(row.fixedBytes);
    }
    EXPECT_EQ(digest.Value(), 0x5aa6f978ed6d82ceull);
}

}  // namespace
