#pragma once

#include <QString>
#include <map>
#include <vector>

#include "platform/Workspace.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace tavelo::linuxdesktop {

/// Who is on the accessibility bus. Never names this process: it cannot answer while it waits for itself.
/// Main thread.
class ApplicationDirectory final {
 public:
  explicit ApplicationDirectory(AccessibilityBus& bus) : bus_(bus) {}

  /// The bus names of one process; it may have several, and ones that are no applications.
  std::vector<QString> servicesOf(platform::ProcessIdentifier process);

  /// The bus names of all other processes, without those that are stopped.
  std::vector<QString> services();

 private:
  void refresh();

  AccessibilityBus& bus_;
  /// A bus gives a name of this kind to one connection and never again, so its process stays true.
  std::map<QString, platform::ProcessIdentifier> processes_;
  /// The bus on which that is so.
  int connectionNumber_ = 0;
};

}  // namespace tavelo::linuxdesktop
