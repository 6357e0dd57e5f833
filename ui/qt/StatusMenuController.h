#pragma once

#include <QIcon>
#include <QPointer>
#include <QString>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"

class QAction;
class QMenu;
class QMessageBox;

namespace tavelo {

/// The item in the desktop's status area with its menu, the error alerts and the About panel. Knows nothing
/// of dictation: it runs callbacks and shows what it is told. Main thread only.
class StatusMenuController final {
 public:
  /// Puts the item into the status area now, or as soon as there is one that answers. Does not wait for it.
  explicit StatusMenuController(platform::Resources& resources = platform::current().resources,
                                platform::Workspace& workspace = platform::current().workspace,
                                const platform::Names& names = platform::current().names);
  ~StatusMenuController();
  StatusMenuController(const StatusMenuController&) = delete;
  StatusMenuController& operator=(const StatusMenuController&) = delete;

  std::function<void()> onToggleDictation;
  std::function<void()> onToggleInsertMode;
  std::function<void()> onShowPermissions;
  /// These two have items, but not in the menu.
  std::function<void()> onTestInsert;
  std::function<void()> onInsertLastText;
  std::function<void()> onQuit;

  void setListening(bool listening);
  void setInsertDirectly(bool directly);
  void setAccessibilityAvailable(bool available);

  /// Shows a modal alert with `message` (UTF-8) and returns when the user has dismissed it. Main-queue blocks
  /// run meanwhile. If one of them calls this too, the open alert shows the newer message and the inner call
  /// returns at once: waiting would nest one event loop for every error.
  void showError(const std::string& message);

  /// Opens the menu at the pointer, for desktops without a status area.
  void openMenu();

 private:
  /// An item that runs `callback`; without one it is information, shown disabled.
  QAction* makeItem(const QString& title, std::function<void()> StatusMenuController::*callback = nullptr);
  void buildMenu();
  void nameHoldKey();
  void showStatusItem();
  QIcon itemIcon() const;
  void showAbout();

  platform::Resources& resources_;
  platform::Workspace& workspace_;
  const platform::Names& names_;
  /// Absent if the resources have none.
  std::optional<QIcon> icon_;
  std::unique_ptr<QMenu> menu_;
  /// Null until the status area has answered.
  std::unique_ptr<QSystemTrayIcon> statusItem_;
  /// The newest alert while it exists.
  QPointer<QMessageBox> alert_;
  QString toolTip_;
  /// Absent until it was said.
  std::optional<bool> accessibilityAvailable_;
  /// The menu owns them all, also the two that it does not show.
  QAction* toggleItem_;
  QAction* holdKeyItem_;
  QAction* modeItem_;
  QAction* permissionItem_;
  QAction* testInsertItem_;
  QAction* insertLastItem_;
  QAction* aboutItem_;
  QAction* accessItem_;
};

/// If the desktop has no status area, tells the user once, in a notification, to start the program again,
/// which opens its menu. One that does not answer counts as missing. Asks `hasStatusArea` 10 s from now,
/// since a panel may start after the program at log-in. Uses the current platform; main thread.
void announceMissingStatusArea(std::function<bool()> hasStatusArea = QSystemTrayIcon::isSystemTrayAvailable);

}  // namespace tavelo
