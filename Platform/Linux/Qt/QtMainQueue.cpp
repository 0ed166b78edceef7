#include "Platform/Linux/Qt/QtMainQueue.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <utility>

namespace platform {

bool QtMainQueue::isMainThread() const {
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void QtMainQueue::async(std::function<void()> work) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

void QtMainQueue::asyncAfter(std::chrono::milliseconds delay, std::shared_ptr<WorkItem> item) {
    QTimer::singleShot(delay,
                       Qt::PreciseTimer,
                       QCoreApplication::instance(),
                       [item = std::move(item)] { item->perform(); });
}

} // namespace platform
