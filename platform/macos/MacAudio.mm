#import "platform/macos/MacAudio.h"

#import <AVFoundation/AVFoundation.h>

#import "platform/macos/MacAudioEngine.h"

namespace tavelo::macos {

platform::CaptureAuthorizationStatus MacAudio::captureAuthorizationStatus() {
  return static_cast<platform::CaptureAuthorizationStatus>(
      [AVCaptureDevice authorizationStatusForMediaType:AVMediaTypeAudio]);
}

void MacAudio::requestCaptureAccess(std::function<void(bool granted)> completion) {
  [AVCaptureDevice requestAccessForMediaType:AVMediaTypeAudio
                           completionHandler:^(BOOL granted) {
                             completion(granted);
                           }];
}

std::unique_ptr<platform::AudioEngine> MacAudio::makeEngine() {
  return std::make_unique<MacAudioEngine>(mainQueue_, lifetime_.guard([this] {
    if (onInterrupted) onInterrupted();
  }));
}

}  // namespace tavelo::macos
