#pragma once

#include <optional>

#include "platform/Pasteboard.h"
#include "platform/linux/x11/pasteboard/SelectionContents.h"
#include "platform/linux/x11/pasteboard/SelectionOwner.h"
#include "platform/linux/x11/pasteboard/SelectionReader.h"

namespace tavelo::linuxdesktop {

/// The general pasteboard on X11's CLIPBOARD; the selection of the middle button is left alone. Main thread,
/// with an application object.
///
/// Types are the names of targets, except for plain text. The clipboard holds one item. Several items are
/// written as one: the types of the first, then those that a later one adds. Reading takes at most 600 ms and
/// 64 MiB and leaves out what does not fit. Reading what this program itself owns asks no other client.
class X11Pasteboard final : public platform::Pasteboard {
 public:
  explicit X11Pasteboard(SelectionBudget budget = {});
  /// Hands what we own over to the desktop's clipboard manager, in at most 1 s. If that is momentary text and
  /// the user's own contents are known, puts those back first.
  ~X11Pasteboard() override;

  std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> pasteboardItems() override;
  void clearContents() override;
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<platform::PasteboardItemContent>& items) override;
  bool hasOwnContents() override;
  /// Waits at most 150 ms for the owner.
  bool holdsOnlyText(const std::string& text) override;
  platform::PasteboardFetch fetchSincePaste() override { return owner_.fetchSincePaste(); }
  void prepareForSecondPaste() override { owner_.expectSecondPaste(); }

  /// To be called right before a paste command goes out to `window`, or to nobody knows whom.
  void expectPaste(std::optional<xcb_window_t> window) {
    owner_.expectPaste(window.value_or(xcb_window_t{XCB_WINDOW_NONE}));
  }

 private:
  /// Absent when the owner does not answer.
  std::optional<SelectionContents> contents();
  bool own(SelectionContents contents);

  SelectionReader reader_;
  SelectionOwner owner_;
  /// What we wrote last.
  SelectionContents own_;
  /// What was on the clipboard before the momentary text; absent when unknown.
  std::optional<SelectionContents> users_;
};

}  // namespace tavelo::linuxdesktop
