#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavelo::platform {

/// The type of plain text, by its macOS name.
inline constexpr const char* pasteboardTypeString = "public.utf8-plain-text";

/// One item on the pasteboard. Shared, but readable only until the pasteboard changes. Main thread.
class PasteboardItem {
 public:
  virtual ~PasteboardItem() = default;

  /// The types that the item offers, in its order of preference.
  virtual std::vector<std::string> types() const = 0;

  /// The bytes of `type`; absent if the pasteboard's owner does not deliver them.
  virtual std::optional<std::string> data(const std::string& type) const = 0;
};

/// One type of an item to write, with its bytes.
struct PasteboardRepresentation {
  std::string type;
  std::string data;

  bool operator==(const PasteboardRepresentation&) const = default;
};

/// An item to write: its types in order.
struct PasteboardItemContent {
  std::vector<PasteboardRepresentation> representations;

  bool operator==(const PasteboardItemContent&) const = default;
};

/// Whether the application that got the paste command has fetched our text since.
enum class PasteboardFetch : std::uint8_t { yes, no, unknown };

/// Whether an item is this plain text and nothing else, such as markup of it. A clipboard manager that keeps
/// a text writes such an item.
inline bool isOnlyText(const PasteboardItemContent& item, const std::string& text) {
  // X11's plain texts have names such as UTF8_STRING. Other kinds of data have slashes or dots in theirs.
  const auto isPlainText = [](const std::string& type) {
    return type == pasteboardTypeString || type.starts_with("text/plain") ||
           type.find_first_of("/.") == std::string::npos;
  };
  const auto& all = item.representations;
  return std::ranges::find(all, PasteboardRepresentation{pasteboardTypeString, text}) != all.end() &&
         std::ranges::all_of(all, [&](const auto& each) { return isPlainText(each.type); });
}

/// The general pasteboard, which Linux calls the clipboard. Main thread; the backend bounds the time of every
/// call.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// The items on the pasteboard, in order; may be empty. Absent if the owner does not answer, so that the
  /// user's contents are unknown.
  virtual std::optional<std::vector<std::shared_ptr<PasteboardItem>>> pasteboardItems() = 0;

  /// Removes everything and takes ownership.
  virtual void clearContents() = 0;

  /// Adds `text` (UTF-8) as `type`. The text is meant to stay only for a moment, so a backend keeps it out of
  /// clipboard histories if the desktop allows that. False on failure.
  virtual bool setString(const std::string& text, const std::string& type) = 0;

  /// Adds `items` in order. False on failure.
  virtual bool writeObjects(const std::vector<PasteboardItemContent>& items) = 0;

  /// Whether this program wrote what is there now, or emptied it. False once another application has put
  /// something there.
  virtual bool hasOwnContents() = 0;

  /// Whether another application has put this plain text there and nothing else. False if its owner does not
  /// answer soon.
  virtual bool holdsOnlyText(const std::string& text) = 0;

  /// Whether the latest paste command has led to a paste of our text. Only its target counts, and only a read
  /// of the text itself. `unknown` on a pasteboard that does not see who reads.
  virtual PasteboardFetch fetchSincePaste() { return PasteboardFetch::unknown; }

  /// A second paste command for the same text follows, because the first one seems lost. If the target obeys
  /// both, only the first paste gets the text, and the second one nothing. Without effect on a pasteboard
  /// that does not see who reads.
  virtual void prepareForSecondPaste() {}
};

}  // namespace tavelo::platform
