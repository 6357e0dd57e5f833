#pragma once

#include "platform/Workspace.h"

namespace tavelo::linuxdesktop {

/// A process that ran when this was made. Never stands for a later process with the same identifier. Main
/// thread.
class ProcessHandle final {
 public:
  explicit ProcessHandle(platform::ProcessIdentifier process);
  ~ProcessHandle();
  ProcessHandle(const ProcessHandle&) = delete;
  ProcessHandle& operator=(const ProcessHandle&) = delete;

  platform::ProcessIdentifier identifier() const { return process_; }

  /// Stays true once it is true. Does not wait.
  bool hasEnded() const;

 private:
  const platform::ProcessIdentifier process_;
  int descriptor_ = -1;
  mutable bool ended_ = false;
};

/// Whether a signal or a debugger has stopped a process, so that it answers nobody until it continues. False
/// for a process that does not exist. Any thread.
bool isStopped(platform::ProcessIdentifier process);

}  // namespace tavelo::linuxdesktop
