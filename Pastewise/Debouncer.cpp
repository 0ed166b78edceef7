#include "Pastewise/Debouncer.h"

namespace pastewise {

Debouncer::~Debouncer() {
    if (endOfQuiet_) {
        endOfQuiet_->cancel();
    }
}

bool Debouncer::accepts() {
    const bool isQuiet = endOfQuiet_ == nullptr;
    if (!isQuiet) {
        endOfQuiet_->cancel();
    }
    endOfQuiet_ = std::make_shared<platform::WorkItem>([this] { endOfQuiet_.reset(); });
    queue_.asyncAfter(quiet_, endOfQuiet_);
    return isQuiet;
}

} // namespace pastewise
