#pragma once

#include "app/AppDelegate.h"
#include "app/RealServices.h"
#include "ui/appkit/FloatingStatusWindowController.h"
#include "ui/appkit/ReviewWindowController.h"
#include "ui/appkit/StatusMenuController.h"

namespace tavelo {

/// What the program is made of on a Mac: the real services and AppKit's windows.
struct MacServices : RealServices {
  using ReviewWindow = ReviewWindowController;
  using FloatingStatus = FloatingStatusWindowController;
  using StatusController = StatusMenuController;
};

extern template class AppDelegate<MacServices>;

}  // namespace tavelo
