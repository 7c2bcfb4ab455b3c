/* SPDX-License-Identifier: MIT */
// Pattern matching, the character-set registry and the code set of the process locale through
// the C++ layer, against the C functions they call.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlssupport/nlssupport.hpp>
#include "nls/test_locales.h"

namespace {

// --- LIKE ------------------------------------------------------------------------------------

struct LikeCase {
    const char *pattern;
    const char *value;
};

constexpr LikeCase kLikeCases[] = {
    {"a%", "a"},    {"a%", "abc"},    {"a_c", "abc"}, {"a_c", "ac"}, {"%_", ""},
    {"", ""},       {"", "a"},        {"%", ""},      {"%%%", "x"},  {"a\\%", "a%"},
    {"a\\%", "ab"}, {"abc\\", "abc"}, {"%b%", "abc"}, {"A%", "abc"}, {"_%_", "ab"},
};

TEST(CppLike, NarrowMatchesAsGLIB_ValueMatchesPattern) {
    for (const LikeCase &c : kLikeCases) {
        EXPECT_EQ(nls::like(c.pattern, c.value), GLIB_ValueMatchesPattern(c.pattern, c.value) != 0)
            << c.pattern << " / " << c.value;
    }
    EXPECT_TRUE(nls::like("a%", "abc"));
    EXPECT_FALSE(nls::like("a_c", "ac"));
}

std::vector<GLIB_WChar> Units(std::u16string_view text) {
    std::vector<GLIB_WChar> units(text.begin(), text.end());
    units.push_back(0);
    return units;
}

TEST(CppLike, WideMatchesAsGLIB_ValueMatchesPatternW) {
    const std::u16string_view cases[][2] = {
        {u"a%", u"abc"},        {u"a_c", u"ac"},           {u"_", u"\u00e9"}, {u"_", u"\U0001F600"},
        {u"__", u"\U0001F600"}, {u"%\u20ac", u"5 \u20ac"}, {u"a\\_", u"a_"},  {u"", u""},
    };
    for (const auto &c : cases) {
        const std::vector<GLIB_WChar> pattern = Units(c[0]);
        const std::vector<GLIB_WChar> value = Units(c[1]);
        EXPECT_EQ(nls::like(c[0], c[1]),
                  GLIB_ValueMatchesPatternW(pattern.data(), value.data()) != 0);
    }
    EXPECT_FALSE(nls::like(u"_", u"\U0001F600"));  // two units
    EXPECT_TRUE(nls::like(u"__", u"\U0001F600"));
}

TEST(CppLike, ViewsAreMatchedToTheirEnd) {
    const std::string_view pattern = std::string_view("a%xyz").substr(0, 2);
    const std::string_view value = std::string_view("abc!").substr(0, 3);
    EXPECT_TRUE(nls::like(pattern, value));
    EXPECT_TRUE(nls::like(std::u16string_view(u"a%xyz").substr(0, 2), u"abc"));
}

TEST(CppLike, LongTextsAreMatchedWhole) {
    const std::string value = std::string(300, 'x') + "end";
    EXPECT_TRUE(nls::like("%end", value));
    EXPECT_FALSE(nls::like(std::string(300, '_') + "_", value));
    EXPECT_TRUE(nls::like(std::string(303, '_'), value));
    const std::u16string wide = std::u16string(400, u'\u00e9') + u"!";
    EXPECT_TRUE(nls::like(u"%!", wide));
}

// --- character-set registry ------------------------------------------------------------------

TEST(CppCharset, MibIsWhatIANACS_GetMibEnumFinds) {
    for (const char *name : {"utf-8", "UTF-8", "Utf-8", "US-ASCII", "GBK", "eucJP", "Cp1006",
                             "Cp970", "", "no-such-name", "ISO_8859-1:1987"}) {
        std::int32_t mib = 0;
        const bool found = IANACS_GetMibEnum(name, &mib) == 0;
        const std::optional<std::int32_t> actual = nls::charset_mib(name);
        EXPECT_EQ(actual.has_value(), found) << name;
        if (found) {
            EXPECT_EQ(actual, mib) << name;
        }
    }
    EXPECT_EQ(nls::charset_mib("utf-8"), 106);
    EXPECT_EQ(nls::charset_mib("GBK"), std::nullopt);  // unreachable through the lookup
    EXPECT_EQ(nls::charset_mib("Cp1006"), 10022);
    EXPECT_EQ(nls::charset_mib(std::string_view("UTF-8 and more", 5)), 106);
}

TEST(CppCharset, InfoIsWhatIANACS_GetInfoGives) {
    for (std::int32_t mib : {3, 106, 1015, 13, 10038, 107, -1, 0}) {
        IANACS_Info expected{};
        const bool found = IANACS_GetInfo(mib, &expected) == 0;
        const std::optional<IANACS_Info> actual = nls::charset_info(mib);
        ASSERT_EQ(actual.has_value(), found) << mib;
        if (!found)
            continue;
        EXPECT_EQ(actual->name, expected.name) << mib;
        EXPECT_EQ(actual->mibEnum, expected.mibEnum) << mib;
        EXPECT_EQ(actual->minBytes, expected.minBytes) << mib;
        EXPECT_EQ(actual->maxBytes, expected.maxBytes) << mib;
        EXPECT_EQ(actual->fixedBytes, expected.fixedBytes) << mib;
    }
    const std::optional<IANACS_Info> utf8 = nls::charset_info(106);
    ASSERT_TRUE(utf8.has_value());
    EXPECT_STREQ(utf8->name, "UTF-8");
    EXPECT_EQ(utf8->minBytes, 1);
    EXPECT_EQ(utf8->maxBytes, 4);
    EXPECT_EQ(utf8->fixedBytes, 0);
    EXPECT_STREQ(nls::charset_info(10038)->name, "MacCyrillic");
    EXPECT_FALSE(nls::charset_info(107).has_value());
}

// --- code set of the process locale ----------------------------------------------------------

class CppCodeSet : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        ASSERT_EQ(nls_test::PrepareLocales({"C.UTF-8", "ja_JP.EUC-JP", "xx_EMPTY", "xx_LONG"}),
                  "");
    }

    void TearDown() override {
        std::setlocale(LC_ALL, "C");
    }

    static void Use(const char *locale) {
        ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr) << locale;
    }

    // What the C functions give with a buffer large enough for any code-set name.
    static std::string OsNameWithC() {
        char buffer[256] = {};
        EXPECT_EQ(KORANLS_GetOsCodePageName(buffer, sizeof buffer, 0, nullptr), 0);
        return buffer;
    }
    static std::string IanaNameWithC() {
        char buffer[257] = {};
        EXPECT_EQ(KORANLS_GetOsCodePageIanaName(buffer, 256, nullptr), 0);
        return buffer;
    }
};

