#pragma once

#include <cstddef>
#include <string>

namespace tavelo::bench {

/// About `length` bytes of dictated Vietnamese as a recogniser delivers it: lower case, with spoken
/// punctuation and a few tabs and double spaces. The same length always gives the same text.
std::string dictation(std::size_t length);

}  // namespace tavelo::bench
