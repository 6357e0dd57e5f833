#include "platform/linux/x11/XlibConnection.h"

#include <algorithm>
#include <array>
#include <vector>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace tavelo::linuxdesktop {
namespace {

/// Xlib has one handler of each kind for all connections of the process; other code may have set its own.
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

/// Xlib's own handler ends the process, even when a request merely came too late.
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

int XlibConnection::fileDescriptor() const { return ConnectionNumber(display_); }

std::optional<std::bitset<keyNumbers>> XlibConnection::keysDown() const {
  if (!isAlive()) return std::nullopt;
  std::array<char, keyNumbers / 8> bytes{};
  XQueryKeymap(display_, bytes.data());
  if (!isAlive()) return std::nullopt;
  std::bitset<keyNumbers> keys;
  for (std::size_t key = 0; key < keyNumbers; ++key)
    keys.set(key, ((static_cast<unsigned>(bytes[key / 8]) >> (key % 8)) & 1U) != 0);
  return keys;
}

unsigned long XlibConnection::moveKey(KeyNumber key, bool down) {
  XTestFakeKeyEvent(display_, key, down ? True : False, CurrentTime);
  // Only now: the first use of the extension sends one extra request.
  return NextRequest(display_) - 1;
}

void XlibConnection::synchronise() {
  if (isAlive()) XSync(display_, False);
}

}  // namespace tavelo::linuxdesktop
