#include "ui/qt/ReviewTextView.h"

#include <QTextDocument>

#include "ui/Measures.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

/// Whether `text` has a word of more than ten thousand characters. Qt's search for a place to wrap takes
/// quadratic time in a word: two minutes for a million characters, against one second when it may wrap
/// anywhere.
bool hasEndlessWord(const QString& text) {
  constexpr int longestWord = 10'000;
  int length = 0;
  for (const QChar each : text) {
    length = each == ' ' || each == '\n' ? 0 : length + 1;
    if (length > longestWord) return true;
  }
  return false;
}

}  // namespace

ReviewTextView::ReviewTextView(QWidget* parent) : QPlainTextEdit(parent) {
  setFont(systemFont(measures::reviewFont));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  document()->setDocumentMargin(measures::reviewTextInset);
}

void ReviewTextView::setText(const std::string& text) {
  original_ = text;
  const QString shown = QString::fromStdString(text);
  setWordWrapMode(hasEndlessWord(shown) ? QTextOption::WrapAnywhere
                                        : QTextOption::WrapAtWordBoundaryOrAnywhere);
  setPlainText(shown);
  moveCursor(QTextCursor::End);
}

std::string ReviewTextView::text() const {
  if (!document()->isModified()) return original_;
  // Unlike Qt's plain text, the raw text keeps non-breaking spaces.
  return document()->toRawText().replace(QChar::ParagraphSeparator, '\n').toStdString();
}

}  // namespace tavelo
