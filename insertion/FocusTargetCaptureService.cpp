#include "insertion/FocusTargetCaptureService.h"

#include "insertion/AttributeReader.h"
#include "platform/Platform.h"

namespace tavelo {

FocusTargetCaptureService::FocusTargetCaptureService()
    : workspace_(platform::current().workspace), accessibility_(platform::current().accessibility) {}

FocusTarget FocusTargetCaptureService::capture() {
  return {workspace_.frontmostApplication(), focusedElement()};
}

platform::AXUIElementRef FocusTargetCaptureService::focusedElement() {
  return AttributeReader(accessibility_)
      .elementAttribute(platform::ax::focusedUIElement, accessibility_.createSystemWide());
}

}  // namespace tavelo
