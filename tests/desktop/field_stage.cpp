// Shows one Qt field and an Edit menu. The first argument is the kind of field, the second its text. Prints
// the text of the field whenever it changes.

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSpinBox>
#include <QTimer>
#include <cstdio>

namespace {

void tell(const QString& text) {
  std::printf("%s\n", QString(text).replace(QLatin1Char('\n'), QLatin1String("\\n")).toUtf8().constData());
  std::fflush(stdout);
}

QLineEdit* lineEdit(const QString& text) {
  auto* edit = new QLineEdit(text);
  QObject::connect(edit, &QLineEdit::textChanged, edit, &tell);
  return edit;
}

/// Kinds of fields that make something else of what is pasted. They take keys and the menu, but no writing.
bool isChanging(const QString& kind) {
  return QStringList{QStringLiteral("upper"), QStringLiteral("joins"), QStringLiteral("empties"),
                     QStringLiteral("slow")}
      .contains(kind);
}

void pasteChanged(QLineEdit* edit, const QString& kind) {
  if (kind == QLatin1String("slow")) {
    // Pasting comes late, while everything else works, as in a browser whose page is busy.
    return QTimer::singleShot(900, edit, [edit] { pasteChanged(edit, QStringLiteral("upper")); });
  }
  auto text = QGuiApplication::clipboard()->text();
  if (kind == QLatin1String("empties")) return tell(QStringLiteral("sent ") + text);
  if (kind == QLatin1String("upper")) text = text.toUpper();
  if (kind == QLatin1String("joins")) text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  edit->setText(edit->text() + text);
}

QWidget* field(const QString& kind, const QString& text) {
  if (kind == QLatin1String("text")) {
    auto* edit = new QPlainTextEdit(text);
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [edit] { tell(edit->toPlainText()); });
    return edit;
  }
  if (kind == QLatin1String("spin")) return new QSpinBox;
  auto* edit = lineEdit(text);
  edit->setReadOnly(kind == QLatin1String("readonly") || isChanging(kind));
  if (isChanging(kind)) {
    QObject::connect(new QShortcut(QKeySequence::Paste, edit), &QShortcut::activated, edit,
                     [edit, kind] { pasteChanged(edit, kind); });
  }
  if (kind == QLatin1String("password")) edit->setEchoMode(QLineEdit::Password);
  if (kind != QLatin1String("combo")) return edit;
  auto* combo = new QComboBox;
  combo->setEditable(true);
  combo->setLineEdit(edit);
  return combo;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const auto arguments = QApplication::arguments();
  QMainWindow window;
  const auto kind = arguments.value(1);
  auto* central = field(kind, arguments.value(2));
  window.setCentralWidget(central);
  auto* edit = window.menuBar()->addMenu(QStringLiteral("&Sửa"));
  edit->addAction(QStringLiteral("&Chép"));
  QObject::connect(edit->addAction(QStringLiteral("&Dán")), &QAction::triggered, [central, kind] {
    tell("pasted");
    if (isChanging(kind)) return pasteChanged(qobject_cast<QLineEdit*>(central), kind);
    // The menu pastes even where keys cannot.
    if (auto* line = qobject_cast<QLineEdit*>(central); line != nullptr && line->isReadOnly())
      line->setText(line->text() + QGuiApplication::clipboard()->text());
  });
  window.resize(400, 200);
  window.show();
  central->setFocus();
  return QApplication::exec();
}
