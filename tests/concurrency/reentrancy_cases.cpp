/* SPDX-License-Identifier: MIT */
// The recorder of the concurrency tests' cases and the list of all cases (see reentrancy_cases.h).
#include "concurrency/reentrancy_cases.h"

#include <string>
#include <vector>

namespace concurrency_test {

Outcome &Outcome::Num(long long value) {
    text_ += std::to_string(value);
    text_ += ';';
    return *this;
}

Outcome &Outcome::Bytes(const void *data, std::size_t size) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    const auto *bytes = static_cast<const unsigned char *>(data);
    for (std::size_t i = 0; i < size; ++i) {
        text_ += kHex[bytes[i] >> 4];
        text_ += kHex[bytes[i] & 0x0F];
    }
    text_ += ';';
    return *this;
}

Outcome &Outcome::Text(const char *text) {
    text_ += text == nullptr ? "(null)" : text;
    text_ += ';';
    return *this;
}

Outcome &Outcome::Units(const GLIB_WChar *text) {
    if (text == nullptr) {
        return Text(nullptr);
    }
    return Bytes(text, GLIB_wcslen(text) * sizeof *text);
}

Outcome &Outcome::Double(double value) {
    return Bytes(&value, sizeof value);
}

Outcome &Outcome::Float(float value) {
    return Bytes(&value, sizeof value);
}

Outcome &Outcome::Record(const ERRLIB_Error *record) {
    if (record == nullptr) {
        return Text(nullptr);
    }
    return Num(record->component)
        .Num(record->code)
        .Num(record->errorClass)
        .Text(record->origin)
        .Text(record->function)
        .Text(record->file)
        .Num(record->line)
        .Text(record->message);
}

std::vector<ReentrancyCase> ReentrancyCases() {
    std::vector<ReentrancyCase> all;
    for (std::span<const ReentrancyCase> part :
         {GeneralCases(), NumberCases(), DateTimeCases(), ErrorCases()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

}  // namespace concurrency_test
