#include "ui/qt/AboutPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>
#include <utility>

#include "ui/Texts.h"
#include "ui/qt/IconImages.h"
#include "ui/qt/QtGeometry.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

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
  setWindowTitle(texts::programName);
  setWindowIcon(icon);

  auto* picture = new QLabel(this);
  picture->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
  auto* close = new QPushButton(texts::closeAbout, this);
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(20, 20, 20, 16);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(8);
  grid->addWidget(picture, 0, 0, 2, 1, Qt::AlignTop);
  grid->addWidget(wrappingLabel(texts::programName, systemFont(15, QFont::Bold), this), 0, 1);
  auto* program = wrappingLabel(texts::aboutProgram, systemFont(13), this);
  program->setFixedWidth(measures::aboutAccessorySize.width);
  grid->addWidget(program, 1, 1);
  grid->addWidget(accessoryView(portrait), 2, 1);
  grid->addWidget(close, 3, 1, Qt::AlignRight);
  // The panel always has the size of its content.
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* AboutPanel::accessoryView(const std::optional<std::string>& portrait) {
  constexpr Rectangle portraitFrame = measures::aboutPortraitFrame;
  auto* view = new QWidget(this);
  view->setFixedSize(toQt(measures::aboutAccessorySize));
  if (const auto picture =
          portrait ? roundPicture(*portrait, portraitFrame.width, devicePixelRatioF()) : std::nullopt) {
    auto* label = new QLabel(view);
    label->setObjectName("about.portrait");
    label->setPixmap(*picture);
    label->setGeometry(toQt(portraitFrame));
  }
  wrappingLabel(QString::fromStdString(texts::aboutMaker()), systemFont(measures::aboutMakerFont), view)
      ->setGeometry(toQt(measures::aboutMakerFrame));
  websiteLinkView(view)->setGeometry(toQt(measures::aboutLinkFrame));
  return view;
}

QWidget* AboutPanel::websiteLinkView(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName("about.link");
  label->setTextFormat(Qt::RichText);
  label->setFont(systemFont(measures::aboutLinkFont));
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
