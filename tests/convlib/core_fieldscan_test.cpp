/* SPDX-License-Identifier: MIT */
// The date-time field reader and the source scanners, reached through the module's internal
// header.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>
#include "convlib/datetime_internal.h"

namespace {

constexpr uint16_t kNone = 65535;

CONV_FieldDescriptor Descriptor(uint16_t flag, uint16_t width) {
    CONV_FieldDescriptor d{};
    d.flag = flag;
    d.width = width;
    d.precision = kNone;
    return d;
}

TEST(CoreCheckNumber, ReadsAtMostThreeDigits) {
    const char *text = "12345";
    const char *position = text;
    uint16_t count = 4;
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), 123);
    EXPECT_EQ(position, text + 3);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), 45);
    EXPECT_EQ(position, text + 5);
    EXPECT_EQ(count, 9);
}

TEST(CoreCheckNumber, NoDigitChangesNothing) {
    const char *text = "x12";
    const char *position = text;
    uint16_t count = 2;
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), -1);
    EXPECT_EQ(position, text);
    EXPECT_EQ(count, 2);
    const char *empty = "";
    position = empty;
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), -1);
    EXPECT_EQ(position, empty);
}

TEST(CoreCheckNumber, LeadingZerosAndShortRuns) {
    const char *text = "007D";
    const char *position = text;
    uint16_t count = 0;
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), 7);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(*position, 'D');
    text = "9.";
    position = text;
    count = 0;
    EXPECT_EQ(conv::CONV_CheckNumber(&position, &count), 9);
    EXPECT_EQ(count, 1);
}

// The field reader is always inlined, so every call of it is a copy with branch counters of
// its own. The tests call it from this one place, so that their cases add up on one copy.
[[gnu::noinline]] int32_t CheckField(const char **position, CONV_FieldDescriptor *descriptor) {
    return conv::CONV_CheckField(position, descriptor);
}

TEST(CoreCheckField, LetterTableIsFixed) {
    EXPECT_STREQ(gCONV_Letter, "DFHIMPQSTUVWYZEJ");
}

TEST(CoreCheckField, FullFieldFillsEveryMember) {
    const char *text = "%-10.3F rest";
    const char *position = text;
    CONV_FieldDescriptor d{};
    EXPECT_EQ(CheckField(&position, &d), 1);
    EXPECT_EQ(position, text);  // the caller advances by the length
    EXPECT_EQ(d.flag, 1);
    EXPECT_EQ(d.width, 10);
    EXPECT_EQ(d.index, 1);
    EXPECT_EQ(d.length, 7);
    EXPECT_EQ(d.precision, 3);
}

struct FieldCase {
    const char *text;
    int32_t result;
    uint16_t flag, width, length, precision;
};

constexpr FieldCase kFieldCases[] = {
    {"%D", 0, 0, kNone, 2, kNone},  {"%J", 15, 0, kNone, 2, kNone}, {"%E", 14, 0, kNone, 2, kNone},
    {"%Y", 12, 0, kNone, 2, kNone}, {"%0D", 0, 2, kNone, 3, kNone}, {"%02M", 4, 2, 2, 4, kNone},
    {"%-D", 0, 1, kNone, 3, kNone}, {"%5S", 7, 0, 5, 3, kNone},     {"%999Z", 13, 0, 999, 5, kNone},
    {"%.9F", 1, 0, kNone, 4, 9},    {"%.1F", 1, 0, kNone, 4, 1},    {"%-007.02F", 1, 1, 7, 9, 2},
    {"%1000D", -1, 0, 0, 0, 0},  // the fourth digit stands where the letter belongs
    {"%.0F", -1, 0, 0, 0, 0},       {"%.10F", -1, 0, 0, 0, 0},      {"%.F", -1, 0, 0, 0, 0},
    {"%-0D", -1, 0, 0, 0, 0},                                // width 0 is no field
    {"%00D", -1, 0, 0, 0, 0},       {"%d", -1, 0, 0, 0, 0},  // letters are case-sensitive
    {"%X", -1, 0, 0, 0, 0},         {"%", -1, 0, 0, 0, 0},          {"%5", -1, 0, 0, 0, 0},
    {"%-", -1, 0, 0, 0, 0},         {"D", -1, 0, 0, 0, 0},          {"", -1, 0, 0, 0, 0},
    {"%--D", -1, 0, 0, 0, 0},
};

