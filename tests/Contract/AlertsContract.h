#pragma once

#include "Foundation/Interface.h"
#include "Platform/Permissions.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace contract {

inline const platform::Alert question{.messageText = "What now?",
                                      .informativeText = "Nobody knows.",
                                      .style = platform::AlertStyle::informational,
                                      .buttonTitles = {"Go on", "Wait", "Leave"}};

/// Alerts and a user to answer them.
class AlertsBackend : public foundation::Interface {
  public:
    virtual platform::Alerts& alerts() = 0;
    /// Presses the button with this index in the next alert, or dismisses the alert if nullopt.
    virtual void answerNext(std::optional<std::size_t> buttonIndex) = 0;
    /// The texts of the last alert.
    virtual std::vector<std::string> shownTexts() = 0;
};

class AlertsContract : public testing::TestWithParam<BackendMaker<AlertsBackend>> {
  protected:
    std::optional<std::size_t> answerWith(std::optional<std::size_t> buttonIndex) {
        backend_->answerNext(buttonIndex);
        return backend_->alerts().runModal(question);
    }

    std::unique_ptr<AlertsBackend> backend_ = GetParam().make();
};

} // namespace contract
