#pragma once

#include "platform/KeyFacts.h"

namespace tavelo::linuxdesktop {

/// What the key that bears the keysym does alone. Any thread.
platform::KeyUse useOfKey(unsigned long symbol);

/// A key with that keysym; `unknown` for no keysym. Any thread.
platform::KeyFacts keyFacts(unsigned long symbol);

}  // namespace tavelo::linuxdesktop
