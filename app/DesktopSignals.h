#pragma once

#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <functional>
#include <optional>

namespace tavelo {

/// Lets SIGTERM and SIGINT end the program in an orderly way. The destructor restores the earlier handlers.
/// At most one object at a time; main thread, with an application object.
class DesktopSignals final {
 public:
  /// `terminate` is called from the event loop. If the system has no file descriptors left, the signals keep
  /// their earlier effect.
  explicit DesktopSignals(std::function<void()> terminate);
  ~DesktopSignals();
  DesktopSignals(const DesktopSignals&) = delete;
  DesktopSignals& operator=(const DesktopSignals&) = delete;

 private:
  std::array<int, 2> sockets_{-1, -1};
  std::optional<QSocketNotifier> notifier_;
  std::array<struct sigaction, 2> before_{};
};

}  // namespace tavelo
