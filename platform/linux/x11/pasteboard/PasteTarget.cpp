#include "platform/linux/x11/pasteboard/PasteTarget.h"

#include <algorithm>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

/// Milliseconds around a change of ownership in which those that watch the clipboard are told of it.
constexpr std::int32_t noticeTime = 10;

}  // namespace

void PasteTarget::set(xcb_window_t window, xcb_timestamp_t commandedAt) {
  clear();
  window_ = window;
  commandedAt_ = commandedAt;
  process_ = connection_.creator(window);
  watchWindows(true);
  known_ = connection_.values(connection_.root(), "_NET_CLIENT_LIST");
}

void PasteTarget::clear() {
  // Watched only as long as there is a target, so that the thread sleeps at all other times.
  if (window_ != XCB_WINDOW_NONE) watchWindows(false);
  window_ = XCB_WINDOW_NONE;
  process_.reset();
  known_.clear();
  dialogs_.clear();
}

void PasteTarget::watchWindows(bool watches) {
  const std::uint32_t events = watches ? XCB_EVENT_MASK_PROPERTY_CHANGE : XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &events);
}

std::optional<bool> PasteTarget::obeysCommand(const xcb_selection_request_event_t& request,
                                              std::optional<xcb_timestamp_t> coveredAt) const {
  // Server times wrap around.
  const auto since = [&](xcb_timestamp_t time) { return static_cast<std::int32_t>(request.time - time); };
  if (request.time != XCB_CURRENT_TIME) {
    if (since(commandedAt_) < 0) return false;
    if (coveredAt && since(*coveredAt) >= -noticeTime && since(*coveredAt) <= noticeTime) return false;
  }
  return owns(request.requestor);
}

std::optional<bool> PasteTarget::owns(xcb_window_t window) const {
  if (window_ == XCB_WINDOW_NONE) return std::nullopt;
  // First, because the server gives the number of a client that has ended to the next one.
  const auto creator = connection_.creator(window);
  if (creator && process_) return *creator == *process_;
  const auto clientBits = ~xcb_get_setup(connection_.get())->resource_id_mask;
  if ((window & clientBits) == (window_ & clientBits)) return true;
  return std::nullopt;
}

bool PasteTarget::hasNewWindows(const xcb_generic_event_t& event) const {
  if (kindOf(event) != XCB_PROPERTY_NOTIFY) return false;
  const auto& change = as<xcb_property_notify_event_t>(event);
  return change.window == connection_.root() && change.atom == clientList_;
}

void PasteTarget::updateDialogs(bool wanted) {
  auto windows = connection_.values(connection_.root(), "_NET_CLIENT_LIST");
  const auto isIn = [](const std::vector<xcb_window_t>& list, xcb_window_t window) {
    return std::ranges::find(list, window) != list.end();
  };
  for (const auto each : windows) {
    if (wanted && !isIn(known_, each) && isDialog(each)) dialogs_.push_back(each);
  }
  std::erase_if(dialogs_, [&](xcb_window_t each) { return !isIn(windows, each); });
  known_ = std::move(windows);
}

bool PasteTarget::isDialog(xcb_window_t window) const {
  return !connection_.values(window, "WM_TRANSIENT_FOR").empty() && owns(window).value_or(false);
}

}  // namespace tavelo::linuxdesktop
