#include "tests/Support/ChildProcess.h"

#include "tests/Support/ParentDeath.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace testing_support {

namespace {

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;

    Pipe() {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0) {
            throw std::runtime_error("no pipe could be made");
        }
        for (const int end : ends) {
            fcntl(end, F_SETFD, FD_CLOEXEC);
        }
        readEnd = ends[0];
        writeEnd = ends[1];
    }
};

void setNonBlocking(int descriptor) {
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
}

void closeOnce(int& descriptor) {
    if (descriptor >= 0) {
        close(descriptor);
        descriptor = -1;
    }
}

void readAvailable(int& descriptor, std::string& into) {
    std::array<char, 65536> chunk{};
    while (descriptor >= 0) {
        const ssize_t count = read(descriptor, chunk.data(), chunk.size());
        if (count > 0) {
            into.append(chunk.data(), static_cast<std::size_t>(count));
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else if (count < 0 && errno == EAGAIN) {
            return;
        } else {
            closeOnce(descriptor);
        }
    }
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command)
    : ChildProcess(command, Options{}) {}

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Options& options)
    : keepsInputOpen_(options.keepsInputOpen), pendingInput_(options.standardInput) {
    // A program that ends before it has read all its input must not end the test.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));

    const Pipe input;
    const Pipe output;
    const Pipe error;
    std::vector<std::string> arguments = command;
    std::vector<char*> argumentPointers;
    argumentPointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        argumentPointers.push_back(argument.data());
    }
    argumentPointers.push_back(nullptr);
    const pid_t parent = getpid();

    id_ = fork();
    if (id_ < 0) {
        throw std::runtime_error("no process could be started");
    }
    if (id_ == 0) {
        endWithParent(parent);
        static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
        dup2(input.readEnd, STDIN_FILENO);
        if (options.standardOutputFile.empty()) {
            dup2(output.writeEnd, STDOUT_FILENO);
        } else {
            dup2(open(options.standardOutputFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600),
                 STDOUT_FILENO);
        }
        dup2(error.writeEnd, STDERR_FILENO);
        for (const auto& [name, value] : options.environment) {
            if (value.empty()) {
                unsetenv(name.c_str());
            } else {
                setenv(name.c_str(), value.c_str(), 1);
            }
        }
        execvp(argumentPointers[0], argumentPointers.data());
        _exit(127);
    }

    close(input.readEnd);
    close(output.writeEnd);
    close(error.writeEnd);
    inputDescriptor_ = input.writeEnd;
    outputDescriptor_ = output.readEnd;
    errorDescriptor_ = error.readEnd;
    setNonBlocking(inputDescriptor_);
    setNonBlocking(outputDescriptor_);
    setNonBlocking(errorDescriptor_);
    feed();
}

ChildProcess::~ChildProcess() {
    if (isRunning()) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    closeOnce(inputDescriptor_);
    closeOnce(outputDescriptor_);
    closeOnce(errorDescriptor_);
}

void ChildProcess::feed() {
    while (inputDescriptor_ >= 0 && !pendingInput_.empty()) {
        const ssize_t count = ::write(inputDescriptor_, pendingInput_.data(), pendingInput_.size());
        if (count > 0) {
            pendingInput_.erase(0, static_cast<std::size_t>(count));
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else if (count < 0 && errno == EAGAIN) {
            return;
        } else {
            pendingInput_.clear();
        }
    }
    if (!keepsInputOpen_) {
        closeOnce(inputDescriptor_);
    }
}

void ChildProcess::write(std::string_view input) {
    pendingInput_ += input;
    feed();
}

void ChildProcess::closeInput() {
    keepsInputOpen_ = false;
    feed();
}

void ChildProcess::collect() {
    feed();
    readAvailable(outputDescriptor_, standardOutput_);
    readAvailable(errorDescriptor_, standardError_);
}

const std::string& ChildProcess::standardOutput() {
    collect();
    return standardOutput_;
}

const std::string& ChildProcess::standardError() {
    collect();
    return standardError_;
}

bool ChildProcess::waitForOutput(std::string_view text, std::chrono::milliseconds limit) {
    return waitUntil(
        [&] {
            collect();
            return standardOutput_.find(text) != std::string::npos ||
                   standardError_.find(text) != std::string::npos;
        },
        limit);
}

void ChildProcess::sendSignal(int signal) const {
    kill(id_, signal);
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds limit) {
    waitUntil([this] { return !isRunning(); }, limit);
    return exitCode_;
}

bool ChildProcess::isRunning() {
    collect();
    if (!exitCode_) {
        int status = 0;
        if (waitpid(id_, &status, WNOHANG) == id_) {
            exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            collect();
        }
    }
    return !exitCode_;
}

} // namespace testing_support
