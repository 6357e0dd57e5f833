#pragma once

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/Speech.h"
#include "tests/platform/recognizer/PumpedMainQueue.h"

namespace tavelo {

/// One dictation and its reports: the transcripts, the final one in brackets, and "error" for an error.
struct ReportedDictation {
  /// `held` is released together with the result handler.
  explicit ReportedDictation(platform::Speech& speech, bool partialResults = true,
                             const std::shared_ptr<void>& held = nullptr)
      : request(speech.makeAudioBufferRecognitionRequest()) {
    request->setShouldReportPartialResults(partialResults);
    task = speech.makeRecognizer("vi_VN")->recognitionTask(
        request, [reports = reports, held](const auto& result, const auto& error) {
          if (result)
            reports->push_back(result->isFinal ? "[" + result->formattedString + "]"
                                               : result->formattedString);
          if (error) reports->push_back(error->localizedDescription.empty() ? "no text" : "error");
        });
  }

  bool over() const {
    return !reports->empty() && (reports->back() == "error" || reports->back().front() == '[');
  }

  /// Ends the sound off the main thread, where it is no stop, and waits for the last report. Returns all
  /// reports, with any that wrongly follow it.
  std::vector<std::string> finish(PumpedMainQueue& queue) const {
    std::thread{[this] { request->endAudio(); }}.join();
    EXPECT_TRUE(queue.pumpUntil([&] { return over(); }));
    queue.drain();
    return *reports;
  }

  std::shared_ptr<std::vector<std::string>> reports = std::make_shared<std::vector<std::string>>();
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request;
  std::shared_ptr<platform::SpeechRecognitionTask> task;
};

}  // namespace tavelo
