#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/linux/accessibility/ElementReference.h"

namespace tavelo::linuxdesktop {

/// An element of an application, with what was read of it ahead of being asked. Main thread.
class AtspiElement final : public platform::AXUIElement {
 public:
  explicit AtspiElement(ElementReference reference) : reference_(std::move(reference)) {}

  const ElementReference& reference() const { return reference_; }

  struct Preview {
    /// True in this turn of the main queue only.
    std::uint64_t turn = 0;
    QString name;
    std::vector<ElementReference> children;
  };
  void setPreview(Preview preview) { preview_ = std::move(preview); }
  /// Null when none was read in `turn`.
  const Preview* preview(std::uint64_t turn) const {
    return preview_ && preview_->turn == turn ? &*preview_ : nullptr;
  }

 private:
  ElementReference reference_;
  std::optional<Preview> preview_;
};

}  // namespace tavelo::linuxdesktop
