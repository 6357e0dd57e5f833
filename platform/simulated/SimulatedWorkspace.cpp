#include "platform/simulated/SimulatedWorkspace.h"

#include <algorithm>
#include <utility>

#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

constexpr platform::ProcessIdentifier firstProcess = 100;

}  // namespace

SimulatedWorkspace::SimulatedWorkspace(World& world, SimulatedPasteboard& pasteboard)
    : world_(world), pasteboard_(pasteboard) {
  addApplication("Tavelo", "tavelo");
}

std::shared_ptr<platform::RunningApplication> SimulatedWorkspace::frontmostApplication() {
  world_.requireMainThread("Workspace::frontmostApplication");
  const auto found = std::find_if(applications_.begin(), applications_.end(),
                                  [this](const auto& each) { return each.get() == frontmost_; });
  return found == applications_.end() ? nullptr : *found;
}

bool SimulatedWorkspace::open(const std::string& url) {
  world_.requireMainThread("Workspace::open");
  world_.report(WorldEvent::Kind::url, "opened " + url);
  openedUrls_.push_back(url);
  return true;
}

SimulatedApplication& SimulatedWorkspace::addApplication(std::optional<std::string> name,
                                                         std::optional<std::string> bundleIdentifier) {
  const auto process = firstProcess + static_cast<platform::ProcessIdentifier>(applications_.size());
  return *applications_.emplace_back(std::make_shared<SimulatedApplication>(
      world_, *this, process, std::move(name), std::move(bundleIdentifier)));
}

SimulatedApplication* SimulatedWorkspace::find(platform::ProcessIdentifier process) const {
  const auto index = static_cast<std::size_t>(process - firstProcess);
  return process >= firstProcess && index < applications_.size() ? applications_[index].get() : nullptr;
}

void SimulatedWorkspace::setFrontmost(SimulatedApplication* application) {
  if (application != nullptr && application->isTerminated()) return;
  panelField_ = nullptr;
  if (frontmost_ != application) {
    frontmost_ = application;
    world_.report(WorldEvent::Kind::application,
                  application == nullptr ? "nothing in front" : application->description() + " in front");
  }
  focusChanged();
}

void SimulatedWorkspace::setPanelFocus(SimulatedField* field) {
  panelField_ = field;
  focusChanged();
}

SimulatedField* SimulatedWorkspace::focusedField() const {
  if (panelField_ != nullptr && panelField_->exists()) return panelField_;
  return frontmost_ == nullptr ? nullptr : frontmost_->focusedField();
}

SimulatedApplication* SimulatedWorkspace::keyReceiver() const {
  return panelField_ != nullptr ? &panelField_->application() : frontmost_;
}

void SimulatedWorkspace::focusChanged() {
  const SimulatedField* field = focusedField();
  if (field == reportedFocus_) return;
  reportedFocus_ = field;
  world_.report(WorldEvent::Kind::focus,
                field == nullptr ? "focus nowhere" : "focus in " + field->description());
}

void SimulatedWorkspace::applicationEnded(const SimulatedApplication& application) {
  if (panelField_ != nullptr && &panelField_->application() == &application) panelField_ = nullptr;
  if (frontmost_ == &application) {
    setFrontmost(nullptr);
  } else {
    focusChanged();
  }
}

}  // namespace tavelo::simulated
