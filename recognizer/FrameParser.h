#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavelo::recognition {

/// Takes what the frames of the standard input say. The thread that feeds the parser.
class FrameHandler {
 public:
  virtual ~FrameHandler() = default;

  /// A dictation begins; any older one is given up.
  virtual void begin(std::uint32_t dictation, std::uint32_t sampleRate) = 0;
  /// Mono sound of the current dictation.
  virtual void sound(std::vector<std::int16_t> samples) = 0;
  /// The current dictation's sound is over.
  virtual void end() = 0;
  /// The current dictation is given up.
  virtual void cancel() = 0;
};

/// Cuts the standard input into frames: one byte that says the kind, the payload's length as a little-endian
/// 32-bit number, the payload. Holds at most one frame. One thread.
class FrameParser final {
 public:
  static constexpr std::size_t largestPayload = 1024UL * 1024;

  explicit FrameParser(FrameHandler& handler) : handler_(handler) {}

  /// Reads the next bytes of the input and hands over each frame that is whole. Returns false when a frame is
  /// bad; feed nothing more then.
  bool feed(std::span<const std::uint8_t> bytes);

 private:
  void fill(std::span<const std::uint8_t>& bytes, std::size_t size);
  bool handle(char kind, std::span<const std::uint8_t> payload);

  FrameHandler& handler_;
  std::vector<std::uint8_t> waiting_;
};

}  // namespace tavelo::recognition
