#include "support/Conversions.h"
#include "support/WebAddress.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/ErrorOf.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

TEST(Conversions, TextToNumber) {
    const struct {
        const char* text;
        int number;
    } cases[] = {{"0", 0},           {"-0", 0},           {"  12  ", 12},
                 {"+5", 5},          {"-7", -7},          {"007", 7},
                 {"2.4", 2},         {"32767", 32767},    {"2.5", 2},
                 {"-32768", -32768}, {"3.5", 4},          {"-2.5", -2},
                 {"-3.5", -4},       {"0.5", 0},          {"2.50000000000000000000000001", 3},
                 {"32767.4", 32767}, {"-32768.5", -32768}};
    for (const auto& c : cases) EXPECT_EQ(toInt16(c.text), c.number) << c.text;
    EXPECT_EQ(toInt16(std::string(400, '0') + "9"), 9);
    EXPECT_EQ(toInt16("1." + std::string(400, '9')), 2);
}

TEST(Conversions, TextThatIsNoNumberOrTooLarge) {
    const struct {
        int error;
        std::vector<std::string> texts;
    } cases[] = {
        {6, {"32768", "-32769", "32767.5", "-32768.51", "65536", "4294967296", std::string(500, '9')}},
        {13, {"",     " ",   "+",   "-",     ".",   "--1",   "+-1", "1-",  "x",    "12a",  "0x10",
              "&H10", "1e3", "1E3", "1,000", "1 2", "1.2.3", "inf", "nan", "\xB2", "5\0"s, "\0"s}}};
    for (const auto& c : cases) {
        for (const std::string& text : c.texts) {
            EXPECT_EQ(errorOf([&] { toInt16(text); }), c.error) << text;
        }
    }
}

TEST(Conversions, WiderNumbers) {
    const struct {
        std::string text;
        std::int32_t whole;
        float single;
    } cases[] = {{" -2.5 ", -2, -2.5F},
                 {"2147483647.4", 2147483647, 2147483648.F},
                 {"-2147483648.5", -2147483647 - 1, -2147483648.F},
                 {".5", 0, 0.5F},
                 {"+3.", 3, 3},
                 {"0." + std::string(60, '0') + "1", 0, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(toInt32(c.text), c.whole) << c.text;
        EXPECT_EQ(toSingle(c.text), c.single) << c.text;
    }
    for (const std::string digits : {"2147483648", "-2147483648.51", "9999999999999999999999"}) {
        EXPECT_EQ(errorOf([&] { toInt32(digits); }), 6) << digits;
        EXPECT_NO_THROW(toSingle(digits));
    }
    EXPECT_EQ(errorOf([] { toSingle("4" + std::string(38, '0')); }), 6);
    for (const char* text : {"", "-", ".", "1e3", "inf", "nan", "0x1", "40px"}) {
        EXPECT_EQ(errorOf([&] { toInt32(text); }), 13) << text;
        EXPECT_EQ(errorOf([&] { toSingle(text); }), 13) << text;
        EXPECT_FALSE(isNumeric(text)) << text;
    }
    EXPECT_TRUE(isNumeric("4" + std::string(38, '0')));
}

TEST(Conversions, RoundingAndNarrowing) {
    const struct {
        double value;
        int rounded;
    } cases[] = {{0.5, 0},  {1.5, 2},   {2.5, 2},   {2.51, 3},
                 {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {1e9, 1000000000}};
    for (const auto& c : cases) EXPECT_EQ(roundHalfToEven(c.value), c.rounded) << c.value;
    EXPECT_EQ(narrowToInt16(-32768), -32768);
    for (const int value : {32768, -32769, 65536}) EXPECT_EQ(errorOf([=] { narrowToInt16(value); }), 6);
}

TEST(WebAddress, IsAllThatMayBeOpenedAsOne) {
    for (const char* page : {"http://a", "HTTPS://host:8080/x?y=1&z#end"})
        EXPECT_EQ(webAddressOf(page), WebAddress::Page) << page;
    for (const char* other : {"ftp://a", "MailTo:a@b"})
        EXPECT_EQ(webAddressOf(other), WebAddress::Other) << other;
    for (const char* none : {"", "http://", "mailto:", "https:/a", "ftp:a", "file:///c:/a", "calc.exe",
                             "\\\\host\\a", "http://a b", "http://a\" -x", "http://a'b", "http://a\\b",
                             "http://\xE9", " http://a", "javascript:http://a"}) {
        EXPECT_EQ(webAddressOf(none), WebAddress::None) << none;
    }
}

}  // namespace
}  // namespace kavrelon
