#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/accessibility/ElementReference.h"

namespace tavelo::linuxdesktop {

/// Reads elements many at a time, in one round trip. Main thread.
///
/// Whatever an application claims, one call handles at most `mostElements`; an element with more than
/// `mostChildren` children counts as one without: asking a spreadsheet for its cells would stop it for good.
class ElementReader final {
 public:
  static constexpr std::size_t mostElements = 2000;
  static constexpr int mostChildren = 1000;

  struct Description {
    ElementReference element;
    atspi::Role role = atspi::Role::unknown;
    atspi::States states;
    bool hasChildren = false;
  };

  explicit ElementReader(AccessibilityBus& bus) : bus_(bus) {}

  /// In the order given; without the elements that did not answer.
  std::vector<Description> describe(const std::vector<ElementReference>& elements);

  /// The children of all `elements`, in order. To be asked of elements that are described as having some, and
  /// of applications.
  std::vector<ElementReference> children(const std::vector<ElementReference>& elements);

  /// The children of each, in the order given.
  std::vector<std::vector<ElementReference>> childrenOfEach(const std::vector<ElementReference>& elements);

  /// What an element is called, and whether it has children.
  struct Title {
    QString name;
    bool hasChildren = false;
  };
  /// One for each element, in their order; empty for one that did not answer.
  std::vector<Title> titles(const std::vector<ElementReference>& elements);

 private:
  AccessibilityBus& bus_;
};

}  // namespace tavelo::linuxdesktop
