#pragma once

#include <QString>
#include <cstddef>
#include <span>
#include <vector>

#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {

/// Reads many elements in one round trip. Main thread.
///
/// One call handles and returns at most `mostElements`, whatever an application claims, and stops when the
/// turn has used up its time. An element with more than `mostChildren` children counts as childless: asking a
/// spreadsheet for its cells would hang it for good.
class ElementReader final {
 public:
  static constexpr std::size_t mostElements = 2000;
  static constexpr std::size_t mostChildren = 1000;

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

  /// The same, one list for each element, in order; empty where the limits did not allow more.
  std::vector<std::vector<ElementReference>> childrenOfEach(const std::vector<ElementReference>& elements);

  struct Title {
    QString name;
    bool hasChildren = false;
  };
  /// One for each element, in order; empty for an element that was not asked or did not answer.
  std::vector<Title> titles(const std::vector<ElementReference>& elements);

 private:
  std::vector<Description> describeSome(std::span<const ElementReference> elements);
  std::vector<Title> titlesOfSome(std::span<const ElementReference> elements);

  AccessibilityBus& bus_;
};

}  // namespace tavelo::linuxdesktop
