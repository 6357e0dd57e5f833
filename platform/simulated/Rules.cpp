#include "platform/simulated/Rules.h"

#include <cstdio>
#include <cstdlib>

namespace tavelo::simulated::rules {

void broken(const std::string& what) {
  std::fprintf(stderr, "simulated desktop: %s\n", what.c_str());
  std::abort();
}

void requireMainThread(const platform::MainQueue& loop, const char* operation) {
  if (!loop.isMainThread()) broken(std::string{operation} + " off the main thread");
}

}  // namespace tavelo::simulated::rules
