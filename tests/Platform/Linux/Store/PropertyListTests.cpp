#include "Platform/Linux/Store/PropertyList.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using foundation::Dictionary;
using foundation::Other;
using foundation::Value;
using platform::parsePropertyList;
using platform::propertyListElement;
using platform::propertyListValue;
using platform::serializePropertyList;
using std::chrono::sys_days;

/// What a later run reads.
Value stored(const Value& value) {
    const auto list =
        parsePropertyList(serializePropertyList({{"key", propertyListElement(value)}}));
    return list ? propertyListValue(list->at("key")) : Other{};
}

QByteArray document(const std::string& items) {
    return QByteArray::fromStdString("<plist version=\"1.0\"><dict>" + items + "</dict></plist>");
}

/// The only value of a list that was written by others.
Value parsedValue(const std::string& element) {
    const auto list = parsePropertyList(document("<key>key</key>" + element));
    return list ? propertyListValue(list->at("key")) : Other{};
}

std::string nested(int depth, const std::string& begin, const std::string& end) {
    std::string text;
    for (int count = 0; count < depth; ++count) {
        text += begin;
    }
    for (int count = 0; count < depth; ++count) {
        text += end;
    }
    return text;
}

TEST(PropertyListTests, KeepsDoublesBitForBit) {
    std::vector<double> numbers{0.1,
                                -0.0,
                                350.0,
                                1e300,
                                5e-324,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()};
    std::mt19937_64 random(20261121); // NOLINT: the same numbers every time
    std::uniform_real_distribution mantissa(-1.0, 1.0);
    for (int exponent = -1000; exponent < 1000; ++exponent) {
        numbers.push_back(std::ldexp(mantissa(random), exponent));
    }
    for (const double number : numbers) {
        const Value again = stored(number);
        ASSERT_TRUE(std::holds_alternative<double>(again)) << number;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(std::get<double>(again)),
                  std::bit_cast<std::uint64_t>(number));
    }
}

TEST(PropertyListTests, KeepsBooleansAndIntegers) {
    for (const Value& value : {Value(true),
                               Value(false),
                               Value(std::int64_t{0}),
                               Value(std::int64_t{1}),
                               Value(std::int64_t{-1}),
                               Value(std::numeric_limits<std::int64_t>::min()),
                               Value(std::numeric_limits<std::int64_t>::max()),
                               Value(std::uint64_t{1} << 63U),
                               Value(std::numeric_limits<std::uint64_t>::max())}) {
        EXPECT_EQ(stored(value), value);
    }
    EXPECT_EQ(stored(std::uint64_t{5}), Value(std::int64_t{5}));
}

TEST(PropertyListTests, KeepsStrings) {
    for (const std::string text : {"",
                                   " \t\n ",
                                   "<a href=\"x\">&amp;</a>]]>",
                                   "\xC3\xA9\xE2\x98\x83\xF0\x9F\x98\x80",
                                   "\xEF\xBB\xBF.",
                                   "\x7F\xC2\x85\xE2\x80\xA8"}) {
        EXPECT_EQ(stored(text), Value(text));
        EXPECT_EQ(stored(Dictionary{{text, text}}), Value(Dictionary{{text, text}}));
    }
}

TEST(PropertyListTests, DoesNotStoreStringsThatXmlCannotRepresent) {
    for (const std::string& text : {std::string("a\0b", 3),
                                    std::string("a\x01"),
                                    std::string("a\rb"),
                                    std::string("\x80"),
                                    std::string("a\xC3"),
                                    std::string("\xED\xA0\x80"),
                                    std::string("\xEF\xBF\xBE"),
                                    std::string("\xEF\xBF\xBF")}) {
        for (const Value& value : {Value(text),
                                   Value(Dictionary{{text, true}}),
                                   Value(Dictionary{{"inner", Dictionary{{"key", text}}}})}) {
            EXPECT_TRUE(propertyListElement(value).isEmpty()) << text;
        }
    }
}

TEST(PropertyListTests, KeepsDatesToTheMicrosecond) {
    std::vector<Date> dates{
        Date{}, Date{-1us}, Date{sys_days{1y / 1 / 1}}, Date{sys_days{10000y / 1 / 1}} - 1us};
    std::mt19937_64 random(20010101); // NOLINT: the same dates every time
    for (int count = 0; count < 2000; ++count) {
        dates.push_back(Date{} + 1us * (static_cast<std::int64_t>(random()) / 1000));
    }
    for (const Date date : dates) {
        ASSERT_EQ(stored(date), Value(date)) << date.time_since_epoch().count();
    }
    EXPECT_EQ(propertyListElement(Date{sys_days{2024y / 3 / 7}} + 10h + 50us),
              "<date>2024-03-07T10:00:00.000050Z</date>");
}

TEST(PropertyListTests, DoesNotStoreWhatIsNoValue) {
    for (const Value& value : {Value(Other{}),
                               Value(Dictionary{{"inner", Other{}}}),
                               Value(Date::min()),
                               Value(Date::max())}) {
        EXPECT_TRUE(propertyListElement(value).isEmpty());
    }
}

