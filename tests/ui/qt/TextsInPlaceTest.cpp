// Measures the texts that have a place of fixed size, in fonts that desktops use.

#include <QFontInfo>
#include <QFontMetrics>
#include <QImage>
#include <QLabel>
#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "ui/Texts.h"
#include "ui/qt/AboutPanel.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/OverlayPanel.h"

namespace tavelo {
namespace {

const platform::Names linuxNames{.system = "máy tính",
                                 .systemAtStart = "Máy tính",
                                 .computer = "máy tính",
                                 .holdKey = "Ctrl phải",
                                 .fallbackKeys = "Ctrl Alt V"};
const platform::Names longNames{.holdKey = "XF86MonBrightnessDown"};

class TextsInPlaceTest : public testing::TestWithParam<const char*> {
 protected:
  TextsInPlaceTest() { offscreenApplication(); }

  /// Gives the label the font under test, in the size that it has.
  static void useFont(QLabel& label) {
    QFont font = label.font();
    font.setFamily(GetParam());
    label.setFont(font);
    ASSERT_EQ(QFontInfo(font).family(), GetParam()) << "install the font";
  }

  simulated::SimulatedDesktop desktop_;
};

TEST_P(TextsInPlaceTest, OverlayShowsItsOwnTextsWhole) {
  for (const platform::Names& names : {platform::Names(), linuxNames, longNames}) {
    FloatingStatusWindowController controller(platform::current().mainQueue, platform::current().workspace,
                                              currentScreenLayout, names);
    auto* panel = windowNamed<OverlayPanel>("overlay");
    auto* title = static_cast<OverlayLabel*>(panel->findChild<QLabel*>("overlay.title"));
    auto* detail = static_cast<OverlayLabel*>(panel->findChild<QLabel*>("overlay.detail"));
    useFont(*title);
    useFont(*detail);
    const auto expectWhole = [&] {
      EXPECT_EQ(title->visibleText(), title->text());
      EXPECT_EQ(detail->visibleText(), detail->text());
    };
    controller.showRecording();
    expectWhole();
    const bool fits =
        QFontMetrics(detail->font()).horizontalAdvance(texts::releaseHoldKey(names).c_str()) <= 177;
    EXPECT_EQ(detail->text().toStdString(),
              fits ? texts::releaseHoldKey(names) : "Nhả phím để tạo và chèn văn bản");
    controller.showTranscribing(std::nullopt);
    expectWhole();
    controller.showTranscribing(texts::clickIntoField);
    expectWhole();
    controller.showInserted();
    expectWhole();
  }
}

TEST_P(TextsInPlaceTest, CapitalsWithTwoMarksKeepTheirInk) {
  FloatingStatusWindowController controller;
  auto* panel = windowNamed<OverlayPanel>("overlay");
  auto* detail = panel->findChild<QLabel*>("overlay.detail");
  useFont(*detail);
  controller.showTranscribing("");
  detail->clear();
  const QImage empty = panel->grab().toImage();
  controller.showTranscribing("Ễ Ẫ Ắ Ổ");
  QImage shown = panel->grab().toImage();
  int top = shown.height();
  int bottom = 0;
  int left = shown.width();
  for (int y = detail->y() - 6; y < shown.height(); ++y) {
    for (int x = detail->x(); x < shown.width(); ++x) {
      if (shown.pixel(x, y) == empty.pixel(x, y)) continue;
      top = std::min(top, y);
      bottom = y;
      left = std::min(left, x);
    }
  }
  const int width = QFontMetrics(detail->font()).horizontalAdvance("Ễ Ẫ Ắ Ổ");
  EXPECT_NEAR(detail->geometry().right() + 1 - left, width, 2);
  EXPECT_GE(bottom - top + 1, QFontMetrics(detail->font()).tightBoundingRect("Ễ").height());
}

TEST_P(TextsInPlaceTest, AboutPanelShowsEveryLine) {
  const posix::SystemClock clock;
  qt::QtMainQueue queue(clock);
  for (const platform::Names& names : {platform::Names(), linuxNames}) {
    bool seen = false;
    std::function<void()> look = [&] {
      auto* panel = QApplication::activeModalWidget();
      if (panel == nullptr) return queue.async(look);
      for (auto* label : panel->findChildren<QLabel*>()) {
        if (label->text().isEmpty()) continue;
        useFont(*label);
        QApplication::processEvents();
        const QSize needed =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->minimumSizeHint();
        EXPECT_LE(needed.height(), label->height()) << label->text().toStdString();
        EXPECT_LE(needed.width(), label->width()) << label->text().toStdString();
      }
      seen = true;
      panel->close();
    };
    queue.async(look);
    showAboutPanel(names, QIcon(), std::nullopt, nullptr);
    EXPECT_TRUE(seen);
  }
}

INSTANTIATE_TEST_SUITE_P(Fonts, TextsInPlaceTest, testing::Values("DejaVu Sans", "Noto Sans"),
                         [](const auto& each) { return std::string(each.param).substr(0, 4); });

}  // namespace
}  // namespace tavelo
