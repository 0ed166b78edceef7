#pragma once

#include "Foundation/LogSink.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// The log as Qt's logging categories, one per class: "com.app.pastewise.ClipboardManager" and so
/// on. Errors are on and debug is off until Qt's filter rules say otherwise (QT_LOGGING_RULES).
/// Values marked private never leave the program.
class QtLogSink final : public foundation::LogSink {
  public:
    foundation::LogChannel& channel(std::string_view subsystem, std::string_view category) override;

  private:
    std::map<std::string, std::unique_ptr<foundation::LogChannel>> channels_;
};

} // namespace platform
