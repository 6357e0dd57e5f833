#pragma once

#include <memory>
#include <string>

#include "app/SingleInstance.h"

namespace tavelo {

/// The running program on a Mac: its application object, its platform, its coordinator and its event loop.
/// One per process; main thread. It lasts as long as the process, which quitting ends from inside `run`.
///
/// The quit command, SIGTERM, SIGINT and the end of the session all end it in the same way: a running
/// dictation is dropped, and nothing is saved.
class MacProgram final {
 public:
  /// Makes everything but the status menu. Nothing is shown yet, and no permission is asked for.
  MacProgram();
  ~MacProgram();
  MacProgram(const MacProgram&) = delete;
  MacProgram& operator=(const MacProgram&) = delete;

  /// Runs the event loop, inside which launching finishes.
  void run();

  /// Does what another start of the program asks for, one hop over the main queue later and not before
  /// launching has finished.
  void receive(InstanceMessage message);

  /// Forgets dictations at once; argument and result as `InstanceMessage::forgetHistory` has them.
  std::string forget(const std::string& argument);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tavelo
