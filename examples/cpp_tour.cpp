/* SPDX-License-Identifier: MIT */
/*
 * cpp_tour.cpp - the library through its C++ layer, <nlssupport/nlssupport.hpp>.
 *
 * The layer owns what the C functions hand out and sizes what they write:
 *   1. an error stack and blocks of the checked allocator, released by their owners, with
 *      failures reported at the caller's own source position;
 *   2. the library's formatter, with a string of the right size;
 *   3. number, decimal, hexadecimal and UTF-8 conversions that return their value together with
 *      their status, a std::error_code of the library's own category;
 *   4. date-time text in both directions;
 *   5. LIKE matching, the character-set registry and the code set of the process locale.
 *
 * It prints plain text and returns 0, or 1 when an outcome is not the expected one.
 */
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <source_location>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <nlssupport/nlssupport.hpp>

namespace {

int failures = 0;

// Counts an outcome that is not the expected one.
void check(bool expected) {
    if (!expected)
        ++failures;
}

void print(std::string_view text) {
    std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
}

// "OK", or the SQLSTATE and message of a status.
std::string describe(std::error_code status) {
    if (!status)
        return "OK";
    return std::string(nls::sqlstate(status)) + " " + status.message() +
           (nls::is_warning(status) ? " (a warning: the value is usable)" : "");
}

// The last part of a source path: the path itself depends on where the tour was built.
std::string_view base_name(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

void stacks_and_blocks() {
    print("-- error stacks and checked blocks");
    nls::ErrorStack stack;

    // A zero-filled block of four int32_t, freed with MMFLAT_Free by its owner.
    nls::unique_block<std::int32_t[]> numbers = nls::make_block<std::int32_t>(4, stack);
    check(numbers != nullptr);
    numbers[2] = 42;
    std::printf("block of four: %d %d %d %d\n", numbers[0], numbers[1], numbers[2], numbers[3]);

    const nls::unique_block<char[]> copy = nls::strdup(std::string_view("settings.ini"), stack);
    std::printf("copy: \"%s\"\n", copy ? copy.get() : "(none)");

    // Copying a null text fails; the allocator records it with the caller's position.
    const char *const nothing = nullptr;
    const std::source_location here = std::source_location::current();
    const nls::unique_block<char[]> none = nls::strdup(nothing, stack, here);
    std::printf("copy of a null text: %s\n", none ? "a block" : "none");
    std::printf("errors on the stack: %zu\n", stack.size());

    // Iterating takes the errors off the stack, oldest first; each is released by its Error.
    for (const nls::Error &error : stack) {
        std::printf("  %s: component %d, code %d, class %d\n",
                    error.is_memory_error() ? "memory error" : "error", error.component(),
                    error.code(), error.error_class());
        std::printf("  origin \"%s\", file \"%s\", at the call: %s\n",
                    std::string(error.origin()).c_str(),
                    std::string(base_name(error.file())).c_str(),
                    error.line() == static_cast<std::int32_t>(here.line()) ? "yes" : "no");
        check(error.is_memory_error() && error.origin() == "MMFLAT_StrDup");
    }
    std::printf("errors left: %zu\n", stack.size());
}

void formatting() {
    print("-- the library's formatter");
    const std::optional<std::string> line =
        nls::format("[%-6s|%5d|%#x|%.2f|%ls]\\n", "name", 42, 255u, 3.14159, u"\u20acuro");
    check(line.has_value());
    std::fputs(line.value_or("").c_str(), stdout);
    std::printf("octal: %s\n", nls::format("%o %o", 8, 8).value_or("?").c_str());
    // An argument that does not suit its conversion is refused before the formatter runs.
    std::printf("\"%%d\" of a text: %s\n",
                nls::format("%d", "text").has_value() ? "formatted" : "refused");
}

void conversions() {
    print("-- numbers, decimals, bytes");
    const nls::result<std::int32_t> cut = nls::to_int32("12.50");
    std::printf("to_int32(\"12.50\") = %d, %s\n", cut.value(), describe(cut.error_code()).c_str());
    check(cut.status() == nls::conv_status::warn_truncation);

    const nls::result<std::int32_t> big = nls::to_int32("2147483648");
    std::printf("to_int32(\"2147483648\"): %s\n", describe(big.error_code()).c_str());
    check(big.error());

    const nls::result<double> tiny = nls::to_double("1e-999");
    std::printf("to_double(\"1e-999\") = %g, %s\n", tiny.value(),
                describe(tiny.error_code()).c_str());

    const nls::result<nls::decimal> amount = nls::to_decimal("-123.45");
    const nls::decimal &value = amount.value();
    std::printf("to_decimal(\"-123.45\") = %s, precision %u, scale %u\n",
                nls::to_hex(std::as_bytes(std::span(value.bytes))).value().c_str(),
                static_cast<unsigned>(value.precision), static_cast<unsigned>(value.scale));
    std::printf("back with a comma: %s\n", nls::decimal_to_string(value, ',').value().c_str());

    const nls::result<std::vector<std::byte>> bytes = nls::from_hex("CAFE01");
    std::printf("from_hex(\"CAFE01\"): %zu bytes, %s\n", bytes.value().size(),
                describe(bytes.error_code()).c_str());
    const nls::result<std::vector<std::byte>> lower = nls::from_hex("cafe");
    std::printf("from_hex(\"cafe\"): %s\n", describe(lower.error_code()).c_str());

    const nls::result<std::string> utf8 = nls::to_utf8(u"Gr\u00fc\u00dfe \u20ac");
    std::printf("UTF-8 of \"Gr\\u00fc\\u00dfe \\u20ac\": %s\n",
                nls::to_hex(std::as_bytes(std::span(utf8.value()))).value().c_str());

    // Statuses are ordinary error codes.
    const std::error_code overflow = nls::conv_status::overflow;
    std::printf("%s:%d is \"%s\", SQLSTATE %s\n", overflow.category().name(), overflow.value(),
                overflow.message().c_str(), std::string(nls::sqlstate(overflow)).c_str());
}

void date_and_time() {
    print("-- date and time");
    const nls::result<CONV_DateTime> read =
        nls::parse_datetime("Sunday, 9 October 1994 23:59", "%T, %D %V %Z %02H:%02I");
    check(read.ok());
    const CONV_DateTime &when = read.value();
    std::printf("read: %s\n",
                nls::format_datetime(when, "%04Z-%02M-%02D %02H:%02I (%U)").value().c_str());
    std::printf("written: %s\n",
                nls::format_datetime(when, "%D %W %Y, %P:%02I %Q").value().c_str());

    // A bad day reports the month text, as the C function does.
    const nls::result<CONV_DateTime> bad = nls::parse_datetime("31 February 1994", "%D %V %Z");
    std::printf("\"31 February 1994\": %s\n", describe(bad.error_code()).c_str());
    check(bad.status() == nls::conv_status::day);
}

void text_and_charsets() {
    print("-- LIKE, character sets, the code set");
    std::printf("\"abc\" LIKE \"a%%c\": %s\n", nls::like("a%c", "abc") ? "yes" : "no");
    std::printf("u\"\\U0001F600\" LIKE u\"_\": %s (two units)\n",
                nls::like(u"_", u"\U0001F600") ? "yes" : "no");

    const std::optional<std::int32_t> mib = nls::charset_mib("utf-8");
    const std::optional<IANACS_Info> info = nls::charset_info(mib.value_or(-1));
    if (info)
        std::printf("utf-8: MIBenum %d, preferred name %s, %d to %d bytes\n", info->mibEnum,
                    info->name, info->minBytes, info->maxBytes);
    std::printf("GBK: %s\n", nls::charset_mib("GBK") ? "found" : "not found by the lookup");

    std::setlocale(LC_ALL, "C");
    std::printf("code set of the C locale: %s, IANA name %s\n", nls::os_codeset().c_str(),
                nls::os_iana_name().c_str());
}

}  // namespace

int main() {
    stacks_and_blocks();
    formatting();
    conversions();
    date_and_time();
    text_and_charsets();
    return failures == 0 ? 0 : 1;
}
