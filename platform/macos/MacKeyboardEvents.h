#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/Clock.h"
#include "platform/KeyboardEvents.h"
#include "platform/MainQueue.h"

namespace tavelo::macos {

/// The keyboard of macOS: event taps, global monitors and posted keys. Main thread. Its watchers may outlive
/// it, but not the clock.
///
/// Keys that it posts never interrupt a hold. They are posted at the HID location only: the same keys for
/// another location or a process would paste again.
class MacKeyboardEvents final : public platform::KeyboardEvents {
 public:
  MacKeyboardEvents(platform::MainQueue& mainQueue, const platform::Clock& clock);
  ~MacKeyboardEvents() override;

  std::unique_ptr<platform::EventTap> createEventTap(platform::EventTapLocation location,
                                                     platform::EventTapPlacement placement,
                                                     platform::EventTapOptions options,
                                                     platform::KeyEventMask mask, Handler callback) override;
  std::unique_ptr<platform::RunLoopSource> addRunLoopSource(platform::EventTap& tap) override;
  std::unique_ptr<platform::EventMonitor> addGlobalMonitor(platform::KeyEventMask mask,
                                                           Handler handler) override;
  std::optional<platform::KeyboardEvent> createKeyboardEvent(platform::EventSourceState source,
                                                             std::int64_t keyCode, bool keyDown) override;
  void postToProcess(platform::ProcessIdentifier process, const platform::KeyboardEvent& event) override;
  void post(platform::EventTapLocation location, const platform::KeyboardEvent& event) override;

  /// Called before Command-V goes out.
  std::function<void()> willPaste;

 private:
  class Tap;
  class Source;
  class Monitor;
  struct Monitors;

  const platform::Clock& clock_;
  const std::shared_ptr<Monitors> monitors_;
};

}  // namespace tavelo::macos
