#pragma once

#include <optional>
#include <string>
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

  static RecognitionStep partial(platform::Seconds after, std::string transcript);
  static RecognitionStep finalResult(platform::Seconds after, std::string transcript);
  static RecognitionStep failure(platform::Seconds after, std::string error);
};

/// How a recogniser answers one task. Nothing comes after a final result or an error. Without steps it never
/// answers.
struct RecognitionScript {
  std::vector<RecognitionStep> steps;
  /// Steps that fall due after a cancel still come, as results that were on their way.
  bool answersAfterCancel = false;
};

}  // namespace tavelo::simulated
