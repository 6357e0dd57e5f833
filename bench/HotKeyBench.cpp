// Bound: a decision about a key takes less than 200 ns.
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include <benchmark/benchmark.h>

#include "hotkey/HotKeyService.h"
#include "platform/KeyboardEvents.h"

namespace tavelo {
namespace {

/// Keeps the tap's callback, so that the benchmark can hand events straight to the service.
class HandedKeyboard final : public platform::KeyboardEvents {
 public:
  std::unique_ptr<platform::EventTap> createEventTap(platform::EventTapLocation, platform::EventTapPlacement,
                                                     platform::EventTapOptions, platform::KeyEventMask,
                                                     Handler callback) override {
    struct Tap final : platform::EventTap {
      void enable(bool) override {}
    };
    deliver = std::move(callback);
    return std::make_unique<Tap>();
  }
  std::unique_ptr<platform::RunLoopSource> addRunLoopSource(platform::EventTap&) override { return nullptr; }
  std::unique_ptr<platform::EventMonitor> addGlobalMonitor(platform::KeyEventMask, Handler) override {
    return nullptr;
  }
  std::optional<platform::KeyboardEvent> createKeyboardEvent(platform::EventSourceState, std::int64_t,
                                                             bool) override {
    return std::nullopt;
  }
  void postToProcess(platform::ProcessIdentifier, const platform::KeyboardEvent&) override {}
  void post(platform::EventTapLocation, const platform::KeyboardEvent&) override {}

  Handler deliver;
};

/// Measures the decision about each event of one second of typing: a letter, a modifier, Fn, the toggle.
void hotKeyDecision(benchmark::State& state) {
  using platform::KeyEventType;
  namespace flags = platform::keyflags;
  std::array<platform::KeyboardEvent, 8> events{{
      {KeyEventType::keyDown, 0, 0, {}},
      {KeyEventType::keyUp, 0, 0, {}},
      {KeyEventType::flagsChanged, 56, flags::shift, {}},
      {KeyEventType::flagsChanged, 56, 0, {}},
      {KeyEventType::flagsChanged, platform::keycodes::function, flags::secondaryFn, {}},
      {KeyEventType::flagsChanged, platform::keycodes::function, 0, {}},
      {KeyEventType::keyDown, platform::keycodes::v, flags::control | flags::option, {}},
      {KeyEventType::keyUp, platform::keycodes::v, flags::control | flags::option, {}},
  }};
  HandedKeyboard keyboard;
  HotKeyService service(keyboard);
  std::size_t actions = 0;
  service.onAction = [&](HotKeyAction) { ++actions; };
  service.start();
  platform::Uptime now{};
  std::size_t at = 0;
  for (auto _ : state) {
    now += std::chrono::milliseconds(125);
    auto& event = events[at++ % events.size()];
    event.timestamp = now;
    keyboard.deliver(event);
  }
  state.counters["actions"] = static_cast<double>(actions);
}
BENCHMARK(hotKeyDecision);

}  // namespace
}  // namespace tavelo
