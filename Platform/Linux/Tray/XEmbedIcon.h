#pragma once

#include "Platform/Linux/Tray/TrayImages.h"

#include <QIcon>
#include <QRect>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>

namespace platform {

/// An icon of Qt's that draws the image at each size that is asked for.
[[nodiscard]] QIcon drawnIcon(std::shared_ptr<const DrawnImage> image);

/// The program's icon as a window in a tray that embeds windows, through Qt. Main thread only.
///
/// With its first icon, Qt decides for good whether all of them are windows or objects on the bus.
/// So the first is made only when there is a tray for windows and none on the bus. From version 6.8
/// on, a watcher without a tray counts as one on the bus: no window appears then.
class XEmbedIcon {
  public:
    /// `clicked` is called from the event loop for a click of any button.
    explicit XEmbedIcon(std::function<void()> clicked);

    /// Null shows no icon.
    void setImage(std::shared_ptr<const DrawnImage> image);

    /// On the screen.
    [[nodiscard]] QRect geometry() const { return icon_.geometry(); }

  private:
    QSystemTrayIcon icon_;
};

} // namespace platform
