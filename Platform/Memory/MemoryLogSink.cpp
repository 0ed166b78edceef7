#include "Platform/Memory/MemoryLogSink.h"

#include "Foundation/LogFormat.h"

namespace platform {

class MemoryLogSink::Channel final : public foundation::LogChannel {
  public:
    explicit Channel(MemoryLogSink& sink) : sink_(sink) {}

    [[nodiscard]] bool isEnabled(foundation::LogLevel level) const noexcept override {
        return level == foundation::LogLevel::debug ? sink_.isDebugEnabled_ : sink_.isErrorEnabled_;
    }

    void write(const foundation::LogRecord& record) noexcept override {
        Entry entry{.subsystem = std::string(record.subsystem),
                    .category = std::string(record.category),
                    .level = record.level,
                    .format = std::string(record.format),
                    .whole = renderLogMessage(record, foundation::LogRendering::whole),
                    .redacted = renderLogMessage(record, foundation::LogRendering::redacted)};
        sink_.note("log", entry.message());
        const std::lock_guard lock(sink_.writing_);
        sink_.entries_.push_back(std::move(entry));
    }

  private:
    MemoryLogSink& sink_;
};

foundation::LogChannel& MemoryLogSink::channel(std::string_view subsystem,
                                               std::string_view category) {
    auto& channel = channels_[{std::string(subsystem), std::string(category)}];
    if (!channel) {
        channel = std::make_unique<Channel>(*this);
    }
    return *channel;
}

void MemoryLogSink::setEnabled(foundation::LogLevel level, bool enabled) {
    (level == foundation::LogLevel::debug ? isDebugEnabled_ : isErrorEnabled_) = enabled;
}

std::string MemoryLogSink::Entry::message() const {
    return (level == foundation::LogLevel::debug ? "debug: " : "error: ") + whole;
}

std::vector<std::string> MemoryLogSink::messages() const {
    std::vector<std::string> messages;
    messages.reserve(entries_.size());
    for (const Entry& entry : entries_) {
        messages.push_back(entry.message());
    }
    return messages;
}

} // namespace platform
