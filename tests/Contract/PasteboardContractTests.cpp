#include "Platform/Memory/MemoryPasteboard.h"
#include "Platform/Pasteboard.h"
#include "tests/Contract/PairOfX11Pasteboards.h"
#include "tests/Contract/SingleX11Pasteboard.h"
#include "tests/Desktop/GeneratedText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace {

using foundation::TextBuffer;
using platform::Pasteboard;
using platform::PasteboardType;

struct Backend {
    std::string name;
    std::function<std::unique_ptr<Pasteboard>()> make;

    friend void PrintTo(const Backend& backend, std::ostream* stream) { *stream << backend.name; }
};

class PasteboardContract : public testing::TestWithParam<Backend> {
  protected:
    [[nodiscard]] bool set(std::string_view text, PasteboardType type) {
        return pasteboard_->setString(TextBuffer(text), type);
    }

    [[nodiscard]] std::optional<std::string> get(PasteboardType type) {
        const auto text = pasteboard_->string(type);
        return text ? std::optional<std::string>(text->view()) : std::nullopt;
    }

    void expectKept(std::string_view text) {
        pasteboard_->clearContents();
        ASSERT_TRUE(set(text, PasteboardType::string));
        // Compared as a whole: the text may be too long to be printed.
        EXPECT_TRUE(get(PasteboardType::string) == text);
    }

    std::unique_ptr<Pasteboard> pasteboard_ = GetParam().make();
};

TEST_P(PasteboardContract, HoldsNoTextBeforeAnybodyHasSetOne) {
    EXPECT_EQ(get(PasteboardType::string), std::nullopt);
    EXPECT_EQ(get(PasteboardType::html), std::nullopt);
}

TEST_P(PasteboardContract, GivesBackTheTextThatWasSet) {
    expectKept("milk\nbread");
}

TEST_P(PasteboardContract, HoldsBothTypesSideBySide) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    ASSERT_TRUE(set("<b>milk</b>", PasteboardType::html));
    EXPECT_EQ(get(PasteboardType::string), "milk");
    EXPECT_EQ(get(PasteboardType::html), "<b>milk</b>");
}

TEST_P(PasteboardContract, TakesTheTypesInEitherOrder) {
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

TEST_P(PasteboardContract, TakesAnEmptyTextForAText) {
    expectKept("");
}

TEST_P(PasteboardContract, HoldsNoTextOnceCleared) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    pasteboard_->clearContents();
    EXPECT_EQ(get(PasteboardType::string), std::nullopt);
}

TEST_P(PasteboardContract, ForgetsEverythingBeforeTheLatestClearing) {
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

TEST_P(PasteboardContract, GivesTheSameTextAgainAndAgain) {
    pasteboard_->clearContents();
    ASSERT_TRUE(set("milk", PasteboardType::string));
    EXPECT_EQ(get(PasteboardType::string), "milk");
    EXPECT_EQ(get(PasteboardType::string), "milk");
}

TEST_P(PasteboardContract, KeepsALeadingByteOrderMark) {
    expectKept("\xEF\xBB\xBFmilk");
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

INSTANTIATE_TEST_SUITE_P(
    OfEachBackend,
    PasteboardContract,
    testing::Values(
        Backend{"Memory", [] { return std::make_unique<platform::MemoryPasteboard>(); }},
        Backend{"X11", [] { return std::make_unique<testing_support::SingleX11Pasteboard>(); }},
        Backend{"X11InTwoProcesses",
                [] { return std::make_unique<testing_support::PairOfX11Pasteboards>(); }}),
    [](const auto& instance) { return instance.param.name; });

} // namespace
