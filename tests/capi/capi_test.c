/* SPDX-License-Identifier: MIT */
/*
 * The public headers seen from a C11 program linked against the shared library: every header
 * compiles as strict C, and a few calls through each module prove that the prefixed names are
 * exported with C linkage.
 */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>
#include <nlssupport/nlssupport.h>
#include <nlssupport/version.h>

static int g_failed;
static int g_passed;

#define CHECK(cond)                                                                 \
    do {                                                                            \
        if (cond) {                                                                 \
            ++g_passed;                                                             \
        } else {                                                                    \
            ++g_failed;                                                             \
            fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #cond); \
        }                                                                           \
    } while (0)

static void test_version(void)
{
    char expected[32];

    snprintf(expected, sizeof expected, "%d.%d.%d", NLSSUPPORT_VERSION_MAJOR,
             NLSSUPPORT_VERSION_MINOR, NLSSUPPORT_VERSION_PATCH);
    CHECK(strcmp(NLSSUPPORT_VERSION_STRING, expected) == 0);
    CHECK(strcmp(NLSSUPPORT_GetVersion(), NLSSUPPORT_VERSION_STRING) == 0);
    CHECK(strcmp(NLSSUPPORT_GetVersion(), "1.1.0") == 0);
}

static void test_error_stack(void)
{
    ERRLIB_ErrorStack *stack = NULL;
    ERRLIB_Error *record = NULL;
    int32_t count = -1;

    CHECK(ERRLIB_ErrorStack_Create(&stack) == 0);
    CHECK(ERRLIB_ErrorStack_AddError(stack, 50, 7, 9, NULL, "open", "capi_test.c", 42, "gone") == 0);
    CHECK(ERRLIB_ErrorStack_GetNumberofErrors(stack, &count) == 0 && count == 1);
    CHECK(ERRLIB_ErrorStack_GetLastError(stack, &record) == 0);
    CHECK(record != NULL && record->code == 7 && record->errorClass == 9 && record->line == 42);
    CHECK(record != NULL && strcmp(record->message, "gone") == 0);
    CHECK(ERRLIB_Error_Release(record, stack) == 0);
    CHECK(ERRLIB_ErrorStack_Destroy(stack) == 0);
}

static void test_checked_allocator(void)
{
    static const uint16_t ab[] = {'A', 'B', 0};
    char *copy = MMFLAT_StrDup("text", NULL, __FILE__, __LINE__);
    uint16_t *wide = MMFLAT_WcsDup(ab, NULL, __FILE__, __LINE__);

    CHECK(copy != NULL && strcmp(copy, "text") == 0);
    CHECK(wide != NULL && memcmp(wide, ab, sizeof ab) == 0);
    CHECK(MMFLAT_ValidSize() == 1);
    MMFLAT_Free(copy);
    MMFLAT_Free(wide);
}

static void test_registry_and_code_page(void)
{
    int32_t mib = 0;
    IANACS_Info info;
    char name[42];

    CHECK(IANACS_GetMibEnum("us-ascii", &mib) == 0 && mib == 3);
    CHECK(IANACS_GetInfo(106, &info) == 0 && strcmp(info.name, "UTF-8") == 0);
    /* The program starts in the "C" locale. */
    CHECK(KORANLS_GetOsCodePageIanaName(name, 41, NULL) == 0 && strcmp(name, "US-ASCII") == 0);
}

static void test_general_library(void)
{
    static const GLIB_WChar wide[] = {'a', 'b', 'c', 0};
    char text[16];

    memset(text, '#', sizeof text);
    CHECK(GLIB_snprintf(text, sizeof text, "%d-%s", 42, "x") == 4 && strcmp(text, "42-x") == 0);
    CHECK(GLIB_ValueMatchesPattern("a%c", "abbbc") == 1);
    CHECK(GLIB_wcslen(wide) == 3);
}

static void test_conversions(void)
{
    const char *message = NULL;
    const char *sqlstate = NULL;
    int32_t value = 0;

    CHECK(CONV_StringToInt32(&value, "-2147483648", 0, '.') == CONV_OK && value == INT32_MIN);
    CHECK(CONV_StringToInt32(&value, "2147483648", 0, '.') == CONV_ERR_OVERFLOW);
    CHECK(CONV_ErrorMessage(CONV_ERR_OVERFLOW, &message, &sqlstate) == 1 && message[0] != '\0');
}

int main(void)
{
    test_version();
    test_error_stack();
    test_checked_allocator();
    test_registry_and_code_page();
    test_general_library();
    test_conversions();
    printf("%d passed, %d failed\n", g_passed, g_failed);
    return g_failed == 0 ? 0 : 1;
}
