#pragma once

#include "Foundation/Interface.h"
#include "Platform/Menu.h"
#include "Platform/Views.h"

#include <QGridLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

class QGraphicsOpacityEffect;

namespace platform {

/// The part that all views of this toolkit share. Main thread only.
class QtWidgetView : public foundation::Interface {
  public:
    /// Lives as long as the view.
    [[nodiscard]] virtual QWidget& widget() = 0;

  protected:
    [[nodiscard]] static Rect frameOf(const QWidget& widget);
    static void layOutNow(QWidget& widget);

    /// Makes the view's widget a child of this one and keeps the view alive.
    void adopt(std::shared_ptr<View> view);

    /// To be called before the widget is destroyed, which would delete its children: these belong
    /// to their own views.
    void releaseSubviews();

  private:
    std::vector<std::shared_ptr<View>> subviews_;
};

/// The widget of a view that this toolkit made.
[[nodiscard]] QWidget& widgetOf(View& view);

/// Implements an interface of Platform/Views.h on a widget.
template <typename Interface, typename Widget>
class QtViewOn : public Interface, public QtWidgetView {
  public:
    ~QtViewOn() override { releaseSubviews(); }

    [[nodiscard]] QWidget& widget() override { return widget_; }

    [[nodiscard]] Rect frame() const override { return frameOf(widget_); }

    void addSubview(std::shared_ptr<View> view) override { adopt(std::move(view)); }

    /// No effect: a view has the place that its layout gives it.
    void setTranslatesAutoresizingMaskIntoConstraints(bool /*translates*/) override {}

    void layoutSubtreeIfNeeded() override { layOutNow(widget_); }

  protected:
    Widget widget_;
};

/// A widget with a grid of a single cell, in which QtToolkit::activateConstraints() places the
/// subviews.
class QtView final : public QtViewOn<View, QWidget> {
  public:
    explicit QtView(Rect frame);

  private:
    QGridLayout cell_{&widget_};
};

class QtVerticalStack final : public QtViewOn<VerticalStack, QWidget> {
  public:
    QtVerticalStack();

    void setSpacing(double spacing) override;
    void setEdgeInsets(EdgeInsets insets) override;
    void setAlignment(Alignment alignment) override;
    void addArrangedSubview(std::shared_ptr<View> view) override;

  private:
    QVBoxLayout layout_{&widget_};
    Qt::Alignment alignment_ = Qt::AlignHCenter;
};

/// A QLabel in one of the system's text colours and with a limit on its lines.
class QtTextLabel final : public QLabel {
  public:
    TextColor color = TextColor::label; ///< update() makes a change visible.
    int maximumNumberOfLines = 0;       ///< 0 for no limit; updateGeometry() applies a change.

    /// All of the text without wrapping; QLabel guesses a width for text that may wrap.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Plain text. Making it editable or selectable is a fatal error.
class QtLabel final : public QtViewOn<Label, QtTextLabel> {
  public:
    enum class Wrapping { none, words };

    QtLabel(std::string text, Wrapping wrapping);

    void setText(std::string text) override;
    [[nodiscard]] std::string text() const override;
    void setFont(SystemFont font) override;
    void setTextColor(TextColor color) override;
    void setAlignment(TextAlignment alignment) override;
    void setEditable(bool isEditable) override;
    void setSelectable(bool isSelectable) override;
    void setMaximumNumberOfLines(int lines) override;
};

/// The colour of text on the window's background. Secondary text is fainter, but keeps a contrast
/// of 4.5:1 as long as the window's own text has it.
[[nodiscard]] QColor textColor(TextColor color, const QPalette& palette);

/// The contrast ratio of two opaque colours, from 1 to 21, as WCAG 2 defines it.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// A push button that Return presses too, which Qt's own do only in dialogs.
class QtPushButton final : public QPushButton {
  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

class QtButton final : public QtViewOn<Button, QtPushButton> {
  public:
    QtButton(std::string title, Action action);

    void setTitle(std::string title) override;
    [[nodiscard]] std::string title() const override;

    /// No effect: the user's widget style draws the bezel.
    void setBezelStyle(BezelStyle /*style*/) override {}

    /// No effect: any widget can be animated.
    void setWantsLayer(bool /*wantsLayer*/) override {}

    /// No effect: the layouts here never stretch a button.
    void setHorizontalContentHuggingPriority(double /*priority*/) override {}

    void animateAlpha(double alpha, std::chrono::milliseconds duration) override;

  private:
    std::string title_;
    QGraphicsOpacityEffect* opacity_; ///< The widget's.
    QPropertyAnimation animation_;
};

} // namespace platform
