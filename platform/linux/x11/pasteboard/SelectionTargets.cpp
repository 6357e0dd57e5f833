#include "platform/linux/x11/pasteboard/SelectionTargets.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/Pasteboard.h"

namespace tavelo::linuxdesktop {
namespace {

constexpr std::string_view utf8Text = "UTF8_STRING";

/// What an owner lists beside its contents: requests to it, facts about it, resources of the X server, and
/// TEXT, which is one of the other texts in an encoding of the owner's choice.
constexpr std::array<std::string_view, 23> notContents{
    "TARGETS",    "MULTIPLE",         "TIMESTAMP",     "SAVE_TARGETS",
    "DELETE",     "INSERT_SELECTION", "INCR",          "INSERT_PROPERTY",
    "BITMAP",     "PIXMAP",           "DRAWABLE",      "COLORMAP",
    "BACKGROUND", "FOREGROUND",       "CLIENT_WINDOW", "TEXT",
    "LENGTH",     "LIST_LENGTH",      "TASK",          "USER",
    "HOST_NAME",  "PROCESS",          "OWNER_OS"};

/// Lossless kinds of pictures, the best first; every other kind comes behind them.
constexpr std::array<std::string_view, 6> pictures{"image/png",   "image/tiff",     "image/bmp",
                                                   "image/x-bmp", "image/x-MS-bmp", "application/x-qt-image"};

/// Drawings are small and no substitute for each other.
bool isPicture(std::string_view target) {
  return target == "application/x-qt-image" ||
         (target.starts_with("image/") && target.find("svg") == std::string_view::npos);
}

std::size_t rankOfPicture(std::string_view target) {
  return static_cast<std::size_t>(std::ranges::find(pictures, target) - pictures.begin());
}

enum class Turn { text, markup, picture, rest };

Turn turnOf(const std::string& target) {
  if (std::ranges::find(plainTextTargets(), target) != plainTextTargets().end()) return Turn::text;
  if (target == "COMPOUND_TEXT" || target.starts_with("text/") || target.starts_with("x-special/"))
    return Turn::markup;
  return isPicture(target) ? Turn::picture : Turn::rest;
}

}  // namespace

const std::vector<std::string>& plainTextTargets() {
  static const std::vector<std::string> targets{std::string(utf8Text), "text/plain;charset=utf-8",
                                                "text/plain", "STRING"};
  return targets;
}

std::string targetOf(const std::string& pasteboardType) {
  return pasteboardType == platform::pasteboardTypeString ? std::string(utf8Text) : pasteboardType;
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
