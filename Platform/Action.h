#pragma once

#include <functional>
#include <string>

namespace platform {

/// What a row of a menu or a control does for the user. None while `perform` is empty.
struct Action {
    /// An identifier, by which a system that sends messages to objects names the message.
    std::string name;
    std::function<void()> perform;
};

} // namespace platform
