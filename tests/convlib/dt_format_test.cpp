/* SPDX-License-Identifier: MIT */
// Date-time formatting: the format language, every letter with flags, widths and precision, the
// placing of a field when the room runs out, the record lying inside the target, and the
// measuring of a format.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <new>
#include <string>

#include <nlssupport/convlib.h>
#include "convlib/datetime_internal.h"
#include "dt_test_util.h"

namespace {

using dt_test::Buffer;
using dt_test::Date;
using dt_test::EraNames;
using dt_test::Sample;
using dt_test::Unset;

struct Result {
    uint32_t status;
    std::string text;
    uint16_t failed;
    uint16_t count;
    bool tailUntouched;  // every byte behind the terminator still holds the sentinel
};

Result Format(CONV_DateTime record, const char *format, int size = 100,
              const char *const *names = nullptr) {
    Buffer buffer(size);
    Result r{};
    r.failed = 7777;
    r.count = 7777;
    r.status =
        CONV_DateTimeToString(buffer.data(), &record, size, format, names, &r.failed, &r.count);
    r.text = buffer.text();
    r.tailUntouched = buffer.untouchedFrom(static_cast<int>(r.text.size()) + 1);
    return r;
}

struct FormatCase {
    const char *format;
    const char *expected;
};

TEST(DateTimeToString, NumericFieldsFlagsAndWidths) {
    const FormatCase cases[] = {
        {"%04Z-%02M-%02D", "2009-03-05"},
        {"%D.%M.%Z", "5.3.2009"},
        {"%-5D|", "5    |"},
        {"%5D", "    5"},
        {"%05D", "00005"},
        {"%0D", "5"},  // a flag without a width has no effect
        {"%-D", "5"},
        {"%H:%I:%S", "13:7:9"},
        {"%02H:%02I:%02S", "13:07:09"},
        {"%-3I|%3S|%03M", "7  |  9|003"},
        {"%Y", "9"},
        {"%02Y", "09"},
        {"%2Z", "20"},  // cut to the width, keeping the left part
        {"%1D", "5"},
        {"%P %Q", "1 PM"},
        {"%T %U", "Thursday Thu"},
        {"%V %W", "March MAR"},
        {"%3V", "Mar"},
        {"%-8W|", "MAR     |"},
        {"%05W", "00MAR"},
        {"%F", "0"},
        {"%999D", nullptr},  // checked separately below
    };
    for (const FormatCase &c : cases) {
        if (c.expected == nullptr) {
            continue;
        }
        const Result r = Format(Sample(), c.format);
        EXPECT_EQ(r.status, CONV_OK) << c.format;
        EXPECT_EQ(r.text, c.expected) << c.format;
        EXPECT_EQ(r.failed, CONV_FIELD_NONE) << c.format;
        EXPECT_TRUE(r.tailUntouched) << c.format;
    }
}

TEST(DateTimeToString, WidestFieldIsNineHundredNinetyNine) {
    const Result r = Format(Sample(), "%999D", 1100);
    EXPECT_EQ(r.status, CONV_OK);
    ASSERT_EQ(r.text.size(), 999u);
    EXPECT_EQ(r.text, std::string(998, ' ') + "5");
}

TEST(DateTimeToString, TextsThatAreNoFieldAreCopied) {
    const FormatCase cases[] = {
        {"%%", "%"},        {"%X", "%X"},     {"%00D", "%00D"},     {"%.0F", "%.0F"},
        {"%.10F", "%.10F"}, {"%.F", "%.F"},   {"%1000D", "%1000D"}, {"%-0D", "%-0D"},
        {"%d", "%d"},       {"100%", "100%"}, {"%%D", "%D"},        {"%%%D", "%5"},
        {"a%%b", "a%b"},    {"%-", "%-"},     {"%5", "%5"},         {"", ""},
    };
    for (const FormatCase &c : cases) {
        const Result r = Format(Sample(), c.format);
        EXPECT_EQ(r.status, CONV_OK) << c.format;
        EXPECT_EQ(r.text, c.expected) << c.format;
        EXPECT_TRUE(r.tailUntouched) << c.format;
    }
    EXPECT_EQ(Format(Sample(), "%%").count, 0);
    EXPECT_EQ(Format(Sample(), "%%%D").count, 1);
}

TEST(DateTimeToString, YearWithinTheCenturyTruncates) {
    struct Case {
        int year;
        const char *expected;
    };
    const Case cases[] = {{1994, "94"}, {2005, "5"}, {-5, "-5"},    {-1994, "-94"},
                          {2000, "0"},  {0, "0"},    {32767, "67"}, {-32767, "-67"}};
    for (const Case &c : cases) {
        EXPECT_EQ(Format(Date(1, 1, c.year), "%Y").text, c.expected) << c.year;
    }
}

TEST(DateTimeToString, ZeroFlagPadsWhateverTheText) {
    EXPECT_EQ(Format(Date(1, 5, -5), "%04Z").text, "00-5");
    EXPECT_EQ(Format(Date(1, 5, -5), "%05V").text, "00May");
    EXPECT_EQ(Format(Date(1, 5, -32767), "%Z").text, "-32767");
}

TEST(DateTimeToString, TwelveHourClockAndMeridiem) {
    struct Case {
        int hour;
        const char *p;
        const char *q;
    };
    const Case cases[] = {{0, "12", "AM"}, {1, "1", "AM"},   {11, "11", "AM"}, {12, "12", "PM"},
                          {13, "1", "PM"}, {23, "11", "PM"}, {24, "12", "PM"}};
    for (const Case &c : cases) {
        CONV_DateTime r = Unset();
        r.hour = static_cast<int16_t>(c.hour);
        EXPECT_EQ(Format(r, "%P").text, c.p) << c.hour;
        EXPECT_EQ(Format(r, "%Q").text, c.q) << c.hour;
    }
}

TEST(DateTimeToString, ValuesThatCannotBeWrittenStopWithTheLettersStatus) {
    struct Case {
        const char *format;
        int16_t CONV_DateTime::*field;
        int16_t value;
        uint32_t status;
        uint16_t failed;
    };
    const Case cases[] = {
        {"%D", &CONV_DateTime::day, 0, CONV_ERR_DAY, 0},
        {"%D", &CONV_DateTime::day, 32, CONV_ERR_DAY, 0},
        {"%D", &CONV_DateTime::day, CONV_DT_UNSET, CONV_ERR_DAY, 0},
        {"%H", &CONV_DateTime::hour, 25, CONV_ERR_HOUR24, 2},
        {"%H", &CONV_DateTime::hour, -1, CONV_ERR_HOUR24, 2},
        {"%I", &CONV_DateTime::minute, 60, CONV_ERR_MINUTE, 3},
        {"%M", &CONV_DateTime::month, 13, CONV_ERR_MONTH, 4},
        {"%M", &CONV_DateTime::month, 0, CONV_ERR_MONTH, 4},
        {"%P", &CONV_DateTime::hour, 25, CONV_ERR_HOUR24, 5},
        {"%Q", &CONV_DateTime::hour, CONV_DT_UNSET, CONV_ERR_HOUR24, 6},
        {"%S", &CONV_DateTime::second, 60, CONV_ERR_SECOND, 7},
        {"%T", &CONV_DateTime::dayOfWeek, 7, CONV_ERR_DAY_OF_WEEK, 8},
        {"%U", &CONV_DateTime::dayOfWeek, -1, CONV_ERR_DAY_OF_WEEK, 9},
        {"%V", &CONV_DateTime::month, 13, CONV_ERR_MONTH, 10},
        {"%W", &CONV_DateTime::month, 0, CONV_ERR_MONTH, 11},
        {"%Y", &CONV_DateTime::year, CONV_DT_UNSET, CONV_ERR_YEAR, 12},
        {"%Z", &CONV_DateTime::year, CONV_DT_UNSET, CONV_ERR_YEAR, 13},
        {"%J", &CONV_DateTime::year, CONV_DT_UNSET, CONV_ERR_YEAR, 15},
    };
    for (const Case &c : cases) {
        CONV_DateTime record = Sample();
        record.*c.field = c.value;
        const std::string format = std::string("ab") + c.format + "cd%D";
        const Result r = Format(record, format.c_str());
        EXPECT_EQ(r.status, c.status) << c.format;
        EXPECT_EQ(r.failed, c.failed) << c.format;
        EXPECT_EQ(r.count, 1) << c.format;
        EXPECT_EQ(r.text, "ab") << c.format;  // nothing of the failing field is written
        EXPECT_TRUE(r.tailUntouched) << c.format;
    }
}

TEST(DateTimeToString, FieldCountCountsEveryFieldMet) {
    const Result r = Format(Sample(), "%D.%M.%Z %H");
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.count, 4);
    EXPECT_EQ(r.failed, CONV_FIELD_NONE);
    CONV_DateTime record = Sample();
    record.hour = 30;
    const Result bad = Format(record, "%D.%M.%Z %H %I");
    EXPECT_EQ(bad.status, CONV_ERR_HOUR24);
    EXPECT_EQ(bad.count, 4);
    EXPECT_EQ(bad.failed, CONV_FIELD_H);
    EXPECT_EQ(bad.text, "5.3.2009 ");
}

