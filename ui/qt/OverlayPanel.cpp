#include "ui/qt/OverlayPanel.h"

#include <QBitmap>
#include <QFontMetrics>
#include <QPainter>

#include "ui/Texts.h"
#include "ui/qt/QtGeometry.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr int cornerRadius = measures::overlayCornerRadius;
/// Far more than fits. A single character can carry millions of marks, and laying those out takes seconds.
constexpr qsizetype longestDrawn = 1000;

QBitmap roundedMask(QSize size) {
  QBitmap mask(size);
  mask.clear();
  QPainter painter(&mask);
  painter.setPen(Qt::color1);
  painter.setBrush(Qt::color1);
  painter.drawRoundedRect(QRect({}, size).adjusted(0, 0, -1, -1), cornerRadius, cornerRadius);
  return mask;
}

}  // namespace

void RecordingDotView::setActive(bool active) {
  isActive_ = active;
  update();
}

void RecordingDotView::paintEvent(QPaintEvent*) {
  constexpr int inset = measures::overlayDotInset;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(isActive_ ? systemRed(palette()) : systemGreen(palette()));
  painter.drawEllipse(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
}

OverlayLabel::OverlayLabel(const QFont& font, Qt::Alignment alignment, Qt::TextElideMode truncation,
                           QWidget* parent)
    : QLabel(parent), truncation_(truncation) {
  setFont(font);
  setTextFormat(Qt::PlainText);
  // Absolute, so that text running from right to left stays on the same side.
  setAlignment(alignment | Qt::AlignAbsolute | Qt::AlignVCenter);
}

void OverlayLabel::setSecondary(bool secondary) {
  secondary_ = secondary;
  update();
}

QString OverlayLabel::visibleText() const {
  const QString whole = text();
  const QString kept = truncation_ == Qt::ElideLeft ? whole.right(longestDrawn) : whole.left(longestDrawn);
  return QFontMetrics(font()).elidedText(kept, truncation_, width());
}

void OverlayLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(secondary_ ? secondaryLabel(palette()) : palette().color(QPalette::WindowText));
  // The text's own direction decides on which side its reader expects the ellipsis.
  painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextSingleLine, visibleText());
}

// X11 window managers keep the windows they manage on one workspace, below full-screen windows and in the
// taskbar; hence the bypass.
OverlayPanel::OverlayPanel(platform::Workspace& workspace)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      workspace_(workspace),
      dotView_(new RecordingDotView(this)),
      titleLabel_(new OverlayLabel(systemFont(measures::overlayTitleFont, QFont::DemiBold), Qt::AlignLeft,
                                   Qt::ElideRight, this)),
      detailLabel_(
          new OverlayLabel(systemFont(measures::overlayDetailFont), Qt::AlignRight, Qt::ElideLeft, this)) {
  setObjectName("overlay");
  setWindowTitle(texts::programName);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_TranslucentBackground);
  setFocusPolicy(Qt::NoFocus);
  setFixedSize(toQt(measures::compactSize));

  titleLabel_->setObjectName("overlay.title");
  detailLabel_->setObjectName("overlay.detail");
  detailLabel_->setSecondary(true);
  const OverlayFrames frames = overlayFrames(QFontMetrics(titleLabel_->font()).height());
  dotView_->setGeometry(toQt(frames.dot));
  titleLabel_->setGeometry(toQt(frames.title));
  detailLabel_->setGeometry(toQt(frames.detail));
}

bool OverlayPanel::hasRoomFor(const QString& detail) const {
  return QFontMetrics(detailLabel_->font()).horizontalAdvance(detail) <= detailLabel_->width();
}

void OverlayPanel::setContent(const QString& title, const QString& detail, bool active) {
  titleLabel_->setText(title);
  detailLabel_->setText(detail);
  dotView_->setActive(active);
  if (workspace_.windowsMayBeTranslucent()) {
    clearMask();
  } else if (mask().isEmpty()) {
    setMask(roundedMask(size()));
  }
  update();
}

void OverlayPanel::paintEvent(QPaintEvent*) {
  const bool translucent = mask().isEmpty();
  QColor body = palette().color(QPalette::Window);
  QColor edge = palette().color(QPalette::WindowText);
  edge.setAlphaF(0.18F);
  if (translucent) body.setAlphaF(0.94F);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(body);
  // A masked window shows as black whatever its body leaves out, so the body fills it.
  if (!translucent) painter.fillRect(rect(), body);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

}  // namespace tavelo
