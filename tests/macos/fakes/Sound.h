#pragma once

#include <vector>

#import <AVFoundation/AVFoundation.h>
#import <Speech/Speech.h>

#include "tests/macos/fakes/Fakes.h"

@interface AVAudioFormat ()
@property(nonatomic, readwrite) double sampleRate;
@property(nonatomic, readwrite) AVAudioChannelCount channelCount;
@end

@interface AVAudioBuffer ()
@property(nonatomic, readwrite) AVAudioFormat* format;
@end

@interface AVAudioPCMBuffer () {
 @public
  std::vector<std::vector<float>> samples;
  std::vector<float*> channels;
}
@end

@interface AVAudioEngine ()
@property(nonatomic, readwrite) AVAudioInputNode* inputNode;
@end

@interface SFSpeechRecognitionTask ()
@property(copy) void (^handler)(SFSpeechRecognitionResult*, NSError*);
@end

@interface SFTranscription ()
@property(nonatomic, readwrite, copy) NSString* formattedString;
@end

@interface SFSpeechRecognitionResult ()
@property(nonatomic, readwrite, copy) SFTranscription* bestTranscription;
@property(nonatomic, readwrite, getter=isFinal) BOOL final;
@end
