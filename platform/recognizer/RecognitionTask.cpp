#include "platform/recognizer/RecognitionTask.h"

#include <string_view>
#include <utility>

#include "unicode/Unicode.h"

namespace tavelo::recognizer {
namespace {

/// Whether a terminal or a shell may take the scalar for a command or for the end of a line.
bool isControl(char32_t scalar) {
  constexpr char32_t lineSeparator = 0x2028;
  constexpr char32_t paragraphSeparator = 0x2029;
  return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0) || scalar == lineSeparator ||
         scalar == paragraphSeparator;
}

/// The transcript without control characters. The text may end up in a terminal, where a shell runs a line as
/// soon as it ends. Only spoken words make a line break.
std::string withoutControls(std::string_view transcript) {
  std::string plain;
  plain.reserve(transcript.size());
  for (std::size_t offset = 0; offset < transcript.size();) {
    const char32_t scalar = unicode::nextScalar(transcript, offset);
    unicode::appendScalar(plain, isControl(scalar) ? U' ' : scalar);
  }
  return plain;
}

}  // namespace

using platform::PlatformError;
using platform::SpeechRecognitionResult;

RecognitionTask::RecognitionTask(platform::MainQueue& mainQueue, bool partialResults,
                                 platform::SpeechRecognizer::ResultHandler resultHandler)
    : mainQueue_(mainQueue), partialResults_(partialResults), resultHandler_(std::move(resultHandler)) {}

void RecognitionTask::onEnd(std::function<void()> ended) { ended_ = std::move(ended); }

void RecognitionTask::cancel() {
  over_ = true;
  resultHandler_ = nullptr;
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

void RecognitionTask::reportPartial(std::string_view heard) {
  if (!partialResults_) return;
  std::string transcript = withoutControls(heard);
  if (transcript == reported_) return;
  reported_ = transcript;
  report({SpeechRecognitionResult{std::move(transcript), false}, std::nullopt});
}

void RecognitionTask::reportFinal(std::string_view heard) {
  report({SpeechRecognitionResult{withoutControls(heard), true}, std::nullopt});
}

void RecognitionTask::fail(const char* reason) { report({std::nullopt, PlatformError{reason}}); }

void RecognitionTask::report(Report newer) {
  if (over_) return;
  {
    const std::lock_guard lock{mutex_};
    if (waiting_) {
      if (waiting_->isLast()) return;
      if (newer.result) waiting_->result = std::move(newer.result);
      waiting_->error = std::move(newer.error);
      return;
    }
    waiting_ = std::move(newer);
  }
  mainQueue_.async([self = shared_from_this()] { self->deliver(); });
}

void RecognitionTask::deliver() {
  std::optional<Report> report;
  {
    const std::lock_guard lock{mutex_};
    report = std::exchange(waiting_, std::nullopt);
  }
  // Call a copy: the handler may cancel this task, which drops the member.
  const auto handler = resultHandler_;
  if (report->isLast()) cancel();
  if (handler) handler(report->result, report->error);
}

}  // namespace tavelo::recognizer
