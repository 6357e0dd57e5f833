#pragma once

#include <memory>

namespace tavelo {

/// Puts the platform of a Mac together, and is the current platform for as long as it lives. Main thread.
class MacWiring final {
 public:
  MacWiring();
  ~MacWiring();
  MacWiring(const MacWiring&) = delete;
  MacWiring& operator=(const MacWiring&) = delete;

 private:
  struct Backends;
  std::unique_ptr<Backends> backends_;
};

}  // namespace tavelo
