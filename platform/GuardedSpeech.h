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

/// Speech recognition that refuses secrets. While there is one, the question for the permission is never
/// answered, so no dictation begins. A dictation that is running when one comes ends with an empty transcript
/// and an error: no text of it is left.
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
  /// What a running dictation needs of all this.
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
