#include <QFontMetrics>
#include <QImage>
#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

#include "app/ServiceContracts.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/OverlayPanel.h"
#include "ui/qt/SystemAppearance.h"

namespace tavelo {
namespace {

static_assert(FloatingStatusContract<FloatingStatusWindowController>);

class FloatingStatusWindowControllerTest : public testing::Test {
 protected:
  FloatingStatusWindowControllerTest() { make(); }

  void make() {
    offscreenApplication();
    controller_.emplace(platform::current().mainQueue, platform::current().workspace,
                        [this] { return layout_; });
    panel_ = windowNamed<OverlayPanel>("overlay");
    title_ = static_cast<OverlayLabel*>(panel_->findChild<QLabel*>("overlay.title"));
    detail_ = static_cast<OverlayLabel*>(panel_->findChild<QLabel*>("overlay.detail"));
    dot_ = dynamic_cast<RecordingDotView*>(panel_->childAt(14, 28));
  }
  void expectState(const char* title, const char* detail, bool active) {
    EXPECT_TRUE(panel_->isVisible());
    EXPECT_EQ(title_->text(), QString(title));
    EXPECT_EQ(detail_->text(), QString(detail));
    EXPECT_EQ(dot_->isActive(), active);
    EXPECT_EQ(panel_->size(), QSize(220, 56));
  }

