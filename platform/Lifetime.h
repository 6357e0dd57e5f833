#pragma once

#include <memory>
#include <utility>

namespace tavelo::platform {

/// Lets a deferred block or a handler ask whether its owner still exists.
///
/// Declared as the owner's last member, so that it ends first. `guard(f)` is a callable that forwards to `f`
/// while the owner lives and does nothing afterwards; `f` may therefore capture `this`. Owner and guarded
/// callables belong to the main thread.
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
