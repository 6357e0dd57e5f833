#include "rehearsal/StoryCheck.h"

#include <algorithm>
#include <set>

#include "rehearsal/KeyChord.h"

namespace tavelo::rehearsal {
namespace {

/// Visits the steps with what the story has introduced.
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
    if (!parseChord(chord)) found_ = "there is no key “" + chord + "”";
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

}  // namespace

std::optional<std::string> findLooseEnd(const Story& story) { return LooseEnds(story).found(); }

}  // namespace tavelo::rehearsal
