#include "platform/simulated/WorldEvent.h"

namespace tavelo::simulated {

const char* nameOf(WorldEvent::Kind kind) {
  switch (kind) {
    case WorldEvent::Kind::key:
      return "key";
    case WorldEvent::Kind::keystroke:
      return "keystroke";
    case WorldEvent::Kind::pasteboard:
      return "pasteboard";
    case WorldEvent::Kind::accessibility:
      return "accessibility";
    case WorldEvent::Kind::menu:
      return "menu";
    case WorldEvent::Kind::text:
      return "text";
    case WorldEvent::Kind::focus:
      return "focus";
    case WorldEvent::Kind::application:
      return "application";
    case WorldEvent::Kind::permission:
      return "permission";
    case WorldEvent::Kind::microphone:
      return "microphone";
    case WorldEvent::Kind::speech:
      return "speech";
    case WorldEvent::Kind::file:
      return "file";
    case WorldEvent::Kind::notification:
      return "notification";
    case WorldEvent::Kind::url:
      return "url";
  }
  return "?";
}

}  // namespace tavelo::simulated
