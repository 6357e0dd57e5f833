#include <cstring>
#include <optional>

#include <gmock/gmock.h>

#include "platform/macos/MacPasteboard.h"
#include "tests/macos/fakes/Pasteboard.h"

namespace tavelo::macos {
namespace {

using platform::PasteboardFetch;
using platform::PasteboardItemContent;
using testing::ElementsAre;

class MacPasteboardTest : public fakes::FakeFrameworks {
 protected:
  MacPasteboardTest() : general_(fakes::servePasteboard()) { pasteboard_.emplace(); }
  /// As another application does.
  void copyElsewhere(const char* type, const char* data) {
    [general_ clearContents];
    NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
    [item setData:[NSData dataWithBytes:data length:std::strlen(data)] forType:fakeString(type)];
    [general_ writeObjects:@[ item ]];
  }
  std::string paste() {
    NSData* const data = [general_.pasteboardItems.firstObject dataForType:NSPasteboardTypeString];
    return {static_cast<const char*>(data.bytes), data.length};
  }
  void putText(const std::string& text) {
    pasteboard_->clearContents();
    EXPECT_TRUE(pasteboard_->setString(text, platform::pasteboardTypeString));
  }

  NSPasteboard* general_;
  std::optional<MacPasteboard> pasteboard_;
};

TEST_F(MacPasteboardTest, ContentsComeBackByteForByteInTheirOrder) {
  const std::string bytes{"\0\xFF\x01 png", 7};
  const std::vector<PasteboardItemContent> items{{{{"public.png", bytes}, {"public.html", "<b>"}}},
                                                 {{{"public.file-url", "file:///a"}}}};
  pasteboard_->clearContents();
  EXPECT_TRUE(pasteboard_->writeObjects(items));
  const auto read = pasteboard_->pasteboardItems();
  ASSERT_EQ(read->size(), 2U);
  EXPECT_THAT((*read)[0]->types(), ElementsAre("public.png", "public.html"));
  EXPECT_EQ((*read)[0]->data("public.png"), bytes);
  EXPECT_EQ((*read)[1]->data("public.file-url"), "file:///a");
  EXPECT_EQ((*read)[1]->data("public.png"), std::nullopt) << "not delivered";
  general_.pasteboardItems = nil;
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
}

TEST_F(MacPasteboardTest, TextIsPromisedAndKeptOutOfHistories) {
  putText("Xin chào.");
  const auto types = (*pasteboard_->pasteboardItems())[0]->types();
  EXPECT_THAT(types, ElementsAre("public.utf8-plain-text", "org.nspasteboard.ConcealedType"));
  EXPECT_EQ(paste(), "Xin chào.");
}

TEST_F(MacPasteboardTest, FetchCountsFromThePasteCommandAndOnlyIfNobodyAskedBefore) {
  EXPECT_EQ(pasteboard_->fetchSincePaste(), PasteboardFetch::unknown);
  putText("một");
  pasteboard_->pasteFollows();
  EXPECT_EQ(pasteboard_->fetchSincePaste(), PasteboardFetch::no);
  paste();
  EXPECT_EQ(pasteboard_->fetchSincePaste(), PasteboardFetch::yes);

  putText("hai");
  paste();  // a clipboard manager
  pasteboard_->pasteFollows();
  EXPECT_EQ(pasteboard_->fetchSincePaste(), PasteboardFetch::unknown);

  putText("ba");
  pasteboard_->pasteFollows();
  copyElsewhere("public.utf8-plain-text", "bốn");
  EXPECT_EQ(pasteboard_->fetchSincePaste(), PasteboardFetch::unknown);
}

TEST_F(MacPasteboardTest, ContentsAreOursUntilAnotherApplicationWrites) {
  EXPECT_FALSE(pasteboard_->hasOwnContents());
  putText("một");
  EXPECT_TRUE(pasteboard_->hasOwnContents());
  copyElsewhere("public.utf8-plain-text", "hai");
  EXPECT_FALSE(pasteboard_->hasOwnContents());
  EXPECT_TRUE(pasteboard_->holdsOnlyText("hai"));
  EXPECT_FALSE(pasteboard_->holdsOnlyText("một"));
  copyElsewhere("public.html", "hai");
  EXPECT_FALSE(pasteboard_->holdsOnlyText("hai"));
}

}  // namespace
}  // namespace tavelo::macos
