#include "platform/linux/accessibility/MenuAccess.h"

#include <QDBusMessage>
#include <QString>
#include <algorithm>

#include "platform/linux/accessibility/AtspiMessages.h"
#include "unicode/Unicode.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;

/// Menu bars are near the top of their windows.
constexpr int deepestMenuBar = 6;

/// More actions than any element has.
constexpr int mostActions = 8;

/// Longer than any title. A search compares every title that it passes.
constexpr qsizetype longestName = 1000;

std::string titleFrom(const QString& name) {
  return std::string(unicode::trimmed(name.left(longestName).toStdString()));
}

bool isPress(const QString& name) {
  const auto wanted = {"press", "click", "activate"};
  return std::ranges::any_of(
      wanted, [&](const char* each) { return name.compare(QLatin1String(each), Qt::CaseInsensitive) == 0; });
}

}  // namespace

std::shared_ptr<AtspiElement> MenuAccess::menuBar(platform::ProcessIdentifier process) {
  for (const auto& frame : frames_.framesOf(process))
    if (auto found = menuBarBelow({frame})) return found;
  return nullptr;
}

std::shared_ptr<AtspiElement> MenuAccess::menuBarBelow(std::vector<ElementReference> level) {
  for (int depth = 0; depth < deepestMenuBar && !level.empty(); ++depth) {
    std::vector<ElementReference> open;
    for (const auto& each : reader_.describe(level)) {
      if (each.role == atspi::Role::menuBar) return std::make_shared<AtspiElement>(each.element);
      if (each.hasChildren) open.push_back(each.element);
    }
    level = reader_.children(open);
  }
  return nullptr;
}

Result<std::string> MenuAccess::title(const AtspiElement& element) {
  if (const auto* preview = element.preview(bus_.budget().turn())) return titleFrom(preview->name);
  const auto name = atspi::readStringProperty(
      bus_.call(atspi::propertyRequest(element.reference(), atspi::accessible, "Name")));
  if (!name) return name.error();
  return titleFrom(*name);
}

Result<std::vector<platform::AXUIElementRef>> MenuAccess::children(const AtspiElement& element) {
  // Not from a preview either: a menu that contains itself would keep a search going from preview to preview.
  if (bus_.budget().isUsedUp()) return AXError::cannotComplete;
  const auto turn = bus_.budget().turn();
  std::vector<ElementReference> references;
  if (const auto* preview = element.preview(turn)) {
    references = preview->children;
  } else if (const auto described = reader_.describe({element.reference()}); described.empty()) {
    return bus_.isSuspended(element.reference().service) ? AXError::cannotComplete
                                                         : AXError::invalidUIElement;
  } else if (described.front().hasChildren) {
    references = reader_.children({element.reference()});
  }

  const auto titles = reader_.titles(references);
  std::vector<ElementReference> parents;
  for (std::size_t i = 0; i < references.size(); ++i)
    if (titles[i].hasChildren) parents.push_back(references[i]);
  const auto grandchildren = reader_.childrenOfEach(parents);
  auto next = grandchildren.begin();
  std::vector<platform::AXUIElementRef> children;
  for (std::size_t i = 0; i < references.size(); ++i) {
    auto child = std::make_shared<AtspiElement>(references[i]);
    child->setPreview(
        {turn, titles[i].name, titles[i].hasChildren ? *next++ : std::vector<ElementReference>{}});
    children.push_back(std::move(child));
  }
  return children;
}

AXError MenuAccess::press(const AtspiElement& element) {
  const auto& reference = element.reference();
  const auto count =
      atspi::readIntegerProperty(bus_.call(atspi::propertyRequest(reference, atspi::action, "NActions")));
  if (!count) return count.error();
  if (*count <= 0) return AXError::actionUnsupported;
  std::vector<QDBusMessage> requests;
  for (int i = 0; i < std::min(*count, mostActions); ++i)
    requests.push_back(atspi::request(reference, atspi::action, "GetName", {i}));
  const auto names = bus_.call(requests);
  const auto found = std::ranges::find_if(
      names, [](const auto& reply) { return isPress(atspi::readString(reply).valueOr({})); });
  const int chosen = found == names.end() ? 0 : static_cast<int>(found - names.begin());
  const auto isDone =
      atspi::readBool(bus_.call(atspi::request(reference, atspi::action, "DoAction", {chosen})));
  if (!isDone) return isDone.error();
  return *isDone ? AXError::success : AXError::failure;
}

}  // namespace tavelo::linuxdesktop
