#pragma once

#include "Foundation/Interface.h"
#include "Platform/KeyDownMonitors.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace contract {

inline constexpr std::uint32_t carbonG = 5;

/// Key-down monitors and a window that has the focus.
class KeyDownMonitorsBackend : public foundation::Interface {
  public:
    virtual platform::KeyDownMonitors& monitors() = 0;
    /// Presses G and returns whether the window received it.
    virtual bool reachesTheWindow() = 0;
};

class KeyDownMonitorsContract
    : public testing::TestWithParam<BackendMaker<KeyDownMonitorsBackend>> {
  protected:
    /// Adds a monitor that notes `mark` and passes the key on or not.
    foundation::ObserverToken add(char mark, bool passesOn) {
        return monitors_.addLocalMonitor([this, mark, passesOn](const platform::KeyEvent& event) {
            EXPECT_EQ(event.keyCode, carbonG);
            notes_ += mark;
            return passesOn ? std::optional(event) : std::nullopt;
        });
    }

    std::unique_ptr<KeyDownMonitorsBackend> backend_ = GetParam().make();
    platform::KeyDownMonitors& monitors_ = backend_->monitors();
    std::string notes_;
};

} // namespace contract
