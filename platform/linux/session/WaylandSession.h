#pragma once

namespace tavelo::linuxdesktop {

/// Whether native windows of the session speak Wayland, so that X sees neither their keys nor them. By the
/// environment, which also tells of a compositor that was started from a text console.
bool isWaylandSession();

}  // namespace tavelo::linuxdesktop
