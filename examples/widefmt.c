/* SPDX-License-Identifier: MIT */
/*
 * widefmt.c - wide text and the library's bounded formatter.
 *
 * The library's wide character is GLIB_WChar: one unsigned 16-bit code unit, whatever the width
 * of the platform's wchar_t (32 bits on Linux). C11's u"..." literals are arrays of 16-bit units
 * and initialise GLIB_WChar arrays directly.
 *
 * Shown here:
 *   - GLIB_swprintf into a GLIB_WChar buffer (narrow and wide arguments),
 *   - the wide string functions (length, copy, concatenation, comparison, search, case),
 *   - GLIB_snprintf with "%ls", which writes wide text as UTF-8,
 *   - the size rule: literal characters may use all `size` positions and the terminator then
 *     lands at position `size`, so a buffer needs size + 1 characters; and -1 when output is cut.
 * Wide results are printed by converting them to UTF-8 with CONV_WChar16StrToUTF8.
 *
 * The program prints plain text (UTF-8) and returns 0, or 1 on an unexpected result.
 */
#include <stdio.h>
#include <string.h>

#include <nlssupport/convlib.h>
#include <nlssupport/glib.h>

static int failures = 0;

/*
 * Converts a wide string to UTF-8 in out (of outSize bytes) and terminates it; the encoder writes
 * no terminator of its own, so one byte is kept for it. Returns out.
 */
static const char *to_utf8(const GLIB_WChar *text, char *out, size_t outSize) {
    uint32_t written = 0;
    uint32_t status = CONV_WChar16StrToUTF8(text, (int32_t)GLIB_wcslen(text), out,
                                            (uint32_t)outSize - 1, &written);
    if (status != CONV_OK)
        failures++;
    out[written] = '\0';
    return out;
}

/* Prints a label and a wide string. */
static void print_wide(const char *label, const GLIB_WChar *text) {
    char utf8[256];
    printf("%s \"%s\" (%u units)\n", label, to_utf8(text, utf8, sizeof utf8),
           (unsigned)GLIB_wcslen(text));
}

/* Compares a result with its expected value and counts a mismatch. */
static void expect(int condition) {
    if (!condition)
        failures++;
}

int main(void) {
    GLIB_WChar wbuf[64];
    char buf[64];
    int n;

    printf("-- GLIB_swprintf\n");
    {
        /* The format is wide too. "%s" takes a narrow string, "%ls" a wide one. */
        static const GLIB_WChar format[] = u"%-6s|%5d|%ls|%c";
        static const GLIB_WChar city[] = u"Zürich"; /* 'ü' is the single unit 0x00FC */

        n = GLIB_swprintf(wbuf, 63, format, "item", 42, city, 'x');
        printf("result %d\n", n);
        print_wide("wide text:", wbuf);
        expect(n == 21);

        /*
         * Narrow strings are carried over byte by byte: bytes of 0x80 and above (here the two
         * UTF-8 bytes of 'é') become '?'. Narrow text for wide output should be 7-bit.
         */
        n = GLIB_swprintf(wbuf, 63, u"[%s]", "café");
        print_wide("narrow UTF-8 in wide output:", wbuf);
        expect(n == 7);
    }

    printf("-- wide string functions\n");
    {
        GLIB_WChar text[32];
        GLIB_WChar *found;

        /* GLIB_strwcscpy widens 7-bit text; u"..." literals need no conversion. */
        GLIB_strwcscpy(text, "Hello");
        GLIB_wcscat(text, u", World");
        print_wide("wcscpy + wcscat:", text);
        expect(GLIB_wcslen(text) == 12);

        /* wcscmp gives exactly -1, 0 or 1; wcsncmp and the case-blind ones give differences. */
        printf("wcscmp(\"z\", \"a\") = %d\n", GLIB_wcscmp(u"z", u"a"));
        printf("wcsncmp(\"z\", \"a\", 1) = %d\n", GLIB_wcsncmp(u"z", u"a", 1));
        printf("wcsicmp(\"HELLO\", \"hello\") = %d\n", GLIB_wcsicmp(u"HELLO", u"hello"));

        found = GLIB_wcsstr(text, u"World");
        printf("wcsstr finds \"World\" at unit %d\n", found != NULL ? (int)(found - text) : -1);
        expect(found == text + 7);
        found = GLIB_wcschr(text, u',');
        printf("wcschr finds ',' at unit %d\n", found != NULL ? (int)(found - text) : -1);

        /* Case changes fold ASCII letters only; 'ü' stays as it is. */
        GLIB_wcscpy(text, u"Grüße aus Zürich");
        print_wide("wcsupr:", GLIB_wcsupr(text));

        printf("wtoi(\"  -1234abc\") = %d\n", (int)GLIB_wtoi(u"  -1234abc"));
    }

    printf("-- GLIB_snprintf with %%ls\n");
    {
        static const GLIB_WChar word[] = u"Grüße";

        /* Wide text goes out as UTF-8: 5 units, but 7 bytes ('ü' and 'ß' take two each). */
        n = GLIB_snprintf(buf, sizeof buf - 1, "<%ls> %d bytes", word, 7);
        printf("\"%s\" (result %d)\n", buf, n);
        expect(n == 17 && strlen(buf) == 17);

        /* Precision counts UTF-8 bytes; the character that reaches it is still written whole. */
        n = GLIB_snprintf(buf, sizeof buf - 1, "<%.3ls>", word);
        printf("\"%s\" (result %d)\n", buf, n);
        expect(n == 6 && strcmp(buf, "<Grü>") == 0);
    }

    printf("-- the size rule\n");
    {
        /*
         * Literal characters fill positions 0 .. size - 1, and the terminator then goes to
         * position `size`: four literal characters with size 4 need a buffer of 5 bytes.
         */
        char small[5];
        memset(small, '#', sizeof small);
        n = GLIB_snprintf(small, sizeof small - 1, "abcd");
        printf("size 4, literal \"abcd\": result %d, text \"%s\"\n", n, small);
        expect(n == 4 && strcmp(small, "abcd") == 0);

        /* A string argument is measured against the room left before the terminator. */
        memset(small, '#', sizeof small);
        n = GLIB_snprintf(small, sizeof small - 1, "%s", "abc");
        printf("size 4, \"%%s\" of \"abc\": result %d, text \"%s\"\n", n, small);
        expect(n == 3);

        /* Output that does not fit: what fits is kept, terminated, and the result is -1. */
        memset(small, '#', sizeof small);
        n = GLIB_snprintf(small, sizeof small - 1, "%s", "abcd");
        printf("size 4, \"%%s\" of \"abcd\": result %d, text \"%s\"\n", n, small);
        expect(n == -1 && strcmp(small, "abc") == 0);

        /* The wide engine follows the same rule in 16-bit units. */
        {
            GLIB_WChar wsmall[6];
            char utf8[16];
            n = GLIB_swprintf(wsmall, 5, u"%d", 123456);
            printf("size 5, wide \"%%d\" of 123456: result %d, text \"%s\"\n", n,
                   to_utf8(wsmall, utf8, sizeof utf8));
            expect(n == -1 && GLIB_wcslen(wsmall) == 4);
        }

        /* Size 0 writes nothing at all, not even a terminator, and returns 0. */
        memset(small, '#', sizeof small);
        n = GLIB_snprintf(small, 0, "abc");
        printf("size 0: result %d, first byte '%c'\n", n, small[0]);
        expect(n == 0 && small[0] == '#');
    }

    if (failures != 0) {
        printf("%d unexpected results\n", failures);
        return 1;
    }
    return 0;
}