TEST(CoreCheckField, TableOfFields) {
    for (const FieldCase &c : kFieldCases) {
        const char *position = c.text;
        CONV_FieldDescriptor d{77, 77, 77, 77, 77};
        EXPECT_EQ(CheckField(&position, &d), c.result) << c.text;
        EXPECT_EQ(position, c.text) << c.text;
        if (c.result >= 0) {
            EXPECT_EQ(d.index, c.result) << c.text;
            EXPECT_EQ(d.flag, c.flag) << c.text;
            EXPECT_EQ(d.width, c.width) << c.text;
            EXPECT_EQ(d.length, c.length) << c.text;
            EXPECT_EQ(d.precision, c.precision) << c.text;
        } else {
            EXPECT_EQ(d.flag, 77) << c.text;  // no field: the descriptor is left as it was
        }
    }
}

TEST(CoreCheckField, EveryLetterGivesItsIndex) {
    for (int i = 0; i < 16; ++i) {
        const std::string text = std::string("%") + gCONV_Letter[i];
        const char *position = text.c_str();
        CONV_FieldDescriptor d{};
        EXPECT_EQ(CheckField(&position, &d), i);
        EXPECT_EQ(d.index, i);
    }
}

TEST(CoreCheckField, DoublePercentMovesToTheSecondPercent) {
    const char *text = "%%D";
    const char *position = text;
    CONV_FieldDescriptor d{};
    EXPECT_EQ(CheckField(&position, &d), -1);
    EXPECT_EQ(position, text + 1);
    // Read again at the second "%": "%D" is a field.
    EXPECT_EQ(CheckField(&position, &d), 0);
}

const char *const kMonths[] = {"Jan", "January", "Feb"};

TEST(CoreScanString, WithoutWidthFirstNameInTableOrderWins) {
    const char *text = "January 5";
    const char *position = text;
    uint16_t index = 99;
    const CONV_FieldDescriptor d = Descriptor(0, kNone);
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_OK);
    EXPECT_EQ(index, 0);
    EXPECT_STREQ(position, "uary 5");
}

TEST(CoreScanString, WithoutWidthMatchesLaterNames) {
    const char *text = "Feb";
    const char *position = text;
    uint16_t index = 99;
    const CONV_FieldDescriptor d = Descriptor(0, kNone);
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_OK);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(position, text + 3);
}

TEST(CoreScanString, MismatchCasesLeaveThePosition) {
    const CONV_FieldDescriptor d = Descriptor(0, kNone);
    for (const char *text : {"jan", "Ja", "", "Mar"}) {
        const char *position = text;
        uint16_t index = 99;
        EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_ERR_SCAN_MISMATCH)
            << text;
        EXPECT_EQ(position, text);
        EXPECT_EQ(index, 99);
    }
    const char *text = "Jan";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 0, &d), CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, -1, &d), CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(position, text);
}

TEST(CoreScanString, NullTableAndNullSlotsNameNothing) {
    const char *const slots[] = {nullptr, "Feb"};
    for (uint16_t width : {kNone, uint16_t{3}}) {
        const CONV_FieldDescriptor d = Descriptor(1, width);
        const char *text = "Feb";
        const char *position = text;
        uint16_t index = 99;
        EXPECT_EQ(conv::CONV_ScanString(&position, &index, slots, 2, &d), CONV_OK);
        EXPECT_EQ(index, 1);
        EXPECT_EQ(position, text + 3);
        position = text;
        EXPECT_EQ(conv::CONV_ScanString(&position, &index, nullptr, 5, &d), CONV_ERR_SCAN_MISMATCH);
        EXPECT_EQ(position, text);
    }
}

TEST(CoreScanString, LeftJustifiedFieldComparesItsStart) {
    const CONV_FieldDescriptor d = Descriptor(1, 5);
    const char *text = "Feb  x";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_OK);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(position, text + 5);  // past the whole field
    // "Janua" matches "Jan" over its three characters first.
    text = "Januax";
    position = text;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_OK);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(position, text + 5);
}

TEST(CoreScanString, RightJustifiedFieldComparesItsEnd) {
    for (uint16_t flag : {uint16_t{0}, uint16_t{2}}) {
        const CONV_FieldDescriptor d = Descriptor(flag, 5);
        const char *text = "  Febx";
        const char *position = text;
        uint16_t index = 99;
        EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_OK);
        EXPECT_EQ(index, 2);
        EXPECT_EQ(position, text + 5);
        text = "Feb  ";  // at the start, not at the end
        position = text;
        EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_ERR_SCAN_MISMATCH);
        EXPECT_EQ(position, text);
    }
    // A name longer than the width is compared over the width.
    const CONV_FieldDescriptor narrow = Descriptor(0, 2);
    const char *names[] = {"January"};
    const char *text = "Ja";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, names, 1, &narrow), CONV_OK);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(position, text + 2);
}

