/* SPDX-License-Identifier: MIT */
/* The parent project's program: a registry lookup, a conversion and the version through the
 * umbrella header. Prints "parent ok" and exits 0 when every answer is the documented one. */
#include <stdio.h>
#include <string.h>

#include <nlssupport/nlssupport.h>

int main(void)
{
    int32_t mib = -1, value = 0;
    int ok = 1;

    ok &= IANACS_GetMibEnum("UTF-8", &mib) == 0 && mib == 106;
    ok &= CONV_StringToInt32(&value, "-42", 0, '.') == CONV_OK && value == -42;
    ok &= strcmp(NLSSUPPORT_GetVersion(), NLSSUPPORT_VERSION_STRING) == 0;
    puts(ok ? "parent ok" : "parent FAILED");
    return ok ? 0 : 1;
}
