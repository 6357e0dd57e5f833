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

  /// Sets the state for good; only the first call counts. `detail` says what succeeded or why it failed, in
  /// the current language.
  void settle(State state, std::string detail = {}) {
    {
      const std::lock_guard lock{mutex_};
      if (state_ != State::pending) return;
      state_ = state;
      detail_ = std::move(detail);
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
  std::string failure() const { return detailOf(State::failed); }
  /// What succeeded, if that was said; empty otherwise.
  std::string success() const { return detailOf(State::succeeded); }

 private:
  std::string detailOf(State state) const {
    const std::lock_guard lock{mutex_};
    return state_ == state ? detail_ : std::string{};
  }

  mutable std::mutex mutex_;
  mutable std::condition_variable settled_;
  State state_ = State::pending;
  std::string detail_;
};

}  // namespace tavelo::recognizer
