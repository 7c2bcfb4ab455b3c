/* SPDX-License-Identifier: MIT */
// Locales for the code-page tests, generated with localedef into a private directory that the
// tests point LOCPATH at. Generation happens once per build tree: a locale already present is
// reused, and concurrent test processes take turns through a lock file.
#ifndef TESTS_NLS_TEST_LOCALES_H
#define TESTS_NLS_TEST_LOCALES_H

#include <initializer_list>
#include <string>

namespace nls_test {

// Directory holding the generated locales: $NLS_TEST_LOCALES when set, else "nls-test-locales"
// beside the running test executable. Created when missing.
std::string LocaleDir();

// Makes sure the named test locale exists in LocaleDir(). Returns an empty string on success,
// else a description of what went wrong. The names known here are listed in test_locales.cpp:
// real locales ("ja_JP.EUC-JP", ...) built from the system's locale sources and charmaps, and
// synthetic ones ("xx_EMPTY", ...) whose code set names are chosen by the tests.
std::string EnsureLocale(const std::string &name);

// EnsureLocale for each name; returns the first failure or an empty string.
std::string EnsureLocales(std::initializer_list<const char *> names);

// EnsureLocales, then LOCPATH pointed at LocaleDir() so that setlocale and newlocale find them.
// Call it before any thread starts: the environment must not change while threads read it.
// Returns the first failure or an empty string.
std::string PrepareLocales(std::initializer_list<const char *> names);

// Name of a synthetic locale's code set (48 characters) longer than the 40 shown by the report.
inline constexpr const char kLongCodeSet[] = "X-CODE-SET-NAME-LONGER-THAN-FORTY-CHARACTERS-XYZ";
// Name of a synthetic locale's code set of exactly 40 characters.
inline constexpr const char kCodeSet40[] = "X-CODE-SET-NAME-OF-EXACTLY-FORTY-CHARS-X";

}  // namespace nls_test

#endif  // TESTS_NLS_TEST_LOCALES_H
