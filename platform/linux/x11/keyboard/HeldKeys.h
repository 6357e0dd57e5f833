#pragma once

#include <array>
#include <bitset>
#include <optional>
#include <vector>

#include "platform/KeyboardEvents.h"
#include "platform/linux/x11/keyboard/KeyRole.h"

namespace tavelo::linuxdesktop {

/// The keys that are down, and the keyboard events that their moves make. Knows nothing of the X server.
class HeldKeys final {
 public:
  using Keys = std::bitset<keyNumbers>;

  bool isDown(KeyNumber key) const { return down_.test(key); }
  const Keys& down() const { return down_; }

  /// Modifiers held, by `platform::keyflags`.
  std::uint64_t flags() const;

  /// A key went down (perhaps again, when it repeats) or up.
  platform::KeyboardEvent move(KeyNumber key, bool down, platform::Uptime at);

  /// Whatever was believed, these keys are down; nobody is told.
  void adopt(const Keys& down) { down_ = down; }

  /// Lets go of keys that are not among `down`, whose releases were missed.
  std::vector<platform::KeyboardEvent> releaseAllBut(const Keys& down, platform::Uptime at);

  /// Keys have other meanings from now on; an event when that changes the modifiers held.
  std::optional<platform::KeyboardEvent> setRoles(const KeyRoles& roles, platform::Uptime at);
  const KeyRole& role(KeyNumber key) const { return roles_[key]; }

 private:
  KeyRoles roles_{};
  Keys down_;
};

}  // namespace tavelo::linuxdesktop
