#include "recognizer/Outbox.h"

#include <utility>

namespace tavelo::recognition {

void Outbox::state(std::string line) {
  const std::lock_guard lock{mutex_};
  lines_.push_back({0, false, std::move(line)});
  changed_.notify_one();
}

void Outbox::onlyOf(std::uint64_t serial) {
  const std::lock_guard lock{mutex_};
  current_ = serial;
  std::erase_if(lines_, [serial](const Line& line) { return line.serial != 0 && line.serial != serial; });
}

void Outbox::replaceable(std::uint64_t serial, std::string line) { add({serial, true, std::move(line)}); }
void Outbox::lasting(std::uint64_t serial, std::string line) { add({serial, false, std::move(line)}); }

void Outbox::add(Line line) {
  const std::lock_guard lock{mutex_};
  if (line.serial != current_) return;
  if (!lines_.empty() && lines_.back().replaceable) lines_.pop_back();
  lines_.push_back(std::move(line));
  changed_.notify_one();
}

void Outbox::writeAll(const std::function<bool(std::string_view line)>& write) {
  std::unique_lock lock{mutex_};
  for (;;) {
    changed_.wait(lock, [this] { return !lines_.empty() || closed_; });
    if (lines_.empty()) return;
    const Line line = std::move(lines_.front());
    lines_.pop_front();
    lock.unlock();
    if (!write(line.text)) return;
    lock.lock();
  }
}

void Outbox::close() {
  const std::lock_guard lock{mutex_};
  closed_ = true;
  changed_.notify_one();
}

}  // namespace tavelo::recognition
