#pragma once

#include <optional>
#include <string>
#include <vector>

#include "insertion/AttributeReader.h"
#include "insertion/FocusTarget.h"
#include "insertion/FocusTargetCaptureService.h"
#include "platform/Accessibility.h"
#include "platform/KeyboardEvents.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/Uuid.h"

namespace tavelo {

/// Writes finished text into the field the user was typing in when the dictation began.
///
/// Tries accessibility first, then the pasteboard with Command-V, then the Paste menu item, on a fixed
/// timetable. Reports nothing: the user sees the text arrive, or finds it in the history. Main thread only.
class TextInsertionService final {
 public:
  TextInsertionService();

  /// Starts inserting `text` (UTF-8) and returns at once. An empty text touches nothing, not even the
  /// pasteboard. A newer insertion that needs the pasteboard cancels the pending steps of an older one. What
  /// the user had on the pasteboard is put back 4 s later in any case. A call off the main thread stops the
  /// program.
  void insert(const std::string& text, const std::optional<FocusTarget>& target);

 private:
  /// What a field shows of the text after a paste.
  enum class InsertionVerification { inserted, missing, unavailable };

  struct Insertion {
    std::string text;
    FocusTarget target;
    platform::Uuid id;
  };

  std::optional<std::vector<platform::PasteboardItemContent>> savedPasteboard();
  void paste(const Insertion& insertion);
  bool insertWithAccessibility(const std::string& text, const platform::AXUIElementRef& element);
  bool replaceSelectionInValue(const std::string& text, const platform::AXUIElementRef& element);
  void sendPasteCommand(platform::RunningApplication* application);
  void retryPasteIfNeeded(const Insertion& insertion);
  void check(const Insertion& insertion);
  InsertionVerification verifyInsertion(const std::string& text, const platform::AXUIElementRef& element);

  platform::MainQueue& mainQueue_;
  platform::Pasteboard& pasteboard_;
  platform::Accessibility& accessibility_;
  platform::KeyboardEvents& keyboardEvents_;
  AttributeReader reader_;
  FocusTargetCaptureService focusCaptureService_;
  /// The newest insertion that took the pasteboard route; only its steps still run.
  platform::Uuid currentInsertionID_ = platform::Uuid::random();
  platform::Lifetime lifetime_;
};

}  // namespace tavelo
