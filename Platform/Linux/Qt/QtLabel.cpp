#include "Platform/Linux/Qt/QtLabel.h"

#include "Foundation/FatalError.h"

#include <QFont>
#include <QString>
#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

QtLabel::QtLabel(QtTextWidget::Wrapping wrapping, const std::string& text)
    : QtLabel(std::make_unique<QtTextWidget>(wrapping)) {
    setText(text);
}

QtLabel::QtLabel(std::unique_ptr<QtTextWidget> textWidget)
    : QtViewOf(std::move(textWidget)), textWidget_(static_cast<QtTextWidget*>(&widget())) {}

void QtLabel::setText(std::string text) {
    textWidget_->setText(QString::fromStdString(text));
}

std::string QtLabel::text() const {
    return textWidget_->text().toStdString();
}

void QtLabel::setFont(SystemFont font) {
    // Only what is set here differs from the font of the system, also when the user changes that.
    QFont difference;
    difference.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size))));
    difference.setBold(font.weight == FontWeight::bold);
    textWidget_->setFont(difference);
}

void QtLabel::setTextColor(TextColor color) {
    textWidget_->setTextColor(color);
}

void QtLabel::setAlignment(TextAlignment alignment) {
    textWidget_->setAlignment(
        Qt::AlignVCenter |
        (alignment == TextAlignment::center ? Qt::AlignHCenter : Qt::AlignLeading));
}

void QtLabel::setEditable(bool isEditable) {
    if (isEditable) {
        foundation::fatalError("labels cannot be edited");
    }
}

void QtLabel::setSelectable(bool isSelectable) {
    if (isSelectable) {
        foundation::fatalError("the text of labels cannot be selected");
    }
}

void QtLabel::setMaximumNumberOfLines(int lines) {
    textWidget_->setMaximumNumberOfLines(lines);
}

} // namespace platform
