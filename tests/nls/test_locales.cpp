/* SPDX-License-Identifier: MIT */
// Generation of the test locales (see test_locales.h).
#include "test_locales.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

extern char **environ;

namespace nls_test {
namespace {

namespace fs = std::filesystem;

// Placeholder code-set name of the empty-code-set locale: written by localedef, then blanked.
constexpr char kEmptyMarker[] = "NLSTESTEMPTYCODESETMARKER";

struct LocaleRecipe {
    const char *name;
    const char *source;   // locale source in /usr/share/i18n/locales
    const char *charmap;  // system charmap name, or null for a synthetic ASCII charmap
    const char *codeSet;  // code-set name of the synthetic charmap
    bool blankCodeSet;    // make the code set empty after generation
};

constexpr LocaleRecipe kLocales[] = {
    {"C.UTF-8", "C", "UTF-8", nullptr, false},
    {"en_US.ISO-8859-1", "en_US", "ISO-8859-1", nullptr, false},
    {"de_DE.ISO-8859-15", "de_DE", "ISO-8859-15", nullptr, false},
    {"lt_LT.ISO-8859-13", "lt_LT", "ISO-8859-13", nullptr, false},
    {"pl_PL.ISO-8859-2", "pl_PL", "ISO-8859-2", nullptr, false},
    {"et_EE.ISO-8859-4", "et_EE", "ISO-8859-4", nullptr, false},
    {"ja_JP.EUC-JP", "ja_JP", "EUC-JP", nullptr, false},
    {"ko_KR.EUC-KR", "ko_KR", "EUC-KR", nullptr, false},
    {"zh_TW.BIG5", "zh_TW", "BIG5", nullptr, false},
    {"zh_HK.BIG5-HKSCS", "zh_HK", "BIG5-HKSCS", nullptr, false},
    {"zh_TW.EUC-TW", "zh_TW", "EUC-TW", nullptr, false},
    {"zh_CN.GBK", "zh_CN", "GBK", nullptr, false},
    {"zh_CN.GB2312", "zh_CN", "GB2312", nullptr, false},
    {"zh_CN.GB18030", "zh_CN", "GB18030", nullptr, false},
    {"th_TH.TIS-620", "th_TH", "TIS-620", nullptr, false},
    {"ru_RU.KOI8-R", "ru_RU", "KOI8-R", nullptr, false},
    {"uk_UA.KOI8-U", "uk_UA", "KOI8-U", nullptr, false},
    {"be_BY.CP1251", "be_BY", "CP1251", nullptr, false},
    {"hy_AM.ARMSCII-8", "hy_AM", "ARMSCII-8", nullptr, false},
    {"xx_EMPTY", "C", nullptr, kEmptyMarker, true},
    {"xx_BIG5HKSCS", "C", nullptr, "BIG5HKSCS", false},
    {"xx_LOWERUTF8", "C", nullptr, "utf-8", false},
    {"xx_LONG", "C", nullptr, kLongCodeSet, false},
    {"xx_CS40", "C", nullptr, kCodeSet40, false},
};

bool Complete(const fs::path &dir) {
    std::error_code ec;
    return fs::is_regular_file(dir / "LC_CTYPE", ec);
}

// Writes a charmap of the 128 ASCII characters under the given code-set name.
std::string WriteAsciiCharmap(const fs::path &file, const char *codeSet) {
    std::ofstream out(file, std::ios::trunc);
    out << "<code_set_name> " << codeSet << "\n<comment_char> %\n<escape_char> /\n"
        << "<mb_cur_min> 1\n<mb_cur_max> 1\nCHARMAP\n";
    for (int c = 0; c < 128; ++c) {
        char line[32];
        std::snprintf(line, sizeof line, "<U%04X> /x%02x\n", c, c);
        out << line;
    }
    out << "END CHARMAP\n";
    out.close();
    return out ? "" : "cannot write " + file.string();
}

// Runs localedef; its status is not trusted (warnings make it non-zero even when the locale was
// written), the caller checks the output directory instead.
std::string RunLocaledef(const std::string &source, const std::string &charmap,
                         const fs::path &out) {
    std::vector<std::string> args = {"localedef", "--no-archive", "-c",    "-i",
                                     source,      "-f",           charmap, out.string()};
    std::vector<char *> argv;
    for (std::string &a : args) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int rc = posix_spawnp(&pid, "localedef", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) {
        return std::string("cannot run localedef: ") + std::strerror(rc);
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return "";
}

// Replaces the first byte of the marker code-set name in LC_CTYPE by a terminator, so that the
// locale reports an empty code set.
std::string BlankCodeSet(const fs::path &ctype) {
    std::ifstream in(ctype, std::ios::binary);
    std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    in.close();
    const std::string marker(kEmptyMarker, sizeof kEmptyMarker);  // with its terminator
    const std::size_t at = data.find(marker);
    if (at == std::string::npos || data.find(marker, at + 1) != std::string::npos) {
        return "code-set name not found exactly once in " + ctype.string();
    }
    data[at] = '\0';
    std::ofstream out(ctype, std::ios::binary | std::ios::trunc);
    out.write(data.data(), static_cast<std::streamsize>(data.size()));
    out.close();
    return out ? "" : "cannot rewrite " + ctype.string();
}

std::string Generate(const LocaleRecipe &recipe, const fs::path &dir) {
    const fs::path final = dir / recipe.name;
    const fs::path temp = dir / (".tmp-" + std::to_string(getpid()) + "-" + recipe.name);
    std::error_code ec;
    fs::remove_all(temp, ec);
    std::string charmap;
    if (recipe.charmap != nullptr) {
        charmap = recipe.charmap;
    } else {
        const fs::path file = dir / (std::string(".charmap-") + recipe.name);
        if (std::string err = WriteAsciiCharmap(file, recipe.codeSet); !err.empty()) {
            return err;
        }
        charmap = file.string();
    }
    if (std::string err = RunLocaledef(recipe.source, charmap, temp); !err.empty()) {
        return err;
    }
    if (!Complete(temp)) {
        fs::remove_all(temp, ec);
        return std::string("localedef wrote no locale for ") + recipe.name;
    }
    if (recipe.blankCodeSet) {
        if (std::string err = BlankCodeSet(temp / "LC_CTYPE"); !err.empty()) {
            fs::remove_all(temp, ec);
            return err;
        }
    }
    fs::remove_all(final, ec);
    fs::rename(temp, final, ec);
    if (ec) {
        fs::remove_all(temp, ec);
        return "cannot move the generated locale " + std::string(recipe.name);
    }
    return "";
}

}  // namespace

std::string LocaleDir() {
    fs::path dir;
    if (const char *env = std::getenv("NLS_TEST_LOCALES"); env != nullptr && env[0] != '\0') {
        dir = env;
    } else {
        std::error_code ec;
        dir = fs::read_symlink("/proc/self/exe", ec).parent_path() / "nls-test-locales";
    }
    std::error_code ec;
    fs::create_directories(dir, ec);
    return dir.string();
}

std::string EnsureLocale(const std::string &name) {
    const LocaleRecipe *recipe = nullptr;
    for (const LocaleRecipe &r : kLocales) {
        if (name == r.name) {
            recipe = &r;
        }
    }
    if (recipe == nullptr) {
        return "no recipe for test locale " + name;
    }
    const fs::path dir = LocaleDir();
    if (Complete(dir / name)) {
        return "";
    }
    // One generator at a time across the test processes that CTest runs in parallel.
    const std::string lockPath = (dir / ".lock").string();
    const int lock = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (lock < 0) {
        return "cannot open " + lockPath;
    }
    while (flock(lock, LOCK_EX) != 0 && errno == EINTR) {
    }
    std::string err;
    if (!Complete(dir / name)) {
        err = Generate(*recipe, dir);
    }
    flock(lock, LOCK_UN);
    close(lock);
    return err;
}

std::string EnsureLocales(std::initializer_list<const char *> names) {
    for (const char *name : names) {
        if (std::string err = EnsureLocale(name); !err.empty()) {
            return err;
        }
    }
    return "";
}

std::string PrepareLocales(std::initializer_list<const char *> names) {
    std::string err = EnsureLocales(names);
    if (err.empty()) {
        setenv("LOCPATH", LocaleDir().c_str(), 1);
    }
    return err;
}

}  // namespace nls_test
