#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/AppDelegate.h"
#include "app/AppDelegateDefinition.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/app/RecordingDoubles.h"

namespace tavelo {
namespace {

using doubles::taken;
using platform::Seconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Element final : platform::AXUIElement {};

class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    delegate->applicationDidFinishLaunching([] { doubles::record("terminate"); });
    taken();
  }
  ~AppDelegateTest() override { taken(); }

  void press(HotKeyAction action) {
    delegate->hotKeyService().onAction(action);
    run();
  }
  void run(double seconds = 0) { desktop.loop().advance(Seconds{seconds}); }

  /// A whole dictation, ended by releasing the key.
  void dictate(const std::string& transcript) {
    press(HotKeyAction::startHold);
    delegate->speechController().transcript = transcript;
    press(HotKeyAction::stopHold);
  }

  doubles::Speech& speech() { return delegate->speechController(); }
  doubles::Permissions& permissions() { return delegate->permissionService(); }
  doubles::StatusMenu& menu() { return delegate->statusController(); }

  simulated::SimulatedDesktop desktop;
  std::shared_ptr<AppDelegate<doubles::Services>> delegate =
      std::make_shared<AppDelegate<doubles::Services>>();
};

TEST(AppDelegateLaunchTest, MakesTheServicesInOrderThenShowsTheMenuAndStartsTheHotKeyAndAsksForNothing) {
  simulated::SimulatedDesktop desktop;
  const auto delegate = std::make_shared<AppDelegate<doubles::Services>>();
  EXPECT_THAT(taken(), ElementsAre("speech.made", "insertion.made", "permissions.made", "hotkey.made",
                                   "review.made", "overlay.made", "cache.made", "focus.made"));
  delegate->applicationDidFinishLaunching([] { doubles::record("terminate"); });
  EXPECT_THAT(taken(), ElementsAre("menu.made", "hotkey.start", "menu.untrusted"));
  EXPECT_FALSE(delegate->hotKeyService().onTrigger);
  delegate->statusController().onQuit();
  EXPECT_THAT(taken(), ElementsAre("terminate"));
}

TEST_F(AppDelegateTest, HotKeyTakesOneHopAndTheTargetIsCapturedBeforeAnyQuestion) {
  delegate->hotKeyService().onAction(HotKeyAction::startHold);
  EXPECT_THAT(taken(), IsEmpty());
  run();
  EXPECT_THAT(taken(), ElementsAre("focus.capture", "permissions.ask", "speech.start vi_VN", "menu.listening",
                                   "overlay.recording"));
  press(HotKeyAction::startHold);
  EXPECT_THAT(taken(), IsEmpty()) << "a second press while listening does nothing";
}

TEST_F(AppDelegateTest, DirectInsertionStoresThenHidesTheOverlayThenInsertsAndSaysSoLater) {
  press(HotKeyAction::startHold);
  taken();
  speech().onPartialTranscript("xin");
  EXPECT_THAT(taken(), IsEmpty());
  run();
  EXPECT_THAT(taken(), ElementsAre("overlay.transcribing xin"));
  speech().transcript = "xin chào dấu chấm";
  delegate->stopDictationIfNeeded();
  EXPECT_THAT(taken(), ElementsAre("speech.stop", "menu.idle"));
  run();
  EXPECT_THAT(taken(), ElementsAre("overlay.transcribing xin chào dấu chấm",
                                   "cache.add xin chào dấu chấm | Xin chào. | vi_VN", "overlay.hide",
                                   "insert Xin chào."));
  run(1.499);
  EXPECT_THAT(taken(), IsEmpty());
  run(0.001);
  EXPECT_THAT(taken(), ElementsAre("overlay.inserted"));
}

