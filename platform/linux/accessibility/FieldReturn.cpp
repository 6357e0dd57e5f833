#include "platform/linux/accessibility/FieldReturn.h"

#include <chrono>
#include <thread>
#include <utility>
#include <vector>

namespace tavelo::linuxdesktop {
namespace {

using atspi::State;

constexpr std::chrono::milliseconds pasteTime{1000};
/// Window managers need 2 to 60 ms to bring a window to the front.
constexpr std::chrono::milliseconds lookInterval{3};
constexpr int mostLooks = 50;
constexpr int deepestLevel = 40;

}  // namespace

void FieldReturn::wrote(const ElementReference& field, bool isDone) {
  refused_.reset();
  if (!isDone) refused_ = Refused{field, bus_.budget().turn()};
}

void FieldReturn::cameToFront(platform::ProcessIdentifier process, WindowIdentifier window) {
  const auto refused = std::exchange(refused_, std::nullopt);
  const bool isRefused = refused && refused->turn == bus_.budget().turn();
  // The menu's turn: the user has been told to paste.
  if (!isRefused && isAwaited() && awaited_->isTold) return;
  awaited_ = Awaited{.window = window, .field = std::nullopt, .until = clock_.uptime() + pasteTime};
  if (!isRefused || directory_.processOf(refused->field.service) != process) return;
  const auto sight = look(refused->field);
  if (sight == Sight::unknown) return;
  awaited_->field = refused->field;
  if (sight == Sight::showing) focus(refused->field);
}

bool FieldReturn::isOutOfSight() {
  if (!isAwaited()) return false;
  // Once told, the user pastes; we must not do so too.
  if (awaited_->isTold) return true;
  const auto field = std::exchange(awaited_->field, std::nullopt);
  if (!field) return false;
  const auto sight = look(*field);
  if (sight == Sight::hidden) tell(Nowhere::fieldIsHidden);
  // The user may have gone on to another field of the window meanwhile.
  if (sight == Sight::showing) focus(*field);
  return awaited_->isTold;
}

bool FieldReturn::isElsewhere() {
  if (!isAwaited()) return false;
  const auto active = windows_.activeWindow();
  return active && *active != awaited_->window;
}

bool FieldReturn::mayPaste() {
  if (isElsewhere() && !awaited_->isTold && !bringBack(awaited_->window)) tell(Nowhere::windowIsLost);
  if (isOutOfSight()) return false;
  awaited_.reset();
  return true;
}

bool FieldReturn::bringBack(WindowIdentifier window) {
  // The window is gone.
  if (!windows_.process(window)) return false;
  // A window that cannot be asked for may be reached nevertheless.
  if (!windows_.activate(window)) return true;
  for (int look = 0; look < mostLooks; ++look) {
    if (windows_.activeWindow() == window) return true;
    std::this_thread::sleep_for(lookInterval);
  }
  // A dialog of the application may keep the window back.
  const auto active = windows_.activeWindow();
  return active && windows_.process(*active) == windows_.process(window);
}

void FieldReturn::tell(Nowhere why) {
  awaited_->isTold = true;
  if (onNowhere) onNowhere(why);
}

FieldReturn::Sight FieldReturn::look(const ElementReference& field) {
  const auto states = atspi::readStates(bus_.call(atspi::request(field, atspi::accessible, "GetState")));
  if (!states) return Sight::unknown;
  // One that was scrolled away does not show, but gets what is typed.
  const bool claimsFocus = states->has(State::focused);
  if (!claimsFocus && !states->has(State::showing)) return Sight::hidden;
  if (isInHiddenPart(field, claimsFocus)) return Sight::hidden;
  return claimsFocus ? Sight::focused : Sight::showing;
}

bool FieldReturn::isInHiddenPart(const ElementReference& field, bool claimsFocus) {
  auto each = field;
  for (int level = 0; level < deepestLevel; ++level) {
    const auto replies = bus_.call(std::vector{atspi::propertyRequest(each, atspi::accessible, "Parent"),
                                               atspi::request(each, atspi::accessible, "GetState"),
                                               atspi::request(each, atspi::accessible, "GetRole")});
    const auto role = atspi::readRole(replies[2]);
    if (!role || *role == atspi::Role::applicationRoot) return false;
    // Firefox forgets the field of a tab that was left with Control held, but not what is around it.
    const auto states = atspi::readStates(replies[1]);
    if (!claimsFocus && states && !states->has(State::showing)) return true;
    const auto parent = atspi::readReferenceProperty(replies[0]);
    // Chromium cuts off the page of a tab that was left. In it, the field goes on claiming the focus.
    if (!parent) return parent.error() == platform::AXError::noValue && *role == atspi::Role::documentWeb;
    each = *parent;
  }
  return false;
}

void FieldReturn::focus(const ElementReference& field) {
  // GTK selects the whole text of a field that gets the focus; a paste would replace it.
  const auto before = text_.locate(field);
  bus_.call(atspi::request(field, atspi::component, "GrabFocus"));
  if (!before) return;
  const auto after = text_.locate(field);
  if (after && after->selection != before->selection) text_.select(field, *after, before->selection);
}

}  // namespace tavelo::linuxdesktop
