#include "platform/linux/x11/windows/X11Windows.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include <sys/utsname.h>
#include <xcb/xcb.h>

#include "platform/linux/x11/windows/ClientProcess.h"

namespace tavelo::linuxdesktop {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

/// The longest property that is read, in units of four bytes; titles may be long, lists of windows too.
constexpr std::uint32_t mostUnits = 16384;

/// How deep a window of an application can lie below the root: frame, decoration, the window, its parts.
constexpr int deepestWindow = 16;

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
  const auto cookie =
      xcb_intern_atom(connection, /*only_if_exists=*/0, static_cast<std::uint16_t>(name.size()), name.data());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

Owned<xcb_get_property_reply_t> property(xcb_connection_t* connection, WindowIdentifier window,
                                         xcb_atom_t name) {
  const auto cookie = xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, mostUnits);
  Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
  return reply && reply->type != XCB_ATOM_NONE ? std::move(reply) : nullptr;
}

/// The 32-bit values of a property; none when it is not there or of another width.
std::vector<std::uint32_t> values(xcb_connection_t* connection, WindowIdentifier window,
                                  std::string_view name) {
  const auto reply = property(connection, window, atom(connection, name));
  if (!reply || reply->format != 32) return {};
  std::vector<std::uint32_t> result(static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                                    sizeof(std::uint32_t));
  std::memcpy(result.data(), xcb_get_property_value(reply.get()), result.size() * sizeof(std::uint32_t));
  return result;
}

std::optional<std::string> text(xcb_connection_t* connection, WindowIdentifier window,
                                std::string_view name) {
  const auto reply = property(connection, window, atom(connection, name));
  if (!reply || reply->format != 8) return std::nullopt;
  return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                     static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
}

bool has(xcb_connection_t* connection, WindowIdentifier window, std::string_view name) {
  return property(connection, window, atom(connection, name)) != nullptr;
}

/// Whether the window is of this machine, as far as it says.
bool isLocal(xcb_connection_t* connection, WindowIdentifier window) {
  const auto machine = text(connection, window, "WM_CLIENT_MACHINE");
  utsname self{};
  if (!machine || uname(&self) != 0) return true;
  // Told with its domain or without.
  const auto host = [](std::string_view name) {
    return name.substr(0, name.find_first_of(std::string_view(".\0", 2)));
  };
  return host(*machine) == host(self.nodename);
}

/// The child windows, the topmost first.
std::vector<WindowIdentifier> children(xcb_connection_t* connection, WindowIdentifier window) {
  const Owned<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
  if (!reply) return {};
  const auto* first = xcb_query_tree_children(reply.get());
  std::vector<WindowIdentifier> result(first, first + xcb_query_tree_children_length(reply.get()));
  std::ranges::reverse(result);
  return result;
}

std::optional<WindowIdentifier> parent(xcb_connection_t* connection, WindowIdentifier window) {
  const Owned<xcb_query_tree_reply_t> reply(
      xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
  if (!reply || reply->parent == XCB_WINDOW_NONE) return std::nullopt;
  return reply->parent;
}

bool isShown(xcb_connection_t* connection, WindowIdentifier window) {
  const Owned<xcb_get_window_attributes_reply_t> reply(
      xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr));
  return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// The innermost window under the pointer.
WindowIdentifier windowUnderPointer(xcb_connection_t* connection, WindowIdentifier root) {
  WindowIdentifier window = root;
  for (int depth = 0; depth < deepestWindow; ++depth) {
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(connection, xcb_query_pointer(connection, window), nullptr));
    if (!reply || reply->child == XCB_WINDOW_NONE) break;
    window = reply->child;
  }
  return window;
}

/// Where no window manager keeps a list: the topmost shown window with a class, of each branch, in order.
void collectShownWindows(xcb_connection_t* connection, WindowIdentifier window, int depth,
                         std::vector<WindowIdentifier>& found) {
  if (depth >= deepestWindow || !isShown(connection, window)) return;
  if (has(connection, window, "WM_CLASS")) {
    found.push_back(window);
    return;
  }
  for (const auto child : children(connection, window))
    collectShownWindows(connection, child, depth + 1, found);
}

}  // namespace

X11Windows::X11Windows() {
  connection_ = xcb_connect(nullptr, &screen_);
  if (!isConnected()) return;
  int screen = screen_;
  auto each = xcb_setup_roots_iterator(xcb_get_setup(connection_));
  for (; each.rem > 1 && screen > 0; --screen) xcb_screen_next(&each);
  if (each.rem > 0) root_ = each.data->root;
}

X11Windows::~X11Windows() { xcb_disconnect(connection_); }

bool X11Windows::isConnected() const { return xcb_connection_has_error(connection_) == 0; }

