#pragma once

#include "app/AppDelegate.h"
#include "app/RealServices.h"
#include "rehearsal/RehearsalWindows.h"

namespace tavelo {
namespace rehearsal {

/// The real services with windows that need no screen.
struct RehearsalServices : RealServices {
  using ReviewWindow = RehearsalReviewWindow;
  using FloatingStatus = RehearsalOverlay;
  using StatusController = RehearsalStatusMenu;
};

}  // namespace rehearsal

extern template class AppDelegate<rehearsal::RehearsalServices>;

}  // namespace tavelo
