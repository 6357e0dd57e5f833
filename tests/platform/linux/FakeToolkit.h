#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QThread>
#include <QVariant>
#include <QVariantList>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "platform/linux/accessibility/ElementReference.h"

namespace tavelo::linuxdesktop {

/// A list of references as the protocol sends it.
QVariant references(const QList<ElementReference>& elements);

/// A property's value as the protocol sends it.
QVariant propertyValue(const QVariant& value);

/// A bus of its own, on which it is both the desktop's accessibility service and an application with one text
/// field. The field counts code points, as GTK does; every answer can be replaced. Answers on a thread of its
/// own.
class FakeToolkit final : public QDBusVirtualObject {
 public:
  /// Absent: the application does not answer.
  using Answer = std::function<std::optional<QVariantList>(const QVariantList& arguments)>;

  /// Starts a bus at the first call; null where there is no program for it.
  static FakeToolkit* instance();

  ElementReference field() const;
  std::u32string text;
  int start = 0;
  int end = 0;

  /// Back to a well-behaved GTK field that holds `content`, with a selection.
  void reset(std::u32string content, int selectionStart, int selectionEnd);
  void answer(const QString& member, Answer answer);
  void answerAlways(const QString& member, const QVariantList& values);
  /// Whatever is asked gets these values.
  void answerEverything(const QVariantList& values);
  int calls(const QString& member);

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  QString introspect(const QString&) const override { return {}; }

 private:
  explicit FakeToolkit(const QString& address);

  std::mutex mutex_;
  std::map<QString, Answer> answers_;
  std::map<QString, int> calls_;
  QString address_;
  QThread thread_;
  QDBusConnection connection_;
};

}  // namespace tavelo::linuxdesktop
