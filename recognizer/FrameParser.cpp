#include "recognizer/FrameParser.h"

#include <algorithm>
#include <string_view>

namespace tavelo::recognition {
namespace {

constexpr std::size_t headerSize = 5;
constexpr std::string_view kinds = "BSEC";

std::uint32_t readNumber(std::span<const std::uint8_t> bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8U | bytes[i];
  return value;
}

std::vector<std::int16_t> readSamples(std::span<const std::uint8_t> bytes) {
  std::vector<std::int16_t> samples(bytes.size() / 2);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = static_cast<std::int16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
  return samples;
}

}  // namespace

bool FrameParser::feed(std::span<const std::uint8_t> bytes) {
  for (;;) {
    fill(bytes, headerSize);
    if (waiting_.size() < headerSize) return true;
    const auto kind = static_cast<char>(waiting_.front());
    const std::size_t size = readNumber(std::span{waiting_}.subspan(1));
    // A bad frame must not make us wait for its payload.
    if (size > largestPayload || kinds.find(kind) == std::string_view::npos) return false;
    fill(bytes, headerSize + size);
    if (waiting_.size() < headerSize + size) return true;
    if (!handle(kind, std::span{waiting_}.subspan(headerSize))) return false;
    waiting_.clear();
  }
}

/// Moves bytes over until `size` of them wait.
void FrameParser::fill(std::span<const std::uint8_t>& bytes, std::size_t size) {
  if (waiting_.size() >= size) return;
  const auto taken = bytes.first(std::min(bytes.size(), size - waiting_.size()));
  waiting_.insert(waiting_.end(), taken.begin(), taken.end());
  bytes = bytes.subspan(taken.size());
}

bool FrameParser::handle(char kind, std::span<const std::uint8_t> payload) {
  switch (kind) {
    case 'B':
      if (payload.size() != 8) return false;
      handler_.begin(readNumber(payload), readNumber(payload.subspan(4)));
      return true;
    case 'S':
      if (payload.size() % 2 != 0) return false;
      handler_.sound(readSamples(payload));
      return true;
    case 'E':
      if (!payload.empty()) return false;
      handler_.end();
      return true;
    default:
      if (!payload.empty()) return false;
      handler_.cancel();
      return true;
  }
}

}  // namespace tavelo::recognition
