#pragma once

#include <QPointer>
#include <QVariantAnimation>
#include <chrono>

class QGraphicsOpacityEffect;
class QWidget;

namespace platform {

/// Changes how opaque a widget is. An opaque widget is drawn without any detour, and between two
/// animations nothing runs. Main thread only; ends before the widget.
class QtAlphaAnimation {
  public:
    explicit QtAlphaAnimation(QWidget& widget);

    /// Goes from the present opacity, also in the middle of an animation, to `alpha` (0 to 1).
    void animateTo(double alpha, std::chrono::milliseconds duration);

  private:
    void show(double alpha);

    QWidget& widget_;
    QPointer<QGraphicsOpacityEffect> effect_; ///< The widget's; null while it is opaque.
    QVariantAnimation animation_;
};

} // namespace platform
