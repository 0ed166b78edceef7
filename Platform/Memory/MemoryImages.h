#pragma once

#include "Platform/Images.h"
#include "Platform/Memory/MemoryImage.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// Makes images that remember where they come from. It has no symbols until it is given some.
class MemoryImages final : public Images {
  public:
    [[nodiscard]] std::shared_ptr<Image>
    systemSymbol(std::string_view name, std::string_view accessibilityDescription) override {
        requestedSymbols_.emplace_back(name);
        if (!symbols_.contains(name)) {
            return nullptr;
        }
        return std::make_shared<MemoryImage>(std::string(name),
                                             std::string(accessibilityDescription));
    }

    [[nodiscard]] std::shared_ptr<Image> draw(Size size,
                                              std::function<void(Canvas&)> draw) override {
        ++drawnCount_;
        return std::make_shared<MemoryImage>(size, std::move(draw));
    }

    void addSymbol(std::string name) { symbols_.insert(std::move(name)); }

    /// The names asked for so far, in order.
    [[nodiscard]] const std::vector<std::string>& requestedSymbols() const {
        return requestedSymbols_;
    }

    /// How many images were made by drawing.
    [[nodiscard]] int drawnCount() const { return drawnCount_; }

  private:
    std::set<std::string, std::less<>> symbols_;
    std::vector<std::string> requestedSymbols_;
    int drawnCount_ = 0;
};

} // namespace platform
