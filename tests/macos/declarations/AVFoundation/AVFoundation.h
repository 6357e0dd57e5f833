#pragma once

#include <AVFAudio/AVFAudio.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* AVMediaType;
extern "C" AVMediaType const AVMediaTypeAudio;

typedef NS_ENUM(NSInteger, AVAuthorizationStatus) {
  AVAuthorizationStatusNotDetermined = 0,
  AVAuthorizationStatusRestricted = 1,
  AVAuthorizationStatusDenied = 2,
  AVAuthorizationStatusAuthorized = 3,
};

@interface AVCaptureDevice : NSObject
+ (nullable AVCaptureDevice*)defaultDeviceWithMediaType:(AVMediaType)type;
+ (AVAuthorizationStatus)authorizationStatusForMediaType:(AVMediaType)type;
+ (void)requestAccessForMediaType:(AVMediaType)type completionHandler:(void (^)(BOOL granted))handler;
@end

NS_ASSUME_NONNULL_END
