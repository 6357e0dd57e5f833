#pragma once

#include <memory>

#include "platform/Clock.h"
#include "platform/Pasteboard.h"

namespace tavelo::macos {

/// The general pasteboard. Plain text is only promised, so that we learn when it is fetched. Main thread; a
/// call may wait for another application that has promised its data, as long as the system lets it.
///
/// The items of one reading deliver no more data 600 ms after it, nor more than 64 MiB in all: some
/// applications promise twenty types and take their time with each.
class MacPasteboard final : public platform::Pasteboard {
 public:
  /// `clock` must outlive this object and its items.
  explicit MacPasteboard(const platform::Clock& clock);
  ~MacPasteboard() override;
  MacPasteboard(const MacPasteboard&) = delete;
  MacPasteboard& operator=(const MacPasteboard&) = delete;

  std::optional<std::vector<std::shared_ptr<platform::PasteboardItem>>> pasteboardItems() override;
  void clearContents() override;
  bool setString(const std::string& text, const std::string& type) override;
  bool writeObjects(const std::vector<platform::PasteboardItemContent>& items) override;
  bool hasOwnContents() override;
  bool holdsOnlyText(const std::string& text) override;

  /// A promise is asked for once and then kept by the system. So the answer is `unknown` if somebody, such as
  /// a clipboard manager, asked before the paste command. It is never told who asks.
  platform::PasteboardFetch fetchSincePaste() override;

  /// The paste command goes out now.
  void pasteFollows();

 private:
  struct Promise;
  const platform::Clock& clock_;
  std::unique_ptr<Promise> promise_;
};

}  // namespace tavelo::macos
