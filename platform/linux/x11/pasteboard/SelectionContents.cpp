#include "platform/linux/x11/pasteboard/SelectionContents.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tavelo::linuxdesktop {
namespace {

/// The clipboard histories of the common desktops leave out contents with this target.
constexpr const char* historyHint = "x-kde-passwordManagerHint";

constexpr const char* utf8Text = "UTF8_STRING";
/// The names under which plain text is offered, the best first.
constexpr std::array plainTexts{utf8Text, "text/plain;charset=utf-8", "text/plain", "STRING"};

/// Targets that hold no contents: requests to the owner, facts about it, resources of the X server, and TEXT,
/// which repeats another text in an encoding that the owner chooses.
constexpr std::array<std::string_view, 23> notContents{
    "TARGETS",    "MULTIPLE",         "TIMESTAMP",     "SAVE_TARGETS",
    "DELETE",     "INSERT_SELECTION", "INCR",          "INSERT_PROPERTY",
    "BITMAP",     "PIXMAP",           "DRAWABLE",      "COLORMAP",
    "BACKGROUND", "FOREGROUND",       "CLIENT_WINDOW", "TEXT",
    "LENGTH",     "LIST_LENGTH",      "TASK",          "USER",
    "HOST_NAME",  "PROCESS",          "OWNER_OS"};

/// Lossless kinds of pictures, the best first. All other kinds come after them.
constexpr std::array<std::string_view, 6> pictures{"image/png",   "image/tiff",     "image/bmp",
                                                   "image/x-bmp", "image/x-MS-bmp", "application/x-qt-image"};

/// SVG drawings do not count: they are small, and no other picture can replace one.
bool isPicture(std::string_view target) {
  return target == "application/x-qt-image" ||
         (target.starts_with("image/") && target.find("svg") == std::string_view::npos);
}

std::size_t rankOfPicture(std::string_view target) {
  return static_cast<std::size_t>(std::ranges::find(pictures, target) - pictures.begin());
}

enum class Turn { text, markup, picture, rest };

Turn turnOf(const std::string& target) {
  if (std::ranges::find(plainTexts, target) != plainTexts.end()) return Turn::text;
  if (target == "COMPOUND_TEXT" || target.starts_with("text/") || target.starts_with("x-special/"))
    return Turn::markup;
  return isPicture(target) ? Turn::picture : Turn::rest;
}

}  // namespace

void SelectionContents::add(std::string type, std::string bytes) {
  if (std::ranges::find(representations, type, &Representation::type) != representations.end()) return;
  representations.push_back({std::move(type), std::make_shared<const std::string>(std::move(bytes))});
}

std::vector<OfferedTarget> offeredTargets(const SelectionContents& contents) {
  std::vector<OfferedTarget> offered;
  std::vector<OfferedTarget> texts;
  for (const auto& each : contents.representations) {
    const std::string name = targetOf(each.type);
    offered.push_back({name, name, each.bytes});
  }
  for (const std::string name : plainTexts) {
    const auto found = std::ranges::find(offered, name, &OfferedTarget::name);
    if (found != offered.end()) texts.push_back(*found);
  }
  if (texts.size() == 1 && texts.front().name == utf8Text) {
    for (const std::string name : plainTexts) {
      if (name != texts.front().name) offered.push_back({name, name, texts.front().bytes});
    }
  }
  if (!texts.empty()) {
    const auto& best = texts.front();
    offered.push_back({"TEXT", best.name == "STRING" ? "STRING" : utf8Text, best.bytes});
  }
  if (contents.momentary)
    offered.push_back({historyHint, historyHint, std::make_shared<const std::string>("secret"), true});
  return offered;
}

std::string targetOf(const std::string& pasteboardType) {
  return pasteboardType == platform::pasteboardTypeString ? utf8Text : pasteboardType;
}

std::string pasteboardTypeOf(const std::string& target) {
  return target == utf8Text ? platform::pasteboardTypeString : target;
}

std::vector<std::vector<std::size_t>> fetchingSteps(const std::vector<std::string>& targets) {
  std::vector<std::size_t> kept;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (!targets[i].empty() && std::ranges::find(notContents, targets[i]) == notContents.end())
      kept.push_back(i);
  }
  std::ranges::stable_sort(kept, {}, [&](std::size_t i) { return turnOf(targets[i]); });

  std::vector<std::vector<std::size_t>> steps;
  bool inPictures = false;
  for (const auto each : kept) {
    const bool picture = turnOf(targets[each]) == Turn::picture;
    if (picture && inPictures) {
      steps.back().push_back(each);
    } else {
      steps.push_back({each});
    }
    inPictures = picture;
  }
  for (auto& step : steps)
    std::ranges::stable_sort(step, {}, [&](std::size_t i) { return rankOfPicture(targets[i]); });
  return steps;
}

}  // namespace tavelo::linuxdesktop
