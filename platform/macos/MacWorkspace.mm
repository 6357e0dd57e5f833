#include "platform/macos/MacWorkspace.h"

#import <AppKit/AppKit.h>

#import "platform/macos/FoundationText.h"

namespace tavelo::macos {
namespace {

std::optional<std::string> optionalText(NSString* text) {
  return text == nil ? std::nullopt : std::optional(fromFoundation(text));
}

class MacApplication final : public platform::RunningApplication {
 public:
  explicit MacApplication(NSRunningApplication* application) : application_(application) {}

  std::optional<std::string> localizedName() const override {
    return optionalText(application_.localizedName);
  }
  std::optional<std::string> bundleIdentifier() const override {
    return optionalText(application_.bundleIdentifier);
  }
  platform::ProcessIdentifier processIdentifier() const override { return application_.processIdentifier; }
  bool isTerminated() const override { return application_.terminated; }

  bool activate(platform::ActivationOptions options) override {
    NSApplicationActivationOptions wanted{};
    if (options == platform::ActivationOptions::activateIgnoringOtherApps)
      wanted = NSApplicationActivateIgnoringOtherApps;
    if (@available(macOS 14.0, *)) {
      // There, the active application must hand over; one in the background can only ask.
      NSRunningApplication* const self = NSRunningApplication.currentApplication;
      if (self.active) {
        [NSApplication.sharedApplication yieldActivationToApplication:application_];
        if ([application_ activateFromApplication:self options:wanted]) return true;
      }
    }
    return [application_ activateWithOptions:wanted];
  }

 private:
  NSRunningApplication* const application_;
};

}  // namespace

std::shared_ptr<platform::RunningApplication> MacWorkspace::frontmostApplication() {
  NSRunningApplication* const application = NSWorkspace.sharedWorkspace.frontmostApplication;
  if (application == nil) return nullptr;
  return std::make_shared<MacApplication>(application);
}

bool MacWorkspace::windowsMayBeTranslucent() {
  return !NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceTransparency;
}

bool MacWorkspace::open(const std::string& url) {
  NSURL* const address = [NSURL URLWithString:toFoundation(url)];
  return address != nil && [NSWorkspace.sharedWorkspace openURL:address];
}

}  // namespace tavelo::macos
