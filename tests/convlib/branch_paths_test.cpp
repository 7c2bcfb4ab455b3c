// SPDX-License-Identifier: MIT
// Conditions of the conversion library that the feature tests leave on one side only: blanks
// under their flags, texts that the direct readers hand on to the general ones, a locale whose
// decimal point is not ".", empty decimal values, fields of unusual shape in date-time texts, a
// text of more than 4 GiB and the largest UTF-8 capacity.
#include <gtest/gtest.h>
#include <nlssupport/convlib.h>
#include <sys/mman.h>
#include <unistd.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "convlib/dt_test_util.h"
#include "nls/test_locales.h"

namespace {

constexpr uint32_t kPoint = CONV_NUM_DECIMAL_POINT;
constexpr uint32_t kExp = CONV_NUM_EXPONENT;
constexpr uint32_t kNoCheck = CONV_NUM_NO_CHECK;

// ---- Binary text ----

#if UINTPTR_MAX > 0xFFFFFFFFu
// A read-only text of 4097 MiB of "A" and its terminator. One 1 MiB block of a memory file is
// mapped 4097 times in a row, followed by a block of zeros, so the text costs almost no memory.
class HugeText {
  public:
    static constexpr size_t kBlock = size_t{1} << 20;
    static constexpr size_t kBlocks = 4097;

    HugeText() {
        const int fd = memfd_create("nls-huge-text", MFD_CLOEXEC);
        if (fd < 0) {
            return;
        }
        const std::string block(kBlock, 'A');
        const bool filled = write(fd, block.data(), kBlock) == static_cast<ssize_t>(kBlock);
        void *area = mmap(nullptr, (kBlocks + 1) * kBlock, PROT_NONE,
                          MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (filled && area != MAP_FAILED) {
            area_ = static_cast<char *>(area);
            bool mapped = true;
            for (size_t i = 0; i < kBlocks && mapped; ++i) {
                mapped = mmap(area_ + i * kBlock, kBlock, PROT_READ, MAP_SHARED | MAP_FIXED, fd,
                              0) != MAP_FAILED;
            }
            mapped = mapped && mmap(area_ + kBlocks * kBlock, kBlock, PROT_READ,
                                    MAP_PRIVATE | MAP_FIXED | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
            ok_ = mapped;
        }
        close(fd);
    }
    ~HugeText() {
        if (area_ != nullptr) {
            munmap(area_, (kBlocks + 1) * kBlock);
        }
    }
    HugeText(const HugeText &) = delete;
    HugeText &operator=(const HugeText &) = delete;

    bool ok() const {
        return ok_;
    }
    char *text() const {
        return area_;
    }

  private:
    char *area_ = nullptr;
    bool ok_ = false;
};

// A text that overlaps the output is read from a copy; one longer than 4 GiB cannot be copied,
// and nothing is written (the output lies in the read-only text itself).
TEST(BinaryText, OverlappingTextOfMoreThanFourGibibytesCannotBeCopied) {
    const HugeText huge;
    ASSERT_TRUE(huge.ok());
    auto *out = reinterpret_cast<uint8_t *>(huge.text() + HugeText::kBlock);
    uint32_t count = 16;
    EXPECT_EQ(CONV_StringToBinary(out, huge.text(), &count), CONV_ERR_MEMORY);
    EXPECT_EQ(count, 16u);
}
#endif

// ---- Double text ----

TEST(DoubleText, LineFeedIsABlankOnlyWithItsFlag) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "\n2.5",
                                  CONV_NUM_LEADING_BLANKS | CONV_NUM_LF_IS_BLANK | kPoint, '.'),
              CONV_OK);
    EXPECT_EQ(value, 2.5);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "2.5\n",
                                  CONV_NUM_TRAILING_BLANKS | CONV_NUM_LF_IS_BLANK | kPoint, '.'),
              CONV_OK);
    EXPECT_EQ(value, 2.5);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "\n2.5", CONV_NUM_LEADING_BLANKS | kPoint, '.'),
              CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 7.0);
}

