#include "recognizer/FrameReader.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <span>

#include <poll.h>
#include <unistd.h>

#include "recognizer/FrameParser.h"

namespace tavelo::recognition {
namespace {

constexpr int atEnd = 0;
constexpr int badFrame = 2;
constexpr int fullPause = 20;

/// Waits until the inbox has room. Returns false when the other side has gone.
bool waitForRoom(int descriptor, const Inbox& inbox) {
  while (inbox.isFull()) {
    pollfd input{descriptor, 0, 0};
    if (poll(&input, 1, fullPause) > 0) return false;
  }
  return true;
}

}  // namespace

int readFrames(int descriptor, Inbox& inbox) {
  FrameParser parser{inbox};
  std::array<std::uint8_t, 64UL * 1024> piece{};
  while (waitForRoom(descriptor, inbox)) {
    const auto count = read(descriptor, piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return atEnd;
    if (!parser.feed(std::span{piece}.first(static_cast<std::size_t>(count)))) return badFrame;
  }
  return atEnd;
}

}  // namespace tavelo::recognition
