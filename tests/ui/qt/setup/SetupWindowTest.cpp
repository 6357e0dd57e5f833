#include <QAbstractButton>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <set>

#include <gtest/gtest.h>

#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "tests/ui/qt/setup/FakeSetupDesktop.h"
#include "ui/qt/setup/SetupWindowController.h"

namespace tavelo {
namespace {

class SetupWindowTest : public testing::Test {
 protected:
  SetupWindowTest() { offscreenApplication(); }

  QWidget* show() {
    controller_.show();
    QApplication::processEvents();
    return windowNamed("setup");
  }
  QAbstractButton* button(const QString& name) {
    for (auto* each : windowNamed("setup")->findChildren<QAbstractButton*>())
      if (each->accessibleName() == name) return each;
    ADD_FAILURE() << "no button " << name.toStdString();
    return nullptr;
  }

  simulated::SimulatedDesktop desktop_;
  FakeSetupDesktop fake_;
  SetupWindowController controller_{fake_.functions};
};

TEST_F(SetupWindowTest, EveryControlHasANameAndAKeyOfItsOwnAndTheTabKeyReachesIt) {
  auto* window = show();
  std::set<QWidget*> controls;
  for (auto* each : window->findChildren<QWidget*>())
    if (each->isVisible() && each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0)
      controls.insert(each);
  std::set<QString> names;
  std::set<QChar> keys;
  for (auto* each : controls) {
    EXPECT_TRUE(names.insert(each->accessibleName()).second) << each->accessibleName().toStdString();
    EXPECT_FALSE(each->accessibleName().isEmpty()) << each->metaObject()->className();
  }
  for (auto* each : window->findChildren<QWidget*>()) {
    const auto text = each->property("text").toString();
    const auto mark = text.indexOf('&');
    if (mark < 0 || !each->isVisible()) continue;
    EXPECT_TRUE(keys.insert(text.at(mark + 1).toLower()).second) << text.toStdString();
  }
  EXPECT_GE(keys.size(), 8U);
  std::set<QWidget*> reached;
  auto* next = window->nextInFocusChain();
  for (; next != window; next = next->nextInFocusChain())
    if (controls.contains(next)) reached.insert(next);
  EXPECT_EQ(reached, controls);
}

TEST_F(SetupWindowTest, ThereIsOneWindowWhichFitsASmallScreenWithLargeLetters) {
  const auto before = QApplication::font();
  auto large = before;
  large.setPointSize(30);
  QApplication::setFont(large);
  auto* window = show();
  EXPECT_EQ(show(), window);
  const auto free = window->screen()->availableGeometry();
  EXPECT_LE(window->width(), free.width());
  EXPECT_LE(window->height(), free.height());
  QApplication::setFont(before);
  EXPECT_TRUE(window->close());
  desktop_.advance(platform::Seconds{0.1});
  EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
  EXPECT_TRUE(show()->isVisible());
}

TEST_F(SetupWindowTest, AKeyThatIsBeingChosenPressesNothingAndBeginsNoDictation) {
  fake_.recognizer.state = RecognizerCondition::State::ready;
  auto* window = show();
  EXPECT_FALSE(controller_.keepsHoldKey());
  button("Đổi phím")->click();
  EXPECT_TRUE(controller_.keepsHoldKey());
  const auto press = [&](int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(button("Giữ phím cũ"), &event);
  };
  press(Qt::Key_Space);
  press(Qt::Key_Tab);
  EXPECT_TRUE(controller_.keepsHoldKey());
  fake_.key = {.setting = "Pause", .name = "Pause", .use = platform::KeyUse::free};
  desktop_.advance(platform::Seconds{0.1});
  desktop_.keyboard().tap(simulated::Key::c);
  EXPECT_FALSE(controller_.keepsHoldKey());
  EXPECT_EQ(fake_.holdKey, "Pause");
  EXPECT_EQ(window->focusWidget()->accessibleName(), "Nói thử ở đây");
  EXPECT_TRUE(window->findChild<QPlainTextEdit*>()->placeholderText().contains("giữ Pause"));
  button("Đổi phím")->click();
  press(Qt::Key_Escape);
  EXPECT_FALSE(controller_.keepsHoldKey());
  EXPECT_TRUE(window->isVisible());
}

TEST_F(SetupWindowTest, WhatAVariableDecidesCannotBeChosenAndTheLineSaysSo) {
  fake_.variable = "TAVELO_FN_KEY";
  auto* window = show();
  EXPECT_FALSE(button("Đổi phím")->isEnabled());
  EXPECT_FALSE(button("Tải về")->isEnabled());
  int explanations = 0;
  for (const auto* each : window->findChildren<QLabel*>())
    explanations += each->text().contains("TAVELO_FN_KEY") ? 1 : 0;
  EXPECT_EQ(explanations, 3);
  button("Bật trợ năng")->click();
  EXPECT_EQ(fake_.accessibility, AccessibilityCondition::on);
  button("Khởi động cùng phiên làm việc")->click();
  EXPECT_TRUE(fake_.startsWithSession);
}

}  // namespace
}  // namespace tavelo
