#include "insertion/TextInsertionService.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "insertion/EditMenu.h"
#include "platform/Platform.h"
#include "unicode/Unicode.h"

namespace tavelo {
namespace {

using platform::AXError;
using platform::Seconds;

/// From the pasteboard swap to the paste. The target needs this long to come to the front.
constexpr Seconds pasteDelay{0.45};
/// From the paste to the check whether the text arrived.
constexpr Seconds retryDelay{0.35};
/// From the swap until the user's contents are put back. Slow applications read the pasteboard late.
constexpr Seconds clipboardRestoreDelay{4.0};

void requireMainThread(const platform::MainQueue& mainQueue) {
  if (mainQueue.isMainThread()) return;
  std::fputs("tavelo: text was inserted off the main thread\n", stderr);
  std::abort();
}

std::int64_t clamped(std::int64_t value, std::int64_t upperBound) {
  return std::max<std::int64_t>(0, std::min(value, upperBound));
}

}  // namespace

TextInsertionService::TextInsertionService()
    : mainQueue_(platform::current().mainQueue),
      pasteboard_(platform::current().generalPasteboard),
      accessibility_(platform::current().accessibility),
      keyboardEvents_(platform::current().keyboardEvents),
      reader_(accessibility_) {}

void TextInsertionService::insert(const std::string& text, const std::optional<FocusTarget>& target) {
  if (text.empty()) return;
  requireMainThread(mainQueue_);
  Insertion insertion{text, target.value_or(FocusTarget{}), {}};
  const auto& [application, element] = insertion.target;
  if (element && insertWithAccessibility(text, element)) return;

  insertion.id = currentInsertionID_ = platform::Uuid::random();
  auto saved = savedPasteboard();
  pasteboard_.clearContents();
  pasteboard_.setString(text, platform::pasteboardTypeString);
  if (application && !application->isTerminated())
    application->activate(platform::ActivationOptions::activateIgnoringOtherApps);
  mainQueue_.asyncAfter(pasteDelay, lifetime_.guard([this, insertion] { paste(insertion); }));
  // Not guarded: the user's contents come back even if this service no longer exists.
  mainQueue_.asyncAfter(clipboardRestoreDelay, [&pasteboard = pasteboard_, saved = std::move(saved)] {
    if (!saved) return;
    pasteboard.clearContents();
    // Of an empty list too: that tells a pasteboard which counts restores that this is one.
    pasteboard.writeObjects(*saved);
  });
}

std::optional<std::vector<platform::PasteboardItemContent>> TextInsertionService::savedPasteboard() {
  const auto items = pasteboard_.pasteboardItems();
  if (!items) return std::nullopt;
  std::vector<platform::PasteboardItemContent> saved;
  saved.reserve(items->size());
  for (const auto& item : *items) {
    auto& copy = saved.emplace_back();
    for (auto& type : item->types()) {
      if (auto data = item->data(type)) copy.representations.push_back({std::move(type), std::move(*data)});
    }
  }
  return saved;
}

void TextInsertionService::paste(const Insertion& insertion) {
  if (insertion.id != currentInsertionID_) return;
  const auto focused = focusCaptureService_.focusedElement();
  if (focused && insertWithAccessibility(insertion.text, focused)) return;
  sendPasteCommand(insertion.target.application.get());
  retryPasteIfNeeded(insertion);
}

bool TextInsertionService::insertWithAccessibility(const std::string& text,
                                                   const platform::AXUIElementRef& element) {
  return accessibility_.setAttributeValue(element, platform::ax::selectedText, text) == AXError::success ||
         replaceSelectionInValue(text, element);
}

bool TextInsertionService::replaceSelectionInValue(const std::string& text,
                                                   const platform::AXUIElementRef& element) {
  const auto value = reader_.stringAttribute(platform::ax::value, element);
  if (!value) return false;
  const auto selection = reader_.rangeAttribute(platform::ax::selectedTextRange, element);
  if (!selection) return false;

  const auto length = static_cast<std::int64_t>(unicode::utf16Length(*value));
  const std::int64_t start = clamped(selection->location, length);
  const std::int64_t count = clamped(selection->length, length - start);
  const std::string replaced =
      unicode::replacingUtf16(*value, static_cast<std::size_t>(start), static_cast<std::size_t>(count), text);
  if (accessibility_.setAttributeValue(element, platform::ax::value, replaced) != AXError::success)
    return false;

  // Toolkits move the caret when the whole value changes, so set it. If this fails, the text is still there.
  const platform::AXRange caret{start + static_cast<std::int64_t>(unicode::utf16Length(text)), 0};
  accessibility_.setAttributeValue(element, platform::ax::selectedTextRange, caret);
  return true;
}

void TextInsertionService::sendPasteCommand(platform::RunningApplication* application) {
  std::vector<platform::KeyboardEvent> chord;
  for (const bool keyDown : {true, false}) {
    auto event = keyboardEvents_.createKeyboardEvent(platform::EventSourceState::hidSystem,
                                                     platform::keycodes::v, keyDown);
    if (!event) continue;
    // Exactly Command: modifiers that the user still holds must not turn this into another shortcut.
    event->flags = platform::keyflags::command;
    chord.push_back(*event);
  }
  if (application != nullptr && !application->isTerminated()) {
    for (const auto& event : chord) keyboardEvents_.postToProcess(application->processIdentifier(), event);
  }
  for (const auto location : {platform::EventTapLocation::hid, platform::EventTapLocation::session}) {
    for (const auto& event : chord) keyboardEvents_.post(location, event);
  }
}

void TextInsertionService::retryPasteIfNeeded(const Insertion& insertion) {
  mainQueue_.asyncAfter(retryDelay, lifetime_.guard([this, insertion] { check(insertion); }));
}

void TextInsertionService::check(const Insertion& insertion) {
  if (insertion.id != currentInsertionID_) return;
  bool sawMissing = false;
  const auto shows = [&](const platform::AXUIElementRef& element) {
    if (!element) return false;
    const auto verification = verifyInsertion(insertion.text, element);
    sawMissing = sawMissing || verification == InsertionVerification::missing;
    return verification == InsertionVerification::inserted;
  };
  const auto& [application, element] = insertion.target;
  if (shows(element) || shows(focusCaptureService_.focusedElement())) return;
  if (!sawMissing || !application) return;
  // A field may change what comes in, empty itself, or be busy with the text. Pasting again would double it.
  const auto isFetched = [this] { return pasteboard_.fetchSincePaste() == platform::PasteboardFetch::yes; };
  if (isFetched()) return;
  pasteboard_.prepareForSecondPaste();
  // The menu runs the main loop for a moment. Meanwhile this service may end or a newer insertion may begin.
  bool isCurrent = false;
  auto look = lifetime_.guard([&, this] { isCurrent = insertion.id == currentInsertionID_ && !isFetched(); });
  EditMenu().pressPasteMenuItem(*application, [&] {
    look();
    return isCurrent;
  });
}

TextInsertionService::InsertionVerification TextInsertionService::verifyInsertion(
    const std::string& text, const platform::AXUIElementRef& element) {
  const auto value = reader_.stringAttribute(platform::ax::value, element);
  if (!value) return InsertionVerification::unavailable;
  return unicode::canonicallyContains(*value, text) ? InsertionVerification::inserted
                                                    : InsertionVerification::missing;
}

}  // namespace tavelo
