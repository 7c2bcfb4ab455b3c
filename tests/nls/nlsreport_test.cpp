/* SPDX-License-Identifier: MIT */
// End-to-end tests of the nlsreport command: the built binary run on generated locales.
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "test_locales.h"

namespace {

struct Result {
    std::string out;
    std::string err;
    int exitStatus = -1;
};

// Runs nlsreport with `args` and an environment made of LOCPATH, the sanitizer options of this
// process and `env`; collects both output streams and the exit status.
Result RunReport(const std::vector<std::string> &args, const std::vector<std::string> &env = {}) {
    Result r;
    const char *binary = std::getenv("NLSREPORT");
    EXPECT_NE(binary, nullptr) << "NLSREPORT names the binary under test";
    if (binary == nullptr) {
        return r;
    }
    std::vector<std::string> argStore = {binary};
    argStore.insert(argStore.end(), args.begin(), args.end());
    std::vector<std::string> envStore = {"LOCPATH=" + nls_test::LocaleDir()};
    for (const char *pass : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (const char *v = std::getenv(pass); v != nullptr) {
            envStore.push_back(std::string(pass) + "=" + v);
        }
    }
    envStore.insert(envStore.end(), env.begin(), env.end());
    std::vector<char *> argv;
    for (std::string &a : argStore) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);
    std::vector<char *> envp;
    for (std::string &e : envStore) {
        envp.push_back(e.data());
    }
    envp.push_back(nullptr);

    int outPipe[2];
    int errPipe[2];
    EXPECT_EQ(pipe(outPipe), 0);
    EXPECT_EQ(pipe(errPipe), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outPipe[1], 1);
    posix_spawn_file_actions_adddup2(&actions, errPipe[1], 2);
    posix_spawn_file_actions_addclose(&actions, outPipe[0]);
    posix_spawn_file_actions_addclose(&actions, errPipe[0]);
    pid_t pid = 0;
    const int rc = posix_spawn(&pid, binary, &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    close(outPipe[1]);
    close(errPipe[1]);
    EXPECT_EQ(rc, 0) << "cannot run " << binary;
    pollfd fds[2] = {{outPipe[0], POLLIN, 0}, {errPipe[0], POLLIN, 0}};
    std::string *sinks[2] = {&r.out, &r.err};
    int open = 2;
    while (rc == 0 && open > 0) {
        if (poll(fds, 2, -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            break;
        }
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd >= 0 && (fds[i].revents & (POLLIN | POLLHUP)) != 0) {
                char chunk[4096];
                const ssize_t n = read(fds[i].fd, chunk, sizeof chunk);
                if (n > 0) {
                    sinks[i]->append(chunk, static_cast<std::size_t>(n));
                } else {
                    fds[i].fd = -1;
                    --open;
                }
            }
        }
    }
    close(outPipe[0]);
    close(errPipe[0]);
    if (rc == 0) {
        int status = 0;
        while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
        }
        r.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    return r;
}

