#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace tavelo::recognizer {

/// The transcript of a running dictation: the finished utterances, joined by one space, and the current one.
/// A plain value.
class RunningTranscript final {
 public:
  /// Replaces the current utterance's transcript, which may get shorter. Empty between utterances.
  void setPartial(std::string partial) {
    partial_ = std::move(partial);
    catchUp();
  }

  /// Ends the current utterance with its last transcript; an empty one adds nothing.
  void endUtterance(std::string_view text) {
    append(finished_, text);
    partial_.clear();
    catchUp();
  }

  /// The current utterance's transcript, which is dropped.
  std::string takePartial() { return std::exchange(partial_, {}); }

  /// The current utterance is recognised once more. Until it has come as far as before, `text` stays.
  void restart() {
    older_ = text();
    partial_.clear();
  }

  std::string text() const { return older_.empty() ? finalText() : older_; }

  /// The same, when nothing more is to come.
  std::string finalText() const {
    std::string whole = finished_;
    append(whole, partial_);
    return whole;
  }

 private:
  static void append(std::string& whole, std::string_view text) {
    if (!whole.empty() && !text.empty()) whole += ' ';
    whole += text;
  }

  void catchUp() {
    if (finalText().size() >= older_.size()) older_.clear();
  }

  std::string finished_;
  std::string partial_;
  /// The transcript before a restart; empty once it has been reached.
  std::string older_;
};

}  // namespace tavelo::recognizer
