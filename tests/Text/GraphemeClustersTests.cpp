#include "Text/CharacterClasses.h"
#include "tests/Reference/ReferenceConversion.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using text::countGraphemeClusters;

TEST(GraphemeClustersTests, CountsUserPerceivedCharacters) {
    EXPECT_EQ(countGraphemeClusters(""), 0);
    EXPECT_EQ(countGraphemeClusters("milk"), 4);
    EXPECT_EQ(countGraphemeClusters("cafe\u0301"), 4);
    EXPECT_EQ(countGraphemeClusters("\U0001F468\u200D\U0001F469\u200D\U0001F467"), 1);
    EXPECT_EQ(countGraphemeClusters("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), 2);
    EXPECT_EQ(countGraphemeClusters("\U0001F44D\U0001F3FD"), 1);
    EXPECT_EQ(countGraphemeClusters("\u1112\u1161\u11AB"), 1);
}

TEST(GraphemeClustersTests, CountsCarriageReturnLineFeedAsOne) {
    EXPECT_EQ(countGraphemeClusters("a\r\nb"), 3);
    EXPECT_EQ(countGraphemeClusters("\n\r"), 2);
    EXPECT_EQ(countGraphemeClusters("\r\r\n\n"), 3);
}

TEST(GraphemeClustersTests, CountsZeroBytes) {
    EXPECT_EQ(countGraphemeClusters(std::string_view("\0a\0", 3)), 3);
}

TEST(GraphemeClustersTests, CountsEachIllFormedSequenceAsOne) {
    EXPECT_EQ(countGraphemeClusters("a\xFFz\xE2\x82"), 4);
}

TEST(GraphemeClustersTests, AgreesWithTheReferenceOnRandomSequences) {
    // One character of each class that the cluster rules distinguish, and some of none.
    const std::vector<std::string_view> characters{
        "a",      " ",          "\r",         "\n",         "\t",         "\u00AD", "\u0301",
        "\u200D", "\u0600",     "\u0903",     "\u1100",     "\u1161",     "\u11A8", "\uAC00",
        "\uAC01", "\U0001F1E9", "\U0001F1EA", "\U0001F468", "\U0001F3FD", "\u2764", "\uFE0F",
        "\u20E3", "\U000E0062", "\u3042",     "\u0E33"};
    std::mt19937_64 random(7); // NOLINT(*-msc51-cpp): the same texts on every run
    for (int i = 0; i < 20'000; ++i) {
        std::string text;
        for (std::size_t left = random() % 12; left > 0; --left) {
            text += characters[random() % characters.size()];
        }
        ASSERT_EQ(countGraphemeClusters(text), reference::countGraphemeClusters(text)) << text;
    }
}

} // namespace
