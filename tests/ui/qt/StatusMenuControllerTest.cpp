#include <QAction>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QSystemTrayIcon>
#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "app/ServiceContracts.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtResources.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "ui/ProductData.h"
#include "ui/qt/IconImages.h"
#include "ui/qt/StatusMenuController.h"

namespace tavelo {
namespace {

using testing::ElementsAre;

static_assert(StatusMenuContract<StatusMenuController>);

class StatusMenuControllerTest : public testing::Test {
 protected:
  StatusMenuControllerTest() {
    offscreenApplication();
    controller_ = std::make_unique<StatusMenuController>(resources_, desktop_.workspace(), names_);
    menu_ = windowNamed<QMenu>("status.menu");
    item_ = QApplication::instance()->findChild<QSystemTrayIcon*>();
  }
  /// The menu from top to bottom; disabled items are in brackets.
  std::vector<std::string> entries() const {
    std::vector<std::string> entries;
    for (const QAction* action : menu_->actions()) {
      const std::string title = action->isSeparator() ? "-" : action->text().toStdString();
      entries.push_back(action->isEnabled() || action->isSeparator() ? title : "[" + title + "]");
    }
    return entries;
  }
  void choose(int row) { menu_->actions().at(row)->trigger(); }
  /// Runs `look` on the main queue once a window of that name is visible.
  void whenShown(const QString& name, std::function<void(QDialog&)> look) {
    queue_.asyncAfter(platform::Seconds{0.001}, [this, name, look] {
      for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == name && each->isVisible()) return look(dynamic_cast<QDialog&>(*each));
      }
      whenShown(name, look);
    });
  }

  simulated::SimulatedDesktop desktop_;
  platform::Names names_;
  posix::SystemClock clock_;
  qt::QtResources resources_;
  std::unique_ptr<StatusMenuController> controller_;
  qt::QtMainQueue queue_{clock_};
  QMenu* menu_ = nullptr;
  QSystemTrayIcon* item_ = nullptr;
};

TEST_F(StatusMenuControllerTest, MenuReadsFromTopToBottom) {
  EXPECT_THAT(entries(),
              ElementsAre("Bắt đầu nghe", "[Giữ Fn để nói, nhả Fn để chèn]", "[Dự phòng: Control Option V]",
                          "-", "Chèn trực tiếp: Bật", "[Accessibility: Chưa kiểm tra]", "Cấp quyền...", "-",
                          "Giới thiệu Tavelo", "-", "Thoát"));
  EXPECT_EQ(item_->contextMenu(), menu_);
  EXPECT_TRUE(item_->isVisible());
  EXPECT_EQ(item_->toolTip(), QString());
  emit item_->activated(QSystemTrayIcon::Trigger);
  EXPECT_TRUE(menu_->isVisible());
  EXPECT_EQ(QApplication::windowIcon().cacheKey(), item_->icon().cacheKey());
}

TEST_F(StatusMenuControllerTest, HintsCanBeReadInLightAndDark) {
  const QPalette before = QApplication::palette();
  QPalette dark(QColor(0x3a3d42), QColor(0x26282b));
  for (const QPalette& palette : {QApplication::style()->standardPalette(), dark}) {
    QApplication::setPalette(palette);
    controller_->openMenu();
    const QRect row = menu_->actionGeometry(menu_->actions().at(1));
    const QImage shown = menu_->grab(row).toImage();
    int darkest = 255;
    int lightest = 0;
    for (int y = 2; y < shown.height() - 2; ++y) {
      for (int x = 2; x < shown.width() - 2; ++x) {
        darkest = std::min(darkest, qGray(shown.pixel(x, y)));
        lightest = std::max(lightest, qGray(shown.pixel(x, y)));
      }
    }
    EXPECT_GT(lightest - darkest, 125);
    menu_->hide();
  }
  QApplication::setPalette(before);
}

