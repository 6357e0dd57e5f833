#include <functional>
#include <optional>

#include <gmock/gmock.h>

#include "platform/macos/MacPasteboard.h"
#include "platform/simulated/VirtualTimeLoop.h"
#include "tests/contract/PasteboardContract.h"
#include "tests/macos/fakes/Pasteboard.h"

/// An application that computes what it promised.
@interface SlowPromise : NSObject <NSPasteboardItemDataProvider> {
 @public
  std::function<void()> work;
}
@end
@implementation SlowPromise
- (void)pasteboard:(NSPasteboard*)pasteboard
                  item:(NSPasteboardItem*)item
    provideDataForType:(NSPasteboardType)type {
  work();
  [item setData:[NSData dataWithBytes:"x" length:1] forType:type];
}
@end

namespace tavelo::macos {
namespace {

using platform::PasteboardFetch;

class MacPasteboardTest : public fakes::FakeFrameworks {
 protected:
  MacPasteboardTest() : general_(fakes::servePasteboard()) { pasteboard_.emplace(loop_); }
  void copyElsewhere(const char* type, const char* data) { fakes::copyElsewhere(general_, {{type, data}}); }
  std::string paste() { return fakes::pasteElsewhere(general_); }
  void putText(const std::string& text) {
    pasteboard_->clearContents();
    EXPECT_TRUE(pasteboard_->setString(text, platform::pasteboardTypeString));
  }

  simulated::VirtualTimeLoop loop_;
  NSPasteboard* general_;
  std::optional<MacPasteboard> pasteboard_;
};

TEST_F(MacPasteboardTest, ItemsStaySeparateAndAnAbsentListIsNotAnEmptyOne) {
  pasteboard_->clearContents();
  EXPECT_TRUE(pasteboard_->writeObjects({{{{"public.png", "a"}}}, {{{"public.file-url", "file:///a"}}}}));
  const auto read = pasteboard_->pasteboardItems();
  ASSERT_EQ(read->size(), 2U);
  EXPECT_EQ((*read)[1]->data("public.file-url"), "file:///a");
  EXPECT_EQ((*read)[1]->data("public.png"), std::nullopt) << "not delivered";
  general_.pasteboardItems = nil;
  EXPECT_EQ(pasteboard_->pasteboardItems(), std::nullopt);
}

TEST_F(MacPasteboardTest, TextIsPromisedAndKeptOutOfHistories) {
  putText("Xin chào.");
  NSArray<NSString*>* const types = general_.pasteboardItems.firstObject.types;
  ASSERT_EQ(types.count, 2U);
  EXPECT_STREQ(types[1].UTF8String, "org.nspasteboard.ConcealedType");
  EXPECT_EQ(paste(), "Xin chào.");
  // What a password manager marked stays marked.
  fakes::copyElsewhere(general_, {{"public.utf8-plain-text", "x"}, {"org.nspasteboard.ConcealedType", ""}});
  EXPECT_EQ((*pasteboard_->pasteboardItems())[0]->types().size(), 2U);
  putText("Tạm biệt.");
  pasteboard_->clearContents();
  pasteboard_->writeObjects({{{{"public.utf8-plain-text", "x"}, {"org.nspasteboard.ConcealedType", ""}}}});
  EXPECT_EQ((*pasteboard_->pasteboardItems())[0]->types().size(), 2U) << "also when we gave it back";
}

TEST_F(MacPasteboardTest, ReadingEndsInTimeAndBelowItsSize) {
  SlowPromise* const promise = [SlowPromise new];
  promise->work = [this] { loop_.stall(platform::Seconds{0.4}); };
  NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
  [item setDataProvider:promise forTypes:@[ @"a", @"b", @"c" ]];
  [general_ writeObjects:@[ item ]];
  const auto slow = (*pasteboard_->pasteboardItems())[0];
  EXPECT_EQ(slow->data("a"), "x");
  EXPECT_EQ(slow->data("b"), "x") << "begun in time";
  EXPECT_EQ(slow->data("c"), std::nullopt);
  EXPECT_EQ((*pasteboard_->pasteboardItems())[0]->data("c"), "x") << "another reading";

  fakes::copyElsewhere(general_, {{"huge", std::string((64U << 20U) - 1, 'x')}, {"p", "12"}, {"q", "1"}});
  const auto huge = (*pasteboard_->pasteboardItems())[0];
  EXPECT_TRUE(huge->data("huge").has_value());
  EXPECT_EQ(huge->data("p"), std::nullopt);
  EXPECT_EQ(huge->data("q"), "1");
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
  NSPasteboardItem* const item = general_.pasteboardItems.firstObject;
  general_.pasteboardItems = @[ item, item ];
  EXPECT_FALSE(pasteboard_->holdsOnlyText("hai"));
  copyElsewhere("public.html", "hai");
  EXPECT_FALSE(pasteboard_->holdsOnlyText("hai"));
}

}  // namespace
}  // namespace tavelo::macos

namespace tavelo::contract {
namespace {

class MacClipboard final : public PasteboardBackend {
 public:
  platform::Pasteboard& pasteboard() override { return pasteboard_; }
  void copy(const platform::PasteboardItemContent& item) override {
    std::vector<std::pair<std::string, std::string>> all;
    for (const auto& [type, data] : item.representations) all.emplace_back(type, data);
    fakes::copyElsewhere(general_, all);
  }
  ~MacClipboard() override { fakes::resetRecorder(); }

 private:
  NSPasteboard* const general_ = fakes::servePasteboard();
  simulated::VirtualTimeLoop loop_;
  macos::MacPasteboard pasteboard_{loop_};
};

INSTANTIATE_TEST_SUITE_P(Mac, PasteboardContract, (only<PasteboardBackend, MacClipboard>("fakes")),
                         nameOfParameter<PasteboardBackend>);

}  // namespace
}  // namespace tavelo::contract
