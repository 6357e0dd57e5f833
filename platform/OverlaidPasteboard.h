#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"

namespace tavelo::platform {

/// Lays dictated text over the user's clipboard for a moment, and gives the user's contents back. Wraps the
/// pasteboard of any backend; the wiring of a real desktop puts it in. Main thread.
///
/// Its caller saves the items, clears, sets a string, and seconds later clears again and writes the items
/// back. Such swaps may overlap, and the user may copy something meanwhile. So:
/// - While a text of ours lies there, reading gives what the user had before it.
/// - A restore is counted against the swaps that were given an item list. Only the last one takes our text
///   away; an earlier one would pull the clipboard from under a paste that is still to come.
/// - What another application puts there meanwhile is the user's, and no restore touches it. A clipboard
///   manager that takes over our own text, and adds nothing to it, does not count.
///
/// Clearing takes effect with the next operation, which tells a swap from a restore.
class OverlaidPasteboard final : public Pasteboard {
 public:
  /// `below`, the desktop's pasteboard, must outlive this.
  explicit OverlaidPasteboard(Pasteboard& below) : below_(below) {}
  /// Gives the user's contents back if text of ours still lies over them.
  ~OverlaidPasteboard() override;
  OverlaidPasteboard(const OverlaidPasteboard&) = delete;
  OverlaidPasteboard& operator=(const OverlaidPasteboard&) = delete;

  std::optional<std::vector<std::shared_ptr<PasteboardItem>>> pasteboardItems() override;
  void clearContents() override { isCleared_ = true; }
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<PasteboardItemContent>& items) override;
  bool hasOwnContents() override { return below_.hasOwnContents(); }
  PasteboardFetch fetchSincePaste() override { return below_.fetchSincePaste(); }
  void prepareForSecondPaste() override;
  bool holdsOnlyText(const std::string& text) override { return below_.holdsOnlyText(text); }

  /// To be called before a paste command goes out. If the user copied something since the text was set, the
  /// text goes over that again: the command must paste what was dictated.
  void prepareForPaste();

  /// The text could be put nowhere, so the user pastes it: it stays for 60 s from this call, and no restore
  /// takes it away before. A newer text ends that. Without effect if no text of ours lies there. `mainQueue`
  /// runs the restore; a copy by the user, and the end of this object, count as ever.
  void keepText(MainQueue& mainQueue);

  /// Gives the user's contents back now if text of ours lies over them, for the end of the program.
  void restore();

 private:
  struct Text {
    std::string text;
    std::string type;
  };
  using Contents = std::optional<std::vector<PasteboardItemContent>>;

  Contents readBelow();
  /// Reads what another application has put over our text, if any has. Reads only once, because an
  /// application that hangs takes the whole time that a read may take. True if our text is still there.
  bool readUsersCopy();
  void endKeeping(unsigned keep);

  Pasteboard& below_;
  bool isCleared_ = false;
  /// Whether the latest reading gave an item list, so that a restore will follow the swap.
  bool gaveList_ = false;
  /// Swaps whose restore is still to come.
  int openSwaps_ = 0;
  /// Our text, from the swap to the last restore.
  std::optional<Text> overlay_;
  /// What the overlay covers; absent when its owner did not answer.
  Contents users_;
  /// Whether our text stays after its last restore; and how often that was asked for, which tells an older
  /// timer from the current one.
  bool isKept_ = false;
  unsigned keeps_ = 0;
  Lifetime lifetime_;
};

}  // namespace tavelo::platform
