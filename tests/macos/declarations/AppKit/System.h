// The parts of AppKit that are no windows.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
  NSApplicationActivateIgnoringOtherApps API_DEPRECATED(14.0) = 2,
};

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly) pid_t processIdentifier;
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly, getter=isActive) BOOL active;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
- (BOOL)activateFromApplication:(NSRunningApplication*)application
                        options:(NSApplicationActivationOptions)options API_AVAILABLE(14.0);
@end

extern "C" NSNotificationName const NSApplicationWillTerminateNotification;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
@property(readonly) BOOL accessibilityDisplayShouldReduceTransparency;
- (BOOL)openURL:(NSURL*)url;
@end

typedef NSString* NSPasteboardType;
extern "C" NSPasteboardType const NSPasteboardTypeString;

@class NSPasteboard, NSPasteboardItem;
@protocol NSPasteboardWriting <NSObject>
@end
@protocol NSPasteboardItemDataProvider <NSObject>
- (void)pasteboard:(nullable NSPasteboard*)pasteboard
                  item:(NSPasteboardItem*)item
    provideDataForType:(NSPasteboardType)type;
@end

@interface NSPasteboardItem : NSObject <NSPasteboardWriting>
@property(readonly, copy) NSArray<NSPasteboardType>* types;
- (nullable NSData*)dataForType:(NSPasteboardType)type;
- (BOOL)setData:(NSData*)data forType:(NSPasteboardType)type;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)type;
- (BOOL)setDataProvider:(id<NSPasteboardItemDataProvider>)provider forTypes:(NSArray<NSPasteboardType>*)types;
@end

@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
@property(readonly) NSInteger changeCount;
@property(nullable, readonly, copy) NSArray<NSPasteboardItem*>* pasteboardItems;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)type;
- (BOOL)writeObjects:(NSArray<id<NSPasteboardWriting>>*)objects;
@end

typedef NS_ENUM(NSUInteger, NSEventType);
typedef unsigned long long NSEventMask;
typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) { NSEventModifierFlagCommand = 1 << 20 };

@interface NSEvent : NSObject
@property(class, readonly) NSPoint mouseLocation;
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) NSTimeInterval timestamp;
@property(readonly) unsigned short keyCode;
@property(readonly, getter=isARepeat) BOOL ARepeat;
@property(nullable, readonly) CGEventRef CGEvent __attribute__((objc_returns_inner_pointer));
+ (nullable NSEvent*)eventWithCGEvent:(CGEventRef)event;
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask
                                             handler:(void (^)(NSEvent* event))handler;
+ (void)removeMonitor:(id)monitor;
@end

NS_ASSUME_NONNULL_END
