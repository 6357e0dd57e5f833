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
  // The microphone's answer may come on a foreign thread, and after this service: it holds the interface
  // alone.
  requestMicrophone([&speech = speech_, completion = std::move(completion)](bool microphoneGranted) {
    if (!microphoneGranted) {
      completion(false);
      return;
    }
    speech.requestAuthorization([completion](SpeechAuthorizationStatus status) {
      completion(status == SpeechAuthorizationStatus::authorized);
    });
  });
}

void PermissionService::requestMicrophone(std::function<void(bool granted)> completion) {
  switch (audio_.captureAuthorizationStatus()) {
    case CaptureAuthorizationStatus::notDetermined:
      audio_.requestCaptureAccess(std::move(completion));
      break;
    case CaptureAuthorizationStatus::authorized:
      completion(true);
      break;
    default:
      completion(false);
      break;
  }
}

}  // namespace tavelo
