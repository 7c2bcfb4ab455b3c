/* SPDX-License-Identifier: MIT */
// Directory paths, time-stamp text and the seedable pseudo-random generator.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include <nlssupport/glib.h>

namespace {

bool IsDirectory(const char *path) {
    struct stat info;
    return stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

// Runs each test inside a fresh temporary directory.
class GlibMkdirp : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/glib_mkdirp_XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
        char cwd[PATH_MAX];
        ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
        oldCwd_ = cwd;
        ASSERT_EQ(chdir(dir_.c_str()), 0);
    }
    void TearDown() override {
        EXPECT_EQ(chdir(oldCwd_.c_str()), 0);
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }
    std::string dir_;
    std::string oldCwd_;
};

TEST_F(GlibMkdirp, CreatesEveryLevelAndRestoresThePath) {
    char path[] = "a/b/c";
    EXPECT_EQ(GLIB_mkdirp(path, 0755), 0);
    EXPECT_STREQ(path, "a/b/c");
    EXPECT_TRUE(IsDirectory("a"));
    EXPECT_TRUE(IsDirectory("a/b"));
    EXPECT_TRUE(IsDirectory("a/b/c"));
}

TEST_F(GlibMkdirp, ExistingLevelsAreKept) {
    ASSERT_EQ(mkdir("a", 0755), 0);
    char path[] = "a/b";
    EXPECT_EQ(GLIB_mkdirp(path, 0755), 0);
    EXPECT_TRUE(IsDirectory("a/b"));
    char again[] = "a/b";
    EXPECT_EQ(GLIB_mkdirp(again, 0755), 0);
}

TEST_F(GlibMkdirp, TrailingSeparatorCreatesTheLastLevelOnce) {
    char path[] = "x/y/";
    EXPECT_EQ(GLIB_mkdirp(path, 0755), 0);
    EXPECT_STREQ(path, "x/y/");
    EXPECT_TRUE(IsDirectory("x/y"));
}

TEST_F(GlibMkdirp, OpeningParenthesisIsASeparatorToo) {
    char path[] = "p(q";
    EXPECT_EQ(GLIB_mkdirp(path, 0755), 0);
    EXPECT_STREQ(path, "p(q");
    EXPECT_TRUE(IsDirectory("p"));
    EXPECT_TRUE(IsDirectory("p(q"));
}

TEST_F(GlibMkdirp, FirstCharacterIsNeverASplitPoint) {
    char path[] = "(x";
    EXPECT_EQ(GLIB_mkdirp(path, 0755), 0);
    EXPECT_TRUE(IsDirectory("(x"));
    // An absolute path: the leading '/' is skipped, every later level is handled.
    const std::string absolute = dir_ + "/m/n";
    std::string buffer = absolute;
    EXPECT_EQ(GLIB_mkdirp(buffer.data(), 0755), 0);
    EXPECT_EQ(buffer, absolute);
    EXPECT_TRUE(IsDirectory("m/n"));
}

