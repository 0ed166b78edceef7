#include "tests/Desktop/ProgramTest.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

using program_test::ProgramTest;
using testing_support::ChildProcess;
using testing_support::waitUntil;

/// A page in a real browser that turns what is pasted into notes: see resources/demo.
class BrowserTests : public ProgramTest {
  protected:
    void startBrowser() {
        std::vector<std::string> command{"chromium",
                                         "--no-first-run",
                                         "--disable-gpu",
                                         "--disable-quic",
                                         "--disable-background-networking",
                                         "--disable-component-update",
                                         "--disable-sync",
                                         "--disable-dev-shm-usage",
                                         "--password-store=basic",
                                         "--user-data-dir=" + session_.environment().at("HOME") +
                                             "/browser",
                                         std::string("--app=file://") + PASTEWISE_WHITEBOARD_PAGE};
        if (geteuid() == 0) { // The browser's sandbox refuses to run as root.
            command.insert(command.end(), {"--no-sandbox", "--test-type"});
        }
        browser_ = std::make_unique<ChildProcess>(
            command, ChildProcess::Options{.environment = session_.environment()});
        ASSERT_TRUE(waitForTitle("Whiteboard ready", std::chrono::seconds(40)))
            << browser_->standardError();
        runTool({"xdotool", "search", "--name", "^Whiteboard ready", "windowactivate", "--sync"});
    }

    [[nodiscard]] bool waitForTitle(const std::string& title,
                                    std::chrono::milliseconds limit = testing_support::patience) {
        return waitUntil(
            [&] {
                ChildProcess search({"xdotool", "search", "--name", "^" + title},
                                    {.environment = session_.environment()});
                return search.waitForExit() == 0;
            },
            limit);
    }

    /// Pastes into the page from the keyboard and returns the data of the page's paste event.
    nlohmann::json pasteIntoPage(std::size_t expectedNotes) {
        keyboard_.tapTogether({KEY_LEFTCTRL, KEY_V});
        EXPECT_TRUE(waitForTitle("Pasted " + std::to_string(expectedNotes) + " notes"));
        keyboard_.tapTogether({KEY_LEFTCTRL, KEY_C});
        EXPECT_TRUE(waitForTitle("Copied"));
        // The browser writes the clipboard after the page has set its title; until then the
        // clipboard may hold the copy of an earlier paste.
        nlohmann::json copied;
        EXPECT_TRUE(waitUntil([&] {
            copied = nlohmann::json::parse(paste("UTF8_STRING"), nullptr, false);
            return copied.is_object() && copied["rows"].size() == expectedNotes;
        })) << copied;
        return copied;
    }

    std::unique_ptr<ChildProcess> browser_;
};

TEST_F(BrowserTests, APastedListArrivesAsOneRowPerLineAndAsPlainTextByteForByte) {
    const std::vector<std::string> lines{"Buy milk",
                                         "Tom & Jerry <3 \"quotes\" 'x'",
                                         "already &amp; escaped",
                                         "<script>alert(1)</script>",
                                         "inner   spaces\tand a tab",
                                         "Ελληνικά 中文 \u0645\u0631\u062D\u0628\u0627",
                                         "👩‍👩‍👧 family, e\u0301 and \u00A0 inside"};
    std::string list;
    std::string plainText;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        list += "• " + lines[i] + "\n\n";
        plainText += (i == 0 ? "" : "\n") + lines[i];
    }

    startProgram();
    startBrowser();
    const auto owner = startOwner({"normal", "--text", "-"}, list);
    convert();
    const nlohmann::json pasted = pasteIntoPage(lines.size());

    const std::vector<std::string> types = pasted["types"];
    EXPECT_NE(std::find(types.begin(), types.end(), "text/html"), types.end());
    EXPECT_NE(std::find(types.begin(), types.end(), "text/plain"), types.end());
    EXPECT_EQ(pasted["plain"], plainText);
    ASSERT_EQ(pasted["rows"].size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(pasted["rows"][i], nlohmann::json::array({lines[i]}));
    }
    EXPECT_EQ(pasted["gridData"]["rowCount"], lines.size());
    EXPECT_EQ(pasted["gridData"]["columnCount"], 1);
    EXPECT_EQ(pasted["analyticsData"]["properties"]["source"], "GoogleSpreadsheet");
    EXPECT_EQ(pasted["analyticsData"]["properties"]["children"]["grid_text"], lines.size());
}

TEST_F(BrowserTests, AListCopiedInTheBrowserItselfIsConvertedAndPastedBack) {
    startProgram();
    startBrowser();
    const auto owner = startOwner({"normal", "--text", "1. one\n2. two\n3. three"});
    convert();
    EXPECT_EQ(pasteIntoPage(3)["plain"], "one\ntwo\nthree");
    // The browser now owns the clipboard, with a text of one line.
    convert();
    const nlohmann::json pasted = pasteIntoPage(1);
    EXPECT_EQ(nlohmann::json::parse(pasted["plain"].get<std::string>())["plain"],
              "one\ntwo\nthree");
}

TEST_F(BrowserTests, ThousandsOfLinesArriveWhole) {
    std::string list;
    std::string plainText;
    for (int i = 1; i <= 5000; ++i) {
        list += std::to_string(i) + ". item <" + std::to_string(i) + ">\n";
        plainText += (i == 1 ? "" : "\n") + ("item <" + std::to_string(i) + ">");
    }
    startProgram();
    startBrowser();
    const auto owner = startOwner({"normal", "--text", "-"}, list);
    convert();
    const nlohmann::json pasted = pasteIntoPage(5000);
    EXPECT_TRUE(pasted["plain"] == plainText);
    EXPECT_EQ(pasted["rows"][4999][0], "item <5000>");
}

} // namespace
