/// Measures a running Tavelo from outside, on a real X11 desktop: from the key's press to the overlay, and
/// from its release to the text in the focused field. Usage: tavelo_latency PROCESS ROUNDS SPEECH-SECONDS
///
/// The field with the focus must be readable through accessibility, and something must be audible: the
/// recogniser is expected to have heard words after SPEECH-SECONDS. Prints each round and the medians,
/// in milliseconds; the status is 1 when a round saw nothing.
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>

#include "app/LinuxWiring.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "platform/linux/x11/X11Windows.h"

namespace tavelo {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

/// How long a press or a release may take to show before the round counts as failed.
constexpr platform::Seconds patience{5};
/// Until the notice has gone and the program is idle again.
constexpr platform::Seconds rest{3};

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};

class Bench {
 public:
  explicit Bench(platform::ProcessIdentifier program) : program_(program), display_(XOpenDisplay(nullptr)) {
    if (!display_) throw std::runtime_error("no display");
    XSelectInput(display_.get(), DefaultRootWindow(display_.get()), SubstructureNotifyMask);
    key_ = XKeysymToKeycode(display_.get(), XK_Control_R);
    XSync(display_.get(), False);
  }

  /// Moves the hold key; returns when the server has it.
  platform::Uptime move(bool down) {
    const auto at = platform_.clock.uptime();
    XTestFakeKeyEvent(display_.get(), key_, down ? True : False, CurrentTime);
    XSync(display_.get(), False);
    return at;
  }

  /// When the program showed a window; absent when it did not.
  std::optional<platform::Uptime> awaitWindow() {
    const auto deadline = platform_.clock.uptime() + platform::toUptime(patience);
    while (platform_.clock.uptime() < deadline) {
      while (XPending(display_.get()) > 0) {
        XEvent event;
        XNextEvent(display_.get(), &event);
        if (event.type == MapNotify &&
            windows_.process(static_cast<linuxdesktop::WindowIdentifier>(event.xmap.window)) == program_) {
          return platform_.clock.uptime();
        }
      }
      pollfd waiting{.fd = ConnectionNumber(display_.get()), .events = POLLIN, .revents = 0};
      poll(&waiting, 1, 20);
    }
    return std::nullopt;
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
    // Each look is a turn of its own, as the time bounds of accessibility are for a turn.
    platform_.mainQueue.runUntil(platform_.clock.uptime() + std::chrono::microseconds(200));
    platform::AXValue value;
    if (platform_.accessibility.copyAttributeValue(field_, platform::ax::value, value) !=
        platform::AXError::success) {
      return std::nullopt;
    }
    return std::get<std::string>(value);
  }

  std::optional<platform::Uptime> awaitOtherText(const std::string& before) {
    const auto deadline = platform_.clock.uptime() + platform::toUptime(patience);
    while (platform_.clock.uptime() < deadline) {
      const auto now = text();
      if (now && *now != before) return platform_.clock.uptime();
    }
    return std::nullopt;
  }

  void pause(platform::Seconds interval) {
    platform_.mainQueue.runUntil(platform_.clock.uptime() + platform::toUptime(interval));
    while (XPending(display_.get()) > 0) {
      XEvent event;
      XNextEvent(display_.get(), &event);
    }
  }

 private:
  const platform::Platform& platform_ = platform::current();
  platform::ProcessIdentifier program_;
  std::unique_ptr<Display, CloseDisplay> display_;
  linuxdesktop::X11Windows windows_;
  KeyCode key_ = 0;
  platform::AXUIElementRef field_;
};

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values.empty() ? 0 : values[values.size() / 2];
}

int measure(platform::ProcessIdentifier program, int rounds, platform::Seconds speech) {
  Bench bench(program);
  std::vector<double> toListening;
  std::vector<double> toText;
  bench.pause(platform::Seconds{0.5});
  for (int round = 1; round <= rounds; ++round) {
    const auto before = bench.text();
    const auto pressed = bench.move(true);
    const auto listening = bench.awaitWindow();
    bench.pause(speech);
    const auto released = bench.move(false);
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
