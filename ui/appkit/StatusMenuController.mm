#include "ui/appkit/StatusMenuController.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/Workspace.h"
#include "ui/Measures.h"
#include "ui/Texts.h"
#import "ui/appkit/AboutPanel.h"
#import "ui/appkit/AppKitValues.h"
#import "ui/appkit/MenuTarget.h"

namespace tavelo {
namespace {

/// Nil if the resources have none.
NSImage* statusBarIcon(const platform::Resources& resources) {
  NSImage* icon = imageResource(resources, "AppIcon", "icns");
  icon.size = NSMakeSize(measures::statusIconSize, measures::statusIconSize);
  // Drawn in its own colours, not in the menu bar's.
  [icon setTemplate:NO];
  return icon;
}

/// An item without an action is information: the menu shows it disabled.
NSMenuItem* makeItem(std::string_view title, SEL action, NSString* key = @"") {
  return [[NSMenuItem alloc] initWithTitle:toAppKit(title) action:action keyEquivalent:key];
}

/// An action that runs the callback which the controller has at that time.
std::function<void()> running(const std::function<void()>& callback) {
  return [&callback] {
    // A copy, since the callback may be replaced while it runs.
    if (const auto run = callback) run();
  };
}

}  // namespace

struct StatusMenuController::Menu {
  explicit Menu(MenuActions actions)
      : target([[TaveloMenuTarget alloc] initWithActions:std::move(actions)]) {}

  void showStatusItem(NSImage* icon) const;
  void fill(const platform::Names& names) const;

  TaveloMenuTarget* const target;
  NSStatusItem* const statusItem =
      [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  NSMenu* const menu = [[NSMenu alloc] init];
  NSMenuItem* const toggleItem = makeItem(texts::startListening, @selector(toggleDictation));
  NSMenuItem* const modeItem = makeItem(texts::insertsDirectly, @selector(toggleInsertMode));
  NSMenuItem* const permissionItem = makeItem(texts::showPermissions, @selector(showPermissions));
  NSMenuItem* const testInsertItem = makeItem(texts::testInsert, @selector(testInsert));
  NSMenuItem* const insertLastItem = makeItem(texts::insertLastText, @selector(insertLastText));
  NSMenuItem* const aboutItem = makeItem(texts::about, @selector(showAbout));
  NSMenuItem* const accessItem = makeItem(texts::accessibilityUnknown, nullptr);
  /// Nil unless one is open.
  NSAlert* alert = nil;
};

void StatusMenuController::Menu::showStatusItem(NSImage* icon) const {
  NSStatusBarButton* button = statusItem.button;
  if (icon != nil) {
    button.image = icon;
    button.imagePosition = NSImageOnly;
  } else {
    button.title = toAppKit(texts::statusItemLetters);
  }
}

void StatusMenuController::Menu::fill(const platform::Names& names) const {
  NSMenuItem* quitItem = makeItem(texts::quit, @selector(quit), @"q");
  for (NSMenuItem* item in
       @[ toggleItem, modeItem, permissionItem, testInsertItem, insertLastItem, aboutItem, quitItem ]) {
    item.target = target;
  }
  NSArray<NSMenuItem*>* items = @[
    toggleItem, makeItem(texts::useHoldKey(names), nullptr), makeItem(texts::useFallbackKeys(names), nullptr),
    NSMenuItem.separatorItem, modeItem, accessItem, permissionItem, NSMenuItem.separatorItem, aboutItem,
    NSMenuItem.separatorItem, quitItem
  ];
  for (NSMenuItem* item in items) [menu addItem:item];
  menu.delegate = target;
  statusItem.menu = menu;
}

StatusMenuController::StatusMenuController(platform::Resources& resources, platform::Workspace& workspace,
                                           const platform::Names& names)
    : resources_(resources),
      workspace_(workspace),
      names_(names),
      menu_(std::make_unique<Menu>(
          MenuActions{.toggleDictation = running(onToggleDictation),
                      .toggleInsertMode = running(onToggleInsertMode),
                      .showPermissions = running(onShowPermissions),
                      .testInsert = running(onTestInsert),
                      .insertLastText = running(onInsertLastText),
                      .showAbout = [this] { showAbout(); },
                      .quit = running(onQuit),
                      .openLink = [this](const std::string& address) { workspace_.open(address); }})) {
  menu_->showStatusItem(statusBarIcon(resources));
  menu_->fill(names);
}

StatusMenuController::~StatusMenuController() {
  [menu_->target disconnect];
  [NSStatusBar.systemStatusBar removeStatusItem:menu_->statusItem];
}

void StatusMenuController::setListening(bool listening) {
  menu_->toggleItem.title = toAppKit(listening ? texts::stopListening : texts::startListening);
  menu_->statusItem.button.toolTip = toAppKit(listening ? texts::recordingToolTip : texts::programName);
}

void StatusMenuController::setInsertDirectly(bool directly) {
  menu_->modeItem.title = toAppKit(directly ? texts::insertsDirectly : texts::reviewsFirst);
}

void StatusMenuController::setAccessibilityAvailable(bool available) {
  menu_->accessItem.title =
      available ? toAppKit(texts::accessibilityGranted) : toAppKit(texts::accessibilityMissing(names_));
}

void StatusMenuController::showError(const std::string& message) {
  NSString* text = toAppKit(message);
  if (menu_->alert != nil) {
    menu_->alert.informativeText = text;
    return [menu_->alert layout];
  }
  NSAlert* alert = [[NSAlert alloc] init];
  alert.messageText = toAppKit(texts::programName);
  alert.informativeText = text;
  alert.alertStyle = NSAlertStyleWarning;
  letProgramEnd(alert);
  menu_->alert = alert;
  [alert runModal];
  menu_->alert = nil;
}

void StatusMenuController::openMenu() {
  if (menu_->target.menuIsOpen) return;
  [menu_->menu popUpMenuPositioningItem:nil atLocation:NSEvent.mouseLocation inView:nil];
}

void StatusMenuController::showAbout() {
  showAboutPanel(names_, statusBarIcon(resources_), imageResource(resources_, "Founder", "png"),
                 menu_->target);
}

}  // namespace tavelo
