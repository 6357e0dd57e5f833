#include "platform/linux/XlibConnection.h"

#include <algorithm>
#include <vector>

#include <X11/Xlib.h>

namespace tavelo::linux {
namespace {

using ErrorHandler = int (*)(Display*, XErrorEvent*);

/// Xlib has one handler of errors for all connections of the process.
struct SharedHandler {
  std::vector<Display*> ours;
  ErrorHandler others = nullptr;
};

SharedHandler& sharedHandler() {
  static SharedHandler handler;
  return handler;
}

/// Xlib's own handler ends the process; a request of ours that came too late is no reason for that.
int handleError(Display* display, XErrorEvent* error) {
  const auto& [ours, others] = sharedHandler();
  if (std::ranges::find(ours, display) != ours.end() || others == nullptr) return 0;
  return others(display, error);
}

}  // namespace

XlibConnection::XlibConnection(bool connect) : display_(connect ? XOpenDisplay(nullptr) : nullptr) {
  if (display_ == nullptr) return;
  sharedHandler().ours.push_back(display_);
  const ErrorHandler previous = XSetErrorHandler(handleError);
  if (previous != handleError) sharedHandler().others = previous;
  XSetIOErrorExitHandler(
      display_, [](Display*, void* broken) { *static_cast<bool*>(broken) = true; }, &broken_);
}

XlibConnection::~XlibConnection() {
  if (display_ == nullptr) return;
  XCloseDisplay(display_);
  std::erase(sharedHandler().ours, display_);
}

bool XlibConnection::queryKeymap(std::array<char, 32>& keys) const {
  if (!isAlive()) return false;
  XQueryKeymap(display_, keys.data());
  return isAlive();
}

}  // namespace tavelo::linux
