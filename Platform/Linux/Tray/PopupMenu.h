#pragma once

#include "Platform/Linux/Tray/MenuRows.h"
#include "Platform/Menu.h"

#include <QMenu>
#include <QRect>
#include <memory>
#include <optional>

class QKeyEvent;

namespace platform {

/// A menu that Qt shows, for trays that leave that to the program. Its rows follow their titles
/// also while it is open, and can be chosen by their key equivalents then. Their actions run from
/// the event loop. Main thread only.
class PopupMenu final : public QObject {
  public:
    explicit PopupMenu(std::shared_ptr<Menu> menu);

    /// Opens the menu beside an icon on the screen, away from the nearest edge, and returns.
    void popUp(const QRect& icon);

    void close() { menu_.close(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void add(const std::shared_ptr<MenuItem>& item);
    [[nodiscard]] bool chooseByKey(const QKeyEvent& event);

    std::shared_ptr<Menu> rows_;
    QMenu menu_;
    std::optional<TitleObservers> titleObservers_;
};

} // namespace platform
