#include "ui/qt/OverlayPanel.h"

#include <QBitmap>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include "ui/Texts.h"
#include "ui/qt/OverlayShadow.h"
#include "ui/qt/QtGeometry.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr int cornerRadius = measures::overlayCornerRadius;
/// Far more than fits. A single character can carry millions of marks, and laying those out takes seconds.
constexpr qsizetype longestDrawn = 1000;

/// Every pixel of which the rounded body covers a quarter or more.
QBitmap roundedMask(QSize size) {
  QImage body(size, QImage::Format_ARGB32_Premultiplied);
  body.fill(Qt::transparent);
  QPainter painter(&body);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRoundedRect(QRect({}, size), cornerRadius, cornerRadius);
  painter.end();
  QImage mask(size, QImage::Format_MonoLSB);
  mask.setColorTable({QColor(Qt::white).rgb(), QColor(Qt::black).rgb()});
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) mask.setPixel(x, y, qAlpha(body.pixel(x, y)) >= 64 ? 1U : 0U);
  }
  return QBitmap::fromImage(mask);
}

QColor mixed(const QColor& one, const QColor& other, float share) {
  const auto mix = [share](float a, float b) { return a + (b - a) * share; };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
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

void OverlayLabel::drawInParent(QPainter& painter) const {
  painter.setFont(font());
  painter.setPen(secondary_ ? secondaryLabel(palette()) : palette().color(QPalette::WindowText));
  // The text's own direction decides on which side its reader expects the ellipsis.
  painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  painter.drawText(geometry(), static_cast<int>(alignment()) | Qt::TextSingleLine | Qt::TextDontClip,
                   visibleText());
}

// X11 window managers keep the windows they manage on one workspace, below full-screen windows and in the
// taskbar; hence the bypass.
OverlayPanel::OverlayPanel(platform::Workspace& workspace)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::BypassWindowManagerHint),
      workspace_(workspace),
      shadow_(std::make_unique<OverlayShadow>()),
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

OverlayPanel::~OverlayPanel() = default;

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

void OverlayPanel::showOnTop() {
  shadow_->setVisible(isTranslucent() && OverlayShadow::isPossible());
  shadow_->surround(geometry());
  shadow_->raise();
  show();
  raise();
}

void OverlayPanel::moveEvent(QMoveEvent*) { shadow_->surround(geometry()); }

void OverlayPanel::hideEvent(QHideEvent*) { shadow_->hide(); }

void OverlayPanel::paintEvent(QPaintEvent*) {
  QColor body = palette().color(QPalette::Window);
  const QColor text = palette().color(QPalette::WindowText);
  QColor edge = text;
  edge.setAlphaF(0.18F);
  if (isTranslucent()) body.setAlphaF(0.94F);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(edge, 1));
  painter.setBrush(body);
  // A mask cuts whole pixels. What the body covers only in part fades into a tone between light and dark,
  // which looks smooth on most of what may lie beneath.
  if (!isTranslucent()) painter.fillRect(rect(), mixed(body, text, 0.45F));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
  titleLabel_->drawInParent(painter);
  detailLabel_->drawInParent(painter);
}

}  // namespace tavelo
