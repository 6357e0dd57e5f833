#pragma once

#include <optional>
#include <string>

#include "platform/linux/session/ActiveWindow.h"

namespace tavelo::linuxdesktop {

/// A desktop without windows.
class NoWindows : public ActiveWindow {
 public:
  std::optional<WindowIdentifier> activeWindow() override { return std::nullopt; }
  std::optional<platform::ProcessIdentifier> process(WindowIdentifier) override { return std::nullopt; }
  std::optional<WindowClass> windowClass(WindowIdentifier) override { return std::nullopt; }
  std::optional<std::string> title(WindowIdentifier) override { return std::nullopt; }
  std::optional<WindowIdentifier> windowOf(platform::ProcessIdentifier) override { return std::nullopt; }
  bool activate(WindowIdentifier) override { return false; }
};

}  // namespace tavelo::linuxdesktop
