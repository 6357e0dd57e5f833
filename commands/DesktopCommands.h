#pragma once

#include <functional>

#include "commands/CommandLine.h"

namespace tavelo {

/// What only a build with a desktop can do. Each may throw a `CommandFailure`. Empty ones are not there.
struct DesktopCommands {
  /// Starts the program; returns when it has quit, or when another one runs already.
  std::function<ExitCode()> start;
  /// Asks the running program to insert the last finished text.
  std::function<ExitCode()> insertLast;
  /// Says of every service that a dictation needs whether it is fine here, and what to do about it if not.
  std::function<ExitCode()> doctor;
};

/// What this build has: all of them or none.
DesktopCommands desktopCommands();

}  // namespace tavelo
