#pragma once

#include "Platform/Linux/Qt/QtTextWidget.h"
#include "Platform/Linux/Qt/QtWidgetView.h"
#include "Platform/Views.h"

#include <memory>
#include <string>

namespace platform {

/// A label for reading. Making it editable or selectable is a programming error and stops the
/// program.
class QtLabel final : public QtViewOf<Label> {
  public:
    QtLabel(QtTextWidget::Wrapping wrapping, const std::string& text);

    void setText(std::string text) override;
    [[nodiscard]] std::string text() const override;
    void setFont(SystemFont font) override;
    void setTextColor(TextColor color) override;
    void setAlignment(TextAlignment alignment) override;
    void setEditable(bool isEditable) override;
    void setSelectable(bool isSelectable) override;
    void setMaximumNumberOfLines(int lines) override;

  private:
    explicit QtLabel(std::unique_ptr<QtTextWidget> textWidget);

    QtTextWidget* textWidget_; ///< The view's widget.
};

} // namespace platform
