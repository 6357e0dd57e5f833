#include "platform/linux/accessibility/ElementReader.h"

#include <algorithm>

#include "platform/linux/accessibility/RequestBurst.h"

namespace tavelo::linuxdesktop {
namespace {

RequestBurst::Reply<int> addChildCount(RequestBurst& burst, const ElementReference& element) {
  return burst.add(atspi::propertyRequest(element, atspi::accessible, "ChildCount"),
                   atspi::readIntegerProperty);
}

bool hasChildren(const Result<int>& childCount) {
  return childCount && *childCount > 0 && *childCount <= static_cast<int>(atspi::mostReferences);
}

}  // namespace

std::vector<ElementReader::Description> ElementReader::describe(
    const std::vector<ElementReference>& elements) {
  struct Replies {
    RequestBurst::Reply<atspi::States> states;
    RequestBurst::Reply<atspi::Role> role;
    RequestBurst::Reply<int> childCount;
  };
  RequestBurst burst(bus_);
  std::vector<Replies> replies;
  for (std::size_t i = 0; i < std::min(elements.size(), mostElements); ++i) {
    replies.push_back(
        {burst.add(atspi::request(elements[i], atspi::accessible, "GetState"), atspi::readStates),
         burst.add(atspi::request(elements[i], atspi::accessible, "GetRole"), atspi::readRole),
         addChildCount(burst, elements[i])});
  }
  burst.send();
  std::vector<Description> result;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    const auto states = burst.read(replies[i].states);
    const auto role = burst.read(replies[i].role);
    if (!states || !role) continue;
    const bool isParent =
        hasChildren(burst.read(replies[i].childCount)) && !states->has(atspi::State::managesDescendants);
    result.push_back({elements[i], *role, *states, isParent});
  }
  return result;
}

std::vector<ElementReference> ElementReader::children(const std::vector<ElementReference>& elements) {
  std::vector<ElementReference> result;
  for (const auto& each : childrenOfEach(elements)) result.insert(result.end(), each.begin(), each.end());
  return result;
}

std::vector<std::vector<ElementReference>> ElementReader::childrenOfEach(
    const std::vector<ElementReference>& elements) {
  std::vector<QDBusMessage> requests;
  for (const auto& element : elements)
    requests.push_back(atspi::request(element, atspi::accessible, "GetChildren"));
  std::vector<std::vector<ElementReference>> result;
  for (const auto& reply : bus_.call(requests)) result.push_back(atspi::readReferences(reply).valueOr({}));
  return result;
}

std::vector<ElementReader::Title> ElementReader::titles(const std::vector<ElementReference>& elements) {
  struct Replies {
    RequestBurst::Reply<QString> name;
    RequestBurst::Reply<int> childCount;
  };
  RequestBurst burst(bus_);
  std::vector<Replies> replies;
  for (std::size_t i = 0; i < std::min(elements.size(), mostElements); ++i) {
    replies.push_back(
        {burst.add(atspi::propertyRequest(elements[i], atspi::accessible, "Name"), atspi::readStringProperty),
         addChildCount(burst, elements[i])});
  }
  burst.send();
  std::vector<Title> result;
  for (const auto& each : replies)
    result.push_back({burst.read(each.name).valueOr({}), hasChildren(burst.read(each.childCount))});
  result.resize(elements.size());
  return result;
}

}  // namespace tavelo::linuxdesktop
