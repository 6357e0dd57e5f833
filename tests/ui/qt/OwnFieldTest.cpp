#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include "platform/linux/accessibility/OwnField.h"
#include "tests/platform/qt/OffscreenApplication.h"

namespace tavelo::linuxdesktop {
namespace {

using platform::AXError;

TEST(OwnFieldTest, TakesTextInPlaceOfTheSelectionUnlessItIsSecretOrReadOnlyOrGone) {
  offscreenApplication();
  EXPECT_EQ(OwnField::focused(), nullptr);
  QWidget window;
  QVBoxLayout column(&window);
  auto* text = new QPlainTextEdit("một hai ba", &window);
  QLineEdit line(&window);
  QPushButton button(&window);
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  text->setFocus();
  text->moveCursor(QTextCursor::NextWord);
  text->moveCursor(QTextCursor::NextWord, QTextCursor::KeepAnchor);
  const auto field = OwnField::focused();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->setSelectedText("Ễ\n🧑‍🚀 "), AXError::success);
  EXPECT_EQ(text->toPlainText(), QString("một Ễ\n🧑‍🚀 ba"));
  text->undo();
  EXPECT_EQ(text->toPlainText(), QString("một hai ba"));

  button.setFocus();
  EXPECT_EQ(OwnField::focused(), nullptr);
  EXPECT_EQ(field->setSelectedText("x"), AXError::success) << "another control has the focus by now";
  text->setReadOnly(true);
  EXPECT_NE(field->setSelectedText("x"), AXError::success);
  line.setFocus();
  EXPECT_NE(OwnField::focused(), nullptr);
  line.setEchoMode(QLineEdit::Password);
  EXPECT_EQ(OwnField::focused(), nullptr);
  delete text;
  EXPECT_NE(field->setSelectedText("x"), AXError::success);
}

}  // namespace
}  // namespace tavelo::linuxdesktop
