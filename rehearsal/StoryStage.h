#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"
#include "rehearsal/Story.h"

namespace tavelo::rehearsal {

/// A story's desktop as the story begins: the first application is in front and its first field has the
/// focus. It is the process's platform for its lifetime. Main thread.
class StoryStage final {
 public:
  StoryStage(const StoryDesktop& story, const simulated::DesktopOptions& options);

  simulated::SimulatedDesktop& desktop() { return desktop_; }

  /// The story must introduce the names given here; `parseStory` checks that.
  simulated::SimulatedApplication& application(const std::string& name) { return *applications_.at(name); }
  void moveFocus(const std::optional<std::string>& to);

  /// The text of every field, by "application/field".
  std::map<std::string, std::string> fieldTexts() const;

  /// The finished texts in the history file, newest first.
  std::vector<std::string> history();

 private:
  void addApplication(const StoryApplication& story);

  simulated::SimulatedDesktop desktop_;
  std::map<std::string, simulated::SimulatedApplication*> applications_;
  std::map<std::string, simulated::SimulatedField*> fields_;
};

}  // namespace tavelo::rehearsal
