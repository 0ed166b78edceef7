#pragma once

#include "Platform/Views.h"

#include <QLayout>
#include <QRect>
#include <QSize>
#include <memory>
#include <vector>

namespace platform {

/// Places widgets in their container by which of their edges are the container's own: tied to two
/// opposite edges a widget fills the container, tied to one edge or to the middle it has its
/// natural size there, and tied to none it keeps the frame that it came with. The container needs
/// as much room as the tied widgets do. Main thread only.
class QtConstraintLayout final : public QLayout {
  public:
    explicit QtConstraintLayout(QWidget* container);
    ~QtConstraintLayout() override;

    /// Makes this anchor of a widget in this layout the same as the container's.
    void tie(const QWidget& widget, LayoutConstraint::Anchor anchor);

    void addItem(QLayoutItem* item) override; ///< Takes the item over.
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override; ///< Hands the item over.
    [[nodiscard]] int count() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    void setGeometry(const QRect& rectangle) override;

  private:
    /// One widget and its ties.
    struct Place {
        std::unique_ptr<QLayoutItem> item;
        QRect frame; ///< What it came with; the origin counts from the lower left corner.
        bool top = false;
        bool bottom = false;
        bool leading = false;
        bool trailing = false;
        bool centerX = false;

        [[nodiscard]] bool isTiedAcross() const { return leading || trailing || centerX; }

        [[nodiscard]] bool isTiedDown() const { return top || bottom; }
    };

    [[nodiscard]] static int naturalWidth(const Place& place);
    [[nodiscard]] static int widthIn(const Place& place, int containerWidth);
    [[nodiscard]] static int naturalHeight(const Place& place, int width);
    [[nodiscard]] static QRect rectangleIn(const Place& place, QSize container);

    std::vector<Place> places_;
};

} // namespace platform
