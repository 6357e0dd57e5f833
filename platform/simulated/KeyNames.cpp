#include "platform/simulated/KeyNames.h"

namespace tavelo::simulated {

std::uint64_t flagOf(Key key) {
  switch (key) {
    case Key::command:
      return platform::keyflags::command;
    case Key::shift:
      return platform::keyflags::shift;
    case Key::option:
      return platform::keyflags::option;
    case Key::control:
      return platform::keyflags::control;
    case Key::function:
      return platform::keyflags::secondaryFn;
    default:
      return 0;
  }
}

std::string nameOf(Key key) {
  switch (key) {
    case Key::a:
      return "A";
    case Key::c:
      return "C";
    case Key::v:
      return "V";
    case Key::returnKey:
      return "Return";
    case Key::space:
      return "Space";
    case Key::command:
      return "Command";
    case Key::shift:
      return "Shift";
    case Key::option:
      return "Option";
    case Key::control:
      return "Control";
    case Key::function:
      return "Fn";
  }
  return "key " + std::to_string(static_cast<std::int64_t>(key));
}

std::string chordName(Key key, std::uint64_t flags) {
  std::string name;
  if (flagOf(key) == 0) {
    for (const Key modifier : {Key::function, Key::control, Key::option, Key::shift, Key::command}) {
      if ((flags & flagOf(modifier)) != 0) name += nameOf(modifier) + "-";
    }
  }
  return name + nameOf(key);
}

}  // namespace tavelo::simulated
