#include "Platform/Linux/Tray/PopupMenu.h"
#include "tests/Platform/Linux/Tray/OffscreenApplication.h"
#include "tests/Support/SampleMenu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QKeyEvent>
#include <QMenu>

namespace {

using testing::ElementsAre;

class PopupMenuTests : public testing::Test {
  protected:
    PopupMenuTests() { popup_.popUp({10, 10, 22, 22}); }

    static QMenu* open() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(open(), &event);
        QApplication::processEvents();
    }

    tray_test::OffscreenApplication application_;
    testing_support::SampleMenu sample_;
    platform::PopupMenu popup_{sample_.menu};
};

TEST_F(PopupMenuTests, ShowsTheRowsWithTheirTitles) {
    ASSERT_NE(open(), nullptr);
    const auto rows = open()->actions();
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(rows[1]->text(), QString("Clear_Saved && Time\u2026"));
    EXPECT_FALSE(rows[0]->isEnabled());
    EXPECT_TRUE(rows[1]->isEnabled());
    EXPECT_TRUE(rows[3]->isSeparator());
    EXPECT_EQ(rows[4]->text(), "Quit");
}

TEST_F(PopupMenuTests, ShowsKeyEquivalents) {
    const auto rows = open()->actions();
    EXPECT_TRUE(rows[0]->shortcut().isEmpty());
    EXPECT_EQ(rows[2]->shortcut(), QKeySequence(Qt::META | Qt::Key_Comma));
    EXPECT_EQ(rows[4]->shortcut(), QKeySequence(Qt::META | Qt::Key_Q));
    EXPECT_TRUE(rows[4]->isShortcutVisibleInContextMenu());
}

TEST_F(PopupMenuTests, IsRefreshedOncePerOpening) {
    EXPECT_EQ(sample_.openingCount, 1);
    EXPECT_EQ(open()->actions()[0]->text(), "Opened: 1");
    open()->close();
    popup_.popUp({10, 10, 22, 22});
    EXPECT_EQ(sample_.openingCount, 2);
}

TEST_F(PopupMenuTests, FollowsATitleWhileItIsOpen) {
    sample_.information->setTitle("You & me");
    EXPECT_EQ(open()->actions()[0]->text(), "You && me");
}

TEST_F(PopupMenuTests, ARowIsChosenByItsKeys) {
    press(Qt::Key_Q, Qt::MetaModifier);
    EXPECT_THAT(sample_.chosen, ElementsAre("quit"));
    EXPECT_EQ(open(), nullptr);
}

TEST_F(PopupMenuTests, OtherKeysAreHandledByTheMenu) {
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(sample_.chosen.empty());
    ASSERT_NE(open(), nullptr);
    press(Qt::Key_Down, Qt::NoModifier);
    press(Qt::Key_Return, Qt::NoModifier);
    EXPECT_THAT(sample_.chosen, ElementsAre("clear"));
}

TEST_F(PopupMenuTests, ARowPerformsItsActionFromTheEventLoop) {
    open()->actions()[1]->trigger();
    EXPECT_TRUE(sample_.chosen.empty());
    QApplication::processEvents();
    EXPECT_THAT(sample_.chosen, ElementsAre("clear"));
}

} // namespace
