/*
 * convlib_internal.h - helpers shared inside the conversion library only (not exported to
 * callers): the reader of "%" fields in date-time formats and the readers of names and numbers
 * from date-time source text.
 */
#ifndef CONVLIB_INTERNAL_H
#define CONVLIB_INTERNAL_H

#include <stdint.h>

#include "convlib.h"

/* The sixteen field letters of the date-time format language, "DFHIMPQSTUVWYZEJ"; a letter's
 * position is its field index. */
extern const char gCONV_Letter[17];

/* Reads up to three digits at *position. Returns -1 and changes nothing when the first character
 * is no digit; otherwise moves *position past the digits, adds their number to *count and returns
 * their value in base ten. */
int32_t CONV_CheckNumber(const char **position, uint16_t *count) noexcept;

/* Reads a "%" field ("%", an optional "-" or "0" flag, an optional width, an optional "." and
 * precision, a letter of gCONV_Letter) at *position into descriptor and returns the field index
 * 0..15. Returns -1 when the text is not a field. *position is not moved, except for "%%", where
 * it moves on to the second "%" (and -1 is returned). */
int32_t CONV_CheckField(const char **position, CONV_FieldDescriptor *descriptor) noexcept;

/* Finds the first of count names that stands at *position (whole name without a width; within a
 * width-wide field, at its start under flag 1 and at its end otherwise) and stores its index.
 * A null table or a null slot names nothing. On a match *position moves past the name (or the
 * whole field). Returns CONV_OK, CONV_ERR_FORMAT_LEFT (fewer than width characters remain) or
 * CONV_ERR_SCAN_MISMATCH. */
uint32_t CONV_ScanString(const char **position, uint16_t *index, const char *const *names,
                         int32_t count, const CONV_FieldDescriptor *descriptor) noexcept;

/* Reads a decimal integer with strtol at *position (exactly width characters when a width is
 * given) into *value and moves *position past it. Returns CONV_OK, CONV_ERR_FORMAT_LEFT or
 * CONV_ERR_SCAN_MISMATCH. */
uint32_t CONV_ScanNumber(const char **position, int32_t *value,
                         const CONV_FieldDescriptor *descriptor) noexcept;

#endif /* CONVLIB_INTERNAL_H */
