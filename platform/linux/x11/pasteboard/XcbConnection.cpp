#include "platform/linux/x11/pasteboard/XcbConnection.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>

namespace tavelo::linuxdesktop {

XcbConnection::XcbConnection() {
  int screen = 0;
  connection_ = xcb_connect(nullptr, &screen);
  if (!isConnected()) return;
  auto each = xcb_setup_roots_iterator(xcb_get_setup(connection_));
  for (; each.rem > 1 && screen > 0; --screen) xcb_screen_next(&each);
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

xcb_atom_t XcbConnection::atom(const std::string& name) {
  const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbOwned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::string> XcbConnection::names(const std::vector<xcb_atom_t>& atoms) {
  std::vector<xcb_get_atom_name_cookie_t> cookies;
  cookies.reserve(atoms.size());
  for (const auto each : atoms) cookies.push_back(xcb_get_atom_name(connection_, each));
  std::vector<std::string> names;
  for (const auto cookie : cookies) {
    xcb_generic_error_t* error = nullptr;
    const XcbOwned<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection_, cookie, &error));
    std::free(error);
    auto& name = names.emplace_back();
    if (reply)
      name.assign(xcb_get_atom_name_name(reply.get()),
                  static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
  }
  return names;
}

xcb_window_t XcbConnection::selectionOwner(xcb_atom_t selection) {
  const auto cookie = xcb_get_selection_owner(connection_, selection);
  const XcbOwned<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
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

}  // namespace tavelo::linuxdesktop
