#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/linux/x11/pasteboard/XcbConnection.h"

namespace tavelo::linuxdesktop {

/// How long a read may take and how much it may bring, in all.
struct SelectionBudget {
  std::chrono::milliseconds time{600};
  std::size_t bytes = std::size_t{64} << 20U;
};

/// Takes a snapshot of another client's clipboard, on a connection of its own. Main thread.
///
/// Trusts the owner with nothing: whatever it sends, or fails to send, the budget holds. An owner whose
/// process has been stopped is not waited for.
class SelectionReader final {
 public:
  explicit SelectionReader(SelectionBudget budget = {});

  bool isConnected() const { return connection_.isConnected(); }

  /// The owner's window; XCB_WINDOW_NONE without an owner.
  xcb_window_t owner();

  /// What the owner delivers of its contents, as pasteboard types in its order; nothing without an owner.
  /// Absent when the owner did not answer, or ran out of time or was stopped before it delivered any.
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
  /// Reads and deletes a property; refused when it exceeds what is left of the budget.
  Delivery take(xcb_atom_t property);
  XcbOwned<xcb_generic_event_t> nextEvent();
  bool isOwnerStopped();
  /// What it means that no event came.
  Outcome silence() const { return ownerHasGone_ ? Outcome::refused : Outcome::timeOut; }

  const SelectionBudget budget_;
  XcbConnection connection_;
  const xcb_atom_t clipboard_;
  const xcb_atom_t targets_;
  const xcb_atom_t incr_;
  /// Made anew for each read, so that late answers to an earlier one are not mistaken for answers to this.
  xcb_window_t window_ = XCB_WINDOW_NONE;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
  bool ownerHasGone_ = false;
  bool ownerAnswered_ = false;
  XcbConnection::Instant deadline_;
  std::size_t bytesLeft_ = 0;
};

}  // namespace tavelo::linuxdesktop
