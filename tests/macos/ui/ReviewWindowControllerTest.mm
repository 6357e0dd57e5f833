#include <cfloat>
#include <optional>

#include <gmock/gmock.h>

#include "app/ServiceContracts.h"
#include "tests/macos/fakes/AppKitFakes.h"
#include "ui/appkit/ReviewWindowController.h"

namespace tavelo {
namespace {

using fakes::utf8;
using testing::ElementsAre;

static_assert(ReviewWindowContract<ReviewWindowController>);

class ReviewOnMac : public fakes::FakeFrameworks {
 protected:
  ReviewOnMac() {
    fakes::serveApplication();
    controller_.emplace();
    controller_->onDismiss = [this] { events_.push_back("dismiss"); };
    window_ = fakes::windows().front();
    scroll_ = window_.contentView.subviews[0];
    row_ = window_.contentView.subviews[1];
    text_ = scroll_.documentView;
    cancel_ = row_.subviews[0];
    insert_ = row_.subviews[1];
  }
  void show(const std::string& text, const std::string& name = "insert ") {
    controller_->show(text, [this, name](const std::string& edited) {
      EXPECT_TRUE(window_.visible);
      events_.push_back(name + edited);
    });
  }
  void press(NSButton* button) { fakes::press(button.target, button.action); }

  std::optional<ReviewWindowController> controller_;
  NSWindow* window_;
  NSScrollView* scroll_;
  NSStackView* row_;
  NSTextView* text_;
  NSButton* cancel_;
  NSButton* insert_;
  std::vector<std::string> events_;
};

TEST_F(ReviewOnMac, WindowAndItsViewsAreBuiltOnceHidden) {
  EXPECT_FALSE(window_.visible);
  EXPECT_EQ(window_.styleMask, 1U + 2U + 8U) << "titled, closable, resizable";
  EXPECT_EQ(fakes::describe(window_.frame.size), "560x280");
  EXPECT_EQ(utf8(window_.title), "Xem lại văn bản");
  EXPECT_FALSE(window_.releasedWhenClosed);

  EXPECT_TRUE(scroll_.hasVerticalScroller);
  EXPECT_FALSE(scroll_.hasHorizontalScroller);
  EXPECT_EQ(row_.orientation, NSUserInterfaceLayoutOrientationHorizontal);
  EXPECT_EQ(row_.spacing, 8);
  EXPECT_EQ(row_.alignment, NSLayoutAttributeCenterY);
  EXPECT_EQ(row_.distribution, NSStackViewDistributionGravityAreas);
  EXPECT_EQ(utf8(cancel_.title), "Hủy");
  EXPECT_EQ(utf8(insert_.title), "Chèn");
  for (NSButton* button in @[ cancel_, insert_ ]) {
    EXPECT_EQ(button.bezelStyle, NSBezelStyleRounded);
    EXPECT_EQ(utf8(button.keyEquivalent), "");
  }
  EXPECT_EQ(row_.subviews.count, 2U);
}

TEST_F(ReviewOnMac, TextIsPlainEditableAndWrapsAtTheVisibleWidth) {
  EXPECT_EQ(text_.font.pointSize, 16);
  EXPECT_FALSE(text_.richText);
  EXPECT_TRUE(text_.editable);
  EXPECT_TRUE(text_.allowsUndo);
  EXPECT_EQ(fakes::describe(text_.textContainerInset), "10x10");
  EXPECT_TRUE(text_.textContainer.widthTracksTextView);
  EXPECT_TRUE(text_.verticallyResizable);
  EXPECT_FALSE(text_.horizontallyResizable);
  EXPECT_EQ(text_.autoresizingMask, NSViewWidthSizable);
  EXPECT_GE(text_.maxSize.height, FLT_MAX);
  EXPECT_GE(text_.textContainer.size.height, FLT_MAX);
}

TEST_F(ReviewOnMac, ConstraintsPutTheButtonsBelowTheText) {
  ASSERT_EQ(fakes::activations().size(), 1U);
  EXPECT_THAT(fakes::describe(fakes::activations()[0],
                              {{window_.contentView, "content"}, {scroll_, "scroll"}, {row_, "row"}}),
              ElementsAre("scroll.leading = content.leading + 16", "scroll.trailing = content.trailing + -16",
                          "scroll.top = content.top + 16", "scroll.bottom = row.top + -12",
                          "row.trailing = content.trailing + -16", "row.bottom = content.bottom + -16"));
  for (NSView* view in @[ scroll_, row_ ]) EXPECT_FALSE(view.translatesAutoresizingMaskIntoConstraints);
}

TEST_F(ReviewOnMac, ShowCentresTheWindowAndTakesTheFocus) {
  fakes::takeCalls();
  show("xin\nchào \xff");
  EXPECT_EQ(utf8(text_.string), "xin\nchào \uFFFD");
  EXPECT_THAT(fakes::takeCalls(), ElementsAre("-[NSUndoManager removeAllActions]", "-[NSWindow center]",
                                              "makeKeyAndOrderFront", "+[NSApplication sharedApplication]",
                                              "-[NSApplication activateIgnoringOtherApps:1]"));
}

TEST_F(ReviewOnMac, EditedTextIsHandedOverAsItStandsBeforeTheWindowCloses) {
  for (const char* edited : {" hai\n", "", "đã sửa"}) {
    show("một");
    text_.string = fakeString(edited);
    press(insert_);
    EXPECT_FALSE(window_.visible);
  }
  show("một");
  constexpr unichar halfPair[] = {'a', 0xD800, 'b'};
  text_.string = [NSString stringWithCharacters:halfPair length:3];
  press(insert_);
  EXPECT_THAT(events_, ElementsAre("insert  hai\n", "insert ", "insert đã sửa", testing::EndsWith("b")));
}

TEST_F(ReviewOnMac, CancelAndTheCloseButtonDismissWithoutInserting) {
  show("một");
  press(cancel_);
  EXPECT_FALSE(window_.visible);
  show("hai");
  EXPECT_EQ(utf8(text_.string), "hai");
  [window_ close];
  EXPECT_THAT(events_, ElementsAre("dismiss", "dismiss"));
}

TEST_F(ReviewOnMac, NewerReviewReplacesTextAndCallbackAndStaysOpen) {
  show("một", "old ");
  show("hai", "new ");
  press(insert_);
  EXPECT_THAT(events_, ElementsAre("new hai"));
  controller_->show("ba", [this](const std::string&) { show("bốn", "inner "); });
  press(insert_);
  EXPECT_TRUE(window_.visible);
  press(insert_);
  EXPECT_FALSE(window_.visible);
  show("năm");
  press(cancel_);
  EXPECT_THAT(events_, ElementsAre("new hai", "inner bốn", "dismiss"));
}

TEST_F(ReviewOnMac, ClosesInSilenceWithItsController) {
  show("một");
  id const target = insert_.target;
  controller_.reset();
  EXPECT_FALSE(window_.visible);
  if (target != nil) fakes::press(target, insert_.action);
  EXPECT_THAT(events_, ElementsAre());
}

}  // namespace
}  // namespace tavelo
