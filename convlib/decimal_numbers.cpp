// SPDX-License-Identifier: MIT
// Decimal values and the binary number types: every conversion goes through the value's text.
#include <nlssupport/convlib.h>

#include <cfloat>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     decimal_numbers.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Scratch size for a decimal value written as text.
constexpr uint32_t kScratchSize = 1000;

// Writes the decimal value as text with point "." into scratch (kScratchSize bytes). A text cut
// to the scratch is used as it is. Returns CONV_OK, CONV_ERR_CONVERSION for a bad value, or
// CONV_ERR_OVERFLOW when even the integer digits do not fit (a value of 10^998 or more, beyond
// every binary number type).
uint32_t DecimalText(char *scratch, const uint8_t *value, uint32_t precision, uint32_t scale,
                     uint32_t layout) {
    uint32_t length = 0;
    const uint32_t status =
        CONV_DecimalToString(scratch, value, kScratchSize, precision, scale, '.', layout, &length);
    if (status == CONV_ERR_CONVERSION) {
        return CONV_ERR_CONVERSION;
    }
    if (status == CONV_ERR_TARGET_TOO_SMALL) {
        return CONV_ERR_OVERFLOW;
    }
    return CONV_OK;
}

// Converts a decimal value to an integer target with the matching text-to-integer routine. A text
// that is not a plain integer loses the trailing zeros of its fraction and then a trailing
// point; what is left of a fraction is truncated toward zero by the conversion, which then warns.
template <typename T>
uint32_t DecimalToInteger(T *target, const uint8_t *value, uint32_t precision, uint32_t scale,
                          uint32_t layout, uint32_t (*convert)(T *, const char *, uint32_t, char)) {
    char text[kScratchSize];
    const uint32_t status = DecimalText(text, value, precision, scale, layout);
    if (status != CONV_OK) {
        return status;
    }
    if (CONV_IsNumber(text, CONV_NUM_LEADING_BLANKS, '.') != CONV_OK) {
        std::size_t n = std::strlen(text);
        if (std::strchr(text, '.') != nullptr) {
            // GCOVR_EXCL_BR_START: the text holds a "." at which the zeros stop, so n stays
            // above 0.
            while (n > 0 && text[n - 1] == '0') {
                --n;
            }
            if (n > 0 && text[n - 1] == '.') {
                --n;
            }
            // GCOVR_EXCL_BR_STOP
        }
        text[n] = '\0';
        if (n == 0 || (n == 1 && text[0] == '-')) {
            std::strcpy(text, "0");
        }
    }
    return convert(target, text, CONV_NUM_NO_CHECK, '.');
}

}  // namespace

// Decimal value to double through its text; returns the status of CONV_StringToDouble, or
// CONV_ERR_CONVERSION / CONV_ERR_OVERFLOW for a value that cannot be written.
extern "C" uint32_t CONV_DecimalToDouble(double *target, const uint8_t *value, uint32_t precision,
                                         uint32_t scale, uint32_t layout) noexcept {
    char text[kScratchSize];
    const uint32_t status = DecimalText(text, value, precision, scale, layout);
    if (status != CONV_OK) {
        return status;
    }
    return CONV_StringToDouble(target, text, CONV_NUM_NO_CHECK, '.');
}

// Decimal value to float through its text; returns the status of CONV_StringToFloat, or
// CONV_ERR_CONVERSION / CONV_ERR_OVERFLOW for a value that cannot be written.
extern "C" uint32_t CONV_DecimalToFloat(float *target, const uint8_t *value, uint32_t precision,
                                        uint32_t scale, uint32_t layout) noexcept {
    char text[kScratchSize];
    const uint32_t status = DecimalText(text, value, precision, scale, layout);
    if (status != CONV_OK) {
        return status;
    }
    return CONV_StringToFloat(target, text, CONV_NUM_NO_CHECK, '.');
}

// Decimal value to a signed 32-bit integer; returns the status of CONV_StringToInt32 (a dropped
// fraction is CONV_WARN_TRUNCATION), or CONV_ERR_CONVERSION / CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_DecimalToInt32(int32_t *target, const uint8_t *value, uint32_t precision,
                                        uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToInt32);
}