TEST(DateTimeToString, NullResultAddressesAreAllowed) {
    char out[32];
    CONV_DateTime record = Sample();
    EXPECT_EQ(CONV_DateTimeToString(out, &record, sizeof out, "%D", nullptr, nullptr, nullptr),
              CONV_OK);
    EXPECT_STREQ(out, "5");
    record.day = 0;
    EXPECT_EQ(CONV_DateTimeToString(out, &record, sizeof out, "x%D", nullptr, nullptr, nullptr),
              CONV_ERR_DAY);
    EXPECT_STREQ(out, "x");
}

// ---- Fraction ----

CONV_DateTime Fraction(int32_t value, int16_t base) {
    CONV_DateTime r = Sample();
    r.fraction = value;
    r.fractionBase = base;
    return r;
}

TEST(DateTimeToString, FractionWithBaseIsZeroFilledAndPaddedToThePrecision) {
    struct Case {
        int32_t value;
        int16_t base;
        const char *format;
        const char *expected;
    };
    const Case cases[] = {
        {5, 3, "%F", "005"},
        {5, 3, "%.6F", "005000"},
        {123, 3, "%.6F", "123000"},
        {123456, 6, "%.3F", "123456"},  // longer than the precision: left as it is
        {123, 3, "%2F", "12"},          // cut to the width silently
        {5, 3, "%-9.9F", "005000000"},
        {5, 3, "%9F", "      005"},
        {5, 3, "%09F", "000000005"},
        {5, 3, "%-6F|", "005   |"},
        {0, 1, "%F", "0"},
        {999999999, 9, "%F", "999999999"},
        {5000000, CONV_DT_UNSET, "%F", "5000000"},    // nanoseconds, no leading zeros
        {5000000, CONV_DT_UNSET, "%.9F", "5000000"},  // precision not applied
        {5000000, CONV_DT_UNSET, "%-9.9F", "5000000  "},
        {0, CONV_DT_UNSET, "%F", "0"},
    };
    for (const Case &c : cases) {
        const Result r = Format(Fraction(c.value, c.base), c.format);
        EXPECT_EQ(r.status, CONV_OK) << c.format << " " << c.value;
        EXPECT_EQ(r.text, c.expected) << c.format << " " << c.value;
        EXPECT_TRUE(r.tailUntouched);
    }
}

