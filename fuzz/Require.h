#pragma once

#include <cstdio>
#include <cstdlib>

namespace tavelo::fuzz {

/// Crashes unless `holds`; fuzz targets report findings by crashing.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

}  // namespace tavelo::fuzz
