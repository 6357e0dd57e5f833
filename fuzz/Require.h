#pragma once

#include <cstdio>
#include <cstdlib>

namespace tavelo::fuzz {

/// Ends the run with a crash, which is how a fuzz target reports a finding.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

}  // namespace tavelo::fuzz