TEST(DateTimeToString, FractionErrors) {
    struct Case {
        int32_t value;
        int16_t base;
        uint32_t status;
    };
    const Case cases[] = {
        {0, 0, CONV_ERR_FRACTION_BASE},
        {0, 10, CONV_ERR_FRACTION_BASE},
        {0, -1, CONV_ERR_FRACTION_BASE},
        {-1, CONV_DT_UNSET, CONV_ERR_FRACTION},
        {1000000000, CONV_DT_UNSET, CONV_ERR_FRACTION},
        {CONV_DT_UNSET, CONV_DT_UNSET, CONV_ERR_FRACTION},
        {1000, 3, CONV_ERR_FRACTION},
        {-1, 3, CONV_ERR_FRACTION},
        {10, 1, CONV_ERR_FRACTION},
    };
    for (const Case &c : cases) {
        const Result r = Format(Fraction(c.value, c.base), "t%F");
        EXPECT_EQ(r.status, c.status) << c.value << " " << c.base;
        EXPECT_EQ(r.failed, CONV_FIELD_F);
        EXPECT_EQ(r.text, "t");
    }
}

TEST(DateTimeToString, FractionCutByTheRoomIsOnlyAWarning) {
    Result r = Format(Fraction(123, 3), "%F", 3);  // room for two characters
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.text, "12");
    EXPECT_EQ(r.failed, CONV_FIELD_F);
    EXPECT_TRUE(r.tailUntouched);
    r = Format(Fraction(5, 3), "x%-9.9Fy", 6);
    EXPECT_EQ(r.status, CONV_WARN_TRUNCATION);
    EXPECT_EQ(r.text, "x0050");
    // Any other field cut by the room is an error.
    r = Format(Sample(), "%Z", 3);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(r.text, "20");
    EXPECT_EQ(r.failed, CONV_FIELD_Z);
}

