#import "platform/macos/MacRecognitionRequest.h"

#import "platform/macos/SoundBuffer.h"

namespace tavelo::macos {

void MacRecognitionRequest::append(const platform::AudioBuffer& buffer) {
  if (AVAudioPCMBuffer* sound = toSystem(buffer)) [request_ appendAudioPCMBuffer:sound];
}

}  // namespace tavelo::macos
