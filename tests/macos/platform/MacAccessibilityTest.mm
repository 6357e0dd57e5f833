#include <gmock/gmock.h>

#include "platform/macos/AccessibilityElement.h"
#import "platform/macos/MacAccessibility.h"
#include "platform/simulated/VirtualTimeLoop.h"
#import "tests/macos/fakes/Accessibility.h"
#include "tests/macos/fakes/Fakes.h"

namespace tavelo::macos {
namespace {

using platform::AXError;
using platform::AXRange;
using platform::AXValue;
using testing::ElementsAre;
namespace ax = platform::ax;

class MacAccessibilityTest : public fakes::FakeFrameworks {
 protected:
  ~MacAccessibilityTest() override { fakes::desktop() = {}; }

  /// What an attribute reads as, when reading it succeeds.
  AXValue read(const char* attribute) {
    AXValue value;
    EXPECT_EQ(accessibility_.copyAttributeValue(element_, attribute, value), AXError::success) << attribute;
    return value;
  }
  AXError errorOf(const char* attribute) {
    AXValue value = "untouched";
    const AXError error = accessibility_.copyAttributeValue(element_, attribute, value);
    EXPECT_EQ(value, AXValue("untouched"));
    return error;
  }
  FakeAXValue* range(AXValueType type, CFRange range) {
    FakeAXValue* const value = [FakeAXValue new];
    value.type = type;
    value.range = range;
    return value;
  }

