#include "platform/linux/accessibility/FieldReturn.h"

#include <chrono>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

using atspi::State;

constexpr std::chrono::milliseconds pasteTime{1000};

}  // namespace

void FieldReturn::wrote(const ElementReference& field, bool isDone) {
  refused_.reset();
  if (!isDone) refused_ = Refused{field, bus_.budget().turn()};
}

void FieldReturn::cameToFront(platform::ProcessIdentifier process) {
  const auto refused = std::exchange(refused_, std::nullopt);
  if (!refused || refused->turn != bus_.budget().turn()) return;
  awaited_.reset();
  if (directory_.processOf(refused->field.service) != process) return;
  const auto sight = look(refused->field);
  if (sight == Sight::hidden) awaited_ = Awaited{refused->field, clock_.uptime() + pasteTime};
  if (sight == Sight::showing) focus(refused->field);
}

bool FieldReturn::isOutOfSight() {
  if (!awaited_) return false;
  if (clock_.uptime() < awaited_->until) {
    // Once told, the user pastes; we must not do so too.
    if (awaited_->isTold) return true;
    const auto sight = look(awaited_->field);
    if (sight == Sight::hidden) {
      awaited_->isTold = true;
      if (onOutOfSight) onOutOfSight();
      return true;
    }
    if (sight == Sight::showing) focus(awaited_->field);
  }
  awaited_.reset();
  return false;
}

FieldReturn::Sight FieldReturn::look(const ElementReference& field) {
  const auto states = atspi::readStates(bus_.call(atspi::request(field, atspi::accessible, "GetState")));
  if (!states) return Sight::unknown;
  // One that was scrolled away does not show, but gets what is typed.
  if (states->has(State::focused)) return Sight::focused;
  return states->has(State::showing) ? Sight::showing : Sight::hidden;
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
