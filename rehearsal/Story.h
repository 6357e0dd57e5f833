#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Time.h"

/// A story describes a desktop, what happens on it at which time, and what must then be true. It is written
/// in JSON; docs/stories.md describes the format. These are plain values; reading a story has no side
/// effects.
namespace tavelo::rehearsal {

/// How a field takes text.
enum class FieldKind : std::uint8_t {
  text,         // takes the selected text through accessibility
  valueOnly,    // takes only its whole value
  pasteOnly,    // shows its value, takes only a paste
  terminal,     // hides its value and selection, takes only a paste
  password,     // hides its value, takes only a paste
  readOnly,     // shows its value, takes nothing
  falsePromise  // claims to take the text, takes only a paste
};

struct StoryField {
  std::string name;
  FieldKind kind = FieldKind::text;
  std::string value;
  /// Location and length in UTF-16 code units; if absent, the caret stands at the end of the value.
  std::optional<std::pair<std::int64_t, std::int64_t>> selection;
};

enum class MenuLanguage : std::uint8_t { none, english, vietnamese, german };
enum class MenuItems : std::uint8_t { whileClosed, whenOpen, lazily };

struct StoryApplication {
  std::string name;
  std::optional<std::string> bundleIdentifier;
  std::vector<StoryField> fields;
  MenuLanguage menuLanguage = MenuLanguage::english;
  MenuItems menuItems = MenuItems::whileClosed;
  bool swallowsPasteKey = false;
};

/// The state of a permission, and what the user answers when asked.
struct StoryPermission {
  enum class Status : std::uint8_t { authorized, denied, restricted, asks } status = Status::authorized;
  bool granted = true;
  /// How long until the user answers; absent if never.
  std::optional<platform::Seconds> answersAfter = platform::Seconds{0};
};

enum class RecognizerKind : std::uint8_t { available, unavailable, missing };
enum class DiskKind : std::uint8_t { works, full, noFolder };

/// One pasteboard item: its types with their data. Absent data is null in the story.
using StoryPasteboardItem = std::vector<std::pair<std::string, std::optional<std::string>>>;

struct StoryDesktop {
  std::vector<StoryApplication> applications;
  /// Absent if the owner of the pasteboard does not answer, so that there is no item list.
  std::optional<std::vector<StoryPasteboardItem>> pasteboard = std::vector<StoryPasteboardItem>{};
  bool accessibility = true;
  StoryPermission microphone;
  StoryPermission speech;
  /// The error text when the microphone cannot be opened; absent if it can.
  std::optional<std::string> microphoneError;
  RecognizerKind recognizer = RecognizerKind::available;
  DiskKind disk = DiskKind::works;
};

enum class OverlayState : std::uint8_t { hidden, recording, transcribing, inserted };

/// What must be true at one moment. Absent members are not checked.
struct Expectation {
  /// By "application/field".
  std::map<std::string, std::string> fields;
  /// The plain text on the pasteboard; the inner optional is empty if there must be none.
  std::optional<std::optional<std::string>> pasteboard;
  /// The finished texts, newest first.
  std::optional<std::vector<std::string>> history;
  std::optional<OverlayState> overlay;
  /// The messages of all alerts so far.
  std::optional<std::vector<std::string>> alerts;
  /// The text in the review window; the inner optional is empty if the window must be closed.
  std::optional<std::optional<std::string>> review;
  std::optional<bool> listening;
};

enum class MenuCommand : std::uint8_t {
  toggleDictation,
  toggleInsertMode,
  showPermissions,
  testInsert,
  insertLastText,
  quit
};

namespace action {
struct PressKey {
  std::string key;
};
struct ReleaseKey {
  std::string key;
};
/// Presses and releases "control-option-v" and the like.
struct TapKeys {
  std::string chord;
};
/// Another key goes down while Fn is held.
struct InterruptHold {};
/// The recogniser reports the whole transcript so far.
struct Hears {
  std::string text;
  bool isFinal = false;
};
struct RecognitionError {};
/// To "application/field" or to "application"; if absent, nothing has the focus.
struct MoveFocus {
  std::optional<std::string> to;
};
struct Quit {
  std::string application;
};
struct Hang {
  std::string application;
};
struct Wake {
  std::string application;
};
struct Copy {
  std::string text;
};
struct ChooseCommand {
  MenuCommand command;
};
/// If `text` is absent, the user confirms the text as it stands.
struct ConfirmReview {
  std::optional<std::string> text;
};
struct CancelReview {};
struct GrantAccessibility {};
struct Expect {
  Expectation expectation;
};
}  // namespace action

using Action =
    std::variant<action::PressKey, action::ReleaseKey, action::TapKeys, action::InterruptHold, action::Hears,
                 action::RecognitionError, action::MoveFocus, action::Quit, action::Hang, action::Wake,
                 action::Copy, action::ChooseCommand, action::ConfirmReview, action::CancelReview,
                 action::GrantAccessibility, action::Expect>;

struct Step {
  /// Since the story's beginning.
  platform::Seconds at{0};
  Action action;
};

struct Story {
  std::string title;
  StoryDesktop desktop;
  /// In order of time.
  std::vector<Step> steps;
  Expectation expectation;
};

/// Reads a story and checks that it introduces every application and field it uses. On failure returns one
/// line that says what is wrong.
std::variant<Story, std::string> parseStory(std::string_view json);

}  // namespace tavelo::rehearsal
