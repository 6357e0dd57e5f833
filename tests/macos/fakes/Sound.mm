#include "tests/macos/fakes/Sound.h"

AVMediaType const AVMediaTypeAudio = @"soun";
NSNotificationName const AVAudioEngineConfigurationChangeNotification =
    @"AVAudioEngineConfigurationChangeNotification";

@implementation AVAudioFormat
- (instancetype)initStandardFormatWithSampleRate:(double)sampleRate channels:(AVAudioChannelCount)channels {
  self = [super init];
  self.sampleRate = sampleRate;
  self.channelCount = channels;
  return self;
}
@end
@implementation AVAudioBuffer
@end
@implementation AVAudioPCMBuffer
- (instancetype)initWithPCMFormat:(AVAudioFormat*)format frameCapacity:(AVAudioFrameCount)capacity {
  self = [super init];
  self.format = format;
  samples.assign(format.channelCount, std::vector<float>(capacity));
  for (auto& channel : samples) channels.push_back(channel.data());
  return self;
}
- (float* const*)floatChannelData {
  return channels.data();
}
- (int16_t* const*)int16ChannelData {
  return nullptr;
}
- (NSUInteger)stride {
  return 1;
}
@end
@implementation AVAudioTime
@end
@implementation AVAudioNode
@end
@implementation AVAudioInputNode
@end
@implementation AVAudioEngine
- (instancetype)init {
  self = [super init];
  self.inputNode = [[AVAudioInputNode alloc] init];
  tavelo::fakes::record("new engine");
  return self;
}
@end
@implementation AVCaptureDevice
@end
@implementation SFTranscription
@end
@implementation SFSpeechRecognitionResult
@end
@implementation SFSpeechRecognitionRequest
@end
@implementation SFSpeechAudioBufferRecognitionRequest
@end
@implementation SFSpeechRecognitionTask
@end
@implementation SFSpeechRecognizer
@end
