/* SPDX-License-Identifier: MIT */
/*
 * numbers.c - number text, doubles and decimal values.
 *
 * Every conversion routine returns a status: CONV_OK (0), a warning that comes with a usable,
 * altered result (CONV_WARN_TRUNCATION, CONV_WARN_ROUND_TO_ZERO), or an error. CONV_ErrorMessage
 * turns a status into its message text and its bracketed SQLSTATE.
 *
 * Shown here:
 *   - CONV_StringToInt32 with number-syntax flags, a truncation warning and an overflow,
 *   - CONV_DoubleToString in its three styles, with a caller's decimal-point character,
 *   - CONV_StringToDecimal / CONV_DecimalToString (packed decimals with precision and scale),
 *   - CONV_StringToQLXBCD / CONV_QLXBCDToString (the self-describing packed layout),
 *   - CONV_BinaryToString / CONV_StringToBinary (hexadecimal text), used to show decimal bytes.
 *
 * The program prints plain text and returns 0, or 1 when a status is not the expected one.
 */
#include <inttypes.h>
#include <stdio.h>

#include <nlssupport/convlib.h>

static int failures = 0;

/* Text of a status: "OK", or the library's SQLSTATE and message. */
static const char *status_text(uint32_t status, char *out, size_t outSize) {
    const char *message;
    const char *sqlstate;

    if (CONV_ErrorMessage(status, &message, &sqlstate) == 0)
        snprintf(out, outSize, "OK");
    else
        snprintf(out, outSize, "%s %s", sqlstate, message);
    return out;
}

/* Prints a status and counts it when it is not the expected one. */
static void check(uint32_t status, uint32_t expected) {
    char text[160];
    printf("  status %" PRIu32 ": %s\n", status, status_text(status, text, sizeof text));
    if (status != expected)
        failures++;
}

/* Prints bytes as hexadecimal text. */
static const char *hex(const uint8_t *bytes, uint32_t count, char *out, uint32_t outSize) {
    if (CONV_BinaryToString(out, bytes, outSize, count) != CONV_OK)
        failures++;
    return out;
}

/* Reads text into an int32_t under the flags and the decimal-point character. */
static void to_int32(const char *text, uint32_t flags, char point, uint32_t expected) {
    int32_t value = -1; /* left as it is by an overflow or a syntax error */
    uint32_t status = CONV_StringToInt32(&value, text, flags, point);
    printf("CONV_StringToInt32(\"%s\", flags 0x%03" PRIX32 ", point '%c') -> %" PRId32 "\n", text,
           flags, point, value);
    check(status, expected);
}

/* Writes a double in one style. */
static void double_text(double value, uint32_t size, uint32_t style, uint32_t precision, char point,
                        uint32_t expected) {
    char out[64];
    uint32_t length = 0;
    uint32_t status = CONV_DoubleToString(out, value, size, style, precision, point, &length);
    printf("CONV_DoubleToString(%.10g, size %" PRIu32 ", style %" PRIu32 ", precision %" PRIu32
           ") -> \"%s\", length %" PRIu32 "\n",
           value, size, style, precision,
           status == CONV_OK || status == CONV_WARN_TRUNCATION ? out : "", length);
    check(status, expected);
}

