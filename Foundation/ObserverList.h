#pragma once

#include "Foundation/Interface.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace foundation {

/// Identifies a registered observer, so that it can be removed.
enum class ObserverToken : std::uint64_t {};

/// Functions to call when something happens, in the order in which they were added.
///
/// An observer may add and remove observers, itself included: a removed one is not called any
/// more, an added one is first called by the next notify(). It may even destroy the list. One
/// thread only.
template <typename... Arguments>
class ObserverList : Pinned {
  public:
    using Handler = std::function<void(Arguments...)>;

    ObserverList() = default;

    ObserverToken add(Handler handler) {
        const ObserverToken token{nextToken_++};
        observers_->push_back({token, std::make_shared<const Handler>(std::move(handler))});
        return token;
    }

    /// Does nothing if the token is not in this list.
    void remove(ObserverToken token) {
        std::erase_if(*observers_, [token](const Observer& one) { return one.token == token; });
    }

    [[nodiscard]] std::size_t size() const { return observers_->size(); }

    void notify(const Arguments&... arguments) const {
        // Keeps the list and the running handler alive, whatever the handlers do to them.
        const std::shared_ptr<const Observers> current = observers_;
        const Observers atStart(current->begin(), current->end());
        for (const Observer& observer : atStart) {
            const bool isStillThere =
                std::any_of(current->begin(), current->end(), [&observer](const Observer& one) {
                    return one.token == observer.token;
                });
            if (isStillThere) {
                (*observer.handler)(arguments...);
            }
        }
    }

  private:
    struct Observer {
        ObserverToken token;
        std::shared_ptr<const Handler> handler;
    };

    using Observers = std::vector<Observer>;

    std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
    std::uint64_t nextToken_ = 1;
};

} // namespace foundation
