// SPDX-License-Identifier: MIT
// The source scanners shared by the date-time parser: the readers of a name and of a number
// from source text. (The reader of "%" fields is inline in datetime_internal.h.)
#include <nlssupport/convlib.h>

#include <cstdint>
#include <cstring>

#include "convlib_export.h"
#include "datetime_internal.h"

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     fieldscan.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     datetime_internal.h\t\t$Revision$\t$Date$",
    "@(#)     convlib_export.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Widest field the number reader copies (three digits of width).
constexpr size_t kMaxFieldWidth = 999;
}  // namespace

namespace conv {

// Finds the first of the count names that stands at *position, byte-exact. Without a width a
// whole name must stand there and the position moves past it; with a width the field of that
// many characters is compared with each name over the smaller of the width and the name's
// length, at the field's start under flag 1 and at its end under flags 0 and 2, and the position
// moves past the whole field. A null table or null slots name nothing. Stores the index of the
// match and returns CONV_OK;
// CONV_ERR_FORMAT_LEFT when fewer than width characters remain; CONV_ERR_SCAN_MISMATCH when no
// name (or no usable flag) matches.
uint32_t CONV_ScanString(const char **position, uint16_t *index, const char *const *names,
                         int32_t count, const CONV_FieldDescriptor *descriptor) noexcept {
    const char *source = *position;
    const uint16_t width = descriptor->width;
    if (names == nullptr) {
        count = 0;  // no table: nothing can match
    }
    if (width == kNotGiven) {
        for (int32_t i = 0; i < count; ++i) {
            if (names[i] == nullptr) {
                continue;  // an empty slot names nothing
            }
            const size_t nameLength = std::strlen(names[i]);
            if (std::strncmp(source, names[i], nameLength) == 0) {
                *index = static_cast<uint16_t>(i);
                *position = source + nameLength;
                return CONV_OK;
            }
        }
        return CONV_ERR_SCAN_MISMATCH;
    }
    if (strnlen(source, width) < width) {
        return CONV_ERR_FORMAT_LEFT;
    }
    for (int32_t i = 0; i < count; ++i) {
        if (names[i] == nullptr) {
            continue;
        }
        const size_t nameLength = std::strlen(names[i]);
        const size_t n = nameLength < width ? nameLength : width;
        const char *fieldPart;
        if (descriptor->flag == 1) {
            fieldPart = source;  // left-justified: the name starts the field
        } else if (descriptor->flag == 0 || descriptor->flag == 2) {
            fieldPart = source + width - n;  // right-justified: the name ends the field
        } else {
            return CONV_ERR_SCAN_MISMATCH;
        }
        if (std::memcmp(fieldPart, names[i], n) == 0) {
            *index = static_cast<uint16_t>(i);
            *position = source + width;
            return CONV_OK;
        }
    }
    return CONV_ERR_SCAN_MISMATCH;
}

// Reads a decimal integer (strtol: leading white space and a sign accepted) at *position into
// *value. With a width exactly that many characters must form the whole number
// (CONV_ERR_FORMAT_LEFT when fewer remain, CONV_ERR_SCAN_MISMATCH when any is left over or the
// width is beyond the 999 that a field can give); without one the number is read as far as it
// goes (CONV_ERR_SCAN_MISMATCH when nothing is read). On success *position moves past the number
// and CONV_OK is returned; values beyond 32 bits come back as the nearest 32-bit limit.
uint32_t CONV_ScanNumber(const char **position, int32_t *value,
                         const CONV_FieldDescriptor *descriptor) noexcept {
    const char *source = *position;
    const uint16_t width = descriptor->width;
    int32_t number;
    if (ScanPlainDigits(position, value, width)) {
        return CONV_OK;
    }
    if (width != kNotGiven) {
        if (strnlen(source, width) < width) {
            return CONV_ERR_FORMAT_LEFT;
        }
        if (width > kMaxFieldWidth) {  // GCOVR_EXCL_BR_LINE: CONV_CheckField's widths end at 999
            return CONV_ERR_SCAN_MISMATCH;
        }
        char copy[kMaxFieldWidth + 1];
        std::memcpy(copy, source, width);
        copy[width] = '\0';
        char *end = nullptr;
        number = StrToLong32(copy, &end);
        if (*end != '\0') {
            return CONV_ERR_SCAN_MISMATCH;
        }
        *position = source + width;
    } else {
        char *end = nullptr;
        number = StrToLong32(source, &end);
        if (end == source) {
            return CONV_ERR_SCAN_MISMATCH;
        }
        *position = end;
    }
    *value = number;
    return CONV_OK;
}

}  // namespace conv
