#include "fuzz/DifferentialCheck.h"
#include "fuzz/DocumentGenerator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace {

using fuzz::Conversion;
using fuzz::findDifference;
using testing::HasSubstr;
using testing::Optional;

TEST(DifferentialCheckTests, ReportsNothingIfTheResultsAgree) {
    EXPECT_EQ(findDifference("- milk\r\n\r\n1. eggs \xFF & \0", fuzz::convertFast), std::nullopt);
}

TEST(DifferentialCheckTests, ReportsADifferenceInEachPartWithTheDocument) {
    static constexpr std::string_view document = "- milk\n2. eggs";
    const auto expectReport = [](std::string_view part, void (*plant)(Conversion&)) {
        const auto report = findDifference(document, [plant](std::string_view text) {
            Conversion conversion = fuzz::convertFast(text);
            plant(conversion);
            return conversion;
        });
        EXPECT_THAT(report, Optional(HasSubstr("Difference in " + std::string(part) + "\n")));
        EXPECT_THAT(
            report,
            Optional(HasSubstr("document:\n  2d 20 6d 69 6c 6b 0a 32 2e 20 65 67 67 73\n")));
    };
    expectReport("the lines", [](Conversion& conversion) { conversion.lines[1] = "2. eggs"; });
    expectReport("the lines", [](Conversion& conversion) { conversion.lines.emplace_back(); });
    expectReport("the html", [](Conversion& conversion) { conversion.html.back() = ' '; });
    expectReport("the plain text", [](Conversion& conversion) { conversion.plainText += '\n'; });
    expectReport("the count", [](Conversion& conversion) { ++conversion.stickyCount; });
}

TEST(DifferentialCheckTests, GeneratedDocumentsRevealAConverterThatMissesOneDigit) {
    fuzz::DocumentGenerator generator(1);
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto report = findDifference(generator.next(), [](std::string_view text) {
            std::string without(text);
            const std::size_t at = without.find("\U0001E4F0.");
            if (at != std::string::npos) {
                without.replace(at, 4, "x");
            }
            return fuzz::convertFast(without);
        });
        found += report ? 1 : 0;
    }
    EXPECT_GT(found, 0);
}

TEST(DocumentGeneratorTests, TheSeedDeterminesTheDocuments) {
    fuzz::DocumentGenerator one(1);
    fuzz::DocumentGenerator same(1);
    fuzz::DocumentGenerator other(2);
    std::set<std::string> ofOne;
    std::set<std::string> ofOther;
    for (int i = 0; i < 100; ++i) {
        const std::string document = one.next();
        EXPECT_EQ(document, same.next());
        ofOne.insert(document);
        ofOther.insert(other.next());
    }
    EXPECT_NE(ofOne, ofOther);
    EXPECT_GT(ofOne.size(), 50U);
}

} // namespace
