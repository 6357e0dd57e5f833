#include <optional>

#include <gmock/gmock.h>

#include "app/ServiceContracts.h"
#include "platform/simulated/SimulatedDesktop.h"
#include "tests/macos/fakes/AppKitFakes.h"
#include "ui/ProductData.h"
#include "ui/appkit/StatusMenuController.h"

namespace tavelo {
namespace {

using fakes::answer;
using fakes::utf8;
using platform::Seconds;
using testing::ElementsAre;

static_assert(StatusMenuContract<StatusMenuController>);

class StatusMenuOnMac : public fakes::FakeFrameworks {
 protected:
  StatusMenuOnMac() {
    fakes::serveApplication();
    desktop_.resources().add("AppIcon", "icns", "icns picture");
    desktop_.resources().add("Founder", "png", "\x89PNG picture");
    make();
  }
  void make() {
    controller_.reset();
    controller_.emplace();
    item_ = fakes::statusItems().front();
  }
  /// The menu from top to bottom; what automatic enabling disables is in brackets.
  std::vector<std::string> entries() const {
    std::vector<std::string> entries;
    for (NSMenuItem* item in item_.menu.itemArray) {
      const bool enabled = item.action != nullptr && [item.target respondsToSelector:item.action];
      const std::string title = item.separatorItem ? "-" : utf8(item.title);
      entries.push_back(enabled || item.separatorItem ? title : "[" + title + "]");
    }
    return entries;
  }
  void choose(NSUInteger row) {
    NSMenuItem* const item = item_.menu.itemArray[row];
    fakes::press(item.target, item.action);
  }
  /// Lets `user` look at each modal alert before it closes.
  void whenAlertRuns(std::function<void(NSAlert*)> user) {
    answer("runModal", [user](fakes::Call& call) { user((__bridge NSAlert*)call.receiver); });
  }

