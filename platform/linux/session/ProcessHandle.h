#pragma once

#include "platform/Workspace.h"

namespace tavelo::linuxdesktop {

/// A process that ran when this was made, and never another one that got its identifier later. Main thread.
class ProcessHandle final {
 public:
  explicit ProcessHandle(platform::ProcessIdentifier process);
  ~ProcessHandle();
  ProcessHandle(const ProcessHandle&) = delete;
  ProcessHandle& operator=(const ProcessHandle&) = delete;

  platform::ProcessIdentifier identifier() const { return process_; }

  /// Whether it has ended; stays true once it is. Does not wait.
  bool hasEnded() const;

 private:
  const platform::ProcessIdentifier process_;
  int descriptor_ = -1;
  mutable bool ended_ = false;
};

/// Whether a process has been stopped, by a signal or by a debugger, and so answers nobody until it is sent
/// on. False for one that is not there. Any thread.
bool isStopped(platform::ProcessIdentifier process);

}  // namespace tavelo::linuxdesktop
