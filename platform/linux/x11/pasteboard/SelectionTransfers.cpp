#include "platform/linux/x11/pasteboard/SelectionTransfers.h"

#include <algorithm>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

constexpr std::chrono::seconds patience{5};
constexpr std::size_t mostTransfers = 64;

}  // namespace

SelectionTransfers::SelectionTransfers(XcbConnection& connection)
    : connection_(connection), incr_(connection.atom("INCR")) {}

bool SelectionTransfers::begin(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                               SharedBytes bytes) {
  if (transfers_.size() >= mostTransfers) return false;
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.get(), requestor, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(bytes->size());
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, incr_, 32, 1, &size);
  // A new request for the same property replaces the old one.
  std::erase_if(transfers_, [&](const Transfer& each) {
    return each.requestor == requestor && each.property == property;
  });
  transfers_.push_back(
      {requestor, property, type, std::move(bytes), 0, std::chrono::steady_clock::now() + patience});
  return true;
}

void SelectionTransfers::handle(const xcb_generic_event_t& event) {
  if (kindOf(event) == XCB_DESTROY_NOTIFY) {
    const auto window = as<xcb_destroy_notify_event_t>(event).window;
    std::erase_if(transfers_, [&](const Transfer& each) { return each.requestor == window; });
  }
  if (kindOf(event) != XCB_PROPERTY_NOTIFY) return;
  const auto& change = as<xcb_property_notify_event_t>(event);
  if (change.state != XCB_PROPERTY_DELETE) return;
  for (std::size_t i = 0; i < transfers_.size(); ++i) {
    if (transfers_[i].requestor == change.window && transfers_[i].property == change.atom) return sendNext(i);
  }
}

void SelectionTransfers::sendNext(std::size_t index) {
  auto& transfer = transfers_[index];
  const auto size = std::min(largestPart, transfer.bytes->size() - transfer.sent);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                      transfer.type, 8, static_cast<std::uint32_t>(size),
                      transfer.bytes->data() + transfer.sent);
  transfer.sent += size;
  transfer.expiresAt = std::chrono::steady_clock::now() + patience;
  // The empty part was the last one.
  if (size == 0) transfers_.erase(transfers_.begin() + static_cast<std::ptrdiff_t>(index));
}

std::optional<XcbConnection::Instant> SelectionTransfers::expire() {
  const auto now = std::chrono::steady_clock::now();
  std::erase_if(transfers_, [&](const Transfer& each) { return each.expiresAt <= now; });
  if (transfers_.empty()) return std::nullopt;
  return std::ranges::min_element(transfers_, {}, &Transfer::expiresAt)->expiresAt;
}

}  // namespace tavelo::linuxdesktop
