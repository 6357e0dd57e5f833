#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "recognizer/DecodePace.h"
#include "recognizer/Engine.h"
#include "recognizer/Segmenter.h"

namespace tavelo::recognition {

/// A text, or why there is none.
struct Decoded {
  std::string text;
  std::string failure;
};

/// Live text from a recogniser that only knows whole recordings: the current segment is decoded afresh as it
/// grows, and fixed when it ends. Decoding thread.
class SegmentedDictation final : public Dictation {
 public:
  /// Decodes a whole recording.
  using Decode = std::function<Decoded(std::span<const std::int16_t> samples)>;
  /// A steady clock.
  using Clock = std::function<Seconds()>;

  /// `pace` is shared by the dictations of an engine. Neither it nor the listener may be outlived.
  SegmentedDictation(std::uint32_t sampleRate, Decode decode, DecodePace& pace, Listener& listener,
                     Clock clock);

  std::string accept(std::span<const std::int16_t> samples, bool moreWaits) override;
  std::string finish() override;

 private:
  std::string close(Segmenter::End end);
  Decoded decode(std::span<const std::int16_t> sound);
  Seconds lengthOf(std::size_t samples) const;

  const std::uint32_t sampleRate_;
  const Decode decode_;
  DecodePace& pace_;
  Listener& listener_;
  const Clock clock_;
  Segmenter segmenter_;
  /// Where the current segment begins in the dictation.
  std::uint64_t start_ = 0;
  /// How much of the current segment `heard` told of.
  std::size_t told_ = 0;
};

}  // namespace tavelo::recognition