std::optional<WindowIdentifier> X11Windows::activeWindow() {
  if (!isConnected()) return std::nullopt;
  discardEvents();
  // A window manager that has gone may leave its last word behind.
  if (windowManager()) {
    const auto active = values(connection_, root_, "_NET_ACTIVE_WINDOW");
    if (!active.empty() && active.front() != XCB_WINDOW_NONE) return active.front();
  }
  const Owned<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  if (!focus) return std::nullopt;
  // Without a window manager the keyboard follows the pointer. The focus may lie in a part of the window.
  std::optional<WindowIdentifier> window =
      focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT ? windowUnderPointer(connection_, root_) : focus->focus;
  for (int depth = 0; window && *window != XCB_WINDOW_NONE && *window != root_ && depth < deepestWindow;
       ++depth, window = parent(connection_, *window)) {
    if (has(connection_, *window, "WM_CLASS")) return window;
  }
  return std::nullopt;
}

void X11Windows::discardEvents() {
  // Every client is told of every new keyboard layout, and of requests that came too late.
  while (const Owned<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_)}) {
  }
}

std::optional<platform::ProcessIdentifier> X11Windows::process(WindowIdentifier window) {
  if (!isConnected()) return std::nullopt;
  if (isLocal(connection_, window)) {
    const auto own = values(connection_, window, "_NET_WM_PID");
    if (!own.empty() && own.front() != 0) return static_cast<platform::ProcessIdentifier>(own.front());
  }
  return processOfClient(connection_, window);
}

std::optional<WindowClass> X11Windows::windowClass(WindowIdentifier window) {
  if (!isConnected()) return std::nullopt;
  const auto both = text(connection_, window, "WM_CLASS");
  if (!both) return std::nullopt;
  const auto end = std::min(both->find('\0'), both->size());
  const auto nameAt = std::min(end + 1, both->size());
  return WindowClass{.instance = both->substr(0, end),
                     .name = both->substr(nameAt, both->find('\0', nameAt) - nameAt)};
}

std::optional<std::string> X11Windows::title(WindowIdentifier window) {
  if (!isConnected()) return std::nullopt;
  auto modern = text(connection_, window, "_NET_WM_NAME");
  return modern ? modern : text(connection_, window, "WM_NAME");
}

std::optional<WindowIdentifier> X11Windows::windowOf(platform::ProcessIdentifier process) {
  if (!isConnected()) return std::nullopt;
  std::vector<WindowIdentifier> windows;
  if (windowManager()) {
    windows = values(connection_, root_, "_NET_CLIENT_LIST_STACKING");
    if (windows.empty()) windows = values(connection_, root_, "_NET_CLIENT_LIST");
    std::ranges::reverse(windows);
  }
  if (windows.empty()) {
    for (const auto child : children(connection_, root_)) collectShownWindows(connection_, child, 1, windows);
  }
  const auto found =
      std::ranges::find_if(windows, [&](WindowIdentifier each) { return this->process(each) == process; });
  if (found == windows.end()) return std::nullopt;
  return *found;
}

bool X11Windows::activate(WindowIdentifier window) {
  if (!isConnected()) return false;
  if (supports("_NET_ACTIVE_WINDOW")) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atom(connection_, "_NET_ACTIVE_WINDOW");
    // As a pager asks: the user wants it, whatever the application thinks of its own time stamps.
    message.data.data32[0] = 2;
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
  } else {
    // Where windows can be minimised at all, mapping brings them back.
    xcb_map_window(connection_, window);
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  }
  return xcb_flush(connection_) > 0;
}

std::optional<std::string> X11Windows::windowManager() {
  if (!isConnected()) return std::nullopt;
  const auto proof = values(connection_, root_, "_NET_SUPPORTING_WM_CHECK");
  if (proof.empty() || values(connection_, proof.front(), "_NET_SUPPORTING_WM_CHECK") != proof)
    return std::nullopt;
  return text(connection_, proof.front(), "_NET_WM_NAME").value_or("");
}

bool X11Windows::compositorRuns() { return isOwned("_NET_WM_CM_S" + std::to_string(screen_)); }

bool X11Windows::statusAreaRuns() { return isOwned("_NET_SYSTEM_TRAY_S" + std::to_string(screen_)); }

bool X11Windows::clipboardManagerRuns() { return isOwned("CLIPBOARD_MANAGER"); }

bool X11Windows::isOwned(const std::string& selection) {
  if (!isConnected()) return false;
  const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection_, xcb_get_selection_owner(connection_, atom(connection_, selection)), nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

bool X11Windows::supports(const char* hint) {
  if (!windowManager()) return false;
  const auto hints = values(connection_, root_, "_NET_SUPPORTED");
  return std::ranges::find(hints, atom(connection_, hint)) != hints.end();
}

}  // namespace tavelo::linuxdesktop
