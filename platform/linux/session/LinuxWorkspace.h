#pragma once

#include "platform/Workspace.h"
#include "platform/linux/session/DesktopEntries.h"
#include "platform/linux/session/DisplayServer.h"

namespace tavelo::linuxdesktop {

/// The applications of a Linux desktop, by their windows. Main thread, with an application object.
class LinuxWorkspace final : public platform::Workspace {
 public:
  /// Asks `server`, which must outlive it and every application that it gave out.
  explicit LinuxWorkspace(DisplayServer& server) : server_(server), windows_(server.windows()) {}

  /// The application of the active window; ourselves when that is ours. Null when no window has the focus, or
  /// one that no process of this machine owns up to.
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool windowsMayBeTranslucent() override { return server_.compositorRuns(); }
  bool open(const std::string& url) override;

 private:
  DisplayServer& server_;
  ActiveWindow& windows_;
  DesktopEntries entries_ = DesktopEntries::ofEnvironment();
};

}  // namespace tavelo::linuxdesktop
