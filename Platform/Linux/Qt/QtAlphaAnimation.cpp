#include "Platform/Linux/Qt/QtAlphaAnimation.h"

#include <QGraphicsOpacityEffect>
#include <QWidget>

namespace platform {

namespace {

constexpr double opaque = 1.0;

} // namespace

QtAlphaAnimation::QtAlphaAnimation(QWidget& widget) : widget_(widget) {
    QObject::connect(&animation_,
                     &QVariantAnimation::valueChanged,
                     &animation_,
                     [this](const QVariant& alpha) { show(alpha.toDouble()); });
}

void QtAlphaAnimation::animateTo(double alpha, std::chrono::milliseconds duration) {
    animation_.stop();
    const double present = effect_ ? effect_->opacity() : opaque;
    if (present == alpha) {
        return;
    }
    animation_.setStartValue(present);
    animation_.setEndValue(alpha);
    animation_.setDuration(static_cast<int>(duration.count()));
    animation_.start();
}

void QtAlphaAnimation::show(double alpha) {
    if (alpha >= opaque) {
        widget_.setGraphicsEffect(nullptr);
        return;
    }
    if (!effect_) {
        effect_ = new QGraphicsOpacityEffect;
        widget_.setGraphicsEffect(effect_);
    }
    effect_->setOpacity(alpha);
}

} // namespace platform