// `text` right-aligned in `width` columns; a longer text is kept whole.
std::string Right(const std::string &text, std::size_t width) {
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

const std::string kHeader =
    "                  locale         codepage         iananame IANAAppCodePage\n";

// One report row: locale in 24 columns, the two names in 16, the MIBenum as given.
std::string Row(const std::string &locale, const std::string &codePage, const std::string &ianaName,
                const std::string &mib) {
    return Right(locale, 24) + " " + Right(codePage, 16) + " " + Right(ianaName, 16) + " " + mib +
           "\n";
}

// What a row shows for a locale: the OS code set, the IANA column and the MIBenum column, worked
// out from the registry tables by hand.
struct Expected {
    const char *locale;
    const char *codePage;
    const char *ianaName;
    const char *mib;
};

const Expected kRows[] = {
    {"C", "ANSI_X3.4-1968", "US-ASCII", "3"},
    {"POSIX", "ANSI_X3.4-1968", "US-ASCII", "3"},
    {"C.UTF-8", "UTF-8", "UTF-8", "106"},
    {"en_US.ISO-8859-1", "ISO-8859-1", "ISO-8859-1", "4"},
    {"de_DE.ISO-8859-15", "ISO-8859-15", "ISO-8859-15", "111"},
    {"lt_LT.ISO-8859-13", "ISO-8859-13", "ISO-8859-13", "109"},
    // OS row 5; preferred name "ISO_8859-2:1987" is an alias of 5.
    {"pl_PL.ISO-8859-2", "ISO-8859-2", "ISO_8859-2:1987", "5"},
    // Not in the OS table; the OS name is itself an alias of 7.
    {"et_EE.ISO-8859-4", "ISO-8859-4", "ISO-8859-4", "7"},
    // Preferred name of 45 characters does not fit 41 bytes: failure, MIBenum -1.
    {"ja_JP.EUC-JP", "EUC-JP", "EUC-JP", "-1"},
    {"ko_KR.EUC-KR", "EUC-KR", "EUC-KR", "38"},
    {"zh_TW.BIG5", "BIG5", "Big5", "2026"},
    // Not in the OS table (which spells it BIG5HKSCS); "BIG5-HKSCS" matches alias Big5-HKSCS.
    {"zh_HK.BIG5-HKSCS", "BIG5-HKSCS", "BIG5-HKSCS", "2101"},
    // OS row with MIBenum -1; "EUC-TW" is no alias.
    {"zh_TW.EUC-TW", "EUC-TW", "EUC-TW", "-1"},
    // Recognised (113), but the alias search cannot reach "GBK".
    {"zh_CN.GBK", "GBK", "GBK", "-1"},
    {"zh_CN.GB2312", "GB2312", "GB2312", "2025"},
    {"zh_CN.GB18030", "GB18030", "GB18030", "114"},
    {"th_TH.TIS-620", "TIS-620", "TIS620", "2259"},
    {"ru_RU.KOI8-R", "KOI8-R", "KOI8-R", "2084"},
    {"uk_UA.KOI8-U", "KOI8-U", "KOI8-U", "2088"},
    {"be_BY.CP1251", "CP1251", "windows-1251", "2251"},
    // Unknown everywhere.
    {"hy_AM.ARMSCII-8", "ARMSCII-8", "ARMSCII-8", "-1"},
    // OS row with MIBenum -1 and no alias.
    {"xx_BIG5HKSCS", "BIG5HKSCS", "BIG5HKSCS", "-1"},
    // The OS table ignores case: "utf-8" maps to UTF-8.
    {"xx_LOWERUTF8", "utf-8", "UTF-8", "106"},
};

class NlsReport : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        for (const Expected &e : kRows) {
            if (std::strcmp(e.locale, "C") == 0 || std::strcmp(e.locale, "POSIX") == 0) {
                continue;
            }
            const std::string err = nls_test::EnsureLocale(e.locale);
            ASSERT_EQ(err, "");
        }
        ASSERT_EQ(nls_test::EnsureLocales({"xx_EMPTY", "xx_LONG", "xx_CS40"}), "");
    }

    // Runs the command and checks the invariant parts: exit status 0, nothing on stderr.
    static std::string Output(const std::vector<std::string> &args,
                              const std::vector<std::string> &env = {}) {
        const Result r = RunReport(args, env);
        EXPECT_EQ(r.exitStatus, 0);
        EXPECT_EQ(r.err, "");
        return r.out;
    }

    static std::string RowFor(const Expected &e, const std::string &asLocale) {
        return Row(asLocale, e.codePage, e.ianaName, e.mib);
    }

    static const Expected &Find(const char *locale) {
        for (const Expected &e : kRows) {
            if (std::strcmp(e.locale, locale) == 0) {
                return e;
            }
        }
        ADD_FAILURE() << "no expected row for " << locale;
        return kRows[0];
    }
};

TEST_F(NlsReport, CLocaleExactBytes) {
    EXPECT_EQ(Output({"C"}),
              "                  locale         codepage         iananame IANAAppCodePage\n"
              "                       C   ANSI_X3.4-1968         US-ASCII 3\n");
}

TEST_F(NlsReport, Utf8LocaleExactBytes) {
    EXPECT_EQ(Output({"C.UTF-8"}),
              "                  locale         codepage         iananame IANAAppCodePage\n"
              "                 C.UTF-8            UTF-8            UTF-8 106\n");
}

TEST_F(NlsReport, EucJpExactBytes) {
    EXPECT_EQ(Output({"ja_JP.EUC-JP"}),
              "                  locale         codepage         iananame IANAAppCodePage\n"
              "            ja_JP.EUC-JP           EUC-JP           EUC-JP -1\n");
}

TEST_F(NlsReport, OneRowPerLocale) {
    for (const Expected &e : kRows) {
        EXPECT_EQ(Output({e.locale}), kHeader + RowFor(e, e.locale)) << e.locale;
    }
}

TEST_F(NlsReport, SeveralLocalesInOneCallInArgumentOrder) {
    std::vector<std::string> args;
    std::string expected = kHeader;
    for (const Expected &e : kRows) {
        args.emplace_back(e.locale);
        expected += RowFor(e, e.locale);
    }
    // Once more backwards, so every row follows a different locale than before.
    for (auto it = std::rbegin(kRows); it != std::rend(kRows); ++it) {
        args.emplace_back(it->locale);
        expected += RowFor(*it, it->locale);
    }
    EXPECT_EQ(Output(args), expected);
}

TEST_F(NlsReport, InvalidLocaleAfterAValidOneRepeatsItsValues) {
    const Expected &kr = Find("ko_KR.EUC-KR");
    EXPECT_EQ(Output({"ko_KR.EUC-KR", "no_such_locale"}),
              kHeader + RowFor(kr, "ko_KR.EUC-KR") + RowFor(kr, "no_such_locale"));
    const Expected &gbk = Find("zh_CN.GBK");
    EXPECT_EQ(Output({"C.UTF-8", "zh_CN.GBK", "xx_NOPE.UTF-8", "C"}),
              kHeader + RowFor(Find("C.UTF-8"), "C.UTF-8") + RowFor(gbk, "zh_CN.GBK") +
                  RowFor(gbk, "xx_NOPE.UTF-8") + RowFor(Find("C"), "C"));
}

