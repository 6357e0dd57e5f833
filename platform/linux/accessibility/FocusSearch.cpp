#include "platform/linux/accessibility/FocusSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {
namespace {

using atspi::Role;
using atspi::State;

/// Windows are never nested this deep; web pages may be, and are cut off.
constexpr int deepestLevel = 40;

/// Milliseconds.
constexpr int recentSearch = 100;

/// Nobody types in menus, and they have many items.
bool isMenu(Role role) {
  constexpr Role menus[] = {Role::checkMenuItem, Role::menu,          Role::menuBar,        Role::menuItem,
                            Role::popupMenu,     Role::radioMenuItem, Role::tearOffMenuItem};
  return std::ranges::find(menus, role) != std::end(menus);
}

}  // namespace

std::optional<ElementReference> FocusSearch::focusedElement() {
  const auto found = search();
  passwordHasFocus_ = found && found->isPassword;
  sinceSearch_.start();
  return found ? std::optional(found->element) : std::nullopt;
}

bool FocusSearch::passwordHasFocus() {
  if (!sinceSearch_.isValid() || sinceSearch_.hasExpired(recentSearch)) focusedElement();
  return passwordHasFocus_;
}

std::optional<FocusSearch::Found> FocusSearch::search() {
  const auto window = windows_.activeWindow();
  if (!window) return std::nullopt;
  const auto frame = frames_.activeFrame(*window);
  if (!frame) return std::nullopt;
  if (auto found = focusedBelow(*window, *frame)) {
    last_ = found;
    return found;
  }
  // After we pressed a menu item, GTK reports no focus for a text that the user is still typing in.
  if (last_ && last_->window == *window && last_->element.service == frame->service &&
      isShowing(last_->element)) {
    return last_;
  }
  return std::nullopt;
}

std::optional<FocusSearch::Found> FocusSearch::focusedBelow(WindowIdentifier window,
                                                            const ElementReference& frame) {
  std::optional<Found> focused;
  std::size_t seen = 0;
  std::vector<ElementReference> level{frame};
  for (int depth = 0; depth < deepestLevel && !level.empty() && seen < ElementReader::mostElements; ++depth) {
    seen += level.size();
    std::vector<ElementReference> open;
    bool isFirstOfLevel = true;
    for (const auto& each : reader_.describe(level)) {
      if (!each.states.has(State::showing) || isMenu(each.role)) continue;
      if (each.states.has(State::focused) && each.states.has(State::focusable)) {
        const Found found{window, each.element, each.role == Role::passwordText};
        if (each.states.has(State::editable)) return found;
        // Toolkits also report a field's containers as focused; the user types in the innermost one.
        if (std::exchange(isFirstOfLevel, false)) focused = found;
      }
      if (each.hasChildren) open.push_back(each.element);
    }
    level = reader_.children(open);
  }
  return focused;
}

bool FocusSearch::isShowing(const ElementReference& element) {
  const auto states = atspi::readStates(bus_.call(atspi::request(element, atspi::accessible, "GetState")));
  return states && states->has(State::showing);
}

}  // namespace tavelo::linuxdesktop
