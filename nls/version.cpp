// SPDX-License-Identifier: MIT
// version.cpp - the version of the library, for callers that ask at run time.
#include <nlssupport/version.h>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     version.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     version.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};
}  // namespace

// Returns the version text of the headers the library was built with; static storage.
extern "C" const char *NLSSUPPORT_GetVersion(void) noexcept {
    return NLSSUPPORT_VERSION_STRING;
}
