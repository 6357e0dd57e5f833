#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/Pasteboard.h"

namespace tavelo::linuxdesktop {

/// Shared, because contents may be large.
using SharedBytes = std::shared_ptr<const std::string>;

/// What is, or was, on the clipboard: pasteboard types with their bytes.
struct SelectionContents {
  struct Representation {
    std::string type;
    SharedBytes bytes;
  };
  std::vector<Representation> representations;
  /// Clipboard histories are asked to ignore the contents.
  bool momentary = false;

  /// Adds a representation at the end, unless there is one of that type already.
  void add(std::string type, std::string bytes);
};

/// A target that other clients may ask for.
struct OfferedTarget {
  std::string name;
  /// The type of the answer.
  std::string type;
  SharedBytes bytes;
  /// Whether it is about the contents and no part of them.
  bool isHint = false;
};

/// The targets of `contents`: each type under its own name. Plain text that has one name only is offered
/// under all the usual names, and TEXT is the best plain text there is.
std::vector<OfferedTarget> offeredTargets(const SelectionContents& contents);

/// Which targets of a selection owner to save, and in which order to fetch them. Each step is a list of
/// alternatives, as positions in `targets`; the first one that the owner delivers is enough.
///
/// Targets that hold no contents are left out, and all pictures are one step. What a user would miss first
/// comes first: plain text, then markup and file names, then the picture, then the rest.
std::vector<std::vector<std::size_t>> fetchingSteps(const std::vector<std::string>& targets);

/// The target of a pasteboard type, and the reverse.
std::string targetOf(const std::string& pasteboardType);
std::string pasteboardTypeOf(const std::string& target);

}  // namespace tavelo::linuxdesktop
