/* SPDX-License-Identifier: MIT */
// Code-page services over real and synthetic locales.
#include <nlssupport/koranls.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/errlib.h>
#include "test_locales.h"

namespace {

constexpr char kFill = '\x7E';
constexpr int kBufferBytes = 64;

struct Buffer {
    char bytes[kBufferBytes];
    Buffer() {
        std::memset(bytes, kFill, sizeof bytes);
    }
    // True when every byte from `from` to the end still holds the fill byte.
    bool UntouchedFrom(int from) const {
        for (int i = from; i < kBufferBytes; ++i) {
            if (bytes[i] != kFill) {
                return false;
            }
        }
        return true;
    }
};

class OsCodePage : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        const std::string err =
            nls_test::PrepareLocales({"C.UTF-8",           "en_US.ISO-8859-1", "de_DE.ISO-8859-15",
                                     "lt_LT.ISO-8859-13", "pl_PL.ISO-8859-2", "et_EE.ISO-8859-4",
                                     "ja_JP.EUC-JP",      "ko_KR.EUC-KR",     "zh_TW.BIG5",
                                     "zh_HK.BIG5-HKSCS",  "zh_TW.EUC-TW",     "zh_CN.GBK",
                                     "zh_CN.GB2312",      "zh_CN.GB18030",    "th_TH.TIS-620",
                                     "ru_RU.KOI8-R",      "uk_UA.KOI8-U",     "be_BY.CP1251",
                                     "hy_AM.ARMSCII-8",   "xx_EMPTY",         "xx_BIG5HKSCS",
                                     "xx_LOWERUTF8",      "xx_LONG"});
        ASSERT_EQ(err, "");
    }

    void TearDown() override {
        std::setlocale(LC_ALL, "C");
    }

    static void Use(const char *locale) {
        ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr) << locale;
    }
};

// --- KORANLS_GetOsCodePageName ---------------------------------------------------------------

TEST_F(OsCodePage, NameOfTheCLocale) {
    Use("C");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, nullptr), 0);
    EXPECT_STREQ(b.bytes, "ANSI_X3.4-1968");
    EXPECT_TRUE(b.UntouchedFrom(15));
}

TEST_F(OsCodePage, NameIgnoresTheFlag) {
    Use("C.UTF-8");
    for (int32_t flag : {0, 1, -1, 12345}) {
        Buffer b;
        EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, flag, nullptr), 0);
        EXPECT_STREQ(b.bytes, "UTF-8");
        EXPECT_TRUE(b.UntouchedFrom(6));
    }
}

TEST_F(OsCodePage, NameOfEachCodeSet) {
    const struct {
        const char *locale;
        const char *codeSet;
    } cases[] = {
        {"C", "ANSI_X3.4-1968"},
        {"POSIX", "ANSI_X3.4-1968"},
        {"C.UTF-8", "UTF-8"},
        {"en_US.ISO-8859-1", "ISO-8859-1"},
        {"de_DE.ISO-8859-15", "ISO-8859-15"},
        {"lt_LT.ISO-8859-13", "ISO-8859-13"},
        {"pl_PL.ISO-8859-2", "ISO-8859-2"},
        {"et_EE.ISO-8859-4", "ISO-8859-4"},
        {"ja_JP.EUC-JP", "EUC-JP"},
        {"ko_KR.EUC-KR", "EUC-KR"},
        {"zh_TW.BIG5", "BIG5"},
        {"zh_HK.BIG5-HKSCS", "BIG5-HKSCS"},
        {"zh_TW.EUC-TW", "EUC-TW"},
        {"zh_CN.GBK", "GBK"},
        {"zh_CN.GB2312", "GB2312"},
        {"zh_CN.GB18030", "GB18030"},
        {"th_TH.TIS-620", "TIS-620"},
        {"ru_RU.KOI8-R", "KOI8-R"},
        {"uk_UA.KOI8-U", "KOI8-U"},
        {"be_BY.CP1251", "CP1251"},
        {"hy_AM.ARMSCII-8", "ARMSCII-8"},
        {"xx_BIG5HKSCS", "BIG5HKSCS"},
        {"xx_LOWERUTF8", "utf-8"},
    };
    for (const auto &c : cases) {
        Use(c.locale);
        Buffer b;
        EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, nullptr), 0) << c.locale;
        EXPECT_STREQ(b.bytes, c.codeSet) << c.locale;
        EXPECT_TRUE(b.UntouchedFrom(static_cast<int>(std::strlen(c.codeSet)) + 1)) << c.locale;
    }
}

