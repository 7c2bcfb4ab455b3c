/* SPDX-License-Identifier: MIT */
// The conversion wrappers against the conversion functions they call: the same bytes, the same
// status, warnings kept with their values.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <nlssupport/nlssupport.hpp>

namespace {

nls::conv_status Status(std::uint32_t code) {
    return static_cast<nls::conv_status>(code);
}

// --- UTF-8 -----------------------------------------------------------------------------------

// What CONV_WChar16StrToUTF8 writes for the units, with room for all of them.
std::string Utf8WithC(const std::u16string &text) {
    std::vector<GLIB_WChar> units(text.begin(), text.end());
    units.push_back(0);
    std::string out(3 * text.size() + 1, '\0');
    std::uint32_t written = 0;
    EXPECT_EQ(CONV_WChar16StrToUTF8(units.data(), -1, out.data(),
                                    static_cast<std::uint32_t>(out.size()), &written),
              CONV_OK);
    out.resize(written);
    return out;
}

TEST(CppUtf8, EncodesUnitsAsTheEncoderDoes) {
    const std::u16string texts[] = {u"",         u"plain",      u"Gr\u00fc\u00dfe",
                                    u"\u20ac 5", u"\U0001F600", u"\uFFFF\u0080\u07FF\u0800"};
    for (const std::u16string &text : texts) {
        const nls::result<std::string> utf8 = nls::to_utf8(text);
        EXPECT_TRUE(utf8.ok());
        EXPECT_EQ(utf8.value(), Utf8WithC(text));
    }
    EXPECT_EQ(nls::to_utf8(u"\U0001F600").value(), "\xED\xA0\xBD\xED\xB8\x80");
    EXPECT_EQ(nls::to_utf8(u"\u00e9").value(), "\xC3\xA9");
}

TEST(CppUtf8, LongTextsAreEncodedWhole) {
    std::u16string text;
    for (int i = 0; i < 1000; ++i)
        text += static_cast<char16_t>(0x20 + (i * 37) % 0x3000);
    const nls::result<std::string> utf8 = nls::to_utf8(text);
    EXPECT_TRUE(utf8.ok());
    EXPECT_EQ(utf8.value(), Utf8WithC(text));
}

TEST(CppUtf8, ZeroUnitBecomesAZeroByte) {
    const std::u16string_view text(u"a\0\u00e9\0", 4);
    EXPECT_EQ(nls::to_utf8(text).value(), std::string("a\0\xC3\xA9\0", 5));
}

// --- hexadecimal text ------------------------------------------------------------------------

TEST(CppHex, BytesAreWrittenAsTheCFunctionWritesThem) {
    std::array<std::byte, 256> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::byte>(i);
    std::string expected(2 * bytes.size() + 1, '\0');
    ASSERT_EQ(
        CONV_BinaryToString(expected.data(), reinterpret_cast<const std::uint8_t *>(bytes.data()),
                            static_cast<std::uint32_t>(expected.size()), 256),
        CONV_OK);
    expected.resize(2 * bytes.size());

    const nls::result<std::string> text = nls::to_hex(bytes);
    EXPECT_TRUE(text.ok());
    EXPECT_EQ(text.value(), expected);
    EXPECT_EQ(text.value().substr(0, 8), "00010203");
    const std::byte dead[] = {std::byte{0xDE}, std::byte{0xAD}};
    EXPECT_EQ(nls::to_hex(dead).value(), "DEAD");
    EXPECT_EQ(nls::to_hex({}).value(), "");
    EXPECT_TRUE(nls::to_hex({}).ok());
}

struct HexCase {
    const char *text;
    nls::conv_status status;
    std::vector<std::uint8_t> bytes;
};

TEST(CppHex, TextIsReadAsTheCFunctionReadsIt) {
    const HexCase cases[] = {
        {"CAFE01", nls::conv_status::ok, {0xCA, 0xFE, 0x01}},
        {"0A1", nls::conv_status::ok, {0x0A}},  // the lone last digit is dropped unchecked
        {"0Az", nls::conv_status::ok, {0x0A}},
        {"", nls::conv_status::ok, {}},
        {"A", nls::conv_status::ok, {}},
        {"cafe", nls::conv_status::byte_stream, {}},
        {"CAFEzz01", nls::conv_status::byte_stream, {0xCA, 0xFE}},
    };
    for (const HexCase &c : cases) {
        SCOPED_TRACE(c.text);
        // The C function with room for every pair and a lone last digit.
        const std::size_t capacity = std::max<std::size_t>((std::strlen(c.text) + 1) / 2, 1);
        std::vector<std::uint8_t> expected(capacity);
        auto count = static_cast<std::uint32_t>(capacity);
        const nls::conv_status status =
            Status(CONV_StringToBinary(expected.data(), c.text, &count));
        expected.resize(count);
        EXPECT_EQ(status, c.status);
        EXPECT_EQ(expected, c.bytes);

        const nls::result<std::vector<std::byte>> bytes = nls::from_hex(c.text);
        EXPECT_EQ(bytes.status(), c.status);
        ASSERT_EQ(bytes.value().size(), c.bytes.size());
        for (std::size_t i = 0; i < c.bytes.size(); ++i)
            EXPECT_EQ(bytes.value()[i], static_cast<std::byte>(c.bytes[i]));
    }
}

TEST(CppHex, RoundTripOfLongData) {
    std::vector<std::byte> data(5000);
    for (std::size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<std::byte>(i * 7);
    const nls::result<std::string> text = nls::to_hex(data);
    ASSERT_TRUE(text.ok());
    const nls::result<std::vector<std::byte>> back = nls::from_hex(text.value());
    EXPECT_TRUE(back.ok());
    EXPECT_EQ(back.value(), data);
}

// --- numbers ---------------------------------------------------------------------------------

struct NumberCase {
    const char *text;
    std::uint32_t flags;
    char point;
};

constexpr NumberCase kNumbers[] = {
    {"12345", 0, '.'},
    {" 42 ", 0, '.'},
    {" 42 ", CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS, '.'},
    {"12.50", CONV_NUM_DECIMAL_POINT, '.'},
    {"-12,75", CONV_NUM_DECIMAL_POINT, ','},
    {"12.000", CONV_NUM_DECIMAL_POINT, '.'},
    {"1.5E3", CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT, '.'},
    {"1E-400", CONV_NUM_EXPONENT, '.'},
    {"1e-999", CONV_NUM_EXPONENT, '.'},
    {"1e999", CONV_NUM_EXPONENT, '.'},
    {"1D3", CONV_NUM_EXPONENT | CONV_NUM_D_EXPONENT, '.'},
    {"2147483648", 0, '.'},
    {"-2147483648", 0, '.'},
    {"-21474836489", 0, '.'},
    {"4294967295", 0, '.'},
    {"4294967296", 0, '.'},
    {"-0", 0, '.'},
    {"7.9", CONV_NUM_DECIMAL_POINT, '.'},
    {"12abc", 0, '.'},
    {"", 0, '.'},
    {"\t5", CONV_NUM_LEADING_BLANKS | CONV_NUM_TAB_IS_BLANK, '.'},
    {"anything", CONV_NUM_NO_CHECK, '.'},
};

TEST(CppNumbers, Int32IsReadAsCONV_StringToInt32ReadsIt) {
    for (const NumberCase &c : kNumbers) {
        SCOPED_TRACE(c.text);
        std::int32_t expected = 0;
        const auto status = Status(CONV_StringToInt32(&expected, c.text, c.flags, c.point));
        const nls::result<std::int32_t> value = nls::to_int32(c.text, c.flags, c.point);
        EXPECT_EQ(value.status(), status);
        EXPECT_EQ(value.value(), expected);
    }
}

TEST(CppNumbers, UInt32IsReadAsCONV_StringToUInt32ReadsIt) {
    for (const NumberCase &c : kNumbers) {
        SCOPED_TRACE(c.text);
        std::uint32_t expected = 0;
        const auto status = Status(CONV_StringToUInt32(&expected, c.text, c.flags, c.point));
        const nls::result<std::uint32_t> value = nls::to_uint32(c.text, c.flags, c.point);
        EXPECT_EQ(value.status(), status);
        EXPECT_EQ(value.value(), expected);
    }
}

TEST(CppNumbers, DoubleIsReadAsCONV_StringToDoubleReadsIt) {
    for (const NumberCase &c : kNumbers) {
        SCOPED_TRACE(c.text);
        double expected = 0.0;
        const auto status = Status(CONV_StringToDouble(&expected, c.text, c.flags, c.point));
        const nls::result<double> value = nls::to_double(c.text, c.flags, c.point);
        EXPECT_EQ(value.status(), status);
        EXPECT_EQ(std::memcmp(&value.value(), &expected, sizeof expected), 0);
    }
}

TEST(CppNumbers, WarningsKeepTheirValues) {
    const nls::result<std::int32_t> cut = nls::to_int32("12.50", CONV_NUM_DECIMAL_POINT);
    EXPECT_TRUE(cut.warning());
    EXPECT_EQ(cut.status(), nls::conv_status::warn_truncation);
    EXPECT_EQ(cut.value(), 12);
    EXPECT_EQ(cut.value_or(-1), 12);

    const nls::result<double> tiny = nls::to_double("1e-999", CONV_NUM_EXPONENT);
    EXPECT_TRUE(tiny.warning());
    EXPECT_EQ(tiny.status(), nls::conv_status::warn_round_to_zero);
    EXPECT_EQ(tiny.value(), 0.0);

    const nls::result<double> huge = nls::to_double("1e999", CONV_NUM_EXPONENT);
    EXPECT_TRUE(huge.error());
    EXPECT_EQ(huge.status(), nls::conv_status::overflow);
    EXPECT_TRUE(std::isinf(huge.value()));
}

TEST(CppNumbers, DefaultSyntaxAllowsBlanksPointAndExponent) {
    EXPECT_EQ(nls::default_number_syntax, CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS |
                                              CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT);
    const nls::result<std::int32_t> value = nls::to_int32(" 1.5E3 ");
    EXPECT_TRUE(value.ok());
    EXPECT_EQ(value.value(), 1500);
    EXPECT_EQ(nls::to_double(" 2,5 ", nls::default_number_syntax, ',').value(), 2.5);
}

TEST(CppNumbers, ViewsAreReadToTheirEndOrToANul) {
    EXPECT_EQ(nls::to_int32(std::string_view("123456", 3)).value(), 123);
    EXPECT_EQ(nls::to_uint32(std::string_view("77\0"
                                              "99",
                                              5))
                  .value(),
              77u);
}

TEST(CppNumbers, TextsOverNineHundredNinetyNineCharactersGetTheCStatus) {
    const std::string long_text = "1" + std::string(1000, '0');
    double expected = -1.0;
    const auto status =
        Status(CONV_StringToDouble(&expected, long_text.c_str(), nls::default_number_syntax, '.'));
    EXPECT_EQ(status, nls::conv_status::conversion);
    EXPECT_EQ(nls::to_double(long_text).status(), status);
    EXPECT_EQ(nls::to_int32(long_text).status(), nls::conv_status::conversion);
}

// --- decimal values --------------------------------------------------------------------------

struct DecimalCase {
    const char *text;
    std::uint32_t flags;
};

TEST(CppDecimal, TextIsReadAsCONV_StringToDecimalReadsIt) {
    const DecimalCase cases[] = {
        {"123.45", CONV_NUM_DECIMAL_POINT},
        {"-1.5", CONV_NUM_DECIMAL_POINT},
        {"12", 0},
        {"12", CONV_NUM_DECIMAL_POINT},
        {"0", 0},
        {"+1", 0},
        {"1E300", CONV_NUM_EXPONENT},
        {"-2.5e-3", CONV_NUM_EXPONENT | CONV_NUM_DECIMAL_POINT},
        {"1e999", CONV_NUM_EXPONENT},
        {"99999999999999999999999999999.999999999", CONV_NUM_DECIMAL_POINT},
        {"abc", 0},
    };
    for (const DecimalCase &c : cases) {
        SCOPED_TRACE(c.text);
        std::vector<std::uint8_t> expected(512, 0xEE);
        std::uint32_t precision = 0;
        std::uint32_t scale = 0;
        const auto status = Status(
            CONV_StringToDecimal(expected.data(), c.text, 512, &precision, &scale, c.flags, '.'));
        expected.resize(precision > 0 ? precision / 2 + 1 : 0);

        const nls::result<nls::decimal> value = nls::to_decimal(c.text, c.flags);
        EXPECT_EQ(value.status(), status);
        EXPECT_EQ(value.value().precision, precision);
        EXPECT_EQ(value.value().scale, scale);
        if (!value.error()) {
            EXPECT_EQ(value.value().bytes, expected);
        }
    }
    const nls::result<nls::decimal> value = nls::to_decimal("-1.5");
    EXPECT_TRUE(value.ok());
    EXPECT_EQ(value.value().bytes, (std::vector<std::uint8_t>{0x15, 0x0D}));
    EXPECT_EQ(value.value().precision, 3u);
    EXPECT_EQ(value.value().scale, 2u);
}

// What CONV_DecimalToString writes with room to spare, and its status.
std::pair<std::string, nls::conv_status> DecimalTextWithC(std::span<const std::uint8_t> bytes,
                                                          std::uint32_t precision,
                                                          std::uint32_t scale, std::uint32_t layout,
                                                          char point) {
    char out[1100];
    std::memset(out, 0, sizeof out);
    std::uint32_t length = 0;
    const auto status = Status(CONV_DecimalToString(out, bytes.data(), sizeof out, precision, scale,
                                                    point, layout, &length));
    return {out, status};
}

TEST(CppDecimal, ValuesAreWrittenAsCONV_DecimalToStringWritesThem) {
    struct Case {
        std::vector<std::uint8_t> bytes;
        std::uint32_t precision;
        std::uint32_t scale;
        std::uint32_t layout;
        char point;
    };
    const Case cases[] = {
        {{0x12, 0x34, 0x5C}, 5, 2, CONV_DECIMAL_PACKED, '.'},
        {{0x12, 0x34, 0x5C}, 5, 2, CONV_DECIMAL_PACKED, ','},
        {{0x05, 0x0D}, 2, 2, CONV_DECIMAL_PACKED, '.'},  // "-.50"
        {{0x00, 0x0C}, 3, 0, CONV_DECIMAL_PACKED, '.'},
        {{0x0C}, 0, 0, CONV_DECIMAL_PACKED, '.'},
        {{0x01, 0x02, 0xD3}, 3, 1, CONV_DECIMAL_UNPACKED, '.'},
        {{0x1A, 0x0C}, 3, 0, CONV_DECIMAL_PACKED, '.'},  // a digit above 9
        {{0x12, 0x3C}, 3, 4, CONV_DECIMAL_PACKED, '.'},  // scale above the precision
        {{0x12, 0x3C}, 3, 1, 7, '.'},                    // no such layout
    };
    for (const Case &c : cases) {
        const auto [text, status] =
            DecimalTextWithC(c.bytes, c.precision, c.scale, c.layout, c.point);
        SCOPED_TRACE(text);
        const nls::result<std::string> value =
            nls::decimal_to_string(c.bytes, c.precision, c.scale, c.layout, c.point);
        EXPECT_EQ(value.status(), status);
        EXPECT_EQ(value.value(), value.error() ? "" : text);
    }
    EXPECT_EQ(nls::decimal_to_string(std::vector<std::uint8_t>{0x05, 0x0D}, 2, 2).value(), "-.50");
}

TEST(CppDecimal, ShortValuesAreRefusedWithoutReadingBeyondThem) {
    const std::uint8_t two[] = {0x12, 0x3C};
    EXPECT_EQ(nls::decimal_to_string(two, 5, 0).status(), nls::conv_status::conversion);
    EXPECT_EQ(nls::decimal_to_string(two, 3, 0, CONV_DECIMAL_UNPACKED).status(),
              nls::conv_status::conversion);
    EXPECT_EQ(nls::decimal_to_string(two, 3, 0).value(), "123");
}

TEST(CppDecimal, RoundTrip) {
    for (const char *text : {"123.45", "-0.5", "1000", "-98765432109876543210.0123456789"}) {
        const nls::result<nls::decimal> value = nls::to_decimal(text);
        ASSERT_FALSE(value.error()) << text;
        const nls::result<std::string> back = nls::decimal_to_string(value.value());
        EXPECT_TRUE(back.ok()) << text;
        const auto [expected, status] =
            DecimalTextWithC(value.value().bytes, value.value().precision, value.value().scale,
                             CONV_DECIMAL_PACKED, '.');
        EXPECT_EQ(back.value(), expected) << text;
    }
    EXPECT_EQ(nls::decimal_to_string(nls::to_decimal("123.45").value(), ',').value(), "123,45");
}

// --- date and time ---------------------------------------------------------------------------

CONV_DateTime Record(int year, int month, int day, int hour, int minute, int second) {
    CONV_DateTime r{};
    r.year = static_cast<std::int16_t>(year);
    r.month = static_cast<std::int16_t>(month);
    r.day = static_cast<std::int16_t>(day);
    r.hour = static_cast<std::int16_t>(hour);
    r.minute = static_cast<std::int16_t>(minute);
    r.second = static_cast<std::int16_t>(second);
    r.dayOfWeek = CONV_DT_UNSET;
    r.fraction = CONV_DT_UNSET;
    r.fractionBase = CONV_DT_UNSET;
    r.era = CONV_DT_UNSET;
    return r;
}

// What CONV_DateTimeToString writes into a buffer large enough for everything the tests write.
std::pair<std::string, nls::conv_status> DateTimeTextWithC(const CONV_DateTime &record,
                                                           const char *format,
                                                           const CONV_DateTimeNames *names) {
    std::vector<char> buffer(8192, '\x7F');
    CONV_DateTime copy = record;
    const auto status = Status(
        CONV_DateTimeToString(buffer.data(), &copy, static_cast<std::int32_t>(buffer.size()),
                              format, names != nullptr ? *names : nullptr, nullptr, nullptr));
    return {buffer.data(), status};
}

// Era names, the SYEAR text and one long month name; the other slots take their defaults.
void FillNames(CONV_DateTimeNames &names) {
    for (const char *&slot : names)
        slot = nullptr;
    names[CONV_NAMES_ERA] = "Meiji";
    names[CONV_NAMES_ERA + 1] = "Taisho";
    names[CONV_NAMES_ERA + 2] = "Showa";
    names[CONV_NAMES_ERA + 3] = "Heisei";
    names[CONV_NAMES_SYEAR] = "Gannen";
    names[CONV_NAMES_MONTH + 9] = "the tenth month of the year, written out at some length";
}

TEST(CppDateTime, FormatWritesWhatTheCFunctionWrites) {
    CONV_DateTime sunday = Record(1994, 10, 9, 23, 59, 7);
    ASSERT_EQ(CONV_GetDayOfWeek(&sunday), CONV_OK);
    CONV_DateTime fraction = sunday;
    fraction.fraction = 5;
    fraction.fractionBase = 3;
    const CONV_DateTime far_year = Record(-32767, 1, 1, 0, 0, 0);
    const CONV_DateTime bad_month = Record(1994, 13, 9, 0, 0, 0);
    CONV_DateTimeNames names;
    FillNames(names);

    struct Case {
        const CONV_DateTime *record;
        const char *format;
        const CONV_DateTimeNames *names;
    };
    const Case cases[] = {
        {&sunday, "%T, %D %V %Z", nullptr},
        {&sunday, "%04Z-%02M-%02D %02H:%02I:%02S", nullptr},
        {&sunday, "%U %W %Y %P%Q", nullptr},
        {&sunday, "%V", &names},             // a long month name of the caller's
        {&sunday, "%E%J, %D %W", &names},    // era fields: not measurable beforehand
        {&far_year, "%Z|%Y|%05Z", nullptr},  // longer than the measured sample
        {&fraction, "%S.%F|%S.%.6F|%-9.9F|", nullptr},
        {&sunday, "%999D|", nullptr},
        {&bad_month, "%D.%V", nullptr},  // fails after the day: the day stays written
        {&sunday, "%E", nullptr},        // no era names
        {&sunday, "100%% %X", nullptr},
        {&sunday, "", nullptr},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.format);
        const auto [expected, status] = DateTimeTextWithC(*c.record, c.format, c.names);
        const nls::result<std::string> text = nls::format_datetime(*c.record, c.format, c.names);
        EXPECT_EQ(text.status(), status);
        EXPECT_EQ(text.value(), expected);
    }
    EXPECT_EQ(nls::format_datetime(sunday, "%T, %D %V %Z").value(), "Sunday, 9 October 1994");
    EXPECT_EQ(nls::format_datetime(far_year, "%Z").value(), "-32767");
    EXPECT_EQ(nls::format_datetime(sunday, "%E%J", &names).value(), "Heisei6");
    EXPECT_EQ(nls::format_datetime(bad_month, "%D.%V").status(), nls::conv_status::month);
}

TEST(CppDateTime, FormatLeavesTheCallersRecordAlone) {
    CONV_DateTime record = Record(1994, 10, 9, 0, 0, 0);
    record.era = 1;
    CONV_DateTimeNames names;
    FillNames(names);
    EXPECT_TRUE(nls::format_datetime(record, "%E", &names).ok());
    EXPECT_EQ(record.era, 1);
}

void ExpectSameRecord(const CONV_DateTime &a, const CONV_DateTime &b) {
    EXPECT_EQ(a.day, b.day);
    EXPECT_EQ(a.month, b.month);
    EXPECT_EQ(a.year, b.year);
    EXPECT_EQ(a.dayOfWeek, b.dayOfWeek);
    EXPECT_EQ(a.second, b.second);
    EXPECT_EQ(a.minute, b.minute);
    EXPECT_EQ(a.hour, b.hour);
    EXPECT_EQ(a.fraction, b.fraction);
    EXPECT_EQ(a.fractionBase, b.fractionBase);
    EXPECT_EQ(a.era, b.era);
}

TEST(CppDateTime, ParseReadsWhatTheCFunctionReads) {
    CONV_DateTimeNames names;
    FillNames(names);
    struct Case {
        const char *text;
        const char *format;
        const CONV_DateTimeNames *names;
        std::int32_t century;
        std::int16_t fraction_base;
    };
    const Case cases[] = {
        {"1994-10-09 23:59:59", "%04Z-%02M-%02D %02H:%02I:%02S", nullptr, 1900, CONV_DT_UNSET},
        {"Sunday, 9 October 1994", "%T, %D %V %Z", nullptr, 1900, CONV_DT_UNSET},
        {"94", "%Y", nullptr, 1900, CONV_DT_UNSET},
        {"94", "%Y", nullptr, 2000, CONV_DT_UNSET},
        {"12.345", "%S.%3F", nullptr, 1900, 3},
        {"12.345", "%S.%3F", nullptr, 1900, 6},
        {"12.345", "%S.%3F", nullptr, 1900, CONV_DT_UNSET},
        {"Heisei6", "%E%J", &names, 1900, CONV_DT_UNSET},
        {"31 February 1994", "%D %V %Z", nullptr, 1900, CONV_DT_UNSET},
        {"9 Jan 1994", "%D %W %Z", nullptr, 1900, CONV_DT_UNSET},
        {"1994-10", "%Z-%M-%D", nullptr, 1900, CONV_DT_UNSET},
        {"1994-10-09x", "%Z-%M-%D", nullptr, 1900, CONV_DT_UNSET},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(std::string(c.text) + " / " + c.format);
        CONV_DateTime expected{};
        expected.fractionBase = c.fraction_base;
        const auto status = Status(CONV_StringToDateTime(&expected, c.text, c.format, c.century,
                                                         c.names != nullptr ? *c.names : nullptr,
                                                         nullptr, nullptr));
        const nls::result<CONV_DateTime> record =
            nls::parse_datetime(c.text, c.format, c.names, c.century, c.fraction_base);
        EXPECT_EQ(record.status(), status);
        ExpectSameRecord(record.value(), expected);
    }
}

TEST(CppDateTime, ParseDefaultsToCentury1900AndNanoseconds) {
    const nls::result<CONV_DateTime> record = nls::parse_datetime("94-10-09", "%Y-%M-%D");
    ASSERT_TRUE(record.ok());
    EXPECT_EQ(record.value().year, 1994);
    EXPECT_EQ(record.value().fractionBase, CONV_DT_UNSET);
    EXPECT_EQ(nls::parse_datetime("31 February 1994", "%D %V %Z").status(), nls::conv_status::day);
}

TEST(CppDateTime, ParseReadsViewsToTheirEnd) {
    const std::string_view text = std::string_view("1994-10-09 and more").substr(0, 10);
    const std::string_view format = std::string_view("%Z-%M-%D%H").substr(0, 8);
    const nls::result<CONV_DateTime> record = nls::parse_datetime(text, format);
    ASSERT_TRUE(record.ok());
    EXPECT_EQ(record.value().day, 9);
}

}  // namespace
