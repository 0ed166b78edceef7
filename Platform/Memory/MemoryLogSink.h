#pragma once

#include "Foundation/LogSink.h"
#include "Platform/Memory/Journal.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Keeps every record. Read it on the main thread, once no other thread writes. The journal has
/// "log" and the message as messages() gives it.
class MemoryLogSink final : public foundation::LogSink, public Journaled {
  public:
    struct Entry {
        std::string subsystem;
        std::string category;
        foundation::LogLevel level;
        /// The format as the call site gave it, privacy marks included.
        std::string format;
        /// The message with every value.
        std::string whole;
        /// The message with private values hidden.
        std::string redacted;

        /// The whole message with its level: "debug: ..." or "error: ...".
        [[nodiscard]] std::string message() const;
    };

    using Journaled::Journaled;

    foundation::LogChannel& channel(std::string_view subsystem, std::string_view category) override;

    /// Switches a level on or off for all categories. Both are on at first.
    void setEnabled(foundation::LogLevel level, bool enabled);

    /// All records so far, oldest first.
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

    /// The message() of each record.
    [[nodiscard]] std::vector<std::string> messages() const;

    void clear() { entries_.clear(); }

  private:
    class Channel;

    std::map<std::pair<std::string, std::string>, std::unique_ptr<foundation::LogChannel>>
        channels_;
    std::mutex writing_;
    std::vector<Entry> entries_;
    std::atomic<bool> isDebugEnabled_ = true;
    std::atomic<bool> isErrorEnabled_ = true;
};

} // namespace platform
