/// Measures a running Tavelo from outside, on a real X11 desktop: the time from pressing the hold key to the
/// overlay, and from releasing it to the text in the focused field.
/// Usage: tavelo_latency PROCESS ROUNDS SPEECH-SECONDS
///
/// The field must be readable through accessibility. The recogniser must hear words within SPEECH-SECONDS.
/// Prints each round and the medians in milliseconds. The status is 1 when the overlay or the text did not
/// come.
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "app/LinuxWiring.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/linux/x11/X11Probe.h"
#include "settings/Names.h"
#include "settings/Settings.h"

namespace tavelo {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// How long the overlay or the text may take before the round counts as failed.
constexpr std::chrono::seconds patience{5};
/// The time after which the program has hidden its notice and is idle again.
constexpr platform::Seconds rest{3};

class Bench {
 public:
  explicit Bench(platform::ProcessIdentifier program) : program_(program) {}

  bool isUsable() const { return probe_.isUsable(); }

  /// Presses or releases the hold key; the server has carried it out on return. Returns the time just before.
  platform::Uptime moveHoldKey(bool down) {
    const auto at = platform_.clock.uptime();
    probe_.moveHoldKey(down);
    return at;
  }

  /// When the program showed a window; absent when it did not.
  std::optional<platform::Uptime> awaitWindow() {
    if (!probe_.awaitWindow(program_, std::chrono::steady_clock::now() + patience)) return std::nullopt;
    return platform_.clock.uptime();
  }

  /// The text of the field with the focus; absent when it cannot be read.
  std::optional<std::string> text() {
    if (!field_) {
      platform::AXValue found;
      if (platform_.accessibility.copyAttributeValue(platform_.accessibility.createSystemWide(),
                                                     platform::ax::focusedUIElement,
                                                     found) != platform::AXError::success) {
        return std::nullopt;
      }
      field_ = std::get<platform::AXUIElementRef>(found);
    }
    // Accessibility has a time budget for each turn of the main queue, so every look gets a turn of its own.
    platform_.mainQueue.runUntil(platform_.clock.uptime() + std::chrono::microseconds(200));
    platform::AXValue value;
    if (platform_.accessibility.copyAttributeValue(field_, platform::ax::value, value) !=
        platform::AXError::success) {
      return std::nullopt;
    }
    return std::get<std::string>(value);
  }

  /// When the field's text differed from `before`; absent when it did not change.
  std::optional<platform::Uptime> awaitOtherText(const std::string& before) {
    const auto deadline = platform_.clock.uptime() + patience;
    while (platform_.clock.uptime() < deadline) {
      const auto now = text();
      if (now && *now != before) return platform_.clock.uptime();
    }
    return std::nullopt;
  }

  void pause(platform::Seconds interval) {
    platform_.mainQueue.runUntil(platform_.clock.uptime() + platform::toUptime(interval));
  }

 private:
  const platform::Platform& platform_ = platform::current();
  platform::ProcessIdentifier program_;
  linuxdesktop::X11Probe probe_{settings::Settings::ofUser().value(settings::names::holdKey)};
  platform::AXUIElementRef field_;
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

int measure(platform::ProcessIdentifier program, int rounds, platform::Seconds speech) {
  Bench bench(program);
  if (!bench.isUsable()) {
    std::fputs("no X server whose keyboard has the hold key\n", stderr);
    return 1;
  }
  std::vector<double> toListening;
  std::vector<double> toText;
  bench.pause(platform::Seconds{0.5});
  for (int round = 1; round <= rounds; ++round) {
    const auto before = bench.text();
    const auto pressed = bench.moveHoldKey(true);
    const auto listening = bench.awaitWindow();
    bench.pause(speech);
    const auto released = bench.moveHoldKey(false);
    const auto arrived = before ? bench.awaitOtherText(*before) : std::nullopt;
    if (!listening || !arrived) {
      std::printf("round %d: %s\n", round,
                  !before      ? "the field cannot be read"
                  : !listening ? "no overlay"
                               : "no text");
      return 1;
    }
    toListening.push_back(Milliseconds(*listening - pressed).count());
    toText.push_back(Milliseconds(*arrived - released).count());
    std::printf("round %d: press to overlay %.1f ms, release to text %.1f ms\n", round, toListening.back(),
                toText.back());
    bench.pause(rest);
  }
  std::printf("median of %d: press to overlay %.1f ms, release to text %.1f ms\n", rounds,
              median(toListening), median(toText));
  return 0;
}

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: tavelo_latency PROCESS ROUNDS SPEECH-SECONDS\n", stderr);
    return 2;
  }
  QGuiApplication application(argc, argv);
  const tavelo::LinuxWiring wiring;
  return tavelo::measure(std::atoi(argv[1]), std::atoi(argv[2]),
                         tavelo::platform::Seconds{std::atof(argv[3])});
}
