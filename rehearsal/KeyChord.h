#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/simulated/KeyNames.h"

namespace tavelo::rehearsal {

/// The keys of a chord such as "fn" or "control-option-v", in the order in which they go down; absent when
/// one is not known.
std::optional<std::vector<simulated::Key>> parseChord(std::string_view chord);

}  // namespace tavelo::rehearsal
