#pragma once

#include "platform/Workspace.h"
#include "platform/linux/windows/DesktopEntries.h"
#include "platform/linux/windows/X11Windows.h"
#include "platform/qt/QtWorkspace.h"

namespace tavelo::linuxdesktop {

/// The applications of an X11 desktop, by their windows. Main thread, with an application object.
class X11Workspace final : public platform::Workspace {
 public:
  /// Asks `windows`, which must outlive it and every application that it gave out.
  explicit X11Workspace(X11Windows& windows) : windows_(windows) {}

  /// The application of the active window; ourselves when that is ours. Null when no window has the focus, or
  /// one that no process of this machine owns up to.
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool open(const std::string& url) override { return qt_.open(url); }

 private:
  X11Windows& windows_;
  DesktopEntries entries_ = DesktopEntries::ofEnvironment();
  qt::QtWorkspace qt_;
};

}  // namespace tavelo::linuxdesktop
