#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Pasteboard.h"

namespace tavelo::linuxdesktop {

/// Bytes that several hold and nobody changes: contents may be large.
using SharedBytes = std::shared_ptr<const std::string>;

/// What is, or was, on the clipboard: pasteboard types with their bytes.
struct SelectionContents {
  struct Representation {
    std::string type;
    SharedBytes bytes;
  };
  std::vector<Representation> representations;
  /// Clipboard histories are asked to leave it out.
  bool momentary = false;

  /// Puts `added` behind what is there; a type that is there already stays as it is.
  void add(std::string type, std::string bytes);
};

/// One target as others may ask for it.
struct OfferedTarget {
  std::string name;
  /// The type with which it is answered.
  std::string type;
  SharedBytes bytes;
};

/// The targets of `contents`: each type under its own name. Plain text that comes under one name goes under
/// all the usual ones, and TEXT stands for the best plain text there is.
std::vector<OfferedTarget> offeredTargets(const SelectionContents& contents);

}  // namespace tavelo::linuxdesktop
