#include <algorithm>
#include <vector>

#import <AVFoundation/AVFoundation.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>
#import <Speech/Speech.h>
#include <unistd.h>

#include "commands/MacDiagnosis.h"
#include "platform/Accessibility.h"
#include "platform/KeyboardEvents.h"
#include "platform/Platform.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace {

/// Whether a tap of this process is switched on; absent if it has none.
std::optional<bool> tapOfThisProcess() {
  std::uint32_t count = 0;
  if (CGGetEventTapList(0, nullptr, &count) != kCGErrorSuccess) return std::nullopt;
  std::vector<CGEventTapInformation> taps(count);
  if (CGGetEventTapList(count, taps.data(), &count) != kCGErrorSuccess) return std::nullopt;
  taps.resize(std::min<std::size_t>(count, taps.size()));
  std::optional<bool> enabled;
  for (const auto& each : taps) {
    if (each.tappingProcess == getpid()) enabled = enabled.value_or(false) || each.enabled;
  }
  return enabled;
}

bool monitorsCanBeInstalled() {
  using namespace platform;
  return current().keyboardEvents.addGlobalMonitor(maskOf(KeyEventType::flagsChanged),
                                                   [](const KeyboardEvent&) {}) != nullptr;
}

/// What the user chose for “Press Globe key to”.
std::optional<GlobeKeyUsage> globeKeyUsage() {
  NSObject* const value = CFBridgingRelease(CFPreferencesCopyAppValue(
      (__bridge CFStringRef) @"AppleFnUsageType", (__bridge CFStringRef) @"com.apple.HIToolbox"));
  if (![value isKindOfClass:[NSNumber class]]) return std::nullopt;
  return static_cast<GlobeKeyUsage>([static_cast<NSNumber*>(value) integerValue]);
}

}  // namespace

MacFacts examineMac() {
  const auto& platform = platform::current();
  MacFacts facts;
  facts.accessibilityTrusted = platform.accessibility.isProcessTrusted();
  facts.listenEventAccess = CGPreflightListenEventAccess();
  facts.tapEnabled = tapOfThisProcess();
  facts.monitors = monitorsCanBeInstalled();
  facts.secureInput = IsSecureEventInputEnabled();
  facts.globeKey = globeKeyUsage();
  facts.microphone = platform.audio.captureAuthorizationStatus();
  facts.hasSoundInput = [AVCaptureDevice defaultDeviceWithMediaType:AVMediaTypeAudio] != nil;
  facts.speech = static_cast<platform::SpeechAuthorizationStatus>([SFSpeechRecognizer authorizationStatus]);
  const auto recognizer = platform.speech.makeRecognizer("vi_VN");
  facts.hasRecognizer = recognizer != nullptr;
  facts.recognizerIsAvailable = recognizer && recognizer->isAvailable();
  const auto folder = transcriptCacheFile(platform.fileManager).parent_path();
  facts.cacheFolder = folder.string();
  facts.cacheFolderError = writeError(folder);
  return facts;
}

}  // namespace tavelo