TEST_F(StatusMenuControllerTest, SettersChangeTitlesAndTheToolTipOnly) {
  controller_->setListening(true);
  controller_->setInsertDirectly(false);
  controller_->setAccessibilityAvailable(false);
  EXPECT_EQ(item_->toolTip(), QString("Tavelo đang thu âm"));
  EXPECT_THAT(entries(), ElementsAre("Dừng và chèn văn bản", "[Giữ Fn để nói, nhả Fn để chèn]",
                                     "[Dự phòng: Control Option V]", "-", "Chèn trực tiếp: Tắt",
                                     "[Accessibility: Cần cấp để bắt Fn]", "Cấp quyền...", "-",
                                     "Giới thiệu Tavelo", "-", "Thoát"));
  names_.holdKey = "F8";
  controller_->openMenu();
  EXPECT_EQ(entries()[1], "[Giữ F8 để nói, nhả F8 để chèn]");
  EXPECT_EQ(entries()[5], "[Accessibility: Cần cấp để bắt F8]");
  menu_->hide();
  controller_->setListening(false);
  controller_->setInsertDirectly(true);
  controller_->setAccessibilityAvailable(true);
  EXPECT_EQ(item_->toolTip(), QString("Tavelo"));
  EXPECT_EQ(entries()[0], "Bắt đầu nghe");
  EXPECT_EQ(entries()[4], "Chèn trực tiếp: Bật");
  EXPECT_EQ(entries()[5], "[Accessibility: Đã cấp]");
}

TEST_F(StatusMenuControllerTest, ItemsRunTheirCallbacksAndNothingWithoutOne) {
  for (const int row : {0, 1, 4, 5, 6, 10}) choose(row);
  std::vector<std::string> chosen;
  controller_->onToggleDictation = [&] { chosen.emplace_back("toggle"); };
  controller_->onToggleInsertMode = [&] { chosen.emplace_back("mode"); };
  controller_->onShowPermissions = [&] { chosen.emplace_back("permissions"); };
  controller_->onQuit = [&] { chosen.emplace_back("quit"); };
  controller_->onTestInsert = [&] { chosen.emplace_back("test"); };
  for (const int row : {0, 1, 4, 5, 6, 10}) choose(row);
  EXPECT_THAT(chosen, ElementsAre("toggle", "mode", "permissions", "quit"));
}

TEST_F(StatusMenuControllerTest, OpenMenuHeedsTheShortcutOfItsLastItem) {
  int quits = 0;
  controller_->onQuit = [&] { ++quits; };
  controller_->openMenu();
  for (const auto modifier : {Qt::NoModifier, Qt::ControlModifier}) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Q, modifier);
    QApplication::sendEvent(menu_, &press);
    EXPECT_EQ(quits == 0, menu_->isVisible());
  }
  EXPECT_EQ(quits, 1);
}

TEST_F(StatusMenuControllerTest, OneModalAlertInPlainTextAtATimeShowsTheNewestErrorWhileBlocksRun) {
  std::vector<std::string> seen;
  const auto look = [&](QDialog& dialog) {
    auto& alert = dynamic_cast<QMessageBox&>(dialog);
    EXPECT_EQ(alert.icon(), QMessageBox::Warning);
    EXPECT_EQ(alert.text(), QString("Tavelo"));
    EXPECT_EQ(alert.buttons().size(), 1);
    EXPECT_TRUE(alert.isModal());
    seen.push_back(alert.informativeText().toStdString());
    const auto* label = alert.findChild<QLabel*>("qt_msgbox_informativelabel");
    EXPECT_TRUE(label != nullptr && label->textFormat() == Qt::PlainText);
    int alerts = 0;
    for (const auto* each : QApplication::topLevelWidgets())
      alerts += each->objectName() == "alert" && each->isVisible() ? 1 : 0;
    EXPECT_EQ(alerts, 1);
  };
  whenShown("alert", [&](QDialog& first) {
    look(first);
    for (int press = 0; press < 60; ++press) controller_->showError("lần " + std::to_string(press));
    look(first);
    first.accept();
    // The user has dismissed the first one, so this text needs an alert of its own.
    whenShown("alert", [&](QDialog& second) {
      look(second);
      second.accept();
    });
    controller_->showError("sau");
  });
  controller_->showError("<b>đầu</b>");
  EXPECT_THAT(seen, ElementsAre("<b>đầu</b>", "lần 59", "sau"));
}

