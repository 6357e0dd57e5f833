#include <optional>

#include <gmock/gmock.h>

#include "app/ServiceContracts.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/macos/fakes/AppKitFakes.h"
#include "ui/appkit/FloatingStatusWindowController.h"
#import "ui/appkit/RecordingDotView.h"

namespace tavelo {
namespace {

using fakes::utf8;
using platform::Seconds;
using testing::ElementsAre;

static_assert(FloatingStatusContract<FloatingStatusWindowController>);

class OverlayOnMac : public fakes::FakeFrameworks {
 protected:
  OverlayOnMac() {
    fakes::serveApplication();
    controller_.emplace();
    panel_ = fakes::windows().front();
    body_ = panel_.contentView.subviews.firstObject;
    dot_ = body_.subviews[0];
    title_ = body_.subviews[1];
    detail_ = body_.subviews[2];
    main_ = fakes::screen(NSMakeRect(0, 0, 1513, 982), NSMakeRect(0, 70, 1513, 875));
    second_ = fakes::screen(NSMakeRect(1513, -200, 1920, 1080), NSMakeRect(1513, -200, 1920, 1080));
  }
  /// What the last call shows: title, detail, whether the dot is red.
  std::vector<std::string> shown() const {
    return {utf8(title_.stringValue), utf8(detail_.stringValue), dot_.active ? "red" : "green"};
  }
  std::string frameWith(NSArray<NSScreen*>* screens, NSScreen* mainScreen, NSPoint pointer) {
    fakes::serveApplication(screens, mainScreen, pointer);
    controller_->showRecording();
    return fakes::describe(panel_.frame);
  }

