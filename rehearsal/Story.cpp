#include "rehearsal/Story.h"

#include <set>

#include <nlohmann/json.hpp>

#include "platform/simulated/KeyNames.h"
#include "rehearsal/JsonObjectReader.h"

namespace tavelo::rehearsal {
namespace {

using Json = nlohmann::ordered_json;
using platform::Seconds;

/// A later time is taken for a slip of the pen.
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
  using enum FieldKind;
  reader.choose("kind", field.kind,
                {{"text", text},
                 {"valueOnly", valueOnly},
                 {"pasteOnly", pasteOnly},
                 {"terminal", terminal},
                 {"password", password},
                 {"readOnly", readOnly},
                 {"falsePromise", falsePromise}});
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
    using enum MenuLanguage;
    menuReader.choose("language", application.menuLanguage,
                      {{"none", none}, {"en", english}, {"vi", vietnamese}, {"de", german}});
    using enum MenuItems;
    menuReader.choose("items", application.menuItems,
                      {{"whileClosed", whileClosed}, {"whenOpen", whenOpen}, {"lazily", lazily}});
    menuReader.finish();
  }
  application.swallowsPasteKey = reader.booleanOr("swallowsPasteKey", false);
  reader.finish();
  return application;
}

StoryPermission readPermission(const Json& value, const std::string& path) {
  JsonObjectReader reader(value, path);
  StoryPermission permission;
  using enum StoryPermission::Status;
  permission.status = reader.choice<StoryPermission::Status>(
      "status", {{"authorized", authorized}, {"denied", denied}, {"restricted", restricted}, {"asks", asks}});
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
  using enum RecognizerKind;
  reader.choose("recognizer", desktop.recognizer,
                {{"available", available}, {"unavailable", unavailable}, {"missing", missing}});
  using enum DiskKind;
  reader.choose("disk", desktop.disk, {{"works", works}, {"full", full}, {"noFolder", noFolder}});
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
    using enum OverlayState;
    expectation.overlay = reader.choice<OverlayState>("overlay", {{"hidden", hidden},
                                                                  {"recording", recording},
                                                                  {"transcribing", transcribing},
                                                                  {"inserted", inserted}});
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
  if (reader.booleanOr("interruptHold", false)) return action::InterruptHold{};
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
    using enum MenuCommand;
    return action::ChooseCommand{
        reader.choice<MenuCommand>("command", {{"toggleDictation", toggleDictation},
                                               {"toggleInsertMode", toggleInsertMode},
                                               {"showPermissions", showPermissions},
                                               {"testInsert", testInsert},
                                               {"insertLastText", insertLastText},
                                               {"quit", quit}})};
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

/// Finds an application, field or key that a story uses without having introduced it.
class LooseEnds final {
 public:
  explicit LooseEnds(const Story& story) {
    for (const auto& application : story.desktop.applications) {
      if (!names_.insert(application.name).second)
        found_ = "two applications are called “" + application.name + "”";
      for (const auto& field : application.fields) {
        const std::string name = application.name + "/" + field.name;
        if (!fields_.insert(name).second) found_ = "two fields are called “" + name + "”";
      }
    }
    expectation(story.expectation);
    for (const auto& step : story.steps) std::visit(*this, step.action);
  }

  const std::optional<std::string>& found() const { return found_; }

  void operator()(const action::PressKey& action) { key(action.key); }
  void operator()(const action::ReleaseKey& action) { key(action.key); }
  void operator()(const action::TapKeys& action) { key(action.chord); }
  void operator()(const action::MoveFocus& action) {
    if (action.to && !fields_.contains(*action.to)) application(*action.to);
  }
  void operator()(const action::Quit& action) { application(action.application); }
  void operator()(const action::Hang& action) { application(action.application); }
  void operator()(const action::Wake& action) { application(action.application); }
  void operator()(const action::Expect& action) { expectation(action.expectation); }
  template <class Other>
  void operator()(const Other& /*names nothing*/) {}

 private:
  void key(const std::string& chord) {
    if (!simulated::parseChord(chord)) found_ = "there is no key “" + chord + "”";
  }
  void application(const std::string& name) {
    if (!names_.contains(name)) found_ = "there is no application or field “" + name + "”";
  }
  void expectation(const Expectation& expectation) {
    for (const auto& [field, text] : expectation.fields) {
      if (!fields_.contains(field)) found_ = "there is no field “" + field + "”";
    }
  }

  std::set<std::string> names_;
  std::set<std::string> fields_;
  std::optional<std::string> found_;
};

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
  if (const auto looseEnd = LooseEnds(story).found()) throw StoryError(*looseEnd);
  return story;
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

}  // namespace

std::variant<Story, std::string> parseStory(std::string_view json) {
  try {
    return readStory(Json::parse(json));
  } catch (const StoryError& error) {
    return error.line();
  } catch (const nlohmann::json::exception& error) {
    return "not JSON: " + firstLine(error.what());
  }
}

}  // namespace tavelo::rehearsal
