#pragma once

#include "app/SingleInstance.h"
#include "commands/Commands.h"

namespace tavelo {

/// Has the running program take a message. Throws a `CommandFailure` if no program runs or it does not
/// answer.
void tellRunningProgram(InstanceMessage message);

/// For a start that could not claim `instance`: has the running program open its menu, and says so. Throws a
/// `CommandFailure` if the claim failed for another reason or the program does not answer.
ExitCode openRunningMenu(const SingleInstance& instance);

/// The same with its set-up window.
ExitCode openRunningSetup(const SingleInstance& instance);

}  // namespace tavelo
