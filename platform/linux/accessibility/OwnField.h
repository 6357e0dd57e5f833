#pragma once

#include <QObject>
#include <QPointer>
#include <string>

#include "platform/Accessibility.h"

namespace tavelo::linuxdesktop {

/// A text field of this program itself. We cannot ask ourselves over the accessibility bus: nobody would
/// answer while we wait. The field takes text as it would from an input method. Main thread.
class OwnField final : public platform::AXUIElement {
 public:
  /// The field with the keyboard focus; null if no window of ours is active or its focus takes no text. A
  /// password field never counts.
  static std::shared_ptr<OwnField> focused();

  explicit OwnField(QObject* field) : field_(field) {}

  /// Replaces the selection. Fails if the field has gone or takes no text any more.
  platform::AXError setSelectedText(const std::string& text) const;

 private:
  QPointer<QObject> field_;
};

}  // namespace tavelo::linuxdesktop