  FakeElement* const field_ = [FakeElement new];
  simulated::VirtualTimeLoop loop_;
  MacAccessibility accessibility_{loop_, loop_};
  const platform::AXUIElementRef element_ =
      (fakes::desktop().systemWide = field_, accessibility_.createSystemWide());
};

TEST_F(MacAccessibilityTest, ValuesAreReadByTheTypeTheyHave) {
  FakeElement* const menu = [FakeElement new];
  field_->attributes = {{"AXValue", @"xin chào"},
                        {"AXTitle", @" Dán\t"},
                        {"AXSelectedTextRange", range(kAXValueTypeCFRange, {.location = 4, .length = -1})},
                        {"AXMenuBar", menu},
                        {"AXChildren", @[ menu, menu ]}};
  EXPECT_EQ(read(ax::value), AXValue("xin chào"));
  EXPECT_EQ(read(ax::title), AXValue("Dán"));
  EXPECT_EQ(read(ax::selectedTextRange), AXValue(AXRange{.location = 4, .length = -1}));
  const AXValue bar = read(ax::menuBar);
  const auto* const element =
      dynamic_cast<AccessibilityElement*>(std::get<platform::AXUIElementRef>(bar).get());
  EXPECT_EQ((__bridge FakeElement*)element->get(), menu);
  EXPECT_EQ(std::get<std::vector<platform::AXUIElementRef>>(read(ax::children)).size(), 2U);
  // Applications answer with anything.
  constexpr unichar halfPair[] = {'a', 0xD800, 'b'};
  field_->attributes["AXValue"] = [NSString stringWithCharacters:halfPair length:3];
  EXPECT_THAT(std::get<std::string>(read(ax::value)), testing::EndsWith("b"));
  for (id other : { (id) @3, (id)range(static_cast<AXValueType>(1), {}), (id) @[ menu, @"no element" ] }) {
    for (const char* attribute : {ax::focusedUIElement, ax::children, ax::selectedTextRange}) {
      field_->attributes[attribute] = other;
      EXPECT_EQ(read(attribute), AXValue()) << attribute;
    }
  }
}

TEST_F(MacAccessibilityTest, ErrorsAreHandedUpAndAPasswordIsNotRead) {
  EXPECT_EQ(errorOf(ax::value), AXError::noValue);
  EXPECT_EQ(errorOf("AXUnknown"), AXError::attributeUnsupported);
  field_->errors["AXTitle"] = kAXErrorInvalidUIElement;
  EXPECT_EQ(errorOf(ax::title), AXError::invalidUIElement);
  field_->errors["AXTitle"] = static_cast<::AXError>(-25214);
  EXPECT_EQ(errorOf(ax::title), AXError::failure);
  field_->attributes = {{"AXSubrole", @"AXSecureTextField"}, {"AXValue", @"•••"}};
  EXPECT_EQ(errorOf(ax::value), AXError::attributeUnsupported);
  field_->errors["AXSubrole"] = kAXErrorCannotComplete;
  EXPECT_EQ(errorOf(ax::value), AXError::cannotComplete) << "it may be a password";
  field_->errors.clear();
  field_->attributes["AXSubrole"] = @"AXSearchField";
  EXPECT_EQ(read(ax::value), AXValue("•••"));
  AXValue value;
  for (const auto& none : {platform::AXUIElementRef(), accessibility_.createApplication(-1)})
    EXPECT_EQ(accessibility_.copyAttributeValue(none, ax::menuBar, value), AXError::illegalArgument);
}

TEST_F(MacAccessibilityTest, TextAndCaretAreWrittenAndOnlyThePressIsPerformed) {
  EXPECT_EQ(accessibility_.setAttributeValue(element_, ax::selectedText, "được"), AXError::success);
  EXPECT_STREQ([field_->attributes["AXSelectedText"] UTF8String], "được");
  EXPECT_EQ(accessibility_.setAttributeValue(element_, ax::selectedTextRange, AXRange{.location = 7}),
            AXError::success);
  EXPECT_EQ(read(ax::selectedTextRange), AXValue(AXRange{.location = 7}));
  field_->errors["AXValue"] = kAXErrorAttributeUnsupported;
  EXPECT_EQ(accessibility_.setAttributeValue(element_, ax::value, "x"), AXError::attributeUnsupported);
  EXPECT_EQ(accessibility_.setAttributeValue(element_, ax::selectedText, AXValue()),
            AXError::illegalArgument);
  EXPECT_EQ(accessibility_.performAction(accessibility_.createApplication(12), ax::press), AXError::success);
  EXPECT_EQ(accessibility_.performAction(element_, "AXCancel"), AXError::actionUnsupported);
  EXPECT_THAT(fakes::takeCalls(),
              ElementsAre("AXUIElementCreateApplication(12)", "AXUIElementPerformAction(AXPress)"));
}

TEST_F(MacAccessibilityTest, TargetThatHangsCostsNoMoreThanTheTurnAllows) {
  std::vector<float> timeouts;
  field_->errors["AXTitle"] = kAXErrorCannotComplete;
  fakes::desktop().onCall = [&](FakeElement* element) {
    timeouts.push_back(element->timeout);
    loop_.stall(platform::Seconds{element->timeout});
  };
  const auto before = loop_.uptime();
  for (int i = 0; i < 4; ++i) EXPECT_EQ(errorOf(ax::title), AXError::cannotComplete);
  EXPECT_LE(loop_.uptime() - before, std::chrono::milliseconds(301));
  EXPECT_THAT(timeouts, ElementsAre(testing::FloatEq(0.25F), testing::FloatNear(0.05F, 0.001F)));
  loop_.advance(platform::Seconds{0.001});
  errorOf(ax::title);
  ASSERT_EQ(timeouts.size(), 3U);
  EXPECT_FLOAT_EQ(timeouts[2], 0.25F) << "a new turn";
}

TEST_F(MacAccessibilityTest, TimeOutIsNeverZeroHoweverTheTimeRunsOut) {
  // Time passes between any two looks at it.
  struct : platform::Clock {
    platform::WallTime now() const override { return {}; }
    platform::Uptime uptime() const override { return time += std::chrono::milliseconds(7); }
    mutable platform::Uptime time{};
  } clock;
  MacAccessibility accessibility(loop_, clock);
  AXError error = AXError::success;
  fakes::desktop().onCall = [](FakeElement* element) { EXPECT_GE(element->timeout, 0.00099F); };
  for (int i = 0; i < 1000 && error != AXError::cannotComplete; ++i)
    error = accessibility.performAction(element_, ax::press);
  EXPECT_EQ(error, AXError::cannotComplete);
  fakes::takeCalls();
}

TEST_F(MacAccessibilityTest, TrustIsAskedForAtOnceAndPromptedOnlyOnRequest) {
  EXPECT_FALSE(accessibility_.isProcessTrusted());
  EXPECT_FALSE(accessibility_.isProcessTrustedWithOptions({.prompt = false}));
  fakes::desktop().isTrusted = true;
  EXPECT_TRUE(accessibility_.isProcessTrustedWithOptions({.prompt = true}));
  EXPECT_THAT(fakes::takeCalls(), ElementsAre("AXIsProcessTrusted()", "AXIsProcessTrustedWithOptions()",
                                              "AXIsProcessTrustedWithOptions(prompt)"));
}

}  // namespace
}  // namespace tavelo::macos
