#include "Platform/Linux/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace platform {

namespace {

/// The signals that ask a program to end, without those that it was started to ignore, for example
/// by nohup.
sigset_t terminationSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction current {};

        sigaction(signal, nullptr, &current);
        if (current.sa_handler != SIG_IGN) {
            sigaddset(&signals, signal);
        }
    }
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals() : signals_(terminationSignals()) {
    descriptor_ = signalfd(-1, &signals_, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor_ >= 0) { // Otherwise the signals kill the process as usual.
        pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
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
