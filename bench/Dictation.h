#pragma once

#include <cstddef>
#include <string>

namespace tavelo::bench {

/// About `length` bytes of dictated Vietnamese as a recogniser delivers it: lower case, punctuation spoken,
/// here and there a tab or more than one space. Always the same for the same length.
std::string dictation(std::size_t length);

}  // namespace tavelo::bench
