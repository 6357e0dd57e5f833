#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Speech.h"

namespace tavelo {

/// One recognition with what it reported: the transcripts, the final one in brackets, "error" for an error.
struct ReportedDictation {
  /// `held` is let go with the result handler.
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

  std::shared_ptr<std::vector<std::string>> reports = std::make_shared<std::vector<std::string>>();
  std::shared_ptr<platform::SpeechAudioBufferRecognitionRequest> request;
  std::shared_ptr<platform::SpeechRecognitionTask> task;
};

}  // namespace tavelo
