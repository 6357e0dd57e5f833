#include "platform/linux/accessibility/ElementReader.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "platform/linux/accessibility/RequestBurst.h"

namespace tavelo::linuxdesktop {
namespace {

/// As many elements as are asked in one burst. A larger burst would go on answering, and keep us busy, long
/// after the turn has used up its time.
constexpr std::size_t burstSize = 100;

/// Calls `ask` with the elements up to `ElementReader::mostElements`, some at a time, while the turn has
/// time.
template <class Ask>
void forSomeAtATime(const std::vector<ElementReference>& elements, const TurnBudget& budget, const Ask& ask) {
  auto left = std::span(elements).first(std::min(elements.size(), ElementReader::mostElements));
  while (!left.empty() && !budget.isUsedUp()) {
    const auto next = left.first(std::min(left.size(), burstSize));
    ask(next);
    left = left.subspan(next.size());
  }
}

RequestBurst::Reply<int> addChildCount(RequestBurst& burst, const ElementReference& element) {
  return burst.add(atspi::propertyRequest(element, atspi::accessible, "ChildCount"),
                   atspi::readIntegerProperty);
}

bool hasChildren(const Result<int>& childCount) {
  return childCount && *childCount > 0 && *childCount <= static_cast<int>(ElementReader::mostChildren);
}

/// A text document of an office program manages its paragraphs, but has only those that are on the screen.
bool isDocument(atspi::Role role) {
  return role == atspi::Role::documentFrame || role == atspi::Role::documentText ||
         role == atspi::Role::documentEmail;
}

}  // namespace

std::vector<ElementReader::Description> ElementReader::describe(
    const std::vector<ElementReference>& elements) {
  std::vector<Description> result;
  forSomeAtATime(elements, bus_.budget(), [&](auto some) {
    const auto described = describeSome(some);
    result.insert(result.end(), described.begin(), described.end());
  });
  return result;
}

std::vector<ElementReader::Description> ElementReader::describeSome(
    std::span<const ElementReference> elements) {
  struct Replies {
    RequestBurst::Reply<atspi::States> states;
    RequestBurst::Reply<atspi::Role> role;
    RequestBurst::Reply<int> childCount;
  };
  RequestBurst burst(bus_);
  std::vector<Replies> replies;
  for (const auto& element : elements) {
    replies.push_back({burst.add(atspi::request(element, atspi::accessible, "GetState"), atspi::readStates),
                       burst.add(atspi::request(element, atspi::accessible, "GetRole"), atspi::readRole),
                       addChildCount(burst, element)});
  }
  burst.send();
  std::vector<Description> result;
  for (std::size_t i = 0; i < replies.size(); ++i) {
    const auto states = burst.read(replies[i].states);
    const auto role = burst.read(replies[i].role);
    if (!states || !role) continue;
    const bool isParent = hasChildren(burst.read(replies[i].childCount)) &&
                          (!states->has(atspi::State::managesDescendants) || isDocument(*role));
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
  std::vector<std::vector<ElementReference>> result;
  std::size_t room = mostElements;
  forSomeAtATime(elements, bus_.budget(), [&](auto some) {
    if (room == 0) return;
    std::vector<QDBusMessage> requests;
    for (const auto& element : some)
      requests.push_back(atspi::request(element, atspi::accessible, "GetChildren"));
    for (const auto& reply : bus_.call(requests)) {
      result.push_back(atspi::readReferences(reply, std::min(room, mostChildren)).valueOr({}));
      room -= result.back().size();
    }
  });
  result.resize(elements.size());
  return result;
}

std::vector<ElementReader::Title> ElementReader::titles(const std::vector<ElementReference>& elements) {
  std::vector<Title> result;
  forSomeAtATime(elements, bus_.budget(), [&](auto some) {
    const auto read = titlesOfSome(some);
    result.insert(result.end(), read.begin(), read.end());
  });
  result.resize(elements.size());
  return result;
}

std::vector<ElementReader::Title> ElementReader::titlesOfSome(std::span<const ElementReference> elements) {
  struct Replies {
    RequestBurst::Reply<QString> name;
    RequestBurst::Reply<int> childCount;
  };
  RequestBurst burst(bus_);
  std::vector<Replies> replies;
  for (const auto& element : elements) {
    replies.push_back(
        {burst.add(atspi::propertyRequest(element, atspi::accessible, "Name"), atspi::readStringProperty),
         addChildCount(burst, element)});
  }
  burst.send();
  std::vector<Title> result;
  for (const auto& each : replies)
    result.push_back({burst.read(each.name).valueOr({}), hasChildren(burst.read(each.childCount))});
  return result;
}

}  // namespace tavelo::linuxdesktop
