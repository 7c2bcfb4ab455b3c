/* SPDX-License-Identifier: MIT */
/*
 * convlib_internal.h - helpers shared inside the conversion library only (not exported to
 * callers): the reader of "%" fields in date-time formats and the readers of names and numbers
 * from date-time source text.
 */
#ifndef CONVLIB_INTERNAL_H
#define CONVLIB_INTERNAL_H

#include <stdint.h>

#include <nlssupport/convlib.h>

/* The sixteen field letters of the date-time format language, "DFHIMPQSTUVWYZEJ"; a letter's
 * position is its field index. */
extern const char gCONV_Letter[17];

/* Width and precision of a field descriptor that stands for "not given". */
constexpr uint16_t kConvFieldNotGiven = 65535;

/* Field index of every byte: the position of the letter in "DFHIMPQSTUVWYZEJ", or -1. Built at
 * compile time so that reading a field costs one load instead of a string search. */
struct CONV_LetterTable {
    int8_t index[256];
    constexpr CONV_LetterTable() : index{} {
        constexpr char kLetters[] = "DFHIMPQSTUVWYZEJ";
        for (int8_t &i : index) {
            i = -1;
        }
        for (int8_t i = 0; i < 16; ++i) {
            index[static_cast<unsigned char>(kLetters[i])] = i;
        }
    }
};
inline constexpr CONV_LetterTable kConvLetterTable{};

/* The digit reader of CONV_CheckNumber, inline so that the date-time loops read fields without
 * a call per field. */
inline int32_t CONV_ReadFieldDigits(const char **position, uint16_t *count) noexcept {
    const char *p = *position;
    if (*p < '0' || *p > '9') {
        return -1;
    }
    int32_t value = 0;
    uint16_t digits = 0;
    while (digits < 3 && p[digits] >= '0' && p[digits] <= '9') {
        value = value * 10 + (p[digits] - '0');
        ++digits;
    }
    *count = static_cast<uint16_t>(*count + digits);
    *position = p + digits;
    return value;
}

/* The field reader of CONV_CheckField (same contract), inline for the date-time loops. The parts
 * are kept in locals and stored member by member at the end, so that no copy of a half-written
 * record has to wait for its 16-bit stores. */
inline int32_t CONV_ReadField(const char **position, CONV_FieldDescriptor *descriptor) noexcept {
    const char *p = *position;
    if (p[0] == '%' && p[1] == '%') {
        *position = p + 1;
        return -1;
    }
    if (p[0] != '%') {
        return -1;
    }
    uint16_t flag = 0;
    uint16_t length = 1;
    const char *q = p + 1;
    if (*q == '-') {
        flag = 1;
        length = 2;
        ++q;
    } else if (*q == '0') {
        flag = 2;
        length = 2;
        ++q;
    }
    const int32_t width = CONV_ReadFieldDigits(&q, &length);
    if (width == 0) {
        return -1; /* e.g. "%-0D" */
    }
    uint16_t precision = kConvFieldNotGiven;
    if (*q == '.') {
        ++q;
        ++length;
        const int32_t digits = CONV_ReadFieldDigits(&q, &length);
        if (digits < 1 || digits > 9) {
            return -1;
        }
        precision = static_cast<uint16_t>(digits);
    }
    /* The terminator is no letter (its table entry is -1). */
    const int32_t letter = kConvLetterTable.index[static_cast<unsigned char>(*q)];
    if (letter < 0) {
        return -1;
    }
    descriptor->flag = flag;
    descriptor->width = width < 0 ? kConvFieldNotGiven : static_cast<uint16_t>(width);
    descriptor->index = static_cast<uint16_t>(letter);
    descriptor->length = static_cast<uint16_t>(length + 1);
    descriptor->precision = precision;
    return letter;
}

/* The common case of CONV_ScanNumber, inline: a width of 1..9 whose characters are all digits is
 * summed directly (strtol would read the same digits to the same value and stop exactly at the
 * field's end). Returns true with *value set and *position moved past the field; false, changing
 * nothing, for every other case, which CONV_ScanNumber handles. */
inline bool CONV_ScanPlainDigits(const char **position, int32_t *value, uint16_t width) noexcept {
    if (width > 9) {
        return false; /* also "not given" */
    }
    const char *source = *position;
    int32_t sum = 0;
    for (uint16_t i = 0; i < width; ++i) {
        if (source[i] < '0' || source[i] > '9') {
            return false;
        }
        sum = sum * 10 + (source[i] - '0');
    }
    *position = source + width;
    *value = sum;
    return true;
}

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