TEST(PropertyListTests, ReadsWhatOthersWrote) {
    EXPECT_EQ(parsedValue("<true></true>"), Value(true));
    EXPECT_EQ(parsedValue("<!-- comment -->\n<integer>-7</integer>"), Value(std::int64_t{-7}));
    EXPECT_EQ(parsedValue("<real>20.5</real>"), Value(20.5));
    EXPECT_EQ(parsedValue("<string><![CDATA[<a>]]>&#13;&lt;</string>"), Value("<a>\r<"));
    EXPECT_EQ(parsedValue("<date>2024-03-07T10:00:00Z</date>"),
              Value(Date{sys_days{2024y / 3 / 7} + 10h}));
    EXPECT_EQ(parsedValue("<dict><key>list</key><array><true/></array><key>a</key><dict/></dict>"),
              Value(Dictionary{{"list", Other{}}, {"a", Dictionary{}}}));
}

TEST(PropertyListTests, ReadsUnusableValuesAsOther) {
    for (const std::string element : {"<array><integer>1</integer></array>",
                                      "<data>AAEC</data>",
                                      "<integer>18446744073709551616</integer>",
                                      "<integer>1.5</integer>",
                                      "<real>0,5</real>",
                                      "<date>yesterday</date>",
                                      "<dict><true/></dict>"}) {
        EXPECT_EQ(parsedValue(element), Value(Other{})) << element;
    }
}

TEST(PropertyListTests, RewritesEveryElementUnchanged) {
    const std::string items =
        "<key>a</key><array><integer>1</integer><array>\n<data>\n\tAAEC/w==\n</data></array></"
        "array>\n"
        "<key>b</key><string>&#13;&#10;&amp;\xF0\x9F\x98\x80<![CDATA[<]]></string>\n"
        "<key>c</key><dict><key>CF$UID</key><integer>300</integer><!-- kept --></dict>\n"
        "<key>d</key><true/>\n";
    const auto list = parsePropertyList(document(items));
    ASSERT_TRUE(list);
    const QByteArray written = serializePropertyList(*list);
    EXPECT_TRUE(written.contains(QByteArray::fromStdString(items))) << written.toStdString();
    EXPECT_EQ(parsePropertyList(written), list);
}

TEST(PropertyListTests, RefusesWhatIsNotADictionary) {
    for (const std::string& bytes :
         {std::string(),
          std::string("bplist00\xD0\x08"),
          std::string("{\"json\": true}"),
          std::string(4096, '\0'),
          std::string("<plist><array/></plist>"),
          std::string("<dict/>"),
          std::string("<plist><dict/><dict/></plist>"),
          std::string("<plist><dict/></plist>more"),
          std::string("<plist><dict><key>a</key></dict></plist>"),
          std::string("<plist><dict><key>a</key><true/><true/></dict></plist>"),
          std::string("<plist><dict><key>a</key><string>\xFF</string></dict></plist>"),
          std::string("<plist><dict><key>a</key><string>\x01</string></dict></plist>"),
          std::string("<plist><dict><key>a</key><string>&undeclared;</string></dict></plist>")}) {
        EXPECT_FALSE(parsePropertyList(QByteArray::fromStdString(bytes))) << bytes;
    }
}

TEST(PropertyListTests, RefusesAListThatEndsEarly) {
    const QByteArray whole = serializePropertyList(
        {{"a", propertyListElement(Dictionary{{"b", 0.1}})}, {"c", "<data>AAEC</data>"}});
    ASSERT_TRUE(parsePropertyList(whole));
    const auto lengthWithoutNewline = whole.size() - 1;
    for (qsizetype size = 0; size < lengthWithoutNewline; ++size) {
        EXPECT_FALSE(parsePropertyList(whole.first(size))) << size;
    }
}

TEST(PropertyListTests, SurvivesDeepNesting) {
    for (const auto& [begin, end] :
         {std::pair("<array>", "</array>"), std::pair("<dict><key>a</key>", "</dict>")}) {
        const std::string element = nested(100'000, begin, end);
        EXPECT_NO_FATAL_FAILURE(parsedValue(element));
    }
}

TEST(PropertyListTests, CanReadWhatItWritesAfterReadingDamagedBytes) {
    const QByteArray whole = document("<key>a</key><array><data>AAEC</data><real>0.5</real></array>"
                                      "<key>b</key><date>2024-03-07T10:00:00Z</date>"
                                      "<key>c</key><string>&lt;&#13;\xC3\xA9</string><!-- x -->");
    ASSERT_TRUE(parsePropertyList(whole));
    std::mt19937 random(2); // NOLINT: the same damage every time
    std::uniform_int_distribution<qsizetype> anywhere(0, whole.size() - 1);
    int acceptedCount = 0;
    for (int attempt = 0; attempt < 20'000; ++attempt) {
        QByteArray damaged = whole;
        damaged[anywhere(random)] = static_cast<char>(random() % 256);
        damaged[anywhere(random)] = whole[anywhere(random)];
        const auto list = parsePropertyList(damaged);
        if (list) {
            ++acceptedCount;
            ASSERT_EQ(parsePropertyList(serializePropertyList(*list)), list)
                << damaged.toStdString();
        }
    }
    EXPECT_GT(acceptedCount, 100);
}

} // namespace
