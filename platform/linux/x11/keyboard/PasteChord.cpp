#include "platform/linux/x11/keyboard/PasteChord.h"

#include <algorithm>
#include <iterator>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

namespace tavelo::linuxdesktop {
namespace {

/// The keys of a chord, and the layout group in which they paste.
struct Chord {
  KeyNumber key = 0;
  int group = 0;
  std::vector<KeyNumber> modifiers;
};

std::optional<Chord> chordFor(PasteKeys keys, const KeyboardMap& map, int activeGroup) {
  const auto v = map.v(activeGroup);
  // No layout has Latin letters. Shift-Insert needs none, and pastes the same everywhere but in terminals.
  if (!v && keys == PasteKeys::controlV && map.insert && map.shift) keys = PasteKeys::shiftInsert;
  if (keys == PasteKeys::shiftInsert) {
    if (!map.insert || !map.shift) return std::nullopt;
    return Chord{.key = *map.insert, .group = activeGroup, .modifiers = {*map.shift}};
  }
  if (keys == PasteKeys::none || !map.control) return std::nullopt;
  Chord chord{.key = map.physicalV, .group = activeGroup, .modifiers = {*map.control}};
  if (v) {
    chord.key = v->key;
    chord.group = v->group;
  }
  if (keys == PasteKeys::controlShiftV) {
    if (!map.shift) return std::nullopt;
    chord.modifiers.push_back(*map.shift);
  }
  return chord;
}

/// The keys that the user holds and that would make the chord mean something else.
std::vector<KeyNumber> disturbing(const HeldKeys& held, const Chord& chord) {
  std::vector<KeyNumber> keys;
  for (std::size_t each = 0; each < keyNumbers; ++each) {
    const auto key = static_cast<KeyNumber>(each);
    const bool needed = key == chord.key || std::ranges::find(chord.modifiers, key) != chord.modifiers.end();
    if (held.isDown(key) && held.role(key).altersOthers && !needed) keys.push_back(key);
  }
  return keys;
}

}  // namespace

void PasteChord::press(PasteKeys keys, const KeyboardMap& map, const HeldKeys& held) {
  XkbStateRec state{};
  if (!connection_.isAlive() || XkbGetState(connection_.display(), XkbUseCoreKbd, &state) != Success) return;
  const auto chord = chordFor(keys, map, state.group);
  if (!chord) return;
  std::ranges::copy_if(chord->modifiers, std::back_inserter(pressed_),
                       [&](KeyNumber key) { return !held.isDown(key); });
  released_ = disturbing(held, *chord);

  // The chord's own modifiers first: releasing Super or Alt alone would open a menu.
  for (const auto key : pressed_) move(key, true);
  for (const auto key : released_) move(key, false);
  if (map.groupCount > 1) {
    // The modifiers may have switched the layout, and v may be in another group than the active one.
    lockGroup(chord->group);
    usersGroup_ = state.locked_group;
  }
  if (held.isDown(chord->key)) move(chord->key, false);
  move(chord->key, true);
  move(chord->key, false);
}

void PasteChord::putBack(const HeldKeys& held) {
  for (const auto key : released_) {
    if (!held.isDown(key)) continue;
    move(key, true);
    pressedAgain_.set(key);
  }
}

void PasteChord::end() {
  std::for_each(pressed_.rbegin(), pressed_.rend(), [this](KeyNumber key) { move(key, false); });
  if (usersGroup_) lockGroup(*usersGroup_);
  pressed_.clear();
  released_.clear();
  usersGroup_.reset();
}

bool PasteChord::isOwn(const RawKeySource::Event& moved) {
  // The server reported nothing for earlier requests: they changed nothing.
  std::erase_if(posted_, [&](const Posted& each) { return each.request < moved.request; });
  const auto found = std::ranges::find_if(posted_, [&](const Posted& each) {
    return each.request == moved.request && each.key == moved.key && each.down == moved.down;
  });
  if (found == posted_.end()) return false;
  posted_.erase(found);
  return true;
}

void PasteChord::userReleased(KeyNumber key) {
  if (!pressedAgain_.test(key)) return;
  pressedAgain_.reset(key);
  move(key, false);
}

void PasteChord::move(KeyNumber key, bool down) {
  posted_.push_back({.key = key, .down = down, .request = connection_.moveKey(key, down)});
}

void PasteChord::lockGroup(int group) {
  XkbLockGroup(connection_.display(), XkbUseCoreKbd, static_cast<unsigned>(group));
}

}  // namespace tavelo::linuxdesktop
