#pragma once

#include <functional>

namespace tavelo {

/// Tells the user once, in a notification, how to reach a program whose status item nobody shows: starting it
/// again opens its menu. Looks 10 s from now, since a panel may start after the program at log-in.
/// `hasStatusArea` is asked then; the default asks the desktop. Works on the current platform; main thread.
void announceMissingStatusArea(std::function<bool()> hasStatusArea = {});

}  // namespace tavelo
