#pragma once

#include "app/AppDelegate.h"
#include "hotkey/HotKeyService.h"
#include "insertion/FocusTargetCaptureService.h"
#include "insertion/TextInsertionService.h"
#include "speech/PermissionService.h"
#include "speech/SpeechDictationController.h"
#include "text/TranscriptCacheStore.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/ReviewWindowController.h"
#include "ui/qt/StatusMenuController.h"

namespace tavelo {

/// What the application is made of: the real services and the real windows.
struct ApplicationServices {
  using SpeechController = SpeechDictationController;
  using InsertionService = TextInsertionService;
  using PermissionService = tavelo::PermissionService;
  using HotKeyService = tavelo::HotKeyService;
  using ReviewWindow = ReviewWindowController;
  using FloatingStatus = FloatingStatusWindowController;
  using TranscriptCache = TranscriptCacheStore;
  using FocusCaptureService = FocusTargetCaptureService;
  using StatusController = StatusMenuController;
};

extern template class AppDelegate<ApplicationServices>;

}  // namespace tavelo
