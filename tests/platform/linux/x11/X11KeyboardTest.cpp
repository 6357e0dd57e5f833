// Runs the keyboard contract against a real X server. The server must have the layouts us and ru.

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QRasterWindow>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/keyboard/X11KeyboardEvents.h"
#include "platform/posix/SystemClock.h"
#include "tests/contract/KeyboardContract.h"

// After Qt: Xlib defines macros that clash with Qt's names.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace tavelo::contract {
namespace {

constexpr unsigned rightControl = 105;
constexpr unsigned v = 55;
constexpr unsigned escape = 9;
constexpr unsigned insert = 118;

/// Another client of the server: it types as a user would, and has a window that counts pastes.
class OtherApplication final {
 public:
  explicit OtherApplication(std::string name) : name_(std::move(name)) {
    window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 200, 100, 0, 0, 0);
    XClassHint names{.res_name = name_.data(), .res_class = name_.data()};
    XSetClassHint(display_, window_, &names);
    XSelectInput(display_, window_, KeyPressMask);
    XMapRaised(display_, window_);
    XSync(display_, False);
  }
  ~OtherApplication() { XCloseDisplay(display_); }

  void move(unsigned key, bool down) {
    XTestFakeKeyEvent(display_, key, down ? True : False, CurrentTime);
    XSync(display_, False);
  }

  void lockGroup(unsigned group) {
    XkbLockGroup(display_, XkbUseCoreKbd, group);
    XSync(display_, False);
  }
  unsigned group() {
    XkbStateRec state{};
    XkbGetState(display_, XkbUseCoreKbd, &state);
    return state.group;
  }

  bool hasFocus() {
    Window focus = None;
    int revert = 0;
    XGetInputFocus(display_, &focus, &revert);
    return focus == window_;
  }

  int pastes() {
    readKeys();
    return pastes_;
  }
  int shiftInserts() {
    readKeys();
    return shiftInserts_;
  }
  int keys() {
    readKeys();
    return keys_;
  }

 private:
  void readKeys() {
    XSync(display_, False);
    XEvent event;
    while (XCheckWindowEvent(display_, window_, KeyPressMask, &event) == True) {
      const auto modifiers = event.xkey.state & (ShiftMask | ControlMask | Mod1Mask | Mod4Mask);
      ++keys_;
      if (event.xkey.keycode == v && modifiers == ControlMask && XkbGroupForCoreState(event.xkey.state) == 0)
        ++pastes_;
      if (event.xkey.keycode == insert && modifiers == ShiftMask) ++shiftInserts_;
    }
  }

  Display* const display_ = XOpenDisplay(nullptr);
  std::string name_;
  Window window_ = None;
  int keys_ = 0;
  int pastes_ = 0;
  int shiftInserts_ = 0;
};

class X11Keys final : public KeyboardBackend {
 public:
  explicit X11Keys(std::string otherName = "other") : other_(std::move(otherName)) {
    tap_ = keyboard_.createEventTap(
        platform::EventTapLocation::session, platform::EventTapPlacement::headInsert,
        platform::EventTapOptions::listenOnly, platform::maskOf(platform::KeyEventType::flagsChanged),
        [this](const auto&) { ++moves_; });
    source_ = keyboard_.addRunLoopSource(*tap_);
    await([this] { return other_.hasFocus(); });
  }

  platform::KeyboardEvents& keyboard() override { return keyboard_; }
  platform::Clock& clock() override { return clock_; }
  void moveFunctionKey(bool down) override { moveKey(rightControl, down); }
  /// Of a modifier or of the hold key.
  void moveKey(unsigned key, bool down) {
    const int before = moves_;
    other_.move(key, down);
    await([&] { return moves_ > before; });
  }
  void interruptHold() override {
    const int before = moves_;
    other_.move(escape, true);
    other_.move(escape, false);
    await([&] { return moves_ > before; });
  }
  void setOwnWindowActive(bool active) override {
    own_.setVisible(active);
    if (active) own_.requestActivate();
    await(
        [&] { return (QGuiApplication::focusWindow() != nullptr) == active && other_.hasFocus() != active; });
  }
  platform::ProcessIdentifier otherProcess() override { return 1; }
  int pastes() override { return other_.pastes(); }
  OtherApplication& other() { return other_; }
  linuxdesktop::X11KeyboardEvents& x11() { return keyboard_; }

