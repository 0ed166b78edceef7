#include "Platform/Linux/Qt/QtLogSink.h"
#include "tests/Contract/LogSinkContract.h"
#include "tests/Support/EnvironmentVariable.h"

#include <QLoggingCategory>
#include <mutex>

namespace contract {

namespace {

/// Reads the log through Qt's message handler, which is global.
class QtLogSinkBackend final : public LogSinkBackend {
  public:
    QtLogSinkBackend() {
        received.clear();
        previous_ = qInstallMessageHandler(&keep);
    }

    ~QtLogSinkBackend() override {
        qInstallMessageHandler(previous_);
        QLoggingCategory::setFilterRules(QString());
    }

    foundation::LogSink& sink() override { return sink_; }

    void setDebugEnabled(bool isEnabled) override {
        QLoggingCategory::setFilterRules(isEnabled ? "app.*.debug=true" : "app.*.debug=false");
    }

    std::vector<std::string> lines() override {
        const std::lock_guard lock(keeping);
        return received;
    }

  private:
    static void keep(QtMsgType type, const QMessageLogContext& context, const QString& message) {
        const std::lock_guard lock(keeping);
        received.push_back(std::string(context.category) +
                           (type == QtDebugMsg ? " debug: " : " error: ") + message.toStdString());
    }

    static inline std::mutex keeping;
    static inline std::vector<std::string> received;

    // Unset: the variable would override the rules that a test sets.
    testing_support::EnvironmentVariable rules_{"QT_LOGGING_RULES", nullptr};
    QtMessageHandler previous_ = nullptr;
    platform::QtLogSink sink_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Linux,
                         LogSinkContract,
                         (backend<LogSinkBackend, QtLogSinkBackend>("Qt")),
                         nameOfBackend<LogSinkBackend>);

} // namespace contract
