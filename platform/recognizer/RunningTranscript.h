#pragma once

#include <string>
#include <string_view>

namespace tavelo::recognizer {

/// The transcript of a running dictation: the finished utterances, joined by one space, and the current one.
/// A plain value.
class RunningTranscript final {
 public:
  /// Replaces the current utterance's transcript, which may get shorter. Empty between utterances.
  void setPartial(std::string partial) { partial_ = std::move(partial); }

  /// Ends the current utterance with its last transcript; an empty one adds nothing.
  void endUtterance(std::string_view text) {
    append(finished_, text);
    partial_.clear();
  }

  std::string text() const {
    std::string whole = finished_;
    append(whole, partial_);
    return whole;
  }

 private:
  static void append(std::string& whole, std::string_view text) {
    if (!whole.empty() && !text.empty()) whole += ' ';
    whole += text;
  }

  std::string finished_;
  std::string partial_;
};

}  // namespace tavelo::recognizer
