/* SPDX-License-Identifier: MIT */
// The code-page services read the locale of the calling thread: threads that each run under
// their own locale (newlocale and uselocale) get, at the same moment, the code set and IANA name
// of that locale, and threads without one get those of the process locale. A barrier starts each
// round on every thread at once, so that the calls really overlap.
#include <gtest/gtest.h>
#include <locale.h>
#include <nlssupport/koranls.h>

#include <barrier>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "nls/test_locales.h"

namespace concurrency_test {
namespace {

constexpr int kRounds = 200;
constexpr int kCallsPerRound = 5;

struct LocaleCase {
    const char *locale;    // the locale's name; null: the thread keeps the process locale
    const char *codeSet;   // what KORANLS_GetOsCodePageName gives
    const char *ianaName;  // what KORANLS_GetOsCodePageIanaName gives
};

// Names as the operating system and the registry give them in each locale; the ISO-8859-2
// locale's IANA name differs from its code set, so the registry lookup is seen to run too.
constexpr LocaleCase kC = {"C", "ANSI_X3.4-1968", "US-ASCII"};
constexpr LocaleCase kUtf8 = {"C.UTF-8", "UTF-8", "UTF-8"};
constexpr LocaleCase kLatin1 = {"en_US.ISO-8859-1", "ISO-8859-1", "ISO-8859-1"};
constexpr LocaleCase kLatin9 = {"de_DE.ISO-8859-15", "ISO-8859-15", "ISO-8859-15"};
constexpr LocaleCase kLatin2 = {"pl_PL.ISO-8859-2", "ISO-8859-2", "ISO_8859-2:1987"};

// Calls both services and returns what differs from the expected names, or an empty text.
std::string CheckCodePage(const LocaleCase &expected) {
    char name[64];
    std::memset(name, 0x7E, sizeof name);
    if (KORANLS_GetOsCodePageName(name, sizeof name, 0, nullptr) != 0 ||
        std::strcmp(name, expected.codeSet) != 0) {
        return std::string("code set \"") + name + "\", expected \"" + expected.codeSet + "\"";
    }
    char iana[64];
    std::memset(iana, 0x7E, sizeof iana);
    if (KORANLS_GetOsCodePageIanaName(iana, sizeof iana - 1, nullptr) != 0 ||
        std::strcmp(iana, expected.ianaName) != 0) {
        return std::string("IANA name \"") + iana + "\", expected \"" + expected.ianaName + "\"";
    }
    return "";
}

// One thread: under its own locale when `own` is not null, else under the process locale; the
// expected names are those of `expected`. Records the first difference in `problem`.
void RunUnderLocale(locale_t own, const LocaleCase &expected, std::barrier<> &sync,
                    std::string &problem) {
    if (own != nullptr) {
        uselocale(own);
    }
    for (int round = 0; round < kRounds; ++round) {
        sync.arrive_and_wait();
        for (int k = 0; k < kCallsPerRound && problem.empty(); ++k) {
            problem = CheckCodePage(expected);
            if (!problem.empty()) {
                problem += " in round " + std::to_string(round);
            }
        }
    }
    uselocale(LC_GLOBAL_LOCALE);
}

class ThreadLocale : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        // Before any thread starts: the environment is only read once threads run.
        const std::string err = nls_test::PrepareLocales(
            {"C.UTF-8", "en_US.ISO-8859-1", "de_DE.ISO-8859-15", "pl_PL.ISO-8859-2"});
        ASSERT_EQ(err, "");
    }

    void TearDown() override {
        for (locale_t l : locales_) {
            freelocale(l);
        }
        std::setlocale(LC_ALL, "C");
    }

    locale_t Make(const LocaleCase &c) {
        const locale_t l = newlocale(LC_ALL_MASK, c.locale, static_cast<locale_t>(0));
        if (l != static_cast<locale_t>(0)) {
            locales_.push_back(l);
        }
        return l;
    }

    // Runs one thread per case (under its own locale when `own` holds one, else under the
    // process locale) through kRounds synchronised rounds, and checks what each one saw.
    static void RunTogether(const std::vector<locale_t> &own,
                            const std::vector<const LocaleCase *> &expected) {
        std::barrier<> sync(static_cast<std::ptrdiff_t>(own.size()));
        std::vector<std::string> problems(own.size());
        std::vector<std::thread> threads;
        for (std::size_t t = 0; t < own.size(); ++t) {
            threads.emplace_back(RunUnderLocale, own[t], std::cref(*expected[t]), std::ref(sync),
                                 std::ref(problems[t]));
        }
        for (std::thread &thread : threads) {
            thread.join();
        }
        for (std::size_t t = 0; t < own.size(); ++t) {
            EXPECT_EQ(problems[t], "")
                << "thread " << t << " (" << (own[t] != nullptr ? expected[t]->locale : "process")
                << " locale)";
        }
    }

  private:
    std::vector<locale_t> locales_;
};

TEST_F(ThreadLocale, EachThreadReadsTheCodeSetOfItsOwnLocale) {
    std::vector<locale_t> own;
    std::vector<const LocaleCase *> expected;
    for (const LocaleCase *c : {&kC, &kUtf8, &kLatin1, &kLatin9, &kLatin2}) {
        const locale_t l = Make(*c);
        ASSERT_NE(l, static_cast<locale_t>(0)) << c->locale;
        own.push_back(l);
        expected.push_back(c);
    }
    // And one more thread under the process locale, "C".
    own.push_back(nullptr);
    expected.push_back(&kC);
    RunTogether(own, expected);
    // The calling thread never left the process locale.
    EXPECT_EQ(CheckCodePage(kC), "");
}

TEST_F(ThreadLocale, ThreadsWithoutALocaleOfTheirOwnFollowTheProcessLocale) {
    // The process locale is set before the threads start: setlocale is not safe while they run.
    ASSERT_NE(std::setlocale(LC_ALL, kLatin1.locale), nullptr);
    const locale_t c = Make(kC);
    const locale_t utf8 = Make(kUtf8);
    ASSERT_NE(c, static_cast<locale_t>(0));
    ASSERT_NE(utf8, static_cast<locale_t>(0));
    RunTogether({nullptr, c, nullptr, utf8}, {&kLatin1, &kC, &kLatin1, &kUtf8});
    EXPECT_EQ(CheckCodePage(kLatin1), "");
}

}  // namespace
}  // namespace concurrency_test
