#include "platform/linux/x11/X11Windows.h"

#include <algorithm>
#include <string_view>

#include <sys/utsname.h>

namespace tavelo::linuxdesktop {
namespace {

/// The deepest level below the root that is searched: window manager's frame, decoration, window, its parts.
constexpr int deepestWindow = 16;

bool has(const XcbConnection& connection, WindowIdentifier window, const std::string& property) {
  return connection.property(window, connection.atom(property)) != nullptr;
}

/// Whether the window's client runs on this machine. A window that does not say counts as local.
bool isLocal(const XcbConnection& connection, WindowIdentifier window) {
  const auto machine = connection.text(window, "WM_CLIENT_MACHINE");
  utsname self{};
  if (!machine || uname(&self) != 0) return true;
  // Some clients add the domain.
  const auto host = [](std::string_view name) {
    return name.substr(0, name.find_first_of(std::string_view(".\0", 2)));
  };
  return host(*machine) == host(self.nodename);
}

/// The child windows, the topmost first.
std::vector<WindowIdentifier> children(const XcbConnection& connection, WindowIdentifier window) {
  const auto tree = connection.reply(xcb_query_tree_reply, xcb_query_tree(connection.get(), window));
  if (!tree) return {};
  const auto* first = xcb_query_tree_children(tree.get());
  std::vector<WindowIdentifier> result(first, first + xcb_query_tree_children_length(tree.get()));
  std::ranges::reverse(result);
  return result;
}

/// XCB_WINDOW_NONE for the root and for a window that has gone.
WindowIdentifier parent(const XcbConnection& connection, WindowIdentifier window) {
  const auto tree = connection.reply(xcb_query_tree_reply, xcb_query_tree(connection.get(), window));
  return tree ? tree->parent : WindowIdentifier{XCB_WINDOW_NONE};
}

bool isShown(const XcbConnection& connection, WindowIdentifier window) {
  const auto attributes =
      connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(connection.get(), window));
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// The innermost window under the pointer.
WindowIdentifier windowUnderPointer(const XcbConnection& connection) {
  WindowIdentifier window = connection.root();
  for (int depth = 0; depth < deepestWindow; ++depth) {
    const auto pointer =
        connection.reply(xcb_query_pointer_reply, xcb_query_pointer(connection.get(), window));
    if (!pointer || pointer->child == XCB_WINDOW_NONE) break;
    window = pointer->child;
  }
  return window;
}

/// Adds the shown windows that have a class, the topmost first, without looking inside them.
void collectShownWindows(const XcbConnection& connection, WindowIdentifier window, int depth,
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

std::optional<WindowIdentifier> X11Windows::activeWindow() {
  // Every client gets events about new keyboard layouts and failed requests; they must not pile up.
  while (connection_.nextEvent({})) {
  }
  // A window manager that has ended may leave its last value behind.
  if (windowManager()) {
    const auto active = connection_.values(connection_.root(), "_NET_ACTIVE_WINDOW");
    if (!active.empty() && active.front() != XCB_WINDOW_NONE) return active.front();
  }
  const auto focus = connection_.reply(xcb_get_input_focus_reply, xcb_get_input_focus(connection_.get()));
  if (!focus) return std::nullopt;
  // Without a window manager the keyboard may follow the pointer, and a part of the window may have the
  // focus.
  WindowIdentifier window =
      focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT ? windowUnderPointer(connection_) : focus->focus;
  for (int depth = 0; depth < deepestWindow && window != XCB_WINDOW_NONE && window != connection_.root();
       ++depth, window = parent(connection_, window)) {
    if (has(connection_, window, "WM_CLASS")) return window;
  }
  return std::nullopt;
}

std::optional<platform::ProcessIdentifier> X11Windows::process(WindowIdentifier window) {
  if (isLocal(connection_, window)) {
    const auto own = connection_.values(window, "_NET_WM_PID");
    if (!own.empty() && own.front() != 0) return static_cast<platform::ProcessIdentifier>(own.front());
  }
  return connection_.creator(window);
}

std::optional<WindowClass> X11Windows::windowClass(WindowIdentifier window) {
  const auto both = connection_.text(window, "WM_CLASS");
  if (!both) return std::nullopt;
  const auto end = std::min(both->find('\0'), both->size());
  const auto nameAt = std::min(end + 1, both->size());
  return WindowClass{.instance = both->substr(0, end),
                     .name = both->substr(nameAt, both->find('\0', nameAt) - nameAt)};
}

std::optional<std::string> X11Windows::title(WindowIdentifier window) {
  auto modern = connection_.text(window, "_NET_WM_NAME");
  return modern ? modern : connection_.text(window, "WM_NAME");
}

std::vector<WindowIdentifier> X11Windows::shownWindows() {
  std::vector<WindowIdentifier> windows;
  const auto root = connection_.root();
  if (windowManager()) {
    windows = connection_.values(root, "_NET_CLIENT_LIST_STACKING");
    if (windows.empty()) windows = connection_.values(root, "_NET_CLIENT_LIST");
    std::ranges::reverse(windows);
  }
  if (windows.empty()) {
    for (const auto child : children(connection_, root)) collectShownWindows(connection_, child, 1, windows);
  }
  return windows;
}

std::vector<WindowIdentifier> X11Windows::applicationWindows() {
  const auto panel = connection_.atom("_NET_WM_WINDOW_TYPE_DOCK");
  const auto desktop = connection_.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
  const auto isPartOfDesktop = [&](WindowIdentifier window) {
    const auto types = connection_.values(window, "_NET_WM_WINDOW_TYPE");
    return std::ranges::any_of(types, [&](auto type) { return type == panel || type == desktop; });
  };
  auto windows = shownWindows();
  std::erase_if(windows, isPartOfDesktop);
  return windows;
}

std::optional<WindowIdentifier> X11Windows::windowOf(platform::ProcessIdentifier process) {
  const auto windows = shownWindows();
  const auto found =
      std::ranges::find_if(windows, [&](WindowIdentifier each) { return this->process(each) == process; });
  return found == windows.end() ? std::nullopt : std::optional(*found);
}

bool X11Windows::activate(WindowIdentifier window) {
  if (supports("_NET_ACTIVE_WINDOW")) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_.atom("_NET_ACTIVE_WINDOW");
    // 2 is a request from a pager: the user wants it, so the window manager must not compare time stamps.
    message.data.data32[0] = 2;
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
  } else {
    // Mapping brings a minimised window back.
    xcb_map_window(connection_.get(), window);
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  }
  return xcb_flush(connection_.get()) > 0;
}

std::optional<std::string> X11Windows::windowManager() const {
  const auto proof = connection_.values(connection_.root(), "_NET_SUPPORTING_WM_CHECK");
  if (proof.empty() || connection_.values(proof.front(), "_NET_SUPPORTING_WM_CHECK") != proof)
    return std::nullopt;
  return connection_.text(proof.front(), "_NET_WM_NAME").value_or("");
}

bool X11Windows::compositorRuns() const {
  return isOwned("_NET_WM_CM_S" + std::to_string(connection_.screen()));
}

bool X11Windows::statusAreaRuns() const {
  return isOwned("_NET_SYSTEM_TRAY_S" + std::to_string(connection_.screen()));
}

bool X11Windows::clipboardManagerRuns() const { return isOwned("CLIPBOARD_MANAGER"); }

std::optional<std::string> X11Windows::accessibilityBus() const {
  return connection_.text(connection_.root(), "AT_SPI_BUS");
}

bool X11Windows::isOwned(const std::string& selection) const {
  return connection_.selectionOwner(connection_.atom(selection)) != XCB_WINDOW_NONE;
}

bool X11Windows::supports(const std::string& hint) const {
  if (!windowManager()) return false;
  const auto hints = connection_.values(connection_.root(), "_NET_SUPPORTED");
  return std::ranges::find(hints, connection_.atom(hint)) != hints.end();
}

}  // namespace tavelo::linuxdesktop
