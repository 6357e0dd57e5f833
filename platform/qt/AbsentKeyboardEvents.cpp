#include "platform/qt/AbsentKeyboardEvents.h"

namespace tavelo::qt {

std::unique_ptr<platform::EventTap> AbsentKeyboardEvents::createEventTap(platform::EventTapLocation,
                                                                         platform::EventTapPlacement,
                                                                         platform::EventTapOptions,
                                                                         platform::KeyEventMask, Handler) {
  return nullptr;
}

std::unique_ptr<platform::RunLoopSource> AbsentKeyboardEvents::addRunLoopSource(platform::EventTap&) {
  return nullptr;
}

std::unique_ptr<platform::EventMonitor> AbsentKeyboardEvents::addGlobalMonitor(platform::KeyEventMask,
                                                                               Handler) {
  return nullptr;
}

std::optional<platform::KeyboardEvent> AbsentKeyboardEvents::createKeyboardEvent(platform::EventSourceState,
                                                                                 std::int64_t, bool) {
  return std::nullopt;
}

}  // namespace tavelo::qt
