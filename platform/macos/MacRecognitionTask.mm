#import "platform/macos/MacRecognitionTask.h"

#include <utility>

#import "platform/macos/FoundationText.h"

namespace tavelo::macos {

void MacRecognitionTask::begin(SFSpeechRecognizer* recognizer,
                               SFSpeechAudioBufferRecognitionRequest* request) {
  recognizer_ = recognizer;
  // The system delivers on its own main queue, which stands still inside some modal alerts; ours does not.
  const auto self = shared_from_this();
  task_ = [recognizer
      recognitionTaskWithRequest:request
                   resultHandler:^(SFSpeechRecognitionResult* result, NSError* error) {
                     Result heard;
                     if (result != nil) {
                       heard = platform::SpeechRecognitionResult{
                           fromFoundation(result.bestTranscription.formattedString),
                           static_cast<bool>(result.isFinal)};
                     }
                     Error failure;
                     if (error != nil) {
                       failure = platform::PlatformError{fromFoundation(error.localizedDescription)};
                     }
                     self->mainQueue_.async([self, heard, failure] { self->deliver(heard, failure); });
                   }];
}

void MacRecognitionTask::cancel() {
  [task_ cancel];
  task_ = nil;
}

void MacRecognitionTask::fail(const std::string& reason) {
  cancel();
  deliver(std::nullopt, platform::PlatformError{reason});
}

void MacRecognitionTask::deliver(const Result& result, const Error& error) {
  if (!handler_) return;
  const bool isLast = error || (result && result->isFinal);
  if (!isLast) return handler_(result, error);
  // Not called again, and nothing it holds is kept.
  recognizer_ = nil;
  task_ = nil;
  std::exchange(handler_, {})(result, error);
}

}  // namespace tavelo::macos
