#include "speech/PermissionService.h"

#include <utility>

#include "platform/Platform.h"

namespace tavelo {

using platform::CaptureAuthorizationStatus;
using platform::SpeechAuthorizationStatus;

PermissionService::PermissionService()
    : accessibility_(platform::current().accessibility),
      audio_(platform::current().audio),
      speech_(platform::current().speech) {}

bool PermissionService::isAccessibilityTrusted() const { return accessibility_.isProcessTrusted(); }

void PermissionService::requestAccessibilityIfNeeded() {
  if (!isAccessibilityTrusted()) accessibility_.isProcessTrustedWithOptions({.prompt = true});
}

void PermissionService::requestSpeechAndMicrophone(std::function<void(bool granted)> completion) {
  // The microphone's answer may come on another thread and after this service is gone, so capture only the
  // interface.
  requestMicrophone([&speech = speech_, completion = std::move(completion)](bool microphoneGranted) {
    if (!microphoneGranted) return completion(false);
    speech.requestAuthorization([completion](SpeechAuthorizationStatus status) {
      completion(status == SpeechAuthorizationStatus::authorized);
    });
  });
}

void PermissionService::requestMicrophone(std::function<void(bool granted)> completion) {
  switch (audio_.captureAuthorizationStatus()) {
    case CaptureAuthorizationStatus::notDetermined:
      return audio_.requestCaptureAccess(std::move(completion));
    case CaptureAuthorizationStatus::authorized:
      return completion(true);
    default:
      return completion(false);
  }
}

}  // namespace tavelo
