#include "Platform/Linux/Qt/QtAlerts.h"
#include "tests/Support/QtDesktop.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

using platform::Alert;
using platform::AlertStyle;

class QtAlertsTests : public testing::Test {
  protected:
    /// Runs the alert, and `answer` once it has the keyboard.
    std::optional<std::size_t> run(const Alert& alert,
                                   const std::function<void(QMessageBox&)>& answer) {
        QTimer::singleShot(0, qApp, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_TRUE(desktop_.waitForFocus(*box));
            answer(*box);
        });
        return platform::QtAlerts().runModal(alert);
    }

    static std::vector<QAbstractButton*> fromLeftToRight(const QMessageBox& box) {
        const auto buttons = box.buttons();
        std::vector<QAbstractButton*> sorted(buttons.begin(), buttons.end());
        std::sort(sorted.begin(), sorted.end(), [](const auto* one, const auto* other) {
            return one->x() < other->x();
        });
        return sorted;
    }

    const Alert question_{.messageText = "Permissions <b>Required</b>",
                          .informativeText = "Please enable them",
                          .style = AlertStyle::warning,
                          .buttonTitles = {"Open System Preferences", "Cancel", "R&D"}};

    testing_support::QtDesktop desktop_;
};

TEST_F(QtAlertsTests, ShowsTheTextsAndTheButtonsInTheirOrder) {
    run(question_, [](QMessageBox& box) {
        EXPECT_EQ(box.text(), "Permissions <b>Required</b>");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.informativeText(), "Please enable them");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        const auto buttons = fromLeftToRight(box);
        ASSERT_EQ(buttons.size(), 3U);
        EXPECT_EQ(buttons[0]->text(), "Open System Preferences");
        EXPECT_EQ(buttons[1]->text(), "Cancel");
        EXPECT_EQ(buttons[2]->text(), "R&&D");
        EXPECT_EQ(box.defaultButton(), buttons[0]);
        box.reject();
    });
}

TEST_F(QtAlertsTests, ReturnChoosesTheFirstButton) {
    EXPECT_EQ(run(question_, [this](QMessageBox& /*box*/) { desktop_.keyboard().tap(KEY_ENTER); }),
              0U);
}

TEST_F(QtAlertsTests, EscapeIsNoAnswer) {
    EXPECT_EQ(run(question_, [this](QMessageBox& /*box*/) { desktop_.keyboard().tap(KEY_ESC); }),
              std::nullopt);
}

TEST_F(QtAlertsTests, ClosingTheWindowIsNoAnswer) {
    EXPECT_EQ(run(question_,
                  [this](QMessageBox& /*box*/) {
                      desktop_.keyboard().tapTogether({KEY_LEFTALT, KEY_F4});
                  }),
              std::nullopt);
}

TEST_F(QtAlertsTests, ShowsTheIconOfItsStyle) {
    for (const auto& [style, icon] :
         {std::pair{AlertStyle::informational, QMessageBox::Information},
          std::pair{AlertStyle::critical, QMessageBox::Critical}}) {
        Alert alert = question_;
        alert.style = style;
        run(alert, [icon = icon](QMessageBox& box) {
            EXPECT_EQ(box.icon(), icon);
            box.reject();
        });
    }
}

} // namespace
