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

/// A program started by a test. It is killed with the object at the latest, and also when the test
/// itself dies.
class ChildProcess : foundation::Pinned {
  public:
    struct Options {
        /// Set on top of the test's own environment; an empty value removes the variable.
        std::map<std::string, std::string> environment = {};
        /// The program's whole standard input.
        std::string standardInput = {};
        /// Keeps standard input open, for write().
        bool keepsInputOpen = false;
        /// A file that receives standard output instead of standardOutput().
        std::string standardOutputFile = {};
    };

    explicit ChildProcess(const std::vector<std::string>& command);
    ChildProcess(const std::vector<std::string>& command, const Options& options);
    ~ChildProcess();

    [[nodiscard]] pid_t id() const { return id_; }

    /// Writes to a standard input that is kept open.
    void write(std::string_view input);
    void closeInput();

    /// What the program has written so far.
    [[nodiscard]] const std::string& standardOutput();
    [[nodiscard]] const std::string& standardError();

    /// Waits until the program has written `text` to standard output or error.
    bool waitForOutput(std::string_view text, std::chrono::milliseconds limit = patience);

    void sendSignal(int signal) const;

    /// Waits for the program to end and returns its exit code, or 128 + the signal that ended it;
    /// nullopt if it is still running after `limit`.
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
