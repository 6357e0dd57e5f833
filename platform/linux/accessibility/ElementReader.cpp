#include "platform/linux/accessibility/ElementReader.h"

#include <QDBusMessage>
#include <algorithm>

namespace tavelo::linuxdesktop {
namespace {

QDBusMessage childCountRequest(const ElementReference& element) {
  return atspi::propertyRequest(element, atspi::accessible, "ChildCount");
}

bool readHasChildren(const QDBusMessage& reply) {
  const int count = atspi::readIntegerProperty(reply).value_or(0);
  return count > 0 && count <= ElementReader::mostChildren;
}

}  // namespace

std::vector<ElementReader::Description> ElementReader::describe(
    const std::vector<ElementReference>& elements) {
  const std::size_t count = std::min(elements.size(), mostElements);
  std::vector<QDBusMessage> requests;
  requests.reserve(count * 3);
  for (std::size_t i = 0; i < count; ++i) {
    requests.push_back(atspi::request(elements[i], atspi::accessible, "GetState"));
    requests.push_back(atspi::request(elements[i], atspi::accessible, "GetRole"));
    requests.push_back(childCountRequest(elements[i]));
  }
  const auto replies = bus_.call(requests);
  std::vector<Description> result;
  result.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto states = atspi::readStates(replies[i * 3]);
    const auto role = atspi::readRole(replies[i * 3 + 1]);
    if (!states || !role) continue;
    const bool hasChildren =
        readHasChildren(replies[i * 3 + 2]) && !states->has(atspi::State::managesDescendants);
    result.push_back({elements[i], *role, *states, hasChildren});
  }
  return result;
}

std::vector<ElementReference> ElementReader::children(const std::vector<ElementReference>& elements) {
  std::vector<ElementReference> result;
  for (auto& each : childrenOfEach(elements)) result.insert(result.end(), each.begin(), each.end());
  return result;
}

std::vector<std::vector<ElementReference>> ElementReader::childrenOfEach(
    const std::vector<ElementReference>& elements) {
  std::vector<QDBusMessage> requests;
  requests.reserve(elements.size());
  for (const auto& element : elements)
    requests.push_back(atspi::request(element, atspi::accessible, "GetChildren"));
  std::vector<std::vector<ElementReference>> result;
  result.reserve(elements.size());
  for (const auto& reply : bus_.call(requests))
    result.push_back(atspi::readReferences(reply, static_cast<std::size_t>(mostChildren)));
  return result;
}

std::vector<ElementReader::Title> ElementReader::titles(const std::vector<ElementReference>& elements) {
  const std::size_t count = std::min(elements.size(), mostElements);
  std::vector<QDBusMessage> requests;
  requests.reserve(count * 2);
  for (std::size_t i = 0; i < count; ++i) {
    requests.push_back(atspi::propertyRequest(elements[i], atspi::accessible, "Name"));
    requests.push_back(childCountRequest(elements[i]));
  }
  const auto replies = bus_.call(requests);
  std::vector<Title> result(elements.size());
  for (std::size_t i = 0; i < count; ++i) {
    result[i].name = atspi::readStringProperty(replies[i * 2]).value_or(QString());
    result[i].hasChildren = readHasChildren(replies[i * 2 + 1]);
  }
  return result;
}

}  // namespace tavelo::linuxdesktop
