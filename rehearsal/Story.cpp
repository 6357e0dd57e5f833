#include "rehearsal/Story.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "rehearsal/JsonObjectReader.h"

namespace tavelo::rehearsal {
namespace {

using Json = nlohmann::ordered_json;
using platform::Seconds;

/// Longer stories are a slip of the pen.
constexpr double longestTime = 3600;

Seconds asTime(const Json& value, const std::string& path) {
  const double seconds = asNumber(value, path);
  if (!(seconds >= 0 && seconds <= longestTime))
    throw StoryError(path, "a time from 0 to 3600 seconds is wanted");
  return Seconds{seconds};
}

std::int64_t asInteger(const Json& value, const std::string& path) {
  if (!value.is_number_integer()) throw StoryError(path, "a whole number is wanted");
  return value.get<std::int64_t>();
}

StoryField readField(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  StoryField field;
  field.name = reader.string("name");
  field.kind = reader.choiceOr<FieldKind>("kind",
                                          {{"text", FieldKind::text},
                                           {"valueOnly", FieldKind::valueOnly},
                                           {"pasteOnly", FieldKind::pasteOnly},
                                           {"terminal", FieldKind::terminal},
                                           {"password", FieldKind::password},
                                           {"readOnly", FieldKind::readOnly},
                                           {"falsePromise", FieldKind::falsePromise}},
                                          FieldKind::text);
  field.value = reader.stringOr("value", "");
  const auto selection = reader.list("selection");
  if (selection.size() == 2) {
    field.selection.emplace(asInteger(*selection[0].first, selection[0].second),
                            asInteger(*selection[1].first, selection[1].second));
  } else if (!selection.empty()) {
    throw StoryError(reader.pathOf("selection"), "location and length are wanted");
  }
  reader.finish();
  return field;
}

StoryApplication readApplication(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  StoryApplication application;
  application.name = reader.string("name");
  if (reader.find("bundleIdentifier") != nullptr)
    application.bundleIdentifier = reader.string("bundleIdentifier");
  for (const auto& [field, fieldPath] : reader.list("fields")) {
    application.fields.push_back(readField(*field, fieldPath));
  }
  if (const auto* menu = reader.find("menu")) {
    JsonObjectReader menuReader(*menu, reader.pathOf("menu"));
    application.menuLanguage = menuReader.choiceOr<MenuLanguage>("language",
                                                                 {{"none", MenuLanguage::none},
                                                                  {"en", MenuLanguage::english},
                                                                  {"vi", MenuLanguage::vietnamese},
                                                                  {"de", MenuLanguage::german}},
                                                                 MenuLanguage::english);
    application.menuItems = menuReader.choiceOr<MenuItems>("items",
                                                           {{"whileClosed", MenuItems::whileClosed},
                                                            {"whenOpen", MenuItems::whenOpen},
                                                            {"lazily", MenuItems::lazily}},
                                                           MenuItems::whileClosed);
    menuReader.finish();
  }
  application.swallowsPasteKey = reader.booleanOr("swallowsPasteKey", false);
  reader.finish();
  return application;
}

StoryPermission readPermission(const Json& value, const std::string& path) {
  using Status = StoryPermission::Status;
  JsonObjectReader reader(value, path);
  StoryPermission permission;
  permission.status = reader.choice<Status>("status", {{"authorized", Status::authorized},
                                                       {"denied", Status::denied},
                                                       {"restricted", Status::restricted},
                                                       {"asks", Status::asks}});
  permission.granted = reader.booleanOr("granted", true);
  if (const auto* after = reader.find("answersAfter")) {
    permission.answersAfter =
        after->is_null() ? std::nullopt : std::optional(asTime(*after, reader.pathOf("answersAfter")));
  }
  reader.finish();
  return permission;
}

StoryPasteboardItem readPasteboardItem(const Json& value, const std::string& path) {
  StoryPasteboardItem item;
  if (!value.is_object()) throw StoryError(path, "an object of types and data is wanted");
  for (const auto& [type, data] : value.items()) {
    const std::string where = std::string(path).append(".").append(type);
    item.emplace_back(type, data.is_null() ? std::nullopt : std::optional(asString(data, where)));
  }
  return item;
}

StoryDesktop readDesktop(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  StoryDesktop desktop;
  for (const auto& [application, applicationPath] : reader.list("applications")) {
    desktop.applications.push_back(readApplication(*application, applicationPath));
  }
  const auto* pasteboard = reader.find("pasteboard");
  if (pasteboard != nullptr && pasteboard->is_null()) {
    desktop.pasteboard.reset();
  } else {
    for (const auto& [item, itemPath] : reader.list("pasteboard")) {
      desktop.pasteboard->push_back(readPasteboardItem(*item, itemPath));
    }
  }
  desktop.accessibility = reader.booleanOr("accessibility", true);
  if (const auto* microphone = reader.find("microphone")) {
    desktop.microphone = readPermission(*microphone, reader.pathOf("microphone"));
  }
  if (const auto* speech = reader.find("speech"))
    desktop.speech = readPermission(*speech, reader.pathOf("speech"));
  if (reader.find("microphoneError") != nullptr) desktop.microphoneError = reader.string("microphoneError");
  desktop.recognizer = reader.choiceOr<RecognizerKind>("recognizer",
                                                       {{"available", RecognizerKind::available},
                                                        {"unavailable", RecognizerKind::unavailable},
                                                        {"missing", RecognizerKind::missing}},
                                                       RecognizerKind::available);
  desktop.disk = reader.choiceOr<DiskKind>(
      "disk", {{"works", DiskKind::works}, {"full", DiskKind::full}, {"noFolder", DiskKind::noFolder}},
      DiskKind::works);
  reader.finish();
  return desktop;
}

std::optional<std::string> asTextOrNull(const Json& value, const std::string& path) {
  if (value.is_null()) return std::nullopt;
  return asString(value, path);
}

std::optional<std::vector<std::string>> readTexts(JsonObjectReader& reader, const std::string& key) {
  if (reader.find(key) == nullptr) return std::nullopt;
  std::vector<std::string> texts;
  for (const auto& [text, path] : reader.list(key)) texts.push_back(asString(*text, path));
  return texts;
}

Expectation readExpectation(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  Expectation expectation;
  if (const auto* fields = reader.find("fields")) {
    if (!fields->is_object()) throw StoryError(reader.pathOf("fields"), "an object is wanted");
    for (const auto& [field, text] : fields->items()) {
      expectation.fields.emplace(field, asString(text, reader.pathOf("fields") + "." + field));
    }
  }
  if (const auto* text = reader.find("pasteboard")) {
    expectation.pasteboard = asTextOrNull(*text, reader.pathOf("pasteboard"));
  }
  expectation.history = readTexts(reader, "history");
  expectation.alerts = readTexts(reader, "alerts");
  if (reader.find("overlay") != nullptr) {
    expectation.overlay =
        reader.choice<OverlayState>("overlay", {{"hidden", OverlayState::hidden},
                                                {"recording", OverlayState::recording},
                                                {"transcribing", OverlayState::transcribing},
                                                {"inserted", OverlayState::inserted}});
  }
  if (const auto* text = reader.find("review")) {
    expectation.review = asTextOrNull(*text, reader.pathOf("review"));
  }
  if (reader.find("listening") != nullptr) expectation.listening = reader.booleanOr("listening", false);
  reader.finish();
  return expectation;
}

Action readAction(JsonObjectReader& reader) {
  if (reader.find("press") != nullptr) return action::PressKey{reader.string("press")};
  if (reader.find("release") != nullptr) return action::ReleaseKey{reader.string("release")};
  if (reader.find("tap") != nullptr) return action::TapKeys{reader.string("tap")};
  if (reader.find("hears") != nullptr)
    return action::Hears{reader.string("hears"), reader.booleanOr("final", false)};
  if (reader.booleanOr("recognitionError", false)) return action::RecognitionError{};
  if (const auto* to = reader.find("focus"))
    return action::MoveFocus{asTextOrNull(*to, reader.pathOf("focus"))};
  if (reader.find("quit") != nullptr) return action::Quit{reader.string("quit")};
  if (reader.find("hang") != nullptr) return action::Hang{reader.string("hang")};
  if (reader.find("wake") != nullptr) return action::Wake{reader.string("wake")};
  if (reader.find("copy") != nullptr) return action::Copy{reader.string("copy")};
  if (reader.find("command") != nullptr) {
    return action::ChooseCommand{
        reader.choice<MenuCommand>("command", {{"toggleDictation", MenuCommand::toggleDictation},
                                               {"toggleInsertMode", MenuCommand::toggleInsertMode},
                                               {"showPermissions", MenuCommand::showPermissions},
                                               {"testInsert", MenuCommand::testInsert},
                                               {"insertLastText", MenuCommand::insertLastText},
                                               {"quit", MenuCommand::quit}})};
  }
  if (const auto* text = reader.find("confirmReview")) {
    return action::ConfirmReview{asTextOrNull(*text, reader.pathOf("confirmReview"))};
  }
  if (reader.booleanOr("cancelReview", false)) return action::CancelReview{};
  if (reader.booleanOr("grantAccessibility", false)) return action::GrantAccessibility{};
  if (const auto* expectation = reader.find("expect")) {
    return action::Expect{readExpectation(*expectation, reader.pathOf("expect"))};
  }
  throw StoryError(reader.path(), "nothing happens in this step");
}

Step readStep(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  const auto at = asTime(reader.require("at"), reader.pathOf("at"));
  Step step{at, readAction(reader)};
  reader.finish();
  return step;
}

Story readStory(const Json& value) {
  JsonObjectReader reader(value, "story");
  Story story;
  story.title = reader.string("title");
  story.desktop = readDesktop(reader.require("desktop"), reader.pathOf("desktop"));
  for (const auto& [step, path] : reader.list("steps")) {
    story.steps.push_back(readStep(*step, path));
    if (story.steps.size() > 1 && story.steps.back().at < (story.steps.end() - 2)->at) {
      throw StoryError(path, "steps must stand in order of time");
    }
  }
  if (story.steps.empty()) throw StoryError(reader.pathOf("steps"), "nothing happens");
  story.expectation = readExpectation(reader.require("expect"), reader.pathOf("expect"));
  reader.finish();
  return story;
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

}  // namespace

std::variant<Story, std::string> parseStory(std::string_view json) {
  try {
    return readStory(Json::parse(json));
  } catch (const StoryError& error) {
    return error.what();
  } catch (const nlohmann::json::exception& error) {
    return "not JSON: " + firstLine(error.what());
  }
}

}  // namespace tavelo::rehearsal
