// Draws every window in its states to PNG files, in light and dark: tavelo_screenshots FOLDER

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QStyleFactory>
#include <cstdio>
#include <string>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtResources.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/ui/qt/setup/FakeSetupDesktop.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/IconImages.h"
#include "ui/qt/ReviewWindowController.h"
#include "ui/qt/StatusMenuController.h"
#include "ui/qt/SystemAppearance.h"
#include "ui/qt/setup/SetupWindowController.h"

namespace tavelo {
namespace {

const std::string longText =
    "Kính gửi anh chị, hôm nay chúng tôi xin thông báo về việc tổ chức cuộc họp thường kỳ của phòng kỹ thuật "
    "vào chiều thứ Sáu tuần này, đề nghị mọi người chuẩn bị đầy đủ tài liệu Ễ Ộ Ử";

class Album final {
 public:
  Album(QDir folder, QString appearance) : folder_(std::move(folder)), appearance_(std::move(appearance)) {}

  /// Saves the visible window of that name at twice its size, on a mid-toned background.
  void save(const QString& window, const QString& name) const {
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == window && each->isVisible()) return save(*each, name);
    }
    std::fprintf(stderr, "no window %s\n", qPrintable(window));
  }

  void save(const QImage& image, const QString& name) const {
    const QString file = folder_.filePath(name + "-" + appearance_ + ".png");
    if (!image.save(file)) std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
  }

 private:
  void save(QWidget& window, const QString& name) const {
    QImage image((window.size() + QSize(20, 20)) * 2, QImage::Format_RGB32);
    image.setDevicePixelRatio(2);
    image.fill(QColor(0x6b7fa8));
    QPainter painter(&image);
    window.render(&painter, QPoint(10, 10), {}, QWidget::DrawChildren | QWidget::DrawWindowBackground);
    painter.end();
    save(image, name);
  }

  QDir folder_;
  QString appearance_;
};

QPalette darkPalette() {
  QPalette palette(QColor(0x3a3d42), QColor(0x26282b));
  palette.setColor(QPalette::Base, QColor(0x1b1d1f));
  palette.setColor(QPalette::Highlight, QColor(0x2f6fb5));
  return palette;
}

void saveOverlay(const Album& album, simulated::SimulatedWorkspace& workspace, platform::MainQueue& queue) {
  FloatingStatusWindowController overlay(queue, workspace);
  overlay.showRecording();
  album.save("overlay", "overlay-recording");
  overlay.showTranscribing("xin chào các bạn");
  album.save("overlay", "overlay-transcribing");
  overlay.showTranscribing(longText);
  album.save("overlay", "overlay-long");
  overlay.showTranscribing(
      "שלום עולם, זה טקסט ארוך מאוד שנכתב מימין לשמאל 🧑‍🚀🎉 "
      "והוא "
      "ממשיך");
  album.save("overlay", "overlay-right-to-left");
  overlay.showInserted();
  album.save("overlay", "overlay-inserted");
  workspace.setTranslucency(false);
  overlay.showRecording();
  album.save("overlay", "overlay-masked");
  workspace.setTranslucency(true);
}

void saveReview(const Album& album) {
  ReviewWindowController review;
  review.show(longText + ".\n\nDòng mới: đóng ngoặc, gạch đầu dòng.", nullptr);
  QApplication::processEvents();
  album.save("review", "review");
}

void saveMenuAndDialogs(const Album& album, platform::Resources& resources, platform::Workspace& workspace,
                        platform::MainQueue& queue) {
  StatusMenuController controller(resources, workspace);
  controller.openMenu();
  QApplication::processEvents();
  album.save("status.menu", "menu");
  controller.setListening(true);
  controller.setAccessibilityAvailable(false);
  QApplication::processEvents();
  album.save("status.menu", "menu-listening");
  for (QWidget* each : QApplication::topLevelWidgets()) {
    auto* menu = qobject_cast<QMenu*>(each);
    if (menu == nullptr) continue;
    menu->hide();
    queue.asyncAfter(platform::Seconds{0.2}, [&album] {
      album.save("about", "about");
      QApplication::activeModalWidget()->close();
    });
    menu->actions().at(8)->trigger();
  }
  queue.asyncAfter(platform::Seconds{0.2}, [&album] {
    album.save("alert", "alert");
    QApplication::activeModalWidget()->close();
  });
  controller.showError("Chưa được cấp quyền thu âm hoặc nhận dạng giọng nói. Hãy mở cài đặt và cấp quyền.");

  QImage icons(180, 70, QImage::Format_RGB32);
  icons.fill(QApplication::palette().color(QPalette::Window));
  QPainter painter(&icons);
  const QIcon icon = iconFromIcns(resources.data("AppIcon", "icns").value_or("")).value_or(QIcon());
  int x = 10;
  for (const int size : {18, 22, 48}) {
    icon.paint(&painter, x, 10, size, size);
    x += size + 10;
  }
  letterIcon("Tl").paint(&painter, x, 10, 18, 18);
  painter.end();
  album.save(icons.scaled(icons.size() * 3), "icons");
}

/// The set-up window as it is first opened, and when all is done.
void saveSetup(const Album& album, simulated::SimulatedDesktop& desktop) {
  FakeSetupDesktop fake;
  fake.sources.sources = {{"analog", "Micrô gắn trong", true}, {"usb", "Tai nghe USB", false}};
  desktop.microphone().play(std::vector<std::int16_t>(480'000, 9000));
  SetupWindowController controller(fake.functions);
  controller.show();
  QApplication::processEvents();
  album.save("setup", "setup-first");
  fake.recognizer.state = RecognizerCondition::State::ready;
  fake.accessibility = AccessibilityCondition::on;
  SetupWindowController finished(fake.functions);
  for (QWidget* each : QApplication::topLevelWidgets()) each->close();
  desktop.advance(platform::Seconds{0.2});
  finished.show();
  desktop.advance(platform::Seconds{0.2});
  desktop.keyboard().tap(simulated::Key::function);
  QElapsedTimer sinceShown;
  sinceShown.start();
  // The level is read some times a second.
  while (!sinceShown.hasExpired(300)) {
    desktop.advance(platform::Seconds{0.05});
    QApplication::processEvents();
  }
  album.save("setup", "setup");
}

int drawAll(const QDir& folder) {
  const posix::SystemClock clock;
  qt::QtMainQueue queue(clock);
  qt::QtResources resources;
  simulated::SimulatedDesktop desktop;
  const QPalette light = QApplication::style()->standardPalette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : light);
    const Album album(folder, dark ? "dark" : "light");
    saveOverlay(album, desktop.workspace(), queue);
    saveReview(album);
    saveSetup(album, desktop);
    saveMenuAndDialogs(album, resources, desktop.workspace(), queue);
  }
  return 0;
}

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  if (argc != 2 || !QDir().mkpath(argv[1])) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const QDir folder(argv[1]);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  return tavelo::drawAll(folder);
}
