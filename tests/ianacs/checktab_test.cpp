/* SPDX-License-Identifier: MIT */
// Order checks of the name tables.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>

#include <nlssupport/ianacs.h>
#include "ianacs/tabcheck.h"

namespace {

// Runs the order check of `table` with a temporary file as diagnostic stream; returns the status
// and stores what was written in *written.
template <std::size_t N>
int CheckWithDiagnostics(const IANACS_AliasEntry (&table)[N], std::string *written) {
    std::FILE *diag = std::tmpfile();
    EXPECT_NE(diag, nullptr);
    const int status = ianacs::CheckOrder(table, N, diag);
    std::rewind(diag);
    written->clear();
    char chunk[256];
    std::size_t n = 0;
    while ((n = std::fread(chunk, 1, sizeof chunk, diag)) > 0) {
        written->append(chunk, n);
    }
    std::fclose(diag);
    return status;
}

TEST(IanaCheckAliasTab, ShippedAliasTableFailsTheLookupOrder) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(IANACS_CheckAliasTab(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(IanaCheckAliasTab, FirstOffendingPairIsTheDuplicatedCp1006) {
    const std::size_t i = ianacs::FirstOutOfOrder(gIANACS_AliasTab, std::size(gIANACS_AliasTab));
    ASSERT_GT(i, 0u);
    EXPECT_STREQ(gIANACS_AliasTab[i - 1].name, "Cp1006");
    EXPECT_STREQ(gIANACS_AliasTab[i].name, "Cp1006");
    EXPECT_EQ(gIANACS_AliasTab[i - 1].mibEnum, 10021);
    EXPECT_EQ(gIANACS_AliasTab[i].mibEnum, 10022);
}

TEST(IanaCheckAliasTab, ShippedOsTableIsInOrderAndPrintsNothing) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_EQ(IANACSOS_CheckAliasTab(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ianacs::FirstOutOfOrder(gIANACSOS_AliasTab, std::size(gIANACSOS_AliasTab)), 0u);
}

TEST(IanaNameTableOrder, AscendingTablePasses) {
    const IANACS_AliasEntry table[] = {{"a", 1}, {"B", 2}, {"c", 3}, {"D_", 4}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 0);
    EXPECT_EQ(written, "");
}

TEST(IanaNameTableOrder, SingleRowTablePasses) {
    const IANACS_AliasEntry table[] = {{"only", 1}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 0);
    EXPECT_EQ(written, "");
}

TEST(IanaNameTableOrder, ReportsTheLaterIndexAndBothNamesOfTheFirstBadPair) {
    const IANACS_AliasEntry table[] = {{"a", 1}, {"c", 2}, {"b", 3}, {"a", 4}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 1);
    EXPECT_EQ(written, "i = 2, c b\n");
}

TEST(IanaNameTableOrder, PairAtTheStartIsIndexOne) {
    const IANACS_AliasEntry table[] = {{"b", 1}, {"a", 2}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 1);
    EXPECT_EQ(written, "i = 1, b a\n");
}

TEST(IanaNameTableOrder, NamesEqualIgnoringCaseAreOutOfOrder) {
    const IANACS_AliasEntry table[] = {{"a", 1}, {"Cp970", 2}, {"CP970", 3}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 1);
    EXPECT_EQ(written, "i = 2, Cp970 CP970\n");
}

TEST(IanaNameTableOrder, UpperCaseOrderAroundUnderscoreFailsTheLowerCaseComparison) {
    // Sorted with letters folded up ('C' < '_'), misordered with letters folded down ('_' < 'c').
    const IANACS_AliasEntry table[] = {{"KSC_5601", 36}, {"KS_C_5601-1987", 36}};
    std::string written;
    EXPECT_EQ(CheckWithDiagnostics(table, &written), 1);
    EXPECT_EQ(written, "i = 1, KSC_5601 KS_C_5601-1987\n");
}

TEST(IanaNameTableOrder, WithoutDiagnosticStreamOnlyReturnsTheStatus) {
    const IANACS_AliasEntry table[] = {{"b", 1}, {"a", 2}};
    testing::internal::CaptureStderr();
    EXPECT_EQ(ianacs::CheckOrder(table, std::size(table), nullptr), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
