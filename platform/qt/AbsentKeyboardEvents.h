#pragma once

#include "platform/KeyboardEvents.h"

namespace tavelo::qt {

/// The keyboard of a desktop that lets nobody watch or post keys: everything is refused. Main thread.
class AbsentKeyboardEvents final : public platform::KeyboardEvents {
 public:
  std::unique_ptr<platform::EventTap> createEventTap(platform::EventTapLocation location,
                                                     platform::EventTapPlacement placement,
                                                     platform::EventTapOptions options,
                                                     platform::KeyEventMask mask, Handler callback) override;
  std::unique_ptr<platform::RunLoopSource> addRunLoopSource(platform::EventTap& tap) override;
  std::unique_ptr<platform::EventMonitor> addGlobalMonitor(platform::KeyEventMask mask,
                                                           Handler handler) override;
  std::optional<platform::KeyboardEvent> createKeyboardEvent(platform::EventSourceState source,
                                                             std::int64_t keyCode, bool keyDown) override;
  void postToProcess(platform::ProcessIdentifier, const platform::KeyboardEvent&) override {}
  void post(platform::EventTapLocation, const platform::KeyboardEvent&) override {}
};

}  // namespace tavelo::qt
