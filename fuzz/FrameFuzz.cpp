#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/Require.h"
#include "recognizer/FrameParser.h"

namespace {

/// Counts what the frames say.
struct Counted final : tavelo::recognition::FrameHandler {
  void begin(std::uint32_t dictation, std::uint32_t rate) override { add(dictation ^ rate); }
  void sound(std::vector<std::int16_t> samples) override {
    for (const auto sample : samples) add(static_cast<std::uint16_t>(sample));
    add(samples.size());
  }
  void end() override { add(1); }
  void cancel() override { add(2); }
  void add(std::uint64_t value) { sum = sum * 31 + value; }

  std::uint64_t sum = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using tavelo::recognition::FrameParser;
  Counted whole;
  Counted pieces;
  const std::span input{data, size};
  FrameParser wholeParser{whole};
  const bool good = wholeParser.feed(input);
  FrameParser pieceParser{pieces};
  bool goodInPieces = true;
  const std::size_t step = size > 0 ? 1 + data[0] % 16 : 1;
  for (std::size_t at = 0; at < size && goodInPieces; at += step)
    goodInPieces = pieceParser.feed(input.subspan(at, std::min(step, size - at)));
  tavelo::fuzz::require(good == goodInPieces && whole.sum == pieces.sum,
                        "frames do not depend on how they arrive");
  return 0;
}
