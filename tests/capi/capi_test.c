/*
 * The public headers seen from a C11 program linked against the shared library: every header
 * compiles as strict C, and a few calls through each module prove that the prefixed names are
 * exported with C linkage.
 */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "errlib.h"
#include "memmgr.h"

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

int main(void)
{
    test_error_stack();
    test_checked_allocator();
    printf("%d passed, %d failed\n", g_passed, g_failed);
    return g_failed == 0 ? 0 : 1;
}
