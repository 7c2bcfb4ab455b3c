/* SPDX-License-Identifier: MIT */
// Expansion of '${NAME}' references and copies of environment values.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/memmgr.h>

namespace {

// Sets (or, with null, removes) an environment variable for the life of the object.
class EnvVar {
  public:
    EnvVar(const char *name, const char *value) : name_(name) {
        const char *old = std::getenv(name);
        hadOld_ = old != nullptr;
        if (hadOld_)
            old_ = old;
        if (value != nullptr) {
            setenv(name, value, 1);
        } else {
            unsetenv(name);
        }
    }
    ~EnvVar() {
        if (hadOld_) {
            setenv(name_.c_str(), old_.c_str(), 1);
        } else {
            unsetenv(name_.c_str());
        }
    }
    EnvVar(const EnvVar &) = delete;
    EnvVar &operator=(const EnvVar &) = delete;

  private:
    std::string name_;
    std::string old_;
    bool hadOld_ = false;
};

// Expands text with an error stack and checks that nothing was recorded.
std::string Expand(const char *text) {
    ERRLIB_ErrorStack *stack = nullptr;
    EXPECT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    char *result = GLIB_ExpandEnvStrings(text, stack);
    EXPECT_NE(result, nullptr);
    int32_t errors = -1;
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &errors);
    EXPECT_EQ(errors, 0);
    ERRLIB_ErrorStack_Destroy(stack);
    std::string copy = result != nullptr ? result : "<null>";
    MMFLAT_Free(result);
    return copy;
}

TEST(GlibExpandEnvStrings, ReplacesReferences) {
    EnvVar home("HOME", "/h");
    EXPECT_EQ(Expand("x${HOME}y"), "x/hy");
    EXPECT_EQ(Expand("${HOME}"), "/h");
    EXPECT_EQ(Expand("${HOME}${HOME}"), "/h/h");
    EXPECT_EQ(Expand("$${HOME}"), "$/h");
    EXPECT_EQ(Expand("${HOME}}"), "/h}");
}

TEST(GlibExpandEnvStrings, UnsetVariableProducesNothing) {
    EnvVar unset("GLIBTEST_UNSET", nullptr);
    EXPECT_EQ(Expand("${GLIBTEST_UNSET}"), "");
    EXPECT_EQ(Expand("a${GLIBTEST_UNSET}b"), "ab");
    EXPECT_EQ(Expand("${}"), "");
}

TEST(GlibExpandEnvStrings, OtherSyntaxStaysText) {
    EnvVar home("HOME", "/h");
    EXPECT_EQ(Expand("$HOME"), "$HOME");
    EXPECT_EQ(Expand("${HOME"), "${HOME");
    EXPECT_EQ(Expand("$"), "$");
    EXPECT_EQ(Expand("${"), "${");
    EXPECT_EQ(Expand("a$"), "a$");
    EXPECT_EQ(Expand("\\${HOME}"), "\\/h");  // no escape for '$'
    EXPECT_EQ(Expand(""), "");
    EXPECT_EQ(Expand("plain text"), "plain text");
}

TEST(GlibExpandEnvStrings, NoNestedReferences) {
    EnvVar a("GLIBTEST_A", "1");
    EnvVar b("GLIBTEST_B", "2");
    // The name runs to the first '}': "GLIBTEST_A${GLIBTEST_B", which is not set.
    EXPECT_EQ(Expand("${GLIBTEST_A${GLIBTEST_B}}"), "}");
    EXPECT_EQ(Expand("${GLIBTEST_A}${GLIBTEST_B}"), "12");
}

TEST(GlibExpandEnvStrings, EmptyAndLongValues) {
    EnvVar empty("GLIBTEST_EMPTY", "");
    const std::string longValue(5000, 'v');
    EnvVar big("GLIBTEST_BIG", longValue.c_str());
    EXPECT_EQ(Expand("<${GLIBTEST_EMPTY}>"), "<>");
    EXPECT_EQ(Expand("${GLIBTEST_EMPTY}${GLIBTEST_EMPTY}"), "");
    EXPECT_EQ(Expand("a${GLIBTEST_BIG}b${GLIBTEST_BIG}"), "a" + longValue + "b" + longValue);
}

TEST(GlibExpandEnvStrings, NamesOf63CharactersOrMoreAreNotLookedUp) {
    const std::string name62 = "G" + std::string(61, 'X');
    const std::string name63 = "G" + std::string(62, 'X');
    EnvVar v62(name62.c_str(), "short");
    EnvVar v63(name63.c_str(), "long");
    EXPECT_EQ(Expand(("[${" + name62 + "}]").c_str()), "[short]");
    EXPECT_EQ(Expand(("[${" + name63 + "}]").c_str()), "[]");
}

TEST(GlibExpandEnvStrings, NullStackIsAccepted) {
    EnvVar a("GLIBTEST_A", "value");
    char *result = GLIB_ExpandEnvStrings("<${GLIBTEST_A}>", nullptr);
    ASSERT_NE(result, nullptr);
    EXPECT_STREQ(result, "<value>");
    MMFLAT_Free(result);
}

TEST(GlibMMStrDupGetenv, CopiesTheValue) {
    EnvVar a("GLIBTEST_A", "some value");
    char *copy = GLIB_MMStrDup_getenv("GLIBTEST_A", nullptr);
    ASSERT_NE(copy, nullptr);
    EXPECT_STREQ(copy, "some value");
    EXPECT_NE(copy, std::getenv("GLIBTEST_A"));
    MMFLAT_Free(copy);

    EnvVar empty("GLIBTEST_EMPTY", "");
    char *emptyCopy = GLIB_MMStrDup_getenv("GLIBTEST_EMPTY", nullptr);
    ASSERT_NE(emptyCopy, nullptr);
    EXPECT_STREQ(emptyCopy, "");
    MMFLAT_Free(emptyCopy);
}

TEST(GlibMMStrDupGetenv, UnsetGivesNullWithoutErrorRecord) {
    EnvVar unset("GLIBTEST_UNSET", nullptr);
    ERRLIB_ErrorStack *stack = nullptr;
    ASSERT_EQ(ERRLIB_ErrorStack_Create(&stack), 0);
    EXPECT_EQ(GLIB_MMStrDup_getenv("GLIBTEST_UNSET", stack), nullptr);
    int32_t errors = -1;
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &errors);
    EXPECT_EQ(errors, 0);
    ERRLIB_ErrorStack_Destroy(stack);
}

}  // namespace
