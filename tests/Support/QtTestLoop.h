#pragma once

#include "Foundation/Interface.h"
#include "tests/Support/WaitUntil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <chrono>
#include <functional>

namespace testing_support {

/// The toolkit's event loop on the thread of a test, turned by hand. One at a time.
class QtTestLoop : foundation::Pinned {
  public:
    QtTestLoop() = default;

    /// Has what objects put off while they were destroyed done before the loop goes.
    ~QtTestLoop() { turn(); }

    /// Runs what is due, without waiting for more; also what was put off to a later turn, such as
    /// the deletion of objects.
    static void turn() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Turns the loop until `condition` holds or `limit` is over.
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
