#include "Platform/Linux/Tray/DBusMenu.h"
#include "tests/Platform/Linux/Tray/OffscreenApplication.h"
#include "tests/Support/SampleMenu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QList>

namespace {

using platform::MenuLayout;
using testing::ElementsAre;

class DBusMenuTests : public testing::Test {
  protected:
    DBusMenuTests() { menu_.setMenu(sample_.menu); }

    QList<MenuLayout> rows(const QStringList& properties = {}) {
        MenuLayout layout;
        menu_.GetLayout(0, -1, properties, layout);
        QList<MenuLayout> rows;
        for (const QVariant& child : layout.children) {
            rows.append(child.value<MenuLayout>());
        }
        return rows;
    }

    void send(int id, const QString& event) { menu_.Event(id, event, QDBusVariant(QString()), 0); }

    tray_test::OffscreenApplication application_;
    testing_support::SampleMenu sample_;
    platform::DBusMenu menu_;
};

TEST_F(DBusMenuTests, TheLayoutHasTheRowsInOrder) {
    MenuLayout layout;
    menu_.GetLayout(0, -1, {}, layout);
    EXPECT_EQ(layout.id, 0);
    EXPECT_EQ(layout.properties.value("children-display"), "submenu");
    const auto all = rows();
    ASSERT_EQ(all.size(), 5);
    for (int index = 0; index < all.size(); ++index) {
        EXPECT_EQ(all[index].id, index + 1);
        EXPECT_TRUE(all[index].children.isEmpty());
    }
    EXPECT_EQ(all[0].properties.value("label"), "Opened: 0");
    EXPECT_EQ(all[2].properties.value("label"), QString("Preferences\u2026"));
    EXPECT_EQ(all[3].properties.value("type"), "separator");
    EXPECT_FALSE(all[3].properties.contains("label"));
    EXPECT_EQ(all[4].properties.value("label"), "Quit");
    EXPECT_EQ(all[4].properties.value("visible"), true);
}

TEST_F(DBusMenuTests, UnderscoresAreDoubledAndAmpersandsAreNot) {
    EXPECT_EQ(rows()[1].properties.value("label"), QString("Clear__Saved & Time\u2026"));
}

TEST_F(DBusMenuTests, RowsWithoutAnActionAreDisabled) {
    const auto all = rows();
    EXPECT_EQ(all[0].properties.value("enabled"), false);
    EXPECT_EQ(all[1].properties.value("enabled"), true);
    EXPECT_EQ(all[4].properties.value("enabled"), true);
}

TEST_F(DBusMenuTests, KeyEquivalentsAreShortcuts) {
    const auto all = rows();
    EXPECT_FALSE(all[0].properties.contains("shortcut"));
    EXPECT_FALSE(all[1].properties.contains("shortcut"));
    EXPECT_EQ(all[2].properties.value("shortcut").value<QList<QStringList>>(),
              QList<QStringList>({{"Super", "comma"}}));
    EXPECT_EQ(all[4].properties.value("shortcut").value<QList<QStringList>>(),
              QList<QStringList>({{"Super", "q"}}));
}

TEST_F(DBusMenuTests, OnlyRequestedPropertiesAreReturned) {
    const auto all = rows({"label"});
    EXPECT_EQ(all[4].properties, QVariantMap({{"label", "Quit"}}));
    EXPECT_EQ(all[3].properties, QVariantMap());
}

TEST_F(DBusMenuTests, TheLayoutEndsAtTheRequestedDepth) {
    MenuLayout layout;
    menu_.GetLayout(0, 0, {}, layout);
    EXPECT_TRUE(layout.children.isEmpty());
    menu_.GetLayout(0, 1, {}, layout);
    EXPECT_EQ(layout.children.size(), 5);
    menu_.GetLayout(5, -1, {}, layout);
    EXPECT_EQ(layout.id, 5);
    EXPECT_EQ(layout.properties.value("label"), "Quit");
    EXPECT_TRUE(layout.children.isEmpty());
}

TEST_F(DBusMenuTests, GroupsOfRowsLeaveOutUnknownOnes) {
    const auto some = menu_.GetGroupProperties({5, 1, 77, -3}, {"label"});
    ASSERT_EQ(some.size(), 2);
    EXPECT_EQ(some[0].id, 1);
    EXPECT_EQ(some[1].id, 5);
    EXPECT_EQ(some[1].properties, QVariantMap({{"label", "Quit"}}));
    EXPECT_EQ(menu_.GetGroupProperties({}, {}).size(), 6);
}

TEST_F(DBusMenuTests, OnePropertyCanBeRead) {
    EXPECT_EQ(menu_.GetProperty(5, "label").variant(), "Quit");
    EXPECT_FALSE(menu_.GetProperty(77, "label").variant().isValid());
}

TEST_F(DBusMenuTests, AnOpeningRefreshesTheMenuAndReportsWhetherThatChangedIt) {
    EXPECT_TRUE(menu_.AboutToShow(0));
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(rows()[0].properties.value("label"), "Opened: 1");
    sample_.changesTitle = false;
    EXPECT_FALSE(menu_.AboutToShow(0));
    EXPECT_EQ(sample_.openingCount, 2);
}

TEST_F(DBusMenuTests, AnOpeningAnnouncedTwiceCountsOnce) {
    menu_.AboutToShow(0);
    send(0, "opened");
    EXPECT_EQ(sample_.openingCount, 1);
    send(0, "closed");
    menu_.AboutToShow(0);
    send(0, "opened");
    EXPECT_EQ(sample_.openingCount, 2);
}

TEST_F(DBusMenuTests, AnOpeningThatIsOnlyReportedCounts) {
    send(0, "opened");
    EXPECT_EQ(sample_.openingCount, 1);
    send(0, "closed");
    send(0, "opened");
    EXPECT_EQ(sample_.openingCount, 2);
}

TEST_F(DBusMenuTests, AnAnnouncementWithoutAnOpeningDoesNotHideTheNext) {
    menu_.AboutToShow(0);
    send(0, "closed");
    send(0, "opened");
    EXPECT_EQ(sample_.openingCount, 2);
}

TEST_F(DBusMenuTests, GroupsOfMenusCanBeAnnounced) {
    QList<int> unknown;
    EXPECT_EQ(menu_.AboutToShowGroup({0, 2, 77}, unknown), QList<int>({0}));
    EXPECT_EQ(unknown, QList<int>({77}));
    EXPECT_EQ(sample_.openingCount, 1);
}

TEST_F(DBusMenuTests, AChosenRowPerformsItsActionFromTheEventLoop) {
    send(2, "clicked");
    EXPECT_TRUE(sample_.chosen.empty());
    QApplication::processEvents();
    EXPECT_THAT(sample_.chosen, ElementsAre("clear"));
}

TEST_F(DBusMenuTests, GroupsOfEventsAreHandledAndUnknownRowsReturned) {
    const auto unknown = menu_.EventGroup({{5, "clicked", {}, 0},
                                           {77, "clicked", {}, 0},
                                           {2, "hovered", {}, 0},
                                           {3, "clicked", {}, 0}});
    EXPECT_EQ(unknown, QList<int>({77}));
    QApplication::processEvents();
    EXPECT_THAT(sample_.chosen, ElementsAre("quit", "preferences"));
}

TEST_F(DBusMenuTests, DisabledRowsAndSeparatorsCannotBeChosen) {
    send(1, "clicked");
    send(4, "clicked");
    QApplication::processEvents();
    EXPECT_TRUE(sample_.chosen.empty());
}

TEST_F(DBusMenuTests, ANewTitleIsSignalled) {
    QList<platform::MenuRow> signalled;
    QObject::connect(
        &menu_,
        &platform::DBusMenu::ItemsPropertiesUpdated,
        &menu_,
        [&signalled](const auto& updated, const auto& /*removed*/) { signalled = updated; });
    sample_.information->setTitle("Time_Saved");
    ASSERT_EQ(signalled.size(), 1);
    EXPECT_EQ(signalled[0].id, 1);
    EXPECT_EQ(signalled[0].properties, QVariantMap({{"label", "Time__Saved"}}));
}

TEST_F(DBusMenuTests, AnotherMenuHasALaterRevision) {
    QList<uint> revisions;
    QObject::connect(&menu_,
                     &platform::DBusMenu::LayoutUpdated,
                     &menu_,
                     [&revisions](uint revision, int) { revisions.append(revision); });
    MenuLayout layout;
    const uint before = menu_.GetLayout(0, -1, {}, layout);
    const testing_support::SampleMenu other;
    menu_.setMenu(other.menu);
    menu_.setMenu(nullptr);
    EXPECT_EQ(revisions, QList<uint>({before + 1, before + 2}));
    EXPECT_EQ(menu_.GetLayout(0, -1, {}, layout), before + 2);
    EXPECT_TRUE(layout.children.isEmpty());
    sample_.information->setTitle("no menu");
}

} // namespace
