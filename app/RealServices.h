#pragma once

#include "app/ServiceContracts.h"
#include "hotkey/HotKeyService.h"
#include "insertion/FocusTargetCaptureService.h"
#include "insertion/TextInsertionService.h"
#include "speech/PermissionService.h"
#include "speech/SpeechDictationController.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {

/// The six real services without windows. A service bundle derives from this and adds its three windows.
struct RealServices {
  using SpeechController = SpeechDictationController;
  using InsertionService = TextInsertionService;
  using PermissionService = tavelo::PermissionService;
  using HotKeyService = tavelo::HotKeyService;
  using TranscriptCache = TranscriptCacheStore;
  using FocusCaptureService = FocusTargetCaptureService;
};

// Checked here, one by one, because the compiler's message for a whole bundle is hard to read.
static_assert(SpeechDictationContract<RealServices::SpeechController>);
static_assert(InsertionContract<RealServices::InsertionService>);
static_assert(PermissionContract<RealServices::PermissionService>);
static_assert(HotKeyContract<RealServices::HotKeyService>);
static_assert(TranscriptCacheContract<RealServices::TranscriptCache>);
static_assert(FocusCaptureContract<RealServices::FocusCaptureService>);

}  // namespace tavelo
