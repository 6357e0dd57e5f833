// The application, its windows and the screens.
#pragma once

#include <AppKit/Views.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, readonly, nullable, strong) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@end

@interface NSApplication : NSObject
@property(class, readonly, strong) NSApplication* sharedApplication;
- (void)activateIgnoringOtherApps:(BOOL)ignoringOthers;
@end

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
  NSWindowStyleMaskBorderless = 0,
  NSWindowStyleMaskTitled = 1 << 0,
  NSWindowStyleMaskClosable = 1 << 1,
  NSWindowStyleMaskResizable = 1 << 3,
  NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};
typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
  NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
  NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSFloatingWindowLevel = 3;

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSObject
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag;
@property(copy) NSString* title;
@property NSWindowStyleMask styleMask;
@property NSBackingStoreType backingType;
@property(nullable, strong) __kindof NSView* contentView;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property(readonly) NSRect frame;
@property NSSize minSize;
@property NSSize maxSize;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isOpaque) BOOL opaque;
@property(nullable, copy) NSColor* backgroundColor;
@property BOOL hasShadow;
@property BOOL preventsApplicationTerminationWhenModal;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly, getter=isVisible) BOOL visible;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
- (void)setFrameOrigin:(NSPoint)origin;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)center;
- (void)close;
@end

@interface NSPanel : NSWindow
@end

@interface NSWindowController : NSObject
@property(nullable, strong) NSWindow* window;
- (instancetype)initWithWindow:(nullable NSWindow*)window;
@end

NS_ASSUME_NONNULL_END
