/* SPDX-License-Identifier: MIT */
/**
 * @file ianacs.h
 * @brief The character-set registry: IANA alias, information and OS code-set tables.
 *
 * Three constant tables are built into the library; there is no loading, no configuration and
 * no state:
 *   - the IANA alias table #gIANACS_AliasTab: every known character-set name (the IANA
 *     registry's names and aliases, including the "cs" aliases, vendor and platform forms such
 *     as "ibm-912", "ISO8859_2", "Cp1140", "windows-1250") with its MIBenum;
 *   - the IANA information table #gIANACS_InfoTab: for every MIBenum its preferred name and the
 *     number of bytes a character takes;
 *   - the operating-system alias table #gIANACSOS_AliasTab: the code-set names that the
 *     system's locale services report (`nl_langinfo(CODESET)`), with their MIBenums.
 *
 * A MIBenum is a signed 32-bit IANA character-set number (3 to 2259 here); -1 means that there
 * is none. Numbers from 10000 to 10047 name vendor code pages that have no IANA number.
 *
 * Every function returns 0 on success and 1 on failure; none takes an error stack and none
 * pushes anything. Lookups that miss store a sentinel (MIBenum -1, null name) before returning 1.
 * Names returned point into the constant tables: the caller never frees or changes them, and
 * they stay valid for the whole run. Name lookups ignore letter case but depend on the tables'
 * stored order; see IANACS_GetMibEnum for the names this makes unreachable.
 */
#ifndef NLSSUPPORT_IANACS_H
#define NLSSUPPORT_IANACS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#ifndef IANACS_NOEXCEPT
#ifdef __cplusplus
/** Marks the functions of this header: `noexcept` for C++ callers, nothing for C. */
#define IANACS_NOEXCEPT noexcept
#else
#define IANACS_NOEXCEPT
#endif
#endif

/**
 * @name Row counts
 * The number of rows of each table, as declared in the table's array type.
 */
/** @{ */
/** Rows of #gIANACS_AliasTab: 966 distinct names ("Cp1006" and "Cp970" occur twice). */
#define IANACS_ALIASTAB_ROWS 968
/** Rows of #gIANACS_InfoTab: 293 distinct MIBenums (10038 has two rows). */
#define IANACS_INFOTAB_ROWS 294
/** Rows of #gIANACSOS_AliasTab. */
#define IANACSOS_ALIASTAB_ROWS 24
/** @} */

/** One row of a name table (#gIANACS_AliasTab, #gIANACSOS_AliasTab): a name and its MIBenum. */
typedef struct IANACS_AliasEntry {
    /** The character-set name, NUL-terminated constant text; never null in the shipped tables. */
    const char *name;
    /** The MIBenum the name stands for; -1 (only in #gIANACSOS_AliasTab) for none. */
    int32_t mibEnum;
} IANACS_AliasEntry;

/** One row of the information table #gIANACS_InfoTab. */
typedef struct IANACS_InfoEntry {
    int32_t mibEnum;  /**< The MIBenum; rows are in ascending order of it. */
    const char *name; /**< Preferred IANA name, NUL-terminated constant text (45 characters at
                           most). */
    int32_t minBytes; /**< Minimum bytes per character; -1 when the sizes are unknown. */
    int32_t maxBytes; /**< Maximum bytes per character; -1 when the sizes are unknown. */
    /**
     * Stored fixed width: equal to #maxBytes when #minBytes equals it (so -1 when the sizes are
     * unknown), 0 for a variable-width set. IANACS_GetInfo does not read this column: it
     * derives the same value from the two sizes.
     */
    int32_t fixedBytes;
} IANACS_InfoEntry;

/** What IANACS_GetInfo reports for one MIBenum (filled also when the MIBenum is not found). */
typedef struct IANACS_Info {
    /** Preferred IANA name (constant table data, never freed); null when not found. */
    const char *name;
    int32_t mibEnum;    /**< The requested MIBenum (echoed also when not found). */
    int32_t minBytes;   /**< Minimum bytes per character; -1 unknown or not found. */
    int32_t maxBytes;   /**< Maximum bytes per character; -1 unknown or not found. */
    /** Bytes per character of a fixed-width set (#minBytes = #maxBytes), 0 for a variable-width
        set, -1 when the sizes are unknown or the MIBenum is not found. */
    int32_t fixedBytes;
} IANACS_Info;

/**
 * @name Tables
 */
/** @{ */
/**
 * The IANA alias table: 968 (name, MIBenum) rows, 293 distinct MIBenums; every MIBenum of
 * #gIANACS_InfoTab has at least one alias.
 *
 * Rows are sorted by name compared byte by byte after folding the letters a-z to upper case,
 * so "_" (0x5F) sorts after the letters. Two names occur twice, in this order: "Cp1006" (10021,
 * then 10022) and "Cp970" (10019, then 10020). The lookup IANACS_GetMibEnum folds to lower case
 * instead; this order is kept as it is, because callers depend on the lookup's exact results.
 */
extern const IANACS_AliasEntry gIANACS_AliasTab[IANACS_ALIASTAB_ROWS];
/**
 * The IANA information table: 294 rows in ascending MIBenum order. MIBenum 10038 has two rows,
 * "MacCyrillic" then "MacDingbat"; IANACS_GetInfo gives "MacCyrillic". The longest preferred
 * name, "Extended_UNIX_Code_Packed_Format_for_Japanese" (18), has 45 characters.
 */
extern const IANACS_InfoEntry gIANACS_InfoTab[IANACS_INFOTAB_ROWS];
/**
 * The operating-system code-set table: 24 rows of the names `nl_langinfo(CODESET)` reports
 * (such as "ANSI_X3.4-1968", "UTF-8", "EUC-JP"), sorted by name ignoring case (the same order
 * whether letters are folded up or down). "BIG5HKSCS" and "EUC-TW" carry MIBenum -1: known code
 * sets without an information row.
 */
