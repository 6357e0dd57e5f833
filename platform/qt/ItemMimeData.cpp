#include "platform/qt/ItemMimeData.h"

#include <algorithm>
#include <utility>

namespace tavelo::qt {
namespace {

const QString plainText = QStringLiteral("text/plain");
/// Read by the clipboard histories of the common desktops.
const QString historyHint = QStringLiteral("x-kde-passwordManagerHint");

}  // namespace

QString mimeTypeOf(const std::string& pasteboardType) {
  return pasteboardType == platform::pasteboardTypeString ? plainText
                                                          : QString::fromStdString(pasteboardType);
}

std::string pasteboardTypeOf(const QString& mimeType) {
  return mimeType == plainText ? platform::pasteboardTypeString : mimeType.toStdString();
}

ItemMimeData::ItemMimeData(platform::PasteboardItemContent content, bool momentary)
    : content_(std::move(content)), momentary_(momentary) {}

QStringList ItemMimeData::formats() const {
  QStringList formats;
  for (const auto& each : content_.representations) formats.append(mimeTypeOf(each.type));
  if (momentary_) formats.append(historyHint);
  return formats;
}

bool ItemMimeData::hasFormat(const QString& mimeType) const { return formats().contains(mimeType); }

QVariant ItemMimeData::retrieveData(const QString& mimeType, QMetaType) const {
  const auto found = std::ranges::find(content_.representations, pasteboardTypeOf(mimeType),
                                       &platform::PasteboardRepresentation::type);
  if (found != content_.representations.end()) return QByteArray::fromStdString(found->data);
  if (momentary_ && mimeType == historyHint) return QByteArrayLiteral("secret");
  return {};
}

}  // namespace tavelo::qt
