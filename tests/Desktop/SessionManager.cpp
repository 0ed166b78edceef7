// A session manager for one program: it makes the program save and end, as a logout does.
//
// Prints "address ADDRESS", the value of SESSION_MANAGER for the program, and "registered" when the
// program has connected. At the first SIGUSR1 it asks the program to save for the end of the
// session and prints "saved" when it has; at the second it tells it to end and prints "closed" when
// it has disconnected.

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <vector>

// The library's name for "do not listen there".
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" int _IceTransNoListen(const char* transport);

namespace {

SmsConn client = nullptr;

void say(const char* text) {
    std::puts(text);
    std::fflush(stdout);
}

Status registerClient(SmsConn connection, SmPointer, char* previousId) {
    if (previousId != nullptr) {
        std::free(previousId);
        return 0;
    }
    char* identifier = SmsGenerateClientID(connection);
    const Status isDone = SmsRegisterClientReply(connection, identifier);
    std::free(identifier);
    // The protocol asks every new client to save once.
    SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False);
    client = connection;
    return isDone;
}

bool isEnding = false;

void saveYourselfDone(SmsConn connection, SmPointer, Bool isSuccess) {
    if (!isEnding) {
        SmsSaveComplete(connection);
        say("registered");
        return;
    }
    say(isSuccess ? "saved" : "failed to save");
}

void saveYourselfPhase2Request(SmsConn connection, SmPointer) {
    SmsSaveYourselfPhase2(connection);
}

void closeConnection(SmsConn connection, SmPointer, int count, char** reasons) {
    SmFreeReasons(count, reasons);
    IceConn transport = SmsGetIceConnection(connection);
    SmsCleanUp(connection);
    IceSetShutdownNegotiation(transport, False);
    IceCloseConnection(transport);
    client = nullptr;
    say("closed");
}

void setProperties(SmsConn, SmPointer, int count, SmProp** properties) {
    for (SmProp* property : std::span(properties, static_cast<std::size_t>(count))) {
        SmFreeProperty(property);
    }
    std::free(properties);
}

Status newClient(SmsConn, SmPointer, unsigned long* mask, SmsCallbacks* callbacks, char**) {
    *mask = SmsRegisterClientProcMask | SmsSaveYourselfDoneProcMask |
            SmsSaveYourselfP2RequestProcMask | SmsCloseConnectionProcMask |
            SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask |
            SmsInteractRequestProcMask | SmsInteractDoneProcMask | SmsSaveYourselfRequestProcMask;
    callbacks->register_client.callback = registerClient;
    callbacks->save_yourself_done.callback = saveYourselfDone;
    callbacks->save_yourself_phase2_request.callback = saveYourselfPhase2Request;
    callbacks->close_connection.callback = closeConnection;
    callbacks->set_properties.callback = setProperties;
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int count, char** names) {
        SmFreeReasons(count, names);
    };
    callbacks->get_properties.callback = [](SmsConn connection, SmPointer) {
        SmsReturnProperties(connection, 0, nullptr);
    };
    callbacks->interact_request.callback = [](SmsConn connection, SmPointer, int) {
        SmsInteract(connection);
    };
    callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {
    };
    return 1;
}

/// Accepts every client that knows the address.
Bool acceptHost(char*) {
    return True;
}

[[noreturn]] void fail(const char* text) {
    std::fprintf(stderr, "%s\n", text);
    std::exit(2);
}

} // namespace

int main() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    const int signalDescriptor = signalfd(-1, &signals, SFD_CLOEXEC);

    std::array<char, 256> error{};
    std::array<char, 10> vendor{"Pastewise"};
    std::array<char, 2> release{"1"};
    if (SmsInitialize(vendor.data(),
                      release.data(),
                      newClient,
                      nullptr,
                      acceptHost,
                      static_cast<int>(error.size()),
                      error.data()) == 0) {
        fail(error.data());
    }
    IceSetIOErrorHandler([](IceConn) {});
    _IceTransNoListen("tcp");
    int listenerCount = 0;
    IceListenObj* listeners = nullptr;
    if (IceListenForConnections(
            &listenerCount, &listeners, static_cast<int>(error.size()), error.data()) == 0) {
        fail(error.data());
    }
    const std::span allListeners(listeners, static_cast<std::size_t>(listenerCount));
    for (IceListenObj listener : allListeners) {
        IceSetHostBasedAuthProc(listener, acceptHost);
    }
    char* address = IceComposeNetworkIdList(listenerCount, listeners);
    std::printf("address %s\n", address);
    std::fflush(stdout);
    std::free(address);

    std::vector<IceConn> connections;
    while (true) {
        std::vector<pollfd> watched{{signalDescriptor, POLLIN, 0}};
        for (IceListenObj listener : allListeners) {
            watched.push_back({IceGetListenConnectionNumber(listener), POLLIN, 0});
        }
        for (IceConn connection : connections) {
            watched.push_back({IceConnectionNumber(connection), POLLIN, 0});
        }
        if (poll(watched.data(), watched.size(), -1) < 0) {
            continue;
        }
        if (watched[0].revents != 0) {
            signalfd_siginfo information{};
            if (read(signalDescriptor, &information, sizeof information) > 0 && client != nullptr) {
                if (isEnding) {
                    SmsDie(client);
                } else {
                    isEnding = true;
                    SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleNone, False);
                }
            }
        }
        const std::vector<IceConn> ready = connections;
        for (std::size_t index = 0; index < ready.size(); ++index) {
            if (watched[1 + allListeners.size() + index].revents == 0) {
                continue;
            }
            if (IceProcessMessages(ready[index], nullptr, nullptr) != IceProcessMessagesSuccess) {
                std::erase(connections, ready[index]);
            }
        }
        for (std::size_t index = 0; index < allListeners.size(); ++index) {
            if (watched[1 + index].revents == 0) {
                continue;
            }
            IceAcceptStatus status{};
            IceConn connection = IceAcceptConnection(allListeners[index], &status);
            if (connection == nullptr) {
                continue;
            }
            while (IceConnectionStatus(connection) == IceConnectPending) {
                IceProcessMessages(connection, nullptr, nullptr);
            }
            if (IceConnectionStatus(connection) == IceConnectAccepted) {
                connections.push_back(connection);
            }
        }
    }
}
