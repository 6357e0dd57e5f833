#include "platform/qt/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <algorithm>
#include <memory>
#include <utility>

#include "platform/qt/ItemMimeData.h"

namespace tavelo::qt {
namespace {

using platform::PasteboardItem;
using platform::PasteboardItemContent;
using platform::PasteboardRepresentation;

class OwnItem final : public PasteboardItem {
 public:
  explicit OwnItem(PasteboardItemContent content) : content_(std::move(content)) {}

  std::vector<std::string> types() const override {
    std::vector<std::string> types;
    for (const auto& each : content_.representations) types.push_back(each.type);
    return types;
  }
  std::optional<std::string> data(const std::string& type) const override {
    const auto found = std::ranges::find(content_.representations, type, &PasteboardRepresentation::type);
    if (found == content_.representations.end()) return std::nullopt;
    return found->data;
  }

 private:
  PasteboardItemContent content_;
};

/// What another application put there, fetched from it type by type.
class ForeignItem final : public PasteboardItem {
 public:
  explicit ForeignItem(const QMimeData* mimeData) : mimeData_(mimeData) {}

  std::vector<std::string> types() const override {
    std::vector<std::string> types;
    if (mimeData_ == nullptr) return types;
    // X11 lists these beside the types; they are requests to the owner.
    static const QStringList requests{"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"};
    for (const QString& format : mimeData_->formats()) {
      if (!requests.contains(format)) types.push_back(pasteboardTypeOf(format));
    }
    return types;
  }
  std::optional<std::string> data(const std::string& type) const override {
    if (mimeData_ == nullptr || !mimeData_->hasFormat(mimeTypeOf(type))) return std::nullopt;
    return mimeData_->data(mimeTypeOf(type)).toStdString();
  }

 private:
  QPointer<const QMimeData> mimeData_;
};

/// What is on the clipboard and of our making; null when there is nothing of ours.
const ItemMimeData* ownContents() {
  return dynamic_cast<const ItemMimeData*>(QGuiApplication::clipboard()->mimeData());
}

/// Puts `added` behind what we have put there already.
bool add(const std::vector<PasteboardRepresentation>& added, bool momentary) {
  PasteboardItemContent content;
  if (const auto* own = ownContents()) {
    content = own->content();
    momentary = momentary || own->momentary();
  }
  for (const auto& each : added) {
    if (std::ranges::find(content.representations, each.type, &PasteboardRepresentation::type) ==
        content.representations.end()) {
      content.representations.push_back(each);
    }
  }
  // The clipboard owns what it is given.
  QGuiApplication::clipboard()->setMimeData(new ItemMimeData(std::move(content), momentary));
  return ownContents() != nullptr;
}

}  // namespace

std::optional<std::vector<std::shared_ptr<PasteboardItem>>> QtPasteboard::pasteboardItems() {
  const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
  std::vector<std::shared_ptr<PasteboardItem>> items;
  if (const auto* own = dynamic_cast<const ItemMimeData*>(mimeData)) {
    items.push_back(std::make_shared<OwnItem>(own->content()));
  } else if (mimeData != nullptr) {
    auto item = std::make_shared<ForeignItem>(mimeData);
    if (!item->types().empty()) items.push_back(std::move(item));
  }
  return items;
}

void QtPasteboard::clearContents() { QGuiApplication::clipboard()->clear(); }

bool QtPasteboard::setString(const std::string& text, const std::string& type) {
  return add({{type, text}}, true);
}

bool QtPasteboard::writeObjects(const std::vector<PasteboardItemContent>& items) {
  std::vector<PasteboardRepresentation> representations;
  for (const auto& item : items) {
    representations.insert(representations.end(), item.representations.begin(), item.representations.end());
  }
  return representations.empty() || add(representations, false);
}

}  // namespace tavelo::qt
