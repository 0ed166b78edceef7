#include "Platform/Linux/Tray/TrayStatusBar.h"
#include "tests/Platform/Linux/Tray/TrayTest.h"
#include "tests/Support/ChildProcess.h"
#include "tests/Support/FakeKeyboard.h"
#include "tests/Support/XEmbedTray.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

#include <QLibraryInfo>
#include <QMenu>
#include <QScreen>
#include <QVersionNumber>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace {

using nlohmann::json;
using platform::StatusBar;
using testing::ElementsAre;
using testing_support::ChildProcess;
using testing_support::XEmbedTray;

const std::string checkmark = "\u2713";

class TrayStatusBarTests : public tray_test::TrayTest {
  protected:
    bool waitForIconInHost() {
        return turnUntil([this] { return host_->showsIcon(); });
    }

    static bool waitForWindows(XEmbedTray& tray, std::size_t count) {
        return turnUntil([&] { return tray.iconCount() == count; });
    }

    /// Whether Qt takes a watcher for a tray even if no host is there, and so makes no window.
    static bool countsAWatcherAsATray() { return QLibraryInfo::version() >= QVersionNumber(6, 8); }

    static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
};

TEST_F(TrayStatusBarTests, TheIconAppearsInTheTray) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    EXPECT_EQ(
        host_->last("icon")["sizes"],
        json({"16x16", "18x18", "22x22", "24x24", "32x32", "36x36", "44x44", "48x48", "64x64"}));
    EXPECT_EQ(host_->count("registered"), 1U);
}

TEST_F(TrayStatusBarTests, TheItemDescribesItself) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    const json values = ask("properties")["values"];
    EXPECT_EQ(values["Category"], "ApplicationStatus");
    EXPECT_EQ(values["Id"], "com.app.pastewise");
    EXPECT_EQ(values["Title"], "Pastewise");
    EXPECT_EQ(values["ToolTip"], "Pastewise");
    EXPECT_EQ(values["Status"], "Active");
    EXPECT_EQ(values["IconName"], "");
    EXPECT_EQ(values["ItemIsMenu"], true);
    EXPECT_EQ(values["Menu"], "/MenuBar");
}

TEST_F(TrayStatusBarTests, AnItemWithoutAMenuSaysSo) {
    startHost();
    item_ = statusBar_.makeStatusItem(StatusBar::variableLength);
    item_->button()->setImage(picture("P"));
    ASSERT_TRUE(waitForIconInHost());
    const json values = ask("properties")["values"];
    EXPECT_EQ(values["ItemIsMenu"], false);
    EXPECT_EQ(values["Menu"], "/NO_DBUSMENU");
}

TEST_F(TrayStatusBarTests, TheTrayReadsTheMenuWithItsRows) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    const json menu = ask("menu");
    EXPECT_EQ(menu["update"], true);
    EXPECT_EQ(sample_.openingCount, 1);
    const json& rows = menu["rows"];
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[0]["label"], "Opened: 1");
    EXPECT_EQ(rows[0]["enabled"], false);
    EXPECT_EQ(rows[1]["label"], "Clear__Saved & Time\u2026");
    EXPECT_EQ(rows[2]["shortcut"], json::array({json::array({"Super", "comma"})}));
    EXPECT_EQ(rows[3]["type"], "separator");
    EXPECT_EQ(rows[4]["label"], "Quit");
    EXPECT_EQ(rows[4]["shortcut"], json::array({json::array({"Super", "q"})}));
    EXPECT_EQ(rows[4]["enabled"], true);
}

TEST_F(TrayStatusBarTests, ARowChosenInTheTrayPerformsItsAction) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    EXPECT_FALSE(ask("choose Clear_Saved & Time\u2026").contains("error"));
    EXPECT_TRUE(turnUntil([this] { return !sample_.chosen.empty(); }));
    EXPECT_THAT(sample_.chosen, ElementsAre("clear"));
}

