// The status item, menus and alerts.
#pragma once

#include <AppKit/Windows.h>

NS_ASSUME_NONNULL_BEGIN

@class NSMenu;
@interface NSMenuItem : NSObject
@property(nullable, strong) NSMenu* submenu;
@property(class, readonly, strong) NSMenuItem* separatorItem;
@property(readonly, getter=isSeparatorItem) BOOL separatorItem;
@property(copy) NSString* title;
@property(copy) NSString* keyEquivalent;
@property NSUInteger keyEquivalentModifierMask;
@property(nullable, weak) id target;
@property(nullable) SEL action;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)keyEquivalent;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject
@property(readonly, copy) NSArray<NSMenuItem*>* itemArray;
@property BOOL autoenablesItems;
@property(nullable, weak) id<NSMenuDelegate> delegate;
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(nullable NSView*)view;
@end

@interface NSStatusBarButton : NSButton
@end
static const CGFloat NSVariableStatusItemLength = -1;
@interface NSStatusItem : NSObject
@property CGFloat length;
@property(nullable, readonly, strong) NSStatusBarButton* button;
@property(nullable, strong) NSMenu* menu;
@end
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

typedef NS_ENUM(NSUInteger, NSAlertStyle) { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1 };
@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
@property(null_resettable, strong) NSImage* icon;
@property(nullable, strong) NSView* accessoryView;
@property(readonly, strong) NSWindow* window;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSInteger)runModal;
- (void)layout;
@end

NS_ASSUME_NONNULL_END