TEST(CoreScanString, WidthBeyondTheSourceIsFormatLeft) {
    const CONV_FieldDescriptor d = Descriptor(1, 5);
    const char *text = "Jan";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_ERR_FORMAT_LEFT);
    EXPECT_EQ(position, text);
}

TEST(CoreScanString, UnknownFlagFails) {
    const CONV_FieldDescriptor d = Descriptor(3, 3);
    const char *text = "Jan";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_ERR_SCAN_MISMATCH);
    EXPECT_EQ(position, text);
}

TEST(CoreScanString, ComparisonIsCaseSensitive) {
    const CONV_FieldDescriptor d = Descriptor(1, 3);
    const char *text = "JAN";
    const char *position = text;
    uint16_t index = 99;
    EXPECT_EQ(conv::CONV_ScanString(&position, &index, kMonths, 3, &d), CONV_ERR_SCAN_MISMATCH);
}

TEST(CoreScanNumber, WithWidthTakesExactlyThatMany) {
    const CONV_FieldDescriptor d = Descriptor(0, 4);
    const char *text = "20261121";
    const char *position = text;
    int32_t value = 0;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK);
    EXPECT_EQ(value, 2026);
    EXPECT_EQ(position, text + 4);
}

TEST(CoreScanNumber, WithWidthBlanksAndSignInsideTheFieldAreAccepted) {
    const CONV_FieldDescriptor d = Descriptor(0, 3);
    for (const char *text : {" -5", "+12", "  7", "-05"}) {
        const char *position = text;
        int32_t value = 0;
        EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK) << text;
        EXPECT_EQ(value, std::atoi(text)) << text;
        EXPECT_EQ(position, text + 3);
    }
}

TEST(CoreScanNumber, WithWidthLeftoverCharactersAreAMismatch) {
    const CONV_FieldDescriptor d = Descriptor(0, 3);
    for (const char *text : {"1 2", "12 ", "ab1", "   ", "1.5"}) {
        const char *position = text;
        int32_t value = 42;
        EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_ERR_SCAN_MISMATCH) << text;
        EXPECT_EQ(position, text);
        EXPECT_EQ(value, 42);
    }
}

TEST(CoreScanNumber, WithWidthShortSourceIsFormatLeft) {
    const CONV_FieldDescriptor d = Descriptor(0, 3);
    const char *text = "12";
    const char *position = text;
    int32_t value = 42;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_ERR_FORMAT_LEFT);
    EXPECT_EQ(position, text);
    EXPECT_EQ(value, 42);
}

TEST(CoreScanNumber, WidestFieldOf999Characters) {
    std::string text(998, '0');
    text += "7x";
    const CONV_FieldDescriptor d = Descriptor(0, 999);
    const char *position = text.c_str();
    int32_t value = 0;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(*position, 'x');
}

TEST(CoreScanNumber, WithoutWidthReadsAsFarAsItGoes) {
    const CONV_FieldDescriptor d = Descriptor(0, kNone);
    const char *text = "  -123/45";
    const char *position = text;
    int32_t value = 0;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK);
    EXPECT_EQ(value, -123);
    EXPECT_EQ(*position, '/');
    for (const char *bad : {"", "x1", " ", "-"}) {
        position = bad;
        value = 42;
        EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_ERR_SCAN_MISMATCH) << bad;
        EXPECT_EQ(position, bad);
        EXPECT_EQ(value, 42);
    }
}

TEST(CoreScanNumber, ValuesBeyondThirtyTwoBitsStopAtTheLimits) {
    const CONV_FieldDescriptor d = Descriptor(0, kNone);
    const char *text = "99999999999";
    const char *position = text;
    int32_t value = 0;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK);
    EXPECT_EQ(value, INT32_MAX);
    EXPECT_EQ(position, text + 11);
    text = "-99999999999";
    position = text;
    EXPECT_EQ(conv::CONV_ScanNumber(&position, &value, &d), CONV_OK);
    EXPECT_EQ(value, INT32_MIN);
}

}  // namespace