extern const IANACS_AliasEntry gIANACSOS_AliasTab[IANACSOS_ALIASTAB_ROWS];
/** @} */

/**
 * @name Lookups
 */
/** @{ */

/**
 * Looks a character-set name up in the alias table #gIANACS_AliasTab, ignoring letter case.
 *
 * The search is the system library's `bsearch` comparing with `strcasecmp` (letters folded to
 * lower case, in the current locale), while the table is sorted with letters folded to upper
 * case. Where the two orders disagree the search turns the wrong way, so these 12 names are
 * never found, in any letter case, and give -1 with status 1: "csAdobeStandardEncoding",
 * "csASCII", "CSA_T500-1983", "csNATSSEFIADD", "CSN_369103", "eucJP", "eucKR", "GBK",
 * "KSC_5601", "KS_C_5601-1987", "KS_C_5601-1989", "MSZ_7795.3". Every other name of the table is
 * found in any letter case ("utf-8", "UTF-8", "Utf-8" give 106). The duplicated names resolve
 * to their second row: "Cp1006" gives 10022, "Cp970" gives 10020. Callers rely on exactly these
 * results; the table order and the comparison are kept as they are.
 *
 * @param[in]  name   The name, NUL-terminated; may be null (not found).
 * @param[out] mibOut Receives the MIBenum, or -1 when the name is not found. Must not be null (a
 *                    null pointer returns 1 and nothing is stored).
 * @retval 0 The name was found; its MIBenum is in @p mibOut.
 * @retval 1 Not found (-1 stored), a null @p name (-1 stored) or a null @p mibOut.
 * @see IANACSOS_GetMibEnum, IANACS_GetInfo
 */
int IANACS_GetMibEnum(const char *name, int32_t *mibOut) IANACS_NOEXCEPT;

/**
 * Fetches the information of a MIBenum from #gIANACS_InfoTab.
 *
 * Found: the name, MIBenum and both sizes come from the row, and fixedBytes is derived from the
 * sizes (maxBytes when both are equal, otherwise 0); rows with unknown sizes are found too and
 * give -1, -1, -1. Examples: 106 gives "UTF-8", 1, 4, 0; 1015 gives "UTF-16", 2, 2, 2; 13 gives
 * "ISO-8859-10", -1, -1, -1; 10038 gives "MacCyrillic". Not found (a gap such as 107, or -1):
 * name null, mibEnum the requested value, the three sizes -1.
 *
 * @param[in]  mibEnum The MIBenum to look up.
 * @param[out] infoOut Receives the record (all five fields, found or not). Must not be null (a
 *                     null pointer returns 1 and nothing is written).
 * @retval 0 The MIBenum has an information row.
 * @retval 1 No row for this MIBenum (not-found record stored), or a null @p infoOut.
 * @see IANACS_GetMibEnum
 */
int IANACS_GetInfo(int32_t mibEnum, IANACS_Info *infoOut) IANACS_NOEXCEPT;

/**
 * Looks an operating-system code-set name up in #gIANACSOS_AliasTab, ignoring letter case.
 *
 * The same search as IANACS_GetMibEnum, over the operating-system table. A row that carries
 * MIBenum -1 counts as found: "EUC-TW" and "BIG5HKSCS" return 0 with -1, while a name outside
 * the table (such as "ISO-8859-4") returns 1 with -1. Only the status tells the two apart.
 *
 * @param[in]  osName The code-set name, NUL-terminated; may be null (not found).
 * @param[out] mibOut Receives the row's MIBenum (which may be -1), or -1 when the name is not
 *                    found. Must not be null (a null pointer returns 1 and nothing is stored).
 * @retval 0 The name is in the table; its MIBenum (possibly -1) is in @p mibOut.
 * @retval 1 Not found (-1 stored), a null @p osName (-1 stored) or a null @p mibOut.
 * @see IANACS_GetInfo
 */
int IANACSOS_GetMibEnum(const char *osName, int32_t *mibOut) IANACS_NOEXCEPT;

/** @} */

/**
 * @name Order checks
 */
/** @{ */

/**
 * Checks that the alias table is in the order the lookup needs.
 *
 * Every name must compare strictly greater than the previous one under `strcasecmp`, the
 * comparison of IANACS_GetMibEnum. The shipped table does not pass: it is stored in upper-case
 * order, which the lookup's results depend on, and the first offending pair is the duplicated
 * "Cp1006". Prints nothing.
 *
 * @retval 0 Every neighbouring pair is in strictly ascending order.
 * @retval 1 A pair is not (the shipped table gives 1).
 * @see IANACSOS_CheckAliasTab
 */
int IANACS_CheckAliasTab(void) IANACS_NOEXCEPT;

/**
 * Checks that the operating-system table is in the order the lookup needs, reporting the first
 * pair that is not on standard error.
 *
 * The same test as IANACS_CheckAliasTab over #gIANACSOS_AliasTab. At the first pair that is not
 * in strictly ascending order it writes one line to standard error, formatted as
 * "i = %d, %s %s" and a line feed, with i the index of the later row of the pair (counted from
 * 1), the earlier name and the later name. This is the only output of the library. The shipped
 * table is in order: the check returns 0 and prints nothing.
 *
 * @retval 0 The table is in strictly ascending order; nothing is printed.
 * @retval 1 A pair is out of order; its diagnostic line was written to standard error.
 */
int IANACSOS_CheckAliasTab(void) IANACS_NOEXCEPT;

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* NLSSUPPORT_IANACS_H */