  simulated::SimulatedDesktop desktop_;
  std::optional<StatusMenuController> controller_;
  NSStatusItem* item_;
};

TEST_F(StatusMenuOnMac, MenuReadsFromTopToBottom) {
  EXPECT_THAT(entries(),
              ElementsAre("Bắt đầu nghe", "[Giữ Fn để nói, nhả Fn để chèn]", "[Dự phòng: Control Option V]",
                          "-", "Chèn trực tiếp: Bật", "[Accessibility: Chưa kiểm tra]", "Cấp quyền...", "-",
                          "Giới thiệu Tavelo", "-", "Thoát"));
  EXPECT_TRUE(item_.menu.autoenablesItems);
  for (NSMenuItem* item in item_.menu.itemArray) {
    const bool quits = utf8(item.title) == "Thoát";
    EXPECT_EQ(utf8(item.keyEquivalent), quits ? "q" : "");
    if (quits) EXPECT_EQ(item.keyEquivalentModifierMask, 1U << 20U) << "the default";
  }
  EXPECT_EQ(item_.length, -1);
  EXPECT_EQ(item_.button.toolTip, nil);
}

TEST_F(StatusMenuOnMac, StatusItemShowsTheIconInItsOwnColoursElseLetters) {
  EXPECT_EQ(fakes::describe(item_.button.image.size), "18x18");
  EXPECT_THAT(fakes::takeCalls(), testing::Contains("-[NSImage setTemplate:0]"));
  EXPECT_EQ(item_.button.imagePosition, NSImageOnly);
  EXPECT_EQ(utf8(item_.button.title), "");
  desktop_.resources().add("AppIcon", "icns", "damaged");
  make();
  EXPECT_EQ(item_.button.image, nil);
  EXPECT_EQ(utf8(item_.button.title), "Tl");
  controller_.reset();
  EXPECT_TRUE(fakes::statusItems().empty());
}

TEST_F(StatusMenuOnMac, SettersChangeTitlesAndTheToolTipOnly) {
  controller_->setListening(true);
  controller_->setInsertDirectly(false);
  controller_->setAccessibilityAvailable(false);
  EXPECT_EQ(utf8(item_.button.toolTip), "Tavelo đang thu âm");
  EXPECT_THAT(entries(), ElementsAre("Dừng và chèn văn bản", "[Giữ Fn để nói, nhả Fn để chèn]",
                                     "[Dự phòng: Control Option V]", "-", "Chèn trực tiếp: Tắt",
                                     "[Accessibility: Cần cấp để bắt Fn]", "Cấp quyền...", "-",
                                     "Giới thiệu Tavelo", "-", "Thoát"));
  controller_->setListening(false);
  controller_->setInsertDirectly(true);
  controller_->setAccessibilityAvailable(true);
  EXPECT_EQ(utf8(item_.button.toolTip), "Tavelo");
  EXPECT_EQ(entries()[0], "Bắt đầu nghe");
  EXPECT_EQ(entries()[4], "Chèn trực tiếp: Bật");
  EXPECT_EQ(entries()[5], "[Accessibility: Đã cấp]");
}

TEST_F(StatusMenuOnMac, ItemsRunTheirCallbacksAndNothingWithoutOne) {
  const auto chooseAll = [this] {
    for (const NSUInteger row : {0, 4, 6, 10}) choose(row);
  };
  chooseAll();
  std::vector<std::string> chosen;
  controller_->onToggleDictation = [&] { chosen.emplace_back("toggle"); };
  controller_->onToggleInsertMode = [&] { chosen.emplace_back("mode"); };
  controller_->onShowPermissions = [&] { chosen.emplace_back("permissions"); };
  controller_->onTestInsert = [&] { chosen.emplace_back("test"); };
  controller_->onInsertLastText = [&] { chosen.emplace_back("last"); };
  controller_->onQuit = [&] { chosen.emplace_back("quit"); };
  chooseAll();
  id const target = item_.menu.itemArray.firstObject.target;
  fakes::press(target, @selector(testInsert));
  fakes::press(target, @selector(insertLastText));
  EXPECT_THAT(chosen, ElementsAre("toggle", "mode", "permissions", "quit", "test", "last"));
  controller_.reset();
  fakes::press(target, @selector(quit));
  fakes::press(target, @selector(showAbout));
  EXPECT_EQ(chosen.size(), 6U) << "the controller is gone";
}

TEST_F(StatusMenuOnMac, OneAlertAtATimeShowsTheNewestErrorWhileBlocksRun) {
  std::vector<std::string> seen;
  whenAlertRuns([&](NSAlert* alert) {
    EXPECT_EQ(utf8(alert.messageText), "Tavelo");
    EXPECT_EQ(alert.alertStyle, NSAlertStyleWarning);
    EXPECT_FALSE(alert.window.preventsApplicationTerminationWhenModal);
    seen.push_back(utf8(alert.informativeText));
    platform::current().mainQueue.async([&] { controller_->showError("hai"); });
    desktop_.advance(Seconds{0.1});
    seen.push_back(utf8(alert.informativeText));
    answer("runModal", [&](fakes::Call&) { seen.emplace_back("another"); });
  });
  fakes::takeCalls();
  controller_->showError("một");
  EXPECT_THAT(fakes::takeCalls(), ElementsAre("-[NSAlert runModal]", "-[NSAlert layout]")) << "no own button";
  controller_->showError("ba");
  EXPECT_THAT(seen, ElementsAre("một", "hai", "another"));
}

TEST_F(StatusMenuOnMac, AboutPanelShowsWhoMadeIt) {
  int shown = 0;
  whenAlertRuns([&](NSAlert* alert) {
    ++shown;
    EXPECT_EQ(utf8(alert.messageText), "Tavelo");
    EXPECT_EQ(utf8(alert.informativeText),
              "Tavelo là ứng dụng hỗ trợ đọc thoại và chuyển giọng nói tiếng Việt "
              "thành văn bản trên macOS.");
    EXPECT_EQ(alert.alertStyle, NSAlertStyleInformational);
    EXPECT_FALSE(alert.window.preventsApplicationTerminationWhenModal);
    EXPECT_EQ(fakes::describe(alert.icon.size), "18x18");
    EXPECT_EQ(fakes::describe(alert.accessoryView.frame), "0,0 320x158");
    NSImageView* const portrait = alert.accessoryView.subviews[0];
    EXPECT_EQ(fakes::describe(portrait.frame), "136,96 48x48");
    EXPECT_EQ(portrait.imageScaling, NSImageScaleProportionallyUpOrDown);
    EXPECT_NE(portrait.image, nil);
    EXPECT_EQ(portrait.layer.cornerRadius, 24);
    EXPECT_TRUE(portrait.layer.masksToBounds);
    NSTextField* const maker = alert.accessoryView.subviews[1];
    EXPECT_EQ(fakes::describe(maker.frame), "0,34 320x58");
    EXPECT_EQ(utf8(maker.stringValue),
              std::string(product::makerName) +
                  " là người sáng lập Tavelo và tạo nên ứng dụng này để phục vụ cộng "
                  "đồng người dùng MacBook tiện hơn.");
    EXPECT_EQ(maker.maximumNumberOfLines, wrappingLabel);
    EXPECT_EQ(maker.font.pointSize, 13.5);
    EXPECT_EQ(utf8(maker.textColor.name), "labelColor");
    EXPECT_EQ(maker.alignment, NSTextAlignmentLeft);
  });
  fakes::takeCalls();
  choose(8);
  EXPECT_THAT(fakes::takeCalls(),
              ElementsAre("-[NSImage setTemplate:0]", "-[NSAlert addButtonWithTitle:\"Đóng\"]",
                          "-[NSAlert runModal]"));
  EXPECT_EQ(shown, 1);
}

TEST_F(StatusMenuOnMac, AboutPanelOpensValidLinksOnly) {
  whenAlertRuns([&](NSAlert* alert) {
    NSTextView* const link = alert.accessoryView.subviews[2];
    EXPECT_EQ(fakes::describe(link.frame), "0,0 320x24");
    EXPECT_FALSE(link.editable);
    EXPECT_TRUE(link.selectable);
    EXPECT_FALSE(link.drawsBackground);
    EXPECT_EQ(fakes::describe(link.textContainerInset), "0x0");
    EXPECT_EQ(utf8(link.textStorage.string), product::siteDomain);
    NSDictionary<NSString*, id>* const look = link.textStorage.attributes;
    EXPECT_EQ(((NSFont*)look[NSFontAttributeName]).pointSize, 14);
    EXPECT_EQ(utf8(((NSColor*)look[NSForegroundColorAttributeName]).name), "systemBlueColor");
    EXPECT_EQ(((NSNumber*)look[NSUnderlineStyleAttributeName]).integerValue, 1);
    EXPECT_EQ(((NSMutableParagraphStyle*)look[NSParagraphStyleAttributeName]).alignment,
              NSTextAlignmentCenter);
    id const address = look[NSLinkAttributeName];
    EXPECT_TRUE([link.delegate textView:link clickedOnLink:address atIndex:0]);
    EXPECT_FALSE([link.delegate textView:link clickedOnLink:@"no address" atIndex:0]);
    EXPECT_FALSE([link.delegate textView:link clickedOnLink:[NSURL URLWithString:address] atIndex:0]);
  });
  choose(8);
  EXPECT_THAT(desktop_.workspace().openedURLs(), ElementsAre(product::siteAddress));
}

TEST_F(StatusMenuOnMac, AboutPanelKeepsItsPlacesWithoutPictures) {
  desktop_.resources().add("AppIcon", "icns", "damaged");
  desktop_.resources().add("Founder", "png", "damaged");
  whenAlertRuns([](NSAlert* alert) {
    EXPECT_EQ(alert.icon, nil) << "not set";
    ASSERT_EQ(alert.accessoryView.subviews.count, 2U);
    EXPECT_EQ(fakes::describe(alert.accessoryView.subviews[0].frame), "0,34 320x58");
  });
  choose(8);
}

TEST_F(StatusMenuOnMac, MenuOpensOnceAtThePointer) {
  fakes::serveApplication(@ [], nil, { 30, 40 });
  answer("popUpMenuPositioningItem:atLocation:inView:", [this](fakes::Call&) {
    [item_.menu.delegate menuWillOpen:item_.menu];
    controller_->openMenu();
    [item_.menu.delegate menuDidClose:item_.menu];
  });
  const std::string opened = "-[NSMenu popUpMenuPositioningItem:nil atLocation:{30, 40} inView:nil]";
  fakes::takeCalls();
  controller_->openMenu();
  controller_->openMenu();
  std::vector<std::string> calls = fakes::takeCalls();
  EXPECT_EQ(std::ranges::count(calls, opened), 2) << "not while it was open";
}

}  // namespace
}  // namespace tavelo
