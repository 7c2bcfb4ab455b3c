/*
 * convlib.h - the conversion library.
 *
 * Converts between text, integers, floating values, binary-coded decimals, byte strings, UTF-8
 * and date-time values. Every function reports through the status codes below (CONV_OK is
 * success; the two warnings come with a usable, altered result). The conversion library never
 * records on an error stack.
 */
#ifndef CONVLIB_H
#define CONVLIB_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status codes and messages ---- */

/* ---- Numeric narrowing ---- */

/* ---- Number text scanning and checking ---- */

/* ---- Integer and floating text conversions ---- */

/* ---- Trimming and UTF-8 ---- */

/* ---- Decimal values ---- */

/* ---- Binary text ---- */

/* ---- Date-time values and calendar ---- */

/* ---- Date-time formatting ---- */

/* ---- Date-time parsing ---- */

/* ---- ODBC date and time text ---- */

#ifdef __cplusplus
}
#endif

#endif /* CONVLIB_H */
