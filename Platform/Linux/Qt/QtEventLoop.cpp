#include "Platform/Linux/Qt/QtEventLoop.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>
#include <utility>

namespace platform {

namespace {

class Watch final : public FileDescriptorWatch {
  public:
    Watch(int descriptor, std::function<void()> ready)
        : notifier_(new QSocketNotifier(descriptor, QSocketNotifier::Read)) {
        // The callback lives in the connection, which Qt keeps alive while it is being called, also
        // when the call drops this watch.
        QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, std::move(ready));
    }

    ~Watch() override {
        notifier_->setEnabled(false);
        notifier_->deleteLater();
    }

  private:
    QSocketNotifier* notifier_;
};

} // namespace

std::unique_ptr<FileDescriptorWatch> QtEventLoop::watchReadable(int descriptor,
                                                                std::function<void()> ready) {
    return std::make_unique<Watch>(descriptor, std::move(ready));
}

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
