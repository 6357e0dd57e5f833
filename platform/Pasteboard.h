#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavelo::platform {

/// The type of plain text.
inline constexpr const char* pasteboardTypeString = "public.utf8-plain-text";

/// One item found on the pasteboard. Main thread; shared, and readable only until the pasteboard changes.
class PasteboardItem {
 public:
  virtual ~PasteboardItem() = default;

  /// The types the item offers, in its order of preference.
  virtual std::vector<std::string> types() const = 0;

  /// The bytes for `type`; absent when the owner does not deliver them.
  virtual std::optional<std::string> data(const std::string& type) const = 0;
};

/// One type of an item to be written, with its bytes.
struct PasteboardRepresentation {
  std::string type;
  std::string data;

  bool operator==(const PasteboardRepresentation&) const = default;
};

/// An item to be written: its types in order.
struct PasteboardItemContent {
  std::vector<PasteboardRepresentation> representations;

  bool operator==(const PasteboardItemContent&) const = default;
};

/// The general pasteboard. Main thread; a backend bounds how long any call may take.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// What is on the pasteboard, in order; an empty list when nothing is. Absent when the platform reports no
  /// item list at all (the owner does not answer): then nothing is known of the user's contents.
  virtual std::optional<std::vector<std::shared_ptr<PasteboardItem>>> pasteboardItems() = 0;

  /// Removes everything and takes ownership.
  virtual void clearContents() = 0;

  /// Adds `text` (UTF-8) as `type`; meant for text that stays only for a moment, so a backend keeps it out of
  /// clipboard histories where the desktop has a way to ask for that. False when the platform refused.
  virtual bool setString(const std::string& text, const std::string& type) = 0;

  /// Adds `items` in order. False when the platform refused.
  virtual bool writeObjects(const std::vector<PasteboardItemContent>& items) = 0;
};

}  // namespace tavelo::platform