TEST_F(AppDelegateTest, InsertedNoticeIsSkippedWhileTheNextDictationListens) {
  dictate("một");
  run(1.0);
  press(HotKeyAction::startHold);
  taken();
  run(1.0);
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(AppDelegateTest, NothingToInsertLeavesNoTrace) {
  dictate("xuống dòng");
  EXPECT_THAT(taken(), ElementsAre("focus.capture", "permissions.ask", "speech.start vi_VN", "menu.listening",
                                   "overlay.recording", "speech.stop", "menu.idle",
                                   "overlay.transcribing xuống dòng", "overlay.hide"));
  menu().onInsertLastText();
  EXPECT_THAT(taken(), ElementsAre("alert Chưa có văn bản nào được tạo trong phiên này."));
}

TEST_F(AppDelegateTest, DictationThatEndsWithoutTranscriptHidesTheOverlay) {
  dictate("một");
  press(HotKeyAction::startHold);
  taken();
  speech().change(DictationState::idle);
  EXPECT_THAT(taken(), ElementsAre("menu.idle"));
  run();
  EXPECT_THAT(taken(), ElementsAre("overlay.hide"));

  press(HotKeyAction::startHold);
  speech().change(DictationState::idle);
  delegate->startDictationIfNeeded();
  taken();
  run();
  EXPECT_THAT(taken(), testing::Not(testing::Contains("overlay.hide")))
      << "a new dictation is already listening";
}

TEST_F(AppDelegateTest, RefusalAndSpeechErrorsAreShownAfterOneHop) {
  permissions().answer = false;
  const auto where = std::make_shared<Element>();
  delegate->focusCaptureService().next = where;
  press(HotKeyAction::startHold);
  EXPECT_THAT(taken(), ElementsAre("focus.capture", "permissions.ask",
                                   "alert Cần quyền Microphone và Speech Recognition để nhận giọng nói."));
  press(HotKeyAction::stopHold);
  speech().onError("Không mở được microphone: hỏng");
  EXPECT_THAT(taken(), IsEmpty());
  run();
  EXPECT_THAT(taken(), ElementsAre("overlay.hide", "alert Không mở được microphone: hỏng"));
  delegate->handleTranscript("một");
  EXPECT_THAT(delegate->insertionService().into, ElementsAre(where)) << "a refusal keeps the target";
}

TEST_F(AppDelegateTest, TwoStartsBeforeTheAnswerBothGoThroughAndTheLaterTargetWins) {
  permissions().answer = std::nullopt;
  const auto first = std::make_shared<Element>();
  const auto second = std::make_shared<Element>();
  delegate->focusCaptureService().next = first;
  press(HotKeyAction::startHold);
  delegate->focusCaptureService().next = second;
  press(HotKeyAction::toggle);
  taken();
  for (const auto& completion : permissions().waiting) std::thread(completion, true).join();
  EXPECT_THAT(taken(), IsEmpty()) << "an answer on a foreign thread waits for the main queue";
  run();
  EXPECT_THAT(taken(),
              ElementsAre("speech.start vi_VN", "menu.listening", "overlay.recording", "speech.start vi_VN"));
  speech().transcript = "hai";
  press(HotKeyAction::stopHold);
  EXPECT_THAT(delegate->insertionService().into, ElementsAre(second));
}

TEST_F(AppDelegateTest, StopVoidsEveryStartThatStillWaitsButNotLaterOnes) {
  permissions().answer = std::nullopt;
  press(HotKeyAction::startHold);
  press(HotKeyAction::stopHold);
  press(HotKeyAction::startHold);
  taken();
  permissions().waiting[0](true);
  run();
  EXPECT_THAT(taken(), IsEmpty());
  permissions().waiting[0](false);
  run();
  EXPECT_THAT(taken(), ElementsAre(HasSubstr("alert Cần quyền"))) << "a refusal is told all the same";
  permissions().waiting[1](true);
  run();
  EXPECT_THAT(taken(), ElementsAre("speech.start vi_VN", "menu.listening", "overlay.recording"));
}

TEST_F(AppDelegateTest, CancelDropsTheDictationAndHidesTheOverlayEvenBehindALateResult) {
  press(HotKeyAction::startHold);
  taken();
  speech().transcript = "tiếng ồn";
  delegate->hotKeyService().onAction(HotKeyAction::cancelHold);
  // Its hop is behind that of the cancel.
  speech().onPartialTranscript("tiếng ồn");
  run(5.0);
  EXPECT_THAT(taken(), ElementsAre("speech.cancel", "menu.idle", "overlay.hide",
                                   "overlay.transcribing tiếng ồn", "overlay.hide"));
  menu().onInsertLastText();
  EXPECT_THAT(taken(), ElementsAre(HasSubstr("alert Chưa có văn bản")));
}

TEST_F(AppDelegateTest, CancelVoidsWaitingStartsAndLeavesTheOverlayOfAnEndedDictation) {
  dictate("một");
  run(1.5);
  permissions().answer = std::nullopt;
  press(HotKeyAction::startHold);
  taken();
  press(HotKeyAction::cancelHold);
  permissions().waiting[0](true);
  run();
  EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(AppDelegateTest, ForgetsTheLastTextAndNothingThatIsUnderWay) {
  dictate("một");
  menu().onInsertLastText();
  press(HotKeyAction::startHold);
  delegate->forgetDictations(1);
  run(3.0);
  dictate("hai");
  EXPECT_THAT(taken(), testing::IsSupersetOf({"insert ", "cache.add hai | Hai | vi_VN", "insert Hai"}));
}

TEST_F(AppDelegateTest, ReviewInsertsTheEditedTextIntoTheTargetOfThatMoment) {
  menu().onToggleInsertMode();
  EXPECT_THAT(taken(), ElementsAre("menu.review"));
  dictate("một hai");
  EXPECT_THAT(taken(), testing::Contains("review.show Một hai"));
  menu().onToggleInsertMode();
  const auto later = std::make_shared<Element>();
  delegate->focusCaptureService().next = later;
  press(HotKeyAction::startHold);
  taken();
  delegate->reviewWindow().onInsert("sửa rồi");
  EXPECT_THAT(taken(), ElementsAre("insert sửa rồi", "overlay.inserted"));
  EXPECT_THAT(delegate->insertionService().into, ElementsAre(later));
  delegate->focusCaptureService().next = nullptr;
  menu().onInsertLastText();
  run(3.0);
  EXPECT_THAT(taken(), testing::Contains("insert Một hai")) << "the finished text, not the edited one";

  delegate->reviewWindow().onDismiss();
  EXPECT_THAT(taken(), IsEmpty()) << "the overlay belongs to the dictation that listens";
  press(HotKeyAction::stopHold);
  EXPECT_EQ(delegate->insertionService().into.back(), later) << "the delayed command has kept its own";
  taken();
  delegate->reviewWindow().onDismiss();
  EXPECT_THAT(taken(), ElementsAre("overlay.hide"));
}

TEST_F(AppDelegateTest, PermissionsCommandAsksAndRestartsTheHotKeyASecondLater) {
  menu().onShowPermissions();
  EXPECT_THAT(taken(), ElementsAre("permissions.accessibility", "permissions.ask"));
  permissions().trusted = true;
  run(0.999);
  EXPECT_THAT(taken(), IsEmpty());
  run(0.001);
  EXPECT_THAT(taken(), ElementsAre("hotkey.start", "menu.trusted"));
}

TEST_F(AppDelegateTest, DelayedInsertionsTakeFocusAndTextOfTheirMoment) {
  menu().onTestInsert();
  EXPECT_THAT(taken(), ElementsAre("overlay.transcribing Click vào ô nhập trong 3 giây..."));
  run(3.0);
  EXPECT_THAT(taken(), ElementsAre("overlay.hide", "focus.capture", "insert Tavelo test insert"));

  dictate("một");
  menu().onInsertLastText();
  run(1.0);
  dictate("hai");
  dictate(" ");
  taken();
  run(2.0);
  EXPECT_THAT(taken(), ElementsAre("overlay.inserted", "overlay.inserted", "overlay.hide", "focus.capture",
                                   "insert Hai"));
}

TEST_F(AppDelegateTest, NothingHappensOnceTheCoordinatorIsGone) {
  permissions().answer = std::nullopt;
  press(HotKeyAction::startHold);
  const auto completion = permissions().waiting[0];
  const auto onAction = delegate->hotKeyService().onAction;
  const auto onTranscript = speech().onTranscriptReady;
  menu().onTestInsert();
  onAction(HotKeyAction::toggle);
  delegate.reset();
  taken();
  completion(true);
  onTranscript("một");
  run(5.0);
  EXPECT_THAT(taken(), IsEmpty());
}

}  // namespace
}  // namespace tavelo
