#pragma once

#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "platform/Workspace.h"
#include "platform/linux/accessibility/AccessibilityBus.h"

namespace tavelo::linuxdesktop {

/// Which processes are on the accessibility bus. Leaves out this process, which cannot answer while it waits
/// for itself. Main thread.
class ApplicationDirectory final {
 public:
  explicit ApplicationDirectory(AccessibilityBus& bus) : bus_(bus) {}

  /// The bus names of one process. It may have several, and some may not be applications.
  std::vector<QString> servicesOf(platform::ProcessIdentifier process);

  /// The process with that bus name, which may be this one; absent if it has gone.
  std::optional<platform::ProcessIdentifier> processOf(const QString& service);

  /// All other processes on the bus.
  std::vector<platform::ProcessIdentifier> processes();

  /// The bus names of all other processes that are not stopped.
  std::vector<QString> services();

 private:
  void refresh();

  AccessibilityBus& bus_;
  /// A bus never reuses these names, so an entry stays true as long as we are connected to the same bus.
  std::map<QString, platform::ProcessIdentifier> processes_;
  /// The connection that `processes_` is about.
  int connectionNumber_ = 0;
};

}  // namespace tavelo::linuxdesktop
