#pragma once

#include "platform/SecretGuard.h"

namespace tavelo::macos {

/// The secrets of a Mac: a session that is locked or in the background, an application that keeps its keys to
/// itself (secure input), and a password field that accessibility can see. Main thread.
class MacSecretGuard final : public platform::SecretGuard {
 public:
  /// Answers inside the call.
  void ask(Answer answer) override;
};

}  // namespace tavelo::macos
