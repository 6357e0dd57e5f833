#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QTextCursor>
#include <QTextDocument>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "app/ServiceContracts.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "ui/qt/ReviewTextView.h"
#include "ui/qt/ReviewWindowController.h"

namespace tavelo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(ReviewWindowContract<ReviewWindowController>);

class ReviewWindowControllerTest : public testing::Test {
 protected:
  ReviewWindowControllerTest() : controller_(made()) {
    window_ = windowNamed("review");
    text_ = static_cast<ReviewTextView*>(window_->findChild<QPlainTextEdit*>("review.text"));
    controller_.onDismiss = [this] { events_.push_back("dismiss"); };
  }
  static ReviewWindowController made() {
    offscreenApplication();
    return {};
  }
  void show(const std::string& text, const std::string& name = "insert ") {
    controller_.show(text, [this, name](const std::string& edited) {
      EXPECT_TRUE(window_->isVisible());
      events_.push_back(name + edited);
    });
  }
  QPushButton* button(const char* title) {
    for (auto* each : window_->findChildren<QPushButton*>()) {
      if (each->text() == QString(title)) return each;
    }
    return nullptr;
  }
  void type(const QString& text) {
    const int key = text == "\r" ? Qt::Key_Return : Qt::Key_unknown;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(text_, &press);
  }

  ReviewWindowController controller_;
  QWidget* window_ = nullptr;
  ReviewTextView* text_ = nullptr;
  std::vector<std::string> events_;
};

TEST_F(ReviewWindowControllerTest, EditedTextIsHandedOverAsItStands) {
  EXPECT_FALSE(window_->isVisible());
  show("chào");
  EXPECT_TRUE(window_->isVisible());
  type(".");
  type("\r");
  button("Chèn")->click();
  EXPECT_THAT(events_, ElementsAre("insert chào.\n"));
  EXPECT_FALSE(window_->isVisible());

  show("x");
  text_->selectAll();
  text_->cut();
  button("Chèn")->click();
  EXPECT_THAT(events_, ElementsAre("insert chào.\n", "insert "));
}

TEST_F(ReviewWindowControllerTest, CancellingAndClosingDismissWithoutInserting) {
  show("một");
  type("edit ");
  button("Hủy")->click();
  EXPECT_FALSE(window_->isVisible());
  show("hai");
  EXPECT_EQ(text_->text(), "hai");
  window_->close();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_THAT(events_, ElementsAre("dismiss", "dismiss"));
}

TEST_F(ReviewWindowControllerTest, SecondShowReplacesTextAndCallback) {
  show("một", "first ");
  type("edit ");
  show("hai", "second ");
  button("Chèn")->click();
  EXPECT_THAT(events_, ElementsAre("second hai"));
}

TEST_F(ReviewWindowControllerTest, ReviewThatBeginsInsideTheCallbackStaysOpen) {
  controller_.show("một", [this](const std::string&) { show("hai", "second "); });
  button("Chèn")->click();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(text_->text(), "hai");
  button("Chèn")->click();
  EXPECT_FALSE(window_->isVisible());
  EXPECT_THAT(events_, ElementsAre("second hai"));
}

TEST_F(ReviewWindowControllerTest, ButtonsLieAtTheBottomRightAndNoKeyPressesThem) {
  show("x");
  QApplication::processEvents();
  EXPECT_EQ(window_->size(), QSize(560, 280));
  EXPECT_EQ(window_->windowTitle(), QString("Xem lại văn bản"));
  EXPECT_FALSE(window_->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
  const QRect cancel = button("Hủy")->geometry();
  const QRect insert = button("Chèn")->geometry();
  EXPECT_EQ(insert.right(), 560 - 16 - 1);
  EXPECT_EQ(insert.bottom(), 280 - 16 - 1);
  EXPECT_EQ(insert.left() - cancel.right() - 1, 8);
  EXPECT_EQ(text_->geometry(), QRect(16, 16, 528, insert.top() - 12 - 16));
  EXPECT_TRUE(text_->hasFocus());
  EXPECT_FALSE(button("Hủy")->focusPolicy() & Qt::ClickFocus) << "the next review begins in the text too";
  EXPECT_EQ(text_->document()->documentMargin(), 10);
  EXPECT_EQ(text_->fontInfo().pixelSize(), 16);
  EXPECT_EQ(text_->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
  EXPECT_EQ(text_->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
  type("\r");
  EXPECT_THAT(events_, IsEmpty());
}

TEST_F(ReviewWindowControllerTest, EveryReviewBeginsAtTheSamePlace) {
  const auto screen = QApplication::primaryScreen()->availableGeometry();
  const QPoint centre((screen.width() - 560) / 2, (screen.height() - 280) / 3);
  for (const char* which : {"first", "after the user moved it"}) {
    show(which);
    EXPECT_EQ(window_->pos(), screen.topLeft() + centre) << which;
    window_->move(5, 7);
    window_->close();
  }
}

TEST_F(ReviewWindowControllerTest, TextsOfAllKindsComeBackUnchanged) {
  const std::string odd = "\u00a0a\r\nb\rc\u2028d\u2029e\tה\U0001f9d1\u200d\U0001f680\xff<b>&";
  show(odd);
  EXPECT_EQ(text_->text(), odd);
  type("+");
  EXPECT_EQ(text_->text(), "\u00a0a\nb\nc\u2028d\ne\tה\U0001f9d1\u200d\U0001f680\ufffd<b>&+");
}

TEST_F(ReviewWindowControllerTest, EndlessLinesAreShownInTimeAndKeptWhole) {
  std::string line(9'001, 'a');
  for (int i = 0; i < 3'000; ++i) line += "\U0001f600";
  const std::string text = line + "\n\n" + line;
  show(text);
  // Plain comparisons, since a failure message with these texts would be unreadable.
  EXPECT_TRUE(text_->text() == text);
  for (const int position : {4'000, 4'001, 5'500}) {
    QTextCursor cursor(text_->document());
    cursor.setPosition(position);
    text_->setTextCursor(cursor);
    type("\r");
    EXPECT_EQ(text_->text().size(), text.size() + 1) << position;
    text_->textCursor().deletePreviousChar();
    EXPECT_TRUE(text_->text() == text) << position;
  }
  text_->selectAll();
  text_->cut();
  EXPECT_EQ(text_->text(), "");
  text_->undo();
  EXPECT_TRUE(text_->text() == text);
  // Wrapped between words, this one outlasts the test's time limit.
  show(std::string(1'000'000, 'a'));
  QApplication::processEvents();
}

}  // namespace
}  // namespace tavelo
