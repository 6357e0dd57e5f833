#pragma once

#include <QPlainTextEdit>
#include <string>

namespace tavelo {

/// The review window's text area: plain text, wrapped to the width, Return for a line break. Main thread.
class ReviewTextView final : public QPlainTextEdit {
 public:
  explicit ReviewTextView(QWidget* parent = nullptr);

  /// Replaces the content, puts the caret behind it and forgets what can be undone. UTF-8.
  void setText(const std::string& text);

  /// The content, UTF-8. Byte for byte what was set, unless the user edited it; then every kind of line break
  /// is a line feed.
  std::string text() const;

 private:
  std::string original_;
};

}  // namespace tavelo
