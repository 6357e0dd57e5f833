#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "platform/Workspace.h"

namespace tavelo::linuxdesktop {

struct FreeReply {
  void operator()(void* memory) const { std::free(memory); }
};
/// Memory that libxcb allocates and its caller frees.
template <class Reply>
using XcbOwned = std::unique_ptr<Reply, FreeReply>;

/// A connection to the X server through xcb, for windows and the clipboard. One thread at a time may use it.
///
/// Without a display, or once the server has gone, every answer is empty or absent and requests do nothing.
class XcbConnection final {
 public:
  using Instant = std::chrono::steady_clock::time_point;

  /// Connects to the display that the environment names.
  XcbConnection();
  ~XcbConnection();
  XcbConnection(const XcbConnection&) = delete;
  XcbConnection& operator=(const XcbConnection&) = delete;

  xcb_connection_t* get() const { return connection_; }
  bool isConnected() const { return xcb_connection_has_error(connection_) == 0; }
  /// Becomes readable when the server has sent something.
  int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }
  int screen() const { return screen_; }
  xcb_window_t root() const { return root_; }

  /// Waits for the reply to a request: `reply(xcb_query_tree_reply, xcb_query_tree(get(), window))`. Null
  /// when the server answers with an error.
  template <class Reply, class Cookie>
  XcbOwned<Reply> reply(Reply* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                        Cookie cookie) const {
    return XcbOwned<Reply>(wait(connection_, cookie, nullptr));
  }

  /// Creates a window that is never shown and reports changes of its properties. It lasts until the caller
  /// destroys it or the connection ends.
  xcb_window_t createWindow();

  /// XCB_ATOM_NONE when the server does not answer.
  xcb_atom_t atom(const std::string& name) const;

  /// The names of `atoms`, asked for all at once. The name of an invalid atom is empty.
  std::vector<std::string> names(const std::vector<xcb_atom_t>& atoms) const;

  /// The owner of a selection; XCB_WINDOW_NONE when there is none.
  xcb_window_t selectionOwner(xcb_atom_t selection) const;

  /// The first `units` * 4 bytes of a property, which is then deleted if `remove` is set and it was read to
  /// the end. Null when the window or the property does not exist.
  XcbOwned<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name,
                                              std::uint32_t units = 16384,
                                              xcb_atom_t type = XCB_GET_PROPERTY_TYPE_ANY,
                                              bool remove = false) const;

  /// The values of a 32-bit property; empty when it does not exist or has another width.
  std::vector<std::uint32_t> values(xcb_window_t window, const std::string& name) const;

  /// The bytes of an 8-bit property; absent when it does not exist or has another width.
  std::optional<std::string> text(xcb_window_t window, const std::string& name) const;

  /// The local process that created the window, according to the server. Absent when the server cannot tell,
  /// or when the process is on another machine. Takes well under a millisecond.
  std::optional<platform::ProcessIdentifier> creator(xcb_window_t window) const;

  /// Sends what is buffered, then waits for the next event until `deadline`. Null when none came or the
  /// server has gone.
  XcbOwned<xcb_generic_event_t> nextEvent(Instant deadline);

 private:
  int screen_ = 0;
  xcb_connection_t* const connection_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
};

/// The type of an event, whether the server or another client sent it.
inline int kindOf(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

std::string bytesOf(const xcb_get_property_reply_t& property);
/// Empty when the property is not 32 bits wide.
std::vector<std::uint32_t> valuesOf(const xcb_get_property_reply_t& property);

}  // namespace tavelo::linuxdesktop
