#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace foundation {

/// An instance that the whole program shares: made when it is first asked for, exactly once,
/// whatever thread asks, and gone with this holder.
template <typename Object>
class OnceOnly {
  public:
    explicit OnceOnly(std::function<std::unique_ptr<Object>()> make) : make_(std::move(make)) {}

    [[nodiscard]] Object& shared() {
        std::call_once(isMade_, [this] { object_ = make_(); });
        return *object_;
    }

  private:
    std::function<std::unique_ptr<Object>()> make_;
    std::once_flag isMade_;
    std::unique_ptr<Object> object_;
};

} // namespace foundation
