#include "platform/Platform.h"

#include <cstdio>
#include <cstdlib>

namespace tavelo::platform {
namespace {

const Platform* installed = nullptr;

[[noreturn]] void stop(const char* why) {
  std::fprintf(stderr, "tavelo: %s\n", why);
  std::abort();
}

}  // namespace

const Platform& current() {
  if (installed == nullptr) stop("no platform is installed");
  return *installed;
}

Installation::Installation(const Platform& platform) {
  if (installed != nullptr) stop("a platform is already installed");
  installed = &platform;
}

Installation::~Installation() { installed = nullptr; }

}  // namespace tavelo::platform
