/* SPDX-License-Identifier: MIT */
/*
 * like.c - SQL-LIKE pattern matching.
 *
 * A pattern matches a value when the whole pattern covers the whole value:
 *   '%'  any run of characters, also none;
 *   '_'  exactly one character;
 *   '\'  makes the next pattern character literal ("100\%" matches only "100%").
 * GLIB_ValueMatchesPattern works on narrow strings, GLIB_ValueMatchesPatternW on 16-bit wide
 * strings, and GLIB_ValueMatchesPatternEx takes the caller's three wildcard characters (any run,
 * any one, escape) and can ignore letter case. The pattern always comes first; the result is 1
 * for a match and 0 otherwise.
 *
 * The program prints one line per match and returns 0, or 1 when a result is not the expected one.
 */
#include <stdio.h>

#include <nlssupport/glib.h>

static int failures = 0;

/* Matches one value against one pattern and prints the outcome. */
static void like(const char *pattern, const char *value, int expected) {
    int result = GLIB_ValueMatchesPattern(pattern, value);
    printf("%-14s LIKE %-8s -> %d\n", value[0] != '\0' ? value : "''", pattern, result);
    if (result != expected)
        failures++;
}

/* The same with the caller's wildcards and case flag. */
static void like_ex(const char *pattern, const char *value, const char *wildcards,
                    uint32_t ignoreCase, int expected) {
    int result = GLIB_ValueMatchesPatternEx(pattern, value, wildcards, ignoreCase);
    printf("%-14s LIKE %-8s (wildcards \"%s\", ignoreCase %u) -> %d\n", value, pattern, wildcards,
           (unsigned)ignoreCase, result);
    if (result != expected)
        failures++;
}

int main(void) {
    printf("-- '%%' and '_'\n");
    like("%", "anything", 1);
    like("%", "", 1);
    like("a%", "abc", 1);
    like("%c", "abc", 1);
    like("a_c", "abc", 1);
    like("a_c", "ac", 0); /* '_' needs exactly one character */
    like("%_", "", 0);    /* at least one character */
    like("_%_", "a", 0);  /* at least two */
    like("%.txt", "notes.txt", 1);
    like("%.txt", "notes.txt.bak", 0); /* the match is anchored at both ends */
    like("Ab%", "abc", 0);             /* case counts */

    printf("-- the escape\n");
    /* In C source the backslash itself is written twice. */
    like("100\\%", "100%", 1);
    like("100\\%", "1000", 0);
    like("a\\_c", "a_c", 1);
    like("a\\_c", "abc", 0);

    printf("-- wide strings\n");
    {
        /* The same rules over 16-bit units; 'ü' is one unit and so one '_'. */
        int result = GLIB_ValueMatchesPatternW(u"Z_rich", u"Zürich");
        printf("Zürich         LIKE Z_rich   -> %d\n", result);
        if (result != 1)
            failures++;
        result = GLIB_ValueMatchesPatternW(u"%ich", u"Zürich");
        printf("Zürich         LIKE %%ich     -> %d\n", result);
        if (result != 1)
            failures++;
    }

    printf("-- caller's wildcards: '*' any run, '?' any one, '!' escape\n");
    like_ex("A*", "abc", "*?!", 1, 1); /* letter case ignored */
    like_ex("A*", "abc", "*?!", 0, 0); /* letter case counts */
    like_ex("a?c", "abc", "*?!", 0, 1);
    like_ex("50%", "50%", "*?!", 0, 1); /* '%' is an ordinary character here */
    like_ex("50%", "500", "*?!", 0, 0);
    like_ex("what!?", "what?", "*?!", 0, 1);
    like_ex("what!?", "whats", "*?!", 0, 0);

    if (failures != 0) {
        printf("%d unexpected results\n", failures);
        return 1;
    }
    return 0;
}