TEST_F(OsCodePage, NameIsCutToSizeMinusOneAndStillSucceeds) {
    Use("C.UTF-8");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 3, 0, nullptr), 0);
    EXPECT_STREQ(b.bytes, "UT");
    EXPECT_TRUE(b.UntouchedFrom(3));
}

TEST_F(OsCodePage, NameFillsABufferOfExactlyItsLengthPlusOne) {
    Use("C");
    Buffer exact;
    EXPECT_EQ(KORANLS_GetOsCodePageName(exact.bytes, 15, 0, nullptr), 0);
    EXPECT_STREQ(exact.bytes, "ANSI_X3.4-1968");
    EXPECT_TRUE(exact.UntouchedFrom(15));
    Buffer shortByOne;
    EXPECT_EQ(KORANLS_GetOsCodePageName(shortByOne.bytes, 14, 0, nullptr), 0);
    EXPECT_STREQ(shortByOne.bytes, "ANSI_X3.4-196");
    EXPECT_TRUE(shortByOne.UntouchedFrom(14));
}

TEST_F(OsCodePage, LongNameIsCutTo40CharactersInA41ByteBuffer) {
    Use("xx_LONG");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, nullptr), 0);
    EXPECT_EQ(std::string(b.bytes), std::string(nls_test::kLongCodeSet, 40));
    EXPECT_TRUE(b.UntouchedFrom(41));
}

TEST_F(OsCodePage, NameWithSizeOneGivesEmptyText) {
    Use("C");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 1, 0, nullptr), 0);
    EXPECT_EQ(b.bytes[0], '\0');
    EXPECT_TRUE(b.UntouchedFrom(1));
}

TEST_F(OsCodePage, NameWithSizeZeroOrNegativeWritesNothing) {
    Use("C");
    for (int32_t size : {0, -1, -41, INT32_MIN}) {
        Buffer b;
        EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, size, 0, nullptr), 0) << size;
        EXPECT_TRUE(b.UntouchedFrom(0)) << size;
    }
    EXPECT_EQ(KORANLS_GetOsCodePageName(nullptr, 0, 0, nullptr), 0);
}

TEST_F(OsCodePage, NameIntoNullBufferFails) {
    Use("C");
    EXPECT_EQ(KORANLS_GetOsCodePageName(nullptr, 41, 0, nullptr), 1);
}

TEST_F(OsCodePage, EmptyCodeSetFailsAndLeavesTheBufferUntouched) {
    Use("xx_EMPTY");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, nullptr), 1);
    EXPECT_TRUE(b.UntouchedFrom(0));
}

// Takes the only error off `stack` and checks it is the empty-code-set record.
void ExpectOnlyEmptyCodeSetError(ERRLIB_ErrorStack *stack) {
    int32_t count = -1;
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count), 0);
    ASSERT_EQ(count, 1);
    ERRLIB_Error *record = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_GetFirstError(stack, &record), 0);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->component, 50);
    EXPECT_EQ(record->code, 2);
    EXPECT_EQ(record->errorClass, 21);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_STREQ(record->function, "KORANLS_GetOsCodePageName");
    EXPECT_EQ(record->file, nullptr);
    EXPECT_EQ(record->line, 170);
    EXPECT_EQ(record->message, nullptr);
    EXPECT_EQ(ERRLIB_Error_Release(record, stack), 0);
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count), 0);
    EXPECT_EQ(count, 0);
}

TEST_F(OsCodePage, EmptyCodeSetPushesOneErrorRecord) {
    Use("xx_EMPTY");
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, stack), 1);
    EXPECT_TRUE(b.UntouchedFrom(0));
    ExpectOnlyEmptyCodeSetError(stack);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

