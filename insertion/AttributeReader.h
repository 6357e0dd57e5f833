#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Accessibility.h"

namespace tavelo {

/// Typed readers of accessibility attributes. A call that fails, a missing value and a value of another kind
/// are all the same: absent. A cheap view of the interface. Main thread only.
class AttributeReader final {
 public:
  explicit AttributeReader(platform::Accessibility& accessibility) : accessibility_(accessibility) {}

  /// Null when absent.
  platform::AXUIElementRef elementAttribute(const std::string& attribute,
                                            const platform::AXUIElementRef& element);

  std::optional<std::string> stringAttribute(const std::string& attribute,
                                             const platform::AXUIElementRef& element);

  /// In UTF-16 code units, as the application says it: possibly out of bounds.
  std::optional<platform::AXRange> rangeAttribute(const std::string& attribute,
                                                  const platform::AXUIElementRef& element);

  /// In the order given; empty when absent.
  std::vector<platform::AXUIElementRef> children(const platform::AXUIElementRef& element);

 private:
  template <class Value>
  std::optional<Value> attribute(const std::string& name, const platform::AXUIElementRef& element);

  platform::Accessibility& accessibility_;
};

}  // namespace tavelo
