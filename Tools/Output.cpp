#include "Tools/Output.h"

#include "Tools/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>

namespace tools {

namespace {

namespace fs = std::filesystem;

const char* volatile fileToRemove = nullptr;

extern "C" void removeFileAndEnd(int signal) {
    if (fileToRemove != nullptr) {
        unlink(fileToRemove);
    }
    // The default action, restored by SA_RESETHAND, takes place on return.
    raise(signal);
}

void removeWhenInterrupted(const char* path) {
    fileToRemove = path;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};

        // nohup, for example, ignores a signal on the program's behalf.
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
            action.sa_handler = removeFileAndEnd;
            action.sa_flags = static_cast<int>(SA_RESETHAND);
            sigaction(signal, &action, nullptr);
        }
    }
}

fs::perms permissionsOfNewFiles() {
    const mode_t mask = umask(0);
    umask(mask);
    return static_cast<fs::perms>(0666U & ~mask);
}

} // namespace

Output::Output(const fs::path& path) : name_(path.string()) {
    if (path == "-") {
        name_ = "standard output";
        return;
    }
    std::error_code isNew;
    const fs::file_status status = fs::status(path, isNew);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0) {
            fail();
        }
        return;
    }
    target_ = fs::canonical(path, isNew);
    if (isNew) {
        target_ = path;
    } else if (access(target_.c_str(), W_OK) != 0) {
        fail();
    }
    temporary_ = target_.parent_path() / ".pastewise-convert-XXXXXX";
    // Before there is a file, removing it does nothing.
    removeWhenInterrupted(temporary_.c_str());
    descriptor_ = mkstemp(temporary_.data());
    if (descriptor_ < 0) {
        fileToRemove = nullptr;
        fail();
    }
    fs::permissions(temporary_, isNew ? permissionsOfNewFiles() : status.permissions(), isNew);
}

Output::~Output() {
    if (!temporary_.empty()) {
        close(descriptor_);
        unlink(temporary_.c_str());
        fileToRemove = nullptr;
    }
}

void Output::write(std::string_view text) {
    if (!writeAll(descriptor_, text)) {
        fail();
    }
}

void Output::finish() {
    const bool isFile = !temporary_.empty();
    if ((isFile && fsync(descriptor_) != 0) || close(descriptor_) != 0) {
        fail();
    }
    if (isFile) {
        if (std::rename(temporary_.c_str(), target_.c_str()) != 0) {
            fail();
        }
        fileToRemove = nullptr;
        temporary_.clear();
    }
}

void Output::fail() const {
    throwSystemError("cannot write to " + name_);
}

} // namespace tools