TEST_F(OsCodePage, SuccessRecordsNothing) {
    Use("C");
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 41, 0, stack), 0);
    EXPECT_EQ(KORANLS_GetOsCodePageName(b.bytes, 3, 0, stack), 0);
    int32_t count = -1;
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count), 0);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

// --- KORANLS_GetOsCodePageIanaName -----------------------------------------------------------

struct IanaCase {
    const char *locale;
    int status;
    const char *text;
};

TEST_F(OsCodePage, IanaNameOfEachCodeSet) {
    const IanaCase cases[] = {
        {"C", 0, "US-ASCII"},
        {"POSIX", 0, "US-ASCII"},
        {"C.UTF-8", 0, "UTF-8"},
        {"en_US.ISO-8859-1", 0, "ISO-8859-1"},
        {"de_DE.ISO-8859-15", 0, "ISO-8859-15"},
        {"lt_LT.ISO-8859-13", 0, "ISO-8859-13"},
        {"pl_PL.ISO-8859-2", 0, "ISO_8859-2:1987"},
        {"ko_KR.EUC-KR", 0, "EUC-KR"},
        {"zh_TW.BIG5", 0, "Big5"},
        {"zh_CN.GBK", 0, "GBK"},
        {"zh_CN.GB2312", 0, "GB2312"},
        {"zh_CN.GB18030", 0, "GB18030"},
        {"th_TH.TIS-620", 0, "TIS620"},
        {"ru_RU.KOI8-R", 0, "KOI8-R"},
        {"uk_UA.KOI8-U", 0, "KOI8-U"},
        {"be_BY.CP1251", 0, "windows-1251"},
        // Known to the operating-system table without information: the OS name, success.
        {"zh_TW.EUC-TW", 0, "EUC-TW"},
        {"xx_BIG5HKSCS", 0, "BIG5HKSCS"},
        // Not in the operating-system table: the OS name, success.
        {"et_EE.ISO-8859-4", 0, "ISO-8859-4"},
        {"zh_HK.BIG5-HKSCS", 0, "BIG5-HKSCS"},
        {"hy_AM.ARMSCII-8", 0, "ARMSCII-8"},
        // The operating-system table ignores case.
        {"xx_LOWERUTF8", 0, "UTF-8"},
        // Preferred name of 45 characters does not fit: the OS name, failure.
        {"ja_JP.EUC-JP", 1, "EUC-JP"},
    };
    for (const IanaCase &c : cases) {
        Use(c.locale);
        Buffer b;
        EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 41, nullptr), c.status) << c.locale;
        EXPECT_STREQ(b.bytes, c.text) << c.locale;
        // Nothing past the longer of the two texts the service wrote.
        char os[kBufferBytes];
        std::memset(os, 0, sizeof os);
        ASSERT_EQ(KORANLS_GetOsCodePageName(os, 41, 0, nullptr), 0);
        const std::size_t written = std::max(std::strlen(os), std::strlen(c.text)) + 1;
        EXPECT_TRUE(b.UntouchedFrom(static_cast<int>(written))) << c.locale;
    }
}

TEST_F(OsCodePage, IanaNameOfTheLongCodeSetIsTheCutOsName) {
    Use("xx_LONG");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 41, nullptr), 0);
    EXPECT_EQ(std::string(b.bytes), std::string(nls_test::kLongCodeSet, 40));
    EXPECT_TRUE(b.UntouchedFrom(41));
}

TEST_F(OsCodePage, IanaNameOfExactlySizeCharactersPassesWithTerminatorAtIndexSize) {
    Use("pl_PL.ISO-8859-2");  // "ISO-8859-2" -> "ISO_8859-2:1987" (15 characters)
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 15, nullptr), 0);
    EXPECT_STREQ(b.bytes, "ISO_8859-2:1987");
    EXPECT_EQ(b.bytes[15], '\0');
    EXPECT_TRUE(b.UntouchedFrom(16));
}

