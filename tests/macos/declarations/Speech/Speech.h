#pragma once

#include <AVFAudio/AVFAudio.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, SFSpeechRecognizerAuthorizationStatus) {
  SFSpeechRecognizerAuthorizationStatusRestricted = 2
};

@interface SFTranscription : NSObject
@property(nonatomic, readonly, copy) NSString* formattedString;
@end

@interface SFSpeechRecognitionResult : NSObject
@property(nonatomic, readonly, copy) SFTranscription* bestTranscription;
@property(nonatomic, readonly, getter=isFinal) BOOL final;
@end

@interface SFSpeechRecognitionRequest : NSObject
@property(nonatomic) BOOL shouldReportPartialResults;
@end

@interface SFSpeechAudioBufferRecognitionRequest : SFSpeechRecognitionRequest
- (void)appendAudioPCMBuffer:(AVAudioPCMBuffer*)buffer;
- (void)endAudio;
@end

@interface SFSpeechRecognitionTask : NSObject
- (void)cancel;
@end

@interface SFSpeechRecognizer : NSObject
@property(nonatomic, readonly, getter=isAvailable) BOOL available;
+ (SFSpeechRecognizerAuthorizationStatus)authorizationStatus;
+ (void)requestAuthorization:(void (^)(SFSpeechRecognizerAuthorizationStatus status))handler;
- (nullable instancetype)initWithLocale:(NSLocale*)locale;
- (SFSpeechRecognitionTask*)recognitionTaskWithRequest:(SFSpeechRecognitionRequest*)request
                                         resultHandler:(void (^)(SFSpeechRecognitionResult* _Nullable result,
                                                                 NSError* _Nullable error))handler;
@end

NS_ASSUME_NONNULL_END
