#include "Platform/Linux/Qt/QtPermissions.h"
#include "tests/Contract/AlertsContract.h"
#include "tests/Support/QtDesktop.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>
#include <algorithm>

namespace contract {

namespace {

class QtAlertsBackend final : public AlertsBackend {
  public:
    platform::Alerts& alerts() override { return alerts_; }

    void answerNext(std::optional<std::size_t> buttonIndex) override {
        QTimer::singleShot(0, qApp, [this, buttonIndex] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_TRUE(desktop_.waitForFocus(*box));
            shownTexts_ = {box->text().toStdString(), box->informativeText().toStdString()};
            if (buttonIndex) {
                buttonWith(question.buttonTitles.at(*buttonIndex), *box)->click();
            } else {
                box->reject();
            }
        });
    }

    std::vector<std::string> shownTexts() override { return shownTexts_; }

  private:
    static QAbstractButton* buttonWith(const std::string& title, const QMessageBox& box) {
        const auto buttons = box.buttons();
        return *std::find_if(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
            return button->text().toStdString() == title;
        });
    }

    testing_support::QtDesktop desktop_;
    platform::QtAlerts alerts_;
    std::vector<std::string> shownTexts_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         AlertsContract,
                         (backend<AlertsBackend, QtAlertsBackend>("Qt")),
                         nameOfBackend<AlertsBackend>);

} // namespace contract
