#include "platform/recognizer/RecognitionTask.h"

#include <chrono>
#include <cstddef>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

#include "unicode/PlainText.h"

namespace tavelo::recognizer {
namespace {

/// How long a stop waits for the engine. Together with the microphone's last sound it stays under 300 ms.
constexpr std::chrono::milliseconds lastWordLimit{250};

constexpr const char* tooSlow = "Bộ nhận diện giọng nói chưa kịp nghe hết.";

std::size_t wordsIn(const std::string& transcript) {
  std::istringstream words{transcript};
  return static_cast<std::size_t>(
      std::distance(std::istream_iterator<std::string>{words}, std::istream_iterator<std::string>{}));
}

/// Whether `later` has more words, or the rest of the last one. Other words in place of some are no loss.
bool isMore(const std::string& later, const std::string& delivered) {
  return wordsIn(later) > wordsIn(delivered) ||
         (later.size() > delivered.size() && later.starts_with(delivered));
}

}  // namespace

using platform::PlatformError;
using platform::SpeechRecognitionResult;

RecognitionTask::RecognitionTask(platform::MainQueue& mainQueue, bool partialResults,
                                 platform::SpeechRecognizer::ResultHandler resultHandler)
    : mainQueue_(mainQueue), partialResults_(partialResults), resultHandler_(std::move(resultHandler)) {}

void RecognitionTask::onEnd(std::function<void()> ended) { ended_ = std::move(ended); }

void RecognitionTask::onIncomplete(std::function<void(const std::string& reason)> incomplete) {
  incomplete_ = std::move(incomplete);
}

void RecognitionTask::stop() {
  if (!mainQueue_.isMainThread() || over_ || std::exchange(stopped_, true)) return;
  const auto self = shared_from_this();
  if (!delivering_) {
    std::optional<Report> report;
    {
      std::unique_lock lock{mutex_};
      reportedLast_.wait_for(lock, lastWordLimit, [this] { return waiting_ && waiting_->isLast(); });
      report = std::exchange(waiting_, std::nullopt);
    }
    // Nothing at all was heard if the only result is empty.
    if (report && report->result && (delivered_ || !report->result->formattedString.empty()))
      delivered_ = report->result->formattedString;
    const auto handler = resultHandler_;
    if (delivered_) call(handler, SpeechRecognitionResult{*delivered_, false}, std::nullopt);
    if (report) conclude(*report);
  }
  resultHandler_ = nullptr;
}

void RecognitionTask::cancel() {
  resultHandler_ = nullptr;
  if (!stopped_) end();
}

void RecognitionTask::end() {
  over_ = true;
  resultHandler_ = nullptr;
  incomplete_ = nullptr;
  if (const auto ended = std::exchange(ended_, nullptr)) ended();
}

void RecognitionTask::reportPartial(std::string_view heard) {
  if (!partialResults_) return;
  std::string transcript = unicode::withoutControls(heard);
  if (transcript == reported_) return;
  reported_ = transcript;
  report({SpeechRecognitionResult{std::move(transcript), false}, std::nullopt});
}

void RecognitionTask::reportFinal(std::string_view heard) {
  report({SpeechRecognitionResult{unicode::withoutControls(heard), true}, std::nullopt});
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
      reportedLast_.notify_all();
      return;
    }
    waiting_ = std::move(newer);
  }
  reportedLast_.notify_all();
  mainQueue_.async([self = shared_from_this()] { self->deliver(); });
}

void RecognitionTask::deliver() {
  std::optional<Report> report;
  {
    const std::lock_guard lock{mutex_};
    report = std::exchange(waiting_, std::nullopt);
  }
  // A stop may have taken it.
  if (!report || over_) return;
  if (stopped_) return conclude(*report);
  if (report->result) delivered_ = report->result->formattedString;
  // A copy: the handler may cancel this task, which drops the member.
  const auto handler = resultHandler_;
  const auto incomplete = report->error ? incomplete_ : nullptr;
  if (report->isLast()) end();
  if (incomplete) incomplete(report->error->localizedDescription);
  call(handler, report->result, report->error);
}

void RecognitionTask::call(const platform::SpeechRecognizer::ResultHandler& handler,
                           const std::optional<SpeechRecognitionResult>& result,
                           const std::optional<PlatformError>& error) {
  if (!handler) return;
  const bool inside = std::exchange(delivering_, true);
  handler(result, error);
  delivering_ = inside;
}

/// Takes the engine's last report after a stop. Nobody gets it, but the user is told if words are missing.
void RecognitionTask::conclude(const Report& report) {
  if (!report.isLast()) return;
  const auto incomplete =
      report.error || isMore(report.result->formattedString, delivered_.value_or("")) ? incomplete_ : nullptr;
  end();
  if (incomplete) incomplete(report.error ? report.error->localizedDescription : tooSlow);
}

}  // namespace tavelo::recognizer
