#pragma once

#import <AVFAudio/AVFAudio.h>

#include "platform/AudioBuffer.h"

namespace tavelo::macos {

/// Captured sound in our own form, which is empty for a buffer without samples that we can read. Capture
/// thread.
platform::AudioBuffer fromSystem(AVAudioPCMBuffer* buffer);

/// The sound in the system's standard format, which is that of a microphone; nil for an empty buffer or an
/// impossible format. Any thread.
AVAudioPCMBuffer* toSystem(const platform::AudioBuffer& buffer);

}  // namespace tavelo::macos