  simulated::SimulatedDesktop desktop_;
  std::optional<FloatingStatusWindowController> controller_;
  NSWindow* panel_;
  NSVisualEffectView* body_;
  RecordingDotView* dot_;
  NSTextField* title_;
  NSTextField* detail_;
  NSScreen* main_;
  NSScreen* second_;
};

TEST_F(OverlayOnMac, PanelFloatsEverywhereAndNeverTakesTheFocus) {
  EXPECT_TRUE([panel_ isKindOfClass:[NSPanel class]]);
  EXPECT_EQ(panel_.styleMask, 128U);
  EXPECT_EQ(panel_.backingType, NSBackingStoreBuffered);
  EXPECT_FALSE(panel_.deferred);
  for (const NSSize size : {panel_.frame.size, panel_.minSize, panel_.maxSize})
    EXPECT_EQ(fakes::describe(size), "220x56");
  EXPECT_EQ(panel_.level, 3);
  EXPECT_EQ(panel_.collectionBehavior, 257U);
  EXPECT_FALSE(panel_.opaque);
  EXPECT_EQ(utf8(panel_.backgroundColor.name), "clearColor");
  EXPECT_TRUE(panel_.hasShadow);
  EXPECT_FALSE(panel_.visible);
  EXPECT_THAT(shown(), ElementsAre("Đang thu âm", "", "red"));
}

TEST_F(OverlayOnMac, BodyAndLabelsLookAsTheyShould) {
  EXPECT_EQ(body_.material, 13);
  EXPECT_EQ(body_.blendingMode, NSVisualEffectBlendingModeBehindWindow);
  EXPECT_EQ(body_.state, NSVisualEffectStateActive);
  EXPECT_EQ(body_.layer.cornerRadius, 10);
  EXPECT_TRUE(body_.layer.masksToBounds);
  EXPECT_EQ(title_.font.pointSize, 12);
  EXPECT_EQ(title_.font.weight, NSFontWeightSemibold);
  EXPECT_EQ(utf8(title_.textColor.name), "labelColor");
  EXPECT_EQ(title_.lineBreakMode, NSLineBreakByTruncatingTail);
  EXPECT_EQ(detail_.font.pointSize, 10);
  EXPECT_EQ(detail_.font.weight, NSFontWeightRegular);
  EXPECT_EQ(utf8(detail_.textColor.name), "secondaryLabelColor");
  EXPECT_EQ(detail_.alignment, NSTextAlignmentRight);
  EXPECT_EQ(detail_.lineBreakMode, NSLineBreakByTruncatingHead);
  EXPECT_EQ(detail_.maximumNumberOfLines, 1);
  EXPECT_TRUE(detail_.cell.usesSingleLineMode);
  EXPECT_FALSE(detail_.cell.wraps);
  EXPECT_FALSE(detail_.cell.scrollable);
  EXPECT_NE(title_.maximumNumberOfLines, wrappingLabel);
}

TEST_F(OverlayOnMac, FifteenConstraintsPlaceTheViews) {
  ASSERT_EQ(fakes::activations().size(), 1U);
  EXPECT_THAT(fakes::describe(fakes::activations()[0], {{panel_.contentView, "content"},
                                                        {body_, "body"},
                                                        {dot_, "dot"},
                                                        {title_, "title"},
                                                        {detail_, "detail"}}),
              ElementsAre("body.leading = content.leading + 0", "body.trailing = content.trailing + 0",
                          "body.top = content.top + 0", "body.bottom = content.bottom + 0",
                          "dot.leading = body.leading + 12", "dot.centerY = body.centerY + 0",
                          "dot.width = 10", "dot.height = 10", "title.leading = dot.trailing + 9",
                          "title.trailing = body.trailing + -12", "title.top = body.top + 9",
                          "detail.leading = title.leading + 0", "detail.trailing = title.trailing + 0",
                          "detail.top = title.bottom + 3", "detail.height = 13"));
  for (NSView* view in @[ body_, dot_, title_, detail_ ])
    EXPECT_FALSE(view.translatesAutoresizingMaskIntoConstraints);
}

TEST_F(OverlayOnMac, DotIsRedOrGreenAndRedrawnWithEachAssignment) {
  RecordingDotView* const archived = [[RecordingDotView alloc] initWithCoder:[NSCoder new]];
  EXPECT_TRUE(archived.active);
  dot_.bounds = NSMakeRect(0, 0, 10, 10);
  fakes::takeCalls();
  for (const BOOL active : {YES, NO}) {
    dot_.needsDisplay = NO;
    dot_.active = active;
    EXPECT_TRUE(dot_.needsDisplay);
    [dot_ drawRect:NSMakeRect(0, 0, 1, 1)];
  }
  EXPECT_THAT(fakes::takeCalls(),
              ElementsAre("systemRedColor oval 2,2 6x6", "systemGreenColor oval 2,2 6x6"));
}

TEST_F(OverlayOnMac, ShowsWhatTheLastCallSaid) {
  fakes::serveApplication(@[ main_ ], main_);
  fakes::takeCalls();
  controller_->showRecording();
  EXPECT_THAT(shown(), ElementsAre("Đang thu âm", "Nhả Fn để tạo và chèn văn bản", "red"));
  EXPECT_THAT(fakes::takeCalls(), testing::Contains("setFrame display"));
  controller_->showTranscribing(" một\n hai\xff ");
  EXPECT_THAT(shown(), ElementsAre("Đang bóc tách văn bản", "một hai\uFFFD", "red"));
  controller_->showTranscribing(std::nullopt);
  EXPECT_THAT(shown(), ElementsAre("Đang bóc tách văn bản", "Đang tạo text...", "red"));
  controller_->showInserted();
  EXPECT_THAT(shown(), ElementsAre("Đã chèn văn bản", "", "green"));
  fakes::takeCalls();
  desktop_.advance(Seconds{0.5});
  controller_->showRecording();
  EXPECT_THAT(fakes::takeCalls(), testing::Contains("orderFrontRegardless"));
  desktop_.advance(Seconds{0.3999});
  EXPECT_TRUE(panel_.visible);
  desktop_.advance(Seconds{0.0001});
  EXPECT_FALSE(panel_.visible) << "whatever it shows then";
}

TEST_F(OverlayOnMac, LiesAtTheTopOfTheScreenWithThePointer) {
  // The top edge of the free area is at 945, and that of the overlay 40 below.
  EXPECT_EQ(frameWith(@ [main_, second_], second_, { 5, 5 }), "646.5,849 220x56");
  EXPECT_EQ(frameWith(@ [main_, second_], main_, { 1513, -100 }), "2363,784 220x56");
  EXPECT_EQ(frameWith(@ [main_, second_], second_, { -5, 5 }), "2363,784 220x56");
  EXPECT_EQ(frameWith(@ [main_, second_], nil, { -5, 5 }), "646.5,849 220x56");
}

TEST_F(OverlayOnMac, IsNotShownWithoutAScreenAndIsHiddenWithItsController) {
  controller_->showRecording();
  EXPECT_FALSE(panel_.visible);
  frameWith(@ [main_], main_, {});
  controller_->showInserted();
  EXPECT_TRUE(panel_.visible);
  controller_.reset();
  EXPECT_FALSE(panel_.visible);
  fakes::takeCalls();
  desktop_.advance(Seconds{1});
  EXPECT_THAT(fakes::takeCalls(), ElementsAre());
}

}  // namespace
}  // namespace tavelo
