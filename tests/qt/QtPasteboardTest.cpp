#include <QClipboard>
#include <QMimeData>

#include <gmock/gmock.h>

#include "platform/qt/QtPasteboard.h"
#include "tests/qt/OffscreenApplication.h"

namespace tavelo::qt {
namespace {

using testing::ElementsAre;

constexpr const char* historyHint = "x-kde-passwordManagerHint";

class QtPasteboardTest : public testing::Test {
 protected:
  QtPasteboardTest() {
    offscreenApplication();
    pasteboard_.clearContents();
  }
  static QByteArray seenByOthers(const char* format) {
    return QGuiApplication::clipboard()->mimeData()->data(format);
  }

  QtPasteboard pasteboard_;
};

TEST_F(QtPasteboardTest, MomentaryTextStaysOutOfHistoriesAndOtherContentsDoNot) {
  EXPECT_TRUE(pasteboard_.setString("xin chào", platform::pasteboardTypeString));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("xin chào"));
  EXPECT_EQ(seenByOthers(historyHint), QByteArray("secret"));

  pasteboard_.clearContents();
  EXPECT_TRUE(pasteboard_.writeObjects({{{{platform::pasteboardTypeString, "của tôi"}}}}));
  EXPECT_EQ(seenByOthers("text/plain"), QByteArray("của tôi"));
  EXPECT_EQ(seenByOthers(historyHint), QByteArray());
}

TEST_F(QtPasteboardTest, ContentsComeBackByteForByteWithAPasswordManagersOwnHint) {
  // A list of addresses with comments and half a character: whatever reads it as text would change it.
  const platform::PasteboardItemContent users{{{"text/uri-list", "# a\r\nfile:///t%C3%A9p\r\n"},
                                               {platform::pasteboardTypeString, std::string("a\0\xC3", 3)},
                                               {historyHint, "secret"}}};
  EXPECT_TRUE(pasteboard_.writeObjects({users}));
  for (const auto& each : users.representations) {
    const bool text = each.type == platform::pasteboardTypeString;
    EXPECT_EQ(seenByOthers(text ? "text/plain" : each.type.c_str()).toStdString(), each.data);
  }
  const auto items = pasteboard_.pasteboardItems();
  ASSERT_EQ(items->size(), 1U);
  EXPECT_THAT(items->front()->types(),
              ElementsAre("text/uri-list", platform::pasteboardTypeString, historyHint));
}

TEST_F(QtPasteboardTest, ItemsAreJoinedIntoOne) {
  EXPECT_TRUE(pasteboard_.writeObjects({{{{"a/a", "1"}}}, {{{"b/b", "2"}, {"a/a", "3"}}}}));
  EXPECT_EQ(seenByOthers("a/a"), QByteArray("1"));
  EXPECT_EQ(seenByOthers("b/b"), QByteArray("2"));
}

TEST_F(QtPasteboardTest, ItemOfOthersIsEmptyOnceTheContentsChanged) {
  QGuiApplication::clipboard()->setText("x");
  const auto items = pasteboard_.pasteboardItems();
  ASSERT_EQ(items->size(), 1U);
  QGuiApplication::clipboard()->setText("y");
  EXPECT_EQ(items->front()->data(platform::pasteboardTypeString), std::nullopt);
  EXPECT_TRUE(items->front()->types().empty());
}

}  // namespace
}  // namespace tavelo::qt
