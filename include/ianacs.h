/*
 * ianacs.h - the character-set registry.
 *
 * Three constant tables built into the library:
 *   - the IANA alias table: every known character-set name (IANA names and aliases, vendor and
 *     platform forms) with its MIBenum;
 *   - the IANA information table: for every MIBenum its preferred name and the number of bytes a
 *     character takes;
 *   - the operating-system alias table: the code-set names that the system's locale services
 *     report, with their MIBenums.
 *
 * A MIBenum is a signed 32-bit IANA character-set number; -1 means "no MIBenum". Numbers from
 * 10000 to 10047 name vendor code pages that have no IANA number.
 *
 * Every function returns 0 on success and 1 on failure; none takes an error stack. Lookups that
 * miss store the sentinel (-1 MIBenum, null name) before returning 1.
 */
#ifndef IANACS_H
#define IANACS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The functions of this library never throw; C++ callers see them as noexcept. */
#ifndef IANACS_NOEXCEPT
#ifdef __cplusplus
#define IANACS_NOEXCEPT noexcept
#else
#define IANACS_NOEXCEPT
#endif
#endif

/* Row counts of the three tables. */
#define IANACS_ALIASTAB_ROWS 968
#define IANACS_INFOTAB_ROWS 294
#define IANACSOS_ALIASTAB_ROWS 24

/* One row of a name table: a character-set name and its MIBenum (-1: none). */
typedef struct IANACS_AliasEntry {
    const char *name;
    int32_t mibEnum;
} IANACS_AliasEntry;

/*
 * One row of the information table. The size columns are -1 when unknown; fixedBytes is the
 * width of a fixed-width set (minBytes = maxBytes) and 0 for a variable-width one.
 */
typedef struct IANACS_InfoEntry {
    int32_t mibEnum;
    const char *name; /* preferred IANA name */
    int32_t minBytes;
    int32_t maxBytes;
    int32_t fixedBytes;
} IANACS_InfoEntry;

/* What IANACS_GetInfo reports for one MIBenum. */
typedef struct IANACS_Info {
    const char *name;   /* preferred IANA name (table data, never freed); null when not found */
    int32_t mibEnum;    /* the requested MIBenum */
    int32_t minBytes;   /* minimum bytes per character, -1 unknown */
    int32_t maxBytes;   /* maximum bytes per character, -1 unknown */
    int32_t fixedBytes; /* bytes per character when fixed, 0 for variable width, -1 unknown */
} IANACS_Info;

/*
 * The alias table. Rows are sorted by name compared byte by byte after folding a-z to upper
 * case ("_" sorts after the letters). Two names occur twice: "Cp1006" (10021, then 10022) and
 * "Cp970" (10019, then 10020).
 */
extern const IANACS_AliasEntry gIANACS_AliasTab[IANACS_ALIASTAB_ROWS];
/* The information table, in ascending MIBenum order; 10038 has two rows. */
extern const IANACS_InfoEntry gIANACS_InfoTab[IANACS_INFOTAB_ROWS];
/* The operating-system code-set table, in case-insensitive name order. */
extern const IANACS_AliasEntry gIANACSOS_AliasTab[IANACSOS_ALIASTAB_ROWS];

/*
 * Looks a character-set name up in the alias table, ignoring letter case. Found: stores the
 * MIBenum in *mibOut and returns 0. Not found (or a null name): stores -1 and returns 1.
 * The search is a binary search that folds letters to lower case while the table is sorted with
 * letters folded to upper case, so a dozen names ("GBK", "eucJP", "csASCII", ...) are never found.
 * Callers rely on exactly this behaviour. A null mibOut returns 1.
 */
int IANACS_GetMibEnum(const char *name, int32_t *mibOut) IANACS_NOEXCEPT;

/*
 * Fetches the information row of a MIBenum. Found: fills all five fields and returns 0.
 * Not found: name null, mibEnum the requested value, the three sizes -1; returns 1.
 * A null infoOut returns 1.
 */
int IANACS_GetInfo(int32_t mibEnum, IANACS_Info *infoOut) IANACS_NOEXCEPT;

/*
 * Looks an operating-system code-set name up in the operating-system table, ignoring letter
 * case. Found: stores the row's MIBenum (which may be -1) and returns 0. Not found (or a null
 * name): stores -1 and returns 1. A null mibOut returns 1.
 */
int IANACSOS_GetMibEnum(const char *osName, int32_t *mibOut) IANACS_NOEXCEPT;

/*
 * Returns 0 when every alias-table name compares (case-insensitively, as the lookup compares)
 * strictly greater than the previous one, 1 otherwise. The shipped table returns 1: its
 * duplicated names and its upper-case order do not satisfy the lookup's comparison.
 * Prints nothing.
 */
int IANACS_CheckAliasTab(void) IANACS_NOEXCEPT;

/*
 * The same test over the operating-system table. At the first pair out of order it writes
 * "i = <index of the later row>, <earlier name> <later name>" and a newline on standard error and
 * returns 1; otherwise it returns 0.
 */
int IANACSOS_CheckAliasTab(void) IANACS_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* IANACS_H */
