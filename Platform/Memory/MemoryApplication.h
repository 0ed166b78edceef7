#pragma once

#include "Platform/Application.h"
#include "Platform/Memory/Journal.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Counts what is asked of it and makes requests as the desktop does. Main thread only.
class MemoryApplication final : public Application, public Journaled {
  public:
    using Journaled::Journaled;

    using Request = std::function<void()> Requests::*;

    void setRequests(Requests requests) override {
        note("set requests");
        requests_ = std::move(requests);
        areRequestsSet_ = true;
        for (const Request request : std::exchange(earlyRequests_, {})) {
            ask(request);
        }
    }

    void activateIgnoringOtherApps() override {
        note("activate");
        ++activationCount_;
    }

    void terminate() override {
        note("terminate");
        isTerminated_ = true;
    }

    /// Makes a request as the desktop does.
    void ask(Request request) {
        if (!areRequestsSet_) {
            earlyRequests_.push_back(request);
        } else if (const std::function<void()> answer = requests_.*request) {
            answer();
        }
    }

    [[nodiscard]] int activationCount() const { return activationCount_; }

    [[nodiscard]] bool isTerminated() const { return isTerminated_; }

  private:
    Requests requests_;
    bool areRequestsSet_ = false;
    std::vector<Request> earlyRequests_;
    int activationCount_ = 0;
    bool isTerminated_ = false;
};

/// Records what is written. Main thread only.
class MemoryStandardOutput final : public StandardOutput, public Journaled {
  public:
    using Journaled::Journaled;

    void writeLine(std::string_view text) override {
        note("print", text);
        lines_.emplace_back(text);
    }

    /// All lines so far, without line feeds.
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

  private:
    std::vector<std::string> lines_;
};

} // namespace platform
