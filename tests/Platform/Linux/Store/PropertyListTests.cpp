#include "Platform/Linux/Store/PropertyList.h"
#include "Platform/Linux/Store/PropertyListBounds.h"

#include <gtest/gtest.h>

#include <bit>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using foundation::Date;
using foundation::Dictionary;
using platform::PropertyList;
using platform::PropertyListBounds;
using std::chrono::December;
using std::chrono::January;
using std::chrono::March;
using std::chrono::microseconds;
using std::chrono::November;
using std::chrono::sys_days;
using Object = foundation::Value;
using Other = foundation::Other;

/// What a later start of the program reads.
PropertyList readAgain(const PropertyList& list) {
    const auto bytes = list.serialize();
    EXPECT_TRUE(bytes);
    auto again = PropertyList::parse(bytes.value_or(""));
    EXPECT_TRUE(again);
    return again ? std::move(*again) : PropertyList();
}

Object kept(const Object& object) {
    PropertyList list;
    EXPECT_TRUE(list.setObject("key", object));
    return readAgain(list).object("key").value_or(Other{});
}

void expectIsKept(const Object& object) {
    EXPECT_EQ(kept(object), object);
}

/// Doubles are compared bit for bit: -0.0 is another one than 0.0.
std::uint64_t keptBits(double number) {
    const Object object = kept(number);
    const auto* again = std::get_if<double>(&object);
    EXPECT_NE(again, nullptr);
    return again != nullptr ? std::bit_cast<std::uint64_t>(*again) : 0;
}

std::string xml(const std::string& items) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>)" +
           items + "</dict></plist>";
}

PropertyList parsed(std::string_view bytes) {
    auto list = PropertyList::parse(bytes);
    EXPECT_TRUE(list);
    return list ? std::move(*list) : PropertyList();
}

void appendBigEndian(std::string& bytes, std::uint64_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value >> shift)));
    }
}

/// A binary property list of these objects with references of four bytes; the first is the root.
std::string binaryList(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        appendBigEndian(offsets, bytes.size(), 4);
        bytes += object;
    }
    const std::size_t offsetTable = bytes.size();
    bytes += offsets;
    bytes.append(6, '\0');
    bytes.append(2, '\4');
    appendBigEndian(bytes, objects.size(), 8);
    appendBigEndian(bytes, 0, 8);
    appendBigEndian(bytes, offsetTable, 8);
    return bytes;
}

std::string references(const std::vector<std::uint64_t>& indices) {
    std::string bytes;
    for (const std::uint64_t index : indices) {
        appendBigEndian(bytes, index, 4);
    }
    return bytes;
}

/// {"a": the object with the number 2}
const std::string rootWithOneItem = "\xD1" + references({1, 2});
const std::string keyA = "\x51"
                         "a";

TEST(PropertyListTests, KeepsDoublesBitForBit) {
    for (const double number : {0.1,
                                1e300,
                                -1e-300,
                                0.0,
                                -0.0,
                                350.0,
                                1.5,
                                5e-324,
                                -5e-324,
                                1e-40,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(keptBits(number), std::bit_cast<std::uint64_t>(number)) << number;
    }
}

TEST(PropertyListTests, KeepsAnyDoublesSideBySide) {
    std::mt19937_64 random(20261121); // NOLINT: the same numbers every time
    PropertyList list;
    std::vector<double> numbers{0.0, -0.0, 1.0, -1.0};
    while (numbers.size() < 2000) {
        numbers.push_back(std::bit_cast<double>(random()));
    }
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        list.setObject(std::to_string(index), numbers[index]);
    }
    const PropertyList again = readAgain(list);
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const Object object = again.object(std::to_string(index)).value_or(Other{});
        ASSERT_TRUE(std::holds_alternative<double>(object));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(std::get<double>(object)),
                  std::bit_cast<std::uint64_t>(numbers[index]));
    }
}

TEST(PropertyListTests, KeepsBooleansApartFromNumbers) {
    expectIsKept(true);
    expectIsKept(false);
    expectIsKept(std::int64_t{1});
    expectIsKept(1.0);
}

