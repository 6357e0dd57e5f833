#pragma once

#include <QMimeData>

#include "platform/Pasteboard.h"

namespace tavelo::qt {

/// One of our items on the clipboard: hands out the very bytes it was given, under the types in their order.
class ItemMimeData final : public QMimeData {
 public:
  /// A `momentary` item asks clipboard histories to leave it out.
  ItemMimeData(platform::PasteboardItemContent content, bool momentary);

  const platform::PasteboardItemContent& content() const { return content_; }
  bool momentary() const { return momentary_; }

  QStringList formats() const override;
  bool hasFormat(const QString& mimeType) const override;

 protected:
  QVariant retrieveData(const QString& mimeType, QMetaType type) const override;

 private:
  platform::PasteboardItemContent content_;
  bool momentary_;
};

/// The name of a pasteboard type on the clipboard, and back.
QString mimeTypeOf(const std::string& pasteboardType);
std::string pasteboardTypeOf(const QString& mimeType);

}  // namespace tavelo::qt
