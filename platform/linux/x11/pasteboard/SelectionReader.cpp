#include "platform/linux/x11/pasteboard/SelectionReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/linux/session/ProcessHandle.h"
#include "platform/linux/x11/pasteboard/SelectionContents.h"

namespace tavelo::linuxdesktop {
namespace {

/// More than any application offers. Longer lists are cut off.
constexpr std::size_t mostTargets = 512;

/// After this much silence we check whether the owner has been stopped. Not earlier: a traced process is
/// stopped again and again, and answers in between.
constexpr std::chrono::milliseconds usualAnswer{20};

}  // namespace

SelectionReader::SelectionReader(SelectionBudget budget)
    : budget_(budget),
      clipboard_(connection_.atom("CLIPBOARD")),
      targets_(connection_.atom("TARGETS")),
      incr_(connection_.atom("INCR")) {}

xcb_window_t SelectionReader::owner() { return connection_.selectionOwner(clipboard_); }

std::optional<platform::PasteboardItemContent> SelectionReader::read() {
  if (!isConnected()) return std::nullopt;
  const xcb_window_t owner = this->owner();
  if (owner == XCB_WINDOW_NONE) return platform::PasteboardItemContent{};
  begin(owner);
  const auto atoms = listedTargets();
  const auto names = connection_.names(atoms);
  std::vector<std::optional<std::string>> delivered(atoms.size());
  auto outcome = ownerAnswered_ ? Outcome::delivered : silence();
  for (const auto& step : fetchingSteps(names)) {
    for (const auto each : step) {
      if (outcome == Outcome::timeOut || ownerHasGone_) break;
      auto delivery = fetch(atoms[each]);
      outcome = delivery.outcome;
      // Other widths are numbers: facts about the owner, not contents.
      if (outcome != Outcome::delivered || delivery.format != 8) continue;
      bytesLeft_ -= delivery.bytes.size();
      delivered[each] = std::move(delivery.bytes);
      break;
    }
  }
  // Events about the owner's window would pile up until the next read.
  watchOwner(XCB_EVENT_MASK_NO_EVENT);
  platform::PasteboardItemContent content;
  for (std::size_t i = 0; i < atoms.size(); ++i) {
    if (delivered[i])
      content.representations.push_back({pasteboardTypeOf(names[i]), std::move(*delivered[i])});
  }
  if (content.representations.empty() && (outcome == Outcome::timeOut || ownerHasGone_)) return std::nullopt;
  return content;
}

void SelectionReader::begin(xcb_window_t owner) {
  deadline_ = std::chrono::steady_clock::now() + budget_.time;
  bytesLeft_ = budget_.bytes;
  ownerAnswered_ = ownerHasGone_ = false;
  owner_ = owner;
  // Destroyed here, not at the end of a read: a late owner would get an error then, and many crash on one.
  if (window_ != XCB_WINDOW_NONE) xcb_destroy_window(connection_.get(), window_);
  window_ = connection_.createWindow();
  watchOwner(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void SelectionReader::watchOwner(std::uint32_t events) {
  xcb_change_window_attributes(connection_.get(), owner_, XCB_CW_EVENT_MASK, &events);
  xcb_flush(connection_.get());
}

std::vector<xcb_atom_t> SelectionReader::listedTargets() {
  const auto list = fetch(targets_);
  if (list.outcome == Outcome::timeOut || ownerHasGone_) return {};
  ownerAnswered_ = true;
  if (list.outcome != Outcome::delivered || list.format != 32 ||
      (list.type != XCB_ATOM_ATOM && list.type != targets_)) {
    // Very old owners offer no list, only plain text.
    return {connection_.atom("UTF8_STRING"), XCB_ATOM_STRING};
  }
  std::vector<xcb_atom_t> atoms(std::min(list.bytes.size() / sizeof(xcb_atom_t), mostTargets));
  if (!atoms.empty()) std::memcpy(atoms.data(), list.bytes.data(), atoms.size() * sizeof(xcb_atom_t));
  std::vector<xcb_atom_t> unique;
  for (const auto each : atoms) {
    if (each != XCB_ATOM_NONE && std::ranges::find(unique, each) == unique.end()) unique.push_back(each);
  }
  return unique;
}

SelectionReader::Delivery SelectionReader::fetch(xcb_atom_t target) {
  // The property is named after the target, so a late answer for another target does no harm.
  xcb_convert_selection(connection_.get(), window_, clipboard_, target, target, XCB_CURRENT_TIME);
  while (const auto event = nextEvent()) {
    if (kindOf(*event) != XCB_SELECTION_NOTIFY) continue;
    const auto& answer = as<xcb_selection_notify_event_t>(*event);
    if (answer.requestor != window_ || answer.selection != clipboard_ || answer.target != target) continue;
    if (answer.property != target) return {};
    auto delivery = take(target);
    return delivery.type == incr_ ? receiveIncrements(target) : delivery;
  }
  return {.outcome = silence()};
}

SelectionReader::Delivery SelectionReader::receiveIncrements(xcb_atom_t property) {
  Delivery whole{.outcome = Outcome::delivered};
  while (const auto event = nextEvent()) {
    if (kindOf(*event) != XCB_PROPERTY_NOTIFY) continue;
    const auto& change = as<xcb_property_notify_event_t>(*event);
    if (change.window != window_ || change.atom != property || change.state != XCB_PROPERTY_NEW_VALUE)
      continue;
    const auto part = take(property);
    if (part.outcome != Outcome::delivered || part.bytes.size() > bytesLeft_ - whole.bytes.size()) return {};
    if (part.bytes.empty()) return whole;
    if (whole.format != 0 && part.format != whole.format) return {};
    whole.type = part.type;
    whole.format = part.format;
    whole.bytes += part.bytes;
  }
  return {.outcome = silence()};
}

SelectionReader::Delivery SelectionReader::take(xcb_atom_t property) {
  const auto head = connection_.property(window_, property, 0);
  if (!head) return {};
  if (head->bytes_after > bytesLeft_) {
    xcb_delete_property(connection_.get(), window_, property);
    return {};
  }
  const auto units = static_cast<std::uint32_t>(bytesLeft_ / 4 + 1);
  const auto whole =
      connection_.property(window_, property, units, XCB_GET_PROPERTY_TYPE_ANY, /*remove=*/true);
  if (!whole || whole->bytes_after > 0) return {};
  return {
      .outcome = Outcome::delivered, .type = whole->type, .format = whole->format, .bytes = bytesOf(*whole)};
}

XcbOwned<xcb_generic_event_t> SelectionReader::nextEvent() {
  using Clock = std::chrono::steady_clock;
  // The time limit also ends an endless stream of events.
  while (!ownerHasGone_ && Clock::now() < deadline_) {
    auto event = connection_.nextEvent(std::min(deadline_, Clock::now() + usualAnswer));
    if (!event && (!connection_.isConnected() || isOwnerStopped())) return nullptr;
    if (!event) continue;
    if (kindOf(*event) != XCB_DESTROY_NOTIFY || as<xcb_destroy_notify_event_t>(*event).window != owner_)
      return event;
    ownerHasGone_ = true;
  }
  return nullptr;
}

bool SelectionReader::isOwnerStopped() {
  const auto process = connection_.creator(owner_);
  return process && isStopped(*process);
}

}  // namespace tavelo::linuxdesktop
