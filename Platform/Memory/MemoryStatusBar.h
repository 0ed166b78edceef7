#pragma once

#include "Foundation/WeakReference.h"
#include "Platform/Memory/MemoryStatusItem.h"
#include "Platform/StatusBar.h"

#include <memory>

namespace platform {

/// A status bar whose newest item can be looked at.
class MemoryStatusBar final : public StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem(double length) override {
        auto button = refusesButtons_ ? nullptr : std::make_shared<MemoryStatusBarButton>();
        auto item = std::make_unique<MemoryStatusItem>(length, std::move(button));
        item_ = item->weakReference();
        return item;
    }

    /// The item made last while it exists; null before and after.
    [[nodiscard]] MemoryStatusItem* item() const { return item_.get(); }

    /// Items made from now on have no visible part.
    void refuseButtons() { refusesButtons_ = true; }

  private:
    foundation::WeakReference<MemoryStatusItem> item_;
    bool refusesButtons_ = false;
};

} // namespace platform
