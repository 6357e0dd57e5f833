#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "app/DesktopProgram.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "tests/platform/qt/OffscreenApplication.h"

namespace tavelo {
namespace {

TEST(DesktopProgram, EndOfTheSessionEndsItThoughAnAlertIsOpen) {
  const QTemporaryDir folder;
  qputenv("XDG_DATA_HOME", folder.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
  offscreenApplication();
  DesktopProgram::describeApplication();
  DesktopProgram program;
  // As if it came from the socket. There is no last text, so an alert opens.
  QTimer::singleShot(0, &program, [&] { program.receive(InstanceMessage::insertLastText); });
  bool alertWasOpen = false;
  std::function<void()> endTheSession = [&] {
    for (const QWidget* each : QApplication::topLevelWidgets()) {
      alertWasOpen = alertWasOpen || (each->objectName() == "alert" && each->isVisible());
    }
    if (!alertWasOpen) {
      platform::current().mainQueue.async(endTheSession);
      return;
    }
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
  };
  platform::current().mainQueue.async(endTheSession);
  EXPECT_EQ(program.run(), 0);
  EXPECT_TRUE(alertWasOpen);
}

TEST(DesktopProgram, ToolkitsOwnMenusAreInVietnamese) {
  offscreenApplication();
  const DesktopProgram program;
  QPlainTextEdit text;
  const std::unique_ptr<QMenu> menu(text.createStandardContextMenu());
  QStringList titles;
  for (const QAction* each : menu->actions()) {
    if (!each->isSeparator()) titles.append(each->text().section('\t', 0, 0).remove('&'));
  }
  EXPECT_EQ(titles, QStringList({"Hoàn tác", "Làm lại", "Cắt", "Sao chép", "Dán", "Xóa", "Chọn tất cả"}));
}

}  // namespace
}  // namespace tavelo
