#include "insertion/AttributeReader.h"

#include <utility>
#include <variant>

namespace tavelo {

template <class Value>
std::optional<Value> AttributeReader::attribute(const std::string& name,
                                                const platform::AXUIElementRef& element) {
  platform::AXValue value;
  if (accessibility_.copyAttributeValue(element, name, value) != platform::AXError::success)
    return std::nullopt;
  if (auto* wanted = std::get_if<Value>(&value)) return std::move(*wanted);
  return std::nullopt;
}

platform::AXUIElementRef AttributeReader::elementAttribute(const std::string& attributeName,
                                                           const platform::AXUIElementRef& element) {
  return attribute<platform::AXUIElementRef>(attributeName, element).value_or(nullptr);
}

std::optional<std::string> AttributeReader::stringAttribute(const std::string& attributeName,
                                                            const platform::AXUIElementRef& element) {
  return attribute<std::string>(attributeName, element);
}

std::optional<platform::AXRange> AttributeReader::rangeAttribute(const std::string& attributeName,
                                                                 const platform::AXUIElementRef& element) {
  return attribute<platform::AXRange>(attributeName, element);
}

std::vector<platform::AXUIElementRef> AttributeReader::children(const platform::AXUIElementRef& element) {
  return attribute<std::vector<platform::AXUIElementRef>>(platform::ax::children, element)
      .value_or(std::vector<platform::AXUIElementRef>{});
}

}  // namespace tavelo
