#include "ui/qt/StatusMenuController.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
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

namespace tavelo {
namespace {

constexpr int alertTextWidth = 280;

/// Milliseconds after which a silent status area counts as missing.
constexpr int statusAreaLimit = 1000;

/// The program's icon; absent if the resources have none.
std::optional<QIcon> statusBarIcon(const platform::Resources& resources) {
  const auto data = resources.data("AppIcon", "icns");
  return data ? iconFromIcns(*data) : std::nullopt;
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

StatusMenuController::StatusMenuController(platform::Resources& resources, platform::Workspace& workspace)
    : resources_(resources),
      workspace_(workspace),
      icon_(statusBarIcon(resources)),
      menu_(std::make_unique<StatusMenu>()),
      toggleItem_(makeItem(texts::startListening, &StatusMenuController::onToggleDictation)),
      modeItem_(makeItem(texts::insertsDirectly, &StatusMenuController::onToggleInsertMode)),
      permissionItem_(makeItem(texts::showPermissions, &StatusMenuController::onShowPermissions)),
      testInsertItem_(makeItem(texts::testInsert, &StatusMenuController::onTestInsert)),
      insertLastItem_(makeItem(texts::insertLastText, &StatusMenuController::onInsertLastText)),
      aboutItem_(makeItem(texts::about)),
      accessItem_(makeItem(texts::accessibilityUnknown)) {
  buildMenu();
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

QAction* StatusMenuController::makeItem(const char* title,
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
  aboutItem_->setEnabled(true);
  QObject::connect(aboutItem_, &QAction::triggered, menu_.get(), [this] { showAbout(); });
  auto* quitItem = makeItem(texts::quit, &StatusMenuController::onQuit);
  quitItem->setShortcut(Qt::CTRL | Qt::Key_Q);
  quitItem->setShortcutVisibleInContextMenu(true);

  menu_->addActions({toggleItem_, makeItem(texts::useHoldKey), makeItem(texts::useFallbackKeys)});
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
  accessItem_->setText(available ? texts::accessibilityGranted : texts::accessibilityMissing);
}

void StatusMenuController::showError(const std::string& message) {
  QMessageBox alert(QMessageBox::Warning, texts::programName, texts::programName, QMessageBox::Ok);
  alert.setObjectName("alert");
  alert.setAttribute(Qt::WA_QuitOnClose, false);
  alert.setWindowIcon(itemIcon());
  // On top, since the user does not expect a window of this program.
  alert.setWindowFlag(Qt::WindowStaysOnTopHint);
  alert.setTextFormat(Qt::PlainText);
  alert.setInformativeText(QString::fromStdString(message));
  // Qt would guess the format from the content, and an error message may look like HTML.
  if (auto* text = alert.findChild<QLabel*>("qt_msgbox_informativelabel")) {
    text->setTextFormat(Qt::PlainText);
    text->setMinimumWidth(alertTextWidth);
  }
  alert.exec();
}

void StatusMenuController::openMenu() { menu_->popup(QCursor::pos()); }

void StatusMenuController::showAbout() {
  const QIcon icon = icon_.value_or(QApplication::style()->standardIcon(QStyle::SP_MessageBoxInformation));
  showAboutPanel(icon, resources_.data("Founder", "png"),
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