// ---- Running out of room ----

TEST(DateTimeToString, TargetOfOneByteHoldsOnlyTheTerminator) {
    const Result r = Format(Sample(), "%D", 1);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(r.text, "");
    EXPECT_EQ(r.count, 0);
    EXPECT_EQ(r.failed, CONV_FIELD_NONE);
    EXPECT_TRUE(r.tailUntouched);
    EXPECT_EQ(Format(Sample(), "", 1).status, CONV_OK);
}

TEST(DateTimeToString, TargetSizeZeroOrBelowGetsOnlyTheTerminatorAtItsFirstByte) {
    for (int size : {0, -1, -100, INT32_MIN}) {
        for (const char *format : {"%D", "x", ""}) {
            Buffer buffer(1);
            CONV_DateTime record = Sample();
            record.era = 2;
            uint16_t failed = 1;
            uint16_t count = 1;
            // No room for text: an unfinished format is a target too small, an empty one is done.
            EXPECT_EQ(CONV_DateTimeToString(buffer.data(), &record, size, format, nullptr, &failed,
                                            &count),
                      *format == '\0' ? CONV_OK : CONV_ERR_TARGET_TOO_SMALL)
                << size << " " << format;
            EXPECT_EQ(buffer.data()[0], '\0') << size;
            EXPECT_TRUE(buffer.untouchedFrom(1)) << size;
            EXPECT_EQ(failed, CONV_FIELD_NONE);
            EXPECT_EQ(count, 0);
            EXPECT_EQ(record.era, CONV_DT_UNSET);
        }
    }
}

TEST(DateTimeToString, RoomRunningOutAtEverySizeOfAMixedFormat) {
    // Literal characters, blank-padded, zero-padded and left-justified fields and names.
    const char *format = "<%5D|%-4M|%03H:%V %Z>";
    const std::string full = "<    5|3   |013:March 2009>";
    ASSERT_EQ(Format(Sample(), format).text, full);
    // Field boundaries in the text, with the index of the field that starts there.
    struct Span {
        size_t start, end;
        uint16_t index;
    };
    const Span fields[] = {{1, 6, 0}, {7, 11, 4}, {12, 15, 2}, {16, 21, 10}, {22, 26, 13}};
    for (int size = 1; size <= static_cast<int>(full.size()) + 1; ++size) {
        const Result r = Format(Sample(), format, size);
        const size_t room = static_cast<size_t>(size - 1);
        EXPECT_EQ(r.text, full.substr(0, room)) << size;
        EXPECT_TRUE(r.tailUntouched) << size;
        if (room >= full.size()) {
            EXPECT_EQ(r.status, CONV_OK);
            continue;
        }
        EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL) << size;
        uint16_t expectedFailed = 65535;  // ran out between fields or in a literal
        for (const Span &f : fields) {
            if (room > f.start && room < f.end) {
                expectedFailed = f.index;
            }
        }
        EXPECT_EQ(r.failed, expectedFailed) << size;
    }
}

