#pragma once

#include <QByteArray>
#include <algorithm>
#include <cstddef>
#include <deque>

namespace tavelo::recognizer {

/// The frames of sound that a server was sent since its last finished utterance, for the server that takes
/// over when the connection is lost. A plain value.
class KeptFrames final {
 public:
  void sent(const QByteArray& frame) {
    frames_.push_back(frame);
    bytes_ += frame.size();
    while (bytes_ > mostBytes) forgetFirst();
  }

  /// The server answered the oldest frame that it had not answered.
  void answered() { answered_ = std::min(answered_ + 1, frames_.size()); }

  /// The answer ended an utterance with some words. Some servers answer one message more than others, so one
  /// frame of its pause stays.
  void utteranceEnded() { forgetAllBut(1); }

  /// The answer says that no utterance is running. The first word of the next one may have begun.
  void isSilent() { forgetAllBut(30); }

  /// All of it, to be sent once more.
  QByteArray take() {
    QByteArray sound;
    for (const auto& frame : frames_) sound += frame;
    *this = {};
    return sound;
  }

 private:
  /// Two and a half minutes. An utterance is shorter.
  static constexpr qsizetype mostBytes = qsizetype{150} * 32'000;

  void forgetAllBut(std::size_t newestAnswered) {
    while (answered_ > newestAnswered) forgetFirst();
  }
  void forgetFirst() {
    bytes_ -= frames_.front().size();
    frames_.pop_front();
    if (answered_ > 0) --answered_;
  }

  std::deque<QByteArray> frames_;
  std::size_t answered_ = 0;
  qsizetype bytes_ = 0;
};

}  // namespace tavelo::recognizer
