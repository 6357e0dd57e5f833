#include "rehearsal/ExpectationCheck.h"

#include <optional>

namespace tavelo::rehearsal {
namespace {

std::string described(const std::string& text) { return "“" + text + "”"; }
std::string described(const std::optional<std::string>& text) { return text ? described(*text) : "nothing"; }
std::string described(bool value) { return value ? "yes" : "no"; }
std::string described(const std::vector<std::string>& texts) {
  std::string list = "[";
  for (const auto& text : texts) list += (list.size() > 1 ? ", " : "") + described(text);
  return list + "]";
}
std::string described(OverlayState state) { return nameOf(state); }

class Deviations final {
 public:
  template <class Value>
  void check(const std::string& what, const std::optional<Value>& wanted, const Value& found) {
    if (wanted && *wanted != found) {
      lines_.push_back(what + ": wanted " + described(*wanted) + ", found " + described(found));
    }
  }
  std::vector<std::string> lines() && { return std::move(lines_); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> findDeviations(const Expectation& expectation, StoryStage& stage,
                                        AppDelegate<RehearsalServices>* delegate) {
  Deviations deviations;
  const auto fields = stage.fieldTexts();
  for (const auto& [name, text] : expectation.fields) {
    deviations.check("field " + name, std::optional(text), fields.at(name));
  }
  deviations.check("pasteboard", expectation.pasteboard, stage.desktop().pasteboard().string());
  deviations.check("history", expectation.history, stage.history());
  const bool runs = delegate != nullptr;
  deviations.check("overlay", expectation.overlay,
                   runs ? delegate->floatingStatus().state() : OverlayState::hidden);
  deviations.check("alerts", expectation.alerts,
                   runs ? delegate->statusController().alerts() : std::vector<std::string>{});
  deviations.check("review", expectation.review, runs ? delegate->reviewWindow().text() : std::nullopt);
  deviations.check("listening", expectation.listening, runs && delegate->statusController().isListening());
  return std::move(deviations).lines();
}

}  // namespace tavelo::rehearsal
