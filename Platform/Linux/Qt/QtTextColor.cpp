#include "Platform/Linux/Qt/QtTextColor.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

namespace platform {

namespace {

/// What the accessibility guidelines for the web ask of small text.
constexpr double readableContrast = 4.5;

/// The linear light of one channel of the sRGB colour space, 0 to 1.
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return (0.2126 * linear(color.redF())) + (0.7152 * linear(color.greenF())) +
           (0.0722 * linear(color.blueF()));
}

/// `share` of `color`, 0 to 1, laid over the background.
QColor over(const QColor& background, const QColor& color, double share) {
    const auto mix = [share](double below, double above) {
        return static_cast<float>(below + ((above - below) * share));
    };
    return QColor::fromRgbF(mix(background.redF(), color.redF()),
                            mix(background.greenF(), color.greenF()),
                            mix(background.blueF(), color.blueF()));
}

} // namespace

QColor textColor(TextColor color, const QPalette& palette) {
    const QColor label = palette.color(QPalette::WindowText);
    if (color == TextColor::label) {
        return label;
    }
    const QColor background = palette.color(QPalette::Window);
    constexpr int steps = 20;
    for (int step = 12; step < steps; ++step) {
        const QColor fainter = over(background, label, static_cast<double>(step) / steps);
        if (contrast(fainter, background) >= readableContrast) {
            return fainter;
        }
    }
    return label;
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace platform
