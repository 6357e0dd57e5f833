#include "platform/linux/x11/keyboard/KeyboardMap.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string_view>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>

#include "platform/KeyboardEvents.h"
#include "platform/linux/x11/keyboard/KeyNames.h"

namespace tavelo::linuxdesktop {
namespace {

namespace keyflags = platform::keyflags;
namespace keycodes = platform::keycodes;

/// The key code of V when the keymap does not name its keys. The same on all X servers on Linux.
constexpr KeyNumber usualPhysicalV = 55;
/// Keys that the platform has no code for get codes from here on.
constexpr std::int64_t otherKeyCodes = 1000;

struct FreeDescription {
  void operator()(XkbDescPtr description) const { XkbFreeKeyboard(description, XkbAllComponentsMask, True); }
};
using Description = std::unique_ptr<XkbDescRec, FreeDescription>;

Description readDescription(Display* display) {
  constexpr unsigned parts = XkbKeyTypesMask | XkbKeySymsMask | XkbModifierMapMask;
  Description description(XkbGetMap(display, parts, XkbUseCoreKbd));
  if (!description || description->map == nullptr) return nullptr;
  XkbGetNames(display, XkbKeyNamesMask | XkbKeyAliasesMask, description.get());
  return description;
}

/// Looks up keys in a description of the keyboard.
class Keys final {
 public:
  explicit Keys(XkbDescPtr description) : description_(*description) {}

  int first() const { return description_.min_key_code; }
  int last() const { return std::min<int>(description_.max_key_code, keyNumbers - 1); }
  int groupCount(int key) const { return XkbKeyNumGroups(&description_, key); }
  bool isModifier(int key) const {
    return description_.map->modmap != nullptr && description_.map->modmap[key] != 0;
  }

  /// The keysym of the key when no other key is held.
  KeySym symbol(int key, int group = 0) const {
    return group < groupCount(key) ? XkbKeySymEntry(&description_, key, 0, group) : KeySym{NoSymbol};
  }

  bool bears(int key, KeySym symbol) const {
    for (int group = 0; group < groupCount(key); ++group) {
      if (this->symbol(key, group) == symbol) return true;
    }
    return false;
  }

  std::string_view name(int key) const {
    const auto* names = description_.names;
    return names != nullptr && names->keys != nullptr ? textOf(names->keys[key].name) : std::string_view();
  }

  /// The key with that name or alias.
  std::optional<KeyNumber> named(std::string_view wanted) const {
    for (int key = first(); key <= last(); ++key) {
      if (name(key) == wanted) return static_cast<KeyNumber>(key);
    }
    const auto* names = description_.names;
    for (int i = 0; names != nullptr && names->key_aliases != nullptr && i < names->num_key_aliases; ++i) {
      const auto& alias = names->key_aliases[i];
      if (textOf(alias.alias) == wanted && textOf(alias.real) != wanted) return named(textOf(alias.real));
    }
    return std::nullopt;
  }

  /// Keymaps contain keys that no keyboard has, so that every modifier has a key.
  bool isImaginary(int key) const {
    constexpr std::array<std::string_view, 8> imaginary{"LVL3", "LVL5", "MDSW", "ALT",
                                                        "META", "SUPR", "HYPR", "I120"};
    return std::ranges::find(imaginary, name(key)) != imaginary.end();
  }

  std::vector<KeyNumber> bearing(KeySym symbol) const {
    std::vector<KeyNumber> found;
    for (int key = first(); key <= last(); ++key) {
      if (bears(key, symbol) && !isImaginary(key)) found.push_back(static_cast<KeyNumber>(key));
    }
    return found;
  }

  std::optional<KeyNumber> firstBearing(KeySym symbol) const {
    const auto found = bearing(symbol);
    return found.empty() ? std::nullopt : std::optional(found.front());
  }

 private:
  static std::string_view textOf(const char* name) { return {name, strnlen(name, XkbKeyNameLength)}; }

