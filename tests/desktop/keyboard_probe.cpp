// Watches and posts keys as the program does, for the tests on a virtual desktop. Each line on standard input
// is a command; "done COMMAND" says that it has ended. Each event and each answer is a line on standard
// output. Ends when the input ends.

#include <QApplication>
#include <QLineEdit>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

#include <unistd.h>

#include "platform/Environment.h"
#include "platform/linux/session/LinuxWorkspace.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/desktop/CommandReader.h"

namespace tavelo {
namespace {

using platform::EventTapLocation;
using platform::KeyboardEvent;
using platform::KeyEventType;

class Probe final {
 public:
  Probe() {
    constexpr auto mask =
        maskOf(KeyEventType::flagsChanged) | maskOf(KeyEventType::keyDown) | maskOf(KeyEventType::keyUp);
    tap_ = keyboard_.createEventTap(EventTapLocation::session, platform::EventTapPlacement::headInsert,
                                    platform::EventTapOptions::listenOnly, mask,
                                    [](const KeyboardEvent& event) { tell("tap", event); });
    if (tap_) source_ = keyboard_.addRunLoopSource(*tap_);
    monitor_ = keyboard_.addGlobalMonitor(mask, [](const KeyboardEvent& event) { tell("monitor", event); });
    const auto& key = keyboard_.holdKey();
    std::printf("%s, Fn is %s%s%s\n", tap_ && source_ && monitor_ ? "watching" : "refused", key.name.c_str(),
                key.isKnown ? "" : ", asked for unknown ", key.isKnown ? "" : key.asked.c_str());
    std::printf("keys:");
    for (const auto each : key.keys) std::printf(" %d", each);
    std::printf("\n");
    std::fflush(stdout);
  }

 private:
  /// Prints when the key moved, and how long ago that is, both in milliseconds.
  static void tell(const char* watcher, const KeyboardEvent& event) {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    const Milliseconds moved = event.timestamp;
    const Milliseconds late = std::chrono::steady_clock::now().time_since_epoch() - event.timestamp;
    const char* type = event.type == KeyEventType::flagsChanged      ? "flags"
                       : event.type == KeyEventType::keyDown         ? "down"
                       : event.type == KeyEventType::holdInterrupted ? "interrupted"
                                                                     : "up";
    std::printf("%s %s %lld %llx at %.0f late %.3f\n", watcher, type, static_cast<long long>(event.keyCode),
                static_cast<unsigned long long>(event.flags), moved.count(), late.count());
    std::fflush(stdout);
  }

  void perform(const std::string& command) {
    if (command == "paste") return paste();
    if (command == "frontmost") return tellFrontmost();
    if (command == "keep") application_ = workspace_.frontmostApplication();
    if (command == "activate")
      std::printf("activate %d\n", application_ && application_->activate({}) ? 1 : 0);
    if (command == "ended") std::printf("ended %d\n", !application_ || application_->isTerminated() ? 1 : 0);
    if (command == "show") window_.show();
    if (command == "hide") window_.hide();
    // Keeps the main thread busy; keys that move meanwhile have to wait.
    if (command == "busy") std::this_thread::sleep_for(std::chrono::milliseconds(600));
  }

  /// Posts Command-V on all three routes, as the insertion service does.
  void paste() {
    const auto application = workspace_.frontmostApplication();
    const auto down = event(true);
    const auto up = event(false);
    if (!down || !up) return;
    if (application) {
      keyboard_.postToProcess(application->processIdentifier(), *down);
      keyboard_.postToProcess(application->processIdentifier(), *up);
    }
    for (const auto location : {EventTapLocation::hid, EventTapLocation::session}) {
      keyboard_.post(location, *down);
      keyboard_.post(location, *up);
    }
  }

  std::optional<KeyboardEvent> event(bool down) {
    auto result =
        keyboard_.createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, down);
    if (result) result->flags = platform::keyflags::command;
    return result;
  }

  void tellFrontmost() {
    const auto application = workspace_.frontmostApplication();
    if (!application) {
      std::printf("frontmost none\n");
    } else {
      std::printf("frontmost %s, %s, %s\n", application->localizedName().value_or("-").c_str(),
                  application->bundleIdentifier().value_or("-").c_str(),
                  application->processIdentifier() == ::getpid() ? "own" : "other");
    }
  }

  const posix::SystemClock clock_;
  qt::QtMainQueue queue_{clock_};
  linuxdesktop::X11Desktop desktop_{platform::environmentVariable("TAVELO_FN_KEY")};
  linuxdesktop::LinuxWorkspace workspace_{desktop_};
  linuxdesktop::X11KeyboardEvents& keyboard_ = desktop_.keyboardEvents();
  std::unique_ptr<platform::EventTap> tap_;
  std::unique_ptr<platform::RunLoopSource> source_;
  std::unique_ptr<platform::EventMonitor> monitor_;
  std::shared_ptr<platform::RunningApplication> application_;
  QLineEdit window_;
  const CommandReader reader_{queue_, [this](const auto& command, const auto&) {
                                perform(command);
                                std::printf("done %s\n", command.c_str());
                                std::fflush(stdout);
                              }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const tavelo::Probe probe;
  return QApplication::exec();
}