TEST_F(TrayStatusBarTests, RowsThatDoNotExistAreRefused) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    EXPECT_TRUE(ask("click 77").contains("error"));
    EXPECT_FALSE(ask("click 5").contains("error"));
}

TEST_F(TrayStatusBarTests, ANewTitleReachesTheTrayWhileTheMenuIsOpen) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    ask("menu");
    ask("opened");
    sample_.information->setTitle("Time_Saved: 5m");
    ASSERT_TRUE(turnUntil([this] {
        return host_->last("rows-updated").value("rows", json::object()).value("1", "") ==
               "Time__Saved: 5m";
    }));
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(ask("layout")["rows"][0]["label"], "Time__Saved: 5m");
}

TEST_F(TrayStatusBarTests, ANewImageReachesTheTrayAtOnce) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    const json base = host_->last("icon")["digest"];
    item_->button()->setImage(picture(checkmark));
    ASSERT_TRUE(turnUntil([&] { return host_->last("icon")["digest"] != base; }));
    item_->button()->setImage(picture("P"));
    EXPECT_TRUE(turnUntil([&] { return host_->last("icon")["digest"] == base; }));
}

TEST_F(TrayStatusBarTests, NoImageIsShownIfThePositionSaysSo) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    item_->button()->setImagePosition(platform::StatusBarButton::ImagePosition::noImage);
    EXPECT_TRUE(turnUntil([this] { return host_->last("icon")["sizes"].empty(); }));
    item_->button()->setImagePosition(platform::StatusBarButton::ImagePosition::imageOnly);
    EXPECT_TRUE(turnUntil([this] { return !host_->last("icon")["sizes"].empty(); }));
    item_->button()->setImage(nullptr);
    EXPECT_TRUE(turnUntil([this] { return host_->last("icon")["sizes"].empty(); }));
}

TEST_F(TrayStatusBarTests, AClickReportedByTheTrayOpensTheMenuBesideThePointer) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    QCursor::setPos(120, 90);
    ASSERT_TRUE(turnUntil([] { return QCursor::pos() == QPoint(120, 90); }));
    int openings = 0;
    for (const std::string click : {"activate", "context", "secondary"}) {
        // The error makes most trays show the menu themselves. This one does not.
        EXPECT_EQ(ask(click + " 300 200").contains("error"), click == "activate");
        ASSERT_TRUE(turnUntil([] { return openMenu() != nullptr; })) << click;
        const QRect icon(QPoint(120 - 11, 90 - 11), QSize(22, 22));
        EXPECT_FALSE(openMenu()->geometry().intersects(icon));
        EXPECT_TRUE(openMenu()->geometry().intersects(icon.adjusted(-20, -20, 20, 20)));
        EXPECT_EQ(sample_.openingCount, ++openings);
        openMenu()->close();
    }
}

TEST_F(TrayStatusBarTests, ATrayThatShowsTheMenuAfterAClickShowsItAlone) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    ask("activate 300 200");
    ask("menu");
    // Far longer than it takes for a menu of ours.
    EXPECT_FALSE(turnUntil([] { return openMenu() != nullptr; }, std::chrono::seconds(1)));
    ask("closed");
    ask("activate 300 200");
    ASSERT_TRUE(turnUntil([] { return openMenu() != nullptr; }));
    ask("menu");
    EXPECT_TRUE(turnUntil([] { return openMenu() == nullptr; }));
}

TEST_F(TrayStatusBarTests, AClickWithoutAMenuPerformsTheButtonsAction) {
    startHost();
    item_ = statusBar_.makeStatusItem(StatusBar::variableLength);
    int clicks = 0;
    item_->button()->setImage(picture("P"));
    ASSERT_TRUE(waitForIconInHost());
    ask("activate 10 10");
    QApplication::processEvents();
    item_->button()->setAction({.name = "count", .perform = [&clicks] { ++clicks; }});
    ask("activate 10 10");
    EXPECT_TRUE(turnUntil([&] { return clicks == 1; }));
    EXPECT_FALSE(ask("activate 10 10").contains("error"));
}

