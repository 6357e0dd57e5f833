#pragma once

#include <functional>

#include "platform/Workspace.h"
#include "platform/linux/session/DesktopEntries.h"
#include "platform/linux/session/DisplayServer.h"

namespace tavelo::linuxdesktop {

/// The applications of a Linux desktop, found by their windows. Main thread, with an application object.
class LinuxWorkspace final : public platform::Workspace {
 public:
  /// `server` must outlive this object. Both must outlive every application that it returned.
  explicit LinuxWorkspace(DisplayServer& server) : server_(server), windows_(server.windows()) {}

  /// The application of the active window, which may be this program. Null if no window has the focus or its
  /// process is unknown.
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool windowsMayBeTranslucent() override { return server_.compositorRuns(); }
  bool open(const std::string& url) override;

  /// Called when a window of an application was asked to come to the front, or could not be because the
  /// application or all its windows are gone: then with `noWindow`.
  std::function<void(platform::ProcessIdentifier, WindowIdentifier)> onActivate;

 private:
  DisplayServer& server_;
  ActiveWindow& windows_;
  DesktopEntries entries_ = DesktopEntries::ofEnvironment();
};

}  // namespace tavelo::linuxdesktop
