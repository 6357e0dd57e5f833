#pragma once

#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace tavelo {

class ReviewTextView;

/// The window in which the user edits a finished text before it is inserted. Built hidden, once, and reused
/// for every review. Main thread only.
class ReviewWindowController final {
 public:
  /// Builds the window, hidden.
  ReviewWindowController();
  ~ReviewWindowController();
  ReviewWindowController(const ReviewWindowController&) = delete;
  ReviewWindowController& operator=(const ReviewWindowController&) = delete;

  /// Called after the user closed the window without confirming, by "Hủy" or its close button.
  std::function<void()> onDismiss;

  /// Offers `text` (UTF-8) for editing and takes the focus. Replaces any earlier text and callback.
  /// `onInsert` gets the edited text, possibly empty, each time the user presses "Chèn". The window closes
  /// after that call, unless the call began another review.
  void show(const std::string& text, std::function<void(const std::string&)> onInsert);

  /// Whether a text is being reviewed.
  bool isShown() const;

 private:
  void buildContent();
  void insert();
  void cancel();

  std::function<void(const std::string&)> onInsert_;
  /// Counts the calls of `show`.
  unsigned reviews_ = 0;
  std::unique_ptr<QWidget> window_;
  /// Child of the window.
  ReviewTextView* textView_;
};

}  // namespace tavelo
