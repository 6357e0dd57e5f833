#pragma once

#include <memory>

#include "platform/Names.h"

namespace tavelo::macos {

/// The platform of a Mac: the current platform for as long as this object lives. One per process; made and
/// destroyed on the main thread.
///
/// When the application object says that the program ends, the user's clipboard is given back: ending it
/// destroys nothing.
class MacDesktop final {
 public:
  explicit MacDesktop(platform::Names names = {});
  ~MacDesktop();
  MacDesktop(const MacDesktop&) = delete;
  MacDesktop& operator=(const MacDesktop&) = delete;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tavelo::macos
