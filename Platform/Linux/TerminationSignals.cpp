#include "Platform/Linux/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace platform {

namespace {

sigset_t terminationSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals() {
    const sigset_t signals = terminationSignals();
    descriptor_ = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor_ >= 0) { // Otherwise the signals keep ending the process at once.
        pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        const sigset_t signals = terminationSignals();
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    }
}

std::unique_ptr<FileDescriptorWatch>
TerminationSignals::deliver(EventLoop& eventLoop, std::function<void()> terminate) const {
    if (descriptor_ < 0) {
        return nullptr;
    }
    return eventLoop.watchReadable(
        descriptor_, [descriptor = descriptor_, terminate = std::move(terminate)] {
            signalfd_siginfo received{};
            while (read(descriptor, &received, sizeof received) == sizeof received) {
                terminate();
            }
        });
}

} // namespace platform
