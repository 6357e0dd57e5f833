#include "platform/linux/x11/XcbConnection.h"

#include <cerrno>
#include <utility>

#include <poll.h>
#include <xcb/res.h>

namespace tavelo::linuxdesktop {

XcbConnection::XcbConnection() : connection_(xcb_connect(nullptr, &screen_)) {
  if (!isConnected()) return;
  auto each = xcb_setup_roots_iterator(xcb_get_setup(connection_));
  for (int i = 0; i < screen_ && each.rem > 1; ++i) xcb_screen_next(&each);
  if (each.rem > 0) root_ = each.data->root;
}

XcbConnection::~XcbConnection() { xcb_disconnect(connection_); }

xcb_window_t XcbConnection::createWindow() {
  const xcb_window_t window = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root_, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

xcb_atom_t XcbConnection::atom(const std::string& name) const {
  const auto found =
      reply(xcb_intern_atom_reply,
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()));
  return found ? found->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::string> XcbConnection::names(const std::vector<xcb_atom_t>& atoms) const {
  std::vector<xcb_get_atom_name_cookie_t> cookies;
  for (const auto each : atoms) cookies.push_back(xcb_get_atom_name(connection_, each));
  std::vector<std::string> names;
  for (const auto cookie : cookies) {
    const auto found = reply(xcb_get_atom_name_reply, cookie);
    auto& name = names.emplace_back();
    if (found)
      name.assign(xcb_get_atom_name_name(found.get()),
                  static_cast<std::size_t>(xcb_get_atom_name_name_length(found.get())));
  }
  return names;
}

xcb_window_t XcbConnection::selectionOwner(xcb_atom_t selection) const {
  const auto found = reply(xcb_get_selection_owner_reply, xcb_get_selection_owner(connection_, selection));
  return found ? found->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

XcbOwned<xcb_get_property_reply_t> XcbConnection::property(xcb_window_t window, xcb_atom_t name,
                                                           std::uint32_t units, xcb_atom_t type,
                                                           bool remove) const {
  auto found = reply(xcb_get_property_reply,
                     xcb_get_property(connection_, remove ? 1 : 0, window, name, type, 0, units));
  return found && found->type != XCB_ATOM_NONE ? std::move(found) : nullptr;
}

std::vector<std::uint32_t> XcbConnection::values(xcb_window_t window, const std::string& name) const {
  const auto found = property(window, atom(name));
  return found ? valuesOf(*found) : std::vector<std::uint32_t>();
}

std::optional<std::string> XcbConnection::text(xcb_window_t window, const std::string& name) const {
  const auto found = property(window, atom(name));
  return found && found->format == 8 ? std::optional(bytesOf(*found)) : std::nullopt;
}

std::optional<platform::ProcessIdentifier> XcbConnection::creator(xcb_window_t window) const {
  const auto* extension = xcb_get_extension_data(connection_, &xcb_res_id);
  if (extension == nullptr || extension->present == 0) return std::nullopt;
  const xcb_res_client_id_spec_t asked{.client = window, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto found = reply(xcb_res_query_client_ids_reply, xcb_res_query_client_ids(connection_, 1, &asked));
  if (!found) return std::nullopt;
  for (auto each = xcb_res_query_client_ids_ids_iterator(found.get()); each.rem > 0;
       xcb_res_client_id_value_next(&each)) {
    if ((each.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 && each.data->length >= 4)
      return static_cast<platform::ProcessIdentifier>(*xcb_res_client_id_value_value(each.data));
  }
  return std::nullopt;
}

XcbOwned<xcb_generic_event_t> XcbConnection::nextEvent(Instant deadline) {
  xcb_flush(connection_);
  while (isConnected()) {
    if (XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) return event;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    pollfd readable{.fd = fileDescriptor(), .events = POLLIN, .revents = 0};
    if (left <= 0) return nullptr;
    if (poll(&readable, 1, static_cast<int>(left)) < 0 && errno != EINTR) return nullptr;
  }
  return nullptr;
}

std::string bytesOf(const xcb_get_property_reply_t& property) {
  return {static_cast<const char*>(xcb_get_property_value(&property)),
          static_cast<std::size_t>(xcb_get_property_value_length(&property))};
}

std::vector<std::uint32_t> valuesOf(const xcb_get_property_reply_t& property) {
  if (property.format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(&property));
  return {first, first + xcb_get_property_value_length(&property) / 4};
}

}  // namespace tavelo::linuxdesktop
