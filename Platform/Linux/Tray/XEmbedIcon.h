#pragma once

#include "Platform/Linux/Tray/DrawnImage.h"

#include <QSystemTrayIcon>
#include <functional>
#include <memory>

namespace platform {

/// The program's icon as a window in a tray that takes windows, through the toolkit. Main thread
/// only.
///
/// The toolkit decides for its first icon, and for good, whether all of them are windows or objects
/// on the bus. So the first is made only when there is a tray for windows and none on the bus.
class XEmbedIcon {
  public:
    /// `clicked` is called from the event loop for a click of any button.
    explicit XEmbedIcon(std::function<void()> clicked);

    /// Null shows none.
    void setImage(std::shared_ptr<const DrawnImage> image);

  private:
    QSystemTrayIcon icon_;
};

} // namespace platform
