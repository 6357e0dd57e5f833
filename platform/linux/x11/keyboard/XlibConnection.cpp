#include "platform/linux/x11/keyboard/XlibConnection.h"

#include <algorithm>
#include <vector>

#include <X11/Xlib.h>

namespace tavelo::linuxdesktop {
namespace {

/// Xlib has one handler of each kind for all connections of the process.
struct Handlers {
  std::vector<Display*> ours;
  XErrorHandler otherErrors = nullptr;
  XIOErrorHandler otherEnds = nullptr;

  bool isOurs(Display* display) const { return std::ranges::find(ours, display) != ours.end(); }
};

Handlers& handlers() {
  static Handlers shared;
  return shared;
}

/// Xlib's own handler ends the process; a request of ours that came too late is no reason for that.
int handleError(Display* display, XErrorEvent* error) {
  const auto other = handlers().otherErrors;
  return handlers().isOurs(display) || other == nullptr ? 0 : other(display, error);
}

int handleEnd(Display* display) {
  const auto other = handlers().otherEnds;
  return handlers().isOurs(display) || other == nullptr ? 0 : other(display);
}

void installHandlers() {
  const auto errors = XSetErrorHandler(handleError);
  if (errors != handleError) handlers().otherErrors = errors;
  const auto ends = XSetIOErrorHandler(handleEnd);
  if (ends != handleEnd) handlers().otherEnds = ends;
}

}  // namespace

XlibConnection::XlibConnection(bool connect) : display_(connect ? XOpenDisplay(nullptr) : nullptr) {
  if (display_ == nullptr) return;
  handlers().ours.push_back(display_);
  installHandlers();
  XSetIOErrorExitHandler(
      display_, [](Display*, void* broken) { *static_cast<bool*>(broken) = true; }, &broken_);
}

XlibConnection::~XlibConnection() {
  if (display_ == nullptr) return;
  XCloseDisplay(display_);
  std::erase(handlers().ours, display_);
}

bool XlibConnection::queryKeymap(std::array<char, 32>& keys) const {
  if (!isAlive()) return false;
  XQueryKeymap(display_, keys.data());
  return isAlive();
}

}  // namespace tavelo::linuxdesktop