TEST(DoubleText, TabIsABlankOnlyWithItsFlag) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "\t2.5",
                                  CONV_NUM_LEADING_BLANKS | CONV_NUM_TAB_IS_BLANK | kPoint, '.'),
              CONV_OK);
    EXPECT_EQ(value, 2.5);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "\t2.5", CONV_NUM_LEADING_BLANKS | kPoint, '.'),
              CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 7.0);
}

// The D flag adds "D" and "d" as exponent letters; a text without an exponent is not affected.
TEST(DoubleText, DExponentFlagLeavesTextWithoutAnExponentAlone) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "2.5", kExp | CONV_NUM_D_EXPONENT | kPoint, '.'),
              CONV_OK);
    EXPECT_EQ(value, 2.5);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "2.5x", kExp | CONV_NUM_D_EXPONENT | kPoint, '.'),
              CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(value, 7.0);
}

TEST(DoubleText, PointWithoutDigitsIsNotANumber) {
    for (const char *text : {".", "-.", " ."}) {
        double value = 7.0;
        EXPECT_EQ(CONV_StringToDouble(&value, text, kPoint | CONV_NUM_LEADING_BLANKS, '.'),
                  CONV_ERR_NOT_A_NUMBER)
            << text;
        EXPECT_EQ(value, 7.0) << text;
    }
}

TEST(DoubleText, ExponentLetterWithoutDigitsIsNotANumber) {
    for (const char *text : {"1e", "1e+", "1E-", "1e x"}) {
        double value = 7.0;
        EXPECT_EQ(CONV_StringToDouble(&value, text, kExp, '.'), CONV_ERR_NOT_A_NUMBER) << text;
        EXPECT_EQ(value, 7.0) << text;
    }
}

// The exponent of a direct reading stops growing at six digits; the value is the same.
TEST(DoubleText, ExponentOfSevenDigitsGivesTheLimitValue) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "0e1234567", kExp, '.'), CONV_OK);
    EXPECT_EQ(value, 0.0);
    EXPECT_FALSE(std::signbit(value));
    EXPECT_EQ(CONV_StringToDouble(&value, "-0e1234567", kExp, '.'), CONV_OK);
    EXPECT_EQ(value, 0.0);
    EXPECT_TRUE(std::signbit(value));
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1e-1234567", kExp, '.'), CONV_WARN_ROUND_TO_ZERO);
    EXPECT_EQ(value, 0.0);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1e1234567", kExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, HUGE_VAL);
}

// A "d" exponent letter, a blank behind the letter or a "," point: the number is read from a
// copy with "e" and "." in their places.
TEST(DoubleText, UnusualExponentOrPointBeyondTheExactPowersIsReadCorrectly) {
    const uint32_t dExp = kExp | CONV_NUM_D_EXPONENT;
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1d30", dExp, '.'), CONV_OK);
    EXPECT_EQ(value, 1e30);
    EXPECT_EQ(CONV_StringToDouble(&value, "1.5D-30", dExp | kPoint, '.'), CONV_OK);
    EXPECT_EQ(value, 1.5e-30);
    EXPECT_EQ(CONV_StringToDouble(&value, "1e 30", kExp, '.'), CONV_OK);
    EXPECT_EQ(value, 1e30);
    EXPECT_EQ(CONV_StringToDouble(&value, "-2,5E 30", kExp | kPoint, ','), CONV_OK);
    EXPECT_EQ(value, -2.5e30);
}

TEST(DoubleText, DExponentBeyondTheRangeOverflows) {
    const uint32_t dExp = kExp | CONV_NUM_D_EXPONENT;
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1d400", dExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, HUGE_VAL);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "-1D400", dExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, -HUGE_VAL);
    // The letter D is allowed, but "e" is used.
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1e400", dExp, '.'), CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, HUGE_VAL);
}

