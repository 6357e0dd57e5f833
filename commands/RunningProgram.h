#pragma once

#include "app/SingleInstance.h"

namespace tavelo {

/// Has the running program take a message. Throws a `CommandFailure` if no program runs or it does not
/// answer.
void tellRunningProgram(InstanceMessage message);

}  // namespace tavelo