  XkbDescRec& description_;
};

HoldKey findHoldKey(const Keys& keys, const std::string& asked) {
  HoldKey result{.asked = asked, .keys = {}};
  KeySym symbol = asked.empty() ? KeySym{XK_Control_R} : XStringToKeysym(asked.c_str());
  std::optional<KeyNumber> key;
  if (symbol == NoSymbol && !(key = keys.named(asked))) {
    result.isKnown = false;
    symbol = XK_Control_R;
  }
  const bool usual = symbol == XK_Control_R;
  if (!usual) result.name = asked;
  if (symbol != NoSymbol) result.keys = keys.bearing(symbol);
  // A layout may give the right Control key another meaning, such as switching layouts.
  if (usual && result.keys.empty()) key = keys.named("RCTL");
  if (key) result.keys = {*key};
  if (!usual) {
    const KeySym meant = symbol == NoSymbol ? keys.symbol(*key) : symbol;
    result.vietnameseName = vietnameseKeyName(meant).value_or(asked);
  }
  return result;
}

/// The flag of a modifier key, 0 for other keys. Alt counts as Option, Super as Command.
std::uint64_t flagOf(KeySym symbol) {
  switch (symbol) {
    case XK_Shift_L:
    case XK_Shift_R:
      return keyflags::shift;
    case XK_Control_L:
    case XK_Control_R:
      return keyflags::control;
    case XK_Alt_L:
    case XK_Alt_R:
    case XK_Meta_L:
    case XK_Meta_R:
      return keyflags::option;
    case XK_Super_L:
    case XK_Super_R:
      return keyflags::command;
    default:
      return 0;
  }
}

/// Whether the key selects another level or group of the layout while it is down. The server may not count it
/// as a modifier: many layouts give the modifier of the right Alt key to an imaginary key.
bool isShift(KeySym symbol) {
  return symbol == XK_ISO_Level3_Shift || symbol == XK_ISO_Level5_Shift || symbol == XK_ISO_Group_Shift;
}

/// Whether pressing the key has a lasting effect.
bool isLock(KeySym symbol) {
  switch (symbol) {
    case XK_Caps_Lock:
    case XK_Shift_Lock:
    case XK_Num_Lock:
    case XK_Scroll_Lock:
      return true;
    default:
      // Locks, latches and layout switches; the shift keys lie below and between them.
      return symbol >= XK_ISO_Lock && symbol <= XK_ISO_Last_Group_Lock && !isShift(symbol);
  }
}

KeyRole roleOf(const Keys& keys, int key) {
  // The first level is enough: Alt shares its key with Meta, and Control with a layout switch, on other
  // levels.
  const KeySym symbol = keys.symbol(key);
  const auto flag = flagOf(symbol);
  const bool modifier = flag != 0 || isShift(symbol) || keys.isModifier(key);
  return {.keyCode = otherKeyCodes + key,
          .flag = flag,
          .isModifier = modifier,
          .altersOthers = modifier && !isLock(symbol)};
}

}  // namespace

std::optional<KeyboardMap::Place> KeyboardMap::v(int active) const {
  const auto found = std::ranges::find_if(vPlaces, [&](const Place& place) { return place.group == active; });
  if (found != vPlaces.end()) return *found;
  return vPlaces.empty() ? std::nullopt : std::optional(vPlaces.front());
}

std::optional<KeyboardMap> readKeyboardMap(_XDisplay* display, const std::string& holdKey) {
  const Description description = readDescription(display);
  if (!description) return std::nullopt;
  const Keys keys(description.get());
  KeyboardMap map;
  for (int key = keys.first(); key <= keys.last(); ++key) {
    map.roles[static_cast<std::size_t>(key)] = roleOf(keys, key);
    map.symbols[static_cast<std::size_t>(key)] = keys.symbol(key);
    map.groupCount = std::max(map.groupCount, keys.groupCount(key));
  }
  for (int group = 0; group < map.groupCount; ++group) {
    for (int key = keys.first(); key <= keys.last(); ++key) {
      if (keys.symbol(key, group) == XK_v) map.vPlaces.push_back({static_cast<KeyNumber>(key), group});
    }
  }
  map.physicalV = keys.named("AB04").value_or(usualPhysicalV);
  map.control = keys.firstBearing(XK_Control_L);
  map.shift = keys.firstBearing(XK_Shift_L);
  map.insert = keys.firstBearing(XK_Insert);
  map.roles[map.physicalV].keyCode = keycodes::v;
  map.holdKey = findHoldKey(keys, holdKey);
  for (const auto key : map.holdKey.keys) {
    auto& role = map.roles[key];
    role.keyCode = keycodes::function;
    role.flag = keyflags::secondaryFn;
    role.isModifier = true;
  }
  return map;
}

}  // namespace tavelo::linuxdesktop
