#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace foundation {

/// Hands work to the main thread. Any thread.
class MainThread : public Interface {
  public:
    [[nodiscard]] virtual bool isMainThread() const = 0;

    /// Runs the work on the main thread, never within this call.
    virtual void async(std::function<void()> work) = 0;
};

/// An instance that the whole program shares, made exactly once, on first use, and destroyed with
/// this holder. Any thread.
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