TEST_F(TrayStatusBarTests, TheItemLeavesTheTrayWhenItIsDestroyed) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    const auto button = item_->button();
    item_.reset();
    EXPECT_TRUE(turnUntil([this] { return host_->count("unregistered") == 1; }));
    button->setImage(picture(checkmark));
    makeItem();
    EXPECT_TRUE(waitForIconInHost());
}

TEST_F(TrayStatusBarTests, TheIconAppearsInATrayThatStartsLate) {
    makeItem();
    QApplication::processEvents();
    startHost();
    EXPECT_TRUE(waitForIconInHost());
    EXPECT_EQ(host_->count("registered"), 1U);
}

TEST_F(TrayStatusBarTests, TheIconComesBackAfterTheTrayWasRestarted) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    for (int restart = 0; restart < 3; ++restart) {
        startHost();
        ASSERT_TRUE(waitForIconInHost());
        EXPECT_EQ(host_->count("registered"), 1U);
    }
    EXPECT_EQ(ask("menu")["rows"].size(), 5U);
}

TEST_F(TrayStatusBarTests, WithoutAnyTrayNothingIsShownAndNothingFails) {
    makeItem();
    startHost({"--no-watcher"});
    EXPECT_TRUE(ask("menu").contains("error"));
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

TEST_F(TrayStatusBarTests, NoWidgetIsMadeForATrayOnTheBus) {
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    ask("menu");
    EXPECT_TRUE(QApplication::allWidgets().isEmpty());
}

TEST_F(TrayStatusBarTests, ATrayThatEmbedsWindowsGetsAWindow) {
    XEmbedTray tray(session_.display());
    makeItem();
    EXPECT_TRUE(waitForWindows(tray, 1));
}

TEST_F(TrayStatusBarTests, TheWindowShowsTheCurrentImage) {
    XEmbedTray tray(session_.display());
    makeItem();
    ASSERT_TRUE(waitForWindows(tray, 1));
    // The two images differ in their number of dark pixels.
    const auto darkCount = [&tray] {
        const auto pixels = tray.iconPixels();
        return std::count_if(
            pixels.begin(), pixels.end(), [](std::uint8_t value) { return value < 64; });
    };
    const auto waitForChange = [&](long previous) {
        long count = 0;
        // The image is complete once it stops changing.
        EXPECT_TRUE(turnUntil([&] {
            const long before = std::exchange(count, darkCount());
            return count > 0 && count == before && count != previous;
        }));
        return count;
    };
    const long letter = waitForChange(0);
    item_->button()->setImage(picture(checkmark));
    static_cast<void>(waitForChange(letter));
    item_->button()->setImage(picture("P"));
    EXPECT_TRUE(turnUntil([&] { return darkCount() == letter; }));
    item_.reset();
    EXPECT_TRUE(waitForWindows(tray, 0));
}

TEST_F(TrayStatusBarTests, EachButtonOpensTheMenuOfTheWindow) {
    XEmbedTray tray(session_.display());
    makeItem();
    ASSERT_TRUE(waitForWindows(tray, 1));
    int openings = 0;
    for (const int button : {1, 3, 2}) {
        tray.clickIcon(button);
        ASSERT_TRUE(turnUntil([] { return openMenu() != nullptr; })) << button;
        EXPECT_EQ(sample_.openingCount, ++openings);
        openMenu()->close();
    }
}

TEST_F(TrayStatusBarTests, ATrayForWindowsMayStartLateAndBeRestarted) {
    if (countsAWatcherAsATray()) {
        GTEST_SKIP() << "This version of Qt makes no window while there is a watcher.";
    }
    makeItem();
    startHost({"--no-host"});
    auto tray = std::make_unique<XEmbedTray>(session_.display());
    ASSERT_TRUE(waitForWindows(*tray, 1));
    for (int restart = 0; restart < 3; ++restart) {
        tray.reset();
        QApplication::processEvents();
        tray = std::make_unique<XEmbedTray>(session_.display());
        ASSERT_TRUE(waitForWindows(*tray, 1)) << restart;
    }
}

TEST_F(TrayStatusBarTests, AnotherTrayForWindowsTakesTheWindowOver) {
    makeItem();
    auto first = std::make_unique<XEmbedTray>(session_.display());
    ASSERT_TRUE(waitForWindows(*first, 1));
    XEmbedTray second(session_.display());
    first.reset();
    EXPECT_TRUE(waitForWindows(second, 1));
}

TEST_F(TrayStatusBarTests, TheIconMovesBetweenTheKindsOfTraysAndIsInOnePlaceOnly) {
    if (countsAWatcherAsATray()) {
        GTEST_SKIP() << "This version of Qt makes no window while there is a watcher.";
    }
    XEmbedTray tray(session_.display());
    startHost({"--no-host"});
    makeItem();
    ASSERT_TRUE(waitForWindows(tray, 1));
    for (int round = 0; round < 3; ++round) {
        ask("host on");
        ASSERT_TRUE(waitForWindows(tray, 0)) << round;
        EXPECT_TRUE(waitForIconInHost());
        ask("host off");
        ASSERT_TRUE(waitForWindows(tray, 1)) << round;
    }
    for (int round = 0; round < 3; ++round) {
        ask("host on");
        ASSERT_TRUE(waitForWindows(tray, 0)) << round;
        ask("watcher off");
        ASSERT_TRUE(waitForWindows(tray, 1)) << round;
        ask("watcher on");
        ASSERT_TRUE(waitForWindows(tray, 0)) << round;
        ask("host off");
        ASSERT_TRUE(waitForWindows(tray, 1)) << round;
    }
    EXPECT_EQ(host_->count("unregistered"), 0U);
}

TEST_F(TrayStatusBarTests, QtNeverPutsAnItemOfItsOwnOnTheBus) {
    XEmbedTray tray(session_.display());
    startHost({"--no-watcher"});
    makeItem();
    ASSERT_TRUE(waitForWindows(tray, 1));
    ask("watcher on");
    ASSERT_TRUE(waitForWindows(tray, 0));
    ASSERT_TRUE(waitForIconInHost());
    ask("watcher off");
    ASSERT_TRUE(waitForWindows(tray, 1));
    ask("watcher on");
    ASSERT_TRUE(waitForWindows(tray, 0));
    ASSERT_TRUE(turnUntil([this] { return host_->count("registered") == 2; }));
    EXPECT_EQ(
        host_->last("registered")["service"].get<std::string>().find("org.kde.StatusNotifierItem-"),
        0U);
}

TEST_F(TrayStatusBarTests, ABusyTrayOfBothKindsGetsOneItemAndNoWindow) {
    startHost({"--no-watcher"});
    makeItem();
    QApplication::processEvents();
    XEmbedTray tray(session_.display());
    host_->send("watcher on");
    ASSERT_TRUE(testing_support::waitUntil([this] { return host_->count("watcher") == 1; }));
    host_->pause();
    // Far longer than it takes to make a window where there is no host.
    EXPECT_FALSE(turnUntil([&] { return tray.iconCount() > 0; }, std::chrono::seconds(1)));
    host_->goOn();
    ASSERT_TRUE(waitForIconInHost());
    for (const json& item : host_->all("registered")) {
        EXPECT_TRUE(item["service"].get<std::string>().starts_with("org.kde.StatusNotifierItem-"));
    }
    EXPECT_EQ(host_->count("unregistered"), 0U);
    EXPECT_EQ(tray.iconCount(), 0U);
}

TEST_F(TrayStatusBarTests, TheIconBecomesAWindowWhenTheBusEnds) {
    XEmbedTray tray(session_.display());
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    EXPECT_EQ(tray.iconCount(), 0U);
    session_.killBus();
    connectToBus();
    EXPECT_TRUE(waitForWindows(tray, 1));
    item_->button()->setImage(picture(checkmark));
    sample_.information->setTitle("no bus");
    item_.reset();
    EXPECT_TRUE(waitForWindows(tray, 0));
}

TEST_F(TrayStatusBarTests, TheIconComesBackWithABusThatWasRestarted) {
    XEmbedTray tray(session_.display());
    startHost();
    makeItem();
    ASSERT_TRUE(waitForIconInHost());
    session_.killBus();
    connectToBus();
    ASSERT_TRUE(waitForWindows(tray, 1));
    session_.restartBus();
    startHost();
    connectToBus();
    EXPECT_TRUE(waitForIconInHost());
    EXPECT_TRUE(waitForWindows(tray, 0));
    EXPECT_EQ(ask("menu")["rows"].size(), 5U);
}

TEST_F(TrayStatusBarTests, NothingIsShownUntilItIsKnownWhetherThereIsABus) {
    const XEmbedTray tray(session_.display());
    platform::TrayStatusBar bar(managerSelectionMaker());
    const auto item = bar.makeStatusItem(StatusBar::variableLength);
    item->button()->setImage(picture("P"));
    // Far longer than it takes to make a window.
    EXPECT_FALSE(
        turnUntil([] { return !QApplication::allWidgets().isEmpty(); }, std::chrono::seconds(1)));
}

TEST_F(TrayStatusBarTests, WithoutABusTheIconIsAWindow) {
    XEmbedTray tray(session_.display());
    platform::TrayStatusBar bar(managerSelectionMaker());
    bar.setBus(QDBusConnection("no such bus"));
    const auto item = bar.makeStatusItem(StatusBar::variableLength);
    item->button()->setImage(picture("P"));
    EXPECT_TRUE(waitForWindows(tray, 1));
}

TEST_F(TrayStatusBarTests, WithoutBusAndXServerNothingIsShown) {
    platform::TrayStatusBar bar({});
    bar.setBus(QDBusConnection("no such bus"));
    const auto item = bar.makeStatusItem(StatusBar::variableLength);
    item->button()->setImage(picture("P"));
    item->setMenu(sample_.menu);
    QApplication::processEvents();
    EXPECT_TRUE(QApplication::allWidgets().isEmpty());
}

struct IconPlace {
    const char* name;
    std::int16_t x;
    std::int16_t y;
    Qt::Edge side; ///< Of the icon, where the menu opens.
};

void PrintTo(const IconPlace& place, std::ostream* out) {
    *out << place.name;
}

class MenuPlaceTests : public TrayStatusBarTests, public testing::WithParamInterface<IconPlace> {};

TEST_P(MenuPlaceTests, IsBesideTheIconAndAwayFromTheEdgeOfTheScreen) {
    const auto& [name, x, y, side] = GetParam();
    XEmbedTray tray(session_.display(), x, y);
    makeItem();
    ASSERT_TRUE(waitForWindows(tray, 1));
    tray.clickIcon(1);
    ASSERT_TRUE(turnUntil([] { return openMenu() != nullptr; }));
    const QRect icon(x, y, XEmbedTray::iconSide, XEmbedTray::iconSide);
    const QRect menu = openMenu()->geometry();
    EXPECT_TRUE(openMenu()->screen()->geometry().contains(menu));
    switch (side) {
    case Qt::TopEdge:
        EXPECT_EQ(menu.bottom(), icon.top() - 1);
        break;
    case Qt::BottomEdge:
        EXPECT_EQ(menu.top(), icon.bottom() + 1);
        break;
    case Qt::LeftEdge:
        EXPECT_EQ(menu.right(), icon.left() - 1);
        break;
    case Qt::RightEdge:
        EXPECT_EQ(menu.left(), icon.right() + 1);
        break;
    }
    // It begins or ends with the icon, unless the screen does.
    EXPECT_TRUE(menu.adjusted(-1, -1, 1, 1).intersects(icon));
}

INSTANTIATE_TEST_SUITE_P(Places,
                         MenuPlaceTests,
                         testing::Values(IconPlace{"UpperLeft", 0, 0, Qt::BottomEdge},
                                         IconPlace{"Top", 600, 4, Qt::BottomEdge},
                                         IconPlace{"Bottom", 600, 774, Qt::TopEdge},
                                         IconPlace{"LowerRight", 1258, 778, Qt::TopEdge},
                                         IconPlace{"Left", 4, 300, Qt::RightEdge},
                                         IconPlace{"Right", 1254, 600, Qt::LeftEdge}),
                         [](const auto& place) { return std::string(place.param.name); });

/// The keys of rows, pressed in the open menu.
class MenuKeyTests : public TrayStatusBarTests, public testing::WithParamInterface<const char*> {
  protected:
    void setLayout(const std::string& layout) {
        ChildProcess program({"setxkbmap", layout}, {.environment = session_.environment()});
        ASSERT_EQ(program.waitForExit(), 0) << program.standardError();
    }

    /// Opens the menu, presses the combinations in it and returns what was chosen.
    std::vector<std::string> chosenBy(std::initializer_list<std::initializer_list<int>> keys) {
        // Two clicks of one button would be a double click.
        button_ = 4 - button_;
        tray_.clickIcon(button_);
        EXPECT_TRUE(turnUntil([] { return openMenu() != nullptr; }));
        for (const auto& combination : keys) {
            keyboard_.tapTogether(combination);
        }
        EXPECT_TRUE(turnUntil([this] { return !sample_.chosen.empty(); }));
        if (openMenu() != nullptr) {
            openMenu()->close();
        }
        return std::exchange(sample_.chosen, {});
    }

    XEmbedTray tray_{session_.display()};
    testing_support::FakeKeyboard keyboard_{session_.display()};
    int button_ = 3;
};

TEST_P(MenuKeyTests, ChooseRowsWhateverTheScript) {
    setLayout(GetParam());
    makeItem();
    ASSERT_TRUE(waitForWindows(tray_, 1));
    EXPECT_THAT(chosenBy({{KEY_LEFTMETA, KEY_COMMA}}), ElementsAre("preferences"));
    EXPECT_THAT(chosenBy({{KEY_LEFTMETA, KEY_Q}}), ElementsAre("quit"));
    // Another modifier, and none.
    EXPECT_THAT(chosenBy({{KEY_LEFTCTRL, KEY_Q}, {KEY_Q}, {KEY_DOWN}, {KEY_ENTER}}),
                ElementsAre("clear"));
}

INSTANTIATE_TEST_SUITE_P(Layouts,
                         MenuKeyTests,
                         testing::Values("us", "de", "ru", "gr", "il", "ara", "th"),
                         [](const auto& layout) { return std::string(layout.param); });

class LatinMenuKeyTests : public MenuKeyTests {};

TEST_P(LatinMenuKeyTests, AreThoseThatTypeTheLetter) {
    setLayout(GetParam());
    makeItem();
    ASSERT_TRUE(waitForWindows(tray_, 1));
    EXPECT_THAT(chosenBy({{KEY_LEFTMETA, KEY_Q}, {KEY_DOWN}, {KEY_ENTER}}), ElementsAre("clear"));
    EXPECT_THAT(chosenBy({{KEY_LEFTMETA, KEY_A}}), ElementsAre("quit"));
}

INSTANTIATE_TEST_SUITE_P(Layouts, LatinMenuKeyTests, testing::Values("fr"));

} // namespace
