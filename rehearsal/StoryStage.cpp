#include "rehearsal/StoryStage.h"

#include <utility>

#include "text/TranscriptCacheFormat.h"
#include "text/TranscriptCacheStore.h"

namespace tavelo::rehearsal {
namespace {

simulated::FieldBehaviour behaviourOf(FieldKind kind) {
  using simulated::FieldBehaviour;
  switch (kind) {
    case FieldKind::valueOnly:
      return FieldBehaviour::valueOnly();
    case FieldKind::pasteOnly:
      return FieldBehaviour::pasteOnly();
    case FieldKind::terminal:
      return FieldBehaviour::terminal();
    case FieldKind::password:
      return FieldBehaviour::password();
    case FieldKind::readOnly:
      return FieldBehaviour::readOnly();
    case FieldKind::falsePromise:
      return FieldBehaviour::falsePromise();
    case FieldKind::text:
      break;
  }
  return {};
}

void addMenus(simulated::SimulatedApplication& application, const StoryApplication& story) {
  if (story.menuLanguage == MenuLanguage::none) return;
  auto& bar = application.addMenuBar(
      story.menuLanguage == MenuLanguage::english  ? simulated::MenuLanguage::english
      : story.menuLanguage == MenuLanguage::german ? simulated::MenuLanguage::german
                                                   : simulated::MenuLanguage::vietnamese);
  // Real toolkits build lazy menus well within the 0.12 s that the insertion waits for them.
  constexpr platform::Seconds lazily{0.06};
  bar.setVisibility({.whileClosed = story.menuItems == MenuItems::whileClosed,
                     .builtAfter = story.menuItems == MenuItems::lazily ? lazily : platform::Seconds{0}});
}

simulated::PromptAnswer answerOf(const StoryPermission& permission) {
  simulated::PromptAnswer answer;
  answer.granted = permission.granted;
  answer.when =
      permission.answersAfter ? simulated::PromptAnswer::When::later : simulated::PromptAnswer::When::never;
  answer.after = permission.answersAfter.value_or(platform::Seconds{0});
  return answer;
}

/// The statuses of the two permissions have the same names but different numbers.
template <class Status>
Status statusOf(const StoryPermission& permission) {
  switch (permission.status) {
    case StoryPermission::Status::denied:
      return Status::denied;
    case StoryPermission::Status::restricted:
      return Status::restricted;
    case StoryPermission::Status::asks:
      return Status::notDetermined;
    case StoryPermission::Status::authorized:
      break;
  }
  return Status::authorized;
}

void setUpPasteboard(simulated::SimulatedPasteboard& pasteboard, const StoryDesktop& story) {
  if (!story.pasteboard) {
    pasteboard.silenceOwner();
    return;
  }
  std::vector<simulated::SimulatedPasteboard::Item> items;
  for (const auto& item : *story.pasteboard) {
    auto& copy = items.emplace_back();
    for (const auto& [type, data] : item) copy.push_back({type, data});
  }
  if (!items.empty()) pasteboard.copy(std::move(items));
}

}  // namespace

StoryStage::StoryStage(const StoryDesktop& story, const simulated::DesktopOptions& options)
    : desktop_(options) {
  for (const auto& application : story.applications) addApplication(application);
  if (!story.applications.empty()) application(story.applications.front().name).bringToFront();

  setUpPasteboard(desktop_.pasteboard(), story);
  desktop_.accessibility().setTrusted(story.accessibility);
  desktop_.audio().setAuthorization(statusOf<platform::CaptureAuthorizationStatus>(story.microphone));
  desktop_.audio().setPromptAnswer(answerOf(story.microphone));
  desktop_.microphone().setStartFailure(story.microphoneError);
  desktop_.speech().setAuthorization(statusOf<platform::SpeechAuthorizationStatus>(story.speech));
  desktop_.speech().setPromptAnswer(answerOf(story.speech));
  desktop_.speech().setAvailable(story.recognizer != RecognizerKind::unavailable);
  // Words that a story's recogniser hears after a cancel were already on their way.
  desktop_.speech().setDefaultScript({.steps = {}, .answersAfterCancel = true});
  if (story.recognizer == RecognizerKind::missing) desktop_.speech().setLocales({});
  desktop_.files().setRefusesWrites(story.disk == DiskKind::full);
  desktop_.files().setRefusesFolders(story.disk == DiskKind::noFolder);
}

void StoryStage::addApplication(const StoryApplication& story) {
  auto& application = desktop_.workspace().addApplication(story.name, story.bundleIdentifier);
  applications_[story.name] = &application;
  for (const auto& storyField : story.fields) {
    auto& field = application.addField(storyField.name, behaviourOf(storyField.kind));
    field.setValue(storyField.value);
    if (storyField.selection) field.select(storyField.selection->first, storyField.selection->second);
    fields_[story.name + "/" + storyField.name] = &field;
  }
  addMenus(application, story);
  application.setSwallowsKeys(story.swallowsPasteKey);
}

void StoryStage::moveFocus(const std::optional<std::string>& to) {
  if (!to) {
    desktop_.workspace().setFrontmost(nullptr);
    return;
  }
  const auto field = fields_.find(*to);
  if (field == fields_.end()) {
    application(*to).bringToFront();
    return;
  }
  field->second->application().focus(field->second);
  field->second->application().bringToFront();
}

std::map<std::string, std::string> StoryStage::fieldTexts() const {
  std::map<std::string, std::string> texts;
  for (const auto& [name, field] : fields_) texts[name] = field->value();
  return texts;
}

std::vector<std::string> StoryStage::history() {
  const auto json = desktop_.files().peek(transcriptCacheFile(desktop_.files()));
  const auto entries = json ? TranscriptCacheDecoder().decode(*json) : std::nullopt;
  std::vector<std::string> texts;
  if (!entries) return texts;
  texts.reserve(entries->size());
  for (const auto& entry : *entries) texts.push_back(entry.normalizedText);
  return texts;
}

}  // namespace tavelo::rehearsal
