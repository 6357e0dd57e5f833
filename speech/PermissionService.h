#pragma once

#include <functional>

#include "platform/Accessibility.h"
#include "platform/Audio.h"
#include "platform/Speech.h"

namespace tavelo {

/// The three permissions a dictation needs: microphone, speech recognition, accessibility. Caches nothing:
/// every call asks the platform, which shows its own prompts. Main thread only.
class PermissionService final {
 public:
  PermissionService();

  /// Whether the process is trusted for accessibility now. Shows no prompt.
  bool isAccessibilityTrusted() const;

  /// Makes the platform show its accessibility prompt if the process is not trusted. Returns at once.
  void requestAccessibilityIfNeeded();

  /// Asks for the microphone and, if that is granted, for speech recognition. Calls `completion` once, with
  /// true if both were granted: on any thread, possibly inside this call. Never calls it if the user does not
  /// answer.
  void requestSpeechAndMicrophone(std::function<void(bool granted)> completion);

 private:
  void requestMicrophone(std::function<void(bool granted)> completion);

  platform::Accessibility& accessibility_;
  platform::Audio& audio_;
  platform::Speech& speech_;
};

}  // namespace tavelo
