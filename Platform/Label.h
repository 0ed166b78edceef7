#pragma once

#include "Platform/TextStyle.h"
#include "Platform/View.h"

#include <cstdint>
#include <string>

namespace platform {

enum class TextAlignment : std::uint8_t { natural, center };

/// A text that cannot be changed or selected by the user unless it is said so.
class Label : public View {
  public:
    virtual void setText(std::string text) = 0; ///< UTF-8.
    [[nodiscard]] virtual std::string text() const = 0;
    virtual void setFont(SystemFont font) = 0;
    virtual void setTextColor(TextColor color) = 0;
    virtual void setAlignment(TextAlignment alignment) = 0;
    virtual void setEditable(bool isEditable) = 0;
    virtual void setSelectable(bool isSelectable) = 0;
    /// Of a wrapping label; what does not fit is cut off.
    virtual void setMaximumNumberOfLines(int lines) = 0;
};

} // namespace platform
