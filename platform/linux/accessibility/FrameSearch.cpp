#include "platform/linux/accessibility/FrameSearch.h"

#include <algorithm>
#include <utility>

#include <unistd.h>

#include "platform/linux/accessibility/AtspiMessages.h"
#include "platform/linux/session/ProcessHandle.h"

namespace tavelo::linuxdesktop {

std::optional<ElementReference> FrameSearch::activeFrame(WindowIdentifier activeWindow) {
  const auto process = windows_.process(activeWindow);
  if (process == ::getpid() || (process && isStopped(*process))) return std::nullopt;
  const auto services = process ? directory_.servicesOf(*process) : std::vector<QString>{};
  if (!services.empty()) {
    const auto active = frames(services).active;
    return active.empty() ? std::nullopt : std::optional(active.front());
  }
  const auto title = windows_.title(activeWindow);
  return title ? activeFrameTitled(QString::fromStdString(*title)) : std::nullopt;
}

std::vector<ElementReference> FrameSearch::framesOf(platform::ProcessIdentifier process) {
  if (isStopped(process)) return {};
  const auto services = directory_.servicesOf(process);
  if (!services.empty()) {
    auto [result, others] = frames(services);
    result.insert(result.end(), others.begin(), others.end());
    return result;
  }
  const auto window = windows_.activeWindow();
  if (!window || windows_.process(*window) != process) return {};
  const auto frame = activeFrame(*window);
  return frame ? std::vector{*frame} : std::vector<ElementReference>{};
}

FrameSearch::Frames FrameSearch::frames(const std::vector<QString>& services) {
  std::vector<ElementReference> roots;
  roots.reserve(services.size());
  for (const auto& service : services) roots.push_back(rootOf(service));
  Frames result;
  for (auto& window : reader_.describe(reader_.children(roots)))
    (window.states.has(atspi::State::active) ? result.active : result.others)
        .push_back(std::move(window.element));
  return result;
}

std::optional<ElementReference> FrameSearch::activeFrameTitled(const QString& title) {
  const auto active = frames(directory_.services()).active;
  const auto titles = reader_.titles(active);
  const auto found =
      std::ranges::find_if(titles, [&](const auto& each) { return each.name.trimmed() == title.trimmed(); });
  if (found == titles.end()) return std::nullopt;
  return active[static_cast<std::size_t>(found - titles.begin())];
}

}  // namespace tavelo::linuxdesktop
