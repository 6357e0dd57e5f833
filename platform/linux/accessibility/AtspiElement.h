#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/AtspiMessages.h"

namespace tavelo::linuxdesktop {

/// An element of an application, with what was read of it in advance. Main thread.
class AtspiElement final : public platform::AXUIElement {
 public:
  explicit AtspiElement(ElementReference reference) : reference_(std::move(reference)) {}

  const ElementReference& reference() const { return reference_; }

  struct Preview {
    /// The turn of the main queue for which this is valid.
    std::uint64_t turn = 0;
    QString name;
    std::vector<ElementReference> children;
  };
  void setPreview(Preview preview) { preview_ = std::move(preview); }
  /// Null if none was read in `turn`.
  const Preview* preview(std::uint64_t turn) const {
    return preview_ && preview_->turn == turn ? &*preview_ : nullptr;
  }

 private:
  ElementReference reference_;
  std::optional<Preview> preview_;
};

}  // namespace tavelo::linuxdesktop
