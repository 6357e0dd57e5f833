#pragma once

namespace tavelo::linuxdesktop {

/// Keeps Qt from the accessibility bus for the rest of the program, so that screen readers do not see our
/// windows. Qt connects when it makes its first window, and waits 25 s for a bus that hangs. Call it before,
/// with an application object. Main thread.
void keepToolkitFromBus();

}  // namespace tavelo::linuxdesktop
