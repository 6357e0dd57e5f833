// Holds each real service against its contract, so that a mismatch is found here and not in the coordinator's
// depths.
#include "app/ServiceContracts.h"
#include "hotkey/HotKeyService.h"
#include "insertion/FocusTargetCaptureService.h"
#include "insertion/TextInsertionService.h"
#include "speech/PermissionService.h"
#include "speech/SpeechDictationController.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo {

static_assert(SpeechDictationContract<SpeechDictationController>);
static_assert(PermissionContract<PermissionService>);
static_assert(HotKeyContract<HotKeyService>);
static_assert(FocusCaptureContract<FocusTargetCaptureService>);
static_assert(InsertionContract<TextInsertionService>);
static_assert(TranscriptCacheContract<TranscriptCacheStore>);

}  // namespace tavelo
