#pragma once

#include <QPlainTextEdit>
#include <string>

namespace tavelo {

/// The review window's text area: plain text, wrapped to the width, Return for a line break.
///
/// Lines beyond ten thousand characters are laid out in pieces, each beginning on a line of its own,
/// because Qt takes minutes for one of millions; the pieces are joined again when the text is read. Main
/// thread.
class ReviewTextView final : public QPlainTextEdit {
 public:
  explicit ReviewTextView(QWidget* parent = nullptr);

  /// Replaces the content, and with it the user's edits and their undo. UTF-8.
  void setText(const std::string& text);

  /// The content, UTF-8: to the byte what was set as long as nothing is edited; from then on with line feeds
  /// for line breaks of every kind.
  std::string text() const;

 private:
  std::string original_;
};

}  // namespace tavelo
