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

#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {

/// A list of references as the protocol sends it.
QVariant references(const QList<ElementReference>& elements);

/// A property's value as the protocol sends it.
QVariant propertyValue(const QVariant& value);

/// Runs its own bus, on which it is both the desktop's accessibility service and an application with one text
/// field. The field counts code points, as GTK does. Every answer can be replaced. Answers on its own thread.
class FakeToolkit final : public QDBusVirtualObject {
 public:
  /// An absent result means that the application does not answer.
  using Answer = std::function<std::optional<QVariantList>(const QVariantList& arguments)>;

  /// The first call starts the bus; null if no bus program is installed.
  static FakeToolkit* instance();

  /// The bus's address.
  const QString& address() const { return address_; }
  ElementReference field() const;
  std::u32string text;
  int start = 0;
  int end = 0;
  /// The element that the current request is for.
  QString path;

  /// Turns it back into a well-behaved GTK field with `content` and a selection.
  void reset(std::u32string content, int selectionStart, int selectionEnd);
  void answer(const QString& member, Answer answer);
  void answerAlways(const QString& member, const QVariantList& values);
  /// Answers every request with these values.
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
