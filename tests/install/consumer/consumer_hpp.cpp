/* SPDX-License-Identifier: MIT */
// A C++ consumer of an installed nlssupport that uses only the C++ layer: no raw MMFLAT_Free,
// ERRLIB_ErrorStack_Destroy or status number. Prints "consumer_hpp ok" and exits 0 when every
// answer is the documented one.
#include <nlssupport/nlssupport.hpp>

#include <cstdio>
#include <string>

int main() {
    bool ok = true;
    nls::ErrorStack stack;
    auto copy = nls::strdup("ISO-8859-1", stack);
    ok &= copy != nullptr && std::string(copy.get()) == "ISO-8859-1";
    ok &= nls::charset_mib(copy.get()) == 4;

    const nls::result<std::int32_t> number = nls::to_int32(" 12.7 ");
    ok &= number.warning() && number.value() == 12;
    ok &= number.error_code() == nls::conv_status::warn_truncation;
    ok &= nls::sqlstate(number.error_code()) == "[01004]";

    const std::optional<std::string> text = nls::format("%s=%d", "mib", 4);
    ok &= text.has_value() && *text == "mib=4";

    const auto when = nls::parse_datetime("2009-03-05", "%04Z-%02M-%02D");
    ok &= when.ok() && when.value().day == 5;
    const auto back = nls::format_datetime(when.value(), "%D.%M.%Z");
    ok &= back.ok() && back.value() == "5.3.2009";

    ok &= stack.empty();
    std::puts(ok ? "consumer_hpp ok" : "consumer_hpp FAILED");
    return ok ? 0 : 1;
}
