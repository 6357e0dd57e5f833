#pragma once

#include "platform/Workspace.h"

namespace tavelo::qt {

/// What Qt alone knows of the desktop: how to open an address, and nothing of other applications. Main
/// thread, with an application object.
class QtWorkspace final : public platform::Workspace {
 public:
  /// Always null: Qt sees its own windows only.
  std::shared_ptr<platform::RunningApplication> frontmostApplication() override;
  bool open(const std::string& url) override;
};

}  // namespace tavelo::qt