  simulated::SimulatedDesktop desktop_;
  ScreenLayout layout_{{{{0, 0, 1280, 900}, {0, 30, 1280, 870}}}, {}};
  std::optional<FloatingStatusWindowController> controller_;
  OverlayPanel* panel_ = nullptr;
  OverlayLabel* title_ = nullptr;
  OverlayLabel* detail_ = nullptr;
  RecordingDotView* dot_ = nullptr;
};

TEST_F(FloatingStatusWindowControllerTest, EveryStateSetsAllTextsAndTheDotInPlace) {
  EXPECT_FALSE(panel_->isVisible());
  controller_->showRecording();
  expectState("Đang thu âm", "Nhả Fn để tạo và chèn văn bản", true);
  controller_->showTranscribing(std::nullopt);
  expectState("Đang bóc tách văn bản", "Đang tạo text...", true);
  controller_->showTranscribing("xin \n chào");
  expectState("Đang bóc tách văn bản", "xin chào", true);
  controller_->showInserted();
  expectState("Đã chèn văn bản", "", false);
  controller_->hide();
  EXPECT_FALSE(panel_->isVisible());
}

TEST_F(FloatingStatusWindowControllerTest, InsertedStateHidesWhateverIsShownNineTenthsOfASecondLater) {
  controller_->showInserted();
  desktop_.advance(platform::Seconds{0.5});
  controller_->showRecording();
  desktop_.advance(platform::Seconds{0.399});
  expectState("Đang thu âm", "Nhả Fn để tạo và chèn văn bản", true);
  desktop_.advance(platform::Seconds{0.002});
  EXPECT_FALSE(panel_->isVisible());

  controller_->showInserted();
  controller_.reset();
  desktop_.advance(platform::Seconds{1});
}

TEST_F(FloatingStatusWindowControllerTest, LiesOnTheScreenWithThePointerAndNowhereWithoutAScreen) {
  controller_->showRecording();
  EXPECT_EQ(panel_->pos(), QPoint(530, 70));
  layout_.screens.push_back({{1280, 0, 800, 600}, {1280, 0, 800, 560}});
  layout_.pointer = {1500, 580};
  controller_->showTranscribing("a");
  EXPECT_EQ(panel_->pos(), QPoint(1570, 40));
  layout_.screens.pop_back();
  emit qApp->screenRemoved(nullptr);
  EXPECT_EQ(panel_->pos(), QPoint(530, 70)) << "the screen under it was unplugged";

  controller_->hide();
  layout_.screens.clear();
  controller_->showRecording();
  EXPECT_FALSE(panel_->isVisible());
}

TEST_F(FloatingStatusWindowControllerTest, NeverTakesTheFocus) {
  controller_->showRecording();
  EXPECT_TRUE(panel_->windowFlags().testFlags(Qt::WindowDoesNotAcceptFocus | Qt::WindowStaysOnTopHint |
                                              Qt::BypassWindowManagerHint));
  EXPECT_TRUE(panel_->testAttribute(Qt::WA_ShowWithoutActivating));
  EXPECT_NE(QApplication::activeWindow(), panel_);
}

TEST_F(FloatingStatusWindowControllerTest, ViewsLieWhereTheyBelong) {
  EXPECT_EQ(dot_->geometry(), QRect(12, 23, 10, 10));
  const int titleHeight = QFontMetrics(title_->font()).height();
  EXPECT_EQ(title_->geometry(), QRect(31, 9, 177, titleHeight));
  EXPECT_EQ(detail_->geometry(), QRect(31, 9 + titleHeight + 3, 177, 13));
  EXPECT_EQ(title_->fontInfo().pixelSize(), 12);
  EXPECT_EQ(title_->font().weight(), QFont::DemiBold);
  EXPECT_EQ(detail_->fontInfo().pixelSize(), 10);
  EXPECT_TRUE(title_->alignment().testFlag(Qt::AlignLeft));
  EXPECT_TRUE(detail_->alignment().testFlag(Qt::AlignRight));
}

TEST_F(FloatingStatusWindowControllerTest, LongPreviewShowsItsEnd) {
  controller_->showTranscribing("bắt đầu " + std::string(400, 'x') + " phần cuối");
  EXPECT_TRUE(detail_->visibleText().endsWith("phần cuối"));
  EXPECT_FALSE(detail_->visibleText().contains("bắt đầu"));
  EXPECT_LE(QFontMetrics(detail_->font()).horizontalAdvance(detail_->visibleText()), detail_->width());
  // One character with two million marks; without a bound its layout outlasts the test's time limit.
  std::string marks = "a";
  for (int i = 0; i < 2'000'000; ++i) marks += "\u0301";
  controller_->showTranscribing(marks);
  EXPECT_LE(detail_->visibleText().size(), 1001);
}

TEST_F(FloatingStatusWindowControllerTest, ColoursFollowThePalette) {
  const auto dotColour = [&] { return panel_->grab().toImage().pixelColor(17, 28); };
  QPalette dark = panel_->palette();
  dark.setColor(QPalette::Window, QColor(0x202020));
  dark.setColor(QPalette::WindowText, QColor(0xf0f0f0));
  controller_->showRecording();
  const QColor red = dotColour();
  EXPECT_GT(red.red(), 2 * red.green());
  const QImage shown = panel_->grab().toImage();
  EXPECT_EQ(shown.pixelColor(13, 28), shown.pixelColor(26, 28)) << "the disc keeps off its bounds";
  controller_->showInserted();
  EXPECT_GT(dotColour().green(), 2 * dotColour().red());
  const QColor light = panel_->grab().toImage().pixelColor(110, 4);
  panel_->setPalette(dark);
  EXPECT_LT(panel_->grab().toImage().pixelColor(110, 4).lightness(), light.lightness());
  EXPECT_NE(dotColour(), red);
}

TEST_F(FloatingStatusWindowControllerTest, DetailIsFainterThanFullInk) {
  QPalette plain;
  plain.setColor(QPalette::Window, Qt::white);
  plain.setColor(QPalette::WindowText, Qt::black);
  panel_->setPalette(plain);
  controller_->showTranscribing("\u2588\u2588\u2588");
  const QImage shown = panel_->grab(detail_->geometry()).toImage();
  int darkest = 255;
  for (int x = 0; x < shown.width(); ++x)
    darkest = std::min(darkest, qGray(shown.pixel(x, shown.height() / 2)));
  EXPECT_GT(darkest, 50);
  EXPECT_LT(darkest, 160);
}

TEST_F(FloatingStatusWindowControllerTest, IsRoundedByAMaskWhileNoCompositorRuns) {
  desktop_.workspace().setTranslucency(false);
  controller_->showRecording();
  EXPECT_FALSE(panel_->mask().contains(QPoint(0, 0)));
  EXPECT_FALSE(panel_->mask().contains(QPoint(219, 55)));
  EXPECT_TRUE(panel_->mask().contains(QPoint(110, 0)));
  const QImage shown = panel_->grab().toImage();
  const int body = shown.pixelColor(110, 10).lightness();
  EXPECT_TRUE(panel_->mask().contains(QPoint(3, 2)));
  EXPECT_LT(shown.pixelColor(3, 2).lightness(), body - 30) << "the corner's rim is softened";
  desktop_.workspace().setTranslucency(true);
  controller_->showRecording();
  EXPECT_TRUE(panel_->mask().isEmpty());
  EXPECT_EQ(panel_->grab().toImage().pixelColor(0, 0).alpha(), 0);
}

TEST_F(FloatingStatusWindowControllerTest, ShadowLiesAroundTheOverlayWhileACompositorRuns) {
  auto* shadow = windowNamed("overlay.shadow");
  controller_->showRecording();
  ASSERT_TRUE(shadow->isVisible());
  EXPECT_TRUE(shadow->geometry().contains(panel_->geometry().adjusted(-10, -10, 10, 10)));
  EXPECT_TRUE(shadow->windowFlags().testFlags(Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput));
  const QImage shown = shadow->grab().toImage();
  const QPoint below(shown.width() / 2, panel_->y() - shadow->y() + 56);
  EXPECT_GT(shown.pixelColor(below).alpha(), 20);
  EXPECT_GT(shown.pixelColor(below).alpha(), shown.pixelColor(below + QPoint(0, 10)).alpha());
  EXPECT_EQ(shown.pixelColor(below - QPoint(0, 28)).alpha(), 0) << "the body is translucent";
  layout_.screens.push_back({{1280, 0, 800, 600}, {1280, 0, 800, 560}});
  layout_.pointer = {1500, 580};
  controller_->showTranscribing("a");
  EXPECT_TRUE(shadow->geometry().contains(panel_->geometry()));
  controller_->hide();
  EXPECT_FALSE(shadow->isVisible());
  desktop_.workspace().setTranslucency(false);
  controller_->showRecording();
  EXPECT_FALSE(shadow->isVisible());
}

}  // namespace
}  // namespace tavelo
