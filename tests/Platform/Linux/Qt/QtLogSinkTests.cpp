#include "Foundation/Logger.h"
#include "Platform/Linux/Qt/QtLogSink.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <string>
#include <vector>

namespace {

using foundation::Logger;

/// What Qt's message handler received while the object lived: "category level message".
class ReceivedMessages {
  public:
    ReceivedMessages() {
        qunsetenv("QT_LOGGING_RULES"); // It wins over the rules that a test sets.
        messages().clear();
        previous_ = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& message) {
                messages().push_back(std::string(context.category) +
                                     (type == QtDebugMsg ? " debug " : " critical ") +
                                     message.toStdString());
            });
    }

    ~ReceivedMessages() {
        qInstallMessageHandler(previous_);
        QLoggingCategory::setFilterRules(QString());
    }

    ReceivedMessages(const ReceivedMessages&) = delete;
    ReceivedMessages& operator=(const ReceivedMessages&) = delete;
    ReceivedMessages(ReceivedMessages&&) = delete;
    ReceivedMessages& operator=(ReceivedMessages&&) = delete;

    static std::vector<std::string>& messages() {
        static std::vector<std::string> received;
        return received;
    }

  private:
    QtMessageHandler previous_;
};

TEST(QtLogSinkTests, WritesErrorsAndNoDebugUntilTheRulesAskForIt) {
    const ReceivedMessages received;
    platform::QtLogSink sink;
    const Logger logger(sink, "com.app.pastewise", "ClipboardManager");
    logger.debug("quiet");
    logger.error("No text found in clipboard");
    QLoggingCategory::setFilterRules("com.app.pastewise.ClipboardManager.debug=true");
    logger.debug("Reading from clipboard...");
    EXPECT_EQ(ReceivedMessages::messages(),
              (std::vector<std::string>{
                  "com.app.pastewise.ClipboardManager critical No text found in clipboard",
                  "com.app.pastewise.ClipboardManager debug Reading from clipboard..."}));
}

} // namespace