TEST_F(GlibMkdirp, ModeIsPassedToMkdir) {
    char path[] = "m1/m2";
    EXPECT_EQ(GLIB_mkdirp(path, 0700), 0);
    struct stat info;
    ASSERT_EQ(stat("m1", &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
    ASSERT_EQ(stat("m1/m2", &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0700u);
}

TEST_F(GlibMkdirp, FailingLevelReturnsAtOnceAndKeepsTheCut) {
    std::ofstream("file") << "x";
    char path[] = "file/x/y";
    errno = 0;
    EXPECT_EQ(GLIB_mkdirp(path, 0755), -1);
    EXPECT_EQ(errno, ENOTDIR);
    // The terminator put in at the failing separator stays there.
    EXPECT_STREQ(path, "file/x");
    EXPECT_EQ(path[6], '\0');
    EXPECT_STREQ(path + 7, "y");
}

TEST_F(GlibMkdirp, FailingLastLevelReturnsMkdirResult) {
    std::ofstream("file") << "x";
    char path[] = "file/x";
    errno = 0;
    EXPECT_EQ(GLIB_mkdirp(path, 0755), -1);
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_STREQ(path, "file/x");
}

TEST_F(GlibMkdirp, EmptyPathFailsLikeMkdir) {
    char path[] = "";
    errno = 0;
    EXPECT_EQ(GLIB_mkdirp(path, 0755), -1);
    EXPECT_EQ(errno, ENOENT);
}

class GlibCtime : public ::testing::Test {
  protected:
    void SetUp() override {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

TEST_F(GlibCtime, TextWithoutLineFeed) {
    char buffer[64];
    std::memset(buffer, 'Z', sizeof buffer);
    EXPECT_EQ(GLIB_ctime(0, buffer, sizeof buffer), buffer);
    EXPECT_STREQ(buffer, "Thu Jan  1 00:00:00 1970");
    EXPECT_EQ(GLIB_ctime(951782400, buffer, sizeof buffer), buffer);
    EXPECT_STREQ(buffer, "Tue Feb 29 00:00:00 2000");
}

TEST_F(GlibCtime, CutToSizeMinusOneWithTerminatorInLastByte) {
    char buffer[16];
    std::memset(buffer, 'Z', sizeof buffer);
    GLIB_ctime(0, buffer, 10);
    EXPECT_STREQ(buffer, "Thu Jan  ");
    EXPECT_EQ(buffer[10], 'Z');
    GLIB_ctime(0, buffer, 1);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(buffer[1], 'h');  // left from the call before
}

TEST_F(GlibCtime, ShortTextIsPaddedWithZerosByStrncpy) {
    char buffer[40];
    std::memset(buffer, 'Z', sizeof buffer);
    GLIB_ctime(0, buffer, 30);
    for (int i = 24; i < 30; ++i)
        EXPECT_EQ(buffer[i], '\0') << i;
    EXPECT_EQ(buffer[30], 'Z');
}

TEST_F(GlibCtime, NullDestinationAndZeroSize) {
    EXPECT_EQ(GLIB_ctime(0, nullptr, 10), nullptr);
    char buffer[2] = {'Z', 'Z'};
    EXPECT_EQ(GLIB_ctime(0, buffer, 0), buffer);
    EXPECT_EQ(buffer[0], 'Z');
    EXPECT_EQ(buffer[1], 'Z');
}

TEST_F(GlibCtime, AgreesWithCtimeR) {
    uint32_t seed = 99;
    for (int i = 0; i < 2000; ++i) {
        const time_t t = static_cast<time_t>((static_cast<uint32_t>(GLIB_rand(&seed)) << 16 |
                                              static_cast<uint32_t>(GLIB_rand(&seed))) &
                                             0x7FFFFFFF);
        char expected[64];
        ASSERT_NE(ctime_r(&t, expected), nullptr);
        expected[std::strlen(expected) - 1] = '\0';
        char buffer[64];
        GLIB_ctime(t, buffer, sizeof buffer);
        ASSERT_STREQ(buffer, expected) << t;
    }
}

TEST_F(GlibCtime, UnrepresentableTimeGivesEmptyText) {
    if (sizeof(time_t) < 8)
        GTEST_SKIP() << "every 32-bit time has a text";
    char buffer[8] = {'Z', 'Z', 'Z', 'Z', 'Z', 'Z', 'Z', 'Z'};
    GLIB_ctime(static_cast<time_t>(INT64_MAX), buffer, sizeof buffer);
    EXPECT_EQ(buffer[0], '\0');
}

TEST(GlibRand, KnownSequenceFromSeedZero) {
    uint32_t seed = 0;
    EXPECT_EQ(GLIB_rand(&seed), 0);
    EXPECT_EQ(seed, 12345u);
    EXPECT_EQ(GLIB_rand(&seed), 21468);
    EXPECT_EQ(seed, 12345u * 1103515245u + 12345u);
}

TEST(GlibRand, StateLivesOnlyInTheSeed) {
    uint32_t a = 42;
    uint32_t b = 42;
    uint32_t other = 7;
    for (int i = 0; i < 1000; ++i) {
        const int32_t va = GLIB_rand(&a);
        GLIB_rand(&other);  // another generator in between changes nothing
        ASSERT_EQ(GLIB_rand(&b), va);
    }
}

TEST(GlibRand, FollowsTheLinearCongruentialStep) {
    uint32_t seed = 0xFFFFFFFFu;
    uint64_t model = 0xFFFFFFFFu;
    for (int i = 0; i < 10000; ++i) {
        model = (model * 1103515245u + 12345u) & 0xFFFFFFFFu;
        const int32_t value = GLIB_rand(&seed);
        ASSERT_EQ(seed, static_cast<uint32_t>(model));
        ASSERT_EQ(value, static_cast<int32_t>((model >> 16) & 0x7FFF));
        ASSERT_GE(value, 0);
        ASSERT_LE(value, 32767);
    }
}

}  // namespace
