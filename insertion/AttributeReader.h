#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Accessibility.h"

namespace tavelo {

/// Typed readers of accessibility attributes. A value is absent when the call fails, when the element has no
/// such value, or when the value has another type. Main thread only.
class AttributeReader final {
 public:
  /// `accessibility` must outlive the reader.
  explicit AttributeReader(platform::Accessibility& accessibility) : accessibility_(accessibility) {}

  /// Null when absent.
  platform::AXUIElementRef elementAttribute(const std::string& name,
                                            const platform::AXUIElementRef& element) {
    return attribute<platform::AXUIElementRef>(name, element).value_or(nullptr);
  }

  std::optional<std::string> stringAttribute(const std::string& name,
                                             const platform::AXUIElementRef& element) {
    return attribute<std::string>(name, element);
  }

  /// In UTF-16 code units, as the application reports it: it may be out of bounds.
  std::optional<platform::AXRange> rangeAttribute(const std::string& name,
                                                  const platform::AXUIElementRef& element) {
    return attribute<platform::AXRange>(name, element);
  }

  /// In the order the application gives; empty when absent.
  std::vector<platform::AXUIElementRef> children(const platform::AXUIElementRef& element) {
    using Elements = std::vector<platform::AXUIElementRef>;
    return attribute<Elements>(platform::ax::children, element).value_or(Elements{});
  }

 private:
  template <class Value>
  std::optional<Value> attribute(const std::string& name, const platform::AXUIElementRef& element) {
    platform::AXValue value;
    if (accessibility_.copyAttributeValue(element, name, value) != platform::AXError::success)
      return std::nullopt;
    if (auto* wanted = std::get_if<Value>(&value)) return std::move(*wanted);
    return std::nullopt;
  }

  platform::Accessibility& accessibility_;
};

}  // namespace tavelo
