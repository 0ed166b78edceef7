#pragma once

#include "Foundation/Interface.h"
#include "tests/Support/WaitUntil.h"

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// A program that a test started. It ends with the object at the latest: killed by its process
/// id, and also when the test itself dies.
class ChildProcess : foundation::Pinned {
  public:
    struct Options {
        /// Set on top of the test's own environment; an empty value removes the variable.
        std::map<std::string, std::string> environment = {};
        /// Handed to the program as its standard input, which then ends.
        std::string standardInput = {};
        /// Leaves the standard input open, for write().
        bool keepsInputOpen = false;
        /// A file to use as standard output instead of collecting it.
        std::string standardOutputFile = {};
    };

    explicit ChildProcess(const std::vector<std::string>& command);
    ChildProcess(const std::vector<std::string>& command, const Options& options);
    ~ChildProcess();

    [[nodiscard]] pid_t id() const { return id_; }

    /// Hands more to a program whose standard input was left open.
    void write(std::string_view input);

    /// What the program has written so far.
    [[nodiscard]] const std::string& standardOutput();
    [[nodiscard]] const std::string& standardError();

    /// Waits until `text` stands in what the program has written to standard output or error.
    bool waitForOutput(std::string_view text, std::chrono::milliseconds limit = patience);

    void sendSignal(int signal) const;

    /// Waits for the end of the program. Its exit code, or 128 + the signal that ended it; none
    /// when it still runs after `limit`.
    std::optional<int> waitForExit(std::chrono::milliseconds limit = patience);

    [[nodiscard]] bool isRunning();

  private:
    void collect();
    void feed();

    pid_t id_ = -1;
    bool keepsInputOpen_;
    int inputDescriptor_ = -1;
    int outputDescriptor_ = -1;
    int errorDescriptor_ = -1;
    std::string pendingInput_;
    std::string standardOutput_;
    std::string standardError_;
    std::optional<int> exitCode_;
};

} // namespace testing_support