// Decimal value to an unsigned 32-bit integer, as CONV_DecimalToInt32 with CONV_StringToUInt32.
extern "C" uint32_t CONV_DecimalToUInt32(uint32_t *target, const uint8_t *value, uint32_t precision,
                                         uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToUInt32);
}

// Decimal value to a signed 16-bit integer, as CONV_DecimalToInt32 with CONV_StringToInt16.
extern "C" uint32_t CONV_DecimalToInt16(int16_t *target, const uint8_t *value, uint32_t precision,
                                        uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToInt16);
}

// Decimal value to an unsigned 16-bit integer, as CONV_DecimalToInt32 with CONV_StringToUInt16.
extern "C" uint32_t CONV_DecimalToUInt16(uint16_t *target, const uint8_t *value, uint32_t precision,
                                         uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToUInt16);
}

// Decimal value to a signed 8-bit integer, as CONV_DecimalToInt32 with CONV_StringToInt8.
extern "C" uint32_t CONV_DecimalToInt8(int8_t *target, const uint8_t *value, uint32_t precision,
                                       uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToInt8);
}

// Decimal value to an unsigned 8-bit integer, as CONV_DecimalToInt32 with CONV_StringToUInt8.
extern "C" uint32_t CONV_DecimalToUInt8(uint8_t *target, const uint8_t *value, uint32_t precision,
                                        uint32_t scale, uint32_t layout) noexcept {
    return DecimalToInteger(target, value, precision, scale, layout, CONV_StringToUInt8);
}

// Signed 32-bit integer to a packed decimal of at most size bytes, through its text read with
// CONV_NUM_NO_CHECK; returns the status of CONV_StringToDecimal.
extern "C" uint32_t CONV_Int32ToDecimal(uint8_t *out, int32_t value, uint32_t size,
                                        uint32_t *precision, uint32_t *scale) noexcept {
    char text[12];
    const uint32_t status = CONV_Int32ToString(text, value, sizeof text);
    if (status != CONV_OK) {  // GCOVR_EXCL_BR_LINE: "-2147483648" and its NUL fill the 12 bytes
        return status;
    }
    return CONV_StringToDecimal(out, text, size, precision, scale, CONV_NUM_NO_CHECK, '.');
}

// Unsigned 32-bit integer to a packed decimal, as CONV_Int32ToDecimal.
extern "C" uint32_t CONV_UInt32ToDecimal(uint8_t *out, uint32_t value, uint32_t size,
                                         uint32_t *precision, uint32_t *scale) noexcept {
    char text[12];
    const uint32_t status = CONV_UInt32ToString(text, value, sizeof text);
    if (status != CONV_OK) {  // GCOVR_EXCL_BR_LINE: "4294967295" and its NUL take 11 of 12 bytes
        return status;
    }
    return CONV_StringToDecimal(out, text, size, precision, scale, CONV_NUM_NO_CHECK, '.');
}

// Double to a packed decimal of at most size bytes: the value is written with 50 fraction digits
// and its trailing zeros are dropped (the point stays, so 5.0 is read as "5."). Returns
// CONV_ERR_OVERFLOW for an infinity, CONV_ERR_CONVERSION for a NaN, or the status of
// CONV_StringToDecimal.
extern "C" uint32_t CONV_DoubleToDecimal(uint8_t *out, double value, uint32_t size,
                                         uint32_t *precision, uint32_t *scale) noexcept {
    // Stored once so that the bound tests see the double itself, also on the x87.
    volatile double stored = value;
    const double v = stored;
    if (v > DBL_MAX || v < -DBL_MAX) {
        return CONV_ERR_OVERFLOW;
    }
    // "-" + 309 integer digits + "." + 50 fraction digits + NUL fit easily.
    char text[400];
    std::snprintf(text, sizeof text, "%-.50f", v);
    if (CONV_IsNumber(text, CONV_NUM_DECIMAL_POINT, '.') != CONV_OK) {
        return CONV_ERR_CONVERSION;
    }
    std::size_t n = std::strlen(text);
    // GCOVR_EXCL_BR_START: "%-.50f" always writes a "." at which the zeros stop.
    while (n > 0 && text[n - 1] == '0') {
        --n;
    }
    // GCOVR_EXCL_BR_STOP
    text[n] = '\0';
    return CONV_StringToDecimal(out, text, size, precision, scale, CONV_NUM_NO_CHECK, '.');
}
