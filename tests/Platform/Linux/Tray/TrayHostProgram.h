#pragma once

#include "tests/Support/ChildProcess.h"

#include <nlohmann/json.hpp>

#include <csignal>
#include <map>
#include <string>
#include <vector>

namespace tray_test {

/// A tray host in a process of its own: see tests/Desktop/TrayHost.cpp. Ends with the object.
class TrayHostProgram {
  public:
    explicit TrayHostProgram(const std::map<std::string, std::string>& environment,
                             const std::vector<std::string>& options = {});

    void send(const std::string& command) { program_.write(command + '\n'); }

    /// Keeps the host from answering, until it goes on.
    void pause() const { program_.sendSignal(SIGSTOP); }

    void goOn() const { program_.sendSignal(SIGCONT); }

    /// How often this has happened so far.
    [[nodiscard]] std::size_t count(const std::string& event);

    /// What was printed about it the last time; null when it never happened.
    [[nodiscard]] nlohmann::json last(const std::string& event);

    /// All that was printed about it, the oldest first.
    [[nodiscard]] std::vector<nlohmann::json> all(const std::string& event);

    /// Whether it knows an item whose icon it has received.
    [[nodiscard]] bool showsIcon();

  private:
    void parse();

    testing_support::ChildProcess program_;
    std::size_t parsedLength_ = 0;
    std::vector<nlohmann::json> events_;
};

} // namespace tray_test