  void paste() {
    auto event =
        keyboard_.createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, true);
    ASSERT_TRUE(event);
    event->flags = platform::keyflags::command;
    keyboard_.post(platform::EventTapLocation::hid, *event);
  }

  static void await(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(5000);
    while (!condition() && !deadline.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_TRUE(condition());
  }

 private:
  posix::SystemClock clock_;
  linuxdesktop::X11Windows windows_;
  linuxdesktop::X11KeyboardEvents keyboard_{windows_};
  OtherApplication other_;
  QRasterWindow own_;
  int moves_ = 0;
  std::unique_ptr<platform::EventTap> tap_;
  std::unique_ptr<platform::RunLoopSource> source_;
};

INSTANTIATE_TEST_SUITE_P(X11, KeyboardContract,
                         testing::Values(BackendParameter<KeyboardBackend>{
                             "X11", [] { return std::make_unique<X11Keys>(); }}),
                         nameOfParameter<KeyboardBackend>);

TEST(KeyboardMapTest, HoldKeyHasItsNameForVietnameseUsers) {
  Display* const display = XOpenDisplay(nullptr);
  ASSERT_NE(display, nullptr);
  const std::pair<const char*, const char*> cases[] = {{"", "Ctrl phải"},     {"Control_R", "Ctrl phải"},
                                                       {"RCTL", "Ctrl phải"}, {"Alt_L", "Alt trái"},
                                                       {"CAPS", "Caps Lock"}, {"F8", "F8"},
                                                       {"FK08", "FK08"},      {"Nothing", "Ctrl phải"}};
  for (const auto& [asked, name] : cases) {
    const auto map = linuxdesktop::readKeyboardMap(display, asked);
    ASSERT_TRUE(map);
    EXPECT_EQ(map->holdKey.vietnameseName, name) << asked;
  }
  XCloseDisplay(display);
}

TEST(X11KeyboardTest, ChordComesInTheLayoutWithLatinLettersAndTheUsersStaysActive) {
  X11Keys keys;
  keys.other().lockGroup(1);
  keys.paste();
  EXPECT_EQ(keys.pastes(), 1);
  EXPECT_EQ(keys.other().group(), 1U);
  keys.other().lockGroup(0);
}

TEST(X11KeyboardTest, WindowClassDecidesWhichKeysPasteAndWhetherAnyDo) {
  {
    X11Keys emacs("Emacs");
    emacs.paste();
    EXPECT_EQ(emacs.other().shiftInserts(), 1);
    EXPECT_EQ(emacs.pastes(), 0);
  }
  X11Keys gvim("Gvim");
  int told = 0;
  gvim.x11().onNoPasteKeys = [&] { ++told; };
  gvim.paste();
  EXPECT_EQ(gvim.other().keys(), 0);
  EXPECT_EQ(told, 1);
}

TEST(X11KeyboardTest, AnotherHoldKeyWaitsForTheEndOfTheHoldAndBeginsNone) {
  constexpr unsigned pause = 127;
  X11Keys keys;
  int changes = 0;
  keys.x11().onHoldKeyChanged = [&] { ++changes; };
  const auto isHeld = [&] {
    return (keys.keyboard()
                .createKeyboardEvent(platform::EventSourceState::hidSystem, platform::keycodes::v, true)
                ->flags &
            platform::keyflags::secondaryFn) != 0;
  };
  keys.moveFunctionKey(true);
  keys.other().move(pause, true);
  keys.x11().setHoldKey("Pause");
  EXPECT_TRUE(isHeld()) << "the hold ends before the key goes up";
  keys.moveFunctionKey(false);
  EXPECT_EQ(changes, 0);
  EXPECT_FALSE(isHeld()) << "a key that was down before begins a hold";
  keys.other().move(pause, false);
  X11Keys::await([&] { return changes == 1; });
  EXPECT_EQ(keys.x11().holdKey().vietnameseName, "Pause");
  keys.moveKey(pause, true);
  EXPECT_TRUE(isHeld());
  keys.moveKey(pause, false);
  keys.x11().setHoldKey("Nothing");
  EXPECT_FALSE(keys.x11().holdKey().isKnown);
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace tavelo::contract

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
