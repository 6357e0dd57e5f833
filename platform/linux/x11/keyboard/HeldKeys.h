#pragma once

#include <bitset>
#include <optional>
#include <vector>

#include "platform/KeyboardEvents.h"
#include "platform/linux/x11/keyboard/KeyRole.h"

namespace tavelo::linuxdesktop {

/// Keeps track of the keys that are down, and turns their moves into keyboard events. Does not use the X
/// server.
class HeldKeys final {
 public:
  using Keys = std::bitset<keyNumbers>;

  bool isDown(KeyNumber key) const { return down_.test(key); }

  /// The modifiers that are held, as bits of `platform::keyflags`.
  std::uint64_t flags() const;

  /// Whether this key, if it goes down now, interrupts the hold of Fn: it is neither a modifier nor down
  /// already.
  bool wouldInterruptHold(KeyNumber key) const;

  /// A key went up or down. It may go down twice, when it repeats.
  platform::KeyboardEvent move(KeyNumber key, bool down, platform::Uptime at);

  /// Replaces the keys that are down, without an event.
  void adopt(const Keys& down) { down_ = down; }

  /// Releases the keys that are not in `down`: we missed their events.
  std::vector<platform::KeyboardEvent> releaseAllBut(const Keys& down, platform::Uptime at);

  /// Gives the keys new meanings. Returns an event if this changes the modifiers that are held.
  std::optional<platform::KeyboardEvent> setRoles(const KeyRoles& roles, platform::Uptime at);
  const KeyRole& role(KeyNumber key) const { return roles_[key]; }

 private:
  KeyRoles roles_{};
  Keys down_;
};

}  // namespace tavelo::linuxdesktop