int main(void) {
    printf("-- text to int32_t\n");
    /* Without flags only an optional sign and digits are accepted. */
    to_int32("12345", 0, '.', CONV_OK);
    to_int32(" 42 ", 0, '.', CONV_ERR_NOT_A_NUMBER);
    to_int32(" 42 ", CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS, '.', CONV_OK);
    /* A fraction is dropped toward zero with a warning; the value is usable. */
    to_int32("12.50", CONV_NUM_DECIMAL_POINT, '.', CONV_WARN_TRUNCATION);
    to_int32("-12,75", CONV_NUM_DECIMAL_POINT, ',', CONV_WARN_TRUNCATION);
    /* Zeros after the point drop nothing. */
    to_int32("12.000", CONV_NUM_DECIMAL_POINT, '.', CONV_OK);
    /* An exponent needs its own flag. */
    to_int32("1.5E3", CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, '.', CONV_OK);
    /* Out of range: an error, the target is not written. */
    to_int32("2147483648", 0, '.', CONV_ERR_OVERFLOW);
    to_int32("-2147483648", 0, '.', CONV_OK);
    to_int32("12abc", 0, '.', CONV_ERR_NOT_A_NUMBER);

    printf("-- double to text\n");
    /* Fixed style, the caller's decimal point. */
    double_text(1234.5678, 32, CONV_DOUBLE_FIXED, 2, ',', CONV_OK);
    /* Too little room: fraction digits are cut (not rounded) with a warning; the length still
     * tells the size the whole text needs. */
    double_text(1234.5678, 8, CONV_DOUBLE_FIXED, 4, '.', CONV_WARN_TRUNCATION);
    /* Scientific style: no "+" and no leading zeros in the exponent. */
    double_text(1234.5678, 32, CONV_DOUBLE_SCIENTIFIC, 3, '.', CONV_OK);
    double_text(-0.00012, 32, CONV_DOUBLE_SCIENTIFIC, 1, '.', CONV_OK);
    /* An exponent of zero leaves nothing after the "E". */
    double_text(1.5, 32, CONV_DOUBLE_SCIENTIFIC, 2, '.', CONV_OK);
    /* General style: plain where that is short enough. */
    double_text(1234.5678, 32, CONV_DOUBLE_GENERAL, 6, '.', CONV_OK);
    /* The integer digits alone do not fit. */
    double_text(1234.5678, 4, CONV_DOUBLE_FIXED, 2, '.', CONV_ERR_TARGET_TOO_SMALL);

    printf("-- packed decimals\n");
    {
        uint8_t dec[8];
        char hexText[32];
        char text[32];
        uint32_t precision = 0;
        uint32_t scale = 0;
        uint32_t length = 0;
        uint32_t status;
        int32_t whole = 0;

        /*
         * Two digits per byte, the sign (0xC plus, 0xD minus) in the last low nibble; precision
         * (digits) and scale (digits after the point) travel beside the bytes. A fraction needs
         * CONV_NUM_DECIMAL_POINT.
         */
        status = CONV_StringToDecimal(dec, "123.45", sizeof dec, &precision, &scale,
                                      CONV_NUM_DECIMAL_POINT, '.');
        printf("CONV_StringToDecimal(\"123.45\") -> %s, precision %" PRIu32 ", scale %" PRIu32 "\n",
               hex(dec, precision / 2 + 1, hexText, sizeof hexText), precision, scale);
        check(status, CONV_OK);

        status = CONV_DecimalToString(text, dec, sizeof text, precision, scale, ',',
                                      CONV_DECIMAL_PACKED, &length);
        printf("CONV_DecimalToString(point ',') -> \"%s\", length %" PRIu32 "\n", text, length);
        check(status, CONV_OK);

        /* A small target cuts fraction digits (no rounding) with a warning. */
        status =
            CONV_DecimalToString(text, dec, 6, precision, scale, '.', CONV_DECIMAL_PACKED, &length);
        printf("CONV_DecimalToString(size 6) -> \"%s\", length %" PRIu32 "\n", text, length);
        check(status, CONV_WARN_TRUNCATION);

        /* Integer digits that do not fit are an error. */
        status =
            CONV_DecimalToString(text, dec, 3, precision, scale, '.', CONV_DECIMAL_PACKED, &length);
        printf("CONV_DecimalToString(size 3)\n");
        check(status, CONV_ERR_TARGET_TOO_SMALL);

        /* To a binary integer: the fraction goes, with a warning. */
        status = CONV_DecimalToInt32(&whole, dec, precision, scale, CONV_DECIMAL_PACKED);
        printf("CONV_DecimalToInt32 -> %" PRId32 "\n", whole);
        check(status, CONV_WARN_TRUNCATION);

        /*
         * The digit count is kept odd so that digits and sign fill whole bytes: an even count gets
         * a pad 0 behind it that counts as a fraction digit. So "-1.5" is stored as -1.50 and
         * "12" as 12.0; "12" therefore needs CONV_NUM_DECIMAL_POINT like any fraction.
         */
        status = CONV_StringToDecimal(dec, "-1.5", sizeof dec, &precision, &scale,
                                      CONV_NUM_DECIMAL_POINT, '.');
        printf("CONV_StringToDecimal(\"-1.5\") -> %s, precision %" PRIu32 ", scale %" PRIu32 "\n",
               hex(dec, precision / 2 + 1, hexText, sizeof hexText), precision, scale);
        check(status, CONV_OK);
        status = CONV_DecimalToString(text, dec, sizeof text, precision, scale, '.',
                                      CONV_DECIMAL_PACKED, &length);
        printf("  back to text: \"%s\", length %" PRIu32 "\n", text, length);
        check(status, CONV_OK);

        status = CONV_StringToDecimal(dec, "12", sizeof dec, &precision, &scale, 0, '.');
        printf("CONV_StringToDecimal(\"12\", flags 0)\n");
        check(status, CONV_ERR_NOT_A_NUMBER);
        status = CONV_StringToDecimal(dec, "12", sizeof dec, &precision, &scale,
                                      CONV_NUM_DECIMAL_POINT, '.');
        printf("CONV_StringToDecimal(\"12\", CONV_NUM_DECIMAL_POINT) -> %s, precision %" PRIu32
               ", scale %" PRIu32 "\n",
               hex(dec, precision / 2 + 1, hexText, sizeof hexText), precision, scale);
        check(status, CONV_OK);
    }

    printf("-- self-describing packed decimals\n");
    {
        /*
         * Byte 0 holds the number of significant digits, byte 1 the scale (negative when trailing
         * integer zeros were dropped), then the packed digits and the sign. "." and "," are both
         * decimal points. Room: 3 + (digits + 1) / 2 bytes.
         */
        static const char *const texts[] = {"123", "-1.5", "0.05", "100", "0,250"};
        size_t i;

        for (i = 0; i < sizeof texts / sizeof texts[0]; i++) {
            uint8_t bcd[16];
            char hexText[40];
            char back[40];
            uint32_t status = CONV_StringToQLXBCD(bcd, texts[i]);
            uint32_t bytes = 3u + (uint32_t)bcd[0] / 2u;

            printf("CONV_StringToQLXBCD(\"%s\") -> %s\n", texts[i],
                   hex(bcd, bytes, hexText, sizeof hexText));
            check(status, CONV_OK);
            status = CONV_QLXBCDToString(back, bcd);
            printf("  back to text: \"%s\"\n", back);
            check(status, CONV_OK);
        }
        {
            uint8_t bcd[16];
            printf("CONV_StringToQLXBCD(\"1.2.3\")\n");
            check(CONV_StringToQLXBCD(bcd, "1.2.3"), CONV_ERR_NOT_A_NUMBER);
        }
    }

    printf("-- hexadecimal text\n");
    {
        uint8_t bytes[4];
        char text[16];
        uint32_t count = sizeof bytes; /* capacity in, bytes written out */
        uint32_t status = CONV_StringToBinary(bytes, "CAFE01", &count);

        printf("CONV_StringToBinary(\"CAFE01\") -> %" PRIu32 " bytes: %02X %02X %02X\n", count,
               bytes[0], bytes[1], bytes[2]);
        check(status, CONV_OK);
        /* Only upper-case digits are hexadecimal digits here. */
        count = sizeof bytes;
        status = CONV_StringToBinary(bytes, "cafe", &count);
        printf("CONV_StringToBinary(\"cafe\") -> %" PRIu32 " bytes\n", count);
        check(status, CONV_ERR_BYTE_STREAM);
        /* A target too small keeps the whole bytes that fit. */
        status = CONV_BinaryToString(text, bytes, 5, 3);
        printf("CONV_BinaryToString(3 bytes, size 5) -> \"%s\"\n", text);
        check(status, CONV_WARN_TRUNCATION);
    }

    if (failures != 0) {
        printf("%d unexpected results\n", failures);
        return 1;
    }
    return 0;
}
