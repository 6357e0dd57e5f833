#pragma once

#include <memory>
#include <utility>

namespace tavelo::platform {

/// Keeps deferred blocks and handlers from running after their owner is gone.
///
/// `guard(f)` returns a callable that calls `f` while the owner lives and does nothing afterwards, so `f` may
/// capture `this`. Declare it as the owner's last member, so that it is destroyed first. Main thread.
class Lifetime final {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  template <class Callable>
  auto guard(Callable callable) const {
    return [alive = std::weak_ptr<const Token>(token_),
            callable = std::move(callable)](auto&&... arguments) mutable {
      if (alive.lock()) callable(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  struct Token {};
  std::shared_ptr<const Token> token_ = std::make_shared<const Token>();
};

}  // namespace tavelo::platform
