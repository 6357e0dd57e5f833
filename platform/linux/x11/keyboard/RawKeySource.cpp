#include "platform/linux/x11/keyboard/RawKeySource.h"

#include <array>
#include <utility>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>

namespace tavelo::linuxdesktop {
namespace {

void select(Display* display, int devices, std::initializer_list<int> events) {
  std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits{};
  for (const int event : events) {
    auto& byte = bits[static_cast<std::size_t>(event) / 8];
    byte = static_cast<unsigned char>(byte | (1U << (event % 8)));
  }
  XIEventMask mask{.deviceid = devices, .mask_len = static_cast<int>(bits.size()), .mask = bits.data()};
  XISelectEvents(display, DefaultRootWindow(display), &mask, 1);
}

}  // namespace

RawKeySource::RawKeySource(XlibConnection& connection) : connection_(connection) {
  if (!connection_.isAlive()) return;
  canWatch_ = selectEvents();
  if (canWatch_) calibrateClock();
}

bool RawKeySource::selectEvents() {
  Display* const display = connection_.display();
  int firstEvent = 0;
  int firstError = 0;
  if (XQueryExtension(display, "XInputExtension", &inputExtension_, &firstEvent, &firstError) == False)
    return false;
  // Before 2.2, only the client that grabs the keyboard sees the keys. Menus grab it.
  int major = 2;
  int minor = 2;
  if (XIQueryVersion(display, &major, &minor) != Success || std::pair(major, minor) < std::pair(2, 2))
    return false;
  int opcode = 0;
  int xkbMajor = XkbMajorVersion;
  int xkbMinor = XkbMinorVersion;
  if (XkbQueryExtension(display, &opcode, &keyboardExtension_, &firstError, &xkbMajor, &xkbMinor) == False)
    return false;
  select(display, XIAllMasterDevices, {XI_RawKeyPress, XI_RawKeyRelease});
  select(display, XIAllDevices, {XI_HierarchyChanged});
  constexpr unsigned long changes = XkbMapNotifyMask | XkbNewKeyboardNotifyMask;
  XkbSelectEvents(display, XkbUseCoreKbd, changes, changes);
  return connection_.isAlive();
}

void RawKeySource::calibrateClock() {
  Display* const display = connection_.display();
  // The server tells its time with the change of a property.
  XSetWindowAttributes attributes{};
  attributes.event_mask = PropertyChangeMask;
  const Window window = XCreateWindow(display, DefaultRootWindow(display), -1, -1, 1, 1, 0, 0, InputOnly,
                                      CopyFromParent, CWEventMask, &attributes);
  const auto before = ServerClock::now();
  XChangeProperty(display, window, XA_WM_NAME, XA_STRING, 8, PropModeAppend, nullptr, 0);
  connection_.synchronise();
  const auto after = ServerClock::now();
  XEvent event;
  if (connection_.isAlive() && XCheckTypedWindowEvent(display, window, PropertyNotify, &event) == True)
    clock_.calibrate(static_cast<std::uint32_t>(event.xproperty.time), before, after);
  XDestroyWindow(display, window);
}

std::optional<RawKeySource::Event> RawKeySource::next() {
  while (canWatch() && XPending(connection_.display()) > 0) {
    XEvent event;
    XNextEvent(connection_.display(), &event);
    if (!connection_.isAlive()) break;
    if (const auto translated = translate(event)) return translated;
  }
  return std::nullopt;
}

std::optional<RawKeySource::Event> RawKeySource::translate(_XEvent& event) {
  if (event.type == MappingNotify || event.type == keyboardExtension_) return Event{.kind = Kind::mapChanged};
  if (event.type != GenericEvent || event.xcookie.extension != inputExtension_) return std::nullopt;
  XGenericEventCookie& cookie = event.xcookie;
  if (XGetEventData(connection_.display(), &cookie) == False) return std::nullopt;
  std::optional<Event> result;
  if (cookie.evtype == XI_HierarchyChanged) {
    result = Event{.kind = Kind::devicesChanged};
  } else if (cookie.evtype == XI_RawKeyPress || cookie.evtype == XI_RawKeyRelease) {
    const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
    if (raw.detail >= 0 && raw.detail < static_cast<int>(keyNumbers))
      result = Event{.kind = Kind::keyMoved,
                     .key = static_cast<KeyNumber>(raw.detail),
                     .down = cookie.evtype == XI_RawKeyPress,
                     .at = clock_.toUptime(static_cast<std::uint32_t>(raw.time), ServerClock::now()),
                     .request = cookie.serial};
  }
  XFreeEventData(connection_.display(), &cookie);
  return result;
}

}  // namespace tavelo::linuxdesktop
