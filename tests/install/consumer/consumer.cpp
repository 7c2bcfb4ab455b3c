/* SPDX-License-Identifier: MIT */
// A C++ consumer of an installed nlssupport, linked with the static library: conversions and the
// checked allocator. Prints "consumer_cpp ok" and exits 0 when every answer is the documented one.
#include <nlssupport/convlib.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>

#include <cstdio>
#include <cstring>

int main() {
    bool ok = true;
    int32_t value = 0;
    ok &= CONV_StringToInt32(&value, "-2147483648", 0, '.') == CONV_OK && value == INT32_MIN;

    CONV_DateTime when{};
    when.day = 10;
    when.month = 9;
    when.year = 1994;
    when.hour = 13;
    when.minute = 5;
    when.second = 7;
    char date[11];
    uint16_t failed = 0;
    uint16_t fields = 0;
    ok &= CONV_DateTimeToODBCDateString(date, &when, sizeof date, &failed, &fields) == CONV_OK;
    ok &= std::strcmp(date, "1994-09-10") == 0;

    char *copy = MMFLAT_StrDup("text", nullptr, __FILE__, __LINE__);
    ok &= copy != nullptr && std::strcmp(copy, "text") == 0;
    MMFLAT_Free(copy);

    char codeSet[42];
    ok &= KORANLS_GetOsCodePageName(codeSet, 41, 0, nullptr) == 0;  // the "C" locale at start
    ok &= std::strcmp(codeSet, "ANSI_X3.4-1968") == 0;

    std::puts(ok ? "consumer_cpp ok" : "consumer_cpp FAILED");
    return ok ? 0 : 1;
}
