#include "ui/qt/setup/SetupWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/Placement.h"
#include "ui/qt/QtGeometry.h"
#include "ui/qt/setup/AccessibilityRow.h"
#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/KeyRow.h"
#include "ui/qt/setup/MicrophoneRow.h"
#include "ui/qt/setup/RecognizerRow.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

constexpr int inset = 16;
constexpr int rowSpacing = 8;
/// In characters of the interface's font, so that the page grows with it.
constexpr int pageWidth = 84;
constexpr int trialLines = 3;
/// Of text, for what a download or a refusal adds to the page.
constexpr int spareLines = 4;
/// Of the screen's free height, for the frame that the window manager adds.
constexpr double screenShare = 0.92;

QFrame* separator(QWidget* parent) {
  auto* line = new QFrame(parent);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  return line;
}

}  // namespace

SetupWindow::SetupWindow(const SetupDesktop& desktop, RecognizerSetup& recognizer)
    : QWidget(nullptr, Qt::Window), desktop_(desktop) {
  setAttribute(Qt::WA_QuitOnClose, false);
  setObjectName("setup");
  setWindowTitle(setuptexts::title);

  auto* scroller = new QScrollArea(this);
  scroller->setWidgetResizable(true);
  scroller->setFrameShape(QFrame::NoFrame);
  scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroller->setFocusPolicy(Qt::NoFocus);
  scroller->setWidget(makePage(recognizer));

  auto* close = new QPushButton(setuptexts::close, this);
  close->setAccessibleName(accessibleNameOf(setuptexts::close));
  QObject::connect(close, &QPushButton::clicked, this, [this] { this->close(); });
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(inset, 8, inset, inset - 4);
  foot->addWidget(session_);
  foot->addStretch();
  foot->addWidget(close);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(scroller, 1);
  column->addLayout(foot);
  fitScreen();
}

QWidget* SetupWindow::makePage(RecognizerSetup& recognizer) {
  auto* page = new QWidget(this);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(inset, inset, inset, 4);
  column->setSpacing(rowSpacing);
  column->addWidget(makeParagraph(setuptexts::introduction, page));
  const auto add = [&](QWidget* row) {
    column->addWidget(separator(page));
    column->addWidget(row);
  };
  add(new MicrophoneRow(desktop_, page));
  add(new RecognizerRow(desktop_, recognizer, page));
  key_ = new KeyRow(desktop_, page);
  add(key_);
  add(new AccessibilityRow(desktop_, page));
  column->addWidget(separator(page));
  addTrial(*column, page);
  addSessionStart(*column, page);
  column->addStretch();
  return page;
}

void SetupWindow::addTrial(QVBoxLayout& page, QWidget* parent) {
  auto* label = new QLabel(setuptexts::tryHere, parent);
  trial_ = new QPlainTextEdit(parent);
  label->setBuddy(trial_);
  trial_->setAccessibleName(accessibleNameOf(setuptexts::tryHere));
  trial_->setTabChangesFocus(true);
  trial_->setFixedHeight(trial_->fontMetrics().lineSpacing() * trialLines + 16);
  auto* column = new QVBoxLayout;
  column->setSpacing(4);
  column->addWidget(label);
  column->addWidget(trial_);
  page.addLayout(column);
  // What is spoken next belongs into the field.
  key_->onChosen = [this] {
    trial_->setFocus();
    findChild<QScrollArea*>()->ensureWidgetVisible(trial_);
  };
  key_->onChange = [this] { nameKey(); };
  nameKey();
}

void SetupWindow::nameKey() {
  trial_->setPlaceholderText(QString::fromStdString(filled(setuptexts::tryHint, key_->keyName())));
  // Qt 6.4 draws the hint anew only when it appears.
  trial_->viewport()->update();
}

void SetupWindow::addSessionStart(QVBoxLayout& page, QWidget* parent) {
  sessionProblem_ = makeParagraph({}, parent);
  sessionProblem_->hide();
  page.addWidget(sessionProblem_);
  session_ = new QCheckBox(setuptexts::startWithSession, this);
  session_->setAccessibleName(accessibleNameOf(setuptexts::startWithSession));
  session_->setChecked(desktop_.startsWithSession());
  QObject::connect(session_, &QCheckBox::clicked, this, [this](bool on) {
    const auto problem = desktop_.startWithSession(on);
    sessionProblem_->setText(QString::fromStdString(filled(setuptexts::notSaved, problem)));
    sessionProblem_->setVisible(!problem.empty());
    session_->setChecked(desktop_.startsWithSession());
  });
}

/// As large as its page, unless the screen is smaller: then the page scrolls.
void SetupWindow::fitScreen() {
  auto* scroller = findChild<QScrollArea*>();
  const int width = fontMetrics().averageCharWidth() * pageWidth;
  const int page = scroller->widget()->layout()->totalHeightForWidth(width);
  const int foot = layout()->sizeHint().height() - scroller->sizeHint().height();
  QSize wanted(width + scroller->verticalScrollBar()->sizeHint().width(),
               page + foot + fontMetrics().lineSpacing() * spareLines);
  const auto screen = screenWithPointer(currentScreenLayout());
  if (!screen) return resize(wanted);
  const QRect free = toQt(screen->visibleFrame);
  wanted.setWidth(std::min(wanted.width(), free.width()));
  wanted.setHeight(std::min(wanted.height(), static_cast<int>(free.height() * screenShare)));
  resize(wanted);
  move(toQt(centredPosition(screen->visibleFrame, {double(wanted.width()), double(wanted.height())})));
}

bool SetupWindow::isChoosingKey() const { return key_->isChoosing(); }

void SetupWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (onClose) onClose();
}

void SetupWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace tavelo
