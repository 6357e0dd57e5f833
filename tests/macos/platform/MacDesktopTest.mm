// What joins the parts of the Mac's platform, with every part real and every framework a fake.
#include <optional>
#include <thread>

#include <gmock/gmock.h>

#include "platform/Accessibility.h"
#include "platform/Audio.h"
#include "platform/Clock.h"
#include "platform/KeyboardEvents.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/Speech.h"
#include "platform/macos/MacDesktop.h"
#import "tests/macos/fakes/Keyboard.h"
#include "tests/macos/fakes/Pasteboard.h"
#include "tests/macos/fakes/SessionFakes.h"
#include "tests/macos/fakes/Sound.h"

namespace tavelo::macos {
namespace {

using platform::current;
using platform::PasteboardFetch;

class MacDesktopTest : public fakes::FakeFrameworks {
 protected:
  MacDesktopTest() {
    fakes::answerWith("sharedWorkspace", [NSWorkspace new]);
    fakes::answerWith("recognitionTaskWithRequest:resultHandler:", [SFSpeechRecognitionTask new]);
    fakes::answerWith("outputFormatForBus:", [[AVAudioFormat alloc] initStandardFormatWithSampleRate:48000
                                                                                            channels:1]);
    fakes::answerWith("startAndReturnError:", YES);
    desktop_.emplace();
  }
  void copy(const std::string& text) {
    fakes::copyElsewhere(general_, {{platform::pasteboardTypeString, text}});
  }
  std::string paste() { return fakes::pasteElsewhere(general_); }
  /// As an insertion does; its restore is still to come.
  static void swap(const std::string& text) {
    EXPECT_TRUE(current().generalPasteboard.pasteboardItems().has_value());
    current().generalPasteboard.clearContents();
    EXPECT_TRUE(current().generalPasteboard.setString(text, platform::pasteboardTypeString));
  }

  fakes::Keyboard keyboard_;
  NSPasteboard* const general_ = fakes::servePasteboard();
  std::optional<MacDesktop> desktop_;
};

TEST_F(MacDesktopTest, PasteCommandFindsTheDictatedTextWhateverWasCopiedSinceTheSwap) {
  using namespace platform;
  std::string pasted;
  const auto target = current().keyboardEvents.createEventTap(
      EventTapLocation::session, EventTapPlacement::headInsert, EventTapOptions::listenOnly,
      maskOf(KeyEventType::keyDown), [&](const KeyboardEvent&) { pasted = paste(); });
  const auto source = current().keyboardEvents.addRunLoopSource(*target);
  const auto postCommandV = [] {
    for (const auto type : {KeyEventType::keyDown, KeyEventType::keyUp})
      current().keyboardEvents.post(EventTapLocation::hid,
                                    {.type = type, .keyCode = keycodes::v, .flags = keyflags::command});
  };
  copy("của tôi");
  swap("một");
  copy("mới");
  postCommandV();
  EXPECT_EQ(pasted, "một");
  EXPECT_EQ(current().generalPasteboard.fetchSincePaste(), PasteboardFetch::yes);
  swap("hai");
  EXPECT_EQ(paste(), "hai") << "a clipboard manager";
  postCommandV();
  EXPECT_EQ(current().generalPasteboard.fetchSincePaste(), PasteboardFetch::unknown);
}

TEST_F(MacDesktopTest, EndOfTheProgramGivesTheUsersClipboardBack) {
  copy("của tôi");
  swap("một");
  EXPECT_EQ(paste(), "một");
  fakes::notify("NSApplicationWillTerminateNotification");
  EXPECT_EQ(paste(), "của tôi");
  copy("sau cùng");
  desktop_.reset();
  fakes::notify("NSApplicationWillTerminateNotification");
  EXPECT_EQ(paste(), "sau cùng");
}

TEST_F(MacDesktopTest, DeviceThatGoesAwayFailsTheRunningRecognition) {
  const auto engine = current().audio.makeEngine();
  engine->installTap(0, 1024, engine->inputFormat(0), [](const platform::AudioBuffer&) {});
  EXPECT_EQ(engine->start(), std::nullopt);
  const auto recognizer = current().speech.makeRecognizer("vi_VN");
  std::string failure;
  const auto task = recognizer->recognitionTask(current().speech.makeAudioBufferRecognitionRequest(),
                                                [&](const auto&, const auto& error) {
                                                  if (error) failure = error->localizedDescription;
                                                });
  std::thread([] { fakes::notify("AVAudioEngineConfigurationChangeNotification"); }).join();
  EXPECT_EQ(failure, "") << "not on the thread of the sound";
  const auto in = [](double seconds) {
    return current().clock.uptime() + platform::toUptime(platform::Seconds{seconds});
  };
  for (const auto bound = in(10); failure.empty() && current().clock.uptime() < bound;)
    current().mainQueue.runUntil(in(0.01));
  EXPECT_EQ(failure, "Thiết bị thu âm đã thay đổi.");
}

}  // namespace
}  // namespace tavelo::macos
