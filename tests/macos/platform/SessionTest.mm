// The small pieces of the Mac's platform, against fake frameworks.
#include <optional>
#include <set>
#include <vector>

#include <gmock/gmock.h>

#include "platform/macos/MacFileManager.h"
#include "platform/macos/MacResources.h"
#include "platform/macos/MacSecretGuard.h"
#include "platform/macos/MacUserNotifications.h"
#include "platform/macos/MacWorkspace.h"
#include "platform/macos/RunLoopMainQueue.h"
#include "platform/posix/SystemClock.h"
#import "tests/macos/fakes/Accessibility.h"
#include "tests/macos/fakes/SessionFakes.h"

namespace tavelo::macos {
namespace {

using fakes::answer;
using fakes::answerWith;
using fakes::takeCalls;
using platform::Seconds;
using platform::Secret;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class MacSession : public fakes::FakeFrameworks {
 protected:
  MacSession() {
    answerWith("sharedWorkspace", workspace_);
    answerWith("currentApplication", own_);
    workspace_.frontmostApplication = front_;
    answerWith("defaultManager", files_);
    answerWith("mainBundle", bundle_);
    answerWith("currentNotificationCenter", centre_);
  }
  ~MacSession() override {
    fakes::session() = {};
    fakes::desktop() = {};
  }

  NSRunningApplication* const front_ = [NSRunningApplication new];
  NSRunningApplication* const own_ = [NSRunningApplication new];
  NSFileManager* const files_ = [NSFileManager new];
  NSBundle* const bundle_ = [NSBundle new];
  UNUserNotificationCenter* const centre_ = [UNUserNotificationCenter new];
  NSWorkspace* const workspace_ = [NSWorkspace new];
  MacWorkspace applications_;
};

TEST_F(MacSession, FrontmostApplicationTellsWhatTheSystemKnows) {
  front_.processIdentifier = 4711;
  auto application = applications_.frontmostApplication();
  EXPECT_EQ(application->localizedName(), std::nullopt);
  EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
  front_.localizedName = @"Ghi chú";
  front_.bundleIdentifier = @"org.example.notes";
  EXPECT_EQ(application->localizedName(), "Ghi chú");
  EXPECT_EQ(application->bundleIdentifier(), "org.example.notes");
  EXPECT_EQ(application->processIdentifier(), 4711);
  EXPECT_FALSE(application->isTerminated());
  front_.terminated = YES;
  EXPECT_TRUE(application->isTerminated());
  workspace_.frontmostApplication = nil;
  EXPECT_EQ(applications_.frontmostApplication(), nullptr);
}

TEST_F(MacSession, ActivationHandsOverWhenOursIsActiveAndElseAsks) {
  const std::string yield = "-[NSApplication yieldActivationToApplication:<NSRunningApplication>]";
  const std::string handOver =
      "-[NSRunningApplication activateFromApplication:<NSRunningApplication> options:2]";
  const std::string ask = "-[NSRunningApplication activateWithOptions:2]";
  const struct {
    bool isActive, handsOver, isGranted;
    std::vector<std::string> calls;
  } cases[] = {{false, true, true, {ask}},
               {false, true, false, {ask}},
               {true, true, false, {yield, handOver}},
               {true, false, true, {yield, handOver, ask}}};
  NSApplication* const program = [NSApplication new];
  answerWith("sharedApplication", program);
  for (const auto& each : cases) {
    own_.active = each.isActive;
    answerWith("activateFromApplication:options:", each.handsOver);
    answerWith("activateWithOptions:", each.isGranted);
    const auto application = applications_.frontmostApplication();
    takeCalls();
    EXPECT_EQ(application->activate(platform::ActivationOptions::activateIgnoringOtherApps),
              each.isGranted || each.calls.back() == handOver);
    std::vector<std::string> calls = takeCalls();
    std::erase_if(calls, [](const auto& call) { return call[0] == '+'; });
    EXPECT_EQ(calls, each.calls);
  }
}

TEST_F(MacSession, OpensAddressesAndRespectsLessTransparency) {
  answerWith("openURL:", true);
  EXPECT_TRUE(applications_.open("https://example.org/a"));
  EXPECT_FALSE(applications_.open("no address"));
  answerWith("openURL:", false);
  EXPECT_FALSE(applications_.open("https://example.org/a"));
  EXPECT_TRUE(applications_.windowsMayBeTranslucent());
  workspace_.accessibilityDisplayShouldReduceTransparency = YES;
  EXPECT_FALSE(applications_.windowsMayBeTranslucent());
}

TEST_F(MacSession, FoldersAreTheUsersOwn) {
  const MacFileManager files;
  NSArray* const folders =
      @[ [NSURL URLWithString:@"/Users/lan/Library"], [NSURL URLWithString:@"/Library"] ];
  answerWith("URLsForDirectory:inDomains:", folders);
  EXPECT_EQ(files.applicationSupportDirectory(), "/Users/lan/Library");
  EXPECT_THAT(takeCalls(), Contains("-[NSFileManager URLsForDirectory:14 inDomains:1]"));
  answerWith("URLsForDirectory:inDomains:", (id)nil);
  EXPECT_EQ(files.applicationSupportDirectory(), std::nullopt);
  EXPECT_EQ(files.temporaryDirectory(), "/var/folders/zz/T/");
}

TEST_F(MacSession, ResourceIsAbsentUnlessItCanBeRead) {
  const MacResources resources;
  EXPECT_EQ(resources.data("AppIcon", "icns"), std::nullopt);
  EXPECT_THAT(takeCalls(), Contains("-[NSBundle URLForResource:\"AppIcon\" withExtension:\"icns\"]"));
  NSURL* const file = [NSURL URLWithString:@"/AppIcon.icns"];
  answerWith("URLForResource:withExtension:", file);
  EXPECT_EQ(resources.data("AppIcon", "icns"), std::nullopt);
  NSData* const bytes = [NSData dataWithBytes:"a\0b" length:3];
  answerWith("dataWithContentsOfURL:", bytes);
  EXPECT_EQ(resources.data("AppIcon", "icns"), std::string("a\0b", 3));
}

TEST_F(MacSession, NotificationNeedsABundleAndThePermission) {
  MacUserNotifications notifications;
  std::string content;
  std::set<std::string> identifiers;
  UNNotificationRequest* const request = [UNNotificationRequest new];
  answer("requestWithIdentifier:content:trigger:", [&](fakes::Call& call) {
    auto* const given = (__bridge UNNotificationContent*)call.argument<void*>(1);
    identifiers.insert(((__bridge NSString*)call.argument<void*>(0)).UTF8String);
    content = std::string(given.title.UTF8String) + ": " + given.body.UTF8String;
    call.give((__bridge void*)request);
  });
  bool isGranted = false;
  answer("requestAuthorizationWithOptions:completionHandler:", [&](fakes::Call& call) {
    EXPECT_EQ(call.argument<NSUInteger>(0), 4U);
    ((__bridge void (^)(BOOL, NSError*))call.argument<void*>(1))(isGranted, nil);
  });
  const auto added = Contains(HasSubstr("addNotificationRequest:<UNNotificationRequest>"));
  notifications.post("Tavelo", "một");
  EXPECT_THAT(takeCalls(), Not(Contains(HasSubstr("Center"))));
  bundle_.bundleIdentifier = @"org.example.tavelo";
  notifications.post("Tavelo", "hai \xff");
  EXPECT_THAT(takeCalls(), Not(added));
  isGranted = true;
  notifications.post("Tavelo", "hai \xff");
  EXPECT_THAT(takeCalls(), added);
  EXPECT_EQ(content, "Tavelo: hai \uFFFD");
  EXPECT_EQ(identifiers.size(), 2U) << "one of the same name would take the place of the first";
  EXPECT_EQ(centre_.delegate, nil) << "made without a bundle";
  const MacUserNotifications made;
  __block UNNotificationPresentationOptions shown = 0;
  [centre_.delegate userNotificationCenter:centre_
                   willPresentNotification:[UNNotification new]
                     withCompletionHandler:^(UNNotificationPresentationOptions options) {
                       shown = options;
                     }];
  EXPECT_EQ(shown, 24U) << "banner and list, while our own window is in front";
}

TEST_F(MacSession, GuardKnowsLockedSessionsSecureInputAndPasswordFields) {
  FakeElement* const application = [FakeElement new];
  FakeElement* const field = [FakeElement new];
  fakes::desktop().application = application;
  const struct {
    const char* what;
    fakes::Session session;
    id focused, subrole;
    Secret secret;
  } cases[] = {
      {"nothing answers", {}, nil, nil, Secret::none},
      {"a plain field", {@{@"kCGSSessionOnConsoleKey" : @YES}, false}, field, @"AXTextArea", Secret::none},
      {"a field that is no element", {}, @"text", nil, Secret::none},
      {"a password field", {}, field, @"AXSecureTextField", Secret::passwordField},
      {"secure input", {nil, true}, nil, nil, Secret::passwordField},
      {"a locked screen", {@{@"CGSSessionScreenIsLocked" : @YES}, true}, nil, nil, Secret::lockedSession},
      {"another user", {@{@"kCGSSessionOnConsoleKey" : @NO}, false}, nil, nil, Secret::lockedSession},
  };
  MacSecretGuard guard;
  for (const auto& each : cases) {
    fakes::session() = each.session;
    application->attributes["AXFocusedUIElement"] = each.focused;
    field->attributes["AXSubrole"] = each.subrole;
    std::optional<Secret> told;
    guard.ask([&](Secret secret) { told = secret; });
    EXPECT_EQ(told, each.secret) << each.what;
  }
  EXPECT_FLOAT_EQ(application->timeout, 0.05F);
  EXPECT_FLOAT_EQ(field->timeout, 0.05F);
}

TEST_F(MacSession, DelayedBlockMayRunALoopThatNeedsTheTimer) {
  const posix::SystemClock clock;
  RunLoopMainQueue queue;
  const auto in = [&](double seconds) { return clock.uptime() + platform::toUptime(Seconds{seconds}); };
  std::vector<int> order;
  queue.asyncAfter(Seconds{0.002}, [&] {
    queue.asyncAfter(Seconds{0.002}, [&] { order.push_back(1); });
    for (const auto bound = in(2); order.empty() && clock.uptime() < bound;) queue.runUntil(in(0.01));
    order.push_back(2);
  });
  for (const auto bound = in(5); order.size() < 2 && clock.uptime() < bound;) queue.runUntil(in(0.01));
  EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST_F(MacSession, BlockThatPostsItselfDoesNotKeepTheLoop) {
  RunLoopMainQueue queue;
  int runs = 0;
  std::function<void()> again = [&] {
    ++runs;
    queue.async(again);
  };
  queue.async(again);
  queue.runUntil(posix::SystemClock{}.uptime() + platform::toUptime(Seconds{0.01}));
  EXPECT_GT(runs, 1);
}

}  // namespace
}  // namespace tavelo::macos
