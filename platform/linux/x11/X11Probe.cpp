#include "platform/linux/x11/X11Probe.h"

#include "platform/linux/x11/keyboard/KeyboardMap.h"

namespace tavelo::linuxdesktop {

X11Probe::X11Probe(const std::string& holdKey) {
  if (!keyboard_.isAlive()) return;
  const auto map = readKeyboardMap(keyboard_.display(), holdKey);
  if (map && !map->holdKey.keys.empty()) holdKey_ = map->holdKey.keys.front();
  const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(events_.get(), events_.root(), XCB_CW_EVENT_MASK, &mask);
  xcb_flush(events_.get());
}

void X11Probe::moveHoldKey(bool down) {
  while (events_.nextEvent({})) {
  }
  keyboard_.moveKey(holdKey_, down);
  keyboard_.synchronise();
}

bool X11Probe::awaitWindow(platform::ProcessIdentifier process, XcbConnection::Instant deadline) {
  while (const auto event = events_.nextEvent(deadline)) {
    if (kindOf(*event) == XCB_MAP_NOTIFY &&
        windows_.process(as<xcb_map_notify_event_t>(*event).window) == process)
      return true;
  }
  return false;
}

}  // namespace tavelo::linuxdesktop
