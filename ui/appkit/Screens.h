#pragma once

#include "ui/Placement.h"

namespace tavelo {

/// The screens and the pointer now. AppKit's coordinates grow upwards; here they grow downwards from the
/// upper left corner of its first screen. Main thread.
ScreenLayout currentScreenLayout();

}  // namespace tavelo
