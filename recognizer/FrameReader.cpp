#include "recognizer/FrameReader.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <span>

#include <poll.h>
#include <unistd.h>

#include "recognizer/FrameParser.h"

namespace tavelo::recognition {
namespace {

constexpr int atEnd = 0;
constexpr int badFrame = 2;
/// While the inbox is full, only the end of the input is looked for, and that not all the time.
constexpr std::chrono::milliseconds fullPause{20};
constexpr std::chrono::milliseconds busyPause{1000};

using Clock = std::chrono::steady_clock;

/// Tells once a second that there is work.
class Pulse final {
 public:
  Pulse(const Inbox& inbox, const std::function<void()>& busy) : inbox_(inbox), busy_(busy) {}

  /// How long the caller may wait for input now, in milliseconds; -1 for ever.
  int beat() {
    const auto now = Clock::now();
    if (!inbox_.isBusy()) {
      at_ = now;
      return -1;
    }
    if (now - at_ >= busyPause) {
      at_ = now;
      busy_();
    }
    return static_cast<int>((inbox_.isFull() ? fullPause : busyPause).count());
  }

 private:
  const Inbox& inbox_;
  const std::function<void()>& busy_;
  Clock::time_point at_ = Clock::now();
};

}  // namespace

int readFrames(int descriptor, Inbox& inbox, const std::function<void()>& busy) {
  FrameParser parser{inbox};
  Pulse pulse{inbox, busy};
  std::array<std::uint8_t, 64UL * 1024> piece{};
  while (true) {
    const bool full = inbox.isFull();
    pollfd input{descriptor, static_cast<short>(full ? 0 : POLLIN), 0};
    if (poll(&input, 1, pulse.beat()) <= 0) continue;
    // It was not asked for, so the other side has gone.
    if (full) return atEnd;
    const auto count = read(descriptor, piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return atEnd;
    if (!parser.feed(std::span{piece}.first(static_cast<std::size_t>(count)))) return badFrame;
  }
}

}  // namespace tavelo::recognition
