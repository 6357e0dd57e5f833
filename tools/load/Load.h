#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "tools/load/Dictation.h"

namespace tavelo::load {

/// What many dictations came to. A plain value.
struct Tally {
  std::size_t dictations = 0;
  std::size_t failed = 0;
  /// Against the transcript of the lone dictation.
  std::size_t wordsExpected = 0;
  std::size_t wordsLost = 0;
  std::size_t wordsTooMany = 0;
  /// How much later than in the lone dictation each word came, in seconds. Unsorted.
  std::vector<double> wordsLater;
  /// From the end of the sound to the final transcript, in seconds. Unsorted.
  std::vector<double> finalAfter;
  /// The first error, for the reader.
  std::string error;

  bool isWhole() const { return failed == 0 && wordsLost == 0 && wordsTooMany == 0; }
};

/// Holds a number of dictations at once, in real time: each that ends is followed by another until the time
/// is over. They begin spread over the recording's length. Main thread.
class Load final {
 public:
  using MakeDictation = std::function<std::shared_ptr<Dictation>()>;

  /// `yardstick` is what a lone dictation came to. `mainQueue` must outlive this object.
  Load(platform::MainQueue& mainQueue, MakeDictation makeDictation, Outcome yardstick);

  /// Calls `done` once, when the last dictation has ended.
  void hold(std::size_t dictations, platform::Seconds recording, platform::Seconds time,
            std::function<void(const Tally&)> done);

 private:
  void next();
  void another();
  void count(const Outcome& outcome);

  platform::MainQueue& mainQueue_;
  const MakeDictation makeDictation_;
  const Outcome yardstick_;
  const std::vector<std::string> expected_;
  Tally tally_;
  std::size_t open_ = 0;
  bool timeIsOver_ = false;
  std::function<void(const Tally&)> done_;
};

}  // namespace tavelo::load
