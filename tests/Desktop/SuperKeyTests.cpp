#include "tests/Desktop/ResidentTest.h"
#include "tests/Support/OtherX11Program.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using program_test::ResidentTest;
using program_test::wroteMessage;
using testing_support::ChildProcess;
using testing_support::OtherX11Program;
using testing_support::waitUntil;

struct Desktop {
    std::string name;
    std::vector<std::string> command;

    friend std::ostream& operator<<(std::ostream& stream, const Desktop& desktop) {
        return stream << desktop.name;
    }
};

/// Desktops that act on the left Super key alone and keep the keyboard while it is held: Xfce's
/// settings service with a command bound to Super, and GNOME's window manager.
const std::vector<Desktop> desktops{{"Xfce", {"xfsettingsd", "--no-daemon", "--disable-wm-check"}},
                                    {"GNOME", {"mutter", "--x11", "--replace", "--sm-disable"}}};

class SuperKeyTests : public ResidentTest, public testing::WithParamInterface<Desktop> {
  protected:
    void SetUp() override {
        const std::string& program = GetParam().command.front();
        if (ChildProcess({"sh", "-c", "command -v " + program}).waitForExit() != 0) {
            GTEST_SKIP() << program << " is not installed";
        }
    }

    /// Starts the desktop's program and waits until it has the keyboard while Super is held.
    void startDesktop() {
        auto environment = session_.environment();
        environment["GSETTINGS_BACKEND"] = "memory";
        bindSuperInXfce(environment.at("XDG_CONFIG_HOME"));
        desktop_ = std::make_unique<ChildProcess>(
            GetParam().command, ChildProcess::Options{.environment = environment});
        OtherX11Program observer(session_.display());
        ASSERT_TRUE(waitUntil([&] {
            keyboard_.press(KEY_LEFTMETA);
            const bool isTaken = observer.hasAnotherClientTheKeyboard();
            keyboard_.release(KEY_LEFTMETA);
            return isTaken;
        })) << desktop_->standardError();
    }

    /// Presses the modifiers and gives the program the time it has while a person presses them.
    void press(std::initializer_list<int> modifiers) {
        for (const int key : modifiers) {
            keyboard_.press(key);
            awaitEventLoop();
        }
    }

    void release(std::initializer_list<int> modifiers) {
        for (const int key : modifiers) {
            keyboard_.release(key);
        }
    }

    /// Expects each press of G with the modifiers to convert once.
    void expectConversions(std::initializer_list<int> modifiers) {
        const auto owner = startOwner({"normal"});
        waitForName();
        std::size_t before = logged(wroteMessage);
        for (int i = 0; i < 2; ++i) {
            press(modifiers);
            keyboard_.tap(KEY_G);
            EXPECT_TRUE(waitForLog(wroteMessage, before + 1)) << program_->standardError();
            // A second press before Super is released.
            keyboard_.tap(KEY_G);
            EXPECT_TRUE(waitForLog(wroteMessage, before + 2)) << program_->standardError();
            release(modifiers);
            before += 2;
        }
        awaitEventLoop();
        EXPECT_EQ(logged(wroteMessage), before);
    }

  private:
    static void bindSuperInXfce(const std::filesystem::path& settings) {
        const std::filesystem::path folder = settings / "xfce4/xfconf/xfce-perchannel-xml";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "xfce4-keyboard-shortcuts.xml")
            << R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="commands" type="empty">
    <property name="custom" type="empty">
      <property name="Super_L" type="string" value="true"/>
      <property name="override" type="bool" value="true"/>
    </property>
  </property>
  <property name="providers" type="array">
    <value type="string" value="commands"/>
  </property>
</channel>
)";
    }

    std::unique_ptr<ChildProcess> desktop_;
};

INSTANTIATE_TEST_SUITE_P(Desktops,
                         SuperKeyTests,
                         testing::ValuesIn(desktops),
                         [](const auto& desktop) { return desktop.param.name; });

TEST_P(SuperKeyTests, EachPressOfTheShortcutConvertsOnce) {
    startProgram();
    startDesktop();
    expectConversions({KEY_LEFTMETA});
    expectConversions({KEY_RIGHTMETA});
}

TEST_P(SuperKeyTests, AShortcutWithASecondModifierConvertsOnceInEitherOrder) {
    constexpr int commandAndShift = 0x120000;
    std::filesystem::create_directories(settingsPath().parent_path());
    std::ofstream(settingsPath())
        << R"(<plist version="1.0"><dict><key>userDefinedShortcut</key><dict><key>keyCode</key>)"
        << "<integer>5</integer><key>modifiers</key><integer>" << commandAndShift
        << "</integer></dict></dict></plist>";
    startProgram();
    startDesktop();
    expectConversions({KEY_LEFTMETA, KEY_LEFTSHIFT});
    expectConversions({KEY_LEFTSHIFT, KEY_LEFTMETA});
}

} // namespace
