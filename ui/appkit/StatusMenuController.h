#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Platform.h"

namespace tavelo {

/// The item in the menu bar with its menu, the error alerts and the About panel. Knows nothing of dictation:
/// it runs callbacks and shows what it is told. Main thread only.
class StatusMenuController final {
 public:
  /// Puts the item into the menu bar.
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

  /// Opens the menu at the pointer, and returns when it closes; at once if it is open. Main-queue blocks run
  /// meanwhile. The menu bar may have no room for the item.
  void openMenu();

 private:
  /// The status item, the menu and its items.
  struct Menu;

  void showAbout();

  platform::Resources& resources_;
  platform::Workspace& workspace_;
  const platform::Names& names_;
  std::unique_ptr<Menu> menu_;
};

}  // namespace tavelo
