/* SPDX-License-Identifier: MIT */
// Fuzzes the pattern matchers GLIB_ValueMatchesPattern, GLIB_ValueMatchesPatternW and
// GLIB_ValueMatchesPatternEx, and compares each answer with a straightforward dynamic-programming
// matcher over the same tokens (any-run, any-one, escaped or plain literal, lone final escape).
// Input: byte 0 selects the matcher (low 2 bits) and the case flag (bit 2); bytes 1..3 are the
// wildcards of the Ex matcher; the rest is the pattern, a 0 byte, then the value. For the wide
// matcher each byte is one unit, except 0xFF which takes the next two bytes as one unit.
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <vector>

#include <nlssupport/glib.h>

namespace {

enum class Kind { kRun, kOne, kLiteral, kNever };
struct Token {
    Kind kind;
    unsigned value;
};

template <typename U>
std::vector<Token> Tokenize(const std::vector<U> &pattern, unsigned run, unsigned one,
                            unsigned escape) {
    std::vector<Token> tokens;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const unsigned c = static_cast<std::make_unsigned_t<U>>(pattern[i]);
        if (c == run) {
            tokens.push_back({Kind::kRun, 0});
        } else if (c == one) {
            tokens.push_back({Kind::kOne, 0});
        } else if (c == escape) {
            if (i + 1 == pattern.size()) {
                tokens.push_back({Kind::kNever, 0});
            } else {
                ++i;
                tokens.push_back(
                    {Kind::kLiteral, static_cast<std::make_unsigned_t<U>>(pattern[i])});
            }
        } else {
            tokens.push_back({Kind::kLiteral, c});
        }
    }
    return tokens;
}

// Whole-value match by dynamic programming; equal(a, b) compares a pattern literal with a value
// character.
template <typename U, typename Eq>
bool Reference(const std::vector<Token> &tokens, const std::vector<U> &value, Eq equal) {
    const size_t n = value.size();
    // row[j]: the tokens so far match the first j value characters.
    std::vector<char> row(n + 1, 0);
    row[0] = 1;
    for (const Token &t : tokens) {
        std::vector<char> next(n + 1, 0);
        for (size_t j = 0; j <= n; ++j) {
            switch (t.kind) {
                case Kind::kRun:
                    next[j] = static_cast<char>(row[j] || (j > 0 && next[j - 1]));
                    break;
                case Kind::kOne:
                    next[j] = static_cast<char>(j > 0 && row[j - 1]);
                    break;
                case Kind::kLiteral:
                    next[j] = static_cast<char>(j > 0 && row[j - 1] &&
                                                equal(t.value, static_cast<std::make_unsigned_t<U>>(value[j - 1])));
                    break;
                case Kind::kNever:
                    next[j] = 0;
                    break;
            }
        }
        row.swap(next);
    }
    return row[n] != 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4 || size > 400) {
        return 0;
    }
    const unsigned mode = data[0] & 3u;
    const bool ignoreCase = (data[0] & 4u) != 0;
    const char wildcards[3] = {static_cast<char>(data[1]), static_cast<char>(data[2]),
                               static_cast<char>(data[3])};
    if (mode == 1) {
        std::vector<GLIB_WChar> units[2];
        int part = 0;
        for (size_t i = 4; i < size; ++i) {
            GLIB_WChar u = data[i];
            if (data[i] == 0xFF && i + 2 < size) {
                u = static_cast<GLIB_WChar>((data[i + 1] << 8) | data[i + 2]);
                i += 2;
            }
            if (u == 0) {
                if (++part == 2) {
                    break;
                }
                continue;
            }
            units[part].push_back(u);
        }
        const auto tokens = Tokenize(units[0], '%', '_', '\\');
        const bool expected =
            Reference(tokens, units[1], [](unsigned a, unsigned b) { return a == b; });
        units[0].push_back(0);
        units[1].push_back(0);
        const int got = GLIB_ValueMatchesPatternW(units[0].data(), units[1].data());
        if (got != (expected ? 1 : 0)) {
            std::abort();
        }
        return 0;
    }
    std::vector<char> parts[2];
    int part = 0;
    for (size_t i = 4; i < size; ++i) {
        if (data[i] == 0) {
            if (++part == 2) {
                break;
            }
            continue;
        }
        parts[part].push_back(static_cast<char>(data[i]));
    }
    std::string pattern(parts[0].begin(), parts[0].end());
    std::string value(parts[1].begin(), parts[1].end());
    int got;
    bool expected;
    if (mode == 2 || mode == 3) {
        // Wildcards are recognised as bytes; a NUL wildcard can never appear in the pattern.
        const auto tokens = Tokenize(parts[0], static_cast<unsigned char>(wildcards[0]),
                                     static_cast<unsigned char>(wildcards[1]),
                                     static_cast<unsigned char>(wildcards[2]));
        expected = Reference(tokens, parts[1], [ignoreCase](unsigned a, unsigned b) {
            if (!ignoreCase) {
                return a == b;
            }
            return std::tolower(static_cast<signed char>(a)) ==
                   std::tolower(static_cast<signed char>(b));
        });
        got = GLIB_ValueMatchesPatternEx(pattern.c_str(), value.c_str(), wildcards,
                                         ignoreCase ? 1u : 0u);
    } else {
        const auto tokens = Tokenize(parts[0], '%', '_', '\\');
        expected = Reference(tokens, parts[1], [](unsigned a, unsigned b) { return a == b; });
        got = GLIB_ValueMatchesPattern(pattern.c_str(), value.c_str());
    }
    if (got != (expected ? 1 : 0)) {
        std::abort();
    }
    return 0;
}
