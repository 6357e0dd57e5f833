#pragma once

#include <QIcon>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"

class QAction;
class QMenu;
class QSystemTrayIcon;

namespace tavelo {

/// The item in the desktop's status area with its menu, the error alerts and the About panel. Knows nothing
/// of dictation: it runs callbacks and shows what it is told. Main thread only.
class StatusMenuController final {
 public:
  /// Puts the item into the status area at once; where there is none, as soon as one appears.
  explicit StatusMenuController(platform::Resources& resources = platform::current().resources,
                                platform::Workspace& workspace = platform::current().workspace);
  ~StatusMenuController();
  StatusMenuController(const StatusMenuController&) = delete;
  StatusMenuController& operator=(const StatusMenuController&) = delete;

  std::function<void()> onToggleDictation;
  std::function<void()> onToggleInsertMode;
  std::function<void()> onShowPermissions;
  /// The items of these two exist and are not in the menu.
  std::function<void()> onTestInsert;
  std::function<void()> onInsertLastText;
  std::function<void()> onQuit;

  void setListening(bool listening);
  void setInsertDirectly(bool directly);
  void setAccessibilityAvailable(bool available);

  /// Shows a modal alert with `message` (UTF-8) and returns when the user dismissed it. Main-queue blocks run
  /// meanwhile.
  void showError(const std::string& message);

  /// Opens the menu at the pointer, for desktops without a status area.
  void openMenu();

 private:
  /// An item with a title that runs `callback`; one without a callback is information, shown disabled.
  QAction* makeItem(const QString& title, std::function<void()> StatusMenuController::*callback = nullptr);
  void buildMenu();
  void showAbout();

  platform::Resources& resources_;
  platform::Workspace& workspace_;
  /// Absent where the program comes without one.
  std::optional<QIcon> icon_;
  std::unique_ptr<QMenu> menu_;
  std::unique_ptr<QSystemTrayIcon> statusItem_;
  /// Children of the menu, though the two of the delayed commands are not in it.
  QAction* toggleItem_;
  QAction* modeItem_;
  QAction* permissionItem_;
  QAction* testInsertItem_;
  QAction* insertLastItem_;
  QAction* aboutItem_;
  QAction* accessItem_;
};

}  // namespace tavelo
