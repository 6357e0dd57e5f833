#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>
#include <chrono>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "app/ApplicationServices.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"

namespace tavelo {
namespace {

using namespace std::chrono_literals;
using platform::Seconds;
using simulated::Key;
using simulated::RecognitionStep;

/// The program with its real windows, on a simulated desktop in virtual time.
class WholeDictationTest : public testing::Test {
 protected:
  enum MenuRow { toggle = 0, insertMode = 4, trust = 5, quit = 10 };

  WholeDictationTest() {
    offscreenApplication();
    auto& editor = desktop_.openApplication("Soạn thảo", "org.example.editor");
    field_ = &editor.addField("trang");
    field_->setValue("Kính gửi anh. ");
    desktop_.speech().setDefaultScript({{RecognitionStep::partial(Seconds{0.6}, "xin"),
                                         RecognitionStep::partial(Seconds{1.2}, "xin chào dấu phẩy nam")}});
  }
  void launch() {
    delegate_ = std::make_shared<AppDelegate<ApplicationServices>>();
    desktop_.loop().async([this] { delegate_->applicationDidFinishLaunching([this] { quits_ = true; }); });
    desktop_.advance(Seconds{0.5});
  }
  void choose(MenuRow row) { windowNamed<QMenu>("status.menu")->actions().at(row)->trigger(); }
  std::string menuTitle(MenuRow row) {
    return windowNamed<QMenu>("status.menu")->actions().at(row)->text().toStdString();
  }
  /// The title and the second line of the overlay; empty while it is hidden.
  std::string overlay() {
    const auto* panel = windowNamed("overlay");
    if (!panel->isVisible()) return "";
    return (panel->findChild<QLabel*>("overlay.title")->text() + "|" +
            panel->findChild<QLabel*>("overlay.detail")->text())
        .toStdString();
  }
  /// Holds Fn for `held`. Returns the time of the release.
  platform::Uptime dictate(Seconds held = Seconds{1.5}) {
    desktop_.keyboard().press(Key::function);
    desktop_.advance(held);
    desktop_.keyboard().release(Key::function);
    desktop_.advance(Seconds{0});
    return desktop_.loop().uptime();
  }
  std::string history() {
    return desktop_.files().contents("/home/person/share/Tavelo/transcript-cache.json").value_or("");
  }

  simulated::SimulatedDesktop desktop_;
  simulated::SimulatedField* field_ = nullptr;
  std::shared_ptr<AppDelegate<ApplicationServices>> delegate_;
  bool quits_ = false;
};

TEST_F(WholeDictationTest, GoesFromFnDownToTheNoticeAndItsEndAtTheExactTimes) {
  launch();
  EXPECT_EQ(menuTitle(trust), "Accessibility: Đã cấp");
  const auto overlayAt = [this](platform::Uptime time) {
    desktop_.loop().runUntil(time);
    return overlay();
  };
  const auto pressed = desktop_.loop().uptime();
  desktop_.keyboard().press(Key::function);
  EXPECT_EQ(overlay(), "") << "an action takes a hop";
  EXPECT_EQ(overlayAt(pressed), "Đang thu âm|Nhả Fn để tạo và chèn văn bản");
  EXPECT_EQ(menuTitle(toggle), "Dừng và chèn văn bản");
  EXPECT_EQ(overlayAt(pressed + 600ms - 1ns), "Đang thu âm|Nhả Fn để tạo và chèn văn bản");
  EXPECT_EQ(overlayAt(pressed + 600ms), "Đang bóc tách văn bản|xin");
  EXPECT_EQ(overlayAt(pressed + 1500ms), "Đang bóc tách văn bản|xin chào dấu phẩy nam");

  const auto released = desktop_.loop().uptime();
  desktop_.keyboard().release(Key::function);
  EXPECT_EQ(overlay(), "Đang bóc tách văn bản|xin chào dấu phẩy nam");
  EXPECT_EQ(overlayAt(released), "");
  EXPECT_EQ(menuTitle(toggle), "Bắt đầu nghe");
  EXPECT_NE(history().find("Xin chào, nam"), std::string::npos);
  EXPECT_EQ(overlayAt(released + 1500ms - 1ns), "");
  EXPECT_EQ(field_->value(), "Kính gửi anh. Xin chào, nam");
  EXPECT_EQ(overlayAt(released + 1500ms), "Đã chèn văn bản|");
  EXPECT_EQ(overlayAt(released + 2400ms - 1ns), "Đã chèn văn bản|");
  EXPECT_EQ(overlayAt(released + 2400ms), "");
  EXPECT_FALSE(desktop_.microphone().isCapturing());
}

TEST_F(WholeDictationTest, ReviewedTextGoesInWhenTheUserConfirmsItAndTheOverlayFollows) {
  launch();
  choose(insertMode);
  EXPECT_EQ(menuTitle(insertMode), "Chèn trực tiếp: Tắt");
  dictate();
  desktop_.advance(Seconds{5});
  auto* window = windowNamed("review");
  ASSERT_TRUE(window->isVisible());
  EXPECT_EQ(overlay(), "Đang bóc tách văn bản|xin chào dấu phẩy nam");
  EXPECT_EQ(field_->value(), "Kính gửi anh. ");

  auto* text = window->findChild<QPlainTextEdit*>("review.text");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->toPlainText(), QString("Xin chào, nam"));
  text->moveCursor(QTextCursor::End);
  text->moveCursor(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
  text->insertPlainText("Năm");
  for (auto* button : window->findChildren<QPushButton*>()) {
    if (button->text() == QString("Chèn")) button->click();
  }
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(overlay(), "Đã chèn văn bản|");
  desktop_.advance(Seconds{0.9});
  EXPECT_EQ(overlay(), "");
  EXPECT_EQ(field_->value(), "Kính gửi anh. Xin chào, Năm");
  EXPECT_EQ(history().find("Năm"), std::string::npos) << "what the user edits is not stored";

  // Once more; this time the window is closed.
  dictate();
  ASSERT_TRUE(window->isVisible());
  window->close();
  EXPECT_EQ(overlay(), "");
  desktop_.advance(Seconds{5});
  EXPECT_EQ(field_->value(), "Kính gửi anh. Xin chào, Năm");
}

TEST_F(WholeDictationTest, QuittingWhileListeningDropsTheRecording) {
  launch();
  desktop_.keyboard().press(Key::function);
  desktop_.advance(Seconds{1.3});
  ASSERT_TRUE(desktop_.microphone().isCapturing());
  const std::string before = history();
  choose(quit);
  EXPECT_TRUE(quits_);
  delegate_.reset();
  EXPECT_FALSE(desktop_.microphone().isCapturing());
  EXPECT_EQ(desktop_.keyboard().tapCount() + desktop_.keyboard().monitorCount(), 0U);
  desktop_.keyboard().release(Key::function);
  desktop_.advance(Seconds{5});
  EXPECT_EQ(field_->value(), "Kính gửi anh. ");
  EXPECT_EQ(history(), before);
  EXPECT_EQ(QApplication::instance()->findChild<QMenu*>(), nullptr);
}

}  // namespace
}  // namespace tavelo
