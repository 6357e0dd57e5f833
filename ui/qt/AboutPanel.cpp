#include "ui/qt/AboutPanel.h"

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

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

QWidget* accessoryView(const platform::Names& names, const std::optional<std::string>& portrait,
                       QWidget* parent) {
  const QRect portraitFrame = toQt(measures::aboutPortraitFrame);
  auto* view = new QWidget(parent);
  view->setFixedSize(toQt(measures::aboutAccessorySize));
  if (const auto picture = portrait
                               ? roundPicture(*portrait, portraitFrame.width(), parent->devicePixelRatioF())
                               : std::nullopt) {
    auto* label = new QLabel(view);
    label->setObjectName("about.portrait");
    label->setPixmap(*picture);
    label->setGeometry(portraitFrame);
  }
  // Three lines of some fonts are higher than the frame; they may reach down to the link.
  QRect maker = toQt(measures::aboutMakerFrame);
  maker.setBottom(toQt(measures::aboutLinkFrame).top() - 1);
  wrappingLabel(QString::fromStdString(texts::aboutMaker(names)), systemFont(measures::aboutMakerFont), view)
      ->setGeometry(maker);
  return view;
}

QLabel* websiteLinkView(const std::function<void(const std::string&)>& openLink, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName("about.link");
  label->setTextFormat(Qt::RichText);
  label->setFont(systemFont(measures::aboutLinkFont));
  label->setAlignment(Qt::AlignCenter);
  label->setTextInteractionFlags(Qt::TextBrowserInteraction);
  label->setText(QString(R"(<a href="%1" style="color:%2">%3</a>)")
                     .arg(QString(product::siteAddress).toHtmlEscaped(), systemBlue(parent->palette()).name(),
                          QString(product::siteDomain).toHtmlEscaped()));
  QObject::connect(label, &QLabel::linkActivated, label, [openLink](const QString& link) {
    const QUrl url(link, QUrl::StrictMode);
    if (url.isValid() && !url.scheme().isEmpty()) openLink(link.toStdString());
  });
  return label;
}

}  // namespace

void showAboutPanel(const platform::Names& names, const QIcon& icon,
                    const std::optional<std::string>& portrait,
                    const std::function<void(const std::string&)>& openLink) {
  QDialog panel(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                             Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  panel.setAttribute(Qt::WA_QuitOnClose, false);
  panel.setObjectName("about");
  panel.setWindowTitle(texts::programName);
  panel.setWindowIcon(icon);

  auto* picture = new QLabel(&panel);
  picture->setPixmap(icon.pixmap(QSize(iconSize, iconSize), panel.devicePixelRatioF()));
  auto* program = wrappingLabel(QString::fromStdString(texts::aboutProgram(names)), systemFont(13), &panel);
  program->setFixedWidth(toQt(measures::aboutAccessorySize).width());
  auto* accessory = accessoryView(names, portrait, &panel);
  websiteLinkView(openLink, accessory)->setGeometry(toQt(measures::aboutLinkFrame));
  auto* close = new QPushButton(texts::closeAbout, &panel);
  close->setDefault(true);
  QObject::connect(close, &QPushButton::clicked, &panel, &QDialog::accept);

  auto* grid = new QGridLayout(&panel);
  grid->setContentsMargins(20, 20, 20, 16);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(8);
  grid->addWidget(picture, 0, 0, 2, 1, Qt::AlignTop);
  grid->addWidget(wrappingLabel(texts::programName, systemFont(15, QFont::Bold), &panel), 0, 1);
  grid->addWidget(program, 1, 1);
  grid->addWidget(accessory, 2, 1);
  grid->addWidget(close, 3, 1, Qt::AlignRight);
  // The panel always has the size of its content.
  grid->setSizeConstraint(QLayout::SetFixedSize);
  panel.exec();
}

}  // namespace tavelo
