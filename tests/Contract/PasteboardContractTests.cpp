#include "Platform/Memory/MemoryPasteboard.h"
#include "tests/Contract/PasteboardContract.h"
#include "tests/Desktop/GeneratedText.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace contract {

INSTANTIATE_TEST_SUITE_P(Memory,
                         PasteboardContract,
                         (backend<platform::Pasteboard, platform::MemoryPasteboard>("Memory")),
                         nameOfBackend<platform::Pasteboard>);

using platform::PasteboardType;

TEST_P(PasteboardContract, HoldsNoTextAtFirst) {
    EXPECT_EQ(get(PasteboardType::string), std::nullopt);
    EXPECT_EQ(get(PasteboardType::html), std::nullopt);
}

TEST_P(PasteboardContract, ReturnsTheTextThatWasSet) {
    expectKept("milk\nbread");
}

TEST_P(PasteboardContract, HoldsBothTypesSideBySide) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    ASSERT_TRUE(set("<b>milk</b>", PasteboardType::html));
    EXPECT_EQ(get(PasteboardType::string), "milk");
    EXPECT_EQ(get(PasteboardType::html), "<b>milk</b>");
}

TEST_P(PasteboardContract, AcceptsTheTypesInEitherOrder) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("<b>milk</b>", PasteboardType::html));
    ASSERT_TRUE(set("milk", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "milk");
    EXPECT_EQ(get(PasteboardType::html), "<b>milk</b>");
}

TEST_P(PasteboardContract, HasNoTextOfATypeThatWasNotSet) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("<b>milk</b>", PasteboardType::html));
    EXPECT_EQ(get(PasteboardType::string), std::nullopt);
}

TEST_P(PasteboardContract, HoldsEmptyTextAsText) {
    expectKept("");
}

TEST_P(PasteboardContract, HoldsNoTextAfterClearing) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    pasteboard_->clearContents();
    EXPECT_EQ(get(PasteboardType::string), std::nullopt);
}

TEST_P(PasteboardContract, DropsEverythingSetBeforeTheLatestClearing) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    ASSERT_TRUE(set("<b>milk</b>", PasteboardType::html));
    pasteboard_->clearContents();
    ASSERT_TRUE(set("bread", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "bread");
    EXPECT_EQ(get(PasteboardType::html), std::nullopt);
}

TEST_P(PasteboardContract, ReplacesATextOfTheSameType) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    ASSERT_TRUE(set("bread", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "bread");
}

TEST_P(PasteboardContract, ReturnsTheSameTextOnEveryRead) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "milk");
    EXPECT_EQ(get(PasteboardType::string), "milk");
}

TEST_P(PasteboardContract, KeepsALeadingByteOrderMark) {
    expectKept("\xEF\xBB\xBFmilk");
}

TEST_P(PasteboardContract, ReplacesEachIllFormedSequence) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("a\xFF\xC3(b \xED\xA0\x80 \xE2\x82", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "a\uFFFD\uFFFD(b \uFFFD\uFFFD\uFFFD \uFFFD");
}

TEST_P(PasteboardContract, KeepsZeroBytes) {
    expectKept(std::string_view("a\0b\0", 4));
}

TEST_P(PasteboardContract, KeepsLineBreaksOfEveryKind) {
    expectKept("a\nb\r\nc\rd\n\n");
}

TEST_P(PasteboardContract, KeepsCharactersOfEveryLength) {
    expectKept("caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x8D\x9E");
}

TEST_P(PasteboardContract, KeepsAMegabyte) {
    expectKept(testing_support::generatedText(std::size_t{1024} * 1024));
}

TEST_P(PasteboardContract, KeepsSixtyFourMegabytes) {
    expectKept(testing_support::generatedText(std::size_t{64} * 1024 * 1024));
}

} // namespace contract
