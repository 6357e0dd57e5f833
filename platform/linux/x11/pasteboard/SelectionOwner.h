#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/linux/x11/pasteboard/SelectionContents.h"
#include "platform/linux/x11/pasteboard/SelectionTransfers.h"
#include "platform/linux/x11/pasteboard/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// Owns the clipboard and hands out its contents from a thread of its own: whoever asks is served while the
/// main thread is busy, or is itself the one who asks. Operations: main thread; each takes about a
/// round trip to the X server.
class SelectionOwner final {
 public:
  SelectionOwner();
  /// Gives the clipboard up.
  ~SelectionOwner();
  SelectionOwner(const SelectionOwner&) = delete;
  SelectionOwner& operator=(const SelectionOwner&) = delete;

  /// The window in whose name the clipboard is owned.
  xcb_window_t window() const { return window_; }

  /// Takes ownership, or keeps it, with these contents. False when the server refused or did not answer.
  bool own(std::vector<OfferedTarget> targets);

  /// Has the desktop's clipboard manager, if one runs, take over what we own; waits for it at most until
  /// `deadline`.
  void handOver(XcbConnection::Instant deadline);

 private:
  struct Offer {
    xcb_atom_t target;
    xcb_atom_t type;
    std::shared_ptr<const std::string> bytes;
  };

  /// Runs `work` on the thread and waits for its answer, false when that takes too long.
  bool onThread(std::function<bool()> work, std::chrono::steady_clock::duration patience);
  void run();
  void runTasks();
  /// Until something is to be done; a transfer under way ends the wait, too.
  void sleep();

  bool take(const std::vector<OfferedTarget>& targets);
  std::optional<xcb_timestamp_t> serverTime();
  bool passOn(XcbConnection::Instant deadline);
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  bool deliver(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
  bool deliverSeveral(xcb_window_t requestor, xcb_atom_t property);
  void replace(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
               const std::vector<std::uint32_t>& values);

  XcbConnection connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  const xcb_atom_t clipboard_, targetsAtom_, multiple_, timestamp_, saveTargets_, atomPair_, manager_,
      scratch_;
  std::vector<Offer> offers_;
  xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
  SelectionTransfers transfers_;

  std::mutex mutex_;
  std::vector<std::function<void()>> tasks_;
  bool ends_ = false;
  /// An event descriptor; the thread sleeps on it and on the connection.
  const int wakeUp_;
  std::thread thread_;
};

}  // namespace tavelo::linuxdesktop