TEST_F(OsCodePage, IanaNameLongerThanSizeFailsWithTheOsName) {
    Use("pl_PL.ISO-8859-2");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 14, nullptr), 1);
    EXPECT_STREQ(b.bytes, "ISO-8859-2");
    EXPECT_TRUE(b.UntouchedFrom(11));
}

TEST_F(OsCodePage, IanaNameOf45CharactersFitsSize45Only) {
    Use("ja_JP.EUC-JP");
    Buffer fits;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(fits.bytes, 45, nullptr), 0);
    EXPECT_STREQ(fits.bytes, "Extended_UNIX_Code_Packed_Format_for_Japanese");
    EXPECT_TRUE(fits.UntouchedFrom(46));
    Buffer tooShort;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(tooShort.bytes, 44, nullptr), 1);
    EXPECT_STREQ(tooShort.bytes, "EUC-JP");
    EXPECT_TRUE(tooShort.UntouchedFrom(7));
}

TEST_F(OsCodePage, IanaNameLooksUpTheCutOsName) {
    Use("C.UTF-8");
    Buffer cut;  // "UT" is in no table: returned as it is
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(cut.bytes, 3, nullptr), 0);
    EXPECT_STREQ(cut.bytes, "UT");
    EXPECT_TRUE(cut.UntouchedFrom(3));
    Buffer whole;  // "UTF-8" fits in 6 bytes
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(whole.bytes, 6, nullptr), 0);
    EXPECT_STREQ(whole.bytes, "UTF-8");
    EXPECT_TRUE(whole.UntouchedFrom(6));
    Use("C");
    Buffer ascii;  // "ANSI_X3" is not in the table either
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(ascii.bytes, 8, nullptr), 0);
    EXPECT_STREQ(ascii.bytes, "ANSI_X3");
    EXPECT_TRUE(ascii.UntouchedFrom(8));
}

TEST_F(OsCodePage, IanaNameWithSizeOneIsEmpty) {
    Use("C");
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 1, nullptr), 0);
    EXPECT_EQ(b.bytes[0], '\0');
    EXPECT_TRUE(b.UntouchedFrom(1));
}

TEST_F(OsCodePage, IanaNameWithSizeZeroOrNegativeWritesOnlyTheFirstTerminator) {
    Use("C");
    for (int32_t size : {0, -1, INT32_MIN}) {
        Buffer b;
        EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, size, nullptr), 0) << size;
        EXPECT_EQ(b.bytes[0], '\0') << size;
        EXPECT_TRUE(b.UntouchedFrom(1)) << size;
    }
}

TEST_F(OsCodePage, IanaNameIntoNullBufferFails) {
    Use("C");
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(nullptr, 41, nullptr), 1);
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(nullptr, 0, nullptr), 1);
}

TEST_F(OsCodePage, IanaNameOfAnEmptyCodeSetFailsWithEmptyBuffer) {
    Use("xx_EMPTY");
    Buffer b;
    std::memcpy(b.bytes, "previous", 9);
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 41, nullptr), 1);
    EXPECT_EQ(b.bytes[0], '\0');
    EXPECT_STREQ(b.bytes + 1, "revious");
}

TEST_F(OsCodePage, IanaNameOfAnEmptyCodeSetRecordsTheCodeSetError) {
    Use("xx_EMPTY");
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    Buffer b;
    EXPECT_EQ(KORANLS_GetOsCodePageIanaName(b.bytes, 41, stack), 1);
    EXPECT_EQ(b.bytes[0], '\0');
    EXPECT_TRUE(b.UntouchedFrom(1));
    ExpectOnlyEmptyCodeSetError(stack);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

TEST_F(OsCodePage, IanaNameFallbacksAndTooLongNamesRecordNothing) {
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    for (const char *locale : {"ja_JP.EUC-JP", "zh_TW.EUC-TW", "et_EE.ISO-8859-4", "C"}) {
        Use(locale);
        Buffer b;
        (void)KORANLS_GetOsCodePageIanaName(b.bytes, 41, stack);
    }
    int32_t count = -1;
    ASSERT_EQ(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count), 0);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(ERRLIB_ErrorStack_Destroy(stack), 0);
}

}  // namespace
