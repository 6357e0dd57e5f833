#include "platform/UnreadPaste.h"

namespace tavelo::platform {
namespace {

/// Later than the menu rescue, and before the user's contents come back.
constexpr Seconds patience{3.5};

}  // namespace

void UnreadPaste::expect() {
  mainQueue_.asyncAfter(patience, lifetime_.guard([this, paste = ++pastes_] {
    if (paste == pastes_ && pasteboard_.fetchSincePaste() == PasteboardFetch::no && onUnread) onUnread();
  }));
}

}  // namespace tavelo::platform
