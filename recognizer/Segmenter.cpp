#include "recognizer/Segmenter.h"

#include <algorithm>
#include <cmath>

namespace tavelo::recognition {
namespace {

constexpr std::size_t framesPerSecond = 50;

/// One level is the mean of this many frames (100 ms), so that the closure of a "t" is no pause.
constexpr std::size_t smoothing = 5;

/// How far back the quietest and the loudest level are looked for.
constexpr std::size_t memory = 5 * framesPerSecond;

/// A segment ends when it has been quiet for so long, and something was said in it.
constexpr std::size_t pause = framesPerSecond / 2;
constexpr std::size_t leastSpeech = framesPerSecond / 5;

/// Levels in decibels above one step of 16-bit sound. What is below the floor is a microphone that is
/// switched off.
constexpr float floorLevel = 20;
/// No room is as loud as this between the words: there were only words so far.
constexpr float loudestBackground = 45;
/// There is speech only if the loudest level is so far above the quietest.
constexpr float leastRange = 9;
/// Quiet is what lies in the lowest third of the range, within these limits.
constexpr float quietShare = 0.33F;
constexpr float leastMargin = 3;
constexpr float mostMargin = 12;

/// A segment that is cut for its length is cut in its last 40 percent.
constexpr double earliestCut = 0.6;

/// The mean power of a frame without its direct current.
double powerOf(std::span<const std::int16_t> frame) {
  double sum = 0;
  double squares = 0;
  for (const double sample : frame) {
    sum += sample;
    squares += sample * sample;
  }
  const auto count = static_cast<double>(frame.size());
  return std::max(0.0, squares / count - sum / count * (sum / count));
}

}  // namespace

Segmenter::Segmenter(std::uint32_t sampleRate)
    : frameSize_(std::max<std::size_t>(1, sampleRate / framesPerSecond)) {}

void Segmenter::append(std::span<const std::int16_t> samples) {
  samples_.insert(samples_.end(), samples.begin(), samples.end());
  measure();
}

/// Computes the levels of the frames that have become whole.
void Segmenter::measure() {
  while ((levels_.size() + 1) * frameSize_ <= samples_.size()) {
    const std::size_t start = levels_.size() * frameSize_;
    powers_.push_back(powerOf(std::span{samples_}.subspan(start, frameSize_)));
    const std::size_t count = std::min(smoothing, powers_.size());
    double sum = 0;
    for (std::size_t i = powers_.size() - count; i < powers_.size(); ++i) sum += powers_[i];
    const auto level = static_cast<float>(10 * std::log10(1 + sum / static_cast<double>(count)));
    levels_.push_back(std::max(floorLevel, level));
  }
}

Segmenter::Range Segmenter::recent(std::size_t frame) const {
  const std::size_t from = frame >= memory ? frame - memory + 1 : 0;
  const auto [quietest, loudest] =
      std::minmax_element(levels_.begin() + static_cast<std::ptrdiff_t>(from),
                          levels_.begin() + static_cast<std::ptrdiff_t>(frame) + 1);
  return {*quietest, *loudest};
}

float Segmenter::background() const {
  const float level = levels_.empty() ? floorLevel : recent(levels_.size() - 1).quietest;
  return std::pow(10.0F, std::min(level, loudestBackground) / 20);
}

std::optional<Segmenter::End> Segmenter::findEnd(Seconds longest) {
  const auto most = static_cast<std::size_t>(longest.count() * framesPerSecond);
  while (scanned_ < levels_.size()) {
    const std::size_t frame = scanned_++;
    const auto range = recent(frame);
    const float margin = std::clamp(quietShare * (range.loudest - range.quietest), leastMargin, mostMargin);
    // Sound that stays level is speech or silence; nobody can tell.
    const bool told = range.loudest - range.quietest >= leastRange;
    const bool quiet = told && levels_[frame] < range.quietest + margin;
    quietFrames_ = quiet ? quietFrames_ + 1 : 0;
    if (told && !quiet) ++spokenFrames_;
    if (quietFrames_ >= pause && spokenFrames_ >= leastSpeech)
      return End{(scanned_ - pause / 2) * frameSize_, scanned_ * frameSize_};
    if (scanned_ >= most) {
      const std::size_t place =
          quietestPlace(static_cast<std::size_t>(static_cast<double>(most) * earliestCut), most);
      return End{place * frameSize_, place * frameSize_};
    }
  }
  return std::nullopt;
}

/// The frame of the segment, between the two, at which the level is lowest.
std::size_t Segmenter::quietestPlace(std::size_t from, std::size_t to) const {
  const auto begin = levels_.begin();
  const auto place =
      std::min_element(begin + static_cast<std::ptrdiff_t>(from), begin + static_cast<std::ptrdiff_t>(to));
  // The level is that of the frames before; their middle is the quiet place.
  return static_cast<std::size_t>(place - begin) - smoothing / 2;
}

void Segmenter::cut(std::size_t count) {
  samples_.erase(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(count));
  const auto frames = static_cast<std::ptrdiff_t>(std::min(count / frameSize_, levels_.size()));
  powers_.erase(powers_.begin(), powers_.begin() + frames);
  levels_.erase(levels_.begin(), levels_.begin() + frames);
  scanned_ = spokenFrames_ = quietFrames_ = 0;
}

}  // namespace tavelo::recognition
