#pragma once

#include "Foundation/LogFormat.h"
#include "Foundation/LogSink.h"

#import <os/log.h>

#include <cstddef>
#include <map>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace platform {

/// The system's unified log. Each value keeps its privacy: the system shows private ones only to a
/// debugger. Debug records stay in memory.
class MacLogSink final : public foundation::LogSink {
  public:
    foundation::LogChannel& channel(std::string_view subsystem,
                                    std::string_view category) override {
        std::pair name{std::string(subsystem), std::string(category)};
        auto& channel = channels_[name];
        if (!channel) {
            channel = std::make_unique<Channel>(name.first, name.second);
        }
        return *channel;
    }

  private:
    class Channel final : public foundation::LogChannel {
      public:
        Channel(const std::string& subsystem, const std::string& category)
            : log_(os_log_create(subsystem.c_str(), category.c_str())) {}

        [[nodiscard]] bool isEnabled(foundation::LogLevel level) const noexcept override {
            return os_log_type_enabled(log_, typeOf(level));
        }

        void write(const foundation::LogRecord& record) noexcept override {
            try {
                write(logPieces(record), typeOf(record.level));
            } catch (const std::bad_alloc&) {
                // Without memory for the message it is dropped.
                return;
            }
        }

      private:
        static os_log_type_t typeOf(foundation::LogLevel level) {
            return level == foundation::LogLevel::debug ? OS_LOG_TYPE_DEBUG : OS_LOG_TYPE_ERROR;
        }

        /// The format must be a literal, and even an empty private value is shown as one, so there
        /// is a format for each number of private values. Values beyond two are never shown.
        void write(std::vector<foundation::LogPiece> pieces, os_log_type_t type) {
            for (std::size_t i = 5; i < pieces.size(); ++i) {
                const bool isPublic = pieces[i].privacy == foundation::LogPrivacy::isPublic;
                pieces[4].text += isPublic ? pieces[i].text : "<private>";
            }
            const auto text = [&pieces](std::size_t i) { return pieces[i].text.c_str(); };
            if (pieces.size() == 1) {
                os_log_with_type(log_, type, "%{public}s", text(0));
            } else if (pieces.size() == 3) {
                os_log_with_type(
                    log_, type, "%{public}s%{private}s%{public}s", text(0), text(1), text(2));
            } else {
                os_log_with_type(log_,
                                 type,
                                 "%{public}s%{private}s%{public}s%{private}s%{public}s",
                                 text(0),
                                 text(1),
                                 text(2),
                                 text(3),
                                 text(4));
            }
        }

        os_log_t const log_;
    };

    std::map<std::pair<std::string, std::string>, std::unique_ptr<Channel>> channels_;
};

} // namespace platform