TEST_F(CppCodeSet, NamesOfTheCLocale) {
    Use("C");
    EXPECT_EQ(nls::os_codeset(), "ANSI_X3.4-1968");
    EXPECT_EQ(nls::os_iana_name(), "US-ASCII");
    EXPECT_EQ(nls::os_codeset(), OsNameWithC());
    EXPECT_EQ(nls::os_iana_name(), IanaNameWithC());
}

TEST_F(CppCodeSet, NamesOfAUtf8Locale) {
    Use("C.UTF-8");
    EXPECT_EQ(nls::os_codeset(), "UTF-8");
    EXPECT_EQ(nls::os_iana_name(), "UTF-8");
}

TEST_F(CppCodeSet, LongestPreferredNameIsGivenWhole) {
    Use("ja_JP.EUC-JP");
    EXPECT_EQ(nls::os_codeset(), "EUC-JP");
    EXPECT_EQ(nls::os_iana_name(), "Extended_UNIX_Code_Packed_Format_for_Japanese");
    EXPECT_EQ(nls::os_iana_name(), IanaNameWithC());
}

TEST_F(CppCodeSet, LongCodeSetNameIsGivenWhole) {
    Use("xx_LONG");
    EXPECT_EQ(nls::os_codeset(), nls_test::kLongCodeSet);
    EXPECT_EQ(nls::os_codeset(), OsNameWithC());
    EXPECT_EQ(nls::os_iana_name(), nls_test::kLongCodeSet);  // not in the registry
}

TEST_F(CppCodeSet, EmptyCodeSetGivesEmptyNamesAndOneRecordEach) {
    Use("xx_EMPTY");
    for (auto name : {&nls::os_codeset, &nls::os_iana_name}) {
        nls::ErrorStack stack;
        EXPECT_EQ(name(stack), "");
        ASSERT_EQ(stack.size(), 1u);
        const nls::Error error = *stack.take_first();
        EXPECT_EQ(error.component(), ERRLIB_COMPONENT_NLSSUPPORT);
        EXPECT_EQ(error.code(), KORANLS_ERR_NO_CODESET);
        EXPECT_EQ(error.error_class(), KORANLS_CLASS_NLS);
        EXPECT_EQ(error.function(), "KORANLS_GetOsCodePageName");
        EXPECT_EQ(name(nullptr), "");
    }
}

TEST_F(CppCodeSet, SuccessRecordsNothing) {
    Use("C.UTF-8");
    nls::ErrorStack stack;
    EXPECT_EQ(nls::os_codeset(stack), "UTF-8");
    EXPECT_EQ(nls::os_iana_name(stack), "UTF-8");
    EXPECT_TRUE(stack.empty());
}

}  // namespace
