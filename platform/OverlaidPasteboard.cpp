#include "platform/OverlaidPasteboard.h"

#include <algorithm>
#include <utility>

namespace tavelo::platform {
namespace {

constexpr Seconds keepTime{60.0};

/// A copy of an item, which stays readable whatever happens to the pasteboard.
class SavedItem final : public PasteboardItem {
 public:
  explicit SavedItem(PasteboardItemContent content) : content_(std::move(content)) {}

  std::vector<std::string> types() const override {
    std::vector<std::string> types;
    types.reserve(content_.representations.size());
    for (const auto& each : content_.representations) types.push_back(each.type);
    return types;
  }

  std::optional<std::string> data(const std::string& type) const override {
    const auto found = std::ranges::find(content_.representations, type, &PasteboardRepresentation::type);
    if (found == content_.representations.end()) return std::nullopt;
    return found->data;
  }

 private:
  const PasteboardItemContent content_;
};

}  // namespace

OverlaidPasteboard::~OverlaidPasteboard() { restore(); }

std::optional<std::vector<std::shared_ptr<PasteboardItem>>> OverlaidPasteboard::pasteboardItems() {
  if (std::exchange(isCleared_, false)) {
    overlay_.reset();
    below_.clearContents();
  }
  if (overlay_ && !readUsersCopy()) {
    overlay_.reset();
  } else if (!overlay_) {
    users_ = readBelow();
  }
  gaveList_ = users_.has_value();
  if (!users_) return std::nullopt;
  std::vector<std::shared_ptr<PasteboardItem>> items;
  items.reserve(users_->size());
  for (const auto& each : *users_) items.push_back(std::make_shared<SavedItem>(each));
  return items;
}

bool OverlaidPasteboard::setString(const std::string& text, const std::string& type) {
  if (std::exchange(isCleared_, false)) {
    if (std::exchange(gaveList_, false)) ++openSwaps_;
    overlay_ = Text{text, type};
    isKept_ = false;
    below_.clearContents();
  }
  return below_.setString(text, type);
}

bool OverlaidPasteboard::writeObjects(const std::vector<PasteboardItemContent>& items) {
  const bool isRestore = isCleared_ && openSwaps_ > 0;
  if (isRestore) {
    isCleared_ = false;
    if (--openSwaps_ == 0 && !isKept_) restore();
    return true;
  }
  if (std::exchange(isCleared_, false)) below_.clearContents();
  return below_.writeObjects(items);
}

void OverlaidPasteboard::prepareForPaste() {
  if (!overlay_ || readUsersCopy()) return;
  below_.clearContents();
  below_.setString(overlay_->text, overlay_->type);
}

void OverlaidPasteboard::prepareForSecondPaste() {
  prepareForPaste();
  below_.prepareForSecondPaste();
}

void OverlaidPasteboard::keepText(MainQueue& mainQueue) {
  if (!overlay_) return;
  prepareForPaste();
  isKept_ = true;
  mainQueue.asyncAfter(keepTime, lifetime_.guard([this, keep = ++keeps_] { endKeeping(keep); }));
}

void OverlaidPasteboard::endKeeping(unsigned keep) {
  if (!isKept_ || keep != keeps_) return;
  isKept_ = false;
  // If the user's contents are unknown, our text stays, and must not pass for the user's later.
  if (openSwaps_ == 0 && users_) restore();
}

OverlaidPasteboard::Contents OverlaidPasteboard::readBelow() {
  const auto items = below_.pasteboardItems();
  if (!items) return std::nullopt;
  std::vector<PasteboardItemContent> contents;
  contents.reserve(items->size());
  for (const auto& item : *items) {
    auto& copy = contents.emplace_back();
    for (auto& type : item->types()) {
      if (auto data = item->data(type)) copy.representations.push_back({std::move(type), std::move(*data)});
    }
  }
  return contents;
}

bool OverlaidPasteboard::readUsersCopy() {
  if (below_.hasOwnContents()) return true;
  auto contents = readBelow();
  if (contents && contents->size() == 1 && isOnlyText(contents->front(), overlay_->text)) return true;
  users_ = std::move(contents);
  return false;
}

void OverlaidPasteboard::restore() {
  if (overlay_ && users_ && (below_.hasOwnContents() || below_.holdsOnlyText(overlay_->text))) {
    below_.clearContents();
    if (!users_->empty()) below_.writeObjects(*users_);
  }
  overlay_.reset();
  users_.reset();
}

}  // namespace tavelo::platform
