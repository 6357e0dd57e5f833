#pragma once

#include <cstdint>
#include <functional>

namespace tavelo::platform {

/// Why nothing may be recorded: the user is about to enter a password, or is not at the computer. `setUp`:
/// the hold key is being chosen or tried, so a press of it begins nothing; what runs already goes on.
enum class Secret : std::uint8_t { none, passwordField, lockedSession, setUp };

/// Knows when nothing may be recorded. Main thread.
class SecretGuard {
 public:
  using Answer = std::function<void(Secret)>;

  virtual ~SecretGuard() = default;

  /// Calls `answer` once, within about 100 ms and possibly inside this call. What does not answer in that
  /// time counts as no secret.
  virtual void ask(Answer answer) = 0;
};

}  // namespace tavelo::platform
