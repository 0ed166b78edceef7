#pragma once

#include "Foundation/Interface.h"

#include <functional>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// The calls that in-memory services received, in order, one text per call: "log debug: Started",
/// "store analytics.shouldFlashSavings", "terminate". Calls may come from any thread; everything
/// else is for the main thread while no other one calls.
class Journal : foundation::Pinned {
  public:
    void add(std::string_view call) {
        const std::function<void(std::string_view)> whileCalled = whileCalled_;
        {
            const std::lock_guard lock(adding_);
            calls_.emplace_back(call);
        }
        if (whileCalled) {
            whileCalled(call);
        }
    }

    /// The calls so far, oldest first.
    [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }

    /// Those of the given calls that were made, oldest first, each as often as it was made.
    [[nodiscard]] std::vector<std::string>
    only(std::initializer_list<std::string_view> calls) const;

    void clear() { calls_.clear(); }

    /// Called within each call, so that a test can look at what the program has done until then.
    void setWhileCalled(std::function<void(std::string_view call)> whileCalled) {
        whileCalled_ = std::move(whileCalled);
    }

  private:
    std::mutex adding_;
    std::vector<std::string> calls_;
    std::function<void(std::string_view)> whileCalled_;
};

/// An in-memory service that writes its calls into a journal: its own, or one that it shares.
class Journaled {
  public:
    explicit Journaled(std::shared_ptr<Journal> journal = nullptr)
        : journal_(journal ? std::move(journal) : std::make_shared<Journal>()) {}

    [[nodiscard]] const std::shared_ptr<Journal>& journal() const { return journal_; }

  protected:
    void note(std::string_view call) const { journal_->add(call); }

    void note(std::string_view verb, std::string_view object) const {
        note(std::string(verb) + " " + std::string(object));
    }

  private:
    std::shared_ptr<Journal> journal_;
};

} // namespace platform
