#pragma once

#import <Speech/Speech.h>

#include "platform/Speech.h"

namespace tavelo::macos {

/// A request to the system's recogniser. Sets nothing but what it is told to. Any thread, but for
/// `setShouldReportPartialResults`.
class MacRecognitionRequest final : public platform::SpeechAudioBufferRecognitionRequest {
 public:
  void setShouldReportPartialResults(bool wanted) override { request_.shouldReportPartialResults = wanted; }
  void append(const platform::AudioBuffer& buffer) override;
  void endAudio() override { [request_ endAudio]; }

  SFSpeechAudioBufferRecognitionRequest* get() const { return request_; }

 private:
  SFSpeechAudioBufferRecognitionRequest* const request_ =
      [[SFSpeechAudioBufferRecognitionRequest alloc] init];
};

}  // namespace tavelo::macos
