#pragma once

#include <AVFAudio/AVFAudio.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* AVMediaType;
extern "C" AVMediaType const AVMediaTypeAudio;

typedef NS_ENUM(NSInteger, AVAuthorizationStatus) { AVAuthorizationStatusRestricted = 1 };

@interface AVCaptureDevice : NSObject
+ (nullable AVCaptureDevice*)defaultDeviceWithMediaType:(AVMediaType)type;
+ (AVAuthorizationStatus)authorizationStatusForMediaType:(AVMediaType)type;
+ (void)requestAccessForMediaType:(AVMediaType)type completionHandler:(void (^)(BOOL granted))handler;
@end

NS_ASSUME_NONNULL_END