TEST(DateTimeToString, EveryLetterWithEveryFlagAndWidthCutAtEverySize) {
    const EraNames names;
    CONV_DateTime record = Sample();
    record.fraction = 42;
    record.fractionBase = 4;
    const char *flags[] = {"", "-", "0"};
    const char *widths[] = {"", "1", "3", "12"};
    const char *precisions[] = {"", ".7"};
    long checked = 0;
    for (const char letter : std::string("DFHIMPQSTUVWYZEJ")) {
        for (const char *flag : flags) {
            for (const char *width : widths) {
                for (const char *precision : precisions) {
                    const std::string field = std::string("%") + flag + width + precision + letter;
                    const std::string format = "<" + field + ">";
                    const Result whole = Format(record, format.c_str(), 100, names.get());
                    ASSERT_EQ(whole.status, CONV_OK) << format;
                    ASSERT_EQ(whole.count, 1);
                    const std::string full = whole.text;
                    const size_t fieldEnd = full.size() - 1;  // position of ">"
                    ASSERT_EQ(full.front(), '<');
                    ASSERT_EQ(full.back(), '>');
                    if (*width != '\0') {
                        ASSERT_EQ(fieldEnd - 1, static_cast<size_t>(atoi(width))) << format;
                    }
                    const uint16_t index =
                        static_cast<uint16_t>(std::string("DFHIMPQSTUVWYZEJ").find(letter));
                    for (int size = 1; size <= static_cast<int>(full.size()); ++size) {
                        const Result r = Format(record, format.c_str(), size, names.get());
                        const size_t room = static_cast<size_t>(size - 1);
                        ASSERT_EQ(r.text, full.substr(0, room)) << format << " " << size;
                        ASSERT_TRUE(r.tailUntouched) << format << " " << size;
                        if (room > 1 && room < fieldEnd) {
                            // Cut inside the field.
                            ASSERT_EQ(r.status, letter == 'F' ? CONV_WARN_TRUNCATION
                                                              : CONV_ERR_TARGET_TOO_SMALL)
                                << format << " " << size;
                            ASSERT_EQ(r.failed, index);
                        } else {
                            // Ran out between fields (before the field or before ">").
                            ASSERT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL) << format << size;
                            ASSERT_EQ(r.failed, CONV_FIELD_NONE);
                        }
                        ++checked;
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 1000);
}

TEST(DateTimeToString, FormatExhaustedExactlyWhenTheRoomEndsIsSuccess) {
    EXPECT_EQ(Format(Sample(), "%D", 2).status, CONV_OK);
    EXPECT_EQ(Format(Sample(), "ab", 3).status, CONV_OK);
    const Result r = Format(Sample(), "%D.%M", 2);
    EXPECT_EQ(r.status, CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(r.text, "5");
    EXPECT_EQ(r.failed, CONV_FIELD_NONE);
    EXPECT_EQ(r.count, 1);
}

// ---- Placing one field ----

struct PutCase {
    const char *text;
    uint16_t flag;
    uint16_t width;
    int32_t room;
    const char *expected;
    uint32_t status;
};

TEST(PutInBuffer, WidthFlagAndRoom) {
    const PutCase cases[] = {
        {"abc", 0, 65535, 5, "abc", CONV_OK},
        {"abc", 0, 65535, 3, "abc", CONV_OK},
        {"abc", 0, 65535, 2, "ab", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 0, 65535, 0, "", CONV_ERR_TARGET_TOO_SMALL},
        {"", 0, 65535, 0, "", CONV_OK},
        {"abc", 0, 5, 10, "  abc", CONV_OK},
        {"abc", 1, 5, 10, "abc  ", CONV_OK},
        {"abc", 2, 5, 5, "00abc", CONV_OK},
        {"abcd", 0, 2, 10, "ab", CONV_OK},
        {"abcd", 1, 2, 10, "ab", CONV_OK},
        {"abcd", 2, 2, 2, "ab", CONV_OK},
        {"abc", 1, 5, 4, "abc ", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 1, 5, 2, "ab", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 0, 5, 4, "  ab", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 0, 5, 3, "  a", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 0, 5, 2, "  ", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 2, 5, 1, "0", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 2, 5, 4, "00ab", CONV_ERR_TARGET_TOO_SMALL},
        {"abcdef", 2, 4, 3, "abc", CONV_ERR_TARGET_TOO_SMALL},
        {"abc", 0, 5, 0, "", CONV_ERR_TARGET_TOO_SMALL},
    };
    for (const PutCase &c : cases) {
        char out[32];
        memset(out, dt_test::kSentinel, sizeof out);
        char *position = out + 1;
        int32_t room = c.room;
        CONV_FieldDescriptor field{};
        field.flag = c.flag;
        field.width = c.width;
        field.precision = 65535;
        EXPECT_EQ(conv::CONV_PutInBuffer(&position, &room, c.text, &field), c.status)
            << c.text << " " << c.width << " " << c.room;
        const size_t n = strlen(c.expected);
        EXPECT_EQ(std::string(out + 1, n), c.expected) << c.text << " " << c.width;
        EXPECT_EQ(position, out + 1 + n);
        EXPECT_EQ(room, c.room - static_cast<int32_t>(n));
        EXPECT_EQ(out[0], dt_test::kSentinel);
        for (size_t i = n + 1; i < sizeof out; ++i) {
            ASSERT_EQ(out[i], dt_test::kSentinel) << c.text << " " << c.width << " " << c.room;
        }
    }
}

// ---- Names ----

TEST(DateTimeToString, CallerNamesWithNullSlotsFallBackSlotBySlot) {
    const char *names[CONV_NAMES_COUNT] = {};
    names[CONV_NAMES_DAY + 4] = "Donnerstag";
    names[CONV_NAMES_SHORT_DAY + 4] = "Do";
    names[CONV_NAMES_MONTH + 2] = "Maerz";
    names[CONV_NAMES_MERIDIEM + 1] = "nachm.";
    const Result r = Format(Sample(), "%T %U %V %W %Q", 100, names);
    EXPECT_EQ(r.status, CONV_OK);
    EXPECT_EQ(r.text, "Donnerstag Do Maerz MAR nachm.");
    CONV_DateTime morning = Sample();
    morning.hour = 9;
    morning.dayOfWeek = 0;
    EXPECT_EQ(Format(morning, "%Q %T", 100, names).text, "AM Sunday");
}

TEST(DateTimeToString, LongNamesAreNotLimitedByScratchSpace) {
    const std::string longName(1500, 'n');
    const char *names[CONV_NAMES_COUNT] = {};
    names[CONV_NAMES_MONTH + 2] = longName.c_str();
    Buffer buffer(1100);
    CONV_DateTime record = Sample();
    uint16_t failed = 0;
    EXPECT_EQ(CONV_DateTimeToString(buffer.data(), &record, 1100, "%V", names, &failed, nullptr),
              CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(buffer.text(), std::string(1099, 'n'));
    EXPECT_TRUE(buffer.untouchedFrom(1100));
    EXPECT_EQ(failed, CONV_FIELD_V);
}

// ---- Eras ----

TEST(DateTimeToString, EraNameAndYearAtTheEraBoundaries) {
    const EraNames names;
    struct Case {
        int d, m, y;
        const char *expected;
    };
    const Case cases[] = {
        {8, 9, 1868, "Meiji Gannen"},   {31, 12, 1868, "Meiji Gannen"},
        {1, 1, 1869, "Meiji 2"},        {30, 7, 1912, "Meiji 45"},
        {31, 7, 1912, "Taisho Gannen"}, {25, 12, 1926, "Taisho 15"},
        {26, 12, 1926, "Showa Gannen"}, {7, 1, 1989, "Showa 64"},
        {8, 1, 1989, "Heisei Gannen"},  {1, 1, 1990, "Heisei 2"},
        {1, 5, 2019, "Heisei 31"},
    };
    for (const Case &c : cases) {
        CONV_DateTime record = Date(c.d, c.m, c.y);
        uint16_t failed = 0;
        char out[64];
        EXPECT_EQ(
            CONV_DateTimeToString(out, &record, sizeof out, "%E %J", names.get(), &failed, nullptr),
            CONV_OK)
            << c.expected;
        EXPECT_STREQ(out, c.expected);
        int16_t era = -1;
        ASSERT_EQ(conv::GetEra(c.d, c.m, c.y, &era), CONV_OK);
        EXPECT_EQ(record.era, era) << c.expected;  // the E field leaves its era in the record
    }
}

TEST(DateTimeToString, JWithoutEraWritesTheGregorianYear) {
    const EraNames names;
    CONV_DateTime record = Date(8, 1, 1989);
    record.era = 3;  // reset at the start: only an E field of the same call sets it
    char out[32];
    EXPECT_EQ(CONV_DateTimeToString(out, &record, sizeof out, "%J", names.get(), nullptr, nullptr),
              CONV_OK);
    EXPECT_STREQ(out, "1989");
    EXPECT_EQ(record.era, CONV_DT_UNSET);
    // Gregorian year 1 is the first year as well.
    record = Date(1, 1, 1);
    EXPECT_EQ(CONV_DateTimeToString(out, &record, sizeof out, "%J", names.get(), nullptr, nullptr),
              CONV_OK);
    EXPECT_STREQ(out, "Gannen");
    EXPECT_EQ(Format(record, "%J").status, CONV_ERR_NO_SYEAR);
    EXPECT_EQ(Format(record, "%J").failed, CONV_FIELD_J);
}

TEST(DateTimeToString, EraFailures) {
    const EraNames names;
    const char *noEraNames[CONV_NAMES_COUNT] = {};
    noEraNames[CONV_NAMES_SYEAR] = "Gannen";
    const char *noSyear[CONV_NAMES_COUNT] = {};
    noSyear[CONV_NAMES_ERA] = "Meiji";
    noSyear[CONV_NAMES_ERA + 1] = "Taisho";
    noSyear[CONV_NAMES_ERA + 2] = "Showa";
    noSyear[CONV_NAMES_ERA + 3] = "Heisei";
    struct Case {
        CONV_DateTime record;
        const char *const *names;
        uint32_t status;
        uint16_t failed;
    };
    const Case cases[] = {
        {Date(7, 9, 1868), names.get(), CONV_ERR_ERA_RANGE, 14},
        {Date(1, 1, 1000), names.get(), CONV_ERR_ERA_RANGE, 14},
        {Date(0, 1, 2000), names.get(), CONV_ERR_DAY, 14},
        {Date(1, 13, 2000), names.get(), CONV_ERR_MONTH, 14},
        {Date(1, 1, CONV_DT_UNSET), names.get(), CONV_ERR_YEAR, 14},
        {Date(1, 1, 2000), nullptr, CONV_ERR_NO_ERA_NAMES, 14},
        {Date(1, 1, 2000), noEraNames, CONV_ERR_NO_ERA_NAMES, 14},
        {Date(8, 1, 1989), noSyear, CONV_ERR_NO_SYEAR, 15},
        {Date(7, 1, 1989), noSyear, CONV_OK, 65535},
    };
    for (const Case &c : cases) {
        const Result r = Format(c.record, "%E %J", 100, c.names);
        EXPECT_EQ(r.status, c.status) << c.record.day << "." << c.record.month;
        EXPECT_EQ(r.failed, c.failed);
    }
    // Only the first era slot is tested; a missing later one is refused, not read.
    const char *onlyFirst[CONV_NAMES_COUNT] = {};
    onlyFirst[CONV_NAMES_ERA] = "Meiji";
    EXPECT_EQ(Format(Date(1, 1, 1900), "%E", 100, onlyFirst).text, "Meiji");
    EXPECT_EQ(Format(Date(1, 1, 2000), "%E", 100, onlyFirst).status, CONV_ERR_NO_ERA_NAMES);
}

// ---- The record inside the target ----

TEST(DateTimeToString, RecordLyingInsideTheTargetIsReadFromACopy) {
    alignas(CONV_DateTime) char block[64];
    memset(block, dt_test::kSentinel, sizeof block);
    CONV_DateTime *record = new (block) CONV_DateTime(Sample());
    uint16_t failed = 0;
    EXPECT_EQ(CONV_DateTimeToString(block, record, 40, "%04Z-%02M-%02D %02H:%02I:%02S %T", nullptr,
                                    &failed, nullptr),
              CONV_OK);
    EXPECT_STREQ(block, "2009-03-05 13:07:09 Thursday");
    for (size_t i = 29; i < sizeof block; ++i) {
        EXPECT_EQ(block[i], dt_test::kSentinel) << i;
    }
}

TEST(DateTimeToString, RecordOverlappingTheStartOfTheTargetIsReadFromACopy) {
    // The record begins two bytes before the target and runs into it.
    alignas(CONV_DateTime) char block[64];
    memset(block, dt_test::kSentinel, sizeof block);
    CONV_DateTime *record = new (block) CONV_DateTime(Sample());
    record->era = 1;
    EXPECT_EQ(CONV_DateTimeToString(block + 2, record, 40, "%02M-%02D-%04Z %H", nullptr, nullptr,
                                    nullptr),
              CONV_OK);
    EXPECT_STREQ(block + 2, "03-05-2009 13");
    // The era is reset in the copy; the caller's bytes outside the text are untouched.
    EXPECT_EQ(record->day, 5);
    EXPECT_EQ(record->era, 1);
}

TEST(DateTimeToString, RecordOutsideTheTargetHasItsEraReset) {
    CONV_DateTime record = Sample();
    record.era = 2;
    char out[16];
    EXPECT_EQ(CONV_DateTimeToString(out, &record, sizeof out, "%D", nullptr, nullptr, nullptr),
              CONV_OK);
    EXPECT_EQ(record.era, CONV_DT_UNSET);
}

// ---- Measuring ----

uint32_t Measure(const char *format, const char *const *names, uint32_t *length) {
    *length = 12345;
    return CONV_CalcDateTimeLength(format, names, length);
}

TEST(CalcDateTimeLength, MeasuresTheWorstCaseSample) {
    struct Case {
        const char *format;
        uint32_t expected;
    };
    const Case cases[] = {
        {"%04Z-%02M-%02D", 11},
        {"%T, %D %V %Z", 29},  // "Wednesday, 10 September 1994"
        {"%U %W", 8},          // "Wed SEP" is no longer than "Sun OCT"
        {"%P %Q", 6},          // "11 PM"
        {"%H:%I:%S.%F", 19},   // "23:59:59.999999999"
        {"%Y", 3},
        {"%J", 5},  // the Gregorian year
        {"", 1},
        {"%%", 2},
        {"%999D", 1000},
    };
    for (const Case &c : cases) {
        uint32_t length = 0;
        EXPECT_EQ(Measure(c.format, nullptr, &length), CONV_OK) << c.format;
        EXPECT_EQ(length, c.expected) << c.format;
    }
}

TEST(CalcDateTimeLength, UsesTheLongestCallerNameOfEachGroup) {
    const char *names[CONV_NAMES_COUNT] = {};
    for (int i = 0; i < 7; ++i) {
        names[CONV_NAMES_DAY + i] = "d";
        names[CONV_NAMES_SHORT_DAY + i] = "s";
    }
    for (int i = 0; i < 12; ++i) {
        names[CONV_NAMES_MONTH + i] = "m";
        names[CONV_NAMES_SHORT_MONTH + i] = "k";
    }
    names[CONV_NAMES_DAY + 6] = "longest-day";
    names[CONV_NAMES_SHORT_DAY + 3] = "sd4";
    names[CONV_NAMES_MONTH + 0] = "first-month";
    names[CONV_NAMES_SHORT_MONTH + 11] = "kkkkk";
    names[CONV_NAMES_MERIDIEM] = "before-noon";
    names[CONV_NAMES_MERIDIEM + 1] = "pm";
    uint32_t length = 0;
    EXPECT_EQ(Measure("%T|%U|%V|%W|%Q", names, &length), CONV_OK);
    EXPECT_EQ(length, strlen("longest-day|sd4|first-month|kkkkk|before-noon") + 1);
    // A null slot stands for its default text.
    const char *sparse[CONV_NAMES_COUNT] = {};
    sparse[CONV_NAMES_MONTH + 4] = "a-very-long-month-name";
    EXPECT_EQ(Measure("%V", sparse, &length), CONV_OK);
    EXPECT_EQ(length, 23u);
    EXPECT_EQ(Measure("%T", sparse, &length), CONV_OK);
    EXPECT_EQ(length, 10u);  // "Wednesday"
}

TEST(CalcDateTimeLength, FailuresStoreZero) {
    const EraNames names;
    uint32_t length = 0;
    EXPECT_EQ(Measure("%E", names.get(), &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(Measure("%E", nullptr, &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 0u);
    // More than 999 characters cannot be measured.
    const std::string big = "%999D%D";
    EXPECT_EQ(Measure(big.c_str(), nullptr, &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 0u);
    const std::string literals(1000, 'x');
    EXPECT_EQ(Measure(literals.c_str(), nullptr, &length), CONV_ERR_TARGET_TOO_SMALL);
    EXPECT_EQ(length, 0u);
}

// Every value of each plain number field against the C library's decimal text of the value:
// written whole, in a zero-filled field of two places and in a field of one place (a field
// keeps the left part of a longer value).
TEST(DateTimeToString, EveryValueOfThePlainNumberFieldsAgreesWithSnprintf) {
    struct Field {
        char letter;
        int16_t CONV_DateTime::*member;
        int low;
        int high;
    };
    const Field fields[] = {{'D', &CONV_DateTime::day, 1, 31},
                            {'M', &CONV_DateTime::month, 1, 12},
                            {'H', &CONV_DateTime::hour, 0, 23},
                            {'I', &CONV_DateTime::minute, 0, 59},
                            {'S', &CONV_DateTime::second, 0, 59},
                            {'Z', &CONV_DateTime::year, 0, 2100}};
    for (const Field &f : fields) {
        for (int value = f.low; value <= f.high; ++value) {
            CONV_DateTime record = Sample();
            record.*f.member = static_cast<int16_t>(value);
            char whole[16];
            char padded[16];
            snprintf(whole, sizeof whole, "%d", value);
            snprintf(padded, sizeof padded, "%02d", value);
            const std::string plain = std::string("%") + f.letter;
            const std::string zeros = std::string("%02") + f.letter;
            const std::string cut = std::string("%1") + f.letter;
            EXPECT_EQ(Format(record, plain.c_str()).text, whole) << plain << " " << value;
            EXPECT_EQ(Format(record, zeros.c_str()).text, std::string(padded, 2))
                << zeros << " " << value;
            EXPECT_EQ(Format(record, cut.c_str()).text, std::string(whole, 1))
                << cut << " " << value;
        }
    }
}

}  // namespace
