#include "platform/linux/accessibility/MenuAccess.h"

#include <QDBusMessage>
#include <QString>
#include <algorithm>

#include "platform/linux/accessibility/AtspiMessages.h"
#include "unicode/Unicode.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;

/// Menu bars lie near the top of their windows.
constexpr int deepestMenuBar = 6;

/// More actions than any element has.
constexpr int mostActions = 8;

std::string titleFrom(const QString& name) { return std::string(unicode::trimmed(name.toStdString())); }

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

AXError MenuAccess::title(const AtspiElement& element, std::string& title) {
  if (const auto* preview = element.preview(bus_.budget().turn())) {
    title = titleFrom(preview->name);
    return AXError::success;
  }
  const auto reply = bus_.call(atspi::propertyRequest(element.reference(), atspi::accessible, "Name"));
  const auto name = atspi::readStringProperty(reply);
  if (!name) return reply.type() == QDBusMessage::ReplyMessage ? AXError::noValue : atspi::outcome(reply);
  title = titleFrom(*name);
  return AXError::success;
}

AXError MenuAccess::children(const AtspiElement& element, std::vector<platform::AXUIElementRef>& children) {
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

  auto titles = reader_.titles(references);
  std::vector<ElementReference> parents;
  for (std::size_t i = 0; i < references.size(); ++i)
    if (titles[i].hasChildren) parents.push_back(references[i]);
  auto grandchildren = reader_.childrenOfEach(parents);
  auto next = grandchildren.begin();
  children.clear();
  for (std::size_t i = 0; i < references.size(); ++i) {
    auto child = std::make_shared<AtspiElement>(std::move(references[i]));
    child->setPreview({turn, std::move(titles[i].name),
                       titles[i].hasChildren ? std::move(*next++) : std::vector<ElementReference>{}});
    children.push_back(std::move(child));
  }
  return AXError::success;
}

AXError MenuAccess::press(const AtspiElement& element) {
  const auto& reference = element.reference();
  const auto counted = bus_.call(atspi::propertyRequest(reference, atspi::action, "NActions"));
  const int count = std::min(atspi::readIntegerProperty(counted).value_or(0), mostActions);
  if (count <= 0) {
    return counted.type() == QDBusMessage::ReplyMessage ? AXError::actionUnsupported
                                                        : atspi::outcome(counted);
  }
  std::vector<QDBusMessage> requests;
  requests.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    requests.push_back(atspi::request(reference, atspi::action, "GetName", {i}));
  const auto names = bus_.call(requests);
  const auto found = std::ranges::find_if(
      names, [](const auto& reply) { return isPress(atspi::readString(reply).value_or(QString())); });
  const int chosen = found == names.end() ? 0 : static_cast<int>(found - names.begin());
  const auto reply = bus_.call(atspi::request(reference, atspi::action, "DoAction", {chosen}));
  if (atspi::outcome(reply) != AXError::success) return atspi::outcome(reply);
  return atspi::readBool(reply).value_or(false) ? AXError::success : AXError::failure;
}

}  // namespace tavelo::linuxdesktop
