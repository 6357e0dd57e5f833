#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/linux/x11/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// The limits of one read: its duration, and the bytes of all targets together.
struct SelectionBudget {
  std::chrono::milliseconds time{600};
  std::size_t bytes = std::size_t{64} << 20U;
};

/// Takes a snapshot of another client's clipboard, on a connection of its own. Main thread.
///
/// Does not trust the owner: whatever it sends or fails to send, the budget holds. Does not wait for an owner
/// whose process has been stopped.
class SelectionReader final {
 public:
  explicit SelectionReader(SelectionBudget budget = {});

  bool isConnected() const { return connection_.isConnected(); }

  /// The owner's window; XCB_WINDOW_NONE when there is no owner.
  xcb_window_t owner();

  /// The contents that the owner delivered, as pasteboard types in the owner's order; empty when there is no
  /// owner. Absent when the owner did not answer, or delivered nothing before its time ran out or it was
  /// stopped.
  std::optional<platform::PasteboardItemContent> read();

 private:
  enum class Outcome { delivered, refused, timeOut };
  struct Delivery {
    Outcome outcome = Outcome::refused;
    xcb_atom_t type = XCB_ATOM_NONE;
    int format = 0;
    std::string bytes{};
  };

  void begin(xcb_window_t owner);
  void watchOwner(std::uint32_t events);
  std::vector<xcb_atom_t> listedTargets();
  Delivery fetch(xcb_atom_t target);
  Delivery receiveIncrements(xcb_atom_t property);
  /// Reads and deletes a property; `refused` when it exceeds the rest of the budget.
  Delivery take(xcb_atom_t property);
  XcbOwned<xcb_generic_event_t> nextEvent();
  bool isOwnerStopped();
  /// The outcome when no event came.
  Outcome silence() const { return ownerHasGone_ ? Outcome::refused : Outcome::timeOut; }

  const SelectionBudget budget_;
  XcbConnection connection_;
  const xcb_atom_t clipboard_;
  const xcb_atom_t targets_;
  const xcb_atom_t incr_;
  /// A new one for each read, so that a late answer to an earlier read is not mistaken for one to this read.
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
  bool ownerHasGone_ = false;
  bool ownerAnswered_ = false;
  XcbConnection::Instant deadline_;
  std::size_t bytesLeft_ = 0;
};

}  // namespace tavelo::linuxdesktop
