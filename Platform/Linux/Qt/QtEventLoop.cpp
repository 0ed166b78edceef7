#include "Platform/Linux/Qt/QtEventLoop.h"

#include <QSocketNotifier>
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

} // namespace platform
