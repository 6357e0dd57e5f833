#pragma once

#include <optional>
#include <string>

#include "rehearsal/Story.h"

namespace tavelo::rehearsal {

/// What a story speaks of without having introduced it, in one line: an application, a field or a key that
/// there is not. Absent when all is well.
std::optional<std::string> findLooseEnd(const Story& story);

}  // namespace tavelo::rehearsal
