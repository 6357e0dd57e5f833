#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef uint32_t AVAudioFrameCount;
typedef uint32_t AVAudioChannelCount;
typedef NSUInteger AVAudioNodeBus;

@interface AVAudioFormat : NSObject
@property(nonatomic, readonly) double sampleRate;
@property(nonatomic, readonly) AVAudioChannelCount channelCount;
- (nullable instancetype)initStandardFormatWithSampleRate:(double)sampleRate
                                                 channels:(AVAudioChannelCount)channels;
@end

@interface AVAudioBuffer : NSObject
@property(nonatomic, readonly) AVAudioFormat* format;
@end

@interface AVAudioPCMBuffer : AVAudioBuffer
- (nullable instancetype)initWithPCMFormat:(AVAudioFormat*)format frameCapacity:(AVAudioFrameCount)capacity;
@property(nonatomic) AVAudioFrameCount frameLength;
@property(nonatomic, readonly) float* const _Nonnull* _Nullable floatChannelData
    __attribute__((objc_returns_inner_pointer));
@property(nonatomic, readonly) int16_t* const _Nonnull* _Nullable int16ChannelData
    __attribute__((objc_returns_inner_pointer));
@property(nonatomic, readonly) NSUInteger stride;
@end

@interface AVAudioTime : NSObject
@end

typedef void (^AVAudioNodeTapBlock)(AVAudioPCMBuffer* buffer, AVAudioTime* when);

@interface AVAudioNode : NSObject
- (AVAudioFormat*)outputFormatForBus:(AVAudioNodeBus)bus;
- (void)installTapOnBus:(AVAudioNodeBus)bus
             bufferSize:(AVAudioFrameCount)bufferSize
                 format:(nullable AVAudioFormat*)format
                  block:(AVAudioNodeTapBlock)block;
- (void)removeTapOnBus:(AVAudioNodeBus)bus;
@end

@interface AVAudioInputNode : AVAudioNode
@end

@interface AVAudioEngine : NSObject
@property(readonly, nonatomic) AVAudioInputNode* inputNode;
- (void)prepare;
- (BOOL)startAndReturnError:(NSError* _Nullable* _Nullable)error;
- (void)stop;
@end

extern "C" NSNotificationName const AVAudioEngineConfigurationChangeNotification;

NS_ASSUME_NONNULL_END
