#pragma once

#include "app/AppDelegate.h"
#include "app/RealServices.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/ReviewWindowController.h"
#include "ui/qt/StatusMenuController.h"

namespace tavelo {

/// What the desktop program is made of: the real services and the real windows.
struct ApplicationServices : RealServices {
  using ReviewWindow = ReviewWindowController;
  using FloatingStatus = FloatingStatusWindowController;
  using StatusController = StatusMenuController;
};

extern template class AppDelegate<ApplicationServices>;

}  // namespace tavelo
