#pragma once

#include "Foundation/Interface.h"
#include "tests/Support/WaitUntil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <chrono>
#include <functional>

namespace testing_support {

/// Qt's event loop on the thread of a test, run by hand. One at a time.
class QtTestLoop : foundation::Pinned {
  public:
    QtTestLoop() = default;

    /// Runs the deferred work that destroyed objects left behind.
    ~QtTestLoop() { turn(); }

    /// Handles all pending events, deferred deletions included, without waiting for more.
    static void turn() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Runs the loop until `condition` holds or `limit` has passed.
    static bool turnUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds limit = patience) {
        return waitUntil(condition, limit, &turn);
    }

  private:
    static inline char programName[] = "test";
    static inline char* arguments[] = {programName, nullptr};
    int argumentCount_ = 1;
    QCoreApplication application_{argumentCount_, arguments};
};

} // namespace testing_support
