#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tavelo::linuxdesktop {

/// Which of a selection owner's targets are saved, and in which order they are fetched. Each step is a list
/// of alternatives, positions in `targets`, of which the first that the owner delivers is enough.
///
/// Requests to the owner and conversions are left out, and all pictures are one step. What a user misses
/// first comes first: plain text, then what is marked up or names files, then the picture, then the rest.
std::vector<std::vector<std::size_t>> fetchingSteps(const std::vector<std::string>& targets);

/// The names under which plain text is offered, the best first.
const std::vector<std::string>& plainTextTargets();

/// The target of a pasteboard type, and back.
std::string targetOf(const std::string& pasteboardType);
std::string pasteboardTypeOf(const std::string& target);

}  // namespace tavelo::linuxdesktop
