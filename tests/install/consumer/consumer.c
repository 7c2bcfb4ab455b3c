/* SPDX-License-Identifier: MIT */
/* A C11 consumer of an installed nlssupport: an error stack, a registry lookup and the library's
 * own formatter. Prints "consumer_c ok" and exits 0 when every answer is the documented one. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/memmgr.h>
#include <nlssupport/version.h>

int main(void)
{
    ERRLIB_ErrorStack *stack = NULL;
    ERRLIB_Error *record = NULL;
    int32_t count = 0;
    int32_t mib = 0;
    char text[32];
    int ok = 1;

    if (ERRLIB_ErrorStack_Create(&stack) != 0) {
        return 1;
    }
    ok &= ERRLIB_ErrorStack_Add_SMError(stack, "open", 12, "consumer.c", 5, 6) == 0;
    ok &= ERRLIB_ErrorStack_GetNumberofErrors(stack, &count) == 0 && count == 2;
    ok &= ERRLIB_ErrorStack_GetFirstError(stack, &record) == 0 && record->errorClass == 23;
    ERRLIB_Error_Release(record, stack);
    ok &= ERRLIB_ErrorStack_Destroy(stack) == 0;

    ok &= IANACS_GetMibEnum("ISO-8859-1", &mib) == 0 && mib == 4;
    ok &= GLIB_snprintf(text, sizeof text, "%s=%d", "mib", (int)mib) == 5;
    ok &= strcmp(text, "mib=4") == 0;
    ok &= strcmp(NLSSUPPORT_GetVersion(), NLSSUPPORT_VERSION_STRING) == 0;

    puts(ok ? "consumer_c ok" : "consumer_c FAILED");
    return ok ? 0 : 1;
}
