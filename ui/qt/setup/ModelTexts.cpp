#include "ui/qt/setup/ModelTexts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "language/Language.h"
#include "ui/qt/setup/FilledText.h"
#include "ui/qt/setup/SetupTexts.h"

namespace tavelo {
namespace {

struct Title {
  std::string_view model;
  const char* text;
};

constexpr std::array titles{
    Title{"zipformer-30M", "Zipformer nhỏ (nên dùng)"},
    Title{"zipformer", "Zipformer lớn"},
    Title{"vosk-small", "Vosk nhỏ"},
    Title{"vosk-big", "Vosk lớn"},
};

std::string inVietnamese(const language::Text& text) {
  return language::say(language::Language::vietnamese, text);
}

}  // namespace

ModelText textOf(const models::KnownModel& model) {
  const auto* const found = std::ranges::find(titles, model.shortName, &Title::model);
  return {.title = found == titles.end() ? std::string(model.shortName) : found->text,
          .facts = filled(setuptexts::modelFacts, std::to_string(model.megabytes),
                          filled(setuptexts::modelKind, std::string(nameOf(model.engine))),
                          filled(setuptexts::modelLicence, inVietnamese(model.licence))),
          .merit = filled(setuptexts::modelMerit, inVietnamese(model.merit))};
}

}  // namespace tavelo
