/* SPDX-License-Identifier: MIT */
// wide_helpers.h - building and reading wide strings of 16-bit units in the general library's
// tests.
#ifndef NLS_TESTS_GLIB_WIDE_HELPERS_H
#define NLS_TESTS_GLIB_WIDE_HELPERS_H

#include <string>
#include <string_view>
#include <vector>

#include <nlssupport/glib.h>

namespace glibtest {

// A terminated wide string with the units of s.
inline std::vector<GLIB_WChar> W(std::u16string_view s) {
    std::vector<GLIB_WChar> v(s.begin(), s.end());
    v.push_back(0);
    return v;
}

// A terminated wide string with the bytes of s, each zero-extended.
inline std::vector<GLIB_WChar> WidenAscii(std::string_view s) {
    std::vector<GLIB_WChar> v;
    for (char c : s)
        v.push_back(static_cast<unsigned char>(c));
    v.push_back(0);
    return v;
}

// The units of a terminated wide string.
inline std::u16string U16(const GLIB_WChar *p) {
    std::u16string s;
    while (*p != 0)
        s.push_back(static_cast<char16_t>(*p++));
    return s;
}

}  // namespace glibtest

#endif  // NLS_TESTS_GLIB_WIDE_HELPERS_H
