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
/// Types are the names of targets, plain text excepted. The clipboard holds one item: several are written as
/// one, whose types are those of the first, then those that a later one adds. Reading takes 600 ms and 64 MiB
/// at most; what could not be had in that is left out. Reading what this program itself owns asks nobody.
class X11Pasteboard final : public platform::Pasteboard {
 public:
  explicit X11Pasteboard(SelectionBudget budget = {});
  /// Hands what we own over to the desktop's clipboard manager, in 1 s at most. While text that was to stay
  /// only for a moment is there, the user's own contents are put back for it.
  ~X11Pasteboard() override;

  std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> pasteboardItems() override;
  void clearContents() override;
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<platform::PasteboardItemContent>& items) override;

 private:
  /// Absent when the owner does not answer.
  std::optional<SelectionContents> contents();
  bool own(SelectionContents contents);

  SelectionReader reader_;
  SelectionOwner owner_;
  /// What we put there last.
  SelectionContents own_;
  /// What was there before the momentary text came; absent when it is not known.
  std::optional<SelectionContents> users_;
};

}  // namespace tavelo::linuxdesktop
