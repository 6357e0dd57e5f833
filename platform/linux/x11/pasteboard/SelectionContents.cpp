#include "platform/linux/x11/pasteboard/SelectionContents.h"

#include <algorithm>
#include <utility>

#include "platform/linux/x11/pasteboard/SelectionTargets.h"

namespace tavelo::linuxdesktop {
namespace {

/// Read by the clipboard histories of the common desktops.
constexpr const char* historyHint = "x-kde-passwordManagerHint";

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
  for (const auto& name : plainTextTargets()) {
    const auto found = std::ranges::find(offered, name, &OfferedTarget::name);
    if (found != offered.end()) texts.push_back(*found);
  }
  if (texts.size() == 1 && texts.front().name == targetOf(platform::pasteboardTypeString)) {
    for (const auto& name : plainTextTargets()) {
      if (name != texts.front().name) offered.push_back({name, name, texts.front().bytes});
    }
  }
  if (!texts.empty()) {
    const auto& best = texts.front();
    offered.push_back({"TEXT", best.name == "STRING" ? best.name : "UTF8_STRING", best.bytes});
  }
  if (contents.momentary)
    offered.push_back({historyHint, historyHint, std::make_shared<const std::string>("secret")});
  return offered;
}

}  // namespace tavelo::linuxdesktop
