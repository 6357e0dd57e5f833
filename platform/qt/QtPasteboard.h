#pragma once

#include "platform/Pasteboard.h"

namespace tavelo::qt {

/// The general pasteboard over Qt's clipboard. Main thread, with an application object.
///
/// Types are MIME types, plain text excepted. The clipboard holds one item: several are written as one, whose
/// types are those of the first, then those that a later one adds. Reading waits for the owner of the
/// contents as long as Qt does, which cannot tell a silent owner from an empty clipboard; so an item list is
/// always reported. What we wrote ourselves is read without waiting.
class QtPasteboard final : public platform::Pasteboard {
 public:
  std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> pasteboardItems() override;
  void clearContents() override;
  /// The text carries the hint by which clipboard histories leave it out; it is not read back as a type.
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<platform::PasteboardItemContent>& items) override;
};

}  // namespace tavelo::qt
