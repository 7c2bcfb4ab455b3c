// SPDX-License-Identifier: MIT
// nlsreport.cpp - the nlsreport command.
//
// For each locale name on the command line: switch the process locale to it, read the locale's
// code set as the operating system names it and as its preferred IANA name, look the printed
// IANA name up for its MIBenum, and print one fixed-width row. With no argument one row is printed
// for the locale the environment selects. There are no options: every argument, including one
// that begins with "-", is a locale name. The exit status is always 0.
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>

#include <clocale>
#include <cstdint>
#include <cstdio>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     nlsreport.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     ianacs.h\t\t$Revision$\t$Date$",
    "@(#)     koranls.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Size passed to the code-page services for both name buffers: 40 characters and a terminator.
constexpr int32_t kNameSize = 41;

// Stands for the locale list when no argument is given: "" makes setlocale read the locale
// environment variables.
const char *const kEnvironmentLocale[] = {""};
}  // namespace

// Prints the header and one row per locale argument on standard output; returns 0 whatever
// happens (unknown locales and code sets still give a row).
int main(int argc, char **argv) {
    const char *const *locales = kEnvironmentLocale;
    int count = 1;
    if (argc >= 2) {
        locales = argv + 1;
        count = argc - 1;
    }

    // The result only matters through the diagnostic line a misordered table writes on standard
    // error; the report goes on either way.
    (void)IANACSOS_CheckAliasTab();

    std::printf("%24s %16s %16s IANAAppCodePage\n", "locale", "codepage", "iananame");

    // The codepage buffer keeps its text from row to row: a locale whose code set is empty leaves
    // it untouched, so such a row repeats the previous row's codepage. Users read it that way.
    char codePage[kNameSize] = {};
    // The IANA service may write a terminator at index kNameSize for a name of exactly kNameSize
    // characters; one spare byte keeps that inside the array.
    char ianaName[kNameSize + 1] = {};

    for (int i = 0; i < count; ++i) {
        // Not checked: an unknown locale leaves the previous one in force, and the row shows that
        // locale's code set under the new name.
        (void)std::setlocale(LC_ALL, locales[i]);
        (void)KORANLS_GetOsCodePageName(codePage, kNameSize, 0, nullptr);
        int32_t mibEnum = -1;
        if (KORANLS_GetOsCodePageIanaName(ianaName, kNameSize, nullptr) == 0) {
            // The MIBenum comes from a second lookup of the printed name, not from the code set
            // the service recognised: names the alias search cannot reach print -1. Kept so.
            (void)IANACS_GetMibEnum(ianaName, &mibEnum);
        }
        std::printf("%24s %16s %16s %d\n", locales[i], codePage, ianaName,
                    static_cast<int>(mibEnum));
    }
    return 0;
}
