#include "ui/qt/AboutPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <utility>

#include "ui/ProductData.h"
#include "ui/qt/IconImages.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr QSize accessorySize{320, 158};
constexpr QRect portraitFrame{136, 14, 48, 48};
constexpr QRect textFrame{0, 66, 320, 58};
constexpr QRect linkFrame{0, 134, 320, 24};
constexpr int iconSize = 64;

QLabel* wrappingLabel(const QString& text, const QFont& font, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  label->setFont(font);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return label;
}

}  // namespace

AboutPanel::AboutPanel(const QIcon& icon, const std::optional<std::string>& portrait,
                       std::function<void(const std::string&)> openLink)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowCloseButtonHint),
      openLink_(std::move(openLink)) {
  setAttribute(Qt::WA_QuitOnClose, false);
  setObjectName("about");
  setWindowTitle("Tavelo");
  setWindowIcon(icon);

  auto* picture = new QLabel(this);
  picture->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
  auto* close = new QPushButton("Đóng", this);
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(20, 20, 20, 16);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(8);
  grid->addWidget(picture, 0, 0, 2, 1, Qt::AlignTop);
  grid->addWidget(wrappingLabel("Tavelo", systemFont(15, QFont::Bold), this), 0, 1);
  auto* what = wrappingLabel(
      "Tavelo là ứng dụng hỗ trợ đọc thoại và chuyển giọng nói tiếng Việt thành văn bản trên macOS.",
      systemFont(13), this);
  what->setFixedWidth(accessorySize.width());
  grid->addWidget(what, 1, 1);
  grid->addWidget(accessoryView(portrait), 2, 1);
  grid->addWidget(close, 3, 1, Qt::AlignRight);
  // The panel is as large as its content, always.
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* AboutPanel::accessoryView(const std::optional<std::string>& portrait) {
  auto* view = new QWidget(this);
  view->setFixedSize(accessorySize);
  if (const auto picture =
          portrait ? roundPicture(*portrait, portraitFrame.width(), devicePixelRatioF()) : std::nullopt) {
    auto* label = new QLabel(view);
    label->setObjectName("about.portrait");
    label->setPixmap(*picture);
    label->setGeometry(portraitFrame);
  }
  wrappingLabel(QString(product::makerName) +
                    " là người sáng lập Tavelo và tạo nên ứng dụng này để phục vụ "
                    "cộng đồng người dùng MacBook tiện hơn.",
                systemFont(13.5), view)
      ->setGeometry(textFrame);
  websiteLinkView(view)->setGeometry(linkFrame);
  return view;
}

QWidget* AboutPanel::websiteLinkView(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName("about.link");
  label->setTextFormat(Qt::RichText);
  label->setFont(systemFont(14));
  label->setAlignment(Qt::AlignCenter);
  label->setTextInteractionFlags(Qt::TextBrowserInteraction);
  label->setText(QString(R"(<a href="%1" style="color:%2">%3</a>)")
                     .arg(QString(product::siteAddress).toHtmlEscaped(), systemBlue(palette()).name(),
                          QString(product::siteDomain).toHtmlEscaped()));
  connect(label, &QLabel::linkActivated, this, [this](const QString& link) {
    const QUrl url(link, QUrl::StrictMode);
    if (url.isValid() && !url.scheme().isEmpty() && openLink_) openLink_(link.toStdString());
  });
  return label;
}

}  // namespace tavelo
