#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tavelo::linuxdesktop {

struct FreeReply {
  void operator()(void* memory) const { std::free(memory); }
};
/// What libxcb allocates and its caller frees.
template <class Reply>
using XcbOwned = std::unique_ptr<Reply, FreeReply>;

/// A connection to the X server with a window of its own that is never shown. Used by one thread at a time.
///
/// Without a display, or once the server is gone, everything is empty, absent or without effect.
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
  /// Readable when the server has sent something.
  int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }

  /// A new window that reports the changes of its properties. The caller destroys it, or the connection does.
  xcb_window_t createWindow();

  /// XCB_ATOM_NONE when the server did not answer.
  xcb_atom_t atom(const std::string& name);

  /// The names of `atoms` in one burst; an empty one for what is no atom.
  std::vector<std::string> names(const std::vector<xcb_atom_t>& atoms);

  /// Who owns a selection; XCB_WINDOW_NONE when nobody does.
  xcb_window_t selectionOwner(xcb_atom_t selection);

  /// The next event, waiting for it until `deadline`; null when none came or the server has gone.
  XcbOwned<xcb_generic_event_t> nextEvent(Instant deadline);

 private:
  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
};

/// What kind of event it is, however it was sent.
inline int kindOf(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

}  // namespace tavelo::linuxdesktop
