#pragma once

#include "Platform/Workspace.h"

#include <string>
#include <vector>

namespace platform {

/// A desktop that opens nothing and remembers what it was asked to. Takes every text with a scheme
/// for a URL. Main thread only.
class MemoryWorkspace final : public Workspace {
  public:
    bool openURL(const std::string& url) override;

    /// Whether the desktop refuses to open anything from now on.
    void setRefuses(bool refuses) { refuses_ = refuses; }

    /// The URLs that were asked for so far, refused ones included.
    [[nodiscard]] const std::vector<std::string>& urls() const { return urls_; }

  private:
    std::vector<std::string> urls_;
    bool refuses_ = false;
};

} // namespace platform
