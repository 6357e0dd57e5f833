#include "ui/qt/ReviewTextView.h"

#include <QPlainTextDocumentLayout>
#include <QPointer>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <vector>

#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

/// A dictation of ten minutes stays in one piece.
constexpr qsizetype longestWhole = 10'000;
constexpr qsizetype longestPiece = 1'000;
constexpr double textInset = 10;
/// A number in the format of each block that goes on with the line of the block before it, different for
/// each. A block with the number of the block before it came off that one, since Qt copies the format when
/// the user breaks a line; so the two are lines of their own.
constexpr int continuationNumber = QTextFormat::UserProperty;

int numberOf(const QTextBlock& block) { return block.blockFormat().intProperty(continuationNumber); }

bool continuesLine(const QTextBlock& block) {
  return numberOf(block) != 0 && numberOf(block) != numberOf(block.previous());
}

/// What Qt makes a block of its own from, by one sign.
QString withLineFeeds(QString text) {
  text.replace("\r\n", "\n");
  for (const char16_t separator : {u'\r', u'\u2029', u'\ufdd0', u'\ufdd1'}) {
    text.replace(QChar(separator), QChar('\n'));
  }
  return text;
}

/// Where to cut `line`, when it is too long, at most `longestPiece` from `start`: behind the last space when
/// there is one, and never inside a surrogate pair.
qsizetype endOfPiece(QStringView line, qsizetype start) {
  if (line.size() <= longestWhole || line.size() - start <= longestPiece) return line.size();
  const qsizetype space = line.sliced(start, longestPiece).lastIndexOf(' ');
  if (space >= 0) return start + space + 1;
  const qsizetype end = start + longestPiece;
  return line[end].isLowSurrogate() ? end - 1 : end;
}

/// A text cut into pieces, and which of them continue the line of the one before.
struct Pieces {
  QString text;
  std::vector<bool> continuing;
};

Pieces piecesOf(const QString& text) {
  Pieces pieces;
  pieces.text.reserve(text.size() + text.size() / longestPiece * 2);
  for (qsizetype lineStart = 0; lineStart <= text.size();) {
    const qsizetype lineFeed = text.indexOf('\n', lineStart);
    const qsizetype lineEnd = lineFeed < 0 ? text.size() : lineFeed;
    const QStringView line = QStringView(text).sliced(lineStart, lineEnd - lineStart);
    qsizetype start = 0;
    do {
      const qsizetype end = endOfPiece(line, start);
      if (!pieces.continuing.empty()) pieces.text += '\n';
      pieces.continuing.push_back(start > 0);
      pieces.text += line.sliced(start, end - start);
      start = end;
    } while (start < line.size());
    lineStart = lineEnd + 1;
  }
  return pieces;
}

/// The pieces as blocks, without undo.
QTextDocument* documentOf(const Pieces& pieces) {
  auto* document = new QTextDocument;
  document->setUndoRedoEnabled(false);
  document->setPlainText(pieces.text);
  QTextBlock block = document->firstBlock();
  int number = 0;
  for (const bool continuing : pieces.continuing) {
    if (continuing) {
      QTextBlockFormat format;
      format.setProperty(continuationNumber, ++number);
      QTextCursor(block).setBlockFormat(format);
    }
    block = block.next();
  }
  return document;
}

}  // namespace

ReviewTextView::ReviewTextView(QWidget* parent) : QPlainTextEdit(parent) {
  setFont(systemFont(16));
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void ReviewTextView::setText(const std::string& text) {
  original_ = text;
  // A document of its own until it is whole: a view that watches lays out every piece on the way.
  auto* document = documentOf(piecesOf(withLineFeeds(QString::fromStdString(text))));
  document->setParent(this);
  document->setDefaultFont(font());
  document->setDocumentMargin(textInset);
  document->setDocumentLayout(new QPlainTextDocumentLayout(document));
  document->setUndoRedoEnabled(true);
  document->setModified(false);
  const QPointer<QTextDocument> before = this->document();
  setDocument(document);
  delete before;
}

std::string ReviewTextView::text() const {
  if (!document()->isModified()) return original_;
  // Not QPlainTextEdit's own text, which has plain spaces for those that do not break.
  QString text;
  for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next()) {
    if (block.blockNumber() > 0 && !continuesLine(block)) text += '\n';
    text += block.text();
  }
  return text.toStdString();
}

}  // namespace tavelo
