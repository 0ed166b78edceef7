#include "Platform/Linux/Qt/QtLogSink.h"

#include "Foundation/LogFormat.h"

#include <QLoggingCategory>
#include <utility>

namespace platform {

namespace {

class Channel final : public foundation::LogChannel {
  public:
    explicit Channel(std::string name)
        : name_(std::move(name)), category_(name_.c_str(), QtWarningMsg) {}

    [[nodiscard]] bool isEnabled(foundation::LogLevel level) const noexcept override {
        return level == foundation::LogLevel::debug ? category_.isDebugEnabled()
                                                    : category_.isCriticalEnabled();
    }

    void write(const foundation::LogRecord& record) noexcept override {
        try {
            const std::string message =
                renderLogMessage(record, foundation::LogRendering::redacted);
            const QMessageLogger logger(nullptr, 0, nullptr, category_.categoryName());
            if (record.level == foundation::LogLevel::debug) {
                logger.debug("%s", message.c_str());
            } else {
                logger.critical("%s", message.c_str());
            }
        } catch (const std::bad_alloc&) {
            // Without memory for a line of log there is none: the program goes on.
            return;
        }
    }

  private:
    std::string name_;
    QLoggingCategory category_;
};

} // namespace

foundation::LogChannel& QtLogSink::channel(std::string_view subsystem, std::string_view category) {
    std::string name = std::string(subsystem).append(".").append(category);
    auto& channel = channels_[name];
    if (!channel) {
        channel = std::make_unique<Channel>(std::move(name));
    }
    return *channel;
}

} // namespace platform
