#include "ui/qt/StatusMenuController.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPalette>
#include <QStyle>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/Resources.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "ui/Measures.h"
#include "ui/Texts.h"
#include "ui/qt/AboutPanel.h"
#include "ui/qt/IconImages.h"
#include "ui/qt/StatusArea.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

constexpr int alertTextWidth = 280;

/// The menu's palette, with the disabled items as easy to read as other less important text. Most palettes
/// make them so faint that the hints among them cannot be read.
QPalette readablePalette() {
  QPalette palette = QApplication::palette("QMenu");
  const QColor color = secondaryLabel(palette);
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, color);
  }
  // The colour of the embossing, which blurs the letters on a dark background.
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  return palette;
}

/// Milliseconds after which a silent status area counts as missing.
constexpr int statusAreaLimit = 1000;

/// The program's icon; absent if the resources have none.
std::optional<QIcon> statusBarIcon(const platform::Resources& resources) {
  const auto data = resources.data("AppIcon", "icns");
  return data ? iconFromIcns(*data) : std::nullopt;
}

void setAlertText(QMessageBox& alert, const std::string& message) {
  alert.setInformativeText(QString::fromStdString(message));
  // Qt would guess the format from the content, and an error message may look like HTML.
  if (auto* text = alert.findChild<QLabel*>("qt_msgbox_informativelabel")) {
    text->setTextFormat(Qt::PlainText);
    text->setMinimumWidth(alertTextWidth);
  }
}

/// Obeys its items' shortcuts itself: Qt does so only for menus that a window holds.
class StatusMenu final : public QMenu {
 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const QKeySequence pressed(event->keyCombination());
    for (QAction* each : actions()) {
      if (each->isEnabled() && each->shortcut() == pressed) {
        hide();
        each->trigger();
        return;
      }
    }
    QMenu::keyPressEvent(event);
  }
};

}  // namespace

StatusMenuController::StatusMenuController(platform::Resources& resources, platform::Workspace& workspace,
                                           const platform::Names& names)
    : resources_(resources),
      workspace_(workspace),
      names_(names),
      icon_(statusBarIcon(resources)),
      menu_(std::make_unique<StatusMenu>()),
      toggleItem_(makeItem(texts::startListening, &StatusMenuController::onToggleDictation)),
      holdKeyItem_(makeItem({})),
      modeItem_(makeItem(texts::insertsDirectly, &StatusMenuController::onToggleInsertMode)),
      permissionItem_(makeItem(texts::showPermissions, &StatusMenuController::onShowPermissions)),
      testInsertItem_(makeItem(texts::testInsert, &StatusMenuController::onTestInsert)),
      insertLastItem_(makeItem(texts::insertLastText, &StatusMenuController::onInsertLastText)),
      aboutItem_(makeItem(texts::about)),
      accessItem_(makeItem(texts::accessibilityUnknown)) {
  buildMenu();
  // Also the icon of every window.
  QApplication::setWindowIcon(itemIcon());
  askStatusArea(*menu_, noPatienceLimit, [this](bool) { showStatusItem(); });
}

StatusMenuController::~StatusMenuController() = default;

void StatusMenuController::showStatusItem() {
  statusItem_ = std::make_unique<QSystemTrayIcon>(itemIcon(), qApp);
  statusItem_->setContextMenu(menu_.get());
  statusItem_->setToolTip(toolTip_);
  // Qt opens the context menu for the other button only.
  QObject::connect(statusItem_.get(), &QSystemTrayIcon::activated, menu_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger) openMenu();
                   });
  statusItem_->show();
}

QIcon StatusMenuController::itemIcon() const { return icon_.value_or(letterIcon(texts::statusItemLetters)); }

QAction* StatusMenuController::makeItem(const QString& title,
                                        std::function<void()> StatusMenuController::*callback) {
  auto* item = new QAction(title, menu_.get());
  // With a role, Qt may move the item into an application menu because of its title.
  item->setMenuRole(QAction::NoRole);
  item->setEnabled(callback != nullptr);
  if (callback != nullptr) {
    QObject::connect(item, &QAction::triggered, menu_.get(), [this, callback] {
      // A copy, since the callback may be replaced while it runs.
      if (const auto run = this->*callback) run();
    });
  }
  return item;
}

