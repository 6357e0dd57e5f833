#pragma once

#include "recognizer/Inbox.h"

namespace tavelo::recognition {

/// Reads frames from the descriptor into the inbox until there are no more. Stops reading while the inbox is
/// full, but still sees the end of the input. Returns the process's exit status: 0 at the end of the input, 2
/// after a bad frame. The thread that calls it.
int readFrames(int descriptor, Inbox& inbox);

}  // namespace tavelo::recognition