TEST_F(StatusMenuControllerTest, AboutPanelShowsThePortraitAndOpensValidLinksOnly) {
  bool seen = false;
  whenShown("about", [&](QDialog& dialog) {
    seen = true;
    EXPECT_EQ(dialog.findChild<QLabel*>("about.portrait")->geometry(), QRect(136, 14, 48, 48));
    QStringList texts;
    for (const auto* each : dialog.findChildren<QLabel*>()) {
      texts.append(each->text());
      if (each->text().startsWith(product::makerName)) {
        EXPECT_NEAR(each->font().pointSizeF() * each->logicalDpiY() / 72, 13.5, 0.01);
      }
    }
    EXPECT_TRUE(texts.contains("Tavelo"));
    EXPECT_TRUE(texts.contains(
        "Tavelo là ứng dụng hỗ trợ đọc thoại và chuyển giọng nói tiếng Việt thành văn bản trên macOS."));
    EXPECT_TRUE(texts.contains(QString(product::makerName) +
                               " là người sáng lập Tavelo và tạo nên ứng dụng này để phục vụ cộng đồng người "
                               "dùng MacBook tiện hơn."));
    ASSERT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
    EXPECT_EQ(dialog.findChild<QPushButton*>()->text(), QString("Đóng"));
    auto* link = dialog.findChild<QLabel*>("about.link");
    EXPECT_TRUE(link->text().contains(product::siteAddress));
    EXPECT_TRUE(link->text().contains(product::siteDomain));
    emit link->linkActivated(product::siteAddress);
    emit link->linkActivated("http://[");
    emit link->linkActivated("no address");
    dialog.findChild<QPushButton*>()->click();
  });
  choose(8);
  EXPECT_TRUE(seen);
  EXPECT_THAT(desktop_.workspace().openedURLs(), ElementsAre(product::siteAddress));
}

TEST_F(StatusMenuControllerTest, MissingPicturesLeaveLettersAndNoPortrait) {
  controller_.reset();
  desktop_.resources().add("Founder", "png", "no picture");
  controller_ = std::make_unique<StatusMenuController>(desktop_.resources(), desktop_.workspace());
  menu_ = windowNamed<QMenu>("status.menu");
  const QImage shown = QApplication::instance()->findChild<QSystemTrayIcon*>()->icon().pixmap(64).toImage();
  EXPECT_EQ(shown, letterIcon("Tl").pixmap(64).toImage());
  bool portrait = true;
  whenShown("about", [&](QDialog& dialog) {
    portrait = dialog.findChild<QLabel*>("about.portrait") != nullptr;
    EXPECT_NE(dialog.findChild<QLabel*>()->pixmap().toImage(), shown) << "not the letters of the status item";
    dialog.reject();
  });
  choose(8);
  EXPECT_FALSE(portrait);
}

TEST(MissingStatusArea, ComesOnceAndOnlyWhereNoPanelHasTurnedUpInTime) {
  offscreenApplication();
  simulated::SimulatedDesktop desktop;
  bool hasStatusArea = false;
  announceMissingStatusArea([&] { return hasStatusArea; });
  desktop.advance(platform::Seconds{9.9});
  EXPECT_TRUE(desktop.notifications().posted().empty());
  desktop.advance(platform::Seconds{100});
  EXPECT_EQ(desktop.notifications().posted().size(), 1U);

  announceMissingStatusArea([&] { return hasStatusArea; });
  hasStatusArea = true;
  desktop.advance(platform::Seconds{100});
  EXPECT_EQ(desktop.notifications().posted().size(), 1U);
}

TEST(IconImages, DamagedIconFilesAreAbsentOrKeepTheirWholePictures) {
  offscreenApplication();
  const std::string whole = qt::QtResources().data("AppIcon", "icns").value_or("");
  ASSERT_TRUE(iconFromIcns(whole));
  EXPECT_TRUE(iconFromIcns(whole)->availableSizes().contains(QSize(18, 18)));
  EXPECT_TRUE(iconFromIcns(whole.substr(0, whole.size() / 2)));
  for (const std::size_t length : {0U, 3U, 7U, 8U, 12U, 16U, 40U}) {
    EXPECT_FALSE(iconFromIcns(whole.substr(0, length))) << length;
  }
  EXPECT_FALSE(iconFromIcns(std::string("icns\0\0\0\x20icp4\0\0\0\0", 16) + whole.substr(16)));
}

TEST(RoundPicture, IsClearOutsideTheCircle) {
  offscreenApplication();
  const auto picture = roundPicture(qt::QtResources().data("Founder", "png").value_or(""), 48, 2);
  ASSERT_TRUE(picture);
  const QImage image = picture->toImage();
  EXPECT_EQ(image.size(), QSize(96, 96));
  EXPECT_EQ(image.pixelColor(1, 1).alpha(), 0);
  EXPECT_EQ(image.pixelColor(94, 94).alpha(), 0);
  EXPECT_EQ(image.pixelColor(48, 48).alpha(), 255);
}

}  // namespace
}  // namespace tavelo
