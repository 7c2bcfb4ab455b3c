// SPDX-License-Identifier: MIT
// Status messages of the conversion library: the SQLSTATE and text of every status code.
#include <nlssupport/convlib.h>

#include <cstdint>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     status.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Texts shared by several codes: callers may see the same pointer for different codes.
constexpr char kEmpty[] = "";
constexpr char kState22005[] = "[22005]";
constexpr char kState22008[] = "[22008]";
constexpr char kState22003[] = "[22003]";
constexpr char kState01004[] = "[01004]";
constexpr char kStateS1000[] = "[S1000]";
constexpr char kStateS1001[] = "[S1001]";

struct StatusText {
    const char *sqlstate;
    const char *message;
};

// One entry per code 0..25. Code 0 carries no text: it is reported like an unknown code.
constexpr StatusText kStatusTable[26] = {
    {kEmpty, kEmpty},
    {kState22005, "Illegal string representation of a byte stream"},
    {kState22008, "Illegal value for a day field"},
    {kState22008, "Illegal value for a month field"},
    {kState22008, "Illegal value for a year field"},
    {kState22008, "Illegal value for a day of the week field"},
    {kState22008, "Illegal value for second field"},
    {kState22008, "Illegal value for minutes field"},
    {kState22008, "Illegal value for hour (24) field"},
    {kState22008, "Illegal value for hour (12) field"},
    {kState22008, "Illegal value for fractions of a second field"},
    {kStateS1000, "Illegal value for fractions of a second field base"},
    {kStateS1000, "Rescan of a field"},
    {kState22003, "Target too small to contain data"},
    {kState22008, "Date/Time data left in format string"},
    {kState22008, "Date/Time data left in source string"},
    {kState01004, "Truncation"},
    {kState22008, "Date/Time scan mismatch"},
    {kStateS1001, "Memory allocation failed"},
    {kStateS1000, "Conversion failed"},
    {kState22003, "Number overflow"},
    {kState22005, "Not a number"},
    {kState01004, "Round to zero"},
    {kStateS1000, "The date specified is out of program range for era calculation (< 8 Sep 1868)"},
    {kStateS1000, "No era names were specified"},
    {kStateS1000, "No valid SYEAR was specified"},
};
}  // namespace

// Sets *message and *sqlstate to the static texts of status (never null; the caller must not
// free or change them). Returns 1 for the codes 1..25, 0 with two empty texts for 0 and for any
// unknown code.
extern "C" uint32_t CONV_ErrorMessage(uint32_t status, const char **message,
                                      const char **sqlstate) noexcept {
    if (status > CONV_ERR_NO_SYEAR || status == CONV_OK) {
        *message = kEmpty;
        *sqlstate = kEmpty;
        return 0;
    }
    *sqlstate = kStatusTable[status].sqlstate;
    *message = kStatusTable[status].message;
    if (status == CONV_ERR_DAY) {
        // Kept for compatibility: a bad day reports the month text (the day handler has always
        // run on into the month handler), and callers match on that text.
        *message = kStatusTable[CONV_ERR_MONTH].message;
    }
    return 1;
}
