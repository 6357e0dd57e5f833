#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>

namespace tavelo::recognizer {

/// What an attempt to connect comes to, for a thread that waits for it. Any thread.
class ConnectionOutcome final {
 public:
  enum class State : std::uint8_t { pending, reached, failed };

  /// Only the first call counts.
  void settle(State state, std::string failure = {}) {
    {
      const std::lock_guard lock{mutex_};
      if (state_ != State::pending) return;
      state_ = state;
      failure_ = std::move(failure);
    }
    settled_.notify_all();
  }

  /// The state once it is settled, or `pending` when `limit` passed before.
  State wait(std::chrono::milliseconds limit) {
    std::unique_lock lock{mutex_};
    settled_.wait_for(lock, limit, [this] { return state_ != State::pending; });
    return state_;
  }

  /// Why the state is `failed`, in English.
  std::string failure() const {
    const std::lock_guard lock{mutex_};
    return failure_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable settled_;
  State state_ = State::pending;
  std::string failure_;
};

}  // namespace tavelo::recognizer
