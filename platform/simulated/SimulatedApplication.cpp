#include "platform/simulated/SimulatedApplication.h"

#include <utility>

#include "platform/simulated/Rules.h"
#include "platform/simulated/SimulatedPasteboard.h"
#include "platform/simulated/SimulatedWorkspace.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

/// From a call of `activate` until the application is in front.
constexpr platform::Seconds activationDelay{0.05};

bool isPasteChord(const platform::KeyboardEvent& event) {
  using namespace platform::keyflags;
  return event.type == platform::KeyEventType::keyDown && event.keyCode == platform::keycodes::v &&
         (event.flags & (command | control | option | shift)) == command;
}

}  // namespace

SimulatedApplication::SimulatedApplication(World& world, SimulatedWorkspace& workspace,
                                           platform::ProcessIdentifier process,
                                           std::optional<std::string> name,
                                           std::optional<std::string> bundleIdentifier)
    : world_(world),
      workspace_(workspace),
      process_(process),
      name_(std::move(name)),
      bundleIdentifier_(std::move(bundleIdentifier)) {}

std::optional<std::string> SimulatedApplication::localizedName() const {
  world_.requireMainThread("RunningApplication::localizedName");
  return name_;
}

std::optional<std::string> SimulatedApplication::bundleIdentifier() const {
  world_.requireMainThread("RunningApplication::bundleIdentifier");
  return bundleIdentifier_;
}

platform::ProcessIdentifier SimulatedApplication::processIdentifier() const {
  world_.requireMainThread("RunningApplication::processIdentifier");
  return process_;
}

bool SimulatedApplication::isTerminated() const {
  world_.requireMainThread("RunningApplication::isTerminated");
  return terminated_;
}

bool SimulatedApplication::activate(platform::ActivationOptions) {
  world_.requireMainThread("RunningApplication::activate");
  ++activations_;
  world_.report(WorldEvent::Kind::application,
                (terminated_ ? "refused to activate " : "activating ") + description());
  if (!terminated_) world_.loop().asyncAfter(activationDelay, [this] { workspace_.setFrontmost(this); });
  return !terminated_;
}

SimulatedField& SimulatedApplication::addField(std::string title, const FieldBehaviour& behaviour) {
  SimulatedField& field =
      *fields_.emplace_back(std::make_shared<SimulatedField>(world_, *this, std::move(title), behaviour));
  if (fields_.size() == 1) focus(&field);
  return field;
}

SimulatedMenuBar& SimulatedApplication::addMenuBar() {
  if (menuBar_) rules::broken(description() + " has a menu bar already");
  menuBar_ = std::make_shared<SimulatedMenuBar>(world_, *this);
  return *menuBar_;
}

SimulatedMenuBar& SimulatedApplication::addMenuBar(MenuLanguage language) {
  addMenuBar().addStandardMenus(language);
  return *menuBar_;
}

void SimulatedApplication::focus(SimulatedField* field) {
  focusedField_ = field;
  workspace_.focusChanged();
}

SimulatedField* SimulatedApplication::focusedField() const { return terminated_ ? nullptr : focusedField_; }

void SimulatedApplication::bringToFront() { workspace_.setFrontmost(this); }

void SimulatedApplication::terminate() {
  if (terminated_) return;
  terminated_ = true;
  waitingKeys_.clear();
  world_.report(WorldEvent::Kind::application, description() + " ended");
  workspace_.applicationEnded(*this);
}

void SimulatedApplication::hang() {
  hung_ = true;
  world_.report(WorldEvent::Kind::application, description() + " hangs");
}

void SimulatedApplication::wake() {
  if (!hung_) return;
  hung_ = false;
  world_.report(WorldEvent::Kind::application, description() + " answers again");
  const auto keys = std::exchange(waitingKeys_, {});
  for (const auto& key : keys) handle(key);
}

void SimulatedApplication::receive(const platform::KeyboardEvent& event) {
  if (terminated_) return;
  receivedKeys_.push_back(event);
  if (hung_) {
    waitingKeys_.push_back(event);
  } else {
    handle(event);
  }
}

void SimulatedApplication::handle(const platform::KeyboardEvent& event) {
  if (!isPasteChord(event)) return;
  if (swallowsKeys_) {
    world_.report(WorldEvent::Kind::text, description() + " ignores Command-V");
  } else {
    paste();
  }
}

void SimulatedApplication::paste() {
  const SimulatedField* field = focusedField();
  const auto delay = field != nullptr ? field->behaviour().pasteDelay : platform::Seconds{0};
  if (delay == platform::Seconds{0}) return fetchAndPaste();
  world_.loop().asyncAfter(delay, [this] { fetchAndPaste(); });
}

void SimulatedApplication::fetchAndPaste() {
  SimulatedField* field = focusedField();
  const auto text = workspace_.pasteboard().fetch();
  if (text && field != nullptr) {
    field->paste(*text);
  } else {
    world_.report(WorldEvent::Kind::text,
                  description() + (text ? " has no field to paste into" : " finds no text to paste"));
  }
}

std::string SimulatedApplication::description() const {
  return name_ ? *name_ : "process " + std::to_string(process_);
}

}  // namespace tavelo::simulated
