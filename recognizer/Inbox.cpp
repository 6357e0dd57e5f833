#include "recognizer/Inbox.h"

#include <algorithm>
#include <utility>

namespace tavelo::recognition {
namespace {

/// Two minutes of sound at 16 kHz.
constexpr std::size_t mostWaiting = 4UL * 1024 * 1024 / sizeof(std::int16_t);

}  // namespace

void Inbox::begin(std::uint32_t dictation, std::uint32_t sampleRate) {
  const std::lock_guard lock{mutex_};
  start(++count_);
  current_.dictation = dictation;
  current_.sampleRate = sampleRate;
}

void Inbox::sound(std::vector<std::int16_t> samples) {
  const std::lock_guard lock{mutex_};
  if (current_.serial == 0 || over_) return;
  // Forget what has been taken before the vector would grow.
  current_.samples.erase(current_.samples.begin(),
                         current_.samples.begin() + static_cast<std::ptrdiff_t>(std::exchange(taken_, 0)));
  current_.samples.insert(current_.samples.end(), samples.begin(), samples.end());
  arrived_.notify_one();
}

void Inbox::end() {
  const std::lock_guard lock{mutex_};
  if (current_.serial == 0 || over_) return;
  current_.ended = over_ = true;
  arrived_.notify_one();
}

void Inbox::cancel() {
  const std::lock_guard lock{mutex_};
  start(0);
}

/// Makes `serial` the current dictation. Needs the lock.
void Inbox::start(std::uint64_t serial) {
  current_ = {};
  current_.serial = serial;
  taken_ = 0;
  over_ = false;
  outbox_.onlyOf(serial);
  arrived_.notify_one();
}

Inbox::Work Inbox::take() {
  std::unique_lock lock{mutex_};
  arrived_.wait(lock, [this] {
    return current_.serial != announced_ || taken_ < current_.samples.size() || current_.ended;
  });
  announced_ = current_.serial;
  Work work{current_.serial, current_.dictation, current_.sampleRate, {}, false, false};
  const std::size_t waiting = current_.samples.size() - taken_;
  const std::size_t count = std::min<std::size_t>(waiting, std::max(current_.sampleRate, 1U));
  const auto from = current_.samples.begin() + static_cast<std::ptrdiff_t>(taken_);
  work.samples.assign(from, from + static_cast<std::ptrdiff_t>(count));
  taken_ += count;
  work.ended = current_.ended && count == waiting;
  work.moreWaits = count < waiting || current_.ended;
  if (work.ended) {
    // Its last answers are still due, so it stays the current one.
    current_.samples.clear();
    taken_ = 0;
    current_.ended = false;
  }
  return work;
}

bool Inbox::isFull() const {
  const std::lock_guard lock{mutex_};
  return current_.samples.size() - taken_ > mostWaiting;
}

}  // namespace tavelo::recognition
