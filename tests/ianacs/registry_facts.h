/* SPDX-License-Identifier: MIT */
// Facts about the registry shared by the registry tests.
#ifndef TESTS_IANACS_REGISTRY_FACTS_H
#define TESTS_IANACS_REGISTRY_FACTS_H

#include <array>
#include <string>
#include <string_view>

namespace ianacs_test {

// The alias names that the case-insensitive binary search cannot reach, because the table is
// sorted with letters folded to upper case and the search folds them to lower case.
inline constexpr std::array<std::string_view, 12> kUnreachableNames = {
    "csAdobeStandardEncoding",
    "csASCII",
    "CSA_T500-1983",
    "csNATSSEFIADD",
    "CSN_369103",
    "eucJP",
    "eucKR",
    "GBK",
    "KSC_5601",
    "KS_C_5601-1987",
    "KS_C_5601-1989",
    "MSZ_7795.3",
};

inline bool IsUnreachable(std::string_view name) {
    for (std::string_view u : kUnreachableNames) {
        if (u == name) {
            return true;
        }
    }
    return false;
}

// Folds a-z to A-Z and nothing else (independent of the locale).
inline std::string FoldUpper(std::string_view s) {
    std::string out(s);
    for (char &c : out) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return out;
}

// Folds A-Z to a-z and nothing else (independent of the locale).
inline std::string FoldLower(std::string_view s) {
    std::string out(s);
    for (char &c : out) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return out;
}

}  // namespace ianacs_test

#endif  // TESTS_IANACS_REGISTRY_FACTS_H
