/* SPDX-License-Identifier: MIT */
/*
 * A C11 program that uses GLib and nlssupport together: GLib's <glib.h> and every nlssupport
 * header in one translation unit, with both libraries' include paths on the command line, and
 * one call into each nlssupport module beside GLib calls. It proves that the header names and
 * their guards do not meet: nlssupport's general library is <nlssupport/glib.h>, GLib's is
 * <glib.h>, and neither hides the other. Prints "glib and nlssupport ok" and exits 0.
 */
#include <glib.h>

#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>
#include <nlssupport/nlssupport.h>
#include <nlssupport/version.h>

#include <stdio.h>
#include <string.h>

int main(void)
{
    static const GLIB_WChar wide[] = {'a', 'b', 'c', 0};
    ERRLIB_ErrorStack *stack = NULL;
    int32_t count = -1, mib = -1, value = 0;
    char codeset[64];
    char *copy;
    gchar *joined;
    int ok = 1;

    /* GLib */
    joined = g_strjoin("-", "ISO", "8859", "1", NULL);
    ok &= strcmp(joined, "ISO-8859-1") == 0;
    ok &= GLIB_MAJOR_VERSION == 2;

    /* One function of each nlssupport module. */
    ok &= ERRLIB_ErrorStack_Create(&stack) == 0;
    copy = MMFLAT_StrDup(joined, stack, __FILE__, __LINE__);
    ok &= copy != NULL && strcmp(copy, "ISO-8859-1") == 0;
    ok &= IANACS_GetMibEnum(copy, &mib) == 0 && mib == 4;
    ok &= KORANLS_GetOsCodePageName(codeset, (int32_t)sizeof codeset - 1, 0, stack) == 0;
    ok &= strcmp(codeset, "ANSI_X3.4-1968") == 0; /* the program runs in the "C" locale */
    ok &= GLIB_wcslen(wide) == 3 && GLIB_ValueMatchesPattern("ISO-%", copy) == 1;
    ok &= CONV_StringToInt32(&value, "8859", 0, '.') == CONV_OK && value == 8859;
    ok &= ERRLIB_ErrorStack_GetNumberofErrors(stack, &count) == 0 && count == 0;
    ok &= strcmp(NLSSUPPORT_GetVersion(), NLSSUPPORT_VERSION_STRING) == 0;

    MMFLAT_Free(copy);
    ok &= ERRLIB_ErrorStack_Destroy(stack) == 0;
    g_free(joined);
    puts(ok ? "glib and nlssupport ok" : "glib and nlssupport FAILED");
    return ok ? 0 : 1;
}
