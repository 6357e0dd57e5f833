#include "app/MacWiring.h"

#include "platform/Names.h"
#include "platform/macos/MacDesktop.h"

namespace tavelo {

struct MacWiring::Backends {
  // The names of a Mac's keys and system are the defaults.
  macos::MacDesktop desktop{platform::Names{}};
};

MacWiring::MacWiring() : backends_(std::make_unique<Backends>()) {}

MacWiring::~MacWiring() = default;

}  // namespace tavelo
