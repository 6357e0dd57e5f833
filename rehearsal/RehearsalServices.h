#pragma once

#include "app/AppDelegate.h"
#include "hotkey/HotKeyService.h"
#include "insertion/FocusTargetCaptureService.h"
#include "insertion/TextInsertionService.h"
#include "rehearsal/RehearsalWindows.h"
#include "speech/PermissionService.h"
#include "speech/SpeechDictationController.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {
namespace rehearsal {

/// The real services with windows that need no screen.
struct RehearsalServices {
  using SpeechController = SpeechDictationController;
  using InsertionService = TextInsertionService;
  using PermissionService = tavelo::PermissionService;
  using HotKeyService = tavelo::HotKeyService;
  using ReviewWindow = RehearsalReviewWindow;
  using FloatingStatus = RehearsalOverlay;
  using TranscriptCache = TranscriptCacheStore;
  using FocusCaptureService = FocusTargetCaptureService;
  using StatusController = RehearsalStatusMenu;
};

}  // namespace rehearsal

extern template class AppDelegate<rehearsal::RehearsalServices>;

}  // namespace tavelo