void StatusMenuController::buildMenu() {
  menu_->setObjectName("status.menu");
  nameHoldKey();
  // Each time, since the user may have changed to another appearance, or to another key.
  QObject::connect(menu_.get(), &QMenu::aboutToShow, menu_.get(), [this] {
    menu_->setPalette(readablePalette());
    nameHoldKey();
  });
  aboutItem_->setEnabled(true);
  QObject::connect(aboutItem_, &QAction::triggered, menu_.get(), [this] { showAbout(); });
  auto* quitItem = makeItem(texts::quit, &StatusMenuController::onQuit);
  quitItem->setShortcut(Qt::CTRL | Qt::Key_Q);
  quitItem->setShortcutVisibleInContextMenu(true);

  menu_->addActions(
      {toggleItem_, holdKeyItem_, makeItem(QString::fromStdString(texts::useFallbackKeys(names_)))});
  menu_->addSeparator();
  menu_->addActions({modeItem_, accessItem_, permissionItem_});
  menu_->addSeparator();
  menu_->addAction(aboutItem_);
  menu_->addSeparator();
  menu_->addAction(quitItem);
}

void StatusMenuController::setListening(bool listening) {
  toggleItem_->setText(listening ? texts::stopListening : texts::startListening);
  toolTip_ = listening ? texts::recordingToolTip : texts::programName;
  if (statusItem_) statusItem_->setToolTip(toolTip_);
}

void StatusMenuController::setInsertDirectly(bool directly) {
  modeItem_->setText(directly ? texts::insertsDirectly : texts::reviewsFirst);
}

void StatusMenuController::setAccessibilityAvailable(bool available) {
  accessibilityAvailable_ = available;
  nameHoldKey();
}

/// Writes the items that name the hold key.
void StatusMenuController::nameHoldKey() {
  holdKeyItem_->setText(QString::fromStdString(texts::useHoldKey(names_)));
  if (accessibilityAvailable_)
    accessItem_->setText(*accessibilityAvailable_
                             ? QString(texts::accessibilityGranted)
                             : QString::fromStdString(texts::accessibilityMissing(names_)));
}

void StatusMenuController::showError(const std::string& message) {
  // After it was dismissed, the alert may still exist for a moment.
  if (alert_ && alert_->isVisible()) return setAlertText(*alert_, message);
  QMessageBox alert(QMessageBox::Warning, texts::programName, texts::programName, QMessageBox::Ok);
  alert.setObjectName("alert");
  alert.setAttribute(Qt::WA_QuitOnClose, false);
  // On top, since the user does not expect a window of this program.
  alert.setWindowFlag(Qt::WindowStaysOnTopHint);
  alert.setTextFormat(Qt::PlainText);
  setAlertText(alert, message);
  alert_ = &alert;
  alert.exec();
}

void StatusMenuController::openMenu() { menu_->popup(QCursor::pos()); }

void StatusMenuController::showAbout() {
  const QIcon icon = icon_.value_or(QApplication::style()->standardIcon(QStyle::SP_MessageBoxInformation));
  showAboutPanel(names_, icon, resources_.data("Founder", "png"),
                 [this](const std::string& address) { workspace_.open(address); });
}

void announceMissingStatusArea(std::function<bool()> hasStatusArea) {
  const auto& platform = platform::current();
  platform.mainQueue.asyncAfter(measures::statusAreaPatience, [&notifications = platform.userNotifications,
                                                               hasStatusArea = std::move(hasStatusArea)] {
    askStatusArea(*qApp, statusAreaLimit, [&notifications, hasStatusArea](bool answers) {
      if (!answers || !hasStatusArea()) notifications.post(texts::programName, texts::noStatusArea);
    });
  });
}

}  // namespace tavelo