TEST_F(NlsReport, InvalidFirstLocaleReportsTheStartUpCLocale) {
    EXPECT_EQ(Output({"no_such_locale"}),
              kHeader + Row("no_such_locale", "ANSI_X3.4-1968", "US-ASCII", "3"));
}

TEST_F(NlsReport, ArgumentsBeginningWithADashAreLocaleNames) {
    const Expected &c = Find("C");
    EXPECT_EQ(
        Output({"-h", "--help", "-", "--version"}),
        kHeader + RowFor(c, "-h") + RowFor(c, "--help") + RowFor(c, "-") + RowFor(c, "--version"));
    const Expected &u = Find("C.UTF-8");
    EXPECT_EQ(Output({"C.UTF-8", "-v"}), kHeader + RowFor(u, "C.UTF-8") + RowFor(u, "-v"));
}

TEST_F(NlsReport, NoArgumentReportsTheLocaleOfLcAll) {
    EXPECT_EQ(Output({}, {"LC_ALL=zh_TW.BIG5"}), kHeader + RowFor(Find("zh_TW.BIG5"), ""));
    EXPECT_EQ(Output({}, {"LC_ALL=ja_JP.EUC-JP", "LANG=C.UTF-8"}),
              kHeader + "                                   EUC-JP           EUC-JP -1\n");
}

TEST_F(NlsReport, NoArgumentReportsTheLocaleOfLang) {
    EXPECT_EQ(Output({}, {"LANG=th_TH.TIS-620"}), kHeader + Row("", "TIS-620", "TIS620", "2259"));
}

TEST_F(NlsReport, NoArgumentWithoutLocaleVariablesReportsC) {
    EXPECT_EQ(Output({}), kHeader + Row("", "ANSI_X3.4-1968", "US-ASCII", "3"));
}

TEST_F(NlsReport, NoArgumentWithAnUnknownEnvironmentLocaleKeepsC) {
    EXPECT_EQ(Output({}, {"LC_ALL=no_such_locale"}),
              kHeader + Row("", "ANSI_X3.4-1968", "US-ASCII", "3"));
}

TEST_F(NlsReport, EmptyArgumentAlsoReadsTheEnvironment) {
    EXPECT_EQ(Output({"", "C"}, {"LC_ALL=ru_RU.KOI8-R"}),
              kHeader + Row("", "KOI8-R", "KOI8-R", "2084") +
                  Row("C", "ANSI_X3.4-1968", "US-ASCII", "3"));
}

TEST_F(NlsReport, EmptyCodeSetRepeatsThePreviousCodePageAndEmptiesTheIanaName) {
    EXPECT_EQ(Output({"zh_CN.GBK", "xx_EMPTY", "xx_EMPTY", "C", "xx_EMPTY"}),
              kHeader + Row("zh_CN.GBK", "GBK", "GBK", "-1") + Row("xx_EMPTY", "GBK", "", "-1") +
                  Row("xx_EMPTY", "GBK", "", "-1") + Row("C", "ANSI_X3.4-1968", "US-ASCII", "3") +
                  Row("xx_EMPTY", "ANSI_X3.4-1968", "", "-1"));
}

TEST_F(NlsReport, EmptyCodeSetOnTheFirstRowShowsAnEmptyCodePage) {
    EXPECT_EQ(Output({"xx_EMPTY"}),
              kHeader + "                xx_EMPTY" + std::string(35, ' ') + "-1\n");
}

TEST_F(NlsReport, CodePageIsCutTo40Characters) {
    const std::string cut(nls_test::kLongCodeSet, 40);
    EXPECT_EQ(Output({"xx_LONG"}),
              kHeader + "                 xx_LONG " + cut + " " + cut + " -1\n");
}

TEST_F(NlsReport, CodePageOf40CharactersIsShownWhole) {
    const std::string name = nls_test::kCodeSet40;
    ASSERT_EQ(name.size(), 40u);
    EXPECT_EQ(Output({"xx_CS40"}), kHeader + Row("xx_CS40", name, name, "-1"));
}

TEST_F(NlsReport, LongLocaleArgumentIsNotCut) {
    const std::string locale = "a-locale-name-longer-than-twenty-four-columns";
    EXPECT_EQ(Output({locale}), kHeader + locale + "   ANSI_X3.4-1968         US-ASCII 3\n");
}

TEST_F(NlsReport, ExitStatusIsZeroAndStderrEmptyForEveryKindOfRow) {
    const Result r = RunReport({"C", "no_such", "xx_EMPTY", "ja_JP.EUC-JP", "zh_CN.GBK", "-x"});
    EXPECT_EQ(r.exitStatus, 0);
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 7);
}

}  // namespace
