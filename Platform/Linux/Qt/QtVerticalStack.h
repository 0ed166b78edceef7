#pragma once

#include "Platform/Linux/Qt/QtWidgetView.h"

#include <memory>

class QVBoxLayout;

namespace platform {

/// A vertical box that keeps its views together at its top, each at its natural height, and as wide
/// as it needs or the box allows.
class QtVerticalStack final : public QtViewOf<VerticalStack> {
  public:
    QtVerticalStack();

    void setSpacing(double spacing) override;
    void setEdgeInsets(EdgeInsets insets) override;
    void setAlignment(Alignment alignment) override;
    void addArrangedSubview(std::shared_ptr<View> view) override;

  private:
    QVBoxLayout* layout_; ///< The widget's.
    Qt::Alignment alignment_ = Qt::AlignHCenter;
};

} // namespace platform
