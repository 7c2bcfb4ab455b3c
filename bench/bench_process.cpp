/* SPDX-License-Identifier: MIT */
// bench_process.cpp - whole processes: one run of nlsreport over the generated locales against
// one run of `locale charmap` per locale, both under LOCPATH set to the generated locales and
// with their output sent to /dev/null. The locales are the directories under --nls_locpath
// (scripts/bench.sh generates 30 there).

#include <benchmark/benchmark.h>

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/bench_pairs.h"

namespace {

// Names of the locale directories under dir, sorted.
std::vector<std::string> LocaleNames(const char *dir) {
    std::vector<std::string> names;
    DIR *d = opendir(dir);
    if (!d)
        return names;
    while (const dirent *e = readdir(d)) {
        const std::string name = e->d_name;
        if (name == "." || name == ".." || e->d_type != DT_DIR)
            continue;
        names.push_back(name);
    }
    closedir(d);
    std::sort(names.begin(), names.end());
    return names;
}

// Starts argv[0] (searched in PATH) with the environment env, standard output to /dev/null,
// and waits for it. Returns true when it exited normally.
bool RunProcess(const std::vector<std::string> &argv, const std::vector<std::string> &env) {
    std::vector<char *> a;
    for (const std::string &s : argv)
        a.push_back(const_cast<char *>(s.c_str()));
    a.push_back(nullptr);
    std::vector<char *> e;
    for (const std::string &s : env)
        e.push_back(const_cast<char *>(s.c_str()));
    e.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid;
    const int rc = posix_spawnp(&pid, a[0], &actions, nullptr, a.data(), e.data());
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0)
        return false;
    int status = 0;
    if (waitpid(pid, &status, 0) != pid)
        return false;
    return WIFEXITED(status);
}

// The base environment of both sides: PATH and LOCPATH only.
std::vector<std::string> BaseEnvironment(const char *locpath) {
    const char *path = std::getenv("PATH");
    return {std::string("PATH=") + (path ? path : "/usr/bin:/bin"),
            std::string("LOCPATH=") + locpath};
}

void BM_NlsreportProcess(benchmark::State &state) {
#ifdef NLS_BENCH_NLSREPORT
    const char *locpath = nlsbench::LocalePath();
    if (!locpath) {
        state.SkipWithError("no --nls_locpath given");
        return;
    }
    std::vector<std::string> argv{NLS_BENCH_NLSREPORT};
    const std::vector<std::string> names = LocaleNames(locpath);
    argv.insert(argv.end(), names.begin(), names.end());
    const std::vector<std::string> env = BaseEnvironment(locpath);
    for (auto _ : state) {
        if (!RunProcess(argv, env)) {
            state.SkipWithError("nlsreport did not run");
            return;
        }
    }
    state.counters["locales"] = static_cast<double>(names.size());
#else
    state.SkipWithError("nlsreport is not built in this tree");
#endif
}
BENCHMARK(BM_NlsreportProcess)->UseRealTime()->Unit(benchmark::kMillisecond);

void BM_LocaleCharmapProcesses(benchmark::State &state) {
    const char *locpath = nlsbench::LocalePath();
    if (!locpath) {
        state.SkipWithError("no --nls_locpath given");
        return;
    }
    const std::vector<std::string> names = LocaleNames(locpath);
    std::vector<std::vector<std::string>> envs;
    for (const std::string &name : names) {
        std::vector<std::string> env = BaseEnvironment(locpath);
        env.push_back("LC_ALL=" + name);
        envs.push_back(env);
    }
    const std::vector<std::string> argv{"locale", "charmap"};
    for (auto _ : state) {
        for (const std::vector<std::string> &env : envs) {
            if (!RunProcess(argv, env)) {
                state.SkipWithError("locale did not run");
                return;
            }
        }
    }
    state.counters["locales"] = static_cast<double>(names.size());
}
BENCHMARK(BM_LocaleCharmapProcesses)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
