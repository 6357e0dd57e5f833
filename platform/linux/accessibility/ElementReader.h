#pragma once

#include <QString>
#include <vector>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {

/// Reads many elements in one round trip. Main thread.
///
/// One call handles at most `mostElements`, whatever an application claims. An element with more than
/// `atspi::mostReferences` children counts as childless: asking a spreadsheet for its cells would hang it for
/// good.
class ElementReader final {
 public:
  static constexpr std::size_t mostElements = 2000;

  struct Description {
    ElementReference element;
    atspi::Role role = atspi::Role::unknown;
    atspi::States states;
    bool hasChildren = false;
  };

  explicit ElementReader(AccessibilityBus& bus) : bus_(bus) {}

  /// In the order of `elements`, without those that did not answer.
  std::vector<Description> describe(const std::vector<ElementReference>& elements);

  /// The children of all `elements`, in order. Ask only applications, and elements whose description says
  /// that they have children.
  std::vector<ElementReference> children(const std::vector<ElementReference>& elements);

  /// The same, one list for each element, in order.
  std::vector<std::vector<ElementReference>> childrenOfEach(const std::vector<ElementReference>& elements);

  struct Title {
    QString name;
    bool hasChildren = false;
  };
  /// One for each element, in order; empty for an element that did not answer.
  std::vector<Title> titles(const std::vector<ElementReference>& elements);

 private:
  AccessibilityBus& bus_;
};

}  // namespace tavelo::linuxdesktop
