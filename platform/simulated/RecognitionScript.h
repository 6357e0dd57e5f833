#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Time.h"

namespace tavelo::simulated {

/// One answer of a scripted recognition: a result, an error, or both.
struct RecognitionStep {
  /// From the start of the task.
  platform::Seconds after{0};
  std::optional<std::string> transcript;
  bool isFinal = false;
  std::optional<std::string> error;

  static RecognitionStep partial(platform::Seconds after, std::string transcript) {
    return {after, std::move(transcript), false, std::nullopt};
  }
  static RecognitionStep finalResult(platform::Seconds after, std::string transcript) {
    return {after, std::move(transcript), true, std::nullopt};
  }
  static RecognitionStep failure(platform::Seconds after, std::string error) {
    return {after, std::nullopt, false, std::move(error)};
  }
};

/// How a recogniser answers one task. Nothing comes after a final result or an error; without steps it never
/// answers.
struct RecognitionScript {
  std::vector<RecognitionStep> steps;
  /// Whether steps due after a cancel still arrive, like results that were already on their way.
  bool answersAfterCancel = false;
};

}  // namespace tavelo::simulated
