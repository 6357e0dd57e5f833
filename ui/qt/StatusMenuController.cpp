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
#include <QSystemTrayIcon>

#include "platform/Resources.h"
#include "platform/Workspace.h"
#include "ui/qt/AboutPanel.h"
#include "ui/qt/IconImages.h"

namespace tavelo {
namespace {

constexpr int alertTextWidth = 280;

/// The program's icon; absent where it does not come with one.
std::optional<QIcon> statusBarIcon(const platform::Resources& resources) {
  const auto data = resources.data("AppIcon", "icns");
  return data ? iconFromIcns(*data) : std::nullopt;
}

/// Qt heeds an item's shortcut only in a window that holds the menu, and this one is held by none.
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
      statusItem_(std::make_unique<QSystemTrayIcon>(icon_.value_or(letterIcon("Tl")), qApp)),
      toggleItem_(makeItem("Bắt đầu nghe", &StatusMenuController::onToggleDictation)),
      modeItem_(makeItem("Chèn trực tiếp: Bật", &StatusMenuController::onToggleInsertMode)),
      permissionItem_(makeItem("Cấp quyền...", &StatusMenuController::onShowPermissions)),
      testInsertItem_(makeItem("Test Insert sau 3 giây", &StatusMenuController::onTestInsert)),
      insertLastItem_(makeItem("Dán lại text vừa tạo sau 3 giây", &StatusMenuController::onInsertLastText)),
      aboutItem_(makeItem("Giới thiệu Tavelo")),
      accessItem_(makeItem("Accessibility: Chưa kiểm tra")) {
  buildMenu();
  statusItem_->setContextMenu(menu_.get());
  // The context menu comes by the other button alone.
  QObject::connect(statusItem_.get(), &QSystemTrayIcon::activated, menu_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger) openMenu();
                   });
  statusItem_->show();
}

StatusMenuController::~StatusMenuController() = default;

QAction* StatusMenuController::makeItem(const QString& title,
                                        std::function<void()> StatusMenuController::*callback) {
  auto* item = new QAction(title, menu_.get());
  // No role, or a platform with an application menu would move the item there for its title.
  item->setMenuRole(QAction::NoRole);
  item->setEnabled(callback != nullptr);
  if (callback != nullptr) {
    QObject::connect(item, &QAction::triggered, menu_.get(), [this, callback] {
      // A copy, since it may be replaced while it runs.
      if (const auto run = this->*callback) run();
    });
  }
  return item;
}

void StatusMenuController::buildMenu() {
  menu_->setObjectName("status.menu");
  aboutItem_->setEnabled(true);
  QObject::connect(aboutItem_, &QAction::triggered, menu_.get(), [this] { showAbout(); });
  auto* quitItem = makeItem("Thoát", &StatusMenuController::onQuit);
  quitItem->setShortcut(Qt::CTRL | Qt::Key_Q);
  quitItem->setShortcutVisibleInContextMenu(true);

  menu_->addAction(toggleItem_);
  menu_->addAction(makeItem("Giữ Fn để nói, nhả Fn để chèn"));
  menu_->addAction(makeItem("Dự phòng: Control Option V"));
  menu_->addSeparator();
  menu_->addAction(modeItem_);
  menu_->addAction(accessItem_);
  menu_->addAction(permissionItem_);
  menu_->addSeparator();
  menu_->addAction(aboutItem_);
  menu_->addSeparator();
  menu_->addAction(quitItem);
}

void StatusMenuController::setListening(bool listening) {
  toggleItem_->setText(listening ? "Dừng và chèn văn bản" : "Bắt đầu nghe");
  statusItem_->setToolTip(listening ? "Tavelo đang thu âm" : "Tavelo");
}

void StatusMenuController::setInsertDirectly(bool directly) {
  modeItem_->setText(directly ? "Chèn trực tiếp: Bật" : "Chèn trực tiếp: Tắt");
}

void StatusMenuController::setAccessibilityAvailable(bool available) {
  accessItem_->setText(available ? "Accessibility: Đã cấp" : "Accessibility: Cần cấp để bắt Fn");
}

void StatusMenuController::showError(const std::string& message) {
  QMessageBox alert(QMessageBox::Warning, "Tavelo", "Tavelo", QMessageBox::Ok);
  alert.setObjectName("alert");
  alert.setAttribute(Qt::WA_QuitOnClose, false);
  alert.setWindowIcon(statusItem_->icon());
  // Nobody looks for a window of a program that has none.
  alert.setWindowFlag(Qt::WindowStaysOnTopHint);
  alert.setTextFormat(Qt::PlainText);
  alert.setInformativeText(QString::fromStdString(message));
  // Qt guesses the format of this one by its content; an error text may look like anything.
  if (auto* text = alert.findChild<QLabel*>("qt_msgbox_informativelabel")) {
    text->setTextFormat(Qt::PlainText);
    text->setMinimumWidth(alertTextWidth);
  }
  alert.exec();
}

void StatusMenuController::openMenu() { menu_->popup(QCursor::pos()); }

void StatusMenuController::showAbout() {
  const QIcon icon = icon_.value_or(QApplication::style()->standardIcon(QStyle::SP_MessageBoxInformation));
  AboutPanel panel(icon, resources_.data("Founder", "png"),
                   [this](const std::string& address) { workspace_.open(address); });
  panel.exec();
}

}  // namespace tavelo
