#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/Pasteboard.h"
#include "platform/linux/x11/XcbConnection.h"
#include "platform/linux/x11/pasteboard/ExpectedPaste.h"
#include "platform/linux/x11/pasteboard/PasteTarget.h"
#include "platform/linux/x11/pasteboard/SelectionContents.h"
#include "platform/linux/x11/pasteboard/SelectionTransfers.h"

namespace tavelo::linuxdesktop {

/// Owns the clipboard and serves its contents from a thread of its own, so that other clients, and our own
/// main thread, get them while the main thread is busy. Call it on the main thread; each call takes about one
/// round trip to the X server.
class SelectionOwner final {
 public:
  SelectionOwner();
  /// Gives up the clipboard.
  ~SelectionOwner();
  SelectionOwner(const SelectionOwner&) = delete;
  SelectionOwner& operator=(const SelectionOwner&) = delete;

  /// The window that owns the clipboard for us.
  xcb_window_t window() const { return window_; }

  /// Takes or keeps ownership, with these contents. False when the server refused or did not answer.
  bool own(std::vector<OfferedTarget> targets);

  /// A paste command goes to the application of `window` now; XCB_WINDOW_NONE when nobody knows which. If we
  /// own momentary text, that application may get it even when it reads late: see `ExpectedPaste`.
  void expectPaste(xcb_window_t window);
  /// A second command follows for the same text.
  void expectSecondPaste();
  /// Whether the target has fetched the text since the command. Does not wait.
  platform::PasteboardFetch fetchSincePaste() const { return fetch_; }

  /// Asks the desktop's clipboard manager, if one runs, to save what we own. Waits until it has, or until
  /// `deadline`.
  void handOver(XcbConnection::Instant deadline);

 private:
  struct Offer {
    xcb_atom_t target;
    xcb_atom_t type;
    SharedBytes bytes;
    bool isHint;
  };
  /// Who asks for the contents. `isTarget` is absent when that cannot be told.
  struct Asker {
    xcb_window_t window;
    std::optional<bool> isTarget;
  };

  /// Runs `work` on the thread and returns its result; false when that takes longer than `patience`.
  bool onThread(std::function<bool()> work, std::chrono::steady_clock::duration patience);
  void run();
  void runTasks();
  /// Waits for a task or an event, or until a transfer may have expired.
  void sleep();

  bool take(const std::vector<OfferedTarget>& targets);
  std::optional<xcb_timestamp_t> serverTime();
  bool passOn(XcbConnection::Instant deadline);
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  bool deliver(const Asker& asker, xcb_atom_t target, xcb_atom_t property);
  bool deliverSeveral(const Asker& asker, xcb_atom_t property);
  /// Notes that this asker asks for `target`, and says what it gets.
  ExpectedPaste::Serving servingFor(const Asker& asker, xcb_atom_t target);
  void replace(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
               const std::vector<std::uint32_t>& values);

  bool beginPaste(xcb_window_t window);
  void endPaste();
  /// Ends the paste when its time is up. Returns when to call again; absent when none is expected.
  std::optional<XcbConnection::Instant> expirePaste();
  std::optional<bool> isTarget(const xcb_selection_request_event_t& request) const;

  XcbConnection connection_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  const xcb_atom_t clipboard_, targetsAtom_, multiple_, timestamp_, saveTargets_, atomPair_, manager_,
      scratch_;
  std::vector<Offer> offers_;
  xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
  SelectionTransfers transfers_;

  ExpectedPaste expected_;
  PasteTarget target_{connection_};
  /// The text of the paste command.
  std::vector<Offer> text_;
  /// The target asked while it got something else than everybody, and may remember that.
  bool targetIsMisled_ = false;
  std::atomic<platform::PasteboardFetch> fetch_{platform::PasteboardFetch::unknown};

  std::mutex mutex_;
  std::vector<std::function<void()>> tasks_;
  bool ends_ = false;
  /// An event descriptor; wakes the thread for a task or for the end.
  const int wakeUp_;
  std::thread thread_;
};

}  // namespace tavelo::linuxdesktop
