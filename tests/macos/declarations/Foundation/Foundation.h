#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/Base.h>

NS_ASSUME_NONNULL_BEGIN

@class NSString, NSData;

@protocol NSObject
- (BOOL)isEqual:(nullable id)object;
- (BOOL)isKindOfClass:(Class)type;
- (BOOL)respondsToSelector:(SEL)selector;
- (Class)class;
@end

@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject> {
  Class isa;
}
+ (instancetype)alloc;
+ (instancetype)new;
+ (Class)class;
- (instancetype)init;
- (void)dealloc;
- (id)copy;
@end

typedef struct {
  unsigned long state;
  id __unsafe_unretained _Nullable* _Nullable itemsPtr;
  unsigned long* _Nullable mutationsPtr;
  unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;
@end

enum : NSUInteger { NSUTF8StringEncoding = 4 };
@interface NSString : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String;
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
- (nullable instancetype)initWithData:(NSData*)data encoding:(NSUInteger)encoding;
- (nullable NSData*)dataUsingEncoding:(NSUInteger)encoding allowLossyConversion:(BOOL)lossy;
@end

@interface NSData : NSObject <NSCopying>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
+ (nullable instancetype)dataWithContentsOfURL:(id)url;
@end

@interface NSNumber : NSObject
@property(readonly) BOOL boolValue;
@property(readonly) NSInteger integerValue;
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithInteger:(NSInteger)value;
@end

@interface NSArray<__covariant Element> : NSObject <NSFastEnumeration>
@property(readonly) NSUInteger count;
@property(nullable, nonatomic, readonly) Element firstObject;
+ (instancetype)array;
+ (instancetype)arrayWithObjects:(const Element _Nonnull[_Nullable])objects count:(NSUInteger)count;
- (Element)objectAtIndexedSubscript:(NSUInteger)index;
@end

@interface NSMutableArray<Element> : NSArray <Element>
- (void)addObject:(Element)object;
@end

@interface NSDictionary<__covariant Key, __covariant Value> : NSObject
+ (instancetype)dictionaryWithObjects:(const Value _Nonnull[_Nullable])objects
                              forKeys:(const Key _Nonnull[_Nullable])keys
                                count:(NSUInteger)count;
- (nullable Value)objectForKeyedSubscript:(Key)key;
@end

@interface NSCoder : NSObject
@end
typedef NSString* NSAttributedStringKey;
@interface NSAttributedString : NSObject
@property(readonly, copy) NSString* string;
- (instancetype)initWithString:(NSString*)string
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
@end

@interface NSURL : NSObject
+ (nullable instancetype)URLWithString:(NSString*)text;
@property(nullable, readonly, copy) NSString* path;
@end

@interface NSUndoManager : NSObject
- (void)removeAllActions;
@end

@interface NSError : NSObject
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSException : NSObject
@property(nullable, readonly, copy) NSString* reason;
@end

typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
  NSActivityUserInitiatedAllowingIdleSystemSleep = 0xEFFFFF,
};
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly) NSTimeInterval systemUptime;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
@end

@interface NSLocale : NSObject
+ (instancetype)localeWithLocaleIdentifier:(NSString*)identifier;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
- (nullable NSURL*)URLForResource:(nullable NSString*)name withExtension:(nullable NSString*)extension;
@end

typedef NS_ENUM(NSUInteger, NSSearchPathDirectory) { NSApplicationSupportDirectory = 14 };
typedef NS_OPTIONS(NSUInteger, NSSearchPathDomainMask) { NSUserDomainMask = 1 };
@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (NSArray<NSURL*>*)URLsForDirectory:(NSSearchPathDirectory)directory
                           inDomains:(NSSearchPathDomainMask)domains;
@end
extern "C" NSString* NSTemporaryDirectory(void);

typedef NSString* NSNotificationName;
@interface NSNotification : NSObject
@end
@class NSOperationQueue;
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

/// Unlike casts, these say which way the ownership goes.
static inline id _Nullable CFBridgingRelease(CFTypeRef _Nullable CF_CONSUMED object) {
  return (__bridge_transfer id)object;
}
static inline CFTypeRef _Nullable CF_RETURNS_RETAINED CFBridgingRetain(id _Nullable object) {
  return (__bridge_retained CFTypeRef)object;
}

NS_ASSUME_NONNULL_END
