#include "ui/qt/StatusAreaNotice.h"

#include <QSystemTrayIcon>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/UserNotifications.h"

namespace tavelo {
namespace {

constexpr platform::Seconds startOfAPanel{10.0};

}  // namespace

void announceMissingStatusArea(std::function<bool()> hasStatusArea) {
  if (!hasStatusArea) hasStatusArea = QSystemTrayIcon::isSystemTrayAvailable;
  const auto& platform = platform::current();
  platform.mainQueue.asyncAfter(startOfAPanel, [&notifications = platform.userNotifications,
                                                hasStatusArea = std::move(hasStatusArea)] {
    if (hasStatusArea()) return;
    notifications.post("Tavelo", "Màn hình này không có khay trạng thái. Mở Tavelo lần nữa để hiện menu.");
  });
}

}  // namespace tavelo
