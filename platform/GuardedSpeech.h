#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/KeyboardEvents.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/SecretGuard.h"
#include "platform/Speech.h"
#include "platform/Time.h"
#include "platform/UserNotifications.h"

namespace tavelo::platform {

/// Speech recognition that stays away from secrets: password fields and locked sessions. While the guard
/// reports one, a request for authorisation is never answered, so no dictation begins. A running dictation
/// ends with an empty transcript and an error, so that none of its text is kept.
///
/// A notification says why, except while the hold key is down: in a password field it is a modifier like any
/// other. Main thread, unless `Speech` says otherwise.
class GuardedSpeech final : public Speech {
 public:
  /// How often a running dictation asks the guard.
  static constexpr Seconds interval{0.5};

  /// All references must outlive this object and its tasks.
  GuardedSpeech(Speech& speech, SecretGuard& guard, MainQueue& mainQueue, KeyboardEvents& keyboard,
                UserNotifications& notifications)
      : speech_(speech), watch_{guard, mainQueue, keyboard, notifications} {}

  std::shared_ptr<SpeechRecognizer> makeRecognizer(const std::string& localeIdentifier) override;
  std::shared_ptr<SpeechAudioBufferRecognitionRequest> makeAudioBufferRecognitionRequest() override;
  void requestAuthorization(std::function<void(SpeechAuthorizationStatus)> handler) override;

 private:
  /// The parts that a running dictation uses.
  struct Watch {
    SecretGuard& guard;
    MainQueue& mainQueue;
    KeyboardEvents& keyboard;
    UserNotifications& notifications;

    void explain(Secret secret) const;
  };
  class Recognizer;
  class Task;

  Speech& speech_;
  const Watch watch_;
  Lifetime lifetime_;
};

}  // namespace tavelo::platform
