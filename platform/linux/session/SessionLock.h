#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <optional>

namespace tavelo::linuxdesktop {

/// Whether the session is locked, according to logind and the screen savers. Asks each time and subscribes to
/// nothing, so nothing wakes the program. Main thread.
class SessionLock final {
 public:
  /// Connects to the system bus if it answers.
  SessionLock();

  /// Calls `answer` once, when one has said that it is locked, or all have answered or been silent for 100
  /// ms.
  void ask(std::function<void(bool isLocked)> answer);

 private:
  QDBusConnection session_;
  std::optional<QDBusConnection> system_;
  QObject context_;
};

}  // namespace tavelo::linuxdesktop
