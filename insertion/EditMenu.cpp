#include "insertion/EditMenu.h"

#include <algorithm>

#include "platform/Platform.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

constexpr platform::Seconds menuOpeningTime{0.12};
constexpr int depthLimit = 8;

bool isPasteTitle(std::string_view title) {
  const std::string lowerCased = unicode::lowerCased(title);
  return unicode::canonicallyContains(lowerCased, "paste") || unicode::canonicallyEqual(lowerCased, "dán");
}

}  // namespace

EditMenu::EditMenu()
    : accessibility_(platform::current().accessibility),
      mainQueue_(platform::current().mainQueue),
      clock_(platform::current().clock),
      reader_(accessibility_) {}

bool EditMenu::pressPasteMenuItem(platform::RunningApplication& application,
                                  const std::function<bool()>& isStillWanted) {
  if (application.isTerminated()) return false;
  application.activate(platform::ActivationOptions::activateIgnoringOtherApps);
  const auto element = accessibility_.createApplication(application.processIdentifier());
  const auto menuBar = reader_.elementAttribute(platform::ax::menuBar, element);
  if (!menuBar) return false;
  if (const auto item = findPasteMenuItem(menuBar)) return press(item);

  const auto edit = findMenuBarItem({"Edit", "Sửa"}, menuBar);
  if (!edit) return false;
  press(edit);
  mainQueue_.runUntil(clock_.uptime() + platform::toUptime(menuOpeningTime));
  if (!isStillWanted()) return false;
  const auto item = findPasteMenuItem(edit);
  return item && press(item);
}

platform::AXUIElementRef EditMenu::findMenuBarItem(std::initializer_list<std::string_view> titles,
                                                   const platform::AXUIElementRef& menuBar) {
  for (const auto& child : reader_.children(menuBar)) {
    const auto title = reader_.stringAttribute(platform::ax::title, child);
    const auto isTitle = [&](std::string_view wanted) { return unicode::canonicallyEqual(*title, wanted); };
    if (title && std::ranges::any_of(titles, isTitle)) return child;
  }
  return nullptr;
}

platform::AXUIElementRef EditMenu::findPasteMenuItem(const platform::AXUIElementRef& element, int depth) {
  if (depth >= depthLimit) return nullptr;
  const auto title = reader_.stringAttribute(platform::ax::title, element);
  if (title && isPasteTitle(*title)) return element;
  for (const auto& child : reader_.children(element)) {
    if (auto found = findPasteMenuItem(child, depth + 1)) return found;
  }
  return nullptr;
}

bool EditMenu::press(const platform::AXUIElementRef& element) {
  return accessibility_.performAction(element, platform::ax::press) == platform::AXError::success;
}

}  // namespace tavelo