// A tab or line feed behind the exponent letter is dropped when its flag makes it a blank;
// otherwise strtod stops at the letter.
TEST(DoubleText, TabOrLineFeedBehindTheExponentLetterFollowsItsFlag) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\t400", kExp | CONV_NUM_TAB_IS_BLANK, '.'),
              CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, HUGE_VAL);
    value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\n400", kExp | CONV_NUM_LF_IS_BLANK, '.'),
              CONV_ERR_OVERFLOW);
    EXPECT_EQ(value, HUGE_VAL);
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\t5", kNoCheck | CONV_NUM_TAB_IS_BLANK, '.'), CONV_OK);
    EXPECT_EQ(value, 1e5);
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\t5", kNoCheck, '.'), CONV_OK);
    EXPECT_EQ(value, 1.0);
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\n5", kNoCheck | CONV_NUM_LF_IS_BLANK, '.'), CONV_OK);
    EXPECT_EQ(value, 1e5);
    EXPECT_EQ(CONV_StringToDouble(&value, "1E\n5", kNoCheck, '.'), CONV_OK);
    EXPECT_EQ(value, 1.0);
}

TEST(DoubleText, PlusSignBeforeAnUnusualPointIsDropped) {
    double value = 7.0;
    EXPECT_EQ(CONV_StringToDouble(&value, "+1#5", kPoint, '#'), CONV_OK);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(CONV_StringToDouble(&value, "+ 2#25", kPoint, '#'), CONV_OK);
    EXPECT_EQ(value, 2.25);
}

// Under a locale whose decimal point is ",", strtod stops at the "." that the conversion puts
// in place of the caller's point, whether that point was "." or ",". A text without a point is
// not affected.
TEST(DoubleText, TextWithAPointUnderACommaLocaleStopsAtThePoint) {
    ASSERT_EQ(nls_test::EnsureLocale("de_DE.ISO-8859-15"), "");
    const char *old = std::getenv("LOCPATH");
    const std::string oldPath = old != nullptr ? old : "";
    setenv("LOCPATH", nls_test::LocaleDir().c_str(), 1);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.ISO-8859-15"), nullptr);
    double point = 7.0;
    double comma = 7.0;
    double whole = 7.0;
    const uint32_t pointStatus = CONV_StringToDouble(&point, "2.5", kPoint, '.');
    const uint32_t commaStatus = CONV_StringToDouble(&comma, "2,5", kPoint, ',');
    const uint32_t wholeStatus = CONV_StringToDouble(&whole, "25", kPoint, '.');
    std::setlocale(LC_NUMERIC, "C");
    if (old != nullptr) {
        setenv("LOCPATH", oldPath.c_str(), 1);
    } else {
        unsetenv("LOCPATH");
    }
    EXPECT_EQ(pointStatus, CONV_OK);
    EXPECT_EQ(point, 2.0);
    EXPECT_EQ(commaStatus, CONV_OK);
    EXPECT_EQ(comma, 2.0);
    EXPECT_EQ(wholeStatus, CONV_OK);
    EXPECT_EQ(whole, 25.0);
}

// ---- Integer text ----

TEST(Int32Text, EmptyUncheckedTextWithANulPointIsNotANumber) {
    for (const char *text : {"", "-", " + "}) {
        int32_t value = 7;
        EXPECT_EQ(CONV_StringToInt32(&value, text, kNoCheck, '\0'), CONV_ERR_NOT_A_NUMBER) << text;
        EXPECT_EQ(value, 7) << text;
    }
}

// Only a digit behind the zeros of a dropped fraction makes the truncation warning.
TEST(Int32Text, NoDigitBehindTheZerosOfADroppedFractionGivesNoWarning) {
    int32_t value = 7;
    EXPECT_EQ(CONV_StringToInt32(&value, "5.00a", kNoCheck, '.'), CONV_OK);
    EXPECT_EQ(value, 5);
    value = 7;
    EXPECT_EQ(CONV_StringToInt32(&value, "5.00:", kNoCheck, '.'), CONV_OK);
    EXPECT_EQ(value, 5);
    value = 7;
    EXPECT_EQ(CONV_StringToInt32(&value, "5.001", kNoCheck, '.'), CONV_WARN_TRUNCATION);
    EXPECT_EQ(value, 5);
}

