#pragma once

#include "Platform/Label.h"
#import "Platform/MacOS/MacConversions.h"
#import "Platform/MacOS/MacView.h"

namespace platform {

/// A text field that only shows. Main thread only.
class MacLabel final : public MacViewOf<Label, NSTextField> {
  public:
    using MacViewOf::MacViewOf;

    void setText(std::string text) override { typedView().stringValue = nsString(text); }

    [[nodiscard]] std::string text() const override { return utf8String(typedView().stringValue); }

    void setFont(SystemFont font) override { typedView().font = nsFont(font); }

    void setTextColor(TextColor color) override {
        typedView().textColor =
            color == TextColor::label ? [NSColor labelColor] : [NSColor secondaryLabelColor];
    }

    void setAlignment(TextAlignment alignment) override {
        typedView().alignment =
            alignment == TextAlignment::center ? NSTextAlignmentCenter : NSTextAlignmentNatural;
    }

    void setEditable(bool isEditable) override { typedView().editable = isEditable; }

    void setSelectable(bool isSelectable) override { typedView().selectable = isSelectable; }

    void setMaximumNumberOfLines(int lines) override { typedView().maximumNumberOfLines = lines; }
};

} // namespace platform
