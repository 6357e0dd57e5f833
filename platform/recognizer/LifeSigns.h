#pragma once

#include <chrono>
#include <cstdint>

namespace tavelo::recognizer {

/// Tells a recogniser process that hangs from one that is slow. While it has work, a process says once a
/// second that it lives and how many pieces of work it has done; a decode may take seconds on a busy machine.
/// A plain value without a clock.
class LifeSigns final {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Without a word for so long, it is stopped or hangs.
  static constexpr std::chrono::seconds silenceLimit{5};
  /// It lives, but its library does not get on.
  static constexpr std::chrono::seconds progressLimit{20};

  /// The process took something from us, said something about its work, or owes nothing.
  void gotOn(Time now) { heardAt_ = progressAt_ = now; }
  /// It said that it is busy with that piece of work.
  void isBusy(std::uint64_t step, Time now) {
    heardAt_ = now;
    if (step != step_) progressAt_ = now;
    step_ = step;
  }

  /// Whether a process that owes something hangs.
  bool hangs(Time now) const { return now - heardAt_ > silenceLimit || now - progressAt_ > progressLimit; }
  /// Since when it has not got on.
  Time progressAt() const { return progressAt_; }

 private:
  Time heardAt_{};
  Time progressAt_{};
  std::uint64_t step_ = 0;
};

}  // namespace tavelo::recognizer
