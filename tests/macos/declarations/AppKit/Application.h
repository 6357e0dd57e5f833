// The application object as start-up uses it.
#pragma once

#include <AppKit/Menus.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) { NSApplicationActivationPolicyAccessory = 1 };

@class NSRunningApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
@end

@interface NSApplication (Running)
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, strong) NSMenu* mainMenu;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)run;
- (void)terminate:(nullable id)sender;
- (void)yieldActivationToApplication:(NSRunningApplication*)application API_AVAILABLE(14.0);
@end

NS_ASSUME_NONNULL_END
