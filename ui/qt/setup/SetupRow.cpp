#include "ui/qt/setup/SetupRow.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "ui/qt/SystemAppearance.h"
#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

constexpr int controlIndent = 6;

const char* markText(Mark mark) {
  return mark == Mark::done      ? setuptexts::markDone
         : mark == Mark::working ? setuptexts::markWorking
                                 : setuptexts::markMissing;
}

}  // namespace

QLabel* makeParagraph(const QString& text, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setText(text);
  return label;
}

QString accessibleNameOf(const char* text) {
  QString name = QString(text).remove('&');
  while (name.endsWith(':') || name.endsWith(QStringLiteral("…"))) name.chop(1);
  return name;
}

StatusMark::StatusMark(QString subject, QWidget* parent) : QWidget(parent), subject_(std::move(subject)) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  show(Mark::missing);
}

void StatusMark::show(Mark mark) {
  mark_ = mark;
  setAccessibleName(QString::fromStdString(filled(markText(mark), subject_.toStdString())));
  update();
}

QSize StatusMark::sizeHint() const {
  const int side = fontMetrics().height() + 2;
  return {side, side};
}

void StatusMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height());
  const QRectF disc(1, 1, side - 2, side - 2);
  if (mark_ == Mark::done) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(systemGreen(palette()));
    painter.drawEllipse(disc);
    QPainterPath tick(QPointF(side * 0.28, side * 0.52));
    tick.lineTo(side * 0.44, side * 0.68);
    tick.lineTo(side * 0.73, side * 0.34);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, side * 0.11, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
    return;
  }
  painter.setPen(QPen(mark_ == Mark::working ? systemBlue(palette()) : secondaryLabel(palette()), 1.6));
  painter.drawEllipse(disc.adjusted(1, 1, -1, -1));
  if (mark_ != Mark::working) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(systemBlue(palette()));
  painter.drawEllipse(disc.center(), side * 0.16, side * 0.16);
}

SetupRow::SetupRow(const char* name, QWidget* parent) : QWidget(parent) {
  mark_ = new StatusMark(name, this);
  auto* title = new QLabel(name, this);
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  state_ = makeParagraph({}, this);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(10);
  row->addWidget(mark_, 0, Qt::AlignTop);
  body_ = new QVBoxLayout;
  body_->setSpacing(4);
  body_->addWidget(title);
  body_->addWidget(state_);
  row->addLayout(body_, 1);
}

void SetupRow::showLine(const LineState& line) {
  mark_->show(line.mark);
  const auto text = QString::fromStdString(line.text);
  if (state_->text() != text) state_->setText(text);
}

QHBoxLayout* SetupRow::addControls() {
  auto* controls = new QHBoxLayout;
  controls->setContentsMargins(0, 2, 0, 2);
  controls->setSpacing(controlIndent);
  body_->addLayout(controls);
  return controls;
}

QPushButton* SetupRow::addButton(QHBoxLayout* controls, const char* text) {
  auto* button = new QPushButton(text, this);
  button->setAccessibleName(accessibleNameOf(text));
  button->setAutoDefault(false);
  controls->addWidget(button);
  return button;
}

QLabel* SetupRow::addParagraph(const QString& text) {
  auto* label = makeParagraph(text, this);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  body_->addWidget(label);
  return label;
}

void SetupRow::explainVariable(const std::string& variable) {
  if (!variable.empty()) addParagraph(QString::fromStdString(filled(setuptexts::variableDecides, variable)));
}

}  // namespace tavelo