TEST(PropertyListTests, KeepsIntegersWithTheirSigns) {
    for (const std::int64_t number : {std::int64_t{0},
                                      std::int64_t{5},
                                      std::int64_t{255},
                                      std::int64_t{65536},
                                      std::int64_t{0x80000000},
                                      std::int64_t{0x7FFFFFFFFFFFFFFF},
                                      std::int64_t{-1},
                                      std::int64_t{-128},
                                      std::numeric_limits<std::int64_t>::min()}) {
        expectIsKept(number);
    }
    expectIsKept(std::uint64_t{0x8000000000000000});
    expectIsKept(std::numeric_limits<std::uint64_t>::max());
}

TEST(PropertyListTests, HandsUnsignedIntegersThatFitBackAsSignedOnes) {
    EXPECT_EQ(kept(std::uint64_t{1048576}), Object(std::int64_t{1048576}));
}

TEST(PropertyListTests, KeepsTheLargestUnsignedIntegerAndMinusOneSideBySide) {
    PropertyList list;
    list.setObject("unsigned", std::numeric_limits<std::uint64_t>::max());
    list.setObject("signed", std::int64_t{-1});
    const PropertyList again = readAgain(list);
    EXPECT_EQ(again.object("unsigned"), Object(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(again.object("signed"), Object(std::int64_t{-1}));
}

TEST(PropertyListTests, KeepsTextsInUtf8) {
    for (const std::string text :
         {"", "plain", "<&\">", "\xC3\xA9", "\xE2\x98\x83", "\xF0\x9F\x98\x80", "\xEF\xBB\xBF."}) {
        expectIsKept(text);
    }
    expectIsKept(std::string(100'000, 'x'));
}

TEST(PropertyListTests, StoresNoTextThatItCouldNotReadAgain) {
    PropertyList list;
    for (const std::string& text : {std::string("\x80"),
                                    std::string("a\xC3"),
                                    std::string("a\xFF\xFE"),
                                    std::string("\xED\xA0\x80"),
                                    std::string("a\0b", 3)}) {
        EXPECT_FALSE(list.setObject("key", text));
        EXPECT_FALSE(list.setObject(text, true));
        EXPECT_FALSE(list.setObject("key", Dictionary{{text, true}}));
        EXPECT_FALSE(list.setObject("key", Dictionary{{"inner", text}}));
    }
    EXPECT_EQ(list.serialize(), PropertyList().serialize());
}

TEST(PropertyListTests, RefusesTextsThatWouldNotSurviveRewriting) {
    for (const std::string& text : {std::string("\x53"
                                                "a\0b",
                                                4),
                                    std::string("\x51\x80"),
                                    std::string("\x62\0a\0\0", 5)}) {
        EXPECT_FALSE(PropertyList::parse(binaryList({rootWithOneItem, keyA, text})));
        EXPECT_FALSE(PropertyList::parse(binaryList({rootWithOneItem, text, keyA})));
    }
}

TEST(PropertyListTests, KeepsDatesToTheMicrosecond) {
    for (const Date date : {Date{},
                            Date{-1us},
                            Date{sys_days{2001y / January / 1}},
                            Date{sys_days{2001y / January / 1}} - 1us,
                            Date{sys_days{2001y / January / 1}} - 500000us,
                            Date{sys_days{2026y / November / 21}} + 123457us,
                            Date{sys_days{2069y / January / 20}} + 1us,
                            Date{sys_days{1730y / January / 1}} + 999999us,
                            Date{sys_days{2272y / December / 31}} + 999999us}) {
        expectIsKept(date);
    }
}

TEST(PropertyListTests, KeepsAnyDateWithinTwoHundredSeventyYearsOf2001ToTheMicrosecond) {
    std::mt19937_64 random(20010101); // NOLINT: the same dates every time
    const Date begin = sys_days{1731y / January / 1};
    const Date end = sys_days{2271y / January / 1};
    std::uniform_int_distribution<std::int64_t> anywhere(begin.time_since_epoch().count(),
                                                         end.time_since_epoch().count());
    for (int count = 0; count < 20'000; ++count) {
        const Date date{microseconds(anywhere(random))};
        ASSERT_EQ(kept(date), Object(date));
    }
}

TEST(PropertyListTests, KeepsTheFarthestDatesRoughly) {
    for (const Date date : {Date::max(), Date::min()}) {
        const Object object = kept(date);
        // Beyond what a date can tell, or the same but for rounding: never something else.
        if (const auto* again = std::get_if<Date>(&object)) {
            const double difference = static_cast<double>(again->time_since_epoch().count()) -
                                      static_cast<double>(date.time_since_epoch().count());
            EXPECT_LT(std::abs(difference), 1e6);
        } else {
            EXPECT_EQ(object, Object(Other{}));
        }
    }
}

TEST(PropertyListTests, ReadsAsNoDateWhatIsNoInstant) {
    for (const std::string& date : {std::string("\x33\x7F\xF8\0\0\0\0\0\0", 9), // NaN
                                    std::string("\x33\x7F\xF0\0\0\0\0\0\0", 9), // infinity
                                    std::string("\x33\xFF\xEF\0\0\0\0\0\0", 9)}) {
        EXPECT_EQ(parsed(binaryList({rootWithOneItem, keyA, date})).object("a"), Object(Other{}));
    }
}

TEST(PropertyListTests, KeepsDictionariesWithTheTypesOfTheirValues) {
    expectIsKept(Dictionary{});
    expectIsKept(Dictionary{{"bool", true},
                            {"double", 0.1},
                            {"keyCode", std::int64_t{5}},
                            {"modifiers", std::numeric_limits<std::uint64_t>::max()},
                            {"negative", std::int64_t{-5}},
                            {"text", std::string("\xC3\xA9")}});
}

TEST(PropertyListTests, ReadsADictionaryWithAllItsValues) {
    const PropertyList list = parsed(xml("<key>a</key><dict>"
                                         "<key>date</key><date>2024-03-07T10:00:00Z</date>"
                                         "<key>list</key><array><true/></array>"
                                         "<key>inner</key><dict/>"
                                         "<key>kept</key><integer>-7</integer>"
                                         "</dict>"));
    EXPECT_EQ(list.object("a"),
              Object(Dictionary{{"date", Date{sys_days(2024y / March / 7) + 10h}},
                                {"inner", Dictionary{}},
                                {"kept", std::int64_t{-7}},
                                {"list", Other{}}}));
}

TEST(PropertyListTests, TellsWhetherAnythingChanged) {
    PropertyList list;
    for (const Object& object : {Object(true),
                                 Object(std::int64_t{-1}),
                                 Object(0.1),
                                 Object(-0.0),
                                 Object(0.0),
                                 Object(std::numeric_limits<double>::quiet_NaN()),
                                 Object(std::string("text")),
                                 Object(Date{std::chrono::microseconds(1)}),
                                 Object(Dictionary{{"a", 1.0}, {"b", true}})}) {
        EXPECT_TRUE(list.setObject("key", object));
        EXPECT_FALSE(list.setObject("key", object));
        list = readAgain(list);
        EXPECT_FALSE(list.setObject("key", object));
    }
    EXPECT_TRUE(list.removeObject("key"));
    EXPECT_FALSE(list.removeObject("key"));
}

TEST(PropertyListTests, LeavesWhatHasATypeItDoesNotKnowAsItIs) {
    PropertyList list = parsed(xml("<key>a</key><array><true/></array>"));
    EXPECT_FALSE(list.setObject("a", Other{}));
    EXPECT_EQ(list.object("a"), Object(Other{}));
}

TEST(PropertyListTests, KeepsTypesThatItDoesNotKnowThroughEveryRewriting) {
    const std::string items = "<key>array</key><array><integer>1</integer><string>x</string>"
                              "<array><data>AAEC/w==</data></array></array>"
                              "<key>data</key><data>AAECAwQ=</data>"
                              "<key>nested</key><dict><key>inner</key><dict><key>deep</key>"
                              "<date>1999-12-31T23:59:59Z</date></dict></dict>"
                              "<key>uid</key><dict><key>CF$UID</key><integer>300</integer></dict>";
    const PropertyList original = parsed(xml(items));
    PropertyList list = parsed(xml(items));
    for (int rewriting = 0; rewriting < 5; ++rewriting) {
        EXPECT_TRUE(list.setObject("analytics.count", std::int64_t{rewriting}));
        list = readAgain(list);
    }
    EXPECT_TRUE(list.removeObject("analytics.count"));
    EXPECT_EQ(list.serialize(), original.serialize());
    EXPECT_EQ(list.object("array"), Object(Other{}));
    EXPECT_EQ(list.object("data"), Object(Other{}));
}

TEST(PropertyListTests, KeepsTheNumbersOfKeyedArchives) {
    const std::string uid("\x81\x01\x2C", 3);
    const std::string bytes = binaryList({rootWithOneItem, keyA, uid});
    PropertyList list = parsed(bytes);
    EXPECT_EQ(list.object("a"), Object(Other{}));
    list.setObject("b", true);
    EXPECT_NE(list.serialize().value_or("").find(uid), std::string::npos);
}

TEST(PropertyListTests, ReadsAListThatSomebodyWroteByHand) {
    const PropertyList list =
        parsed(xml("<key>analytics.shouldFlashSavings</key><false/>"
                   "<key>analytics.todaySavedSeconds.2024-03-07</key><real>350.5</real>"
                   "<key>large</key><integer>18446744073709551615</integer>"
                   "<key>analytics.lastInteractionDate</key><date>2024-03-07T10:00:00Z</date>"
                   "<key>userDefinedShortcut</key><dict><key>keyCode</key><integer>5</integer>"
                   "<key>modifiers</key><integer>1048576</integer></dict>"));
    EXPECT_EQ(list.object("analytics.shouldFlashSavings"), Object(false));
    EXPECT_EQ(list.object("analytics.todaySavedSeconds.2024-03-07"), Object(350.5));
    EXPECT_EQ(list.object("large"), Object(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(list.object("analytics.lastInteractionDate"),
              Object(Date{sys_days{2024y / March / 7} + 10h}));
    EXPECT_EQ(
        list.object("userDefinedShortcut"),
        Object(Dictionary{{"keyCode", std::int64_t{5}}, {"modifiers", std::int64_t{1048576}}}));
    EXPECT_TRUE(list.serialize().value_or("").starts_with("bplist00"));
}

TEST(PropertyListTests, RefusesWhatIsNoDictionary) {
    for (const std::string& bytes : {std::string(),
                                     std::string("b"),
                                     std::string("bplist00"),
                                     std::string("no property list"),
                                     std::string("{\"json\": true}"),
                                     std::string(4096, '\0'),
                                     std::string(R"(<plist version="1.0"><array/></plist>)"),
                                     std::string(R"(<plist version="1.0"><dict><key>a</key>)"),
                                     binaryList({"\xA0"}),
                                     binaryList({"\x09"})}) {
        EXPECT_FALSE(PropertyList::parse(bytes)) << bytes;
    }
}

TEST(PropertyListTests, RefusesAListThatNestsTooDeeply) {
    std::vector<std::string> objects{rootWithOneItem, keyA};
    for (std::uint64_t depth = 0; depth < 100'000; ++depth) {
        objects.push_back("\xA1" + references({objects.size() + 1}));
    }
    objects.emplace_back("\x09");
    EXPECT_FALSE(PropertyList::parse(binaryList(objects)));

    std::string items = "<key>a</key>";
    for (int depth = 0; depth < 100'000; ++depth) {
        items += "<array>";
    }
    EXPECT_FALSE(PropertyList::parse(xml(items)));
}

TEST(PropertyListTests, RefusesAListThatContainsItself) {
    EXPECT_FALSE(PropertyList::parse(binaryList({"\xD1" + references({1, 0}), keyA})));
}

TEST(PropertyListTests, RefusesASmallListThatGrowsWithoutBounds) {
    // Each array holds the next one twice.
    std::vector<std::string> objects{rootWithOneItem, keyA};
    for (int doubling = 0; doubling < 60; ++doubling) {
        objects.push_back("\xA2" + references({objects.size() + 1, objects.size() + 1}));
    }
    objects.emplace_back("\x09");
    EXPECT_FALSE(PropertyList::parse(binaryList(objects)));

    // One long text a hundred thousand times.
    std::string array("\xAF\x12", 2);
    appendBigEndian(array, 100'000, 4);
    array += references(std::vector<std::uint64_t>(100'000, 3));
    std::string text("\x5F\x12", 2);
    appendBigEndian(text, 1'000'000, 4);
    text.append(1'000'000, 'x');
    EXPECT_FALSE(PropertyList::parse(binaryList({rootWithOneItem, keyA, array, text})));
}

TEST(PropertyListTests, RefusesAListOfTooManyBytes) {
    const std::string filler(PropertyListBounds::maxFileSize, ' ');
    EXPECT_TRUE(PropertyList::parse(xml("<key>a</key><true/>")));
    EXPECT_FALSE(PropertyList::parse(xml("<key>a</key><true/>" + filler)));
}

TEST(PropertyListTests, WritesNothingThatItWouldNotRead) {
    PropertyList list;
    list.setObject("long", std::string(PropertyListBounds::maxFileSize, 'x'));
    EXPECT_FALSE(list.serialize());
    list.removeObject("long");
    EXPECT_TRUE(list.serialize());
}

TEST(PropertyListTests, KeepsTheDaysOfALifetime) {
    PropertyList list;
    for (int day = 0; day < 30'000; ++day) {
        list.setObject("analytics.todaySavedSeconds." + std::to_string(day), day + 0.1);
    }
    EXPECT_EQ(readAgain(list).object("analytics.todaySavedSeconds.29999"), Object(29999.1));
}

/// A sound list of every type, as it stands in a file.
std::string soundList() {
    PropertyList list = parsed(xml("<key>array</key><array><integer>1</integer></array>"
                                   "<key>data</key><data>AAECAwQ=</data>"
                                   "<key>nested</key><dict><key>a</key><dict/></dict>"));
    list.setObject("bool", true);
    list.setObject("large", std::numeric_limits<std::uint64_t>::max());
    list.setObject("negative", std::int64_t{-1});
    list.setObject("double", 0.1);
    list.setObject("text", std::string("plain"));
    list.setObject("other text", std::string("\xE2\x98\x83"));
    list.setObject("date", Date{std::chrono::microseconds(1'700'000'000'000'001)});
    list.setObject("dictionary", Dictionary{{"keyCode", std::int64_t{5}}});
    return list.serialize().value_or("");
}

/// Reads bytes that may be damaged, and uses what comes of them in every way.
void survive(const std::string& bytes) {
    auto list = PropertyList::parse(bytes);
    if (!list) {
        return;
    }
    for (const std::string key : {"bool",
                                  "large",
                                  "negative",
                                  "double",
                                  "text",
                                  "other text",
                                  "date",
                                  "dictionary",
                                  "array",
                                  "data",
                                  "nested"}) {
        static_cast<void>(list->object(key));
        list->setObject(key, std::string("new"));
    }
    if (const auto again = list->serialize()) {
        EXPECT_TRUE(PropertyList::parse(*again));
    }
}

TEST(PropertyListTests, SurvivesAListThatEndsTooEarly) {
    const std::string sound = soundList();
    ASSERT_TRUE(PropertyList::parse(sound));
    for (std::size_t size = 0; size < sound.size(); ++size) {
        survive(sound.substr(0, size));
    }
}

TEST(PropertyListTests, SurvivesAnySingleByteThatIsWrong) {
    const std::string sound = soundList();
    for (std::size_t at = 0; at < sound.size(); ++at) {
        for (const unsigned flipped : {0x01U, 0x02U, 0x04U, 0x08U, 0x10U, 0x20U, 0x40U, 0x80U}) {
            std::string damaged = sound;
            damaged[at] = static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ flipped);
            survive(damaged);
        }
    }
}

TEST(PropertyListTests, SurvivesManyBytesThatAreWrong) {
    const std::string sound = soundList();
    std::mt19937 random(1); // NOLINT: the same damage every time
    for (int attempt = 0; attempt < 20'000; ++attempt) {
        std::string damaged = sound;
        for (auto count = random() % 8 + 2; count > 0; --count) {
            damaged[random() % damaged.size()] =
                static_cast<char>(static_cast<unsigned char>(random()));
        }
        survive(damaged);
    }
}

TEST(PropertyListTests, SurvivesDamagedXml) {
    const std::string sound = xml("<key>a</key><array><data>AAEC</data><real>0.5</real></array>"
                                  "<key>b</key><date>2024-03-07T10:00:00Z</date>"
                                  "<key>c</key><string>&lt;x&gt;</string><!-- no --> ");
    ASSERT_TRUE(PropertyList::parse(sound));
    std::mt19937 random(2); // NOLINT: the same damage every time
    for (int attempt = 0; attempt < 20'000; ++attempt) {
        std::string damaged = sound;
        for (auto count = random() % 4 + 1; count > 0; --count) {
            damaged[random() % damaged.size()] =
                static_cast<char>(static_cast<unsigned char>(random() % 128));
        }
        damaged.resize(random() % (2 * damaged.size()), '>');
        survive(damaged);
    }
}

} // namespace
