#pragma once

#include "Platform/Linux/Qt/QtWidgetView.h"

#include <memory>

namespace platform {

/// An empty widget that places what stands in it by constraints.
class QtView final : public QtViewOf<View> {
  public:
    explicit QtView(Rect frame);

    void addSubview(std::shared_ptr<View> view) override;
};

} // namespace platform
