#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

namespace tavelo::recognizer {

/// How something that another thread does turned out: loading a model, reaching a server. Any thread.
class Outcome final {
 public:
  enum class State : std::uint8_t { pending, succeeded, failed };

  /// Sets the state for good; only the first call counts. `failure` says why it failed, in English.
  void settle(State state, std::string failure = {}) {
    {
      const std::lock_guard lock{mutex_};
      if (state_ != State::pending) return;
      state_ = state;
      failure_ = std::move(failure);
    }
    settled_.notify_all();
  }

  /// Waits until the state is settled, at most for `limit`, and returns it.
  State wait(std::chrono::milliseconds limit) const {
    std::unique_lock lock{mutex_};
    settled_.wait_for(lock, limit, [this] { return state_ != State::pending; });
    return state_;
  }

  /// The state now, without waiting.
  State state() const { return wait({}); }

  /// Why the state is `failed`; empty otherwise.
  std::string failure() const {
    const std::lock_guard lock{mutex_};
    return failure_;
  }

 private:
  mutable std::mutex mutex_;
  mutable std::condition_variable settled_;
  State state_ = State::pending;
  std::string failure_;
};

}  // namespace tavelo::recognizer
