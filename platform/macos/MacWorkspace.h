#pragma once

#include "platform/Workspace.h"

namespace tavelo::macos {

/// The applications that run in the user's session. Main thread.
class MacWorkspace final : public platform::Workspace {
 public:
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  /// False if the user wants less transparency.
  bool windowsMayBeTranslucent() override;
  bool open(const std::string& url) override;
};

}  // namespace tavelo::macos
