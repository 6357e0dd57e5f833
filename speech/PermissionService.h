#pragma once

#include <functional>

#include "platform/Accessibility.h"
#include "platform/Audio.h"
#include "platform/Speech.h"

namespace tavelo {

/// The three permissions a dictation needs: microphone, speech recognition, accessibility. Keeps nothing;
/// every answer is the platform's at the moment of the call, and every prompt is the platform's own. Main
/// thread only.
class PermissionService final {
 public:
  PermissionService();

  /// Whether the process is trusted for accessibility now. Shows nothing.
  bool isAccessibilityTrusted() const;

  /// Makes the platform show its accessibility prompt, when the process is not trusted; returns at once.
  void requestAccessibilityIfNeeded();

  /// Asks for the microphone and, when that is granted, for speech recognition. `completion` gets true when
  /// both are granted; once, on any thread, possibly inside this call, and never when the user does not
  /// answer.
  void requestSpeechAndMicrophone(std::function<void(bool granted)> completion);

 private:
  void requestMicrophone(std::function<void(bool granted)> completion);

  platform::Accessibility& accessibility_;
  platform::Audio& audio_;
  platform::Speech& speech_;
};

}  // namespace tavelo
