#include "platform/linux/x11/keyboard/PasteChord.h"

#include <algorithm>
#include <iterator>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace tavelo::linuxdesktop {
namespace {

/// The keys of one chord, and the layout group in which they mean it.
struct Chord {
  KeyNumber key = 0;
  int group = 0;
  std::vector<KeyNumber> modifiers;
};

std::optional<Chord> chordFor(PasteKeys keys, const KeyboardMap& map, int activeGroup) {
  if (keys == PasteKeys::none || !map.control) return std::nullopt;
  const auto v = map.v(activeGroup);
  // No layout has Latin letters: this chord needs none, and pastes the same in all but terminals.
  if (!v && keys == PasteKeys::controlV && map.insert && map.shift)
    return Chord{.key = *map.insert, .group = activeGroup, .modifiers = {*map.shift}};
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

bool contains(const std::vector<KeyNumber>& keys, KeyNumber key) {
  return std::ranges::find(keys, key) != keys.end();
}

}  // namespace

PasteChord::PasteChord(XlibConnection& connection, RawKeySource& source, const HeldKeys& held)
    : connection_(connection), source_(source), held_(held) {}

void PasteChord::press(PasteKeys keys, const KeyboardMap& map) {
  source_.synchronise();
  XkbStateRec state{};
  if (!source_.canWatch() || XkbGetState(connection_.display(), XkbUseCoreKbd, &state) != Success) return;
  const auto chord = chordFor(keys, map, state.group);
  if (!chord) return;

  std::vector<KeyNumber> toPress;
  std::ranges::copy_if(chord->modifiers, std::back_inserter(toPress),
                       [&](KeyNumber key) { return !held_.isDown(key); });
  const auto toRelease = heldKeysToRelease(chord->modifiers, chord->key);

  // The chord's own modifiers first: letting go of Super or Alt alone would open a menu.
  for (const auto key : toPress) move(key, true);
  for (const auto key : toRelease) move(key, false);
  // Modifiers may have switched the layout; then, and where v is in another group, this switches it back.
  if (map.groupCount > 1)
    XkbLockGroup(connection_.display(), XkbUseCoreKbd, static_cast<unsigned>(chord->group));
  if (held_.isDown(chord->key)) move(chord->key, false);
  move(chord->key, true);
  move(chord->key, false);
  putBack(toRelease);
  std::for_each(toPress.rbegin(), toPress.rend(), [this](KeyNumber key) { move(key, false); });
  if (map.groupCount > 1) XkbLockGroup(connection_.display(), XkbUseCoreKbd, state.locked_group);
  source_.synchronise();
}

std::vector<KeyNumber> PasteChord::heldKeysToRelease(const std::vector<KeyNumber>& needed,
                                                     KeyNumber key) const {
  std::vector<KeyNumber> keys;
  for (std::size_t each = 0; each < keyNumbers; ++each) {
    const auto number = static_cast<KeyNumber>(each);
    if (held_.isDown(number) && held_.role(number).altersOthers && !contains(needed, number) && number != key)
      keys.push_back(number);
  }
  return keys;
}

void PasteChord::putBack(const std::vector<KeyNumber>& keys) {
  if (keys.empty()) return;
  source_.synchronise();
  for (const auto key : keys) {
    if (!held_.isDown(key)) continue;
    move(key, true);
    pressedAgain_.set(key);
  }
  // Let go by the user before we pressed it: nobody else would let it go any more.
  source_.synchronise();
}

bool PasteChord::isOwn(const RawKeySource::Move& moved) {
  // What a later request has overtaken never came: the server saw no change in it.
  std::erase_if(posted_, [&](const Posted& each) { return each.request < moved.request; });
  const auto found = std::ranges::find_if(posted_, [&](const Posted& each) {
    return each.request == moved.request && each.key == moved.key && each.down == moved.down;
  });
  if (found != posted_.end()) {
    posted_.erase(found);
    return true;
  }
  // The user's release frees the user's keyboard; the key that we pressed belongs to another one.
  if (!moved.down && pressedAgain_.test(moved.key)) {
    pressedAgain_.reset(moved.key);
    move(moved.key, false);
    XFlush(connection_.display());
  }
  return false;
}

void PasteChord::move(KeyNumber key, bool down) {
  XTestFakeKeyEvent(connection_.display(), key, down ? True : False, CurrentTime);
  // Behind it: the first use of the extension makes a request more.
  posted_.push_back({.key = key, .down = down, .request = NextRequest(connection_.display()) - 1});
}

}  // namespace tavelo::linuxdesktop
