#include "platform/linux/x11/keyboard/HeldKeys.h"

namespace tavelo::linuxdesktop {

using platform::KeyboardEvent;
using platform::KeyEventType;

std::uint64_t HeldKeys::flags() const {
  std::uint64_t flags = 0;
  for (std::size_t key = 0; key < keyNumbers; ++key) {
    if (down_.test(key)) flags |= roles_[key].flag;
  }
  return flags;
}

bool HeldKeys::wouldInterruptHold(KeyNumber key) const {
  return (flags() & platform::keyflags::secondaryFn) != 0 && !roles_[key].isModifier && !isDown(key);
}

KeyboardEvent HeldKeys::move(KeyNumber key, bool down, platform::Uptime at) {
  down_.set(key, down);
  const KeyRole& role = roles_[key];
  const auto type = down ? KeyEventType::keyDown : KeyEventType::keyUp;
  return {.type = role.isModifier ? KeyEventType::flagsChanged : type,
          .keyCode = role.keyCode,
          .flags = flags(),
          .timestamp = at};
}

std::vector<KeyboardEvent> HeldKeys::releaseAllBut(const Keys& down, platform::Uptime at) {
  std::vector<KeyboardEvent> events;
  for (std::size_t key = 0; key < keyNumbers; ++key) {
    if (down_.test(key) && !down.test(key)) events.push_back(move(static_cast<KeyNumber>(key), false, at));
  }
  return events;
}

std::optional<KeyboardEvent> HeldKeys::setRoles(const KeyRoles& roles, platform::Uptime at) {
  const auto before = flags();
  roles_ = roles;
  const auto after = flags();
  if (before == after) return std::nullopt;
  const bool functionMoved = ((before ^ after) & platform::keyflags::secondaryFn) != 0;
  return KeyboardEvent{.type = KeyEventType::flagsChanged,
                       .keyCode = functionMoved ? platform::keycodes::function : 0,
                       .flags = after,
                       .timestamp = at};
}

}  // namespace tavelo::linuxdesktop