// ---- Number text ----

// Without a point character the whole text counts as integer digits, which are never cut.
TEST(FormatNumString, NulPointMakesEveryCharacterAnIntegerDigit) {
    char out[8];
    std::memset(out, 'Z', sizeof out);
    uint32_t length = 99;
    EXPECT_EQ(CONV_FormatNumString(out, "123.5", 5, '\0', &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(std::string(out, sizeof out), "ZZZZZZZZ");
    EXPECT_EQ(CONV_FormatNumString(out, "123.5", 5, '.', &length), CONV_WARN_TRUNCATION);
    EXPECT_EQ(length, 5u);
    EXPECT_EQ(std::string(out, 5), std::string("123.\0", 5));
}

// "-.5" in two bytes: the "-" is written, then no room is left for anything of ".5".
TEST(FormatNumString, NegativeFractionWithRoomForTheSignOnlyIsTooSmall) {
    char out[4];
    std::memset(out, 'Z', sizeof out);
    uint32_t length = 99;
    EXPECT_EQ(CONV_FormatNumString(out, "-.5", 2, '.', &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(std::string(out, sizeof out), "-ZZZ");
}

// ---- Decimal values ----

TEST(DecimalText, LineFeedAndTabAreBlanksOnlyWithTheirFlags) {
    uint8_t out[4];
    std::memset(out, 0xEE, sizeof out);
    uint32_t precision = 99;
    uint32_t scale = 99;
    EXPECT_EQ(CONV_StringToDecimal(out, "\n5", sizeof out, &precision, &scale,
                                   kNoCheck | CONV_NUM_LEADING_BLANKS | CONV_NUM_LF_IS_BLANK, '.'),
              CONV_OK);
    EXPECT_EQ(out[0], 0x5C);
    EXPECT_EQ(out[1], 0xEE);
    EXPECT_EQ(precision, 1u);
    EXPECT_EQ(scale, 0u);
    for (const char *text : {"\n5", "\t5"}) {
        std::memset(out, 0xEE, sizeof out);
        precision = 99;
        scale = 99;
        EXPECT_EQ(CONV_StringToDecimal(out, text, sizeof out, &precision, &scale,
                                       kNoCheck | CONV_NUM_LEADING_BLANKS, '.'),
                  CONV_ERR_NOT_A_NUMBER);
        EXPECT_EQ(out[0], 0x00);
        EXPECT_EQ(out[1], 0xEE);
        EXPECT_EQ(precision, 0u);
        EXPECT_EQ(scale, 0u);
    }
}

// The point was read, but the output was full before a fraction digit: a warning, whatever the
// flags.
TEST(DecimalText, FractionCutBeforeItsFirstDigitIsATruncation) {
    uint8_t out[2] = {0xEE, 0xEE};
    uint32_t precision = 99;
    uint32_t scale = 99;
    EXPECT_EQ(CONV_StringToDecimal(out, "5.5", 1, &precision, &scale, kPoint, '.'),
              CONV_WARN_TRUNCATION);
    EXPECT_EQ(out[0], 0x5C);
    EXPECT_EQ(out[1], 0xEE);
    EXPECT_EQ(precision, 1u);
    EXPECT_EQ(scale, 0u);
}

// A digit may be the point character. Without the point and no-check flags the syntax check
// passes "12534" as plain digits, but the reading takes the "5" for the point: a fraction cut
// for want of room is then a fraction the flags do not allow.
TEST(DecimalText, DigitAsPointCharacterMakesACutFractionNotANumber) {
    uint8_t out[3] = {0xEE, 0xEE, 0xEE};
    uint32_t precision = 99;
    uint32_t scale = 99;
    EXPECT_EQ(CONV_StringToDecimal(out, "12534", 2, &precision, &scale, 0, '5'),
              CONV_ERR_NOT_A_NUMBER);
    EXPECT_EQ(out[0], 0x12);
    EXPECT_EQ(out[1], 0x3C);
    EXPECT_EQ(out[2], 0xEE);
    EXPECT_EQ(precision, 3u);
    EXPECT_EQ(scale, 1u);
}

// Unchecked text with nothing but blanks (or nothing at all) is a positive value without
// digits: only the sign nibble is written.
TEST(DecimalText, EmptyOrBlankUncheckedTextIsASignWithoutDigits) {
    struct Case {
        const char *text;
        uint32_t flags;
    };
    const Case cases[] = {
        {"", kNoCheck},
        {"   ", kNoCheck | CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS},
        {"   ", kNoCheck | CONV_NUM_TRAILING_BLANKS},
    };
    for (const Case &c : cases) {
        uint8_t out[2] = {0xEE, 0xEE};
        uint32_t precision = 99;
        uint32_t scale = 99;
        EXPECT_EQ(CONV_StringToDecimal(out, c.text, sizeof out, &precision, &scale, c.flags, '.'),
                  CONV_OK)
            << '"' << c.text << '"';
        EXPECT_EQ(out[0], CONV_DECIMAL_PLUS);
        EXPECT_EQ(out[1], 0xEE);
        EXPECT_EQ(precision, 0u);
        EXPECT_EQ(scale, 0u);
    }
}

// An unpacked value of precision 0 has no byte at all: its text is empty and reads as 0.
TEST(DecimalValue, UnpackedValueWithoutDigitsIsEmptyTextAndZero) {
    const uint8_t value[1] = {0x35};  // never read
    char out[4];
    std::memset(out, 'Z', sizeof out);
    uint32_t length = 99;
    EXPECT_EQ(
        CONV_DecimalToString(out, value, sizeof out, 0, 0, '.', CONV_DECIMAL_UNPACKED, &length),
        CONV_OK);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(std::string(out, sizeof out), std::string("\0ZZZ", 4));

    int32_t i32 = 7;
    EXPECT_EQ(CONV_DecimalToInt32(&i32, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(i32, 0);
    uint32_t u32 = 7;
    EXPECT_EQ(CONV_DecimalToUInt32(&u32, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(u32, 0u);
    int16_t i16 = 7;
    EXPECT_EQ(CONV_DecimalToInt16(&i16, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(i16, 0);
    uint16_t u16 = 7;
    EXPECT_EQ(CONV_DecimalToUInt16(&u16, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(u16, 0);
    int8_t i8 = 7;
    EXPECT_EQ(CONV_DecimalToInt8(&i8, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(i8, 0);
    uint8_t u8 = 7;
    EXPECT_EQ(CONV_DecimalToUInt8(&u8, value, 0, 0, CONV_DECIMAL_UNPACKED), CONV_OK);
    EXPECT_EQ(u8, 0);
}

// ---- UTF-8 ----

// A capacity of 4294967295 bytes sets no limit of its own, on 32 bits as well.
TEST(Utf16ToUtf8, LargestCapacityIsNoLimit) {
    const uint16_t text[] = {0x41, 0x20AC, 0};
    char out[8];
    std::memset(out, 'Z', sizeof out);
    uint32_t written = 99;
    EXPECT_EQ(CONV_WChar16StrToUTF8(text, -1, out, UINT32_MAX, &written), CONV_OK);
    EXPECT_EQ(written, 4u);
    EXPECT_EQ(std::string(out, sizeof out), "A\xE2\x82\xACZZZZ");
}

// ---- Date-time formatting ----

TEST(DateTimeFormat, ZeroPaddedYearWiderThanItsFieldIsCutToTheField) {
    dt_test::Buffer buffer(16);
    CONV_DateTime record = dt_test::Date(5, 3, 2024);
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_DateTimeToString(buffer.data(), &record, buffer.size, "%02Z|%04Z", nullptr,
                                    &failed, &count),
              CONV_OK);
    EXPECT_EQ(buffer.text(), "20|2024");
    EXPECT_TRUE(buffer.untouchedFrom(8));
    EXPECT_EQ(failed, CONV_FIELD_NONE);
    EXPECT_EQ(count, 2);
}

// A caller's name may lie in the target itself. One that starts ahead of the write position is
// measured and moved as a whole before it is overwritten; one that starts before the write
// position (here in front of the target) is placed like any other text. Both give the same text.
TEST(DateTimeFormat, CallerNameAheadOfTheWritePositionIsMovedWhole) {
    CONV_DateTime record = dt_test::Date(5, 3, 2024);
    const char *names[CONV_NAMES_COUNT] = {};
    uint16_t failed = 7;
    uint16_t count = 7;

    dt_test::Buffer ahead(40);
    std::memcpy(ahead.data() + 20, "Mar.", 5);
    names[CONV_NAMES_SHORT_MONTH + 2] = ahead.data() + 20;
    EXPECT_EQ(
        CONV_DateTimeToString(ahead.data(), &record, ahead.size, "<%W>", names, &failed, &count),
        CONV_OK);
    EXPECT_EQ(ahead.text(), "<Mar.>");
    EXPECT_EQ(std::string(ahead.data() + 7, 13), std::string(13, dt_test::kSentinel));
    EXPECT_EQ(std::string(ahead.data() + 20, 5), std::string("Mar.\0", 5));
    EXPECT_EQ(failed, CONV_FIELD_NONE);
    EXPECT_EQ(count, 1);

    dt_test::Buffer before(40);
    std::memcpy(before.data(), "Mar.", 5);
    names[CONV_NAMES_SHORT_MONTH + 2] = before.data();
    EXPECT_EQ(CONV_DateTimeToString(before.data() + 8, &record, 16, "<%W>", names, &failed, &count),
              CONV_OK);
    EXPECT_EQ(std::string(before.data() + 8), "<Mar.>");
    EXPECT_EQ(std::string(before.data(), 5), std::string("Mar.\0", 5));
    EXPECT_EQ(failed, CONV_FIELD_NONE);
    EXPECT_EQ(count, 1);
}

// Number fields in shapes other than "%02" with a two-digit letter or "%04Z".
TEST(DateTimeFormat, OtherNumberFieldShapesArePlacedByTheirWidthAndFlag) {
    CONV_DateTime record = dt_test::Date(5, 3, 2024);
    record.hour = 13;
    struct Case {
        const char *format;
        const char *text;
    };
    const Case cases[] = {
        {"%02x", "%02x"},                        // no field: literal text
        {"%025D", "0000000000000000000000005"},  // zeros beyond ten places as well
        {"%02Y", "24"},
        {"%02P", "01"},
        {"%04M", "0003"},
        {"%03D", "005"},
    };
    for (const Case &c : cases) {
        dt_test::Buffer buffer(40);
        uint16_t failed = 7;
        uint16_t count = 7;
        EXPECT_EQ(CONV_DateTimeToString(buffer.data(), &record, buffer.size, c.format, nullptr,
                                        &failed, &count),
                  CONV_OK)
            << c.format;
        EXPECT_EQ(buffer.text(), c.text) << c.format;
        EXPECT_TRUE(buffer.untouchedFrom(static_cast<int>(std::strlen(c.text)) + 1)) << c.format;
        EXPECT_EQ(failed, CONV_FIELD_NONE) << c.format;
        EXPECT_EQ(count, std::strcmp(c.format, "%02x") == 0 ? 0 : 1) << c.format;
    }
    // A year of five digits does not fit "%04Z": it is cut to the field like any wider value.
    record.year = 12345;
    dt_test::Buffer buffer(16);
    EXPECT_EQ(CONV_DateTimeToString(buffer.data(), &record, buffer.size, "%04Z", nullptr, nullptr,
                                    nullptr),
              CONV_OK);
    EXPECT_EQ(buffer.text(), "1234");
}

// A default name without a width is copied up to the end of the room.
TEST(DateTimeFormat, DefaultMeridiemCutByTheRoomIsTooSmall) {
    CONV_DateTime record = dt_test::Sample();  // 13:07:09
    dt_test::Buffer buffer(2);
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(
        CONV_DateTimeToString(buffer.data(), &record, buffer.size, "%Q", nullptr, &failed, &count),
        CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(buffer.text(), "P");
    EXPECT_TRUE(buffer.untouchedFrom(2));
    EXPECT_EQ(failed, CONV_FIELD_Q);
    EXPECT_EQ(count, 1);
}

// ---- Date-time parsing ----

TEST(DateTimeParse, SecondTwoDigitFieldOfTheSameLetterIsARescan) {
    CONV_DateTime record = dt_test::Unset();
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_StringToDateTime(&record, "0506", "%02D%02D", 0, nullptr, &failed, &count),
              CONV_ERR_RESCAN);
    EXPECT_EQ(record.day, 5);
    EXPECT_EQ(failed, CONV_FIELD_D);
    EXPECT_EQ(count, 2);
}

// Two characters that are not both digits are read by strtol, which takes a leading blank.
TEST(DateTimeParse, TwoDigitFieldThatIsNotTwoDigitsIsReadByStrtol) {
    CONV_DateTime record = dt_test::Unset();
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_StringToDateTime(&record, " 5", "%02D", 0, nullptr, &failed, &count), CONV_OK);
    EXPECT_EQ(record.day, 5);
    EXPECT_EQ(failed, CONV_FIELD_NONE);
    EXPECT_EQ(count, 1);
    record = dt_test::Unset();
    EXPECT_EQ(CONV_StringToDateTime(&record, "5x", "%02D", 0, nullptr, &failed, &count),
              CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(record.day, CONV_DT_UNSET);
    EXPECT_EQ(failed, CONV_FIELD_D);
    EXPECT_EQ(count, 1);
}

TEST(DateTimeParse, TwelveHourFieldWithAWidthReadsItsDigits) {
    CONV_DateTime record = dt_test::Sample();
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_StringToDateTime(&record, "05", "%2P", 0, nullptr, &failed, &count), CONV_OK);
    EXPECT_EQ(record.hour, 5);
    EXPECT_EQ(record.day, CONV_DT_UNSET);
    EXPECT_EQ(failed, CONV_FIELD_NONE);
    EXPECT_EQ(count, 1);
}

// A month read by a field with a width is stored, then refused as out of range.
TEST(DateTimeParse, MonthBeyondTwelveWithAWidthIsStoredAndRefused) {
    for (const char *format : {"%2M", "%02M"}) {
        CONV_DateTime record = dt_test::Sample();
        uint16_t failed = 7;
        uint16_t count = 7;
        EXPECT_EQ(CONV_StringToDateTime(&record, "13", format, 0, nullptr, &failed, &count),
                  CONV_ERR_MONTH)
            << format;
        EXPECT_EQ(record.month, 13) << format;
        EXPECT_EQ(failed, CONV_FIELD_M) << format;
        EXPECT_EQ(count, 1) << format;
    }
}

TEST(DateTimeParse, EraYearWithoutANamesRecordHasNoSyearText) {
    CONV_DateTime record = dt_test::Sample();
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_StringToDateTime(&record, "1", "%J", 0, nullptr, &failed, &count),
              CONV_ERR_NO_SYEAR);
    EXPECT_EQ(record.year, CONV_DT_UNSET);
    EXPECT_EQ(failed, CONV_FIELD_J);
    EXPECT_EQ(count, 1);
}

// The number check lets a blank follow the sign, strtol does not: nothing is read.
TEST(DateTimeParse, FractionWithABlankBehindItsSignIsAScanMismatch) {
    CONV_DateTime record = dt_test::Unset();
    record.fractionBase = 3;
    uint16_t failed = 7;
    uint16_t count = 7;
    EXPECT_EQ(CONV_StringToDateTime(&record, "- 5", "%3F", 0, nullptr, &failed, &count),
              CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(record.fraction, CONV_DT_UNSET);
    EXPECT_EQ(failed, CONV_FIELD_F);
    EXPECT_EQ(count, 1);
}

}  // namespace
