#include "tools/load/Load.h"

#include <algorithm>
#include <utility>

namespace tavelo::load {
namespace {

constexpr platform::Seconds pauseAfterFailure{1};

}  // namespace

Load::Load(platform::MainQueue& mainQueue, MakeDictation makeDictation, Outcome yardstick)
    : mainQueue_(mainQueue),
      makeDictation_(std::move(makeDictation)),
      yardstick_(std::move(yardstick)),
      expected_(wordsOf(yardstick_.text)) {}

void Load::hold(std::size_t dictations, platform::Seconds recording, platform::Seconds time,
                std::function<void(const Tally&)> done) {
  done_ = std::move(done);
  open_ = dictations;
  for (std::size_t i = 0; i < dictations; ++i) {
    const auto share = static_cast<double>(i) / static_cast<double>(dictations);
    mainQueue_.asyncAfter(recording * share, [this] { next(); });
  }
  mainQueue_.asyncAfter(time, [this] { timeIsOver_ = true; });
}

void Load::next() {
  makeDictation_()->begin([this](const Outcome& outcome) {
    count(outcome);
    // Where nobody answers, the next one would fail at once as well.
    if (!outcome.error.empty()) return mainQueue_.asyncAfter(pauseAfterFailure, [this] { another(); });
    another();
  });
}

void Load::another() {
  if (!timeIsOver_) return next();
  if (--open_ == 0) done_(tally_);
}

void Load::count(const Outcome& outcome) {
  ++tally_.dictations;
  const auto heard = wordsOf(outcome.text);
  const auto lost = lostWords(expected_, heard);
  tally_.wordsExpected += expected_.size();
  tally_.wordsLost += lost;
  tally_.wordsTooMany += heard.size() - (expected_.size() - lost);
  if (!outcome.error.empty()) {
    ++tally_.failed;
    if (tally_.error.empty()) tally_.error = outcome.error;
    return;
  }
  const auto words = std::min(outcome.wordsAfter.size(), yardstick_.wordsAfter.size());
  for (std::size_t i = 0; i < words; ++i)
    tally_.wordsLater.push_back((outcome.wordsAfter[i] - yardstick_.wordsAfter[i]).count());
  tally_.finalAfter.push_back(outcome.finalAfter.count());
}

}  // namespace tavelo::load
