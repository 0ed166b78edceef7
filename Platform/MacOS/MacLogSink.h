#pragma once

#include "Foundation/LogFormat.h"
#include "Foundation/LogSink.h"

#import <os/log.h>

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <new>
#include <utility>

namespace platform {

/// The system's unified log. Each value keeps its privacy: the system shows a private one only to
/// whoever may debug the program. Debug records stay in memory.
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

        /// The system wants its format as a literal, so a line has room for so many pieces; a
        /// message with more of them goes on in the next line.
        void write(const foundation::LogRecord& record) noexcept override {
            try {
                const auto pieces = logPieces(record);
                std::array<const char*, 6> texts{};
                for (std::size_t first = 0; first < pieces.size(); first += texts.size()) {
                    texts.fill("");
                    for (std::size_t i = 0; i < texts.size() && first + i < pieces.size(); ++i) {
                        texts[i] = pieces[first + i].text.c_str();
                    }
                    os_log_with_type(
                        log_,
                        typeOf(record.level),
                        "%{public}s%{private}s%{public}s%{private}s%{public}s%{private}s",
                        texts[0],
                        texts[1],
                        texts[2],
                        texts[3],
                        texts[4],
                        texts[5]);
                }
            } catch (const std::bad_alloc&) {
                // Without memory for a line of log there is none: the program goes on.
                return;
            }
        }

      private:
        static os_log_type_t typeOf(foundation::LogLevel level) {
            return level == foundation::LogLevel::debug ? OS_LOG_TYPE_DEBUG : OS_LOG_TYPE_ERROR;
        }

        os_log_t const log_;
    };

    std::map<std::pair<std::string, std::string>, std::unique_ptr<Channel>> channels_;
};

} // namespace platform
