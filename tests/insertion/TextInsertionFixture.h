#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "insertion/TextInsertionService.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {

/// An editor in front, a browser behind it, and something of the user's on the pasteboard.
class TextInsertionFixture : public testing::Test {
 protected:
  TextInsertionFixture() {
    editor_.bringToFront();
    pasteboard().copy("của người dùng");
    changesBefore_ = pasteboard().changeCount();
  }

  simulated::SimulatedField& field(const simulated::FieldBehaviour& behaviour,
                                   const std::string& value = "") {
    auto& field = editor_.addField("trang", behaviour);
    field.setValue(value);
    return field;
  }
  FocusTarget target(simulated::SimulatedField& field) {
    return {
        std::static_pointer_cast<platform::RunningApplication>(desktop_.workspace().frontmostApplication()),
        field.shared_from_this()};
  }
  void wait(double seconds) { desktop_.advance(platform::Seconds{seconds}); }
  simulated::SimulatedPasteboard& pasteboard() { return desktop_.pasteboard(); }
  bool pasteboardTouched() { return pasteboard().changeCount() != changesBefore_; }

  simulated::SimulatedDesktop desktop_;
  simulated::SimulatedApplication& browser_ = desktop_.openApplication("Trình duyệt");
  simulated::SimulatedApplication& editor_ = desktop_.openApplication("Soạn thảo");
  std::unique_ptr<TextInsertionService> service_ = std::make_unique<TextInsertionService>();
  std::uint64_t changesBefore_ = 0;
};

}  // namespace tavelo
